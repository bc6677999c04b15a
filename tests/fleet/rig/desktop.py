# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""A simulated desktop: the driver package's folder, the status tool and the exporter."""
import os
import pathlib
import subprocess
import urllib.parse

from rig.engines import Service

# The printers at the start of the everyday scenario, one with a name that every format must quote.
_SCENARIO = pathlib.Path(__file__).parents[3] / "tools/printer-simulator/scenarios/everyday.scenario"
_PRINTERS = (_SCENARIO.read_text(encoding="utf-8").split("\nwait ")[0]
             .replace("Hall_J4500A", r'"前台 \"2\" \\"') + "\n")
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
