#!/usr/bin/env python3
"""Holds the table of the threads page to the headers: each public class is named by a line, and
each line names nothing else. A class within another is named together with it.

Usage: check_threads_table.py PAGE PUBLIC_CLASSES HEADERS
"""

import re
import subprocess
import sys

# What has lines without being a public class.
OTHERS = {
    "get_as": "the function behind all conversions",
    "iokern_allocator_base": "the gateway of all memory, which modules use without naming it",
}


def names_of_table(page):
    """What stands in the first cells of the table, each with the number of its line."""
    names, inside = [], False
    with open(page, encoding="utf-8") as file:
        for number, line in enumerate(file, 1):
            if line.startswith("| Class |"):
                inside = True
            elif not line.startswith("|"):
                inside = False
            elif inside and not set(line) <= set("|- \n"):
                names += [(name, number) for name in re.findall("`(.*?)`", line.split("|")[1])]
    return names


def plain_names(classes):
    """The classes by their names without the namespaces."""
    plain = {}
    for name in classes:
        words = name.split("::")
        first = next(i for i in range(len(words)) if "::".join(words[:i + 1]) in classes)
        plain["::".join(words[first:])] = name
    return plain


def main():
    page, tool, headers = sys.argv[1:]
    listed = subprocess.run([tool, headers], check=True, text=True, capture_output=True).stdout
    classes = set(listed.split())
    plain = plain_names(classes)
    if len(plain) != len(classes):
        print(f"two of {sorted(classes)} have one name")
        return 1

    failures, seen = [], set()
    for name, number in names_of_table(page):
        if name not in plain and name not in OTHERS:
            failures.append(f"{page}:{number}: no public class: {name}")
        if name in seen:
            failures.append(f"{page}:{number}: a second time: {name}")
        seen.add(name)
    failures += [f"{page}: no line names {plain[name]}" for name in sorted(set(plain) - seen)]
    failures += [f"an exception without a line: {name}" for name in sorted(set(OTHERS) - seen)]
    failures += [f"an exception for a class: {name}" for name in sorted(set(OTHERS) & set(plain))]
    print("\n".join(failures) or f"{len(classes)} classes stand in the table")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
