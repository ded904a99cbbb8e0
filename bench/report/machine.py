"""What the numbers were taken on."""

import os
import platform
import re
import subprocess

PACKAGES = ["g++", "libc6", "libstdc++6", "libbenchmark-dev", "valgrind", "qt6-base-dev",
            "libpoco-dev", "libglib2.0-dev", "libboost1.81-dev", "nlohmann-json3-dev",
            "libfmt-dev"]


def output(*command):
    """What a command prints, or nothing."""
    try:
        return subprocess.run(command, capture_output=True, text=True, check=False).stdout
    except FileNotFoundError:
        return ""


def describe():
    """Pairs of a name and a text."""
    cpu = dict(re.findall(r"(?m)^\s*([^:\n]+):\s+(.*)$", output("lscpu")))
    memory = re.search(r"MemTotal:\s+(\d+)", open("/proc/meminfo", encoding="ascii").read())
    result = [("Processor", f"{cpu.get('Model name', platform.machine())}, "
                            f"{os.cpu_count()} cores")]
    caches = [f"{level} {cpu[level + ' cache']}" for level in ("L1d", "L2", "L3")
              if level + " cache" in cpu]
    if caches:
        result.append(("Caches", ", ".join(caches)))
    if "Hypervisor vendor" in cpu:
        result.append(("Virtual machine", cpu["Hypervisor vendor"]))
    result.append(("Memory", f"{int(memory[1]) / 2**20:.0f} GiB"))
    kernel = platform.release().split("-")[0]
    result.append(("System", f"{os_name()}, Linux {kernel}"))
    result.append(("Load at the start", f"{os.getloadavg()[0]:.1f}"))
    return result


def os_name():
    """The distribution and its version."""
    found = re.search(r'(?m)^PRETTY_NAME="(.*)"$', open("/etc/os-release", encoding="utf-8").read())
    return found[1] if found else "unknown"


def versions():
    """Pairs of a package and its version."""
    lines = output("dpkg-query", "-W", "-f=${Package} ${Version}\n", *PACKAGES).splitlines()
    return sorted({tuple(line.split(" ", 1)) for line in lines if " " in line})
