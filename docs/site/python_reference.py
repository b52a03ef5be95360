#!/usr/bin/env -S python3 -B
"""Prints the reference of the Python module as a page for Doxygen, from the docstrings in python/velk.

Fails where something public has none, or where that of a value leaves out a field.
"""
import ast
import html
import pathlib
import re
import textwrap

PACKAGE = pathlib.Path(__file__).resolve().parents[2] / "python/velk"
ITEM = re.compile(r"(\w+(?:, \w+)*): (.*)", re.DOTALL)
NOT_GIVEN = {"Union[int, _Default] = _DEFAULT": "int = ...", "Union[int, None, _Default] = _DEFAULT": "Optional[int] = ..."}


class Named:
    """Something public: a class, a function, a property, or a type with its docstring."""

    def __init__(self, name, node, text=None):
        self.name, self.node = name, node
        self.text = text or ast.get_docstring(node)
        if not self.text:
            raise SystemExit(f"velk.{name} has no docstring")


def syntax(module):
    return ast.parse((PACKAGE / f"{module}.py").read_text(encoding="utf-8"))


def public_names():
    for node in syntax("__init__").body:
        if isinstance(node, ast.Assign) and node.targets[0].id == "__all__":
            return [name for name in ast.literal_eval(node.value) if not name.startswith("_")]


def definitions():
    """What the modules of the package define, by name: the node, and the docstring of what is no class or function."""
    found = {}
    for module in ("_system", "_values", "_errors"):
        body = syntax(module).body
        for node, following in zip(body, [*body[1:], None]):
            if isinstance(node, (ast.ClassDef, ast.FunctionDef)):
                found[node.name] = (node, None)
            elif isinstance(node, ast.Assign) and isinstance(following, ast.Expr):
                found[node.targets[0].id] = (node, ast.literal_eval(following.value))
    return found


def constructor(node):
    found = [member for member in node.body if isinstance(member, ast.FunctionDef) and member.name == "__init__"]
    return found[0] if found else None


def is_property(node):
    return any(ast.unparse(decorator).endswith("property") for decorator in node.decorator_list)


def members(described):
    """The public methods and properties of a class."""
    return [Named(f"{described.name}.{node.name}", node) for node in described.node.body
            if isinstance(node, ast.FunctionDef) and not node.name.startswith("_")]


def arguments(function):
    args = function.args
    names = [ast.unparse(argument) for argument in [*args.posonlyargs, *args.args]]
    for place, default in enumerate(args.defaults, len(names) - len(args.defaults)):
        names[place] += f" = {ast.unparse(default)}"
    names = [name for name in names if name not in ("self", "cls")]
    if args.kwonlyargs:
        names.append("*")
    for argument, default in zip(args.kwonlyargs, args.kw_defaults):
        text = ast.unparse(argument) + (f" = {ast.unparse(default)}" if default else "")
        for long, short in NOT_GIVEN.items():
            text = text.replace(long, short)
        names.append(text)
    return names + ([f"**{ast.unparse(args.kwarg)}"] if args.kwarg else [])


def call(name, function):
    result = "" if function.name == "__init__" else f" -> {ast.unparse(function.returns)}"
    names = arguments(function)
    line = f"{name}({', '.join(names)}){result}"
    return line if len(line) <= 110 else f"{name}(\n    " + ",\n    ".join(names) + f"\n){result}"


def signature(named):
    node = named.node
    if isinstance(node, ast.Assign):
        return ast.unparse(node)
    if isinstance(node, ast.ClassDef) and constructor(node):
        return call(named.name, constructor(node))
    if isinstance(node, ast.ClassDef):
        return f"class {node.name}({', '.join(ast.unparse(base) for base in node.bases)})".replace("()", "")
    return f"{named.name}: {ast.unparse(node.returns)}" if is_property(node) else call(named.name, node)


def inline(text):
    return re.sub(r"``(.+?)``", r"<code>\1</code>", html.escape(text, quote=False))


def items(lines, types):
    """Of lines "name: text", which go on where they are indented."""
    texts = re.sub(r"\n +", " ", "\n".join(lines)).splitlines()
    for name, text in (ITEM.match(text).groups() for text in texts):
        title = f"{name}: {types[name]}" if name in types else name
        yield f"<dt><code>{html.escape(title)}</code></dt><dd>{inline(text)}</dd>"


def paragraph(text, types):
    lines = text.splitlines()
    if text.startswith("    "):
        return f'<pre class="fragment">{html.escape(textwrap.dedent(text))}</pre>'
    if all(ITEM.match(line) for line in lines if not line.startswith(" ")):
        return f"<dl>{''.join(items(lines, types))}</dl>"
    return f"<p>{inline(text)}</p>"


def description(text, types):
    return "\n".join(paragraph(part, types) for part in text.split("\n\n"))


def field_types(described):
    """Of the fields of a value, which its docstring has to tell of."""
    types = {node.target.id: ast.unparse(node.annotation) for node in described.node.body
             if isinstance(node, ast.AnnAssign) and not node.target.id.startswith("_")}
    for field in types:
        if not re.search(rf"(?m)^{field}: ", described.text):
            raise SystemExit(f"velk.{described.name} has a field without words: {field}")
    return types


def section(named, marks):
    is_class = isinstance(named.node, ast.ClassDef)
    code = f'<pre class="fragment">{html.escape(signature(named))}</pre>'
    text = description(named.text, field_types(named) if is_class else {})
    if is_class and constructor(named.node):
        text += description(Named(f"{named.name}.__init__", constructor(named.node)).text, {})
    print(f"{marks} {named.name}\n\n\\htmlonly\n{code}\n{text}\n\\endhtmlonly\n")
    for member in members(named) if is_class else []:
        section(member, "###")


def main():
    print("# Reference of the Python module {#python_reference}\n")
    print(f"\\htmlonly\n{description(ast.get_docstring(syntax('__init__')), {})}")
    print("<p><code>velk.__version__</code> is the version, as text.</p>\n\\endhtmlonly\n")
    found = definitions()
    for name in public_names():
        section(Named(name, *found[name]), "##")


if __name__ == "__main__":
    main()
