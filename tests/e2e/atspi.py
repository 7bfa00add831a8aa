# SPDX-License-Identifier: GPL-3.0-or-later
"""What a screen reader learns of the programs on a desktop: names, roles, states, relations.

It is asked over the accessibility bus itself: a client library would answer from its memory.
"""

from gi.repository import Gio, GLib

from desktop import wait_for

_ACCESSIBLE = "org.a11y.atspi.Accessible"
_COMPONENT = "org.a11y.atspi.Component"
_ROOT = "/org/a11y/atspi/accessible/root"
_NULL = "/org/a11y/atspi/null"
_ON_SCREEN = 0

# Bits of the state set (AT-SPI's own numbers).
ACTIVE, CHECKED, DEFUNCT, EDITABLE, ENABLED, FOCUSABLE, FOCUSED = 1, 4, 6, 7, 8, 11, 12
SELECTED, SENSITIVE, SHOWING, VISIBLE, IS_DEFAULT, READ_ONLY = 23, 24, 25, 30, 39, 43

# Kinds of relations, from the one that has it to its target.
LABEL_FOR, LABELLED_BY = 1, 2


# What is raised when something is asked that is not there any more.
Gone = GLib.Error


class Bus:
    """A connection to the accessibility bus of a desktop, which starts it when it is first asked."""

    def __init__(self, session_address):
        session = self._connect(session_address)
        address = session.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress",
                                    None, None, Gio.DBusCallFlags.NONE, -1, None).unpack()[0]
        session.close_sync(None)
        self._connection = self._connect(address)
        self._focused = None
        self._shown = []
        self._listen()

    @staticmethod
    def _connect(address):
        return Gio.DBusConnection.new_for_address_sync(
            address, Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT |
            Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION, None, None)

    def call(self, name, path, interface, method, arguments=None):
        return self._connection.call_sync(name, path, interface, method, arguments, None,
                                          Gio.DBusCallFlags.NONE, 5000, None).unpack()

    def _listen(self):
        for state in ("focused", "showing"):
            # Programs tell only what somebody has asked for.
            self.call("org.a11y.atspi.Registry", "/org/a11y/atspi/registry",
                      "org.a11y.atspi.Registry", "RegisterEvent",
                      GLib.Variant("(s)", ("object:state-changed:" + state,)))
            self._connection.signal_subscribe(
                None, "org.a11y.atspi.Event.Object", "StateChanged", None, state,
                Gio.DBusSignalFlags.NONE, self._heard)

    def _heard(self, _connection, sender, path, _interface, _signal, arguments):
        state, begins = arguments.unpack()[:2]
        if begins and state == "focused":
            self._focused = Node(self, (sender, path))
        elif begins:
            self._shown.append(Node(self, (sender, path)))

    @staticmethod
    def _hear_what_came():
        while GLib.MainContext.default().iteration(False):
            pass

    def focused(self):
        """What was last said to have the focus; None before anything was."""
        self._hear_what_came()
        return self._focused

    def forget_focus(self):
        """From now on only what gets the focus anew has it."""
        self._hear_what_came()
        self._focused = None

    def shown(self):
        """What was said to have come on the screen, since this was asked last."""
        self._hear_what_came()
        shown, self._shown = self._shown, []
        return shown

    def close(self):
        self._connection.close_sync(None)

    def applications(self):
        """The programs that have announced themselves."""
        root = Node(self, ("org.a11y.atspi.Registry", _ROOT))
        return root.children()

    def application(self, name, timeout=20.0):
        """The program of that name, once it is there."""
        def found():
            for each in self.applications():
                try:
                    if each.name == name:
                        return each
                except Gone:
                    pass  # it ended meanwhile
            return None
        return wait_for(found, f"{name} on the accessibility bus", timeout)


class Node:
    """One thing that a program shows. It is asked anew each time."""

    def __init__(self, bus, reference):
        self._bus = bus
        self.reference = reference

    def __eq__(self, other):
        return isinstance(other, Node) and self.reference == other.reference

    def __hash__(self):
        return hash(self.reference)

    def __repr__(self):
        return f"{self.role} {self.name!r}"

    def _call(self, interface, method, arguments=None):
        return self._bus.call(*self.reference, interface, method, arguments)

    def _property(self, interface, name):
        return self._call("org.freedesktop.DBus.Properties", "Get",
                          GLib.Variant("(ss)", (interface, name)))[0]

    @property
    def name(self):
        return self._property(_ACCESSIBLE, "Name")

    @property
    def description(self):
        return self._property(_ACCESSIBLE, "Description")

    @property
    def role(self):
        return self._call(_ACCESSIBLE, "GetRoleName")[0]

    @property
    def interfaces(self):
        return {each.rpartition(".")[2] for each in self._call(_ACCESSIBLE, "GetInterfaces")[0]}

    def has(self, *states):
        """Whether it has all of these states."""
        low, high = self._call(_ACCESSIBLE, "GetState")[0]
        bits = low | high << 32
        return all(bits >> state & 1 for state in states)

    def children(self):
        return [Node(self._bus, each) for each in self._call(_ACCESSIBLE, "GetChildren")[0]
                if each[1] != _NULL]

    def parent(self):
        reference = self._property(_ACCESSIBLE, "Parent")
        return Node(self._bus, tuple(reference))

    def targets(self, relation):
        """What stands in a relation to it."""
        return [Node(self._bus, target) for kind, targets in self._call(_ACCESSIBLE,
                                                                         "GetRelationSet")[0]
                if kind == relation for target in targets]

    def place(self):
        """(left, top, width, height) on the screen."""
        return self._call(_COMPONENT, "GetExtents", GLib.Variant("(u)", (_ON_SCREEN,)))[0]

    def text(self):
        """Everything that stands in a box of text."""
        return self._call("org.a11y.atspi.Text", "GetText", GLib.Variant("(ii)", (0, -1)))[0]

    def act(self, index=0):
        """Does what a screen reader's user asks for: presses a button, ticks a box."""
        return self._call("org.a11y.atspi.Action", "DoAction", GLib.Variant("(i)", (index,)))[0]

    def walk(self, into=lambda node: True):
        """Everything below it, itself first. What `into` refuses is given, but not entered."""
        yield self
        if into(self):
            for child in self.children():
                yield from child.walk(into)
