#!/usr/bin/env python3
"""Writes each text that the tests of conversions name to a file of its own, as inputs of a target.

Usage: seed_texts.py FOLDER SOURCE...
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
    folder = pathlib.Path(arguments[0])
    folder.mkdir(parents=True, exist_ok=True)
    for name in arguments[1:]:
        for text in texts(pathlib.Path(name)):
            (folder / hashlib.sha1(text).hexdigest()).write_bytes(text)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
