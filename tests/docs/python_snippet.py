"""Runs the Python samples of the documents with the module velk that this Python imports.

python   statements, run as they are
pycon    a session after ">>> ", its results compared, "..." standing for anything and a break for a blank

The blocks of a page are one program, run in a copy of the demo: examples/demo, or that in the folder of examples that is
given. Blocks that import numpy or pandas are left out, and told, where these are not there.
"""
import doctest
import importlib.util
import os
import pathlib
import re
import shutil
import sys
import tempfile

from documents import ROOT, pages

MAYBE_MISSING = ("numpy", "pandas")


def run_statements(block, names):
    source = "\n" * block.line + "\n".join(block.lines)
    exec(compile(source, block.page, "exec"), names)


def run_session(block, names):
    text = "\n".join(block.lines) + "\n"
    session = doctest.DocTestParser().get_doctest(text, {}, str(block), block.page, block.line)
    session.globs = names  # not a copy, so that the next block knows them too
    runner = doctest.DocTestRunner(verbose=False, optionflags=doctest.ELLIPSIS | doctest.NORMALIZE_WHITESPACE)
    failed, _ = runner.run(session, clear_globs=False)
    if failed:
        raise SystemExit(f"{block}: {failed} of its results are others")


def missing_module(block):
    imported = re.findall(r"^(?:>>> )?import (\w+)", "\n".join(block.lines), re.MULTILINE)
    return next((name for name in imported if name in MAYBE_MISSING and not importlib.util.find_spec(name)), None)


def run_page(page):
    names, ran = {"__name__": "__main__"}, 0
    for block in page.blocks:
        missing = missing_module(block)
        if missing:
            print(f"{block}: left out, since there is no {missing}")
        elif block.language in ("python", "pycon"):
            (run_statements if block.language == "python" else run_session)(block, names)
            ran += 1
    return ran


def main():
    examples = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else ROOT / "examples").resolve()
    folder = tempfile.mkdtemp(prefix="velk-docs-")
    ran = {}
    for page in pages():
        copy = shutil.copytree(examples / "demo", pathlib.Path(folder, pathlib.Path(page.name).stem))
        os.chdir(copy)
        ran[page.name] = run_page(page)
    os.chdir(ROOT)
    shutil.rmtree(folder)
    if not ran["docs/python.md"]:
        raise SystemExit("docs/python.md holds no Python")
    print(f"{sum(ran.values())} Python samples run")


if __name__ == "__main__":
    main()
