#!/usr/bin/env python3
"""Holds the tests to the lines and branches of the sources: says which ones no test has run.

Usage: check_coverage.py ROOT EXCEPTIONS COUNTS PROGRAM...

ROOT is the folder whose src/ and include/ are judged; EXCEPTIONS names what need not be run, and
says itself how; COUNTS is the folder with the profiles that the tests have left; a PROGRAM is a
program or shared object that was built with clang's source-based coverage, from sources below ROOT.

A line is covered if any instantiation has run it; lines of punctuation alone do not count. A branch
has two directions, each of which any instantiation may have taken. Where a condition is constant it
is none.

Exit status: 0 if every line is covered and every branch taken both ways, or else an exception, no
exception is covered, and enough branches are taken, exceptions or not; 1 if not; 2 where the
arguments or the exceptions are wrong.
"""

import collections
import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import tomllib

FOLDERS = ("src", "include")
LEAST_BRANCHES = 98  # per cent
VERSION = "14"  # of the tools, which must be that of the compiler

# Kinds of regions, as llvm-cov numbers them: statements, and what the preprocessor left out. Others
# are the use of a macro, which is judged where it is written, and what lies between statements.
CODE = 0
SKIPPED = 2

# A counter that is the difference of two others falls below zero, as a huge number, where a process
# doubled on the way.
LARGEST_COUNT = 2**63

# Functions alone are wanted: a file that none of the programs is made of, for all would take long.
NO_SOURCE = __file__


class Problem(Exception):
    """Wrong arguments or exceptions."""


class Coverage:
    """What ran of one source, by places: regions of code, and branches with their two directions.
    The regions of one instantiation say little alone, for what it leaves out lies in the region
    around. Of all together the innermost one around a place tells whether that ran."""

    def __init__(self):
        self.regions = {}
        self.branches = {}
        self.skipped = set()

    def add_region(self, place, count, kind):
        if kind == SKIPPED:
            self.skipped.update(range(place[0], place[2] + 1))
        elif kind == CODE:
            self.regions[place] = max(self.regions.get(place, 0), plausible(count))

    def add_branch(self, place, counts):
        known = self.branches.get(place, (0, 0))
        self.branches[place] = tuple(map(max, known, map(plausible, counts)))

    def count_at(self, line, column):
        """How often that place ran; None where there is no code."""
        around = [place for place in self.regions if place[:2] <= (line, column) < place[2:]]
        # Of two that begin together the shorter one.
        return self.regions[max(around, key=lambda p: (p[:2], (-p[2], -p[3])))] if around else None

    def lines(self, texts):
        """How often each line with code ran, by its number: any part of it."""
        begins = collections.defaultdict(list)
        for place, count in self.regions.items():
            if place[:2] != place[2:]:
                begins[place[0]].append(count)
        counts = {}
        for number, text in enumerate(texts, 1):
            if number in self.skipped or not has_code(text):
                continue
            first = self.count_at(number, len(text) - len(text.lstrip()) + 1)
            if first is not None or number in begins:
                counts[number] = max([first or 0, *begins[number]])
        return counts

    def directions(self, texts):
        """Yields line, column, direction and count. A condition that was met and went nowhere is
        constant, and so is one of a statement that says it is: neither is a branch."""
        for (line, column, *_), counts in sorted(self.branches.items()):
            met = self.count_at(line, column)
            if (met and not any(counts)) or is_constant(texts, line, column):
                continue
            for direction, count in zip(("true", "false"), counts):
                yield line, column, direction, count


def plausible(count):
    return count if count < LARGEST_COUNT else 0


def without_comment(text):
    return text.split("//")[0]


def has_code(text):
    return re.search(r"\w", without_comment(text)) is not None


def is_constant(texts, line, column):
    """Whether the statement around a place is evaluated by the compiler."""
    before = texts[line - 1][:column - 1]
    while not re.search("[;{}]", before) and line > 1:
        line -= 1
        before = without_comment(texts[line - 1]) + " " + before
    statement = re.split("[;{}]", before)[-1]
    return re.search(r"\b(constexpr|static_assert|requires)\b", statement) is not None


