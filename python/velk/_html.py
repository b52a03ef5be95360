"""What notebooks show of values: small and without scripts, style sheets or anything from elsewhere.

It has its own background and colours, since notebooks are light or dark.
"""

from __future__ import annotations

from itertools import groupby
from typing import TYPE_CHECKING, Dict, Optional, Sequence, Tuple

from velk import _drawing as look
from velk._drawing import drawing, position_text, task
from velk._markup import counted, element, listed, name, names, text, visible

if TYPE_CHECKING:
    from velk._values import Coverage, CriticalComponent, Group, GroupCoupling, Pin, Plan, Route, Transient

_COLOURS = f"background:{look.SURFACE};color:{look.INK}"
_PANEL = f"{_COLOURS};padding:10px 14px;border-radius:8px;font:13px/1.6 system-ui,sans-serif;overflow:auto"

_BAD, _BAD_LINE, _BAD_TEXT = "#fbdcd9", "#b3261e", "#8c1d18"
_SETS = ("#e69f00", "#56b4e9", "#00b886", "#f0e442", "#d58fb8", "#ee7733", "#9db7ff", "#bbbbbb")
_WIRES = ("#8a6100", "#0067a3", "#006b4e", "#6b6400", "#96396f", "#a83a00", "#3f54c0", "#555555")  # readable
_HEAT = ("#f2f7fc", "#d8e7f5", "#bad5ec", "#97bfe0", "#7db0d9", "#6fa5d1", "#5f9acb", "#4f90c6")  # pale to strong

_MOST_SOURCES, _MOST_DUTS, _MOST_CRITICAL, _MOST_WAYS = 50, 130, 20, 20


def route(shown: Route) -> str:
    ends = element("strong", name(str(shown.start)), " \u2192 ", name(str(shown.end)))
    heading = ". ".join((f"{ends}: {_switch_count(shown)}", *_summary(shown)))
    return _panel(_line(heading), _sides(shown.side_connections), _way(shown, look.WIRE))


def _switch_count(shown: Route) -> str:
    return counted(len(shown.steps), "switch", "switches") if shown.steps else "no switch"


def _summary(shown: Route) -> Tuple[str, ...]:
    titles = {
        "set": "Set: ",
        "rest": "To stay at rest: ",
        "unknown": "Crossed as drawn, since nobody knows the positions: ",
        "drawn": "Crossed as drawn: ",
        "none": "Through ",
    }
    found: Dict[str, Dict[str, str]] = {each: {} for each in titles}
    for step in shown.steps:
        found[task(step)][step.component.ref] = _setting(step.component.ref, step.position or 0, step.position_name)
    return tuple(title + names(found[each].values()) for each, title in titles.items() if found[each])


def _setting(ref: str, position: int, position_name: str) -> str:
    said = position_text(position, position_name) if position > 0 else ""
    return f"{ref}={said}" if said else ref


def _sides(pins: Sequence[Pin]) -> str:
    return _line("Also connects: ", names(pins)) if pins else ""


def _way(shown: Route, wire: str) -> str:
    left = len(shown.steps) - look.MOST_DRAWN
    more = _line(f"and {counted(left, 'more switch', 'more switches')} that are not drawn") if left > 0 else ""
    return drawing(shown, wire) + more


def coverage(shown: Coverage) -> str:
    reached = sum(count is not None for row in shown.switches for count in row)
    pairs = len(shown.sources) * len(shown.duts)
    heading = f"{reached:,} of {counted(pairs, 'pair', 'pairs')} of source and DUT pins have a route"
    caption = ", over so many switches:" if reached else ""
    return _panel(_line(heading, caption), _matrix(shown), _left_out(shown), _critical(shown.critical))


def _matrix(shown: Coverage) -> str:
    duts = shown.duts[:_MOST_DUTS]
    if not duts or not shown.sources:
        return ""
    most = max((count or 0 for row in shown.switches for count in row), default=0)
    rows = tuple(zip(shown.sources, shown.switches))[:_MOST_SOURCES]
    bodies = (_rows_of(ref, tuple(of), duts, most) for ref, of in groupby(rows, lambda row: row[0].ref))
    return element("div", _table(_heads(duts), *bodies), style="overflow:auto;max-height:540px")


