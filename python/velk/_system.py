"""The system, and what it is asked."""

from __future__ import annotations

import enum
import operator
import os
import re
from typing import Any, Callable, Dict, Iterable, List, Mapping, NoReturn, Optional, Sequence, Tuple, TypeVar, Union

from velk import _velk
from velk._errors import NotFoundError, PositionsError
from velk._values import (
    Component,
    Connections,
    Coverage,
    Finding,
    Net,
    NoRouteReason,
    Part,
    Pin,
    Plan,
    RelayPositions,
    Route,
)

__all__ = ["Connection", "End", "Names", "FileName", "System", "Where", "write_application_ini", "write_physical_ini"]

FileName = Union[str, bytes, "os.PathLike[str]", "os.PathLike[bytes]"]
"""The name of a file."""

Names = Union[str, Component, Iterable[Union[str, Component]]]
"""One name or several. A component stands for its reference."""

Where = Union[str, Pin, Component, Mapping[str, str]]
"""What has the pin: a component, its reference, or properties as {"Dev": "DMM"} that it has. Or the pin itself: a
``Pin``, or a text as "U2#1.HI"."""

End = Union[str, Pin, Tuple[Where, str]]
"""A pin that is to be connected: a ``Pin``, a text as "U2#1.HI", or what has the pin and its number or name."""

Connection = Union[Tuple[End, End], Tuple[Where, str, Where, str]]
"""Two ends; or what has the one pin, this pin, what has the other pin, that pin."""


class _Default(enum.Enum):
    """What stands for a limit that is not given."""

    DEFAULT = enum.auto()

    def __repr__(self) -> str:
        return "as the system has it"


_DEFAULT = _Default.DEFAULT

Given = TypeVar("Given")

_GREATEST_LIMIT = 2**31 - 1
_NO_BOUND = 0
_MOST_POINTS = 5  # each is looked at, and where it leads nowhere the names that come nearest are looked for


