"""The drawing of a route: from left to right and in rows, with a frame around what lies on one board.

Its pieces follow one another along a line: ends, switches and plugs, with wires in between. All looks stand at the
elements themselves, so that nothing in a notebook changes them, or is changed.
"""

from __future__ import annotations

import re
import unicodedata
from itertools import accumulate, groupby
from typing import TYPE_CHECKING, Dict, List, NamedTuple, Sequence, Tuple

from velk._markup import counted, element, shape, text, visible

if TYPE_CHECKING:
    from velk._values import Pin, Route, Step

MOST_DRAWN = 40

INK = "#17202b"
QUIET = "#55606e"
WIRE = "#1f62a8"
SURFACE = "#ffffff"
END, END_LINE = "#d4efdc", "#2f7d4a"
SIDE, SIDE_LINE, SIDE_TEXT = "#fbe6c8", "#a85a00", "#7d4200"
_SET = "#0b62c4"


class _Look(NamedTuple):
    fill: str
    line: str


_BOARDS = (
    _Look("#eef4fb", "#8fb0d6"),
    _Look("#f5f0fa", "#b79ed6"),
    _Look("#eef7f3", "#85bda3"),
    _Look("#fbf3ec", "#d3a883"),
    _Look("#f9eef3", "#d399b3"),
    _Look("#f2f4ea", "#b3ba82"),
    _Look("#e4f5f8", "#7fbcc8"),
    _Look("#fbe6e4", "#d8938c"),
    _Look("#e7f5df", "#93c27f"),
    _Look("#e9ebee", "#9fa6b0"),
)

# Pixels that a character takes at most, as nobody can measure here.
_REF, _SMALL, _TINY = 9.6, 7.5, 6.8
_BOLD = {"font_size": 14, "font_weight": 600}

_ROW_WIDTH = 1060  # a little more than most notebooks have, which show it smaller then
_MARGIN = 26  # for the line that leads to the next row
_PADDING = 10  # of the frames at both ends of a row
_GAP = 8  # between boards
_ROW_GAP = 32
_TITLE = 26  # above what a frame holds
_CHIP = 30


class _Piece(NamedTuple):
    """Drawn with the line that it lies on from 0,0 to its width."""

    board: int
    width: int
    above: int
    below: int
    drawn: str


class _Row(NamedTuple):
    pieces: Tuple[Tuple[int, _Piece], ...]  # with their places
    end: int
    above: int
    height: int


def task(step: Step) -> str:
    """What a route asks of a component: "set", "rest", "unknown", "drawn" or, of what is no relay, "none"."""
    if step.position is not None:
        return "set" if step.position > 0 else "rest"
    if step.is_unknown:
        return "unknown"
    return "drawn" if _type(step).lower() == "relay" else "none"


def position_text(position: int, name: str) -> str:
    """A position away from rest in one word, its number where the name could be taken for another one. Empty for the
    first one without a name, which the relay being set tells."""
    if not name and position == 1:
        return ""
    is_number = re.fullmatch("[+-]?[0-9]+", name)
    return name if name and not is_number and not re.search(r"\s", name) else str(position)


def pin_text(pin: Pin) -> str:
    return f"{pin.number} ({pin.name})" if pin.name not in ("", "~", pin.number) else pin.number


def drawing(route: Route, wire: str = WIRE) -> str:
    rows = [_row(pieces) for pieces in _broken(_pieces(route, wire))]
    tops = list(accumulate((row.height + _ROW_GAP for row in rows), initial=2))
    turns = (_turn(rows[i], tops[i], rows[i + 1], tops[i + 1], wire) for i in range(len(rows) - 1))
    width, height = max(row.end for row in rows) + _MARGIN, tops[-1] - _ROW_GAP + 2
    return element(
        "svg",
        *(_drawn_row(row, top) for row, top in zip(rows, tops)),
        *turns,
        xmlns="http://www.w3.org/2000/svg",
        viewBox=f"0 0 {width} {height}",
        width=width,
        height=height,
        role="img",
        aria_label=_label_of(route),
        font_size=12,
        font_family="system-ui,sans-serif",
        text_anchor="middle",
        fill=INK,
        style="display:block;max-width:100%;height:auto",
    )


def _label_of(route: Route) -> str:
    return visible(f"{route.start} to {route.end} over {counted(len(route.steps), 'switch', 'switches')}", 300)


