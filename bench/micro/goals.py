#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""The results of brelprintertool_micro_bench, each figure beside its floor.

Usage: goals.py RESULT.json
Prints the results as a table. Run the benchmark with OPTIONS and --benchmark_out=RESULT.json first."""

import json
import statistics
import sys
from collections import namedtuple

# Repetitions run in random order, so that other load on the machine affects figures and floors alike.
OPTIONS = ["--benchmark_min_time=0.05", "--benchmark_repetitions=15", "--benchmark_enable_random_interleaving=true"]
QUICK_OPTIONS = ["--benchmark_min_time=0.01"]

PER_UNIT = {"ns": 1, "µs": 1e3, "blocks": 1}

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
    """The figures as dicts, in order. `value` and `floor` are medians in `unit`; `ratio` is the quotient of their CPU
    times. `min` and `max` are the extremes of the ratio over the repetitions, or of the value if there is no floor.
    `goal` is a text; without a goal, `goal` and `met` are None."""
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


def _values(runs, unit):
    """One value for each repetition: blocks, or nanoseconds of CPU time for all other units."""
    if unit == "blocks":
        return [round(run["allocations"], 2) for run in runs]
    return [run["cpu_time"] * {"ns": 1, "us": 1e3}[run["time_unit"]] for run in runs]


def _in_unit(value, unit):
    return 1e9 / value if unit == "lines/s" else value / PER_UNIT[unit]


def _row(figure, runs):
    values = _values(runs[figure.benchmark], figure.unit)
    value = statistics.median(values)
    row = {"name": figure.name, "unit": figure.unit, "value": _in_unit(value, figure.unit), "floor": None,
           "ratio": None, "goal": None, "met": None}
    spread = [_in_unit(one, figure.unit) for one in values]
    if figure.floor:
        floors = _values(runs[figure.floor], figure.unit)
        floor = statistics.median(floors)
        row.update(floor=_in_unit(floor, figure.unit), ratio=value / floor)
        spread = [one / other for one, other in zip(values, floors)]
    row.update(min=min(spread), max=max(spread))
    if figure.limit is not None:
        row["goal"] = f"≤ {figure.limit} {figure.unit if figure.in_unit else '×'}"
        row["met"] = (row["value"] if figure.in_unit else row["ratio"]) <= figure.limit
    return row


def _number(value):
    if value is None:
        return "-"
    return f"{value:.0f}" if value >= 100 else f"{value:.3g}"


def _table(figures):
    line = "{:<52} {:>8} {:>8} {:<7} {:>7} {:>7} {:>7} {:>10} {}"
    yield line.format("figure", "value", "floor", "unit", "ratio", "min", "max", "goal", "met").rstrip()
    for row in figures:
        met = {None: "", True: "yes", False: "NO"}[row["met"]]
        yield line.format(row["name"], _number(row["value"]), _number(row["floor"]), row["unit"],
                          _number(row["ratio"]), _number(row["min"]), _number(row["max"]), row["goal"] or "-",
                          met).rstrip()


def main():
    if sys.argv[1:] == ["-h"]:
        print("\n".join(__doc__.splitlines()[2:]))
        return
    if len(sys.argv) != 2:
        sys.exit("goals.py: give one file of results; see -h")
    try:
        with open(sys.argv[1], encoding="utf-8") as file:
            result = json.load(file)
        figures = rows(result)
    except KeyError as missing:
        sys.exit(f"goals.py: {sys.argv[1]} has no {missing}")
    except (OSError, ValueError) as error:
        sys.exit(f"goals.py: {error}")
    print("\n".join(_table(figures)))


if __name__ == "__main__":
    main()
