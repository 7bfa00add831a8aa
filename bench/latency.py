# SPDX-License-Identifier: GPL-3.0-or-later
"""How long a command takes from the change on the disk to the start of its program.

    /usr/bin/python3 bench/latency.py [--build build/release] [--count 100] [--intervals 200,1000]

The store is one such as Firefox keeps: the same table, 32 KiB pages, a write-ahead log, 3,000 other
cookies. Each command is committed at a random moment between two looks of the program. Every command
must run once and in order; the times themselves are printed, not judged.
"""

import argparse
import os
import random
import sqlite3
import statistics
import subprocess
import sys
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "tests", "e2e"))

from companion import require_program  # noqa: E402
from stage import Stage  # noqa: E402

_TABLE = """CREATE TABLE moz_cookies (id INTEGER PRIMARY KEY, originAttributes TEXT NOT NULL DEFAULT '',
name TEXT, value TEXT, host TEXT, path TEXT, expiry INTEGER, lastAccessed INTEGER,
creationTime INTEGER, isSecure INTEGER, isHttpOnly INTEGER, inBrowserElement INTEGER DEFAULT 0,
sameSite INTEGER DEFAULT 0, schemeMap INTEGER DEFAULT 0, isPartitionedAttributeSet INTEGER DEFAULT 0,
updateTime INTEGER, CONSTRAINT moz_uniqueid UNIQUE (name, host, path, originAttributes))"""


class Store:
    """A cookie store in which one row is written again and again."""

    def __init__(self, path, others):
        self._connection = sqlite3.connect(path, isolation_level=None)
        execute = self._connection.execute
        execute("PRAGMA page_size=32768")
        execute("PRAGMA journal_mode=WAL")
        execute("PRAGMA wal_autocheckpoint=16")
        execute("PRAGMA secure_delete=ON")
        execute(_TABLE)
        execute("BEGIN")
        for number in range(others):
            self._insert(f"id{number}", f"valeur-{number:06d}-" + "v" * 60,
                         f"site{number % 1000}.example")
        execute("COMMIT")

    def _insert(self, name, value, host):
        now = int(time.time())
        self._connection.execute(
            "INSERT OR REPLACE INTO moz_cookies (name, value, host, path, expiry, lastAccessed,"
            " creationTime, isSecure, isHttpOnly, schemeMap, updateTime)"
            " VALUES (?, ?, ?, '/', ?, ?, ?, 0, 0, 4, ?)",
            (name, value, host, (now + 86400) * 1000, now * 10**6, now * 10**6, now * 10**6))

    def give(self, fields):
        """Commits a command; gives the moment at which it stood on the disk."""
        self._connection.execute("BEGIN")
        self._insert("Tavr1CodeToExe", "_|_".join(fields) + "_e-o-v_", "")
        self._connection.execute("COMMIT")
        return time.monotonic()

    def close(self):
        self._connection.close()


def start_cost(stage, program, runs=20):
    """What the recording program itself takes from its start to its note, in seconds (median)."""
    costs = []
    for _ in range(runs):
        already = len(stage.recorder.starts("programme"))
        begin = time.monotonic()
        subprocess.run([program, "mesure"], check=True, stdin=subprocess.DEVNULL)
        costs.append(stage.recorder.starts("programme")[already]["at"] - begin)
    return statistics.median(costs)


def measure(build, interval, count, others):
    """Gives the times of `count` commands in seconds, and the recording program's own share."""
    with Stage(build, interval=interval, notifications=0) as stage:
        stage.replace_browser()
        path = os.path.join(stage.desktop.home, "cookies.sqlite")
        store = Store(path, others)
        stage.companion.configure(path, interval, notifications=0)
        program = stage.program("programme")
        own_share = start_cost(stage, program)
        os.remove(stage.recorder.log)

        stage.companion.start()
        stage.companion.wait_until_watching(store.give)
        chance = random.Random(1)
        written = []
        for number in range(count):
            time.sleep(0.05 + chance.random() * interval / 1000)
            written.append(store.give(["runapp", program, str(number), f"n{number}"]))
            stage.recorder.wait_for_starts(number + 1, "programme")
        store.close()
        stage.companion.stop()
        starts = stage.recorder.starts("programme")
    words = [note["arguments"] for note in starts]
    if words != [[str(number)] for number in range(count)]:
        raise SystemExit(f"not every command ran once and in order: {words}")
    return [note["at"] - moment for note, moment in zip(starts, written)], own_share


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--build", default="build/release")
    parser.add_argument("--count", type=int, default=100)
    parser.add_argument("--intervals", default="200,1000", help="poll intervals in milliseconds")
    parser.add_argument("--others", type=int, default=3000, help="cookies of other sites")
    arguments = parser.parse_args()
    require_program(arguments.build)

    print("change on disk -> started program, in milliseconds")
    print(f"{'interval':>8} {'commands':>8} {'min':>8} {'median':>8} {'max':>8}  "
          "of which the recording program")
    for interval in (int(text) for text in arguments.intervals.split(",")):
        times, own_share = measure(arguments.build, interval, arguments.count, arguments.others)
        values = [f"{1000 * value:8.1f}"
                  for value in (min(times), statistics.median(times), max(times))]
        print(f"{interval:8d} {len(times):8d} {' '.join(values)}  {1000 * own_share:.1f}",
              flush=True)


if __name__ == "__main__":
    main()
