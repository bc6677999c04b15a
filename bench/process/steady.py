# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""Measures memory, CPU time and system calls of the assistant and the floor programs while nothing changes."""

import time

import calls
import folder
from program import Program

KIB_PER_MIB = 1024
US_PER_S = 1e6
MS_PER_S = 1000

FIRST_CYCLE_S = 0.6

# Longer than the time between two reads of the printer list: by then the memory that starting needed has been returned.
ROOM_RETURNED_S = 4

# The assistant's threads apart from its status workers: the main thread and the device manager.
OTHER_THREADS = 2


class Samples(dict):
    """Lists with a figure for each round, by kind and number of printers."""

    def note(self, what, count, value):
        self.setdefault((what, count), []).append(value)


def run(programs, plan, window_s, thread_counts):
    """For each number of printers, `plan` gives the number of rounds and how many of them also measure idling. The
    assistant and the floors take turns. Bare threads run only for the numbers in `thread_counts`."""
    samples = Samples()
    for count, (rounds, idle_rounds) in plan.items():
        folder.install(programs, count)
        for i in range(rounds):
            idle_s = window_s if i < idle_rounds else None
            spread_ms = _sample_assistant(programs, samples, count, idle_s)
            if idle_s:
                _sample_loop(programs, samples, "loop", count, idle_s)
                _sample_loop(programs, samples, "spread loop", count, idle_s, str(spread_ms))
            if count in thread_counts:
                _sample_threads(programs, samples, "threads", count)
                _sample_threads(programs, samples, "started threads", count, "-started")
            if count == 1:
                _sample_window(programs, samples)
    return samples


def _sample_assistant(programs, samples, count, idle_s):
    """Returns the time between the starts of the first and the last status worker, in ms."""
    with Program(programs["assistant"], "-hide") as assistant:
        assistant.wait_until_settled(count + OTHER_THREADS, ROOM_RETURNED_S)
        samples.note("fill", count, assistant.main_thread_cpu() * MS_PER_S)
        _note_memory(samples, "assistant", count, assistant)
        if idle_s:
            _note_idle(samples, "assistant", count, assistant, idle_s)
            for what, value in calls.trace(assistant.pid).items():
                samples.note(what, count, value)
        return assistant.spread_ms(count)


def _sample_loop(programs, samples, name, count, idle_s, *arguments):
    with Program(programs["stat-loop"], str(count), *arguments) as loop:
        loop.wait_for_threads(count + 1)
        time.sleep(FIRST_CYCLE_S)
        _note_idle(samples, name, count, loop, idle_s)


def _sample_threads(programs, samples, name, count, *arguments):
    with Program(programs["bare-threads"], str(count), *arguments) as threads:
        threads.wait_for_threads(count + 1)
        threads.wait_until_quiet()
        _note_memory(samples, name, count, threads)


def _sample_window(programs, samples):
    with Program(programs["bare-window"], "-hide") as window:
        window.wait_until_quiet()
        _note_memory(samples, "window", 1, window)


def _note_memory(samples, name, count, program):
    pss, private = program.memory_kib()
    samples.note(name + " PSS", count, pss / KIB_PER_MIB)
    samples.note(name + " private", count, private / KIB_PER_MIB)


def _note_idle(samples, name, count, program, window_s):
    """CPU time (µs) and voluntary switches for each printer and second."""
    switches, cpu, start = program.voluntary_switches(), program.cpu(), time.monotonic()
    time.sleep(window_s)
    cpu, elapsed, after = program.cpu() - cpu, time.monotonic() - start, program.voluntary_switches()
    switched = sum(after.get(thread, before) - before for thread, before in switches.items())
    samples.note(name + " CPU", count, cpu * US_PER_S / elapsed / count)
    samples.note(name + " switches", count, switched / elapsed / count)
