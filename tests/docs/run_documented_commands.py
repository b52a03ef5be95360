#!/usr/bin/env -S python3 -B
"""Runs the commands of the documents that take too long for the tests, as written, in the source folder."""
import os
import pathlib
import subprocess

from documents import ROOT, pages
from samples import command_lines, commands_run_elsewhere

STEP = "commands of the documents"


def main():
    home = ROOT / "build/documented-commands"
    home.mkdir(parents=True, exist_ok=True)
    environment = dict(os.environ, HOME=str(home))
    elsewhere = commands_run_elsewhere()
    for page in pages():
        for block in page.blocks:
            for command in command_lines(block) if block.language == "sh" else []:
                if elsewhere[command][0] == STEP:
                    print(f"{block}: {command}", flush=True)
                    subprocess.run(["bash", "-c", command], cwd=ROOT, env=environment, check=True,
                                   stdout=subprocess.DEVNULL)
    installed = pathlib.Path(home, ".local/bin/velk")
    subprocess.run([installed, "list", "types", "examples/demo/matrix.net"], cwd=ROOT, check=True,
                   stdout=subprocess.DEVNULL)


if __name__ == "__main__":
    main()
