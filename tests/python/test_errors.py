"""What is wrong is said in words that help."""

from __future__ import annotations

import re
from pathlib import Path
from typing import Any, Callable, Tuple, Type

import boards
import pytest
import velk

HI = ("U2#1", "HI")
OUT = {"dut": "J2#3", "dut_pin": "OUT"}
BOARD = """(export (components {components}) (libparts (libpart (lib "L") (part "P") (pins
  (pin (num "1") (name "A") (type "t")) (pin (num "2") (name "B.1") (type "t")) (pin (num "1.1") (name "C") (type "t")))))
  (nets (net (name "N") {nodes})))"""
COMPONENT = '(comp (ref "{}") (value "") (libsource (lib "L") (part "P")) (property (name "CompType") (value "{}")) {})'


def board(folder: Path, *components: Tuple[str, str, str], name: str = "board.net") -> Path:
    drawn = " ".join(COMPONENT.format(*component) for component in components)
    nodes = " ".join(f'(node (ref "{ref}") (pin "1"))' for ref, _, _ in components)
    (folder / name).write_text(BOARD.format(components=drawn, nodes=nodes), encoding="utf-8")
    return folder / name


NOT_FOUND = {
    "component": (lambda s: s.component("K30#2"), "K30#2: no component has this reference; there are K301#2"),
    "component of several": (lambda s: s.component("R1"), "several netlists have it: R1#1, R1#3"),
    "part": (lambda s: s.part("RELAY_SPTS#1"), "RELAY_SPST#1"),
    "net": (lambda s: s.net("/DMM1_HO#1"), "/DMM1_HI#1"),
    "pin": (lambda s: s.pin("U2#1", "HO"), "HI"),
    "pin as a text": (lambda s: s.pin("U2#1.HO"), "HI"),
    "no pin at all": (lambda s: s.pin("U2#1"), "write REFERENCE.PIN as in 'K3#2.1'"),
    "no component": (lambda s: s.pin("", "HI"), "no component is given"),
    "no properties": (lambda s: s.routes({}, "HI", **OUT), "no component is given"),
    "no component in a text": (lambda s: s.plan([(".HI", "J2.OUT")]), "no component is given"),
    "pin without a name": (lambda s: s.pin("R3#1", ""), "no pin is given"),
    "pin without a name in a text": (lambda s: s.pin("R3#1."), "no pin is given"),
    "pin by properties": (lambda s: s.pin({"Dev": "DDM"}, "HI"), "DMM"),
    "pins": (lambda s: s.pins("U22#1"), "U22#1: no component has this reference; there are U2#1"),
    "source": (lambda s: s.routes("U9#1.HI", **OUT), "U9#1"),
    "dut": (lambda s: s.routes(*HI, dut="J2#3.OUTT"), "OUT"),
    "why, source": (lambda s: s.why_no_route("U9#1", "HI", **OUT), "U9#1"),
    "without": (lambda s: s.routes(*HI, **OUT, without=["K1#1", "K400#2"]), "K400#2"),
    "without properties": (lambda s: s.coverage(without="Channel=none"), "Channel"),
    "without_nets": (lambda s: s.why_no_route(*HI, **OUT, without_nets="/DMM1_HO#1"), "/DMM1_HI#1"),
    "through": (lambda s: s.routes(*HI, **OUT, through="K400#2"), "K400#2"),
    "connection": (lambda s: s.plan([("U2#1.HI", "J2#3.OUT"), ("U9#1.HI", "J2#3.OUT")]), "U9#1"),
    "pin on no net": (lambda s: s.plan([("U2#1.HI", "U2#1.LO")], without="K400#2"), "K400#2"),
    "allow": (lambda s: s.plan([], allow="J9"), "J9"),
    "positions": (lambda s: s.positions("K400#2"), "K400#2"),
    "relay set": (lambda s: s.connected({"K400#2": 1}), "K400#2"),
    "relay set before": (lambda s: s.plan([], before={"K400#2": 1}), "K400#2"),
}


@pytest.mark.parametrize("case", NOT_FOUND)
def test_not_found(demo: velk.System, case: str) -> None:
    question, words = NOT_FOUND[case]
    with pytest.raises(velk.NotFoundError, match=re.escape(words)) as raised:
        question(demo)
    assert isinstance(raised.value, velk.Error) and isinstance(raised.value, LookupError)


