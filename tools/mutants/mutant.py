# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""A mutant: a small change of a source that some test should notice."""

import dataclasses
import hashlib
import re


@dataclasses.dataclass
class Mutant:
    file: str  # below the root of the project
    start: int  # the bytes of the file that the mutant replaces
    end: int
    text: str  # what replaces them
    kind: str
    function: str
    line: int  # from 1
    before: str  # the changed lines, without indentation
    after: str
    # The expression or statement that the schema replaces as a whole; None: the mutant is built on its own.
    site: tuple = None
    alternative: str = None  # what the schema puts there if not simply the changed text
    statement: bool = False
    declaration: tuple = None  # the constexpr declaration around the site
    body: int = None  # where the body of the function around it begins
    ordinal: int = 0  # among the mutants that are equal otherwise
    index: int = 0  # the number that chooses the mutant

    @property
    def key(self):
        """Place and text: stays the same when other lines change."""
        parts = (self.file, self.function, self.kind, self.before, self.after, str(self.ordinal))
        return hashlib.sha256("\0".join(parts).encode()).hexdigest()[:12]

    def place(self):
        return f"{self.file}:{self.line}"


def squeeze(text):
    """The text on one line."""
    return re.sub(r"\s+", " ", text).strip()


def make(source, file, start, end, text, kind, function, **schema):
    """A mutant that replaces the bytes from start to end of the source."""
    first = source.rfind(b"\n", 0, start) + 1
    last = source.find(b"\n", end)
    last = len(source) if last < 0 else last
    before, after = source[first:last].decode(), (source[first:start] + text.encode() + source[end:last]).decode()
    return Mutant(file, start, end, text, kind, function, source.count(b"\n", 0, start) + 1, squeeze(before),
                  squeeze(after), **schema)


def number(mutants, first):
    """Gives equal mutants different ordinals, and each its index; drops mutants that are the same change."""
    seen, changes, kept = {}, set(), []
    for mutant in mutants:
        change = (mutant.start, mutant.end, mutant.text, mutant.alternative)
        if change in changes or mutant.before == mutant.after:
            continue
        changes.add(change)
        name = (mutant.function, mutant.kind, mutant.before, mutant.after)
        mutant.ordinal = seen.get(name, 0)
        seen[name] = mutant.ordinal + 1
        mutant.index = first + len(kept)
        kept.append(mutant)
    return kept


def mutated(source, mutant):
    """The whole source with this one change."""
    return source[:mutant.start] + mutant.text.encode() + source[mutant.end:]
