#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Compares whole processes, side by side in one run: `tavrolloctl cookie` and `grep` looking for the
command's name in a file of 64 MiB that does not hold it. Ends with 1 when tavrolloctl is the slower
one in any content.

Usage: processes.py TAVROLLOCTL [ROUNDS]"""
import os
import random
import statistics
import string
import subprocess
import sys
import tempfile
import time

SIZE = 64 << 20
LETTERS = (string.ascii_letters + string.digits + "+/").encode()


def contents():
    """Bytes of three kinds without the name."""
    rng = random.Random(1)
    block = rng.randbytes(1 << 20)
    text = bytes(LETTERS[byte % len(LETTERS)] for byte in block)
    lines = b"\n".join(text[at:at + 80] for at in range(0, len(text), 80))
    for name, piece in (("random", block), ("letters", text), ("lines", lines)):
        yield name, (piece * (SIZE // len(piece) + 1))[:SIZE]


def timed(command):
    """Wall and processor time of a run, in milliseconds."""
    before = os.times()
    start = time.perf_counter()
    run = subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, check=False)
    wall = time.perf_counter() - start
    after = os.times()
    if run.returncode != 1:  # both say so when nothing was found
        sys.exit(f"{command} ended with {run.returncode}: {run.stderr!r}")
    processor = (after.children_user - before.children_user
                 + after.children_system - before.children_system)
    return wall * 1000, processor * 1000


def main():
    tavrolloctl = os.path.abspath(sys.argv[1])
    rounds = int(sys.argv[2]) if len(sys.argv) > 2 else 21
    slower = []
    print(f"{os.cpu_count()} processors, {rounds} rounds, medians in ms (wall / processor)")
    with tempfile.TemporaryDirectory(dir="/dev/shm" if os.path.isdir("/dev/shm") else None) as folder:
        path = os.path.join(folder, "store")
        for name, content in contents():
            with open(path, "wb") as file:
                file.write(content)
            peers = {"tavrolloctl": [tavrolloctl, "cookie", path],
                     "grep": ["grep", "-c", "-a", "-F", "Tavr1CodeToExe", path]}
            times = {peer: [] for peer in peers}
            for _ in range(rounds):  # in turns, so that both meet the same machine
                for peer, command in peers.items():
                    times[peer].append(timed(command))
            medians = {peer: [statistics.median(column) for column in zip(*runs)]
                       for peer, runs in times.items()}
            print(f"{name:8}" + "".join(f"  {peer} {wall:6.1f} / {processor:6.1f}"
                                        for peer, (wall, processor) in medians.items()))
            if medians["tavrolloctl"][0] > medians["grep"][0]:
                slower.append(name)
    if slower:
        sys.exit("slower than grep in: " + ", ".join(slower))


if __name__ == "__main__":
    main()