def _pieces(route: Route, wire: str) -> List[_Piece]:
    steps = route.steps[:MOST_DRAWN]
    sides: Dict[str, List[Pin]] = {}
    for pin in route.side_connections:
        sides.setdefault(pin.net or "", []).append(pin)
    pieces = [_end(route.start, "From", True)]
    for before, step in zip((route.start.ref, *(step.component.ref for step in steps)), steps):
        pieces += _net(step.net, before, step.component.ref, sides.pop(step.net, []), wire)
        pieces.append(_switch(step, wire))
    if len(steps) < len(route.steps):
        return pieces
    last = steps[-1].component.ref if steps else route.start.ref
    pieces += _net(route.last_net, last, route.end.ref, sides.get(route.last_net, []), wire)
    return [*pieces, _end(route.end, "To", False)]


def _end(pin: Pin, word: str, is_first: bool) -> _Piece:
    number = f"pin {pin_text(pin)}"
    width = _width_for(((str(pin), _REF), (number, _SMALL)), 90, 200)
    drawn = (
        element("title", text(f"{word} {pin}, {number}", 300)),
        shape("rect", y=-36, width=width, height=72, rx=10, fill=END, stroke=END_LINE, stroke_width=1.5),
        _label(width / 2, -4, _fitted(str(pin), width - 14, _REF), **_BOLD),
        _label(width / 2, 16, _fitted(number, width - 14, _SMALL)),
        _terminal(width if is_first else 0),
    )
    return _Piece(board_of(pin.ref), width, 40, 40, element("g", *drawn))


def _switch(step: Step, wire: str) -> _Piece:
    component, pins = step.component, (step.pin_in.number, step.pin_out.number)
    width = _width_for(((component.ref, _REF), (component.value, _SMALL)), 84, 160)
    width = max(width, 68 + 2 * int(max(min(_width(visible(pin), _SMALL), 50) for pin in pins)))
    about = f"{component.ref}: {_type(step)} {component.value}{_task_text(step)}, pin {pins[0]} to {pins[1]}"
    middle = element(
        "g",
        shape("path", d=f"M{-width / 2:g},0H-26M26,0H{width / 2:g}", **_line(wire, 2.5)),
        *_symbol(step),
        _label(0, -44, _fitted(component.ref, width - 6, _REF), **_BOLD),
        _label(-28, -6, _fitted(pins[0], 50, _SMALL), fill=QUIET, text_anchor="end"),
        _label(28, -6, _fitted(pins[1], 50, _SMALL), fill=QUIET, text_anchor="start"),
        _label(0, 28, _fitted(component.value, width - 6, _SMALL), fill=QUIET),
        transform=f"translate({width / 2:g},0)",
    )
    return _Piece(board_of(component.ref), width, 62, 40, element("g", element("title", text(about, 300)), middle))


def _task_text(step: Step) -> str:
    name = f", {step.position_name}" if step.position_name else ""
    texts = {
        "set": f", set to position {step.position}{name}",
        "rest": ", stays at rest",
        "unknown": ", positions not known",
    }
    return texts.get(task(step), "")


