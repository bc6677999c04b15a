# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""The assistant's tray icon in both implementations of Qt, with one interface."""

import re
import time

import dbus

from rig.accessibility import ShownObjects, program_called
from rig.screen import Box, find_windows, output_of
from rig.waiting import eventually

_WATCHER = "org.kde.StatusNotifierWatcher"
_ITEM = "org.kde.StatusNotifierItem"
_MENU = "com.canonical.dbusmenu"
# Pixels: a panel's empty tray is 16 wide, and a complete menu is at least this high.
_ICON_WIDTH = 20
_MENU_HEIGHT = 80
# Qt's delay of 100 ms plus the tolerance of a coarse timer.
_FOCUS_PAUSE_S = 0.15


class _Icon:
    """Clicks on the icon and the menu on the screen."""

    def __init__(self, desktop, assistant):
        self._screen = desktop.screen
        self._pid = assistant.pid
        eventually(self.is_present, f"process {self._pid} is in the tray")

    def is_present(self):
        """Whether the tray has the icon."""
        raise NotImplementedError

    def box(self):
        """The icon's position on the screen; None until it is drawn."""
        raise NotImplementedError

    def click(self, button=1):
        """Clicks the icon: 1 left, 2 middle, 3 right."""
        self._screen.click(self._drawn_box(), button)

    def double_click(self):
        """Double-clicks the icon with the left button."""
        self._screen.click(self._drawn_box(), repeat=2)

    def _drawn_box(self):
        return eventually(self.box, "the tray draws the icon")

    def open_menu(self):
        """Opens the menu with the right button. Returns its position."""
        self.click(3)
        menu = eventually(self._screen.popup_menu, "the tray icon's menu is open")
        eventually(lambda: self._screen.box(menu).height >= _MENU_HEIGHT, "the menu has its entries")
        return self._screen.box(menu)

    def close_menu(self):
        """Closes the menu without choosing an entry."""
        self._screen.press("Escape")
        eventually(lambda: not self._screen.popup_menu(), "the tray icon's menu is closed")


class ItemIcon(_Icon):
    """A StatusNotifierItem: the program offers icon and menu on the session bus, and the panel draws them."""

    def __init__(self, desktop, assistant):
        bus = dbus.SessionBus()
        self._watcher = bus.get_object(_WATCHER, "/StatusNotifierWatcher", introspect=False)
        self._service = f"{_ITEM}-{assistant.pid}-1"
        self._accessibility_bus = desktop.accessibility_bus
        self._menu_reads = desktop.menu_reads
        self._bus = bus
        super().__init__(desktop, assistant)
        self._item = bus.get_object(self._service, "/StatusNotifierItem", introspect=False)
        self._menu = bus.get_object(self._service, "/MenuBar", introspect=False)

    def is_present(self):
        items = self._watcher.Get(_WATCHER, "RegisteredStatusNotifierItems", dbus_interface=dbus.PROPERTIES_IFACE)
        return self._service in [str(item).split("/", maxsplit=1)[0] for item in items]

    def box(self):
        panel = program_called(self._accessibility_bus, "xfce4-panel")
        # The tray is the panel's only content.
        tray = panel.descendants()[-1].box if panel else None
        return tray if tray and tray.width >= _ICON_WIDTH else None

    # While the panel is still loading the menu, a right click can open one that takes no click.
    def open_menu(self):
        program = self._bus.get_name_owner(self._service)
        eventually(lambda: self._menu_reads.has_read(program), "the panel loads the menu")
        # Two calls in order: the program has answered the panel before the first is answered, and the panel has handled
        # that before the second is.
        self._item.Get(_ITEM, "Id", dbus_interface=dbus.PROPERTIES_IFACE)
        program_called(self._accessibility_bus, "xfce4-panel").descendants()
        return super().open_menu()

    def property(self, name):
        """A property of the item."""
        return self._item.Get(_ITEM, name, dbus_interface=dbus.PROPERTIES_IFACE)

    def send(self, method):
        """Calls a method as a panel does: Activate, SecondaryActivate or ContextMenu. Returns when it is done."""
        self._item.get_dbus_method(method, _ITEM)(0, 0)

    def entries(self):
        """The menu's entries in order. An entry with further properties has them after its label."""
        labels = []
        for _, properties in self._layout():
            label = str(properties.pop("label", ""))
            special = {name: value for name, value in properties.items() if name not in ("enabled", "visible")}
            labels.append(f"{label} {special}" if special else label)
        return labels

    def choose(self, label):
        """Chooses an entry by the call that a panel sends."""
        identifier = next(identifier for identifier, properties in self._layout() if properties["label"] == label)
        # Do not wait for a reply: the entry may end the program.
        self._menu.Event(dbus.Int32(identifier), "clicked", dbus.Int32(0, variant_level=1), dbus.UInt32(0),
                         dbus_interface=_MENU, signature="isvu", ignore_reply=True)

    def choose_by_hand(self, label):
        """Chooses an entry with the mouse."""
        labels = self.entries()
        menu = self.open_menu()
        height = menu.height / len(labels)
        top = menu.y + int(height * labels.index(label))
        self._screen.click(Box(menu.x, top, menu.width, int(height)))

    def _layout(self):
        _, (_, _, children) = self._menu.GetLayout(dbus.Int32(0), dbus.Int32(-1), dbus.Array([], signature="s"),
                                                   dbus_interface=_MENU)
        return [(int(identifier), {str(name): value for name, value in properties.items()})
                for identifier, properties, _ in children]


