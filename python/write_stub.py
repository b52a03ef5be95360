"""Writes the stub file of the extension module, _velk.pyi beside it, from the signatures that its docstrings have.

The argument is the folder of the package, as it was built.
"""

from __future__ import annotations

import importlib
import pathlib
import re
import sys
from types import ModuleType
from typing import Iterator

HEAD = """import typing
from typing import Dict, List

import velk._values
"""


def signature(text: str) -> str:
    """What stands behind the name of a function, in the names that the stub has."""
    found = re.search(r"\(.*\) -> .*", text)
    if not found:
        raise ValueError(f"no signature in {text!r}")
    # The first argument of what is defined as a lambda has no name.
    unnamed = re.sub(r"^\((self|arg0): velk\._velk\.\w+", "(self", found[0])
    return unnamed.replace("velk._velk.", "")


def members(described: type) -> Iterator[str]:
    for name, member in vars(described).items():
        if isinstance(member, property):
            yield f"{name}: {signature(member.fget.__doc__ or '').split(' -> ')[1]}"
        elif isinstance(member, staticmethod):
            yield f"@staticmethod\n    def {name}{signature(member.__func__.__doc__ or '')}: ..."
        elif re.match(rf"{name}\(", member.__doc__ or ""):
            yield f"def {name}{signature(member.__doc__)}: ..."


def declarations(module: ModuleType) -> Iterator[str]:
    for name, member in vars(module).items():
        if isinstance(member, type):
            yield "\n    ".join([f"class {name}:", *members(member)]) + "\n"
        elif not name.startswith("__"):
            yield f"{name}: {type(member).__name__}\n"


def main() -> None:
    folder = pathlib.Path(sys.argv[1])
    sys.path.insert(0, str(folder.parent))
    module = importlib.import_module("velk._velk")
    (folder / "_velk.pyi").write_text("\n".join([HEAD, *declarations(module)]), encoding="utf-8")


if __name__ == "__main__":
    main()
