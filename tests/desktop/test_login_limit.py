# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""The login launcher without a usable tray: each test takes the half minute that the launcher waits."""

from rig.launcher import OLDER_TRAY
from rig.watcher import Watcher


def test_no_tray_at_all(launch):
    launcher = launch()
    launcher.assert_stays_waiting(25)
    launcher.wait_until_assistant()


def test_watcher_without_host_beside_older_tray(launch, later):
    """After the wait the launcher accepts any tray."""
    watcher = Watcher()
    watcher.step("watcher")
    later(*OLDER_TRAY)
    launcher = launch()
    launcher.assert_stays_waiting(25)
    launcher.wait_for_embedded_icon()
    watcher.end()
