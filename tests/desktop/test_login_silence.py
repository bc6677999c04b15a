# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""The login launcher with servers that accept a connection but never answer: each test takes half a minute."""

import socket

from rig.launcher import name_of
from rig.waiting import eventually


def test_x_server_that_does_not_answer(launch):
    with socket.socket(socket.AF_UNIX) as server:
        # Clients try the abstract address first.
        server.bind("\0/tmp/.X11-unix/X77")
        server.listen()
        launcher = launch(without=["DBUS_SESSION_BUS_ADDRESS"], DISPLAY=":77", QT_QPA_PLATFORM="offscreen")
        launcher.assert_stays_waiting(25)
        eventually(lambda: name_of(launcher.process.pid) == "BrelPrinterTool", "the launcher gives up")


def test_bus_that_does_not_answer(launch, tmp_path):
    """A socket that never answers must not delay the assistant for ever."""
    path = tmp_path / "bus"
    with socket.socket(socket.AF_UNIX) as bus:
        bus.bind(str(path))
        bus.listen()
        launcher = launch(DBUS_SESSION_BUS_ADDRESS=f"unix:path={path}")
        eventually(lambda: name_of(launcher.process.pid) == "BrelPrinterTool", "the launcher gives up")
