# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""Time from the start of a program to its tray icon or window, and its memory once it is quiet."""

import time

import folder
from figures import row
from program import Program

MS_PER_S = 1000
KIB_PER_MIB = 1024

# The tray needs this time to close the gap of the previous icon.
PAUSE_S = 0.15

# Highest ratios of CPU time, wall time, PSS and private dirty memory. `steady` measures memory after a hidden start.
LIMITS = {"-hide": (0.95, 0.95, None, None), "-show": (0.55, 0.65, 0.50, 0.42)}


def measure(programs, watch, rounds, limits=None, where="", environment=None):
    """Returns the rows that have a limit. Assistant and floor take turns, also as the first of a round, because each
    program leaves caches and tray in a different state."""
    folder.install(programs, 1)
    rows = []
    for argument, highest in (limits or LIMITS).items():
        figures = {"assistant": [], "bare-window": []}
        for i in range(rounds):
            for name in sorted(figures, reverse=i % 2 == 1):
                figures[name].append(_start(programs[name], argument, watch, environment))
        rows += _rows(argument, where, figures, highest)
    return rows


def _rows(argument, where, figures, limits):
    start, state = (("start hidden to tray icon", "hidden") if argument == "-hide" else
                    ("start shown to window", "window shown"))
    names = (f"{start}: CPU", f"{start}: wall", f"PSS, {state}", f"private dirty, {state}")
    for i, (name, unit, limit) in enumerate(zip(names, ("ms", "ms", "MiB", "MiB"), limits)):
        values, floors = ([figure[i] for figure in figures[program]] for program in ("assistant", "bare-window"))
        if limit is not None:
            yield row(where + name, unit, values, floors, limit=limit)


def _start(path, argument, watch, environment):
    """CPU time until the first quiet moment, wall time to icon or window (ms), PSS and private dirty memory (MiB)."""
    time.sleep(PAUSE_S)
    watch.forget()
    with Program(path, argument, environment=environment) as program:
        appeared = watch.wait_for_icon() if argument == "-hide" else watch.wait_for_window()
        cpu = program.wait_until_quiet()
        memory = (kib / KIB_PER_MIB for kib in program.memory_kib())
        return cpu * MS_PER_S, (appeared - program.started) * MS_PER_S, *memory
