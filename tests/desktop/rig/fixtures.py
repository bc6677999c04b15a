# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""Fixtures for every kind of desktop. A test needs a fixture `desktop` besides."""

import os
import pathlib
import subprocess

import pytest

from rig.assistant import Assistant
from rig.launcher import Launcher
from rig.printers import Printers


def pytest_addoption(parser):
    parser.addoption("--program", required=True, help="the assistant")
    parser.addoption("--simulator", required=True, help="the printer simulator, which encodes status replies")
    parser.addoption("--pictures", required=True, help="the folder for screenshots")
    parser.addoption("--screen", required=True, help="the screen's size, for example 1920x1080")


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
