# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""XEmbed trays do not support messages, so Qt shows each one in a balloon: a window of the program beside the icon. Its
closing must not end the program, even if no other window is open."""

import pytest
from rig.waiting import eventually

JAM_INSIDE = "0x11B0"


@pytest.fixture
def balloon(printers, start):
    """The balloon of an assistant whose window is hidden."""
    printers.install({"Office": dict(toner="50", errors=[JAM_INSIDE])})
    return Balloon(start("-hide"))


class Balloon:
    """The balloon, which is the program's only visible window besides its icon."""

    def __init__(self, assistant):
        self.assistant = assistant
        eventually(self.button, "the balloon is shown")

    def texts(self):
        """The title and the text."""
        return [item.name for item in self.assistant.program.descendants() if item.role == "label"]

    def button(self):
        """The button that closes it; None unless it is shown."""
        return self.assistant.program.find("push button")

    def wait_until_closed(self):
        """Waits until the balloon is closed and checks that the program still works: a click shows its window."""
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
