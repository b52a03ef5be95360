"""What questions are answered with: values that never change, with ``==`` and ``hash``, that outlive their system."""

import math
import os
import re
from typing import Any, Dict, NamedTuple, NoReturn, Optional, Tuple, Type, TypeVar, Union

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
    """A component of a netlist.

    ref: its reference designator with the number of its netlist: "K3#1".
    value: as it is drawn: "10k".
    part: the name of its library part, with the number of the netlist: "Relay_SPST#1". ``System.part()`` has its pins.
    properties: what else the netlist has of it, by name. "CompType" is its type.
    """

    ref: str
    value: str
    part: str
    properties: FrozenDict[str, str]

    def __repr__(self) -> str:
        return f"Component {self.ref}"


class Pin(NamedTuple):
    """A pin of a component. Where a pin is asked for, as by ``System.plan()``, it may be given.

    ``str()`` tells it as the command does, "U2#1.HI", with its number where it has no name. Another pin may have the
    same name, so give the pin itself where it is the one that is meant.

    ref: the reference of the component: "K3#1".
    number: as text: "1", "A1".
    name: may be empty, as it is where the part of the component does not list the pin.
    net: the name of the net that it was met on; else that of the first net that holds it. None where no net does.
    """

    ref: str
    number: str
    name: str
    net: Optional[str] = None

    def __str__(self) -> str:
        return f"{self.ref}.{self.name or self.number}"

    def __repr__(self) -> str:
        return f"Pin {self.ref}.{self.number} {self.name}".rstrip()


class PartPin(NamedTuple):
    """A pin as a library part has it.

    number: as text: "1", "A1".
    name: may be empty.
    type: the electrical type, as KiCad writes it: "passive".
    """

    number: str
    name: str
    type: str


class Part(NamedTuple):
    """A library part.

    name: its name with the number of its netlist: "Relay_SPST#1".
    library: may be empty.
    pins: its pins in the order of the netlist.
    """

    name: str
    library: str
    pins: Tuple[PartPin, ...]

    def __repr__(self) -> str:
        return f"Part {self.name} ({len(self.pins)} pins)"


class Net(NamedTuple):
    """What is connected without any switch.

    name: its name with the number of its netlist: "GND#1". Of nets that are plugged together "OUT#1+IN#2".
    pins: its pins in the order of the netlists and of their joining.
    """

    name: str
    pins: Tuple[Pin, ...]

    def __repr__(self) -> str:
        return f"Net {self.name} ({len(self.pins)} pins)"


class Step(NamedTuple):
    """A component that a route crosses, and by which pins.

    net: the name of the net from which the component is entered.
    pin_in: the pin by which it is entered.
    component: what is crossed.
    pin_out: the pin by which it is left.
    position: what a relay has to take, 0 being rest; None for what is no relay, for unknown positions, and as drawn.
    position_name: as it is drawn; may be empty.
    is_unknown: whether nothing tells the positions of the relay, so that it is crossed as drawn.
    """

    net: str
    pin_in: Pin
    component: Component
    pin_out: Pin
    position: Optional[int] = None
    position_name: str = ""
    is_unknown: bool = False

    def __repr__(self) -> str:
        position = "" if self.position is None else f", position {self.position}"
        return f"Step {self.net} -> {self.pin_in.number} {self.component.ref} {self.pin_out.number}{position}"


class Route(NamedTuple):
    """One way from pin to pin. A notebook shows it as a drawing.

    start: the pin of the source, or that of a connection's first end.
    end: the pin of the DUT, or that of a connection's other end.
    steps: what it crosses, from start to end; empty where the two pins lie on one net.
    last_net: the name of the net that holds the pin at the end.
    side_connections: further pins of interface components (sources and DUTs) that it connects, in the order in which
        they are met.
    """

    start: Pin
    end: Pin
    steps: Tuple[Step, ...]
    last_net: str
    side_connections: Tuple[Pin, ...]

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
    """Limits with which there is a route, and how much the first such route has.

    max_switches: the first limit, as ``System.routes()`` takes it.
    max_connections: the other one.
    switches: how many that route has.
    side_connections: how many it has of these.
    """

    max_switches: int
    max_connections: int
    switches: int
    side_connections: int


class Reach(NamedTuple):
    """How far one gets from a pin over switchable components.

    nets: their names, the nearest first; empty where the pin lies on none that may be entered.
    unplugged_pins: pins of the connectors there, without the same pin of another component with their Identifier.
    is_alone: whether nothing else lies on the net of the pin.
    is_excluded: whether the net of the pin is kept out.
    """

    nets: Tuple[str, ...]
    unplugged_pins: Tuple[Pin, ...]
    is_alone: bool
    is_excluded: bool


class PositionConflict(NamedTuple):
    """Why no state of the relays makes a way as drawn.

    route: all of the way, as drawn.
    steps: those that stand against it. One, without a position, if no position of its relay connects the two pins; else
        two or more over one relay, or over relays that move together, each with the position that it alone would need.
    """

    route: Route
    steps: Tuple[Step, ...]


