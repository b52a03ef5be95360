"""Systems to ask: the demo, a large one, and small ones of all kinds of parts that are wired at random."""

from __future__ import annotations

import os
import random
from pathlib import Path
from typing import Any, Dict, List, NamedTuple, Tuple

import velk

SOURCE = Path(os.environ["VELK_SOURCE_DIR"])
DEMO = SOURCE / "examples" / "demo"
DEMO_NETLISTS = tuple(DEMO / name for name in ("instruments.net", "matrix.net", "adapter.net"))
LARGE_NETLISTS = tuple(sorted((SOURCE / "tests" / "data" / "large").glob("*.net")))


class Asked(NamedTuple):
    """A system, and how the command is to read it."""

    system: velk.System
    arguments: Tuple[str, ...]


def read(netlists: Tuple[Path, ...], arguments: Tuple[str, ...] = (), **options: Any) -> Asked:
    return Asked(velk.System(netlists, **options), (*arguments, *map(str, netlists)))


def demo() -> Asked:
    return read(DEMO_NETLISTS)


def large() -> Asked:
    return read(LARGE_NETLISTS)


# Pins by number and name. Of "Many" and "Field" the positions are drawn with the component.
PARTS: Dict[str, List[Tuple[str, str]]] = {
    "Pins": [("1", "HI"), ("2", "LO"), ("3", 'A "B", C')],
    "Closing": [("1", ""), ("2", "")],
    "Changeover": [("A1", ""), ("11", "COM"), ("12", "NC"), ("14", "NO"), ("A2", "")],
    "Field": [("C", "COM"), ("1", "A"), ("2", "B")],
    "Table": [("1", "X"), ("2", "X"), ("3", "Y")],
    "Many": [("1", "a"), ("2", "b"), ("3", "c")],
    "Two": [("1", "~"), ("2", "~")],
    "Plug": [("1", ""), ("2", ""), ("3", "")],
}

KINDS = (
    ("K.", "Relay", "Closing", {}),
    ("KC", "Relay", "Closing", {"Gang": "g", "Channel": "7"}),
    ("KD", "relay", "Changeover", {"Gang": "g"}),
    ("KE", "Relay", "Changeover", {"Note": 'with "quotes", and a comma'}),
    ("KF", "Relay", "Field", {"Positions": "idle: / C-1 / two: C-1 C-2"}),
    ("KT", "Relay", "Table", {}),
    ("KM", "Relay", "Many", {}),
    ("KN", "Relay", "Closing", {"dnp": ""}),
    ("R", "Resistor", "Two", {}),
    ("F", "Fuse", "Two", {}),
    ("RT", "Resistor", "Two", {"Through": "no"}),
    ("W", "Wire", "Two", {}),
)


def generated(seed: int, folder: Path) -> Asked:
    """Two boards that are plugged together. Each second system has fuses that conduct, a table of relays, and quotes in
    names, which only tolerant reading takes."""
    generator = random.Random(seed)
    netlists = []
    for number, interface in enumerate((("U", "Source"), ("J", "DUT")), start=1):
        netlists.append(folder / f"{seed} {number}.net")
        text = _board(generator, *interface)
        netlists[-1].write_text(text if seed % 2 else text.replace('\\"', "'"), encoding="utf-8")
    if seed % 2 == 0:
        return read(tuple(netlists))
    table = folder / "relays.csv"
    table.write_text("part,positions\nTa*,/ 1-2 / 1-3\n", encoding="utf-8")
    arguments = ["--relays", str(table), "--tolerant"]
    types = {"passive": ("Resistor", "Fuse"), "switchable": ("Relay", "Resistor", "Fuse")}
    types.update(interface=("Source", "DUT", "Wire"), connector=("Plug",))
    for option, names in types.items():
        for name in names:
            arguments += [f"--{option}", name]
    return read(tuple(netlists), tuple(arguments), relays=table, tolerant=True, **types)


def _board(generator: random.Random, prefix: str, interface: str) -> str:
    components = [(f"{prefix}{i}", interface, "Pins", {"Dev": "D", "DevNo": str(i % 2)}) for i in range(1, 4)]
    components.append(("X1", generator.choice(("Connector", "Plug", "Plug")), "Plug", {"Identifier": "X"}))
    components.append(("X2", "Plug", "Plug", {"Identifier": "Y"}))
    for i in range(1, generator.randint(6, 20)):
        start, kind, part, properties = generator.choice(KINDS)
        components.append((f"{start}{i}", kind, part, dict(properties)))
    nets: List[List[Tuple[str, str]]] = [[] for _ in range(generator.randint(5, 12))]
    for ref, _, part, _ in components:
        for number, _ in PARTS[part]:
            for _ in range(generator.choice((0, 1, 1, 1, 1, 1, 1, 1, 1, 2))):
                generator.choice(nets).append((ref, number))
    return netlist(components, nets)


def netlist(components: List[Tuple[str, str, str, Dict[str, str]]], nets: List[List[Tuple[str, str]]]) -> str:
    return "(export (components {}) (libparts {}) (nets {}))".format(
        " ".join(_component(*component) for component in components),
        " ".join(_part(name, pins) for name, pins in PARTS.items()),
        " ".join(_net(f'/N "{i}", {i}', nodes) for i, nodes in enumerate(nets)),
    )


def _component(ref: str, kind: str, part: str, properties: Dict[str, str]) -> str:
    fields = {"CompType": kind, **properties}.items()
    drawn = " ".join(f"(property (name {_quoted(name)}) (value {_quoted(value)}))" for name, value in fields)
    return f'(comp (ref {_quoted(ref)}) (value "of {ref}") (libsource (lib "L") (part "{part}")) {drawn})'


def _part(name: str, pins: List[Tuple[str, str]]) -> str:
    drawn = " ".join(f'(pin (num "{number}") (name {_quoted(name)}) (type "t{number}"))' for number, name in pins)
    return f'(libpart (lib "L") (part "{name}") (pins {drawn}))'


def _net(name: str, nodes: List[Tuple[str, str]]) -> str:
    return f"(net (name {_quoted(name)}) " + " ".join(f'(node (ref "{r}") (pin "{p}"))' for r, p in nodes) + ")"


def _quoted(text: str) -> str:
    return '"' + text.replace("\\", "\\\\").replace('"', '\\"') + '"'
