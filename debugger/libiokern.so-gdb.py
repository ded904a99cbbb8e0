# gdb loads this file together with the library; by hand: (gdb) source libiokern.so-gdb.py
import os
import sys

import gdb

# Installed, this is no place for compiled files.
writes_bytecode = not sys.dont_write_bytecode
sys.dont_write_bytecode = True
sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import iokern_printers
sys.path.pop(0)
sys.dont_write_bytecode = not writes_bytecode

iokern_printers.register(gdb.current_objfile())
