# SPDX-License-Identifier: GPL-3.0-or-later
"""A newcomer's way: no settings, a question, a search, and the first command from a page."""

import os
import shutil
import unittest

from desktop import wait_for
from pages import wait_for_bridge
from stage import DOCUMENTS, Stage, build_folder, main

_STORE_LINE, _SHORTCUTS_LINE = 6, 10  # from 0


class FirstStart(unittest.TestCase):
    def setUp(self):
        self.stage = Stage(build_folder())
        self.enterContext(self.stage)
        self.desktop, self.companion = self.stage.desktop, self.stage.companion
        os.remove(self.config)
        self.stage.firefox.start()
        self.page = self.stage.firefox.page
        wait_for(lambda: os.path.exists(self.stage.firefox.store), "Firefox's cookie store")

    @property
    def config(self):
        return os.path.join(self.companion.folder, "config.cfg")

    def accept(self, title):
        """Waits for the message box whose title begins with `title` and takes its default button."""
        self.desktop.press(title, "Return")
        wait_for(lambda: f'"{title}' not in self.desktop.windows(), f"the end of the box {title!r}")

    def first_command_arrives(self):
        """The page that the search opens writes a first cookie by itself; then one that the user
        gives opens a document."""
        self.page.wait_for_tab("init_cookie.html")
        wait_for_bridge(self.page)
        document = self.companion.user_file("notice.pdf", DOCUMENTS["pdf"])
        self.stage.command("runapp", document, "")
        self.stage.recorder.wait_for_starts(1, "document")

    def written_settings(self):
        with open(self.config, encoding="cp1252", newline="") as file:
            return file.read().split("\r\n")

    def test_the_only_store_chooses_itself(self):
        self.companion.start(wait=False)
        self.accept("Tavrollo : Initialisation du programme")
        self.first_command_arrives()
        settings = self.written_settings()
        self.assertEqual(settings[_STORE_LINE], self.stage.firefox.store)
        self.assertEqual(settings[_SHORTCUTS_LINE],
                         self.companion.page_path("res_css/js/shortQrCode.js"))

        # The next start asks nothing.
        self.companion.stop()
        self.page.navigate("about:blank")
        self.companion.start()
        self.page.wait_for_tab("start.html")
        wait_for_bridge(self.page)

    def test_of_several_stores_one_is_chosen_with_the_keyboard(self):
        other = os.path.join(os.path.dirname(self.stage.firefox.profile), "ancien")
        os.makedirs(other)
        shutil.copy(self.stage.firefox.store, other)
        self.companion.start(wait=False)
        self.accept("Tavrollo : Initialisation du programme")
        self.accept("Tavrollo : fichiers de cookies multiples")
        # The list has the focus; its second line is the profile in use.
        self.desktop.press("Tavrollo : Recherche", "End", "Return")
        self.accept("Tavrollo : choisir le fichier des cookies")
        self.first_command_arrives()
        self.assertEqual(self.written_settings()[_STORE_LINE], self.stage.firefox.store)


class WithoutAScreen(unittest.TestCase):
    def test_the_program_starts_on_the_toolkits_platform_without_a_screen(self):
        with Stage(build_folder()) as stage:
            stage.replace_browser()
            with open(stage.firefox.store, "wb"):
                pass
            stage.desktop.environment["QT_QPA_PLATFORM"] = "offscreen"
            stage.start_companion_alone()
            self.assertTrue(stage.companion.running)


if __name__ == "__main__":
    main()
