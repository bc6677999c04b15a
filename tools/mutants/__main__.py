# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""Makes mutants of src/ and runs the tests on each: what script/mutants starts."""

import concurrent.futures
import re
import sys
import time

import arguments as command_line
from results import Accepted, Results, survivors, table
from suite import Suite
from workshop import BuildError, Workshop


def choose_files(workshop, paths, changed):
    """The sources that the arguments ask for."""
    if changed is not None:
        return [file for file in workshop.sources if file in changed]
    return [file for file in workshop.sources
            if any(file == str(path) or file.startswith(f"{path}/") for path in paths)]


class Run:
    """One run over the mutants of some files."""

    def __init__(self, arguments, workshop):
        self.arguments, self.workshop = arguments, workshop
        self.results = Results(workshop.folder / "results.json")
        self.accepted = Accepted(workshop.root / "tools/mutants/no-difference.toml")
        # Without all tests, a mutant that none of them catches stays undecided.
        self.is_partial = arguments.quick or arguments.tests != ""
        self.start, self.done = time.monotonic(), 0

    def find(self, files, changed):
        """The mutants of the files; if only changed lines count, those of these lines."""
        found = {}
        for file in files:
            found[file] = self.workshop.mutants_of(file)
            if changed is not None:
                found[file] = [mutant for mutant in found[file] if mutant.line in changed[file]]
        return found

    def is_open(self, mutant):
        again = self.arguments.again and self.results.state(mutant) in ("survived", "undecided")
        return again and not self.accepted.covers(mutant) or self.results.is_open(mutant, self.is_partial)

    def try_all(self, by_file):
        suite = Suite(self.workshop.build, self.workshop.limit, self.arguments.jobs)
        tests = [test for test in suite.tests if (test.quick or not self.arguments.quick) and
                 re.search(self.arguments.tests, test.name)]
        if not tests:
            command_line.fail(f"no test matches {self.arguments.tests}")
        if self.is_partial:
            self.workshop.targets = suite.targets_of(tests)
        self.workshop.instrument(by_file)
        print(f"Running {len(tests)} tests without mutants", flush=True)
        suite.learn(tests, self.workshop.fingerprint(), self.workshop.folder / "tests.json")
        broken = [test.name for test in tests if not test.passes]
        if broken:
            print(f"Left out, because they fail without mutants here: {', '.join(broken)}")
        for file, found in by_file.items():
            self._try_file(file, [mutant for mutant in found if self.is_open(mutant)], suite, tests)

    def _try_file(self, file, found, suite, tests):
        together = [mutant for mutant in found if mutant.site is not None]
        alone = [mutant for mutant in found if mutant.site is None]
        with concurrent.futures.ThreadPoolExecutor(self.arguments.jobs) as pool:
            for mutant, outcome in zip(together, pool.map(lambda one: suite.try_mutant(one, tests), together)):
                self._store(mutant, *outcome)
        for mutant in alone:
            if self.workshop.build_alone(mutant):
                self._store(mutant, *suite.try_mutant(mutant, tests))
            else:
                self.results.store(mutant, "does not compile")
        if alone:
            self.workshop.restore(file)
            self.workshop.rebuild()

    def _store(self, mutant, test, how):
        if how is not None:
            state = "time limit" if how == "time limit" else "caught"
        elif self.workshop.gives_same_object(mutant):
            state = "same code"
        else:
            state = "undecided" if self.is_partial else "survived"
            print(f"{state}: {describe(mutant)}", flush=True)
        self.results.store(mutant, state, test)
        self.done += 1
        if self.done % 100 == 0:
            print(f"{self.done} mutants, {time.monotonic() - self.start:.0f} s", flush=True)

    def report(self, mutants, is_whole):
        print()
        for line in table(mutants, self.results, self.accepted):
            print(line)
        open_ones = survivors(mutants, self.results, self.accepted)
        for mutant in open_ones:
            print(f"{self.results.state(mutant)}: {describe(mutant)}")
        stale = list(self.accepted.stale(mutants, self.results)) if is_whole else []
        for entry, why in stale:
            print(f"no-difference.toml: {entry['file']}: {entry['after']}: {why}")
        return 1 if open_ones or stale else 0


def describe(mutant):
    return f"{mutant.place()}: {mutant.kind}: {mutant.before}  ->  {mutant.after}"


def main():
    arguments = command_line.read()
    workshop = Workshop(command_line.ROOT, arguments.jobs)
    changed = workshop.changed_lines(arguments.changed) if arguments.changed is not None else None
    files = choose_files(workshop, arguments.files, changed)
    if not files:
        print("There is nothing to mutate.")
        return 0
    workshop.folder.mkdir(exist_ok=True)
    run = Run(arguments, workshop)
    workshop.copy()
    workshop.configure()
    by_file = run.find(files, changed)
    mutants = [mutant for found in by_file.values() for mutant in found]
    print(f"{len(mutants)} mutants in {len(files)} files", flush=True)
    if arguments.list:
        for mutant in mutants:
            print(describe(mutant))
        return 0
    if any(run.is_open(mutant) for mutant in mutants):
        run.try_all(by_file)
    return run.report(mutants, changed is None)


try:
    sys.exit(main())
except BuildError as problem:
    print(f"mutants: {problem}", file=sys.stderr)
    sys.exit(1)
except KeyboardInterrupt:
    sys.exit(130)
