# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""Plays the driver package in the sandbox's private /opt: the printer list and a status file for each printer."""

import os
import shutil
import struct
import time

PACKAGE = "/opt/tolmar/tolmar-printer-q727"
CONFIGURATION = PACKAGE + "/cfg/"
PRINTER_LIST = CONFIGURATION + "printerlist.ini"

READY = 0


def printer_name(index):
    return f"Printer_{index}"


def status_file(index):
    return CONFIGURATION + printer_name(index) + ".dat"


def status_reply(toner, status=READY):
    """A standard reply of a printer without errors. `toner` is in hundredths of a percent."""

    def text(value, length_format):
        return struct.pack(length_format, len(value)) + value

    supplies = [(0x0000, b"TC45A0009312"), (0x0001, bytes(4)), (0x1000, struct.pack(">H", toner))]
    supplies += [(kind, struct.pack(">H", 312)) for kind in (0x1001, 0x1002, 0x1100)]
    supplies += [(kind, struct.pack(">I", 1296)) for kind in (0x1003, 0x1004, 0x1101, 0x1102)]
    return (bytes(12) + text(b"Tolmar", ">H") + text(b"QV K4510A", ">H") + text(b"QVK451A000173", ">H") +
            bytes(2) + bytes([status]) + text(b"1.08.21", ">B") + text(b"", ">B") +
            b"\0" + b"\0" + bytes(5) + bytes([len(supplies)]) +
            b"".join(struct.pack(">HB", kind, len(data)) + data for kind, data in supplies))


def replace(path, content):
    """Replaces a file in one step, so that a reader sees the old or the new one. Returns when (monotonic seconds)."""
    with open(path + ".new", "wb") as file:
        file.write(content)
    now = time.monotonic()
    os.rename(path + ".new", path)
    return now


def write_list(count, port="USB001"):
    sections = [f"[Main]\nCount={count}\n"]
    for i in range(count):
        sections.append(f"[printer_{i}]\nName={printer_name(i)}\nModel=K4510A\nConnectType=1\n"
                        f"Port={port}\nURI=usb://Tolmar/QV%20K4510A?serial=QVK451A{i:06}\n")
    replace(PRINTER_LIST, "\n".join(sections).encode())


def install(count):
    """Creates a new driver package with `count` ready printers."""
    shutil.rmtree(PACKAGE, ignore_errors=True)
    os.makedirs(CONFIGURATION)
    for i in range(count):
        replace(status_file(i), status_reply(toner=5000))
    write_list(count)
