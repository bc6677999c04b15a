# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""The bounds of the coverage: what script/coverage complains about."""

import collections
import json
import pathlib
import sys

import pytest

sys.path.insert(0, str(pathlib.Path(__file__).parents[2] / "tools/coverage"))

import bounds  # noqa: E402 (the tool's folder is no package)

BOUNDS = 'complete = ["src/a"]\nlines_percent = 98\n'


@pytest.fixture
def project(tmp_path):
    (tmp_path / "src/a").mkdir(parents=True)
    (tmp_path / "src/a/x.cpp").write_text("one\n  two\nthree\n")
    return tmp_path


def limits(project, text=BOUNDS):
    (project / "bounds.toml").write_text(text)
    return bounds.Bounds(project / "bounds.toml", project)


def coverage_of(*files):
    return collections.defaultdict(bounds.Coverage, {file: bounds.Coverage() for file in files})


def test_an_uncovered_line(project):
    coverage = coverage_of("src/a/x.cpp")
    coverage["src/a/x.cpp"].add_line(1, 5)
    coverage["src/a/x.cpp"].add_line(2, 0)
    assert bounds.check(coverage, limits(project)) == ["src/a/x.cpp:2: lines not complete"]


def test_a_branch_counts_over_all_instances(project):
    coverage = coverage_of("src/a/x.cpp")
    coverage["src/a/x.cpp"].add_branch((1, 1, 1, 4), 0, 2)
    assert bounds.check(coverage, limits(project)) == ["src/a/x.cpp:1: branches not complete"]
    coverage["src/a/x.cpp"].add_branch((1, 1, 1, 4), 3, 0)
    assert not bounds.check(coverage, limits(project))


def test_a_condition_that_never_decided(project):
    coverage = coverage_of("src/a/x.cpp")
    coverage["src/a/x.cpp"].add_decision((3, 1, 3, 9), [True, False])
    assert bounds.check(coverage, limits(project)) == ["src/a/x.cpp:3: MC/DC not complete"]


def test_exceptions(project):
    reason = '[[exception]]\nfile = "src/a/x.cpp"\nline = "two"\nreason = "why"\n'
    coverage = coverage_of("src/a/x.cpp")
    coverage["src/a/x.cpp"].add_line(2, 0)
    assert not bounds.check(coverage, limits(project, BOUNDS + reason))
    coverage["src/a/x.cpp"].add_line(2, 1)
    assert bounds.check(coverage, limits(project, BOUNDS + reason)) == [
        "bounds.toml: src/a/x.cpp: two: covered, or there no longer"]
    with pytest.raises(ValueError, match="lacks reason"):
        limits(project, BOUNDS + '[[exception]]\nfile = "src/a/x.cpp"\nline = "two"\n')


@pytest.mark.parametrize("missed, problems", [
    (2, []), (3, ["the other files: 97 of 100 lines, less than 98 %"])])
def test_the_other_files(project, missed, problems):
    coverage = coverage_of("src/b.cpp")
    (project / "src/b.cpp").write_text("line\n" * 100)
    for line in range(1, 101):
        coverage["src/b.cpp"].add_line(line, line > missed)
    assert bounds.check(coverage, limits(project)) == problems


def test_a_file_that_was_not_measured(project):
    assert limits(project).absent(["src/ab.cpp"]) == ["src/a"]
    assert not limits(project).absent(["src/a/x.cpp"])


def test_the_files_of_the_compiler(project):
    coverage = coverage_of()
    (project / "lines").write_text(f"SF:{project}/src/a/x.cpp\nDA:1,4\nDA:2,0\nSF:/usr/include/y.h\nDA:1,0\n"
                                   f"SF:{project}/build/moc.cpp\nDA:1,0\n")
    file = {"filename": f"{project}/src/a/x.cpp", "branches": [[1, 2, 1, 5, 7, 0, 0, 0, 4]],
            "mcdc_records": [[2, 1, 2, 9, 0, 0, 5, [True, True]]]}
    (project / "decisions").write_text(json.dumps({"data": [{"files": [file, {"filename": "/usr/include/y.h"}]}]}))
    bounds.read_lines(project / "lines", project, coverage)
    bounds.read_decisions(project / "decisions", project, coverage)
    assert set(coverage) == {"src/a/x.cpp"}
    one = coverage["src/a/x.cpp"]
    assert (one.executed(), one.outcomes(), one.independent()) == (
        [(1, True), (2, False)], [(1, True), (1, False)], [(2, True), (2, True)])
