# SPDX-License-Identifier: GPL-3.0-or-later
"""A page locks and unlocks the menu's administration entries, while it is closed and while it is
open. What the last entry that can be chosen opens tells which one it is: the pupil's page where the
teacher's is locked."""

import subprocess
import time
import unittest

from desktop import wait_for
from stage import Stage, build_folder, main

_SPLASH_WIDTH = 400  # at least; menu, icon and notice are narrower
_TRAY = 14  # pixels from the screen's corner to the icon's middle


class MenuLock(unittest.TestCase):
    def setUp(self):
        self.stage = Stage(build_folder(), notifications=0)
        self.enterContext(self.stage)
        self.stage.begin()
        self.stage.replace_browser()  # from now on pages are not shown, but noted
        # A window that comes or goes would close the menu.
        wait_for(self.splash_is_gone, "the splash's end")

    def xdotool(self, *words):
        return self.stage.desktop.run("xdotool", *words)

    def widths(self):
        """How wide the program's windows on the screen are, menus among them."""
        def asked():
            try:
                windows = self.xdotool("search", "--onlyvisible", "--class", "tavrollo").split()
                shapes = [self.xdotool("getwindowgeometry", "--shell", each) for each in windows]
            except subprocess.CalledProcessError:  # one went while it was asked
                return None
            return [int(line[len("WIDTH="):]) for shape in shapes for line in shape.splitlines()
                    if line.startswith("WIDTH=")]
        return wait_for(asked, "the program's windows")  # the icon is always there

    def splash_is_gone(self):
        for _ in range(20):  # two seconds without one
            if max(self.widths()) >= _SPLASH_WIDTH:
                return False
            time.sleep(0.1)
        return True

    def open_menu(self):
        before = len(self.widths())
        width, height = (int(n) for n in self.xdotool("getdisplaygeometry").split())

        def opened():  # a panel may miss a click that follows another
            self.xdotool("mousemove", str(width - _TRAY), str(height - _TRAY), "click", "1")
            try:
                return wait_for(lambda: len(self.widths()) > before, "the menu", 3)
            except TimeoutError:
                return False
        wait_for(opened, "the menu")

    def choose_last(self):
        """Chooses the last entry that can be; gives the name of the page that it opens."""
        already = len(self.stage.recorder.starts("navigateur"))
        self.xdotool("key", "Up", "Return")
        starts = self.stage.recorder.wait_for_starts(already + 1, "navigateur")
        return starts[-1]["arguments"][0].rpartition("/")[2]

    def test_pages_lock_and_unlock_the_closed_and_the_open_menu(self):
        self.open_menu()
        self.assertEqual(self.choose_last(), "eleve.html", "locked at the start")

        self.stage.command("lzck", "false")
        self.open_menu()
        self.assertEqual(self.choose_last(), "index.html", "unlocked while closed")

        self.open_menu()
        self.stage.command("lzck", "true")
        self.assertEqual(self.choose_last(), "eleve.html", "locked while open")

        self.open_menu()
        self.stage.command("ini", "sésame")
        self.assertEqual(self.choose_last(), "index.html", "unlocked by the key while open")


if __name__ == "__main__":
    main()
