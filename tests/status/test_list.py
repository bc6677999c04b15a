# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT

import json
import os
import pathlib
import resource
import subprocess
import time

import jsonschema
import pytest

_GOLDEN = pathlib.Path(__file__).parent / "golden"

SCENARIO = """
printer Office_K4510A
    model K4510A
    port USB001
    uri "usb://Tolmar/QV%20K4510A?serial=QVK451A000173"
    vendor Tolmar
    product "QV K4510A"
    serial QVK451A000173
    firmware 1.08.21
    supply-serial TC45A0009312
    toner 87.50
    waste 312
    drum 1408
    pages 1296
    prints 1180
    dots 4411
    printer-pages 8230
    printer-prints 7705
printer Hall_J4500A
    model J4500A
    connection network
    port 192.168.10.21
    uri socket://192.168.10.21:9100
    status printing
    toner 8.32
    warnings 0x110D 0x1121
printer Lab_J4990E
    model J4990E
    connection network
    port 192.168.10.35
    toner 64
    errors 0x11B0 0xFFFF
printer 前台
    garbage
printer Empty
    vanish
"""


def test_table(tool):
    tool.simulate(SCENARIO)
    for file in tool.folder.iterdir():
        os.utime(file, (time.time() - 130, time.time() - 130))
    assert tool.lines() == [
        "Name           Model   Connection              Toner   Status    Condition         Age",
        "Office_K4510A  K4510A  USB                     87.50%  Ready                       2 min",
        "Hall_J4500A    J4500A  network(192.168.10.21)  8.32%   Printing  Toner low         2 min",
        "Lab_J4990E     J4990E  network(192.168.10.35)  64.00%  Ready     Paper jam inside  2 min",
        "前台                   USB                             Off-line  invalid reply     2 min",
        "Empty                  USB                             Off-line  no status file"]


def test_table_in_chinese(tool):
    tool.simulate(SCENARIO)
    lines = tool.lines("--lang", "zh", "--fields", "name,status,condition")
    assert lines[0] == "打印机名称     状态      首要情况"
    assert lines[2] == "Hall_J4500A    正在打印  碳粉不足"


def test_terse(tool):
    tool.simulate(SCENARIO)
    assert tool.lines("--format", "terse", "--fields", "name,uri,toner,status,condition,result,modified") == [
        r"Office_K4510A:usb\://Tolmar/QV%20K4510A?serial=QVK451A000173:0.8750:PS_READY::accepted:"
        r"2023-11-14T22\:13\:20.250Z",
        r"Hall_J4500A:socket\://192.168.10.21\:9100:0.0832:PS_PRINTING:ERR_TONER_LOW:accepted:"
        r"2023-11-14T22\:13\:20.250Z",
        r"Lab_J4990E::0.6400:PS_READY:ERR_JAM_INSIDE:accepted:2023-11-14T22\:13\:20.250Z",
        r"前台:::PS_OFFLINE::rejected:2023-11-14T22\:13\:20.250Z",
        "Empty:::PS_OFFLINE::missing:"]


def test_golden_json(tool):
    tool.simulate(SCENARIO)
    document = tool.json()
    document["list"]["directory"] = "/opt/tolmar/tolmar-printer-q727/cfg/"
    golden = json.loads((_GOLDEN / "list-1.0.json").read_text(encoding="utf-8"))
    assert document == golden


def test_schema_describes_every_member(tool):
    tool.simulate(SCENARIO)
    error = jsonschema.exceptions.best_match(tool.strict_schema.iter_errors(tool.json()))
    assert error is None, f"{error.json_path}: {error.message[:200]}"


@pytest.mark.parametrize("golden", sorted(_GOLDEN.glob("*.json")), ids=lambda path: path.name)
def test_old_output_stays_valid(tool, golden):
    tool.schema.validate(json.loads(golden.read_text(encoding="utf-8")))


@pytest.mark.parametrize("environment", [
    {"LC_ALL": "C"}, {"LC_ALL": "POSIX", "LANGUAGE": "de"}, {"LANG": "zh_CN.UTF-8"}, {"LANG": "zh_CN.GB18030"},
    {"LC_ALL": "tr_TR.UTF-8"}, {"LC_ALL": "de_DE.UTF-8", "TZ": "Asia/Shanghai"}, {"LANG": ""}])
@pytest.mark.parametrize("output", ["json", "terse"])
def test_same_bytes_in_every_locale(tool, environment, output):
    tool.simulate(SCENARIO)
    fields = [] if output == "json" else ["--fields", "name,toner,status,condition,modified"]
    expected = tool.run("--format", output, *fields)
    other = tool.run("--format", output, *fields, environment=environment)
    assert (other.stdout, other.stderr, other.returncode) == (expected.stdout, b"", 0)
    assert "前台".encode() in other.stdout


