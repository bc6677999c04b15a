# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT

import os
import pathlib
import subprocess

import pytest
from rig import accessibility
from rig.assistant import Assistant
from rig.launcher import Launcher
from rig.menu_reads import MenuReads
from rig.notifications import Notifications
from rig.printers import Printers
from rig.screen import Screen


def pytest_addoption(parser):
    parser.addoption("--program", required=True, help="the assistant")
    parser.addoption("--simulator", required=True, help="the printer simulator, which encodes status replies")
    parser.addoption("--pictures", required=True, help="the folder for screenshots")
    parser.addoption("--session-manager", default="session-manager-double", help="its test double; needs libsm-dev")
    parser.addoption("--screen", required=True, help="the screen's size, for example 1920x1080")
    parser.addoption("--tray", required=True, choices=["sni", "xembed", "none"], help="the kind of tray")


class Desktop:
    """The desktop around a test, which the sandbox has started."""

    def __init__(self, config):
        self.tray = config.getoption("tray")
        self.screen = Screen(config.getoption("screen"), config.getoption("pictures"))
        self.notifications = Notifications()
        self.accessibility_bus = accessibility.connect()
        self.menu_reads = MenuReads()


@pytest.fixture(scope="session", name="desktop")
def fixture_desktop(pytestconfig):
    desktop = Desktop(pytestconfig)
    yield desktop
    desktop.menu_reads.end()


@pytest.fixture
def notifications(desktop):
    desktop.notifications.clear()
    return desktop.notifications


@pytest.fixture
def printers(pytestconfig):
    """The driver package's folder, without printers. Request it before the assistant."""
    return Printers(pytestconfig.getoption("simulator"))


@pytest.fixture
def program(pytestconfig):
    """The path of the program under test."""
    return pytestconfig.getoption("program")


@pytest.fixture
def start(desktop, printers, program):
    """Starts a copy of the assistant and waits until it answers: start("-hide", path=..., in_tray=False, NAME=value).
    The copies end with the test."""
    # The printers fixture creates the package's folder before the first start.
    copies = []

    def start_copy(*arguments, path=program, in_tray=True, **environment):
        copies.append(Assistant(desktop, [path, *arguments], environment))
        copies[-1].wait_until_ready(in_tray)
        return copies[-1]

    yield start_copy
    for copy in copies:
        copy.end()


@pytest.fixture
def assistant(start):
    """A running assistant whose window is open."""
    copy = start()
    copy.window()
    return copy


@pytest.fixture
def hidden_assistant(start):
    """A running assistant that was started with -hide."""
    return start("-hide")


@pytest.fixture
def launch(desktop, printers, program):
    """Starts a login launcher: launch("--if-enabled", without=[environment variables...], NAME=value)."""
    # The printers fixture creates the package's folder before the first start.
    launchers = []

    def launch_one(*arguments, without=(), **environment):
        names = {**os.environ, **environment}
        for name in without:
            names.pop(name, None)
        path = pathlib.Path(program).parent / "tolmar-q727-tool-login"
        launchers.append(Launcher(desktop, path, arguments, names))
        return launchers[-1]

    yield launch_one
    for launcher in launchers:
        launcher.process.kill()
        launcher.process.wait()


@pytest.fixture
def later():
    """Starts a program of the desktop: later("trayer", "--edge", ...). It ends with the test."""
    processes = []

    def later_one(*command, **options):
        processes.append(subprocess.Popen(command, **options))
        return processes[-1]

    yield later_one
    for process in processes:
        process.kill()
        process.wait()
