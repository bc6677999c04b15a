# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
"""What a screen reader finds in a program's windows, asked of the program itself each time: nothing is cached."""

import dbus
from dbus.mainloop.glib import DBusGMainLoop
from gi.repository import GLib

from rig.screen import Box

_ACCESSIBLE = "org.a11y.atspi.Accessible"
_BUS = ("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus")
_ON_SCREEN = dbus.UInt32(0)
_GONE = ("org.freedesktop.DBus.Error.ServiceUnknown", "org.freedesktop.DBus.Error.NoReply",
         "org.freedesktop.DBus.Error.UnknownObject", "org.freedesktop.DBus.Error.NameHasNoOwner",
         "org.freedesktop.DBus.Error.Disconnected", "org.freedesktop.DBus.Error.InvalidArgs")
# Numbers of the protocol.
ACTIVE, CHECKED, SHOWING = 1, 4, 25


def connect():
    """The bus of the screen readers; the session bus starts it."""
    launcher = dbus.SessionBus().get_object("org.a11y.Bus", "/org/a11y/bus", introspect=False)
    return dbus.bus.BusConnection(launcher.GetAddress(dbus_interface="org.a11y.Bus"), mainloop=DBusGMainLoop())


def program(bus, pid):
    """The program that runs in a process; None while it is not registered or has not begun to answer."""
    return _find_program(bus, lambda child: bus.call_blocking(*_BUS, "GetConnectionUnixProcessID", "s",
                                                              (child.service,)) == pid)


def program_called(bus, name):
    """The first program of this name; None while there is none that answers."""
    return _find_program(bus, lambda child: child.name == name)


def _find_program(bus, fits):
    desktop = Accessible(bus, "org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root")
    for child in desktop.children():
        try:
            if fits(child):
                child.children()
                return child
        except dbus.DBusException as error:
            if error.get_dbus_name() not in _GONE:
                raise
    return None


class ShownMenus:
    """Follows the menus that programs open: a menu lies in no window, its opening alone tells where it is."""

    def __init__(self, bus):
        self._bus = bus
        self._shown = []
        bus.add_signal_receiver(self._add, "StateChanged", "org.a11y.atspi.Event.Object", arg0="showing",
                                sender_keyword="service", path_keyword="path")
        bus.call_blocking("org.a11y.atspi.Registry", "/org/a11y/atspi/registry", "org.a11y.atspi.Registry",
                          "RegisterEvent", "s", ("object:state-changed:showing",))

    def _add(self, _state, is_set, *_, service, path):
        if is_set:
            self._shown.append((service, path))

    def take(self, service):
        """The menu that a program has opened since the last call; None when there is none."""
        while GLib.MainContext.default().iteration(False):
            pass
        shown, self._shown = self._shown, []
        for owner, path in shown:
            candidate = Accessible(self._bus, owner, path)
            if owner == service and candidate.role == "popup menu":
                return candidate
        return None


class Accessible:
    """One object: a window, a control, a table cell."""

    def __init__(self, bus, service, path):
        self._bus = bus
        self.service = service
        self._object = bus.get_object(service, path, introspect=False)

    def _call(self, interface, method, *arguments):
        return self._object.get_dbus_method(method, interface)(*arguments, timeout=60)

    def _property(self, interface, name):
        return self._call(dbus.PROPERTIES_IFACE, "Get", interface, name)

    def _reached(self, reference):
        return Accessible(self._bus, *reference)

    @property
    def name(self):
        """The text."""
        return str(self._property(_ACCESSIBLE, "Name"))

    @property
    def role(self):
        """For example "table", "push button", "check box", "menu item", "alert"."""
        return str(self._call(_ACCESSIBLE, "GetRoleName"))

    def has_state(self, state):
        """Whether a state such as CHECKED is set."""
        low, high = self._call(_ACCESSIBLE, "GetState")
        return bool((int(high) << 32 | int(low)) >> state & 1)

    @property
    def box(self):
        """Where it lies on the screen."""
        extents = self._call("org.a11y.atspi.Component", "GetExtents", _ON_SCREEN)
        return Box(*(int(length) for length in extents))

    def children(self):
        """What it holds directly."""
        return [self._reached(child) for child in self._call(_ACCESSIBLE, "GetChildren")]

    def descendants(self):
        """All that it holds, each object before its own content."""
        for child in self.children():
            yield child
            yield from child.descendants()

    def find(self, role, name=None):
        """The first descendant with this role and, unless it is None, this text; None when there is none."""
        for child in self.descendants():
            if child.role == role and name in (None, child.name):
                return child
        return None

    def act(self):
        """Does its first action: presses a button, toggles a box. Returns before a dialog ends that this opens."""
        return bool(self._call("org.a11y.atspi.Action", "DoAction", dbus.Int32(0)))

    # --- tables ---

    def rows(self):
        """The texts of a table, a tuple a row."""
        counts = [int(self._property("org.a11y.atspi.Table", name)) for name in ("NRows", "NColumns")]
        return [tuple(self.cell(row, column).name for column in range(counts[1])) for row in range(counts[0])]

    def cell(self, row, column):
        """A table's cell."""
        return self._reached(self._call("org.a11y.atspi.Table", "GetAccessibleAt", dbus.Int32(row), dbus.Int32(column)))

    def column_headers(self):
        """The headers' texts."""
        return [child.name for child in self.children() if child.role == "column header"]
