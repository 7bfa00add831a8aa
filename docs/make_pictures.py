#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Makes the pictures of docs/images/ from the real program in a real desktop, and those of the help
page from them: docs/make_pictures.py [--build FOLDER] [--scale N]. With a scale of 2 they show how
everything looks on a fine screen; the committed ones are made with 1."""

import argparse
import os
import shutil
import subprocess
import sys
import time

here = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(here, "..", "tests", "e2e"))

from desktop import wait_for  # noqa: E402
from pages import Mouse, TeacherPage, wait_for_bridge  # noqa: E402
from stage import DOCUMENTS, Stage  # noqa: E402


class Pictures:
    def __init__(self, stage, folder, scale):
        self.stage = stage
        self.folder = folder
        self.scale = scale

    def path(self, name):
        return os.path.join(self.folder, name + ".png")

    def page(self, name, address):
        page = self.stage.firefox.page
        if address:
            self.stage.open_page(address)
            time.sleep(1)
        page.screenshot(self.path(name))

    def screen(self, name, *crop):
        """The whole screen, or what ImageMagick's options leave of it."""
        self.stage.desktop.photograph(self.path(name))
        if crop:
            subprocess.run(["convert", self.path(name), *crop, "+repage", self.path(name)], check=True)

    def xdotool(self, *words):
        return self.stage.desktop.run("xdotool", *words)

    def box(self, name):
        """Waits for the only message box and takes its picture with its frame."""
        deadline = time.monotonic() + 20
        while time.monotonic() < deadline:
            if "Tavrollo :" in self.stage.desktop.windows():
                break
            time.sleep(0.1)
        time.sleep(0.5)
        self.screen(name, "-gravity", "center", "-crop", f"{740 * self.scale}x{420 * self.scale}+0+0")

    def start_boxes(self):
        """Each box of the start, on an empty screen."""
        companion, desktop = self.stage.companion, self.stage.desktop
        os.remove(os.path.join(companion.folder, "config.cfg"))
        companion.start(wait=False)
        self.box("box-config")

        second = desktop.start(os.path.abspath(companion.program), "--program-folder",
                               companion.folder, name="second")
        time.sleep(1.5)
        desktop.run("xdotool", "search", "--name", "Lancements", "windowmove", "20", "30")
        time.sleep(0.5)
        self.screen("box-second", "-crop", f"{660 * self.scale}x{160 * self.scale}+0+0")
        desktop.end(second)
        companion.stop()

        companion.configure("/nulle/part/cookies.sqlite")
        companion.start(wait=False)
        self.box("box-store")
        companion.stop()

        store = os.path.join(desktop.home, "cookies.sqlite")
        with open(store, "wb"):
            pass
        companion.configure(store)
        desktop.register("autre", "/bin/true %u", "text/html", "x-scheme-handler/http",
                         "x-scheme-handler/https")
        companion.start(wait=False)
        self.box("box-browser")
        companion.stop()

    def centre(self, name, width=750, height=550):
        """The middle of the screen, where the program's own windows lie."""
        time.sleep(0.7)
        size = f"{width * self.scale}x{height * self.scale}"
        self.screen(name, "-gravity", "center", "-crop", size + "+0+0")

    def wait_for_window(self, title):
        wait_for(lambda: f'"{title}' in self.stage.desktop.windows(), f"the window {title!r}")
        time.sleep(0.7)

    def settings(self):
        """Each page of the settings window, which a missing store leads into."""
        companion = self.stage.companion
        companion.configure("/home/prof/.mozilla/firefox/abcd1234.default-esr/cookies.sqlite", 1000)
        companion.start(wait=False)
        self.stage.desktop.press("Tavrollo : Impossible", "Return")
        self.wait_for_window("Tavrollo : Paramètres")
        # From the page about the browser, with Firefox and with Chrome, to the others.
        self.centre("settings-browser")
        self.xdotool("key", "shift+Tab", "space")
        self.centre("settings-chrome")
        for name in ("display", "system", "shortcuts"):
            self.xdotool("key", "ctrl+Tab")
            if name == "shortcuts":
                self.xdotool("key", "Tab", "Tab", "Tab", "Down")
            self.centre("settings-" + name)
        companion.stop()

    def synchronisation(self):
        """The synchronisation's window as it opens, compared, copying, and done."""
        companion = self.stage.companion
        store = os.path.join(self.stage.desktop.home, "cookies.sqlite")
        with open(store, "wb"):
            pass
        stick = os.path.join(self.stage.desktop.home, "clé USB")
        self.fill_both_sides(stick)
        companion.configure(store, 100, notifications=0, backup=stick + "/")
        companion.start()
        companion.let_it_prime()
        with open(store, "wb") as file:  # opens the menu's locked entries
            file.write(b"xxx\nTavr1CodeToExelzck_|_false_|_n1_e-o-v_xxxxxxxxxxx")
        companion.wait_for_handled("n1")
        self.open_menu(*["Down"] * 5, "Return")
        title = "Tavrollo : Synchronisation"
        self.wait_for_window(title)
        self.xdotool("key", "Return")
        time.sleep(1)
        crop = ("-gravity", "center", "-crop", f"{1060 * self.scale}x{620 * self.scale}+0+0")
        self.screen("synchro-empty", *crop)
        self.xdotool("key", "Tab", "Tab", "Tab", "Tab", "space")
        time.sleep(1.5)
        self.screen("synchro-compared", *crop)
        self.xdotool("key", "Tab", "space")
        time.sleep(0.3)
        self.screen("synchro-copying", *crop)
        deadline = time.monotonic() + 60
        while "Synchronisation : " not in companion.trace() and time.monotonic() < deadline:
            time.sleep(0.2)
        time.sleep(1.5)
        self.screen("synchro-done", *crop)
        companion.stop()
        shutil.rmtree(stick)

    def fill_both_sides(self, stick):
        """Differences of all four kinds, and enough of them to see the copying."""
        companion = self.stage.companion
        os.makedirs(stick, exist_ok=True)
        old = time.time() - 90 * 24 * 3600
        for name in ("Élèves/plan d'été.odt", "Mathématiques/fractions.pdf", "notes.ods"):
            path = os.path.join(stick, name)
            os.makedirs(os.path.dirname(path), exist_ok=True)
            with open(path, "wb") as file:
                file.write(bytes(41_728))
            ours = companion.user_file(name, bytes(39_424))
            os.utime(ours if name == "notes.ods" else path, (old, old))
        with open(os.path.join(stick, "Élèves/trombinoscope.pdf"), "wb") as file:
            file.write(bytes(1_572_864))
        for number in range(4):
            companion.user_file(f"Vidéos/leçon {number + 1}.mp4", bytes(200_000_000))

    def searches(self):
        """The search window with no store, one, and several."""
        companion, profile = self.stage.companion, self.stage.firefox.profile
        other = os.path.join(os.path.dirname(profile), "abcd1234.default-esr")
        for name, stores in (("none", ()), ("one", (profile,)), ("several", (profile, other))):
            for folder in stores:
                os.makedirs(folder, exist_ok=True)
                with open(os.path.join(folder, "cookies.sqlite"), "wb") as file:
                    file.write(bytes(524288))
            config = os.path.join(companion.folder, "config.cfg")
            if os.path.exists(config):
                os.remove(config)
            companion.start(wait=False)
            self.stage.desktop.press("Tavrollo : Initialisation", "Return")
            self.wait_for_window("Tavrollo : Recherche")
            self.centre("search-" + name)
            if name == "several":
                self.stage.desktop.press("Tavrollo : fichiers", "Return")
                time.sleep(0.5)
                self.xdotool("key", "End", "Return")
                self.wait_for_window("Tavrollo : choisir")
                self.centre("search-choice")
            companion.stop()
        for folder in (profile, other):
            os.remove(os.path.join(folder, "cookies.sqlite"))

    def click(self, right, bottom):
        """Clicks at a place that is measured from the screen's right lower corner."""
        width, height = (int(n) for n in self.xdotool("getdisplaygeometry").split())
        self.xdotool("mousemove", str(width - right * self.scale), str(height - bottom * self.scale))
        self.xdotool("click", "1")

    def barcodes(self):
        """The barcode window with each of its types."""
        companion = self.stage.companion
        store = os.path.join(self.stage.desktop.home, "cookies.bin")
        with open(store, "wb") as file:
            file.write(bytes(100))
        companion.configure(store, 600)
        companion.start()
        companion.let_it_prime()
        with open(store, "wb") as file:  # unlocks the menu
            file.write(b"xx\nTavr1CodeToExelzck_|_false_|_1_e-o-v_")
        time.sleep(5)  # until the notice has gone
        self.open_menu()
        self.xdotool("key", "Escape")  # it may or may not open at the first click of a new desktop
        self.open_menu()
        self.xdotool("key", "Down", "Down", "Right")
        time.sleep(0.5)
        self.click(290, 73)
        self.wait_for_window("Ostrelle")
        self.xdotool("type", "978020137962")
        self.xdotool("key", "Tab")
        self.xdotool("type", "51999")
        self.centre("barcode-ean13", 790, 640)
        self.xdotool("key", "Tab", "Tab")
        # From the types to the next one, back to the text, and to the types again.
        for name, key, tabs, text in (("ean8", "Down", 3, "9638507"), ("2of5", "Down", 3, "1234567"),
                                      ("128", "Down", 2, "Tavrollo 2026"),
                                      ("39-label", "1", 2, "AB-12"), ("39", "Up", 2, "AB-12")):
            self.xdotool("key", *(["Up"] * 4 if key == "1" else [key]))
            self.xdotool("key", *["shift+Tab"] * tabs)
            self.xdotool("key", "ctrl+a")
            self.xdotool("type", text)
            if name == "ean8":
                self.xdotool("key", "Tab", "ctrl+a", "Delete", "shift+Tab")
            self.centre("barcode-" + name, 790, 640)
            self.xdotool("key", *["Tab"] * tabs)
        companion.stop()

    def splash(self):
        time.sleep(3)
        self.screen("splash", "-gravity", "center", "-crop", f"{520 * self.scale}x{340 * self.scale}+0+0")

    def open_menu(self, *keys):
        """Clicks the tray icon, then presses keys in the menu."""
        width, height = (int(n) for n in self.xdotool("getdisplaygeometry").split())
        self.xdotool("mousemove", str(width - 14), str(height - 14))  # the tray is never scaled
        self.xdotool("click", "1")
        time.sleep(0.7)
        for key in keys:
            self.xdotool("key", key)
            time.sleep(0.1)
        time.sleep(0.4)

    def menu(self):
        """The menu alone and with each submenu. It must be unlocked."""
        crop = ("-gravity", "southeast", "-crop", f"{560 * self.scale}x{330 * self.scale}+0+0")
        windows, tavrollo = ("Down", "Right"), ("Down", "Down", "Right")
        tools = windows + ("Up", "Right")  # the last entry in there
        for name, keys in (("menu", ()), ("menu-windows", windows), ("menu-outils", tools),
                           ("menu-tavrollo", tavrollo)):
            self.open_menu(*keys)
            self.screen(name, *crop)
            for _ in range(3):
                self.xdotool("key", "Escape")

    def menu_windows(self):
        """The boxes and windows that the menu's entries open."""
        tavrollo, tools = ("Down", "Down", "Right"), ("Down", "Right", "Up", "Right")
        boxes = (("box-contact", "QrCode : Contacter", tavrollo + ("Down",)),
                 ("box-update", "Tavrollo : Mise", tavrollo + ("Up",)),
                 ("box-regedit", "Tavrolo : Acc", tools + ("Up", "Up")),
                 ("box-winver", "Tavrollo : Version", tools + ("Down", "Down")),
                 ("box-missing", 'Tavrollo"', tools + ("Down",)))
        for name, title, keys in boxes:
            self.open_menu(*keys, "Return")
            self.wait_for_window(title)
            self.screen(name, "-gravity", "center", "-crop",
                        f"{900 * self.scale}x{320 * self.scale}+0+0")
            # A box with only Yes and No has no Escape: its second button is No.
            self.xdotool("key", *(("Tab", "space") if name == "box-regedit" else ("Escape",)))
            time.sleep(0.5)
        self.open_menu(*tavrollo, "Down", "Down", "Down", "Return")
        self.wait_for_window("Debug Monitor")
        self.xdotool("search", "--name", "Debug Monitor", "windowmove", "360", "240")
        time.sleep(0.5)
        self.centre("debug-monitor")
        self.xdotool("key", "Tab")
        self.xdotool("key", "Escape")

    def test_window(self):
        """The window alone, a text encoded, what came out decoded again, a cell shown."""
        companion, desktop = self.stage.companion, self.stage.desktop
        window = desktop.start(os.path.abspath(companion.program), "--program-folder",
                               companion.folder, "--test-window", name="test-window")
        self.wait_for_window("Tavrollo : Test")
        self.xdotool("type", "élève")
        encode_and_copy = ("Tab", "space", "Tab", "ctrl+a", "ctrl+c")
        paste_as_the_text = ("shift+Tab", "shift+Tab", "ctrl+a", "ctrl+v")
        decode = ("Tab", "Tab", "Tab", "space")
        show_a_cell = ("Tab", "Tab", "Down", "Right", "Return")
        for key in encode_and_copy + paste_as_the_text + decode + show_a_cell:
            self.xdotool("key", key)
        self.centre("test-window")
        desktop.end(window)


