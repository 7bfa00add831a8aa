#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Counts with strace what an idle tick asks of the system: one attribute query for the store and one
for its log, and nothing else that names or reads a file. Ends with 77 where nothing can be traced."""
import os
import re
import shutil
import subprocess
import sys
import tempfile

CALLS = "%file,%desc"
FILTER = "--gtest_filter=CookieWatcherTest.IdleTicksOpenNothing"


def calls(program, ticks):
    """How often each call was made in a run with so many idle ticks."""
    with tempfile.NamedTemporaryFile("r") as log:
        run = subprocess.run(
            ["strace", "-f", "-o", log.name, "-e", f"trace={CALLS}", program, FILTER],
            env={**os.environ, "TAVROLLO_IDLE_TICKS": str(ticks)},
            stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True, check=False)
        if run.returncode != 0:
            sys.exit(f"{program} under strace ended with {run.returncode}: {run.stderr}")
        counts = {}
        for call in re.findall(r"^\d+ +(\w+)\(", log.read(), re.MULTILINE):
            counts[call] = counts.get(call, 0) + 1
        return counts


def main():
    program = sys.argv[1]
    if shutil.which("strace") is None or subprocess.run(
            ["strace", "-o", os.devnull, "true"], stderr=subprocess.DEVNULL, check=False).returncode:
        print("nothing can be traced here")
        sys.exit(77)
    few, many = calls(program, 10), calls(program, 1010)
    more = {call: many[call] - few.get(call, 0) for call in many if many[call] != few.get(call, 0)}
    print(f"1000 idle ticks: {more}")
    queries = sum(more.values())
    if set(more) - {"stat", "newfstatat", "statx", "lstat"} or queries > 2000:
        sys.exit("an idle tick is to cost one attribute query a file and nothing else")


if __name__ == "__main__":
    main()
