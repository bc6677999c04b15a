# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""The auto-start option of the settings dialog, which is on while a file exists."""

import os
import shutil
from pathlib import Path

import pytest
from rig import accessibility
from rig.assistant import EXIT, SETTINGS_TITLE
from rig.waiting import eventually

ENTRIES = Path("/opt/apps/tolmar-printer-q727/entries/autostart")
ENTRY = ENTRIES / "tolmar-q727-tool-autostart.desktop"
CONTENT = "[Desktop Entry]\nName=拓玛激光打印助手\nExec=BrelPrinterTool -hide\n"
MARK_WIDTH = 16


class Settings:
    """The settings dialog of a running copy, used with the mouse."""

    def __init__(self, screen, assistant):
        self._screen = screen
        self.assistant = assistant
        self._window = None

    def open(self):
        """Opens the dialog from the tray's menu. By then the program has handled everything before that."""
        self._window = self.assistant.settings()

    def _box(self):
        return self._window.find("check box", "开机启动")

    def is_ticked(self):
        return self._box().has_state(accessibility.CHECKED)

    def toggle(self):
        was_ticked = self.is_ticked()
        # A check box reacts only to clicks on its mark and text, and most of it is empty.
        self._screen.click(self._box().box._replace(width=MARK_WIDTH))
        eventually(lambda: self.is_ticked() != was_ticked, "the box changes")

    def press(self, label):
        self._screen.click(self._window.find("push button", label).box)
        self.assistant.wait_until_hidden(SETTINGS_TITLE)

    def close(self):
        self.assistant.close(SETTINGS_TITLE)


CONFIRM, CANCEL = "确定", "取消"


@pytest.fixture
def source(program, tmp_path):
    """The source of the entry, beside a copy of the program, where a package would install it."""
    shutil.copy(program, tmp_path)
    path = tmp_path / ENTRY.name
    path.write_text(CONTENT)
    return path


@pytest.fixture
def open_settings(desktop, start, source, program):
    """Starts that copy and opens its settings. The main window stays hidden."""

    def open_them():
        settings = Settings(desktop.screen, start("-hide", path=str(source.with_name(Path(program).name))))
        settings.open()
        return settings

    return open_them


def put_entry(content="kept"):
    ENTRIES.mkdir(parents=True)
    ENTRY.write_text(content)


def test_switched_on_and_off(open_settings):
    settings = open_settings()
    assert not settings.is_ticked()
    settings.toggle()
    assert not ENTRY.exists()
    settings.press(CONFIRM)
    settings.open()
    assert settings.is_ticked()
    assert ENTRY.read_text() == CONTENT
    settings.toggle()
    assert ENTRY.exists()
    settings.press(CONFIRM)
    settings.open()
    assert not settings.is_ticked()
    assert list(ENTRIES.iterdir()) == []


@pytest.mark.parametrize("has_entry", [False, True], ids=["ticked", "unticked"])
@pytest.mark.parametrize("discard", [lambda settings: settings.press(CANCEL), Settings.close],
                         ids=["cancelled", "closed"])
def test_discarded(open_settings, has_entry, discard):
    if has_entry:
        put_entry()
    settings = open_settings()
    assert settings.is_ticked() == has_entry
    settings.toggle()
    discard(settings)
    settings.open()
    assert settings.is_ticked() == has_entry
    assert ENTRY.exists() == has_entry
    assert settings.assistant.icon.is_present()


def test_exit_saves_nothing(open_settings):
    settings = open_settings()
    settings.toggle()
    settings.assistant.icon.choose(EXIT)
    assert settings.assistant.wait_for_exit() == 0
    assert not ENTRY.exists()


def confirm_in_vain(desktop, settings, is_on):
    """Toggles and confirms, which fails: no message appears, and the box shows the unchanged state."""
    assert settings.is_ticked() == is_on
    settings.toggle()
    settings.press(CONFIRM)
    settings.assistant.icon.entries()
    assert desktop.screen.windows(settings.assistant.pid) == []
    settings.open()
    assert settings.is_ticked() == is_on
    assert ENTRY.exists() == is_on


def test_source_is_missing(desktop, open_settings, source):
    source.unlink()
    confirm_in_vain(desktop, open_settings(), is_on=False)


def test_file_in_place_of_the_folder(desktop, open_settings):
    ENTRIES.parent.mkdir(parents=True)
    ENTRIES.write_text("")
    confirm_in_vain(desktop, open_settings(), is_on=False)


def test_folder_in_place_of_the_entry(desktop, open_settings):
    ENTRY.mkdir(parents=True)
    confirm_in_vain(desktop, open_settings(), is_on=True)


@pytest.mark.skipif(os.getuid() == 0, reason="root ignores file permissions")
@pytest.mark.parametrize("has_entry", [False, True], ids=["copy fails", "removal fails"])
def test_locked_folder(desktop, open_settings, has_entry):
    if has_entry:
        put_entry()
    else:
        ENTRIES.mkdir(parents=True)
    ENTRIES.chmod(0o555)
    try:
        confirm_in_vain(desktop, open_settings(), is_on=has_entry)
    finally:
        ENTRIES.chmod(0o755)
