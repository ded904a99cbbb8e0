#!/usr/bin/env python3
"""Holds the tests to the lines and branches of the sources: says which ones no test has run.

Usage: check_coverage.py ROOT EXCEPTIONS COUNTS PROGRAM...

ROOT is the folder whose src/ and include/ are judged; EXCEPTIONS names what need not be run, and says
itself how; COUNTS is the folder with the profiles that the tests have left; a PROGRAM is a program or
shared object that was built with clang's source-based coverage, from sources below ROOT.

A line is covered if any instantiation has run it; lines of punctuation alone do not count. A branch
has two directions, each of which any instantiation may have taken. Where a condition is constant it
is none.

Exit status: 0 if every line is covered or an exception, no exception is covered, and enough branches
are; 1 if not; 2 where the arguments or the exceptions are wrong.
"""

import bisect
import collections
import concurrent.futures
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

# A counter that is the difference of two others falls below zero, as a huge number, where a process
# doubled on the way.
LARGEST_COUNT = 2**63


class Problem(Exception):
    """Wrong arguments or exceptions."""


class Coverage:
    """What ran of one source: counts by line, and by the position of a branch how often its condition
    was met and how often each direction was taken."""

    def __init__(self):
        self.lines = {}
        self.branches = {}

    def add(self, file):
        """Take what one program says. Of several instantiations the one that ran more counts."""
        segments = file["segments"]
        for line, count in counts_of_lines(segments):
            self.lines[line] = max(self.lines.get(line, 0), count)
        begins = [segment[:2] for segment in segments]
        for branch in file["branches"]:
            around = bisect.bisect_right(begins, branch[:2]) - 1
            met = segments[around][2] if around >= 0 else 0
            known = self.branches.get(tuple(branch[:4]), (0, 0, 0))
            self.branches[tuple(branch[:4])] = tuple(
                map(max, known, map(plausible, (met, *branch[4:6]))))

    def directions(self):
        """Yields line, column, direction and count. A condition that was met and went nowhere is
        constant, and no branch."""
        for (line, column, _, _), (met, *counts) in sorted(self.branches.items()):
            if met > 0 and not any(counts):
                continue
            for direction, count in zip(("true", "false"), counts):
                yield line, column, direction, count


def plausible(count):
    return count if count < LARGEST_COUNT else 0


def counts_of_lines(segments):
    """Yields each line that has code, and how often it ran. A segment is line, column, count, whether
    it has one, whether a region begins there, and whether that is a gap between two others; it lasts
    to the next one."""
    by_line = collections.defaultdict(list)
    for segment in segments:
        by_line[segment[0]].append(segment)
    if not segments:
        return
    before = None
    for line in range(segments[0][0], segments[-1][0] + 1):
        here = by_line.get(line, [])
        begun = [plausible(s[2]) for s in here if s[3] and s[4] and not s[5]]
        is_skipped = bool(here) and not here[0][3] and here[0][4]
        lasts = before is not None and before[3]
        if not is_skipped and (lasts or begun):
            yield line, max(begun + ([plausible(before[2])] if before is not None else []))
        if here:
            before = here[-1]


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


def exported(program, counts, folders):
    """What llvm-cov knows about the sources in `folders` of which the program was built."""
    said = run([f"llvm-cov-{VERSION}", "export", "-format=text", "-skip-functions",
                f"-instr-profile={counts}", program, *map(str, folders)])
    return json.loads(said)["data"][0]["files"]


def read_coverage(root, counts, programs):
    folders = [root / name for name in FOLDERS if (root / name).is_dir()]
    if not folders:
        raise Problem(f"neither {' nor '.join(FOLDERS)} in {root}")
    found = collections.defaultdict(Coverage)
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        for files in pool.map(lambda program: exported(program, counts, folders), programs):
            for file in files:
                found[pathlib.Path(file["filename"]).relative_to(root)].add(file)
    return found


def has_code(text):
    return re.search(r"\w", text.split("//")[0]) is not None


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
        if keys is None or set(entry) != keys or not all(map(str.strip, entry.values())):
            raise Problem(f"{path}: not an exception: {kind} {entry}")
        name = pathlib.Path(entry["file"])
        try:
            numbers = sources.lines_with(name, entry["text"])
        except Problem as problem:
            raise Problem(f"{path}: {problem}") from None
        if kind == "lines":
            self.lines += [(name, number) for number in numbers]
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
        known = {line: count for line, count in coverage.lines.items()
                 if has_code(sources.text(name, line))}
        excepted = {line for file, line in exceptions.lines if file == name}
        uncovered = {line for line, count in known.items() if count == 0}
        self.uncovered += [f"{name}:{line}" for line in sorted(uncovered - excepted)]
        # Lines without code may stand among the excepted ones.
        self.stale += [f"{name}:{line}" for line in sorted(excepted - uncovered)
                       if coverage.lines.get(line, 1) > 0]
        directions = list(coverage.directions())
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
            self.rows.append((str(name), len(uncovered), len(known), len(missed), len(directions)))

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
        return (not self.uncovered and not self.stale
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
    root, (path, folder), programs = pathlib.Path(arguments[0]).resolve(), arguments[1:3], arguments[3:]
    try:
        sources = Sources(root)
        exceptions = Exceptions(path, sources)
        with tempfile.TemporaryDirectory() as work:
            counts = os.path.join(work, "counts.profdata")
            joined_counts(folder, counts)
            found = read_coverage(root, counts, programs)
        report = Report()
        for name in sorted(set(found) | {entry[0] for entry in exceptions.lines + exceptions.branches}):
            report.judge(name, found[name], exceptions, sources)
    except Problem as problem:
        print(f"check_coverage.py: {problem}", file=sys.stderr)
        return 2
    report.print()
    print(f"dev: coverage {'passed' if report.is_good() else 'FAILED'}: {report.total()}")
    return 0 if report.is_good() else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
