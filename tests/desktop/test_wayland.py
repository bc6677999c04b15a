# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""The program on Wayland, with a compositor without a screen and a tray on the session bus."""

import os
import pathlib
import re
import socket
import subprocess

import dbus
import pytest
from rig import accessibility, traces
from rig.assistant import ENTRY, EXIT, SHOW
from rig.tray import ItemIcon
from rig.waiting import TIMEOUT_S, eventually, eventually_equals
from rig.watcher import Watcher

SOCKET = "wayland-test"
COMPOSITOR_LOG = pathlib.Path("/tmp/weston.log")


@pytest.fixture(name="compositor", autouse=True)
def fixture_compositor():
    process = subprocess.Popen(["weston", "--backend=headless-backend.so", "--width=1920", "--height=1080",
                                f"--socket={SOCKET}", "--idle-time=0", f"--log={COMPOSITOR_LOG}",
                                # The log then has every request of every program.
                                "--logger-scopes=log,proto"])
    eventually(compositor_listens, "the compositor listens")
    yield process
    process.kill()
    process.wait()
    COMPOSITOR_LOG.unlink()


def compositor_listens():
    """Whether programs can connect. The socket's file exists before that."""
    with socket.socket(socket.AF_UNIX) as client:
        return client.connect_ex(os.path.join(os.environ["XDG_RUNTIME_DIR"], SOCKET)) == 0


def application_ids():
    """The application ids that the compositor has received, one for each window. Desktops find icons by them."""
    return re.findall(r"set_app_id\((.*)\)", COMPOSITOR_LOG.read_text(encoding="utf-8", errors="replace"))


@pytest.fixture(name="tray")
def fixture_tray():
    """A tray on the session bus."""
    watcher = Watcher()
    watcher.step("watcher")
    watcher.step("host")
    yield watcher
    watcher.end()


class WaylandAssistant:
    """A copy of the program without an X display as a fallback."""

    def __init__(self, desktop, path, *arguments):
        environment = {**os.environ, "QT_QPA_PLATFORM": "wayland", "WAYLAND_DISPLAY": SOCKET,
                       "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"}
        del environment["DISPLAY"]
        self.process = subprocess.Popen([path, *arguments], env=environment)
        self.pid = self.process.pid
        self.program = None
        self._accessibility_bus = desktop.accessibility_bus

    def wait_until_ready(self):
        self.program = eventually(lambda: accessibility.program(self._accessibility_bus, self.pid),
                                  "the program answers to screen readers")

    def rows(self):
        """The texts of the table; None while the window is hidden."""
        table = self.program.find("table")
        return table.rows() if table else None


@pytest.fixture(name="launch")
def fixture_launch(desktop, printers, program):
    printers.install({"Office": dict(toner="87.50")})
    copies = []

    def launch(*arguments):
        copies.append(WaylandAssistant(desktop, program, *arguments))
        copies[-1].wait_until_ready()
        return copies[-1]

    yield launch
    for copy in copies:
        copy.process.kill()
        copy.process.wait()


def test_window(launch):
    assistant = launch()
    eventually_equals(assistant.rows, [("Office", "USB", "87.50%", "就绪")])
    assert not traces.opengl_libraries(assistant.pid)


def test_application_id_is_the_installed_entry(launch):
    assert ENTRY.is_file()
    launch().rows()
    eventually_equals(application_ids, [f'"{ENTRY.stem}"'])
    # A second copy only shows a box.
    box = launch().program
    eventually(lambda: box.find("push button", "确  定"), "the box is shown")
    eventually_equals(application_ids, [f'"{ENTRY.stem}"'] * 2)


def test_tray(desktop, tray, launch):
    assert tray
    assistant = launch("-hide")
    icon = ItemIcon(desktop, assistant)
    assert assistant.rows() is None
    icon.choose(SHOW)
    eventually_equals(assistant.rows, [("Office", "USB", "87.50%", "就绪")])
    icon.choose(EXIT)
    assert assistant.process.wait(TIMEOUT_S) == 0
    assert not dbus.SessionBus().name_has_owner(f"org.kde.StatusNotifierItem-{assistant.process.pid}-1")
