# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""A running program, and what the kernel counts for it."""

import os
import subprocess
import time

TIMEOUT_S = 60
POLL_S = 0.02

# A program is quiet if it uses less than this CPU time in this time. Watching one printer costs far less.
QUIET_CPU_S = 0.0005
QUIET_S = 0.1

# Longer than a poll: by then the main thread has shown the results of all workers.
SETTLED_S = 1.3


class Program:
    def __init__(self, *command, environment=None):
        self.started = time.monotonic()
        self._process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                         env={**os.environ, **(environment or {})})
        self.pid = self._process.pid

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self._process.kill()
        self.wait()

    @property
    def output(self):
        return self._process.stdout

    def wait(self):
        """Waits until the program has ended and left the process table."""
        code = self._process.wait(TIMEOUT_S)
        self._process.stdout.close()
        return code

    def cpu(self):
        """CPU time of all threads so far, including threads that have ended; seconds."""
        return time.clock_gettime(~self.pid << 3 | 2)  # the kernel's number of the process's CPU clock

    def main_thread_cpu(self):
        with open(f"/proc/{self.pid}/task/{self.pid}/schedstat", encoding="ascii") as file:
            return int(file.read().split()[0]) * 1e-9

    def threads(self):
        return len(os.listdir(f"/proc/{self.pid}/task"))

    def spread_ms(self, count):
        """The time between the first and the last start among the newest `count` threads, in steps of 10 ms."""
        last = sorted(os.listdir(f"/proc/{self.pid}/task"), key=int)[-count:]
        starts = [_start_ticks(f"/proc/{self.pid}/task/{thread}/stat") for thread in last]
        return (max(starts) - min(starts)) * 1000 // os.sysconf("SC_CLK_TCK")

    def voluntary_switches(self):
        """Voluntary context switches by thread number."""
        switches = {}
        for thread in os.listdir(f"/proc/{self.pid}/task"):
            try:
                switches[thread] = int(_field(f"/proc/{self.pid}/task/{thread}/status", "voluntary_ctxt_switches"))
            except (FileNotFoundError, ProcessLookupError):
                pass  # the thread has just ended
        return switches

    def memory_kib(self):
        """Proportional set size and private dirty memory."""
        path = f"/proc/{self.pid}/smaps_rollup"
        return int(_field(path, "Pss").split()[0]), int(_field(path, "Private_Dirty").split()[0])

    def wait_until_quiet(self):
        """Returns the CPU time (seconds) up to the first quiet moment."""
        before = self.cpu()
        since = time.monotonic()
        deadline = since + TIMEOUT_S
        while time.monotonic() < deadline:
            time.sleep(POLL_S)
            now = self.cpu()
            if now - before > QUIET_CPU_S:
                before, since = now, time.monotonic()
            elif time.monotonic() - since > QUIET_S:
                return now
        raise TimeoutError("the program never goes quiet")

    def wait_for_threads(self, threads):
        deadline = time.monotonic() + TIMEOUT_S
        while self.threads() < threads:
            if time.monotonic() > deadline:
                raise TimeoutError(f"the program does not start {threads} threads")
            time.sleep(POLL_S)

    def wait_until_settled(self, threads, seconds=SETTLED_S):
        """Waits until the program has this many threads and its main thread has done nothing for this time."""
        self.wait_for_threads(threads)
        before = None
        since = time.monotonic()
        deadline = since + TIMEOUT_S
        while time.monotonic() < deadline:
            now = self.main_thread_cpu()
            if now != before:
                before, since = now, time.monotonic()
            elif time.monotonic() - since > seconds:
                return
            time.sleep(POLL_S)
        raise TimeoutError("the program never settles")


def _start_ticks(path):
    with open(path, encoding="utf-8") as file:
        return int(file.read().rpartition(")")[2].split()[19])


def _field(path, name):
    with open(path, encoding="ascii") as file:
        for line in file:
            key, _, value = line.partition(":")
            if key == name:
                return value.strip()
    raise KeyError(f"{name} in {path}")
