# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""Runs the monitoring programs that script/bootstrap has unpacked."""
import contextlib
import json
import os
import pathlib
import re
import subprocess
import time
import urllib.request

_CLOCK_TICKS = os.sysconf("SC_CLK_TCK")


class Engines:
    """The folder of the unpacked packages."""

    def __init__(self, folder):
        self.folder = pathlib.Path(folder)
        if not (self.folder / "unpacked").exists():
            raise FileNotFoundError(f"{folder} is missing: run script/bootstrap fleet")

    def path(self, name):
        return str(self.folder / name)

    @property
    def libraries(self):
        """The folder of the unpacked libraries."""
        return next(self.folder.glob("usr/lib/*-linux-gnu"))

    def promtool(self, *arguments, **options):
        """Returns (exit code, standard output and error)."""
        run = subprocess.run([self.path("usr/bin/promtool"), *arguments], stdout=subprocess.PIPE,
                             stderr=subprocess.STDOUT, text=True, check=False, **options)
        return run.returncode, run.stdout


class Service:
    """A program that runs until the end of the test, with its output in a file."""

    def __init__(self, command, log, **options):
        self.log = pathlib.Path(log)
        with open(self.log, "wb") as output:
            self.process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=output,
                                            stderr=subprocess.STDOUT, **options)

    def end(self):
        self.process.kill()
        self.process.wait()

    def cpu_seconds(self):
        """Of the process so far."""
        fields = pathlib.Path(f"/proc/{self.process.pid}/stat").read_text(encoding="ascii").rpartition(")")[2].split()
        return (int(fields[11]) + int(fields[12])) / _CLOCK_TICKS

    def resident_bytes(self):
        pages = pathlib.Path(f"/proc/{self.process.pid}/statm").read_text(encoding="ascii").split()[1]
        return int(pages) * os.sysconf("SC_PAGE_SIZE")

    def fetch(self, address):
        """A page of the program, which may still be starting. None if it does not answer."""
        if self.process.poll() is not None:
            raise ChildProcessError(f"{self.process.args[0]} ended: {self.log.read_text(encoding='utf-8')}")
        with contextlib.suppress(OSError), urllib.request.urlopen(address, timeout=30) as answer:
            return answer.read().decode()
        return None

    def fetch_json(self, address):
        text = self.fetch(address)
        return None if text is None else json.loads(text)


def samples_of(text):
    """The samples of the tool in a text or page: {(name, the pairs of label and escaped value): value}."""
    samples = {}
    for line in text.splitlines():
        if line.startswith("tolmar_q727_"):
            series, _, value = line.rpartition(" ")
            name, _, labels = series.partition("{")
            samples[name, frozenset(re.findall(r'(\w+)="((?:[^"\\]|\\.)*)"', labels))] = float(value)
    return samples


def wait_until(condition, what, seconds=60):
    """Waits for a condition and returns its value."""
    end = time.monotonic() + seconds
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > end:
            raise TimeoutError(f"waited {seconds} s: {what}")
        time.sleep(0.05)
