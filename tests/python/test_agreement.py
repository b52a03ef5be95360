"""The module and the command give the same answers to the same questions, many of them."""

from __future__ import annotations

import csv
import random
from collections import defaultdict
from pathlib import Path
from typing import Any, Dict, List, Tuple

import as_json
import boards
import pytest
import questions
import velk
from command import json_of, rows_of, text_of

# Of many those where the rare is: bottlenecks, transients on the way to rest, ways in the other direction.
GENERATED = (1, 13, 14, 27, 32, 54, 65, 70, 90, 99, 108, 139)


@pytest.fixture(scope="module", params=["demo", "large", *GENERATED])
def asked(request: pytest.FixtureRequest, tmp_path_factory: pytest.TempPathFactory) -> boards.Asked:
    if isinstance(request.param, int):
        return boards.generated(request.param, tmp_path_factory.mktemp("generated"))
    return {"demo": boards.demo, "large": boards.large}[request.param]()


@pytest.fixture
def pick(request: pytest.FixtureRequest) -> random.Random:
    return random.Random(request.node.name)


def test_routes(asked: boards.Asked, pick: random.Random) -> None:
    system = asked.system
    for _ in range(6):
        source, dut = (questions.any_end(system, pick, kind) for kind in ("Source", "DUT"))
        keywords = questions.search(system, pick)
        if pick.random() < 0.3 and system.components(CompType="Relay"):
            through = pick.choice(system.components(CompType="Relay"))
            keywords.add("through", through, f"--through={through.ref}")
        most = pick.choice((0, 1, 2, 100))
        command = ["routes", *source.options("--source"), *dut.options("--dut"), *keywords.options]
        expected = json_of(*command, f"--max-routes={most or 300}", *asked.arguments)
        ends = {"source": source.where, "source_pin": source.pin, "dut": dut.where, "dut_pin": dut.pin}
        routes = system.routes(**ends, **keywords.values, max_routes=most or 300)
        check_routes(system, routes, expected, "as_drawn" in keywords.values)
        for pin, end in (("source", source), ("destination", dut)):
            assert as_json.pin(system, system.pin(end.where, end.pin)) == expected[pin]
        if not routes:
            check_reason(system.why_no_route(**ends, **keywords.values), expected["reason"])


def check_routes(
    system: velk.System, routes: Tuple[velk.Route, ...], expected: Dict[str, Any], as_drawn: bool = False
) -> None:
    told = {name: expected[name] for name in ("routes", "unknown") if name in expected}
    assert as_json.routes(system, routes, as_drawn) == told
    for route in routes:
        assert as_json.pin(system, route.start) == expected["source"]
        assert as_json.pin(system, route.end) == expected["destination"]
        check_nets(system, route)


def check_nets(system: velk.System, route: velk.Route) -> None:
    """Each step begins on the net where the one before ends, and side connections lie on these nets."""
    check_stations(route)
    nets = [*(step.net for step in route.steps), route.last_net]
    pins = [pin for step in route.steps for pin in (step.pin_in, step.pin_out)]
    for pin in (*pins, *route.side_connections):
        assert pin.net in nets and pin in system.net(pin.net).pins
    assert as_json.node(route.start) in as_json.net(system.net(nets[0]))["nodes"]
    assert as_json.node(route.end) in as_json.net(system.net(nets[-1]))["nodes"]


def check_stations(route: velk.Route) -> None:
    nets = [*(step.net for step in route.steps), route.last_net]
    for step, net, next_net in zip(route.steps, nets, nets[1:]):
        assert (step.pin_in.ref, step.pin_in.net) == (step.component.ref, net)
        assert (step.pin_out.ref, step.pin_out.net) == (step.component.ref, next_net)


def check_reason(reason: velk.NoRouteReason, expected: Dict[str, Any]) -> None:
    texts = expected.pop("texts")

    def tells(words: str) -> bool:
        return any(words in text for text in texts)

    if "between" in expected:
        expected["between"] = [component["ref"] for component in expected["between"]]
        for end in ("source", "destination"):
            del expected[end]["boards"]
    assert as_json.reason(reason) == expected
    if "between" in expected and not tells("nothing else connects them"):
        reaches = (reason.from_source, reason.from_dut)
        alone = "lies on no net", "nothing else lies on the net of"
        assert any(reach.is_excluded for reach in reaches) == tells("is kept out by --without-net")
        assert any(reach.is_alone and not reach.is_excluded for reach in reaches) == any(map(tells, alone))
        assert reason.is_connected_in_other_direction == tells("in the other direction there is one")
    assert reason.is_connected_over_others == tells("they are connected, but by no chain over")
    if reason.conflict:
        over = [step.component.ref for step in reason.conflict.route.steps]
        assert len(over) > 3 or tells(f"the first one leads over {', '.join(over)}, but")
        assert (reason.is_realizable is False) == tells("the relays can make no other way, however long")


