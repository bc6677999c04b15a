# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
"""The user logs out: the session manager asks every program, and each may refuse."""

import select
import subprocess

import pytest
from rig.waiting import TIMEOUT_S

READY = ("Office", "USB", "50.00%", "就绪")


class SessionManager:
    """The double of a session manager. `environment` leads a program to it."""

    def __init__(self, double):
        self._process = subprocess.Popen([double], bufsize=0, stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.environment = {"SESSION_MANAGER": self.next_event()}

    def next_event(self):
        """What the program does, or has done since the last question; None when it does nothing."""
        output = self._process.stdout
        # Nothing is buffered.
        if not select.select([output], [], [], TIMEOUT_S)[0]:
            return None
        line = output.readline().decode()
        assert line, "the session manager has ended"
        return line.rstrip("\n")

    def log_out(self):
        """Asks the program; returns what it does until it has closed its connection, or does nothing more."""
        self._process.stdin.write(b"log-out\n")
        events = [self.next_event()]
        while events[-1] not in ("closed", None):
            events.append(self.next_event())
        return events

    def stop(self):
        """It ends with its input."""
        self._process.communicate(timeout=TIMEOUT_S)


@pytest.fixture
def session_manager(pytestconfig):
    manager = SessionManager(pytestconfig.getoption("session_manager"))
    yield manager
    manager.stop()


@pytest.fixture
def assistant(printers, start, session_manager):
    """At work in this session."""
    printers.install({"Office": {"toner": "50"}})
    copy = start(**session_manager.environment)
    assert session_manager.next_event() == "registered"
    copy.wait_for_rows(READY)
    return copy


def test_with_an_open_window(session_manager, assistant):
    assistant.window()
    assert session_manager.log_out() == ["agrees", "closed"]
    assert assistant.wait_for_exit() == 0


def test_with_a_closed_window(session_manager, assistant):
    assistant.close()
    assert session_manager.log_out() == ["agrees", "closed"]
    assert assistant.wait_for_exit() == 0


def test_with_both_windows_open(session_manager, assistant):
    assistant.settings()
    assistant.window()
    assert session_manager.log_out() == ["agrees", "closed"]
    assert assistant.wait_for_exit() == 0


# It asks before it closes the box.
def test_with_the_box_of_a_second_copy(session_manager, start):
    start("-hide")
    second = start(in_tray=False, **session_manager.environment)
    assert session_manager.next_event() == "registered"
    second.window()
    assert session_manager.log_out() == ["asks to interact", "agrees", "closed"]
    assert second.wait_for_exit() == 0