class NoRouteReason(NamedTuple):
    """Why there is no route, as far as it is known.

    is_connected: whether there is a chain of switchable components, however long; None where that is not known.
    shortest: the number of components of the shortest chain; None without one.
    sufficient_limits: limits that would do: more switches, if that alone is enough; more side connections, if that
        alone is enough; else both.
    from_source: how far one gets from the source, where there is no chain.
    from_dut: how far one gets backwards from the DUT.
    between: references of components of other types on a way that crosses as few of them as possible.
    is_connected_in_other_direction: whether there is no chain, but one from the DUT to the source.
    is_realizable: whether some state of the relays makes a chain, however long; None where that is not known.
    conflict: what stands against the first way as drawn; None where nothing does.
    excluded_components: references of what is kept out and would be crossed by the first route if nothing was kept out.
    excluded_nets: names of the nets that are kept out and that it would enter.
    is_connected_over_others: whether there is a chain, but none over all of ``through``.
    """

    is_connected: Optional[bool]
    shortest: Optional[int]
    sufficient_limits: Tuple[SufficientLimits, ...]
    from_source: Reach
    from_dut: Reach
    between: Tuple[str, ...]
    is_connected_in_other_direction: bool
    is_realizable: Optional[bool]
    conflict: Optional[PositionConflict]
    excluded_components: Tuple[str, ...]
    excluded_nets: Tuple[str, ...]
    is_connected_over_others: bool


class Position(NamedTuple):
    """A position that a relay can take.

    name: as it is drawn; may be empty.
    closed: numbers of pins that it connects, in pairs.
    """

    name: str
    closed: Tuple[Tuple[str, str], ...]


class RelayPositions(NamedTuple):
    """What a relay can do.

    rule: what tells it: "field", "table", "pin numbers", "pin names", "two pins", "coil only" or "unknown".
    positions: those that it can take, the first one being rest; empty for "coil only" and "unknown".
    gang: the references of the relays that take the same position as this one, itself among them; sorted.
    is_unknown: whether the positions of a relay of the gang are not known, so that all of it stays at rest.
    """

    rule: str
    positions: Tuple[Position, ...]
    gang: Tuple[str, ...]
    is_unknown: bool


class Coupling(NamedTuple):
    """Sets of connected pins that passive components couple with one another.

    sets: each some pins that are connected; a pin that is connected with no other one is a set by itself.
    passives: references of all that lie on a net of what is coupled; sorted.
    """

    sets: Tuple[Tuple[Pin, ...], ...]
    passives: Tuple[str, ...]


class Connections(NamedTuple):
    """What is connected while relays are set. Pins are sorted by reference, then by number; sets by their pins.

    connected: sets of pins of interface components, on two nets at least.
    couplings: what resistors couple besides.
    """

    connected: Tuple[Tuple[Pin, ...], ...]
    couplings: Tuple[Coupling, ...]


class CriticalComponent(NamedTuple):
    """A component without which pairs of pins that have a route have none.

    component: what must not fail.
    lost: these pairs, each of a source pin and a DUT pin.
    """

    component: Component
    lost: Tuple[Tuple[Pin, Pin], ...]


class Coverage(NamedTuple):
    """Which pins of sources reach which pins of DUTs. A notebook shows the matrix.

    ``numpy.array(coverage)`` is the matrix, with nan where there is no route; ``to_pandas()`` makes a DataFrame of it.

    sources: the source pins, by reference, those of a component in the order of its part.
    duts: the DUT pins, in the same order.
    switches: for each source pin a row, and there for each DUT pin how many components the first route crosses; None
        where there is no route.
    critical: the components without which pairs have no route, where asked for; most lost pairs first, then by
        reference.
    """

    sources: Tuple[Pin, ...]
    duts: Tuple[Pin, ...]
    switches: Tuple[Tuple[Optional[int], ...], ...]
    critical: Tuple[CriticalComponent, ...] = ()

    def to_csv(self, path: Union[str, "os.PathLike[str]"]) -> None:
        """Write the matrix to a file, as ``velk coverage --format csv`` does: a line for each source pin, a column for
        each DUT pin, cells that are empty where there is no route. Raises OSError as ``open()`` does."""
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
    """One thing that is probably not as it is meant.

    code: as "identifier-missing"; it never changes.
    places: what it is found at: components, nets, files, or groups of sources.
    text: what is wrong there: "a connector without Identifier".
    advice: what to do about it, the same for all of a code.
    components: the references of those that it is about.
    nets: the names, as on the single boards, of those that it is about.
    pins: numbers of pins of these components.
    files: the positions, from 1 on, of the netlists whose elements it is about; ascending.
    message: places and text: "K1#1, K2#1: no CompType (part 'Relay')".
    """

    code: str
    places: Tuple[str, ...]
    text: str
    advice: str
    components: Tuple[str, ...]
    nets: Tuple[str, ...]
    pins: Tuple[str, ...]
    files: Tuple[int, ...]
    message: str

    def __str__(self) -> str:
        return self.message

    def __repr__(self) -> str:
        return f"Finding {self.code}: {self.message}"


