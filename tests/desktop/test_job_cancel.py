# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""A job that a user cancels at the printer is also cancelled in CUPS."""

import shutil

import pytest
from rig.print_service import PrintService
from rig.waiting import eventually_equals

# The path is short because a socket's path is limited to 107 bytes.
FOLDER = "/tmp/cups"
CANCELLING = "正在取消任务"


@pytest.fixture
def print_service():
    service = PrintService(FOLDER)
    yield service
    service.stop()
    shutil.rmtree(FOLDER)


@pytest.fixture
def watch(printers, start, print_service):
    """Starts the assistant with these printers and this print service, and waits for the rows."""

    def watch_printers(*names):
        printers.install({name: {"toner": "90"} for name in names})
        assistant = start(**print_service.environment)
        assistant.wait_for_rows(*[(name, "USB", "90.00%", "就绪") for name in names])
        return assistant

    return watch_printers


def report(printers, assistant, name, toner, status, text):
    """Reports a status and waits until the assistant shows it, which is its last step."""
    printers.report(name, toner=toner, status=status)
    eventually_equals(lambda: next(row for row in assistant.rows() if row[0] == name)[2:], (f"{toner}.00%", text))


def test_takes_the_oldest_job_of_this_queue(printers, print_service, watch):
    names = ("Office", "Office2", "办公室")
    for name in names:
        print_service.add_queue(name)
    first, second, third = (print_service.hold(name) for name in ("Office", "Office2", "Office"))
    chinese = print_service.hold("办公室")
    assistant = watch(*names)
    assert set(print_service.jobs()) == {first, second, third, chinese}

    report(printers, assistant, "Office", 89, "cancelling", CANCELLING)
    assert set(print_service.jobs()) == {second, third, chinese}
    # Staying in this status does not start another cancellation.
    report(printers, assistant, "Office", 88, "cancelling", CANCELLING)
    assert set(print_service.jobs()) == {second, third, chinese}
    report(printers, assistant, "Office", 87, "ready", "就绪")
    report(printers, assistant, "Office", 86, "cancelling", CANCELLING)
    assert set(print_service.jobs()) == {second, chinese}
    report(printers, assistant, "办公室", 85, "cancelling", CANCELLING)
    assert print_service.jobs() == [second]


def test_takes_the_job_in_print(printers, print_service, watch):
    print_service.add_slow_queue("Office")
    first, second = (print_service.submit("Office") for _ in range(2))
    assert print_service.next_printed() == first
    report(printers, watch("Office"), "Office", 89, "cancelling", CANCELLING)
    assert print_service.jobs() == [second]
    assert print_service.next_printed() == second


def test_empty_queue(printers, print_service, watch):
    for name in ("Office", "Hall"):
        print_service.add_queue(name)
    job = print_service.hold("Hall")
    assistant = watch("Office")
    report(printers, assistant, "Office", 89, "cancelling", CANCELLING)
    report(printers, assistant, "Office", 88, "ready", "就绪")
    assert print_service.jobs() == [job]


def test_print_service_has_ended(printers, print_service, watch):
    assistant = watch("Office")
    print_service.stop()
    report(printers, assistant, "Office", 89, "cancelling", CANCELLING)
    report(printers, assistant, "Office", 88, "ready", "就绪")