PIN = velk.Pin("U2#1", "1", "HI")
WRONG = {
    "no netlists": (lambda s: velk.System([]), ValueError, "a system needs a netlist"),
    "number of switches": (lambda s: s.routes(*HI, **OUT, max_switches=-1), ValueError, "max_switches is -1"),
    "too many switches": (lambda s: s.coverage(max_switches=2**31), ValueError, "max_switches is 2147483648"),
    "connections": (lambda s: s.why_no_route(*HI, **OUT, max_connections=-2), ValueError, "max_connections is -2"),
    "routes": (lambda s: s.routes(*HI, **OUT, max_routes=-3), ValueError, "max_routes is -3"),
    "no routes": (lambda s: s.routes(*HI, **OUT, max_routes=0), ValueError, "max_routes is 0"),
    "flag": (lambda s: s.routes(*HI, **OUT, as_drawn=2), TypeError, "as_drawn is 2"),
    "flag of reading": (lambda s: velk.System(s.netlists, tolerant="no"), TypeError, "tolerant is 'no'"),
    "no mapping": (lambda s: s.coverage(source="U2"), TypeError, "as in a dict, not 'U2'"),
    "no positions": (lambda s: s.connected(["K1#1"]), TypeError, "as in a dict, not ['K1#1']"),
    "no system": (lambda s: velk.write_physical_ini(s, "it.ini"), TypeError, "expected a System, not 'it.ini'"),
    "half a switch": (lambda s: s.routes(*HI, **OUT, max_switches=1.5), TypeError, "float"),
    "time limit": (lambda s: s.plan([], time_limit=0), ValueError, "time_limit is 0"),
    "no time limit at all": (lambda s: s.plan([], time_limit=float("nan")), ValueError, "time_limit is nan"),
    "name": (lambda s: s.component(7), TypeError, "not 7"),
    "names": (lambda s: s.routes(*HI, **OUT, without=[b"K1"]), TypeError, "not b'K1'"),
    "properties": (lambda s: s.components(Channel=7), TypeError, "not 7"),
    "pin number": (lambda s: s.pin("U2#1", 1), TypeError, "not 1"),
    "pin of properties": (lambda s: s.pin({"Dev": "DMM"}), TypeError, "the pin of {'Dev': 'DMM'} is missing"),
    "pin of a pin": (lambda s: s.pin(PIN, "HI"), TypeError, "Pin U2#1.1 HI has no pin 'HI', since it is one"),
    "a position": (lambda s: s.connected({"K1#1": "1"}), TypeError, "str"),
    "a connection, not several": (lambda s: s.plan(("U2#1.HI", "J2#3.OUT")), TypeError, "not 'U2#1.HI'"),
    "a pin for a connection": (lambda s: s.plan([PIN]), TypeError, "a connection is two ends"),
    "three ends": (lambda s: s.plan([("U2#1.HI", "J2#3.OUT", "J1#3.OUT")]), ValueError, "a connection is two ends"),
    "a number for an end": (lambda s: s.plan([(1, 2)]), ValueError, "not 1"),
    "three parts": (lambda s: s.plan([(("U2", "#1", "HI"), "J2#3.OUT")]), ValueError, "an end is a pin"),
    "name of a plan": (lambda s: s.plan([], name=1), TypeError, "not 1"),
    "name of a step": (lambda s: s.plan_steps({1: []}), TypeError, "not 1"),
    "file name": (lambda s: velk.write_physical_ini(7, s), TypeError, "int"),
    "progress": (lambda s: s.coverage(progress=7), TypeError, "callable"),
}


@pytest.mark.parametrize("case", WRONG)
def test_wrong_types_and_values(demo: velk.System, case: str) -> None:
    question, error, words = WRONG[case]
    with pytest.raises(error, match=re.escape(words)):
        question(demo)


def test_reading(tmp_path: Path) -> None:
    cut_off = tmp_path / "cut.net"
    cut_off.write_bytes(boards.DEMO_NETLISTS[0].read_bytes()[:5000])
    (tmp_path / "velk.toml").write_text("netlists = 7\n", encoding="utf-8")
    questions = {
        r"none\.net": lambda: velk.System(tmp_path / "none.net"),
        r"cut\.net: .*was it cut off": lambda: velk.System([boards.DEMO_NETLISTS[0], cut_off]),
        r"velk\.toml:1:": lambda: velk.System.open(tmp_path / "velk.toml"),
        r"table\.csv": lambda: velk.System(boards.DEMO_NETLISTS, relays=[tmp_path / "table.csv"]),
    }
    for words, question in questions.items():
        with pytest.raises(velk.ReadingError, match=words):
            question()


