#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Tests of count_results.py: no failure may be lost between ctest and the last line of ./test."""
import pathlib
import subprocess
import sys
import tempfile
import unittest

PASSED = '<testcase classname="A" name="One" status="run"/>'
FAILED = '<testcase classname="A" name="Two" status="run"><failure message="no"/></testcase>'
SKIPPED = '<testcase classname="A" name="Three" status="run"><skipped message="here"/></testcase>'
DISABLED = '<testcase classname="A" name="Four" status="notrun"/>'


def case(status, inside=""):
    return f'<testcase name="test_a" status="{status}">{inside}</testcase>'


class CountResults(unittest.TestCase):
    def counted(self, case_of_ctest, *tests):
        """What it prints for one program; without tests that one left no report."""
        with tempfile.TemporaryDirectory() as name:
            folder = pathlib.Path(name)
            results = folder / "results"
            results.write_text(f"<testsuite>{case_of_ctest}</testsuite>", encoding="utf-8")
            if tests:
                (folder / "room").mkdir()
                report = f"<testsuites><testsuite>{''.join(tests)}</testsuite></testsuites>"
                (folder / "room" / "test_a.xml").write_text(report, encoding="utf-8")
            script = pathlib.Path(__file__).with_name("count_results.py")
            return subprocess.run([sys.executable, "-B", script, results, folder],
                                  capture_output=True, text=True, check=True).stdout.strip()

    def test_a_program_without_a_report_counts_as_one_test(self):
        self.assertEqual(self.counted(case("run")), "1 0 0")
        self.assertEqual(self.counted(case("fail")), "0 1 0 test_a")

    def test_each_test_of_a_program_counts(self):
        self.assertEqual(self.counted(case("run"), PASSED, PASSED, SKIPPED, DISABLED), "2 0 2")
        self.assertEqual(self.counted(case("fail"), PASSED, FAILED, SKIPPED), "1 1 1 A.Two")

    def test_a_program_that_fails_behind_its_tests_has_failed(self):
        self.assertEqual(self.counted(case("fail"), PASSED), "1 1 0 test_a")

    def test_what_was_not_run_has_failed_unless_it_was_to_be_passed_over(self):
        skipped = '<skipped message="SKIP_RETURN_CODE=77"/>'
        self.assertEqual(self.counted(case("notrun", skipped)), "0 0 1")
        self.assertEqual(self.counted(case("disabled")), "0 0 1")
        self.assertEqual(self.counted(case("notrun", '<skipped message="Unable to find"/>')), "0 1 0 test_a")
        self.assertEqual(self.counted(case("notrun")), "0 1 0 test_a")


if __name__ == "__main__":
    unittest.main()
