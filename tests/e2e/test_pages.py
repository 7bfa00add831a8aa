# SPDX-License-Identifier: GPL-3.0-or-later
"""The web application's own pages, by the mouse and by the keyboard alone."""

import re
import unittest

from pages import Keyboard, Mouse, PupilPage, TeacherPage, wait_for_bridge
from stage import DOCUMENTS, Stage, build_folder, main


class Pages(unittest.TestCase):
    def setUp(self):
        self.stage = Stage(build_folder())
        self.enterContext(self.stage)
        self.stage.firefox.start()
        self.stage.companion.start()
        self.page = self.stage.firefox.page
        self.page.wait_for_tab("start.html")

    def started(self):
        return [(note["as"], note["arguments"]) for note in self.stage.recorder.starts()]

    def test_the_start_page_shows_that_the_bridge_works(self):
        wait_for_bridge(self.page)
        self.assert_the_time_is_told()
        # Once more, by its button.
        self.page.click("boutonReessayer")
        self.page.wait_until(
            "return document.getElementById('etatPont').getAttribute('data-etat') === 'attente';")
        wait_for_bridge(self.page)
        self.assert_the_time_is_told()
        self.assertEqual(self.started(), [])

    def assert_the_time_is_told(self):
        """In the sentence that a screen reader announces, as among the measures."""
        def written(name):  # with its no-break spaces, which a driver's text does not tell from others
            return self.page.run(f"return document.getElementById('{name}').textContent;")

        told = re.fullmatch("Le pont fonctionne\u00a0: Tavrollo a répondu en (\\d+,\\d\u00a0s)\\.",
                            written("etatTexte"))
        self.assertTrue(told, written("etatTexte"))
        self.assertEqual(written("mesureDuree"), told[1])
        self.assertGreater(float(told[1][:-2].replace(",", ".")), 0)
        self.assertEqual(self.page.run(
            "return document.getElementById('etatTexte').parentElement.getAttribute('aria-live');"),
            "polite")

    def test_the_start_page_says_when_nobody_answers(self):
        self.assertEqual(self.stage.companion.stop(), 0)
        self.page.wait_until(
            "return document.getElementById('etatPont').getAttribute('data-etat') === 'muet';",
            timeout=40)
        self.assertTrue(self.page.run(
            "return document.getElementById('secours').getClientRects().length > 0;"))
        # A program that starts opens the page anew, and there the bridge works.
        self.page.navigate("about:blank")
        self.stage.companion.start()
        self.page.wait_for_tab("start.html")
        wait_for_bridge(self.page)

    def tools_are_visible(self):
        return self.page.run(
            "return document.getElementById('champOuvrir').getClientRects().length > 0;")

    def use_both_pages(self, hand_kind):
        stage, page = self.stage, self.page
        wait_for_bridge(page)
        plan = stage.companion.user_file("Élèves/plan d'été.pdf", DOCUMENTS["pdf"])
        notes = stage.companion.user_file("notes.txt", DOCUMENTS["txt"])
        program = stage.program("programme")
        hand = hand_kind(page)

        stage.open_page("index.html")
        teacher = TeacherPage(page, hand)
        teacher.choose_key("sésame 7")
        teacher.lock()
        self.assertFalse(self.tools_are_visible())
        # What is typed next takes the wrong key's place.
        self.assertEqual(teacher.try_wrong_key("sésame 8"), "Ce n’est pas la bonne clé.")
        self.assertFalse(self.tools_are_visible())
        teacher.unlock("sésame 7")
        teacher.open_document("user_datas/Élèves/plan d'été.pdf")
        teacher.edit_text("user_datas/notes.txt")
        teacher.start_program(program, 'un "deux trois"')
        key = teacher.create_shortcut("user_datas/Élèves/plan d'été.pdf", "Plan d'été")[1]
        expected = [("document", [plan]), ("notepad", [notes]), ("programme", ["un", "deux trois"])]
        stage.recorder.wait_for_starts(len(expected))
        self.assertEqual(self.started(), expected)

        stage.open_page("eleve.html")
        pupil = PupilPage(page, hand)
        pupil.scan(key)
        stage.recorder.wait_for_starts(len(expected) + 1)
        pupil.open_by_button(key)
        stage.recorder.wait_for_starts(len(expected) + 2)
        pupil.open_from_list("Plan d'été")
        stage.recorder.wait_for_starts(len(expected) + 3)
        self.assertEqual(self.started(), expected + [("document", [plan])] * 3)

        with open(stage.companion.page_path("res_css/js/rwCookies.js"), "rb") as file:
            self.assertEqual(file.readline(), 'var ps="sésame 7";\r\n'.encode("cp1252"))

    def test_the_mouse_reaches_everything(self):
        self.use_both_pages(Mouse)

    def test_the_keyboard_alone_reaches_everything(self):
        self.use_both_pages(Keyboard)


if __name__ == "__main__":
    main()
