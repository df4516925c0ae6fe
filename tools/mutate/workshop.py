"""Builds libraries with one mistake, quickly, and runs tests against them.

A mistake is compiled into a small file with a few forms of a generated source, at -O1 and without forced inlining. The
library is linked from that file and from the objects of a finished build, in one of which all symbols are weak: so the few
forms come from the small file and everything else is as it was. The tests' programs are those of the build.
"""

import hashlib
import os
import random
import re
import resource
import shlex
import subprocess
import threading
from pathlib import Path

FORMS_IN_A_PIECE = 3
CPU_SECONDS = 40  # for a program of tests: a mistake may make a loop endless

# Tests beside those of each form: suites that a mistake in a family may show in.
SUITES = {
    "arith": "Vector*", "products": "*Product*:*Numerics*", "vectors": "*Vector*:*Norm*:*Reductions*:*Numerics*:CrossProduct*",
    "move": "*Movement*", "eigen": "*Symmetric*:*General*:*Eigen*",
    "linalg": "*LU*:*Det*:*Invert*:*Cholesky*:*QR*:*Numerics*:*Linalg*:*Trace*:*Norm*:*Accuracy*:*LargeArrays*",
}


class NotBuilt(Exception):
    """The compiler or the generator refuses the mistake."""


def run(command, **options):
    return subprocess.run(command, capture_output=True, text=True, check=False, **options)


