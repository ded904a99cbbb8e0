"""A value as gdb asks for it."""

import gdb

from .reading import FAILURES

# Where gdb itself is told to set no limit.
MOST_CHILDREN = 10000


class Shown:
    """One value as gdb asks for it: a line, and perhaps (name, value) pairs below it."""

    def __init__(self, line, children=None, hint=None):
        self.line = line
        if children is not None:
            self.children = lambda: guarded(children)
        self.hint = hint

    def to_string(self):
        return self.line

    def display_hint(self):
        return self.hint


def guarded(children):
    """The children up to the limit; one that cannot be read is the last."""
    try:
        for count, (name, child) in enumerate(children):
            if count == MOST_CHILDREN:
                yield "...", "..."
                return
            if isinstance(child, gdb.Value):
                child.fetch_lazy()
            yield name, child
    except FAILURES as failure:
        yield "...", "<%s>" % failure
