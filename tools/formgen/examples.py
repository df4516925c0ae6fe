"""A complete C program for each function: it declares operands as the function's layout has them, calls, and prints the results.

Sizes and operands bear the names of the arguments. Strides are written as the sizes of what lies that far apart.
"""

import itertools
import math
import re
import textwrap

SIZES = {"count": 2, "order": 3, "length": 3, "width": 2, "height": 3, "src1Width": 2, "src1Height": 3, "src2Width": 4, "src2Height": 4}
# Matrices that aren't singular, and symmetric ones that are positive definite.
REGULAR = [[[2, 1, 1], [4, 3, 3], [8, 7, 9]], [[1, 2, 0], [3, 1, 4], [0, 2, 5]]]
SYMMETRIC = [[[4, 1, 0], [1, 3, 1], [0, 1, 2]], [[5, 2, 1], [2, 6, 3], [1, 3, 7]]]
PLAIN = ("matrix_", "vector_", "scaling", "copy", "extract", "transpose", "norms", "cross")  # of groups: any matrix will do
STRETCH_AND_MOVE = [[2, 0, 0, 0], [0, 2, 0, 0], [0, 0, 2, 0], [1, 2, 3, 1]]
VALUES = {
    "projection": [[1, 0, 0, 0], [0, 1, 0, 0], [0, 0, 1, 1], [0, 0, -1, 0]], "eye": [0, 0, -5], "at": [0, 0, 0], "up": [0, 1, 0],
    "axis": [0, 0, 1], "src": [3, 4, 12, 84], "src1": [1, 2, 3, 4], "src2": [2, 0, 1, 3], "src3": [0, 1, 4, 2], "src4": [5, 1, 2, 2],
    "val": 2, "val1": 2, "val2": 3, "t": 0.25, "f": 0.25, "g": 0.5, "x": 1, "y": 2, "z": 3, "angle": 0.5, "yaw": 0.5, "pitch": 0.25,
    "roll": 0.125, "fovY": 1, "aspect": 1.5, "zNear": 1, "zFar": 100, "viewWidth": 4, "viewHeight": 3, "left": -2, "right": 2,
    "bottom": -1, "top": 2, "viewportWidth": 640, "viewportHeight": 480, "minZ": 0, "maxZ": 1}
KEPT = "\0"  # a blank at which no line breaks
KEPT_COMMA = f",{KEPT}"
DECOMPOSITIONS = {"LUBackSubst": "LUDecomp", "CholeskyBackSubst": "CholeskyDecomp", "QRBackSubst": "QRDecomp"}


class Variable:
    """`lengths` by the letters of the indices, in the order of C; `values` are nested lists, the object's index first."""

    def __init__(self, type_, name, lengths=None, values=None, layout="standard", constant=True, zeroed=False):
        self.type, self.name, self.layout = type_, name, layout
        self.lengths, self.values, self.constant = lengths or {}, values, constant and values is not None
        self.zeroed = zeroed

    @property
    def is_table(self):
        return self.layout == "pointer" or (self.layout == "list" and "k" in self.lengths)

    def part(self, *indices):
        return self.name + "".join(f"[{index}]" for index in indices)

    def declarations(self, sizes):
        const, dimensions = "const " * self.constant, "".join(f"[{length}]" for length in self.lengths.values())
        yield f"{const}{self.type} {self.name}{dimensions}" + (
            f" = {braces(self.in_memory())};" if self.values is not None else " = {0};" if self.zeroed else ";")
        if self.is_table:  # of objects, or of the elements of all objects
            outer = "k" if self.layout == "list" else [axis for axis in self.lengths if axis != "k"]
            rest = len(self.lengths) - len(outer)
            entries = ["&" * (rest == 0) + self.part(*at, *[0] * (rest - 1))
                       for at in itertools.product(*(range(sizes(self.lengths[axis])) for axis in outer))]
            yield f"{const}{self.type} *const {self.table}[] = {{{', '.join(entries)}}};"

    @property
    def table(self):
        return self.name + {"list": "Objects", "pointer": "Elements"}[self.layout]

    def in_memory(self):
        """The values in the order of the indices."""
        if self.layout != "pointer" or "k" not in self.lengths:
            return self.values
        objects = self.values
        if len(self.lengths) == 2:
            return [list(elements) for elements in zip(*objects)]
        return [[list(elements) for elements in zip(*rows)] for rows in zip(*objects)]

    def argument(self):
        if self.is_table:
            return self.table
        return self.part(*[0] * (len(self.lengths) - 1)) if self.lengths else f"&{self.name}"

    def stride(self, word):
        """Of objects, rows or elements: the size of what lies that far apart."""
        axis = {"RowStride": "i", "ElementStride": "j" if "j" in self.lengths else "i"}.get(word, "k")
        return f"sizeof{KEPT}{self.part(*[0] * (list(self.lengths).index(axis) + 1))}"

    def printing(self):
        form = "%d" if self.type == "int32_t" else "%u" if self.type == "uint32_t" else "%g"
        if not self.lengths:
            return [f'printf("{form}\\n", {self.name});']
        axes = sorted(self.lengths, key="kij".index)  # rows to lines
        loops = [f"for (int {axis} = 0; {axis} < {self.lengths[axis]}; ++{axis})" for axis in axes]
        inner = f'printf("{form}%c", {self.part(*self.lengths)}, {axes[-1]} + 1 < {self.lengths[axes[-1]]} ? \' \' : \'\\n\');'
        return ["    " * depth + line for depth, line in enumerate([*loops, inner])]


