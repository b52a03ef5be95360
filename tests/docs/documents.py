"""The documents as the tests see them: their blocks of code, inline code, headings and links."""
import os
import pathlib
import re

ROOT = pathlib.Path(os.environ.get("VELK_SOURCE_DIR", pathlib.Path(__file__).resolve().parents[2]))
FENCE = re.compile(r"^```(.*)$")


class Block:
    def __init__(self, page, line, language):
        self.page, self.line, self.language = page, line, language
        self.lines = []

    def __str__(self):
        return f"{self.page}:{self.line}"


class Page:
    def __init__(self, path):
        self.name = str(path.relative_to(ROOT))
        self.folder = path.parent
        self.blocks, self.prose = [], []
        self.is_closed = True
        for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
            self.add(number, line)

    def add(self, number, line):
        fence = FENCE.match(line)
        if fence and self.is_closed:
            self.blocks.append(Block(self.name, number, fence[1].strip()))
            self.is_closed = False
        elif fence:
            self.is_closed = True
        elif self.is_closed:
            self.prose.append(line)
        else:
            self.blocks[-1].lines.append(line)

    def hidden_blocks(self):
        """Code that is no block to add(): indented, or fenced in another way."""
        return [line for line in self.prose if line.startswith("    ") or line.lstrip().startswith(("```", "~~~"))]

    def inline_code(self):
        return re.findall(r"`([^`\n]+)`", "\n".join(self.prose))

    def links(self):
        prose = re.sub(r"`[^`\n]*`", "", "\n".join(self.prose))
        return re.findall(r"\]\(([^)\s]+)\)", prose)

    def anchors(self):
        """As the repository's host and the site make them from headings."""
        headings = [re.sub(r"[`*]", "", line.lstrip("#").strip()) for line in self.prose if line.startswith("#")]
        return {re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-") for heading in headings}


def pages():
    paths = [ROOT / "README.md", ROOT / "CONTRIBUTING.md", *sorted((ROOT / "docs").glob("*.md"))]
    return [Page(path) for path in paths]


def matches(expected, lines):
    """True if the lines are those expected, a line "..." standing for any number of lines."""
    if not expected:
        return not lines
    if expected[0].strip() == "...":
        return any(matches(expected[1:], lines[start:]) for start in range(len(lines) + 1))
    return bool(lines) and expected[0] == lines[0] and matches(expected[1:], lines[1:])
