# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""The text that tolmar-q727-status metrics writes, and the exporter that serves it."""
import os
import pathlib
import re
import resource
import stat
import subprocess

import pytest
from rig.engines import Service, samples_of, wait_until

HERE = pathlib.Path(__file__).parent
EVERYDAY = HERE / "../../tools/printer-simulator/scenarios/everyday.scenario"
GOLDEN = HERE / "golden" / "everyday.prom"
REPORT_TIME = 1700000000.25
EXPORTER = "127.0.0.1:9100"

# As in the file: bytes that are not UTF-8, and escapes that QSettings turns into characters.
HOSTILE_NAMES = [
    b'"with \\"quotes\\""', rb'"back\\slash\\"', rb'"new\nline"', rb'"\x1b[31mred\a"', rb'"nul\x0"', rb'"\xd800"',
    "激光\u202e打印机 🖨".encode(), "激光".encode("gbk"), b"caf\xe9", b"{a=\\\"b\\\"} 1", b"# HELP x", b"x" * 5000, b"",
]


class Folder:
    """The driver package's folder, and the tool that reads it."""

    def __init__(self, folder, tool, simulator):
        self.path = folder / "cfg"
        self.path.mkdir()
        self.command = [tool, "metrics", "--directory", self.path]
        self._simulator = simulator

    def simulate(self, scenario):
        file = self.path.parent / "test.scenario"
        file.write_text(scenario, encoding="utf-8")
        subprocess.run([self._simulator, "--directory", self.path, file], check=True)
        for report in self.path.glob("*.dat"):
            os.utime(report, (REPORT_TIME, REPORT_TIME))

    def list_names(self, names):
        text = b"[Main]\nCount=%d\n" % len(names)
        text += b"".join(b"[printer_%d]\nName=%s\nPort=usb\n" % entry for entry in enumerate(names))
        (self.path / "printerlist.ini").write_bytes(text)

    def run(self, *arguments, environment=None, **options):
        return subprocess.run([*self.command, *arguments], env={**os.environ, **(environment or {})},
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE, check=False, **options)

    def text(self, *arguments, code=0, **environment):
        run = self.run(*arguments, environment=environment)
        assert run.returncode == code, run.stderr
        return run.stdout


@pytest.fixture(name="folder")
def fixture_folder(tmp_path, tool, simulator):
    return Folder(tmp_path, tool, simulator)


@pytest.fixture(name="served")
def fixture_served(engines, tmp_path, end_later):
    """Lets the exporter serve a text: served(text) is (its page, the errors of the textfile collector)."""
    textfiles = tmp_path / "textfiles"
    textfiles.mkdir()
    exporter = end_later(Service([engines.path("usr/bin/prometheus-node-exporter"),
                                  f"--web.listen-address={EXPORTER}", "--collector.disable-defaults",
                                  "--collector.textfile", f"--collector.textfile.directory={textfiles}"],
                                 tmp_path / "exporter.log"))

    def serve(text):
        (textfiles / "tolmar-q727.prom").write_bytes(text)
        page = wait_until(lambda: exporter.fetch(f"http://{EXPORTER}/metrics"), "the exporter")
        return page, [line for line in exporter.log.read_text(encoding="utf-8").splitlines() if "level=error" in line]

    return serve


def first_state(scenario):
    return scenario.read_text(encoding="utf-8").partition("\nwait ")[0] + "\n"


def names_of(page):
    """The escaped names of the printers."""
    return {dict(labels)["printer"] for name, labels in samples_of(page) if name == "tolmar_q727_printer_info"}


def check_with_promtool(engines, text):
    run = subprocess.run([engines.path("usr/bin/promtool"), "check", "metrics"], input=text, stdout=subprocess.PIPE,
                         stderr=subprocess.STDOUT, check=False)
    assert (run.returncode, run.stdout) == (0, b"")


@pytest.mark.parametrize("locale", ["C", "POSIX", "de_DE.UTF-8", "zh_CN.UTF-8", "zh_CN.GBK", "ar_EG.UTF-8"])
def test_same_bytes_under_every_locale(folder, locale):
    folder.simulate(first_state(EVERYDAY))
    assert folder.text(LC_ALL=locale, LANG=locale, LANGUAGE=locale[:2], TZ="Asia/Shanghai") == GOLDEN.read_bytes()


def test_promtool_and_exporter_take_the_text(folder, engines, served):
    folder.simulate(first_state(EVERYDAY))
    text = folder.text()
    check_with_promtool(engines, text)
    page, errors = served(text)
    assert (samples_of(page), errors) == (samples_of(text.decode()), [])
    assert "\nnode_textfile_scrape_error 0\n" in page
    assert re.search(r"^node_textfile_mtime_seconds\{.*tolmar-q727\.prom", page, re.MULTILINE)


