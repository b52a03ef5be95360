"""Nothing is left of what was asked and thrown away."""

from __future__ import annotations

import gc
import sys
from pathlib import Path
from typing import Any, Callable, List, Tuple

import boards
import pytest
import velk

QUERIES = 10_000


def fails(question: Callable[[], Any]) -> None:
    with pytest.raises((velk.Error, ValueError, TypeError)):
        question()


def raises_in_progress(system: velk.System) -> None:
    try:
        system.coverage(progress=lambda done, all_: 1 // 0)
    except ZeroDivisionError:
        pass


def questions(system: velk.System) -> List[Callable[[], Any]]:
    ends = {"source": "U1.HI", "dut": "J1.HI"}
    pins = [pin for each in system.components() for pin in system.pins(each) if pin.net]
    return [
        lambda: system.routes(**ends),
        lambda: system.routes({"Dev": "D"}, "LO", dut="J2", dut_pin="1", as_drawn=True, without="CompType=Resistor"),
        lambda: system.why_no_route(**ends, max_switches=0),
        lambda: system.coverage(critical=True, progress=lambda done, all_: None),
        lambda: system.coverage(without_nets=[system.nets[0].name]),
        lambda: system.plan([pins[:2], pins[-2:]], before={}),
        lambda: system.plan_steps({"a": [pins[-2:]], "b": [pins[:2]]}, without=[], allow="J1"),
        lambda: system.connected({}),
        lambda: (system.components(CompType="Relay"), system.pins("U1"), system.pin("J1.LO"), system.part("Many#1")),
        lambda: [system.positions(relay) for relay in system.components(CompType="Relay")],
        lambda: (system.check("no-type"), system.physical_ini(), system.application_ini(system)),
        lambda: fails(lambda: system.component("K99")),
        lambda: fails(lambda: system.plan([("U1.HI", "U9.LO")])),
        lambda: fails(lambda: system.routes(**ends, max_switches=-1)),
        lambda: raises_in_progress(system),
    ]


def in_use() -> Tuple[int, int]:
    """Blocks of Python's own memory, and pages of all that the process has."""
    gc.collect()
    return sys.getallocatedblocks(), int(Path("/proc/self/statm").read_text(encoding="ascii").split()[1])


def test_nothing_leaks(tmp_path: Path) -> None:
    asked = questions(boards.generated(27, tmp_path).system)
    blocks = pages = 0
    for number in range(QUERIES):
        if number == QUERIES // 10:
            blocks, pages = in_use()
        asked[number % len(asked)]()
    more_blocks, more_pages = (now - before for now, before in zip(in_use(), (blocks, pages)))
    assert more_blocks < 200 and more_pages < 500


def test_systems_go(tmp_path: Path) -> None:
    """With their netlists and all that was made of them."""
    netlists = boards.DEMO_NETLISTS
    for number in range(60):
        if number == 10:
            blocks, pages = in_use()
        system = velk.System(netlists)
        system.plan([("U2#1.HI", "J2#3.OUT")])
        assert system.components() and system.nets and system.pins("U1")
        del system
    more_blocks, more_pages = (now - before for now, before in zip(in_use(), (blocks, pages)))
    assert more_blocks < 200 and more_pages < 2000
