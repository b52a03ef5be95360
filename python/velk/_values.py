"""What questions are answered with: values that never change, with ``==`` and ``hash``, that outlive their system."""

from __future__ import annotations

import math
import os
import re
from typing import Any, Dict, NamedTuple, NoReturn, Optional, Tuple, TypeVar, Union

from velk import _html

Key = TypeVar("Key")
Value = TypeVar("Value")


class FrozenDict(Dict[Key, Value]):
    """A dict that does not change and has a hash. ``dict(it)`` and ``it.copy()`` are dicts that may be changed."""

    __slots__ = ()

    def _refuse(self, *args: Any, **kwargs: Any) -> NoReturn:
        raise TypeError("it belongs to a value, which does not change; dict(...) makes a copy that does")

    __setitem__ = __delitem__ = __ior__ = _refuse  # type: ignore[assignment]
    clear = pop = popitem = setdefault = update = _refuse  # type: ignore[assignment]

    def __hash__(self) -> int:  # type: ignore[override]
        return hash(frozenset(self.items()))

    def __reduce__(self) -> Tuple[Any, ...]:
        return FrozenDict, (dict(self),)


class Component(NamedTuple):
    """A component of a netlist."""

    ref: str
    """Its reference designator with the number of its netlist: "K3#1"."""
    value: str
    """As it is drawn: "10k"."""
    part: str
    """The name of its library part, with the number of the netlist: "Relay_SPST#1". ``System.part()`` has its pins."""
    properties: FrozenDict[str, str]
    """By their names. "CompType" is its type."""

    def __repr__(self) -> str:
        return f"Component {self.ref}"


class Pin(NamedTuple):
    """A pin of a component. Where a pin is asked for, as by ``System.plan()``, it may be given."""

    ref: str
    """The reference of the component: "K3#1"."""
    number: str
    """As text: "1", "A1"."""
    name: str
    """May be empty, as it is where the part of the component does not list the pin."""
    net: Optional[str] = None
    """The name of the net that it was met on; else that of the first net that holds it. None where no net does."""

    def __str__(self) -> str:
        return f"{self.ref}.{self.name or self.number}"

    def __repr__(self) -> str:
        return f"Pin {self.ref}.{self.number} {self.name}".rstrip()


class PartPin(NamedTuple):
    """A pin as a library part has it."""

    number: str
    """As text: "1", "A1"."""
    name: str
    """May be empty."""
    type: str
    """The electrical type, as KiCad writes it: "passive"."""


class Part(NamedTuple):
    """A library part."""

    name: str
    """With the number of its netlist: "Relay_SPST#1"."""
    library: str
    """May be empty."""
    pins: Tuple[PartPin, ...]
    """In the order of the netlist."""

    def __repr__(self) -> str:
        return f"Part {self.name} ({len(self.pins)} pins)"


class Net(NamedTuple):
    """What is connected without any switch."""

    name: str
    """With the number of its netlist: "GND#1". Of nets that are plugged together "OUT#1+IN#2"."""
    pins: Tuple[Pin, ...]
    """In the order of the netlists and of their joining."""

    def __repr__(self) -> str:
        return f"Net {self.name} ({len(self.pins)} pins)"


class Step(NamedTuple):
    """A component that a route crosses, and by which pins."""

    net: str
    """The name of the net from which the component is entered."""
    pin_in: Pin
    """By which it is entered."""
    component: Component
    """What is crossed."""
    pin_out: Pin
    """By which it is left."""
    position: Optional[int] = None
    """That a relay has to take, 0 being rest. None of what is no relay, of unknown positions, and as drawn."""
    position_name: str = ""
    """As it is drawn; may be empty."""
    is_unknown: bool = False
    """Nothing tells the positions of the relay, so that it is crossed as drawn."""

    def __repr__(self) -> str:
        position = "" if self.position is None else f", position {self.position}"
        return f"Step {self.net} -> {self.pin_in.number} {self.component.ref} {self.pin_out.number}{position}"


