#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Counts how a synchronisation brings its files to the disk: every file before it gets its name, many
at once. Then what becomes of it where the system refuses calls.

usage: flush_calls.py TAVROLLOCTL

Ends with 77 where nothing can be traced.
"""
import os
import re
import shutil
import subprocess
import sys
import tempfile

SKIP = 77


def calls_of_sync(ctl, files, folder_of_files=""):
    """The names of the calls that flush and rename, in their order. The files are in a folder below the
    source that the backup does not have."""
    with tempfile.TemporaryDirectory() as folder:
        top, backup = os.path.join(folder, "source"), os.path.join(folder, "backup")
        source = os.path.join(top, folder_of_files)
        os.makedirs(source)
        os.makedirs(backup)
        for number in range(files):
            with open(os.path.join(source, str(number)), "w", encoding="ascii") as file:
                file.write("x" * number)
        log = os.path.join(folder, "log")
        run = subprocess.run(
            ["strace", "-f", "-o", log, "-e", "trace=fsync,syncfs,rename,renameat,renameat2",
             ctl, "sync", top, backup], capture_output=True, check=False)
        assert run.returncode == 0, run.stderr
        assert len(os.listdir(os.path.join(backup, folder_of_files))) == files
        with open(log, encoding="utf-8", errors="replace") as file:
            return re.findall(r"^\d+ +(\w+)\(", file.read(), re.MULTILINE)


def refuses_what_the_disk_did_not_take(ctl, files):
    """Every flush fails: the old files stay, and nothing else is left."""
    with tempfile.TemporaryDirectory() as folder:
        source, backup = os.path.join(folder, "source"), os.path.join(folder, "backup")
        for side, age in ((source, 1_450_000_000), (backup, 1_400_000_000)):
            os.makedirs(side)
            for number in range(files):
                path = os.path.join(side, str(number))
                with open(path, "w", encoding="ascii") as file:
                    file.write(side)
                os.utime(path, (age, age))
        run = subprocess.run(
            ["strace", "-f", "-o", os.devnull, "-e", "inject=fsync,syncfs:error=EIO",
             ctl, "sync", source, backup], capture_output=True, check=False)
        assert run.returncode == 2, run
        assert run.stderr.decode().endswith(f"0 fichier copié, {files} non copié{'s' * (files > 1)}\n")
        assert len(os.listdir(backup)) == files
        for number in range(files):
            with open(os.path.join(backup, str(number)), encoding="ascii") as file:
                assert file.read() == backup


def new_file_where_calls_fail(ctl, *failing):
    """Whether a new file is copied where these calls fail."""
    with tempfile.TemporaryDirectory() as folder:
        source, backup = os.path.join(folder, "source"), os.path.join(folder, "backup")
        os.makedirs(source)
        os.makedirs(backup)
        with open(os.path.join(source, "a"), "w", encoding="ascii"):
            pass
        injections = [word for call in failing for word in ("-e", "inject=" + call)]
        run = subprocess.run(["strace", "-f", "-o", os.devnull, *injections, ctl, "sync", source, backup],
                             capture_output=True, check=False)
        assert run.returncode == (0 if os.listdir(backup) else 2), run
        return os.listdir(backup) == ["a"]


def main():
    ctl = sys.argv[1]
    if shutil.which("strace") is None or subprocess.run(
            ["strace", "-o", os.devnull, "true"], stderr=subprocess.DEVNULL, check=False).returncode:
        print("nothing can be traced here")
        sys.exit(SKIP)
    one = calls_of_sync(ctl, 1)
    assert one == ["fsync", "renameat2", "fsync"], one

    # The entries of new folders are in folders that no file is in.
    assert calls_of_sync(ctl, 1, "new/deeper") == ["fsync", "renameat2", "syncfs"]

    batches = calls_of_sync(ctl, 520)
    assert batches == (["syncfs"] + ["renameat2"] * 500 + ["syncfs"] * 2 + ["renameat2"] * 20
                       + ["syncfs"]), batches
    for files in (1, 20):
        refuses_what_the_disk_did_not_take(ctl, files)
    # A file system that cannot promise to replace nothing, and one that does not say what stands there.
    assert new_file_where_calls_fail(ctl, "renameat2:error=EINVAL")
    assert not new_file_where_calls_fail(ctl, "renameat2:error=EINVAL", "faccessat2:error=EIO")
    print("520 files: %d flushes" % batches.count("syncfs"))


if __name__ == "__main__":
    main()
