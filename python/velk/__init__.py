"""Which chains of relays and resistors lead from an instrument pin to a pin of the device under test?

Velk reads the wiring of an automated electrical test system from KiCad netlists, one for each board, joins the boards
where they are plugged together, and answers questions about the whole:

    import velk

    system = velk.System(["instruments.net", "matrix.net", "adapter.net"])
    for route in system.routes({"Dev": "DMM"}, "HI", dut={"CompType": "DUT", "Bench": "2"}, dut_pin="OUT"):
        print([relay.ref for relay in route.switches])

``System`` is what all begins with. Its methods are the questions; ``help(velk.System.routes)`` tells what one takes:

    routes()        each Route from one pin to another, the shortest first; why_no_route() tells why there is none
    coverage()      a Coverage: over how few switches the pins of sources reach those of DUTs
    plan()          a Plan: the relays to set for several connections at once; plan_steps() for one step after the other
    connected()     Connections: what is connected while relays are set; positions() tells what a relay can do
    check()         each Finding that is probably not as it is meant
    components()    each Component with some properties; component(), pins(), pin(), nets, net(), parts, part()

What they return are values, tuples with names: they never change, can be compared, hashed, pickled and kept for longer
than the system. ``help(velk.Route)`` tells what one has. Whatever goes wrong is an ``Error``.

References, parts and nets carry the number of their netlist, "K3#2" being K3 of the second one. Where a name is asked
for, the number may be left out if it is clear without. Limits and types are as the command ``velk`` has them by
default.

A system never changes either: any number of threads may ask one, and other threads run while it reads, searches or
plans. Ctrl-C ends a search or a plan. Nothing is printed.
"""

from types import FunctionType

from velk._errors import Error, NotFoundError, PlanError, PositionsError, ReadingError, TooLargeError, WritingError
from velk._system import Connection, End, FileName, Names, System, Where, write_application_ini, write_physical_ini
from velk._values import (
    Component,
    Connections,
    Coupling,
    Coverage,
    CriticalComponent,
    Finding,
    FrozenDict,
    Group,
    GroupCoupling,
    Net,
    NoRouteReason,
    Part,
    PartPin,
    Pin,
    Plan,
    PlanRow,
    Position,
    PositionConflict,
    Reach,
    RelayPositions,
    Route,
    Step,
    SufficientLimits,
    Transient,
)
from velk._values import tell_of_fields as _tell_of_fields
from velk._velk import version as __version__

__all__ = [
    "System",
    "write_physical_ini",
    "write_application_ini",
    "Component",
    "Pin",
    "Part",
    "PartPin",
    "Net",
    "Route",
    "Step",
    "NoRouteReason",
    "Reach",
    "SufficientLimits",
    "PositionConflict",
    "Coverage",
    "CriticalComponent",
    "Plan",
    "PlanRow",
    "Group",
    "GroupCoupling",
    "Transient",
    "RelayPositions",
    "Position",
    "Connections",
    "Coupling",
    "Finding",
    "FrozenDict",
    "Error",
    "ReadingError",
    "NotFoundError",
    "PositionsError",
    "WritingError",
    "TooLargeError",
    "PlanError",
    "FileName",
    "Names",
    "Where",
    "End",
    "Connection",
    "__version__",
]

for _name in __all__:
    _public = globals()[_name]
    # All of them are found here, and so they are named in help, in errors and by pickle.
    if isinstance(_public, (type, FunctionType)):
        _public.__module__ = __name__
    if hasattr(_public, "_fields"):
        _tell_of_fields(_public)
