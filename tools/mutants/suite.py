# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""The tests of the copy: which there are, which mutants they reach, and whether they notice one."""

import concurrent.futures
import dataclasses
import json
import os
import pathlib
import re
import subprocess
import threading
import time

# A mutant may take this many times as long as the original, and the machine may be busy.
_SLOWNESS = 5
_SHORTEST_LIMIT_SECONDS = 30
# A test that drives programs may fail by chance on a busy machine; its failure must happen twice.
_CONFIRM_FROM_SECONDS = 2


@dataclasses.dataclass
class Test:
    name: str
    command: list
    folder: str  # below tests/
    directory: str
    environment: dict
    limit: float
    locks: list
    quick: bool  # a unit test program, no program driven from outside
    seconds: float = 0
    passes: bool = True
    reached: frozenset = frozenset()

    @property
    def is_variant(self):
        """Whether this is one more run of a test, as another user or with another screen."""
        return bool(re.search(r"\.(user|side-by-side|1280x800|1921x1080|2560x1440|3840x2160)$", self.name))


class Suite:
    def __init__(self, build, limit, jobs):
        self.build, self.limit, self.jobs = build, limit, jobs
        self._locks, self._guard = {}, threading.Lock()
        self._successes = {}  # by function: the test that caught a mutant of it last
        self.tests = self._read_tests()

    def _read_tests(self):
        output = subprocess.run(["ctest", "--show-only=json-v1"], cwd=self.build, check=True, stdout=subprocess.PIPE,
                                text=True).stdout
        tests = []
        for entry in json.loads(output)["tests"]:
            properties = {one["name"]: one["value"] for one in entry.get("properties", [])}
            folder = os.path.relpath(properties.get("WORKING_DIRECTORY", "."), self.build / "tests")
            labels = properties.get("LABELS", [])
            locks = properties.get("RESOURCE_LOCK", []) + (["serial"] if properties.get("RUN_SERIAL") else [])
            command = entry["command"]
            quick = not {"desktop", "plain"} & set(labels) and pathlib.Path(command[-1]).name.startswith("tst_")
            environment = dict(one.split("=", 1) for one in properties.get("ENVIRONMENT", []))
            tests.append(Test(entry["name"], command, folder.split("/")[0], properties["WORKING_DIRECTORY"],
                              environment, float(properties.get("TIMEOUT", 600)), locks, quick))
        return tests

    def _lock(self, name):
        with self._guard:
            return self._locks.setdefault(name, threading.Lock())

    def run(self, test, environment, limit):
        """Returns passed, failed or "time limit"."""
        locks = [self._lock(name) for name in sorted(test.locks)]
        for lock in locks:
            lock.acquire()
        try:
            with subprocess.Popen(test.command, cwd=test.directory, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                  stderr=subprocess.DEVNULL, start_new_session=True,
                                  env={**os.environ, **test.environment, **environment}) as process:
                try:
                    return "passed" if process.wait(limit) == 0 else "failed"
                except subprocess.TimeoutExpired:
                    process.kill()  # the sandbox ends with its processes
                    return "time limit"
        finally:
            for lock in locks:
                lock.release()

    def targets_of(self, tests):
        """The programs that these tests name, and that the build therefore needs."""
        named = (match for test in tests for word in test.command
                 for match in re.findall(re.escape(str(self.build)) + r"/[^\s=]+", word))
        return sorted({os.path.relpath(path, self.build) for path in named if "screenshots" not in path})

    # --- without a mutant ---

    def learn(self, tests, fingerprint, cache):
        """Runs these tests without a mutant, to see which pass, how long they take, and what they reach."""
        known = json.loads(cache.read_text(encoding="utf-8")) if cache.exists() else {}
        if known.get("fingerprint") != fingerprint:
            known = {"fingerprint": fingerprint, "tests": {}}
        missing = [test for test in tests if test.name not in known["tests"]]
        (self.build / "reached").mkdir(exist_ok=True)
        with concurrent.futures.ThreadPoolExecutor(self.jobs) as pool:
            for test, entry in zip(missing, pool.map(self._learn_one, missing)):
                known["tests"][test.name] = entry
                cache.write_text(json.dumps(known), encoding="utf-8")
        for test in tests:
            entry = known["tests"][test.name]
            test.seconds, test.passes, test.reached = entry["seconds"], entry["passes"], frozenset(entry["reached"])

    def _learn_one(self, test):
        path = self.build / "reached" / test.name
        path.write_bytes(bytes(self.limit))
        start = time.monotonic()
        passes = self.run(test, {"MUTANTS_REACHED": str(path)}, 4 * test.limit) == "passed"
        seconds = time.monotonic() - start
        reached = [index for index, mark in enumerate(path.read_bytes()) if mark]
        path.unlink()
        return {"seconds": round(seconds, 2), "passes": passes, "reached": reached}

    # --- with a mutant ---

    def order_for(self, mutant, tests):
        """The tests that reach the mutant, those of its subsystem first."""
        folder = mutant.file.split("/")[1]
        is_tracked = mutant.site is not None or mutant.body is not None
        best = self._successes.get((mutant.file, mutant.function))
        chosen = [test for test in tests if test.passes and (not is_tracked or mutant.index in test.reached)]
        return sorted(chosen, key=lambda test: (test.name != best, test.folder != folder, test.is_variant,
                                                test.seconds))

    def try_mutant(self, mutant, tests):
        """Runs the tests until one notices the mutant. Returns the test, or None, and how it noticed."""
        chosen = {"MUTANT": str(mutant.index)} if mutant.site is not None else {}
        for test in self.order_for(mutant, tests):
            limit = max(_SHORTEST_LIMIT_SECONDS, _SLOWNESS * test.seconds)
            result = self.run(test, chosen, limit)
            if result == "failed" and test.seconds >= _CONFIRM_FROM_SECONDS:
                result = self.run(test, chosen, limit)
            if result != "passed":
                self._successes[mutant.file, mutant.function] = test.name
                return test.name, result
        return None, None
