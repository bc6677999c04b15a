# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""A day that the status tool has recorded, played again, gives the assistant the same rows and messages."""

import pathlib
import signal
import subprocess

import pytest
from rig.printers import Printers
from rig.waiting import TIMEOUT_S, eventually

_EVERYDAY = pathlib.Path(__file__).parents[2] / "tools/printer-simulator/scenarios/everyday.scenario"
# The shortest state of the scenario then lasts 2.5 s: the assistant, which looks once a second, sees every state.
_SPEED = 2


class History:
    """What the assistant shows of each printer, in order."""

    def __init__(self, assistant, notifications):
        self._assistant = assistant
        self._notifications = notifications
        self.rows = {}
        self._last = None

    def follow(self, process):
        """Watches the table until a process has ended and the table shows its last state."""
        eventually(lambda: self._look() and process.poll() is not None, "the scenario ends", 4 * TIMEOUT_S)
        assert process.returncode == 0

    def _look(self):
        rows = self._assistant.rows()
        # The cells are read one by one: rows count only if they are the same twice in a row.
        if rows == self._last:
            for row in rows:
                seen = self.rows.setdefault(row[0], [])
                # Nobody can say for how long a new printer is off-line.
                if row[3] != "脱机" and seen[-1:] != [row]:
                    seen.append(row)
        self._last = rows
        return True

    def messages(self):
        """The messages about each printer, in order."""
        messages = {}
        for title, body in self._notifications.texts():
            messages.setdefault(title, []).append(body)
        return messages


@pytest.fixture
def simulate(pytestconfig, later):
    """Plays a scenario for the assistant."""
    simulator = pytestconfig.getoption("simulator")
    return lambda scenario, speed: later(simulator, "--speed", str(speed), scenario)


def test_replay(pytestconfig, printers, start, notifications, program, later, simulate, tmp_path):
    assert printers is not None  # the folder is empty
    day, record = tmp_path / "day.scenario", tmp_path / "record.scenario"
    # The last state stays for a while, so that it is seen.
    day.write_text(_EVERYDAY.read_text(encoding="utf-8").removesuffix("repeat\n"), encoding="utf-8")
    tool = pathlib.Path(program).parent / "status/tolmar-q727-status"
    recorder = later(tool, "record", record, stderr=subprocess.DEVNULL)
    eventually(record.exists, "the record begins")

    histories = []
    for scenario, speed in ((day, _SPEED), (record, 1)):
        notifications.clear()
        assistant = start()
        assistant.window()
        history = History(assistant, notifications)
        history.follow(simulate(scenario, speed))
        histories.append((history.rows, history.messages()))
        assistant.end()
        if recorder.poll() is None:
            recorder.send_signal(signal.SIGINT)
            assert recorder.wait(TIMEOUT_S) == 0
            Printers(pytestconfig.getoption("simulator"))  # an empty folder again

    (rows, messages), replayed = histories
    assert [len(rows[name]) for name in ("Office_K4510A", "Hall_J4500A", "Lab_J4990E", "Desk_K4620A")] == [1, 4, 5, 7]
    assert messages["Desk_K4620A"] == ["设备内卡纸"]
    assert replayed == (rows, messages)
