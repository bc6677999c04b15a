# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""Counts the system calls of the assistant's status workers with strace."""

import os
import re
import subprocess
import tempfile
import time

TRACE_S = 3.2
PAUSES_PER_CYCLE = 2

# A line of strace -f: thread, call and arguments. The restart of an interrupted call does not count as a call.
CALL = re.compile(r"^(\d+) +(\w+)\((.*)")
CONTINUED = {"restart_syscall"}
STATUS_FILE = re.compile(r'"[^"]*/cfg/[^"]*\.dat"')


def trace(pid):
    """Means for a poll of a status worker, over all complete polls that strace saw: `calls` is the number of all calls,
    `stats` of stat calls on a status file, `other files` of calls that name any other file or open one."""
    with tempfile.NamedTemporaryFile(mode="r", encoding="utf-8", errors="replace") as record:
        strace = subprocess.Popen(["strace", "-f", "-qq", "-e", "signal=none", "-o", record.name, "-p", str(pid)],
                                  stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        _wait_until_attached(pid, strace)
        time.sleep(TRACE_S)
        strace.terminate()
        strace.wait()
        return _means([_count(calls) for calls in _by_thread(record).values()])


def _wait_until_attached(pid, tracer):
    while any(_tracer(pid, thread) != tracer.pid for thread in os.listdir(f"/proc/{pid}/task")):
        if tracer.poll() is not None:
            raise RuntimeError("strace cannot attach to the assistant (kernel.yama.ptrace_scope?)")
        time.sleep(0.02)


def _tracer(pid, thread):
    try:
        with open(f"/proc/{pid}/task/{thread}/status", encoding="utf-8") as file:
            return int(next(line for line in file if line.startswith("TracerPid")).split()[1])
    except FileNotFoundError:
        return None  # the thread has just ended


def _by_thread(record):
    threads = {}
    for line in record:
        match = CALL.match(line)
        if match and match[2] not in CONTINUED:
            threads.setdefault(match[1], []).append((match[2], match[3]))
    return threads


def _is_status_file_stat(call):
    return "stat" in call[0] and STATUS_FILE.search(call[1]) is not None


def _names_other_file(call):
    return not _is_status_file_stat(call) and ('"' in call[1] or "open" in call[0])


def _count(calls):
    """(pauses, calls, stats, calls on other files) between the first and the last stat of a status file."""
    stats = [i for i, call in enumerate(calls) if _is_status_file_stat(call)]
    seen = calls[stats[0]:stats[-1]] if stats else []
    return (sum("nanosleep" in call[0] for call in seen), len(seen), sum(map(_is_status_file_stat, seen)),
            sum(map(_names_other_file, seen)))


def _means(workers):
    pauses, made, stats, others = (sum(column) for column in zip(*workers))
    cycles = pauses / PAUSES_PER_CYCLE
    if cycles == 0:
        raise RuntimeError("strace saw no complete cycle of a status worker")
    return {"calls": made / cycles, "stats": stats / cycles, "other files": others / cycles}
