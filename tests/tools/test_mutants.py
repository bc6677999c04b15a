# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""The tool that makes mutants: which it makes, how one program contains them all, and what it keeps of a run."""

import os
import pathlib
import subprocess
import sys

import pytest

TOOL = pathlib.Path(__file__).parents[2] / "tools/mutants"
sys.path.insert(0, str(TOOL))

import mutant as mutants  # noqa: E402 (the tool's folder is no package)
import results  # noqa: E402
import schemata  # noqa: E402

SOURCE = b"""int twice(int x)
{
    return x +
        1;
}
int main()
{
    int code = 3;
    code = twice(code); // a comment
    return code;
}
"""


def make(before, text, site=None, source=SOURCE, **schema):
    """The mutant that replaces one piece of the source, inside the piece that is its site."""
    start = source.index(before)
    first = source.index(site or before)
    return mutants.make(source, "src/x.cpp", start, start + len(before), text, "kind", "main",
                        site=(first, first + len(site or before)), **schema)


def run(program, **environment):
    return subprocess.run([program], env={**os.environ, **environment}, check=False).returncode


@pytest.fixture(scope="module")
def program(tmp_path_factory):
    """A program with four mutants, 10 to 13."""
    folder = tmp_path_factory.mktemp("program")
    found = mutants.number([
        make(b"+", "-", b"x +\n        1"),
        make(b"1", "5"),
        make(b"3", "7"),
        make(b"code = twice(code)", "", statement=True)], 10)
    schema = schemata.Schema(SOURCE, found, TOOL / "MutantIs.h")
    (folder / "x.cpp").write_bytes(schema.text)
    subprocess.run(["g++", "-std=c++17", "-Werror", "-o", folder / "x", folder / "x.cpp", TOOL / "MutantIs.cpp"],
                   check=True)
    return folder / "x"


@pytest.mark.parametrize("number, code", [(None, 4), (10, 2), (11, 8), (12, 8), (13, 3), (14, 4)])
def test_a_number_chooses_the_mutant(program, number, code):
    assert run(program, **({} if number is None else {"MUTANT": str(number)})) == code


def test_the_program_marks_what_it_reaches(program, tmp_path):
    marks = tmp_path / "marks"
    marks.write_bytes(bytes(14))
    assert run(program, MUTANT="13", MUTANTS_REACHED=str(marks)) == 3
    assert [index for index, mark in enumerate(marks.read_bytes()) if mark] == [12, 13]


def test_lines_keep_their_numbers():
    found = mutants.number([make(b"x +\n        1", "x // no\n", alternative="x // no\n"), make(b"1", "5")], 0)
    schema = schemata.Schema(SOURCE, found, "MutantIs.h")
    lines = schema.text.split(b"\n")
    assert lines[:2] == [b'#include "MutantIs.h"', b"#line 1"]
    assert len(lines) == len(SOURCE.split(b"\n")) + 2
    assert b"code = twice(code); // a comment" in lines[2 + 8]


def test_a_message_leads_to_the_mutant():
    found = mutants.number([make(b"+", "-", b"x +\n        1"), make(b"+", "*", b"x +\n        1"),
                            make(b"1", "5"), make(b"3", "7")], 0)
    schema = schemata.Schema(SOURCE, found, "MutantIs.h")
    line = schema.text.split(b"\n")[2 + 2]
    assert schema.mutants_at(3, line.index(b"(x -") + 1) == [found[0]]
    assert schema.mutants_at(3, line.index(b"(x *") + 1) == [found[1]]
    assert schema.mutants_at(8, 1) == [found[3]]
    assert not schema.mutants_at(10, 1)


def test_constants_become_variables():
    source = b"constexpr int A = 1;\nconstexpr int F() { return 2; }\n"
    one = make(b"1", "2", source=source, declaration=(0, 20))
    two = make(b"2", "3", source=source, declaration=(21, len(source)))
    assert schemata.Schema(source, mutants.number([one, two], 0), "h").text.split(b"\n")[2:] == [
        b"const int A = (MutantIs(0) ? (2) : (1));", b"inline int F() { return (MutantIs(1) ? (3) : (2)); }", b""]


def test_keys_do_not_depend_on_line_numbers():
    moved = b"// one more line\n" + SOURCE
    assert make(b"3", "7").key == make(b"3", "7", source=moved).key
    assert make(b"3", "7").key != make(b"3", "8").key


def test_equal_lines_have_different_keys():
    source = b"    return 0;\n    return 0;\n"
    found = [mutants.make(source, "f", at, at + 1, "1", "constant", "g", site=(at, at + 1)) for at in (11, 25)]
    assert len({mutant.key for mutant in mutants.number(found + found[:1], 5)}) == 2
    assert [mutant.index for mutant in mutants.number(found, 5)] == [5, 6]


@pytest.fixture
def kept(tmp_path):
    return results.Results(tmp_path / "results.json")


def accepted(tmp_path, **entry):
    path = tmp_path / "no-difference.toml"
    path.write_text("[[mutant]]\n" + "".join(f'{name} = "{value}"\n' for name, value in entry.items()))
    return results.Accepted(path)


def test_results_are_continued(kept):
    first, second, third = make(b"3", "7"), make(b"1", "5"), make(b"+", "-")
    kept.store(first, "caught", "tst_x")
    kept.store(second, "undecided")
    again = results.Results(kept.path)
    assert [again.is_open(mutant, True) for mutant in (first, second, third)] == [False, False, True]
    assert [again.is_open(mutant, False) for mutant in (first, second, third)] == [False, True, True]


