# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""Several copies of the program at the same time."""

import re
import shutil

import pytest
from rig import traces
from rig.assistant import ENTRY, EXIT, SETTINGS_TITLE, SHOW, TITLE

READY = ("Office", "USB", "50.00%", "就绪")


def texts(program):
    return [(part.role, part.name) for part in program.descendants() if part.name]


@pytest.mark.parametrize("is_hidden", [False, True], ids=["beside a window", "beside a hidden copy"])
def test_box_of_a_second_copy(desktop, printers, start, is_hidden):
    printers.install({"Office": {"toner": "50"}})
    first = start(*["-hide"] * is_hidden)
    second = start("-hide", in_tray=False)
    box = second.window()
    assert texts(second.program) == [
        ("alert message", TITLE),
        ("label", "拓玛激光打印助手已经处于运行中！"),
        ("push button", "确  定"),
    ]
    assert "_NET_WM_WINDOW_TYPE_DIALOG" in desktop.screen.properties(box, "_NET_WM_WINDOW_TYPE")
    assert f"org.kde.StatusNotifierItem-{second.pid}-1" not in traces.bus_names()

    second.program.find("push button").act()
    assert second.wait_for_exit() == 0
    if is_hidden:
        assert first.windows() == []
        first.icon.choose(SHOW)
    first.wait_for_rows(READY)
    printers.report("Office", toner="49.5")
    first.wait_for_rows(("Office", "USB", "49.50%", "就绪"))
    first.icon.choose(EXIT)
    assert first.wait_for_exit() == 0


# The desktop finds a window's icon by the window class.
def test_window_class_is_in_the_installed_entry(desktop, start):
    expected = re.search(r"^StartupWMClass=(.*)$", ENTRY.read_text(encoding="utf-8"), re.MULTILINE).group(1)
    first = start()
    first.settings()
    second = start(in_tray=False)
    for window in (first.window(), first.window(SETTINGS_TITLE), second.window()):
        assert desktop.screen.properties(window, "WM_CLASS").rstrip().endswith(f', "{expected}"')


def test_copy_under_another_name(printers, start, program, tmp_path):
    printers.install({"Office": {"toner": "50"}})
    first = start()
    other = start(path=shutil.copy(program, tmp_path / "Assistant"))
    for copy in (first, other):
        copy.wait_for_rows(READY)
    first.icon.choose(EXIT)
    assert first.wait_for_exit() == 0
    assert other.icon.is_present()
    printers.report("Office", toner="49.5")
    other.wait_for_rows(("Office", "USB", "49.50%", "就绪"))
