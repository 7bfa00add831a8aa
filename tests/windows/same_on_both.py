#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Checks that the build for Windows does what the build for Linux does.

usage: same_on_both.py LINUX WINDOWS

LINUX and WINDOWS are the two build folders; programs of the second one run under Wine, in the
environment WINDOWS/wine. Compared are: the bytes of config.cfg and shortQrCode.js that both write
from the same settings; what `tavrolloctl cookie` finds in stores that SQLite wrote, some with a log;
what `tavrolloctl compare` and `sync` say about the same folders, and what stands in them then.
The exit status is 1 when something differs.
"""
import os
import pathlib
import shutil
import sqlite3
import subprocess
import sys
import tempfile

SOURCES = pathlib.Path(__file__).resolve().parents[2]
UNDER_WINE = SOURCES / "packaging" / "windows" / "under-wine"
CORPUS = SOURCES / "fuzz" / "corpus" / "fuzz_store_image"
KNOWN = 1_400_000_000


class System:
    """One of the two builds: how its programs are started and how it writes paths."""

    def __init__(self, name, folder):
        self.name = name
        self.folder = folder
        self.windows = name == "windows"

    def path(self, path):
        return "Z:" + str(path).replace("/", "\\") if self.windows else str(path)

    def run(self, program, *arguments):
        """(exit status, standard output, standard error), both as bytes."""
        command = [str(self.folder / program), *arguments]
        if self.windows:
            command[0] += ".exe"
            command = [str(UNDER_WINE), str(self.folder / "wine"), *command]
        done = subprocess.run(command, capture_output=True, stdin=subprocess.DEVNULL, timeout=120,
                              check=False)
        return done.returncode, done.stdout, done.stderr


class Check:
    def __init__(self, systems):
        self.systems = systems
        self.differences = 0
        self.done = 0

    def same(self, what, results):
        self.done += 1
        if results[0] == results[1]:
            return
        self.differences += 1
        print(f"{what} differs:")
        for system, result in zip(self.systems, results):
            print(f"  {system.name}: {result!r}")

    def true(self, what, holds):
        self.done += 1
        if not holds:
            self.differences += 1
            print(f"{what}: not so")


def check_files(check, scratch):
    written = []
    for system in check.systems:
        folder = scratch / ("files-" + system.name)
        folder.mkdir()
        status, _, err = system.run("write_samples", system.path(folder))
        check.true(f"{system.name} writes its files {err!r}", status == 0)
        written.append({each.name: each.read_bytes() for each in sorted(folder.iterdir())})
    check.same("config.cfg or shortQrCode.js", written)
    check.true("both files are there", sorted(written[0]) == ["config.cfg", "shortQrCode.js"])
    for system, files in zip(check.systems, written):
        check.true(f"{system.name} ends its lines with CR LF",
                   all(b"\r\n" in each for each in files.values()))
    verbs = {"config": "config.cfg", "shortcuts": "shortQrCode.js"}
    for verb, name in verbs.items():
        read = [system.run("tavrolloctl", verb,
                           system.path(scratch / ("files-" + system.name) / name))
                for system in check.systems]
        check.same(f"tavrolloctl {verb}", read)
        check.true(f"tavrolloctl {verb} reads it", read[0][0] == 0)


def corpus_stores(scratch):
    """The committed stores, taken apart into store and log."""
    for seed in sorted(CORPUS.iterdir()):
        bytes_ = seed.read_bytes()
        length = int.from_bytes(bytes_[:2], "big")
        store = scratch / seed.name
        store.write_bytes(bytes_[2:2 + length])
        pathlib.Path(str(store) + "-wal").write_bytes(bytes_[2 + length:])
        yield store


def written_store(scratch):
    """A store as a Firefox leaves it: with its last command in the log alone."""
    live = scratch / "live.sqlite"
    database = sqlite3.connect(live)
    database.execute("PRAGMA page_size=32768")
    database.execute("PRAGMA journal_mode=WAL")
    database.execute("CREATE TABLE moz_cookies (id INTEGER PRIMARY KEY, name TEXT, value TEXT,"
                     " host TEXT, path TEXT, UNIQUE (name, host, path))")
    for number in range(500):
        database.execute("INSERT INTO moz_cookies (name, value, host, path) VALUES (?, ?, ?, '/')",
                         (f"other{number}", "x" * 200, f"{number}.example"))
    database.execute("INSERT INTO moz_cookies (name, value, host, path) VALUES"
                     " ('Tavr1CodeToExe', 'runapp_|_first_|__e-o-v_', '', '/nav')")
    database.commit()
    database.execute("PRAGMA wal_checkpoint(TRUNCATE)")
    database.execute("UPDATE moz_cookies SET value = 'runapp_|_../../user_datas/\u00e9t\u00e9.pdf_|__e-o-v_'"
                     " WHERE name = 'Tavr1CodeToExe'")
    database.commit()
    store = scratch / "cookies.sqlite"
    for ending in ("", "-wal"):
        shutil.copyfile(str(live) + ending, str(store) + ending)
    database.close()
    return store


def check_stores(check, scratch):
    found = 0
    for store in [*corpus_stores(scratch), written_store(scratch)]:
        results = [system.run("tavrolloctl", "cookie", system.path(store))
                   for system in check.systems]
        check.same(f"the command in {store.name}", results)
        found += results[0][0] == 0
    check.true(f"commands are found in several stores ({found})", found >= 4)
    check.true("the newest command of the log is the one found",
               "été.pdf".encode() in results[1][1])


def make_folders(top):
    files = {"source/docs/nouveau é.txt": (b"new", 0), "source/plus récent": (b"newer", 100),
             "sauvegarde/plus récent": (b"older", 0), "sauvegarde/日本/restauré": (b"back", 0),
             "source/ancien": (b"stale", 0), "sauvegarde/ancien": (b"fresh", 100),
             "source/presque": (b"same", 0), "sauvegarde/presque": (b"same", 5)}
    for name, (content, later) in files.items():
        file = top / name
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_bytes(content)
        os.utime(file, (KNOWN + later, KNOWN + later))


def stands(top):
    return sorted((str(each.relative_to(top)), each.read_bytes(), int(each.stat().st_mtime))
                  for each in top.rglob("*") if each.is_file())


def check_folders(check, scratch):
    tops = []
    for system in check.systems:
        tops.append(scratch / ("folders-" + system.name))
        make_folders(tops[-1])

    def of_each(*verb):
        results = []
        for system, top in zip(check.systems, tops):
            status, out, err = system.run("tavrolloctl", *verb, system.path(top / "source"),
                                          system.path(top / "sauvegarde"))
            results.append((status, out.replace(b"\\\\", b"/"), err))
        return results

    compared = of_each("compare")
    check.same("tavrolloctl compare", compared)
    check.true("four rows", compared[0][0] == 1 and compared[0][1].count(b"\n") == 4)
    check.same("tavrolloctl sync", of_each("sync"))
    check.same("what stands in the folders", [stands(top) for top in tops])
    check.same("tavrolloctl compare, afterwards", of_each("compare"))
    check.true("nothing is left to do", of_each("compare")[1][:2] == (0, b""))


def main():
    if len(sys.argv) != 3:
        print(__doc__.strip(), file=sys.stderr)
        return 2
    systems = [System(name, pathlib.Path(folder).resolve())
               for name, folder in zip(("linux", "windows"), sys.argv[1:])]
    check = Check(systems)
    with tempfile.TemporaryDirectory(prefix="tavrollo-both-") as folder:
        for part in (check_files, check_stores, check_folders):
            part(check, pathlib.Path(folder))
    print(f"{check.done} comparisons, {check.differences} differences")
    return 1 if check.differences else 0


if __name__ == "__main__":
    sys.exit(main())
