# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""The launcher that is started at login where no tray ever comes: each of these takes the half minute that it waits."""

import socket

from rig.launcher import name_of
from rig.waiting import eventually


def test_no_tray_at_all(launch):
    launcher = launch()
    launcher.assert_stays_waiting(25)
    launcher.wait_until_assistant()


def test_bus_that_does_not_answer(launch, tmp_path):
    """A socket that accepts and says nothing must not hold the assistant back for ever."""
    path = tmp_path / "bus"
    with socket.socket(socket.AF_UNIX) as bus:
        bus.bind(str(path))
        bus.listen()
        launcher = launch(DBUS_SESSION_BUS_ADDRESS=f"unix:path={path}")
        eventually(lambda: name_of(launcher.process.pid) == "BrelPrinterTool", "the launcher gives up")
