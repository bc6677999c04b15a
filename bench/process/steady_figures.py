# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""Rows and curves of the steady state."""

import statistics

from figures import curve, row
from steady import KIB_PER_MIB

# The cost of a printer counts as constant up to this ratio to the cost with fewer printers.
SAME = 1.05


def rows(samples, few, many, most):
    """Memory for each printer is the slope from `few` to `many` printers. Other costs for each printer have limits at
    `many`, and at `most` they must not exceed those at `few`."""
    return [
        row("PSS, 1 printer, hidden", "MiB", samples["assistant PSS", 1], samples["window PSS", 1], limit=0.97),
        row("private dirty, 1 printer, hidden", "MiB", samples["assistant private", 1], samples["window private", 1],
            limit=0.95),
        row(f"private memory a printer, {few} to {many} / thread", "KiB", _slopes(samples, "assistant", few, many),
            _slopes(samples, "threads", few, many), limit=1.3),
        row(f"private memory a printer, {few} to {many} / started thread", "KiB",
            _slopes(samples, "assistant", few, many), _slopes(samples, "started threads", few, many)),
        row(f"private dirty, {most} printers", "MiB", samples["assistant private", most], limit=45, in_unit=True),
        row(f"CPU a printer-second, {many} printers", "µs", samples["assistant CPU", many], samples["loop CPU", many],
            limit=1.15),
        *(row(f"CPU a printer-second, {count} printers / loop spread alike", "µs", samples["assistant CPU", count],
              samples["spread loop CPU", count], limit=0.9) for count in sorted({many, most})),
        row(f"voluntary switches a printer-second, {many} printers", "", samples["assistant switches", many],
            limit=2.1, in_unit=True),
        row(f"voluntary switches a printer-second, {most} / {few} printers", "", samples["assistant switches", most],
            samples["assistant switches", few], limit=SAME),
        row(f"system calls a cycle, {many} printers", "", samples["calls", many], limit=4, in_unit=True),
        row(f"system calls a cycle, {most} / {few} printers", "", samples["calls", most], samples["calls", few],
            limit=SAME),
        row("stat calls on the status file a cycle", "", samples["stats", many], limit=1, in_unit=True),
        row("calls on any other file a cycle", "", samples["other files", many], limit=0, in_unit=True)]


def _slopes(samples, name, few, many):
    return [(more - less) * KIB_PER_MIB / (many - few)
            for less, more in zip(samples[name + " private", few], samples[name + " private", many])]


def curves(samples):
    def points(what, scale=lambda value, count: value):
        return {count: scale(statistics.median(values), count)
                for (name, count), values in samples.items() if name == what}

    def of_all(value, count):
        return value * count

    bare = {what: statistics.median(samples["window " + what, 1]) for what in ("PSS", "private")}
    fill = points("fill")
    return [
        curve("PSS", "MiB", points("assistant PSS"), bare["PSS"]),
        curve("private dirty", "MiB", points("assistant private"), bare["private"]),
        curve("CPU a second", "µs", points("assistant CPU", of_all)),
        curve("CPU a second of the loop", "µs", points("loop CPU", of_all)),
        curve("CPU a second of the loop, spread alike", "µs", points("spread loop CPU", of_all)),
        curve("voluntary switches a second", "", points("assistant switches", of_all)),
        curve("first filling of the list: main thread's CPU", "ms", fill, fill[1])]
