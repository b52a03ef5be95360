"""What is raised where something is wrong."""

__all__ = ["Error", "NotFoundError", "PlanError", "PositionsError", "ReadingError", "TooLargeError", "WritingError"]


class Error(Exception):
    """What all errors of Velk are. Its text is one line of English: what is wrong, and where."""


class ReadingError(Error):
    """A file cannot be read, or is not as it should be: a netlist, a system file, a table of relays."""


class NotFoundError(Error, LookupError):
    """There is no such component, part, pin or net. The text has those whose names come nearest."""


class WritingError(Error):
    """A file cannot be written. What was there before is as it was."""


class TooLargeError(Error):
    """An INI file would not end, as by a mistyped bench number."""


class PositionsError(Error):
    """Positions of relays are drawn wrongly, or are not there, or relays that move together would be in two."""


class PlanError(Error):
    """A plan that was found is none. That is a fault of Velk: please report it."""
