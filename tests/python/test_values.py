"""Values never change, know what they are, and stay when their system goes."""

from __future__ import annotations

import copy
import gc
import pickle
from pathlib import Path
from typing import Any, Dict, Iterator

import boards
import pytest
import velk

OUT = {"dut": {"CompType": "DUT", "Bench": "2"}, "dut_pin": "OUT"}


def all_values(system: velk.System) -> Dict[str, Any]:
    plans = system.plan_steps({"a": [("U5.OUT+", "J2.VCC")], "b": [("U3#1.OUT", "J2#3.IN_P"), ("U2.HI", "J2.OUT")]})
    return {
        "components": system.components(CompType="Relay"),
        "parts": system.parts,
        "nets": system.nets,
        "routes": system.routes({"Dev": "DMM"}, "HI", **OUT),
        "reason": system.why_no_route({"Dev": "DMM"}, "HI", **OUT, max_switches=0),
        "far": system.why_no_route("U1#1.SENSE_HI", dut="J2#3.GND"),
        "coverage": system.coverage(critical=True),
        "plans": plans,
        "conflict": system.plan([("U2.HI", "J1.OUT"), ("U5.OUT+", "J1.OUT"), ("U2.HI", "J1.GND")]),
        "positions": system.positions("K703#2"),
        "connections": system.connected({"K1#1": 1, "K307#2": 1}),
        "findings": velk.System(boards.DEMO_NETLISTS[0]).check(),
    }


def parts_of(value: Any) -> Iterator[Any]:
    yield value
    for part in value if isinstance(value, tuple) else ():
        yield from parts_of(part)


def test_of_the_example(demo: velk.System) -> None:
    limits = {"max_switches": 5, "max_connections": 3, "max_routes": None}
    routes = demo.routes(source={"Dev": "DMM"}, source_pin="HI", **OUT, **limits, without=["K304#2"])
    assert repr(routes[0].switches) == "(Component K1#1, Component K307#2)"
    assert repr(routes[0]) == "Route U2#1.HI -> K1#1 -> K307#2 -> J2#3.OUT"
    assert str(routes[0]) == "U2#1.HI -> K1#1 -> K307#2 -> J2#3.OUT"
    assert repr(routes[0].steps[0]).startswith("Step Net-(K1-A)#1 -> 1 K1#1 2, position 1")
    assert routes[0].state == {"K1#1": 1, "K307#2": 1} and routes[0].resting == ()
    assert all("K304#2" not in route.state for route in routes)
    assert repr(demo.pin("J1#3.3")) == "Pin J1#3.3 IN_P" and str(demo.pin("J1#3.3")) == "J1#3.IN_P"
    assert repr(demo).startswith("System(") and "matrix.net" in repr(demo)


def test_texts() -> None:
    k1, r1 = (velk.Component(ref, "", "P#1", velk.FrozenDict()) for ref in ("K1#1", "R1#1"))
    pin, nameless = velk.Pin("K1#1", "1", "A"), velk.Pin("R1#1", "2", "")
    rest = velk.Step("N#1", pin, k1, pin, 0)
    route = velk.Route(pin, nameless, (rest, velk.Step("M#1", nameless, r1, nameless)), "N#1", ())
    assert (route.switches, route.resting, route.state) == ((r1,), (k1,), {"K1#1": 0})
    assert str(route) == "K1#1.A -> K1#1 (rest) -> R1#1 -> R1#1.2"
    assert repr(rest) == "Step N#1 -> 1 K1#1 1, position 0" and repr(nameless) == "Pin R1#1.2"
    positions, names = velk.FrozenDict({"K1#1": 2}), velk.FrozenDict({"K1#1": "on"})
    plan = velk.Plan("", "optimal", positions, names, (k1,), (k1,), *[()] * 8)
    assert plan.found and repr(plan) == "Plan, optimal: K1#1 = 2"
    assert repr(plan._replace(name="s", positions=velk.FrozenDict())) == "Plan 's', optimal: all relays at rest"
    assert plan.rows == (velk.PlanRow("", 1, k1, 0, ""), velk.PlanRow("", 2, k1, 2, "on"))
    assert repr(plan.rows) == "(PlanRow 1: K1#1 to 0, PlanRow 2: K1#1 to 2)"
    found = [plan._replace(result=result).found for result in ("feasible", "impossible", "unknown")]
    assert found == [True, False, False] and repr(plan._replace(result="unknown")) == "Plan, unknown"
    assert repr(velk.Part("P#1", "L", ())) == "Part P#1 (0 pins)"
    assert repr(velk.Net("N#1", (pin, pin))) == "Net N#1 (2 pins)"
    assert repr(velk.Coverage((pin,), (), ((),))) == "Coverage of 1 source pins and 0 DUT pins"
    finding = velk.Finding("code", (), "t", "a", (), (), (), (), "K1#1: t")
    assert (str(finding), repr(finding)) == ("K1#1: t", "Finding code: K1#1: t")


