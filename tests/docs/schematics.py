"""The schematics of the demo system, their pictures and its netlists belong together."""
import json
import os
import shutil
import subprocess
import sys
import unittest

from documents import ROOT

sys.path.insert(0, str(ROOT / "scripts"))
from kicad_sexpr import child, children, read, value  # noqa: E402

DEMO = ROOT / "examples/demo"
NOT_FIELDS = {"Reference", "Value", "Footprint", "Datasheet", "Description"}
ADDED_BY_KICAD = {"Sheetname", "Sheetfile", "ki_keywords", "ki_fp_filters"}


def fields(node):
    return {prop[1]: prop[2] for prop in children(node, "property") if prop[1] not in NOT_FIELDS}


def properties_in(sheet_name):
    pairs = sheet_name.rpartition("-")[0].split(".")
    return dict(pair.split("=") for pair in pairs if pair)


def components_of(path, sheets, from_sheet):
    """Reference to (value, part, fields), from the schematic and all sheets below, as Velk should read them."""
    root = read(path)
    found = {}
    for placed in children(root, "symbol"):
        library, _, part = value(placed, "lib_id").partition(":")
        own = fields(placed)
        for project in children(child(placed, "instances"), "project"):
            for instance in children(project, "path"):
                reference = value(instance, "reference")
                if instance[1] == sheets and not library.startswith("power"):
                    text = next(prop[2] for prop in children(placed, "property") if prop[1] == "Value")
                    found[reference] = (text, part, {**own, **from_sheet})
    for sheet in children(root, "sheet"):
        below = fields(sheet)
        from_name = properties_in(below["Sheetname"])
        note = {key: text for key, text in below.items() if key not in ADDED_BY_KICAD}
        found.update(components_of(DEMO / below["Sheetfile"], f"{sheets}/{value(sheet, 'uuid')}",
                                   {**note, **from_name}))
    return found


class SchematicsTest(unittest.TestCase):
    def test_netlists_are_those_of_the_schematics(self):
        for board in ("instruments", "matrix", "adapter"):
            path = DEMO / f"{board}.kicad_sch"
            drawn = components_of(path, "/" + value(read(path), "uuid"), {})
            listed = json.loads(subprocess.run([shutil.which("velk", path=os.environ["VELK_PROGRAMS"]), "list", "components", "--format", "json",
                                                str(DEMO / f"{board}.net")], capture_output=True, check=True).stdout)
            exported = {}
            for component in listed["components"]:
                own = {key: text for key, text in component["properties"].items() if key not in ADDED_BY_KICAD}
                exported[component["ref"].removesuffix("#1")] = (component["value"],
                                                                 component["part"].removesuffix("#1"), own)
            with self.subTest(board=board):
                self.assertEqual(drawn, exported)

    def test_projects_open_their_schematics(self):
        for project in sorted(DEMO.glob("*.kicad_pro")):
            settings = json.loads(project.read_text(encoding="utf-8"))
            root = read(project.with_suffix(".kicad_sch"))
            with self.subTest(project=project.name):
                self.assertEqual(settings["meta"]["filename"], project.name)
                self.assertEqual(settings["sheets"][0][0], value(root, "uuid"))

    def test_pictures_show_the_schematics(self):
        done = subprocess.run([sys.executable, "-B", ROOT / "scripts/draw-schematics", "--check"], capture_output=True,
                              text=True, check=False)
        self.assertEqual(done.stderr, "")


if __name__ == "__main__":
    unittest.main()
