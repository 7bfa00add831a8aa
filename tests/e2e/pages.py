# SPDX-License-Identifier: GPL-3.0-or-later
"""The web application's pages, used as their user does: by the mouse or by the keyboard alone."""

import time

from marionette import MarionetteError

# How long a command may take from the page to the program and back: the pages' own patience is
# three intervals and six seconds.
_PATIENCE = 25.0


class Mouse:
    """Clicks into fields and on buttons."""

    name = "mouse"

    def __init__(self, page):
        self._page = page

    def fill(self, field, text, **_):
        self._page.click(field)
        self._page.type_into(field, text)

    def activate(self, button, **_):
        self._page.click(button)


class Keyboard:
    """Never touches the mouse: Tab from field to field, keys, Enter on the button."""

    name = "keyboard"

    def __init__(self, page):
        self._page = page

    def fill(self, field, text, backwards=False):
        self._page.tab_to(field, backwards)
        self._page.write(text)
        typed = self._page.run("return document.activeElement.value;")
        if typed != text:
            raise MarionetteError("keyboard", f"{field} holds {typed!r} instead of {text!r}")

    def activate(self, button, backwards=False):
        self._page.tab_to(button, backwards)
        self._page.press("Enter")


class Queue:
    """The list of commands that a page shows, with what became of each."""

    _MARK = ("document.querySelectorAll('#fileAttente > li')"
             ".forEach(li => li.setAttribute('data-vue', '1'));")
    _NEW = ("return Array.from(document.querySelectorAll('#fileAttente > li:not([data-vue])'),"
            " li => [li.getAttribute('data-etat'), li.textContent]);")

    def __init__(self, page):
        self._page = page

    def sends(self, action, timeout=_PATIENCE):
        """Does `action` and waits until every command that it put into the list was answered.
        Gives the time that took, in seconds."""
        self._page.run(self._MARK)
        action()
        begin = time.monotonic()
        while True:
            entries = self._page.run(self._NEW)
            states = [entry[0] for entry in entries]
            if states and all(state == "recue" for state in states):
                return time.monotonic() - begin
            if "muette" in states or time.monotonic() - begin > timeout:
                raise MarionetteError("queue", f"no answer after {time.monotonic() - begin:.1f} s: "
                                      f"{entries or 'the page sent nothing'}")
            time.sleep(0.05)


class TeacherPage:
    """index.html. `hand` is a Mouse or a Keyboard. Each step waits for the program's answer; their
    order is that of the page, so that Tab leads from one to the next."""

    def __init__(self, page, hand):
        self._page = page
        self._hand = hand
        self._queue = Queue(page)

    def _send(self, button, **where):
        return self._queue.sends(lambda: self._hand.activate(button, **where))

    def choose_key(self, key):
        self._hand.fill("champNouvelleCle", key)
        duration = self._send("boutonChoisirCle")
        self._page.wait_until("return window.ps === arguments[0];", key, what="the page key")
        return duration

    def lock(self):
        duration = self._send("boutonVerrouiller", backwards=True)
        self._wait_visible("boutonDeverrouiller")
        return duration

    def unlock(self, key):
        self._hand.fill("champCle", key)
        duration = self._send("boutonDeverrouiller")
        self._wait_visible("champOuvrir")
        return duration

    def try_wrong_key(self, key):
        """Waits until the page refuses the key; gives what it says."""
        self._hand.fill("champCle", key)
        self._hand.activate("boutonDeverrouiller")
        self._page.wait_until(
            "return document.activeElement.id === 'champCle' &&"
            " document.activeElement.getAttribute('aria-invalid') === 'true';",
            what="the key's refusal")
        return self._page.text_of("messageCle")

    def open_document(self, path):
        self._hand.fill("champOuvrir", path)
        return self._send("boutonOuvrir")

    def edit_text(self, path):
        self._hand.fill("champTexte", path)
        return self._send("boutonTexte")

    def start_program(self, path, parameters):
        self._hand.fill("champProgramme", path)
        self._hand.fill("champParametres", parameters)
        return self._send("boutonProgramme")

    def create_shortcut(self, address, name):
        """Gives the time it took and the new shortcut's key, as the page tells it."""
        self._hand.fill("champAdresse", address)
        self._hand.fill("champNom", name)
        duration = self._send("boutonRaccourci")
        told = self._page.wait_until(
            "const told = /\\d{9}/.exec(document.getElementById('messageRaccourci').textContent);"
            "return told ? told[0] : '';", what="the new shortcut's key")
        return duration, told

    def _wait_visible(self, element_id):
        self._page.wait_until(
            "const element = document.getElementById(arguments[0]);"
            "return element && element.getClientRects().length > 0;", element_id)


class PupilPage:
    """eleve.html."""

    def __init__(self, page, hand):
        self._page = page
        self._hand = hand
        self._queue = Queue(page)

    def open_by_button(self, key):
        self._hand.fill("champCode", key)
        return self._queue.sends(lambda: self._hand.activate("boutonCode"))

    def open_from_list(self, name):
        self._page.run(
            "Array.from(document.querySelectorAll('#listeRaccourcis button')).find(button =>"
            " button.querySelector('.raccourci-nom').textContent === arguments[0])"
            ".id = 'boutonDeLaListe';", name)  # the driver's hands ask for an id
        return self._queue.sends(lambda: self._hand.activate("boutonDeLaListe"))

    def scan(self, key):
        """A scanner types the key and presses Enter, into whatever has the focus."""
        def type_key():
            self._page.write(key)
            self._page.press("Enter")
        return self._queue.sends(type_key)


def wait_for_bridge(page, timeout=40.0):
    """On start.html: waits until the page itself says that the bridge works."""
    state = page.wait_until(
        "const state = document.getElementById('etatPont').getAttribute('data-etat');"
        "return state === 'attente' ? '' : state;", timeout=timeout, what="the bridge's state")
    if state != "marche":
        raise MarionetteError("bridge", f"start.html says {state}: {page.text_of('etatPont')}")
