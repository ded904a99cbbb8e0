"""The mutated copy of a source tree, and its one build.

All mutants stand in one library; the variable IOKERN_MUTANT chooses one. What is not mutated is
linked to where it stands, so that a new test costs the build of that test.
"""

import json
import os
import pathlib
import shutil
import subprocess

import places
import rewrite

MUTATED = ("include", "src")
RUNTIME = pathlib.Path(__file__).resolve().parent / "runtime"
SUFFIXES = (".cpp", ".hpp")


def sources(root):
    """Gives the names below `root` of all sources that are mutated."""
    return sorted(str(path.relative_to(root)) for folder in MUTATED
                  for path in (root / folder).rglob("*") if path.suffix in SUFFIXES)


def choose(found, most):
    """Gives at most so many places of each file, from its start to its end evenly: large files
    must not leave the others in the shade, and whoever repairs a test wants the same mutants
    again."""
    chosen = []
    for file in sorted(found):
        some = found[file]
        if len(some) > most:
            some = [some[number * len(some) // most] for number in range(most)]
        chosen += some
    return chosen


def write(path, content):
    """Leaves a file alone that has that content, for the build looks at its time."""
    if path.is_file() and path.read_bytes() == content:
        return
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes(content)


def write_tree(root, tree, mutants):
    """Makes `tree` from `root`, with the `mutants`, whose numbers count from 1."""
    tree.mkdir(parents=True, exist_ok=True)
    by_file = {}
    for number, place in enumerate(mutants, 1):
        by_file.setdefault(place.file, []).append((number, place))
    wanted = {tree / "include/iokern_mutants.hpp": (RUNTIME / "iokern_mutants.hpp").read_bytes(),
              tree / "src/iokern_mutants.cpp": (RUNTIME / "iokern_mutants.cpp").read_bytes()}
    for folder in MUTATED:
        for path in (root / folder).rglob("*"):
            if path.is_dir():
                continue
            name = str(path.relative_to(root))
            content = path.read_bytes()
            if name in by_file:
                content = rewrite.rewrite(content, by_file[name]).encode()
            if path.suffix == ".map":
                content = content.replace(b"  local:", b"    _ZN14iokern_mutants*;\n  local:")
            wanted[tree / name] = content
    for path, content in wanted.items():
        write(path, content)
    for folder in MUTATED:
        for path in (tree / folder).rglob("*"):
            if not path.is_dir() and path not in wanted:
                path.unlink()
    link_rest(root, tree)


def link_rest(root, tree):
    for path in tree.iterdir():
        if path.is_symlink() and not (root / path.name).exists():
            path.unlink()
    for path in root.iterdir():
        link = tree / path.name
        if path.name not in (*MUTATED, "build", ".git") and not link.exists():
            link.symlink_to(path)


def run(command, log):
    with open(log, "ab") as out:
        done = subprocess.run(command, stdout=out, stderr=subprocess.STDOUT, check=False)
    if done.returncode != 0:
        tail = pathlib.Path(log).read_text(errors="replace").splitlines()[-40:]
        raise places.Failure("\n".join([*tail, f"dev: mutants FAILED: no build, see {log}"]))


def build(tree, folder, options):
    """Configures and builds `tree` in `folder`: everything that is built by default."""
    log = folder.parent / "build.log"
    log.unlink(missing_ok=True)
    if not (folder / "build.ninja").exists() and folder.exists():
        shutil.rmtree(folder)
    # Mutants convert and compare what nobody would write; warnings about that are no news.
    flags = "-w -Wno-error -Wno-narrowing -D_GLIBCXX_ASSERTIONS"
    run(["cmake", "-S", tree, "-B", folder, "-G", "Ninja", "-DCMAKE_CXX_COMPILER=g++",
         "-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_CXX_FLAGS_DEBUG=-O0", f"-DCMAKE_CXX_FLAGS={flags}",
         f"-DCMAKE_PROJECT_INCLUDE={RUNTIME}/listen.cmake", f"-DIOKERN_MUTANTS_RUNTIME={RUNTIME}",
         *options], log)
    run(["cmake", "--build", folder, "--parallel", str(os.cpu_count())], log)


class Program:
    """A test program as CTest would run it."""

    def __init__(self, test):
        self.name = test["name"]
        self.path, *arguments = test["command"]
        # Which of its cases are this test; the other arguments are about what it says.
        self.filter = next((argument for argument in arguments
                            if argument.startswith("--gtest_filter=")), None)
        properties = {entry["name"]: entry["value"] for entry in test.get("properties", [])}
        self.folder = properties.get("WORKING_DIRECTORY", ".")
        self.environment = dict(setting.split("=", 1)
                                for setting in properties.get("ENVIRONMENT", []))


def programs(folder):
    """Gives the test programs of a build: those of GoogleTest, which have cases to choose."""
    listed = subprocess.run(["ctest", "--test-dir", folder, "--show-only=json-v1"],
                            capture_output=True, text=True, check=True).stdout
    return [Program(test) for test in json.loads(listed)["tests"]
            if test.get("command", [""])[0].endswith("_test")]
