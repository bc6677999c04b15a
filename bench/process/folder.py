# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""The driver package in the sandbox's private /opt, with printers that are all alike."""

from rig.printers import Printers

TONER_PERCENT = 50


def printer_name(index):
    return f"Printer_{index}"


def install(programs, count):
    """Creates a new driver package with `count` ready printers."""
    printers = Printers(programs["simulator"])
    install_with_port(printers, count, "USB001")
    return printers


def install_with_port(printers, count, port):
    printers.install({printer_name(i): _properties(i, port) for i in range(count)})


def _properties(index, port):
    return {"model": "K4510A", "port": port, "uri": f"usb://Tolmar/QV%20K4510A?serial=QVK451A{index:06}",
            "vendor": "Tolmar", "product": "QV K4510A", "serial": "QVK451A000173", "firmware": "1.08.21",
            "supply-serial": "TC45A0009312", "toner": TONER_PERCENT}
