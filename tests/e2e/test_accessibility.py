# SPDX-License-Identifier: GPL-3.0-or-later
"""All windows as a screen reader and a keyboard have them: over the accessibility bus, with a real
program on a real screen. Nothing here is pointed at but the tray's icon, which has no other way in."""

import os
import re
import unittest

import atspi
import stage as staging
from desktop import wait_for

_TRAY = 14  # pixels from the screen's corner to the icon's middle

# What the keys go to, and what shows something without words: all of them have names.
_USED = {"push button", "toggle button", "radio button", "check box", "text", "table", "list",
         "page tab list", "label", "graphic"}
_NAMED = _USED - {"label"} | {"progress bar"}
# What the arrow keys go through inside a control.
_PARTS = {"cell", "list item", "page tab"}

# Our objects' own names, which nobody is to hear.
_OBJECT_NAME = re.compile(r"(cmd|txt|Txt|lab|Lab|opt|Opt|chk|frm|rtb|List|Grid|Picture|UpDown|tbs|qt_)"
                          r"[A-Z_0-9]|[A-Za-z]+_\d")

_BOX = "alert message"

# Buttons beside a box that its own arrow keys replace.
_BY_ARROW_KEYS = {"Allonger l’intervalle", "Raccourcir l’intervalle"}

_MENU = ["Windows", "Tavrollo", "Quitter Tavrollo", "Aide Tavrollo", "Synchroniser",
         "Explorer le Dossier", "Page Elève", "Page Prof."]
_TAVROLLO_MENU = ["A propos de Tavrollo", "Me contacter", "Paramètres", "Debug Monitor",
                  "Codes Barres", "Vérifier Mise à jour"]


def in_reading_order(nodes):
    """Sorted as they are read: line by line, each from left to right. What lies beside another for
    half of the lower one's height is in one line with it."""
    lines = []
    for node, place in sorted(((each, each.place()) for each in nodes), key=lambda each: each[1][1]):
        for line in lines:
            top, bottom = line[0][1][1], line[0][1][1] + line[0][1][3]
            beside = min(bottom, place[1] + place[3]) - max(top, place[1])
            if beside > min(place[3], bottom - top) / 2:
                line.append((node, place))
                break
        else:
            lines.append([(node, place)])
    return [node for line in lines for node, _ in sorted(line, key=lambda each: each[1][0])]


def is_used(node):
    if not node.has(atspi.FOCUSABLE, atspi.SENSITIVE, atspi.SHOWING) or node.role in _PARTS:
        return False
    # What holds tabs hands the focus on to them.
    return node.role != "filler" or not any(child.role == "page tab list"
                                            for child in node.children())


def stops(container):
    """Where the Tab key is to stop below a node, in reading order; a group of choices is one stop,
    at the place of its first."""
    found, choices = [], None
    children = [child for child in container.children() if child.has(atspi.SHOWING)]
    for child in in_reading_order(children):
        if not (is_used(child) and child.role == "radio button"):
            found += [child] if is_used(child) else []
            found += [] if child.role in ("table", "list") else stops(child)
            continue
        if choices is None:
            choices = len(found)
            found.append(child)
        elif child.has(atspi.CHECKED):
            found[choices] = child
    return found


