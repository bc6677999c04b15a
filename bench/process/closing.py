# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""Memory of the assistant some time after its window was closed. Closing only hides the window."""

import time

from figures import row
from program import Program

KIB_PER_MIB = 1024


def measure(programs, watch, rounds, wait_s):
    shown, later, floors = [], [], []
    for _ in range(rounds):
        with Program(programs["assistant"], "-show") as assistant, Program(programs["bare-window"], "-show") as bare:
            for _ in range(2):
                watch.wait_for_window()
            for program in (assistant, bare):
                program.wait_until_quiet()
            shown.append(_private(assistant))
            watch.close_windows()
            watch.wait_until_hidden()
            time.sleep(wait_s)
            later.append(_private(assistant))
            floors.append(_private(bare))
        watch.forget()
    name = f"private dirty, {wait_s} s after the window was closed"
    return [row(name, "MiB", later, floors, limit=0.42), row(name + " / shown", "MiB", later, shown, limit=1.05)]


def _private(program):
    return program.memory_kib()[1] / KIB_PER_MIB
