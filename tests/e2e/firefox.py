# SPDX-License-Identifier: GPL-3.0-or-later
"""A real Firefox with a profile of its own, in the home of a test's desktop."""

import os
import sqlite3
import time

from desktop import need, wait_for
from marionette import Marionette, MarionetteError

# A browser that asks nothing, fetches nothing and shows no page of its own.
_PREFERENCES = {
    "app.normandy.enabled": False,
    "app.normandy.first_run": False,
    "app.update.disabledForTesting": True,
    "browser.aboutwelcome.enabled": False,
    "browser.contentblocking.report.hide_vpn_banner": True,
    "browser.dom.window.dump.enabled": False,
    "browser.newtabpage.enabled": False,
    "browser.safebrowsing.downloads.enabled": False,
    "browser.safebrowsing.malware.enabled": False,
    "browser.safebrowsing.phishing.enabled": False,
    "browser.safebrowsing.update.enabled": False,
    "browser.search.update": False,
    "browser.sessionstore.resume_from_crash": False,
    "browser.shell.checkDefaultBrowser": False,
    "browser.startup.homepage": "about:blank",
    "browser.startup.homepage_override.mstone": "ignore",
    "browser.startup.page": 0,
    "browser.tabs.remote.autostart": True,
    "browser.tabs.warnOnClose": False,
    "browser.tabs.warnOnCloseOtherTabs": False,
    "browser.termsofuse.bypassNotification": True,
    "browser.translations.automaticallyPopup": False,
    "browser.uitour.enabled": False,
    "browser.warnOnQuit": False,
    "captivedetect.canonicalURL": "",
    "datareporting.healthreport.uploadEnabled": False,
    "datareporting.policy.dataSubmissionEnabled": False,
    "datareporting.policy.dataSubmissionPolicyBypassNotification": True,
    "datareporting.usage.uploadEnabled": False,
    "dom.disable_open_during_load": False,
    # A page of a plain local server must not be turned into an https one.
    "dom.security.https_first": False,
    "dom.security.https_first_schemeless": False,
    "extensions.getAddons.cache.enabled": False,
    "extensions.systemAddon.update.enabled": False,
    "extensions.update.enabled": False,
    "intl.accept_languages": "fr-FR, fr",
    "marionette.port": 0,
    "network.captive-portal-service.enabled": False,
    "network.connectivity-service.enabled": False,
    "network.prefetch-next": False,
    "network.proxy.type": 0,
    "places.history.enabled": True,
    "services.settings.server": "data:,",
    "signon.rememberSignons": False,
    "startup.homepage_welcome_url": "",
    "toolkit.telemetry.reportingpolicy.firstRun": False,
    "toolkit.telemetry.server": "data:,",
    "trailhead.firstrun.didSeeAboutWelcome": True,
}


class Firefox:
    """Use as a context manager, or start() and stop(). `page` is the session that drives it."""

    def __init__(self, desktop, preferences=None, headless=False):
        self._desktop = desktop
        self._program = need("firefox-esr", "firefox")
        self._headless = headless
        self._process = None
        self.page = None
        root = os.path.join(desktop.home, ".mozilla", "firefox")
        self.profile = os.path.join(root, "essai")
        self.store = os.path.join(self.profile, "cookies.sqlite")
        os.makedirs(self.profile)
        # The profile is the default one, so that the desktop's "open this page" reaches the
        # Firefox that runs.
        with open(os.path.join(root, "profiles.ini"), "w", encoding="utf-8") as file:
            file.write("[General]\nStartWithLastProfile=1\nVersion=2\n\n"
                       "[Profile0]\nName=essai\nIsRelative=1\nPath=essai\nDefault=1\n")
        self._write_preferences(preferences or {})

    def __enter__(self):
        self.start()
        return self

    def __exit__(self, *_):
        self.stop()

    def _write_preferences(self, more):
        with open(os.path.join(self.profile, "user.js"), "w", encoding="utf-8") as file:
            for name, value in {**_PREFERENCES, **more}.items():
                if isinstance(value, bool):
                    text = "true" if value else "false"
                elif isinstance(value, int):
                    text = str(value)
                else:
                    text = '"' + value.replace("\\", "\\\\").replace('"', '\\"') + '"'
                file.write(f'user_pref("{name}", {text});\n')

    def start(self, timeout=60.0):
        """Starts the browser and a session in it."""
        port_file = os.path.join(self.profile, "MarionetteActivePort")
        if os.path.exists(port_file):
            os.remove(port_file)
        command = [self._program, "--marionette", "--profile", self.profile]
        if self._headless:
            command.append("--headless")
        self._process = self._desktop.start(*command, "about:blank", name="firefox")

        def port():
            if self._process.poll() is not None:
                raise RuntimeError("Firefox ended at once:\n" + self._desktop.log("firefox"))
            try:
                with open(port_file, encoding="ascii") as file:
                    return int(file.read().strip() or 0)
            except (FileNotFoundError, ValueError):
                return 0

        self.page = Marionette(wait_for(port, "Firefox's test port", timeout))
        return self

    def stop(self):
        """Ends the browser as its user would, and waits until its stores are written."""
        if self._process is None:
            return
        if self._process.poll() is None:
            try:
                self.page.quit()
                self._process.wait(30)
            except (MarionetteError, OSError, TimeoutError):
                pass
        self._desktop.end(self._process)
        self._process = None
        self.page = None

    def restart(self):
        self.stop()
        return self.start()

    @property
    def running(self):
        return self._process is not None and self._process.poll() is None

    # The cookie store.

    def fill_store(self, count):
        """Gives the profile this many cookies of other sites. The browser must not be running.

        With some thousands of them the store has many pages, and the page of the name index on
        which a command's entry lands stands in front of the page of its row.
        """
        if not os.path.exists(self.store):
            # Only Firefox itself makes its table: one start and one cookie.
            self.start()
            self.page.navigate("file:///usr/share/")
            self.page.set_cookie_text(f"x=y; max-age=1000; path=/")
            wait_for(lambda: os.path.exists(self.store), "Firefox's cookie store")
            self.stop()
        connection = sqlite3.connect(self.store)
        columns = [row[1] for row in connection.execute("PRAGMA table_info(moz_cookies)")]
        now = int(time.time())
        known = {"originAttributes": "", "path": "/", "lastAccessed": now * 1000000,
                 "creationTime": now * 1000000, "updateTime": now * 1000000, "isSecure": 0,
                 "isHttpOnly": 0, "inBrowserElement": 0, "sameSite": 0, "rawSameSite": 0,
                 "schemeMap": 2, "isPartitionedAttributeSet": 0}
        # The store counts an expiry in seconds or, in newer versions, in milliseconds.
        version = connection.execute("PRAGMA user_version").fetchone()[0]
        expiry = (now + 300 * 86400) * (1000 if version >= 16 else 1)
        rows = []
        for number in range(count):
            row = dict(known, name=f"id{number}", value=f"valeur-{number:06d}-" + "v" * 60,
                       host=f"site{number % 1000}.example", expiry=expiry,
                       creationTime=(now * 1000000) + number)
            rows.append([row.get(column) for column in columns if column != "id"])
        named = [column for column in columns if column != "id"]
        with connection:
            connection.executemany(
                f"INSERT INTO moz_cookies ({', '.join(named)}) "
                f"VALUES ({', '.join('?' * len(named))})", rows)
        connection.close()

    def cookies_in_store(self):
        """How many cookies the store holds. The browser must not be running: it locks the file."""
        connection = sqlite3.connect(self.store)
        count = connection.execute("SELECT count(*) FROM moz_cookies").fetchone()[0]
        connection.close()
        return count
