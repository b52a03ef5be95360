"""Runs the samples of the documents.

console  commands after "$ " with the output below them, a page being one session in the source folder. Standard output
         and standard error are compared exactly, a line "..." standing for any lines. A command that fails is followed
         by "$ echo $?".
cpp      each paragraph stands literally in a program of examples/ that a console block of the same page runs
cmake    each paragraph stands literally in examples/CMakeLists.txt
ini      stands literally, but for lines "...", in an INI file that the page's console blocks have written
sh       commands that no test can run: each is listed in commands_run_elsewhere.txt
text     a drawing or a form, without any command
python   and pycon are run by python_snippet.py
"""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

from documents import ROOT, matches, pages

PYTHON_MODULE = os.environ.get("VELK_PYTHON_MODULE")  # its folder, where it is built
ELSEWHERE = ROOT / "tests/docs/commands_run_elsewhere.txt"


def paragraphs(lines):
    found = [[]]
    for line in lines:
        if line.strip():
            found[-1].append(line)
        elif found[-1]:
            found.append([])
    return [paragraph for paragraph in found if paragraph]


def is_in(paragraph, text):
    """Whether the lines stand in the text, one after the other, however far they are indented there."""
    def unindented(lines):
        indent = min(len(line) - len(line.lstrip()) for line in lines)
        return [line[indent:].rstrip() for line in lines]

    lines, count = text.splitlines(), len(paragraph)
    candidates = (lines[start:start + count] for start in range(len(lines) - count + 1))
    return any(all(line.strip() for line in candidate) and unindented(candidate) == unindented(paragraph)
               for candidate in candidates)


def commands_of(lines):
    """Commands with the output expected below each. A command goes on after a backslash at the end of its line."""
    commands, goes_on = [], False
    for line in lines:
        if goes_on:
            commands[-1][0] += "\n" + line
        elif line.startswith("$ "):
            commands.append([line[2:], []])
        elif not commands:
            raise AssertionError("a console block begins with a command")
        else:
            commands[-1][1].append(line)
        goes_on = (goes_on or line.startswith("$ ")) and line.endswith("\\")
    return commands


class Session:
    """A shell in a folder that looks like the source folder and is thrown away."""

    def __init__(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="velk-docs-"))
        shutil.copytree(ROOT / "examples", self.folder / "examples")
        for name in ("tests", "velk"):
            (self.folder / name).symlink_to(ROOT / name)
        self.add_python()

    def add_python(self):
        """The command python3 is the one that runs this, since the module velk is made for it."""
        python = self.folder / "bin/python3"
        python.parent.mkdir()
        python.write_text(f'#!/bin/sh\nexec "{sys.executable}" -B "$@"\n', encoding="utf-8")
        python.chmod(0o755)

    def run(self, commands):
        """The output and the exit status of each."""
        script = "status=0\n"
        for number, command in enumerate(commands):
            script += f"{{\n(exit $status)\n{command}\n}} >~/{number}.out 2>&1\n"
            script += f"status=$?; echo $status >~/{number}.status\n"
        environment = dict(os.environ, LC_ALL="C.UTF-8", HOME=str(self.folder))
        folders = (str(self.folder / "bin"), os.environ["VELK_PROGRAMS"], environment["PATH"])
        environment.update(PATH=os.pathsep.join(folders), PYTHONPATH=PYTHON_MODULE or "")
        environment.pop("QT_LOGGING_RULES", None)
        subprocess.run(["bash", "-c", script], cwd=self.folder, env=environment, check=False, timeout=600)
        return [((self.folder / f"{number}.out").read_text(encoding="utf-8").splitlines(),
                 int((self.folder / f"{number}.status").read_text())) for number in range(len(commands))]

    def ini_files(self):
        return [path.read_text(encoding="utf-8") for path in self.folder.rglob("*.ini")]

    def close(self):
        shutil.rmtree(self.folder)


def commands_run_elsewhere():
    """Command to how it is run: a step of .ci/run, or "-" and the reason why nothing runs it."""
    rows = [line.split(" | ") for line in ELSEWHERE.read_text(encoding="utf-8").splitlines()
            if line and not line.startswith("#")]
    return {command.strip(): [word.strip() for word in how] for command, *how in rows}