class System:
    """A test system: netlists that are read, and joined where their boards are plugged together.

    Reading takes most of the time, so keep it and ask it many times. It never changes, and threads may share it.

        system = velk.System(["instruments.net", "matrix.net", "adapter.net"])
        system = velk.System.open("velk.toml")

    Boards are plugged together where nets meet at the same pin number of connectors with the same property
    "Identifier".
    """

    __slots__ = ("_native", "_nets", "_parts", "__weakref__")

    _native: _velk.System
    _nets: Optional[Tuple[Net, ...]]
    _parts: Optional[Tuple[Part, ...]]

    def __init__(
        self,
        netlists: Union[FileName, Iterable[FileName]],
        *,
        connector: Names = ("Connector",),
        switchable: Names = ("Relay", "Resistor"),
        interface: Names = ("Source", "DUT"),
        passive: Names = ("Resistor",),
        dut_type: Names = ("Dut",),
        device_type: Names = ("Source",),
        relays: Union[FileName, Iterable[FileName]] = (),
        tolerant: bool = False,
    ) -> None:
        """Read netlists that KiCad exported, in the order of their numbers #1, #2, ...

        connector: component types, that is "CompType", at which boards are joined. As all types in any case.
        switchable: types that a route may pass through.
        interface: types whose pins a route lists as side connections.
        passive: those of the switchable types that conduct at all times, as resistors do; others are relays.
        dut_type: types that are DUTs in the application INI file.
        device_type: types that are devices in the physical INI file.
        relays: CSV files with the columns "part" and "positions": what relays can do, by their parts.
        tolerant: read whatever KiCad 4 to 10 write; ``warnings`` has what had to be completed or dropped.

        Raises ReadingError for the first file that cannot be read, is no netlist or was cut off.
        """
        options = _velk.SystemOptions()
        options.connector = _names(connector)
        options.switchable = _names(switchable)
        options.interface = _names(interface)
        options.passive = _names(passive)
        options.dut_type = _names(dut_type)
        options.device_type = _names(device_type)
        options.relays = _files(relays)
        options.set_tolerant(_flag("tolerant", tolerant))
        names = _files(netlists)
        if not names:
            raise ValueError("a system needs a netlist")
        self._set(_velk.System(names, options))

    @classmethod
    def open(cls, path: FileName) -> System:
        """The system that a system file describes, mostly "velk.toml": its netlists, types, limits, what is kept out
        and which findings are accepted.

        Raises ReadingError for a file that cannot be read or is wrong, with line and column, and NotFoundError for
        something to keep out that is not there.
        """
        system = cls.__new__(cls)
        system._set(_velk.System.open(_file(path)))
        return system

    def _set(self, native: _velk.System) -> None:
        self._native = native
        self._nets = None
        self._parts = None

    def __repr__(self) -> str:
        return f"System({', '.join(self.netlists)})"

    @property
    def netlists(self) -> Tuple[str, ...]:
        """The names of the netlists, in the order of their numbers."""
        return tuple(self._native.file_names())

    @property
    def warnings(self) -> Tuple[str, ...]:
        """What was completed, dropped or is listed more than once, in the order of the netlists."""
        return tuple(self._native.warnings())

    @property
    def kept_out(self) -> Tuple[str, ...]:
        """The references of the components that the system file keeps out of all routes and plans."""
        return tuple(self._native.excluded_components())

    @property
    def kept_out_nets(self) -> Tuple[str, ...]:
        """The names of the nets that the system file keeps out of all routes and plans."""
        return tuple(self._native.excluded_nets())

    def components(self, /, **properties: str) -> Tuple[Component, ...]:
        """The components with all these properties, by reference; all of them without properties.

            system.components(CompType="Relay", Slot="2")

        An empty value also matches where there is no such property. The reference, the value and the part are asked for
        as ``ref``, ``value`` and ``part``; other names go through ``**{"Any name": "x"}``.
        """
        return self._native.components(_properties(properties))

    def component(self, ref: str) -> Component:
        """The component of this reference. Raises NotFoundError where there is none or, without the number of its
        netlist, more than one."""
        return self._native.component(_text(ref))

    @property
    def parts(self) -> Tuple[Part, ...]:
        """The library parts of all components, by name."""
        if self._parts is None:
            self._parts = self._native.parts()
        return self._parts

    def part(self, name: str) -> Part:
        """The library part of this name. Raises NotFoundError as ``component()`` does."""
        return self._native.part(_text(name))

    @property
    def nets(self) -> Tuple[Net, ...]:
        """All nets, in the order in which the netlists and their joining give them."""
        if self._nets is None:
            self._nets = self._native.nets()
        return self._nets

    def net(self, name: str) -> Net:
        """The net of this name or, of nets that are plugged together, of one that it is made of: "OUT#1+IN#2", "IN#2".
        Raises NotFoundError as ``component()`` does."""
        return self._native.net(_text(name))

    def pins(self, component: Union[str, Component]) -> Tuple[Pin, ...]:
        """The pins of a component, in the order of its part. Raises NotFoundError as ``component()`` does."""
        return self._native.pins(_name(component))

    def pin(self, where: Where, pin: Optional[str] = None) -> Pin:
        """The pin that is meant: by number or else by name, of the first component by reference that has the properties
        and such a pin.

            system.pin({"Dev": "DMM"}, "HI")
            system.pin("U2#1.HI")

        Raises NotFoundError where there is none.
        """
        return self._native.pin(self._end(where, pin))

    def routes(
        self,
        source: Where,
        source_pin: Optional[str] = None,
        *,
        dut: Where,
        dut_pin: Optional[str] = None,
        max_switches: Union[int, _Default] = _DEFAULT,
        max_connections: Union[int, _Default] = _DEFAULT,
        max_routes: Union[int, None, _Default] = _DEFAULT,
        as_drawn: bool = False,
        through: Names = (),
        without: Names = (),
        without_nets: Names = (),
    ) -> Tuple[Route, ...]:
        """The routes from one pin to the other that relays can take. Those of the fewest switches come first, among
        them those of the fewest side connections. No route is an empty tuple; ``why_no_route()`` tells why.

        source, source_pin: where a route begins, as ``pin()`` takes it.
        dut, dut_pin: where it ends.
        max_switches: go on from a net that was reached over at most so many switches, so that routes of up to one more
            are found. 5 unless the system file says otherwise.
        max_connections: leave out routes with more side connections. 3 unless the system file says otherwise.
        max_routes: the first so many routes only; None for all, as it is unless the system file says otherwise.
        as_drawn: cross relays from any pin to any other, whatever positions they have.
        through: components that each route is to cross.
        without: components that no route may cross, besides those of the system file: a reference, or "KEY=VALUE" for
            all with this property.
        without_nets: names of nets that no route may enter.

        Raises NotFoundError for what is not there, PositionsError where positions of relays are drawn wrongly.
        """
        options = self._search_options(max_switches, max_connections, max_routes, as_drawn, through)
        asked = self._keeping_out(without, without_nets)
        return asked.routes(self._end(source, source_pin), self._end(dut, dut_pin), options)

    def why_no_route(
        self,
        source: Where,
        source_pin: Optional[str] = None,
        *,
        dut: Where,
        dut_pin: Optional[str] = None,
        max_switches: Union[int, _Default] = _DEFAULT,
        max_connections: Union[int, _Default] = _DEFAULT,
        as_drawn: bool = False,
        through: Names = (),
        without: Names = (),
        without_nets: Names = (),
    ) -> NoRouteReason:
        """Why ``routes()``, which takes the same and ``max_routes``, finds none: what is in the way, or which limits
        would do. Of pins that have routes it tells the shortest. Raises what ``routes()`` raises."""
        options = self._search_options(max_switches, max_connections, _DEFAULT, as_drawn, through)
        asked = self._keeping_out(without, without_nets)
        return asked.why_no_route(self._end(source, source_pin), self._end(dut, dut_pin), options)

    def coverage(
        self,
        *,
        source: Optional[Mapping[str, str]] = None,
        dut: Optional[Mapping[str, str]] = None,
        critical: bool = False,
        max_switches: Union[int, _Default] = _DEFAULT,
        max_connections: Union[int, _Default] = _DEFAULT,
        as_drawn: bool = False,
        through: Names = (),
        without: Names = (),
        without_nets: Names = (),
        progress: Optional[Callable[[int, int], object]] = None,
    ) -> Coverage:
        """Over how few switches each pin of a source reaches each pin of a DUT.

        source: properties of the sources, as {"Dev": "DMM"}; by default all components with the "CompType" Source.
        dut: properties of the DUTs; by default all components with the "CompType" DUT.
        critical: also tell without which components pairs of pins have no route.
        progress: called after each source pin with the number of those that are done and of all. What it raises ends
            the search.

        The others are as ``routes()`` has them, which also tells what is raised. NotFoundError is raised as well where
        there is no pin of a source, or none of a DUT.
        """
        options = self._search_options(max_switches, max_connections, _DEFAULT, as_drawn, through)
        asked = self._keeping_out(without, without_nets)
        sources, duts = _properties({} if source is None else source), _properties({} if dut is None else dut)
        found = asked.coverage(sources, duts, options, _flag("critical", critical), progress)
        if not found.sources:
            self._raise_no_pins("Source", sources)
        if not found.duts:
            self._raise_no_pins("DUT", duts)
        return found

    def plan(
        self,
        connections: Iterable[Connection],
        *,
        before: Union[Plan, Mapping[str, int], None] = None,
        name: str = "",
        allow: Names = (),
        side_connections: bool = False,
        no_couplings: bool = False,
        trust_unknown: bool = False,
        fewest_changes: bool = False,
        time_limit: Optional[float] = None,
        without: Names = (),
        without_nets: Names = (),
    ) -> Plan:
        """Positions of relays that make all these connections at once and nothing else, with as few relays away from
        rest as possible, or the proof that there are none.

            system.plan([("U2#1.HI", "J2#3.OUT"), ({"Dev": "PSU"}, "OUT+", {"CompType": "DUT", "Bench": "2"}, "VCC")])

        connections: each two ends, which are a ``Pin``, a text as "U2#1.HI", or what has the pin and the pin; or all
            four of these in a row. Those that share a net are one group; groups are kept apart.
        before: the plan that holds before, or the positions that relays have, by reference, 0 being rest. By default
            all of them are at rest.
        name: for the plan and its rows.
        allow: interface components whose pins may be reached too: a reference, or "KEY=VALUE" for all with this
            property.
        side_connections: the pins of all interface components may be reached.
        no_couplings: no resistor may couple two groups.
        trust_unknown: take relays whose positions are not known for such that connect nothing.
        fewest_changes: move as few relays as possible, instead of setting as few as possible.
        time_limit: take the best plan that is found in so many seconds, proven or not.
        without: components to keep out of, besides those of the system file: relays stay at rest, and nothing leads
            over resistors. A reference, or "KEY=VALUE" for all with this property.
        without_nets: names of nets to keep out of.

        That there is no plan raises nothing: see ``Plan.result``. Raises NotFoundError for what is not there and for
        pins on no net, PositionsError for positions that cannot be.
        """
        request = _velk.PlanRequest()
        for connection in connections:
            request.add_connection(*self._ends(connection))
        request.allow = _names(allow)
        request.allow_side_connections = _flag("side_connections", side_connections)
        request.forbid_couplings = _flag("no_couplings", no_couplings)
        request.trust_unknown = _flag("trust_unknown", trust_unknown)
        request.fewest_changes = _flag("fewest_changes", fewest_changes)
        if time_limit is not None:
            request.set_time_limit(_seconds(time_limit))
        request.without = _names(without)
        request.without_nets = _names(without_nets)
        return self._native.plan(_text(name), request, *_state(before))

    def plan_steps(
        self,
        steps: Union[Mapping[str, Iterable[Connection]], Iterable[Tuple[str, Iterable[Connection]]]],
        *,
        allow: Names = (),
        side_connections: bool = False,
        no_couplings: bool = False,
        trust_unknown: bool = False,
        fewest_changes: bool = False,
        time_limit: Optional[float] = None,
        without: Names = (),
        without_nets: Names = (),
    ) -> Tuple[Plan, ...]:
        """A plan for each step, by names and connections, with the relays as the step before leaves them; the first one
        begins with all relays at rest. A step without a plan leaves them as they were.

            system.plan_steps({"supply": [("U5.OUT+", "J1.VCC")],
                               "measure": [("U5.OUT+", "J1.VCC"), ("U2.HI", "J1.OUT")]})

        All else is as ``plan()`` has it; ``time_limit`` is for each step.
        """
        plans: List[Plan] = []
        before: Optional[Plan] = None
        for name, connections in steps.items() if isinstance(steps, Mapping) else steps:
            plan = self.plan(
                connections,
                before=before,
                name=name,
                allow=allow,
                side_connections=side_connections,
                no_couplings=no_couplings,
                trust_unknown=trust_unknown,
                fewest_changes=fewest_changes,
                time_limit=time_limit,
                without=without,
                without_nets=without_nets,
            )
            plans.append(plan)
            before = plan if plan.found else before
        return tuple(plans)

    def positions(self, relay: Union[str, Component]) -> RelayPositions:
        """What a relay can do. Raises NotFoundError as ``component()`` does."""
        return self._native.positions(_name(relay))

    @property
    def unknown_relays(self) -> Tuple[str, ...]:
        """References of all relays of which, or of another of whose gang, nothing tells the positions; sorted."""
        return tuple(self._native.unknown_relays())

    @property
    def position_errors(self) -> Tuple[str, ...]:
        """What is wrong with the positions of relays."""
        return tuple(self._native.position_errors())

    def connected(self, positions: Mapping[str, int]) -> Connections:
        """What is connected while these relays have these positions, 0 being rest, and all others are at rest.

            system.connected({"K1#1": 1})
            system.connected(route.state)
            system.connected(plan.positions)

        Relays of one gang move together: it is enough to name one of them. Raises NotFoundError for a component that is
        not there, PositionsError for positions that cannot be.
        """
        return self._native.connected(_positions(positions))

    def check(self, ignore: Names = ()) -> Tuple[Finding, ...]:
        """What the netlists may hold and an engineer hardly means, by code.

        ignore: what to leave out besides what the system file accepts: "CODE", or "CODE:NAME" for what is found at
            NAME, with wild cards "*" and "?".
        """
        return self._native.check(_names(ignore))

    def physical_ini(self) -> str:
        """The text of the physical INI file: a section for each device."""
        return self._native.physical_ini()

    def application_ini(self, application: System) -> str:
        """The text of the application INI file: benches and channel tables. The sources are those of this system, the
        DUTs those of ``application``. Raises TooLargeError for a bench number that would make too many benches."""
        return self._native.application_ini(_asked(application))

    def _raise_no_pins(self, kind: str, properties: Mapping[str, str]) -> NoReturn:
        wanted = {"CompType": kind, **properties}
        if not self._native.components(wanted):
            self._native.pin(_velk.End(wanted, "1", ""))  # raises, with the values that come nearest
        texts = ", ".join(f"{name}={value}" for name, value in wanted.items())
        raise NotFoundError(f"no pin of a component with {texts} lies on a net")

    def _keeping_out(self, components: Names, nets: Names) -> _velk.System:
        refs, names = _names(components), _names(nets)
        return self._native.keeping_out(refs, names) if refs or names else self._native

    def _search_options(
        self,
        max_switches: Union[int, _Default],
        max_connections: Union[int, _Default],
        max_routes: Union[int, None, _Default],
        as_drawn: bool,
        through: Names,
    ) -> _velk.SearchOptions:
        options = self._native.search_options()
        if not isinstance(max_switches, _Default):
            options.max_switches = _limit("max_switches", max_switches)
        if not isinstance(max_connections, _Default):
            options.max_connections = _limit("max_connections", max_connections)
        if not isinstance(max_routes, _Default):
            options.max_routes = _NO_BOUND if max_routes is None else _limit("max_routes", max_routes, least=1)
        options.as_drawn = _flag("as_drawn", as_drawn)
        options.through = _names(through)
        return options

    def _ends(self, connection: Connection) -> Tuple[_velk.End, _velk.End]:
        # A pin is a tuple, and has four members.
        if isinstance(connection, (str, Pin)) or not isinstance(connection, Sequence):
            raise TypeError(f"a connection is two ends, not {connection!r}")
        members: Sequence[Any] = connection
        if len(members) == 4:
            return self._end(members[0], members[1]), self._end(members[2], members[3])
        if len(members) != 2:
            raise ValueError(f"a connection is two ends, each maybe in two parts, not {connection!r}")
        return self._end_of(members[0]), self._end_of(members[1])

    def _end_of(self, end: End) -> _velk.End:
        if isinstance(end, (str, Pin)):
            return self._end(end, None)
        if not isinstance(end, Sequence) or len(end) != 2:
            raise ValueError(f"an end is a pin, or what has the pin and the pin, not {end!r}")
        return self._end(end[0], end[1])

    def _end(self, where: Where, pin: Optional[str]) -> _velk.End:
        if isinstance(where, Pin):
            if pin is not None:
                raise TypeError(f"{where!r} has no pin {pin!r}, since it is one")
            return _named_end({}, where.number, where.ref)
        if isinstance(where, (dict, Mapping)):
            if pin is None:
                raise TypeError(f"the pin of {dict(where)!r} is missing")
            return _named_end(_properties(where), pin, "")
        return self._end_of_text(_name(where)) if pin is None else _named_end({}, pin, _name(where))

    def _end_of_text(self, text: str) -> _velk.End:
        """Of "U2#1.HI". References and pins may have points too, so all places are tried."""
        if text.count(".") > _MOST_POINTS:
            raise NotFoundError(f"'{text}' has too many points; give the component and the pin as two texts")
        found: List[_velk.End] = []
        errors: List[NotFoundError] = []
        for place, character in enumerate(text):
            if character == ".":
                try:
                    end = _named_end({}, text[place + 1 :], text[:place])
                    self._native.pin(end)
                    found.append(end)
                except NotFoundError as error:
                    errors.append(error)
        if len(found) > 1:
            raise NotFoundError(f"'{text}' may be several pins; give the component and the pin as two texts")
        if not found and not errors:
            raise NotFoundError(f"'{text}' is no pin; write REFERENCE.PIN as in 'K3#2.1'")
        if not found:
            raise errors[0]
        return found[0]


