#!/usr/bin/env -S python3 -B
"""What Doxygen reads in place of a file.

Of a page: links and pictures as the repository's host takes them, turned into Doxygen's own; a link to what is not on the
site becomes plain text. Of a header: not the special members without words of their own, which each class has.
"""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
PICTURE = re.compile(r"!\[([^\]]*)\]\((?:\S*/)?([\w.-]+\.(?:svg|png))\)")
LINKED_PICTURE = re.compile(r"\[!\[([^\]]*)\]\((?:\S*/)?([\w.-]+\.(?:svg|png))\)\]\([^)]*\)")
LINK = re.compile(r"(?<!!)\[([^\]]*)\]\(([^)\s]+)\)", re.DOTALL)
SPECIAL_MEMBER = re.compile(r"    (~?(\w+)\((const \2 &\w*|\2 &&\w*)?\)|\w+ &operator=\(.*\))( noexcept)?( override)?;")


def page_id(path):
    """As Doxygen names the page of a document."""
    if path == ROOT / "README.md":
        return "index"
    return "md_" + re.sub(r"\W", "_", str(path.relative_to(ROOT).with_suffix("")))


def anchor(heading):
    words = re.sub(r"\[([^\]]*)\]\([^)]*\)", r"\1", re.sub(r"[`*]", "", heading.strip()))
    return re.sub(r"[^\w\- ]", "", words.lower()).replace(" ", "-")


def heading(page, marks, text):
    name, text = f"{page}-{anchor(text)}", text.replace("`", "")
    if page == "index":  # a section of the front page would stand in the tree, before the other pages
        return f"\\anchor {name}\n<h1>{text}</h1>"
    return f"{marks} {text} {{#{name}}}"


def link(path, match):
    # Doxygen takes the text as it is, and two lines for two texts.
    text, target = match[1].replace("\n", " ").replace("`", ""), match[2]
    if re.match("https?:", target):
        return match[0]
    file, _, name = target.partition("#")
    linked = (path.parent / file).resolve() if file else path
    if linked.suffix == ".md":
        reference = page_id(linked) + ("-" + name if name else "")
    elif linked.suffix == ".h":
        reference = "Velk::" + linked.stem
    elif linked == ROOT / "python/velk/__init__.py":
        reference = "python_reference"
    else:
        return text
    return f"[{text}](@ref {reference})"


def prose(path, text):
    # Doxygen ends code in single backticks at a single quote.
    text = re.sub(r"`([^`\n]*'[^`\n]*)`", r"``\1``", text)
    text = re.sub(r"\*\*(`+[^`]+`+)\*\*", r"<strong>\1</strong>", text)
    text = LINKED_PICTURE.sub(r'<a href="\2"><img src="\2" alt="\1"/></a>', text)
    text = PICTURE.sub(r'<img src="\2" alt="\1"/>', text)
    text = re.sub(r"(?m)^(##+) (.*)$", lambda m: heading(page_id(path), m[1], m[2]), text)
    return LINK.sub(lambda m: link(path, m), text)


def page(path, text):
    parts = re.split(r"(?ms)^(```.*?^```$)", text)
    parts[::2] = [prose(path, part) for part in parts[::2]]
    parts[1::2] = [re.sub("^```(console|sh|ini|cmake|text|pycon)", "```{.unparsed}", part) for part in parts[1::2]]
    return "".join(parts)


def header(text):
    lines = ["/// \\file\n"] + text.splitlines(keepends=True)  # or its free functions are not shown
    return "".join(line for before, line in zip([""] + lines, lines)
                   if not SPECIAL_MEMBER.match(line) or before.lstrip().startswith("///"))


def main():
    path = (ROOT / sys.argv[1]).resolve()
    text = path.read_text(encoding="utf-8")
    sys.stdout.reconfigure(encoding="utf-8")
    sys.stdout.write(header(text) if path.suffix == ".h" else page(path, text))


if __name__ == "__main__":
    main()
