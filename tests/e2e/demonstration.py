# SPDX-License-Identifier: GPL-3.0-or-later
"""Tavrollo at work, on a screen of its own: its web application in a real Firefox, whose buttons
are pressed, and what then started. Nothing of the user's is touched. The exit status is 0 only if
every command arrived."""

import argparse
import os
import sys

from companion import require_program
from marionette import MarionetteError
from pages import Mouse, PupilPage, TeacherPage, wait_for_bridge
from stage import DOCUMENTS, Stage


class Demonstration:
    def __init__(self, stage):
        self._stage = stage
        self._expected = []

    def say(self, text):
        print(text, flush=True)

    def expect(self, role, *arguments):
        """One more program was started, with these arguments."""
        self._expected.append((role, list(arguments)))
        self._stage.recorder.wait_for_starts(len(self._expected))

    def perform(self):
        """Raises an exception as soon as something does not arrive."""
        stage = self._stage
        self.say("Firefox, on a screen and in a home of their own")
        stage.firefox.start()
        self.say("Tavrollo")
        stage.companion.start()
        page = stage.firefox.page
        page.wait_for_tab("start.html")
        self.say("  start.html was opened by Tavrollo")
        wait_for_bridge(page)
        self.say("  start.html says: " + page.text_of("etatTexte"))

        plan = stage.companion.user_file("Élèves/plan d'été.pdf", DOCUMENTS["pdf"])
        notes = stage.companion.user_file("notes.txt", DOCUMENTS["txt"])
        program = stage.program("programme")
        self.use_teacher_page(plan, notes, program)
        self.check()

    def use_teacher_page(self, plan, notes, program):
        stage = self._stage
        page = stage.firefox.page
        self.say("index.html (Page Prof.)")
        stage.open_page("index.html")
        teacher = TeacherPage(page, Mouse(page))
        self.tell("a key is chosen (ini)", teacher.choose_key("sésame 7"))
        self.tell("the page and the menu are locked (lzck)", teacher.lock())
        self.tell("and unlocked with the key (lzck)", teacher.unlock("sésame 7"))
        self.tell("a document is opened (shellexe)",
                  teacher.open_document("user_datas/Élèves/plan d'été.pdf"))
        self.expect("document", plan)
        self.tell("a text goes to the editor (notepad)", teacher.edit_text("user_datas/notes.txt"))
        self.expect("notepad", notes)
        self.tell("a program is started (runapp)",
                  teacher.start_program(program, 'un "deux trois"'))
        self.expect("programme", "un", "deux trois")
        duration, key = teacher.create_shortcut("user_datas/Élèves/plan d'été.pdf", "Plan d'été")
        self.tell(f"a shortcut is made, its key is {key} (createlink)", duration)

        self.say("eleve.html (Page Élève)")
        stage.open_page("eleve.html")
        duration = PupilPage(page, Mouse(page)).open_by_button(key)
        self.tell(f"the key {key} opens its document (shellexe)", duration)
        self.expect("document", plan)

    def tell(self, what, duration):
        self.say(f"  {what}: answered after {duration:.1f} s")

    def check(self):
        starts = [(note["as"], note["arguments"]) for note in self._stage.recorder.starts()]
        if starts != self._expected:
            raise RuntimeError(f"started: {starts}\nexpected: {self._expected}")

    def report(self, picture):
        """What there is to see afterwards, whether it went well or not."""
        stage = self._stage
        self.say("\nThe trace of Tavrollo:")
        for line in stage.companion.trace().splitlines():
            self.say("  " + line)
        self.say("\nWhat was started:")
        for note in stage.recorder.starts():
            self.say(f"  {note['as']} {note['arguments']}")
        try:
            stage.desktop.photograph(picture)
            self.say(f"\nA picture of the screen: {picture}")
        except (OSError, RuntimeError, ValueError) as error:
            self.say(f"\nNo picture of the screen: {error}")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--build", default="build/release", help="where tavrollo was built")
    parser.add_argument("--picture", help="where the picture of the screen goes")
    arguments = parser.parse_args()
    build = os.path.abspath(arguments.build)
    require_program(build)
    picture = os.path.abspath(arguments.picture or os.path.join(build, "demonstration.png"))

    arrived = False
    with Stage(build) as stage:
        demonstration = Demonstration(stage)
        try:
            demonstration.perform()
            arrived = True
        except (MarionetteError, TimeoutError, RuntimeError) as error:
            print(f"\nFAILED: {error}", file=sys.stderr, flush=True)
        demonstration.report(picture)
        if stage.companion.running and stage.companion.stop() != 0:
            print("FAILED: Tavrollo did not end as it should", file=sys.stderr)
            arrived = False
    print("\nEvery command arrived." if arrived else "\nNot every command arrived.")
    return 0 if arrived else 1


if __name__ == "__main__":
    try:
        sys.exit(main())
    except KeyboardInterrupt:
        sys.exit(130)
