#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""The manual pages and the completions against what the programs say with --help now:
test_help_files.py --build FOLDER."""
import argparse
import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

here = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(here, "..", "..", "packaging", "help"))

import helptext  # noqa: E402

build = None


def made(name):
    return os.path.join(build, "packaging", "help", name)


def asked(name):
    return helptext.ask(name, os.path.join(build, name))


def plain(text):
    return " ".join(text.split())


@unittest.skipUnless(shutil.which("man") and shutil.which("groff"), "man is not installed")
class ManualPages(unittest.TestCase):
    def shown(self, name):
        environment = dict(os.environ, LC_ALL="C.UTF-8", MANWIDTH="5000", MANROFFOPT="", MANPAGER="cat")
        done = subprocess.run(["man", "--warnings=w", "-E", "UTF-8", "-l", made(f"man/{name}.1")],
                              capture_output=True, text=True, env=environment, timeout=60)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        return plain(re.sub(".\b", "", done.stdout))

    def assert_says_all(self, shown, help_text):
        for usage in help_text.usages:
            self.assertIn(plain(usage), shown)
        for term, meaning in help_text.table():
            self.assertIn(plain(term), shown)
            self.assertIn(plain(meaning), shown)
        for paragraph in help_text.paragraphs():
            if paragraph != helptext.VERBS:
                self.assertIn(plain(paragraph), shown)
        if help_text.exit_status:
            self.assertIn(help_text.exit_status, shown)

    def test_say_what_the_program_says(self):
        self.assert_says_all(self.shown("tavrollo"), asked("tavrollo"))

    def test_say_what_each_verb_says(self):
        shown, program = self.shown("tavrolloctl"), asked("tavrolloctl")
        self.assertGreaterEqual(len(program.verbs), 6)
        for verb in program.verbs:
            self.assert_says_all(shown, verb)
            self.assertIn(program.purposes[verb.name.split()[1]], shown)

    def test_are_found_by_what_they_are_for(self):
        for name in ("tavrollo", "tavrolloctl"):
            done = subprocess.run(["lexgrog", made(f"man/{name}.1")], capture_output=True, text=True, timeout=30)
            self.assertIn(f'"{name} - ', done.stdout)


class Reading(unittest.TestCase):
    """What takes a help text apart."""

    TEXT = ("Usage : prog verbe SOURCE [--but MOT]\n        prog verbe --tout\nFait ceci\net cela :\n"
            "  0  rien       1  tout\n  --but MOT   va\n              loin\nPuis\nrien.\n"
            "Code de retour : 0 bon,\n2 mauvais.\n")

    def test_usages_options_tables_and_paragraphs(self):
        read = helptext.Help("prog verbe", self.TEXT)
        self.assertEqual(read.usages, ["prog verbe SOURCE [--but MOT]", "prog verbe --tout"])
        self.assertEqual(read.paragraphs(), ["Fait ceci et cela :", "Puis rien."])
        self.assertEqual(read.table(), [("0", "rien"), ("1", "tout"), ("--but MOT", "va loin")])
        self.assertEqual(read.options(), [("--but", "MOT", "va loin"), ("--tout", None, "")])
        self.assertEqual(read.arguments(), ["SOURCE"])
        self.assertEqual(read.exit_status, "0 bon, 2 mauvais.")

    def test_a_text_that_does_not_say_how_it_is_called_is_refused(self):
        with self.assertRaises(ValueError):
            helptext.Help("prog", "Bonjour\n")


class BashCompletion(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        os.makedirs(os.path.join(self.folder.name, "un dossier"))
        with open(os.path.join(self.folder.name, "un fichier"), "w", encoding="utf-8"):
            pass

    def tearDown(self):
        self.folder.cleanup()

    def complete(self, *words):
        """What bash offers for the last word."""
        script = f"""
            source {made('bash/' + words[0])!r}
            compopt() {{ :; }}
            COMP_WORDS=("$@") COMP_CWORD=$(($# - 1))
            _{words[0]}
            printf '%s\\n' "${{COMPREPLY[@]}}\""""
        done = subprocess.run(["bash", "-c", script, "bash", *words], capture_output=True, text=True,
                              cwd=self.folder.name, timeout=30)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        return sorted(line for line in done.stdout.splitlines() if line)

    def test_every_verb_and_every_option_is_offered(self):
        program = asked("tavrolloctl")
        verbs = [verb.name.split()[1] for verb in program.verbs]
        self.assertEqual(self.complete("tavrolloctl", ""), sorted(verbs + ["--help", "--version"]))
        for verb in program.verbs:
            self.assertEqual(self.complete("tavrolloctl", verb.name.split()[1], "-"),
                             sorted(each[0] for each in verb.options()), verb.name)
        self.assertEqual(self.complete("tavrollo", "-"),
                         sorted(each[0] for each in asked("tavrollo").options()))

    def test_a_begun_word_is_ended(self):
        self.assertEqual(self.complete("tavrolloctl", "sh"), ["shortcuts"])
        self.assertEqual(self.complete("tavrolloctl", "sync", "--dr"), ["--dry-run"])

    def test_values_and_arguments_are_what_they_stand_for(self):
        both = ["un dossier", "un fichier"]
        for words, offered in [
                (("tavrollo", "--program-folder", "un"), ["un dossier"]),
                (("tavrolloctl", "config", "un"), both),
                (("tavrolloctl", "config", "un fichier", "un"), []),
                (("tavrolloctl", "cookie", "--hosts", ""), both),
                (("tavrolloctl", "cookie", "--offset", "un"), []),
                (("tavrolloctl", "cookie", "--offset", "3", "un"), both),
                (("tavrolloctl", "compare", "a", ""), ["un dossier"]),
                (("tavrolloctl", "sync", "--dry-run", "a", "--filter", "*.odt", ""), ["un dossier"]),
                (("tavrolloctl", "sync", "--direction", ""), ["both", "to-backup", "to-source"]),
                (("tavrolloctl", "codebar", "C"), ["Code128", "Code39"]),
                (("tavrolloctl", "codebar", "EAN8", "un"), []),
                (("tavrolloctl", "nothing", "un"), [])]:
            with self.subTest(words=words):
                self.assertEqual(self.complete(*words), offered)


class OtherShells(unittest.TestCase):
    def test_know_every_verb_and_option(self):
        for name in ("tavrollo", "tavrolloctl"):
            program = asked(name)
            for file in (f"zsh/_{name}", f"fish/{name}.fish"):
                with open(made(file), encoding="utf-8") as opened:
                    text = opened.read()
                for verb in program.verbs:
                    self.assertIn(verb.name.split()[1], text)
                    for option, _, _ in verb.options():
                        self.assertRegex(text, f"(--|-l ){option[2:]}\\b")

    def test_are_well_formed(self):
        for shell, file in (("zsh", "zsh/_"), ("fish", "fish/")):
            if not shutil.which(shell):
                continue
            for name in ("tavrollo", "tavrolloctl"):
                path = made(file + name + (".fish" if shell == "fish" else ""))
                self.assertEqual(subprocess.run([shell, "-n", path], timeout=30).returncode, 0, path)


if __name__ == "__main__":
    arguments = argparse.ArgumentParser()
    arguments.add_argument("--build", required=True)
    options, rest = arguments.parse_known_args()
    build = options.build
    unittest.main(argv=[sys.argv[0], *rest])
