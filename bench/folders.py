#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Comparing and copying folders beside rsync, in one run.

    /usr/bin/python3 bench/folders.py [--build build/release] [--files 100000] [--copies 10000]
                                      [--rounds 5] [--folder /tmp]

compare: two equal trees of --files files in 1000 folders, both in memory (read once before), tavrolloctl
compare against rsync -an. copy: a tree of --copies files of 2 KiB into an empty folder, tavrolloctl sync
against rsync -a; rsync does not flush, so a run of it with a sync behind it is measured too. The
programs take turns. Times are printed, not judged."""

import argparse
import os
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

FOLDERS = 1000


def build_tree(root, files, data):
    for number in range(files):
        folder = os.path.join(root, f"d{number % FOLDERS:03}")
        if number < FOLDERS:
            os.makedirs(folder)
        with open(os.path.join(folder, f"file {number:06}.txt"), "wb") as file:
            file.write(data)


def seconds(command, expected=(0,)):
    begin = time.monotonic()
    done = subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, check=False)
    used = time.monotonic() - begin
    if done.returncode not in expected:
        sys.exit(f"{command}: {done.stderr.decode(errors='replace')}")
    return used


def show(name, times):
    print(f"  {name:<28} median {statistics.median(times):6.2f} s   min {min(times):6.2f}   "
          f"max {max(times):6.2f}")


def compare(ctl, folder, files, rounds):
    print(f"compare 2 x {files} files")
    one, two = os.path.join(folder, "one"), os.path.join(folder, "two")
    build_tree(one, files, b"x")
    subprocess.run(["cp", "-a", one, two], check=True)
    commands = {"tavrolloctl compare": [ctl, "compare", one, two],
                "rsync -an": ["rsync", "-an", one + "/", two + "/"]}
    times = {name: [] for name in commands}
    for number in range(rounds + 1):  # the first one warms up
        for name, command in commands.items():
            used = seconds(command)
            if number:
                times[name].append(used)
    for name in commands:
        show(name, times[name])
    shutil.rmtree(one)
    shutil.rmtree(two)


def copy(ctl, folder, files, rounds):
    print(f"copy {files} files of 2 KiB")
    source, target = os.path.join(folder, "source"), os.path.join(folder, "target")
    build_tree(source, files, b"x" * 2048)
    flushed = ["sh", "-c", 'rsync -a "$1/" "$2/" && sync -f "$2"', "sh", source, target]
    commands = {"tavrolloctl sync (flushed)": [ctl, "sync", source, target],
                "rsync -a; sync -f": flushed,
                "rsync -a (not flushed)": ["rsync", "-a", source + "/", target + "/"]}
    times = {name: [] for name in commands}
    for number in range(rounds + 1):
        for name, command in commands.items():
            os.makedirs(target)
            subprocess.run(["sync", "-f", folder], check=True)  # what others wrote is not ours
            used = seconds(command)
            if number:
                times[name].append(used)
            shutil.rmtree(target)
    for name in commands:
        show(name, times[name])


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--build", default="build/release")
    parser.add_argument("--files", type=int, default=100_000)
    parser.add_argument("--copies", type=int, default=10_000)
    parser.add_argument("--rounds", type=int, default=5)
    parser.add_argument("--folder", default=None)
    asked = parser.parse_args()
    ctl = os.path.abspath(os.path.join(asked.build, "tavrolloctl"))
    if not os.access(ctl, os.X_OK) or not shutil.which("rsync"):
        sys.exit("tavrolloctl has to be built, and rsync installed")
    print("load when it begins: %.1f" % os.getloadavg()[0])
    with tempfile.TemporaryDirectory(dir=asked.folder) as folder:
        compare(ctl, folder, asked.files, asked.rounds)
        copy(ctl, folder, asked.copies, asked.rounds)
    print("load when it ends: %.1f" % os.getloadavg()[0])


if __name__ == "__main__":
    main()
