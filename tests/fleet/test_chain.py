# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""From the status file to the alert, through the real exporters and servers."""
import json
import shutil
import subprocess

import pytest
from rig.desktop import JAM, PRINTERS, Desktop
from rig.engines import samples_of, wait_until
from rig.icinga import Icinga
from rig.server import Server

JAMMED = PRINTERS[-1]


@pytest.fixture(name="desktops", scope="module")
def fixture_desktops(engines, tool, simulator, tmp_path_factory):
    desktops = [Desktop(tmp_path_factory.mktemp(f"desktop{number}"), 9101 + number, engines, tool, simulator)
                for number in range(2)]
    yield desktops
    for desktop in desktops:
        desktop.exporter.end()


@pytest.fixture(name="server", scope="module")
def fixture_server(engines, desktops, fleet_files, tmp_path_factory):
    server = Server(tmp_path_factory.mktemp("server") / "prometheus", engines, desktops,
                    fleet_files / "tolmar-q727.rules.yml", interval=0.5, waiting=1)
    wait_until(lambda: len(server.query("tolmar_q727_printer_info")) == len(desktops) * len(PRINTERS), "all printers")
    yield server
    server.service.end()


def test_exporter_takes_the_text(desktops):
    for desktop in desktops:
        page = wait_until(desktop.scrape, "the exporter")
        assert "\nnode_textfile_scrape_error 0\n" in page
        written = desktop.metrics_file.read_text(encoding="utf-8")
        assert samples_of(page) == samples_of(written)
        comments = {line for line in written.splitlines() if line.startswith("#")}
        with_samples = {line for line in comments if line.split()[2] in {name for name, _ in samples_of(written)}}
        assert with_samples and with_samples <= set(page.splitlines())
        assert not [line for line in desktop.exporter.log.read_text(encoding="utf-8").splitlines()
                    if "collector=textfile" in line and "level=error" in line]


def test_names_reach_the_server(server):
    names = {labels["printer"] for labels, _ in server.query("tolmar_q727_printer_info")}
    assert names == set(PRINTERS)


def test_low_toner_fires(server):
    alerts = wait_until(lambda: server.alerts("TolmarPrinterTonerLow"), "the alert")
    assert {alert["labels"]["printer"] for alert in alerts} == {PRINTERS[1]}


def test_jam_fires_and_resolves(server, desktops):
    jammed, sound = desktops
    jammed.play(JAM)
    jammed.collect()
    alert, = wait_until(lambda: server.alerts("TolmarPrinterError"), "the alert")
    assert (alert["labels"]["instance"], alert["labels"]["printer"]) == (jammed.address, JAMMED)
    assert alert["annotations"]["description"] == "Front cover open (0x1106). Paper jam inside (0x11B0). "
    sound.play()
    jammed.play()
    jammed.collect()
    wait_until(lambda: not server.alerts("TolmarPrinterError"), "the end of the alert")


def test_lost_report_fires_and_resolves(server, desktops):
    desktop = desktops[0]
    report = desktop.cfg / f"{JAMMED}.dat"
    report.unlink()
    desktop.collect()
    alert, = wait_until(lambda: server.alerts("TolmarPrinterOffline"), "the alert")
    assert alert["annotations"]["description"] == "Its report: missing"
    desktop.play()
    desktop.collect()
    wait_until(lambda: not server.alerts("TolmarPrinterOffline"), "the end of the alert")


def test_dashboard_shows_something_everywhere(server, desktops, fleet_files):
    desktops[0].play(JAM)
    desktops[0].collect()
    dashboard = json.loads((fleet_files / "tolmar-q727-grafana.json").read_text(encoding="utf-8"))
    wait_until(lambda: server.query("tolmar_q727_printer_condition"), "a condition")
    for panel in dashboard["panels"]:
        for target in panel["targets"]:
            expression = target["expr"].replace("$instance", ".*").replace("$printer", ".*")
            wait_until(lambda text=expression: server.query(text), f"data for {panel['title']}: {expression}")


def test_zabbix_agent_reads_the_text(engines, desktops, tmp_path):
    desktop = desktops[0]
    configuration = tmp_path / "agent.conf"
    configuration.write_text(f"Hostname=desktop\nServer=127.0.0.1\nLogType=console\n"
                             f"ControlSocket={tmp_path / 'socket'}\n", encoding="utf-8")
    run = subprocess.run([engines.path("usr/sbin/zabbix_agent2"), "-c", str(configuration), "-t",
                          f'vfs.file.contents["{desktop.metrics_file}"]'], stdout=subprocess.PIPE, check=True)
    assert desktop.metrics_file.read_bytes().strip() in run.stdout


def test_icinga_runs_the_check(engines, desktops, tool, fleet_files, tmp_path, end_later):
    # The definition has no --directory: the driver package's folder is private in the sandbox.
    shutil.copytree(desktops[1].cfg, "/opt/tolmar/tolmar-printer-q727/cfg")
    icinga = Icinga(tmp_path, engines, fleet_files / "tolmar-q727-icinga2.conf", tool,
                    {"tolmar_q727_queues": [PRINTERS[1], PRINTERS[0]], "tolmar_q727_toner_critical": 8.5})
    end_later(icinga.service)
    state, output, performance = wait_until(icinga.results, "a result of the check")[0]
    assert state == "CRITICAL"
    assert output == f"PRINTERS CRITICAL - {PRINTERS[1]}: Toner low (0x110D), toner 8.32 %"
    assert "'Office_K4510A toner'=87.5%;10:;8.5:;0;100" in performance
