#!/usr/bin/env python3
"""Writes each text that tests name to a file of its own, `test_` and a hash, as inputs of a target.

Usage: seed_texts.py FOLDER SOURCE...

The seeds of text_to_number come from tests/values/*text*_test.cpp.
"""

import ast
import hashlib
import pathlib
import re
import sys

LITERAL = re.compile(r'"((?:[^"\\\n]|\\.)*)"')


def texts(source):
    """The texts between double quotes; those that Python reads otherwise are left out."""
    for line in source.read_text().splitlines():
        if line.lstrip().startswith("#include"):
            continue
        for found in LITERAL.findall(line):
            try:
                yield ast.literal_eval(f'b"{found}"')
            except (SyntaxError, ValueError):
                continue


def main(arguments):
    if len(arguments) < 2:
        print("usage: seed_texts.py FOLDER SOURCE...", file=sys.stderr)
        return 2
    folder, sources = pathlib.Path(arguments[0]), [pathlib.Path(name) for name in arguments[1:]]
    for source in sources:
        if not source.is_file():
            print(f"seed_texts.py: no file '{source}'", file=sys.stderr)
            return 2
    folder.mkdir(parents=True, exist_ok=True)
    for source in sources:
        for text in texts(source):
            (folder / f"test_{hashlib.sha1(text).hexdigest()[:12]}").write_bytes(text)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
