"""Drives relay cards through the steps of a test program.

    python3 relay_card.py velk.toml plan.csv

The cards are made up and print what they are told. With a driver of your own for RelayCard the rest stays as it is.
"""

from __future__ import annotations

import csv
import sys
from itertools import groupby
from typing import Dict, Iterator, List, Tuple, Union

import velk


class RelayCard:
    """A card with channels, each of which moves a relay. All begin at rest, position 0."""

    def __init__(self, name: str) -> None:
        self.name = name
        self.positions: Dict[str, int] = {}

    def set(self, channel: str, position: int) -> None:
        # The symbols of one relay have one channel, so that it is told once for each of them.
        if self.positions.get(channel, 0) != position:
            self.positions[channel] = position
            print(f"    {self.name}: channel {channel} to {position}")

    def wait(self) -> None:
        """Wait until the relays have come to rest. These do so at once."""


class RelayCards:
    """All cards, by the properties of relays that tell which card drives them."""

    def __init__(self) -> None:
        self.cards: Dict[str, RelayCard] = {}

    def set(self, relay: velk.Component, position: int) -> None:
        # The relays on a sheet that is placed twice have one number of a card, but not one slot.
        name = " ".join(relay.properties[key] for key in ("Dev", "DevNo", "Slot") if key in relay.properties)
        card = self.cards.setdefault(name, RelayCard(name))
        card.set(relay.properties["Channel"], position)

    def wait(self) -> None:
        for card in self.cards.values():
            card.wait()


def component(text: str) -> Union[str, Dict[str, str]]:
    """A reference, or properties as "Dev=PSU;DevNo=1"."""
    return dict(pair.split("=", 1) for pair in text.split(";")) if "=" in text else text


def steps(table: str) -> Iterator[Tuple[str, List[velk.Connection]]]:
    """Each step of the table with its connections; rows of one name, one below the other, are one step."""
    with open(table, encoding="utf-8", newline="") as file:
        for step, rows in groupby(csv.DictReader(file), key=lambda row: row["step"]):
            yield step, [
                (component(row["from"]), row["from pin"], component(row["to"]), row["to pin"]) for row in rows
            ]


def drive(cards: RelayCards, plan: velk.Plan) -> None:
    # What is no longer needed is at rest before anything else moves: in between nothing may be connected by both.
    for _, rows in groupby(plan.rows, key=lambda row: row.order):
        for row in rows:
            cards.set(row.component, row.position)
        cards.wait()


def main() -> int:
    _, system_file, table = sys.argv
    system = velk.System.open(system_file)
    plans = system.plan_steps(steps(table))
    if not all(plan.found for plan in plans):
        print("no plan for", *(plan.name for plan in plans if not plan.found))
        return 1
    cards = RelayCards()
    for plan in plans:
        print(f"{plan.name}:")
        drive(cards, plan)
    return 0


if __name__ == "__main__":
    sys.exit(main())
