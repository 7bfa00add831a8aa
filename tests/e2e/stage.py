# SPDX-License-Identifier: GPL-3.0-or-later
"""What every test here needs together: a desktop, a Firefox, Tavrollo, and what they started."""

import argparse
import os
import sys
import unittest

from companion import Companion, cookie_text, require_program
from desktop import Desktop
from firefox import Firefox
from recorder import Recorder

# A document of each kind, with content by which the desktop knows its type.
DOCUMENTS = {"pdf": b"%PDF-1.4\n%\xe2\xe3\xcf\xd3\n", "txt": b"bonjour\n",
             "png": b"\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\0\1\0\0\0\1\x08\0\0\0\0"}


class Stage:
    """Use as a context manager: the desktop stands; browser and Tavrollo are started by the test."""

    def __init__(self, build, interval=600, notifications=1, preferences=None, store=None,
                 screen="1280x900x24"):
        self.desktop = Desktop(screen)
        try:
            self.recorder = Recorder(self.desktop.folder)
            self.firefox = Firefox(self.desktop, preferences)
            self.companion = Companion(self.desktop, build, store or self.firefox.store, interval,
                                       notifications)
        except BaseException:
            # The desktop's folder exists already.
            self.desktop.__exit__(None, None, None)
            raise
        self._counter = 0

    def __enter__(self):
        self.desktop.__enter__()
        try:
            self._register_programs()
        except BaseException:
            self.desktop.__exit__(None, None, None)
            raise
        return self

    def __exit__(self, *_):
        try:
            self.firefox.stop()
            self.companion.stop()
        finally:
            self.desktop.__exit__(None, None, None)

    def _register_programs(self):
        programs = self.desktop.programs
        for name in ("document", "notepad"):
            self.recorder.make_program(os.path.join(programs, name), name)
        document = os.path.join(programs, "document")
        self.desktop.register("lecteur", f"{document} %f", "application/pdf", "image/png")
        self.desktop.register("editeur", f"{os.path.join(programs, 'notepad')} %f", "text/plain",
                              "text/javascript", "application/javascript")
        browser = os.path.basename(self.firefox._program)
        self.desktop.set_default(browser + ".desktop", "text/html", "x-scheme-handler/http",
                                 "x-scheme-handler/https")

    def replace_browser(self):
        """Makes a program that only notes its starts the browser: for tests that show no page."""
        path = self.recorder.make_program(os.path.join(self.desktop.programs, "firefox-absent"),
                                          "navigateur")
        self.desktop.register("firefox-absent", f"{path} %u", "text/html",
                              "x-scheme-handler/http", "x-scheme-handler/https")

    def start_companion_alone(self):
        """Starts Tavrollo without a browser and lets it look at its store for the first time."""
        already = len(self.recorder.starts("navigateur"))
        self.companion.start()
        self.recorder.wait_for_starts(already + 1, "navigateur")
        self.companion.let_it_prime()

    def program(self, name):
        """Makes a program that notes its starts; gives its path."""
        path = os.path.join(self.desktop.home, name)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        return self.recorder.make_program(path, name)

    def send(self, fields):
        """Gives a command from the page in the current tab."""
        self.firefox.page.set_cookie_text(cookie_text(fields))

    def command(self, *fields, timeout=20.0):
        """Gives a command from the current page, with a last field of its own, and waits until
        Tavrollo has handled it."""
        self._counter += 1
        last = f"n{self._counter}"
        self.send([*fields, last])
        self.companion.wait_for_handled(last, timeout)

    def forget_command(self):
        """Takes the current page's command out of the browser again."""
        self.firefox.page.set_cookie_text("Tavr1CodeToExe=; path=/; max-age=0")
        left = self.firefox.page.cookies()
        if "Tavr1CodeToExe" in left:
            raise RuntimeError(f"the page still has its command: {left}")

    def open_page(self, name="index.html"):
        """Shows a page of the web application in the current tab."""
        self.firefox.page.navigate(self.companion.page_address(name))

    def begin(self):
        """Starts browser and Tavrollo, opens a page and waits until commands are taken."""
        self.firefox.start()
        self.companion.start()
        self.firefox.page.wait_for_tab("start.html")
        self.open_plain_page()
        self.companion.wait_until_watching(self.send)

    def open_plain_page(self):
        """Shows a page of the web application's folder that sends nothing by itself."""
        path = self.companion.page_path("res_css/htm/page_essai.html")
        with open(path, "w", encoding="utf-8") as file:
            file.write("<!DOCTYPE html><meta charset=\"utf-8\"><title>Essai</title>\n")
        self.open_page("res_css/htm/page_essai.html")


_build = "build/release"


def build_folder():
    """The folder that --build names."""
    return _build


def main():
    """Runs the tests of the calling file: test_x.py [--build FOLDER] [unittest's arguments]."""
    global _build
    parser = argparse.ArgumentParser(add_help=False)
    parser.add_argument("--build", default=_build)
    known, rest = parser.parse_known_args()
    _build = known.build
    require_program(_build)
    # Started as a script, this module's users see it under its own name: the same object.
    unittest.main(module="__main__", argv=[sys.argv[0], *rest], verbosity=2)