def command_lines(block):
    lines = [line.split(" # ")[0].strip() for line in block.lines]
    return [line for line in lines if line and not line.startswith("#")]


class SamplesTest(unittest.TestCase):
    maxDiff = None

    def blocks(self, page, language):
        return [block for block in page.blocks if block.language == language]

    def test_every_block_has_a_language_that_is_checked(self):
        known = {"console", "cpp", "cmake", "ini", "sh", "text", "python", "pycon"}
        self.assertEqual([str(block) for page in pages() for block in page.blocks if block.language not in known], [])
        self.assertEqual([page.name for page in pages() if not page.is_closed or page.hidden_blocks()], [])

    def test_drawings_hold_no_command(self):
        hidden = [str(block) for page in pages() for block in self.blocks(page, "text")
                  if any(line.lstrip().startswith(("$ ", "velk ", "scripts/", "cmake ")) for line in block.lines)]
        self.assertEqual(hidden, [])

    def test_console_and_ini(self):
        for page in pages():
            samples = [(block, command) for block in self.blocks(page, "console")
                       for command in commands_of(block.lines)]
            if page.name == "docs/python.md" and not PYTHON_MODULE:
                continue
            if not samples and not self.blocks(page, "ini"):
                continue
            session = Session()
            self.addCleanup(session.close)
            results = session.run([command for _, (command, _) in samples])
            following = [command for _, (command, _) in samples[1:]] + [""]
            for (block, (command, expected)), (output, status), then in zip(samples, results, following):
                with self.subTest(sample=str(block), command=command):
                    if not matches(expected, output):
                        self.assertEqual("\n".join(output), "\n".join(expected))
                    self.assertTrue(status == 0 or then == "echo $?", f"fails with {status}")
            for block in self.blocks(page, "ini"):
                with self.subTest(sample=str(block)):
                    part = ["...", *block.lines, "..."]
                    self.assertTrue(any(matches(part, text.splitlines()) for text in session.ini_files()))

    def test_cpp_stands_in_a_program_that_the_page_runs(self):
        programs = {path.parent.name: path.read_text(encoding="utf-8")
                    for path in (ROOT / "examples").glob("*/main.cpp")}
        for page in pages():
            session = "\n".join(line for block in self.blocks(page, "console") for line in block.lines)
            run = {name: text for name, text in programs.items()
                   if re.search(rf"(?m)^\$ (\w+=\S+ )*{name}-example( |$)", session)}
            for block in self.blocks(page, "cpp"):
                with self.subTest(sample=str(block)):
                    self.assertTrue(any(all(is_in(paragraph, text) for paragraph in paragraphs(block.lines))
                                        for text in run.values()))

    def test_cmake_stands_in_a_project_that_is_built(self):
        project = (ROOT / "examples/CMakeLists.txt").read_text(encoding="utf-8")
        for page in pages():
            for block in self.blocks(page, "cmake"):
                with self.subTest(sample=str(block)):
                    self.assertTrue(all(is_in(paragraph, project) for paragraph in paragraphs(block.lines)))

    def test_other_commands_are_run_by_a_step_of_ci(self):
        elsewhere = commands_run_elsewhere()
        used = {line for page in pages() for block in self.blocks(page, "sh") for line in command_lines(block)}
        self.assertEqual(sorted(used), sorted(elsewhere))
        steps = {}
        for line in (ROOT / ".ci/run").read_text(encoding="utf-8").splitlines():
            if line.startswith('step "'):
                name = line.split('"')[1]
                steps[name] = []
            elif steps:
                steps[name].append(line)
        for command, (step, *reason) in elsewhere.items():
            with self.subTest(command=command):
                if step == "-":
                    self.assertTrue(reason)
                else:
                    text = "\n".join(steps[step])
                    self.assertTrue(command in text or "run_documented_commands.py" in text, f"not in step {step}")


if __name__ == "__main__":
    unittest.main()
