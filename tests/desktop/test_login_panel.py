# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""The login launcher, started after the desktop's panel."""

import dbus


def test_panel_is_there_already(launch):
    launcher = launch()
    launcher.wait_until_assistant()
    launcher.wait_for_item(dbus.SessionBus())
