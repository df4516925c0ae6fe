"""Holds korm.json against the header, which people check, and against its schema.

usage: test_description.py KORM.JSON
"""

import json
from pathlib import Path
import re
import sys
import unittest

try:
    import jsonschema
except ImportError:
    jsonschema = None

ROOT = Path(__file__).resolve().parents[2]
HEADER = (ROOT / "include/korm.h").read_text()
DESCRIPTION = json.loads(Path(sys.argv.pop()).read_text()) if sys.argv[1:] else None
STATUS_OF = {"null": "NullPointer", "count": "BadCount", "size": "BadSize", "stride": "BadStride", "offset": "BadOffset",
             "match": "SizeMismatch"}


def normal(text):
    return re.sub(r"\s+", " ", text).strip()


def prototypes():
    """Name to everything the header says of a function: comment, result type, arguments."""
    pattern = r"/\*\*((?:(?!\*/).)*)\*/\n((?:const )?\w+ \*?)(korm\w+)\(([^)]*)\);"
    return {match[3]: (normal(match[1].replace("\n *", "\n")), match[2].strip(), normal(match[4]))
            for match in re.finditer(pattern, HEADER, re.S)}


class Description(unittest.TestCase):
    functions = {function["name"]: function for function in DESCRIPTION["functions"]}
    declared = prototypes()

    def test_is_of_all_functions(self):
        self.assertEqual(len(self.declared), 874)
        self.assertEqual(sorted(self.functions), sorted(self.declared))

    def test_arguments_make_the_prototypes(self):
        for name, function in self.functions.items():
            arguments = ", ".join(f"{row['type']} {row['name']}".replace("* ", "*") for row in function["arguments"])
            self.assertEqual(arguments or "void", self.declared[name][2], name)
            self.assertEqual("int32_t" if function["returns"] == "status" else function["returns"], self.declared[name][1])

    def test_checks_are_those_of_the_header_in_order(self):
        for name, function in self.functions.items():
            found = re.search(r"Checks: (.*?)\.( |$)", self.declared[name][0])
            told = re.sub(r"if count is above 1", "", found[1]).replace(", ,", ",") if found else ""
            words = ", ".join(check["about"].replace("if count is above 1", "") for check in function["checks"])
            if not name.endswith(("BufSize_32f", "BufSize_64f")):
                self.assertEqual(words, told, name)
            names = [row["name"] for row in function["arguments"]]
            for check in function["checks"]:
                self.assertEqual(check["status"], "korStatus" + STATUS_OF[check["about"].split()[0]])
                self.assertLessEqual(set(check["arguments"]), set(names), name)

    def test_limits_are_those_of_the_header(self):
        told = 0
        for name, function in self.functions.items():
            found = re.search(r"Serial (below|up to) (\d+)(?: \((\d+) if an element stride is not \d\))?", self.declared[name][0])
            self.assertEqual(function["threads"] is not None, found is not None, name)
            if found:
                first = int(found[1] == "up to")
                limits = (int(found[2]) + first, int(found[3] or found[2]) + first)
                self.assertEqual((function["threads"]["adjacent"], function["threads"]["strided"]), limits, name)
                told += 1
        self.assertGreater(told, 400)

    def test_every_word_of_an_expression_is_an_argument(self):
        for name, function in self.functions.items():
            names = {row["name"] for row in function["arguments"]}
            shapes = [size for operand in function["operands"] for size in operand["shape"]]
            elements = [row.get("elements", "") for row in function["arguments"]]
            estimate = [function["threads"]["estimate"]] if function["threads"] else []
            for text in [*shapes, *elements, *estimate, function.get("match", "")]:
                self.assertLessEqual(set(re.findall(r"[a-z]\w*", text)), names, name)

    def test_operands_name_their_arguments(self):
        parts = {"standard": {"objectStride", "rowStride", "elementStride"}, "pointer": {"objectStride", "offset"},
                 "list": {"rowStride", "elementStride", "offset"}, "packed": set(), "value": set()}
        for name, function in self.functions.items():
            rows = {row["name"]: row for row in function["arguments"]}
            described = set()
            for operand in function["operands"]:
                has = {part: operand[part] for part in ("objectStride", "rowStride", "elementStride", "offset") if part in operand}
                self.assertLessEqual(set(has), parts[operand["layout"]], name)
                self.assertEqual("objectStride" in has, operand["array"] and operand["layout"] in ("standard", "pointer"), name)
                for part, argument in has.items():
                    self.assertEqual(rows[argument]["role"], "offset" if part == "offset" else "stride", name)
                levels = rows[operand["name"]]["type"].count("*")
                self.assertEqual(levels, {"value": 0, "list": 2, "pointer": 2}.get(operand["layout"], 1), name)
                described |= {operand["name"], *has.values()}
            strides = {argument for argument, row in rows.items() if row["role"] in ("stride", "offset")}
            if function["layout"]:
                self.assertLessEqual(strides, described, name)

    def test_some_functions_in_full(self):
        product = self.functions["kormMul_tma_64f_L"]
        self.assertEqual([operand["shape"] for operand in product["operands"]],
                         [["src1Height", "src1Width"], ["src2Height", "src2Width"], ["src1Width", "src2Width"]])
        self.assertEqual([operand["layout"] for operand in product["operands"]], ["standard", "list", "list"])
        self.assertEqual([operand["transposed"] for operand in product["operands"]], [True, False, False])
        elements = {row["name"]: row.get("elements") for row in self.functions["kormLUDecomp_ma_32f"]["arguments"]}
        self.assertEqual(elements["pivots"], "order * count")
        elements = {row["name"]: row.get("elements") for row in self.functions["kormLUBackSubst_mva_32f"]["arguments"]}
        self.assertEqual(elements["pivots"], "order")
        copy = self.functions["kormCopy_va_32f_LP"]
        self.assertEqual(copy["layout"], {"sources": "list", "results": "pointer"})
        self.assertEqual([check["about"] for check in copy["checks"]][-1], "stride between objects, if count is above 1")
        solve = {operand["name"]: operand["shape"] for operand in self.functions["kormQRBackSubst_mv_32f"]["operands"]}
        self.assertEqual(solve, {"src1": ["height", "width"], "src2": ["height"], "dst": ["width"]})
        turned = {operand["name"]: operand["shape"] for operand in self.functions["kormSub_tam_32f"]["operands"]}
        self.assertEqual(turned, {"src1": ["width", "height"], "src2": ["height", "width"], "dst": ["height", "width"]})

    @unittest.skipUnless(jsonschema, "the schema is checked where python3-jsonschema is installed")
    def test_schema(self):
        schema = json.loads((ROOT / "tools/formgen/korm.schema.json").read_text())
        validator = jsonschema.Draft202012Validator(schema)
        validator.check_schema(schema)
        self.assertEqual([f"{list(error.path)}: {error.message}" for error in validator.iter_errors(DESCRIPTION)], [])


if __name__ == "__main__":
    unittest.main()
