# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""Finds the mutants of a C++ source in its syntax tree."""

import re

import clang.cindex
from clang.cindex import CursorKind, TypeKind

import mutant as mutants

_LIBRARY = "libclang-19.so.1"
_COMPARISONS = {"<": ("<=", ">="), "<=": ("<", ">"), ">": (">=", "<="), ">=": (">", "<"), "==": ("!=",), "!=": ("==",)}
_ARITHMETIC = {"+": "-", "-": "+", "*": "/", "/": "*", "%": "*", "<<": ">>", ">>": "<<", "&": "|", "|": "&", "^": "&",
               "+=": "-=", "-=": "+=", "*=": "/=", "/=": "*=", "|=": "&=", "&=": "|=", "<<=": ">>=", ">>=": "<<="}
_LOGIC = {"&&": "||", "||": "&&"}
_FUNCTIONS = (CursorKind.FUNCTION_DECL, CursorKind.CXX_METHOD, CursorKind.CONSTRUCTOR, CursorKind.DESTRUCTOR,
              CursorKind.FUNCTION_TEMPLATE, CursorKind.CONVERSION_FUNCTION)
_BINARY = (CursorKind.BINARY_OPERATOR, CursorKind.COMPOUND_ASSIGNMENT_OPERATOR, CursorKind.CALL_EXPR)
_WRAPPERS = (CursorKind.UNEXPOSED_EXPR, CursorKind.PAREN_EXPR)
_SYMMETRIC = ("min", "max")
_TEXT_MACROS = ("QStringLiteral", "QByteArrayLiteral")
_COMMENT = re.compile(rb"//[^\n]*|/\*.*?\*/", re.DOTALL)
_INTEGER = re.compile(r"(0[xX][0-9a-fA-F']+|[0-9][0-9']*)([uUlL]*)$")
# A time that is a thousandth longer makes no difference that a test could see.
_TIME = re.compile(r"(Ms|Seconds|Minutes|MSec)$")


def parse(path, arguments):
    """The syntax tree of a source."""
    if not clang.cindex.Config.loaded:
        clang.cindex.Config.set_library_file(_LIBRARY)
    return clang.cindex.Index.create().parse(
        path, args=arguments, options=clang.cindex.TranslationUnit.PARSE_DETAILED_PROCESSING_RECORD)


def _range(cursor):
    return cursor.extent.start.offset, cursor.extent.end.offset


def _strip(cursor):
    """The expression without the casts and brackets around it."""
    while cursor.kind in _WRAPPERS:
        children = list(cursor.get_children())
        if len(children) != 1:
            break
        cursor = children[0]
    return cursor


