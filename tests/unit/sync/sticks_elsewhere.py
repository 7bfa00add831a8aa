#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""The tests of sticks in a kernel that has the driver for FAT and lets everybody mount.

usage: sticks_elsewhere.py TEST_PROGRAM

Many kernels have no such driver, and an ordinary user may mount no image anywhere; Linux as a program
(package user-mode-linux, and kmod for its modules) has the one and allows the other. It sees this
machine's files, and its own temporary ones are in its memory. Ends with 77 where it is not installed or
cannot begin."""

import os
import shutil
import signal
import subprocess
import sys
import tempfile

SECONDS = 600  # two or three, on a machine with nothing else to do
MODULES = "/usr/lib/uml/modules"
FILTER = "*SyncSticks*/vfat" + (":*SyncClones*" if os.geteuid() else "")
INIT = """#!/bin/sh
export PATH=/usr/sbin:/usr/bin:/sbin:/bin
mount -t proc proc /proc
mount -t sysfs sys /sys
mount -t devtmpfs dev /dev
mount -t hostfs -o '{folder}' host '{folder}'
echo begun >'{folder}/begun'
mount -t tmpfs tmp /mnt
modprobe -d '{folder}' -a loop vfat nls_cp437 nls_iso8859-1
TMPDIR=/mnt '{program}' '--gtest_filter={filter}' >'{folder}/output' 2>&1
echo $? >'{folder}/status'
echo o >/proc/sysrq-trigger
sleep 60
"""


def read(folder, name):
    path = os.path.join(folder, name)
    if not os.path.exists(path):
        return ""
    with open(path, encoding="utf-8", errors="replace") as file:
        return file.read()


def main():
    search = os.environ.get("PATH", "") + ":/usr/sbin:/sbin"
    linux = shutil.which("linux.uml", path=search)
    if not linux or not shutil.which("modprobe", path=search):
        print("user-mode-linux or kmod is not installed")
        sys.exit(77)
    program = os.path.abspath(sys.argv[1])
    with tempfile.TemporaryDirectory() as folder:
        os.mkdir(os.path.join(folder, "lib"))
        os.symlink(MODULES, os.path.join(folder, "lib", "modules"))
        init = os.path.join(folder, "init")
        with open(init, "w", encoding="utf-8") as file:
            file.write(INIT.format(folder=folder, program=program, filter=FILTER))
        os.chmod(init, 0o755)
        process = subprocess.Popen(
            [linux, "mem=512M", "rootfstype=hostfs", "rootflags=/", "ro", "init=" + init,
             "uml_dir=" + folder, "con=null", "con0=null,fd:1", "quiet"],
            stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
            start_new_session=True)
        try:
            said, _ = process.communicate(timeout=SECONDS)
        except subprocess.TimeoutExpired:
            os.killpg(process.pid, signal.SIGKILL)  # it is several processes
            raise
        if not read(folder, "begun"):
            print("it did not begin here:", said.decode(errors="replace")[-500:])
            sys.exit(77)
        output = read(folder, "output")
        print(output)
        whole = read(folder, "status").strip() == "0" and "SyncSticks.CopiesAre" in output
        sys.exit(0 if whole and "SKIPPED" not in output else 1)


if __name__ == "__main__":
    main()