def run(command):
    try:
        done = subprocess.run(command, capture_output=True, text=True, check=False)
    except OSError as error:
        raise Problem(f"{command[0]}: {error.strerror}") from None
    if done.returncode != 0:
        raise Problem(f"{command[0]}: {done.stderr.strip().partition(chr(10))[0]}")
    return done.stdout


def joined_counts(folder, target):
    profiles = sorted(str(path) for path in pathlib.Path(folder).glob("*.profraw"))
    if not profiles:
        raise Problem(f"no profiles in {folder}")
    run([f"llvm-profdata-{VERSION}", "merge", "-o", target, *profiles])


def exported(program, counts):
    """The functions of a program, each instantiation for itself, as llvm-cov knows them."""
    said = run([f"llvm-cov-{VERSION}", "export", "-format=text", "-skip-expansions",
                f"-instr-profile={counts}", program, NO_SOURCE])
    return json.loads(said)["data"][0]["functions"]


def add_function(found, root, function):
    """Take what a function says of the sources that are judged."""
    folders = tuple(f"{root / name}{os.sep}" for name in FOLDERS)
    judged = [found[name[len(f"{root}{os.sep}"):]] if name.startswith(folders) else None
              for name in function["filenames"]]
    for *place, count, file, _, kind in function["regions"]:
        if judged[file] is not None:
            judged[file].add_region(tuple(place), count, kind)
    for *place, true_count, false_count, file, _, _ in function["branches"]:
        if judged[file] is not None:
            judged[file].add_branch(tuple(place), (true_count, false_count))


def read_coverage(root, counts, programs):
    if not any((root / name).is_dir() for name in FOLDERS):
        raise Problem(f"neither {' nor '.join(FOLDERS)} in {root}")
    found = collections.defaultdict(Coverage)
    for program in programs:
        for function in exported(program, counts):
            add_function(found, root, function)
    return found


class Sources:
    """The texts of the sources, by line from 1 on."""

    def __init__(self, root):
        self.root = root
        self.texts = {}

    def lines(self, name):
        if name not in self.texts:
            try:
                self.texts[name] = (self.root / name).read_text(encoding="utf-8").splitlines()
            except OSError as error:
                raise Problem(f"cannot read {name}: {error.strerror}") from None
        return self.texts[name]

    def text(self, name, line):
        lines = self.lines(name)
        return lines[line - 1] if line <= len(lines) else ""

    def lines_with(self, name, wanted):
        """The numbers of the lines that read `wanted`, which is one or several, wherever it begins
        in the first one; it must stand in one place."""
        wanted = [line.strip() for line in wanted.strip().splitlines()]
        lines = [line.strip() for line in self.lines(name)]
        places = [first for first in range(len(lines) - len(wanted) + 1)
                  if all(text in line
                         for text, line in zip(wanted, lines[first:first + len(wanted)]))]
        if not wanted or len(places) != 1:
            raise Problem(f"{len(places)} places in {name} read '{' / '.join(wanted)}'")
        return range(places[0] + 1, places[0] + 1 + len(wanted))

    def lines_through(self, name, numbers, last):
        """The lines from `numbers` on through the next one that is `last` with all its spaces."""
        lines = self.lines(name)
        for number in range(numbers[-1], len(lines) + 1):
            if lines[number - 1] == last:
                return range(numbers[0], number + 1)
        raise Problem(f"no line '{last}' behind {name}:{numbers[0]}")


class Exceptions:
    """Lines, and directions of branches, that need not be covered."""

    def __init__(self, path, sources):
        self.lines = []
        self.branches = []
        try:
            content = tomllib.loads(pathlib.Path(path).read_text(encoding="utf-8"))
        except OSError as error:
            raise Problem(f"cannot read {path}: {error.strerror}") from None
        except tomllib.TOMLDecodeError as error:
            raise Problem(f"{path}: {error}") from None
        for kind, entries in content.items():
            for entry in entries:
                self.take(path, kind, entry, sources)

    def take(self, path, kind, entry, sources):
        keys = {"lines": {"file", "text", "reason"},
                "branch": {"file", "text", "never", "reason"}}.get(kind)
        optional = {"last"} if kind == "lines" else set()
        if keys is None or set(entry) - optional != keys or not all(map(str.strip, entry.values())):
            raise Problem(f"{path}: not an exception: {kind} {entry}")
        name = entry["file"]
        try:
            numbers = sources.lines_with(name, entry["text"])
            if "last" in entry:
                numbers = sources.lines_through(name, numbers, entry["last"])
        except Problem as problem:
            raise Problem(f"{path}: {problem}") from None
        if kind == "lines":
            self.lines.append((name, numbers))
            return
        if len(numbers) != 1 or entry["never"] not in ("true", "false"):
            raise Problem(f"{path}: not a direction of a branch: {entry}")
        line = sources.text(name, numbers[0])
        # The text of the exception is the condition, or begins with it.
        column = line.index(entry["text"].strip()) + 1
        self.branches.append((name, numbers[0], column, entry["never"]))


