# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""The orders in which parts of a desktop may start while the login launcher waits, and which tray it takes."""

import pathlib
import socket
import subprocess

import dbus.bus
import pytest
from rig.launcher import OLDER_TRAY, name_of
from rig.screen import find_windows
from rig.waiting import eventually
from rig.watcher import Watcher

# The launcher takes an XEmbed tray after this time without a watcher; and a longer time.
BOUND_S = 3
LONGER_S = BOUND_S + 2

CONFIGURATION = pathlib.Path(__file__).parents[1] / "support/session-bus.conf"


class Bus:
    """A session bus that can end and start again at the same address."""

    def __init__(self):
        self.address = "unix:path=/tmp/login-bus"
        self._process = None

    def start(self):
        """Starts the bus and waits until it answers."""
        self._process = subprocess.Popen(["dbus-daemon", f"--config-file={CONFIGURATION}", f"--address={self.address}",
                                          "--nofork", "--print-address"], stdout=subprocess.PIPE, text=True)
        assert self._process.stdout.readline()

    def end(self):
        """Kills the bus, so that its clients get no notice."""
        if self._process:
            self._process.kill()
            self._process.wait()
        pathlib.Path("/tmp/login-bus").unlink(missing_ok=True)


@pytest.fixture(name="bus")
def fixture_bus():
    bus = Bus()
    yield bus
    bus.end()


@pytest.fixture(name="watcher")
def fixture_watcher():
    watcher = Watcher()
    yield watcher
    watcher.end()


@pytest.fixture(name="older_tray")
def fixture_older_tray(later):
    """Starts an XEmbed tray. A panel's proxy for such trays looks the same."""

    def start_tray():
        later(*OLDER_TRAY)
        eventually(has_older_tray, "the XEmbed tray")

    eventually(lambda: not has_older_tray(), "the last test's tray has gone")
    return start_tray


def has_older_tray():
    return find_windows("--classname", "^panel$") != []


def expect_assistant(launcher):
    """Waits until the launcher goes on, with a timeout shorter than the launcher's own wait."""
    eventually(lambda: name_of(launcher.process.pid) == "BrelPrinterTool", "the launcher goes on", timeout=20)


def expect_item(launcher, bus=None):
    expect_assistant(launcher)
    launcher.wait_for_item(bus or dbus.SessionBus())


def expect_embedded_icon(launcher):
    expect_assistant(launcher)
    launcher.wait_for_embedded_icon()


def test_watcher_then_host(launch, watcher):
    watcher.step("watcher")
    launcher = launch()
    launcher.assert_stays_waiting(LONGER_S)
    watcher.step("host")
    expect_item(launcher)


def test_older_tray_then_watcher_then_host(launch, watcher, older_tray):
    older_tray()
    launcher = launch()
    watcher.step("watcher")
    launcher.assert_stays_waiting(LONGER_S)
    watcher.step("host")
    expect_item(launcher)


def test_watcher_then_older_tray_then_host(launch, watcher, older_tray):
    watcher.step("watcher")
    launcher = launch()
    older_tray()
    launcher.assert_stays_waiting(LONGER_S)
    watcher.step("host")
    expect_item(launcher)


def test_all_there(launch, watcher, older_tray):
    older_tray()
    watcher.step("watcher")
    watcher.step("host")
    expect_item(launch())


def test_older_tray_only(launch, older_tray):
    older_tray()
    launcher = launch()
    launcher.assert_stays_waiting(BOUND_S - 1)
    expect_embedded_icon(launcher)


def test_nothing_then_older_tray(launch, older_tray):
    launcher = launch()
    launcher.assert_stays_waiting(LONGER_S)
    older_tray()
    expect_embedded_icon(launcher)


def test_watcher_goes_and_older_tray_stays(launch, watcher, older_tray):
    older_tray()
    watcher.step("watcher")
    launcher = launch()
    launcher.assert_stays_waiting(LONGER_S)
    watcher.end()
    # The launcher waits because another watcher may start, as when a panel is restarted.
    launcher.assert_stays_waiting(BOUND_S - 1)
    expect_embedded_icon(launcher)


def test_bus_lost_and_found(launch, bus, monkeypatch):
    monkeypatch.setenv("DBUS_SESSION_BUS_ADDRESS", bus.address)
    bus.start()
    first = Watcher()
    first.step("watcher")
    launcher = launch()
    launcher.assert_stays_waiting()
    bus.end()
    first.end()
    launcher.assert_stays_waiting()
    bus.start()
    second = Watcher()
    second.step("watcher")
    second.step("host")
    expect_item(launcher, dbus.bus.BusConnection(bus.address))
    second.end()


def test_host_beside_an_x_server_that_does_not_answer(launch, watcher):
    watcher.step("watcher")
    watcher.step("host")
    with socket.socket(socket.AF_UNIX) as server:
        # Clients try the abstract address first.
        server.bind("\0/tmp/.X11-unix/X77")
        server.listen()
        launcher = launch(DISPLAY=":77", QT_QPA_PLATFORM="offscreen")
        expect_assistant(launcher)


def test_bus_comes_later(launch, bus, monkeypatch):
    monkeypatch.setenv("DBUS_SESSION_BUS_ADDRESS", bus.address)
    launcher = launch()
    launcher.assert_stays_waiting()
    bus.start()
    watcher = Watcher()
    watcher.step("watcher")
    watcher.step("host")
    expect_item(launcher, dbus.bus.BusConnection(bus.address))
    watcher.end()


def test_bus_lost_and_older_tray_there(launch, bus, older_tray, monkeypatch):
    monkeypatch.setenv("DBUS_SESSION_BUS_ADDRESS", bus.address)
    older_tray()
    bus.start()
    watcher = Watcher()
    watcher.step("watcher")
    launcher = launch()
    launcher.assert_stays_waiting(LONGER_S)
    bus.end()
    watcher.end()
    expect_embedded_icon(launcher)
