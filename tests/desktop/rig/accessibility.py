# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""What a screen reader finds in a program's windows. Every call asks the program itself; nothing is cached."""

import contextlib
import functools
import time

import dbus
from dbus.mainloop.glib import DBusGMainLoop
from gi.repository import GLib

from rig.screen import Box

_ACCESSIBLE = "org.a11y.atspi.Accessible"
_BUS = ("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus")
_ON_SCREEN = dbus.UInt32(0)
_GONE = ("org.freedesktop.DBus.Error.ServiceUnknown", "org.freedesktop.DBus.Error.NoReply",
         "org.freedesktop.DBus.Error.UnknownObject", "org.freedesktop.DBus.Error.UnknownInterface",
         "org.freedesktop.DBus.Error.UnknownMethod", "org.freedesktop.DBus.Error.NameHasNoOwner",
         "org.freedesktop.DBus.Error.Disconnected", "org.freedesktop.DBus.Error.InvalidArgs")
_CALM_WITHIN_S = 5
_PAUSE_S = 0.02
# State numbers of the protocol.
ACTIVE, CHECKED, SHOWING = 1, 4, 25


class Gone(Exception):
    """An object or a program no longer exists."""


def _undisturbed(read):
    """Repeats reading several objects while they come and go."""
    @functools.wraps(read)
    def read_again(*arguments):
        end = time.monotonic() + _CALM_WITHIN_S
        while True:
            try:
                return read(*arguments)
            except Gone:
                if time.monotonic() > end:
                    raise
            time.sleep(_PAUSE_S)
    return read_again


@contextlib.contextmanager
def _gone_is_told():
    try:
        yield
    except dbus.DBusException as error:
        if error.get_dbus_name() in _GONE:
            raise Gone(str(error)) from error
        raise


def connect():
    """Connects to the screen readers' bus, which the session bus starts."""
    launcher = dbus.SessionBus().get_object("org.a11y.Bus", "/org/a11y/bus", introspect=False)
    return dbus.bus.BusConnection(launcher.GetAddress(dbus_interface="org.a11y.Bus"), mainloop=DBusGMainLoop())


def program(bus, pid):
    """The program of a process; None until it is registered and answers."""
    return _find_program(bus, lambda child: child.pid() == pid)


def program_called(bus, name):
    """The first program of this name; None until one answers."""
    return _find_program(bus, lambda child: child.name == name)


def _find_program(bus, fits):
    desktop = Accessible(bus, "org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root")
    for child in desktop.children():
        with contextlib.suppress(Gone):
            if fits(child):
                child.children()
                return child
    return None


class ShownObjects:
    """Follows the objects that programs show. A menu belongs to no window, so only its opening reveals it."""

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

    def take(self, *roles):
        """The objects with these roles that were shown since the last call, in order."""
        while GLib.MainContext.default().iteration(False):
            pass
        shown, self._shown = self._shown, []
        taken = []
        for service, path in shown:
            with contextlib.suppress(Gone):
                candidate = Accessible(self._bus, service, path)
                if candidate.role in roles:
                    taken.append(candidate)
        return taken


class Accessible:
    """One object: a window, a control, a table cell."""

    def __init__(self, bus, service, path):
        if not service:
            raise Gone(path)
        self._bus = bus
        self.service = service
        self._object = bus.get_object(service, path, introspect=False)

    def _call(self, interface, method, *arguments):
        with _gone_is_told():
            return self._object.get_dbus_method(method, interface)(*arguments, timeout=60)

    def _property(self, interface, name):
        return self._call(dbus.PROPERTIES_IFACE, "Get", interface, name)

    def pid(self):
        """The number of the program's process."""
        with _gone_is_told():
            return int(self._bus.call_blocking(*_BUS, "GetConnectionUnixProcessID", "s", (self.service,)))

    def _reached(self, reference):
        return Accessible(self._bus, *reference)

    @property
    def name(self):
        """The text of the object."""
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
        """The position on the screen."""
        extents = self._call("org.a11y.atspi.Component", "GetExtents", _ON_SCREEN)
        return Box(*(int(length) for length in extents))

    def children(self):
        """The objects directly inside this one."""
        return [self._reached(child) for child in self._call(_ACCESSIBLE, "GetChildren")]

    @_undisturbed
    def descendants(self):
        """All objects inside this one, each before its own content."""
        return list(self._walk())

    @_undisturbed
    def find(self, role, name=None):
        """The first descendant with this role and, unless `name` is None, this text; None if there is none."""
        for child in self._walk():
            if child.role == role and name in (None, child.name):
                return child
        return None

    @_undisturbed
    def child(self, name):
        """The first object directly inside this one with this text; None if there is none."""
        return next((child for child in self.children() if child.name == name), None)

    def _walk(self):
        for child in self.children():
            yield child
            yield from child._walk()

    def act(self):
        """Performs the first action: presses a button, toggles a box. Does not wait for a dialog that this opens."""
        return bool(self._call("org.a11y.atspi.Action", "DoAction", dbus.Int32(0)))

    # --- tables ---

    @_undisturbed
    def rows(self):
        """The texts of a table, one tuple for each row."""
        counts = [int(self._property("org.a11y.atspi.Table", name)) for name in ("NRows", "NColumns")]
        return [tuple(self.cell(row, column).name for column in range(counts[1])) for row in range(counts[0])]

    def cell(self, row, column):
        """A cell of the table."""
        return self._reached(self._call("org.a11y.atspi.Table", "GetAccessibleAt", dbus.Int32(row), dbus.Int32(column)))

    @_undisturbed
    def column_headers(self):
        """The column headers, from left to right."""
        return [child for child in self.children() if child.role == "column header"]
