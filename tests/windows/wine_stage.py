# SPDX-License-Identifier: GPL-3.0-or-later
"""The program for Windows on a desktop of its own: Wine, a real Firefox of this system, and what the
program started. Folders of Windows are seen from both sides: C:\\ is below `drive`, Z:\\ is /."""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import time

SOURCES = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(SOURCES / "tests" / "e2e"))

# pylint: disable=wrong-import-position
import companion as linux_companion
from companion import Companion, cookie_text
from desktop import Desktop, need, wait_for
from firefox import Firefox

UNDER_WINE = str(SOURCES / "packaging" / "windows" / "under-wine")
# The search for it is the one of under-wine: Debian has it beside its other parts.
_WINE_FOLDER = "/usr/lib/wine"
# Wine's window for icons, and how large each is there.
_TRAY = "Wine System Tray"
_ICON = 20


def wine_program(name):
    """The path of one of Wine's own programs."""
    path = os.path.join(_WINE_FOLDER, name)
    return path if os.path.exists(path) else need(name)


class Wine:
    """Wine on a test's desktop."""

    def __init__(self, desktop, prefix):
        self._desktop = desktop
        self.prefix = prefix
        self.drive = os.path.join(prefix, "drive_c")
        self.wine = wine_program("wine64")
        desktop.environment.update({
            "WINEPREFIX": prefix, "WINEARCH": "win64", "WINEDEBUG": "-all",
            "WINEDLLOVERRIDES": "mscoree,mshtml=;winemenubuilder.exe=d"})

    def make(self):
        """Makes the environment, unless it is there."""
        self._desktop.run(UNDER_WINE, self.prefix, "cmd", "/c", "exit", timeout=600)

    def run(self, *command, timeout=60):
        """Runs a program of Windows to its end; its exit status."""
        return self._desktop.start(self.wine, *command, name="wine-run").wait(timeout)

    def end_all(self):
        """Ends every program of Windows, and lets the registry be written."""
        for words in (["-k"], ["-w"]):
            subprocess.run([wine_program("wineserver"), *words], env=self._desktop.environment,
                           timeout=30, check=False)

    def path(self, path):
        """How programs of Windows know a path of this system."""
        path = str(path)
        if path.startswith(self.drive + "/"):
            return "C:" + path[len(self.drive):].replace("/", "\\")
        return "Z:" + path.replace("/", "\\")

    def register(self, entries):
        """Writes text values into the registry: {(key, name): text}, name "" the default value."""
        lines = ["Windows Registry Editor Version 5.00"]
        for (key, name), text in entries.items():
            value = text.replace("\\", "\\\\").replace('"', '\\"')
            lines += ["", f"[{key}]", (f'"{name}"' if name else "@") + f'="{value}"']
        file = os.path.join(self._desktop.folder, "entries.reg")
        with open(file, "wb") as out:
            out.write("\r\n".join(lines + [""]).encode("utf-16"))
        if self.run("regedit", "/S", self.path(file)) != 0:
            raise RuntimeError("the registry was not written")

    def registered(self, key, name):
        """A value of the registry as `reg query` shows it; "" when there is none."""
        done = subprocess.run([self.wine, "reg", "query", key, "/v", name],
                              env=self._desktop.environment, capture_output=True, timeout=60,
                              check=False)
        for line in done.stdout.decode("utf-8", "replace").splitlines():
            words = line.strip().split("    ")
            if words[0] == name and len(words) >= 3:
                return words[2]
        return ""


