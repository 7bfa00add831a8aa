# SPDX-License-Identifier: GPL-3.0-or-later
"""Programs that do nothing but note that, when and with what they were started."""

import json
import os
import stat

from desktop import wait_for

# The note is one write to a file opened for appending: two programs that start together cannot
# mix their lines. -I and -S keep the interpreter's own start short.
_PROGRAM = """#!/usr/bin/python3 -IS
import json, os, sys, time
note = {{"at": time.monotonic(), "as": {role!r}, "arguments": sys.argv[1:], "folder": os.getcwd()}}
log = os.open({log!r}, os.O_WRONLY | os.O_APPEND | os.O_CREAT, 0o600)
os.write(log, (json.dumps(note) + "\\n").encode("ascii"))
"""


class Recorder:
    """Makes recording programs and reads what they noted."""

    def __init__(self, folder):
        self.log = os.path.join(folder, "started.jsonl")

    def make_program(self, path, role):
        """Writes a program that notes each of its starts under the name `role`."""
        with open(path, "w", encoding="utf-8") as file:
            file.write(_PROGRAM.format(role=role, log=self.log))
        os.chmod(path, stat.S_IRWXU)
        return path

    def starts(self, role=None):
        """All starts so far, oldest first: at (s), as, arguments, folder."""
        try:
            with open(self.log, encoding="ascii") as file:
                text = file.read()
        except FileNotFoundError:
            return []
        # A line that is still being written has no end yet.
        lines = text.split("\n")[:-1]
        notes = [json.loads(line) for line in lines]
        return [note for note in notes if role in (None, note["as"])]

    def wait_for_starts(self, count, role=None, timeout=20.0):
        """Waits until there were at least `count` starts and gives all of them."""
        wait_for(lambda: len(self.starts(role)) >= count,
                 f"{count} starts{' of ' + role if role else ''} ({self.log})", timeout)
        return self.starts(role)
