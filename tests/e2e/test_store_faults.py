# SPDX-License-Identifier: GPL-3.0-or-later
"""The watched store goes through everything that can happen to a file; the program goes on, says so
in its trace, and takes the next command from the next good store."""

import os
import random
import shutil
import stat
import unittest

from desktop import wait_for
from stage import Stage, build_folder, cookie_text, main

_NOTHING = "CookieValue est nul"
# Firefox writes its log into the main file at every eighth command; the copies are taken before.
_COPIES_PER_SESSION = 6


class StoreFaults(unittest.TestCase):
    def setUp(self):
        self.stage = Stage(build_folder())
        self.enterContext(self.stage)
        self.program = self.stage.program("programme")
        self.store = os.path.join(self.stage.desktop.home, "magasin", "cookies.sqlite")
        self.copies = os.path.join(self.stage.desktop.home, "copies")
        os.makedirs(os.path.dirname(self.store))
        os.makedirs(self.copies)
        self.expected = []
        self.stage.replace_browser()

    # Good stores, each made by a real Firefox and holding a command of its own.

    def make_stores(self, count):
        """Copies of a living store with its log, taken between commands."""
        page_file = os.path.join(self.stage.desktop.home, "page.html")
        with open(page_file, "w", encoding="utf-8") as file:
            file.write("<!DOCTYPE html><title>Page</title>\n")
        firefox = self.stage.firefox
        for number in range(count):
            if number % _COPIES_PER_SESSION == 0:
                firefox.restart()
                firefox.page.navigate("file://" + page_file)
            word = f"mot{number}"
            firefox.page.set_cookie_text(cookie_text(["runapp", self.program, word, f"n{number}"]))
            wait_for(lambda: word.encode("ascii") in self.read(firefox.store + "-wal"),
                     f"{word} in Firefox's log")
            folder = self.copy_folder(number)
            os.makedirs(folder)
            for ending in ("", "-wal"):
                shutil.copyfile(firefox.store + ending, os.path.join(folder, "store" + ending))
        firefox.stop()

    def copy_folder(self, number):
        return os.path.join(self.copies, str(number))

    @staticmethod
    def read(path):
        try:
            with open(path, "rb") as file:
                return file.read()
        except FileNotFoundError:
            return b""

    # What stands where the program looks.

    def remove_store(self):
        for path in (self.store + "-wal", self.store):
            if os.path.islink(path):
                os.remove(path)
            elif os.path.isdir(path):
                os.rmdir(path)
            elif os.path.lexists(path):
                os.chmod(path, stat.S_IRWXU)
                os.remove(path)

    def put(self, number):
        """The good store of that number, its log first: without it the store holds no command."""
        self.remove_store()
        for ending in ("-wal", ""):
            shutil.copyfile(os.path.join(self.copy_folder(number), "store" + ending),
                            self.store + ending)

    def write(self, content, ending=""):
        with open(self.store + ending, "wb") as file:
            file.write(content)

    def expect_command(self, number):
        """The command of that store runs, once."""
        self.expected.append(f"mot{number}")
        self.stage.recorder.wait_for_starts(len(self.expected), "programme")
        self.assertEqual(self.words(), self.expected)

    def words(self):
        return [note["arguments"][0] for note in self.stage.recorder.starts("programme")]

    def expect_trace(self, text, fault, already):
        """A further line of this text comes; the program lives, and nothing runs."""
        try:
            self.stage.companion.wait_for_trace(text, already + 1)
        except TimeoutError as error:
            self.fail(f"{fault}: {error}")
        self.assertTrue(self.stage.companion.running, fault)
        self.assertEqual(self.words(), self.expected, fault)

    # The faults.

    def missing(self):
        self.remove_store()

    def empty(self):
        self.remove_store()
        self.write(b"")

    def cut_short(self):
        content = self.read(self.store)
        self.remove_store()
        self.write(content[:20000])

    def log_of_no_bytes(self):
        self.write(b"", "-wal")

    def log_cut_in_its_header(self):
        self.write(self.read(self.store + "-wal")[:17], "-wal")

    def log_of_noise(self):
        self.write(random.Random(7).randbytes(70000), "-wal")

    def unreadable(self):
        os.remove(self.store + "-wal")
        os.chmod(self.store, 0)

    def noise(self):
        self.remove_store()
        self.write(random.Random(8).randbytes(3000000))

    def noise_behind_a_good_header(self):
        content = self.read(self.store)
        self.remove_store()
        self.write(content[:100] + random.Random(9).randbytes(len(content) - 100))

    def two_gibibytes_of_nothing(self):
        self.remove_store()
        with open(self.store, "wb") as file:
            file.truncate(2 << 30)

    def a_folder(self):
        self.remove_store()
        os.mkdir(self.store)

    def a_pipe(self):
        self.remove_store()
        os.mkfifo(self.store)

    def a_link_to_itself(self):
        self.remove_store()
        os.symlink(self.store, self.store)

    def all_faults(self):
        faults = [self.missing, self.empty, self.cut_short, self.log_of_no_bytes,
                  self.log_cut_in_its_header, self.log_of_noise, self.noise,
                  self.noise_behind_a_good_header, self.two_gibibytes_of_nothing, self.a_folder,
                  self.a_pipe, self.a_link_to_itself]
        if os.geteuid() == 0:
            print("(an unreadable store: not tried, root may read everything)", flush=True)
        else:
            faults.append(self.unreadable)
        return faults

    def test_every_fault_is_traced_and_the_next_good_store_is_heard(self):
        faults = self.all_faults()
        self.make_stores(len(faults) + 1)
        self.put(0)
        self.stage.companion.configure(self.store)
        self.stage.start_companion_alone()

        # Store 0 holds the leftover of the start; from store 1 on each command is new.
        for number, fault in enumerate(faults, 1):
            trace = self.stage.companion.trace()
            with self.subTest(fault.__name__):
                fault()
                self.expect_trace(_NOTHING, fault.__name__, trace.count(_NOTHING))
                self.put(number)
                self.expect_command(number)
        self.assertEqual(self.stage.companion.stop(), 0)
        self.assertEqual(self.words(), self.expected)

    def test_a_log_cut_in_its_last_frame_holds_the_command_before(self):
        self.make_stores(3)
        self.put(0)
        self.stage.companion.configure(self.store)
        self.stage.start_companion_alone()
        # Primed with store 0; store 1 is the first command.
        trace = self.stage.companion.trace
        self.write(b"", "-wal")
        self.expect_trace(_NOTHING, "no log", trace().count(_NOTHING))
        self.put(1)
        self.expect_command(1)

        # The newest command's last frame is not all there: what counts is the commit before it,
        # which was handled. The whole log then brings the newest.
        whole = self.read(os.path.join(self.copy_folder(2), "store-wal"))
        self.write(whole[:-100], "-wal")
        lines = trace().count("cookie trouvé")
        self.stage.companion.wait_for_quiet_looks()
        self.assertEqual(trace().count("cookie trouvé"), lines)
        self.write(whole, "-wal")
        self.expect_command(2)


if __name__ == "__main__":
    main()
