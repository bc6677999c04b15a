# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT

import pathlib
import subprocess
import sys


class Watcher:
    """The double of a StatusNotifierWatcher, as a process that is not yet the watcher."""

    def __init__(self):
        self._process = subprocess.Popen([sys.executable, "-m", "rig.watcher_double"],
                                         cwd=pathlib.Path(__file__).parents[1], stdin=subprocess.PIPE,
                                         stdout=subprocess.PIPE, text=True)
        assert self._process.stdout.readline() == "ready\n"

    def step(self, name):
        """Takes a step: watcher or host."""
        self._process.stdin.write(f"{name}\n")
        self._process.stdin.flush()
        assert self._process.stdout.readline() == f"{name}\n"

    def end(self):
        """It leaves the bus."""
        self._process.kill()
        self._process.wait()
