#!/usr/bin/env python3
"""Runs clang-tidy on sources, those of one target several at a time.

Usage: tidy_sources.py BUILD_DIRECTORY SOURCE...

What sources have in common, the standard library above all, is then read and checked once for each
batch: a third of the time. Names without linkage must be unique within a target for that.
"""

import concurrent.futures
import itertools
import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile

BATCH = 10

# The analyzer follows the 34 kinds of payload down every path; a tenth of the paths that it would
# try by itself finds the same in a fraction of the time.
ANALYZER = ["-Xclang", "-analyzer-config", "-Xclang", "max-nodes=20000"]


def batches(sources, commands):
    """Lists of sources that stand in one folder and have one command, as even as they come."""
    def target(source):
        return source.parent, commands[source]["command"].split(" -o ")[0]

    for _, group in itertools.groupby(sorted(sources, key=target), key=target):
        rest = list(group)
        count = -(-len(rest) // BATCH)
        for first in range(count):
            yield rest[first::count]


def joined(batch):
    """All sources as one, for the analyzer passes over what is included; and each line's origin."""
    text, origins = "", []
    for source in batch:
        for number, line in enumerate(source.read_text().splitlines(), 1):
            text += line + "\n"
            origins.append(f"{source}:{number}")
    return text, origins


def tidy(batch, commands, config):
    """Whether clang-tidy has nothing to say about the batch; prints what it has."""
    text, origins = joined(batch)
    with tempfile.TemporaryDirectory() as folder:
        whole = pathlib.Path(folder, batch[0].name)
        whole.write_text(text)
        command = dict(commands[batch[0]])
        command["command"] = command["command"].replace(command["file"], str(whole))
        command["file"] = str(whole)
        pathlib.Path(folder, "compile_commands.json").write_text(json.dumps([command]))
        extra = [f"--extra-arg={argument}"
                 for argument in [*ANALYZER, "-iquote", str(batch[0].parent)]]
        done = subprocess.run(
            ["clang-tidy", "--quiet", f"--config-file={config}", "-p", folder,
             # An alias that each source has for itself counts for one, of which the last is used.
             "--checks=-misc-unused-alias-decls", *extra, whole],
            capture_output=True, text=True, check=False)
        if done.returncode != 0:
            said = done.stdout + re.sub(r"(?m)^.* generated\.\n", "", done.stderr)
            place = re.escape(str(whole)) + r":(\d+)"
            print(re.sub(place, lambda found: origins[int(found[1]) - 1], said), flush=True)
    return done.returncode == 0


def main(arguments):
    if len(arguments) < 2:
        print(__doc__.split("\n\n")[1], file=sys.stderr)
        return 2
    build, sources = arguments[0], [pathlib.Path(name).resolve() for name in arguments[1:]]
    database = pathlib.Path(build, "compile_commands.json")
    if not database.is_file():
        print(f"tidy_sources.py: there is no {database}", file=sys.stderr)
        return 2
    commands = {pathlib.Path(entry["file"]): entry for entry in json.loads(database.read_text())}
    unknown = [source for source in sources if source not in commands]
    if unknown:
        print(f"tidy_sources.py: not built in {build}: {unknown[0]}", file=sys.stderr)
        return 2
    config = pathlib.Path(__file__).resolve().parent.parent / ".clang-tidy"
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        clean = list(pool.map(lambda batch: tidy(batch, commands, config),
                              batches(sources, commands)))
    return 0 if all(clean) else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
