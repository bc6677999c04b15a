# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""Libraries that the program does not need and Qt loads on the slightest occasion."""

from rig import traces
from rig.assistant import TITLE


def test_windows_load_no_opengl(desktop, printers, start):
    printers.install({"Office": dict(toner="1", errors=["0x11B0"])})
    assistant = start()
    assistant.window()
    assistant.settings()
    assistant.icon.open_menu()
    assert not traces.opengl_libraries(assistant.pid)


def test_second_copy_loads_no_opengl(start):
    start("-hide")
    second = start(in_tray=False)
    second.window(TITLE)
    assert not traces.opengl_libraries(second.pid)


def test_hidden_start_loads_no_picture_plugin(hidden_assistant):
    assert not traces.picture_plugins(hidden_assistant.pid)
