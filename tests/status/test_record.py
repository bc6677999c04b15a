# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT

import os
import signal
import subprocess
import time

import pytest


def eventually(condition, what):
    """Waits for a condition."""
    end = time.monotonic() + 60
    while not condition():
        assert time.monotonic() < end, what
        time.sleep(0.02)


class Recorder:
    """A running record of the folder."""

    def __init__(self, tool, *options):
        self.file = tool.folder.parent / "day.scenario"
        self._process = subprocess.Popen([tool.program, "record", self.file, "--directory", tool.folder, *options],
                                         stderr=subprocess.PIPE, text=True)
        # The file is written as soon as the start is recorded.
        eventually(self.file.exists, "the record begins")

    def end(self, code=0):
        """Ends the record. Returns the scenario and the messages."""
        self._process.send_signal(signal.SIGINT)
        _, errors = self._process.communicate(timeout=60)
        assert self._process.returncode == code, errors
        return self.file.read_text(encoding="utf-8"), errors


def states(folder):
    """The content of the status files and the list."""
    return {path.name: path.read_bytes() for path in folder.iterdir()}


def replace(tool, scenario, time_s):
    """Replaces the files by those of a scenario and waits until the record has read them. The access time of a file
    is 0 until it is read."""
    new = type(tool)(tool.program, tool.simulator, tool.folder.parent / "new")
    new.simulate(scenario)
    files = sorted(new.folder.iterdir())  # the list comes last
    for file in files:
        os.utime(file, ns=(0, int(time_s * 1e9)))
        file.rename(tool.folder / file.name)
    for file in files:
        eventually(lambda path=tool.folder / file.name: path.stat().st_atime_ns != 0, f"{file.name} is read")


def test_replay_writes_the_same_files(tool, tmp_path):
    tool.simulate("printer A\n    toner 80\nprinter B_J4990E\n    toner 50\nprinter C\n    garbage 00 01 ff\n")
    recorder = Recorder(tool)
    replace(tool, "printer A\n    garbage\nprinter B_J4990E\n    toner 50\nprinter C\n    garbage 00 01 ff\n",
            1700000001)
    replace(tool, "printer B_J4990E\n    toner 49\nprinter D\n    toner 3\nprinter A\n    connection network\n",
            1700000002)
    last = states(tool.folder)
    del last["C.dat"]  # the file of a printer that is not listed any more
    scenario, _ = recorder.end()
    replayed = tmp_path / "replayed"
    subprocess.run([tool.simulator, "--directory", replayed, "--speed", "100", recorder.file], check=True, timeout=60)
    assert states(replayed) == last
    assert scenario.index("# rejected\n    reply \"A\"") < scenario.index("remove \"C\"")


def test_without_serial_numbers(tool):
    tool.simulate("printer A\n    uri usb://x?serial=SECRET\n    serial SECRET\n    supply-serial SECRET\n")
    scenario, _ = Recorder(tool, "--no-serial").end()
    assert "SECRET" not in scenario
    assert b"SECRET".hex() not in scenario
    (tool.folder.parent / "again").mkdir()
    tool.folder = tool.folder.parent / "again"
    tool.simulate(scenario)
    assert tool.json()["printers"][0]["serial"] == "******"


def test_names_that_a_scenario_cannot_express(tool):
    (tool.folder / "printerlist.ini").write_text('[Main]\nCount=1\n[printer_0]\nName="a\\nb"\n', encoding="utf-8")
    scenario, errors = Recorder(tool, "--lang", "en").end(code=1)
    assert 'cannot record a printer called "a\\x0Ab"' in errors
    assert "printer nobody absent" in scenario


def test_file_that_cannot_be_written(tool):
    tool.simulate("printer A\n")
    result = tool.run("record", "/nonexistent/file")
    assert result.returncode == 1
    assert b"cannot write /nonexistent/file" in result.stderr


@pytest.mark.parametrize("speed", ["0", "-1", "x", "1001", "nan"])
def test_speeds_that_are_refused(tool, speed):
    scenario = tool.folder / "test.scenario"
    scenario.write_text("printer A\n", encoding="utf-8")
    result = subprocess.run([tool.simulator, "--directory", tool.folder, f"--speed={speed}", scenario],
                            stderr=subprocess.PIPE, check=False, timeout=60)
    assert (result.returncode, result.stderr) == (1, b"printer-simulator: --speed needs a number from 0.01 to 1000\n")


def test_speed(tool):
    scenario = tool.folder / "test.scenario"
    scenario.write_text("printer A\nwait 600\n    toner A 1\n", encoding="utf-8")
    start = time.monotonic()
    subprocess.run([tool.simulator, "--directory", tool.folder, "--speed", "1000", scenario], check=True, timeout=60)
    assert 0.6 <= time.monotonic() - start < 60