def braces(values):
    """Lines break between the innermost lists."""
    if not isinstance(values, list):
        return f"{values:g}"
    return f"{{{(', ' if isinstance(values[0], list) else KEPT_COMMA).join(map(braces, values))}}}"


def numbered(lengths, first):
    """Nested lists of the numbers from `first` on."""
    if not lengths:
        return first
    step = math.prod(lengths[1:])
    return [numbered(lengths[1:], first + i * step) for i in range(lengths[0])]


class Program:
    """What a function's example consists of."""

    def __init__(self, function, functions):
        self.function, self.functions = function, functions
        named = [row["name"] for row in function["arguments"] if row["role"] in ("size", "count")]
        self.sizes = {name: SIZES.get(name, 3) for name in named}
        for left, right in re.findall(r"(\w+) == (\w+)", function.get("match") or ""):
            self.sizes[right] = self.sizes[left]
        self.factored = function["operation"] in DECOMPOSITIONS
        self.next = 1
        self.variables = {}
        operands = {operand["name"]: operand for operand in function["operands"]}
        for row in function["arguments"]:
            if row["name"] in operands:
                self.variables[row["name"]] = self.of_operand(operands[row["name"]], row["type"])
            elif row["role"] in ("input", "output", "scratch", "value"):
                self.variables[row["name"]] = self.of_argument(row)

    def size(self, length):
        return self.sizes[length] if length in self.sizes else int(length)

    def of_operand(self, operand, type_):
        name, shape, array = operand["name"], operand["shape"], operand["array"]
        lengths = dict(zip("ij", shape))
        if array:
            lengths = {**lengths, "k": "count"} if operand["layout"] == "pointer" else {"k": "count", **lengths}
        values = None if operand["output"] else self.numbers(name, [*["count"] * array, *shape])
        constant = not (self.factored and name == "src1")
        zeroed = operand["output"] and self.function["operation"] == "CholeskyDecomp"  # which writes a triangle alone
        return Variable(element_type(type_), name, lengths, values, operand["layout"], constant, zeroed)

    def numbers(self, name, lengths):
        own = list(map(self.size, lengths))
        group = self.function["group"]
        if own == [4, 4]:
            return STRETCH_AND_MOVE
        if len(own) - (lengths[:1] == ["count"]) == 2 and not group.startswith(PLAIN) and (name == "src" or self.factored):
            objects = SYMMETRIC if group.startswith(("symmetric", "cholesky")) else REGULAR
            parts = [[row[:own[-1]] for row in rows[:own[-2]]] for rows in objects]
            return parts if lengths[0] == "count" else parts[0]
        if not own and name in VALUES:
            return VALUES[name]
        values = numbered(own, self.next)
        self.next += math.prod(own)
        return values

    def of_argument(self, row):
        name, type_ = row["name"], element_type(row["type"])
        elements = row.get("elements", "1")
        if row["role"] == "scratch":
            return Variable(type_, name, {"i": elements})
        if "order" in elements:
            return Variable(type_, name, {**({"k": "count"} if "count" in elements else {}), "i": "order"})
        lengths = {"i": "4", "j": "4"} if elements == "16" else {"i": elements} if elements != "1" else {}
        many = any(other["name"] == f"{name}Stride" for other in self.function["arguments"])
        if many:
            lengths = {"k": "count", **lengths}
        values = None
        if row["role"] in ("input", "value"):
            values = VALUES.get(name, STRETCH_AND_MOVE)
            if elements == "16" and name != "projection":
                values = STRETCH_AND_MOVE
            elif elements not in ("1", "16"):
                values = values[:int(elements)]
                values = [values, values[::-1]] if many else values
        return Variable(type_, name, lengths, values)

    def call(self, function, renamed):
        """`renamed` has variables' names by operands'."""
        arguments = []
        for row in function["arguments"]:
            name, role = row["name"], row["role"]
            owner = row.get("operand", name.removesuffix("Stride"))
            variable = self.variables.get(renamed.get(owner, owner))
            if role == "stride":
                arguments.append(variable.stride(re.search(r"(Object|Row|Element)?Stride$", name)[0]))
            elif role in ("size", "count", "value"):
                arguments.append(name)
            elif role == "offset":
                arguments.append("0")
            else:  # C, unlike C++, adds no const behind a second pointer by itself
                cast = f"({row['type']})" if variable.is_table and row["type"].startswith("const") and not variable.constant else ""
                arguments.append((cast + variable.argument()).replace(" ", KEPT))
        return f"{function['name']}({', '.join(arguments)});"

    def body(self):
        function = self.function
        if self.sizes:
            yield f"enum {{ {', '.join(f'{name}{KEPT}={KEPT}{size}' for name, size in self.sizes.items())} }};"
        numbers = [variable for variable in self.variables.values() if variable.constant and not variable.lengths]
        for variable in self.variables.values():
            if variable not in numbers:
                yield from variable.declarations(self.size)
        if numbers:
            yield f"const {numbers[0].type} {', '.join(f'{it.name}{KEPT}={KEPT}{it.values:g}' for it in numbers)};"
        if self.factored:
            src1 = next(operand for operand in function["operands"] if operand["name"] == "src1")
            suffix = {"list": "_L", "pointer": "_P"}.get(src1["layout"], "")
            name = f"korm{DECOMPOSITIONS[function['operation']]}_{'ma' if src1['array'] else 'm'}_{function['element']}{suffix}"
            yield f"int32_t status = {self.call(self.functions[name], {'src': 'src1', 'dst': 'src1'})}"
            yield "if (status == korStatusOk)"
            yield f"    status = {self.call(function, {})}"
        else:
            yield f"const int32_t status = {self.call(function, {})}"
        yield "if (status != korStatusOk) return 1;"
        for row in function["arguments"]:
            if row["role"] == "output":
                yield from self.variables[row["name"]].printing()

    def text(self):
        lines = self.body() if self.function["returns"] == "status" else [
            f"const kormLibVersion *version = {self.function['name']}();", 'printf("%s\\n", version->version);']
        body = "".join(f"    {part}\n" for line in [*lines, "return 0;"] for part in broken(line))
        return f"#include <korm.h>\n#include <stdio.h>\n\nint main(void) {{\n{body}}}\n"


def broken(line):
    indent = re.match(" *", line)[0] + "    "
    parts = textwrap.wrap(line, 74, subsequent_indent=indent, break_long_words=False, break_on_hyphens=False)
    return [part.replace(KEPT, " ") for part in parts]


def element_type(type_):
    return re.sub(r"^const |[ *]+const|\*|\s+$", "", type_).strip()


def programs(document):
    functions = {function["name"]: function for function in document["functions"]}
    return {name: Program(function, functions) for name, function in functions.items()}
