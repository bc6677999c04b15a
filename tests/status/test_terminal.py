# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""The tool on a real terminal: colours, and nothing else that a terminal obeys."""

import os
import pty
import re
import signal

import pytest

SCENARIO = """
printer Ready
    toner 50
printer Warning
    toner 8
    warnings 0x110D
printer Error
    errors 0x11B0
printer Gone
    vanish
"""
_COLOUR = re.compile("\x1b\\[[0-9]*m")


class Terminal:
    """A program on a new terminal."""

    def __init__(self, arguments, environment):
        self._pid, self._master = pty.fork()
        if self._pid == 0:
            os.execve(arguments[0], [str(argument) for argument in arguments],
                      {"LANG": "en_US.UTF-8", "TERM": "xterm", **environment})

    def read_line(self):
        """One line as it arrives at the terminal."""
        line = b""
        while not line.endswith(b"\n"):
            line += os.read(self._master, 1)
        return line.decode().rstrip("\r\n")

    def press(self, keys):
        """Types keys; \\x03 is Ctrl-C."""
        os.write(self._master, keys)

    def end(self):
        """Reads the rest. Returns it with the exit code, which is negative for a signal."""
        text = b""
        try:
            while chunk := os.read(self._master, 4096):
                text += chunk
        except OSError:  # how the kernel says that the program has closed the terminal
            pass
        _, status = os.waitpid(self._pid, 0)
        os.close(self._master)
        return text.decode().replace("\r\n", "\n"), os.waitstatus_to_exitcode(status)


def run(tool, *arguments, **environment):
    return Terminal([tool.program, "--directory", tool.folder, *arguments], environment).end()


def test_colours(tool):
    tool.simulate(SCENARIO)
    text, code = run(tool, "--fields", "name,status,condition")
    assert code == 0
    assert text.splitlines() == [
        "\x1b[1mName\x1b[0m     \x1b[1mStatus\x1b[0m    \x1b[1mCondition\x1b[0m",
        "Ready    \x1b[32mReady\x1b[0m",
        "Warning  \x1b[33mReady\x1b[0m     \x1b[33mToner low\x1b[0m",
        "Error    \x1b[31mReady\x1b[0m     \x1b[31mPaper jam inside\x1b[0m",
        "Gone     \x1b[2mOff-line\x1b[0m  \x1b[2mno status file\x1b[0m"]


@pytest.mark.parametrize("environment", [{"NO_COLOR": "1"}, {"TERM": "dumb"}])
def test_environment_without_colours(tool, environment):
    tool.simulate(SCENARIO)
    text, code = run(tool, **environment)
    assert (code, "\x1b" in text) == (0, False)
    assert "\x1b" in run(tool, "--color", "always", **environment)[0]


@pytest.mark.parametrize("arguments", [["--color", "never"], ["--json"], ["--format", "terse"], ["--help"]])
def test_output_without_colours(tool, arguments):
    tool.simulate(SCENARIO)
    text, code = run(tool, *arguments)
    assert (code, "\x1b" in text) == (0, False)


@pytest.mark.parametrize("arguments", [[], ["show"], ["show", "--json"], ["--format", "terse"]])
def test_hostile_names_obey_nothing(tool, arguments):
    names = ["\\x1b[2J\\x1b]0;title\\a", "\\x9b]6n", "a\\rb", "\\x202e|", "\\x7f"]
    sections = "".join(f'[printer_{i}]\nName="{name}"\nModel="{name}"\n' for i, name in enumerate(names))
    (tool.folder / "printerlist.ini").write_text(f"[Main]\nCount={len(names)}\n{sections}", encoding="utf-8")
    text, code = run(tool, *arguments)
    assert code == 0
    rest = _COLOUR.sub("", text)
    assert not [c for c in rest if (ord(c) < 32 and c != "\n") or 127 <= ord(c) < 160 or c == "\u202e"]


def test_watch_ends_at_ctrl_c(tool):
    tool.simulate("printer Office\n    toner 50\n")
    terminal = Terminal([tool.program, "watch", "--directory", tool.folder], {})
    assert _COLOUR.sub("", terminal.read_line()).split()[1:] == ["Office", "50.00%", "Ready"]
    terminal.press(b"\x03")
    assert terminal.end() == ("^C", 0)


def test_record_ends_at_ctrl_c(tool):
    tool.simulate("printer Office\n")
    record = tool.folder.parent / "day.scenario"
    terminal = Terminal([tool.program, "record", record, "--directory", tool.folder], {})
    assert terminal.read_line() == f"tolmar-q727-status: recording in {record}; Ctrl-C ends it"
    terminal.press(b"\x03")
    text, code = terminal.end()
    assert (text, code) == (f"^Ctolmar-q727-status: 0 steps recorded in {record}\n", 0)
    assert "printer \"Office\"" in record.read_text(encoding="utf-8")


def test_closed_terminal_ends_watch(tool):
    tool.simulate("printer Office\n")
    terminal = Terminal([tool.program, "watch", "--directory", tool.folder], {})
    terminal.read_line()
    os.kill(terminal._pid, signal.SIGHUP)
    assert terminal.end()[1] == -signal.SIGHUP