def _symbol(step: Step) -> Tuple[str, ...]:
    if task(step) != "none":
        return (*_coil(step), *_contact(step))
    kind = _type(step)
    is_resistor = kind.lower() == "resistor"
    height = 18 if is_resistor else 26
    box = shape("rect", x=-26, y=-height // 2, width=52, height=height, rx=2, **_line(INK, fill=SURFACE))
    return (box,) if is_resistor else (box, _label(0, 4, _fitted(kind, 48, _SMALL), fill=QUIET))


# Its text says what the coil has to do; of a way as drawn nobody knows.
def _coil(step: Step) -> Tuple[str, ...]:
    said, look, ink = {
        "set": (position_text(step.position or 0, step.position_name) or "set", _line(_SET, 1.4, _SET), SURFACE),
        "rest": ("rest", _line(QUIET, 1.4), QUIET),
        "unknown": ("?", _line(SIDE_LINE, 1.4, dashes="3 3"), SIDE_TEXT),
        "drawn": ("", _line(QUIET, 1.4), QUIET),
    }[task(step)]
    width = min(max(int(_width(visible(said), _TINY)) + 12, 22), 70)
    return (
        shape("rect", x=f"{-width / 2:g}", y=-38, width=width, height=14, rx=1.5, **look),
        _label(0, -27.5, _fitted(said, width - 4, _TINY), font_size=10, font_weight=600, fill=ink),
    )


# A contact on a route is closed, by its coil or at rest, where the blade lies on the contact that it leaves when it is
# set. It is drawn open where nobody knows how it gets closed.
def _contact(step: Step) -> Tuple[str, ...]:
    what = task(step)
    end_of_drive, blade = (0, "M-16,0H16") if what in ("set", "rest") else (-9, "M-16,0L15,-15")
    rest_contact = "M16,0v-11h-6" if what == "rest" else ""
    return (
        shape("path", d=f"M0,-24V{end_of_drive}", **_line(QUIET, 1.2, dashes="2 2")),
        shape("path", d=blade, **(_line(SIDE_LINE, dashes="3 3") if what == "unknown" else _line(INK))),
        shape("path", d=f"M-26,0h10m32,0h10{rest_contact}", **_line(INK)),
        _terminal(-16),
        _terminal(16),
    )


def _line(colour: str, width: float = 2.2, fill: str = "none", dashes: str = "") -> Dict[str, object]:
    dashed = {"stroke_dasharray": dashes} if dashes else {}
    return {"fill": fill, "stroke": colour, "stroke_width": width, "stroke_linecap": "round", **dashed}


def _terminal(x: float) -> str:
    return shape("circle", cx=f"{x:g}", r=3.5, fill=SURFACE, stroke=INK, stroke_width=2)


# The wires of a net, on the board on which the route enters it and on that on which it leaves, and the plug in between.
def _net(net: str, from_ref: str, to_ref: str, sides: Sequence[Pin], wire: str) -> List[_Piece]:
    start, end = board_of(from_ref), board_of(to_ref)
    if start == end:
        return [_wire(net, start, sides, wire)]
    there = [pin for pin in sides if board_of(pin.ref) == end]
    here = [pin for pin in sides if board_of(pin.ref) != end]
    return [_wire(net, start, here, wire), _socket(start, wire), _plug(end, wire), _wire(net, end, there, wire)]


def _wire(net: str, board: int, sides: Sequence[Pin], wire: str) -> _Piece:
    names = _names_on(net, board)
    if len(names) > 3:
        names[2:] = [f"and {len(names) - 2} more"]
    chips = [str(pin) for pin in sides]
    if len(chips) > 8:
        chips[7:] = [f"and {len(chips) - 7} more"]
    width = max(_width_for([(name, _SMALL) for name in names], 44, 180) - 4, _chips_width(chips))
    drawn = (
        element("title", text(f"Net {net}", 300)),
        _wire_to(width, wire),
        *(
            _label(width / 2, -9 - 15 * (len(names) - 1 - i), _fitted(name, width - 8, _SMALL), fill=wire)
            for i, name in enumerate(names)
        ),
        *_chips(chips, width),
    )
    return _Piece(board, width, 12 + 15 * len(names), 24 + _CHIP * len(chips), element("g", *drawn))


def _chips_width(chips: Sequence[str]) -> int:
    return _width_for([(f"\u25c6 {chip}", _SMALL) for chip in chips], 90, 200) + 28 if chips else 0


# What else the net connects.
def _chips(chips: Sequence[str], width: int) -> Tuple[str, ...]:
    if not chips:
        return ()
    ends = [20 + _CHIP * i for i in range(len(chips))]
    branch = f"M14,0V{ends[-1] + 12}" + "".join(f"M14,{top + 12}H22" for top in ends)
    return (
        shape("path", d=branch, **_line(SIDE_LINE, 1.6, dashes="4 3")),
        *(_chip(chip, top, width) for chip, top in zip(chips, ends)),
        shape("circle", cx=14, r=4.5, fill=SIDE_LINE),
    )


def _chip(chip: str, top: int, width: int) -> str:
    return element(
        "g",
        element("title", text(f"Also connects {chip}", 300)),
        shape("rect", x=22, y=top, width=width - 28, height=24, rx=6, fill=SIDE, stroke=SIDE_LINE),
        _label(30, top + 16, _fitted(f"\u25c6 {chip}", width - 42, _SMALL), fill=SIDE_TEXT, text_anchor="start"),
    )


def _socket(board: int, wire: str) -> _Piece:
    return _Piece(board, 30, 20, 20, _wire_to(18, wire) + shape("path", d="M28,-9h-1a9,9 0 0 0 0,18h1", **_line(INK)))


def _plug(board: int, wire: str) -> _Piece:
    return _Piece(board, 24, 20, 20, _wire_to(24, wire) + shape("path", d="M-13,0H14", **_line(INK, 4)))


def _wire_to(x: int, wire: str) -> str:
    return shape("path", d=f"M0,0H{x}", **_line(wire, 2.5))


def board_of(ref: str) -> int:
    """References end in the number of the board: "K3#2"."""
    number = ref.rpartition("#")[2]
    return int(number) if re.fullmatch("[0-9]{1,9}", number) else 0


# Those that the net has on the board, of those of which its name is made: "+" joins the names of joined nets.
def _names_on(net: str, board: int) -> List[str]:
    ending = f"#{board}"
    parts = re.sub(r"(#[0-9]+)\+", r"\1\n", net[:3000]).split("\n")
    return [part[: -len(ending)] for part in parts if part.endswith(ending)]


def _broken(pieces: Sequence[_Piece]) -> List[List[_Piece]]:
    rows: List[List[_Piece]] = [[]]
    width = 0
    for piece in pieces:
        if rows[-1] and width + piece.width > _ROW_WIDTH:
            rows.append([])
            width = 0
        rows[-1].append(piece)
        width += piece.width
    return rows


def _row(pieces: Sequence[_Piece]) -> _Row:
    placed: List[Tuple[int, _Piece]] = []
    x = _MARGIN
    for piece in pieces:
        if placed and placed[-1][1].board != piece.board:
            x += _GAP
        placed.append((x, piece))
        x += piece.width
    above = _TITLE + max(piece.above for piece in pieces)
    return _Row(tuple(placed), x, above, above + max(piece.below for piece in pieces) + 10)


def _drawn_row(row: _Row, y: int) -> str:
    frames = [_frame(tuple(placed), row, y) for _, placed in groupby(row.pieces, lambda placed: placed[1].board)]
    pieces = [element("g", piece.drawn, transform=f"translate({x},{y + row.above})") for x, piece in row.pieces]
    return "".join(frames + pieces)


def _frame(placed: Sequence[Tuple[int, _Piece]], row: _Row, y: int) -> str:
    (left, first), (x, last) = placed[0], placed[-1]
    left -= _PADDING if left == _MARGIN else 0
    right = x + last.width + (_PADDING if x + last.width == row.end else 0)
    look = _BOARDS[(first.board - 1) % len(_BOARDS)]
    board = f"#{first.board}" if first.board else ""
    return shape(
        "rect", x=left, y=y, width=right - left, height=row.height, rx=8, fill=look.fill, stroke=look.line
    ) + _label(left + 10, y + 18, board, fill=QUIET, font_weight=600, text_anchor="start")


def _turn(before: _Row, top: int, after: _Row, after_top: int, wire: str) -> str:
    right, left = before.end + _MARGIN - 8, 8
    start, middle, end = top + before.above, top + before.height + _ROW_GAP // 2, after_top + after.above
    way = (
        f"M{before.end},{start}H{right - 8}q8,0 8,8V{middle - 8}q0,8 -8,8H{left + 8}q-8,0 -8,8"
        f"V{end - 8}q0,8 8,8H{_MARGIN}"
    )
    return shape("path", d=way, **_line(wire, 2.5, dashes="2 5"))


def _type(step: Step) -> str:
    return step.component.properties.get("CompType", "")


def _label(x: float, y: float, shown: str, **attributes: object) -> str:
    return element("text", text(shown, 1000), x=f"{x:g}", y=f"{y:g}", **attributes) if shown else ""


def _width(shown: str, per_character: float) -> float:
    return per_character * sum(2 if unicodedata.east_asian_width(character) in "WF" else 1 for character in shown)


def _fitted(name: str, width: float, per_character: float) -> str:
    shown = visible(name)
    length = len(shown)
    while length > 1 and _width(shown[:length], per_character) > width:
        length -= 1
    return shown if length == len(shown) else shown[: length - 1] + "\u2026"


def _width_for(texts: Sequence[Tuple[str, float]], least: int, most: int) -> int:
    widest = max((_width(visible(each), per_character) for each, per_character in texts), default=0)
    return min(max(int(widest) + 20, least), most)