def _heads(duts: Sequence[Pin]) -> str:
    of_duts = [(ref, len(tuple(pins))) for ref, pins in groupby(pin.ref for pin in duts)]
    bands = (_head("colgroup", ref, ref, colspan=count) for ref, count in of_duts)
    upwards = "writing-mode:vertical-rl;transform:rotate(180deg);text-align:left"
    pins = (_head("col", _with_number(pin), pin.name or pin.number, upwards) for pin in duts)
    return element("thead", _row(element("th", "from \\ to"), *bands), _row(element("td"), *pins))


def _rows_of(ref: str, rows: Sequence[Tuple[Pin, Sequence[Optional[int]]]], duts: Sequence[Pin], most: int) -> str:
    group = _head("rowgroup", ref, ref, "text-align:left", colspan=len(duts) + 1)
    return element("tbody", _row(group), *(_source_row(source, row[: len(duts)], most) for source, row in rows))


def _source_row(source: Pin, row: Sequence[Optional[int]], most: int) -> str:
    head = _head("row", _with_number(source), source.name or source.number, "text-align:right;font-weight:normal")
    return _row(head, *(_cell(count, most) for count in row))


# Several pins may have one name.
def _with_number(pin: Pin) -> str:
    return f"{pin.ref}, pin {look.pin_text(pin)}"


def _head(scope: str, full: str, shown: str, style: str = "text-align:left", **attributes: object) -> str:
    return element("th", text(shown, 40), scope=scope, title=visible(full), style=style, **attributes)


def _cell(count: Optional[int], most: int) -> str:
    if count is None:
        return "<td>\u00b7</td>"
    return f'<td bgcolor="{_HEAT[count * (len(_HEAT) - 1) // max(len(_HEAT) - 1, most)]}">{count}</td>'


def _table(*parts: str) -> str:
    return element("table", *parts, cellpadding=3, style="border-collapse:collapse;margin:0;text-align:center")


# Every second row has another background in some notebooks.
def _row(*cells: str) -> str:
    return element("tr", *cells, style=_COLOURS)


def _left_out(shown: Coverage) -> str:
    sources, duts = len(shown.sources) - _MOST_SOURCES, len(shown.duts) - _MOST_DUTS
    left = [
        *([counted(sources, "more source pin", "more source pins")] if sources > 0 else []),
        *([counted(duts, "more DUT pin", "more DUT pins")] if duts > 0 else []),
    ]
    return _line(f"and {', '.join(left)} that are not shown; to_csv() writes all") if left else ""


def _critical(components: Sequence[CriticalComponent]) -> str:
    if not components:
        return ""
    left = len(components) - _MOST_CRITICAL
    more = _line(f"and {left:,} more, for no more pairs each") if left > 0 else ""
    heads = (_head("col", head, head) for head in ("Must not fail", "Value", "Pairs lost without"))
    rows = (_critical_row(each) for each in components[:_MOST_CRITICAL])
    return _table(element("thead", _row(*heads)), element("tbody", *rows)) + more


def _critical_row(critical: CriticalComponent) -> str:
    component = critical.component
    head = _head("row", component.ref, component.ref)
    return _row(head, element("td", name(component.value)), element("td", f"{len(critical.lost):,}"))


def plan(shown: Plan) -> str:
    title = element("strong", name(shown.name)) + " " if shown.name else ""
    return _panel(_line(title, _badge(shown.result), _told(shown)), _found(shown) if shown.found else _conflict(shown))


def _badge(result: str) -> str:
    said, colours = {
        "optimal": ("\u2713 optimal", (look.END, look.END_LINE, look.INK)),
        "feasible": ("~ feasible", (look.SIDE, look.SIDE_LINE, look.SIDE_TEXT)),
        "impossible": ("\u2715 impossible", (_BAD, _BAD_LINE, _BAD_TEXT)),
        "unknown": ("? unknown", (look.SURFACE, look.QUIET, look.INK)),
    }[result]
    return _boxed(said, *colours)


def _boxed(shown: str, background: str, line: str, ink: str) -> str:
    style = f"background:{background};border:1px solid {line};color:{ink};border-radius:9px;padding:0 8px"
    return element("span", shown, style=style)


def _told(shown: Plan) -> str:
    if not shown.found:
        is_proven = shown.result == "impossible"
        return " Proven: there is no plan" if is_proven else " The time was up before a plan was found"
    relays = [_setting(ref, at, shown.position_names.get(ref, "")) for ref, at in shown.positions.items()]
    return f" Relays set: {names(relays)}" if relays else " All relays at rest"


