# SPDX-License-Identifier: GPL-3.0-or-later
"""A desktop of its own for a test: a screen, a window manager, a tray, a message bus, a home.

Nothing of the user's is read or touched, and whatever is started here ends with the test, however
the test ends.
"""

import ctypes
import os
import shutil
import signal
import subprocess
import sys
import tempfile
import time

_PR_SET_PDEATHSIG = 1
_PR_SET_CHILD_SUBREAPER = 36
_libc = ctypes.CDLL(None, use_errno=True)


def _end_with_parent():
    # A test that is killed outright cannot clean up: the kernel does it then.
    _libc.prctl(_PR_SET_PDEATHSIG, signal.SIGKILL)


def children_of(process):
    """The ids of all living processes whose parent is `process`."""
    found = []
    for name in os.listdir("/proc"):
        if not name.isdigit():
            continue
        try:
            with open(f"/proc/{name}/stat", encoding="utf-8", errors="replace") as file:
                fields = file.read().rpartition(")")[2].split()
        except OSError:
            continue
        if int(fields[1]) == process and fields[0] != "Z":
            found.append(int(name))
    return found


def descendants_of(process):
    """The ids of all living processes below `process`."""
    found = []
    for child in children_of(process):
        found.append(child)
        found += descendants_of(child)
    return found


def need(*programs):
    """The path of the first of these programs that is installed; ends plainly when none is."""
    for program in programs:
        path = shutil.which(program)
        if path:
            return path
    raise SystemExit(f"{' or '.join(programs)} is not installed (./test installs what is needed)")


def wait_for(condition, what, timeout=20.0):
    """Waits until `condition()` is true and gives its result; an error that says `what` if never."""
    deadline = time.monotonic() + timeout
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > deadline:
            raise TimeoutError(f"{what}: not within {timeout:g} s")
        time.sleep(0.05)


