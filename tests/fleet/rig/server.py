# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""A Prometheus that watches simulated desktops."""
import pathlib
import urllib.parse

import yaml
from rig.engines import Service

_ADDRESS = "127.0.0.1:9090"


def duration(seconds):
    return f"{round(seconds * 1000)}ms"


def hasten(rules, seconds):
    """The rules with all waiting times replaced by this one."""
    document = yaml.safe_load(pathlib.Path(rules).read_text(encoding="utf-8"))
    for group in document["groups"]:
        for rule in group["rules"]:
            rule["for"] = duration(seconds)
    return yaml.safe_dump(document, allow_unicode=True)


class Server:
    """`interval` is between scrapes, `waiting` is how long an alert waits before it fires, both in seconds.
    `collectors` are those of the exporters; default: all."""

    def __init__(self, folder, engines, desktops, rules, interval, waiting, collectors=()):
        folder = pathlib.Path(folder)
        folder.mkdir()
        (folder / "rules.yml").write_text(hasten(rules, waiting), encoding="utf-8")
        (folder / "prometheus.yml").write_text(yaml.safe_dump({
            "global": {"scrape_interval": duration(interval), "evaluation_interval": duration(interval),
                       "scrape_timeout": duration(interval)},
            "rule_files": ["rules.yml"],
            "scrape_configs": [{"job_name": "node", "params": {"collect[]": list(collectors)},
                                "static_configs": [{"targets": [desktop.address for desktop in desktops]}]}],
        }), encoding="utf-8")
        self.service = Service([engines.path("usr/bin/prometheus"), f"--config.file={folder / 'prometheus.yml'}",
                                f"--storage.tsdb.path={folder / 'data'}", f"--web.listen-address={_ADDRESS}"],
                               folder / "prometheus.log")
        self.data = folder / "data"

    def query(self, expression):
        """The vector of an expression: a list of (labels, value)."""
        answer = self.service.fetch_json(f"http://{_ADDRESS}/api/v1/query?"
                                         + urllib.parse.urlencode({"query": expression}))
        if answer is None:
            return []
        return [(entry["metric"], float(entry["value"][1])) for entry in answer["data"]["result"]]

    def alerts(self, name):
        """The firing alerts of this name."""
        answer = self.service.fetch_json(f"http://{_ADDRESS}/api/v1/alerts")
        if answer is None:
            return []
        return [alert for alert in answer["data"]["alerts"]
                if alert["labels"]["alertname"] == name and alert["state"] == "firing"]
