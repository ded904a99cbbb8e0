#!/usr/bin/env python3
"""Names the public classes of headers, one on each line.

A class is public that is defined at namespace scope, or in a public part of a public class; a
template counts once, without its specialisations. What stands in a namespace `detail` is nobody
else's. The headers are read as they are written: comments, literals and lines of the preprocessor
are skipped, bodies of functions as well.

Usage: public_classes.py FOLDER
"""

import os
import re
import sys

SKIPPED = re.compile(r"""//[^\n]*|/\*.*?\*/|^[ \t]*\#(?:[^\n]*\\\n)*[^\n]*
                         |"(?:\\.|[^"\\\n])*"|(?<!\w)'(?:\\.|[^'\\\n])*'""",
                     re.DOTALL | re.MULTILINE | re.VERBOSE)
TEMPLATE = re.compile(r"^template\s*<")
CLASS = re.compile(r"""^(class|struct|union)\s+
                       (?:\[\[.*?\]\]\s*|alignas\s*\([^()]*\)\s*|[A-Z][A-Z0-9_]+\s+)*
                       (?P<name>[\w:]+)\s*(?P<special><.*>)?\s*(?:final\s*)?(?::(?!:).*)?$""",
                   re.DOTALL | re.VERBOSE)
NAMESPACE = re.compile(r"^(?:inline\s+)?namespace(?:\s+(?P<name>[\w:]+))?$")
LABEL = re.compile(r"^(public|protected|private)\s*:(?!:)\s*")


class Scope:
    """What stands between two braces; `name` is None where nothing in it is of interest."""

    def __init__(self, name, access=None):
        self.name = name
        self.access = access  # of what comes next in a class; None in a namespace

    @property
    def is_open(self):
        return self.access in (None, "public")


def without_template(head):
    """A declaration behind its lists of template parameters."""
    while TEMPLATE.match(head):
        depth = 0
        for place, letter in enumerate(head):
            depth += {"<": 1, ">": -1}.get(letter, 0)
            if letter == ">" and depth == 0:
                head = head[place + 1:].lstrip()
                break
        else:
            return head
    return head


def joined(*names):
    return "::".join(filter(None, names))


class Reader:
    """Collects the public classes of one header after another."""

    def __init__(self):
        self.classes = set()
        self.hidden = set()  # declared in a part that is not public; the definition may follow
        self.scopes = []

    def read(self, path):
        with open(path, encoding="utf-8") as file:
            text = SKIPPED.sub(" ", file.read())
        self.scopes = [Scope("")]
        head = ""
        for piece in re.split(r"([{};])", text):
            if piece == "{":
                self.scopes.append(self.opened_by(head))
            elif piece == "}":
                self.scopes.pop()
                if not self.scopes:
                    raise ValueError(f"{path}: a brace too many")
            elif piece == ";":
                self.declared_by(head)
            else:
                head = self.without_labels(piece.strip())
                continue
            head = ""
        if len(self.scopes) != 1:
            raise ValueError(f"{path}: a brace without its end")

    def without_labels(self, head):
        """Takes the labels of access in front of a declaration to heart."""
        while found := LABEL.match(head):
            self.scopes[-1].access = found.group(1)
            head = head[found.end():]
        return without_template(head)

    def declared_by(self, head):
        scope, found = self.scopes[-1], CLASS.match(head)
        if found and scope.name is not None and not scope.is_open:
            self.hidden.add(joined(scope.name, found.group("name")))

    def opened_by(self, head):
        scope = self.scopes[-1]
        if scope.name is None:
            return Scope(None)
        if found := NAMESPACE.match(head):
            names = (found.group("name") or "detail").split("::")
            return Scope(None if "detail" in names else joined(scope.name, *names))
        found = CLASS.match(head)
        if not found or found.group("special") or not scope.is_open:
            return Scope(None)
        name = joined(scope.name, found.group("name"))
        self.classes.add(name)
        return Scope(name, "private" if found.group(1) == "class" else "public")


def public_classes(folder):
    """The names of all public classes of the headers below a folder, in order."""
    reader = Reader()
    found = False
    for place, _, names in sorted(os.walk(folder)):
        for name in sorted(names):
            if name.endswith(".hpp"):
                found = True
                reader.read(os.path.join(place, name))
    if not found:
        raise ValueError(f"no headers in {folder}")
    return sorted(name for name in reader.classes
                  if not any(name == each or name.startswith(each + "::")
                             for each in reader.hidden))


def main():
    if len(sys.argv) != 2:
        print("usage: public_classes.py FOLDER", file=sys.stderr)
        return 2
    try:
        names = public_classes(sys.argv[1])
    except (OSError, ValueError) as problem:
        print(f"public_classes.py: {problem}", file=sys.stderr)
        return 2
    for name in names:
        print(name)
    return 0


if __name__ == "__main__":
    sys.exit(main())
