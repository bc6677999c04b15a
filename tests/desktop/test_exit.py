# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""Ending the program from the tray's menu."""

import warnings

import pytest
from rig import traces
from rig.assistant import EXIT
from rig.stopwatch import Stopwatch
from rig.waiting import eventually

# Workers check twice a second whether to stop.
LIMIT_S = 0.7
# The program creates it at the start, for the log.
TOOL_FOLDER = "/opt/tolmar/tolmar-printer-q727/tool"


@pytest.mark.parametrize("count", [1, 50])
def test_ends_soon_and_leaves_nothing_behind(printers, start, count):
    names = [f"Printer{number}" for number in range(count)]
    printers.install({name: {"toner": "50"} for name in names})
    traces.adopt_orphans()
    files, bus_names, children = traces.files(), traces.bus_names(), traces.children()
    copy = start()
    copy.wait_for_rows(*[(name, "USB", "50.00%", "就绪") for name in names])

    stopwatch = Stopwatch(copy.pid)
    copy.icon.choose(EXIT)
    elapsed_s, is_judged = stopwatch.wait_for_end()
    assert copy.wait_for_exit() == 0
    assert traces.children() == children
    assert traces.files() - files == {TOOL_FOLDER}
    # The bus notices the end only later.
    eventually(lambda: traces.bus_names() <= bus_names, "the bus forgets the program")
    if is_judged:
        assert elapsed_s < LIMIT_S
    else:
        warnings.warn(f"{elapsed_s:.2f} s with {count} printers, not judged: the machine is busy or the build is slow")
