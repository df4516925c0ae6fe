"""Compiles and runs the example of each function, and holds what it prints against the function's formula.

usage: test_examples.py KORM.JSON INCLUDE-FOLDER LIBRARY C-COMPILER
"""

import itertools
import json
import math
from pathlib import Path
import re
import subprocess
import sys
import tempfile
import unittest

import examples

DESCRIPTION, INCLUDE, LIBRARY, COMPILER = sys.argv[1:5] if sys.argv[4:] else [None] * 4
DOCUMENT = json.loads(Path(DESCRIPTION).read_text())
PROGRAMS = examples.programs(DOCUMENT)
FUNCTIONS = {function["name"]: function for function in DOCUMENT["functions"]}
WARNINGS = ["-std=c99", "-pedantic", "-Wall", "-Wextra", "-Wconversion", "-Werror"]


def run_all():
    """What each program prints, by the function's name. They are the functions of one program."""
    parts = ["#include <korm.h>\n#include <stdio.h>\n"]
    for name, program in PROGRAMS.items():
        includes, _, main = program.text().partition("\n\n")
        assert includes == parts[0].rstrip() and main.count("int main(void)") == 1, name
        parts.append(main.replace("int main(void)", f"static int {name}_example(void)"))
    calls = "".join(f'    printf("== {name} ");\n    printf("%d\\n", {name}_example());\n' for name in PROGRAMS)
    # A program's results stand in front of what it returns, and behind its name.
    parts.append(f"int main(void) {{\n{calls}    return 0;\n}}\n")
    with tempfile.TemporaryDirectory() as folder:
        source, binary = Path(folder) / "examples.c", Path(folder) / "examples"
        source.write_text("".join(parts))
        library = Path(LIBRARY)
        subprocess.run([COMPILER, *WARNINGS, f"-I{INCLUDE}", str(source), "-o", str(binary), str(library), f"-Wl,-rpath,{library.parent}"],
                       check=True)
        printed = subprocess.run([str(binary)], capture_output=True, text=True, check=True).stdout
    blocks = (block.split() for block in printed.split("== ")[1:])
    return {name: words for name, *words in blocks}


def nested(numbers, lengths):
    if not lengths:
        return next(numbers)
    return [nested(numbers, lengths[1:]) for _ in range(lengths[0])]


def product(a, b):
    return [[sum(x * y for x, y in zip(row, column)) for column in zip(*b)] for row in a]


def transposed(a):
    return [list(column) for column in zip(*a)]


def determinant(a):
    if len(a) == 1:
        return a[0][0]
    return sum((-1) ** j * a[0][j] * determinant([row[:j] + row[j + 1:] for row in a[1:]]) for j in range(len(a)))


def identity(n):
    return [[float(i == j) for j in range(n)] for i in range(n)]


def shifted(a, w):
    return [[element - w * (i == j) for j, element in enumerate(row)] for i, row in enumerate(a)]


def cross(a, b):
    return [a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]]


def flat(values):
    return [number for part in values for number in flat(part)] if isinstance(values, list) else [values]


def evaluated(formula, values, lengths):
    """All elements of dst, by a formula in terms of elements, or None where it has other words."""
    left, _, right = formula.partition(" = ")
    right = re.sub(r"(src\d?|val)\(([kijl,]+)\)", lambda term: f"{term[1]}[{term[2].replace(',', '][')}]", right).replace("^2", "**2")
    bounds = {}
    for name, indices in re.findall(r"(src\d?|val)((?:\[[kijl]\])+)", right):
        part = values[name]
        for index in re.findall(r"\w", indices):
            bounds[index] = len(part)
            part = part[0]
    right = re.sub(r"\bsum over (\w) of ([^()]*)", lambda term: f"sum({term[2]} for {term[1]} in range({bounds[term[1]]}))", right)
    right = re.sub(r"root of the (sum.*)", r"sqrt(\1)", right)
    known = {"sum", "for", "in", "range", "sqrt", *"kijl", *values}
    if not right or not set(re.findall(r"[A-Za-z]\w*", right)) <= known or re.search(r"src\d?(?!\w*\[)|\.\.\.|\?", right):
        return None
    axes = re.findall(r"\b[kij]\b", left)
    if "*" in left:  # one block with all elements
        axes.sort(key="kij".index)
    element = eval(f"lambda {', '.join(axes)}: {right}", {"sqrt": math.sqrt, **values})
    return [element(*at) for at in itertools.product(*map(range, lengths))]


