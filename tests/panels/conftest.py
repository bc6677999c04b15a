# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT

import os
import pathlib
import sys

import pytest

sys.path.append(str(pathlib.Path(__file__).parents[1] / "desktop"))
from around.recipes import RECIPES  # noqa: E402
from around.session import Session  # noqa: E402
from rig.launcher import configure_panel  # noqa: E402

pytest_plugins = ["rig.fixtures"]


def pytest_addoption(parser):
    parser.addoption("--panel", required=True, choices=list(RECIPES), help="the desktop")


@pytest.fixture(name="desktop")
def fixture_desktop(pytestconfig, monkeypatch):
    """A session with its notification service, still without its panel."""
    os.makedirs(os.path.expanduser("~/.config"), exist_ok=True)
    configure_panel()
    session = Session(pytestconfig)
    monkeypatch.setenv("XDG_CURRENT_DESKTOP", session.recipe.desktop)
    session.start_services()
    yield session
    session.end()


@pytest.fixture
def panel(desktop):
    """The session with its panel. Request it before the assistant."""
    desktop.start_panel()
    return desktop


@pytest.fixture
def hidden_assistant(start):
    """A running assistant that was started with -hide."""
    return start("-hide", in_tray=False)