def test_system_file_keeps_out_what_is_not_there(tmp_path: Path) -> None:
    netlist = board(tmp_path, ("U1", "Source", ""))
    (tmp_path / "velk.toml").write_text(f'netlists = ["{netlist}"]\nwithout = ["K9"]\n', encoding="utf-8")
    with pytest.raises(velk.NotFoundError, match="K9"):
        velk.System.open(str(tmp_path / "velk.toml"))


def test_positions(tmp_path: Path, demo: velk.System) -> None:
    field = '(property (name "Positions") (value "/ 1-3"))'
    system = velk.System(board(tmp_path, ("K1", "Relay", field), ("U1", "Source", ""), ("J1", "DUT", "")))
    assert len(system.position_errors) == 1 and system.position_errors[0].startswith("K1#1: field Positions")
    for question in (
        lambda: system.routes("U1", "1", dut="J1", dut_pin="1"),
        lambda: system.connected({}),
        lambda: system.plan([("U1.A", "J1.A")]),
        lambda: demo.connected({"K1#1": 2}),
        lambda: demo.connected({"K501#2": 1, "K502#2": 0}),
        lambda: demo.connected({"K1#1": 10**20}),
        lambda: demo.plan([], before={"K1#1": -1}),
    ):
        with pytest.raises(velk.PositionsError, match="K1#1|K50[12]#2"):
            question()
    assert demo.position_errors == ()


def test_writing(tmp_path: Path, demo: velk.System) -> None:
    for question in (
        lambda: velk.write_physical_ini(tmp_path, demo),
        lambda: velk.write_application_ini(tmp_path / "none" / "it.ini", demo, demo),
    ):
        with pytest.raises(velk.WritingError, match=str(tmp_path)):
            question()


def test_too_large(tmp_path: Path) -> None:
    fields = '(property (name "Bench") (value "2000000000")) (property (name "Name") (value "N"))'
    system = velk.System(board(tmp_path, ("J1", "Dut", fields)))
    (tmp_path / "it.ini").write_text("as it was", encoding="utf-8")
    with pytest.raises(velk.TooLargeError):
        velk.write_application_ini(tmp_path / "it.ini", system, system)
    with pytest.raises(velk.TooLargeError):
        system.application_ini(system)
    assert (tmp_path / "it.ini").read_text(encoding="utf-8") == "as it was"


def test_points_in_references_and_pins(tmp_path: Path) -> None:
    """Each place of a point is tried; what may be several pins is not guessed."""
    system = velk.System(board(tmp_path, *((ref, "Relay", "") for ref in ("K1", "K1.A", "K.2", "K.2.B"))))
    assert system.pin("K1.A.A") == system.pin("K1.A", "A") == velk.Pin("K1.A#1", "1", "A", "N#1")
    assert system.pin("K1#1.1.1") == system.pin("K1", "1.1") == velk.Pin("K1#1", "1.1", "C", None)
    assert system.pin("K1.B.1").name == "B.1"
    with pytest.raises(velk.NotFoundError, match="'K.2.B.1' may be several pins"):
        system.pin("K.2.B.1")
    assert (system.pin("K.2", "B.1").ref, system.pin("K.2.B", "1").ref) == ("K.2#1", "K.2.B#1")
    with pytest.raises(velk.NotFoundError, match="no component has this reference"):
        system.pin("K.9.9")


def test_error_classes() -> None:
    for error in (velk.ReadingError, velk.WritingError, velk.TooLargeError, velk.PositionsError, velk.PlanError):
        assert issubclass(error, velk.Error) and not issubclass(error, LookupError)


def test_nothing_is_printed(capfd: pytest.CaptureFixture[str], demo: velk.System) -> None:
    demo.pin({"CompType": "DUT"}, "OUT")
    with pytest.raises(velk.NotFoundError):
        demo.component("K")
    assert capfd.readouterr() == ("", "")
