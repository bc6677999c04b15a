# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""Manual, completion and program name the same commands and options."""

import os
import pathlib
import re
import subprocess

import pytest

_PACKAGING = pathlib.Path(__file__).parents[2] / "packaging"
_COMPLETION = _PACKAGING / "completion/tolmar-q727-status"
_PAGES = [_PACKAGING / f"man/tolmar-q727-status{language}.1.in" for language in ("", ".zh_CN")]

SCENARIO = 'printer "Front office"\nprinter Hall\nprinter "Hall: 2"\nprinter 前台\n'


def commands(tool):
    """The commands that the program accepts."""
    message = tool.run("no-such-command").stderr.decode()
    return re.search(r"valid: (.*)", message).group(1).split(", ")


def options(text):
    """The long options in a text."""
    return set(re.findall(r"--[a-z][a-z-]+", text)) - {"--help", "--version"}


def program_options(tool):
    """The options that the program accepts. Each is tried with a command that has it."""
    candidates = options(_COMPLETION.read_text(encoding="utf-8"))
    return {option for option in candidates
            if b"Unknown option" not in tool.run("no-such-command", option, "x").stderr}


def complete(tool, *words):
    """What bash offers for the last word."""
    script = 'source "$1"; shift; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _tolmar_q727_status; ' \
        'printf "%s\\n" "${COMPREPLY[@]}"'
    result = subprocess.run(["bash", "-c", script, "bash", _COMPLETION, tool.program, *words], check=True, timeout=60,
                            stdout=subprocess.PIPE, env={**os.environ, "LANG": "C.UTF-8"})
    return result.stdout.decode().splitlines()


@pytest.mark.parametrize("page", _PAGES, ids=lambda page: page.name)
def test_manual(tool, page):
    text = page.read_text(encoding="utf-8").replace("\\", "")
    assert options(text) == program_options(tool)
    for command in commands(tool):
        assert re.search(rf"^\.(B|BR) {command}\b", text, re.MULTILINE), command


@pytest.mark.parametrize("language", ["en", "zh"])
def test_help(tool, language):
    text = tool.run("--help", "--lang", language).stdout.decode()
    for command in commands(tool):
        assert re.search(rf"^  {command}\b", text, re.MULTILINE), command
    assert options(text) <= program_options(tool)


def test_completion_of_commands_and_options(tool):
    assert complete(tool, "") == commands(tool)
    assert complete(tool, "dec") == ["decode"]
    assert complete(tool, "--fo") == ["--format"]
    assert complete(tool, "decode", "--fam") == ["--family"]
    assert complete(tool, "--format", "") == ["table", "terse", "json"]
    assert complete(tool, "--lang", "z") == ["zh"]
    assert complete(tool, "--fields", "name,ton") == ["name,toner", "name,toner-raw"]


def test_completion_of_queues(tool):
    tool.simulate(SCENARIO)
    arguments = ("--directory", str(tool.folder), "show")
    assert complete(tool, *arguments, "Ha") == ["Hall", "Hall:\\ 2"]
    assert complete(tool, *arguments, "F") == ["Front\\ office"]
    assert complete(tool, *arguments, "前") == ["前台"]
    assert complete(tool, "--directory", "/nonexistent", "show", "") == [""]
