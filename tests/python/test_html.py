"""What notebooks show: all of a value, each thing once, whatever its names are."""

from __future__ import annotations

import re
import xml.etree.ElementTree as ET
from typing import Any, List, Optional, Sequence

import pytest
import velk
from velk import Component, FrozenDict, Pin, Plan, Route, Step

HOSTILE = "<script>alert(\"1\")</script>&amp;'\n\x00\u202e\ud800#1+<b>#2"


def component(ref: str, kind: str = "Relay", value: str = "reed") -> Component:
    return Component(ref, value, "P#1", FrozenDict({"CompType": kind}))


def step(net: str, crossed: Component, at: Optional[int] = None, name: str = "", is_unknown: bool = False) -> Step:
    return Step(net, Pin(crossed.ref, "1", "A"), crossed, Pin(crossed.ref, "2", "B"), at, name, is_unknown)


def route(*steps: Step, last_net: str = "L#2", sides: Sequence[Pin] = ()) -> Route:
    return Route(Pin("U1#1", "7", "HI"), Pin("J1#2", "9", "9"), steps, last_net, tuple(sides))


def plan(result: str, **members: Any) -> Plan:
    nothing = Plan("", result, FrozenDict(), FrozenDict(), (), (), (), (), (), (), (), (), (), ())
    return nothing._replace(**members)


def parsed(value: Any) -> ET.Element:
    return ET.fromstring(value._repr_html_().replace(' xmlns="http://www.w3.org/2000/svg"', ""))


def texts(value: Any, tag: str) -> List[str]:
    return ["".join(found.itertext()) for found in parsed(value).iter(tag)]


def lines(value: Any) -> List[str]:
    """What is told besides drawings and tables: divisions that hold no other element of this kind."""
    told = [found for found in parsed(value).iter("div") if not {"div", "svg", "table"} & {each.tag for each in found}]
    return ["".join(found.itertext()) for found in told]


def test_route_is_drawn_with_all_that_it_has() -> None:
    shown = route(
        step("N#1", component("K1#1"), 1),
        step("A#1+B+#2", component("R1#2", "Resistor", "1k")),
        sides=[Pin("J1#2", "4", "IN", "L#2"), Pin("U1#1", "8", "LO", "A#1+B+#2")],
    )
    svg = parsed(shown)[2]
    assert [frame.get("fill") for frame in svg.findall("rect")] == ["#eef4fb", "#f5f0fa"]
    assert (svg.get("role"), svg.get("aria-label")) == ("img", "U1#1.HI to J1#2.9 over 2 switches")
    assert texts(shown, "text") == [
        *("#1", "#2"),
        *("U1#1.HI", "pin 7 (HI)", "N", "set", "K1#1", "1", "2", "reed", "A", "\u25c6 U1#1.LO", "B+"),
        *("R1#2", "1", "2", "1k", "L", "\u25c6 J1#2.IN", "J1#2.9", "pin 9"),
    ]
    assert texts(shown, "title") == [
        *("From U1#1.HI, pin 7 (HI)", "Net N#1", "K1#1: Relay reed, set to position 1, pin 1 to 2", "Net A#1+B+#2"),
        *("Also connects U1#1.LO", "Net A#1+B+#2", "R1#2: Resistor 1k, pin 1 to 2", "Net L#2"),
        *("Also connects J1#2.IN", "To J1#2.9, pin 9"),
    ]
    assert lines(shown) == [
        "U1#1.HI \u2192 J1#2.9: 2 switches. Set: K1#1. Through R1#2",
        "Also connects: J1#2.IN, U1#1.LO",
    ]


CLOSED, OPEN = "M-16,0H16", "M-16,0L15,-15"
UNKNOWN = "Crossed as drawn, since nobody knows the positions: K1#1"


