# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT

import os
import shutil
import subprocess
import time

from rig.waiting import eventually

PACKAGE = "/opt/tolmar/tolmar-printer-q727"
CONFIGURATION = f"{PACKAGE}/cfg"
_SCRATCH = "/tmp/scenario"


class Printers:
    """Plays the driver package: the printer list and the status files. A printer is a name with the properties of the
    simulator's scenarios (docs/printer-simulator.md). Several values are a list:

        printers.install({"Office": dict(toner="87.50"), "Hall": dict(connection="network", port="10.0.0.1")})
        printers.report("Office", status="printing", warnings=["0x110D", "0x1106"])
    """

    def __init__(self, simulator):
        self._simulator = simulator
        self._printers = {}
        self._files = {}
        self._last_time_ns = 0
        for folder in (PACKAGE, "/opt/apps"):
            shutil.rmtree(folder, ignore_errors=True)
        os.makedirs(CONFIGURATION)

    def install(self, printers):
        """Installs exactly these printers, in this order. Unchanged status files are not rewritten."""
        old = self._files
        self._printers = {name: dict(properties) for name, properties in printers.items()}
        self._files = self._encode()
        for name in old.keys() - self._files.keys():
            os.remove(f"{CONFIGURATION}/{name}")
        for name in self._printers:
            if self._files[f"{name}.dat"] != old.get(f"{name}.dat"):
                self.replace(name)
        self._put("printerlist.ini")

    def report(self, name, **properties):
        """Changes what a printer reports. Properties that are not named stay. Without properties, the file gets its
        old content and a new timestamp."""
        self.prepare([name], **properties)
        self.replace(name)

    def prepare(self, names, **properties):
        """Changes what printers report. Nothing is written yet."""
        for name in names:
            self._printers[name].update(properties)
        self._files = self._encode()

    def replace(self, name):
        """Writes a printer's status file again. Returns when (monotonic seconds)."""
        return self._put(f"{name}.dat")

    def vanish(self, name):
        """Removes a status file."""
        os.remove(status_file(name))

    def was_read(self, name):
        """Whether a status file was read since it was written."""
        return os.stat(status_file(name)).st_atime_ns != 0

    def wait_until_read(self, name):
        """Waits until a status file was read."""
        eventually(lambda: self.was_read(name), f"{name}'s status is read")

    def _encode(self):
        shutil.rmtree(_SCRATCH, ignore_errors=True)
        os.makedirs(_SCRATCH)
        scenario = f"{_SCRATCH}/scenario"
        with open(scenario, "w", encoding="utf-8") as file:
            for name, properties in self._printers.items():
                file.write(f"printer {_quoted(name)}\n")
                for word, value in properties.items():
                    values = value if isinstance(value, list) else [value]
                    file.write(" ".join([word.replace("_", "-"), *map(_quoted, values)]) + "\n")
        subprocess.run([self._simulator, "--directory", _SCRATCH, scenario], check=True)
        files = {}
        for file in os.scandir(_SCRATCH):
            with open(file.path, "rb") as content:
                files[file.name] = content.read()
        return files

    def _put(self, name):
        """Replaces a file atomically, including its timestamp. Each timestamp is later than the ones before by at
        least the millisecond that the assistant can see. The access time is 0 until the file is read."""
        new = f"{CONFIGURATION}/.{name}.new"
        with open(new, "wb") as file:
            file.write(self._files[name])
        self._last_time_ns = max(time.time_ns(), self._last_time_ns + 1_000_000)
        os.utime(new, ns=(0, self._last_time_ns))
        now = time.monotonic()
        os.replace(new, f"{CONFIGURATION}/{name}")
        return now


def status_file(name):
    """The path of a printer's status file."""
    return f"{CONFIGURATION}/{name}.dat"


def _quoted(word):
    escaped = str(word).replace("\\", "\\\\").replace('"', '\\"')
    return f'"{escaped}"'