class Route(NamedTuple):
    """One way from pin to pin. A notebook shows it as a drawing."""

    start: Pin
    """The pin of the source, or that of a connection's first end."""
    end: Pin
    """The pin of the DUT, or that of a connection's other end."""
    steps: Tuple[Step, ...]
    """What it crosses, from start to end; empty where the two pins lie on one net."""
    last_net: str
    """The name of the net that holds the pin at the end."""
    side_connections: Tuple[Pin, ...]
    """Further pins of interface components (sources and DUTs) that it connects, in the order in which they are met."""

    @property
    def switches(self) -> Tuple[Component, ...]:
        """The components that it crosses but for relays that have to stay at rest, from start to end."""
        return tuple(step.component for step in self.steps if step.position != 0)

    @property
    def resting(self) -> Tuple[Component, ...]:
        """The relays that must not be set, since it crosses contacts that are closed at rest."""
        return tuple(step.component for step in self.steps if step.position == 0)

    @property
    def state(self) -> FrozenDict[str, int]:
        """The position of each relay that has one, by reference: what ``System.connected()`` takes."""
        return FrozenDict({step.component.ref: step.position for step in self.steps if step.position is not None})

    def __str__(self) -> str:
        crossed = (f"{step.component.ref} (rest)" if step.position == 0 else step.component.ref for step in self.steps)
        return " -> ".join((str(self.start), *crossed, str(self.end)))

    def __repr__(self) -> str:
        return f"Route {self}"

    def _repr_html_(self) -> str:
        return _html.route(self)


class SufficientLimits(NamedTuple):
    """Limits with which there is a route, and how much the first such route has."""

    max_switches: int
    max_connections: int
    switches: int
    """Of that route."""
    side_connections: int
    """Of that route."""


class Reach(NamedTuple):
    """How far one gets from a pin over switchable components."""

    nets: Tuple[str, ...]
    """Their names, the nearest first; empty where the pin lies on none that may be entered."""
    unplugged_pins: Tuple[Pin, ...]
    """Of the connectors there those without the same pin of another component with their Identifier."""
    is_alone: bool
    """Nothing else lies on the net of the pin."""
    is_excluded: bool
    """The net of the pin is kept out."""


class PositionConflict(NamedTuple):
    """Why no state of the relays makes a way as drawn."""

    route: Route
    """All of the way, as drawn."""
    steps: Tuple[Step, ...]
    """Those that stand against it. One, without a position, if no position of its relay connects the two pins; else
    two or more over one relay, or over relays that move together, each with the position that it alone would need."""


class NoRouteReason(NamedTuple):
    """Why there is no route, as far as it is known."""

    is_connected: Optional[bool]
    """Whether there is a chain of switchable components, however long; None where that is not known."""
    shortest: Optional[int]
    """The number of components of the shortest chain; None without one."""
    sufficient_limits: Tuple[SufficientLimits, ...]
    """More switches, if that alone is enough; more side connections, if that alone is enough; else both."""
    from_source: Reach
    """Where there is no chain."""
    from_dut: Reach
    """The same backwards."""
    between: Tuple[str, ...]
    """References of components of other types on a way that crosses as few of them as possible."""
    is_connected_in_other_direction: bool
    """There is no chain, but one from the DUT to the source."""
    is_realizable: Optional[bool]
    """Whether some state of the relays makes a chain, however long; None where that is not known."""
    conflict: Optional[PositionConflict]
    """What stands against the first way as drawn; None where nothing does."""
    excluded_components: Tuple[str, ...]
    """References of what is kept out and would be crossed by the first route if nothing was kept out."""
    excluded_nets: Tuple[str, ...]
    """Names of the nets that are kept out and that it would enter."""
    is_connected_over_others: bool
    """There is a chain, but none over all of ``through``."""


class Position(NamedTuple):
    """A position that a relay can take."""

    name: str
    """As it is drawn; may be empty."""
    closed: Tuple[Tuple[str, str], ...]
    """Numbers of pins that it connects, in pairs."""


class RelayPositions(NamedTuple):
    """What a relay can do."""

    rule: str
    """What tells it: "field", "table", "contact numbers", "pin names", "two pins", "no contacts" or "unknown"."""
    positions: Tuple[Position, ...]
    """The first one is rest; empty for "no contacts" and "unknown"."""
    gang: Tuple[str, ...]
    """The references of the relays that take the same position as this one, itself among them; sorted."""
    is_unknown: bool
    """The positions of a relay of the gang are not known, so that all of it stays at rest."""


class Coupling(NamedTuple):
    """Sets of connected pins that passive components couple with one another."""

    sets: Tuple[Tuple[Pin, ...], ...]
    """A pin that is connected with no other one is a set by itself."""
    passives: Tuple[str, ...]
    """References of all that lie on a net of what is coupled; sorted."""


