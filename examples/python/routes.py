"""Prints the first routes between two pins, or why there is none.

    python3 routes.py velk.toml U2#1.HI J2#3.OUT
"""

from __future__ import annotations

import sys

import velk


def why(reason: velk.NoRouteReason) -> str:
    if reason.excluded_components or reason.excluded_nets:
        return f"kept out: {', '.join(reason.excluded_components + reason.excluded_nets)}"
    if reason.sufficient_limits:
        return f"a route has {reason.sufficient_limits[0].switches} switches"
    if reason.between:
        return f"other components lie between: {', '.join(reason.between)}"
    return "the pins are not connected"


def main() -> int:
    _, system_file, source, dut = sys.argv
    try:
        system = velk.System.open(system_file)
        routes = system.routes(source, dut=dut, max_routes=3)
        for route in routes:
            print(route, *(f"({pin} too)" for pin in route.side_connections))
        if not routes:
            print("no route;", why(system.why_no_route(source, dut=dut)))
        return 0 if routes else 1
    except velk.Error as error:
        print(f"routes.py: {error}", file=sys.stderr)
        return 2


if __name__ == "__main__":
    sys.exit(main())
