# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""The session bus and the tray of the private desktop, and a watch on its windows."""

import os
import select
import subprocess
import time

from Xlib import X, XK, display, error
from Xlib.ext import xtest
from Xlib.protocol import event

TIMEOUT_S = 30
RIGHT_BUTTON = 3

# Time from the appearance of a menu until it grabs the keyboard.
MENU_READY_S = 0.2

# Size of the assistant's window. The tray's panel and icons are smaller.
WINDOW_MINIMUM = (600, 300)


def start():
    """Starts a session bus without services and an XEmbed tray. Both end with the sandbox."""
    bus = subprocess.run(["dbus-daemon", "--session", "--fork", "--print-address"], check=True,
                         stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
    os.environ["DBUS_SESSION_BUS_ADDRESS"] = bus.stdout.strip()
    watch = WindowWatch()
    subprocess.Popen(["trayer", "--edge", "top", "--align", "right", "--widthtype", "request", "--height", "32"],
                     stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    watch.wait(lambda _: watch.has_tray())


class WindowWatch:
    """Watches top-level windows appear and disappear."""

    def __init__(self):
        self._display = display.Display()
        self._root = self._display.screen().root
        self._icon = None
        self._tray = self._display.intern_atom("_NET_SYSTEM_TRAY_S0")
        self._root.change_attributes(event_mask=X.SubstructureNotifyMask | X.StructureNotifyMask)
        self._display.sync()

    def forget(self):
        """Drops all events so far."""
        self._display.sync()
        while self._display.pending_events():
            self._display.next_event()

    def wait_for_window(self):
        """Returns when (monotonic seconds) a window of the assistant's size was mapped."""
        return self.wait(lambda seen: seen.type == X.MapNotify and self._is_large(seen.window))

    def close_windows(self):
        """Asks the window manager to close the windows of all programs."""
        clients = self._root.get_full_property(self._display.intern_atom("_NET_CLIENT_LIST"), X.AnyPropertyType)
        close = self._display.intern_atom("_NET_CLOSE_WINDOW")
        for client in clients.value:
            window = self._display.create_resource_object("window", client)
            message = event.ClientMessage(window=window, client_type=close, data=(32, [X.CurrentTime, 2, 0, 0, 0]))
            self._root.send_event(message, event_mask=X.SubstructureRedirectMask)
        self._display.sync()

    def wait_for_icon(self):
        """Returns when (monotonic seconds) a tray icon was embedded, that is, when a window got another parent."""
        return self.wait(self._is_embedding)

    def wait_until_hidden(self):
        self.wait(lambda seen: seen.type == X.UnmapNotify)

    def open_menu(self):
        """Opens the menu of the icon that was waited for last."""
        place = self._icon.query_pointer()  # relative to the icon
        size = self._icon.get_geometry()
        xtest.fake_input(self._display, X.MotionNotify, detail=True, x=size.width // 2 - place.win_x,
                         y=size.height // 2 - place.win_y)
        self._press(X.ButtonPress, X.ButtonRelease, RIGHT_BUTTON)
        self.wait(lambda seen: seen.type == X.MapNotify and seen.override)
        time.sleep(MENU_READY_S)

    def choose_last_entry(self):
        for key in (XK.XK_Up, XK.XK_Return):
            self._press(X.KeyPress, X.KeyRelease, self._display.keysym_to_keycode(key))

    def has_tray(self):
        return self._display.get_selection_owner(self._tray) != X.NONE

    def wait(self, is_wanted):
        deadline = time.monotonic() + TIMEOUT_S
        while time.monotonic() < deadline:
            if not self._display.pending_events():
                select.select([self._display], [], [], 0.1)
            now = time.monotonic()
            while self._display.pending_events():
                if is_wanted(self._display.next_event()):
                    return now
        raise TimeoutError("the window or the tray icon does not appear")

    def _press(self, press, release, detail):
        for kind in (press, release):
            xtest.fake_input(self._display, kind, detail)
        self._display.sync()

    def _is_embedding(self, seen):
        if seen.type != X.ReparentNotify or seen.parent == self._root:
            return False
        self._icon = seen.window
        return True

    def _is_large(self, window):
        try:
            geometry = window.get_geometry()
        except error.BadDrawable:
            return False
        return geometry.width >= WINDOW_MINIMUM[0] and geometry.height >= WINDOW_MINIMUM[1]
