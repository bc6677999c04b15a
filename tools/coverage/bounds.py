# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""Compares the coverage that LLVM measured with the bounds in bounds.toml: what script/coverage ends with."""

import argparse
import collections
import json
import pathlib
import sys
import tomllib


class Coverage:
    """Lines, branches and MC/DC conditions of one source: those that exist, and the lines of those not covered."""

    def __init__(self):
        self.lines, self.branches, self.conditions = {}, {}, {}

    def add_line(self, line, count):
        self.lines[line] = self.lines.get(line, 0) + count

    def add_branch(self, place, taken, not_taken):
        """A branch of a template is listed for each instance."""
        before = self.branches.get(place, (0, 0))
        self.branches[place] = before[0] + taken, before[1] + not_taken

    def add_decision(self, place, conditions):
        before = self.conditions.get(place, [False] * len(conditions))
        self.conditions[place] = [one or other for one, other in zip(before, conditions)]

    def outcomes(self):
        """Whether each outcome of each branch was seen, by line."""
        return [(place[0], count > 0) for place, counts in self.branches.items() for count in counts]

    def independent(self):
        """Whether each condition of each decision was seen to decide it, by line."""
        return [(place[0], seen) for place, conditions in self.conditions.items() for seen in conditions]

    def executed(self):
        return [(line, count > 0) for line, count in self.lines.items()]


MEASURES = (("lines", Coverage.executed), ("branches", Coverage.outcomes), ("MC/DC", Coverage.independent))


def read_lines(path, root, coverage):
    """Reads the lcov file of llvm-cov."""
    file = None
    for row in path.read_text(encoding="utf-8").splitlines():
        name, _, value = row.partition(":")
        if name == "SF":
            file = _below(root, value)
        elif name == "DA" and file:
            line, count = value.split(",")[:2]
            coverage[file].add_line(int(line), int(count))


def read_decisions(path, root, coverage):
    """Reads the JSON file of llvm-cov."""
    for entry in json.loads(path.read_text(encoding="utf-8"))["data"][0]["files"]:
        file = _below(root, entry["filename"])
        if file is None:
            continue
        for branch in entry.get("branches", []):
            coverage[file].add_branch(tuple(branch[:4]), branch[4], branch[5])
        for record in entry.get("mcdc_records", []):
            coverage[file].add_decision(tuple(record[:4]), record[-1])


def _below(root, path):
    """The path below src/, or None."""
    try:
        relative = pathlib.PurePath(path).relative_to(root)
    except ValueError:
        return None
    return str(relative) if relative.parts[0] == "src" else None


class Bounds:
    def __init__(self, path, root):
        values = tomllib.loads(path.read_text(encoding="utf-8"))
        self.complete, self.percent = values["complete"], values["lines_percent"]
        self.exceptions, self.root, self.used = values.get("exception", []), root, set()
        for entry in self.exceptions:
            missing = {"file", "line", "reason"} - set(entry)
            if missing:
                raise ValueError(f"{path.name}: an exception of {entry.get('file')} lacks {', '.join(sorted(missing))}")

    def is_complete(self, file):
        return any(file == entry or file.startswith(entry + "/") for entry in self.complete)

    def excuses(self, file, line):
        text = (self.root / file).read_text(encoding="utf-8").splitlines()[line - 1].strip()
        for number, entry in enumerate(self.exceptions):
            if entry["file"] == file and entry["line"] == text:
                self.used.add(number)
                return True
        return False

    def absent(self, files):
        """What must be covered completely and was not measured at all."""
        return [entry for entry in self.complete
                if not any(file == entry or file.startswith(entry + "/") for file in files)]

    def stale(self):
        return [entry for number, entry in enumerate(self.exceptions) if number not in self.used]


def share(outcomes):
    return f"{sum(seen for _, seen in outcomes)}/{len(outcomes)}" if outcomes else "-"


def check(coverage, bounds):
    """Prints a row for each file; returns what is outside the bounds."""
    problems, rest = [], []
    width = max(map(len, coverage))
    print(f"{'':{width}}" + "".join(f"{name:>12}" for name, _ in MEASURES))
    for file, one in sorted(coverage.items()):
        print(f"{file:{width}}" + "".join(f"{share(read(one)):>12}" for _, read in MEASURES))
        for name, read in MEASURES:
            missed = sorted({line for line, seen in read(one) if not seen})
            missed = [line for line in missed if not bounds.excuses(file, line)]
            if bounds.is_complete(file):
                problems += [f"{file}:{line}: {name} not complete" for line in missed]
            elif name == "lines":
                rest += [seen or line not in missed for line, seen in read(one)]
    if rest and 100 * sum(rest) < bounds.percent * len(rest):
        problems.append(f"the other files: {sum(rest)} of {len(rest)} lines, less than {bounds.percent} %")
    elif rest:
        print(f"{'the files without a bound of their own':{width}}{sum(rest)}/{len(rest)}".rstrip())
    problems += [f"bounds.toml: {entry['file']}: {entry['line']}: covered, or there no longer"
                 for entry in bounds.stale()]
    return problems


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("root", type=pathlib.Path)
    parser.add_argument("lcov", type=pathlib.Path)
    parser.add_argument("json", type=pathlib.Path)
    parser.add_argument("--partial", action="store_true", help="not all tests ran")
    arguments = parser.parse_args()
    coverage = collections.defaultdict(Coverage)
    read_lines(arguments.lcov, arguments.root, coverage)
    read_decisions(arguments.json, arguments.root, coverage)
    bounds = Bounds(pathlib.Path(__file__).with_name("bounds.toml"), arguments.root)
    problems = check(coverage, bounds)
    if not arguments.partial:
        problems += [f"{entry}: not measured" for entry in bounds.absent(coverage)]
    for problem in problems:
        print(problem)
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
