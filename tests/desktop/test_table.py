# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""The window's table as a screen reader reads it."""


def test_columns(assistant):
    headers = assistant.table().column_headers()
    assert [header.name for header in headers] == ["打印机名称", "连接方式", "剩余碳粉量", "状态"]
    assert assistant.rows() == []


def test_rows(desktop, printers, assistant):
    printers.install({
        "Office_K4510A": dict(toner="87.50"),
        "Hall_J4500A": dict(connection="network", port="192.168.10.21", toner="8.32", status="printing",
                            warnings=["0x110D"]),
        "Lab_J4990E": dict(toner="64"),
        "Desk_K4620A": dict(toner="55.27", status="busy", errors=["0x11B0"]),
    })
    assistant.wait_for_rows(
        ("Office_K4510A", "USB", "87.50%", "就绪"),
        ("Hall_J4500A", "网络(192.168.10.21)", "8.32%", "正在打印(碳粉不足)"),
        ("Lab_J4990E", "USB", "64.00%", "就绪"),
        ("Desk_K4620A", "USB", "55.27%", "设备内卡纸"),
    )
    desktop.screen.capture("table", assistant.window())
