# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""A simulated desktop: the driver package's folder, the status tool and the exporter."""
import os
import pathlib
import subprocess
import urllib.parse

from rig.engines import Service

_PRINTERS = """\
printer Office_K4510A
    model           K4510A
    connection      usb
    port            USB001
    uri             "usb://Tolmar/QV%20K4510A?serial=QVK451A000173"
    vendor          Tolmar
    product         "QV K4510A"
    serial          QVK451A000173
    firmware        1.08.21
    supply-serial   TC45A0009312
    toner           87.50
    waste           312
    drum            1408
    pages           1296
    prints          1180
    dots            4411
    printer-pages   8230
    printer-prints  7705

printer "前台 \\"2\\" \\\\"
    model           J4500A
    connection      network
    port            192.168.10.21
    vendor          Tolmar
    product         "QV J4500A"
    serial          QVJ450A002240
    firmware        1.09.03
    supply-serial   TC45A0011875
    status          printing
    toner           8.32
    warnings        0x110D
    waste           2870
    drum            20116
    pages           10233
    prints          9871
    dots            38205
    printer-pages   51840
    printer-prints  50012

printer Lab_J4990E
    model           J4990E
    connection      network
    port            192.168.10.35
    toner           64

printer Desk_K4620A
    model           K4620A
    connection      usb
    port            USB002
    vendor          Tolmar
    product         "QV K4620A"
    serial          QVK462A000518
    firmware        2.00.14
    supply-serial   TC46A0004406
    toner           55.27
    waste           1024
    drum            7019
    pages           3580
    prints          3399
    dots            12966
    printer-pages   3580
    printer-prints  3399
"""
PRINTERS = ("Office_K4510A", '前台 "2" \\', "Lab_J4990E", "Desk_K4620A")
JAM = "    status          busy\n    errors          0x11B0 0x1106\n"


class Desktop:
    """Four printers, of which the last one can jam, and one exporter."""

    def __init__(self, folder, port, engines, tool, simulator):
        self.address = f"127.0.0.1:{port}"
        self.cfg = pathlib.Path(folder) / "cfg"
        self.textfiles = pathlib.Path(folder) / "node-exporter"
        self.metrics_file = self.textfiles / "tolmar-q727.prom"
        self._tool = tool
        self._simulator = simulator
        self.textfiles.mkdir(parents=True)
        self.play()
        self.collect()
        # The tests' files are not where the unpacked program looks.
        self.exporter = Service([engines.path("usr/bin/prometheus-node-exporter"),
                                 f"--web.listen-address={self.address}",
                                 f"--collector.textfile.directory={self.textfiles}"],
                                pathlib.Path(folder) / "exporter.log")

    def play(self, last_printer=""):
        """Lets all printers report, the last one with these further lines of a scenario."""
        self.play_scenario(_PRINTERS + last_printer)

    def play_scenario(self, text):
        scenario = self.cfg.parent / "scenario"
        scenario.write_text(text, encoding="utf-8")
        subprocess.run([self._simulator, "--directory", str(self.cfg), str(scenario)], check=True)

    def collect(self):
        """What the timer does. Returns the CPU seconds that it took."""
        before = os.times()
        subprocess.run([self._tool, "metrics", "--directory", str(self.cfg), "--output", str(self.metrics_file)],
                       check=True)
        after = os.times()
        return after.children_user - before.children_user + after.children_system - before.children_system

    def scrape(self, *collectors):
        """The exporter's page, of these collectors or all; None while it starts."""
        query = urllib.parse.urlencode([("collect[]", collector) for collector in collectors])
        return self.exporter.fetch(f"http://{self.address}/metrics?{query}")
