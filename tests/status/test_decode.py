# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT

import json
import os
import pathlib

import jsonschema
import pytest

_HERE = pathlib.Path(__file__).parent
_CORPUS = _HERE / "../fuzz/corpus"

SCENARIO = """
printer Office
    vendor Tolmar
    serial SERIAL-1
    supply-serial SERIAL-2
    status printing
    toner 8.32
    warnings 0x110D
printer Lab_J4990E
    toner 64
    errors 0x11B0
"""


def decode(tool, *arguments, **options):
    return tool.run("decode", *arguments, **options)


def reply(tool, *arguments, code=0):
    (decoded,) = tool.json("decode", *arguments, code=code)["replies"]
    return decoded


def test_table(tool):
    tool.simulate(SCENARIO)
    result = decode(tool, "Lab_J4990E.dat", "--lang", "en", cwd=tool.folder)
    assert result.returncode == 0
    assert result.stdout.decode().splitlines() == [
        "Lab_J4990E.dat: 57 bytes, qz, accepted",
        "Offset  Bytes                                              Field            Meaning",
        "0       00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 …  not read",
        "36      04                                                 number of items  4",
        "37      00 06 01 01                                        machine state    3 = PS_READY Ready",
        "41      00 09 02 11 b0                                     error            4528 = 0x11B0 ERR_JAM_INSIDE "
        "Paper jam inside (Pull out the paper)",
        "46      00 0c 02 00 00                                     warning          0 = none",
        "51      00 1d 03 00 00 40                                  toner            64 = 64.00%"]


def test_golden_json(tool):
    tool.simulate(SCENARIO)
    document = tool.json("decode", "Office.dat", "Lab_J4990E.dat", cwd=tool.folder)
    golden = (_HERE / "golden/decode-1.0.json").read_text(encoding="utf-8")
    assert document == json.loads(golden)


def test_rejected(tool):
    tool.simulate("printer Office\n    vendor Tolmar\n    truncate 2\nwait 0.001\n    truncate Office 16\n")
    path = tool.folder / "Office.dat"
    result = decode(tool, path)
    assert result.returncode == 1
    lines = result.stdout.decode().splitlines()
    assert lines[0] == f'{path}: 16 bytes, standard, rejected: at offset 14, "vendor name" needs 6 bytes, ' \
        'but 2 are left'
    assert lines[-1].split(maxsplit=1) == ["14", "54 6f                 vendor name                cut off"]
    assert reply(tool, path, code=1)["fault"] == {"field": "vendor_name", "offset": 14, "needed": 6, "left": 2}


def test_standard_input(tool):
    tool.simulate(SCENARIO)
    data = (tool.folder / "Lab_J4990E.dat").read_bytes()
    result = decode(tool, "-", "--family", "qz", "--json", data=data)
    assert json.loads(result.stdout)["replies"][0]["reply"]["toner"] == {"ratio": 0.64, "raw": 64}
    # Without a name and an option the standard family is meant, as for the assistant.
    result = decode(tool, "-", "--json", data=data)
    assert json.loads(result.stdout)["replies"][0]["family"] == "standard"


def test_unreadable_files_do_not_hide_the_others(tool):
    tool.simulate(SCENARIO)
    os.mkfifo(tool.folder / "fifo")
    result = decode(tool, "missing", "fifo", ".", "Office.dat", cwd=tool.folder)
    assert result.returncode == 1
    assert result.stderr.decode().splitlines() == [
        f"tolmar-q727-status: cannot read {name}" for name in ("missing", "fifo", ".")]
    assert result.stdout.startswith(b"Office.dat: ")


def test_huge_file(tool):
    path = tool.folder / "huge"
    with open(path, "wb") as file:
        file.truncate(1 << 40)
    decoded = reply(tool, path)
    assert (decoded["size"], decoded["accepted"]) == (1 << 40, True)
    assert sum(field["size"] for field in decoded["fields"]) == 2048


def test_endless_standard_input(tool):
    with open("/dev/zero", "rb") as zeros:
        assert tool.run("decode", "-", stdin=zeros).returncode == 0


def test_hidden_serial_numbers(tool):
    tool.simulate(SCENARIO)
    for output in ("table", "json"):
        result = decode(tool, "--no-serial", "--format", output, tool.folder / "Office.dat")
        for text in (b"SERIAL", b"SERIAL".hex().encode(), b"53 45 52 49"):
            assert text not in result.stdout
        # Also a number that is cut off.
        data = (tool.folder / "Office.dat").read_bytes()
        cut = data[:data.index(b"SERIAL-1") + 5]
        assert b"53 45" not in decode(tool, "--no-serial", "--format", output, "-", data=cut).stdout
        cut = data[:data.index(b"SERIAL-2") + 5]
        assert b"53 45" not in decode(tool, "--no-serial", "--format", output, "-", data=cut).stdout


def test_hostile_texts(tool):
    tool.simulate(SCENARIO)
    path = tool.folder / "a\x1b[31m"
    path.write_bytes((tool.folder / "Office.dat").read_bytes().replace(b"Tolmar", b"\x1b]0;\x9b"))
    for output in ("table", "json"):
        text = decode(tool, path, "--format", output).stdout.decode()
        assert not [c for c in text if (ord(c) < 32 and c != "\n") or 127 <= ord(c) < 160]


@pytest.mark.parametrize("family", ["standard", "qz"])
def test_every_reply_of_the_corpus(tool, family):
    files = sorted(str(path) for path in (*_CORPUS.glob("*-reply/*.dat"),))
    assert len(files) > 25
    result = decode(tool, "--family", family, "--json", *files)
    document = json.loads(result.stdout)
    error = jsonschema.exceptions.best_match(tool.strict_schema.iter_errors(document))
    assert error is None, f"{error.json_path}: {error.message[:200]}"
    assert [decoded["file"] for decoded in document["replies"]] == files
    for decoded in document["replies"]:
        assert (decoded["fault"] is None) == decoded["accepted"] == (decoded["reply"] is not None)
