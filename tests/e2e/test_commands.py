# SPDX-License-Identifier: GPL-3.0-or-later
"""Commands of every kind, one after the other, from a page in a browser with a well-filled store."""

import os
import unittest

from stage import DOCUMENTS, Stage, build_folder, main


class Commands(unittest.TestCase):
    def setUp(self):
        self.stage = Stage(build_folder())
        self.enterContext(self.stage)

    def read_lines(self, name):
        with open(self.stage.companion.page_path(name), "rb") as file:
            return file.read().split(b"\r\n")

    def assert_started(self, role, arguments):
        """The newest start is this one. It was the only one since the last check."""
        self.expected.append((role, arguments))
        self.stage.recorder.wait_for_starts(len(self.expected))
        self.assertEqual([(note["as"], note["arguments"]) for note in self.stage.recorder.starts()],
                         self.expected)

    def test_twenty_commands_each_run_once_and_in_order(self):
        stage, user_file = self.stage, self.stage.companion.user_file
        stage.firefox.fill_store(3000)
        self.assertGreaterEqual(stage.firefox.cookies_in_store(), 3000)
        self.expected = []
        plain = stage.program("programme")
        accented = stage.program("Été à la plage/lancé là")
        stage.begin()

        # Eight commands fill the write-ahead log: these cross two of its ends.
        plan = user_file("plan.pdf", DOCUMENTS["pdf"])
        stage.command("shellexe", "../../user_datas/plan.pdf")
        self.assert_started("document", [plan])

        accents = user_file("Élèves/Noël à l'école.pdf", DOCUMENTS["pdf"])
        stage.command("shellexe", "../../user_datas/Élèves/Noël à l'école.pdf")
        self.assert_started("document", [accents])

        stage.command("runapp", plain, "")
        self.assert_started("programme", [])

        stage.command("runapp", plain, "un deux")
        self.assert_started("programme", ["un", "deux"])

        stage.command("runapp", plain, '"un seul argument" -x')
        self.assert_started("programme", ["un seul argument", "-x"])

        stage.command("runapp", accented, "œuf \"à é\"")
        self.assert_started("Été à la plage/lancé là", ["œuf", "à é"])

        notes = user_file("notes de cours.txt", DOCUMENTS["txt"])
        stage.command("notepad", "../../user_datas/notes de cours.txt")
        self.assert_started("notepad", [notes])

        stage.command("ini", "clé-d'été")
        self.assertEqual(self.read_lines("res_css/js/rwCookies.js")[0],
                         "var ps=\"clé-d'été\";".encode("cp1252"))

        stage.command("lzck", "true")
        stage.command("lzck", "false")

        free_id, entries = self.shortcuts()
        stage.command("createlink", "abcloc../../user_datas/plan.pdf", "Le plan d'été")
        new_free_id, new_entries = self.shortcuts()
        self.assertEqual(new_free_id, free_id + 1)
        self.assertEqual(
            new_entries, entries + ['tabObj["%09d"]="Le plan d\'été_|_loc../../user_datas/plan.pdf";'
                                    .encode("utf-8") % free_id])

        picture = user_file("a/b/image 1.png", DOCUMENTS["png"])
        stage.command("SHELLEXE", "../../user_datas/a/b/image 1.png")
        self.assert_started("document", [picture])

        stage.command("shellexe", plan)
        self.assert_started("document", [plan])

        stage.command("RunApp", plain, "--nom='A B'")
        self.assert_started("programme", ["--nom=A B"])

        stage.command("inconnu", "rien", "du tout")

        stage.command("notepad", notes)
        self.assert_started("notepad", [notes])

        # The same again is a new command: its last field is another.
        stage.command("notepad", notes)
        self.assert_started("notepad", [notes])

        stage.command("runapp", plain, "a_b _|- c")
        self.assert_started("programme", ["a_b", "_|-", "c"])

        stage.command("createlink", "abcwebhttp://127.0.0.1/é", "Second")
        self.assertEqual(self.shortcuts()[0], free_id + 2)

        stage.command("runapp", plain, "fin")
        self.assert_started("programme", ["fin"])

        self.assertEqual(stage.companion.stop(), 0)
        self.assertEqual(len(stage.recorder.starts()), len(self.expected))

    def shortcuts(self):
        """The counter of the shortcut table and its entry lines, as bytes."""
        lines = self.read_lines("res_css/js/shortQrCode.js")
        self.assertTrue(lines[0].startswith(b"var FreeId="), lines[0])
        return (int(lines[0].partition(b"=")[2]),
                [line for line in lines if line.startswith(b"tabObj[")])

    def test_a_missing_document_is_traced_at_once_and_the_last_commands_offset_saved(self):
        stage = self.stage
        stage.begin()
        stage.command("shellexe", "/nulle/part.pdf")
        stage.companion.wait_for_trace("Fichier introuvable : /nulle/part.pdf")
        self.assertEqual(stage.recorder.starts(), [])
        self.assertEqual(stage.companion.stop(), 0)
        with open(os.path.join(stage.companion.folder, "offsetCookie.dat"), encoding="ascii") as f:
            self.assertGreaterEqual(int(f.readline()), 3)


if __name__ == "__main__":
    main()
