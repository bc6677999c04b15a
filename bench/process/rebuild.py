# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""A changed port replaces the whole list, and all its printers come back from off-line."""

import folder
from figures import row
from program import Program
from steady import MS_PER_S, OTHER_THREADS

# Longer than the time between two reads of the printer list.
NOTICED_S = 4


def measure(programs, count, rounds):
    return row(f"rebuild of the list, {count} printers: main thread's CPU", "ms",
               [_rebuild(programs, count) for _ in range(rounds)])


def _rebuild(programs, count):
    printers = folder.install(programs, count)
    with Program(programs["assistant"], "-hide") as assistant:
        assistant.wait_until_settled(count + OTHER_THREADS)
        before = assistant.main_thread_cpu()
        folder.install_with_port(printers, count, "USB002")
        assistant.wait_until_settled(count + OTHER_THREADS, NOTICED_S)
        return (assistant.main_thread_cpu() - before) * MS_PER_S
