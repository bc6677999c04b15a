# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""Takes pictures of everything visible, for review, and measures the layout."""

import pytest
from rig.assistant import SETTINGS_TITLE, SHOW, TITLE
from rig.screen import Box
from rig.waiting import eventually

# The locale of a Chinese user's desktop, which decides on fonts and glyphs.
CHINESE = {"LANG": "zh_CN.UTF-8"}
NETWORK = dict(connection="network", port="fe80::21b:a9ff:fe34:9c10%enp0s31f6")
PRINTERS = {
    "Ready": dict(toner="100"),
    "Initialising": dict(toner="87.5", status="initialize"),
    "Busy": dict(toner="75.25", status="busy"),
    "Printing": dict(toner="9.99", status="printing"),
    "Printing_low": dict(toner="0.01", status="printing", warnings=["0x112F"]),
    "Copying": dict(status="copying", connection="network", port="192.168.10.21"),
    "Three-word name of a queue in the print room on the third floor": dict(toner="1", errors=["0x1127"], **NETWORK),
    "三楼会议室靠窗的激光打印机（双面打印）": dict(toner="50", status="printing", warnings=["0x1122"], **NETWORK),
    "Scanning": dict(toner="40", status="scanning"),
    "Reporting": dict(toner="30", status="reporting"),
    "Cancelling": dict(toner="20", status="cancelling"),
    "Unknown": dict(toner="10", status="unknown"),
    "Warning": dict(toner="5", warnings=["0x110D"]),
    "Error": dict(toner="0", errors=["0x11B0"]),
    "Second_J4990E": dict(toner="64"),
    "Off-line": {},
}
STATUS_TEXTS = ["就绪", "初始化", "忙碌", "正在打印", "正在打印(碳粉已用完，继续打印将影响质量)", "正在复印", "本机已超过设计寿命！",
                "正在打印(碳粉盒打印页数将达到极限)", "正在扫描", "正在打印报告", "正在取消任务", "未知", "就绪", "设备内卡纸", "就绪", "脱机"]


@pytest.fixture
def scaled(desktop):
    """Converts a length from a screen 1920 pixels wide to this screen."""
    return lambda length: length * desktop.screen.width // 1920


@pytest.fixture
def start_busy(printers, start):
    """Starts an assistant with printers in all kinds of states and makes sure that its window is open."""
    printers.install(PRINTERS)
    printers.vanish("Off-line")

    def start_copy(*arguments):
        copy = start(*arguments, **CHINESE)
        if arguments:
            copy.icon.choose(SHOW)
        copy.window()
        eventually(lambda: [row[3] for row in copy.rows()] == STATUS_TEXTS, "all states are shown")
        return copy

    return start_copy


@pytest.fixture
def busy_assistant(start_busy):
    return start_busy()


def test_table(desktop, busy_assistant, scaled):
    window = busy_assistant.window()
    screen = desktop.screen
    screen.capture("window", window)
    left, top, width, height = screen.box(window)
    assert (width, height) == (scaled(600), scaled(300))
    assert (left, top) == ((screen.width - width) // 2 + 1, (screen.height - height) // 2 + 20)
    table = busy_assistant.table()
    assert table.box == Box(left + scaled(20), top + scaled(20), scaled(560), scaled(260))
    headers = [header.box for header in table.column_headers()]
    assert [header.width for header in headers[:3]] == [scaled(120), scaled(150), scaled(85)]
    for before, after in zip(headers, headers[1:]):
        assert before.x + before.width == after.x
    for column in range(4):
        cells = [table.cell(row, column).box for row in range(len(PRINTERS))]
        assert {(cell.x, cell.width) for cell in cells} == {(headers[column].x, headers[column].width - 1)}
        for above, below in zip(cells, cells[1:]):
            assert above.y + above.height < below.y


def test_window_for_documents(desktop, printers, start):
    printers.install({
        "财务室_K4510A": dict(toner="87.5"),
        "前台_J4500A": dict(
            toner="8.32", status="printing", warnings=["0x110D"], connection="network", port="192.168.10.21"
        ),
        "会议室_K4620A": dict(toner="55.27", errors=["0x11B0"]),
        "档案室_J4990E": dict(toner="64", connection="network", port="192.168.10.35"),
        "仓库_J4610A": dict(toner="31.4", status="initialize"),
    })
    copy = start(**CHINESE)
    copy.window()
    texts = ["就绪", "正在打印(碳粉不足)", "设备内卡纸", "就绪", "初始化"]
    eventually(lambda: [row[3] for row in copy.rows()] == texts, "all states are shown")
    desktop.screen.capture("window-for-documents", copy.window())


def test_window_opened_later(desktop, start_busy):
    """A hidden start skips what only the window needs. The window must still look the same when it is opened."""
    screen = desktop.screen

    def picture_of(copy, name):
        # Qt makes the first cell the current one if the window gets the focus after its rows. A click does so always.
        screen.click(copy.table().cell(0, 0).box)
        return screen.capture(name, box=screen.box(copy.window()))

    first = start_busy()
    picture = picture_of(first, "window-at-start")
    first.end()
    assert picture_of(start_busy("-hide"), "window-later") == picture


def test_end_of_the_table(desktop, busy_assistant):
    table = busy_assistant.table()
    desktop.screen.click(table.cell(0, 0).box)
    desktop.screen.press("ctrl+End")
    eventually(lambda: table.cell(len(PRINTERS) - 1, 0).box.y < table.box.y + table.box.height, "the last row is seen")
    desktop.screen.capture("window-end", busy_assistant.window())


def test_empty_window(desktop, start):
    assistant = start(**CHINESE)
    desktop.screen.capture("window-empty", assistant.window())
    table = assistant.table()
    last = table.column_headers()[-1].box
    frame = 1
    assert last.x + last.width == table.box.x + table.box.width - frame


def test_settings(desktop, start):
    assistant = start("-hide", **CHINESE)
    assistant.settings()
    desktop.screen.capture("settings", assistant.window(SETTINGS_TITLE))


def test_second_copy(desktop, start):
    start("-hide", **CHINESE)
    second = start(in_tray=False, **CHINESE)
    desktop.screen.capture("second-copy", second.window(TITLE))


def test_menu(desktop, start):
    assistant = start("-hide", **CHINESE)
    desktop.screen.capture("menu", box=assistant.icon.open_menu())


@pytest.mark.parametrize("kind, condition",
                         [("warning", dict(warnings=["0x112F"])), ("error", dict(errors=["0x11B0"]))])
def test_balloon(desktop, printers, start, kind, condition):
    printers.install({"三楼会议室的打印机": condition})
    assistant = start("-hide", **CHINESE)
    eventually(lambda: assistant.program.find("push button"), "the balloon is shown")
    balloon = next(window for window in assistant.program.children() if window.find("push button"))
    desktop.screen.capture(f"balloon-{kind}", box=balloon.box)
