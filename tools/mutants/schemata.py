# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""Writes one source that contains all its mutants. A number chooses at run time which of them is alive.

Each place where mutants are becomes an expression or statement that asks for the number. Lines keep their numbers, so
that messages of the compiler lead to the place.
"""

import dataclasses
import re

_COMMENT_OR_TEXT = re.compile(rb'//[^\n]*|/\*.*?\*/|"(?:[^"\\]|\\.)*"', re.DOTALL)
# The macro of Qt accepts nothing but a literal.
_TABLE_PRELUDE = b"#undef QStringLiteral\n#define QStringLiteral(text) QString::fromUtf8(text)\n#line 1\n"


@dataclasses.dataclass
class Piece:
    """Output that belongs to a mutant, by offsets."""
    start: int
    end: int
    mutants: list


class Schema:
    """The text of a source with its mutants, and which output belongs to which of them."""

    def __init__(self, source, mutants, header, is_table=False):
        """A table of texts is included inside of an expression, by a source that includes the header itself."""
        self.source, self.pieces = source, []
        self._prelude = _TABLE_PRELUDE if is_table else f'#include "{header}"\n#line 1\n'.encode()
        self._out = bytearray(self._prelude)
        self._sites = {}
        self._inserts = {}  # by offset: what is inserted before, and how many bytes of the source it replaces
        for mutant in mutants:
            if mutant.site is not None:
                self._sites.setdefault(mutant.site, []).append(mutant)
                if mutant.declaration is not None:
                    self._make_variable(mutant.declaration)
            elif mutant.body is not None:
                text = self._inserts.get(mutant.body + 1, (b"", 0))[0]
                self._inserts[mutant.body + 1] = (text + b" (void)MutantIs(%d);" % mutant.index, 0)
        self._order = sorted(self._sites, key=lambda site: (site[0], -site[1]))
        self._write(0, len(source), 0)

    @property
    def text(self):
        return bytes(self._out)

    def _make_variable(self, declaration):
        """What depends on the number is no constant expression."""
        start = self.source.index(b"constexpr", declaration[0])
        is_function = re.match(rb"constexpr [^=;{]*\)\s*(const)?\s*(noexcept)?\s*\{", self.source[start:declaration[1]])
        self._inserts[start] = (b"inline" if is_function else b"const", len(b"constexpr"))

    def _write(self, start, end, position):
        """Writes source from start to end with the sites from this position on; returns the next site's position."""
        while position < len(self._order) and self._order[position][0] < end:
            site = self._order[position]
            if site[1] > end:  # half outside: cannot happen in a tree
                raise ValueError(f"overlapping sites at {site}")
            self._copy(start, site[0])
            start = site[1]
            position = self._write_site(site, position)
        self._copy(start, end)
        return position

    def _write_site(self, site, position):
        mutants = sorted(self._sites[site], key=lambda mutant: not mutant.statement)
        whole = len(self._out)
        for mutant in mutants:
            first = len(self._out)
            if mutant.statement:
                self._out += b"if (MutantIs(%d)) {} else " % mutant.index
            else:
                self._out += b"(MutantIs(%d) ? (%s) : " % (mutant.index, self._alternative(mutant))
            self.pieces.append(Piece(first, len(self._out), [mutant]))
        expressions = [mutant for mutant in mutants if not mutant.statement]
        self._out += b"(" if expressions else b""
        position = self._write(site[0], site[1], position + 1)
        self._out += b")" * (len(expressions) + 1) if expressions else b""
        self.pieces.append(Piece(whole, len(self._out), mutants))
        return position

    def _alternative(self, mutant):
        """The changed expression on one line."""
        text = mutant.alternative
        if text is None:
            start, end = mutant.site
            text = self.source[start:mutant.start] + mutant.text.encode() + self.source[mutant.end:end]
        else:
            text = text.encode()
        text = _COMMENT_OR_TEXT.sub(lambda match: match.group() if match.group()[:1] == b'"' else b" ", text)
        return text.replace(b"\n", b" ")

    def _copy(self, start, end):
        for offset in sorted(self._inserts):
            if start <= offset < end:
                text, replaced = self._inserts[offset]
                self._out += self.source[start:offset] + text
                start = offset + replaced
        self._out += self.source[start:end]

    def mutants_at(self, line, column):
        """The mutants that a message of the compiler is about: those of the smallest piece, or of the declaration."""
        lines = self.text[len(self._prelude):].split(b"\n")
        if line < 1 or line > len(lines):
            return []
        offset = len(self._prelude) + sum(len(text) + 1 for text in lines[:line - 1]) + column - 1
        around = [piece for piece in self.pieces if piece.start <= offset < piece.end]
        if around:
            return min(around, key=lambda piece: piece.end - piece.start).mutants
        return self.mutants_of_line(line)

    def mutants_of_line(self, line):
        """The mutants of this line and of the constant that is declared around or at it."""
        found = []
        for mutant in (one for mutants in self._sites.values() for one in mutants):
            first, last = mutant.declaration or mutant.site
            if self.source.count(b"\n", 0, first) + 1 <= line <= self.source.count(b"\n", 0, last) + 1:
                found.append(mutant)
        return found
