"""The includes go as docs/architecture.md tells: each folder includes only those in its row, nothing goes in a circle, and
the command, the Python module and the examples use only headers that are installed."""
import graphlib
import re
import unittest

from documents import ROOT

INCLUDE = re.compile(r'^#include [<"]((?:velk|velkini|velkplanning|cli)/[^">]+\.h)[">]', re.MULTILINE)
ROW = re.compile(r"^\| `([a-z/]+)` \| ([^|]*) \| [^|]* \|$", re.MULTILINE)
GENERATED = {"velk/VelkExport.h", "velk/VelkVersion.h", "velkini/VelkIniExport.h", "velkplanning/VelkPlanningExport.h"}


def allowed_includes():
    """The folders of the table, each with those that it may include."""
    text = (ROOT / "docs/architecture.md").read_text(encoding="utf-8")
    return {folder: set(re.findall(r"`([a-z/]+)`", others)) for folder, others in ROW.findall(text)}


def includes():
    """Each source with the headers of the project that it includes."""
    for top in ("velk", "velkini", "velkplanning", "cli", "python", "examples"):
        for path in sorted((ROOT / top).rglob("*")):
            if path.suffix in (".h", ".cpp"):
                name = path.relative_to(ROOT).as_posix()
                for header in INCLUDE.findall(path.read_text(encoding="utf-8")):
                    yield name, header


def listed_headers(folder, heading):
    """Those that the CMake file of the folder names behind the heading."""
    listed = (ROOT / folder / "CMakeLists.txt").read_text(encoding="utf-8").split(heading, 1)[1]
    return {f"{folder}/{name}" for name in re.findall(r"\S+\.h\b", re.split(r"\)|PUBLIC", listed, maxsplit=1)[0])}


def installed_headers():
    return (GENERATED | {"velkini/IniWriter.h"} | listed_headers("velk", "set(public_headers") |
            listed_headers("velkplanning", "${PROJECT_SOURCE_DIR} FILES"))


def order(graph):
    """From the bottom to the top; raises an error that names the circle if there is one."""
    return list(graphlib.TopologicalSorter(graph).static_order())


class IncludesTest(unittest.TestCase):
    def test_folders_include_what_their_rows_say(self):
        allowed = allowed_includes()
        self.assertLessEqual(set().union(*allowed.values()), allowed.keys())
        found = {folder: set() for folder in allowed}
        for name, header in includes():
            room, other = ("/".join(file.split("/")[:2]) if "/" in file else file for file in
                           (name.rpartition("/")[0], header.rpartition("/")[0]))
            if room in allowed and other != room and header not in GENERATED:
                with self.subTest(file=name, header=header):
                    self.assertIn(other, allowed[room])
                found[room].add(other)
        self.assertEqual(found, allowed)
        order(allowed)

    def test_nothing_in_the_command_needs_what_needs_it(self):
        graph = {}
        for name, header in includes():
            unit = name.rpartition(".")[0]
            if name.startswith("cli/") and header[:-2] != unit:
                graph.setdefault(unit, set()).add(header[:-2])
        self.assertGreater(len(order(graph)), 30)

    def test_what_users_can_use(self):
        installed = installed_headers()
        for name, header in includes():
            if not name.startswith(("velk/", "velkini/", "velkplanning/")) and not header.startswith("cli/"):
                with self.subTest(file=name):
                    self.assertIn(header, installed)

    def test_the_command_has_five_floors(self):
        floors = {}
        allowed = allowed_includes()
        for folder in order(allowed):
            below = [floors[other] for other in allowed[folder] if other.startswith("cli")]
            floors[folder] = 1 + max(below, default=0)
        self.assertEqual(max(floors[folder] for folder in allowed if folder.startswith("cli")), 5)


if __name__ == "__main__":
    unittest.main()