def test_coverage(asked: boards.Asked, pick: random.Random, tmp_path: Path) -> None:
    """Also of sources and DUTs of some kinds only, and as CSV."""
    system = asked.system
    for is_for_all in (True, False):
        keywords = questions.search(system, pick)
        if not is_for_all:
            for name, kind in (("source", "Source"), ("dut", "DUT")):
                some = {"Dev": pick.choice(system.components(CompType=kind)).properties.get("Dev", "")}
                keywords.add(name, some, f"--{name}=Dev={some['Dev']}")
        coverage = system.coverage(**keywords.values, critical=True)
        expected = json_of("coverage", "--critical", *keywords.options, *asked.arguments)
        expected.pop("excludedComponents", None), expected.pop("excludedNets", None)
        assert as_json.coverage(coverage) == expected
        for pin in (*coverage.sources, *coverage.duts):
            assert pin in system.pins(pin.ref)
        coverage.to_csv(tmp_path / "coverage.csv")
        text = text_of("coverage", *keywords.options, *asked.arguments, "--format", "csv")
        assert (tmp_path / "coverage.csv").read_bytes().decode() == text


def test_coverage_is_that_of_the_first_routes(demo: velk.System) -> None:
    through = ["K307#2"]
    coverage = demo.coverage(source={"Dev": "DMM"}, dut={"Bench": "2"}, through=through)
    for pin, row in zip(coverage.sources, coverage.switches):
        for dut, switches in zip(coverage.duts, row):
            first = demo.routes(pin, dut=dut, max_routes=1, through=through)
            assert [switches] == ([len(first[0].steps)] if first else [None])


def test_lists(asked: boards.Asked) -> None:
    system, arguments = asked
    components = system.components()
    assert [as_json.component(each) for each in components] == json_of("list", "components", *arguments)["components"]
    assert [as_json.part(part) for part in system.parts] == json_of("list", "parts", *arguments)["parts"]
    assert [as_json.net(net) for net in system.nets] == json_of("list", "nets", *arguments)["nets"]
    assert [system.component(each.ref) for each in components] == list(components)
    assert [system.part(part.name) for part in system.parts] == list(system.parts)
    assert [system.net(net.name) for net in system.nets] == list(system.nets)
    relays = json_of("list", "components", "--positions", *arguments)["positions"]
    assert [as_json.relay(system, system.component(each["ref"])) for each in relays] == relays
    for each in relays:
        gang = [other["ref"] for other in relays if other["gang"] == each["gang"]] if each["gang"] else [each["ref"]]
        assert list(system.positions(each["ref"]).gang) == ([] if each["toldBy"] == "coil only" else gang)
    chosen = system.components(CompType="Relay", Channel="7")
    where = ("--where", "CompType=Relay", "--where", "Channel=7")
    listed = json_of("list", "components", *where, *arguments)["components"]
    assert [as_json.component(component) for component in chosen] == listed


def test_pins(asked: boards.Asked) -> None:
    """They are on the first net that holds them, with the name that the part has; or, not listed, without one."""
    system = asked.system
    nets: Dict[Tuple[str, str], str] = {}
    for net in system.nets:
        for pin in net.pins:
            nets.setdefault((pin.ref, pin.number), net.name)
            assert pin.net == net.name
    for component in system.components():
        listed = [(pin.number, pin.name) for pin in system.part(component.part).pins]
        expected = tuple(velk.Pin(component.ref, *pin, nets.get((component.ref, pin[0]))) for pin in listed)
        assert system.pins(component) == system.pins(component.ref) == expected


