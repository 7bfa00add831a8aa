#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Comparing and copying folders beside rsync, find and cp, in one run.

    /usr/bin/python3 bench/folders.py [--build build/release] [--files 100000] [--copies 10000]
                                      [--large 1024] [--rounds 5] [--folder /tmp]

compare: two equal trees of --files files in 1000 folders, both in memory (read once before), tavrolloctl
compare against rsync -an and against find, which only lists them. copy: a tree of --copies files of
2 KiB into an empty folder, tavrolloctl sync against rsync -a; rsync does not flush, so a run of it with
a sync behind it is measured too. large: one file of --large MiB against cp, in the same two ways. The
programs take turns, and another one begins each round. Times and the most memory that each used (never
less than this script does) are printed, not judged."""

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


def run(command, expected=0):
    """The seconds that it took, and its most memory (that of its largest process) in MiB. It is to
    end with the status `expected`."""
    with tempfile.TemporaryFile() as errors:
        begin = time.monotonic()
        process = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=errors)
        _, status, used = os.wait4(process.pid, 0)
        seconds = time.monotonic() - begin
        process.returncode = os.waitstatus_to_exitcode(status)
        if process.returncode != expected:
            errors.seek(0)
            sys.exit(f"{command}: {errors.read().decode(errors='replace')}")
    return seconds, used.ru_maxrss / 1024


def take_turns(commands, rounds, before=lambda: None, after=lambda: None):
    """Runs each command in each round and prints what it took. The first round warms up."""
    results = {name: [] for name in commands}
    names = list(commands)
    for number in range(rounds + 1):
        for name in names:
            before()
            result = run(commands[name])
            if number:
                results[name].append(result)
            after()
        names = names[1:] + names[:1]
    for name in commands:
        times = [seconds for seconds, _ in results[name]]
        print(f"  {name:<28} median {statistics.median(times):6.2f} s   min {min(times):6.2f}   "
              f"max {max(times):6.2f}   {max(memory for _, memory in results[name]):6.0f} MiB")


def compare(ctl, folder, files, rounds):
    print(f"compare 2 x {files} files")
    one, two = os.path.join(folder, "one"), os.path.join(folder, "two")
    build_tree(one, files, b"x")
    subprocess.run(["cp", "-a", one, two], check=True)
    take_turns({"tavrolloctl compare": [ctl, "compare", one, two],
                "rsync -an": ["rsync", "-an", one + "/", two + "/"],
                "find": ["find", one, two, "-printf", "%P %T@ %s\\n"]}, rounds)
    shutil.rmtree(one)
    shutil.rmtree(two)


def copy(ctl, folder, what, source, plain, rounds):
    """tavrolloctl sync against the command `plain`, which gets the source and the target."""
    print(what)
    target = os.path.join(folder, "target")

    def empty_target():
        os.makedirs(target)
        subprocess.run(["sync", "-f", folder], check=True)  # what others wrote is not ours

    words = " ".join(plain[:2])
    flushed = ["sh", "-c", '"$@" && sync -f "$0"', target, *plain, source + "/.", target]
    take_turns({"tavrolloctl sync (flushed)": [ctl, "sync", source, target],
                words + "; sync -f": flushed,
                words + " (not flushed)": [*plain, source + "/.", target]},
               rounds, empty_target, lambda: shutil.rmtree(target))
    shutil.rmtree(source)


def copy_small(ctl, folder, files, rounds):
    source = os.path.join(folder, "source")
    build_tree(source, files, b"x" * 2048)
    copy(ctl, folder, f"copy {files} files of 2 KiB", source, ["rsync", "-a"], rounds)


def copy_large(ctl, folder, megabytes, rounds):
    source = os.path.join(folder, "source")
    os.makedirs(source)
    with open(os.path.join(source, "large"), "wb") as file:
        for _ in range(megabytes):
            file.write(os.urandom(1024 * 1024))
    copy(ctl, folder, f"copy one file of {megabytes} MiB", source, ["cp", "-a"], rounds)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--build", default="build/release")
    parser.add_argument("--files", type=int, default=100_000)
    parser.add_argument("--copies", type=int, default=10_000)
    parser.add_argument("--large", type=int, default=1024)
    parser.add_argument("--rounds", type=int, default=5)
    parser.add_argument("--folder", default=None)
    asked = parser.parse_args()
    ctl = os.path.abspath(os.path.join(asked.build, "tavrolloctl"))
    if not os.access(ctl, os.X_OK) or not shutil.which("rsync"):
        sys.exit("tavrolloctl has to be built, and rsync installed")
    print("load when it begins: %.1f" % os.getloadavg()[0])
    with tempfile.TemporaryDirectory(dir=asked.folder) as folder:
        compare(ctl, folder, asked.files, asked.rounds)
        copy_small(ctl, folder, asked.copies, asked.rounds)
        copy_large(ctl, folder, asked.large, asked.rounds)
    print("load when it ends: %.1f" % os.getloadavg()[0])


if __name__ == "__main__":
    main()