def take(stage, folder, scale):
    pictures = Pictures(stage, folder, scale)
    stage.desktop.environment["QT_SCALE_FACTOR"] = str(scale)
    stage.companion.start(wait=False)  # fills the program folder, then asks for its settings
    time.sleep(2)
    stage.companion.stop()
    pictures.start_boxes()
    pictures.searches()
    pictures.settings()
    stage.replace_browser()
    pictures.synchronisation()
    pictures.barcodes()
    stage.companion.start()
    pictures.splash()
    stage.companion.stop()
    stage.companion.configure(stage.firefox.store, 600)

    stage.desktop.set_default("firefox-esr.desktop", "text/html", "x-scheme-handler/http",
                              "x-scheme-handler/https")
    stage.firefox.start()
    stage.companion.start()
    page = stage.firefox.page
    page.wait_for_tab("start.html")
    wait_for_bridge(page)
    pictures.page("start", None)

    stage.companion.user_file("Élèves/plan d'été.pdf", DOCUMENTS["pdf"])
    stage.open_page("index.html")
    teacher = TeacherPage(page, Mouse(page))
    teacher.choose_key("sésame 7")
    teacher.open_document("user_datas/Élèves/plan d'été.pdf")
    time.sleep(1.5)
    pictures.screen("desktop")
    pictures.page("page-prof", None)
    time.sleep(8)  # until the notice has gone
    pictures.menu()
    pictures.menu_windows()
    pictures.test_window()
    pictures.page("page-eleve", "eleve.html")
    pictures.page("aide", "aide.html")
    pictures.page("init-cookie", "res_css/htm/init_cookie.html")


def make_help_pictures(folder):
    """The help page shows windows without the desktop around them, and the menu alone."""
    target = os.path.join(here, "..", "nav", "res_css", "img", "aide")
    around = ["-fuzz", "2%", "-trim"]
    for name, crop in (("settings-browser", around), ("settings-shortcuts", around),
                       ("synchro-compared", around), ("barcode-ean13", around),
                       ("menu", ["-gravity", "southeast", "-crop", "176x199+0+0"])):
        subprocess.run(["convert", os.path.join(folder, name + ".png"), *crop, "+repage", "-strip",
                        os.path.join(target, name + ".png")], check=True)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--build", default="build/release")
    parser.add_argument("--scale", type=int, default=1)
    parser.add_argument("--folder", default=os.path.join(here, "images"))
    asked = parser.parse_args()
    os.makedirs(asked.folder, exist_ok=True)
    preferences = {"layout.css.devPixelsPerPx": str(asked.scale)}
    screen = f"{1280 * asked.scale}x{900 * asked.scale}x24"
    with Stage(asked.build, interval=600, preferences=preferences, screen=screen) as stage:
        take(stage, asked.folder, asked.scale)
    if asked.scale == 1:
        make_help_pictures(asked.folder)


if __name__ == "__main__":
    main()
