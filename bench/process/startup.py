# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
"""From the start of the program to its tray icon or window."""

import time

import folder
from figures import row
from program import Program

MS_PER_S = 1000

# What the tray needs to close the gap that the last icon leaves.
PAUSE_S = 0.15


def measure(programs, watch, rounds):
    folder.install(1)
    figures = []
    for argument, what, wall_limit, cpu_limit in (("-hide", "start hidden to tray icon", 1.25, 1.15),
                                                  ("-show", "start shown to window", 1.15, 1.10)):
        times = {"assistant": [], "bare-window": []}
        for _ in range(rounds):
            for name, runs in times.items():
                runs.append(_start(programs[name], argument, watch))
        walls, cpus = ({name: [run[i] for run in runs] for name, runs in times.items()} for i in (0, 1))
        figures.append(row(f"{what}: CPU", "ms", cpus["assistant"], cpus["bare-window"], limit=cpu_limit))
        figures.append(row(f"{what}: wall", "ms", walls["assistant"], walls["bare-window"], limit=wall_limit))
    return figures


def _start(path, argument, watch):
    """Wall time to the tray icon or the window, and CPU time until the program first goes quiet; ms."""
    time.sleep(PAUSE_S)
    watch.forget()
    with Program(path, argument) as program:
        appeared = watch.wait_for_icon() if argument == "-hide" else watch.wait_for_window()
        cpu = program.wait_until_quiet()
        return (appeared - program.started) * MS_PER_S, cpu * MS_PER_S
