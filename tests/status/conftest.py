# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT

import json
import os
import pathlib
import subprocess

import jsonschema
import pytest

_HERE = pathlib.Path(__file__).parent
_SCHEMA = _HERE / "../../packaging/tolmar-q727-status.schema.json"
# Every status file gets this time, so that the output is the same in every run.
REPORT_TIME = 1700000000.25


def pytest_addoption(parser):
    parser.addoption("--tool")
    parser.addoption("--simulator")
    parser.addoption("--slowness", type=int, default=1)


def strict(schema, is_part=False):
    """The schema with an error for members that it does not describe. Programs must accept such members. A part of
    another object (in allOf) cannot know the members of the other parts."""
    if not isinstance(schema, dict):
        return schema
    tightened = {}
    for key, value in schema.items():
        if isinstance(value, list):
            tightened[key] = [strict(part, key == "allOf") for part in value]
        else:
            tightened[key] = strict(value, key == "reply_members")
    if not is_part and ("allOf" in schema or isinstance(schema.get("properties"), dict)):
        tightened["unevaluatedProperties"] = False
    return tightened


class Tool:
    """Runs the status tool on a folder."""

    def __init__(self, program, simulator, folder):
        self.program = program
        self.simulator = simulator
        self.folder = folder
        schema = json.loads(_SCHEMA.read_text(encoding="utf-8"))
        jsonschema.Draft202012Validator.check_schema(schema)
        self.schema = jsonschema.Draft202012Validator(schema)
        self.strict_schema = jsonschema.Draft202012Validator(strict(schema))

    def simulate(self, scenario):
        """Writes the files of a scenario that ends at once."""
        source = self.folder.parent / "test.scenario"
        source.write_text(scenario, encoding="utf-8")
        subprocess.run([self.simulator, "--directory", self.folder, source], check=True, timeout=60)
        for file in self.folder.iterdir():
            os.utime(file, (REPORT_TIME, REPORT_TIME))

    def run(self, *arguments, environment=None, data=None, **options):
        """Runs the tool on the folder. The result's texts are bytes."""
        variables = {"LANG": "en_US.UTF-8", "TZ": "UTC", **(environment or {})}
        if data is not None:
            options["input"] = data
        return subprocess.run([self.program, "--directory", self.folder, *arguments], env=variables,
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE, check=False, timeout=60, **options)

    def lines(self, *arguments):
        """The lines of a run without errors."""
        result = self.run(*arguments)
        assert (result.returncode, result.stderr) == (0, b"")
        return result.stdout.decode().splitlines()

    def json(self, *arguments, code=0, **options):
        """The valid JSON of a run."""
        result = self.run(*arguments, "--format", "json", **options)
        assert result.returncode == code, result.stderr
        document = json.loads(result.stdout)
        error = jsonschema.exceptions.best_match(self.schema.iter_errors(document))
        assert error is None, f"{error.json_path}: {error.message[:200]}"
        return document


@pytest.fixture
def tool(request, tmp_path):
    folder = tmp_path / "cfg"
    folder.mkdir()
    return Tool(request.config.getoption("--tool"), request.config.getoption("--simulator"), folder)
