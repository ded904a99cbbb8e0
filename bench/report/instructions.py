#!/usr/bin/env python3
"""Compares the instructions of chosen operations with bench/instructions.json, or renews them.

Usage: instructions.py PROGRAM [--accept]

A difference of more than 5 % in either direction is a failure: less is good news, to be accepted.
"""

import json
import pathlib
import re
import sys
import tempfile

import measure
import tables

FIGURES = pathlib.Path(__file__).resolve().parent.parent / "instructions.json"
ALLOWED = 0.05


def compare(expected, counted):
    """Rows of a table, and whether all is within what is allowed."""
    rows, good = [], True
    for name, before in expected.items():
        now = counted.get(name)
        if now is None:
            rows.append([name, tables.instructions(before), "not counted", "FAILED"])
            good = False
            continue
        within = abs(now - before) <= ALLOWED * before + 1e-9
        good = good and within
        rows.append([name, f"{before:.1f}", f"{now:.1f}",
                     f"{100 * (now / before - 1):+.1f} %" + ("" if within else " FAILED")])
    return rows, good


def count_chosen(program, names):
    """{name: instructions} of exactly these; raises measure.Failed where one has no right answer."""
    pattern = "^(" + "|".join(re.escape(name) for name in names) + ")$"
    with tempfile.TemporaryDirectory() as folder:
        counts, errors = measure.count(program, folder, pattern)
    if errors:
        raise measure.Failed("; ".join(errors))
    return counts


def main(arguments):
    """Counts, and compares or renews."""
    accept = arguments[1:] == ["--accept"]
    if not arguments or (len(arguments) > 1 and not accept):
        print("instructions.py: give a program and at most --accept", file=sys.stderr)
        return 2
    expected = json.loads(FIGURES.read_text())
    try:
        counted = count_chosen(arguments[0], expected)
    except measure.Failed as failure:
        print(f"bench: {failure}", file=sys.stderr)
        return 1
    if accept:
        missing = sorted(set(expected) - set(counted))
        if missing:
            print(f"bench: not counted: {', '.join(missing)}", file=sys.stderr)
            return 1
        FIGURES.write_text(json.dumps({name: round(counted[name], 3) for name in expected},
                                      indent=2) + "\n")
        print(f"bench: {FIGURES.name} renewed, {len(expected)} operations")
        return 0
    rows, good = compare(expected, counted)
    print(tables.table(["operation", "accepted", "counted", "change"], rows))
    print("bench: instructions as accepted" if good else
          "bench: instructions CHANGED; ./dev bench --accept renews them")
    return 0 if good else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
