# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""The command line of script/mutants. Started by itself, it only checks the command line."""

import argparse
import os
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]


def fail(message):
    print(f"mutants: {message}; see -h", file=sys.stderr)
    sys.exit(2)


class Parser(argparse.ArgumentParser):
    def error(self, message):
        fail(message)


def _parser():
    parser = Parser(prog="script/mutants", description="Changes src/ in small ways and checks that tests "
                    "notice. Builds in build-mutants/. Results are kept in build-mutants/results.json; the next run "
                    "continues.")
    parser.add_argument("files", nargs="*", metavar="FILE", help="a file or folder below src/; default: all of src/")
    parser.add_argument("--changed", nargs="?", const="main", metavar="BASE",
                        help="only the lines that differ from the branch BASE, by default main")
    parser.add_argument("--quick", action="store_true",
                        help="only unit tests; mutants that they do not catch stay undecided")
    parser.add_argument("--tests", default="", metavar="REGEX",
                        help="only tests with these names; mutants that they do not catch stay undecided")
    parser.add_argument("--again", action="store_true", help="try those again that survived")
    parser.add_argument("--list", action="store_true", help="only list the mutants")
    parser.add_argument("-j", dest="jobs", type=int, default=2 * (os.cpu_count() or 1), metavar="N",
                        help="run N tests at the same time; default: twice the number of cores")
    return parser


def read():
    """The arguments; ends the program if they are wrong."""
    arguments = _parser().parse_args()
    if arguments.jobs < 1:
        fail("-j takes a number from 1")
    try:
        re.compile(arguments.tests)
    except re.error as error:
        fail(f"--tests: {error}")
    if arguments.changed is not None and arguments.files:
        fail("--changed takes no files")
    paths = [pathlib.Path(os.path.relpath(os.path.abspath(name), ROOT)) for name in arguments.files or [ROOT / "src"]]
    for name, path in zip(arguments.files, paths):
        if path.parts[:1] != ("src",) or not (ROOT / path).exists():
            fail(f"{name} is no file or folder of src/")
    arguments.files = paths
    if arguments.changed is not None and subprocess.run(
            ["git", "rev-parse", "--verify", "--quiet", f"{arguments.changed}^{{commit}}"], cwd=ROOT, check=False,
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode != 0:
        fail(f"{arguments.changed} is no branch or commit")
    return arguments


if __name__ == "__main__":
    read()
