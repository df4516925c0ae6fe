#!/usr/bin/env python3
"""Builds and runs the programs that pages show, and compares what they print with what the pages say they do.

A block of c, cpp or python is a program. A block of text behind it is what it prints; one that prints something must have one.
Programs in C and C++ build without a warning against the installed library, and return 0. Command lines of a compiler that a page
shows are run as they stand, on the page's first program in C. Some show other libraries beside
korm: where a header of theirs isn't installed the program is skipped, and the last line tells how many were.

    programs.py ROOT --prefix PREFIX --libdir LIBDIR --work FOLDER [--python FOLDER] [--cc CC] [--cxx CXX]
                [--cflags TEXT] [--cxxflags TEXT] [--linkflags TEXT] [--update] [--pages PAGE...]
"""

import argparse
from concurrent.futures import ThreadPoolExecutor
from dataclasses import dataclass
import os
from pathlib import Path
import re
import subprocess
import sys

BLOCK = re.compile(r"^```(\w*)\n(.*?)^```$", re.MULTILINE | re.DOTALL)
ENDINGS = {"c": "c", "cpp": "cpp", "python": "py"}

# What programs beside korm need: a header that they include, the folder it lies in, and the library they are linked with.
PEERS = {
    "Eigen/": ("/usr/include/eigen3", []),
    "glm/": ("/usr/include", []),
    "cglm/": ("/usr/include", []),
    "lapacke.h": ("/usr/include", ["-llapacke"]),
    "cblas.h": ("/usr/include/x86_64-linux-gnu", ["-lopenblas"]),
}


@dataclass
class Program:
    page: Path
    number: int
    language: str
    code: str
    printed: str = None  # None where the page shows no output

    @property
    def name(self):
        return f"{self.page.stem}_{self.number}.{ENDINGS[self.language]}"

    @property
    def peers(self):
        return [PEERS[header] for header in PEERS if re.search(rf"^#include <{header}", self.code, flags=re.MULTILINE)]


def programs_of(page):
    found = []
    for language, code in BLOCK.findall(page.read_text()):
        if language in ENDINGS:
            found.append(Program(page, len(found) + 1, language, code))
        elif language == "text" and found and found[-1].printed is None:
            found[-1].printed = code
    return found


@dataclass
class CommandLine:
    page: Path
    number: int
    text: str
    code: str


def command_lines(page):
    """Lines of a page that call a compiler, with the program that they are about."""
    text = page.read_text()
    code = next((code for language, code in BLOCK.findall(text) if language == "c"), "")
    lines = re.findall(r"^    (g?cc .*)$", BLOCK.sub("", text), flags=re.MULTILINE)
    return [CommandLine(page, number, line, code) for number, line in enumerate(lines, 1)]


def update(page, programs):
    """Puts what the programs printed into the page."""
    text, end = page.read_text(), 0
    for program in programs:
        end = text.index(program.code, end) + len(program.code)
        if program.printed is not None:
            block = next(match for match in BLOCK.finditer(text, text.index("```", end) + 3) if match[1] == "text")
            text = text[:block.start(2)] + program.printed + text[block.end(2):]
    page.write_text(text)