def test_findings(asked: boards.Asked) -> None:
    system, arguments = asked
    netlists = system.netlists
    for ignore in ([], ["pin-on-no-net", "node-on-two-nets:K*"], "pin-alone-on-net"):
        told = questions.options("--ignore", [ignore] if isinstance(ignore, str) else ignore)
        expected = json_of("check", *told, *arguments)["findings"]
        findings = system.check(ignore)
        assert [as_json.finding(finding, netlists) for finding in findings] == expected
        for finding in findings:
            assert len(finding.places) > 8 or finding.message == f"{', '.join(finding.places)}: {finding.text}"
            assert set(finding.pins) <= {pin.number for ref in finding.components for pin in system.pins(ref)}


def test_states(asked: boards.Asked, pick: random.Random) -> None:
    system, arguments = asked
    refs = [each.ref for each in system.components(CompType="Relay") if system.positions(each).positions]
    for count in (0, 1, 3, 8):
        state: Dict[str, int] = {}
        for ref in pick.sample(refs, min(count, len(refs))):
            relay = system.positions(ref)
            if not relay.is_unknown and not set(relay.gang) & set(state):
                state[ref] = pick.randrange(len(relay.positions))
        told = [f"--set={ref}={position}" for ref, position in (state or {refs[0]: 0}).items()] if refs else []
        if not told:
            continue
        expected = json_of("state", *told, *arguments)["steps"]
        assert [as_json.connections(system, system.connected(state))] == expected


def test_plans(asked: boards.Asked, pick: random.Random, tmp_path: Path) -> None:
    system = asked.system
    for _ in range(3):
        steps: List[Tuple[str, List[Any]]] = []
        ends: Dict[str, List[Tuple[questions.End, questions.End]]] = {}
        for name in ("first", "second, \"quoted\"", "third"):
            kinds = [("Source", pick.choice(("DUT", "DUT", "Source"))) for _ in range(pick.randint(1, 3))]
            ends[name] = [tuple(questions.any_end(system, pick, k, is_on_net=True) for k in pair) for pair in kinds]
            steps.append((name, [connection(*pair, pick) for pair in ends[name]]))
        table = tmp_path / "plan.csv"
        write_table(table, ends)
        keywords = questions.planning(system, pick)
        plans = system.plan_steps(steps, **keywords.values)
        check_plans(asked, table, keywords, plans)
        for plan, connections in zip(plans, ends.values()):
            for way, pair in zip(plan.ways, connections):
                assert [way.start, way.end] == [system.pin(end.where, end.pin) for end in pair]


def connection(start: questions.End, end: questions.End, pick: random.Random) -> Any:
    """In one of the ways in which it may be told."""
    if start.pin is not None and end.pin is not None and pick.random() < 0.5:
        return start.where, start.pin, end.where, end.pin
    return tuple(each.where if each.pin is None else (each.where, each.pin) for each in (start, end))


def write_table(path: Path, steps: Dict[str, List[Tuple[questions.End, questions.End]]]) -> None:
    with open(path, "w", encoding="utf-8", newline="") as file:
        rows = csv.writer(file)
        rows.writerow(("step", "from", "from pin", "to", "to pin"))
        for name, connections in steps.items():
            rows.writerows((name, *start.cells(), *end.cells()) for start, end in connections)


def check_plans(asked: boards.Asked, table: Path, keywords: questions.Keywords, plans: Tuple[velk.Plan, ...]) -> None:
    told = ["plan", *keywords.options, table, *asked.arguments]
    assert [as_json.plan(plan) for plan in plans] == json_of(*told)["steps"]
    rows = [row for plan in plans for row in as_json.plan_rows(plan)]
    assert [without_empty(row) for row in rows] == [without_empty(row) for row in rows_of(*told)]
    for plan in plans:
        check_ways(asked.system, plan)


def without_empty(row: Dict[str, str]) -> Dict[str, str]:
    """A table has columns for properties that not all relays have."""
    return {name: value for name, value in row.items() if value}


def check_ways(system: velk.System, plan: velk.Plan) -> None:
    """A way leads from pin to pin over nets and resistors of its group, and relays in the position that is planned."""
    groups = {connection: group for group in plan.groups for connection in group.connections}
    assert sorted(groups) == list(range(len(plan.ways)))
    for number, way in enumerate(plan.ways):
        group = groups[number]
        assert {way.start, way.end} <= set(group.pins) and way.side_connections == ()
        check_stations(way)
        assert {*(step.net for step in way.steps), way.last_net} <= set(group.nets)
        for step in way.steps:
            assert step.component == system.component(step.component.ref)
            position = plan.positions.get(step.component.ref, 0)
            assert step.component.ref in group.through if step.position is None else step.position == position
            drawn = system.positions(step.component).positions
            assert step.position_name == (drawn[position].name if drawn else "")


