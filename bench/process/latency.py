# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""Time from the replacement of a status file to the change of the text in its row."""

import contextlib
import random
import threading
import time

import folder
from figures import row
from program import TIMEOUT_S, Program
from steady import OTHER_THREADS

NS_PER_S = 1e9
MEDIAN_LIMIT_S = 0.6
MAXIMUM_LIMIT_S = 1.1

# Longer than a poll.
LONGEST_WAIT_S = 1.3


class Observer:
    """Runs a window of the assistant and notes when each row first showed a text."""

    def __init__(self, program):
        self.shown = {}
        self.program = program
        threading.Thread(target=self._read, daemon=True).start()

    def _read(self):
        with contextlib.suppress(ValueError):  # the program has ended
            for line in self.program.output:
                ns, index, text = line.decode().split()
                self.shown.setdefault((int(index), text), int(ns) / NS_PER_S)


def measure(programs, count, observers, rounds):
    """Seconds from each replacement to its text in each window. All windows show the same printers."""
    printers = folder.install(programs, count)
    with contextlib.ExitStack() as stack:
        windows = []
        for _ in range(observers):
            windows.append(Observer(stack.enter_context(Program(programs["window-observer"]))))
            time.sleep(random.random() / observers)
        for window in windows:
            window.program.wait_until_settled(count + OTHER_THREADS)
        replaced = {}
        for i in range(rounds):
            replaced.update(_replace_all(printers, count, f"{folder.TONER_PERCENT + (1 + i) / 100:.2f}"))
            time.sleep(LONGEST_WAIT_S)
            _wait_until_shown(windows, replaced)
        return [window.shown[text] - when for window in windows for text, when in replaced.items()]


def _replace_all(printers, count, toner):
    """Gives each printer this remaining toner, at random times within about a second. Returns the time of each."""
    printers.prepare(map(folder.printer_name, range(count)), toner=toner)
    replaced = {}
    for index in random.sample(range(count), count):
        time.sleep(random.random() * 2 / count)
        replaced[index, f"{toner}%"] = printers.replace(folder.printer_name(index))
    return replaced


def _wait_until_shown(windows, replaced):
    deadline = time.monotonic() + TIMEOUT_S
    while not all(text in window.shown for window in windows for text in replaced):
        if time.monotonic() > deadline:
            raise TimeoutError("a change of a status file is never shown")
        time.sleep(0.05)


def rows(count, waits, has_goal):
    name = f"latency, {count} printer{'s' if count > 1 else ''}"
    median = row(f"{name}: median", "s", waits, limit=MEDIAN_LIMIT_S if has_goal else None, in_unit=True)
    maximum = row(f"{name}: maximum", "s", [max(waits)], limit=MAXIMUM_LIMIT_S if has_goal else None, in_unit=True)
    return [median, maximum]