def test_names_under_a_locale_without_unicode(tool):
    locales = tool.folder.parent / "locales"
    locales.mkdir()
    # localedef returns 1 for warnings.
    subprocess.run(["localedef", "-f", "ISO-8859-1", "-i", "en_US", locales / "en_US.ISO-8859-1"], check=False,
                   stderr=subprocess.DEVNULL, timeout=60)
    assert list(locales.iterdir())
    tool.simulate('printer 前台\n    toner 50\n')
    environment = {"LOCPATH": str(locales), "LC_ALL": "en_US.ISO-8859-1"}
    result = tool.run("show", "前台", "--format", "terse", "--fields", "name,toner", environment=environment)
    assert (result.stdout.decode(), result.returncode) == ("前台:0.5000\n", 0)


def test_no_list(tool):
    result = tool.run()
    assert result.returncode == 1
    assert f"cannot read the printer list in {tool.folder}".encode() in result.stderr
    assert tool.json(code=1) == {"format_version": [1, 0], "printers": [],
                                 "list": {"directory": str(tool.folder), "readable": False}}


def test_unreadable_status_file(tool):
    tool.simulate(SCENARIO)
    (tool.folder / "Office_K4510A.dat").unlink()
    os.mkfifo(tool.folder / "Office_K4510A.dat")
    result = tool.run("--format", "terse", "--fields", "name,result")
    assert result.returncode == 1
    assert result.stdout.decode().splitlines()[:2] == ["Office_K4510A:unreadable", "Hall_J4500A:accepted"]
    assert result.stderr == b"tolmar-q727-status: cannot read the status file of Office_K4510A\n"


def test_list_that_is_a_fifo(tool):
    os.mkfifo(tool.folder / "printerlist.ini")
    assert tool.run().returncode == 1


def test_huge_status_file(tool):
    tool.simulate(SCENARIO)
    with open(tool.folder / "Office_K4510A.dat", "ab") as file:
        file.truncate(1 << 40)
    assert tool.lines("--format", "terse", "--fields", "name,toner")[0] == "Office_K4510A:0.8750"


def test_hostile_names(tool):
    names = ["\\x1b[31mred", "\\x9b]0", "../outside", "a\\nb", "\\x202e", "\\x0", "\\xd800", "x" * 5000]
    sections = "".join(f'[printer_{i}]\nName="{name}"\nPort="{name}"\n' for i, name in enumerate(names))
    (tool.folder / "printerlist.ini").write_text(f"[Main]\nCount={len(names)}\n{sections}", encoding="utf-8")
    for output in ("table", "terse", "json"):
        result = tool.run("--format", output, "--color", "never")
        assert result.returncode == 0
        text = result.stdout.decode()
        assert not [c for c in text if (ord(c) < 32 and c != "\n") or 127 <= ord(c) < 160 or c == "\u202e"]
    assert len(tool.lines()) == len(names) + 1
    assert [printer["name"] for printer in tool.json()["printers"]][:2] == ["\x1b[31mred", "\x9b]0"]


def test_hidden_serial_numbers(tool):
    tool.simulate(SCENARIO)
    result = tool.run("--no-serial", "--json")
    assert b"QVK451A000173" not in result.stdout
    assert b"TC45A0009312" not in result.stdout
    assert b"QVK451A000173" in tool.run("--json").stdout


def test_thousand_printers(tool, request):
    sections = "".join(f"[printer_{i}]\nName=P{i}\n" for i in range(1000))
    tool.simulate("printer P\n    toner 50\n")
    for i in range(1000):
        (tool.folder / f"P{i}.dat").write_bytes((tool.folder / "P.dat").read_bytes())
    (tool.folder / "printerlist.ini").write_text(f"[Main]\nCount=1000\n{sections}", encoding="utf-8")

    def processor_time():
        usage = resource.getrusage(resource.RUSAGE_CHILDREN)
        return usage.ru_utime + usage.ru_stime

    # On a busy machine only the processor time is that of the tool, and the best of several runs.
    seconds = []
    for _ in range(5):
        start = processor_time()
        assert len(tool.lines()) == 1001
        seconds.append(processor_time() - start)
    assert min(seconds) < 0.2 * request.config.getoption("slowness")


def test_wrong_use(tool):
    result = tool.run("--format", "xml")
    assert (result.returncode, result.stdout) == (2, b"")
    assert result.stderr == b'tolmar-q727-status: list has no format "xml"; valid: table, terse, json\n'


def test_full_disk(tool):
    tool.simulate(SCENARIO)
    with open("/dev/full", "wb") as full:
        result = subprocess.run([tool.program, "--directory", tool.folder], stdout=full, stderr=subprocess.PIPE,
                                check=False, timeout=60)
    assert result.returncode == 1
    assert b"cannot write" in result.stderr
