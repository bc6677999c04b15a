# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT

import pathlib
import subprocess
import sys


class Watcher:
    """The process of the StatusNotifierWatcher's test double. It does not own the watcher's name at first."""

    def __init__(self):
        self._process = subprocess.Popen([sys.executable, "-m", "rig.watcher_double"],
                                         cwd=pathlib.Path(__file__).parents[1], stdin=subprocess.PIPE,
                                         stdout=subprocess.PIPE, text=True)
        assert self._process.stdout.readline() == "ready\n"

    def step(self, name):
        """Tells the double to take a step: watcher or host."""
        self._process.stdin.write(f"{name}\n")
        self._process.stdin.flush()
        assert self._process.stdout.readline() == f"{name}\n"

    def end(self):
        """Kills the double, which removes it from the bus."""
        self._process.kill()
        self._process.wait()
