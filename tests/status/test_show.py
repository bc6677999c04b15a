# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT

from test_list import SCENARIO


def test_one_printer(tool):
    tool.simulate(SCENARIO)
    lines = tool.lines("show", "Hall_J4500A")
    for line in ("Name                       Hall_J4500A", "Connection                 network(192.168.10.21)",
                 "Toner                      8.32%", "Errors                     -",
                 "Warnings                   0x110D ERR_TONER_LOW Toner low",
                 "  Remedy                   Replace the toner cartridge",
                 "Warnings                   0x1121 ERR_WASTE_TONER_NEAR_FULL The waste toner will be full",
                 "Reported at                2023-11-14 22:13:20", "Pages of the printer       0 pages"):
        assert line in lines
    assert len([line for line in lines if line.startswith("Name ")]) == 1


def test_in_chinese(tool):
    tool.simulate(SCENARIO)
    lines = tool.lines("show", "Lab_J4990E", "--lang", "zh")
    assert "错误          0x11B0 ERR_JAM_INSIDE 设备内卡纸" in lines
    assert "  处理方法    请拉出纸张" in lines
    assert "错误          0xFFFF ERR_UNKNOWN 错误状态未知" in lines
    assert "序列号        -" in lines


def test_all_printers_in_the_order_of_the_list(tool):
    tool.simulate(SCENARIO)
    names = ["Office_K4510A", "Hall_J4500A", "Lab_J4990E", "前台", "Empty"]
    assert tool.lines("show", "--format", "terse", "--fields", "name") == names
    assert tool.lines("show", "--format", "terse", "--fields", "name", *reversed(names)) == names


def test_unknown_queue(tool):
    tool.simulate(SCENARIO)
    result = tool.run("show", "Nowhere", "Hall_J4500A", "--format", "terse", "--fields", "name")
    assert (result.returncode, result.stdout) == (1, b"Hall_J4500A\n")
    assert result.stderr == b"tolmar-q727-status: there is no printer called Nowhere\n"


def test_json_is_that_of_list(tool):
    tool.simulate(SCENARIO)
    chosen = tool.json("show", "Lab_J4990E")["printers"]
    assert chosen == [printer for printer in tool.json()["printers"] if printer["name"] == "Lab_J4990E"]


def test_queue_name_in_every_locale(tool):
    tool.simulate(SCENARIO)
    assert tool.run("show", "前台", environment={"LC_ALL": "C"}).returncode == 0
