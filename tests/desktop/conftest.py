# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT

import pytest
from rig import accessibility
from rig.menu_reads import MenuReads
from rig.notifications import Notifications
from rig.screen import Screen

pytest_plugins = ["rig.fixtures"]


def pytest_addoption(parser):
    parser.addoption("--session-manager", default="session-manager-double", help="its test double; needs libsm-dev")
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
def assistant(start):
    """A running assistant whose window is open."""
    copy = start()
    copy.window()
    return copy


@pytest.fixture
def hidden_assistant(start):
    """A running assistant that was started with -hide."""
    return start("-hide")