class ScreenReader(unittest.TestCase):
    """A desktop on which a screen reader listens, and what holds for every window there."""

    @classmethod
    def setUpClass(cls):
        cls.stage = staging.Stage(staging.build_folder(), store="")
        cls.desktop, cls.companion = cls.stage.desktop, cls.stage.companion
        environment = cls.desktop.environment
        del environment["NO_AT_BRIDGE"]
        environment["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1"
        cls.enterClassContext(cls.stage)
        cls.stage.replace_browser()
        cls.bus = atspi.Bus(environment["DBUS_SESSION_BUS_ADDRESS"])
        cls.addClassCleanup(cls.bus.close)

    # Driving.

    def press(self, *keys):
        self.desktop.run("xdotool", "key", *keys)

    def focus_after(self, key, timeout=5):
        """What gets the focus by a key."""
        self.bus.forget_focus()
        self.press(key)
        return wait_for(self.bus.focused, f"the focus after {key}", timeout)

    def window(self, title, role):
        """The window of that title, once it is there."""
        return wait_for(lambda: next(iter(self.shown(title, role)), None), f"the window {title!r}",
                        10)

    def is_gone(self, title, role):
        wait_for(lambda: not self.shown(title, role), f"{title!r}'s end", 10)

    def shown(self, title, role):
        """The windows on the screen whose titles begin so."""
        found = []
        for each in self.program.children():
            try:
                if each.has(atspi.SHOWING) and each.role == role and each.name.startswith(title):
                    found.append(each)
            except atspi.Gone:
                pass
        return found

    def named(self, window, name, role=None):
        """The one control in a window that has this name."""
        found = [node for node in window.walk() if is_used(node) and node.name == name and
                 role in (None, node.role)]
        self.assertEqual(len(found), 1, (name, found))
        return found[0]

    def next_stop(self, before=None):
        """The control to which Tab goes from another. A table is told first, then its cell; where
        a text has a link in it, a first Tab goes to that and nothing is told."""
        def elsewhere():
            node = self.bus.focused()
            while node is not None and node.role in _PARTS:
                node = node.parent()
            return node if node != before else None
        self.bus.forget_focus()
        self.press("Tab")
        try:
            return wait_for(elsewhere, "the next stop", 0.7)
        except TimeoutError:
            self.press("Tab")
            return wait_for(elsewhere, "the next stop", 5)

    def go_to(self, window, name, role=None):
        """Presses Tab until the control of that name has the focus."""
        wanted = self.named(window, name, role)
        for _ in range(30):
            if wanted.has(atspi.FOCUSED):
                return
            self.next_stop()
        self.fail(f"Tab never came to {name!r}")

    # The menu.

    def open_menu(self):
        self.bus.forget_focus()
        width, height = (int(n) for n in self.desktop.run("xdotool", "getdisplaygeometry").split())

        def entry():  # the key goes nowhere until the menu is there
            self.press("Down")
            try:
                return wait_for(self.bus.focused, "an entry", 0.5)
            except TimeoutError:
                return None

        def opened():  # a panel may miss a click that follows another
            self.desktop.run("xdotool", "mousemove", str(width - _TRAY), str(height - _TRAY),
                             "click", "1")
            try:
                return wait_for(entry, "an entry", 2)
            except TimeoutError:
                self.press("Escape")
                return None
        return wait_for(opened, "the menu")

    def choose(self, *captions):
        """Opens the menu and goes to an entry, by what a screen reader says it is."""
        entry = self.open_menu()
        for depth, caption in enumerate(captions):
            if depth:
                entry = self.focus_after("Right")
            entry = self.down_to(entry, caption)
        self.press("Return")

    def down_to(self, entry, caption):
        """Presses Down in a menu, which goes round, until an entry has the focus."""
        for _ in range(12):
            if entry.name.strip() == caption:
                break
            entry = self.focus_after("Down")
        self.assertEqual(entry.name.strip(), caption)
        return entry

    # Rules that hold for every window.

    def assert_is_told(self, window):
        """Names, roles and labels of everything that shows in a window."""
        nodes = [node for node in window.walk() if node.has(atspi.SHOWING)]
        names = {}
        for node in nodes:
            node_role, name = node.role, node.name
            if is_used(node) or node_role in _NAMED:
                self.assert_is_sensible(name, node_role, window)
            if is_used(node):
                self.assertIn(node_role, _USED, (name, "focus without a role to use it"))
                names.setdefault((node_role, name), []).append(node)
            if node_role == "label" and re.search(r"(:|->)$", name):
                self.assert_labels_something(node)
        twice = [key for key, found in names.items() if len(found) > 1]
        self.assertEqual(twice, [], "two controls of one name")

    def assert_is_sensible(self, name, role, where):
        self.assertRegex(name, r"\w|\?", f"a {role} in {where} has no name")
        if role != "label":
            self.assertEqual(name, name.strip(), role)
        self.assertNotRegex(name, "&", role)
        self.assertIsNone(_OBJECT_NAME.match(name), f"{role} {name!r}")

    def assert_labels_something(self, label):
        labelled = label.targets(atspi.LABEL_FOR) + label.targets(atspi.LABELLED_BY)
        self.assertNotEqual(labelled, [], f"{label} labels nothing")

    def assert_keys_reach_everything(self, window):
        """The Tab key comes to every control, in the order in which the window is read; arrow keys
        go through groups of choices; buttons that it passes over have another key."""
        wait_for(lambda: any(node.has(atspi.FOCUSED) for node in stops(window)), "a focus", 5)
        visited = [self.next_stop()]
        for _ in range(40):
            focused = self.next_stop(visited[-1])
            if focused == visited[0]:
                break
            visited.append(focused)
        # Only now: a table that was come to may have made more usable.
        expected = stops(window)
        # It went once around: told from the top.
        first = visited.index(expected[0]) if expected[0] in visited else 0
        self.assertEqual(visited[first:] + visited[:first], expected)
        for node in window.walk():
            if node.role == "push button" and node.has(atspi.SHOWING, atspi.SENSITIVE) and \
                    not node.has(atspi.FOCUSABLE):
                self.assertIn(node.name, _BY_ARROW_KEYS)

    def assert_arrows_reach_choices(self, window, role, names):
        """The arrow keys go through a group; the chosen one is marked."""
        choices = [node for node in window.walk() if node.role == role and node.has(atspi.SHOWING)]
        self.assertEqual([node.name for node in choices], names)
        chosen = [node for node in choices if node.has(atspi.CHECKED)]
        self.assertEqual(len(chosen), 1, "one is marked as chosen")
        self.go_to(window, chosen[0].name)
        reached = {chosen[0].name}
        for key in ("Up", "Down"):  # groups end at both ends
            for _ in choices:
                try:
                    reached.add(self.focus_after(key, 0.7).name)
                except TimeoutError:
                    break
        self.assertEqual(reached, set(names))

    def assert_box_is_told(self, title, buttons, default, opening, leaving="Escape"):
        """A box is read out with its text, its buttons go by the keyboard, Return takes the one
        that does no harm."""
        opening()
        box = self.window(title, _BOX)
        self.assert_is_told(box)
        told = {node.name: node for node in box.walk() if node.has(atspi.SHOWING)}
        self.assertTrue(any(node.role == "label" and len(name) > 20 for name, node in told.items()),
                        "its text")
        pressed = [node for node in told.values() if node.role == "push button"]
        self.assertEqual([node.name for node in in_reading_order(pressed)], buttons)
        self.assertTrue(told[default].has(atspi.FOCUSED), f"{default} has the focus")
        self.press(leaving)
        self.is_gone(title, _BOX)


class Windows(ScreenReader):
    """The windows of one run of the program, one after the other."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.store = os.path.join(cls.desktop.home, "magasin")
        cls.commands = 0
        backup = os.path.join(cls.desktop.home, "sauvegarde")
        os.makedirs(backup)
        with open(os.path.join(backup, "rendu.txt"), "wb") as file:
            file.write(b"1")
        cls.write_store("rien")
        cls.companion.configure(cls.store, 600, 1, backup=backup + "/")
        cls.companion.start()
        cls.companion.user_file("neuf.txt")
        cls.program = cls.bus.application("Tavrollo")
        cls.splash = cls.told_by_splash()
        cls.companion.let_it_prime()
        cls.notice = cls.told_by_notice()
        cls.command("lzck", "false")
        cls.send_notice_away()

    @classmethod
    def told_by_splash(cls):
        """Role and words of the window that the start shows."""
        return wait_for(cls.splash_that_shows, "the splash", 5)

    @classmethod
    def splash_that_shows(cls):
        for each in cls.program.children():
            words = [node.name for node in each.walk()]
            if each.has(atspi.SHOWING) and any(re.match(r"V\d", word) for word in words):
                return each.role, words
        return None

    @classmethod
    def told_by_notice(cls):
        """Role and words of the notice that a command shows, as soon as it is said to come."""
        cls.bus.shown()
        cls.command("createlink", "locx/plan.pdf", "Plan")

        def heard():
            for each in cls.bus.shown():
                words = [node.name for node in each.walk()]
                if "Raccourci Créé" in words:
                    return each.role, words
            return None
        return wait_for(heard, "the notice on the accessibility bus", 5)

    @classmethod
    def send_notice_away(cls):
        """A window that goes would close a menu that is open."""
        def gone():
            notices = [each for each in cls.program.children() if each.role == "notification" and
                       each.has(atspi.SHOWING)]
            for notice in notices:
                left, top, width, height = notice.place()
                cls.desktop.run("xdotool", "mousemove", str(left + width // 2),
                                str(top + height // 4), "click", "1")
            return not notices
        wait_for(gone, "the notice's end", 10)

    @classmethod
    def write_store(cls, text):
        # A reader that looks at the same moment sees the whole of one or the other.
        with open(cls.store + ".neu", "w", encoding="utf-8") as file:
            file.write(f"xxxx{text}{'.' * 40}")
        os.replace(cls.store + ".neu", cls.store)

    @classmethod
    def command(cls, *fields):
        cls.commands += 1
        last = f"n{cls.commands}"
        cls.write_store(f"Tavr1CodeToExe{'_|_'.join([*fields, last])}_e-o-v_")
        cls.companion.wait_for_handled(last)

    def test_splash(self):
        role, words = self.splash
        self.assertEqual(role, "frame")
        self.assertRegex(" ".join(words), r"^Tavrollo V\d+\.\d+\.\d+ rév \d\d/\d\d/\d{4}$")

    def test_menu(self):
        entry = self.open_menu()
        menu = entry.parent()
        self.assertEqual((menu.role, menu.name), ("popup menu", "Menu"))
        entry = self.down_to(entry, _MENU[0])
        for caption in _MENU:
            self.assertEqual((entry.role, entry.name.strip()), ("menu item", caption))
            entry = self.focus_after("Down")
        self.down_to(entry, "Tavrollo")
        entry = self.focus_after("Right")
        self.assertEqual((entry.parent().role, entry.parent().name), ("popup menu", "Tavrollo"))
        for caption in _TAVROLLO_MENU:
            self.assertEqual((entry.role, entry.name.strip()), ("menu item", caption))
            entry = self.focus_after("Down")
        self.press("Escape", "Escape")

    def test_boxes(self):
        self.assert_box_is_told("QrCode : Contacter", ["OK"], "OK",
                                lambda: self.choose("Tavrollo", "Me contacter"))
        self.assert_box_is_told("Tavrollo", ["Oui", "Non"], "Non",
                                lambda: self.choose("Quitter Tavrollo"), "Return")

    def test_notice(self):
        role, words = self.notice
        self.assertEqual(role, "notification")
        self.assertIn("Raccourci Créé", words)
        self.assertNotIn("", words)

    def test_options(self):
        self.choose("Tavrollo", "Paramètres")
        window = self.window("Tavrollo : Paramètres", "dialog")
        self.go_to(window, "Navigateur", "page tab list")
        self.assertEqual(self.focus_after("Left").name, "Raccourcis")
        for page in ("Raccourcis", "Navigateur", "Affichage", "Système"):
            with self.subTest(page=page):
                self.assert_is_told(window)
                self.assert_keys_reach_everything(window)
                if page == "Navigateur":
                    self.assert_arrows_reach_choices(window, "radio button",
                                                     ["Firefox", "Google Chrome"])
                self.go_to(window, page, "page tab list")
                self.press("Right")
        # Return takes the button that has the focus, else the one that is marked.
        self.assertTrue(self.named(window, "OK et fermer").has(atspi.IS_DEFAULT))
        self.go_to(window, "Annuler")
        self.press("Return")
        self.is_gone("Tavrollo : Paramètres", "dialog")
        # That begins anew, with the menu locked and the splash, whose end would close a menu.
        self.companion.let_it_prime()
        self.command("lzck", "false")
        wait_for(lambda: not self.splash_that_shows(), "the splash's end", 15)

    def test_barcode_window(self):
        self.choose("Tavrollo", "Codes Barres")
        window = self.window("Ostrelle", "dialog")
        self.assertTrue(self.named(window, "Code à convertir").has(atspi.FOCUSED))
        self.press("4", "0", "0", "6")
        self.assert_is_told(window)
        self.assert_keys_reach_everything(window)
        types = ["39 (police.ttf Code 3 de 9)", "39 (police.ttf Code 3 de 9 Lab)", "EAN 13", "EAN 8",
                 "2 /5 Entrelacé", "128 (EAN 128)"]
        self.assert_arrows_reach_choices(window, "radio button", types)
        self.go_to(window, "Aide : code 39")
        self.assert_box_is_told("Tavrollo : Code Barre", ["OK"], "OK", lambda: self.press("Return"))
        # What the bars say is told, too.
        self.assertEqual(self.named(window, "Code barre").description,
                         self.named(window, "Résultat en clair").text())
        self.press("Escape")
        self.is_gone("Ostrelle", "dialog")

    def test_debug_and_test_window(self):
        self.choose("Tavrollo", "Debug Monitor")
        debug = self.window("Debug Monitor", "frame")
        self.assert_is_told(debug)
        self.assert_keys_reach_everything(debug)
        self.assertIn("lzck", self.named(debug, "Trace du programme").text())
        self.go_to(debug, "Fenêtre de test")
        self.press("Return")
        test = self.window("Tavrollo : Test UTF-8", "frame")
        self.assert_is_told(test)
        self.assert_keys_reach_everything(test)
        self.press("Escape")
        self.is_gone("Tavrollo : Test UTF-8", "frame")
        self.go_to(debug, "Fermer")
        self.press("Return")
        self.is_gone("Debug Monitor", "frame")

    def test_synchronisation(self):
        title = "Tavrollo : Synchronisation"
        self.assert_box_is_told(title, ["OK", "Annuler"], "OK",
                                lambda: self.choose("Synchroniser"), "Return")
        window = self.window(title, "frame")
        self.assert_is_told(window)
        self.assert_keys_reach_everything(window)
        self.go_to(window, "Comparer les fichiers")
        self.press("Return")
        table = wait_for(lambda: next((node for node in window.walk() if node.role == "table" and
                                       node.has(atspi.SHOWING)), None), "the differences", 10)
        self.assert_is_told(window)
        self.assert_keys_reach_everything(window)
        cells = [node.name for node in table.children()]
        self.assertIn("Sens de la copie", cells)
        self.assertIn("Nouveau, à copier vers la sauvegarde", cells)
        self.assertIn("Nouveau, à copier depuis la sauvegarde", cells)
        self.go_to(window, "Fermer")
        self.press("Return")
        self.is_gone(title, "frame")


class FirstStart(ScreenReader):
    def test_search_for_the_cookie_store(self):
        """A first start: boxes, then the search window, whose results are chosen by the keyboard."""
        for profile in ("a", "b"):
            folder = os.path.join(self.desktop.home, ".mozilla/firefox", profile)
            os.makedirs(folder)
            with open(os.path.join(folder, "cookies.sqlite"), "wb") as file:
                file.write(b"x" * 100)
        os.remove(os.path.join(self.companion.folder, "config.cfg"))
        self.companion.start(wait=False)
        self.program = self.bus.application("Tavrollo")
        for title in ("Tavrollo : Initialisation du programme",
                      "Tavrollo : fichiers de cookies multiples"):
            default = "Oui" if "Initialisation" in title else "OK"
            buttons = ["Oui", "Non"] if default == "Oui" else ["OK"]
            self.assert_box_is_told(title, buttons, default, lambda: None, "Return")
        window = self.window("Tavrollo : Recherche", "dialog")
        results = self.named(window, "Fichiers trouvés")
        wait_for(lambda: results.has(atspi.FOCUSED) or
                 any(each.has(atspi.FOCUSED) for each in results.children()), "the results' focus", 5)
        self.assert_is_told(window)
        self.assert_keys_reach_everything(window)
        self.go_to(window, "Dossier de départ")
        self.assertTrue(self.named(window, "Chercher").has(atspi.IS_DEFAULT))
        self.go_to(window, "Fermer")
        self.press("Return")
        self.is_gone("Tavrollo : Recherche", "dialog")


if __name__ == "__main__":
    staging.main()
