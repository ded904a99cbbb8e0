# Gives the commands of a transcript to gdb and prints it again with the answers of this gdb.
# What differs from run to run is left out: the numbers of the values in gdb's history, addresses,
# the ids that a dictionary draws.
import os
import re

import gdb

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