class Connections(NamedTuple):
    """What is connected while relays are set. Pins are sorted by reference, then by number; sets by their pins."""

    connected: Tuple[Tuple[Pin, ...], ...]
    """Sets of pins of interface components, on two nets at least."""
    couplings: Tuple[Coupling, ...]
    """What resistors couple besides."""


class CriticalComponent(NamedTuple):
    """A component without which pairs of pins that have a route have none."""

    component: Component
    lost: Tuple[Tuple[Pin, Pin], ...]
    """These pairs, each of a source pin and a DUT pin."""


class Coverage(NamedTuple):
    """Which pins of sources reach which pins of DUTs. A notebook shows the matrix.

    ``numpy.array(coverage)`` is the matrix, with nan where there is no route; ``to_pandas()`` makes a DataFrame of it.
    """

    sources: Tuple[Pin, ...]
    """By reference, those of a component in the order of its part."""
    duts: Tuple[Pin, ...]
    """In the same order."""
    switches: Tuple[Tuple[Optional[int], ...], ...]
    """For each source pin a row, and there for each DUT pin how many components the first route crosses; None where
    there is no route."""
    critical: Tuple[CriticalComponent, ...] = ()
    """Where asked for; most lost pairs first, then by reference."""

    def to_csv(self, path: Union[str, "os.PathLike[str]"]) -> None:
        """Write the matrix to a file, as ``velk coverage --format csv`` does: a line for each source pin, a column for
        each DUT pin, cells that are empty where there is no route."""
        with open(path, "w", encoding="utf-8", newline="") as file:
            file.write(_csv_line("source", *map(_csv_pin, self.duts)))
            for source, row in zip(self.sources, self.switches):
                file.write(_csv_line(_csv_pin(source), *("" if count is None else str(count) for count in row)))

    def to_pandas(self) -> Any:
        """A ``pandas.DataFrame`` with a row for each source pin and a column for each DUT pin, by what ``str()`` makes
        of them. Raises ImportError where there is no pandas."""
        import pandas  # not needed for anything else

        return pandas.DataFrame(
            self.switches, index=[str(pin) for pin in self.sources], columns=[str(pin) for pin in self.duts]
        ).astype("Int64")

    def __array__(self, dtype: Any = None, copy: Optional[bool] = None) -> Any:
        import numpy  # which is who asks

        rows = [[math.nan if count is None else count for count in row] for row in self.switches]
        return numpy.array(rows, dtype=dtype or float).reshape(len(self.sources), len(self.duts))

    def __repr__(self) -> str:
        return f"Coverage of {len(self.sources)} source pins and {len(self.duts)} DUT pins"

    def _repr_html_(self) -> str:
        return _html.coverage(self)


def _csv_pin(pin: Pin) -> str:
    # Two pins may have one name.
    return f"{pin.ref}.{pin.number}"


def _csv_line(*cells: str) -> str:
    # csv.writer leaves a carriage return in a cell as it is, before Python 3.13.
    return ",".join(_csv_cell(cell) for cell in cells) + "\n"


def _csv_cell(cell: str) -> str:
    return '"' + cell.replace('"', '""') + '"' if re.search('[",\r\n]', cell) else cell


class Finding(NamedTuple):
    """One thing that is probably not as it is meant."""

    code: str
    """As "identifier-missing"; it never changes."""
    places: Tuple[str, ...]
    """What it is found at: components, nets, files, or groups of sources."""
    text: str
    """What is wrong there: "a connector without Identifier"."""
    advice: str
    """What to do about it, the same for all of a code."""
    components: Tuple[str, ...]
    """The references of those that it is about."""
    nets: Tuple[str, ...]
    """The names, as on the single boards, of those that it is about."""
    pins: Tuple[str, ...]
    """Numbers of pins of these components."""
    files: Tuple[int, ...]
    """The positions, from 1 on, of the netlists whose elements it is about; ascending."""
    message: str
    """Places and text: "K1#1, K2#1: no CompType (part 'Relay')"."""

    def __str__(self) -> str:
        return self.message

    def __repr__(self) -> str:
        return f"Finding {self.code}: {self.message}"


