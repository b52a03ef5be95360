"""Systems that take long to search: changeovers between nets at random, several of them in a gang."""

from __future__ import annotations

import random
from pathlib import Path
from typing import List, Tuple

import velk
from boards import netlist


def tangle(folder: Path, relays: int, pins: int) -> velk.System:
    generator = random.Random(18)
    nets: List[List[Tuple[str, str]]] = [[] for _ in range(relays // 2)]
    components = []
    for i in range(relays):
        components.append((f"K{i}", "Relay", "Changeover", {"Gang": str(generator.randrange(relays))}))
        for net, number in zip(generator.sample(nets, 3), ("11", "12", "14")):
            net.append((f"K{i}", number))
    for i in range(pins):
        for ref, kind in ((f"U{i}", "Source"), (f"J{i}", "DUT")):
            components.append((ref, kind, "Pins", {"DevNo": str(i % 20)}))
            generator.choice(nets).append((ref, "1"))
    (folder / "tangle.net").write_text(netlist(components, nets), encoding="utf-8")
    return velk.System(folder / "tangle.net", tolerant=True)