class Desktop:
    """Use as a context manager. `environment` is what programs on this desktop are started with."""

    def __init__(self, screen="1280x900x24"):
        self._screen = screen
        self._processes = []
        self._defaults = {}
        # Kept short: a command in a cookie holds 256 bytes, and paths stand in it.
        self.folder = tempfile.mkdtemp(prefix="tav-")
        self.home = os.path.join(self.folder, "home")
        self.logs = os.path.join(self.folder, "logs")
        self.environment = self._make_environment()

    def __enter__(self):
        # Programs that Tavrollo starts are detached from it: as the nearest reaper they come to
        # us, so that they can be ended.
        _libc.prctl(_PR_SET_CHILD_SUBREAPER, 1)
        self._old_handler = signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))
        try:
            self._start_screen()
            self._start_bus()
        except BaseException:
            self.__exit__(None, None, None)
            raise
        return self

    def __exit__(self, *_):
        for process in reversed(self._processes):
            self.end(process)
        self._end_leftovers()
        signal.signal(signal.SIGTERM, self._old_handler)
        shutil.rmtree(self.folder, ignore_errors=True)

    def _make_environment(self):
        folders = {"HOME": self.home,
                   "XDG_CONFIG_HOME": os.path.join(self.home, ".config"),
                   "XDG_DATA_HOME": os.path.join(self.home, ".local/share"),
                   "XDG_CACHE_HOME": os.path.join(self.home, ".cache"),
                   "XDG_STATE_HOME": os.path.join(self.home, ".local/state"),
                   "XDG_RUNTIME_DIR": os.path.join(self.folder, "runtime"),
                   "TMPDIR": os.path.join(self.folder, "tmp")}
        for folder in folders.values():
            os.makedirs(folder, mode=0o700)
        os.makedirs(self.logs)
        self.programs = os.path.join(self.home, "bin")
        os.makedirs(self.programs)
        # Built from nothing: the caller's display, bus and browser settings must not leak in.
        environment = dict(folders)
        environment.update({
            "PATH": self.programs + ":/usr/local/bin:/usr/bin:/bin:/usr/local/games:/usr/games",
            "XDG_DATA_DIRS": "/usr/local/share:/usr/share",
            "LANG": "C.UTF-8", "LC_ALL": "C.UTF-8", "USER": os.environ.get("USER", "tavrollo"),
            "XDG_CURRENT_DESKTOP": "X-Generic", "QT_QPA_PLATFORM": "xcb",
            "NO_AT_BRIDGE": "1", "MOZ_CRASHREPORTER_DISABLE": "1", "GDK_BACKEND": "x11",
            # The screen has no graphics card behind it.
            "LIBGL_ALWAYS_SOFTWARE": "1"})
        for name in ("ASAN_OPTIONS", "UBSAN_OPTIONS"):
            if name in os.environ:
                environment[name] = os.environ[name]
        return environment

    # Processes.

    def start(self, *command, name=None, **options):
        """Starts a program on this desktop; its output goes to a file in `logs`."""
        name = name or os.path.basename(command[0])
        log = open(os.path.join(self.logs, name + ".log"), "ab")
        options.setdefault("stdout", log)
        options.setdefault("stderr", log)
        process = subprocess.Popen(command, env=self.environment, cwd=self.home,
                                   stdin=subprocess.DEVNULL, start_new_session=True,
                                   preexec_fn=_end_with_parent, **options)
        log.close()
        self._processes.append(process)
        return process

    def run(self, *command, timeout=30):
        """Runs a short command to its end and gives its output as text."""
        return subprocess.run(command, env=self.environment, cwd=self.home,
                              stdin=subprocess.DEVNULL, capture_output=True, text=True,
                              timeout=timeout, check=True).stdout

    def end(self, process, first_signal=signal.SIGTERM, timeout=10.0):
        """Ends a process that start() gave, hard if it does not go; gives its exit status."""
        if process.poll() is None:
            process.send_signal(first_signal)
            try:
                process.wait(timeout)
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait()
        if process in self._processes:
            self._processes.remove(process)
        return process.returncode

    def _end_leftovers(self):
        for _ in range(50):
            left = descendants_of(os.getpid())
            if not left:
                return
            for process in left:
                try:
                    os.kill(process, signal.SIGKILL)
                except ProcessLookupError:
                    pass
            self._reap()
            time.sleep(0.02)

    @staticmethod
    def _reap():
        try:
            while os.waitpid(-1, os.WNOHANG)[0]:
                pass
        except ChildProcessError:
            pass

    def log(self, name):
        """What a program that start() started has written, as text."""
        try:
            with open(os.path.join(self.logs, name + ".log"), encoding="utf-8",
                      errors="replace") as file:
                return file.read()
        except FileNotFoundError:
            return ""

    # The parts of the desktop.

    def _start_screen(self):
        server, window_manager, tray = need("Xvfb"), need("openbox"), need("trayer")
        reading, writing = os.pipe()
        try:
            # The server itself finds a display number that is free, and says which.
            process = self.start(server, "-displayfd", str(writing), "-screen", "0", self._screen,
                                 "-nolisten", "tcp", "-noreset", pass_fds=(writing,))
            os.close(writing)
            writing = None
            with os.fdopen(reading, "rb") as pipe:
                reading = None
                number = pipe.readline().strip().decode("ascii")
        finally:
            for end in (reading, writing):
                if end is not None:
                    os.close(end)
        if not number:
            process.wait()
            raise RuntimeError("Xvfb did not start:\n" + self.log("Xvfb"))
        self.environment["DISPLAY"] = ":" + number
        self.start(window_manager, "--sm-disable")
        self._tray = self.start(tray, "--edge", "bottom", "--align", "right", "--widthtype",
                                "request", "--height", "28", "--SetDockType", "true", "--expand",
                                "true")
        wait_for(self._tray_is_there, "the tray of " + self.environment["DISPLAY"])

    def _tray_is_there(self):
        return "window id" in self.run("xprop", "-root", "_NET_SUPPORTING_WM_CHECK") and \
            "panel" in self.windows()

    def _start_bus(self):
        reading, writing = os.pipe()
        self.start(need("dbus-daemon"), "--session", "--nofork",
                   f"--print-address={writing}", pass_fds=(writing,))
        os.close(writing)
        with os.fdopen(reading, "rb") as pipe:
            address = pipe.readline().strip().decode("ascii")
        if not address:
            raise RuntimeError("dbus-daemon did not start:\n" + self.log("dbus-daemon"))
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = address

    def end_tray(self):
        """Takes the tray away, as on a desktop that has none."""
        self.end(self._tray)

    def windows(self):
        """The titles of the windows on the screen, one a line, with their places and sizes."""
        def listed():
            try:
                return self.run("xwininfo", "-root", "-tree")
            except subprocess.CalledProcessError:
                return None  # a window went while they were listed
        return wait_for(listed, "a list of the windows", 5)

    def press(self, title, *keys, timeout=20.0):
        """Waits until the window whose title begins with `title` has the focus, and presses keys."""
        def has_focus():
            try:
                found = self.run("xdotool", "search", "--onlyvisible", "--name", "^" + title).split()
                self.run("xdotool", "windowactivate", "--sync", found[-1])
                return self.run("xdotool", "getwindowfocus").strip() == found[-1]
            except (subprocess.CalledProcessError, subprocess.TimeoutExpired):
                # Not there yet, or not yet ready to be given the focus.
                return False
        wait_for(has_focus, f"the window {title!r} with the focus", timeout)
        self.run("xdotool", "key", "--delay", "100", *keys)

    def photograph(self, path):
        """Saves a picture of the whole screen."""
        self.run("import", "-window", "root", path)

    # Which program opens what.

    def register(self, name, command, *mime_types):
        """Makes `command` (a .desktop file's Exec line) the default for these MIME types."""
        applications = os.path.join(self.environment["XDG_DATA_HOME"], "applications")
        os.makedirs(applications, exist_ok=True)
        with open(os.path.join(applications, name + ".desktop"), "w", encoding="utf-8") as file:
            file.write("[Desktop Entry]\nType=Application\nTerminal=false\n"
                       f"Name={name}\nExec={command}\nMimeType={';'.join(mime_types)};\n")
        self.set_default(name + ".desktop", *mime_types)

    def set_default(self, desktop_file, *mime_types):
        """Makes an application that is already known the default for these MIME types."""
        self._defaults.update(dict.fromkeys(mime_types, desktop_file))
        path = os.path.join(self.environment["XDG_CONFIG_HOME"], "mimeapps.list")
        with open(path, "w", encoding="utf-8") as file:
            file.write("[Default Applications]\n")
            file.writelines(f"{mime_type}={name}\n" for mime_type, name in self._defaults.items())
