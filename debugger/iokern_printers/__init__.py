"""Shows the values of the library in gdb as their users think of them."""

import gdb.printing

from .classes import CLASSES
from .reading import FAILURES, V2
from .shown import Shown


def readable(function):
    """What cannot be read is said in place of the value."""
    def show(value):
        try:
            return function(value)
        except FAILURES as failure:
            return Shown("<%s>" % failure)
    return show


def register(module):
    collection = gdb.printing.RegexpCollectionPrettyPrinter("iokern")
    for name, function in CLASSES.items():
        collection.add_printer(name, "^%s%s$" % (V2, name), readable(function))
    gdb.printing.register_pretty_printer(module, collection, replace=True)
