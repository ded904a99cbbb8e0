"""Runs the benchmark program: timed, or counted under callgrind."""

import json
import os
import pathlib
import statistics
import subprocess

# The C library would choose its copies by the processor; these are on every x86-64.
BASELINE = ",".join("-" + name for name in (
    "AVX", "AVX2", "AVX512F", "AVX512VL", "AVX512BW", "BMI1", "BMI2", "ERMS", "FSRM", "FMA",
    "LZCNT", "MOVBE", "POPCNT", "RTM", "SSSE3", "SSE4_1", "SSE4_2", "XSAVE", "XSAVEC",
    "AVX_Fast_Unaligned_Load", "AVX2_Usable", "Fast_Unaligned_Copy", "Prefer_No_VZEROUPPER"))


class Failed(Exception):
    """The program did not do what it was asked for."""


def split_name(name):
    """Operation and peer; operations of several threads are operations of their own."""
    operation, peer, *rest = name.split("/")
    operation += "".join("/" + part for part in rest if part.startswith("threads:"))
    return operation, peer


def time_all(program, folder, repetitions, seconds, pattern):
    """What Google Benchmark says of every job, in random order, as it stands in its JSON."""
    out = pathlib.Path(folder, "times.json")
    command = [program, f"--benchmark_repetitions={repetitions}",
               "--benchmark_enable_random_interleaving=true", f"--benchmark_min_time={seconds}",
               f"--benchmark_out={out}", "--benchmark_out_format=json"]
    if pattern:
        command.append(f"--benchmark_filter={pattern}")
    done = subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True,
                          check=False)
    if done.returncode != 0:
        raise Failed(f"the benchmarks ended with status {done.returncode}: {done.stderr.strip()}")
    text = out.read_text()
    if not text:
        raise Failed("no benchmark has that name")
    return json.loads(text)["benchmarks"]


def times_of(runs):
    """{operation: {peer: {"ns", "spread", "rate"}}} of one item: the median, the distance of the
    quartiles in percent, gigabytes a second; and the list of errors."""
    samples, rates, errors = {}, {}, []
    for run in runs:
        if run.get("error_occurred"):
            errors.append(f"{run['run_name']}: {run['error_message']}")
        elif run["run_type"] == "iteration" and "items_per_second" in run:
            key = split_name(run["run_name"])
            samples.setdefault(key, []).append(1e9 / run["items_per_second"])
            if "bytes_per_second" in run:
                rates.setdefault(key, []).append(run["bytes_per_second"] / 1e9)
    result = {}
    for key, values in samples.items():
        median = statistics.median(values)
        low, _, high = (statistics.quantiles(values, n=4) if len(values) > 1
                        else (median, median, median))
        result.setdefault(key[0], {})[key[1]] = {
            "ns": median, "spread": 100 * (high - low) / median,
            "rate": statistics.median(rates[key]) if key in rates else None}
    return result, sorted(set(errors))


def growth_of(runs, counts):
    """{operation: {"order", "rms", "ns": {size: median}, "instructions": {size: count}}} of those
    that grow: the order that they are held to, and how far the times are from it."""
    samples, result = {}, {}
    for run in runs:
        name = run["run_name"].split("/")
        if run.get("error_occurred") or not is_growth(name[0]):
            continue
        entry = result.setdefault(name[0], {"order": "", "rms": None, "ns": {}, "instructions": {}})
        if run.get("aggregate_name") == "BigO":
            entry["order"] = {"lgN": "log n", "N": "n"}.get(run["big_o"], run["big_o"])
        elif run.get("aggregate_name") == "RMS":
            entry["rms"] = run["rms"]
        elif run["run_type"] == "iteration":
            samples.setdefault((name[0], int(name[2])), []).append(run["real_time"])
    for (operation, size), values in samples.items():
        result[operation]["ns"][size] = statistics.median(values)
    for name, value in counts.items():
        operation, _, *size = name.split("/")
        if operation in result and size:
            result[operation]["instructions"][int(size[0])] = value
    return result


def is_growth(operation):
    """Whether it is measured for several sizes."""
    return operation.startswith("growth_")


def read_dump(path):
    """The name of a count and its instructions."""
    name, total = None, None
    mark = "desc: Trigger: Client Request: "
    with open(path, encoding="utf-8", errors="replace") as dump:
        for line in dump:
            if line.startswith(mark):
                name = line[len(mark):].strip()
            elif line.startswith(("summary:", "totals:")):
                total = int(line.split()[1])
    return name, total


def count(program, folder, pattern):
    """{name: instructions for one item} of every job whose name matches, and the errors."""
    out = pathlib.Path(folder, "count")
    environment = dict(os.environ, GLIBC_TUNABLES=f"glibc.cpu.hwcaps={BASELINE}", LD_BIND_NOW="1",
                       LC_ALL="C")
    done = subprocess.run(
        ["valgrind", "--tool=callgrind", "--instr-atstart=no", f"--callgrind-out-file={out}",
         program, "--count", pattern],
        capture_output=True, text=True, env=environment, check=False)
    if done.returncode != 0:
        raise Failed(f"callgrind ended with status {done.returncode}: "
                     f"{done.stderr.strip().splitlines()[-1]}")
    items, errors = {}, []
    for line in done.stdout.splitlines():
        first, name, *reason = line.split("\t")
        if first == "error":
            errors.append(f"{name}: {reason[0]}")
        else:
            items[name] = int(first)
    counts = {}
    for path in out.parent.glob("count.*"):
        name, total = read_dump(path)
        if name in items:
            counts[name] = total / items[name]
    missing = sorted(set(items) - set(counts))
    if missing:
        raise Failed(f"callgrind counted nothing for {', '.join(missing)}")
    return counts, errors
