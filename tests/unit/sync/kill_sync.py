#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Kills a synchronisation again and again at any moment: each target must be the old file or the new
one, whole, and the next run must leave nothing of the killed one.

usage: kill_sync.py TAVROLLOCTL [ROUNDS]
"""
import os
import random
import signal
import subprocess
import sys
import tempfile
import time

FILES = 5000
# A kill leaves what the system keeps in memory, wherever that goes in the end: no disk is waited for.
PLACE = "/dev/shm" if os.access("/dev/shm", os.W_OK) else None
LARGE = 40  # every so many files one that takes a while
OLD_TIME, NEW_TIME = 1_400_000_000, 1_450_000_000


def content(name, age):
    times = 20_000 if sum(name.encode()) % LARGE == 0 else 20
    return f"{age} {name} ".encode() * times


def write(path, data, modified):
    with open(path, "wb") as file:
        file.write(data)
    os.utime(path, (modified, modified))


def fill(source, backup):
    """The new files are on either side by turns, and half of them have an old partner on the other."""
    names = [f"d{i % 50}/f{i}" for i in range(FILES)]
    for side in (source, backup):
        for folder in {os.path.dirname(name) for name in names}:
            os.makedirs(os.path.join(side, folder))
    for i, name in enumerate(names):
        new, old = (source, backup) if i % 4 < 2 else (backup, source)
        write(os.path.join(new, name), content(name, "new"), NEW_TIME)
        if i % 2:
            write(os.path.join(old, name), content(name, "old"), OLD_TIME)
    return names


def hidden(folder):
    return [name for _, _, names in os.walk(folder) for name in names if name.startswith(".")]


def check(source, backup, names):
    """How many copies are in place; fails when a file of either side is neither old nor new."""
    copied = 0
    for i, name in enumerate(names):
        new, old = (source, backup) if i % 4 < 2 else (backup, source)
        with open(os.path.join(new, name), "rb") as file:
            assert file.read() == content(name, "new"), f"{name}: what was copied is another file"
        path = os.path.join(old, name)
        if not os.path.exists(path):
            assert i % 2 == 0, f"{name}: the old file is gone"
            continue
        with open(path, "rb") as file:
            data = file.read()
        if data == content(name, "new"):
            assert int(os.stat(path).st_mtime) == NEW_TIME, f"{name}: not the time of its source"
            copied += 1
        else:
            assert i % 2 and data == content(name, "old"), f"{name}: neither the old nor the new file"
    return copied


def whole_run(ctl):
    with tempfile.TemporaryDirectory(dir=PLACE) as folder:
        source, backup = os.path.join(folder, "source"), os.path.join(folder, "backup")
        fill(source, backup)
        begin = time.monotonic()
        subprocess.run([ctl, "sync", source, backup], check=True, capture_output=True)
        return time.monotonic() - begin


def killed_run(ctl, delay):
    """Whether the kill came in the middle of the work."""
    with tempfile.TemporaryDirectory(dir=PLACE) as folder:
        source, backup = os.path.join(folder, "source"), os.path.join(folder, "backup")
        names = fill(source, backup)
        process = subprocess.Popen([ctl, "sync", source, backup], stdout=subprocess.DEVNULL,
                                   stderr=subprocess.DEVNULL)
        time.sleep(delay)
        process.send_signal(signal.SIGKILL)
        process.wait()
        left = hidden(folder)
        copied = check(source, backup, names)

        again = subprocess.run([ctl, "sync", source, backup], check=False, capture_output=True)
        assert again.returncode == 0, again.stderr
        assert not hidden(folder), "something of the killed run is left"
        assert check(source, backup, names) == FILES
        return bool(left) or 0 < copied < FILES


def main():
    ctl, rounds = sys.argv[1], int(sys.argv[2]) if len(sys.argv) > 2 else 10
    chance = random.Random(11)
    length = whole_run(ctl)
    # However fast the machine is today, some kills have to come in the middle.
    hits = tries = 0
    while tries < rounds or (hits < max(1, rounds // 4) and tries < 6 * rounds):
        tries += 1
        hits += killed_run(ctl, chance.uniform(0.1, 0.9) * length)
    print(f"{tries} killed runs, {hits} of them in the middle; a whole one takes {length:.2f} s")
    assert hits >= max(1, rounds // 4), "no kill came in the middle"


if __name__ == "__main__":
    main()
