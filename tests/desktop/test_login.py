# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""The login launcher, started before the desktop's panel."""

import os
import pathlib
import pwd
import time

import dbus
import pytest
from rig.launcher import NOTICE_S, OLDER_TRAY, copies, name_of, start_panel
from rig.waiting import TIMEOUT_S, eventually

ENTRY = pathlib.Path("/opt/apps/tolmar-printer-q727/entries/autostart/tolmar-q727-tool-autostart.desktop")


@pytest.fixture(name="entry")
def fixture_entry():
    """The entry that exists while the auto-start option is on."""
    ENTRY.parent.mkdir(parents=True, exist_ok=True)
    ENTRY.write_text("[Desktop Entry]\n")
    yield ENTRY
    ENTRY.unlink()


def test_panel_comes_five_seconds_later(launch, later):
    launcher = launch()
    launcher.assert_stays_waiting(5)
    start_panel(later)
    launcher.wait_until_assistant()
    launcher.wait_for_item(dbus.SessionBus())


def test_neither_bus_nor_display(launch):
    launcher = launch(without=["DISPLAY", "DBUS_SESSION_BUS_ADDRESS"], QT_QPA_PLATFORM="offscreen")
    # This timeout is far shorter than the wait for a tray.
    eventually(lambda: name_of(launcher.process.pid) == "BrelPrinterTool", "the launcher does not wait", timeout=20)


def test_copy_that_runs_already(launch, later, start):
    launcher = launch()
    launcher.assert_stays_waiting()
    copy = start(in_tray=False)
    later(*OLDER_TRAY)
    launcher.assert_ends_silently()
    assert copies() == [copy.pid]


def test_both_entries_start_one_copy(launch, later, entry):
    assert entry.exists()
    launchers = [launch(), launch("--if-enabled")]
    time.sleep(NOTICE_S)
    later(*OLDER_TRAY)
    eventually(lambda: len(copies()) == 1, "one copy")
    loser = next(launcher for launcher in launchers if launcher.process.pid not in copies())
    loser.assert_ends_silently()
    winner = next(launcher for launcher in launchers if launcher is not loser)
    winner.wait_until_assistant()
    assert copies() == [winner.process.pid]


def test_second_folder_acts_only_while_the_option_is_on(launch):
    launch("--if-enabled").assert_ends_silently()
    assert not copies()


def test_no_runtime_folder(launch, later):
    """The folder that Qt would use instead cannot be created, either. The launcher then uses no lock at all."""
    in_its_stead = pathlib.Path(f"/tmp/runtime-{pwd.getpwuid(os.getuid()).pw_name}")
    in_its_stead.touch()
    launcher = launch(XDG_RUNTIME_DIR="/nonexistent/run")
    launcher.assert_stays_waiting()
    later(*OLDER_TRAY)
    eventually(lambda: name_of(launcher.process.pid) == "BrelPrinterTool", "the launcher goes on")
    assert not pathlib.Path("/tolmar-q727-tool-login.lock").exists()
    in_its_stead.unlink()


def test_unknown_option(launch):
    launcher = launch("--if-enable")
    _, errors = launcher.process.communicate(timeout=TIMEOUT_S)
    assert (launcher.process.returncode, errors.count("\n")) == (2, 1)
