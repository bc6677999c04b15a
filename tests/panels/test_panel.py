# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""The icon, its menu and the messages on a real desktop, seen and used as a person does."""

import subprocess

from rig.assistant import EXIT, SETTINGS, SHOW, TITLE, UPDATE
from rig.launcher import older_tray_is_taken
from rig.waiting import eventually

ENTRIES = [SHOW, UPDATE, SETTINGS, EXIT]
LOW_TONER = ("Office", "碳粉不足")
WARNING = "0x110D"
# Pixels between a message and the middle of its icon.
NEAR = 30


def use(desktop, assistant):
    """Checks that the screen shows one icon, that the tray has one item, and that a click shows the window."""
    icon = desktop.icon()
    if desktop.recipe.has_items:
        assert len(desktop.items(assistant.pid)) == 1
    desktop.screen.click(icon)
    assistant.window()


def test_icon(panel, hidden_assistant):
    panel.capture("icon", panel.icon())
    use(panel, hidden_assistant)


def test_tooltip(panel, hidden_assistant):
    icon = panel.icon()
    # Two movements: some panels show a tool tip only for a pointer that moves inside the icon.
    for x in (icon.x + icon.width // 2, icon.x + icon.width // 2 + 1):
        subprocess.run(["xdotool", "mousemove", str(x), str(icon.y + icon.height // 2)], check=True)
    tip = panel.screen.box(eventually(panel.tooltip, "the tool tip is shown"))
    panel.capture("tooltip", icon, tip)
    if panel.recipe.is_gtk:
        assert panel.item_tooltip(hidden_assistant.pid) == TITLE
    else:
        shown_by = panel.panel if panel.recipe.has_items else hidden_assistant.pid
        eventually(lambda: TITLE in panel.texts("tool tip", shown_by), "the tool tip has its text")


def test_menu(panel, hidden_assistant):
    menu, entries = panel.open_menu()
    assert entries == ENTRIES
    panel.capture("menu", panel.icon(), menu)
    panel.choose(menu, ENTRIES.index(EXIT), len(ENTRIES))
    assert hidden_assistant.wait_for_exit() == 0
    panel.wait_for_no_icon()


def test_message(panel, printers, hidden_assistant):
    icon = panel.icon()
    printers.install({LOW_TONER[0]: dict(model="K4510A", warnings=[WARNING])})
    panel.capture("message", check_message(panel, hidden_assistant, icon), within_s=2)


def test_panel_is_killed_and_started_again(panel, printers, hidden_assistant):
    panel.icon()
    panel.kill_panel()
    panel.wait_for_no_icon()
    panel.start_panel()
    assert panel.open_menu()[1] == ENTRIES
    panel.screen.press("Escape")
    use(panel, hidden_assistant)


def test_program_before_the_panel(desktop, printers, hidden_assistant):
    """Qt has chosen an XEmbed icon for good. Its messages are balloons, and where a panel shows a copy of the icon and
    hides the icon itself, they are beside the hidden one. Only the launcher prevents this."""
    # A balloon stays while the pointer is on it.
    subprocess.run(["xdotool", "mousemove", "960", "540"], check=True)
    desktop.start_panel()
    icon = desktop.icon()
    printers.install({LOW_TONER[0]: dict(model="K4510A", warnings=[WARNING])})
    balloon = desktop.wait_for_message(*LOW_TONER, hidden_assistant.pid)
    assert is_beside(icon, balloon) != desktop.recipe.copies_icon
    # The balloon covers the middle of the icon. The click comes last, because a panel may move the hidden icon there.
    eventually(lambda: LOW_TONER[0] not in desktop.texts("label", hidden_assistant.pid), "the balloon is closed")
    desktop.screen.click(desktop.icon())
    hidden_assistant.window()


def test_launcher_before_the_panel(desktop, launch, printers):
    launcher = launch()
    launcher.assert_stays_waiting(5)
    if desktop.recipe.helpers:
        assert older_tray_is_taken()
    desktop.start_panel()
    launcher.wait_until_assistant()
    icon = desktop.icon()
    printers.install({LOW_TONER[0]: dict(model="K4510A", warnings=[WARNING])})
    check_message(desktop, launcher.process, icon)
    assert not desktop.recipe.has_items or len(desktop.items(launcher.process.pid)) == 1


def check_message(desktop, process, icon):
    """Waits for the message about toner: from the notification service or, in an XEmbed tray, beside the icon."""
    box = desktop.wait_for_message(*LOW_TONER, desktop.notifier if desktop.recipe.has_items else process.pid)
    if not desktop.recipe.has_items:
        assert is_beside(icon, box)
    return box


def is_beside(icon, box):
    """Whether a box touches an icon or nearly does."""
    return (box.x - NEAR < icon.x + icon.width // 2 < box.x + box.width + NEAR
            and box.y - NEAR < icon.y + icon.height // 2 < box.y + box.height + NEAR)