def write_physical_ini(path: FileName, system: System) -> None:
    """Write the physical INI file of the resource manager: a section for each device of the system.

    Raises WritingError where that fails; the file is then as it was.
    """
    _asked(system).write_physical_ini(_file(path))


def write_application_ini(path: FileName, test_system: System, application: System) -> None:
    """Write the application INI file of the resource manager: benches and channel tables. The sources are those of
    ``test_system``, the DUTs those of ``application``. Both may be the same system.

    Raises WritingError where that fails, TooLargeError for a bench number that would make too many benches; the file is
    then as it was.
    """
    _asked(test_system).write_application_ini(_file(path), _asked(application))


def _asked(system: System) -> _velk.System:
    if not isinstance(system, System):
        raise TypeError(f"expected a System, not {system!r}")
    return system._native


def _named_end(properties: Dict[str, str], pin: str, ref: str) -> _velk.End:
    # Without a name it would be the first pin that has none, and of all components.
    if not _text(pin):
        raise NotFoundError("no pin is given")
    if not properties and not ref:
        raise NotFoundError("no component is given")
    return _velk.End(properties, pin, ref)


def _file(path: FileName) -> str:
    name = os.fsdecode(path)
    if not name or "\0" in name:
        raise ValueError(f"{name!r} is no name of a file")
    if re.search("[\ud800-\udfff]", name):
        raise ValueError(f"{name!r} is not UTF-8, as the name of a file has to be")
    return name


