# SPDX-License-Identifier: GPL-3.0-or-later
"""Other pages cannot give commands: only local ones, and hosts that the user has listed."""

import http.server
import os
import threading
import unittest

from stage import Stage, build_folder, cookie_text, main

_PAGE = "<!DOCTYPE html><meta charset=\"utf-8\"><title>Page</title>\n".encode("utf-8")
_FOREIGN = "malin.example"


class _Server(http.server.BaseHTTPRequestHandler):
    def do_GET(self):
        self.send_response(200)
        self.send_header("Content-Type", "text/html; charset=utf-8")
        self.send_header("Content-Length", str(len(_PAGE)))
        self.end_headers()
        self.wfile.write(_PAGE)

    def log_message(self, *_):
        pass


class Foreign(unittest.TestCase):
    def setUp(self):
        # The names resolve to this machine, and to nothing else.
        names = f"{_FOREIGN},autre.example,ecole.example"
        self.stage = Stage(build_folder(), preferences={"network.dns.localDomains": names})
        self.enterContext(self.stage)
        self.program = self.stage.program("programme")
        server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), _Server)
        self.port = server.server_address[1]
        threading.Thread(target=server.serve_forever, daemon=True).start()
        self.addCleanup(server.server_close)
        self.addCleanup(server.shutdown)

    def visit(self, host):
        self.stage.firefox.page.navigate(f"http://{host}:{self.port}/")
        self.stage.firefox.page.wait_until("return location.hostname === arguments[0];", host)

    def send_from(self, host, *fields):
        """Gives a command from a page of that host."""
        self.visit(host)
        self.stage.send(list(fields))
        # The browser took it: otherwise the test would show nothing.
        self.assertIn(fields[-1], self.stage.firefox.page.cookies())

    def words(self):
        return [note["arguments"][0] for note in self.stage.recorder.starts()]

    def test_a_foreign_page_is_refused_and_traced_once(self):
        stage, refusal = self.stage, f"cookie refusé, hôte : {_FOREIGN}"
        stage.begin()
        # The first row that counts ends a look at the store: ours must not hide the other's.
        stage.forget_command()
        self.send_from(_FOREIGN, "runapp", self.program, "mal", "m1")
        stage.companion.wait_for_trace(refusal)

        # Our own page goes on working beside it, and looks at the store do not repeat the line.
        stage.open_plain_page()
        for word in ("bien 1", "bien 2", "bien 3"):
            stage.command("runapp", self.program, f'"{word}"')
        stage.recorder.wait_for_starts(3)
        self.assertEqual(self.words(), ["bien 1", "bien 2", "bien 3"])
        self.assertEqual(stage.companion.trace().count(refusal), 1)

    def test_a_command_inside_another_cookie_is_no_command(self):
        stage = self.stage
        stage.begin()
        page = stage.firefox.page
        hidden = cookie_text(["runapp", self.program, "mal", "h1"]).split(";")[0]
        self.visit("autre.example")
        page.set_cookie_text(f"a={hidden.replace('=', '')}; path=/; max-age=86400")
        page.set_cookie_text(f"b={hidden}; path=/; max-age=86400")
        page.set_cookie_text(f"c{hidden.replace('=', '')}=1; path=/; max-age=86400")
        self.assertIn("Tavr1CodeToExerunapp", page.cookies())

        # The same on a local page: the value of another cookie is never a command.
        stage.open_plain_page()
        page.set_cookie_text(f"d={hidden.replace('=', '')}; path=/; max-age=86400")

        # What arrives afterwards shows that all of this was on the disk and was passed over.
        stage.command("runapp", self.program, "bien")
        stage.recorder.wait_for_starts(1)
        self.assertEqual(self.words(), ["bien"])

    def test_pages_of_this_machine_and_listed_hosts_are_heard(self):
        stage = self.stage
        # One that is not listed yet.
        stage.begin()
        stage.forget_command()
        self.send_from("ecole.example", "runapp", self.program, "trop tôt", "e1")
        stage.companion.wait_for_trace("cookie refusé, hôte : ecole.example")
        self.assertEqual(stage.companion.stop(), 0)
        stage.forget_command()

        with open(os.path.join(stage.companion.folder, "hotes_autorises.txt"), "w",
                  encoding="ascii") as file:
            file.write("ecole.example\n")
        for number, host in enumerate(("127.0.0.1", "localhost", "ecole.example")):
            # Each with a store in which no other page's command stands before its own.
            stage.firefox.restart()
            stage.companion.start()
            stage.firefox.page.wait_for_tab("start.html")
            self.visit(host)
            stage.companion.wait_until_watching(stage.send)
            stage.command("runapp", self.program, host)
            stage.recorder.wait_for_starts(number + 1)
            self.assertEqual(self.words()[-1], host)
            self.assertEqual(stage.companion.stop(), 0)
            stage.forget_command()
        self.assertEqual(self.words(), ["127.0.0.1", "localhost", "ecole.example"])


if __name__ == "__main__":
    main()
