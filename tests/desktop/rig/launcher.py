# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""The login launcher, which becomes the assistant."""

import pathlib
import shutil
import subprocess
import time

from rig import accessibility
from rig.assistant import TITLE
from rig.screen import find_windows
from rig.waiting import TIMEOUT_S, eventually

OLDER_TRAY = ("trayer", "--edge", "top", "--align", "right", "--widthtype", "request", "--height", "32")

# Long enough to notice a launcher that does not wait.
NOTICE_S = 2


def name_of(pid):
    """The name of a process; empty if it has ended."""
    try:
        return pathlib.Path(f"/proc/{pid}/comm").read_text().strip()
    except OSError:
        return ""


def copies():
    """The running processes of the assistant."""
    numbers = [entry.name for entry in pathlib.Path("/proc").iterdir() if entry.name.isdigit()]
    return [int(number) for number in numbers if name_of(number) == "BrelPrinterTool"]


def configure_panel():
    """Gives Xfce's panel a tray and nothing else."""
    folder = pathlib.Path.home() / ".config/xfce4/xfconf/xfce-perchannel-xml"
    folder.mkdir(parents=True, exist_ok=True)
    shutil.copy(pathlib.Path(__file__).parents[2] / "support/xfce4-panel.xml", folder)


def start_panel(later):
    """Starts Xfce's panel."""
    configure_panel()
    later("xfce4-panel", "--disable-wm-check")


def older_tray_is_taken():
    """Whether the XEmbed tray's selection has an owner, which a second tray would report."""
    with subprocess.Popen(["timeout", "60", *OLDER_TRAY], stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                          text=True) as tray:
        line = tray.stdout.readline()
        tray.terminate()
    return "another systray already running" in line


class Launcher:
    """A started launcher, which may have become the assistant."""

    def __init__(self, desktop, path, arguments, environment):
        self._desktop = desktop
        self.process = subprocess.Popen([path, *arguments], stderr=subprocess.PIPE, text=True,
                                        env={**environment, "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"})

    def is_waiting(self):
        """Whether it is still the launcher."""
        return name_of(self.process.pid) == "tolmar-q727-too"

    def wait_until_assistant(self):
        """Waits until it has become the assistant and answers."""
        eventually(lambda: name_of(self.process.pid) == "BrelPrinterTool", "the launcher becomes the assistant")
        program = eventually(lambda: accessibility.program(self._desktop.accessibility_bus, self.process.pid),
                             "the program answers to screen readers")
        assert not self._desktop.screen.windows(self.process.pid, TITLE)
        return program

    def assert_stays_waiting(self, seconds=NOTICE_S):
        """Fails unless the launcher still waits after this time."""
        time.sleep(seconds)
        assert self.is_waiting()

    def assert_ends_silently(self):
        """Waits for its end, which must be successful and without output."""
        _, errors = self.process.communicate(timeout=TIMEOUT_S)
        assert (self.process.returncode, errors) == (0, "")

    def wait_for_item(self, bus):
        """Waits until its icon is on the session bus."""
        item = f"org.kde.StatusNotifierItem-{self.process.pid}-1"
        eventually(lambda: bus.name_has_owner(item), "the icon is on the session bus")

    def wait_for_embedded_icon(self):
        """Waits for its icon in an XEmbed tray. It is the only visible window, because the main window is hidden."""
        eventually(self._visible_windows, "the icon is in the XEmbed tray")

    def _visible_windows(self):
        return find_windows("--onlyvisible", "--pid", str(self.process.pid))
