"""The values of the module as the command writes them."""

from __future__ import annotations

from typing import Any, Dict, Iterable, List, Tuple

import velk

Json = Dict[str, Any]


def component(value: velk.Component) -> Json:
    return {"ref": value.ref, "value": value.value, "part": value.part, "properties": dict(value.properties)}


def part(value: velk.Part) -> Json:
    return {"name": value.name, "lib": value.library, "pins": [pin._asdict() for pin in value.pins]}


def net(value: velk.Net) -> Json:
    return {"name": value.name, "nodes": [node(pin) for pin in value.pins]}


def node(pin: velk.Pin) -> Json:
    return {"ref": pin.ref, "pin": pin.number}


def relay(system: velk.System, of: velk.Component) -> Json:
    value = system.positions(of)
    positions = [{"name": each.name, "closed": [list(pair) for pair in each.closed]} for each in value.positions]
    return {
        "ref": of.ref,
        "part": f"{system.part(of.part).library}:{of.part.rpartition('#')[0]}",
        "positions": positions,
        "toldBy": value.rule,
        "gang": value.gang[0] if len(value.gang) > 1 else "",
        "unknown": value.is_unknown,
    }


def pin_text(pin: velk.Pin) -> str:
    return f"{pin.ref}.{pin.number}"


def pin_texts(pins: Iterable[velk.Pin]) -> List[str]:
    return [pin_text(pin) for pin in pins]


def sets(pin_sets: Iterable[Tuple[velk.Pin, ...]]) -> List[List[str]]:
    return [pin_texts(pins) for pins in pin_sets]


def pin(system: velk.System, value: velk.Pin) -> Json:
    of = system.component(value.ref)
    listed = [pin for pin in system.part(of.part).pins if pin.number == value.number]
    assert [pin.name for pin in listed] == [value.name]
    return {"component": component(of), "pin": listed[0]._asdict()}


def steps(values: Tuple[velk.Step, ...]) -> List[Json]:
    return [
        {**component(step.component), "pins": [step.pin_in.number, step.pin_out.number], "position": step.position}
        for step in values
    ]


def positions_with_gangs(system: velk.System, route: velk.Route) -> Dict[str, int]:
    """The relays to set, with those that move along."""
    set_ = {ref: position for ref, position in route.state.items() if position > 0}
    return {member: position for ref, position in set_.items() for member in system.positions(ref).gang}


def routes(system: velk.System, found: Tuple[velk.Route, ...], as_drawn: bool) -> Json:
    result: Json = {"routes": [_route(system, route, as_drawn) for route in found]}
    if not as_drawn:
        result["unknown"] = sorted({step.component.ref for each in found for step in each.steps if step.is_unknown})
    return result


def _route(system: velk.System, value: velk.Route, as_drawn: bool) -> Json:
    result: Json = {
        "switchingComponents": steps(value.steps),
        "additionalConnections": [pin(system, side) for side in value.side_connections],
    }
    return result if as_drawn else {**result, "positions": positions_with_gangs(system, value)}


def reason(value: velk.NoRouteReason) -> Json:
    """Without what the command tells in words only, and without members that depend on what is known."""
    result: Json = {}
    if value.sufficient_limits:
        result["limits"] = [_limits(limits) for limits in value.sufficient_limits]
    if value.conflict:
        result["conflict"] = steps(value.conflict.steps)
    if value.excluded_components or value.excluded_nets:
        result["excludedComponents"] = list(value.excluded_components)
        result["excludedNets"] = list(value.excluded_nets)
    if value.is_connected is False and not value.is_connected_over_others:
        result["source"] = _reach(value.from_source)
        result["destination"] = _reach(value.from_dut)
        result["between"] = list(value.between)
    return result


def _limits(value: velk.SufficientLimits) -> Json:
    return {
        "maxSwitches": value.max_switches,
        "maxConnections": value.max_connections,
        "switches": value.switches,
        "connections": value.side_connections,
    }


def _reach(value: velk.Reach) -> Json:
    return {"nets": list(value.nets), "unpluggedPins": [node(pin) for pin in value.unplugged_pins]}


def coverage(value: velk.Coverage) -> Json:
    """With the critical components, by the numbers of the pins of each pair."""
    source_numbers = {pin: number for number, pin in enumerate(value.sources)}
    dut_numbers = {pin: number for number, pin in enumerate(value.duts)}
    critical = [
        {"component": each.component.ref, "lost": [[source_numbers[s], dut_numbers[d]] for s, d in each.lost]}
        for each in value.critical
    ]
    return {
        "sources": pin_texts(value.sources),
        "duts": pin_texts(value.duts),
        "switches": [list(row) for row in value.switches],
        "critical": critical,
    }


def connections(system: velk.System, value: velk.Connections) -> Json:
    couplings = [{"sets": sets(each.sets), "passives": list(each.passives)} for each in value.couplings]
    unknown = list(system.unknown_relays)
    return {"step": "1", "connected": sets(value.connected), "couplings": couplings, "unknown": unknown}


def plan(value: velk.Plan) -> Json:
    result: Json = {"step": value.name, "result": value.result}
    if value.result == "impossible":
        return {**result, "conflict": list(value.conflict), "bottleneck": list(value.bottleneck)}
    if not value.found:
        return result
    return {
        **result,
        "positions": dict(value.positions),
        "groups": [_group(group) for group in value.groups],
        "couplings": [_coupling(coupling) for coupling in value.couplings],
        "alsoConnected": sets(value.also_connected),
        "unknown": list(value.unknown),
        "toRest": [relay.ref for relay in value.to_rest],
        "toSet": [relay.ref for relay in value.to_set],
        "transients": [_transient(transient) for transient in value.transients],
    }


def _group(value: velk.Group) -> Json:
    return {
        "connections": list(value.connections),
        "pins": pin_texts(value.pins),
        "through": list(value.through),
        "nets": list(value.nets),
        "sideConnections": pin_texts(value.side_connections),
    }


def _coupling(value: velk.GroupCoupling) -> Json:
    return {"groups": list(value.groups), "pins": pin_texts(value.pins), "passives": list(value.passives)}


def _transient(value: velk.Transient) -> Json:
    half = "rest" if value.is_on_the_way_to_rest else "set"
    return {"half": half, "pins": pin_texts(value.pins), "gangs": [list(gang) for gang in value.gangs]}


def plan_rows(value: velk.Plan) -> List[Dict[str, str]]:
    """As CSV, but with the properties that the relay has only."""
    return [
        {
            "step": row.step,
            "order": str(row.order),
            "component": row.component.ref,
            "position": str(row.position),
            "position name": row.position_name,
            **row.component.properties,
        }
        for row in value.rows
    ]


def finding(value: velk.Finding, netlists: Tuple[str, ...]) -> Json:
    return {
        "code": value.code,
        "message": value.message,
        "components": list(value.components),
        "nets": list(value.nets),
        "netlists": [netlists[number - 1] for number in value.files],
        "advice": value.advice,
    }