SYSTEM_FILE = """
netlists = [{netlists}]
max-switches = 2
max-connections = 1
max-routes = 3
without = ["K304#2", "Channel=7"]
without-net = ["{net}"]
ignore = ["pin-alone-on-net:U*"]
"""


def test_system_file(demo: velk.System, tmp_path: Path) -> None:
    """Its limits and what it keeps out hold, until one asks for others."""
    netlists = ", ".join(f'"{name}"' for name in demo.netlists)
    net = demo.routes({"Dev": "DMM"}, "HI", dut="J1#3", dut_pin="OUT")[0].steps[-1].net
    (tmp_path / "velk.toml").write_text(SYSTEM_FILE.format(netlists=netlists, net=net), encoding="utf-8")
    asked = boards.Asked(velk.System.open(tmp_path / "velk.toml"), ("--system", str(tmp_path / "velk.toml")))
    system = asked.system
    ends = ["--source=Dev=DMM", "--source-pin=HI", "--dut-ref=J2#3", "--dut-pin=OUT"]
    for values, told in (
        ({}, []),
        ({"max_routes": None}, ["--max-routes=0"]),
        ({"max_switches": 4, "max_connections": 3}, ["--max-switches=4", "--max-connections=3"]),
        ({"without": "K1", "without_nets": "/DMM1_LO#1"}, ["--without=K1", "--without-net=/DMM1_LO#1"]),
    ):
        expected = json_of("routes", *ends, *told, *asked.arguments)
        check_routes(system, system.routes({"Dev": "DMM"}, "HI", dut="J2#3", dut_pin="OUT", **values), expected)
        if not values:
            assert list(system.kept_out) == expected["excludedComponents"]
            assert list(system.kept_out_nets) == expected["excludedNets"]
    test_findings(asked)
    check_plans(asked, boards.DEMO / "plan.csv", questions.Keywords({}, []), system.plan_steps(steps_of_table()))


def steps_of_table() -> Dict[str, List[Any]]:
    steps: Dict[str, List[Any]] = {}
    with open(boards.DEMO / "plan.csv", encoding="utf-8") as file:
        for row in csv.DictReader(file):
            ends = [dict(pair.split("=") for pair in row[end].split(";")) for end in ("from", "to")]
            steps.setdefault(row["step"], []).append((ends[0], row["from pin"], ends[1], row["to pin"]))
    return steps


def test_plans_of_the_demo(demo: velk.System) -> None:
    asked = boards.demo()
    for name in ("fewest_changes", "side_connections", "no_couplings"):
        keywords = questions.Keywords({name: True}, ["--" + name.replace("_", "-")])
        plans = demo.plan_steps(steps_of_table(), **keywords.values)
        check_plans(asked, boards.DEMO / "plan.csv", keywords, plans)


def test_ini_files(asked: boards.Asked, tmp_path: Path) -> None:
    system = asked.system
    path = tmp_path / "it.ini"
    velk.write_physical_ini(path, system)
    tolerant = [word for word in asked.arguments if word == "--tolerant"]
    text = text_of("ini", "physical", *tolerant, *system.netlists)
    assert system.physical_ini() == path.read_bytes().decode() == text
    velk.write_application_ini(path, system, system)
    netlists = [f"--{name}={netlist}" for name in ("test-system", "application") for netlist in system.netlists]
    text = text_of("ini", "application", *tolerant, *netlists)
    assert system.application_ini(system) == path.read_bytes().decode() == text


def test_ini_files_of_other_types(demo: velk.System) -> None:
    devices = velk.System(boards.DEMO_NETLISTS[0], device_type="Relay")
    duts = velk.System(boards.DEMO_NETLISTS[1], dut_type="Relay")
    assert devices.physical_ini() == text_of("ini", "physical", "--type=Relay", boards.DEMO_NETLISTS[0])
    assert devices.physical_ini() != velk.System(boards.DEMO_NETLISTS[0]).physical_ini()
    netlists = (f"--test-system={boards.DEMO_NETLISTS[0]}", f"--application={boards.DEMO_NETLISTS[1]}")
    text = text_of("ini", "application", "--dut-type=Relay", *netlists)
    assert devices.application_ini(duts) == text != devices.application_ini(demo)