def test_no_timestamps(folder, served):
    # promtool passes a timestamp, but the exporter drops the whole file. A refused text must be noticed here.
    folder.simulate(first_state(EVERYDAY))
    page, errors = served(folder.text() + b"other 1 1700000000000\n")
    assert samples_of(page) == {} and errors
    assert "\nnode_textfile_scrape_error 1\n" in page


def test_hostile_names(folder, engines, served):
    folder.list_names(HOSTILE_NAMES)
    text = folder.text()
    check_with_promtool(engines, text)
    assert not re.search(rb"[\x00-\x09\x0b-\x1f\x7f]", text) and b"\xe2\x80\xae" not in text
    page, errors = served(text)
    assert errors == []
    names = names_of(page)
    assert len(names) == len(HOSTILE_NAMES)
    assert {r"with \"quotes\"", r"back\\slash\\", r"new\\x0Aline", r"激光\\u202E打印机 🖨"} <= names


def test_a_name_that_is_listed_twice(folder, engines, served):
    folder.list_names([b"twin", b"twin", b"other"])
    text = folder.text()
    check_with_promtool(engines, text)
    page, errors = served(text)
    assert errors == [] and "\ntolmar_q727_printers 3\n" in page
    assert names_of(page) == {"twin", "other"}


@pytest.mark.parametrize("content, result", [(None, "missing"), (b"", "rejected"), (b"\xff" * 5000, "rejected")],
                         ids=["none", "empty", "garbage"])
def test_offline_printer(folder, engines, content, result):
    folder.list_names([b"lost"])
    if content is not None:
        (folder.path / "lost.dat").write_bytes(content)
    text = folder.text()
    check_with_promtool(engines, text)
    samples = samples_of(text.decode())
    true = {label for (name, labels), value in samples.items() for label in labels if value == 1}
    assert {("status", "PS_OFFLINE"), ("result", result)} <= true
    names = {name.replace("tolmar_q727_", "") for name, _ in samples}
    assert names - {"printer_report_timestamp_seconds"} == {
        "printer_list_readable", "printers", "printer_info", "printer_status", "printer_report"}


def test_no_list(folder, engines):
    text = folder.text(code=1)
    check_with_promtool(engines, text)
    assert [(name, value) for (name, _), value in samples_of(text.decode()).items()] == [
        ("tolmar_q727_printer_list_readable", 0), ("tolmar_q727_printers", 0)]


def test_without_serial_numbers(folder):
    folder.simulate(first_state(EVERYDAY))
    for serial in (b"QVK451A000173", b"TC45A0009312"):
        assert serial in folder.text() and serial not in folder.text("--no-serial")


def test_readable_for_the_exporter(folder, tmp_path):
    folder.list_names([b"one"])
    output = tmp_path / "metrics.prom"
    for _ in range(2):  # creates the file, then replaces it
        run = folder.run("--output", output, preexec_fn=lambda: os.umask(0o077))
        assert (run.returncode, run.stdout, run.stderr) == (0, b"", b"")
        assert stat.S_IMODE(output.stat().st_mode) == 0o644
        assert output.read_bytes() == folder.text()
        output.chmod(0o600)


def test_failed_run_leaves_the_old_file(folder, tmp_path):
    folder.list_names([b"one"])
    (tmp_path / "out").mkdir()
    output = tmp_path / "out" / "metrics.prom"
    output.write_text("old 1\n", encoding="ascii")
    # Without restored signals the limit is an error of the write and does not kill the tool.
    run = folder.run("--output", output, restore_signals=False,
                     preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (1000, 1000)))
    assert run.returncode == 1 and run.stderr
    assert [(file.name, file.read_text(encoding="ascii")) for file in output.parent.iterdir()] == [
        (output.name, "old 1\n")]


def test_a_reader_sees_whole_files(folder, tmp_path):
    folder.list_names([b"printer%d" % number for number in range(100)])
    output = tmp_path / "metrics.prom"
    whole = folder.text()
    output.write_bytes(whole)
    writer = subprocess.Popen(["sh", "-c", 'for i in $(seq 20); do "$@" || exit; done', "sh", *folder.command,
                               "--output", output])
    reads = 0
    while writer.poll() is None:
        assert output.read_bytes() == whole
        reads += 1
    assert (writer.returncode, reads > 0) == (0, True)


def test_missing_output_folder(folder, tmp_path):
    folder.list_names([b"one"])
    run = folder.run("--output", tmp_path / "missing" / "metrics.prom")
    assert run.returncode == 1
    assert run.stderr.decode().startswith(f"tolmar-q727-status: cannot write {tmp_path}/missing/metrics.prom: ")