def _found(shown: Plan) -> str:
    drawn = [group for group in shown.groups if group.connections[0] < _MOST_WAYS]
    groups = [_group(shown, number, group) for number, group in enumerate(drawn)]
    left = counted(len(shown.groups) - len(drawn), "more group", "more groups")
    more = _line(f"and {left} that are not shown; .groups has them") if len(drawn) < len(shown.groups) else ""
    return "".join((_changes(shown), _transients(shown), *groups, more, _remarks(shown)))


def _changes(shown: Plan) -> str:
    rest = [component.ref for component in shown.to_rest]
    away = [_setting(row.component.ref, row.position, row.position_name) for row in shown.rows if row.order == 2]
    lines = [element("li", title, names(of)) for title, of in (("To rest: ", rest), ("To set: ", away)) if of]
    return element("ol", *lines or [element("li", "Nothing changes")], style="margin:4px 0;padding-left:1.8em")


def _transients(shown: Plan) -> str:
    return listed(shown.transients, _transient, "")


def _transient(touching: Transient) -> str:
    when = "while relays go to rest" if touching.is_on_the_way_to_rest else "while relays are set"
    gangs = names(["+".join(gang) for gang in touching.gangs])
    mark = _boxed("may touch", look.SIDE, look.SIDE_LINE, look.SIDE_TEXT)
    return _line(mark, f" {when}: ", names(touching.pins), " by ", gangs)


def _group(shown: Plan, number: int, group: Group) -> str:
    wire = _WIRES[number % len(_WIRES)]
    told = [
        _mark(number),
        names(group.pins),
        *(["; through ", names(group.through)] if group.through else []),
        *(["; also connects ", names(group.side_connections)] if group.side_connections else []),
    ]
    ways = [_way(shown.ways[connection], wire) for connection in group.connections if connection < _MOST_WAYS]
    left = counted(len(group.connections) - len(ways), "more way", "more ways")
    more = _line(f"and {left} that are not drawn; .ways has them") if len(ways) < len(group.connections) else ""
    style = f"border-left:4px solid {wire};padding-left:10px;margin:8px 0"
    return element("div", _line(*told), *ways, more, _nets(group), style=style)


def _nets(group: Group) -> str:
    count = counted(len(group.nets), "net", "nets")
    return element("details", element("summary", f"Reaches {count}"), names(group.nets), style="font-size:12px")


# A colour alone would not tell groups apart.
def _mark(number: int) -> str:
    style = f"background:{_SETS[number % len(_SETS)]};border:1px solid #000;color:#000;border-radius:6px;padding:0 5px"
    return element("b", str(number + 1), style=style) + " "


def _remarks(shown: Plan) -> str:
    lines = [
        listed(shown.couplings, _coupling, ""),
        listed(shown.also_connected, lambda pins: _line("Also connected: ", names(pins)), ""),
    ]
    if shown.unknown:
        lines.append(_line("In touch, though their positions are not known: ", names(shown.unknown)))
    return "".join(lines)


def _coupling(coupling: GroupCoupling) -> str:
    pins = [names(coupling.pins), " "] if coupling.pins else []
    return _line("Coupled: ", listed(coupling.groups, _mark, ""), *pins, "by ", names(coupling.passives))


def _conflict(shown: Plan) -> str:
    if not shown.conflict:
        return ""
    lines = [_line(_conflict_title(shown), names(shown.conflict), " (counted from 0)")]
    if shown.bottleneck:
        lines.append(_line(_shortage(len(shown.bottleneck)), names(shown.bottleneck)))
    return "".join(lines)


def _conflict_title(shown: Plan) -> str:
    if len(shown.conflict) == 1:
        return "There is no plan for this connection alone: "
    return "There is a plan without any one of these connections, but none for all: "


def _shortage(lines: int) -> str:
    there = "there is only one: " if lines == 1 else f"there are only {lines:,}: "
    return f"At least {lines + 1:,} groups need a line of their own, but {there}"


def _line(*content: str) -> str:
    return element("div", *content, style="overflow-wrap:anywhere")


def _panel(*content: str) -> str:
    return element("div", *content, style=_PANEL)
