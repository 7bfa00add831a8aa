#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""What the program costs while it runs: time from its start to the icon in the tray, resident
memory, and the processor time of idle ticks, on a store that holds a command.

    /usr/bin/python3 bench/resident.py [--build build/release] [--starts 5] [--seconds 60]

The times are printed, not judged. The icon is looked for every few milliseconds by another process,
which adds that much."""

import argparse
import os
import re
import statistics
import sys
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "tests", "e2e"))

from companion import require_program  # noqa: E402
from stage import Stage  # noqa: E402

_TICKS = os.sysconf("SC_CLK_TCK")


def icon_stands(desktop):
    """True when a window of the program lies in the tray's panel."""
    tree = desktop.run("xwininfo", "-root", "-tree")
    inside = tree[tree.find('"panel"'):]
    return re.search(r'"[Tt]avrollo".* \d+x\d+', inside.split('\n     0x', 1)[0]) is not None


def time_to_icon(stage):
    begin = time.monotonic()
    stage.companion.start(wait=False)
    while not icon_stands(stage.desktop):
        if time.monotonic() - begin > 20:
            raise RuntimeError("no icon in the tray:\n" + stage.desktop.windows())
    return time.monotonic() - begin


def processor_seconds(process):
    with open(f"/proc/{process}/stat", encoding="ascii") as file:
        fields = file.read().rpartition(")")[2].split()
    return (int(fields[11]) + int(fields[12])) / _TICKS


def status(process, key):
    with open(f"/proc/{process}/status", encoding="ascii") as file:
        return int(re.search(rf"^{key}:\s+(\d+)", file.read(), re.MULTILINE).group(1))


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--build", default="build/release")
    parser.add_argument("--starts", type=int, default=5)
    parser.add_argument("--seconds", type=int, default=60)
    asked = parser.parse_args()
    require_program(asked.build)

    with Stage(asked.build, interval=1000) as stage:
        stage.replace_browser()
        store = os.path.join(stage.desktop.home, "store")
        with open(store, "wb") as file:
            file.write(b"xxxxTavr1CodeToExelzck_|_true_|_1_e-o-v_" + b"x" * 1000)
        stage.companion.configure(store, 1000)

        times = []
        for _ in range(asked.starts + 1):  # the first one fills the folder and warms the disk
            times.append(time_to_icon(stage))
            time.sleep(1)
            stage.companion.stop()
        warm = times[1:]
        print("start -> tray icon: min %.0f ms, median %.0f ms, max %.0f ms (%d warm starts)"
              % (min(warm) * 1000, statistics.median(warm) * 1000, max(warm) * 1000, len(warm)))

        stage.companion.start()
        time.sleep(12)  # splash and first search are over
        process = stage.companion.process_id
        before, switches = processor_seconds(process), status(process, "voluntary_ctxt_switches")
        time.sleep(asked.seconds)
        used = processor_seconds(process) - before
        woken = status(process, "voluntary_ctxt_switches") - switches
        print("resident memory: %.1f MiB" % (status(process, "VmRSS") / 1024))
        print("idle at an interval of 1000 ms: %.3f %% of one processor, %.0f wake-ups a minute"
              % (100 * used / asked.seconds, woken * 60 / asked.seconds))


if __name__ == "__main__":
    main()
