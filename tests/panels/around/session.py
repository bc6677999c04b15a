# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT

import contextlib
import os
import subprocess

import dbus
from rig import accessibility
from rig.accessibility import Gone, ShownObjects
from rig.screen import Box, Screen, find_windows
from rig.waiting import eventually

from around import sight
from around.recipes import ENVIRONMENT, RECIPES

WATCHER = "org.kde.StatusNotifierWatcher"
NOTIFICATIONS = "org.freedesktop.Notifications"
# Pixels: a complete menu is at least this high.
_MENU_HEIGHT = 80
# Pixels: an icon is at most this wide.
_ICON_SIZE = 40
# Pixels around what a picture is about.
_MARGIN = 24
# A panel that is still loading a menu may open an empty one, or none, or one that says nothing.
_MENU_TIMEOUT_S = 10


class Session:
    """A desktop session: the panel and the notification service of one of the desktops."""

    def __init__(self, config):
        self.name = config.getoption("panel")
        self.recipe = RECIPES[self.name]
        self.screen = Screen(config.getoption("screen"), config.getoption("pictures"))
        self.accessibility_bus = accessibility.connect()
        self.shown = ShownObjects(self.accessibility_bus)
        self._bus = dbus.SessionBus()
        self._services = []
        self._notifier = None
        self._panel = None

    # --- its programs ---

    def start_services(self):
        """Starts the notification service and what else starts before the panel."""
        if self.recipe.notifier:
            self._notifier = self._start(self.recipe.notifier)
            self._services.append(self._notifier)
            eventually(lambda: self._bus.name_has_owner(NOTIFICATIONS), "the notification service")
        for helper in self.recipe.helpers:
            self._services.append(self._start(helper))
            eventually(lambda: self._bus.name_has_owner(WATCHER), "the watcher")

    def start_panel(self):
        """Starts the panel and waits until it takes icons."""
        self._panel = self._start(*self.recipe.panel)
        if self.recipe.has_items:
            eventually(self.hosts_items, "the panel takes icons")
        else:
            eventually(lambda: find_windows("--onlyvisible", "--pid", str(self._panel.pid)), "the panel is shown")

    def kill_panel(self):
        """Kills the panel, as a crash would."""
        self._panel.kill()
        self._panel.wait()

    def end(self):
        """Ends all programs of the session."""
        for process in filter(None, (self._panel, *self._services)):
            process.kill()
            process.wait()
        for name in (WATCHER, NOTIFICATIONS):
            eventually(lambda left=name: not self._bus.name_has_owner(left), f"{name} has gone")

    def _start(self, *command):
        environment = {**os.environ, **ENVIRONMENT, "XDG_CURRENT_DESKTOP": self.recipe.desktop}
        return subprocess.Popen(command, env=environment)

    # --- the tray ---

    def hosts_items(self):
        """Whether a StatusNotifier host is registered."""
        with contextlib.suppress(dbus.DBusException):
            return bool(self._watcher("IsStatusNotifierHostRegistered"))
        return False

    def items(self, pid):
        """The names on the bus of a process's registered StatusNotifierItems."""
        names = [str(item).split("/", maxsplit=1)[0] for item in self._watcher("RegisteredStatusNotifierItems")]
        return [name for name in names if self._owner(name) == pid]

    def item_tooltip(self, pid):
        """The tool tip's text that a process offers to the panel."""
        item = self._bus.get_object(self.items(pid)[0], "/StatusNotifierItem", introspect=False)
        return str(item.Get("org.kde.StatusNotifierItem", "ToolTip", dbus_interface=dbus.PROPERTIES_IFACE)[2])

    def _watcher(self, name):
        watcher = self._bus.get_object(WATCHER, "/StatusNotifierWatcher", introspect=False)
        return watcher.Get(WATCHER, name, dbus_interface=dbus.PROPERTIES_IFACE)

    def _owner(self, name):
        with contextlib.suppress(dbus.DBusException):
            return int(self._bus.call_blocking("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                                               "GetConnectionUnixProcessID", "s", (name,)))
        return None

    def icon(self):
        """Waits until the screen shows exactly one icon, which rests. Returns its position."""
        looks = [None]

        def rests():
            looks.append(sight.icons(self.screen))
            return len(looks[-1]) == 1 and looks[-1] == looks[-2]

        eventually(rests, "the icon is shown")
        return looks[-1][0]

    def wait_for_no_icon(self):
        """Waits until the screen shows no icon."""
        eventually(lambda: not sight.icons(self.screen), "the icon is gone")

    def open_menu(self):
        """Opens the icon's menu with the right mouse button. Returns its position and its entries."""
        for _ in range(3):
            self.shown.take()
            self.screen.click(self.icon(), 3)
            with contextlib.suppress(AssertionError):
                menu = eventually(self._complete_menu, "the menu is open", timeout=_MENU_TIMEOUT_S)
                return menu, self._shown_entries()
            self.screen.press("Escape")
        raise AssertionError("the icon has no menu")

    def _complete_menu(self):
        menu = self.screen.popup_menu()
        box = self.screen.box(menu) if menu else None
        return box if box and box.height >= _MENU_HEIGHT else None

    # GTK announces each entry, Qt only the menu.
    def _shown_entries(self):
        entries = []

        def all_shown():
            for shown in self.shown.take("popup menu", "menu item"):
                entries.extend([shown] if shown.role == "menu item" else shown.children())
            return len(entries) > 3

        eventually(all_shown, "the menu says what it holds", timeout=_MENU_TIMEOUT_S)
        return [entry.name for entry in entries]

    def choose(self, menu, entry, count):
        """Clicks an entry, counted from 0, of an open menu with `count` entries."""
        height = menu.height / count
        self.screen.click(Box(menu.x, menu.y + int(entry * height), menu.width, int(height)))

    # --- messages and tool tips ---

    def tooltip(self):
        """The visible tool tip's window; None if there is none."""
        for window in find_windows("--onlyvisible", "--name", ".*"):
            if self._is_tooltip(window):
                return window
        return None

    def texts(self, role, pid):
        """The texts of a role that a program shows now."""
        with contextlib.suppress(Gone):
            program = accessibility.program(self.accessibility_bus, pid)
            return [child.name for child in program.descendants() if child.role == role] if program else []
        return []

    def wait_for_message(self, title, text, shown_by):
        """Waits until a program shows a message. Returns the position of its window."""
        def box_of_message():
            labels = self.texts("label", shown_by)
            # A window that has just gone has no position.
            with contextlib.suppress(AttributeError):
                return self._message_box(shown_by) if title in labels and text in labels else None
            return None

        return eventually(box_of_message, f"the message {title}: {text}")

    # Services keep further windows, which are small or off the screen. Qt's balloon is a tool tip's window; an icon of
    # the same program may be large where it is hidden.
    def _message_box(self, pid):
        windows = find_windows("--onlyvisible", "--pid", str(pid))
        tooltips = [window for window in windows if self._is_tooltip(window)]
        boxes = [self.screen.box(window) for window in tooltips or windows]
        boxes = [box for box in boxes if min(box.width, box.height) > _ICON_SIZE and box.x + box.width > 0]
        return boxes[0] if boxes else None

    def _is_tooltip(self, window):
        return "_TOOLTIP" in self.screen.properties(window, "_NET_WM_WINDOW_TYPE")

    @property
    def notifier(self):
        """The process number of the notification service."""
        return self._notifier.pid

    @property
    def panel(self):
        """The process number of the panel."""
        return self._panel.pid

    def capture(self, what, *boxes, **options):
        """Saves a picture of the screen around these boxes; options as for Screen.capture()."""
        left = max(min(box.x for box in boxes) - _MARGIN, 0)
        top = max(min(box.y for box in boxes) - _MARGIN, 0)
        right = min(max(box.x + box.width for box in boxes) + _MARGIN, self.screen.width)
        bottom = min(max(box.y + box.height for box in boxes) + _MARGIN, self.screen.height)
        self.screen.capture(f"panel-{self.name}-{what}", box=Box(left, top, right - left, bottom - top), **options)
