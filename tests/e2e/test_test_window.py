# SPDX-License-Identifier: GPL-3.0-or-later
"""The test window alone, as the program's option --test-window shows it."""

import os
import subprocess
import unittest

import stage as staging
from desktop import wait_for

TITLE = "Tavrollo : Test UTF-8"
FAILURE = "Tavrollo$"
TABLE = ('var FreeId=9\r\nvar tabObj = new Object();\r\n'
         'tabObj["000000003"]="Plan_|_/plan.pdf";\r\nfunction ShortQrCode(myKey){\r\n')


class TestWindow(unittest.TestCase):
    def setUp(self):
        self.stage = staging.Stage(staging.build_folder())
        self.enterContext(self.stage)
        self.desktop, self.companion = self.stage.desktop, self.stage.companion
        self.stage.replace_browser()
        # Not the table that the program folder is filled with.
        self.table = os.path.join(self.desktop.home, "autre.js")
        default = self.companion.page_path("res_css/js/shortQrCode.js")
        path = os.path.join(self.companion.folder, "config.cfg")
        with open(path, "rb") as file:
            settings = file.read()
        with open(path, "wb") as file:
            file.write(settings.replace(os.fsencode(default), os.fsencode(self.table)))

    def start(self):
        return self.desktop.start(self.companion.program, "--program-folder",
                                  self.companion.folder, "--test-window", name="test-window")

    def shown(self, title):
        try:
            return self.desktop.run("xdotool", "search", "--onlyvisible", "--name", "^" + title)
        except subprocess.CalledProcessError:
            return ""

    def test_it_shows_the_configured_table_and_ends_when_it_is_closed(self):
        with open(self.table, "w", encoding="ascii", newline="") as file:
            file.write(TABLE)
        window = self.start()
        self.desktop.press(TITLE, "Escape")
        self.assertEqual(window.wait(timeout=20), 0)
        self.assertEqual(self.desktop.log("test-window"), "")
        # Neither browser nor watching: it was the window alone.
        self.assertEqual(self.stage.recorder.starts("navigateur"), [])
        self.assertFalse(os.path.exists(os.path.join(self.companion.folder, "offsetCookie.dat")))

    def test_a_table_that_is_missing_is_told(self):
        window = self.start()
        wait_for(lambda: self.shown(FAILURE), "the box")
        self.desktop.press(FAILURE, "Return")
        wait_for(lambda: not self.shown(FAILURE), "the box's end")
        self.desktop.press(TITLE, "Escape")
        self.assertEqual(window.wait(timeout=20), 0)


if __name__ == "__main__":
    staging.main()