class Runner:
    def __init__(self, options):
        self.options = options
        self.work = Path(options.work)
        self.work.mkdir(parents=True, exist_ok=True)
        self.library = f"{options.prefix}/{options.libdir}"

    def build(self, program, source):
        options = self.options
        compiler, standard, flags = ((options.cc, "-std=c99", options.cflags) if program.language == "c"
                                     else (options.cxx, "-std=c++17", options.cxxflags))
        command = [*compiler.split(), *flags.split(), standard, "-Wall", "-Wextra", "-pedantic", "-Werror",
                   "-I" + options.prefix + "/include"]
        command += ["-isystem" + folder for folder, _ in program.peers if folder != "/usr/include"]
        command += [str(source), "-o", str(source.with_suffix("")), "-L" + self.library, *options.linkflags.split(), "-lkorm", "-lm"]
        command += [library for _, libraries in program.peers for library in libraries]
        return subprocess.run(command, capture_output=True, text=True, check=False)

    def missing(self, program):
        """What the program needs and isn't here."""
        if program.language == "python":
            return None if self.options.python else "the package for Python"
        if program.peers and "-m32" in self.options.cflags:
            return "another library for 32 bits"  # where it is headers alone it takes a minute to compile, and shows nothing new
        for header, (folder, _) in PEERS.items():
            wanted = re.search(rf"^#include <({header}[^>]*)>", program.code, flags=re.MULTILINE)
            if wanted and not Path(folder, wanted[1]).exists():
                return wanted[1]
        return None

    def run(self, program):
        """A message on what is wrong; "" where nothing is, None where the program was skipped."""
        if self.missing(program):
            print(f"{program.name}: skipped, {self.missing(program)} isn't here")
            return None
        source = self.work / program.name
        source.write_text(program.code)
        environment = {**os.environ, "PYTHONPATH": self.options.python or ""}
        environment["LD_LIBRARY_PATH"] = self.library + ":" + environment.get("LD_LIBRARY_PATH", "")
        if program.language == "python":
            command = ["/usr/bin/python3", "-B", str(source)]
        else:
            built = self.build(program, source)
            if built.returncode:
                return "doesn't build\n" + built.stderr
            command = [str(source.with_suffix(""))]
        done = subprocess.run(command, capture_output=True, text=True, env=environment, cwd=self.work, timeout=120, check=False)
        if done.returncode:
            return f"returns {done.returncode}\n{done.stdout}{done.stderr}"
        if self.options.update and program.printed is not None:
            program.printed = done.stdout
        if done.stdout != (program.printed or ""):
            return f"prints\n{done.stdout}and the page says\n{program.printed or 'nothing'}"
        return ""

    def run_command(self, command):
        """As `run`, of a line for the shell, in a folder of its own: there the library is found as if it were installed."""
        if "-m32" in self.options.cflags:
            return None
        folder = self.work / f"{command.page.stem}_command_{command.number}"
        folder.mkdir(exist_ok=True)
        for name in re.findall(r"\b\w+\.c\b", command.text):
            (folder / name).write_text(command.code)
        environment = {**os.environ, "CPATH": self.options.prefix + "/include", "LIBRARY_PATH": self.library,
                       "LD_LIBRARY_PATH": self.library, "PKG_CONFIG_PATH": self.library + "/pkgconfig"}
        done = subprocess.run(command.text, shell=True, cwd=folder, env=environment, capture_output=True, text=True, timeout=60,
                              check=False)
        return f"`{command.text}` returns {done.returncode}\n{done.stderr}" if done.returncode else ""


def main():
    parser = argparse.ArgumentParser(description="Runs the programs that pages show.")
    parser.add_argument("root")
    for name in ("prefix", "libdir", "work"):
        parser.add_argument(f"--{name}", required=True)
    parser.add_argument("--python", default="")
    for name, default in (("cc", "cc"), ("cxx", "c++"), ("cflags", ""), ("cxxflags", ""), ("linkflags", "")):
        parser.add_argument(f"--{name}", default=default)
    parser.add_argument("--update", action="store_true", help="put what programs print into the pages")
    parser.add_argument("--pages", nargs="*", default=[])
    options = parser.parse_args()
    root = Path(options.root).resolve()
    options.python = options.python and str(Path(options.python).resolve())
    pages = [Path(page).resolve() for page in options.pages] or [root / "README.md", *sorted(root.glob("docs/*.md"))]
    programs = [program for page in pages for program in programs_of(page)]
    runner = Runner(options)
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        results = list(pool.map(runner.run, programs))
        commands = [command for page in pages for command in command_lines(page)]
        outcomes = list(pool.map(runner.run_command, commands))
    if options.update:
        for page in pages:
            update(page, [program for program in programs if program.page == page])
    failed = [(program, result) for program, result in zip(programs, results) if result]
    for program, result in failed:
        print(f"FAILED {program.page.relative_to(root)}, program {program.number}: {result}")
    for command, outcome in zip(commands, outcomes):
        if outcome:
            print(f"FAILED {command.page.relative_to(root)}: {outcome}")
    skipped = results.count(None)
    print(f"{len(programs)} programs of {len(pages)} pages: {len(programs) - len(failed) - skipped} agree with their pages, "
          f"{len(failed)} don't, {skipped} skipped; {len(commands)} command lines, {outcomes.count('')} run")
    return 1 if failed or any(outcomes) or not programs else 0


if __name__ == "__main__":
    sys.exit(main())
