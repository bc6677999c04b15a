# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""The files that administrators copy: units, alert rules, dashboard and template."""
import json
import os
import pathlib
import re
import shutil
import subprocess
import uuid

import yaml

UNITS = ("tolmar-q727-metrics.service", "tolmar-q727-metrics.timer")
GOLDEN = pathlib.Path(__file__).parent / "golden" / "everyday.prom"
HIGHEST_EXPOSURE = "20"  # in tenths


def test_alerts(engines):
    code, output = engines.promtool("test", "rules", str(pathlib.Path(__file__).parent / "alerts.test.yml"))
    assert code == 0, output


def test_every_alert_is_tested(fleet_files):
    rules = yaml.safe_load((fleet_files / "tolmar-q727.rules.yml").read_text(encoding="utf-8"))
    tests = yaml.safe_load((pathlib.Path(__file__).parent / "alerts.test.yml").read_text(encoding="utf-8"))
    fired = {case["alertname"] for test in tests["tests"] for case in test["alert_rule_test"] if case.get("exp_alerts")}
    assert {rule["alert"] for group in rules["groups"] for rule in group["rules"]} == fired


def test_service_is_hardened(fleet_files):
    run = subprocess.run(["systemd-analyze", "security", "--offline=true", f"--threshold={HIGHEST_EXPOSURE}",
                          str(fleet_files / UNITS[0])], stdout=subprocess.PIPE, text=True, check=False)
    assert run.returncode == 0, run.stdout


def test_units_are_valid(fleet_files, tmp_path):
    # A system of its own, so that the tool need not be installed.
    system = tmp_path / "lib/systemd/system"
    shutil.copytree("/lib/systemd/system", system, symlinks=True)
    for unit in UNITS:
        shutil.copy(fleet_files / unit, system)
    (tmp_path / "usr/bin").mkdir(parents=True)
    shutil.copy("/bin/true", tmp_path / "usr/bin/tolmar-q727-status")
    run = subprocess.run(["systemd-analyze", "verify", "--man=no", f"--root={tmp_path}", *UNITS],
                         stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False)
    assert (run.returncode, run.stdout) == (0, "")


def allowed_calls(fleet_files):
    """The system calls that the service may make."""
    listing = subprocess.run(["systemd-analyze", "syscall-filter"], stdout=subprocess.PIPE, text=True, check=True,
                             env={**os.environ, "SYSTEMD_PAGER": "", "SYSTEMD_COLORS": "0"}).stdout
    sets = {lines[0]: [line.strip() for line in lines[1:] if not line.strip().startswith("#")]
            for lines in (block.splitlines() for block in re.split(r"\n(?=@)", listing)) if lines}

    def calls_of(name):
        if not name.startswith("@"):
            return {name}
        return set().union(*(calls_of(entry) for entry in sets[name]))

    allowed = set()
    for words in re.findall(r"^SystemCallFilter=(.*)$", (fleet_files / UNITS[0]).read_text(encoding="utf-8"),
                            re.MULTILINE):
        calls = set().union(*(calls_of(word) for word in words.lstrip("~").split()))
        allowed = allowed - calls if words.startswith("~") else allowed | calls
    return allowed


def test_tool_makes_only_allowed_calls(fleet_files, tool, tmp_path):
    trace = tmp_path / "trace"
    made = set()
    for _ in range(2):  # creates the file, then replaces it
        subprocess.run(["strace", "-f", "-qq", "-o", str(trace), tool, "metrics", "--directory", str(tmp_path),
                        "--output", str(tmp_path / "metrics.prom")], check=False)
        made.update(re.findall(r"^\d+ +(\w+)\(", trace.read_text(encoding="utf-8"), re.MULTILINE))
    assert {"openat", "rename"} <= made  # the trace is not empty
    assert made - allowed_calls(fleet_files) == set()


def test_dashboard_panels(fleet_files):
    dashboard = json.loads((fleet_files / "tolmar-q727-grafana.json").read_text(encoding="utf-8"))
    panels = dashboard["panels"]
    assert len({panel["id"] for panel in panels}) == len(panels)
    cells = [(panel["gridPos"]["x"] + x, panel["gridPos"]["y"] + y) for panel in panels
             for x in range(panel["gridPos"]["w"]) for y in range(panel["gridPos"]["h"])]
    assert len(set(cells)) == len(cells), "panels overlap"
    assert all(x < 24 for x, _ in cells)


def test_zabbix_template(fleet_files):
    template_file = yaml.safe_load((fleet_files / "tolmar-q727-zabbix.yaml").read_text(encoding="utf-8"))
    template = template_file["zabbix_export"]["templates"][0]
    identifiers = re.findall(r"uuid: (\w+)", (fleet_files / "tolmar-q727-zabbix.yaml").read_text(encoding="utf-8"))
    assert len(set(identifiers)) == len(identifiers)
    assert {uuid.UUID(hex=identifier).version for identifier in identifiers} == {4}
    rule = template["discovery_rules"][0]
    keys = {item["key"] for item in template["items"]} | {item["key"] for item in rule["item_prototypes"]}
    masters = [item["master_item"]["key"] for item in [rule, *rule["item_prototypes"]]]
    assert set(masters) <= {item["key"] for item in template["items"]}
    triggers = [trigger["expression"] for item in template["items"] for trigger in item.get("triggers", [])]
    triggers += [trigger["expression"] for item in rule["item_prototypes"]
                 for trigger in item.get("trigger_prototypes", [])]
    referenced = re.findall(r"/Tolmar Q727 printers/((?:[^\[]+)\[[^\]]*\])", " ".join(triggers))
    assert len(triggers) == 5 and set(referenced) <= keys


def test_zabbix_items_bear_missing_values(fleet_files):
    # A pattern or path that matches nothing is an error for Zabbix: an off-line printer has no toner.
    template_file = yaml.safe_load((fleet_files / "tolmar-q727-zabbix.yaml").read_text(encoding="utf-8"))
    rule = template_file["zabbix_export"]["templates"][0]["discovery_rules"][0]
    steps = [step for item in rule["item_prototypes"] for step in item["preprocessing"]]
    assert [step for step in steps if step["type"] in ("PROMETHEUS_PATTERN", "JSONPATH")
            and "error_handler" not in step] == []
    described = set(re.findall(r"^# TYPE (\S+)", GOLDEN.read_text(encoding="utf-8"), re.MULTILINE))
    used = {re.match(r"\w+", step["parameters"][0]).group() for step in [*rule["preprocessing"], *steps]
            if step["type"].startswith("PROMETHEUS")}
    assert used and used <= described
