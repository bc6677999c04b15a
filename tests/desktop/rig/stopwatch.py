# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT

import os
import select
import time
from pathlib import Path

from rig.waiting import TIMEOUT_S

# Limit for other processes' share of the time of all processors.
_OTHERS_SHARE = 0.25
_TICK_S = 1 / os.sysconf("SC_CLK_TCK")
_SANITIZERS = (b"__asan_init", b"__tsan_init")


class Stopwatch:
    """Measures the time until a program ends. The program must be a child process that nobody has waited for. The time
    is not meaningful if other processes used the processors or if the program was built with a sanitizer."""

    def __init__(self, pid):
        self._stat = Path(f"/proc/{pid}/stat")
        program = Path(f"/proc/{pid}/exe").read_bytes()
        self._is_quick_build = not any(name in program for name in _SANITIZERS)
        self._process = os.pidfd_open(pid)
        self._others_s = self._processor_time_of_others()
        self._begin_s = time.monotonic()

    def wait_for_end(self):
        """Waits for the end. Returns the elapsed seconds and whether they are meaningful."""
        ended, _, _ = select.select([self._process], [], [], TIMEOUT_S)
        elapsed_s = time.monotonic() - self._begin_s
        assert ended, f"the program did not end within {TIMEOUT_S} s"
        os.close(self._process)
        others_s = self._processor_time_of_others() - self._others_s
        return elapsed_s, self._is_quick_build and others_s < _OTHERS_SHARE * elapsed_s * os.cpu_count()

    def _processor_time_of_others(self):
        # "cpu", then ticks: user nice system idle iowait irq softirq steal ...
        machine = [int(ticks) for ticks in Path("/proc/stat").read_text(encoding="ascii").splitlines()[0].split()[1:9]]
        # After the name, which ends with a parenthesis, the 12th and 13th fields are user and system time.
        own = [int(ticks) for ticks in self._stat.read_text(encoding="ascii").rsplit(")", 1)[1].split()[11:13]]
        return (sum(machine) - machine[3] - machine[4] - sum(own)) * _TICK_S
