"""Holds the tool to a toy library of which it is known what becomes of every mutant."""

import pathlib

import judge
import places
import tree

TOY = pathlib.Path(__file__).resolve().parent / "toy"

# Of each mutation in the toy: whether it is killed, and whether a case reaches it.
KILLED, SURVIVES, NOT_REACHED = "killed", "survives", "not reached"
EXPECTED = {
    "a < b -> a <= b": SURVIVES, # it makes no difference which of two equal numbers comes out
    "number < 10 -> number <= 10": KILLED,
    "10 -> 10 + 1": KILLED,
    "text == nullptr -> !(text == nullptr)": KILLED, # by a crash
    "return 0; -> (dropped)": KILLED,
    "0 -> 0 + 1": KILLED,
    "++calls; -> (dropped)": SURVIVES, # no test asks
    "*text - '0' -> *text + '0'": KILLED,
    "'0' -> '0' + 1": KILLED,
    "number + 1 -> number - 1": NOT_REACHED,
    "1 -> 1 + 1": NOT_REACHED,
}


def check(folder, jobs):
    """Raises Failure unless everything becomes of the mutants of the toy that should."""
    mutants = tree.choose(places.find(TOY, tree.sources(TOY)), 100)
    tree.write_tree(TOY, folder / "tree", mutants)
    tree.build(folder / "tree", folder / "build", [])
    cases = judge.trace(tree.programs(folder / "build"), folder / "trace", jobs)
    verdicts = judge.judge_all(range(1, len(mutants) + 1), cases, jobs, lambda _: None)
    outcome = {mutants[verdict.number - 1].mutation:
               KILLED if verdict.killer else SURVIVES if verdict.reaching else NOT_REACHED
               for verdict in verdicts}
    if outcome != EXPECTED:
        wrong = sorted(set(outcome.items()) ^ set(EXPECTED.items()))
        raise places.Failure(f"dev: mutants FAILED: the tool misjudges its toy: {wrong}")