class Finder:
    """Walks through the syntax tree of one source and collects mutants."""

    def __init__(self, unit, file, source):
        self.file, self.source, self.found = file, source, []
        self.path = unit.spelling
        self.macros = []
        self._functions, self._body, self._declaration, self._time = [], None, None, False
        for cursor in unit.cursor.get_children():
            if not self._is_here(cursor):
                continue
            if cursor.kind == CursorKind.MACRO_INSTANTIATION:
                self.macros.append(_range(cursor))
                if cursor.spelling in _TEXT_MACROS:
                    self._texts_in_macro(cursor)
        for cursor in unit.cursor.get_children():
            if self._is_here(cursor) and not cursor.kind.is_preprocessing():
                self._visit(cursor, None)

    def _is_here(self, cursor):
        return cursor.location.file is not None and cursor.location.file.name == self.path

    def _in_macro(self, start, end):
        return any(first <= start and end <= last for first, last in self.macros)

    def _text(self, start, end):
        return self.source[start:end].decode()

    def _add(self, kind, start, end, text, site, **schema):
        function = "::".join(self._functions)
        self.found.append(mutants.make(self.source, self.file, start, end, text, kind, function, site=site,
                                       declaration=self._declaration, body=self._body, **schema))

    # --- the walk ---

    def _visit(self, cursor, parent):
        start, end = _range(cursor)
        kind = cursor.kind
        if kind in (CursorKind.STATIC_ASSERT, CursorKind.CXX_UNARY_EXPR, CursorKind.ENUM_DECL) or start >= end:
            return
        if self._in_macro(start, end) and not kind.is_declaration():
            return
        before = self._functions, self._body, self._declaration, self._time
        if kind.is_declaration():
            self._enter_declaration(cursor)
        if parent is not None and parent.kind in (CursorKind.COMPOUND_STMT, CursorKind.CASE_STMT,
                                                  CursorKind.DEFAULT_STMT):
            self._statement(cursor)
        self._expression(cursor)
        for child in self._parts(cursor):
            self._visit(child, cursor)
        self._functions, self._body, self._declaration, self._time = before

    def _enter_declaration(self, cursor):
        start, end = _range(cursor)
        if cursor.kind in _FUNCTIONS:
            self._functions = self._functions + [cursor.spelling]
            for child in cursor.get_children():
                if child.kind == CursorKind.COMPOUND_STMT:
                    self._body = child.extent.start.offset
        elif cursor.spelling and not self._body:
            self._functions = self._functions + [cursor.spelling]
        if re.match(r"(static |inline |\[\[\w+\]\] )*constexpr\b", self._text(start, end)):
            self._declaration = (start, end)
            self._body = None
        if cursor.kind in (CursorKind.VAR_DECL, CursorKind.FIELD_DECL):
            self._time = bool(_TIME.search(cursor.spelling))

    def _parts(self, cursor):
        """The children in which mutants are looked for: no types, no case labels, no names of variables."""
        children = list(cursor.get_children())
        if cursor.kind == CursorKind.CASE_STMT:
            return children[-1:]
        if cursor.kind in (CursorKind.VAR_DECL, CursorKind.FIELD_DECL):
            # Arguments of templates come before the name, sizes of arrays before a bracket.
            return [child for child in children if child.extent.start.offset >= cursor.location.offset and
                    not self.source[child.extent.end.offset:].lstrip().startswith(b"]")]
        if cursor.kind in (CursorKind.PARM_DECL, CursorKind.TYPEDEF_DECL, CursorKind.TYPE_ALIAS_DECL):
            return []
        return children

    # --- statements ---

    def _statement(self, cursor):
        start, end = _range(cursor)
        inner = _strip(cursor)
        removable = inner.kind in (CursorKind.CALL_EXPR, CursorKind.COMPOUND_ASSIGNMENT_OPERATOR,
                                   CursorKind.CXX_DELETE_EXPR, CursorKind.BREAK_STMT, CursorKind.CONTINUE_STMT) or (
            inner.kind == CursorKind.BINARY_OPERATOR and inner.spelling == "=") or (
            inner.kind == CursorKind.UNARY_OPERATOR and self._text(start, end)[:2] in ("++", "--")) or (
            inner.kind == CursorKind.RETURN_STMT and not list(inner.get_children()))
        if removable:
            self._add("removed statement", start, end, "", (start, end), statement=True)
        elif cursor.kind == CursorKind.DECL_STMT and re.search(r"\b\w*(Locker|lock_guard|unique_lock)\b",
                                                               self._text(start, end)):
            self._add("removed lock", start, end, "", None)

    # --- expressions ---

    def _expression(self, cursor):
        kind = cursor.kind
        if kind in _BINARY:
            self._binary(cursor)
        if kind == CursorKind.CALL_EXPR:
            self._swapped_arguments(cursor)
        elif kind == CursorKind.UNARY_OPERATOR:
            self._unary(cursor)
        elif kind in (CursorKind.INTEGER_LITERAL, CursorKind.FLOATING_LITERAL):
            self._number(cursor)
        elif kind == CursorKind.CXX_BOOL_LITERAL_EXPR:
            start, end = _range(cursor)
            self._add("boolean", start, end, "false" if self._text(start, end) == "true" else "true", (start, end))
        elif kind == CursorKind.STRING_LITERAL:
            self._string(*_range(cursor), _range(cursor))
        elif kind == CursorKind.DECL_REF_EXPR:
            self._enumerator(cursor)
        elif kind in (CursorKind.IF_STMT, CursorKind.WHILE_STMT, CursorKind.CONDITIONAL_OPERATOR):
            self._condition(next(iter(cursor.get_children())))
        elif kind == CursorKind.RETURN_STMT:
            for child in cursor.get_children():
                if child.type.get_canonical().kind == TypeKind.BOOL:
                    self._condition(child)
        elif kind == CursorKind.SWITCH_STMT:
            self._labels(cursor)

    def _operator(self, cursor):
        """The operands of a binary operator and the range and spelling of the operator between them."""
        children = list(cursor.get_children())
        if len(children) < 2:
            return None
        left, right = children[0], children[-1]
        start, end = left.extent.end.offset, right.extent.start.offset
        between = _COMMENT.sub(lambda match: b" " * len(match.group()), self.source[start:end])
        name = between.strip()
        if not name or start >= end:
            return None
        start += between.index(name)
        return left, right, start, start + len(name), name.decode()

    def _binary(self, cursor):
        parts = self._operator(cursor)
        if parts is None:
            return
        left, right, start, end, name = parts
        site = _range(cursor)
        for other in _COMPARISONS.get(name, ()):
            self._add("comparison", start, end, other, site)
        if name in _LOGIC:
            self._add("boolean", start, end, _LOGIC[name], site)
            self._add("operand alone", *site, self._text(*_range(left)), site)
            self._add("operand alone", *site, self._text(*_range(right)), site)
        elif name in _ARITHMETIC and self._is_arithmetic(left) and self._is_arithmetic(right):
            self._add("arithmetic", start, end, _ARITHMETIC[name], site)

    @staticmethod
    def _is_arithmetic(cursor):
        kind = cursor.type.get_canonical().kind
        return TypeKind.BOOL.value <= kind.value <= TypeKind.LONGDOUBLE.value or kind in (
            TypeKind.DEPENDENT, TypeKind.POINTER, TypeKind.ENUM) or "QFlags" in cursor.type.get_canonical().spelling

    def _unary(self, cursor):
        start, end = _range(cursor)
        text = self._text(start, end)
        if text[:1] == "!":
            self._add("boolean", start, start + 1, "", (start, end))
        elif text[:2] in ("++", "--"):
            self._add("arithmetic", start, start + 2, "--" if text[:2] == "++" else "++", (start, end))
        elif text[:1] in "-~":
            self._add("arithmetic", start, start + 1, "", (start, end))

    def _number(self, cursor):
        start, end = _range(cursor)
        text = self._text(start, end)
        match = _INTEGER.match(text)
        if cursor.kind == CursorKind.FLOATING_LITERAL:
            self._add("constant", start, end, f"({text} + 1)", (start, end))
        elif match:
            value, suffix = int(match[1].replace("'", ""), 0 if match[1][:2].lower() == "0x" else 10), match[2]
            others = (value * 2, value // 2) if self._time and value > 1 else (value + 1, value - 1)
            for other in others:
                if other >= 0:
                    number = hex(other) if match[1][:2].lower() == "0x" else str(other)
                    self._add("constant", start, end, number + suffix, (start, end))

    def _string(self, start, end, site):
        quote = self.source.find(b'"', start, end)
        if quote >= 0 and self.source[quote - 1:quote] != b"R":
            self._add("text", quote, quote + 1, '"~', site)

    def _texts_in_macro(self, cursor):
        start, end = _range(cursor)
        self._functions, self._body, self._declaration = [cursor.spelling], None, None
        self._string(start, end, (start, end))

    def _enumerator(self, cursor):
        target = cursor.referenced
        if target is None or target.kind != CursorKind.ENUM_CONSTANT_DECL:
            return
        names = [child.spelling for child in target.semantic_parent.get_children()
                 if child.kind == CursorKind.ENUM_CONSTANT_DECL]
        if len(names) < 2:
            return
        position = names.index(target.spelling)
        other = names[position + 1] if position + 1 < len(names) else names[position - 1]
        start, end = _range(cursor)
        if self._text(start, end).endswith(target.spelling):
            self._add("constant", end - len(target.spelling), end, other, (start, end))

    def _condition(self, cursor):
        """Negates a condition that no other operator negates."""
        start, end = _range(cursor)
        inner = _strip(cursor)
        if cursor.kind.is_declaration() or cursor.kind == CursorKind.DECL_STMT or self._in_macro(start, end):
            return
        name = (self._operator(inner) or [""])[-1] if inner.kind in _BINARY else ""
        if name in _COMPARISONS or name in _LOGIC or inner.kind == CursorKind.CXX_BOOL_LITERAL_EXPR:
            return
        if not self._text(start, end).startswith("!"):
            self._add("boolean", start, end, f"!({self._text(start, end)})", (start, end))

    def _swapped_arguments(self, cursor):
        if cursor.spelling in _SYMMETRIC:
            return
        arguments = [argument for argument in cursor.get_arguments() if argument is not None]
        start, end = _range(cursor)
        for first, second in zip(arguments, arguments[1:]):
            one, two = _range(first), _range(second)
            if not start <= one[0] < one[1] < two[0] < two[1] <= end:
                continue
            same = _strip(first).type.get_canonical().spelling.replace("const ", "") == \
                _strip(second).type.get_canonical().spelling.replace("const ", "")
            if same and self._text(*one) != self._text(*two):
                swapped = self._text(*two) + self._text(one[1], two[0]) + self._text(*one)
                self._add("swapped arguments", one[0], two[1], swapped, (start, end))

    # --- case labels ---

    def _labels(self, switch):
        """Removes each label and moves the ends of ranges. The schema changes the value that chooses the case."""
        children = list(switch.get_children())
        cases = [(case, self._values(case)) for case in self._cases(children[-1])]
        cases = [(case, values) for case, values in cases if values is not None]
        # A label that a macro makes has its place in another text.
        written = [case for case in cases if self._text(*_range(case[0])).startswith("case")]
        taken = {value for _, (first, last) in cases for value in range(first, last + 1)}
        self._condition_site = _range(children[0])
        for case, (first, last) in written:
            start = case.extent.start.offset
            label_end = self.source.index(b":", self._label_end(case)) + 1
            if first == last:
                self._label(start, label_end, "", f"v == {first} ? {self._free(taken)} : v")
            if not self._text(start, label_end).replace("case", "").strip(" :")[0].isdigit():
                continue
            self._moved_ends(case, first, last, taken)

    def _moved_ends(self, case, first, last, taken):
        literals = [child for child in list(case.get_children())[:-1]]
        unused = self._free(taken)
        if first == last:
            if first + 1 not in taken:
                self._label(*_range(literals[0]), hex(first + 1),
                            f"v == {first} ? {unused} : v == {first + 1} ? {first} : v")
            return
        for literal, value, step in ((literals[0], first, -1), (literals[1], last, 1)):
            if value + step not in taken:
                self._label(*_range(literal), hex(value + step), f"v == {value + step} ? {value} : v")
            self._label(*_range(literal), hex(value - step), f"v == {value} ? {unused} : v")

    def _label(self, start, end, text, choice):
        first, last = self._condition_site
        value = f"([](auto w) {{ const auto v = static_cast<long>(w); " \
            f"return static_cast<decltype(w)>({choice}); }}({self._text(first, last)}))"
        self._add("case label", start, end, text, (first, last), alternative=value)

    @staticmethod
    def _free(taken):
        return max(taken) + 1000

    def _cases(self, cursor):
        for child in cursor.get_children():
            if child.kind == CursorKind.CASE_STMT:
                yield child
            if child.kind in (CursorKind.CASE_STMT, CursorKind.COMPOUND_STMT, CursorKind.DEFAULT_STMT):
                yield from self._cases(child)

    @staticmethod
    def _label_end(case):
        return list(case.get_children())[-2].extent.end.offset

    def _values(self, case):
        """The first and last value of a case label, or None if they are not known."""
        values = []
        for child in list(case.get_children())[:-1]:
            inner = _strip(child)
            text = self._text(*_range(inner))
            if inner.referenced is not None and inner.referenced.kind == CursorKind.ENUM_CONSTANT_DECL:
                values.append(inner.referenced.enum_value)
            elif _INTEGER.match(text):
                values.append(int(_INTEGER.match(text)[1], 0))
            else:
                return None
        return (values[0], values[-1]) if values else None


_ROW_TEXT = re.compile(rb'"(?:[^"\\\n]|\\.)*"')


def find_in_table(file, source):
    """The mutants of a table of texts that sources include."""
    for match in _ROW_TEXT.finditer(source):
        if source.rfind(b"\n", 0, match.start()) < source.rfind(b"//", 0, match.start()):
            continue
        yield mutants.make(source, file, match.start(), match.start() + 1, '"~', "text", "", site=match.span())


def find(path, file, arguments):
    """The mutants of a source, in the order of the file."""
    with open(path, "rb") as opened:
        source = opened.read()
    if file.endswith(".inc"):
        return list(find_in_table(file, source))
    unit = parse(path, arguments)
    errors = [str(entry) for entry in unit.diagnostics if entry.severity >= clang.cindex.Diagnostic.Error]
    if errors:
        raise ValueError(f"{file} does not parse: {errors[0]}")
    return sorted(Finder(unit, file, source).found, key=lambda found: (found.start, found.end))