def test_figures(kept, tmp_path):
    found = [make(b"3", str(number)) for number in range(10, 16)]
    states = ("caught", "time limit", "survived", "survived", "same code", "does not compile")
    for mutant, state in zip(found, states):
        kept.store(mutant, state)
    reason = accepted(tmp_path, file="src/x.cpp", before="int code = 3;", after="int code = 12;", reason="why")
    assert results.count(found, kept, reason) == {
        "mutants": 4, "caught": 2, "by time": 1, "no difference": 1, "survived": 1, "undecided": 0}
    assert [mutant.after for mutant in results.survivors(found, kept, reason)] == ["int code = 13;"]
    assert list(results.table(found, kept, reason))[-1].split() == ["all", "4", "2", "1", "1", "1", "0", "50.0", "%"]


def test_stale_reasons_are_reported(kept, tmp_path):
    mutant = make(b"3", "7")
    reason = accepted(tmp_path, file="src/x.cpp", before="int code = 4;", after="int code = 7;", reason="why")
    assert [why for _, why in reason.stale([mutant], kept)] == ["matches no mutant any more"]
    reason = accepted(tmp_path, file="src/x.cpp", before="int code = 3;", after="int code = 7;", reason="why")
    assert not list(reason.stale([mutant], kept))
    kept.store(mutant, "caught", "tst_x")
    assert [why for _, why in reason.stale([mutant], kept)] == ["is caught by a test"]


def test_a_reason_is_required(tmp_path):
    with pytest.raises(ValueError, match="lacks reason"):
        accepted(tmp_path, file="src/x.cpp", before="a", after="b")


@pytest.mark.parametrize("arguments, message", [
    (["-x"], "unrecognized arguments: -x"),
    (["README.md"], "README.md is no file or folder of src/"),
    (["src/nothing.cpp"], "src/nothing.cpp is no file or folder of src/"),
    (["-j", "0"], "-j takes a number from 1"),
    (["--tests", "("], "--tests: missing ), unterminated subpattern at position 0"),
    (["--changed", "main", "src"], "--changed takes no files"),
])
def test_bad_usage(arguments, message):
    result = subprocess.run([sys.executable, "-B", TOOL / "arguments.py", *arguments], check=False, text=True,
                            stdout=subprocess.PIPE, stderr=subprocess.PIPE)
    assert (result.returncode, result.stdout, result.stderr) == (2, "", f"mutants: {message}; see -h\n")


# --- the operators; only script/mutants installs the syntax tree's package ---

CASES = {
    "bool f(int a, int b) { return a < b; }": {"a <= b", "a >= b"},
    "bool f(bool a, bool b) { return a && b; }": {"a || b", "return a;", "return b;"},
    "int f(int a) { return a * 10; }": {"a / 10", "a * 11", "a * 9"},
    "bool f(bool a) { return !a; }": {"return a;"},
    "bool f() { return true; }": {"return false;"},
    "void g(); void f() { g(); }": {"f() { ; }"},
    "int g(int, int); int f(int a, int b) { return g(a, b); }": {"g(b, a)"},
    "const char* f() { return \"text\"; }": {"\"~text\""},
    "constexpr int PauseMs = 3000;": {"6000", "1500"},
    "int a[3];": set(),
    "enum E { A, B }; E f() { return A; }": {"return B;"},
}


@pytest.mark.parametrize("source", CASES)
def test_operators(source, tmp_path):
    pytest.importorskip("clang.cindex", reason="package python3-clang-19 is missing")
    import operators
    path = tmp_path / "x.cpp"
    path.write_text(source + "\n")
    found = mutants.number(operators.find(str(path), "src/x.cpp", ["-std=c++17"]), 0)
    assert len(found) == len(CASES[source])
    for part in CASES[source]:
        assert [mutant.after for mutant in found if part in mutant.after] != [], part


def test_labels_of_ranges_move(tmp_path):
    pytest.importorskip("clang.cindex", reason="package python3-clang-19 is missing")
    import operators
    path = tmp_path / "x.cpp"
    path.write_text("int f(int a) { switch (a) {\ncase 0x10 ... 0x12: return 1;\ncase 0x13: return 1; } return 1; }\n")
    found = [mutant.after for mutant in operators.find(str(path), "src/x.cpp", ["-std=c++17"])
             if mutant.kind == "case label"]
    assert found == ["case 0xf ... 0x12: return 1;", "case 0x11 ... 0x12: return 1;", "case 0x10 ... 0x11: return 1;",
                     "return 1; } return 1; }", "case 0x14: return 1; } return 1; }"]


def test_tables_of_texts(tmp_path):
    pytest.importorskip("clang.cindex", reason="package python3-clang-19 is missing")
    import operators
    (tmp_path / "Rows.inc").write_text('// A "comment".\nROW("a\\"b", "")\n')
    found = mutants.number(operators.find(str(tmp_path / "Rows.inc"), "src/Rows.inc", []), 4)
    schema = schemata.Schema((tmp_path / "Rows.inc").read_bytes(), found, TOOL / "MutantIs.h", is_table=True)
    (tmp_path / "Rows.inc").write_bytes(schema.text)
    # This macro accepts only a literal, like that of Qt.
    (tmp_path / "x.cpp").write_text(f"""#include "{TOOL}/MutantIs.h"
#include <string>
struct QString {{ static std::string fromUtf8(const char* text) {{ return text; }} }};
#define QStringLiteral(text) std::string("" text)
#define ROW(one, other) QStringLiteral(one), QStringLiteral(other),
const std::string texts[] = {{
#include "Rows.inc"
}};
int main() {{ return 10 * int(texts[0].size()) + int(texts[1].size()); }}
""")
    subprocess.run(["g++", "-std=c++17", "-o", tmp_path / "x", tmp_path / "x.cpp", TOOL / "MutantIs.cpp"], check=True)
    assert [run(tmp_path / "x", MUTANT=str(number)) for number in (3, 4, 5)] == [30, 40, 31]
