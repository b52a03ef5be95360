"""Elements of HTML and SVG. A name may hold anything and be of any length: it gets there through ``text()`` alone."""

from __future__ import annotations

import html
import re
from typing import Callable, Iterable, Sequence, TypeVar

Item = TypeVar("Item")

MOST_LISTED = 50

_INVISIBLE = re.compile("[\x00-\x1f\x7f-\x9f\u200b-\u200f\u2028-\u202e\u2066-\u2069\ud800-\udfff\ufeff\ufffe\uffff]")


def _code(found: "re.Match[str]") -> str:
    code = ord(found.group())
    return f"\\x{code:02X}" if code < 0x100 else f"\\u{code:04X}"


def visible(name: str, longest: int = 100) -> str:
    """As much as is shown of a name, with codes for what has no look or turns the direction of writing."""
    cut = name if len(name) <= longest else name[: longest - 1] + "\u2026"
    return _INVISIBLE.sub(_code, cut)


def text(name: str, longest: int = 100) -> str:
    return html.escape(visible(name, longest))


def element(tag: str, *content: str, **attributes: object) -> str:
    """Content is markup. Attributes are text; "class_" and "font_size" are written "class" and "font-size"."""
    return f"<{tag}{_written(attributes)}>{''.join(content)}</{tag}>"


def shape(tag: str, **attributes: object) -> str:
    """An element of SVG without content."""
    return f"<{tag}{_written(attributes)}/>"


def _written(attributes: "dict[str, object]") -> str:
    return "".join(
        f' {name.rstrip("_").replace("_", "-")}="{html.escape(str(value))}"' for name, value in attributes.items()
    )


def name(text_of_name: str) -> str:
    """A name whose direction of writing changes nothing around it."""
    return element("bdi", text(text_of_name))


def listed(items: Sequence[Item], markup: Callable[[Item], str], separator: str = ", ") -> str:
    """Of very many the first ones, and how many more there are."""
    shown = [markup(item) for item in items[:MOST_LISTED]]
    if len(items) > len(shown):
        shown.append(f"and {len(items) - len(shown):,} more")
    return separator.join(shown)


def names(of: Iterable[object]) -> str:
    return listed([str(each) for each in of], name)


def counted(count: int, one: str, many: str) -> str:
    return f"{count:,} {one if count == 1 else many}"
