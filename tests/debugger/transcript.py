# Gives the commands of a transcript to gdb and prints it again with the answers of this gdb. They
# may ask with `python print(unasked())` which classes none of them has shown.
# What differs from run to run is left out: the numbers of the values in gdb's history, addresses,
# the ids that a dictionary draws.
import os
import re

import gdb

ASKED = set()


def noted(printer):
    """The function that shows a class, which from now on notes that it was asked."""
    show = printer.gen_printer

    def show_and_note(value):
        ASKED.add(printer.name)
        return show(value)
    return show_and_note


def unasked():
    """The classes that no command so far has shown."""
    return sorted(printer.name for printer in PRINTERS if printer.name not in ASKED)


# A file that brings printers keeps them itself; sourced by hand they are everybody's.
PRINTERS = [printer for found in gdb.pretty_printers
            if getattr(found, "name", "") == "iokern" for printer in found.subprinters]
for each in PRINTERS:
    each.gen_printer = noted(each)

VARYING = ((r"^\$\d+ = ", ""), ("0x[0-9a-f]+", "ADDRESS"), (r"\[\d{9,}\]", "[ID]"))

with open(os.environ["TRANSCRIPT"], encoding="utf-8") as transcript:
    for line in transcript:
        if line.startswith(("#", "\n")):
            print(line, end="")
        elif line.startswith("(gdb) "):
            print(line, end="")
            try:
                answer = gdb.execute(line[len("(gdb) "):], to_string=True)
            except gdb.error as failure:
                answer = "%s\n" % failure
            for varying, steady in VARYING:
                answer = re.sub(varying, steady, answer)
            print(answer, end="")
