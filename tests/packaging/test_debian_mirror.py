# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""The mirror for the systems that packages are tested in: that of the machine's APT, in either format of its files."""
import hashlib
import os
import subprocess
from pathlib import Path

import pytest

SCRIPT = Path(__file__).parents[2] / "packaging" / "debian-mirror"


@pytest.fixture(name="apt")
def fixture_apt(tmp_path):
    return Apt(tmp_path)


class Apt:
    """An APT with its own folders and with repositories in files."""

    def __init__(self, folder):
        self._folder = folder
        self._sources = folder / "sources.list.d"
        for name in ("sources.list.d", "lists/partial", "cache/archives/partial"):
            (folder / name).mkdir(parents=True)
        (folder / "status").touch()
        self._configuration = folder / "apt.conf"
        self._configuration.write_text(
            f'Dir::Etc::sourcelist "{folder}/sources.list";\nDir::Etc::sourceparts "{self._sources}";\n'
            f'Dir::State::lists "{folder}/lists";\nDir::State::status "{folder}/status";\n'
            f'Dir::Cache "{folder}/cache";\nAPT::Architecture "amd64";\nAPT::Architectures "amd64";\n'
            'APT::Sandbox::User "";\nAPT::Update::Post-Invoke-Success "";\nAPT::Update::Post-Invoke "";\n'
        )

    def make_repository(self, name, label="Debian", origin="Debian"):
        folder = self._folder / name
        packages = folder / "dists/stable/main/binary-amd64/Packages"
        packages.parent.mkdir(parents=True)
        content = b"Package: one\nVersion: 1\nArchitecture: all\nFilename: one.deb\nSize: 1\n"
        packages.write_bytes(content)
        (folder / "dists/stable/Release").write_text(
            f"Origin: {origin}\nLabel: {label}\nSuite: stable\nCodename: stable\nArchitectures: amd64\n"
            "Components: main\nDate: Fri, 20 Nov 2026 08:00:00 UTC\nSHA256:\n"
            f" {hashlib.sha256(content).hexdigest()} {len(content)} main/binary-amd64/Packages\n"
        )
        return f"file:{folder}/"

    def write_lines(self, *mirrors):
        text = "".join(f"deb [trusted=yes] {mirror} stable main\n" for mirror in mirrors)
        (self._sources / "a.list").write_text(text)

    def write_deb822(self, mirror):
        (self._sources / "b.sources").write_text(
            f"Types: deb\nURIs: {mirror}\nSuites: stable\nComponents: main\nTrusted: yes\n"
        )

    def update(self):
        subprocess.run(["apt-get", "-qq", "update"], env=self._environment(), check=True)

    def mirror(self, **environment):
        run = subprocess.run(
            [SCRIPT], env={**self._environment(), **environment}, stdout=subprocess.PIPE, text=True, check=False
        )
        return run.returncode, run.stdout.strip()

    def _environment(self):
        inherited = {name: value for name, value in os.environ.items() if name != "DEBIAN_MIRROR"}
        return {**inherited, "APT_CONFIG": str(self._configuration)}


def test_one_line_format(apt):
    mirror = apt.make_repository("near")
    apt.write_lines(mirror)
    apt.update()
    assert apt.mirror() == (0, mirror)


def test_deb822_format(apt):
    mirror = apt.make_repository("near")
    apt.write_deb822(mirror)
    apt.update()
    assert apt.mirror() == (0, mirror)


def test_neither_security_updates_nor_other_vendors(apt):
    mirror = apt.make_repository("near")
    apt.write_lines(
        apt.make_repository("security", label="Debian-Security"), apt.make_repository("other", origin="Other"), mirror
    )
    apt.update()
    assert apt.mirror() == (0, mirror)


def test_the_environment_has_the_last_word(apt):
    apt.write_lines(apt.make_repository("near"))
    apt.update()
    assert apt.mirror(DEBIAN_MIRROR="http://mirror.invalid/debian") == (0, "http://mirror.invalid/debian")


def test_no_mirror(apt):
    assert apt.mirror() == (1, "")
