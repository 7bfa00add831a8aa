#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Whether comparing stays linear: trees of 10,000, 100,000 and a million files, beside rsync and find.

    /usr/bin/python3 bench/scale.py [--build build/release] [--files 10000 100000 1000000]
                                    [--rounds 3] [--folder /tmp]

For each number, two equal trees of that many empty files, 100 a folder, in memory as far as they fit (read
once before): tavrolloctl compare against rsync -an and find, and tavrolloctl compare with an empty
backup, where each file is a difference. For each the time, the processor time in it (which hardly knows
of others on the machine) and the most memory (never less than this script has), and what of the last two
falls to a file. Ends with 1 where a file of the largest trees takes tavrolloctl more than one and a half
times the processor time of one of the smallest, or more than 300 bytes."""

import argparse
import os
import resource
import shutil
import statistics
import subprocess
import sys
import tempfile

import folders

PER_FOLDER = 100
SLOWER = 1.5
MOST_BYTES = 300  # of memory, for a file that stands on both sides


def build_trees(roots, files):
    for root in roots:
        for first in range(0, files, PER_FOLDER):
            folder = os.path.join(root, f"d{first // PER_FOLDER % 100:02}", f"e{first // PER_FOLDER:05}")
            os.makedirs(folder)
            for number in range(first, min(first + PER_FOLDER, files)):
                path = os.path.join(folder, f"file {number:07}.txt")
                os.close(os.open(path, os.O_WRONLY | os.O_CREAT))
                os.utime(path, (1_700_000_000, 1_700_000_000))


def processor_seconds():
    used = resource.getrusage(resource.RUSAGE_CHILDREN)
    return used.ru_utime + used.ru_stime


def measure(commands, rounds):
    """The seconds and processor seconds (median) and MiB (most) of each. The first round warms up."""
    results = {name: [] for name in commands}
    for number in range(rounds + 1):
        for name, (command, status) in commands.items():
            before = processor_seconds()
            seconds, memory = folders.run(command, status)
            if number:
                results[name].append((seconds, processor_seconds() - before, memory))
    return {name: (statistics.median(seconds for seconds, _, _ in taken),
                   statistics.median(processor for _, processor, _ in taken),
                   max(memory for _, _, memory in taken)) for name, taken in results.items()}


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--build", default="build/release")
    parser.add_argument("--files", type=int, nargs="+", default=[10_000, 100_000, 1_000_000])
    parser.add_argument("--rounds", type=int, default=3)
    parser.add_argument("--folder", default=None)
    asked = parser.parse_args()
    ctl = os.path.abspath(os.path.join(asked.build, "tavrolloctl"))
    if not os.access(ctl, os.X_OK) or not shutil.which("rsync"):
        sys.exit("tavrolloctl has to be built, and rsync installed")
    print("load when it begins: %.1f" % os.getloadavg()[0])
    print(f"{'files on a side':>15} {'':<34} {'s':>7} {'processor s':>12} {'µs a file':>10} {'MiB':>6} "
          f"{'bytes a file':>13}")
    sizes = sorted(asked.files)
    ours = {}
    for files in sizes:
        with tempfile.TemporaryDirectory(dir=asked.folder) as folder:
            one, two, none = (os.path.join(folder, name) for name in ("one", "two", "none"))
            os.makedirs(none)
            build_trees([one, two], files)
            subprocess.run(["sync", "-f", folder], check=True)
            taken = measure({
                "tavrolloctl compare": ([ctl, "compare", one, two], 0),
                "rsync -an": (["rsync", "-an", one + "/", two + "/"], 0),
                "find": (["find", one, two, "-printf", "%P %T@ %s\\n"], 0),
                "tavrolloctl compare, nothing there": ([ctl, "compare", one, none], 1)}, asked.rounds)
        for name, (seconds, processor, memory) in taken.items():
            print(f"{files:>15} {name:<34} {seconds:7.2f} {processor:12.2f} "
                  f"{processor / files * 1e6:10.2f} {memory:6.0f} "
                  f"{memory * 2**20 / files:13.0f}", flush=True)
        ours[files] = taken["tavrolloctl compare"]
    print("load when it ends: %.1f" % os.getloadavg()[0])
    least, most = sizes[0], sizes[-1]
    slower = (ours[most][1] / most) / (ours[least][1] / least)
    grown = (ours[most][2] - ours[least][2]) * 2**20 / max(most - least, 1)
    print(f"from {least} to {most} files: {slower:.2f} times the processor time a file, "
          f"{grown:.0f} more bytes a file")
    sys.exit(0 if slower <= SLOWER and grown <= MOST_BYTES else 1)


if __name__ == "__main__":
    main()
