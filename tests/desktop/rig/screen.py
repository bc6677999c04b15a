# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT

import math
import os
import re
import subprocess
import tempfile
import time
from collections import namedtuple

from rig.waiting import eventually

Box = namedtuple("Box", "x y width height")
# A window that is not yet painted shows only a background and a frame.
_BLANK_COLOURS = 16


def output_of(*command):
    """The standard output of a command, whatever its exit code."""
    return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=False).stdout.decode()


def find_windows(*criteria):
    """The windows that xdotool finds."""
    while True:
        search = subprocess.run(["xdotool", "search", *criteria], capture_output=True, check=False)
        # xdotool gives up if any window disappears while it searches.
        if b"X Error" not in search.stderr:
            return search.stdout.decode().split()


class Screen:
    """The X server's screen with its windows, mouse and keyboard. A window is its number as a text."""

    def __init__(self, size, pictures):
        self.width, self.height = (int(length) for length in size.split("x"))
        self._pictures = pictures

    def windows(self, pid, title=None):
        """The visible windows of a process; with a title, only those with exactly this title."""
        windows = find_windows("--onlyvisible", "--all", "--pid", str(pid), "--name", ".*")
        if title is None:
            return windows
        return [window for window in windows if output_of("xdotool", "getwindowname", window).rstrip("\n") == title]

    def window(self, pid, title):
        """Waits for the process's only visible window with this title and returns it."""
        windows = eventually(lambda: self.windows(pid, title), f"window {title} of process {pid}")
        assert len(windows) == 1
        return windows[0]

    def popup_menu(self):
        """An open menu of any program; None if there is none."""
        for window in find_windows("--onlyvisible", "--name", ".*"):
            if "_POPUP_MENU" in self.properties(window, "_NET_WM_WINDOW_TYPE"):
                return window
        return None

    def close(self, window):
        """Closes a window through the window manager, as its title bar button does."""
        subprocess.run(["wmctrl", "-i", "-c", window_number(window)], check=True)

    def minimise(self, window):
        """Minimises a window as its title bar button does. The program learns of it later."""
        subprocess.run(["xdotool", "windowminimize", window], check=True)

    def box(self, window):
        """The position of a window's content on the screen, without the window manager's frame."""
        text = output_of("xwininfo", "-id", window)
        labels = ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height")
        return Box(*(int(re.search(rf"{label}: +(-?\d+)", text).group(1)) for label in labels))

    def properties(self, window, *names):
        """A window's properties in the format of xprop."""
        return output_of("xprop", "-id", window, *names)

    def click(self, box, button=1, repeat=1):
        """Clicks a mouse button (1 left, 2 middle, 3 right) in the middle of a box, `repeat` times in quick
        succession."""
        x, y = box.x + box.width // 2, box.y + box.height // 2
        times = ["--repeat", str(repeat), "--delay", "60"]
        subprocess.run(["xdotool", "mousemove", str(x), str(y), "click", *times, str(button)], check=True)

    def press(self, *keys):
        """Presses keys. They go to the window with the focus."""
        subprocess.run(["xdotool", "key", *keys], check=True)

    def capture(self, name, window=None, box=None, within_s=math.inf):
        """Waits until a window with its frame, a box or the whole screen is painted and saves a picture of it. What is
        not painted in time, because it does not stay, is saved as it is. Returns the signature of the pixels."""
        os.makedirs(self._pictures, exist_ok=True)
        if window is not None:
            box = self._with_frame(window)
        area = ["-crop", f"{box.width}x{box.height}+{box.x}+{box.y}", "+repage"] if box else []
        # Use a temporary file, because other tests write to the folder, too.
        descriptor, picture = tempfile.mkstemp(dir=self._pictures)
        os.close(descriptor)
        os.chmod(picture, 0o644)
        looks = []
        end = time.monotonic() + within_s

        def has_settled():
            subprocess.run(["import", "-window", "root", *area, f"png:{picture}"], check=True)
            colours, signature = output_of("identify", "-format", "%k %#", picture).split()
            looks.append(signature)
            is_painted = int(colours) > _BLANK_COLOURS and looks[-2:] == [signature, signature]
            return is_painted or time.monotonic() > end

        eventually(has_settled, f"{name} is painted")
        os.replace(picture, os.path.join(self._pictures, f"{name}-{self.width}x{self.height}.png"))
        return looks[-1]

    def _with_frame(self, window):
        box = self.box(window)
        extents = re.findall(r"\d+", self.properties(window, "_NET_FRAME_EXTENTS").partition("=")[2])
        left, right, top, bottom = (int(extent) for extent in extents)
        return Box(box.x - left, box.y - top, box.width + left + right, box.height + top + bottom)


def window_number(window):
    """A window's number in the format of wmctrl."""
    return f"0x{int(window):08x}"