class WindowsCompanion(Companion):
    """Tavrollo.exe, in a folder of its own that was unpacked for it."""

    # pylint: disable=super-init-not-called
    def __init__(self, desktop, wine, layout, folder, store, interval=600):
        self._desktop = desktop
        self._wine = wine
        self._process = None
        self._starts = 0
        self._probes = 0
        self.folder = folder
        self.root = os.path.join(folder, "nav")
        self.program = os.path.join(folder, "Tavrollo.exe")
        shutil.rmtree(folder, ignore_errors=True)
        shutil.copytree(layout, folder)
        os.makedirs(self.root)
        self.configure(store, interval)

    def settings_text(self, store, interval=600, notifications=1, browser=0, backup=""):
        """The bytes of config.cfg for these settings."""
        shortcuts = self._wine.path(os.path.join(self.root, "res_css/js/shortQrCode.js"))
        # pylint: disable=protected-access
        text = linux_companion._CONFIGURATION.format(
            browser=browser, store=store and self._wine.path(store), interval=interval,
            notifications=notifications, shortcuts=shortcuts, backup=backup)
        return text.replace("\n", "\r\n").encode("cp1252")

    @property
    def config(self):
        return os.path.join(self.folder, "config.cfg")

    def configure(self, store, interval=600, notifications=1, browser=0, backup=""):
        self._interval = interval
        with open(self.config, "wb") as file:
            file.write(self.settings_text(store, interval, notifications, browser, backup))

    def start(self, wait=True):
        self._starts += 1
        self.started_at = time.monotonic()
        self._process = self._desktop.start(
            self._wine.wine, self._wine.path(self.program), "--trace", name=self._log_name())
        if wait:
            wait_for(lambda: self._alive() and
                     os.path.exists(self.page_path("res_css/htm/start.html")),
                     "the web application in the program folder", 60)
        return self

    def adopt(self, process):
        """From now on another process is the program."""
        self._process = process


class Recorder:
    """Programs that do nothing but note what they were started with."""

    def __init__(self, program):
        self._program = program
        self._places = {}

    def make(self, path, role):
        """Puts such a program at `path`; its path."""
        os.makedirs(os.path.dirname(path), exist_ok=True)
        shutil.copyfile(self._program, path)
        self._places[role] = os.path.splitext(path)[0] + ".started"
        if os.path.exists(self._places[role]):
            os.remove(self._places[role])
        return path

    def starts(self, role):
        """[(command line, folder)] of all starts so far."""
        try:
            with open(self._places[role], encoding="utf-8", newline="") as file:
                lines = file.read().split("\n")[:-1]
        except FileNotFoundError:
            return []
        return [tuple(line.split("\t")) for line in lines]

    def wait_for_starts(self, count, role, timeout=30.0):
        wait_for(lambda: len(self.starts(role)) >= count, f"{count} starts of {role}", timeout)
        return self.starts(role)


