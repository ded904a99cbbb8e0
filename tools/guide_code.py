#!/usr/bin/env python3
"""Takes the code out of the guides, so that it can be built and run, and lets no block escape.

Every fenced block names its language, and a comment above it says what it is:

  ```cpp, ```cmake   <!-- file: NAME -->    a part of the file NAME; parts of one file are joined
                     <!-- shown: PATH -->   the file PATH of this tree, as it is
  ```sh              <!-- run: NAME -->     commands that are run in the folder of the guide's files
                     none                   commands of ./dev, which its help must know
  ```text            <!-- output: NAME -->  what the program NAME.cpp or the commands NAME print
                     <!-- shown: PATH -->   paragraphs of the file PATH of this tree

A guide whose files include a CMakeLists.txt is a project, which its commands build; elsewhere each
*.cpp is a program, whose output is shown.

Usage: guide_code.py [--out FOLDER] DOCUMENT...
With --out the files go to FOLDER/<document>/, expected output to NAME.expected, commands to NAME.sh,
in the order of the document to `commands`. Without, the blocks are checked alone.
"""

import os
import re
import subprocess
import sys

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
DIRECTIVE = re.compile(r"<!-- (file|shown|run|output): (\S+) -->")
ALLOWED = {
    "cpp": ("file", "shown"),
    "cmake": ("file", "shown"),
    "sh": ("run", None),
    "text": ("output", "shown"),
}


class Problem(Exception):
    """Something that is wrong with a block."""


def blocks_of(path):
    """Yields line, language, directive and text of each fenced block."""
    directive, start, language, lines = None, 0, "", []
    with open(path, encoding="utf-8") as file:
        for number, line in enumerate(file, 1):
            if start:
                if line.rstrip() == "```":
                    yield start, language, directive, "".join(lines)
                    directive, start, lines = None, 0, []
                else:
                    lines.append(line)
            elif line.lstrip().startswith(("```", "~~~")):
                if not line.startswith("```"):
                    raise Problem(f"{path}:{number}: a block must begin at the left, with ```")
                start, language = number, line.strip()[3:]
            elif line.startswith(("    ", "\t")) or "<pre" in line:
                raise Problem(f"{path}:{number}: code stands between fences, not indented")
            elif line.strip():
                found = DIRECTIVE.fullmatch(line.strip())
                directive = found.groups() if found else None
    if start:
        raise Problem(f"{path}:{start}: the block has no end")


def known_commands():
    """The commands of ./dev and the presets, as its help says."""
    text = subprocess.run([os.path.join(ROOT, "dev"), "help"], check=True, text=True,
                          capture_output=True).stdout
    commands = dict(re.findall(r"^  (\w+)(?: (\S+))?  ", text, re.MULTILINE))
    presets = re.search(r"^PRESET is one of: ([\w ]+);", text, re.MULTILINE).group(1).split()
    return commands, presets


def check_dev_commands(text):
    commands, presets = known_commands()
    for line in text.splitlines():
        words = line.split("#")[0].split()
        if not words:
            continue
        if words[0] != "./dev" or len(words) < 2 or words[1] not in commands:
            raise Problem(f"./dev has no such command: {line}")
        argument = commands[words[1]].strip("[]")
        if argument == "PRESET":
            known = set(words[2:]) <= set(presets)
        else:
            known = words[2:] in ([], [argument] if argument else [])
        if not known or len(words) > 3:
            raise Problem(f"./dev {words[1]} takes no such argument: {line}")


class Guide:
    """The code of one document."""

    def __init__(self, path):
        self.path = path
        self.files = {}
        self.commands = []
        self.outputs = {}
        for line, language, directive, text in blocks_of(path):
            try:
                self.take(language, directive, text)
            except Problem as problem:
                raise Problem(f"{path}:{line}: {problem}") from None
        self.check_programs()

    def take(self, language, directive, text):
        if language not in ALLOWED:
            raise Problem(f"a block of the unknown language '{language}'")
        kind, name = directive or (None, None)
        if kind not in ALLOWED[language]:
            raise Problem(f"'{language}' needs a comment that says what it is")
        if kind == "file":
            self.files[name] = self.files.get(name, "") + text
        elif kind == "run":
            if name in self.commands:
                raise Problem(f"commands '{name}' twice")
            self.commands.append(name)
            self.files[name + ".sh"] = text
        elif kind == "output":
            if name in self.outputs:
                raise Problem(f"output of '{name}' twice")
            self.outputs[name] = text
        elif kind == "shown":
            self.check_shown(name, text, whole=language != "text")
        else:
            check_dev_commands(text)

    @staticmethod
    def check_shown(name, text, whole):
        try:
            with open(os.path.join(ROOT, name), encoding="utf-8") as file:
                content = file.read()
        except OSError as error:
            raise Problem(f"cannot read {name}: {error.strerror}") from None
        parts = [text] if whole else [part.strip("\n") for part in text.split("\n\n")]
        found = text == content if whole else all(f"\n{part}\n" in f"\n{content}" for part in parts)
        if not found:
            raise Problem(f"the block is not what stands in {name}")

    def check_programs(self):
        sources = [name[:-4] for name in self.files if name.endswith(".cpp")]
        project = "CMakeLists.txt" in self.files
        runs = self.commands if project else sources + self.commands
        for name in self.outputs:
            if name not in runs:
                raise Problem(f"{self.path}: output of '{name}', which is nothing that runs")
        if project and not self.outputs:
            raise Problem(f"{self.path}: a project that prints nothing")
        for name in sources:
            if not project and name not in self.outputs:
                raise Problem(f"{self.path}: no output of '{name}'")

    def write(self, folder):
        if not self.files:
            return
        os.makedirs(folder, exist_ok=True)
        files = dict(self.files)
        files.update((name + ".expected", text) for name, text in self.outputs.items())
        files["commands"] = "".join(name + "\n" for name in self.commands)
        for stale in os.listdir(folder):
            if stale not in files and os.path.isfile(os.path.join(folder, stale)):
                os.remove(os.path.join(folder, stale))
        for name, text in files.items():
            path = os.path.join(folder, name)
            # What has not changed need not be built again.
            if not os.path.exists(path) or open(path, encoding="utf-8").read() != text:
                with open(path, "w", encoding="utf-8") as file:
                    file.write(text)


def main():
    arguments = sys.argv[1:]
    out = None
    if arguments[:1] == ["--out"] and len(arguments) > 1:
        out, arguments = arguments[1], arguments[2:]
    if not arguments or any(name.startswith("-") for name in arguments):
        print("guide_code.py: usage: guide_code.py [--out FOLDER] DOCUMENT...", file=sys.stderr)
        return 2
    failures = 0
    for path in arguments:
        try:
            guide = Guide(path)
        except (Problem, OSError) as problem:
            print(f"guide_code: {problem}")
            failures += 1
            continue
        if out is not None:
            guide.write(os.path.join(out, os.path.splitext(os.path.basename(path))[0]))
    if failures == 0:
        print(f"guide_code: {len(arguments)} documents, every block is checked")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
