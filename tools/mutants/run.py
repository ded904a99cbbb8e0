#!/usr/bin/env python3
"""Changes the library in hundreds of small ways, one at a time, and tells which changes no test
notices.

Usage: run.py [--sample N]

A copy of the tree is built once with all mutants in it (places.py says which), and an environment
variable chooses one. Only the test cases that reach the mutated place judge a mutant, two mutants
at a time, and the first case that fails has killed it; so has one that crashes or finds no end.

Of each source at most MOST_OF_A_FILE places are mutated, spread over it evenly. That is some 570 of
1,480, which two cores build within seven minutes and judge within four. With --sample only N of these
are judged, spread evenly as well.

It fails where less than 95 in 100 of what was judged are killed, and for what would make that figure
worth nothing: too few mutants, none judged, or an entry of equivalent.txt that fits no place.

build/mutants/report.txt lists what became of each. Those that change nothing stand with the reason
in equivalent.txt; they are not judged, and count apart.
"""

import pathlib
import sys
import time

import equivalents
import judge
import places
import toy
import tree

MOST_OF_A_FILE = 10
LEAST_MUTANTS = 300
LEAST_KILLED = 95 # per cent
JOBS = 2
OPTIONS = ["-DCMAKE_UNITY_BUILD=ON", "-DCMAKE_UNITY_BUILD_BATCH_SIZE=8",
           "-DTAVI_IOAPI_BUILD_EXAMPLES=OFF"]


def describe(place):
    return f"{place.file}:{place.line}: {place.mutation}"


class Run:
    """One call of the command."""

    def __init__(self, root):
        self.root = root
        self.folder = root / "build/mutants"
        self.start = time.monotonic()

    def say(self, text):
        seconds = int(time.monotonic() - self.start)
        print(f"mutants: {seconds // 60:3d}:{seconds % 60:02d} {text}", file=sys.stderr, flush=True)

    def run(self, sample):
        self.say("the toy")
        toy.check(self.folder / "toy", JOBS)
        found = places.find(self.root, tree.sources(self.root))
        self.mutants = tree.choose(found, MOST_OF_A_FILE)
        reasons = equivalents.read(pathlib.Path(__file__).parent / "equivalent.txt")
        if len(self.mutants) < LEAST_MUTANTS:
            raise places.Failure(f"dev: mutants FAILED: {len(self.mutants)} mutants, at least "
                                 f"{LEAST_MUTANTS} are meant")
        for entry in equivalents.stale(reasons, found):
            raise places.Failure("dev: mutants FAILED: equivalent.txt has an entry that fits no "
                                 f"place: {entry[0]}: {entry[1]}")
        self.say(f"building {len(self.mutants)} mutants out of "
                 f"{sum(map(len, found.values()))} places")
        tree.write_tree(self.root, self.folder / "tree", self.mutants)
        tree.build(self.folder / "tree", self.folder / "build", OPTIONS)
        self.say("tracing the test cases")
        judge.limit()
        cases = judge.trace(tree.programs(self.folder / "build"), self.folder / "trace", JOBS)
        count = len(self.mutants)
        numbers = list(range(1, count + 1))
        if sample is not None and sample < count:
            numbers = [numbers[(2 * index + 1) * count // (2 * sample)] for index in range(sample)]
        judged = [number for number in numbers
                  if equivalents.key(self.mutants[number - 1]) not in reasons]
        if not judged:
            raise places.Failure("dev: mutants FAILED: none of them could be seen by a test")
        self.say(f"judging {len(judged)} mutants by {len(cases)} test cases")
        verdicts = judge.judge_all(judged, cases, JOBS, lambda done: self.tell(done, len(judged)))
        judge.check_killers(verdicts)
        return self.report(verdicts, len(numbers) - len(judged))

    def tell(self, verdicts, count):
        last = verdicts[-1]
        if not last.killer:
            self.say(f"{len(verdicts)} of {count}: SURVIVED {self.survivor(last)}")
        elif len(verdicts) % 10 == 0:
            self.say(f"{len(verdicts)} of {count}")

    def survivor(self, verdict):
        reach = f"{verdict.reaching} cases reach it" if verdict.reaching else "not reached"
        return f"{describe(self.mutants[verdict.number - 1])} ({reach})"

    def report(self, verdicts, equivalent):
        survivors = [self.survivor(verdict) for verdict in verdicts if not verdict.killer]
        lines = [f"survived {line}" for line in survivors]
        lines += [f"killed {describe(self.mutants[verdict.number - 1])} (by {verdict.how}, "
                  f"{verdict.seconds:.1f} s)" for verdict in verdicts if verdict.killer]
        (self.folder / "report.txt").write_text("\n".join(lines) + "\n")
        for line in survivors:
            print(f"survived {line}")
        killed, count = len(verdicts) - len(survivors), len(verdicts)
        share = 100 * killed / count
        passed = share >= LEAST_KILLED
        print(f"dev: mutants {'passed' if passed else 'FAILED'}: {killed} of {count} killed "
              f"({share:.1f} %), {equivalent} equivalent")
        return 0 if passed else 1


def main(arguments):
    if arguments and (arguments[0] != "--sample" or len(arguments) != 2
                      or not arguments[1].isdecimal() or int(arguments[1]) == 0):
        print(__doc__.split("\n\n")[1], file=sys.stderr)
        return 2
    sample = int(arguments[1]) if arguments else None
    try:
        return Run(pathlib.Path(__file__).resolve().parent.parent.parent).run(sample)
    except places.Failure as failure:
        print(failure, file=sys.stderr)
        return 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
