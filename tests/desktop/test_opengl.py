# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""No window of the program makes Qt load OpenGL."""

from rig import traces
from rig.assistant import TITLE


def test_windows(desktop, printers, start):
    printers.install({"Office": dict(toner="1", errors=["0x11B0"])})
    assistant = start()
    assistant.window()
    assistant.settings()
    assistant.icon.open_menu()
    assert not traces.opengl_libraries(assistant.pid)


def test_second_copy(start):
    start("-hide")
    second = start(in_tray=False)
    second.window(TITLE)
    assert not traces.opengl_libraries(second.pid)
