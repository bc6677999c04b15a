# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""Usage: process [--quick] BUILD_FOLDER RESULT.json
Measures the built assistant and the floor programs in the sandbox of the tests, and writes rows and curves."""

import argparse
import json
import time
from collections import namedtuple

import closing
import desktop
import exits
import latency
import rebuild
import startup
import steady
import steady_figures
import wayland

PROGRAMS = {"assistant": "src/BrelPrinterTool", "simulator": "tools/printer-simulator/printer-simulator",
            "bare-window": "bench/floors/bare-window", "bare-threads": "bench/floors/bare-threads",
            "stat-loop": "bench/floors/stat-loop", "window-observer": "bench/probes/window-observer"}

# `closing` gives rounds and the seconds to wait. By number of printers, `steady` and `exits` give rounds, and `latency`
# gives windows and rounds. `window_s` is the time between two reads of the printer list, so that it contains one.
Plan = namedtuple("Plan", "starts closing wayland window_s steady few many most exits rebuild latency")
FULL = Plan(starts=20, closing=(2, 60), wayland=10, window_s=3,
            steady={1: (5, 1), 10: (3, 2), 100: (5, 5), 1000: (2, 2)}, few=10, many=100, most=1000,
            exits={1: 5, 50: 3, 1000: 5}, rebuild=1000, latency={1: (8, 6), 100: (1, 3)})
QUICK = Plan(starts=1, closing=(1, 1), wayland=1, window_s=0.5, steady={1: (1, 1), 5: (1, 1)}, few=1, many=5, most=5,
             exits={1: 1}, rebuild=5, latency={1: (2, 1)})


def main():
    parser = argparse.ArgumentParser(prog="process", usage="process [--quick] BUILD_FOLDER RESULT.json")
    parser.add_argument("--quick", action="store_true")
    parser.add_argument("build")
    parser.add_argument("result")
    options = parser.parse_args()
    programs = {name: f"{options.build}/{path}" for name, path in PROGRAMS.items()}
    result = measure(programs, QUICK if options.quick else FULL)
    with open(options.result, "w", encoding="utf-8") as file:
        json.dump(result, file, ensure_ascii=False, indent=1)


def measure(programs, plan):
    desktop.start()
    watch = desktop.WindowWatch()
    _say("start-up")
    startup.measure(programs, watch, 1)  # fills caches
    rows = startup.measure(programs, watch, plan.starts)
    _say("closed window")
    rows += closing.measure(programs, watch, *plan.closing)
    _say("Wayland")
    rows += wayland.measure(programs, plan.wayland)
    _say("memory and idling")
    samples = steady.run(programs, plan.steady, plan.window_s, (plan.few, plan.many))
    rows += steady_figures.rows(samples, plan.few, plan.many, plan.most)
    curves = steady_figures.curves(samples)
    _say("exit")
    exit_rows, exit_curve = exits.measure(programs, watch, plan.exits)
    rows += exit_rows
    curves.append(exit_curve)
    _say("latency")
    waits = {count: latency.measure(programs, count, *plan_of) for count, plan_of in plan.latency.items()}
    for count, seconds in waits.items():
        rows += latency.rows(count, seconds, has_goal=count == plan.many)
    _say("replaced list")
    rows.append(rebuild.measure(programs, plan.rebuild, 1))
    return {"rows": rows, "curves": curves, "latency": waits}


def _say(what):
    print(f"{time.strftime('%H:%M:%S')} {what}", flush=True)


if __name__ == "__main__":
    main()