class Workshop:
    def __init__(self, root, build, scratch, seed):
        self.root, self.build, self.scratch, self.seed = root, build, scratch, seed
        self.generated = build / "generated"
        for folder in ("right", "weak"):
            (scratch / folder).mkdir(parents=True, exist_ok=True)
        self.library = str((build / "lib/libkorm.so").resolve().relative_to(build))
        command = self.ninja("commands", self.library).strip().splitlines()[-1]
        self.link_command = shlex.split(re.search(r"&& (.*?) &&", command)[1])
        self.compile_command = self.command_for("generated/lu_decomposition_32f.cpp")
        self.users = self.users_of_headers()
        self.texts = {}
        self.lock = threading.Lock()

    def ninja(self, tool, *arguments):
        return run(["ninja", "-C", str(self.build), "-t", tool, *arguments]).stdout.replace("ninja: Entering directory", "")

    def command_for(self, source):
        command = shlex.split(self.ninja("commands", f"CMakeFiles/kormObjects.dir/{source}.o").strip().splitlines()[-1])
        flags = [word for word in command if re.match(r"-(I|D|m|f|std|-param)", word)]
        return ["g++", *flags, "-O1", "-w", "-Dalways_inline=unused", "-Dflatten=unused", "-c"]

    def users_of_headers(self):
        """For each file of src/ the sources that include it, as they are named in the build folder."""
        users = {}
        for block in self.ninja("deps").split("\n\n"):
            lines = block.strip().splitlines()
            if lines and lines[0].startswith("CMakeFiles/kormObjects.dir/") and len(lines) > 1:
                for header in lines[1:]:
                    path = (self.build / header.strip()).resolve()
                    if path.is_relative_to(self.root / "src"):
                        users.setdefault(str(path.relative_to(self.root)), []).append(lines[1].strip())
        return users

    # --- Pieces: a few forms of a source ---

    def sections(self, text):
        """Head, forms by name, foot. The functions of a form stand together under its name."""
        parts = re.split(r"^(?=// --- (?:\w+):)", text, flags=re.MULTILINE)
        head, forms = parts[0], parts[1:]
        if not forms:
            return text, {}, ""
        at = forms[-1].index('}  // extern "C"')
        foot, forms[-1] = forms[-1][at:], forms[-1][:at]
        return head, {re.match(r"// --- (\w+)", form)[1]: form for form in forms}, foot

    def pieces_of(self, source):
        """The names of forms of each piece of a source. One that has no forms of its own is one piece, and some forms that
        may use it."""
        names = sorted(self.sections((self.build / source).read_text())[1])
        random.Random(f"{self.seed} {source}").shuffle(names)
        if not names:
            return [self.forms_of(self.family_of(source), 12)]
        return [tuple(names[i : i + FORMS_IN_A_PIECE]) for i in range(0, len(names), FORMS_IN_A_PIECE)]

    def family_of(self, source):
        if source.startswith("../"):
            return Path(source).parts[-2]
        includes = re.findall(r'#include "(\w+)/', (self.build / source).read_text())
        return next((name for name in includes if name not in ("entry", "kernel")), "entry")

    def others(self, source, names, wanted=9):
        """More forms of a source."""
        return tuple(name for piece in self.pieces_of(source) for name in piece if name not in names)[:wanted]

    def forms_of(self, family, wanted):
        """Some forms of a family, or of all, by chance."""
        sources = sorted(source for source in self.users["src/entry/variant.h"] if source.startswith("generated/"))
        names = [name for source in sources if family == "entry" or self.family_of(source) == family
                 for name in self.sections((self.build / source).read_text())[1]]
        return tuple(random.Random(f"{self.seed} {family}").sample(names, min(wanted, len(names))))

    def mentions(self, source, function, file):
        """Does a source, or a header that it includes beside this one, mention the function?"""
        files = [name for name, sources in self.users.items() if source in sources and name != file]
        return bool(function) and any(re.search(rf"\b{function}\b", self.text_of(name)) for name in files)

    def text_of(self, name):
        if name not in self.texts:
            self.texts[name] = (self.root / name).read_text()
        return self.texts[name]

    def piece_text(self, text, names):
        head, forms, foot = self.sections(text)
        return head + "".join(forms[name] for name in names if forms) + foot

    def compile(self, text, folder, overlay=None):
        """The object code, after a mistake in the files of `overlay`."""
        folder.mkdir(parents=True, exist_ok=True)
        (folder / "piece.cpp").write_text(text)
        includes = [f"-I{overlay}"] if overlay else []
        command = [self.compile_command[0], *includes, *self.compile_command[1:], "piece.cpp", "-o", "piece.o"]
        extra = ["-fopenmp"] if "entry/parallel.h" in text and "#pragma omp" in text else []
        result = run(command + extra, cwd=folder)
        if result.returncode:
            raise NotBuilt
        return folder / "piece.o"

    def weak(self, source):
        """The build's object with all its symbols weak, and its path."""
        path = self.build / f"CMakeFiles/kormObjects.dir/{source}.o"
        copy = self.scratch / "weak" / (source.replace("/", "_") + ".o")
        with self.lock:
            if not copy.exists():
                subprocess.run(["objcopy", "--weaken", path, copy], check=True)
        return path, copy

    def object_name(self, source):
        return source if source.startswith("generated/") else str((self.build / source).resolve().relative_to(self.root))

    def link(self, piece, source, folder):
        path, weak = self.weak(self.object_name(source))
        relative = str(path.relative_to(self.build))
        library = folder / "libkorm.so.7"
        command = [{relative: str(weak), self.library: str(library)}.get(word, word) for word in self.link_command]
        at = next(i for i, word in enumerate(command) if word.endswith(".o"))
        result = run([*command[:at], str(piece), *command[at:]], cwd=self.build)
        if result.returncode:
            raise NotBuilt
        return library

    # --- Tests ---

    def program(self, name, arguments, folder, percent):
        """What fails, as a text; nothing if all is well."""
        environment = dict(os.environ, LD_LIBRARY_PATH=f"{folder}:{self.build}/lib", KORM_TEST_PERCENT=str(percent), KMP_BLOCKTIME="0")
        limit = lambda: resource.setrlimit(resource.RLIMIT_CPU, (CPU_SECONDS * percent // 10, CPU_SECONDS * percent // 10))
        try:
            result = run([self.build / "bin" / name, *arguments], cwd=self.build, env=environment, timeout=900, preexec_fn=limit,
                         errors="replace")
        except subprocess.TimeoutExpired:
            return f"{name} hangs"
        if result.returncode == 0:
            return ""
        failed = re.search(r"\[  FAILED  \] (\S+)", result.stdout)
        lines = (result.stdout + result.stderr).strip().splitlines() or [f"{name} ends with {result.returncode}"]
        return failed[1].rstrip(",") if failed else f"{name}: {lines[0][:80]}"

    def tests_of_forms(self, names, folder, percent):
        filters = ":".join(f"*/{name}" for name in names)
        arguments = ["--gtest_brief=1", "--gtest_fail_fast", f"--gtest_filter={filters}"]
        geometry = [name for name in names if re.search(r"_(v\d\w*|m4\w*|mm4x4)_32f$", name) or "3DH" in name]
        if len(geometry) < len(names):
            if failed := self.program("korm_tests", arguments, folder, percent):
                return failed
        if geometry:
            arguments[-1] += ":Homogeneous*" if any("3DH" in name for name in geometry) else ""
            return (self.program("korm_geometry_tests", arguments, folder, percent)
                    or self.program("korm_geometry_digests", ["check", str(self.root / "tests/geometry/digests.txt")], folder, percent))
        return ""

    def tests_of_family(self, family, folder):
        """Digests of all forms, the family's other suites, its programs."""
        checks = [("korm_digests", ["check", str(self.root / "tests/digests.txt")])]
        if family in SUITES:
            checks.append(("korm_tests", ["--gtest_brief=1", "--gtest_fail_fast", f"--gtest_filter={SUITES[family]}:-*Threads*"]))
        if family in ("geometry", "kernel", "entry", "linalg"):
            checks.append(("korm_geometry_tests", ["--gtest_brief=1", "--gtest_fail_fast"]))
            checks.append(("korm_angles_test", ["--gtest_brief=1"]))
        if family in ("kernel", "entry"):
            checks.append(("korm_tests", ["--gtest_brief=1", "--gtest_fail_fast", "--gtest_filter=-*Forms/*:*Threads*"]))
        if family == "eigen":
            checks.append(("korm_eigen_robustness", ["--matrices", "4000"]))
        for name, arguments in checks:
            if failed := self.program(name, arguments, folder, 20):
                return failed
        return ""

    def tests_of_frame(self, folder, overlay):
        """The program that has the parallel frame in itself, made anew."""
        *lines, link = self.ninja("commands", "bin/korm_frame_test").strip().splitlines()
        link = re.search(r"&& (.*?) &&", link)[1]
        for line in lines:
            if not (match := re.search(r"-o (\S+/korm_frame_test.dir/\S+/?(?:frame_test|parallel)\.cpp\.o) -c (\S+)", line)):
                continue
            path, source = match.groups()
            here = folder / Path(path).name
            mistaken = overlay / "entry" / Path(source).name
            words = shlex.split(line.replace(source, str(mistaken)) if mistaken.exists() else line)
            words = [str(here) if word == path else word for word in words if word != "ccache" and word != "-Werror"]
            if run([words[0], f"-I{overlay}", *words[1:]], cwd=self.build).returncode:
                raise NotBuilt
            link = link.replace(path, str(here))
        program = folder / "frame"
        if run(shlex.split(link.replace("-o bin/korm_frame_test", f"-o {program}")), cwd=self.build).returncode:
            raise NotBuilt
        return self.program(program, ["--gtest_brief=1", "--gtest_fail_fast"], folder, 20)

    # --- A mistake ---

    def passes_without(self, source, names, text, folder):
        """The piece's code without a mistake, if its tests pass; compiled and run once."""
        kept = self.scratch / "right" / hashlib.sha256(text.encode()).hexdigest()[:16]
        if not kept.exists():
            place = folder / "right"
            piece = self.compile(text, place)
            self.link(piece, source, place)
            if names and (failed := self.tests_of_forms(names, place, 10)):
                raise RuntimeError(f"tests of {source} fail without a mistake: {failed}")
            piece.rename(kept)
        return kept.read_bytes()

    def tried(self, source, names, text, folder, *, right_text=None, overlay=None, family=None):
        """(verdict, by what) of a mistake in one piece: equal, killed or survived."""
        right = self.passes_without(source, names, right_text or text, folder)
        piece = self.compile(text, folder, overlay)
        if piece.read_bytes() == right:
            return "equal", ""
        self.link(piece, source, folder)
        failed = self.tests_of_forms(names, folder, 10) if names else ""
        if not failed and family:
            failed = (self.tests_of_forms(names, folder, 60) if names else "") or self.tests_of_family(family, folder)
            if not failed and overlay and list((overlay / "entry").glob("parallel.*")):
                failed = self.tests_of_frame(folder, overlay)
        return ("killed", failed) if failed else ("survived", "")
