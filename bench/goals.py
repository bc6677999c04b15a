# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""The results of brelprintertool_micro_bench, each figure beside its floor."""

from collections import namedtuple

from figures import row

# Repetitions run in random order, so that other load on the machine affects figures and floors alike.
OPTIONS = ["--benchmark_min_time=0.05", "--benchmark_repetitions=15", "--benchmark_enable_random_interleaving=true"]
QUICK_OPTIONS = ["--benchmark_min_time=0.01"]

NS_PER_S = 1e9
NS_PER_UNIT = {"ns": 1, "µs": 1e3, "lines/s": 1}

# The benchmark of each figure and of its floor. `limit` is the highest ratio, or with `in_unit` the highest value.
Figure = namedtuple("Figure", "name benchmark floor unit limit in_unit", defaults=["ns", None, False])
FIGURES = [
    Figure("standard decoder / walk", "standard decoder", "standard walk"),
    Figure("standard decoder / walk + zero + vectors", "standard decoder", "standard walk + zero + vectors", limit=1.1),
    Figure("QZ decoder / walk", "QZ decoder", "QZ walk"),
    Figure("QZ decoder / walk + zero + vectors", "QZ decoder", "QZ walk + zero + vectors"),
    Figure("standard evaluation / walk + zero + vectors", "standard evaluation", "standard walk + zero + vectors",
           limit=2),
    Figure("QZ evaluation / walk + zero + vectors", "QZ evaluation", "QZ walk + zero + vectors", limit=1.8),
    Figure("error code mapping / table", "error code mapping", "condition table"),
    Figure("CheckStatusChange / compare in place", "CheckStatusChange", "compare in place"),
    Figure("changed file to state / file + walk", "changed file", "file + walk", limit=2),
    Figure("changed file to state, heap allocations", "changed file", None, "blocks"),
    Figure("unchanged cycle / stat", "unchanged cycle", "stat"),
    Figure("unchanged cycle, heap allocations", "unchanged cycle", None, "blocks"),
    Figure("record out of the list and in, heap allocations", "record out and in", None, "blocks"),
    Figure("pass over 100 printers, unchanged / read + compare", "pass over 100 unchanged printers",
           "list read + compared", "µs", 1000, True),
    Figure("pass over 100 printers, changed / read + compare", "pass over 100 changed printers",
           "list read + compared", "µs", 1000, True),
    Figure("log off / load + branch", "log off", "load + branch"),
    Figure("log on / open + write + close", "log on", "open + write + close", "lines/s"),
]


def rows(result):
    """The rows of FIGURES, in their order."""
    runs = _runs(result)
    return [_row(figure, runs) for figure in FIGURES]


def _runs(result):
    """The repetitions of each benchmark, by name."""
    runs = {}
    for run in result["benchmarks"]:
        if run.get("error_occurred"):
            raise ValueError(f"{run['name']}: {run['error_message']}")
        if run["run_type"] == "iteration":
            runs.setdefault(run["run_name"], []).append(run)
    return runs


def _row(figure, runs):
    values = _values(runs[figure.benchmark], figure.unit)
    floors = _values(runs[figure.floor], figure.unit) if figure.floor else None
    result = row(figure.name, figure.unit, values, floors, figure.limit, figure.in_unit)
    if figure.unit == "lines/s":  # the ratio is that of the times
        result.update({name: NS_PER_S / result[name] for name in ("value", "floor")})
    return result


def _values(runs, unit):
    """One value for each repetition: blocks, or CPU time. A rate is still the time of one line here, in ns."""
    if unit == "blocks":
        return [round(run["allocations"], 2) for run in runs]
    return [run["cpu_time"] * {"ns": 1, "us": 1e3}[run["time_unit"]] / NS_PER_UNIT[unit] for run in runs]
