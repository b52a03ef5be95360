"""What notebooks show of values: small drawings without outside resources."""

from __future__ import annotations

from html import escape
from typing import TYPE_CHECKING

if TYPE_CHECKING:
    from velk._values import Coverage, Plan, Route


def route(shown: Route) -> str:
    return f"<code>{escape(str(shown))}</code>"


def coverage(shown: Coverage) -> str:
    return f"<code>{escape(repr(shown))}</code>"


def plan(shown: Plan) -> str:
    return f"<code>{escape(repr(shown))}</code>"
