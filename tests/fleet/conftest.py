# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
import pathlib

import pytest
from rig.engines import Engines

FILES = pathlib.Path(__file__).parents[2] / "packaging" / "fleet"


def pytest_addoption(parser):
    parser.addoption("--engines", required=True, help="the folder of the unpacked monitoring programs")
    parser.addoption("--tool", required=True, help="tolmar-q727-status")
    parser.addoption("--simulator", required=True, help="the printer simulator")


@pytest.fixture(scope="session")
def engines(pytestconfig):
    return Engines(pytestconfig.getoption("engines"))


@pytest.fixture(scope="session")
def tool(pytestconfig):
    return pytestconfig.getoption("tool")


@pytest.fixture(scope="session")
def simulator(pytestconfig):
    return pytestconfig.getoption("simulator")


@pytest.fixture(scope="session")
def fleet_files():
    """The folder of the files that administrators copy."""
    return FILES


@pytest.fixture
def end_later():
    """Takes a service that ends with the test, and returns it."""
    services = []

    def add(service):
        services.append(service)
        return service

    yield add
    for service in services:
        service.end()
