"""The list of mutants that change nothing anybody could see.

An entry is a line with the file and the line of the source in it, a line with the mutation, and
the reason in the lines behind them, up to an empty one:

    src/values/number_runs.hpp: unsigned int start = 0;
    0 -> 0 + 1
    because ...

Lines that begin with `#` are comments.
"""

from places import Failure


def key(place):
    return f"{place.file}: {place.context}", place.mutation


def read(path):
    """\\return the reasons by key."""
    reasons = {}
    lines = [line for line in path.read_text().splitlines() if not line.startswith("#")]
    for block in "\n".join(lines).split("\n\n"):
        entry = block.strip("\n").split("\n")
        if entry == [""]:
            continue
        if len(entry) < 3:
            raise Failure(f"dev: mutants FAILED: an entry without a reason: {entry[0]}")
        if (entry[0], entry[1]) in reasons:
            raise Failure(f"dev: mutants FAILED: an entry stands there twice: {entry[0]}")
        reasons[entry[0], entry[1]] = " ".join(entry[2:])
    return reasons


def stale(reasons, found):
    """\\return the entries that fit no place of those `found` by file."""
    known = {key(place) for places in found.values() for place in places}
    return [entry for entry in reasons if entry not in known]
