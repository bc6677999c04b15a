# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""The line and the exit code of tolmar-q727-status check."""
import subprocess

import pytest

OK, WARNING, CRITICAL, UNKNOWN = range(4)
OFFICE = "printer Office\n    toner 87.5\n    printer-pages 8230\n"
HALL = "printer Hall\n    toner 8.32\n    warnings 0x110D\n"
EMPTY = "printer Empty\n    toner 4.99\n"
JAMMED = "printer Jammed\n    toner 50\n    errors 0x11B0 0x1106\n"
LOST = "printer Lost\n"


@pytest.fixture(name="check")
def fixture_check(tool, simulator, tmp_path):
    """check(scenario, arguments...) is (exit code, text, performance data)."""
    def run(scenario, *arguments, **environment):
        file = tmp_path / "test.scenario"
        file.write_text(scenario, encoding="utf-8")
        folder = tmp_path / "cfg"
        subprocess.run([simulator, "--directory", folder, file], check=True)
        (folder / "Lost.dat").unlink(missing_ok=True)
        result = subprocess.run([tool, "check", "--directory", folder, *arguments], stdout=subprocess.PIPE,
                                env=environment or None, check=False)
        line, end = result.stdout.decode().split("\n")
        assert end == "", "more than one line"
        text, _, performance = line.partition("|")
        return result.returncode, text, performance

    return run


def test_sound_printers(check):
    assert check(OFFICE + JAMMED, "Office") == (
        OK, "PRINTERS OK - 1 printer", "'Office toner'=87.5%;10:;5:;0;100 'Office pages'=8230c;;;0")
    assert check(OFFICE + OFFICE.replace("Office", "Other"))[:2] == (OK, "PRINTERS OK - 2 printers")


@pytest.mark.parametrize("printer, code, text", [
    (HALL, WARNING, "WARNING - Hall: Toner low (0x110D), toner 8.32 %"),
    (EMPTY, CRITICAL, "CRITICAL - Empty: toner 4.99 %"),
    (JAMMED, CRITICAL, "CRITICAL - Jammed: Paper jam inside (0x11B0), Front cover open (0x1106)"),
    (LOST, UNKNOWN, "UNKNOWN - Lost: off-line, report missing"),
])
def test_one_problem(check, printer, code, text):
    assert check(OFFICE + printer)[:2] == (code, f"PRINTERS {text}")


def test_the_worst_counts(check):
    assert check(LOST + HALL)[0] == WARNING
    assert check(LOST + HALL + JAMMED)[:2] == (
        CRITICAL, "PRINTERS CRITICAL - Lost: off-line, report missing; Hall: Toner low (0x110D), toner 8.32 %; "
                  "Jammed: Paper jam inside (0x11B0), Front cover open (0x1106)")


def test_toner_limits(check):
    limits = ("--toner-warning", "90", "--toner-critical", "87.5")
    assert check(OFFICE, *limits)[0] == WARNING
    assert check(OFFICE, *limits)[2].startswith("'Office toner'=87.5%;90:;87.5:;0;100")
    assert check(OFFICE, "--toner-critical", "87.51")[0] == CRITICAL
    assert check(EMPTY, "--toner-warning", "0", "--toner-critical", "0")[0] == OK


@pytest.mark.parametrize("state, code", [("ok", OK), ("warning", WARNING), ("critical", CRITICAL),
                                         ("unknown", UNKNOWN)])
def test_what_offline_counts_as(check, state, code):
    assert check(OFFICE + LOST, "--offline", state)[0] == code


def test_unknown_queue(check):
    assert check(OFFICE, "Office", "Nobody")[:2] == (UNKNOWN, "PRINTERS UNKNOWN - Nobody: no such printer")


def test_queue_that_begins_with_a_dash(check):
    assert check(OFFICE.replace("Office", "-x"), "--", "-x")[:2] == (OK, "PRINTERS OK - 1 printer")


def test_no_printers(check, tool, tmp_path):
    run = subprocess.run([tool, "check", "--directory", tmp_path], stdout=subprocess.PIPE, check=False)
    assert (run.returncode, run.stdout) == (UNKNOWN, b"PRINTERS UNKNOWN - the printer list cannot be read\n")
    (tmp_path / "cfg").mkdir()
    (tmp_path / "cfg" / "printerlist.ini").write_text("[Main]\nCount=0\n", encoding="ascii")
    run = subprocess.run([tool, "check", "--directory", tmp_path / "cfg"], stdout=subprocess.PIPE, check=False)
    assert (run.returncode, run.stdout) == (UNKNOWN, b"PRINTERS UNKNOWN - no printers are installed\n")


@pytest.mark.parametrize("arguments", [
    ("--toner-warning", "many"), ("--toner-critical", "101"), ("--toner-warning", "-1"), ("--toner-warning", "nan"),
    ("--offline", "never"), ("--toner-warning",), ("--output", "x"), ("--format", "json"), ("--nonsense",)])
def test_wrong_use_is_unknown(check, arguments):
    # 2 would mean critical here.
    code, text, _ = check(OFFICE, *arguments)
    assert code == UNKNOWN and text.startswith("PRINTERS UNKNOWN - ")


def test_same_bytes_under_every_locale(check):
    lines = {check(OFFICE + HALL, LC_ALL=locale, LANGUAGE=locale[:2]) for locale in ("C", "zh_CN.UTF-8", "de_DE.UTF-8")}
    assert len(lines) == 1


def test_names_cannot_break_the_line(check):
    name = "it's a|b=c \\\"2\\\" 激光"
    code, text, performance = check(HALL.replace("Hall", f'"{name}"'))
    assert code == WARNING and "|" not in text + performance
    assert performance.startswith(r"""'it''s a\x7Cb\x3Dc "2" 激光 toner'=8.32%;10:;5:;0;100""")
