# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""A tray of the older kind knows no messages: Qt draws them as a balloon beside the icon, a window of the program. It
comes and goes while no other window is open, and the program goes on."""

import pytest
from rig.waiting import eventually

JAM_INSIDE = "0x11B0"


@pytest.fixture
def balloon(printers, start):
    """A balloon of an assistant whose window is hidden."""
    printers.install({"Office": dict(toner="50", errors=[JAM_INSIDE])})
    return Balloon(start("-hide"))


class Balloon:
    """The program's only visible window beside its icon."""

    def __init__(self, assistant):
        self.assistant = assistant
        eventually(self.button, "the balloon is shown")

    def texts(self):
        """Title and text."""
        return [item.name for item in self.assistant.program.descendants() if item.role == "label"]

    def button(self):
        """The one that closes it; None while it is not shown."""
        return self.assistant.program.find("push button")

    def wait_until_closed(self):
        """Waits until it is gone, and checks that the program goes on: it shows its window at a click."""
        eventually(lambda: not self.button(), "the balloon is closed")
        self.assistant.icon.click()
        self.assistant.window()
        self.assistant.wait_for_rows(("Office", "USB", "50.00%", "设备内卡纸"))


def test_texts(balloon, notifications):
    assert balloon.texts() == ["Office", "设备内卡纸"]
    assert notifications.messages() == []
    assert not balloon.assistant.windows()


def test_closes_after_its_time(balloon):
    balloon.wait_until_closed()


def test_closed_with_the_mouse(desktop, balloon):
    desktop.screen.click(balloon.button().box)
    balloon.wait_until_closed()


def test_closes_after_the_window_was_closed(printers, start):
    printers.install({"Office": dict(toner="50")})
    assistant = start()
    assistant.wait_for_status(0, "就绪")
    assistant.close()
    printers.report("Office", errors=[JAM_INSIDE])
    Balloon(assistant).wait_until_closed()