# This tray is visible only while it has icons.
def _panels():
    return find_windows("--onlyvisible", "--classname", "^panel$")


class EmbeddedIcon(_Icon):
    """A small window of the program inside the tray's window (XEmbed). The program draws its menu itself."""

    def __init__(self, desktop, assistant):
        self._panel = eventually(_panels, "the tray is shown")[0]
        self._program = assistant.program
        self._service = assistant.program.service
        self._shown = ShownObjects(desktop.accessibility_bus)
        self._is_left_half_next = True
        super().__init__(desktop, assistant)

    def is_present(self):
        return self.box() is not None

    def click(self, button=1):
        # Alternate between two places: two clicks at one place are a double click, which opens no menu.
        box = self._drawn_box()
        half = box.width // 2
        self._screen.click(Box(box.x + (0 if self._is_left_half_next else half), box.y, half, box.height), button)
        self._is_left_half_next = not self._is_left_half_next

    def open_menu(self):
        self._let_focus_settle()
        return super().open_menu()

    def box(self):
        window = self._window()
        if window is None or "IsViewable" not in output_of("xwininfo", "-id", window):
            return None
        return self._screen.box(window)

    def entries(self):
        """The menu's entries in order. Anything but a plain entry has its role after its label."""
        labels = [item.name if item.role == "menu item" else f"{item.name} {item.role}" for item in self._open_items()]
        self.close_menu()
        return labels

    def choose(self, label):
        """Chooses an entry with the mouse."""
        self._screen.click(next(item.box for item in self._open_items() if item.name == label))

    choose_by_hand = choose

    def _open_items(self):
        self._own_menus()
        self.open_menu()
        return eventually(self._own_menus, "the menu says that it is open")[0].children()

    def _own_menus(self):
        return [menu for menu in self._shown.take("popup menu") if menu.service == self._service]

    # After a window or menu with the focus has closed, Qt waits a fixed time for the focus to move to another one of
    # the program. Then the program becomes inactive, which closes all menus, even one that was opened since. Nothing
    # outside the program shows this.
    def _let_focus_settle(self):
        self._wait_for_turns()
        time.sleep(_FOCUS_PAUSE_S)
        self._wait_for_turns()

    # The program answers each call in a new turn of its event loop. After the second answer it has handled everything
    # that was due before the first.
    def _wait_for_turns(self):
        self._program.children()
        self._program.children()

    # Format: "0x800007 "BrelPrinterTool": ("BrelPrinterTool" "BrelPrinterTool")  22x22+..."
    def _window(self):
        for number in re.findall(r"(0x[0-9a-f]+) .*\(.*\)  \d", output_of("xwininfo", "-tree", "-id", self._panel)):
            if self._screen.properties(number, "_NET_WM_PID").strip().endswith(f" = {self._pid}"):
                return number
        return None


class NoIcon:
    """There is no tray."""

    def __init__(self, _desktop, _assistant):
        pass


ICONS = {"sni": ItemIcon, "xembed": EmbeddedIcon, "none": NoIcon}
