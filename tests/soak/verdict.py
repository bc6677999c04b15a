# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""Judges from the record of a soak run whether the assistant grew or became slower. docs/soak.md explains the rules.

verdict.py RECORD prints a line for each finding. Exit codes: 0 good, 1 bad, 2 wrong arguments.
"""
import sys

import numpy
from scipy.stats import mstats

SECONDS_PER_MINUTE = 60
# The limit for stack, event loop, status record, reply buffer, and the start signals that wait at a running worker.
MOST_KIB_PER_WORKER = 128
MOST_SLACK_KIB = 512
MOST_ANSWER_MS = 100
ANSWER_WINDOW_SECONDS = 10
FEWEST_WINDOWS = 3
SIGNIFICANCE = 0.01

# Column, name, unit, and the growth allowed in a whole run: in all, because caches fill, and for each worker, because
# each takes some code paths for the first time and drifts out of step with those started at the same time.
TRENDS = (
    ("private_kib", "private memory", "KiB", 256, 1),
    ("pss_anonymous_kib", "share of anonymous memory", "KiB", 256, 1),
    ("rss_kib", "resident memory", "KiB", 1024, 1),
    ("cpu_percent", "processor", "% of a core", 0.5, 0.002),
    ("answer_ms", "time to answer", "ms", 5, 0),
)


def judge(record):
    """The findings, as pairs of whether it is good and a text. The record is an array with the columns of the CSV."""
    settled = record[record["settled"] == 1] if record.size else record
    if settled.size < 2:
        return [(False, "too short to tell")]
    per_worker = descriptors_per_worker(record[0], settled[0])
    return [
        judge_workers(settled),
        judge_price(settled),
        judge_answers(settled),
        judge_count("threads beyond the workers", settled["threads"] - settled["worker_threads"]),
        judge_count("descriptors beyond the workers'",
                    settled["descriptors"] - per_worker * settled["worker_threads"]),
    ] + [judge_trend(settled, window_seconds(record), *trend) for trend in TRENDS]


def window_seconds(record):
    return min(max(record["seconds"][-1] / 100, 1), 10)


def descriptors_per_worker(begin, settled):
    """The descriptors of each of the first workers: 1 if their event loops need one, otherwise 0."""
    workers = settled["worker_threads"] - begin["worker_threads"]
    descriptors = settled["descriptors"] - begin["descriptors"]
    return min(1, round(descriptors / workers)) if workers > 0 else 0


def by_workers(settled):
    """The samples in groups with the same number of workers, the fewest first."""
    return [settled[settled["expected_workers"] == workers] for workers in numpy.unique(settled["expected_workers"])]


def judge_workers(settled):
    expected = settled["expected_workers"] + 1  # plus the device manager
    wrong = numpy.flatnonzero(settled["worker_threads"] != expected)
    text = (f"worker threads: {settled['worker_threads'][-1]:.0f} at the end; in {wrong.size} of {settled.size} "
            "samples not what the lists account for")
    if wrong.size:
        first = settled[wrong[0]]
        text += f"; at {first['seconds']:.0f} s {first['worker_threads']:.0f} instead of {expected[wrong[0]]:.0f}"
    return wrong.size == 0, text


def judge_price(settled):
    groups = by_workers(settled)
    workers = groups[-1]["expected_workers"][0] - groups[0]["expected_workers"][0]
    few, many = (numpy.median(group["private_kib"]) for group in (groups[0], groups[-1]))
    return (many - few <= MOST_KIB_PER_WORKER * workers + MOST_SLACK_KIB,
            f"price of workers: {many - few:+.0f} KiB for {workers:.0f} more; "
            f"bad from {MOST_KIB_PER_WORKER} each and {MOST_SLACK_KIB}")


def judge_answers(settled):
    slowest = window_medians(settled["seconds"], settled["answer_ms"], ANSWER_WINDOW_SECONDS).max()
    return (slowest < MOST_ANSWER_MS,
            f"answers: slowest window {slowest:.1f} ms, bad from {MOST_ANSWER_MS}; "
            f"slowest of all {settled['answer_ms'].max():.1f} ms")


def judge_count(name, counts):
    """Short-lived threads and descriptors come and go within a sample. A leaked one raises the median for good."""
    quarter = (counts.size + 3) // 4
    begin, end = numpy.median(counts[:quarter]), numpy.median(counts[-quarter:])
    return (end <= begin,
            f"{name}: median {begin:g} in the first quarter, {end:g} in the last; peak {counts.max():g}")


def judge_trend(settled, width, column, name, unit, growth, growth_per_worker):
    minutes = (settled["seconds"][-1] - settled["seconds"][0]) / SECONDS_PER_MINUTE
    allowed = (growth + growth_per_worker * settled["expected_workers"][-1]) / minutes
    slope, windows, probability = trend_beyond(allowed, settled, column, width)
    return (windows > 0 and not (slope > allowed and probability < SIGNIFICANCE),
            f"{name}: {slope:+.3f} {unit} a minute ({windows} windows), allowed {allowed:+.3f}, p = {probability:.2g}; "
            f"median {numpy.median(settled[column]):g}, peak {settled[column].max():g} {unit}")


def trend_beyond(allowed, settled, column, width):
    """The slope a minute, the number of windows, and the probability of this record if the slope were the allowed one.

    The groups with the same number of workers are the seasons of a seasonal Kendall test: only windows of one group are
    compared, so what workers cost does not count as growth. No windows, if no group has three.
    """
    groups = [window_medians(group["seconds"], group[column], width) for group in by_workers(settled)]
    groups = [group for group in groups if group.count() >= FEWEST_WINDOWS]
    if not groups:
        return 0, 0, 1
    seasons = numpy.ma.masked_all((max(map(len, groups)), len(groups)))
    seasons.data[:] = 0
    for season, group in enumerate(groups):
        seasons[:len(group), season] = group
    minutes = width / SECONDS_PER_MINUTE
    _, slope = mstats.sen_seasonal_slopes(seasons)
    excess = seasons - allowed * minutes * numpy.arange(len(seasons))[:, numpy.newaxis]
    probability = mstats.kendalltau_seasonal(excess)["global p-value (indep)"]
    return slope / minutes, seasons.count(), probability


def window_medians(seconds, values, width):
    """The medians of consecutive windows of `width` seconds. Windows with less than half the samples of the fullest are
    masked."""
    windows = numpy.floor(seconds / width).astype(int)
    windows -= windows.min()
    counts = numpy.bincount(windows)
    is_full = 2 * counts >= counts.max()
    medians = [numpy.median(values[windows == window]) if full else 0 for window, full in enumerate(is_full)]
    return numpy.ma.array(medians, mask=~is_full)


def main(arguments):
    if len(arguments) != 1:
        print("verdict: expects the path of a record; see docs/soak.md", file=sys.stderr)
        return 2
    findings = judge(numpy.atleast_1d(numpy.genfromtxt(arguments[0], delimiter=",", names=True)))
    for is_good, text in findings:
        print("good " if is_good else "BAD  ", text)
    return 0 if all(is_good for is_good, _ in findings) else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
