# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""The verdict on invented records of soak runs."""
import subprocess
import sys

import numpy
import pytest

import verdict

RUN_SECONDS = 1800
SHORT_RUN_SECONDS = 45
STORM_SECONDS = 300
PRINTERS = 100
LIST_SEEN_AT_SECONDS = 3
COLUMNS = ("seconds,settled,expected_workers,worker_threads,threads,descriptors,pss_kib,pss_anonymous_kib,rss_kib,"
           "private_kib,cpu_seconds,cpu_percent,answer_ms")
MEMORY = ("private_kib", "pss_anonymous_kib", "rss_kib")
WORKER = ("worker_threads", "threads", "descriptors")


def good_run(seconds):
    """Workers start when the list is seen, every storm adds workers, caches fill, values are noisy and some descriptors
    are short-lived."""
    noise = numpy.random.RandomState(seconds).normal
    run = numpy.zeros(seconds, dtype=[(column, float) for column in COLUMNS.split(",")])
    second = numpy.arange(1, seconds + 1)
    storms = second // STORM_SECONDS
    run["seconds"] = second + 0.02 * noise(size=seconds)
    run["settled"] = (second > seconds // 10) & ((storms == 0) | (second % STORM_SECONDS > 40))
    run["expected_workers"] = PRINTERS * (1 + storms)
    run["worker_threads"] = numpy.where(second < LIST_SEEN_AT_SECONDS, 0, run["expected_workers"]) + 1
    run["threads"] = run["worker_threads"] + 5
    run["descriptors"] = run["worker_threads"] + 14 + (second % 7 == 0)
    run["private_kib"] = (17000 + 60 * run["expected_workers"] + 300 * (1 - numpy.exp(-second / 120))
                          + 4 * numpy.round(2 * noise(size=seconds)))
    run["pss_anonymous_kib"] = run["private_kib"] + 350
    run["rss_kib"] = run["private_kib"] + 76000
    run["pss_kib"] = 50 * second  # the effect of other programs
    run["cpu_percent"] = 0.7 + 0.3 * abs(noise(size=seconds)) + 0.002 * run["expected_workers"]
    run["answer_ms"] = numpy.where(second % 50 == 0, 150, 0.7)
    return run


def changed(run, *changes):
    """The run after `changes`, pairs of a column and what is added to it in each second."""
    for column, added in changes:
        run[column] += added(run)
    return run


def bad_findings(run):
    return [text.split(":")[0] for is_good, text in verdict.judge(run) if not is_good]


def after(second):
    return lambda run: run["seconds"] > second


def test_good_runs():
    assert not bad_findings(good_run(RUN_SECONDS))
    assert not bad_findings(good_run(SHORT_RUN_SECONDS))
    assert len(verdict.judge(good_run(RUN_SECONDS))) == 10


@pytest.mark.parametrize("changes, bad", [
    pytest.param([(column, lambda run: 2 * run["seconds"] / 3) for column in MEMORY],
                 ["private memory", "share of anonymous memory"], id="2 KiB each time the list is looked at"),
    pytest.param([("rss_kib", lambda run: 2 * run["seconds"])], ["resident memory"], id="files mapped and kept"),
    pytest.param([("descriptors", after(900))], ["descriptors beyond the workers'"], id="a single descriptor lost"),
    pytest.param([(column, lambda run: -1 * after(1700)(run)) for column in WORKER], ["worker threads"],
                 id="a worker's thread lost"),
    pytest.param([(column, after(900)) for column in WORKER], ["worker threads"], id="a worker too many"),
    pytest.param([("threads", after(900))], ["threads beyond the workers"], id="another thread that stays"),
    pytest.param([("cpu_percent", lambda run: run["seconds"] / 300)], ["processor"], id="ever more work"),
    pytest.param([("answer_ms", lambda run: run["seconds"] / 60)], ["time to answer"], id="ever slower"),
    pytest.param([("answer_ms", lambda run: 200 * (abs(run["seconds"] - 1010) < 10))], ["answers"],
                 id="slow for a while"),
    pytest.param([(column, lambda run: 100 * run["expected_workers"]) for column in MEMORY], ["price of workers"],
                 id="workers that cost much"),
])
def test_bad_run(changes, bad):
    assert bad_findings(changed(good_run(RUN_SECONDS), *changes)) == bad


@pytest.mark.parametrize("change, bad", [
    pytest.param(("private_kib", lambda run: PRINTERS * run["seconds"]), "private memory",
                 id="1 KiB each time a status file is looked at"),
    pytest.param(("descriptors", lambda run: run["seconds"] // 3), "descriptors beyond the workers'",
                 id="a descriptor each time the list is looked at"),
    pytest.param(("worker_threads", lambda run: -1 * after(40)(run)), "worker threads", id="a thread lost"),
])
def test_bad_run_of_less_than_a_minute(change, bad):
    assert bad in bad_findings(changed(good_run(SHORT_RUN_SECONDS), change))


def test_workers_without_descriptors():
    """If the first workers take no descriptors, the workers that a storm adds must not take any either."""
    none = changed(good_run(RUN_SECONDS), ("descriptors", lambda run: -run["worker_threads"]))
    assert not bad_findings(none)
    only_later_ones = changed(good_run(RUN_SECONDS),
                              ("descriptors", lambda run: -numpy.minimum(run["worker_threads"], PRINTERS + 1)))
    assert bad_findings(only_later_ones) == ["descriptors beyond the workers'"]


def test_unsettled_samples_do_not_count():
    run = good_run(RUN_SECONDS)
    unsettled = (run["settled"] == 0) & (run["seconds"] > LIST_SEEN_AT_SECONDS)
    for column, added in (("worker_threads", -50), ("private_kib", 17000), ("descriptors", 100), ("cpu_percent", 100)):
        run[column][unsettled] += added
    assert not bad_findings(run)


def test_too_short():
    run = good_run(RUN_SECONDS)
    assert bad_findings(run[:0]) == ["too short to tell"]
    run["settled"] = 0
    assert bad_findings(run) == ["too short to tell"]
    run["settled"][:2] = 1
    assert "private memory" in bad_findings(run[:2])  # two samples do not show a trend


def trend(values, allowed=0.0, workers=None):
    """The slope, the number of windows and the probability, with a window for each value, a minute long."""
    settled = numpy.zeros(len(values), dtype=[(column, float) for column in ("seconds", "expected_workers", "value")])
    settled["seconds"] = 60 * numpy.arange(len(values))
    settled["expected_workers"] = 1 if workers is None else workers
    settled["value"] = values
    return verdict.trend_beyond(allowed, settled, "value", 60)


def test_trend_of_a_line():
    line = 100 + 3 * numpy.arange(20)
    assert trend(line)[:2] == (3, 20)
    assert trend(line, allowed=2.99)[2] < 1e-6


def test_groups_keep_their_levels():
    values = numpy.repeat([100, 5000], 20)
    slope, windows, _ = trend(values, allowed=0.1, workers=numpy.repeat([1, 2], 20))
    assert (slope, windows) == (0, 40)
    assert trend(values)[0] > 0  # as a single group it has a slope


def test_trend_of_a_known_small_sample():
    """Of the ten pairs nine rise. The variance of S is 5*4*15/18, so z is (8 - 1) / 4.082."""
    slope, _, probability = trend([2, 3, 5, 4, 7])
    assert slope == 1.125  # -1, 1/2, 2/3, 1, 1, 5/4, 4/3, 3/2, 2, 3
    assert probability == pytest.approx(0.0864, abs=1e-4)


def test_a_quarter_of_the_windows_may_be_anything():
    values = 2.0 * numpy.arange(40)
    values[::5] = 1e6
    values[5::10] = -1e6
    assert trend(values)[0] == 2


def test_rare_outliers_of_a_count():
    values = numpy.full(60, 14)
    values[[10, 40]] = 15
    slope, _, probability = trend(values)
    assert slope == 0 and probability > 0.5


def test_false_alarms_are_rare():
    noise = numpy.random.RandomState(1).normal
    workers = numpy.repeat([1, 2, 3], 10)
    probabilities = [trend(1000 + 0.3 * numpy.arange(30) + noise(0, 10, 30), 0.3, workers)[2] for _ in range(100)]
    assert sum(probability < verdict.SIGNIFICANCE for probability in probabilities) <= 4
    assert sum(probability < 0.1 for probability in probabilities) > 5  # the test is not too mild


def test_too_few_windows():
    assert trend([])[1] == 0
    assert trend([0, 5, 7], workers=[1, 1, 2])[1] == 0
    assert trend([0, 5, 7, 8, 9], workers=[1, 1, 2, 2, 2])[:2] == (1, 3)


def test_window_medians():
    medians = verdict.window_medians(numpy.array([0, 1, 2, 10, 11, 12]), numpy.array([5, 900, 6, 1, 2, 3]), 10)
    assert medians.tolist() == [6, 2]
    seconds = numpy.array([0, 1, 2, 3, 10, 11, 20])
    assert verdict.window_medians(seconds, seconds, 10).tolist() == [1.5, 10.5, None]  # four, two and one samples


@pytest.mark.parametrize("change, code", [([], 0), ([("threads", after(900))], 1)])
def test_record_file(tmp_path, change, code):
    path = tmp_path / "soak.csv"
    numpy.savetxt(path, changed(good_run(RUN_SECONDS), *change), fmt="%.3f", delimiter=",", header=COLUMNS, comments="")
    output = run_verdict(path)
    assert output.returncode == code
    assert output.stdout.count("good") == 10 - code and output.stdout.count("BAD ") == code


def test_wrong_files(tmp_path):
    path = tmp_path / "soak.csv"
    path.write_text(COLUMNS + "\n")
    output = run_verdict(path)
    assert (output.returncode, output.stdout) == (1, "BAD   too short to tell\n")
    assert run_verdict().returncode == 2


def run_verdict(*arguments):
    return subprocess.run([sys.executable, "-B", verdict.__file__, *arguments], capture_output=True, text=True,
                          check=False)
