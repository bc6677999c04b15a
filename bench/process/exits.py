# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""Time from the exit entry of the tray menu to the end of the process."""

import time

import folder
from figures import curve, row
from program import Program
from steady import OTHER_THREADS

LIMIT_S = 0.55


def measure(programs, watch, plan):
    """`plan` gives the number of rounds by number of printers. Returns the rows and the curve."""
    rows, medians = [], {}
    for count, rounds in plan.items():
        folder.install(programs, count)
        times = [_exit(programs["assistant"], watch, count) for _ in range(rounds)]
        plural = "s" if count > 1 else ""
        rows.append(row(f"exit with {count} printer{plural}", "s", times, limit=LIMIT_S, in_unit=True))
        medians[count] = rows[-1]["value"]
    return rows, curve("exit", "s", medians)


def _exit(path, watch, count):
    watch.forget()
    with Program(path, "-hide") as assistant:
        watch.wait_for_icon()
        assistant.wait_until_settled(count + OTHER_THREADS)
        watch.open_menu()
        start = time.monotonic()
        watch.choose_last_entry()
        code = assistant.wait()
        if code != 0:
            raise RuntimeError(f"the assistant ended with code {code}")
        return time.monotonic() - start
