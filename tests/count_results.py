#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""count_results.py RESULTS FOLDER: what a run of ctest that wrote RESULTS comes to, as one line:
passed, failed, skipped, and the names of what failed.

A program of many tests that left a report of its own below FOLDER counts with each of them. A test
that could not be run has failed, unless it said itself that it has to be passed over here."""
import pathlib
import sys
import xml.etree.ElementTree as tree


def outcome_of(case):
    """The outcome of one test of ctest."""
    if case.get("status") == "run":
        return "passed"
    reason = case.find("skipped")
    said_so = reason is not None and reason.get("message", "").startswith("SKIP_")
    return "skipped" if case.get("status") == "disabled" or said_so else "failed"


def outcomes_within(report):
    """Each test of a program with its outcome."""
    for case in tree.parse(report).getroot().iter("testcase"):
        name = f"{case.get('classname')}.{case.get('name')}"
        if case.find("failure") is not None:
            yield name, "failed"
        elif case.find("skipped") is not None:
            yield name, "skipped"
        else:
            yield name, "passed" if case.get("status") == "run" else "skipped"


def outcomes(results, folder):
    reports = {path.stem: path for path in pathlib.Path(folder).rglob("*.xml")}
    for case in tree.parse(results).getroot().iter("testcase"):
        name, outcome = case.get("name"), outcome_of(case)
        within = list(outcomes_within(reports[name])) if name in reports else []
        yield from within
        # A program may also fail when none of its tests did: by a leak found at its end.
        if not within or outcome == "failed" and "failed" not in dict(within).values():
            yield name, outcome


def main():
    all_outcomes = list(outcomes(*sys.argv[1:]))
    failures = ["_".join(name.split()) for name, outcome in all_outcomes if outcome == "failed"]
    counts = [sum(outcome == kind for _, outcome in all_outcomes) for kind in ("passed", "failed", "skipped")]
    print(*counts, *failures)


if __name__ == "__main__":
    main()
