# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT

import json
import os
import pathlib
import signal
import subprocess
import time

import jsonschema
import pytest

START = "printer A\n    toner 80\nprinter B\n    serial SERIAL\n"


@pytest.fixture
def watch(tool):
    """Starts the tool; call the result with its options. Ends it after the test."""
    running = []

    def start(*options):
        process = subprocess.Popen([tool.program, "watch", "--directory", tool.folder, "--lang", "en", *options],
                                   stdout=subprocess.PIPE, text=True)
        running.append(process)
        return process
    yield start
    for process in running:
        process.kill()
        process.communicate()


def change(tool, scenario):
    """Plays a scenario whose files get new timestamps."""
    tool.simulate(scenario)
    change.time = getattr(change, "time", 1700000001) + 1
    for file in tool.folder.iterdir():
        os.utime(file, (change.time, change.time))


def test_lines(tool, watch):
    change(tool, START)
    process = watch()
    assert process.stdout.readline().split()[1:] == ["A", "80.00%", "Ready"]
    assert process.stdout.readline().split()[1:] == ["B", "0.00%", "Ready"]
    change(tool, START.replace("toner 80", "toner 80\n    status busy\n    errors 0x11B0"))
    assert process.stdout.readline().split()[1:] == ["A", "80.00%", "Busy", "Paper", "jam", "inside"]
    (tool.folder / "A.dat").unlink()
    assert process.stdout.readline().split()[1:] == ["A", "Off-line", "no", "status", "file"]
    change(tool, "printer B\n    serial SERIAL\n")
    assert process.stdout.readline().split()[1:] == ["A", "removed"]


def test_json_lines(tool, watch):
    change(tool, START)
    process = watch("--json", "--no-serial")
    change(tool, START.replace("toner 80", "toner 79.99"))
    events = [json.loads(process.stdout.readline()) for _ in range(2)]
    if events[0]["printer"]["toner"]["raw"] == 8000:  # the tool was faster than the change
        events.append(json.loads(process.stdout.readline()))
        assert [(event["event"], event["printer"]["name"]) for event in events] == [
            ("added", "A"), ("added", "B"), ("changed", "A")]
    for event in events:
        error = jsonschema.exceptions.best_match(tool.strict_schema.iter_errors(event))
        assert error is None, f"{error.json_path}: {error.message[:200]}"
        assert event["printer"]["serial"] is None


@pytest.mark.parametrize("number", [signal.SIGINT, signal.SIGTERM])
def test_ends_at_a_signal(tool, watch, number):
    change(tool, START)
    process = watch()
    process.stdout.readline()
    process.send_signal(number)
    assert process.wait(60) == 0


def test_ends_although_nobody_reads(tool, watch, pytestconfig):
    if b"__tsan_init" in pathlib.Path(pytestconfig.getoption("tool")).read_bytes():
        pytest.skip("the thread sanitizer delivers no signal to a thread that waits in write()")
    change(tool, "printer A\n")
    sections = "".join(f"[printer_{i}]\nName={'x' * 200}{i}\n" for i in range(1000))
    (tool.folder / "printerlist.ini").write_text(f"[Main]\nCount=1000\n{sections}", encoding="utf-8")
    process = watch("--json")
    process.stdout.read(1)  # the rest does not fit into the pipe
    process.send_signal(signal.SIGINT)
    assert process.wait(60) == 0


def test_list_comes_later(tool, watch):
    process = watch()
    change(tool, START)
    assert process.stdout.readline().split()[1:2] == ["A"]


def test_costs_no_more_than_the_assistant(tool):
    """The assistant calls stat on each status file once a second, opens it when its timestamp has changed, and reads
    the list every three seconds."""
    change(tool, START)
    log = tool.folder.parent / "calls"
    start = time.monotonic()
    with subprocess.Popen(["strace", "-f", "-e", "trace=file", "-o", log, tool.program, "watch", "--directory",
                           tool.folder], stdout=subprocess.DEVNULL, start_new_session=True) as process:
        end = start + 60
        while log_lines(log, "stat", "A.dat") < 5:
            assert time.monotonic() < end, "the tool looks at the status file"
            time.sleep(0.1)
        elapsed = time.monotonic() - start
        os.killpg(process.pid, signal.SIGKILL)
    assert log_lines(log, "stat", "A.dat") <= elapsed + 2
    assert log_lines(log, "open", "A.dat") == 1
    assert 2 <= log_lines(log, "open", "printerlist.ini") <= elapsed / 3 + 2


def log_lines(log, call, name):
    """How often a traced program made a call with a file of this name."""
    if not log.exists():
        return 0
    return len([line for line in log.read_text().splitlines() if call in line.split("(")[0] and f"{name}\"" in line])
