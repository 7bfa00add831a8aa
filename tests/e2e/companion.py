# SPDX-License-Identifier: GPL-3.0-or-later
"""Tavrollo itself, on a test's desktop, with a program folder of its own."""

import json
import os
import re
import signal
import time

from desktop import wait_for

# Seconds from the start page to the first look at the store, with some to spare.
_PRIMED_AFTER = 3.0 + 1.0

_CONFIGURATION = """\
;Tavrollo - Fichier de Configuration du programme exécutable Tavrollo.exe
;ATTENTION : Ne modifiez ce fichier que si vous savez ce que vous faites !
;-------------------------------------------------------------------------
;choix du navigateur internet entrez un nombre : 0 pour fireFox ( >50.0 de nov 2016)  1 pour googleChrome ( >54 de oct 2016)
{browser}
;entrez le chemin des cookies correspondant au système d'exploitation et du navigateur choisi
{store}
;entrez la temporisation en milli secondes entre deux tests de changements effectué sur le fichier cookies
{interval}
;chemin du fichier shortQrCode.js   qui se trouve dans \\nav\\res_css\\js
{shortcuts}
;Echelle d'affichage graphique X (567 par défaut)
567
;Echelle d'affichage graphique Y (567 par défaut)
567
;Afficher les messages barre de taches 0 non 1 oui
{notifications}
;Dernier chemin de la sauvegarde (Synchronisation)
{backup}
;------------------------------------
;
;
;Hugo Pelleriac - novembre 2016
"""


def require_program(build, name="tavrollo"):
    """The path of a program in the build folder; ends plainly when it has not been built."""
    path = os.path.join(os.path.abspath(build), name)
    if not os.access(path, os.X_OK):
        raise SystemExit(f"{path} is not there: build it first (./run and ./test do)")
    return path


class Companion:
    """Use as a context manager, or start() and stop()."""

    def __init__(self, desktop, build, store, interval=600, notifications=1, folder=None):
        self._desktop = desktop
        self.program = require_program(build)
        self._process = None
        self._starts = 0
        self._probes = 0
        self.folder = folder or os.path.join(desktop.home, "Tavrollo")
        self.root = os.path.join(self.folder, "nav")
        os.makedirs(self.folder, exist_ok=True)
        self.configure(store, interval, notifications)

    def __enter__(self):
        self.start()
        return self

    def __exit__(self, *_):
        self.stop()

    def configure(self, store, interval=600, notifications=1, browser=0, backup=""):
        """Writes config.cfg; it is read at the next start."""
        self._interval = interval
        text = _CONFIGURATION.format(
            browser=browser, store=store, interval=interval, notifications=notifications,
            backup=backup,
            shortcuts=os.path.join(self.root, "res_css", "js", "shortQrCode.js"))
        with open(os.path.join(self.folder, "config.cfg"), "wb") as file:
            file.write(text.replace("\n", "\r\n").encode("cp1252"))

    # Starting and ending.

    def start(self, wait=True):
        """Starts the program; with `wait`, until the folder is filled and the start page opened."""
        self._starts += 1
        self.started_at = time.monotonic()
        self._process = self._desktop.start(
            self.program, "--program-folder", self.folder, "--trace", name=self._log_name())
        if wait:
            wait_for(lambda: self._alive() and
                     os.path.exists(self.page_path("res_css/htm/start.html")),
                     "the web application in the program folder")
        return self

    def stop(self, timeout=15.0):
        """Asks the program to end; gives its exit status (an error if it had to be killed)."""
        if self._process is None:
            return 0
        status = self._desktop.end(self._process, signal.SIGTERM, timeout)
        self._process = None
        if status == -signal.SIGKILL:
            raise RuntimeError(f"Tavrollo did not end within {timeout:g} s of SIGTERM")
        return status

    def restart(self):
        self.stop()
        return self.start()

    @property
    def running(self):
        return self._process is not None and self._process.poll() is None

    @property
    def process_id(self):
        return self._process.pid

    def _alive(self):
        if not self.running:
            status = self._process.returncode if self._process else "not started"
            raise RuntimeError(f"Tavrollo ended (status {status}); it had written:\n{self.trace()}")
        return True

    def _log_name(self):
        return f"tavrollo-{self._starts}"

    # Pages.

    def page_path(self, name):
        """The path of a page or file of the web application ("index.html")."""
        return os.path.join(self.root, name)

    def page_address(self, name):
        """The address at which a browser opens it."""
        return "file://" + self.page_path(name)

    def user_file(self, name, content=b"essai\n"):
        """Makes a file below user_datas and gives its path."""
        path = os.path.join(self.root, "user_datas", name)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "wb") as file:
            file.write(content)
        return path

    # What it did.

    def trace(self):
        """Everything that this run of the program has traced."""
        return self._desktop.log(self._log_name()).replace("\r\n", "\n")

    def wait_for_trace(self, text, count=1, timeout=20.0):
        """Waits until `text` stands `count` times in the trace."""
        try:
            wait_for(lambda: self._alive() and self.trace().count(text) >= count,
                     f"{count} × {text!r} in the trace", timeout)
        except TimeoutError as error:
            raise TimeoutError(f"{error}; its end:\n{self.trace()[-2000:]}") from None

    def let_it_prime(self):
        """Lets the time pass that the program takes, once the start page was opened, to look at
        what stands in the store already. Nothing shows that it has looked."""
        time.sleep(_PRIMED_AFTER + 2 * self._interval / 1000)

    def wait_for_quiet_looks(self, looks=3):
        """Lets this many looks at the store pass. They leave no line when nothing is new."""
        time.sleep(looks * self._interval / 1000 + 0.5)

    def state(self):
        """What the program last told the pages (etat.js), {} before the first command."""
        try:
            with open(self.page_path("res_css/js/etat.js"), encoding="cp1252",
                      errors="replace") as file:
                found = re.search(r"tavrolloEtat\s*=\s*(\{.*\})\s*;", file.read(), re.DOTALL)
        except FileNotFoundError:
            return {}
        return json.loads(found.group(1)) if found else {}

    def wait_for_handled(self, last_field, timeout=20.0):
        """Waits until the command whose last field this is has been handled."""
        try:
            wait_for(lambda: self._alive() and self.state().get("dernier") == last_field,
                     f"command {last_field!r} handled (last: {self.state()})", timeout)
        except TimeoutError as error:
            raise TimeoutError(f"{error}; the trace's end:\n{self.trace()[-2000:]}") from None

    # Commands.

    def wait_until_watching(self, send, timeout=40.0):
        """Sends harmless commands until one is handled: from then on none goes unheard.

        `send` takes a list of fields. What is in the store while the program starts counts as
        handled already, so that a single command would tell nothing.
        """
        deadline = time.monotonic() + timeout
        while time.monotonic() < deadline:
            self._probes += 1
            probe = f"amorce{self._probes}"
            send(["lzck", "true", probe])
            try:
                self.wait_for_handled(probe, timeout=2.0)
                return
            except TimeoutError:
                continue
        raise TimeoutError(f"Tavrollo took no command within {timeout:g} s; the trace:\n"
                           f"{self.trace()[-3000:]}")


def cookie_text(fields, path="/"):
    """What a page assigns to document.cookie to give a command."""
    return f"Tavr1CodeToExe={'_|_'.join(fields)}_e-o-v_; path={path}; max-age=86400; SameSite=Lax"
