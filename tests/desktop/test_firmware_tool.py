# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""The firmware-update tool as the tray's menu starts it."""

import os
import signal
from pathlib import Path

import pytest
from rig.assistant import EXIT, SHOW, UPDATE
from rig.waiting import eventually

TOOL = Path("/opt/tolmar/tolmar-printer-q727/bin/tolmarQ727FW")
STARTS = Path("/tmp/firmware-tool-starts")
SCRIPT = f"""\
#!/bin/sh
echo "$$ $#" >>{STARTS}
exec sleep infinity
"""


def install_tool(mode=0o755):
    TOOL.parent.mkdir(parents=True)
    TOOL.write_text(SCRIPT)
    TOOL.chmod(mode)


def starts():
    """The process number and the number of arguments of each start."""
    return [tuple(int(number) for number in line.split()) for line in STARTS.read_text().splitlines()]


@pytest.fixture
def record():
    """The record of the tool's starts. The started processes end with the test."""
    STARTS.write_text("")
    yield
    for process, _ in starts():
        os.kill(process, signal.SIGKILL)


@pytest.mark.usefixtures("record")
def test_started_each_time_and_outlives_the_program(hidden_assistant):
    install_tool()
    hidden_assistant.icon.choose(UPDATE)
    eventually(lambda: len(starts()) == 1, "the tool is started")
    hidden_assistant.icon.choose(UPDATE)
    eventually(lambda: len(starts()) == 2, "the tool is started again")
    assert [arguments for _, arguments in starts()] == [0, 0]
    processes = [process for process, _ in starts()]
    # The tools have their own sessions, so the end of the program's session does not end them.
    assert os.getsid(hidden_assistant.pid) not in [os.getsid(process) for process in processes]

    hidden_assistant.icon.choose(EXIT)
    assert hidden_assistant.wait_for_exit() == 0
    for process in processes:
        assert Path(f"/proc/{process}/comm").read_text() == "sleep\n"


@pytest.mark.usefixtures("record")
@pytest.mark.parametrize("install", [lambda: None, lambda: install_tool(mode=0o644), lambda: TOOL.mkdir(parents=True)],
                         ids=["missing", "not executable", "a folder"])
def test_cannot_be_started(desktop, notifications, hidden_assistant, install):
    install()
    hidden_assistant.icon.choose(UPDATE)
    # The program handles the entries in order, so the first is done when the window is shown.
    hidden_assistant.icon.choose(SHOW)
    window = hidden_assistant.window()
    assert desktop.screen.windows(hidden_assistant.pid) == [window]
    assert notifications.messages() == []
    assert starts() == []