def test_equal_values_are_equal_and_copies_too(demo: velk.System) -> None:
    first, second = all_values(demo), all_values(velk.System(boards.DEMO_NETLISTS))
    assert first == second
    for name, value in first.items():
        assert hash(value) == hash(second[name])
        for twin in (pickle.loads(pickle.dumps(value)), copy.copy(value), copy.deepcopy(value)):
            assert twin == value and hash(twin) == hash(value) and type(twin) is type(value)
            assert [type(part) for part in parts_of(twin)] == [type(part) for part in parts_of(value)]


def test_all_is_immutable(demo: velk.System) -> None:
    seen = set()
    for part in parts_of(tuple(all_values(demo).values())):
        assert isinstance(part, (tuple, str, int, type(None), velk.FrozenDict)), type(part)
        if isinstance(part, tuple) and type(part) is not tuple and type(part) not in seen:
            seen.add(type(part))
            with pytest.raises(AttributeError):
                setattr(part, type(part)._fields[0], "other")
            with pytest.raises(TypeError):
                part[0] = "other"
    assert len(seen) >= 15


def test_frozen_dict_refuses_every_change() -> None:
    frozen = velk.FrozenDict({"a": "1"})
    for change in (
        lambda: frozen.__setitem__("a", "2"),
        lambda: frozen.__delitem__("a"),
        lambda: frozen.__ior__({"b": "2"}),
        lambda: frozen.clear(),
        lambda: frozen.pop("a"),
        lambda: frozen.popitem(),
        lambda: frozen.setdefault("b", "2"),
        lambda: frozen.update(b="2"),
    ):
        with pytest.raises(TypeError, match="dict"):
            change()
    with pytest.raises(AttributeError):
        frozen.other = 1  # type: ignore[attr-defined]
    assert frozen == {"a": "1"} and type(frozen.copy()) is dict and {**frozen, "b": "2"} == {"a": "1", "b": "2"}
    assert hash(velk.FrozenDict(b="2", a="1")) == hash(velk.FrozenDict(a="1", b="2")) != hash(frozen)
    assert hash(frozen) != hash(velk.FrozenDict({"a": "2"}))


def test_csv_quotes_as_the_command_does(tmp_path: Path) -> None:
    """Names that no netlist of the other tests has."""
    pins = [velk.Pin(ref, "1", "HI") for ref in ("U,1", 'U"2', "U\r3", "U\n4", "U 5")]
    velk.Coverage(tuple(pins[:2]), tuple(pins[2:]), ((1, None, 0), (None, None, 12))).to_csv(tmp_path / "coverage.csv")
    expected = b'source,"U\r3.1","U\n4.1",U 5.1\n"U,1.1",1,,0\n"U""2.1",,,12\n'
    assert (tmp_path / "coverage.csv").read_bytes() == expected


def test_values_outlive_their_system() -> None:
    system = velk.System(boards.DEMO_NETLISTS)
    values = all_values(system)
    texts = {name: repr(value) for name, value in values.items()}
    del system
    gc.collect()
    assert {name: repr(value) for name, value in values.items()} == texts
    assert values == all_values(velk.System(boards.DEMO_NETLISTS))


def test_components_and_pins_are_shared(demo: velk.System) -> None:
    asked = [demo.routes({"Dev": "DMM"}, "HI", **OUT, without=without) for without in ((), "K304#2")]
    ways = demo.plan([("U2#1.HI", "J2#3.OUT")]).ways
    k307 = demo.components(Channel="11", Bench="B2", DevNo="3")[0]
    for known in (asked[0][0], asked[1][0], ways[0]):
        assert known.steps[-1].component is demo.component("K307#2") is k307
        assert any(known.steps[-1].pin_out is pin for pin in demo.pins("K307#2"))
        assert known.start is demo.pin("U2#1.HI")


def test_sets_of_names_may_be_one(demo: velk.System) -> None:
    """A component is a tuple, and a text has letters: neither is taken for several names."""
    k304 = demo.component("K304#2")
    expected = demo.routes({"Dev": "DMM"}, "HI", **OUT, without=["K304#2"])
    for without in ("K304#2", k304, (k304,), {"K304#2"}, iter(["K304#2"])):
        assert demo.routes({"Dev": "DMM"}, "HI", **OUT, without=without) == expected


def test_limits_of_the_reason(demo: velk.System) -> None:
    reason = demo.why_no_route("U2#1.HI", dut="J2#3.OUT", max_switches=0)
    assert (reason.is_connected, reason.shortest) == (True, 2)
    assert reason.sufficient_limits == (velk.SufficientLimits(1, 3, 2, 0),)
    apart = demo.why_no_route("U1#1.SENSE_HI", dut="J2#3.GND")
    assert (apart.is_connected, apart.shortest, apart.from_source.is_excluded) == (False, None, False)
