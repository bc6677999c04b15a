# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
"""The assistant's icon in the tray, on both roads that Qt takes to it."""

import re

import dbus

from rig import accessibility
from rig.screen import Box, output_of
from rig.waiting import eventually

_WATCHER = "org.kde.StatusNotifierWatcher"
_ITEM = "org.kde.StatusNotifierItem"
_MENU = "com.canonical.dbusmenu"
# The panel has its first icon at the screen's upper left corner.
_FIRST_PANEL_ICON = Box(0, 0, 32, 32)


class ItemIcon:
    """A StatusNotifierItem: the program offers icon and menu on the session bus, the panel draws them."""

    def __init__(self, screen, pid, _program):
        self._screen = screen
        self._bus = dbus.SessionBus()
        self._watcher = self._bus.get_object(_WATCHER, "/StatusNotifierWatcher", introspect=False)
        self._service = f"{_ITEM}-{pid}-1"
        eventually(self.is_present, f"process {pid} is in the tray")
        self._item = self._bus.get_object(self._service, "/StatusNotifierItem", introspect=False)
        self._menu = self._bus.get_object(self._service, "/MenuBar", introspect=False)

    def is_present(self):
        """Whether the tray has the icon."""
        items = self._watcher.Get(_WATCHER, "RegisteredStatusNotifierItems", dbus_interface=dbus.PROPERTIES_IFACE)
        return self._service in [str(item).split("/", maxsplit=1)[0] for item in items]

    def property(self, name):
        """What the item says of itself."""
        return self._item.Get(_ITEM, name, dbus_interface=dbus.PROPERTIES_IFACE)

    def tool_tip(self):
        """The tool tip's text."""
        return str(self.property("ToolTip")[2])

    def send(self, method):
        """What a panel may send: Activate, SecondaryActivate or ContextMenu."""
        self._item.get_dbus_method(method, _ITEM)(0, 0)

    def click(self, button=1):
        """A click on the panel's picture of the icon."""
        self._screen.click(_FIRST_PANEL_ICON, button)

    def entries(self):
        """The menu's entries: pairs of label and properties, in order."""
        return [(label, properties) for _, label, properties in self._layout()]

    def choose(self, label):
        """Chooses an entry of the menu."""
        identifier = next(identifier for identifier, text, _ in self._layout() if text == label)
        # Without waiting: the entry may end the program.
        self._menu.Event(dbus.Int32(identifier), "clicked", dbus.Int32(0, variant_level=1), dbus.UInt32(0),
                         dbus_interface=_MENU, signature="isvu", ignore_reply=True)

    def _layout(self):
        _, (_, _, children) = self._menu.GetLayout(dbus.Int32(0), dbus.Int32(-1), dbus.Array([], signature="s"),
                                                   dbus_interface=_MENU)
        entries = []
        for identifier, properties, _ in children:
            properties = {str(name): value for name, value in properties.items()}
            entries.append((int(identifier), str(properties.pop("label", "")), properties))
        return entries


class EmbeddedIcon:
    """A small window of the program's in the tray's window (XEmbed); the program draws its menu itself."""

    def __init__(self, screen, pid, program):
        self._screen = screen
        self._pid = pid
        self._program = program
        self._panel = output_of("xdotool", "search", "--onlyvisible", "--classname", "^panel$").split()[0]
        eventually(self.is_present, f"process {pid} is in the tray")

    def _window(self):
        # "0x800007 "BrelPrinterTool": ("BrelPrinterTool" "BrelPrinterTool")  22x22+..."
        for number in re.findall(r"(0x[0-9a-f]+) .*\(.*\)  \d", output_of("xwininfo", "-tree", "-id", self._panel)):
            text = self._screen.properties(number, "_NET_WM_PID")
            if text.strip().endswith(f" {self._pid}"):
                return number
        return None

    def is_present(self):
        """Whether the tray has the icon."""
        window = self._window()
        return window is not None and "IsViewable" in output_of("xwininfo", "-id", window)

    def click(self, button=1):
        """A click on the icon."""
        self._screen.click(self._screen.box(self._window()), button)

    def open_menu(self):
        """Opens the menu with the right button; returns its entries."""
        self.click(3)
        return eventually(self.menu_items, "the tray icon's menu is open")

    def menu_items(self):
        """The entries of the menu when it is open."""
        return [item for item in self._program.descendants()
                if item.role == "menu item" and item.has_state(accessibility.SHOWING)]

    def entries(self):
        """The menu's entries: pairs of label and properties, in order. The menu is opened and closed for that."""
        entries = [(item.name, {}) for item in self.open_menu()]
        self._screen.press("Escape")
        eventually(lambda: not self.menu_items(), "the tray icon's menu is closed")
        return entries

    def choose(self, label):
        """Chooses an entry of the menu."""
        item = next(item for item in self.open_menu() if item.name == label)
        self._screen.click(item.box)


class NoIcon:
    """There is no tray."""

    def __init__(self, _screen, _pid, _program):
        pass


ICONS = {"sni": ItemIcon, "xembed": EmbeddedIcon, "none": NoIcon}