class Examples(unittest.TestCase):
    printed = run_all()

    def close(self, found, expected, message):
        found, expected = flat(found), flat(expected)
        self.assertEqual(len(found), len(expected), message)
        size = max(map(abs, expected)) or 1
        for a, b in zip(found, expected):
            self.assertLessEqual(abs(a - b), 2e-5 * size, message)

    def results(self, name):
        """Inputs and outputs as nested lists, the index of the object first."""
        program = PROGRAMS[name]
        *words, status = self.printed[name]
        self.assertEqual(status, "0", name)
        numbers = iter(map(float, words))
        values = {key: variable.values for key, variable in program.variables.items() if variable.values is not None}
        outputs = [row["name"] for row in FUNCTIONS[name]["arguments"] if row["role"] == "output"]
        for output in outputs:
            lengths = program.variables[output].lengths
            values[output] = nested(numbers, [program.size(lengths[axis]) for axis in sorted(lengths, key="kij".index)])
        self.assertEqual(list(numbers), [], name)
        for number in flat([values[output] for output in outputs]):
            self.assertTrue(math.isfinite(number), name)
        return values

    def test_each_function_has_one(self):
        self.assertEqual(len(self.printed), 874)

    def test_version(self):
        self.assertEqual(self.printed["kormGetLibVersion"][0], DOCUMENT["version"])

    def test_formulas_of_elements(self):
        evaluations = 0
        for name in FUNCTIONS.keys() - {"kormGetLibVersion"}:
            values, variable = self.results(name), PROGRAMS[name].variables.get("dst")
            if variable:
                lengths = [PROGRAMS[name].size(variable.lengths[axis]) for axis in sorted(variable.lengths, key="kij".index)]
                expected = evaluated(FUNCTIONS[name]["formula"], values, lengths)
                if expected is not None:
                    evaluations += 1
                    self.close(values["dst"], expected, name)
        self.assertEqual(evaluations, 585)

    def objects(self, operation):
        """For each object of each function of an operation: its name, and a function from an argument to its value for the object."""
        for name, function in FUNCTIONS.items():
            if function["operation"] == operation and function["operands"]:
                values = self.results(name)
                variables = PROGRAMS[name].variables
                for k in range(2 if function["array"] else 1):
                    yield name, lambda key: values[key][k] if "k" in variables[key].lengths else values[key]

    def test_determinants_and_inverses(self):
        for name, of in self.objects("Det"):
            self.close(of("dst"), determinant(of("src")), name)
        for name, of in self.objects("Invert"):
            self.close(product(of("src"), of("dst")), identity(3), name)
        for name, of in self.objects("Trace"):
            self.close(of("dst"), sum(of("src")[i][i] for i in range(3)), name)
        for name, of in self.objects("FrobNorm"):
            self.close(of("dst"), math.hypot(*flat(of("src"))), name)
        for name, of in self.objects("LoadIdentity"):
            self.close(of("dst"), [[float(i == j) for j in range(len(of("dst")[0]))] for i in range(len(of("dst")))], name)

    def test_cross_products_and_transformed_points(self):
        for name, of in self.objects("CrossProduct"):
            self.close(of("dst"), cross(of("src1"), of("src2")), name)
        for name, of in self.objects("AffineTransform3DH"):
            *point, last = [sum(a * b for a, b in zip(row, of("src2") + [1])) for row in of("src1")]
            self.close(of("dst"), [x / last for x in point], name)

    def test_decompositions(self):
        for name, of in self.objects("CholeskyDecomp"):
            lower = [[1 / x if i == j else x * (j < i) for j, x in enumerate(row)] for i, row in enumerate(of("dst"))]
            self.close(product(lower, transposed(lower)), of("src"), name)
        for name, of in self.objects("LUDecomp"):
            rows = [of("dst")[int(i)] for i in of("pivots")]
            lower = [[x * (j < i) + (i == j) for j, x in enumerate(row)] for i, row in enumerate(rows)]
            upper = [[x * (j >= i) for j, x in enumerate(row)] for i, row in enumerate(rows)]
            self.close(product(lower, upper), [of("src")[int(i)] for i in of("pivots")], name)
        for name, of in self.objects("QRDecomp"):
            width = len(of("src")[0])
            upper = [[x * (j >= i) for j, x in enumerate(row)] for i, row in enumerate(of("dst")[:width])]
            self.close(product(transposed(upper), upper), product(transposed(of("src")), of("src")), name)

    def test_solutions(self):
        for operation in examples.DECOMPOSITIONS:
            for name, of in self.objects(operation):
                a, b, x = of("src1"), transposed([of("src2")]), transposed([of("dst")])
                self.close(product(transposed(a), product(a, x)), product(transposed(a), b), name)

    def test_eigenproblems(self):
        for operation, values in (("EigenValues", "dstValuesRe"), ("EigenValuesSym", "dstValues")):
            for name, of in self.objects(operation):
                self.close(sum(of(values)), sum(of("src")[i][i] for i in range(3)), name)
                self.close(math.prod(of(values)), determinant(of("src")), name)
                if values == "dstValuesRe":
                    self.assertEqual(set(of("dstValuesIm")), {0}, name)
        for operation, values, columns, rows in (
                ("EigenValuesVectorsSym", "dstValues", "dstVectors", None), ("EigenValuesVectorsLeft", "dstValuesRe", "dst", None),
                ("EigenValuesVectorsRight", "dstValuesRe", None, "dst"), ("EigenValuesVectors", "dstValuesRe", "dstLeft", "dstRight")):
            for name, of in self.objects(operation):
                for vectors, matrix in ((columns, of("src")), (rows, transposed(of("src")))):
                    for j, w in enumerate(of(values) if vectors else []):
                        y = [[row[j]] for row in of(vectors)]
                        self.assertGreater(max(map(abs, flat(y))), 0.1, name)
                        self.close(flat(product(shifted(matrix, w), y)) + [20], [0, 0, 0, 20], name)

    def test_functions_of_fixed_size_give_something(self):
        for name, function in FUNCTIONS.items():
            if not function["operands"] and function["arguments"]:
                *words, _ = self.printed[name]
                self.assertTrue(any(map(float, words)) or function["operation"] == "IsIdentity", name)


if __name__ == "__main__":
    del sys.argv[1:]
    unittest.main()
