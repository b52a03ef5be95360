"""What mypy says of programs that use the module: precise types where they are right, and an error where they are not.

Nothing runs this. A line that is wrong on purpose says so; mypy complains if it finds nothing there.
"""

from typing import Dict, Optional, Tuple

from velk import Component, Connection, Coverage, FrozenDict, Net, Plan, Route, System, Transient

system = System(["a.net"], tolerant=True)

routes: Tuple[Route, ...] = system.routes({"Dev": "DMM"}, "HI", dut="J2.OUT", max_routes=None, without="K1")
crossed: Component = routes[0].steps[0].component
properties: FrozenDict[str, str] = crossed.properties
position: Optional[int] = routes[0].steps[0].position
state: FrozenDict[str, int] = routes[0].state
nets: Tuple[Net, ...] = system.nets
coverage: Coverage = system.coverage(source={"Dev": "DMM"}, progress=print)
cell: Optional[int] = coverage.switches[0][0]
connection: Connection = ({"Dev": "PSU"}, "OUT+", crossed, "1")
plan: Plan = system.plan([connection, ("U2.HI", system.pin("J2.OUT"))], before=routes[0].state)
plans: Tuple[Plan, ...] = system.plan_steps({"supply": [connection]})
transient: Transient = plan.transients[0]
connected = system.connected(plan.positions).connected

wrong: Tuple[Net, ...] = system.routes("U2.HI", dut="J2.OUT")  # type: ignore[assignment]
system.routes(1, dut="J2.OUT")  # type: ignore[arg-type]
system.routes("U2.HI", "J2.OUT")  # type: ignore[call-arg]
system.routes("U2.HI", dut="J2.OUT", max_switches="5")  # type: ignore[arg-type]
system.routes("U2.HI", dut="J2.OUT", max_switch=5)  # type: ignore[call-arg]
system.plan([("U2.HI",)])  # type: ignore[list-item]
system.connected({"K1": "1"})  # type: ignore[dict-item]
system.netlists = ("b.net",)  # type: ignore[misc]
crossed.ref = "K2"  # type: ignore[misc]
routes[0].step  # type: ignore[attr-defined]
changed: Dict[str, int] = {key: value for key, value in properties.items()}  # type: ignore[misc]