@pytest.mark.parametrize(
    "kind, position, name, is_unknown, said, blade, title, told",
    [
        ("Relay", 1, "", False, ["set"], [CLOSED], ", set to position 1", "Set: K1#1"),
        ("Relay", 1, "NO", False, ["NO"], [CLOSED], ", set to position 1, NO", "Set: K1#1=NO"),
        ("Relay", 3, "-4", False, ["3"], [CLOSED], ", set to position 3, -4", "Set: K1#1=3"),
        ("Relay", 1, "A B", False, ["1"], [CLOSED], ", set to position 1, A B", "Set: K1#1=1"),
        ("relay", 2, "", False, ["2"], [CLOSED], ", set to position 2", "Set: K1#1=2"),
        ("Relay", 0, "NC", False, ["rest"], [CLOSED], ", stays at rest", "To stay at rest: K1#1"),
        ("Relay", None, "", True, ["?"], [OPEN], ", positions not known", UNKNOWN),
        ("Relay", None, "", False, [], [OPEN], "", "Crossed as drawn: K1#1"),
        ("RESISTOR", None, "", False, [], [], "", "Through K1#1"),
        ("Fuse", None, "", False, ["Fuse"], [], "", "Through K1#1"),
    ],
)
def test_what_a_route_asks_of_a_component(
    kind: str, position: Optional[int], name: str, is_unknown: bool, said: Any, blade: Any, title: str, told: str
) -> None:
    shown = route(step("N#1", component("K1#1", kind), position, name, is_unknown))
    assert f"K1#1: {kind} reed{title}, pin 1 to 2" in texts(shown, "title")
    others = ["#1", "#2", "U1#1.HI", "pin 7 (HI)", "N", "K1#1", "1", "2", "reed", "L", "J1#2.9", "pin 9"]
    assert sorted(texts(shown, "text")) == sorted(others + said)
    assert [way.get("d") for way in parsed(shown).iter("path") if way.get("d") in (CLOSED, OPEN)] == blade
    assert lines(shown) == [f"U1#1.HI \u2192 J1#2.9: 1 switch. {told}"]


@pytest.mark.parametrize("length", range(41))
def test_rows_lie_within_the_drawing_and_beside_one_another(length: int) -> None:
    crossed = [step(f"A{i}#{i // 3 + 1}+B#{i // 3 + 2}", component(f"K{i}#{i // 3 + 2}"), 1) for i in range(length)]
    drawn = parsed(route(*crossed))[1]
    width, height = (float(drawn.get(side, "0")) for side in ("width", "height"))
    sides = [[float(box.get(side, "0")) for side in ("x", "y", "width", "height")] for box in drawn.findall("rect")]
    boxes = [(x, y, x + wide, y + high) for x, y, wide, high in sides]
    assert drawn.get("viewBox") == f"0 0 {width:g} {height:g}" and width < 1200
    assert all(0 < x < right < width and 0 < y < bottom < height for x, y, right, bottom in boxes)
    assert all(a[2] < b[0] or a[3] < b[1] for a, b in zip(boxes, boxes[1:]))
    assert len(drawn.findall("path")) == len({y for _, y, _, _ in boxes}) - 1  # the turns
    assert [text for text in texts(route(*crossed), "text") if "K" in text] == [each.component.ref for each in crossed]


def test_what_is_left_out_of_a_route_is_told() -> None:
    long = route(*[step(f"N{i}#1", component(f"K{i}#1"), 1) for i in range(100_000)])
    assert len(long._repr_html_()) < 60_000
    assert [text for text in texts(long, "text") if text.startswith("K")] == [f"K{i}#1" for i in range(40)]
    assert lines(long)[0].endswith("K48#1, K49#1, and 99,950 more")
    assert lines(long)[1:] == ["and 99,960 more switches that are not drawn"]
    wide = route(step("L#2", component("K#2")), sides=[Pin(f"J{i}#1", "1", "", "L#2") for i in range(1000)])
    chips = [text[2:] for text in texts(wide, "text") if text.startswith("\u25c6")]
    assert chips == [*(f"J{i}#1.1" for i in range(7)), "and 993 more"]
    assert lines(wide)[1].endswith("J49#1.1, and 950 more")
    assert {frame.get("height") for frame in parsed(wide).findall("svg/rect")} == {str(26 + 62 + 24 + 8 * 30 + 10)}


def test_route_without_a_switch() -> None:
    named = [texts(route(last_net=net), "text")[4:-2] for net in ("A#1+B#2+C#2+D#2", "A#1+B#2+C#2+D#2+E#2", "A")]
    assert named == [["A", "B", "C", "D"], ["A", "B", "C", "and 2 more"], []]
    assert lines(route()) == ["U1#1.HI \u2192 J1#2.9: no switch"]
    assert [terminal.get("cx") for terminal in parsed(route()).iter("circle")] == ["95", "0"]  # of both ends


def coverage(sources: int, duts: int, critical: int = 0) -> velk.Coverage:
    lost = (Pin("U", "1", ""), Pin("J", "1", ""))
    return velk.Coverage(
        tuple(Pin(f"U{i // 10}#1", str(i), f"S{i}") for i in range(sources)),
        tuple(Pin(f"J{i // 10}#2", str(i), "") for i in range(duts)),
        tuple(tuple((i + k) % 12 or None for k in range(duts)) for i in range(sources)),
        tuple(velk.CriticalComponent(component(f"K{i}#1"), (lost,) * (1200 - i)) for i in range(critical)),
    )


CUT = {(51, 130): "1 more source pin", (50, 131): "1 more DUT pin", (60, 300): "10 more source pins, 170 more DUT pins"}


