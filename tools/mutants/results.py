# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""The results, in a file that can be continued; the list of mutants that make no difference; the table."""

import json
import tomllib

CAUGHT = ("caught", "time limit")
# Neither caught nor survived: there is no such program, or it is the original.
NONE = ("does not compile", "same code")


class Results:
    """What became of each mutant, by its key."""

    def __init__(self, path):
        self.path = path
        self.entries = json.loads(path.read_text(encoding="utf-8")) if path.exists() else {}

    def state(self, mutant):
        return self.entries.get(mutant.key, {}).get("state")

    def is_open(self, mutant, is_partial):
        """Whether this mutant still has to be tried. A run with all tests also decides what is undecided."""
        state = self.state(mutant)
        return state is None or (state == "undecided" and not is_partial)

    def store(self, mutant, state, test=None):
        self.entries[mutant.key] = {"state": state, "by": test, "file": mutant.file, "line": mutant.line,
                                    "function": mutant.function, "kind": mutant.kind, "before": mutant.before,
                                    "after": mutant.after}
        new = self.path.with_suffix(".new")
        new.write_text(json.dumps(self.entries, indent=0, ensure_ascii=False), encoding="utf-8")
        new.replace(self.path)


class Accepted:
    """The checked-in list of mutants that make no difference, each with the reason why."""

    def __init__(self, path):
        self.entries = tomllib.loads(path.read_text(encoding="utf-8")).get("mutant", []) if path.exists() else []
        for entry in self.entries:
            missing = {"file", "before", "after", "reason"} - set(entry)
            if missing:
                raise ValueError(f"{path.name}: an entry of {entry.get('file')} lacks {', '.join(sorted(missing))}")

    @staticmethod
    def _matches(entry, mutant):
        return all(entry.get(name, getattr(mutant, name)) == getattr(mutant, name)
                   for name in ("file", "before", "after", "function", "ordinal"))

    def covers(self, mutant):
        return any(self._matches(entry, mutant) for entry in self.entries)

    def stale(self, mutants, results):
        """Entries of these mutants' files that match no mutant, or one that a test catches."""
        files = {mutant.file for mutant in mutants}
        for entry in self.entries:
            matching = [mutant for mutant in mutants if self._matches(entry, mutant)]
            if entry["file"] in files and not matching:
                yield entry, "matches no mutant any more"
            elif matching and all(results.state(mutant) in CAUGHT for mutant in matching):
                yield entry, "is caught by a test"


COLUMNS = ("mutants", "caught", "by time", "no difference", "survived", "undecided")


def count(mutants, results, accepted):
    """The figures of these mutants, in the order of the columns."""
    figures = dict.fromkeys(COLUMNS, 0)
    for mutant in mutants:
        state = results.state(mutant)
        if state is None or state in NONE:
            continue
        figures["mutants"] += 1
        figures["caught"] += state in CAUGHT
        figures["by time"] += state == "time limit"
        if state not in CAUGHT:
            column = "no difference" if accepted.covers(mutant) else \
                "undecided" if state == "undecided" else "survived"
            figures[column] += 1
    return figures


def table(mutants, results, accepted):
    """A row for each file and one for all."""
    files = sorted({mutant.file for mutant in mutants})
    rows = [(file, count([one for one in mutants if one.file == file], results, accepted)) for file in files]
    rows.append(("all", count(mutants, results, accepted)))
    width = max(len(name) for name, _ in rows)
    yield " " * width + "".join(f"{name:>15}" for name in COLUMNS)
    for name, figures in rows:
        share = f"{100 * figures['caught'] / figures['mutants']:8.1f} %" if figures["mutants"] else ""
        yield f"{name:{width}}" + "".join(f"{figures[column]:15}" for column in COLUMNS) + share


def survivors(mutants, results, accepted):
    """The mutants that no test caught and no reason excuses."""
    return [mutant for mutant in mutants
            if results.state(mutant) in ("survived", "undecided") and not accepted.covers(mutant)]
