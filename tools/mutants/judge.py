"""Traces which test cases reach which places, and lets the cases judge the mutants."""

import concurrent.futures
import dataclasses
import os
import pathlib
import resource
import signal
import subprocess
import tempfile
import time

from places import Failure

# As many bytes as the library maps.
PLACES = 65536
# A mutant may ask for memory, or write, without end.
MOST_MEMORY = 6 << 30
MOST_OUTPUT = 64 << 20
# Of the processor, which a busy machine does not change; beside what the cases take without a
# mutant, many times over.
LEAST_SECONDS = 10
SLOWER = 10
# For one that waits without end.
LONGEST_WAIT = 300
# So many cases judge first, the quickest ones: most mutants need no more.
FIRST_CASES = 12


@dataclasses.dataclass
class Case:
    """A test case, its time on the processor and the numbers of the places that it reaches."""
    program: object
    name: str
    milliseconds: int
    reached: frozenset

    @property
    def cost(self):
        # Of two that are equally quick, the one with the narrower view looks closer.
        return self.milliseconds, len(self.reached)


def limit():
    """For this process and all that it starts from now on."""
    resource.setrlimit(resource.RLIMIT_AS, (MOST_MEMORY, MOST_MEMORY))
    resource.setrlimit(resource.RLIMIT_FSIZE, (MOST_OUTPUT, MOST_OUTPUT))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))


def run(program, arguments, environment, seconds):
    """Gives the exit status and what was written. `seconds` are those of the processor, beyond
    which the status is that of a signal."""
    with tempfile.TemporaryFile() as out:
        process = subprocess.Popen(
            ["prlimit", f"--cpu={seconds}", "--", program.path, *arguments], cwd=program.folder,
            stdin=subprocess.DEVNULL, stdout=out, stderr=subprocess.STDOUT, start_new_session=True,
            env={**os.environ, **program.environment, **environment})
        try:
            process.wait(LONGEST_WAIT + 10 * seconds)
        except subprocess.TimeoutExpired:
            pass # the signal will be in the status
        try: # children of the case may live on as well
            os.killpg(process.pid, signal.SIGKILL)
        except ProcessLookupError:
            pass
        status = process.wait()
        out.seek(0)
        return status, out.read(1 << 20).decode(errors="replace")


def trace_program(program, folder):
    """Gives the cases of a program, which must all pass."""
    reached = pathlib.Path(folder, f"{program.name}.reached")
    reached.write_bytes(bytes(PLACES))
    arguments = ["--gtest_brief=1", *([program.filter] if program.filter else [])]
    status, said = run(program, arguments, {"IOKERN_MUTANTS_REACHED": str(reached)}, 3600)
    if status != 0:
        raise Failure(f"{said[-4000:]}\ndev: mutants FAILED: {program.name} fails without a mutant")
    cases, before = [], frozenset()
    for line in pathlib.Path(f"{reached}.cases").read_text().splitlines():
        name, milliseconds, numbers = line.split("\t")
        numbers = frozenset(map(int, numbers.split()))
        if name:
            # What came before the first case, tables for instance, may change any of them.
            cases.append(Case(program, name, int(milliseconds), numbers | before))
        else:
            before = numbers
    if not cases:
        raise Failure(f"dev: mutants FAILED: {program.name} has no test cases")
    return cases


def trace(programs, folder, jobs):
    """Gives all cases of all programs."""
    folder.mkdir(parents=True, exist_ok=True)
    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        return [case for cases in pool.map(lambda program: trace_program(program, folder), programs)
                for case in cases]


def in_runs(cases):
    """Cases by program, programs that take least time first."""
    by_program = {}
    for case in cases:
        by_program.setdefault(case.program.name, []).append(case)
    return sorted(by_program.values(), key=lambda some: sum(case.milliseconds for case in some))


def run_cases(number, cases):
    """Runs cases of one program with a mutant, up to the first that fails; 0 is for no mutant."""
    program = cases[0].program
    seconds = LEAST_SECONDS + SLOWER * sum(case.milliseconds for case in cases) // 1000
    with tempfile.NamedTemporaryFile("w", suffix=".flags") as flags:
        flags.write(f"--gtest_filter={':'.join(case.name for case in cases)}\n")
        flags.flush()
        return run(program, [f"--gtest_flagfile={flags.name}", "--gtest_fail_fast"],
                   {"IOKERN_MUTANT": str(number)}, seconds)


@dataclasses.dataclass
class Verdict:
    """What became of a mutant: `killer` is nothing where it survived."""
    number: int
    killer: Case
    how: str
    reaching: int # cases
    seconds: float


def judge(number, cases):
    """Lets those cases judge a mutant that reach it, until one fails."""
    start = time.monotonic()
    reaching = sorted((case for case in cases if number in case.reached),
                      key=lambda case: case.cost)
    first, rest = reaching[:FIRST_CASES], reaching[FIRST_CASES:]
    killer, how = None, ""
    for some in in_runs(first) + in_runs(rest):
        status, said = run_cases(number, some)
        if status == 0:
            continue
        started = [line.split("] ")[1] for line in said.splitlines() if line.startswith("[ RUN ")]
        killer = next((case for case in some if started and case.name == started[-1]), some[0])
        how = f"{killer.program.name}: {killer.name}"
        if status < 0:
            how += f", {signal.Signals(-status).name}"
        break
    return Verdict(number, killer, how, len(reaching), time.monotonic() - start)


def check_killers(verdicts):
    """A case that fails on its own without a mutant would kill them all: raises Failure then."""
    for cases in in_runs({id(verdict.killer): verdict.killer
                          for verdict in verdicts if verdict.killer}.values()):
        status, said = run_cases(0, cases)
        if status != 0:
            raise Failure(f"{said[-4000:]}\ndev: mutants FAILED: those cases of "
                          f"{cases[0].program.name} that killed fail without a mutant, alone")


def judge_all(numbers, cases, jobs, tell):
    """Gives the verdicts on the mutants of these numbers; `tell` is given each as it comes."""
    verdicts = []
    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        waiting = [pool.submit(judge, number, cases) for number in numbers]
        for done in concurrent.futures.as_completed(waiting):
            verdicts.append(done.result())
            tell(verdicts)
    return sorted(verdicts, key=lambda verdict: verdict.number)
