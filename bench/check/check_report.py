#!/usr/bin/env python3
"""Holds the measuring tools to what they promise: a wrong answer is an error, a change is told.

Usage: check_report.py PROGRAM, which has the jobs of wrong_answers.cpp
"""

import contextlib
import io
import pathlib
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "report"))

import instructions  # noqa: E402
import measure       # noqa: E402
import orders        # noqa: E402
import performance   # noqa: E402
import tables        # noqa: E402

PROGRAM = ""


def said_by(call):
    """The exit status of a call, and what it said on standard error."""
    said = io.StringIO()
    with contextlib.redirect_stderr(said):
        try:
            status = call()
        except SystemExit as end:
            status = end.code
    return status, said.getvalue()


class Answers(unittest.TestCase):
    """A program with one right job, one wrong one and one that raises."""

    def test_timing_gives_wrong_answers_and_exceptions_as_errors(self):
        with tempfile.TemporaryDirectory() as folder:
            runs = measure.time_all(PROGRAM, folder, 2, 0.001, "")
        times, errors = measure.times_of(runs)
        self.assertEqual(set(times["check"]), {"right"})
        self.assertEqual([error.partition(": ")[2] for error in errors],
                         ["out of order", "wrong answer"])

    def test_counting_gives_wrong_answers_and_exceptions_as_errors(self):
        with tempfile.TemporaryDirectory() as folder:
            counts, errors = measure.count(PROGRAM, folder, ".")
        self.assertEqual(set(counts), {"check/right"})
        self.assertEqual(sorted(errors),
                         ["check/raising: out of order", "check/wrong: wrong answer"])

    def test_an_error_makes_the_report_fail(self):
        with contextlib.redirect_stdout(io.StringIO()):
            status, said = said_by(lambda: performance.main([PROGRAM, "--quick"]))
        self.assertEqual(status, 1)
        self.assertIn("wrong answer", said)
        self.assertIn("check: not described", said)


class Gate(unittest.TestCase):
    """Instructions against accepted ones."""

    def test_five_percent_are_allowed_and_six_are_not(self):
        for counted, good in ((100, True), (105, True), (95, True), (106, False), (94, False)):
            with self.subTest(counted=counted):
                self.assertEqual(instructions.compare({"a": 100}, {"a": counted})[1], good)

    def test_an_operation_that_was_not_counted_is_a_failure(self):
        rows, good = instructions.compare({"a": 100}, {})
        self.assertFalse(good)
        self.assertIn("FAILED", rows[0][-1])


class Arguments(unittest.TestCase):
    """Wrong use: one line, status 2."""

    def assert_wrong_use(self, call):
        status, said = said_by(call)
        self.assertEqual(status, 2)
        self.assertEqual(said.count("\n"), 1, said)

    def test_a_bad_regular_expression(self):
        self.assert_wrong_use(lambda: performance.main([PROGRAM, "--filter=("]))

    def test_an_unknown_option(self):
        self.assert_wrong_use(lambda: performance.main([PROGRAM, "--slow"]))
        self.assert_wrong_use(lambda: instructions.main([PROGRAM, "--slow"]))

    def test_no_program(self):
        self.assert_wrong_use(lambda: performance.main([]))
        self.assert_wrong_use(lambda: instructions.main([]))


class Tables(unittest.TestCase):
    """What is made of the numbers."""

    def test_orders_are_found_from_counts(self):
        sizes = (10, 100, 1000, 10000, 100000)
        for name, grows in orders.ORDERS.items():
            with self.subTest(order=name):
                counts = {size: 300 + 7 * grows(size) for size in sizes}
                self.assertEqual(orders.find_order(counts)[0], name)

    def test_the_best_peer_does_all_and_is_not_ours(self):
        times = {name: {"ns": ns} for name, ns in (
            ("iokern", 9), ("iokern[as]", 8), ("limit", 1), ("limit[avx2]", 1), ("floor", 2),
            ("quick[less: unchecked]", 3), ("slow", 7), ("right[vector]", 5))}
        self.assertEqual(tables.Operation(times, {}).best_peer(), "right[vector]")


if __name__ == "__main__":
    PROGRAM = sys.argv.pop(1)
    unittest.main()
