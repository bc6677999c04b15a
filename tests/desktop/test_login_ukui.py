# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""The login launcher while UKUI's own programs start, in the order of its sessions. UKUI's proxy for XEmbed icons owns
the XEmbed tray's selection long before the panel starts."""

import pathlib

import dbus
from rig.launcher import NOTICE_S, name_of, older_tray_is_taken
from rig.waiting import eventually

WATCHER = "org.kde.StatusNotifierWatcher"


def hosts_icons(bus):
    watcher = bus.get_object(WATCHER, "/StatusNotifierWatcher", introspect=False)
    return watcher.Get(WATCHER, "IsStatusNotifierHostRegistered", dbus_interface=dbus.PROPERTIES_IFACE)


def test_icon_and_message(launch, later, printers, notifications, monkeypatch):
    monkeypatch.setenv("XDG_CURRENT_DESKTOP", "UKUI")
    monkeypatch.setenv("GSETTINGS_BACKEND", "memory")
    pathlib.Path.home().joinpath(".config").mkdir(exist_ok=True)
    bus = dbus.SessionBus()
    launcher = launch()
    later("sni-daemon")
    eventually(lambda: bus.name_has_owner(WATCHER), "the watcher")
    later("sni-xembed-proxy")
    launcher.assert_stays_waiting(2 * NOTICE_S + 1)
    assert older_tray_is_taken() and not hosts_icons(bus)
    printers.install({"Office": dict(model="K4510A", warnings=["0x110D"])})
    later("ukui-panel")
    eventually(lambda: hosts_icons(bus), "the panel hosts icons")
    eventually(lambda: name_of(launcher.process.pid) == "BrelPrinterTool", "the launcher goes on")
    launcher.wait_for_item(bus)
    notifications.wait_for_texts(("Office", "碳粉不足"))
