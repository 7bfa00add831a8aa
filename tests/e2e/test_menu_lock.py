# SPDX-License-Identifier: GPL-3.0-or-later
"""Pages lock and unlock the menu's administration entries, while it is closed and while it is open.

Keys pass over what cannot be chosen: what they lead to tells which entries in front of it can be."""

import os
import subprocess
import time
import unittest

from desktop import wait_for
from stage import Stage, build_folder, main

_SPLASH_WIDTH = 400  # at least; menu, icon and notice are narrower
_TRAY = 14  # pixels from the screen's corner to the icon's middle

# How many steps down lead to which page. Locked, quit, help and the pupil's page are left: no other
# number of entries has help at the fifth step. Unlocked there are five more, two of them in front.
_LOCKED = (5, "aide.html")
_UNLOCKED = (4, "aide.html"), (8, "index.html")


class MenuLock(unittest.TestCase):
    def setUp(self):
        self.stage = Stage(build_folder(), notifications=0)
        self.enterContext(self.stage)
        self.stage.begin()
        self.stage.replace_browser()  # from now on pages are not shown, but noted
        folders = self.stage.program("dossiers")
        self.stage.desktop.register("dossiers", folders + " %f", "inode/directory")
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

    def started(self, role, *keys):
        """Presses keys in the open menu, then Return; the arguments of what is started as `role`."""
        already = len(self.stage.recorder.starts(role))
        self.xdotool("key", *keys, "Return")
        return self.stage.recorder.wait_for_starts(already + 1, role)[-1]["arguments"]

    def assert_leads_to(self, steps, page, when, while_open=lambda: None):
        """Opens the menu, does something behind it, and chooses the entry that many steps down."""
        self.open_menu()
        while_open()
        opened = self.started("navigateur", *["Down"] * steps)[0].rpartition("/")[2]
        self.assertEqual(opened, page, when)

    def assert_each_entry_answers(self):
        """The five entries that a lock closes, unlocked now, each do what they are for."""
        self.open_menu()
        self.assertEqual(self.started("notepad", "Down", "Right", "Down", "Down"), [])
        with open(os.path.join(self.stage.companion.folder, "lanceurs.cfg"), "wb") as file:
            file.write(f"notepad={self.stage.program('autre')} 'a b'\n".encode("utf-8"))
        self.open_menu()
        self.assertEqual(self.started("autre", "Down", "Right", "Down", "Down"), ["a b"])
        self.open_menu()
        self.assertEqual(self.started("dossiers", *["Down"] * 6),
                         [self.stage.companion.page_path("user_datas")])
        for title, keys in (("QrCode : Contacter", ("Down", "Down", "Right", "Down")),
                            ("Tavrollo : Synchronisation", ("Down",) * 5)):
            self.open_menu()
            self.xdotool("key", *keys, "Return")
            self.stage.desktop.press(title, "Escape")
            wait_for(lambda: f'"{title}' not in self.stage.desktop.windows(), f"{title}'s end")
        self.open_menu()
        self.assertTrue(self.started("navigateur", "Up")[0].endswith("/index.html"))

    def test_pages_lock_and_unlock_the_closed_and_the_open_menu(self):
        command = self.stage.command
        self.assert_leads_to(*_LOCKED, "locked at the start")
        command("lzck", "false")
        self.assert_each_entry_answers()
        command("lzck", "true")
        self.assert_leads_to(*_LOCKED, "locked while closed")

        for unlock, unlocked in zip((["ini", "sésame"], ["lzck", "false"]), _UNLOCKED):
            self.assert_leads_to(*unlocked, f"unlocked by {unlock} while open",
                                 lambda words=unlock: command(*words))
            self.assert_leads_to(*_LOCKED, "locked while open", lambda: command("lzck", "true"))


if __name__ == "__main__":
    main()
