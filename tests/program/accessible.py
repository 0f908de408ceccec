"""Widgets of another program, as it describes them on the accessibility bus.

Asks over plain D-Bus: the usual client library answers from a cache that lags behind the program,
and told to keep none it can wait for ever inside its own event handler.

A question that the program does not answer, or about a widget that is gone, raises GLib.Error; a
widget that is not there raises LookupError.
"""

import functools

from gi.repository import Gio, GLib

ANSWER_WITHIN_MS = 30000

_CHECKED = 4  # states, as the accessibility bus numbers them
_SELECTED = 23
_SHOWING = 25
_WHOLE_SCREEN = 0
_NAMES = "org.a11y.atspi."

# As the bus numbers them. What it calls them differs between its versions.
_ROLES = {
    2: "alert", 7: "check box", 16: "dialog", 23: "frame", 26: "icon", 27: "image", 29: "label",
    33: "menu", 34: "menu bar", 35: "menu item", 43: "push button", 44: "radio button",
    53: "split pane", 54: "status bar", 55: "table", 56: "table cell", 61: "text",
    62: "toggle button", 63: "tool bar", 66: "tree table", 67: "unknown", 69: "window"}


def _ask(connection, service, path, interface, question, signature="()", *values):
    answer = connection.call_sync(service, path, interface, question,
                                  GLib.Variant(signature, values), None,
                                  Gio.DBusCallFlags.NONE, ANSWER_WITHIN_MS, None)
    return answer.unpack()


@functools.lru_cache(maxsize=None)
def _bus():
    session = Gio.bus_get_sync(Gio.BusType.SESSION)
    (address,) = _ask(session, "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress")
    return Gio.DBusConnection.new_for_address_sync(
        address, Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT
        | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION, None, None)


class Accessible:
    """One widget, or a part of one such as a cell of a table."""

    def __init__(self, reference):
        self._service, self._path = reference

    def _call(self, interface, question, signature="()", *values):
        answer = _ask(_bus(), self._service, self._path, _NAMES + interface, question, signature,
                      *values)
        return answer[0] if answer else None

    def _property(self, interface, name):
        return _ask(_bus(), self._service, self._path, "org.freedesktop.DBus.Properties", "Get",
                    "(ss)", _NAMES + interface, name)[0]

    @property
    def role(self):
        """A word, or its number if no test has asked for that role."""
        number = self._call("Accessible", "GetRole")
        return _ROLES.get(number, number)

    @property
    def name(self):
        return self._property("Accessible", "Name")

    @property
    def description(self):
        return self._property("Accessible", "Description")

    @property
    def children(self):
        return [Accessible(reference) for reference in self._call("Accessible", "GetChildren")]

    @property
    def extents(self):
        """x, y, width, height on the screen."""
        return self._call("Component", "GetExtents", "(u)", _WHOLE_SCREEN)

    @property
    def text(self):
        """The whole text of a text view; other widgets have only a name."""
        return self._call("Text", "GetText", "(ii)", 0, -1)

    @property
    def rows(self):
        """The cells' texts of a table or tree, row by row; none without columns."""
        if _NAMES + "Table" not in self._call("Accessible", "GetInterfaces"):
            return []
        columns = range(self._property("Table", "NColumns"))
        if not columns:  # a tree without a model complains when it is asked for its rows
            return []
        return [[self._cell(row, column).name for column in columns]
                for row in range(self._property("Table", "NRows"))]

    def _cell(self, row, column):
        return Accessible(self._call("Table", "GetAccessibleAt", "(ii)", row, column))

    def _has_state(self, state):
        low, high = self._call("Accessible", "GetState")
        return bool((high << 32 | low) >> state & 1)

    @property
    def is_showing(self):
        return self._has_state(_SHOWING)

    @property
    def is_selected(self):
        return self._has_state(_SELECTED)

    @property
    def is_checked(self):
        return self._has_state(_CHECKED)

    def act(self):
        """Does the first thing the widget is for: a menu entry is activated, a button pressed."""
        self._call("Action", "DoAction", "(i)", 0)

    def descendants(self):
        for child in self.children:
            yield child
            yield from child.descendants()

    def find(self, role, name=None):
        """The first descendant of that role, and of that name if one is given."""
        for widget in self.descendants():
            if widget.role == role and name in (None, widget.name):
                return widget
        raise LookupError(f"no {role} {name or ''}")

    def child(self, name):
        for widget in self.children:
            if widget.name == name:
                return widget
        raise LookupError(f"nothing named {name}")


def application(process_id):
    """What the program of that process id shows; its children are its windows."""
    desktop = Accessible((_NAMES + "Registry", "/org/a11y/atspi/accessible/root"))
    for program in desktop.children:
        (owner,) = _ask(_bus(), "org.freedesktop.DBus", "/org/freedesktop/DBus",
                        "org.freedesktop.DBus", "GetConnectionUnixProcessID", "(s)",
                        program._service)
        if owner == process_id:
            return program
    raise LookupError(f"process {process_id} is not on the accessibility bus")
