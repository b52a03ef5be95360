"""Reads the S-expressions that KiCad writes, for the scripts and tests that look at schematics and netlists."""
import re

TOKEN = re.compile(r'"((?:[^"\\]|\\.)*)"|([()])|([^\s()"]+)')
ESCAPE = re.compile(r"\\(.)")


def parse(text):
    """The first list of the text: nested lists of strings."""
    stack = [[]]
    for quoted, parenthesis, word in TOKEN.findall(text):
        if parenthesis == "(":
            stack.append([])
        elif parenthesis == ")":
            done = stack.pop()
            stack[-1].append(done)
        else:
            stack[-1].append(word or ESCAPE.sub(lambda m: {"n": "\n"}.get(m[1], m[1]), quoted))
    return stack[0][0]


def read(path):
    return parse(path.read_text(encoding="utf-8"))


def children(node, name):
    return [child for child in node if isinstance(child, list) and child[0] == name]


def child(node, *path):
    """The first list of that name, and in it the next one; None where there is none."""
    for name in path:
        node = next(iter(children(node, name)), None)
        if node is None:
            return None
    return node


def value(node, *path, default=""):
    """The first word of child(node, *path)."""
    found = child(node, *path)
    return found[1] if found is not None and len(found) > 1 else default