def _files(paths: Union[FileName, Iterable[FileName]]) -> List[str]:
    return [_file(paths)] if isinstance(paths, (str, bytes, os.PathLike)) else [_file(path) for path in paths]


def _text(text: str) -> str:
    if not isinstance(text, str):
        raise TypeError(f"expected a text, not {text!r}")
    if not text.isascii():
        text.encode()  # raises where it holds what is no character, as a name of a file that is not UTF-8
    return text


def _name(name: Union[str, Component]) -> str:
    return name.ref if isinstance(name, Component) else _text(name)


def _names(names: Names) -> List[str]:
    # A component is a tuple, so that its texts would be taken for names.
    return [_name(names)] if isinstance(names, (str, Component)) else [_name(name) for name in names]


def _properties(properties: Mapping[str, str]) -> Dict[str, str]:
    return {_text(name): _text(value) for name, value in _mapping(properties).items()}


def _positions(positions: Mapping[str, int]) -> Dict[str, int]:
    return {_text(ref): _position(ref, operator.index(position)) for ref, position in _mapping(positions).items()}


def _position(ref: str, position: int) -> int:
    if abs(position) > _GREATEST_LIMIT:
        raise PositionsError(f"{ref} has no position {position}")
    return position


def _mapping(mapping: Mapping[str, Given]) -> Mapping[str, Given]:
    if not isinstance(mapping, (dict, Mapping)):  # what is a dict is quickly found out
        raise TypeError(f"expected names with values, as in a dict, not {mapping!r}")
    return mapping


def _state(before: Union[Plan, Mapping[str, int], None]) -> Tuple[Dict[str, int], List[str]]:
    """Positions, and the passive components that what is connected goes through."""
    if not isinstance(before, Plan):
        return _positions({} if before is None else before), []
    if not before.found:
        raise ValueError(f"{before!r} leaves the relays as they were; give the plan before it")
    return _positions(before.positions), [ref for group in before.groups for ref in group.through]


def _limit(name: str, limit: int, least: int = 0) -> int:
    if not least <= operator.index(limit) <= _GREATEST_LIMIT:
        raise ValueError(f"{name} is {limit}; it has to be a number from {least} to {_GREATEST_LIMIT}")
    return limit


def _flag(name: str, flag: bool) -> bool:
    if flag not in (True, False):  # of numpy too
        raise TypeError(f"{name} is {flag!r}; it has to be True or False")
    return bool(flag)


def _seconds(seconds: float) -> float:
    if not 0.001 <= seconds <= 1_000_000_000:
        raise ValueError(f"time_limit is {seconds}; it has to be a number of seconds from 0.001 to 1000000000")
    return seconds
