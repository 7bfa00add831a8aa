# SPDX-License-Identifier: GPL-3.0-or-later
"""Kills the program again and again while it writes its files: each of them must be the old one or
the new one, whole. Part of ./test --full."""

import os
import random
import re
import signal
import subprocess
import time
import unittest

import stage as staging
from companion import require_program

ROUNDS = 15
COMMANDS_A_ROUND = 12


class KillLoop(unittest.TestCase):
    def setUp(self):
        self.stage = staging.Stage(staging.build_folder())
        self.stage.__enter__()
        self.addCleanup(self.stage.__exit__)
        self.stage.replace_browser()
        self.companion = self.stage.companion
        self.store = os.path.join(self.stage.desktop.home, "store")
        self.companion.configure(self.store, 20, notifications=0)
        self.count = 0

    def give(self):
        """Writes the next command, every second one a shortcut, the others a page key."""
        self.count += 1
        n = self.count
        value = f"createlink_|_lnkweb://{n}_|_nom {n}_|_{n}" if n % 2 else f"ini_|_clef {n}_|_{n}"
        with open(self.store + ".new", "w", encoding="utf-8") as file:
            file.write(f"xxxxTavr1CodeToExe{value}_e-o-v_" + "x" * 40)
        os.replace(self.store + ".new", self.store)

    def bytes_of(self, *names):
        with open(os.path.join(*names), "rb") as file:
            return file.read()

    def check_files(self):
        folder, scripts = self.companion.folder, self.companion.page_path("res_css/js")
        ctl = require_program(staging.build_folder(), "tavrolloctl")
        for verb, path in (("shortcuts", os.path.join(scripts, "shortQrCode.js")),
                           ("config", os.path.join(folder, "config.cfg"))):
            asked = subprocess.run([ctl, verb, path], capture_output=True, check=False)
            self.assertEqual(asked.returncode, 0, asked.stderr)
        key = self.bytes_of(scripts, "rwCookies.js")
        self.assertRegex(key, rb'^var ps="(clef \d+)?";\r\n')
        self.assertEqual(key.partition(b"\r\n")[2], self.rest_of_script)
        if os.path.exists(os.path.join(scripts, "etat.js")):
            self.assertRegex(self.bytes_of(scripts, "etat.js"), rb"^var tavrolloEtat=\{.*\};\r\n$")
        if os.path.exists(os.path.join(folder, "offsetCookie.dat")):
            self.assertRegex(self.bytes_of(folder, "offsetCookie.dat"), rb"^\d+\r\n$")

    def shortcuts_written(self):
        table = self.bytes_of(self.companion.page_path("res_css/js"), "shortQrCode.js")
        return len(re.findall(rb"nom \d+_\|_web://\d+", table))

    def test_a_killed_program_leaves_whole_files(self):
        chance = random.Random(7)
        self.give()
        self.companion.start()
        self.rest_of_script = self.bytes_of(
            self.companion.page_path("res_css/js"), "rwCookies.js").partition(b"\r\n")[2]
        for _ in range(ROUNDS):
            self.companion.let_it_prime()
            for _ in range(COMMANDS_A_ROUND):
                self.give()
                time.sleep(chance.uniform(0.02, 0.08))
            time.sleep(chance.uniform(0.0, 0.03))
            os.kill(self.companion.process_id, signal.SIGKILL)
            self.stage.desktop.end(self.companion._process)
            self.check_files()
            self.companion.start()
        self.assertGreater(self.shortcuts_written(), ROUNDS)


if __name__ == "__main__":
    staging.main()
