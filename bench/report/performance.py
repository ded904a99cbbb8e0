#!/usr/bin/env python3
"""Measures every operation and makes docs/performance.md of it, or prints the tables.

Usage: performance.py PROGRAM [--quick] [--filter REGEX]

With --quick few repetitions are done and only our own instructions counted. With either option
nothing is written.
"""

import argparse
import json
import pathlib
import re
import sys
import tempfile

import machine
import measure
import tables

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
DESCRIBED = json.loads((ROOT / "bench" / "operations.json").read_text())

# All but the containers of a million, which take long to build; counted, what is ours.
QUICKLY_TIMED = "^([^g]|growth_.*/10{1,5}(/|$))"
QUICKLY_COUNTED = "^(?!growth.*/100000+$).*/(iokern|limit|floor)"

INTRODUCTION = """# Performance

Written by `./dev bench`. Each operation of the library, called through its shared object as a user
calls it, stands beside general-purpose libraries and beside bounds that are part of the same
program and of the same run: repetitions of all of them are done in random order, and the medians
compared. Ratios carry over to other machines, nanoseconds do not.

- `limit` is the least code by hand that could do the job, in line; `limit[gateway]` the same with
  its block from the library's memory gateway, which the library cannot do without; `limit[avx2]`
  the same for processors with AVX2, whose vectors the library
  uses where they are; its instructions are counted without them.
- `floor` is the least that a call into a shared object can do with a value of 56 bytes: copy it
  behind one branch, or reset the error and switch on what is stored.
- A note in brackets tells what is peculiar to a peer. One that begins with `less:` tells what it
  leaves out; such a peer is never the best one.
- *± %* is the distance of the quartiles, in percent of the median. Below 5 ns the placement of code
  alone moves a time by a fifth; look at the instructions then. They are counted by callgrind, with
  a C library that is held to what every x86-64 has.
"""


def parse_arguments(arguments):
    """Exits with one line and status 2 for a bad argument."""
    parser = argparse.ArgumentParser(add_help=False)
    parser.error = lambda message: sys.exit(fail(message))
    parser.add_argument("program")
    parser.add_argument("--quick", action="store_true")
    parser.add_argument("--filter", default="")
    parsed = parser.parse_args(arguments)
    try:
        re.compile(parsed.filter)
    except re.error as error:
        sys.exit(fail(f"not a regular expression: '{parsed.filter}': {error}"))
    return parsed


def fail(message):
    """One line; the status of wrong use."""
    print(f"bench: {message}", file=sys.stderr)
    return 2


def grouped(counts):
    """{operation: {peer: instructions}}."""
    result = {}
    for name, value in counts.items():
        operation, peer = measure.split_name(name)
        result.setdefault(operation, {})[peer] = value
    return result


def sections(times, counts):
    """The summary, and a section for each operation, in the order in which they are described."""
    summary, details = [], []
    for one in DESCRIBED["operations"]:
        name = one["operation"]
        if name not in times:
            continue
        operation = tables.Operation(times[name], counts.get(name.split("/")[0], {}))
        summary.append(operation.summary(one["title"]))
        details.append(f"### {one['title'][0].upper()}{one['title'][1:]}\n\n`{name}`. "
                       f"{one['rest']}\n\n{operation.table()}\n")
    return tables.table(tables.SUMMARY_HEAD, summary), details


def document(runs, counts):
    """All of it as text."""
    times, _ = measure.times_of(runs)
    summary, details = sections(times, grouped(counts))
    facts = tables.table(["Machine", ""], [list(pair) for pair in machine.describe()],
                         rest="---")
    versions = tables.table(["Package", "Version"], [list(pair) for pair in machine.versions()],
                            rest="---")
    parts = [INTRODUCTION, facts + "\n", versions + "\n"]
    if details:
        parts += ["## At a glance\n", summary + "\n", "## Operation by operation\n", *details]
    growth = measure.growth_of(runs, counts)
    if growth:
        parts += ["## Growth with the size\n", DESCRIBED["growth_text"] + "\n",
                  tables.growth_tables(DESCRIBED["growth"], growth) + "\n"]
    return "\n".join(parts)


def undescribed(runs):
    """Operations that no sentence is there for."""
    known = {one["operation"] for part in ("operations", "growth") for one in DESCRIBED[part]}
    names = [measure.split_name(run["run_name"])[0] for run in runs]
    found = {name.split("/")[0] if measure.is_growth(name) else name for name in names}
    return sorted(found - known)


def main(arguments):
    """Measures, and hands out what was found."""
    options = parse_arguments(arguments)
    writes = not options.quick and not options.filter
    repetitions, seconds = (3, 0.005) if options.quick else (11, 0.05)
    counted = options.filter or (QUICKLY_COUNTED if options.quick else ".")
    timed = options.filter or (QUICKLY_TIMED if options.quick else "")
    with tempfile.TemporaryDirectory() as folder:
        try:
            print("bench: timing", file=sys.stderr, flush=True)
            runs = measure.time_all(options.program, folder, repetitions, seconds, timed)
            print("bench: counting instructions", file=sys.stderr, flush=True)
            counts, errors = measure.count(options.program, folder, counted)
        except measure.Failed as failure:
            print(f"bench: {failure}", file=sys.stderr)
            return 1
    errors += measure.times_of(runs)[1]
    errors += [f"{name}: not described in bench/operations.json" for name in undescribed(runs)]
    for error in sorted(set(errors)):
        print(f"bench: {error}", file=sys.stderr)
    text = document(runs, counts)
    if not writes:
        print(text)
    elif not errors:
        target = ROOT / "docs" / "performance.md"
        target.parent.mkdir(exist_ok=True)
        target.write_text(text)
        print(f"bench: {target.relative_to(ROOT)} written", file=sys.stderr)
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