def percentage(part, whole):
    return 100.0 * part / whole if whole else 100.0


class Report:
    """What is wrong, and the counts, of all sources together."""

    def __init__(self):
        self.rows = []
        self.uncovered = []
        self.missed = []
        self.stale = []
        self.lines = self.covered_lines = self.directions = self.taken = 0

    def judge(self, name, coverage, exceptions, sources):
        texts = sources.lines(name)
        known = coverage.lines(texts)
        excepted = {line for file, numbers in exceptions.lines if file == name for line in numbers}
        uncovered = {line for line, count in known.items() if count == 0}
        self.uncovered += [f"{name}:{line}" for line in sorted(uncovered - excepted)]
        # Lines without code may stand among the excepted ones, but not alone.
        for numbers in (numbers for file, numbers in exceptions.lines if file == name):
            reached = [line for line in numbers if line in known and line not in uncovered]
            if not reached and uncovered.isdisjoint(numbers):
                reached = numbers[:1]
            self.stale += [f"{name}:{line}" for line in reached]
        directions = list(coverage.directions(texts))
        missed = {(line, column, direction): None
                  for line, column, direction, count in directions if count == 0}
        allowed = {branch[1:] for branch in exceptions.branches if branch[0] == name}
        self.missed += [f"{name}:{line}:{column}: never {direction}"
                        for line, column, direction in missed
                        if (line, column, direction) not in allowed]
        self.stale += [f"{name}:{line}:{column}: never {direction}"
                       for line, column, direction in sorted(allowed - set(missed))]
        self.lines += len(known)
        self.covered_lines += len(known) - len(uncovered)
        self.directions += len(directions)
        self.taken += len(directions) - len(missed)
        if uncovered or missed:
            self.rows.append((name, len(uncovered), len(known), len(missed), len(directions)))

    def print(self):
        if self.rows:
            width = max(len(row[0]) for row in self.rows)
            print(f"{'not covered':{width}}     lines  branches")
            for name, *counts in self.rows:
                print("{:{}} {:4} of {:<4} {:4} of {:<4}".format(name, width, *counts))
        for title, places in (("no test runs", self.uncovered),
                              ("no test takes", self.missed),
                              ("no exception any more", self.stale)):
            for place in places:
                print(f"{title}: {place}")

    def is_good(self):
        return (not self.uncovered and not self.missed and not self.stale
                and 100 * self.taken >= LEAST_BRANCHES * self.directions)

    def total(self):
        return (f"{self.covered_lines} lines of {self.lines}, "
                f"{self.taken} of {self.directions} branches "
                f"({percentage(self.taken, self.directions):.1f} %)")


def main(arguments):
    if len(arguments) < 4:
        print("check_coverage.py: usage: check_coverage.py ROOT EXCEPTIONS COUNTS PROGRAM...",
              file=sys.stderr)
        return 2
    root = pathlib.Path(arguments[0]).resolve()
    path, folder, *programs = arguments[1:]
    try:
        sources = Sources(root)
        exceptions = Exceptions(path, sources)
        with tempfile.TemporaryDirectory() as work:
            counts = os.path.join(work, "counts.profdata")
            joined_counts(folder, counts)
            found = read_coverage(root, counts, programs)
        report = Report()
        excepted = {entry[0] for entry in exceptions.lines + exceptions.branches}
        for name in sorted(excepted | set(found)):
            report.judge(name, found[name], exceptions, sources)
    except Problem as problem:
        print(f"check_coverage.py: {problem}", file=sys.stderr)
        return 2
    report.print()
    print(f"dev: coverage {'passed' if report.is_good() else 'FAILED'}: {report.total()}")
    return 0 if report.is_good() else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
