"""Every message in the sources is explained in docs/troubleshooting.md, what velk check finds in docs/check.md.

A message is a text of the sources that is given to what reports errors, or one that reads like a sentence. What stands
for a name, %1 in the sources, may be anything in the document.
"""
import ast
import re
import unittest

from documents import ROOT, Page

LITERAL = r'"(?:[^"\\\n]|\\.)*"'
TEXT = re.compile(rf'(?:\bu|QStringLiteral\()({LITERAL}(?:\s*{LITERAL})*)')
REPORTED = re.compile(r"\b(?:CommandError|EDAException|exceptionWith|VelkRoutingException|printMessage|print|warn|qCWarning|"
                      rf'qCCritical|fail)\s*[({{](?:{LITERAL}|[^;"])*;')
SENTENCE = re.compile(r"[A-Za-z']+ [A-Za-z']+ \(?[A-Za-z']+")
NOT_SHOWN_TO_USERS = ("cli/manual/",)  # what only the build runs
FINDINGS = ("velk/check/", "cli/commands/CheckCommand", "cli/formats/FindingFormats")


def texts(source):
    for match in TEXT.finditer(source):
        pieces = re.findall(LITERAL, match[1])
        text = "".join(piece[1:-1] for piece in pieces).replace(r"\"", '"').replace(r"\n", "")
        yield text.removeprefix("velk: ")


def pattern(message):
    parts = [part.strip(" ;:") for part in re.split(r"%L?\d", message)]
    return ".*".join(re.escape(part) for part in parts if part)


def messages_of(source):
    source = re.sub(r"(?m)^\s*//.*$", "", source)
    found = {text for text in texts(source) if SENTENCE.search(text)}
    for statement in REPORTED.finditer(source):
        found |= {text for text in texts(statement[0]) if " " in text}
    return {text for text in found if re.search("[a-z]{2}", pattern(text))}


def messages_of_python(source):
    """What is raised, but for types that are wrong. What is put in stands as %1, as in C++."""
    for node in ast.walk(ast.parse(source)):
        if isinstance(node, ast.Raise) and isinstance(node.exc, ast.Call) and node.exc.func.id != "TypeError":
            text = node.exc.args[0]
            parts = text.values if isinstance(text, ast.JoinedStr) else [text]
            yield "".join(part.value if isinstance(part, ast.Constant) else "%1" for part in parts)


class MessagesTest(unittest.TestCase):
    def messages(self):
        for folder in ("velk", "velkini", "cli"):
            for path in sorted((ROOT / folder).rglob("*.cpp")):
                name = str(path.relative_to(ROOT))
                if not name.startswith(NOT_SHOWN_TO_USERS):
                    for message in sorted(messages_of(path.read_text(encoding="utf-8"))):
                        yield name, message
        for path in sorted((ROOT / "python/velk").glob("*.py")):
            for message in messages_of_python(path.read_text(encoding="utf-8")):
                yield str(path.relative_to(ROOT)), message

    def test_every_message_is_explained(self):
        messages = Page(ROOT / "docs/troubleshooting.md").inline_code()
        findings = Page(ROOT / "docs/check.md").inline_code()
        for name, message in self.messages():
            with self.subTest(source=name, message=message):
                explained = findings if name.startswith(FINDINGS) else messages
                self.assertTrue(any(re.search(pattern(message), text) for text in explained))

    def test_messages_are_found_in_the_sources(self):
        found = {message for _, message in self.messages()}
        for message in ("cannot be read: %1", "No pin '%1' found for part '%2' of component '%3'",
                        "missing, taken as empty", "; try --tolerant, which can read this file",
                        "%1 %2: expected KEY=VALUE", "a connector without Identifier",
                        "Syntax error in KiCad file '%1' at line %2, column %3"):
            self.assertIn(message, found)

    def test_explained_messages_exist(self):
        """Bold code in the documents is a message: nothing is explained that is no longer printed."""
        patterns = [pattern(message) for _, message in self.messages()] + ["^standard output$"]
        for page in ("docs/troubleshooting.md", "docs/check.md"):
            for message in re.findall(r"\*\*`([^`]+)`\*\*", "\n".join(Page(ROOT / page).prose)):
                with self.subTest(page=page, message=message):
                    self.assertTrue(any(re.search(known, message) for known in patterns))


if __name__ == "__main__":
    unittest.main()
