# SPDX-License-Identifier: GPL-3.0-or-later
"""A second start while the program runs: the question, and the relaunch by the program beside it."""

import os
import unittest

import stage as staging
from desktop import wait_for

TITLE = "Tavrollo : Lancements multiples"


def instances_of(folder):
    """The processes of the program that run on a program folder."""
    found = []
    for name in os.listdir("/proc"):
        if not name.isdigit():
            continue
        try:
            with open(f"/proc/{name}/cmdline", "rb") as file:
                words = file.read().split(b"\0")
        except OSError:
            continue  # it has ended meanwhile
        if os.path.basename(words[0]) == b"tavrollo" and os.fsencode(folder) in words:
            found.append(int(name))
    return sorted(found)


class Relaunch(unittest.TestCase):
    def setUp(self):
        self.stage = staging.Stage(staging.build_folder())
        self.stage.__enter__()
        self.addCleanup(self.stage.__exit__)
        self.stage.replace_browser()
        store = os.path.join(self.stage.desktop.home, "store")
        with open(store, "wb") as file:
            file.write(b"no command here")
        self.stage.companion.configure(store)
        self.stage.start_companion_alone()
        self.first = self.stage.companion.process_id

    def second_start(self):
        desktop = self.stage.desktop
        self.second = desktop.start(self.stage.companion.program, "--program-folder",
                                    self.stage.companion.folder, name="second")

    def instances(self):
        return instances_of(self.stage.companion.folder)

    def test_no_ends_the_second_one_alone(self):
        self.second_start()
        self.stage.desktop.press(TITLE, "Right", "Return")
        self.assertEqual(self.second.wait(timeout=20), 0)
        self.assertEqual(self.instances(), [self.first])
        self.assertTrue(self.stage.companion.running)

    def test_yes_ends_the_running_one_and_starts_the_program_again(self):
        self.second_start()
        self.stage.desktop.press(TITLE, "Return")
        self.assertEqual(self.second.wait(timeout=20), 0)
        wait_for(lambda: not self.stage.companion.running, "the end of the running instance")
        wait_for(lambda: len(self.instances()) == 1, "the program that was started again")
        self.assertNotIn(self.first, self.instances())
        # It started as a whole: the start page of the relaunched program was opened too.
        self.stage.recorder.wait_for_starts(2, "navigateur")


if __name__ == "__main__":
    staging.main()
