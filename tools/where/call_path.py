"""scripts/where NAME --order N: the way of one call through the library as it was built.

The files that hold the form are compiled once more with line numbers and linked with the other objects of the build.
Under callgrind a small Python program makes the call; where its instructions went is the answer.
"""

from collections import Counter, defaultdict
import ctypes
import json
import os
from pathlib import Path
import re
import subprocess
import sys
import tempfile

import emit
from grammar import ROOT

BUILD = ROOT / "build/x86_64"
COUNT = 16  # objects: enough for groups in lanes


# --- The call -----------------------------------------------------------------------------------------


class Memory:
    """Arguments for a call whose sizes all are `order`; matrices are symmetric, and far from singular."""

    def __init__(self, form, order, is_strided):
        self.form, self.order = form, order
        self.step = form.size * (2 if is_strided else 1)
        self.kept = []  # what the arguments point to

    def array(self, kind, values):
        values = list(values)
        self.kept.append((kind * len(values))(*values))
        return ctypes.addressof(self.kept[-1])

    def elements(self, operand):
        """The address of objects one behind the other, each with its elements `step` apart."""
        scalar = ctypes.c_float if self.form.scalar == "float" else ctypes.c_double
        rows = self.order if operand.kind in "mt" else 1
        values = []
        for _ in range(COUNT):
            for i in range(rows):
                for j in range(self.order):
                    values += [1 / (1 + abs(i - j)) + (self.order if i == j else 0)] + [0] * (self.step // self.form.size - 1)
        return self.array(scalar, values), rows * self.order * self.step

    def pointer(self, argument):
        operand = argument.operand
        if operand is None:  # scratch, pivots, results without a descriptor: numbers that are rows of a matrix, too
            return self.array(ctypes.c_int32, [*range(self.order)] * 64 * (self.order + 16))
        base, size = self.elements(operand)
        if operand.bare:
            return base
        if operand.tabled:
            return self.array(ctypes.c_void_p, range(base, base + size, self.step))
        if operand.listed:
            return self.array(ctypes.c_void_p, range(base, base + COUNT * size, size))
        return base

    def value(self, argument):
        if argument.role == "pointer":
            return ctypes.c_void_p(self.pointer(argument))
        if argument.role == "value" and argument.type == "int32_t":  # of a function of fixed size: a stride or count
            return 16
        if argument.role == "value":
            return (ctypes.c_float if self.form.scalar == "float" else ctypes.c_double)(1.5)
        if argument.role == "stride":
            matrix = argument.operand.kind in "mt"
            row = self.order * self.step
            steps = {"ElementStride": self.step, "RowStride": row, "ObjectStride": row * (self.order if matrix else 1)}
            if argument.operand.kind == "c":
                steps["ObjectStride"] = self.order * self.step
            return steps[re.search("[A-Z][a-z]+Stride$", argument.name)[0]]
        return {"offset": 0, "size": self.order, "count": COUNT}[argument.role]


def call(form, order, is_strided, library):
    """What runs under callgrind."""
    memory = Memory(form, order, is_strided)
    status = getattr(ctypes.CDLL(library), form.name)(*[memory.value(argument) for argument in form.arguments])
    if status:
        sys.exit(f"where: the call returned {status}")


# --- A library with line numbers ----------------------------------------------------------------------


def library_with_lines(form, folder):
    entries = json.loads((BUILD / "compile_commands.json").read_text())
    output = re.compile(r" -o (\S*kormObjects\.dir\S+)")
    with_lines = {emit.file_name(form), f"{form.family.source.partition('/')[0]}_cores.cpp", "parallel.cpp"}
    objects = []
    for entry in (entry for entry in entries if output.search(entry["command"])):
        source, built = Path(entry["file"]).name, BUILD / output.search(entry["command"])[1]
        again = folder / f"{source}.o"
        if source in with_lines and (not again.exists() or again.stat().st_mtime < built.stat().st_mtime):
            print(f"where: compiling {source} with line numbers", file=sys.stderr)
            command = output.sub(f" -g1 -o {again}", entry["command"])
            subprocess.run(command, shell=True, cwd=entry["directory"], check=True)
        objects.append(again if source in with_lines else built)
    runtime = re.findall(r"KORM_LIBOMP:\w+=(.+)", (BUILD / "CMakeCache.txt").read_text())
    library = folder / "libkorm.so"
    subprocess.run(["g++", "-shared", "-o", library, *objects, BUILD / "lib/libkorcore.so", *runtime,
                    f"-Wl,-rpath,{BUILD / 'lib'}"], check=True)
    return library


# --- Where the instructions went ----------------------------------------------------------------------


class Profile:
    """Of the functions in one library: their own instructions by address, and those of their calls."""

    def __init__(self, path, library):
        self.own, self.calls = defaultdict(Counter), defaultdict(Counter)  # calls: by address and callee
        is_inside = is_call = False
        for line in path.read_text().splitlines():
            kind, _, name = line.partition("=")
            if kind == "ob":
                is_inside = name == str(library)
                callee_is_inside = is_inside
            elif kind == "cob":
                callee_is_inside = name == str(library)
            elif kind == "fn":
                function = name
            elif kind == "cfn":
                callee = name
            elif kind == "calls":
                is_call = True
            elif line.startswith("0x"):
                address, _, cost = line.split()
                if is_inside and is_call and callee_is_inside:
                    self.calls[function][address, callee] += int(cost)
                elif is_inside and not is_call:
                    self.own[function][address] += int(cost)
                if is_call:
                    is_call, callee_is_inside = False, is_inside


def places(library, addresses):
    """For each address the functions it belongs to, inlined ones after those which they are inlined into."""
    text = subprocess.run(["addr2line", "-Cfia", "-e", library, *addresses], capture_output=True, text=True, check=True).stdout
    for block in re.split(r"^0x.*\n", text, flags=re.M)[1:]:
        lines = block.splitlines()
        yield list(reversed(list(zip(lines[::2], lines[1::2]))))


def chain(profile, library, function):
    """From a function down to where most instructions are spent, as (function, file and line)."""
    while True:
        ways = profile.calls[function]
        own = profile.own[function]
        (address, callee), cost = (ways.most_common(1) or [(("", ""), 0)])[0]
        if cost <= sum(own.values()):
            break
        yield from next(places(library, [address]))
        function = callee
    weighed = list(zip(places(library, own), own.values()))
    depth = 0
    while True:
        below = Counter()
        for stack, cost in weighed:
            if len(stack) > depth:
                below[stack[depth][0]] += cost
        if not below or 2 * below.most_common(1)[0][1] < sum(own.values()):
            return
        name = below.most_common(1)[0][0]
        weighed = [(stack, cost) for stack, cost in weighed if len(stack) > depth and stack[depth][0] == name]
        lines = Counter()
        for stack, cost in weighed:
            lines[stack[depth][1]] += cost
        yield name, lines.most_common(1)[0][0]
        depth += 1


def shortened(name):
    """Without namespaces, arguments, and template arguments that aren't numbers."""
    if name.startswith("_ZN"):  # addr2line can't read the names of templates whose arguments are objects
        rest = name[3:]
        while length := re.match(r"K?(\d+)", rest):
            name, rest = (rest := rest[length.end():])[: int(length[1])], rest[int(length[1]):]
        return name
    name = re.sub(r"(korm|v8|linalg|products|arith|geometry|cores)::|\(anonymous namespace\)::", "", name)
    head, _, arguments = name.partition("<")
    numbers = re.match(r"[\d, ]*\d(?=[,>])", arguments)
    return head.split("(")[0].split(" ")[-1] + (f"<{numbers[0]}>" if numbers else "")


def show(form, order, is_strided):
    folder = BUILD / "where"
    folder.mkdir(exist_ok=True)
    library = library_with_lines(form, folder)
    with tempfile.TemporaryDirectory() as scratch:
        out = Path(scratch) / "out"
        subprocess.run(["valgrind", "--tool=callgrind", "--dump-instr=yes", "--compress-strings=no", "--compress-pos=no",
                        f"--callgrind-out-file={out}", os.path.realpath(sys.executable), Path(__file__).parent, form.name,
                        "--order", str(order), "--call", library, *(["--strided"] if is_strided else [])],
                       check=True, stderr=subprocess.DEVNULL, env={**os.environ, "OMP_NUM_THREADS": "1"})
        profile = Profile(out, library)
    print(f"  a call     order {order}, {COUNT} objects if it is an array, elements {'apart' if is_strided else 'adjacent'}")
    for name, place in chain(profile, library, form.entry):
        if shortened(name) in ("_FUN", "operator"):  # a lambda's way to itself
            continue
        path = place.partition(" ")[0].replace(f"{ROOT}/", "").replace("build/x86_64/", "")
        print(f"             {shortened(name):40} {path}")
