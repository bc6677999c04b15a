# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""A desktop of 3840 pixels, which Qt or the program itself scales to 200 %, and pictures of both for review."""

import pytest
from rig.assistant import SETTINGS, SETTINGS_TITLE

CHINESE = {"LANG": "zh_CN.UTF-8"}


@pytest.mark.parametrize("factor", ["1", "2"])
def test_windows(desktop, printers, start, factor):
    printers.install({"前台_J4500A": dict(toner="8.32", status="printing", warnings=["0x110D"])})
    assistant = start(QT_SCALE_FACTOR=factor, **CHINESE)
    assistant.wait_for_status(0, "正在打印(碳粉不足)")
    window = assistant.window()
    box = desktop.screen.box(window)
    assert (box.width, box.height) == (1200, 600)
    assert abs(box.x + box.width // 2 - desktop.screen.width // 2) <= 2
    desktop.screen.capture(f"window-factor-{factor}", window)
    assistant.close()
    assistant.icon.choose(SETTINGS)
    settings = assistant.window(SETTINGS_TITLE)
    box = desktop.screen.box(settings)
    assert (box.width, box.height) == (800, 600)
    desktop.screen.capture(f"settings-factor-{factor}", settings)
