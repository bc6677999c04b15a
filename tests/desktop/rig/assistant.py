# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT

import os
import pathlib
import subprocess

from rig import accessibility
from rig.tray import ICONS
from rig.waiting import TIMEOUT_S, eventually, eventually_equals

TITLE = "拓玛激光打印助手"
SETTINGS_TITLE = "设置"
SHOW, UPDATE, SETTINGS, EXIT = "显示主界面", "打印机更新助手", "设置", "退出"
# The desktop entry that the package installs.
ENTRY = pathlib.Path(__file__).parents[3] / "packaging" / "tolmar-q727-tool.desktop"

# The program answers to screen readers and cannot reach the machine's own print system.
_ENVIRONMENT = {"QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1", "CUPS_SERVER": "/nonexistent"}


class Assistant:
    """A running copy of the program, seen from outside."""

    def __init__(self, desktop, command, environment):
        self._desktop = desktop
        self.process = subprocess.Popen(command, env={**os.environ, **_ENVIRONMENT, **environment})
        self.pid = self.process.pid
        self.program = None
        self.icon = None
        self._main_window = None

    def wait_until_ready(self, in_tray):
        """Waits until the event loop answers and, if `in_tray`, until the tray has the icon."""
        self.program = eventually(self._look_for_program, "the program answers to screen readers")
        if in_tray:
            self.icon = ICONS[self._desktop.tray](self._desktop, self)

    def _look_for_program(self):
        assert self.is_running(), f"the program ended with {self.process.returncode}"
        return accessibility.program(self._desktop.accessibility_bus, self.pid)

    def is_running(self):
        """Whether the process is running."""
        return self.process.poll() is None

    def wait_for_exit(self):
        """Waits for the end. Returns the exit code, or the negative number of a signal."""
        return self.process.wait(TIMEOUT_S)

    def end(self):
        """Kills the process if it still runs."""
        self.process.kill()
        self.process.wait()

    # --- windows ---

    def windows(self, title=TITLE):
        """The visible windows with this title."""
        return self._desktop.screen.windows(self.pid, title)

    def window(self, title=TITLE):
        """Waits for the visible window with this title and returns it."""
        return self._desktop.screen.window(self.pid, title)

    def says(self, state):
        """Whether the program considers its main window SHOWING or ACTIVE. The screen may still show another state."""
        if self._main_window is None:
            # A hidden window is not listed, but a known one still answers.
            self._main_window = self.program.child(TITLE)
        return self._main_window is not None and self._main_window.has_state(state)

    def wait_until_hidden(self, title=TITLE):
        """Waits until no such window is visible."""
        eventually(lambda: not self.windows(title), f"window {title} is hidden")

    def close(self, title=TITLE):
        """Closes a window as its title bar button does and waits until it is hidden."""
        self._desktop.screen.close(self.window(title))
        self.wait_until_hidden(title)

    def settings(self):
        """Opens the settings. Returns the window as a screen reader sees it."""
        self.icon.choose(SETTINGS)
        window = self.window(SETTINGS_TITLE)
        settings = eventually(lambda: self.program.find("filler", SETTINGS_TITLE), "settings for screen readers")
        # The program learns later where the window manager has put the window.
        eventually_equals(lambda: settings.box, self._desktop.screen.box(window))
        return settings

    # --- the table, which exists only while the window is visible ---

    def table(self):
        """The table as a screen reader sees it."""
        return eventually(lambda: self.program.find("table"), "the window's table")

    def rows(self):
        """The table's texts, one tuple for each row."""
        return self.table().rows()

    def wait_for_rows(self, *expected):
        """Waits until the table holds exactly these rows."""
        eventually_equals(self.rows, list(expected))

    def wait_for_status(self, row, status):
        """Waits until a row's last column has this text."""
        eventually_equals(lambda: [texts[3] for texts in self.rows()[row:row + 1]], [status])