@pytest.mark.parametrize("sources, duts", [(1, 1), (12, 25), (50, 130), *CUT])
def test_coverage_is_a_table(sources: int, duts: int) -> None:
    value = coverage(sources, duts)
    rows = [[cell.text for cell in row.findall("td")] for row in parsed(value).findall("div/table/tbody/tr[td]")]
    assert rows == [["\u00b7" if n is None else str(n) for n in row[:130]] for row in value.switches[:50]]

    def heads(scope: str) -> List[Any]:
        found = parsed(value).findall(f".//th[@scope='{scope}']")
        return [(head.get("title"), head.text, int(head.get("colspan", "1"))) for head in found]

    of_duts, of_sources = [pin.ref for pin in value.duts[:130]], [pin.ref for pin in value.sources[:50]]
    assert heads("col") == [(f"{pin.ref}, pin {pin.number}", pin.number, 1) for pin in value.duts[:130]]
    assert heads("row") == [(f"{pin.ref}, pin {pin.number} ({pin.name})", pin.name, 1) for pin in value.sources[:50]]
    assert heads("colgroup") == [(ref, ref, of_duts.count(ref)) for ref in dict.fromkeys(of_duts)]
    assert heads("rowgroup") == [(ref, ref, len(of_duts) + 1) for ref in dict.fromkeys(of_sources)]
    assert len(value._repr_html_()) < 200_000
    left = CUT.get((sources, duts))
    assert lines(value)[1:] == ([f"and {left} that are not shown; to_csv() writes all"] if left else [])


def test_coverage_tells_how_much_is_reached() -> None:
    told = [lines(coverage(sources, duts))[0] for sources, duts in ((12, 25), (1, 1200), (1, 1), (0, 0))]
    assert told == [
        "275 of 300 pairs of source and DUT pins have a route, over so many switches:",
        "1,100 of 1,200 pairs of source and DUT pins have a route, over so many switches:",
        "0 of 1 pair of source and DUT pins have a route",
        "0 of 0 pairs of source and DUT pins have a route",
    ]


@pytest.mark.parametrize("counts, colours", [((4, 7), "7db0d9 4f90c6"), ((0, 50, 100), "f2f7fc 97bfe0 4f90c6")])
def test_strong_colours_are_for_many_switches(counts: Any, colours: str) -> None:
    value = coverage(1, len(counts))._replace(switches=(counts,))
    assert [cell.get("bgcolor") for cell in parsed(value).iter("td")][1:] == [f"#{each}" for each in colours.split()]


def test_coverage_shows_what_must_not_fail() -> None:
    value = coverage(1, 1, critical=25)
    rows = [["".join(cell.itertext()) for cell in row] for row in parsed(value).findall("table/tbody/tr")]
    assert rows == [[f"K{i}#1", "reed", f"{1200 - i:,}"] for i in range(20)]
    assert lines(value)[-1] == "and 5 more, for no more pairs each"


PINS = [Pin(f"U{i}#1", "1", f"P{i}") for i in range(6)]
RELAYS = [component(f"K{i}#1") for i in range(4)]
PLAN = plan(
    "optimal",
    name="load",
    positions=FrozenDict({"K0#1": 1, "K1#1": 2}),
    position_names=FrozenDict({"K1#1": "CH2"}),
    to_rest=(RELAYS[2], RELAYS[3]),
    to_set=(RELAYS[0], RELAYS[1]),
    ways=(
        Route(PINS[0], PINS[1], (step("N#1", RELAYS[0], 1),), "L#1", ()),
        Route(PINS[2], PINS[3], (step("M#1", RELAYS[1], 2, "CH2"),), "L#1", ()),
        Route(PINS[1], PINS[4], (), "L#1", ()),
    ),
    groups=(
        velk.Group((0, 2), (PINS[0], PINS[1], PINS[4]), ("R1#1",), ("L#1", "N#1"), (PINS[5],)),
        velk.Group((1,), (PINS[2], PINS[3]), (), ("M#1",), ()),
    ),
    couplings=(velk.GroupCoupling((0, 1), (), ("R8#1",)), velk.GroupCoupling((1,), (PINS[5],), ("R9#1", "R7#1"))),
    also_connected=((PINS[3], PINS[5]),),
    unknown=("K9#1",),
    transients=(
        velk.Transient(True, (PINS[0], PINS[2]), (("K2#1", "K3#1"),)),
        velk.Transient(False, (PINS[1], PINS[3]), (("K0#1",), ("K1#1",))),
    ),
)


