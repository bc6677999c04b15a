#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""Usage: report.py [--quick] [--flags TEXT] [--note FILE] RESULTS.json PART.json...
Joins the results of bench/process and bench/micro and prints them; with --quick, without verdicts."""

import argparse
import json
import os
import pathlib
import platform
import statistics

import goals

# The last run stands between these lines of the note.
BEGIN = "<!-- last run: begin -->\n"
END = "<!-- last run: end -->\n"

ROW = "{:<55} {:>8} {:>8} {:<7} {:>6} {:>6} {:>6} {:>9} {}"


def join(parts):
    results = {"rows": [], "curves": [], "latency": {}}
    for path in parts:
        with open(path, encoding="utf-8") as file:
            part = json.load(file)
        if "benchmarks" in part:
            part = {"rows": goals.rows(part), "curves": [], "latency": {}}
        results["rows"] += part["rows"]
        results["curves"] += part["curves"]
        results["latency"].update(part["latency"])
    return results


def number(value):
    if value is None:
        return "-"
    if value >= 1000:
        return f"{value:.3g}" if value >= 100000 else f"{value:.0f}"
    return f"{value:.3g}"


def table(rows):
    yield ROW.format("figure", "value", "floor", "unit", "ratio", "min", "max", "goal", "met").rstrip()
    for row in rows:
        met = {None: "", True: "yes", False: "NO"}[row["met"]]
        cells = [number(row[name]) for name in ("value", "floor")]
        spread = [number(row[name]) for name in ("ratio", "min", "max")]
        yield ROW.format(row["name"], *cells, row["unit"], *spread, row["goal"] or "", met).rstrip()


def curve_lines(curves):
    counts = sorted({int(count) for curve in curves for count in curve["points"]})
    line = "{:<55} {:<3}" + " {:>7}" * len(counts) + " {:>9}"
    yield line.format("printers", "", *counts, "exponent")
    for curve in curves:
        points = [number(curve["points"][str(count)]) if str(count) in curve["points"] else "" for count in counts]
        exponent = "-" if curve["exponent"] is None else f"{curve['exponent']:.2f}"
        yield line.format(curve["name"], curve["unit"], *points, exponent)


def latency_lines(latency):
    for count, waits in latency.items():
        deciles = " ".join(f"{decile:.2f}" for decile in statistics.quantiles(waits, n=10, method="inclusive"))
        yield f"latency deciles of {len(waits)} changes, {count} printer{'s' if count != '1' else ''}, s: {deciles}"


def machine():
    with open("/proc/cpuinfo", encoding="utf-8") as file:
        models = [line.split(":")[1].strip() for line in file if line.startswith("model name")]
    return f"{platform.machine()}, {os.cpu_count()} x {models[0] if models else 'cpu'}, Linux {platform.release()}"


def report(results):
    yield results["machine"]
    yield f"built with {results['flags']}"
    yield from table(results["rows"])
    if results["curves"]:
        yield from curve_lines(results["curves"])
    yield from latency_lines(results["latency"])
    judged = [row["met"] for row in results["rows"] if row["met"] is not None]
    if judged:
        yield f"{sum(judged)} of {len(judged)} goals met"


def put_into(note, lines):
    text = note.read_text(encoding="utf-8")
    before, rest = text.split(BEGIN)
    after = rest.split(END)[1]
    note.write_text(before + BEGIN + "```\n" + "\n".join(lines) + "\n```\n" + END + after, encoding="utf-8")


def main():
    parser = argparse.ArgumentParser(usage=__doc__.splitlines()[0][len("Usage: "):],
                                     description=__doc__.splitlines()[1])
    parser.add_argument("--quick", action="store_true", help="print no verdicts")
    parser.add_argument("--flags", default="unknown flags", help="the flags with which the programs were built")
    parser.add_argument("--note", type=pathlib.Path, help="the document that gets the last run")
    parser.add_argument("results")
    parser.add_argument("parts", nargs="+")
    options = parser.parse_args()
    results = join(options.parts)
    results["machine"] = machine()
    results["flags"] = options.flags
    if options.quick:
        for row in results["rows"]:
            row.update(goal=None, met=None)
    with open(options.results, "w", encoding="utf-8") as file:
        json.dump(results, file, ensure_ascii=False, indent=1)
    lines = list(report(results))
    print("\n".join(lines))
    if options.note:
        put_into(options.note, lines)


if __name__ == "__main__":
    main()
