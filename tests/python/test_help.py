"""What help() and introspection find."""

from typing import get_type_hints

import velk

VALUES = [getattr(velk, name) for name in velk.__all__ if hasattr(getattr(velk, name), "_fields")]


def test_fields_have_words_of_their_own() -> None:
    assert velk.PlanRow.order.__doc__ == (
        "1 on the way to rest, 2 away from it. All with 1 come to rest before those with 2 move."
    )
    assert velk.Route.side_connections.__doc__.endswith("in the order in which they are met.")  # over two lines
    without = [(value, field) for value in VALUES for field in value._fields if "Alias" in getattr(value, field).__doc__]
    assert len(VALUES) == 23 and without == []


def test_classes_have_the_names_that_users_write() -> None:
    classes = [velk.System, velk.NotFoundError, velk.FrozenDict, *VALUES]
    assert {f"velk.{value.__name__}" for value in classes} == {f"{value.__module__}.{value.__qualname__}" for value in classes}
    assert get_type_hints(velk.PlanRow)["component"] is velk.Component
