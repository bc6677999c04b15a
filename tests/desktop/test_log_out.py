# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""The user logs out: the session manager asks every program, and each may refuse. The session manager's double also
reports programs that ask to be restarted at the next login, so every test checks that this one does not."""

import select
import subprocess

import pytest
from rig.assistant import EXIT, SETTINGS_TITLE, SHOW, TITLE
from rig.waiting import TIMEOUT_S, eventually

READY = ("Office", "USB", "50.00%", "就绪")
JAM_INSIDE = "0x11B0"


class SessionManager:
    """The session manager's test double. `environment` directs a program to it."""

    def __init__(self, double):
        self._process = subprocess.Popen([double], bufsize=0, stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.environment = {"SESSION_MANAGER": self.next_event()}

    def next_event(self):
        """The program's next step since the last call; None on a timeout."""
        output = self._process.stdout
        # select() works because the pipe is unbuffered.
        if not select.select([output], [], [], TIMEOUT_S)[0]:
            return None
        line = output.readline().decode()
        assert line, "the session manager has ended"
        return line.rstrip("\n")

    def log_out(self, command="log-out", last="closed"):
        """Logs out. Returns the program's steps up to `last`, or with None at the end on a timeout."""
        self._process.stdin.write(command.encode() + b"\n")
        events = [self.next_event()]
        while events[-1] not in (last, None):
            events.append(self.next_event())
        return events

    def log_out_cancelled_by_another(self):
        """Like log_out(), but another program of the session cancels after this one has agreed."""
        return self.log_out("log-out-cancelled-by-another", "agrees")

    def stop(self):
        """Closes the input, which ends the double."""
        self._process.communicate(timeout=TIMEOUT_S)


@pytest.fixture
def session_manager(pytestconfig):
    manager = SessionManager(pytestconfig.getoption("session_manager"))
    yield manager
    manager.stop()


@pytest.fixture
def assistant(printers, start, session_manager):
    """An assistant that is registered in this session and whose open window shows a printer."""
    printers.install({"Office": {"toner": "50"}})
    copy = start(**session_manager.environment)
    assert session_manager.next_event() == "registered"
    # The program has its rows before the screen shows its window.
    copy.window()
    copy.wait_for_rows(READY)
    return copy


def report_jam(desktop, notifications, printers, assistant):
    """Makes the assistant show a message, which is a balloon in an XEmbed tray."""
    printers.report("Office", errors=[JAM_INSIDE])
    if desktop.tray == "xembed":
        eventually(lambda: assistant.program.find("label", "Office"), "the balloon is shown")
    else:
        notifications.wait_for_count(1)


def assert_is_whole(printers, assistant):
    """Checks that the icon, menu, windows and workers still work."""
    assert assistant.is_running()
    assert assistant.icon.is_present()
    assert len(assistant.icon.entries()) == 4
    assistant.icon.choose(SHOW)
    assistant.window()
    printers.install({"Office": {"toner": "49.5"}})
    assistant.wait_for_rows(("Office", "USB", "49.50%", "就绪"))
    printers.install({"Office": {"toner": "49.5"}, "Hall": {"toner": "20"}})
    assistant.wait_for_rows(("Office", "USB", "49.50%", "就绪"), ("Hall", "USB", "20.00%", "就绪"))
    assistant.settings()
    assistant.close(SETTINGS_TITLE)
    assistant.close(TITLE)
    assistant.icon.click()
    assistant.window()


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


def test_with_an_open_menu(session_manager, assistant):
    assistant.icon.open_menu()
    assert session_manager.log_out() == ["agrees", "closed"]
    assert assistant.wait_for_exit() == 0


def test_with_an_open_message(desktop, notifications, printers, session_manager, assistant):
    report_jam(desktop, notifications, printers, assistant)
    assert session_manager.log_out() == ["agrees", "closed"]
    assert assistant.wait_for_exit() == 0


@pytest.mark.parametrize("shown", ["nothing", "window", "settings", "menu", "message"])
def test_cancelled_by_another_program(desktop, notifications, printers, session_manager, assistant, shown):
    if shown != "window":
        assistant.close()
    if shown == "settings":
        assistant.settings()
    if shown == "menu":
        assistant.icon.open_menu()
    if shown == "message":
        report_jam(desktop, notifications, printers, assistant)
    assert session_manager.log_out_cancelled_by_another() == ["agrees"]
    if shown == "menu":
        assistant.icon.close_menu()
    assert bool(assistant.windows()) == (shown == "window")
    assert bool(assistant.windows(SETTINGS_TITLE)) == (shown == "settings")
    assert_is_whole(printers, assistant)
    # The program agrees again.
    assert session_manager.log_out() == ["agrees", "closed"]
    assert assistant.wait_for_exit() == 0


def test_exit_after_a_cancelled_log_out(session_manager, assistant):
    assert session_manager.log_out_cancelled_by_another() == ["agrees"]
    assistant.icon.choose(EXIT)
    assert session_manager.next_event() == "closed"
    assert assistant.wait_for_exit() == 0


# The session may have saved an older version of the program. The session manager then asks only for the data.
def test_restored_program(session_manager, start):
    copy = start("-session", "10-earlier_1", **session_manager.environment)
    assert session_manager.next_event() == "registered"
    copy.window()
    assert session_manager.log_out() == ["agrees", "closed"]
    assert copy.wait_for_exit() == 0


# The second copy asks to interact before it closes its box.
def test_with_the_box_of_a_second_copy(session_manager, start):
    start("-hide")
    second = start(in_tray=False, **session_manager.environment)
    assert session_manager.next_event() == "registered"
    second.window()
    assert session_manager.log_out() == ["asks to interact", "agrees", "closed"]
    assert second.wait_for_exit() == 0
