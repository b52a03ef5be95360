"""Threads share a system and run while it works; Ctrl-C ends what takes long."""

from __future__ import annotations

import os
import signal
import subprocess
import sys
import threading
import time
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path
from typing import Any, Callable, Dict, List

import boards
import pytest
import velk
from tangle import tangle

# Each takes minutes.
LONG = {
    "routes": "system.routes('U0.1', dut='J0.1', max_switches=30, max_connections=1000)",
    "coverage": "system.coverage(max_switches=100, max_connections=1000)",
    "plan": "system.plan([(f'U{i}.1', f'J{i}.1') for i in range(30)], side_connections=True)",
    "steps": "system.plan_steps({'a': [(f'U{i}.1', f'J{i}.1') for i in range(30)], 'b': []}, side_connections=True)",
}

CHILD = """
import pathlib, sys, tangle
system = tangle.tangle(pathlib.Path(sys.argv[1]), 4000, 200)
system.routes("U0.1", dut="J0.1", max_switches=0)
system.plan([])
print("asking", flush=True)
try:
    {question}
    print("answered")
except KeyboardInterrupt:
    print("interrupted", len(system.routes("U0.1", dut="J0.1", max_routes=1)))
"""


@pytest.mark.parametrize("case", LONG)
def test_ctrl_c(case: str, tmp_path: Path) -> None:
    """Ends the search, long before it would end, and leaves the system as it was."""
    program = [sys.executable, "-B", "-c", CHILD.format(question=LONG[case]), str(tmp_path)]
    environment = {**os.environ, "PYTHONPATH": os.pathsep.join(sys.path)}
    with subprocess.Popen(program, env=environment, stdout=subprocess.PIPE, text=True) as child:
        try:
            assert child.stdout and child.stdout.readline() == "asking\n"
            time.sleep(0.1)
            child.send_signal(signal.SIGINT)
            assert child.communicate(timeout=10)[0] == "interrupted 1\n"
        finally:
            child.kill()


def test_progress(demo: velk.System) -> None:
    told: List[Any] = []
    coverage = demo.coverage(progress=lambda done, all_: told.append((done, all_)))
    count = len(coverage.sources)
    assert told == [(number, count) for number in range(1, count + 1)]


def test_progress_that_raises(demo: velk.System) -> None:
    told: List[int] = []

    def progress(done: int, _: int) -> None:
        told.append(done)
        if done == 3:
            raise RuntimeError("enough")

    with pytest.raises(RuntimeError, match="enough"):
        demo.coverage(progress=progress)
    assert told == [1, 2, 3]


def test_other_threads_run_meanwhile(tmp_path: Path) -> None:
    system = tangle(tmp_path, 4000, 200)
    netlist = tmp_path / "tangle.net"
    ends = {"source": "U0.1", "dut": "J0.1"}
    questions: Dict[str, Callable[[], Any]] = {
        "read": lambda: velk.System(netlist, tolerant=True),
        "routes": lambda: system.routes(**ends, max_switches=6, max_connections=1000),
        "coverage": lambda: system.coverage(source={"DevNo": "1"}, dut={"DevNo": "2"}, max_switches=1),
        "plan": lambda: system.plan([(f"U{i}.1", f"J{i}.1") for i in range(30)], side_connections=True, time_limit=0.1),
        "check": lambda: system.check(),
    }
    for name, question in questions.items():
        assert others_get_their_turn(question), name


def others_get_their_turn(question: Callable[[], Any]) -> bool:
    """Whether another thread, which wants it every millisecond, gets it every five while such questions are asked. It
    gets it once for each question that holds the lock."""
    thread = threading.Thread(target=lambda: [question() for _ in range(5)])
    begin = time.monotonic()
    thread.start()
    moments = 0
    while thread.is_alive():
        moments += 1
        time.sleep(0.001)
    return moments > (time.monotonic() - begin) / 0.005


def answers(system: velk.System, first: int) -> List[Any]:
    """Of several kinds of questions, beginning with this one."""
    questions: List[Callable[[], Any]] = [
        lambda: system.routes({"Dev": "DMM"}, "HI", dut={"Bench": "2", "CompType": "DUT"}, dut_pin="OUT"),
        lambda: system.coverage(max_switches=2, without="K304#2"),
        lambda: system.why_no_route("U2#1.HI", dut="J2#3.OUT", max_switches=0),
        lambda: system.plan([("U2#1.HI", "J2#3.OUT"), ("U5.OUT+", "J2.VCC")]),
        lambda: system.connected({"K1#1": 1, "K307#2": 1}),
        lambda: (system.components(), system.nets, system.check()),
    ]
    found = [(i % len(questions), questions[i % len(questions)]()) for i in range(first, first + 3 * len(questions))]
    return sorted(found, key=lambda answer: answer[0])


def test_threads_get_what_one_thread_gets() -> None:
    """Also of a system that nobody has asked before."""
    expected = answers(velk.System(boards.DEMO_NETLISTS), 0)
    shared = velk.System(boards.DEMO_NETLISTS)
    with ThreadPoolExecutor(4) as pool:
        assert list(pool.map(lambda first: answers(shared, first), range(4))) == [expected] * 4