def test_plan_is_told() -> None:
    assert lines(PLAN) == [
        "load \u2713 optimal Relays set: K0#1, K1#1=CH2",
        "may touch while relays go to rest: U0#1.P0, U2#1.P2 by K2#1+K3#1",
        "may touch while relays are set: U1#1.P1, U3#1.P3 by K0#1, K1#1",
        "1 U0#1.P0, U1#1.P1, U4#1.P4; through R1#1; also connects U5#1.P5",
        "2 U2#1.P2, U3#1.P3",
        "Coupled: 1 2 by R8#1",
        "Coupled: 2 U5#1.P5 by R9#1, R7#1",
        "Also connected: U3#1.P3, U5#1.P5",
        "In touch, though their positions are not known: K9#1",
    ]
    assert texts(PLAN, "li") == ["To rest: K2#1, K3#1", "To set: K0#1, K1#1=CH2"]
    assert texts(PLAN, "details") == ["Reaches 2 netsL#1, N#1", "Reaches 1 netM#1"]


def test_each_group_of_a_plan_has_its_ways_in_its_colour() -> None:
    groups = parsed(PLAN).findall("div[details]")
    assert [[svg.get("aria-label") for svg in group.findall("svg")] for group in groups] == [
        ["U0#1.P0 to U1#1.P1 over 1 switch", "U1#1.P1 to U4#1.P4 over 0 switches"],
        ["U2#1.P2 to U3#1.P3 over 1 switch"],
    ]
    wires = [{way.get("stroke") for way in group.iter("path")} - {"#17202b", "#55606e"} for group in groups]
    assert wires == [{"#8a6100"}, {"#0067a3"}]
    marks = [(mark.text, str(mark.get("style"))[:18]) for mark in parsed(PLAN).iter("b")]
    one, two = ("1", "background:#e69f00"), ("2", "background:#56b4e9")
    assert marks == [one, two, one, two, two]


ALONE = "There is no plan for this connection alone: 3 (counted from 0)"
TOGETHER = "There is a plan without any one of these connections, but none for all: 0, 1, 2 (counted from 0)"
ONE_LINE = "At least 2 groups need a line of their own, but there is only one: A#1"
TWO_LINES = "At least 3 groups need a line of their own, but there are only 2: A#1, B#1"


@pytest.mark.parametrize(
    "value, told",
    [
        (plan("feasible"), ["~ feasible All relays at rest"]),
        (plan("unknown"), ["? unknown The time was up before a plan was found"]),
        (plan("impossible", conflict=(3,)), [ALONE]),
        (plan("impossible", conflict=(0, 1, 2), bottleneck=("A#1",)), [TOGETHER, ONE_LINE]),
        (plan("impossible", conflict=(0, 1, 2), bottleneck=("A#1", "B#1")), [TOGETHER, TWO_LINES]),
    ],
)
def test_plan_without_ways(value: Plan, told: List[str]) -> None:
    assert lines(value) == ["\u2715 impossible Proven: there is no plan"] * bool(value.conflict) + told
    assert texts(value, "li") == ["Nothing changes"] * value.found


def test_what_is_left_out_of_a_plan_is_told() -> None:
    alone = PLAN._replace(
        ways=PLAN.ways[:1] * 1000, groups=tuple(velk.Group((i,), (), (), (), ()) for i in range(1000)), couplings=()
    )
    assert len(parsed(alone).findall("div/svg")) == 20 and len(alone._repr_html_()) < 120_000
    assert "and 980 more groups that are not shown; .groups has them" in lines(alone)
    tied = alone._replace(groups=(velk.Group(tuple(range(1000)), (), (), (), ()),))
    assert len(parsed(tied).findall("div/svg")) == 20
    assert "and 980 more ways that are not drawn; .ways has them" in lines(tied)


def with_names(value: Any, name: str) -> Any:
    """The value with this name instead of each that it has, but for the result of a plan."""
    if isinstance(value, dict):
        return FrozenDict({key if key == "CompType" else name: with_names(each, name) for key, each in value.items()})
    if isinstance(value, tuple):
        changed = [each if each == "optimal" else with_names(each, name) for each in value]
        return type(value)._make(changed) if hasattr(value, "_make") else tuple(changed)
    return name if isinstance(value, str) else value


VALUES = (PLAN.ways[0]._replace(side_connections=(PINS[5],)), coverage(1, 2, 1), PLAN)


@pytest.mark.parametrize("value", VALUES, ids=["route", "coverage", "plan"])
def test_names_are_text_alone(value: Any) -> None:
    shown = with_names(value, HOSTILE)
    tags = "div span strong b bdi svg g rect path circle title text table thead tbody tr th td ol li details summary"
    assert {found.tag for found in parsed(shown).iter()} <= set(tags.split())
    assert not re.search(r" (id|class|href|src|on\w+)=|url\(|[\x00-\x1f\u202e\ud800-\udfff]", shown._repr_html_())
    told = "".join(parsed(shown).itertext())
    assert "<script>alert(\"1\")</script>&amp;'\\x0A\\x00\\u202E\\uD800#1+<b>#2" in told
    longer = with_names(value, "\u6f22" * 100_000 + "#1")
    assert len(longer._repr_html_()) < len(value._repr_html_()) + 20_000
