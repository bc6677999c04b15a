# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""The icon in a real tray, used with the mouse."""

import os

from rig.accessibility import ACTIVE, SHOWING
from rig.assistant import EXIT, SETTINGS, SETTINGS_TITLE, SHOW, UPDATE
from rig.printers import PACKAGE
from rig.waiting import eventually

LEFT, MIDDLE = 1, 2


def test_icon_while_the_window_is_open(assistant):
    assert assistant.icon.is_present()


def test_click_shows_the_hidden_window(hidden_assistant):
    assert not hidden_assistant.says(SHOWING)
    hidden_assistant.icon.click(LEFT)
    hidden_assistant.window()


def test_icon_stays_when_the_window_is_closed(assistant):
    assistant.close()
    assert assistant.icon.is_present()
    assistant.icon.click(LEFT)
    assistant.window()


def test_click_restores_the_minimised_window(desktop, assistant):
    eventually(lambda: assistant.says(ACTIVE), "the window is active")
    desktop.screen.minimise(assistant.window())
    assistant.wait_until_hidden()
    eventually(lambda: not assistant.says(ACTIVE), "the program knows that its window is not active any more")
    assistant.icon.click(LEFT)
    assistant.window()


def test_click_leaves_an_active_window_alone(assistant):
    window = assistant.window()
    eventually(lambda: assistant.says(ACTIVE), "the window is active")
    assistant.icon.click(LEFT)
    # The program handles the menu after the click.
    assistant.icon.open_menu()
    assistant.icon.close_menu()
    assert assistant.window() == window
    assert assistant.says(SHOWING)


# The first click shows the window. The rest of the double click changes nothing.
def test_double_click_shows_the_window_once(hidden_assistant):
    hidden_assistant.icon.double_click()
    window = hidden_assistant.window()
    # The program handles the menu after the clicks.
    hidden_assistant.icon.open_menu()
    hidden_assistant.icon.close_menu()
    assert hidden_assistant.window() == window
    assert hidden_assistant.says(SHOWING)


def test_other_buttons_do_not_show_the_window(hidden_assistant):
    hidden_assistant.icon.click(MIDDLE)
    # The program handles the right button after the middle one.
    hidden_assistant.icon.open_menu()
    hidden_assistant.icon.close_menu()
    assert not hidden_assistant.says(SHOWING)
    assert hidden_assistant.windows() == []


def test_menu(hidden_assistant):
    assert hidden_assistant.icon.entries() == ["显示主界面", "打印机更新助手", "设置", "退出"]


def test_entry_show(hidden_assistant):
    hidden_assistant.icon.choose_by_hand(SHOW)
    hidden_assistant.window()
    assert hidden_assistant.windows(SETTINGS_TITLE) == []


def test_entry_update(printers, hidden_assistant):
    tool = f"{PACKAGE}/bin/tolmarQ727FW"
    os.makedirs(os.path.dirname(tool))
    with open(tool, "w", encoding="utf-8") as script:
        script.write("#!/bin/sh\n: >/tmp/firmware-tool-started\n")
    os.chmod(tool, 0o755)
    hidden_assistant.icon.choose_by_hand(UPDATE)
    eventually(lambda: os.path.exists("/tmp/firmware-tool-started"), "the firmware tool is started")
    os.remove("/tmp/firmware-tool-started")
    assert not hidden_assistant.says(SHOWING)


def test_entry_settings(hidden_assistant):
    hidden_assistant.icon.choose_by_hand(SETTINGS)
    hidden_assistant.window(SETTINGS_TITLE)
    assert hidden_assistant.windows() == []


def test_entry_exit(assistant):
    icon = assistant.icon
    icon.choose_by_hand(EXIT)
    assert assistant.wait_for_exit() == 0
    eventually(lambda: not icon.is_present(), "the icon is gone")