class Group(NamedTuple):
    """Connections of a plan that are tied together, with all that they reach.

    connections: the connections, by their positions among those that were asked for, from 0, ascending.
    pins: those that were asked for, each once; by reference, then number.
    through: references of the passive components that it goes through; sorted.
    nets: names of all nets that it reaches; sorted.
    side_connections: pins on them that are there because they are allowed.
    """

    connections: Tuple[int, ...]
    pins: Tuple[Pin, ...]
    through: Tuple[str, ...]
    nets: Tuple[str, ...]
    side_connections: Tuple[Pin, ...]


class GroupCoupling(NamedTuple):
    """Groups, and pins of interface components that belong to none, that passive components couple.

    groups: the groups, by their positions in the plan, from 0, ascending; one at least.
    pins: those of no group; by reference, then number.
    passives: references of those that couple, but no group goes through; sorted.
    """

    groups: Tuple[int, ...]
    pins: Tuple[Pin, ...]
    passives: Tuple[str, ...]


class Transient(NamedTuple):
    """Pins that may touch for a moment, while relays move.

    is_on_the_way_to_rest: True while relays go to rest, False while others leave it.
    pins: all that may be tied together then; by reference, then number.
    gangs: the references of the relays that move and have a part in it, those together that take the same position.
    """

    is_on_the_way_to_rest: bool
    pins: Tuple[Pin, ...]
    gangs: Tuple[Tuple[str, ...], ...]


class PlanRow(NamedTuple):
    """A relay that moves: what a relay card is told.

    step: the name of the step.
    order: 1 on the way to rest, 2 away from it. All with 1 come to rest before those with 2 move.
    component: the relay. Its properties tell where its coil is driven from.
    position: where it goes, 0 being rest.
    position_name: as it is drawn; may be empty.
    """

    step: str
    order: int
    component: Component
    position: int
    position_name: str

    def __repr__(self) -> str:
        return f"PlanRow {self.order}: {self.component.ref} to {self.position}"


class Plan(NamedTuple):
    """Positions of relays that make several connections at once and nothing else, or why there are none. A notebook
    shows it.

    name: that of the step; may be empty.
    result: "optimal": a plan, and that none is better; "feasible": a plan, but the time was up before that was known;
        "impossible": there is no plan; "unknown": the time was up before one was found.
    positions: those of all relays away from rest, by reference: what ``System.connected()`` takes. All others are at
        rest.
    position_names: the names of these positions, as far as they are drawn with one.
    to_rest: the relays to take to rest, before any other one moves; by reference.
    to_set: the relays that then go to their positions; by reference.
    ways: the way of each connection.
    groups: the groups of connections, in the order of their first ones.
    couplings: what passive components couple with these groups.
    also_connected: where ``side_connections`` were allowed, sets of pins of no group that are connected, but not at
        rest.
    unknown: references of relays whose positions are not known and that touch a group.
    transients: what may touch on the way from the positions before, whichever relay is the first.
    conflict: where there is no plan, connections, by their positions among those that were asked for, from 0, for which
        there is none, but one without any of them.
    bottleneck: names of nets of which more groups of the conflict need one each than there are; empty where lines do
        not run out.
    rest_names: of the rest position of what goes to rest, by reference, as far as it is drawn with a name.
    """

    name: str
    result: str
    positions: FrozenDict[str, int]
    position_names: FrozenDict[str, str]
    to_rest: Tuple[Component, ...]
    to_set: Tuple[Component, ...]
    ways: Tuple[Route, ...]
    groups: Tuple[Group, ...]
    couplings: Tuple[GroupCoupling, ...]
    also_connected: Tuple[Tuple[Pin, ...], ...]
    unknown: Tuple[str, ...]
    transients: Tuple[Transient, ...]
    conflict: Tuple[int, ...]
    bottleneck: Tuple[str, ...]
    rest_names: FrozenDict[str, str] = FrozenDict()

    @property
    def found(self) -> bool:
        """Whether there is a plan, proven to be the best or not."""
        return self.result in ("optimal", "feasible")

    @property
    def rows(self) -> Tuple[PlanRow, ...]:
        """What moves, in the order in which to move it. A relay that goes from one position to another is in two."""
        rest = (PlanRow(self.name, 1, relay, 0, self.rest_names.get(relay.ref, "")) for relay in self.to_rest)
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


def tell_of_fields(value: Type[Any]) -> None:
    """Have help() say of each field what the docstring of its class says."""
    for _, field, text in re.findall(r"^( *)(\w+): (.*(?:\n\1 +.*)*)", value.__doc__ or "", re.MULTILINE):
        if field in value._fields:
            getattr(value, field).__doc__ = " ".join(text.split())