class Group(NamedTuple):
    """Connections of a plan that are tied together, with all that they reach."""

    connections: Tuple[int, ...]
    """By their positions among those that were asked for, from 0, ascending."""
    pins: Tuple[Pin, ...]
    """That were asked for, each once; by reference, then number."""
    through: Tuple[str, ...]
    """References of the passive components that it goes through; sorted."""
    nets: Tuple[str, ...]
    """Names of all nets that it reaches; sorted."""
    side_connections: Tuple[Pin, ...]
    """Pins on them that are there because they are allowed."""


class GroupCoupling(NamedTuple):
    """Groups, and pins of interface components that belong to none, that passive components couple."""

    groups: Tuple[int, ...]
    """By their positions in the plan, from 0, ascending; one at least."""
    pins: Tuple[Pin, ...]
    """Of no group; by reference, then number."""
    passives: Tuple[str, ...]
    """References of those that couple, but no group goes through; sorted."""


class Transient(NamedTuple):
    """Pins that may touch for a moment, while relays move."""

    is_on_the_way_to_rest: bool
    """While relays go to rest; else while others leave it."""
    pins: Tuple[Pin, ...]
    """All that may be tied together then; by reference, then number."""
    gangs: Tuple[Tuple[str, ...], ...]
    """The references of the relays that move and have a part in it, those together that take the same position."""


class PlanRow(NamedTuple):
    """A relay that moves: what a relay card is told."""

    step: str
    """The name of the step."""
    order: int
    """1 on the way to rest, 2 away from it. All with 1 come to rest before those with 2 move."""
    component: Component
    """The relay. Its properties tell where its coil is driven from."""
    position: int
    """Where it goes, 0 being rest."""
    position_name: str
    """As it is drawn; may be empty."""

    def __repr__(self) -> str:
        return f"PlanRow {self.order}: {self.component.ref} to {self.position}"


class Plan(NamedTuple):
    """Positions of relays that make several connections at once and nothing else, or why there are none. A notebook
    shows it."""

    name: str
    """Of the step; may be empty."""
    result: str
    """"optimal": a plan, and that none is better; "feasible": a plan, but the time was up before that was known;
    "impossible": there is no plan; "unknown": the time was up before one was found."""
    positions: FrozenDict[str, int]
    """Of all relays away from rest, by reference: what ``System.connected()`` takes. All others are at rest."""
    position_names: FrozenDict[str, str]
    """Of these positions, as far as they are drawn with one."""
    to_rest: Tuple[Component, ...]
    """The relays to take to rest, before any other one moves; by reference."""
    to_set: Tuple[Component, ...]
    """The relays that then go to their positions; by reference."""
    ways: Tuple[Route, ...]
    """The way of each connection."""
    groups: Tuple[Group, ...]
    """In the order of their first connections."""
    couplings: Tuple[GroupCoupling, ...]
    """What passive components couple with these groups."""
    also_connected: Tuple[Tuple[Pin, ...], ...]
    """With ``side_connections``: sets of pins of no group that are connected, but not at rest."""
    unknown: Tuple[str, ...]
    """References of relays whose positions are not known and that touch a group."""
    transients: Tuple[Transient, ...]
    """What may touch on the way from the positions before, whichever relay is the first."""
    conflict: Tuple[int, ...]
    """Where there is no plan: connections, by their positions among those that were asked for, from 0, for which there
    is none, but one without any of them."""
    bottleneck: Tuple[str, ...]
    """Names of nets of which more groups of the conflict need one each than there are; empty where lines do not run
    out."""

    @property
    def found(self) -> bool:
        """Whether there is a plan, proven to be the best or not."""
        return self.result in ("optimal", "feasible")

    @property
    def rows(self) -> Tuple[PlanRow, ...]:
        """What moves, in the order in which to move it. A relay that goes from one position to another is in two."""
        rest = (PlanRow(self.name, 1, relay, 0, "") for relay in self.to_rest)
        away = (
            PlanRow(self.name, 2, relay, self.positions[relay.ref], self.position_names.get(relay.ref, ""))
            for relay in self.to_set
        )
        return (*rest, *away)

    def __repr__(self) -> str:
        name = f" {self.name!r}" if self.name else ""
        if self.found:
            relays = ", ".join(f"{ref} = {position}" for ref, position in self.positions.items())
            return f"Plan{name}, {self.result}: {relays or 'all relays at rest'}"
        return f"Plan{name}, {self.result}"

    def _repr_html_(self) -> str:
        return _html.plan(self)