class WineStage:
    """Use as a context manager."""

    def __init__(self, build, screen="1280x900x24"):
        self.build = os.path.abspath(build)
        self.layout = os.path.join(self.build, "Tavrollo")
        if not os.path.exists(os.path.join(self.layout, "Tavrollo.exe")):
            raise SystemExit(f"{self.layout} is not there: packaging/windows/build makes it")
        self.seen = os.path.join(self.build, "seen")
        os.makedirs(self.seen, exist_ok=True)
        self.desktop = Desktop(screen)
        self.wine = Wine(self.desktop, os.path.join(self.build, "wine"))
        self.firefox = Firefox(self.desktop)
        self.recorder = Recorder(os.path.join(self.build, "windows_recorder.exe"))
        self._counter = 0

    def __enter__(self):
        self.desktop.__enter__()
        try:
            # Wine shows icons in a window of its own where there is no tray. In a tray of X, to which
            # it hands them on, they often stay blank and deaf.
            self.desktop.end_tray()
            self.wine.make()
            self.programs = os.path.join(self.wine.drive, "Outils")
            self.companion = WindowsCompanion(
                self.desktop, self.wine, self.layout, os.path.join(self.wine.drive, "Tav"),
                self.firefox.store)
            self._register_programs()
        except BaseException:
            self.desktop.__exit__(None, None, None)
            raise
        return self

    def __exit__(self, *_):
        try:
            self.firefox.stop()
            self.wine.end_all()
        finally:
            self.desktop.__exit__(None, None, None)

    def _register_programs(self):
        def command(role):
            path = self.recorder.make(os.path.join(self.programs, role + ".exe"), role)
            return f'"{self.wine.path(path)}" "%1"'
        # In front of the system's own: a program's folder is where it looks first.
        self.recorder.make(os.path.join(self.companion.folder, "notepad.exe"), "notepad")
        classes = "HKEY_CLASSES_ROOT"
        entries = {}
        for ending, kind, role in ((".html", "EssaiPage", "firefox"),
                                   (".pdf", "EssaiDocument", "document")):
            entries[f"{classes}\\{ending}", ""] = kind
            entries[f"{classes}\\{kind}\\shell\\open\\command", ""] = command(role)
        entries["HKEY_CLASSES_ROOT\\http\\shell\\open\\command", ""] = command("firefox")
        self.wine.register(entries)

    # Commands from a page of a real Firefox.

    def send(self, fields):
        self.firefox.page.set_cookie_text(cookie_text(fields))

    def command(self, *fields, timeout=30.0):
        """Gives a command and waits until it has been handled."""
        self._counter += 1
        last = f"n{self._counter}"
        self.send([*fields, last])
        self.companion.wait_for_handled(last, timeout)

    def begin(self):
        """Starts browser and program; from then on commands are taken."""
        self.firefox.start()
        self.companion.start()
        path = self.companion.page_path("res_css/htm/page_essai.html")
        wait_for(lambda: os.path.isdir(os.path.dirname(path)), "the pages")
        with open(path, "w", encoding="utf-8") as file:
            file.write("<!DOCTYPE html><meta charset=\"utf-8\"><title>Essai</title>\n")
        self.firefox.page.navigate(self.companion.page_address("res_css/htm/page_essai.html"))
        self.companion.wait_until_watching(self.send, 90)

    # What is on the screen.

    def photograph(self, name):
        """Leaves a picture of the screen; its path."""
        path = os.path.join(self.seen, name + ".png")
        self.desktop.photograph(path)
        return path

    def xdotool(self, *words):
        return self.desktop.run("xdotool", *words)

    def window(self, title, timeout=30.0):
        """The number of the window whose title begins with `title`, once it is on the screen."""
        def found():
            try:
                return self.xdotool("search", "--onlyvisible", "--name", "^" + title).split()
            except subprocess.CalledProcessError:
                return None
        return wait_for(found, f"the window {title!r}", timeout)[-1]

    def is_there(self, title):
        try:
            return bool(self.xdotool("search", "--onlyvisible", "--name", "^" + title).split())
        except subprocess.CalledProcessError:
            return False

    def wait_until_gone(self, title, timeout=20.0):
        wait_for(lambda: not self.is_there(title), f"the end of the window {title!r}", timeout)

    def shapes(self):
        """{window: (x, y, width, height)} of the program's windows on the screen."""
        shapes = {}
        try:
            windows = self.xdotool("search", "--onlyvisible", "--class", "tavrollo.exe").split()
        except subprocess.CalledProcessError:
            return shapes
        for window in windows:
            try:
                lines = self.xdotool("getwindowgeometry", "--shell", window).splitlines()
            except subprocess.CalledProcessError:  # gone meanwhile
                continue
            place = dict(line.split("=") for line in lines)
            shapes[window] = tuple(int(place[name]) for name in ("X", "Y", "WIDTH", "HEIGHT"))
        return shapes

    def give_focus(self, window):
        """The program asked for it, but the window manager may give it to the clicked icon then."""
        time.sleep(0.3)
        self.xdotool("windowfocus", window)

    def icon_place(self):
        """Where the program's icon is, the only one in Wine's window for them."""
        told = self.desktop.run("xwininfo", "-id", self.window(_TRAY))
        left, top = re.findall(r"Absolute upper-left [XY]: +(-?\d+)", told)
        return int(left), int(top), _ICON, _ICON

    def click_icon(self, button=1):
        x, y, width, height = self.icon_place()
        self.xdotool("mousemove", str(x + width // 2), str(y + height // 2))
        # As slowly as a hand: the window manager is to give that window the focus meanwhile.
        self.xdotool("mousedown", str(button))
        time.sleep(0.3)
        self.xdotool("mouseup", str(button))
