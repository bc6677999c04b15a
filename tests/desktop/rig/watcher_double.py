# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""A StatusNotifierWatcher that reads its steps from standard input: at "watcher" it takes its name, at "host" a host
arrives. Writes "ready" when it can take the first step, and each step when it is done."""

import sys

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

_NAME = "org.kde.StatusNotifierWatcher"
_INTERFACE = f"""
<node><interface name="{_NAME}">
  <method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
  <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
  <property name="ProtocolVersion" type="i" access="read"/>
  <property name="RegisteredStatusNotifierItems" type="as" access="read"/>
  <signal name="StatusNotifierHostRegistered"/>
</interface></node>"""


class Watcher:
    """The watcher's object on the bus."""

    def __init__(self):
        self.has_host = False
        self.items = []
        self.bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        interface = Gio.DBusNodeInfo.new_for_xml(_INTERFACE).interfaces[0]
        self.bus.register_object("/StatusNotifierWatcher", interface, self._call, self._get, None)
        print("ready", flush=True)

    def _call(self, _bus, _sender, _path, _interface, _method, arguments, invocation):
        self.items.append(arguments.unpack()[0])
        invocation.return_value(None)

    def _get(self, _bus, _sender, _path, _interface, name):
        return {"IsStatusNotifierHostRegistered": GLib.Variant("b", self.has_host),
                "ProtocolVersion": GLib.Variant("i", 0),
                "RegisteredStatusNotifierItems": GLib.Variant("as", self.items)}[name]

    def step(self, *_):
        """Takes the next step."""
        if sys.stdin.readline() == "watcher\n":
            Gio.bus_own_name_on_connection(self.bus, _NAME, Gio.BusNameOwnerFlags.NONE,
                                           lambda *_: print("watcher", flush=True), None)
            return True
        self.has_host = True
        self.bus.emit_signal(None, "/StatusNotifierWatcher", _NAME, "StatusNotifierHostRegistered", None)
        print("host", flush=True)
        return False


if __name__ == "__main__":
    watcher = Watcher()
    GLib.io_add_watch(GLib.IOChannel.unix_new(0), GLib.PRIORITY_DEFAULT, GLib.IOCondition.IN, watcher.step)
    GLib.MainLoop().run()
