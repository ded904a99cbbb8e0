"""Holds the list of printers to the headers: each public class has one, or stands here with the
reason. Run by gdb, which knows the printers, as PUBLIC_CLASSES and INCLUDE say where to look."""
import os
import re
import subprocess
import sys

sys.path.insert(0, os.path.dirname(os.environ["PRINTERS"]))
sys.dont_write_bytecode = True
from iokern_printers.classes import CLASSES
from iokern_printers.reading import V2

# These have virtual functions and nothing else. What there is to see is a class of somebody else,
# which gdb shows as any other.
INTERFACES = {
    "host_interface",
    "interfaces::io_error_diagnostics_impl",
    "interfaces::io_error_diagnostics_impl::iterator_impl",
    "interfaces::object",
}

listed = subprocess.run([os.environ["PUBLIC_CLASSES"], os.environ["INCLUDE"]], check=True,
                        text=True, capture_output=True).stdout.split()
public = {re.sub("^" + V2, "", name) for name in listed}
shown = {re.sub("<.*>$", "", name) for name in CLASSES}

failures = ["no printer for the class " + name for name in sorted(public - shown - INTERFACES)]
failures += ["no such class, but a printer: " + name for name in sorted(shown - public)]
failures += ["no such class, but an exception: " + name for name in sorted(INTERFACES - public)]
failures += ["a printer and an exception for " + name for name in sorted(INTERFACES & shown)]
print("\n".join(failures + ["%d public classes, %d wrong" % (len(public), len(failures))]))
