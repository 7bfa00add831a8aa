# SPDX-License-Identifier: GPL-3.0-or-later
"""Browser and program come and go between commands: nothing is lost that was given to both, and
nothing runs twice."""

import time
import unittest

from stage import Stage, build_folder, main


class Restarts(unittest.TestCase):
    def setUp(self):
        self.stage = Stage(build_folder())
        self.enterContext(self.stage)
        self.program = self.stage.program("programme")
        self.expected = []

    def run_program(self, word):
        """Gives a command that starts the program with this word, and sees it arrive once."""
        self.stage.command("runapp", self.program, f'"{word}"')
        self.expected.append(word)
        self.stage.recorder.wait_for_starts(len(self.expected))
        self.assert_nothing_more_ran()

    def assert_nothing_more_ran(self):
        self.assertEqual([note["arguments"][0] for note in self.stage.recorder.starts()],
                         self.expected)

    def test_the_browser_restarts_between_commands(self):
        stage = self.stage
        stage.begin()
        self.run_program("avant")
        for number in range(3):
            stage.firefox.restart()
            stage.open_plain_page()
            self.assert_nothing_more_ran()
            self.run_program(f"ensuite {number}")
        # The same words again, in a store that was emptied in between: a command all the same.
        stage.firefox.restart()
        stage.open_plain_page()
        self.run_program("ensuite 2")

    def test_a_leftover_command_is_not_run_at_start(self):
        stage = self.stage
        stage.begin()
        self.run_program("premier")
        for number in range(2):
            # One that was run already stands in the store.
            self.assertEqual(stage.companion.stop(), 0)
            self.start_and_let_it_prime()
            self.assert_nothing_more_ran()
            self.run_program(f"suivant {number}")

        # One that nobody has heard yet stands in the store.
        self.assertEqual(stage.companion.stop(), 0)
        stage.send(["runapp", self.program, "jamais", "perdu"])
        self.wait_for_store("jamais")
        self.start_and_let_it_prime()
        self.assert_nothing_more_ran()
        self.run_program("dernier")
        self.assertEqual(stage.companion.stop(), 0)
        self.assert_nothing_more_ran()

    def start_and_let_it_prime(self):
        self.stage.companion.start()
        self.stage.firefox.page.wait_for_tab("start.html")
        self.stage.open_plain_page()
        self.stage.companion.let_it_prime()

    def wait_for_store(self, word):
        """Waits until the browser has written a value with this word to its disk."""
        deadline = time.monotonic() + 10
        while time.monotonic() < deadline:
            for path in (self.stage.firefox.store + "-wal", self.stage.firefox.store):
                with open(path, "rb") as file:
                    if word.encode("utf-8") in file.read():
                        return
            time.sleep(0.1)
        self.fail(f"{word} never reached the store")

    def test_both_restart_at_once(self):
        stage = self.stage
        stage.begin()
        self.run_program("un")
        self.assertEqual(stage.companion.stop(), 0)
        stage.firefox.stop()
        stage.begin()
        self.assert_nothing_more_ran()
        self.run_program("deux")

    def test_the_program_outlives_the_browser(self):
        stage = self.stage
        stage.begin()
        self.run_program("un")
        stage.firefox.stop()
        # Several looks at a store whose browser is gone.
        time.sleep(2.0)
        self.assertTrue(stage.companion.running)
        self.assert_nothing_more_ran()
        stage.firefox.start()
        stage.open_plain_page()
        self.run_program("deux")


if __name__ == "__main__":
    main()
