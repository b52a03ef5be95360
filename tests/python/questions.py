"""Questions at random, for the module and for the command."""

from __future__ import annotations

import random
from typing import Any, Dict, List, NamedTuple, Optional, Tuple

import velk


class End(NamedTuple):
    """A pin as the module is told, in one of the ways that there are, and as the command is."""

    where: Any
    pin: Optional[str]
    component: List[str]
    """As the command is told: properties or a reference."""
    pin_text: str

    def options(self, name: str) -> List[str]:
        by = name if "=" in self.component[0] else name + "-ref"
        return [*options(by, self.component), f"{name}-pin={self.pin_text}"]

    def cells(self) -> Tuple[str, str]:
        return ";".join(self.component), self.pin_text


class Keywords(NamedTuple):
    """How to ask, besides what for."""

    values: Dict[str, Any]
    options: List[str]

    def add(self, name: str, value: Any, *told: str) -> None:
        self.values[name] = value
        self.options.extend(told)

    def __add__(self, other: Keywords) -> Keywords:  # type: ignore[override]
        return Keywords({**self.values, **other.values}, self.options + other.options)


def options(name: str, values: List[str]) -> List[str]:
    return [f"{name}={value}" for value in values]


def any_end(system: velk.System, pick: random.Random, kind: str, is_on_net: bool = False) -> End:
    components = [each for each in system.components() if each.properties["CompType"].lower() == kind.lower()]
    pins = [pin for each in components for pin in system.pins(each) if pin.net or not is_on_net]
    pin = pick.choice(pins)
    component = system.component(pin.ref)
    properties = {name: value for name, value in component.properties.items() if name != "Bench" or pick.random() < 0.5}
    text = pin.name if pick.random() < 0.5 and pin.name else pin.number
    if pick.random() < 0.3 and (not is_on_net or system.pin(properties, text).net):
        return End(properties, text, [f"{name}={value}" for name, value in properties.items()], text)
    ways = [(component.ref, text), (component, text), (f"{component.ref}.{text}", None)]
    if system.pin(component, text) == pin:
        ways.append((pin, None))
    return End(*pick.choice(ways), [component.ref], text)


def kept_out(system: velk.System, pick: random.Random) -> Keywords:
    crossed = system.components(CompType="Relay") + system.components(CompType="Resistor")
    without = [each.ref for each in pick.sample(crossed, min(len(crossed), pick.choice((0, 1, 2, 4))))]
    if pick.random() < 0.2 and system.components(CompType="Resistor"):
        without.append("CompType=Resistor")
    nets = [each.name for each in pick.sample(system.nets, pick.choice((0, 0, 1)))]
    told = options("--without", without) + options("--without-net", nets)
    return Keywords({"without": without, "without_nets": nets}, told)


def search(system: velk.System, pick: random.Random) -> Keywords:
    """What routes, the reason why there are none, and coverage take."""
    result = kept_out(system, pick)
    if pick.random() < 0.6:
        most = pick.choice((0, 1, 2, 3))
        result.add("max_switches", most, f"--max-switches={most}")
    if pick.random() < 0.6:
        most = pick.choice((0, 1, 5))
        result.add("max_connections", most, f"--max-connections={most}")
    if pick.random() < 0.3:
        result.add("as_drawn", True, "--as-drawn")
    return result


def planning(system: velk.System, pick: random.Random) -> Keywords:
    result = kept_out(system, pick) if pick.random() < 0.4 else Keywords({}, [])
    chances = {"side_connections": 0.5, "no_couplings": 0.2, "trust_unknown": 0.7, "fewest_changes": 0.3}
    for name, chance in chances.items():
        if pick.random() < chance:
            result.add(name, True, "--" + name.replace("_", "-"))
    if pick.random() < 0.3:
        allowed = pick.choice(system.components(CompType="DUT")).ref
        result.add("allow", allowed, f"--allow={allowed}")
    if pick.random() < 0.3:
        result.add("time_limit", 30.0, "--time-limit=30")
    return result
