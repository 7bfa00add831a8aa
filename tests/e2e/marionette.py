# SPDX-License-Identifier: GPL-3.0-or-later
"""Drives a Firefox that was started with --marionette: its plain TCP protocol, nothing else.

A message is its length in bytes, a colon, and JSON: [0, id, command, parameters] to the browser,
[1, id, error, result] back.
"""

import base64
import json
import socket
import time

# How the protocol names an element inside a result or a parameter.
_ELEMENT = "element-6066-11e4-a52e-4f735466cecf"

# The protocol's code points for the keys that have no character.
KEYS = {"Tab": "\ue004", "Enter": "\ue007", "Shift": "\ue008", "Control": "\ue009",
        "Space": " ", "Escape": "\ue00c", "Backspace": "\ue003"}


class MarionetteError(Exception):
    """The browser refused a command (`kind` is its own word for why), or the connection broke."""

    def __init__(self, kind, message):
        super().__init__(f"{kind}: {message}")
        self.kind = kind


class Marionette:
    """One session with one Firefox. Every call has a deadline; none waits for ever."""

    def __init__(self, port, timeout=60.0):
        self._timeout = timeout
        self._buffer = b""
        self._next_id = 0
        self._socket = socket.create_connection(("127.0.0.1", port), timeout)
        greeting = self._read_message()
        if not isinstance(greeting, dict) or "marionetteProtocol" not in greeting:
            raise MarionetteError("protocol", f"not a Firefox: {greeting!r}")
        self._send("WebDriver:NewSession",
                   {"capabilities": {"alwaysMatch": {"acceptInsecureCerts": True}}})

    # The connection.

    def _receive(self):
        try:
            piece = self._socket.recv(65536)
        except socket.timeout:
            raise MarionetteError("timeout", f"no answer within {self._timeout:g} s") from None
        except OSError as error:
            raise MarionetteError("connection", str(error)) from None
        if not piece:
            raise MarionetteError("connection", "closed by the browser")
        self._buffer += piece

    def _read_message(self):
        while b":" not in self._buffer:
            if len(self._buffer) > 20:
                raise MarionetteError("protocol", f"no length in {self._buffer[:40]!r}")
            self._receive()
        length, _, rest = self._buffer.partition(b":")
        if not length.isdigit():
            raise MarionetteError("protocol", f"no length in {self._buffer[:40]!r}")
        needed = int(length)
        self._buffer = rest
        while len(self._buffer) < needed:
            self._receive()
        body, self._buffer = self._buffer[:needed], self._buffer[needed:]
        return json.loads(body.decode("utf-8"))

    def _send(self, command, parameters=None):
        self._next_id += 1
        body = json.dumps([0, self._next_id, command, parameters or {}]).encode("utf-8")
        try:
            self._socket.sendall(str(len(body)).encode("ascii") + b":" + body)
        except OSError as error:
            raise MarionetteError("connection", str(error)) from None
        while True:
            message = self._read_message()
            if isinstance(message, list) and len(message) == 4 and message[1] == self._next_id:
                break
        error, result = message[2], message[3]
        if error:
            raise MarionetteError(error.get("error", "error"),
                                  f"{command}: {error.get('message', '')}")
        return result

    def close(self):
        """Ends the connection; the browser goes on."""
        self._socket.close()

    def quit(self):
        """Asks the browser to end as its own menu would: stores are written out."""
        try:
            self._send("Marionette:Quit", {"flags": ["eForceQuit"]})
        except MarionetteError as error:
            if error.kind != "connection":
                raise
        self.close()

    # Pages and windows.

    def navigate(self, address):
        """Opens `address` in the current tab and waits until it is loaded."""
        self._send("WebDriver:Navigate", {"url": address})
        # A page of another host lives in another process: a script that is sent at once may still
        # meet the end of the page before, and then gives nothing.
        self.wait_until("return document.readyState === 'complete';")

    def address(self):
        """The address of the current tab's page."""
        return self._send("WebDriver:GetCurrentURL")["value"]

    def tabs(self):
        """The handles of all tabs."""
        result = self._send("WebDriver:GetWindowHandles")
        return result["value"] if isinstance(result, dict) else result

    def use_tab(self, handle):
        """Makes a tab the current one and brings it to the front."""
        self._send("WebDriver:SwitchToWindow", {"handle": handle, "focus": True})

    def wait_for_tab(self, address_end, timeout=30.0):
        """Makes the tab whose address ends so the current one, as soon as there is one and it is loaded."""
        deadline = time.monotonic() + timeout
        while True:
            seen = []
            for handle in self.tabs():
                try:
                    self.use_tab(handle)
                    address = self.address()
                except MarionetteError as error:
                    if error.kind != "no such window":
                        raise
                    continue
                if address.split("?")[0].split("#")[0].endswith(address_end):
                    # The address is the new one before the page is.
                    self.wait_until("return document.readyState === 'complete' && "
                                    "document.URL.split(/[?#]/)[0].endsWith(arguments[0]);",
                                    address_end, timeout=timeout)
                    return
                seen.append(address)
            if time.monotonic() > deadline:
                raise MarionetteError("timeout", f"no tab shows {address_end}; tabs: {seen}")
            time.sleep(0.1)

    def run(self, script, *arguments):
        """Runs the body of a function in the page and gives what it returns."""
        return self._send("WebDriver:ExecuteScript",
                          {"script": script, "args": list(arguments), "newSandbox": False,
                           "sandbox": None})["value"]

    def wait_until(self, script, *arguments, timeout=20.0, what=None):
        """Runs a script again and again until it returns something true, and gives that."""
        deadline = time.monotonic() + timeout
        while True:
            value = self.run(script, *arguments)
            if value:
                return value
            if time.monotonic() > deadline:
                raise MarionetteError(
                    "timeout", f"{what or script} {arguments} within {timeout:g} s "
                    f"on {self.address()}")
            time.sleep(0.1)

    def screenshot(self, path):
        """Saves a picture of the page in the current tab."""
        picture = self._send("WebDriver:TakeScreenshot", {"full": False})["value"]
        with open(path, "wb") as file:
            file.write(base64.b64decode(picture))

    # Elements, by their id.

    def find(self, element_id):
        """The element of that id; an error when the page has none."""
        result = self._send("WebDriver:FindElement",
                            {"using": "css selector", "value": f"#{element_id}"})
        return result["value"][_ELEMENT]

    def click(self, element_id):
        """Clicks an element as the mouse does: it must be visible and not covered."""
        self._send("WebDriver:ElementClick", {"id": self.find(element_id)})

    def type_into(self, element_id, text, clear=True):
        """Types text into an element, after emptying it when `clear` is set."""
        element = self.find(element_id)
        if clear:
            self._send("WebDriver:ElementClear", {"id": element})
        self._send("WebDriver:ElementSendKeys", {"id": element, "text": text})

    def text_of(self, element_id):
        """The visible text of an element."""
        return self._send("WebDriver:GetElementText", {"id": self.find(element_id)})["value"]

    # The keyboard alone.

    def press(self, *keys):
        """Presses keys together (by name or character) on whatever has the focus."""
        values = [KEYS.get(key, key) for key in keys]
        actions = [{"type": "keyDown", "value": value} for value in values]
        actions += [{"type": "keyUp", "value": value} for value in reversed(values)]
        self._send("WebDriver:PerformActions",
                   {"actions": [{"type": "key", "id": "keyboard", "actions": actions}]})

    def write(self, text):
        """Types text, key after key, on whatever has the focus."""
        for character in text:
            self.press(character)

    def focused(self):
        """The id of the element that keys go to, "" when that is not in the page."""
        return self.run("return document.hasFocus() && document.activeElement ? "
                        "document.activeElement.id : '';")

    def tab_to(self, element_id, backwards=False, most=60):
        """Presses Tab until the element has the focus; an error when it is not on the way.

        Nobody should have to go round: behind the page's last element lie the browser's own.
        """
        seen = []
        for _ in range(most):
            if self.focused() == element_id:
                return
            self.press(*(["Shift", "Tab"] if backwards else ["Tab"]))
            seen.append(self.focused())
        raise MarionetteError("focus", f"Tab never reached {element_id}; it went over {seen}")

    # Cookies of the page in the current tab.

    def set_cookie_text(self, text):
        """Assigns `text` to document.cookie, as a page's own script does."""
        self.run("document.cookie = arguments[0];", text)

    def cookies(self):
        """What the page itself sees in document.cookie."""
        return self.run("return document.cookie;")
