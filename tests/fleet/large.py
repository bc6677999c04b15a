# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""Simulates a fleet: desktops with four printers each, one Prometheus, and a printer that jams. Measures what it costs
and extends the costs along their slopes to larger fleets."""
import argparse
import gzip
import itertools
import pathlib
import statistics
import sys
import tempfile
import time

from rig.desktop import JAM, PRINTERS, Desktop
from rig.engines import Engines, samples_of, wait_until
from rig.server import Server

RULES = pathlib.Path(__file__).parents[2] / "packaging" / "fleet" / "tolmar-q727.rules.yml"
FIRST_PORT = 20000
SCRAPE_SECONDS = 1  # in the simulation
REAL_SCRAPE_SECONDS = 60  # in the table
MEASURE_SECONDS = 20
DAY_SECONDS = 86400
FLEETS = (100, 1000, 10000)


def say(text):
    print(f"{time.strftime('%T')} {text}", flush=True)


def slope(points):
    """(base, growth) of a straight line through (x, y) points."""
    line = statistics.linear_regression(*zip(*points))
    return max(line.intercept, 0), line.slope


class Fleet:
    """The desktops, and servers that watch some of them."""

    def __init__(self, arguments, folder):
        self.folder = pathlib.Path(folder)
        self._servers = itertools.count()
        self.engines = Engines(arguments.engines)
        self.desktops = [Desktop(self.folder / f"desktop{number}", FIRST_PORT + number, self.engines, arguments.tool,
                                 arguments.simulator) for number in range(arguments.desktops)]
        for desktop in self.desktops:
            wait_until(desktop.scrape, "the exporter")

    def serve(self, count):
        """A new server that has seen the first `count` desktops."""
        desktops = self.desktops[:count]
        server = Server(self.folder / f"server{next(self._servers)}", self.engines, desktops, RULES, SCRAPE_SECONDS,
                        waiting=2, collectors=["textfile"])
        wanted = count * len(PRINTERS)
        wait_until(lambda: len(server.query("tolmar_q727_printer_info")) == wanted, "all printers")
        return server

    def desktop_costs(self):
        """(bytes of the metrics, bytes of a page, the same compressed, CPU seconds of a run, CPU seconds of a page)."""
        desktop = self.desktops[0]
        runs = 20
        run = sum(desktop.collect() for _ in range(runs)) / runs
        before = desktop.exporter.cpu_seconds()
        for _ in range(runs):
            page = desktop.scrape("textfile")
        scrape = (desktop.exporter.cpu_seconds() - before) / runs
        return (desktop.metrics_file.stat().st_size, len(page.encode()), len(gzip.compress(page.encode())), run, scrape)

    def server_costs(self, count):
        """(series, CPU seconds of a second, resident bytes) of a server with this many desktops."""
        server = self.serve(count)
        before = server.service.cpu_seconds()
        time.sleep(MEASURE_SECONDS)
        cpu = (server.service.cpu_seconds() - before) / MEASURE_SECONDS
        series = len(server.query('{job="node"}'))
        memory = server.service.resident_bytes()
        server.service.end()
        return series, cpu, memory

    def bytes_on_disk(self):
        """(bytes, samples) of a day of one desktop in the server's database: pages and toner change, little else."""
        samples = samples_of(self.desktops[0].metrics_file.read_text(encoding="utf-8"))
        start = 1700000000 // DAY_SECONDS * DAY_SECONDS
        text = []
        for number, ((name, labels), value) in enumerate(samples.items()):
            series = name + "{" + ",".join(f'{label}="{content}"' for label, content in sorted(labels)) + "}"
            grows = name.endswith(("_total", "_ratio", "_raw", "_seconds"))
            text += [f"{series} {value + (step // 10 + number if grows else 0)} {start + step * REAL_SCRAPE_SECONDS}"
                     for step in range(DAY_SECONDS // REAL_SCRAPE_SECONDS)]
        source, target = self.folder / "day.txt", self.folder / "day"
        source.write_text("\n".join([*text, "# EOF", ""]), encoding="utf-8")
        code, output = self.engines.promtool("tsdb", "create-blocks-from", "openmetrics", str(source), str(target))
        if code:
            raise RuntimeError(output)
        return sum(file.stat().st_size for file in target.rglob("*") if file.is_file()), len(text)


def seconds_until(condition, what):
    start = time.monotonic()
    wait_until(condition, what)
    return time.monotonic() - start


def jam(fleet, server):
    """(seconds until the alert fires, until it has ended)."""
    desktop = fleet.desktops[-1]
    desktop.play(JAM)
    desktop.collect()
    fires = seconds_until(lambda: server.alerts("TolmarPrinterError"), "the alert")
    alert, = server.alerts("TolmarPrinterError")
    assert (alert["labels"]["instance"], alert["labels"]["printer"]) == (desktop.address, PRINTERS[-1])
    desktop.play()
    desktop.collect()
    return fires, seconds_until(lambda: not server.alerts("TolmarPrinterError"), "the end of the alert")


def print_table(desktop, points, disk):
    """`points` are (desktops, series, CPU seconds of a second, resident bytes)."""
    _, page, compressed, run, scrape = desktop
    cpu_base, cpu = slope([(count, used) for count, _, used, _ in points])
    memory_base, memory = slope([(count, used) for count, _, _, used in points])
    series = slope([(count, number) for count, number, _, _ in points])[1]
    print(f"\nA desktop: {page} bytes a scrape ({compressed} compressed), {run * 1000:.1f} ms CPU a run, "
          f"{scrape * 1000:.1f} ms CPU a scrape; with one of each a minute "
          f"{(run + scrape) / REAL_SCRAPE_SECONDS * 100:.3f} % of a core.")
    print(f"The database: {disk[0] / disk[1]:.2f} bytes a sample.\n")
    print("| desktops | printers | series | samples a second | network | CPU of the server | memory | disk a day |")
    print("|---|---|---|---|---|---|---|---|")
    for count in FLEETS:
        samples = series * count / REAL_SCRAPE_SECONDS
        # The base comes from evaluating the rules once a second; a real server does so once a minute.
        cores = (cpu_base + cpu * count) * SCRAPE_SECONDS / REAL_SCRAPE_SECONDS
        print(f"| {count} | {count * len(PRINTERS)} | {series * count:.0f} | {samples:.0f} "
              f"| {compressed * count / REAL_SCRAPE_SECONDS / 1000:.1f} kB/s | {cores * 100:.1f} % of a core "
              f"| {(memory_base + memory * count) / 1e6:.0f} MB "
              f"| {disk[0] / disk[1] * samples * DAY_SECONDS / 1e6:.0f} MB |")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--desktops", type=int, default=50)
    for name in ("--engines", "--tool", "--simulator"):
        parser.add_argument(name, required=True)
    arguments = parser.parse_args()
    with tempfile.TemporaryDirectory() as folder:
        say(f"Starting {arguments.desktops} desktops with {len(PRINTERS)} printers each")
        fleet = Fleet(arguments, folder)
        server = fleet.serve(len(fleet.desktops))
        say(f"One Prometheus watches {len(server.query('tolmar_q727_printer_info'))} printers")
        fires, ends = jam(fleet, server)
        say(f"A printer jammed: the alert fired after {fires:.1f} s and ended {ends:.1f} s after the repair")
        server.service.end()
        points = []
        for count in [len(fleet.desktops) * part // 5 for part in range(1, 6)]:
            points.append((count, *fleet.server_costs(count)))
            say("{} desktops: {} series, {:.3f} CPU seconds a second, {:.0f} MB".format(
                *points[-1][:3], points[-1][3] / 1e6))
        print_table(fleet.desktop_costs(), points, fleet.bytes_on_disk())
        for desktop in fleet.desktops:
            desktop.exporter.end()


if __name__ == "__main__":
    sys.exit(main())
