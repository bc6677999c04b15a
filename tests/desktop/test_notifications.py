# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""Messages that the desktop's notification service receives. A later message proves that an unwanted one never came."""

import os

import pytest
from rig.notifications import Message

COVER_OPEN, TONER_LOW, TRAY_EMPTY, JAM_INSIDE = "0x1106", "0x110D", "0x11A0", "0x11B0"
NORMAL, CRITICAL = 1, 2
TIME_MS = 3000


@pytest.fixture(autouse=True)
def _service(desktop):
    desktop.notifications.clear()


def test_first_warning(printers, start, notifications, program):
    printers.install({"Office": dict(model="K4510A", warnings=[TONER_LOW, TRAY_EMPTY])})
    assistant = start("-hide")
    notifications.wait_for_texts(("Office", "碳粉不足"))
    assert notifications.messages() == [
        Message(os.path.basename(program), "dialog-warning", "Office", "碳粉不足", NORMAL, TIME_MS)]
    assert assistant.windows() == []


def test_first_error(printers, start, notifications, program):
    printers.install({"Office": dict(errors=[JAM_INSIDE, COVER_OPEN], warnings=[TONER_LOW], status="printing")})
    assistant = start("-hide")
    notifications.wait_for_texts(("Office", "设备内卡纸"))
    assert notifications.messages() == [
        Message(os.path.basename(program), "dialog-error", "Office", "设备内卡纸", CRITICAL, TIME_MS)]
    assert assistant.windows() == []


def test_second_family(printers, start, notifications):
    printers.install({"Lab_J4990E": dict(errors=[COVER_OPEN], warnings=[TONER_LOW])})
    start("-hide")
    notifications.wait_for_texts(("Lab_J4990E", "前盖已打开"))
    printers.report("Lab_J4990E", errors="none")
    notifications.wait_for_texts(("Lab_J4990E", "前盖已打开"), ("Lab_J4990E", "碳粉不足"))


def test_none_when_clear(printers, start, notifications):
    printers.install({"Office": dict(toner="50")})
    assistant = start()
    assistant.wait_for_rows(("Office", "USB", "50.00%", "就绪"))
    printers.report("Office", errors=[JAM_INSIDE])
    assistant.wait_for_status(0, "设备内卡纸")
    printers.report("Office", errors="none", toner="49")
    assistant.wait_for_rows(("Office", "USB", "49.00%", "就绪"))
    printers.report("Office", status="printing", warnings=[TRAY_EMPTY])
    assistant.wait_for_status(0, "正在打印(纸盘中无纸)")
    notifications.wait_for_texts(("Office", "设备内卡纸"), ("Office", "纸盘中无纸"))


def test_none_repeated_while_nothing_changes(printers, start, notifications):
    printers.install({"Office": dict(toner="20", warnings=[TONER_LOW]), "Hall": dict(toner="90")})
    assistant = start()
    notifications.wait_for_texts(("Office", "碳粉不足"))
    # The same report with a new timestamp, then changes that users do not see.
    printers.report("Office")
    printers.wait_until_read("Office")
    printers.report("Office", pages=17, firmware="1.2")
    printers.wait_until_read("Office")
    # When the other printer's change is shown, this one has been polled, too.
    printers.report("Hall", toner="89")
    assistant.wait_for_rows(("Office", "USB", "20.00%", "就绪"), ("Hall", "USB", "89.00%", "就绪"))
    printers.report("Office", warnings=[TRAY_EMPTY])
    notifications.wait_for_texts(("Office", "碳粉不足"), ("Office", "纸盘中无纸"))


@pytest.mark.parametrize("condition, text", [(dict(warnings=[TONER_LOW]), "碳粉不足"),
                                             (dict(errors=[TRAY_EMPTY]), "纸盘中无纸")],
                         ids=["warning", "error"])
def test_again_when_only_the_toner_changes(printers, start, notifications, condition, text):
    printers.install({"Office": dict(toner="20", **condition)})
    start("-hide")
    notifications.wait_for_texts(("Office", text))
    printers.report("Office", toner="19.99")
    notifications.wait_for_texts(("Office", text), ("Office", text))
    first, second = notifications.messages()
    assert first == second


def test_each_printer_in_its_own_name(printers, start, notifications):
    names = [f"打印机 {number}" for number in range(3)]
    printers.install({name: dict(warnings=[TONER_LOW]) for name in names})
    start("-hide")
    notifications.wait_for_count(3)
    assert sorted(notifications.texts()) == [(name, "碳粉不足") for name in names]
