# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""The copy of the source tree that contains mutants, and its builds. The source tree itself is only read."""

import filecmp
import hashlib
import json
import os
import pathlib
import pickle
import re
import shlex
import shutil
import subprocess

import mutant as mutants
import operators
import schemata

_MESSAGE = re.compile(r"^(\S+?):(\d+):(\d+): (error|note): ", re.MULTILINE)
# A file has fewer mutants. Numbers that do not depend on other files spare builds.
_NUMBERS_PER_FILE = 2000


class BuildError(Exception):
    """The copy does not build, for a reason that is not a mutant's."""


def write_if_changed(path, data):
    if not path.exists() or path.read_bytes() != data:
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(data)


class Workshop:
    def __init__(self, root, jobs):
        self.root, self.jobs = root, jobs
        self.folder = root / "build-mutants"
        self.tree = self.folder / "tree"
        # The same place below the tree as usual: a compiler cache then knows the objects of the tests.
        self.build = self.tree / "build"
        self.header = root / "tools/mutants/MutantIs.h"
        self.all_files = self._git("ls-files", "--cached", "--others", "--exclude-standard")
        self.sources = [file for file in self.all_files
                        if re.match(r"src/.*\.(cpp|h|inc)$", file) and (root / file).exists()]
        self.limit = (len(self.sources) + 1) * _NUMBERS_PER_FILE
        self.targets = ["all"]
        self._instrumented = {}  # by file

    def _git(self, *arguments):
        output = subprocess.run(["git", *arguments], cwd=self.root, check=True, stdout=subprocess.PIPE, text=True)
        return output.stdout.splitlines()

    def changed_lines(self, base):
        """The lines of src/ that differ from where this work left `base`, by file."""
        base = self._git("merge-base", base, "HEAD")[0]
        lines, file = {}, None
        for line in self._git("diff", "--unified=0", "--no-prefix", base, "--", "src"):
            if line.startswith("+++ "):
                file = line[4:]
            match = re.match(r"@@ -\S+ \+(\d+)(?:,(\d+))? @@", line)
            if match:
                first, count = int(match[1]), int(match[2] or 1)
                lines.setdefault(file, set()).update(range(first, first + count))
        return lines

    # --- the copy ---

    def copy(self):
        """Brings the copy up to date, without mutants in files that are not in use now."""
        wanted = set()
        for file in self.all_files:
            source, target = self.root / file, self.tree / file
            if not source.is_file() or file in self._instrumented:
                continue
            wanted.add(target)
            if source.is_symlink():
                target.parent.mkdir(parents=True, exist_ok=True)
                if not target.is_symlink():
                    target.symlink_to(os.readlink(source))
            elif file == "cmake/Folders.cmake":
                self._write_folders(source, target)
            elif not target.exists() or not filecmp.cmp(source, target, shallow=False):
                target.parent.mkdir(parents=True, exist_ok=True)
                shutil.copy(source, target)
        for path in self.tree.rglob("*"):
            if self.build not in path.parents and path.is_file() and path not in wanted and \
                    str(path.relative_to(self.tree)) not in self._instrumented:
                path.unlink()

    @staticmethod
    def _write_folders(source, target):
        """With shared libraries, a change of one source needs no new links of the programs."""
        text = source.read_text(encoding="utf-8")
        if text.count(" STATIC ") != 1:
            raise BuildError("cmake/Folders.cmake has no longer one STATIC library to make SHARED")
        write_if_changed(target, text.replace(" STATIC ", " SHARED ").encode())

    def configure(self):
        self._run(["cmake", "-S", self.tree, "-B", self.build, "-G", "Ninja",
                   # Compiles faster than an optimised build, and runs fast enough. As under the sanitizers, the
                   # standard library checks indices: what lies behind an array is 0 too often.
                   "-DCMAKE_BUILD_TYPE=None", "-DCMAKE_CXX_FLAGS=-D_GLIBCXX_ASSERTIONS",
                   "-DCMAKE_LINK_DEPENDS_NO_SHARED=ON",
                   f"-DCMAKE_PROJECT_BrelPrinterTool_INCLUDE={self.root}/tools/mutants/build.cmake"], "configure.log")
        self.commands = json.loads((self.build / "compile_commands.json").read_text(encoding="utf-8"))

    def _run(self, command, log):
        path = self.folder / log
        with open(path, "w", encoding="utf-8") as output:
            code = subprocess.run(command, stdout=output, stderr=subprocess.STDOUT, check=False).returncode
        if code != 0:
            raise BuildError(f"{' '.join(map(str, command[:2]))} failed, see {path}")

    def _ninja(self):
        """Builds the targets; returns the output, or None if nothing failed."""
        result = subprocess.run(["ninja", "-C", self.build, "-j", str(self.jobs), "-k", "0", *self.targets],
                                check=False, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                                errors="replace", env={**os.environ, "LC_ALL": "C.UTF-8"})
        (self.folder / "build.log").write_text(result.stdout, encoding="utf-8")
        return result.stdout if result.returncode != 0 else None

    # --- mutants ---

    def _entry(self, file):
        """The compile command of a source, or for a header that of a source in its folder."""
        path = str(self.tree / file)
        for entry in self.commands:
            if entry["file"] == path:
                return entry
        folder = str((self.tree / file).parent) + "/"
        return next(entry for entry in self.commands if entry["file"].startswith(folder))

    def _arguments(self, file):
        words = shlex.split(self._entry(file)["command"])
        kept = [word for before, word in zip([""] + words, words)
                if before == "-isystem" or word.startswith(("-I", "-D", "-std", "-isystem"))]
        return ["-xc++", *kept]

    def _found_in(self, file):
        """The mutants of a file, from the last run if it and the operators are the same."""
        cache = self.folder / "found" / (file + ".pickle")
        sources = (self.root / file, pathlib.Path(operators.__file__), pathlib.Path(mutants.__file__))
        digest = hashlib.sha256(b"".join(source.read_bytes() for source in sources)).digest()
        if cache.exists():
            known, found = pickle.loads(cache.read_bytes())
            if known == digest:
                return found
        folder = (self.root / file).parent
        if any(folder.glob("*.ui")):  # sources include what is generated from the forms
            self._run(["ninja", "-C", self.build, f"brelprintertool_{folder.name}_autogen"], "forms.log")
        found = operators.find(str(self.root / file), file, self._arguments(file))
        write_if_changed(cache, pickle.dumps((digest, found)))
        return found

    def mutants_of(self, file):
        """All mutants of a file, numbered."""
        first = _NUMBERS_PER_FILE * (1 + self.sources.index(file))
        found = mutants.number(self._found_in(file), first)
        if len(found) > _NUMBERS_PER_FILE:
            raise BuildError(f"{file} has too many mutants for one file: {len(found)}")
        return found

    def instrument(self, by_file):
        """Builds everything with the mutants of these files, each chosen at run time where that compiles."""
        for file, found in {**dict.fromkeys(self._users_of_tables(by_file), []), **by_file}.items():
            self._write_schema(file, found)
        self.copy()
        for _ in range(40):
            output = self._ninja()
            if output is None:
                return
            self._give_up_sites(output, by_file)
        raise BuildError(f"the mutants do not compile, see {self.folder}/build.log")

    def _give_up_sites(self, output, by_file):
        """Mutants that the compiler refuses at run time are built on their own."""
        refused = {}
        for path, line, column, _ in _MESSAGE.findall(output):
            real = os.path.realpath(os.path.join(self.build, path))
            file = os.path.relpath(real, self.tree)
            if file in self._instrumented:
                for mutant in self._instrumented[file].mutants_at(int(line), int(column)):
                    refused.setdefault(file, []).append(mutant)
        if not refused:
            raise BuildError(f"the copy does not build, see {self.folder}/build.log")
        for file, found in refused.items():
            for mutant in found:
                mutant.site = mutant.declaration = None
            self._write_schema(file, by_file[file])

    def _users_of_tables(self, files):
        """The sources that include one of these files that is a table."""
        tables = [f'#include "{file[len("src/"):]}"' for file in files if file.endswith(".inc")]
        return [file for file in self.sources
                if any(table in (self.root / file).read_text(encoding="utf-8") for table in tables)]

    def _write_schema(self, file, found):
        self._instrumented[file] = schemata.Schema((self.root / file).read_bytes(), found, self.header,
                                                   file.endswith(".inc"))
        write_if_changed(self.tree / file, self._instrumented[file].text)

    def build_alone(self, mutant):
        """Builds this one mutant; returns whether it compiles."""
        source = (self.root / mutant.file).read_bytes()
        (self.tree / mutant.file).write_bytes(mutants.mutated(source, mutant))
        return self._ninja() is None

    def restore(self, file):
        schema = self._instrumented.get(file)
        write_if_changed(self.tree / file, schema.text if schema else (self.root / file).read_bytes())

    def rebuild(self):
        if self._ninja() is not None:
            raise BuildError(f"the copy does not build, see {self.folder}/build.log")

    def gives_same_object(self, mutant):
        """Whether the compiler makes the same code of the mutant as of the original."""
        if not mutant.file.endswith(".cpp"):
            return False
        source = (self.root / mutant.file).read_bytes()
        return self._object(mutant.file, source) == self._object(mutant.file, mutants.mutated(source, mutant))

    def _object(self, file, text):
        path, target = self.folder / "same" / file, self.folder / "same/object.o"
        write_if_changed(path, text)
        entry = self._entry(file)
        command = shlex.split(entry["command"])
        command[command.index("-o") + 1] = str(target)
        command[command.index(entry["file"])] = str(path)
        target.unlink(missing_ok=True)
        subprocess.run([*command, "-O2"], cwd=entry["directory"], check=False, stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL)
        return target.read_bytes() if target.exists() else os.urandom(8)

    def fingerprint(self):
        """Changes when any file of the copy does."""
        digest = hashlib.sha256()
        for file in sorted(self.all_files):
            path = self.tree / file
            if path.is_file():
                digest.update(file.encode() + b"\0" + path.read_bytes())
        return digest.hexdigest()
