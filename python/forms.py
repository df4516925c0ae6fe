"""From korm.json to C++: every form behind one signature, so that the package can choose among them when it runs.

usage: forms.py KORM.JSON FOLDER

Writes forms.h and forms.cpp. A family holds the six functions that differ in element type and layout alone:
families::Invert_ma has kormInvert_ma_32f, kormInvert_ma_64f_L and so on. Copies, whose sources and results have layouts of
their own, make two families: from any layout to the pointer layout, and back.
"""

import json
from pathlib import Path
import sys

LAYOUTS = ["standard", "list", "pointer"]
ELEMENTS = ["32f", "64f"]
EXTRAS = {"buffer": "buffer", "pivots": "pivots", "dstValues": "values", "dstValuesRe": "values", "dstValuesIm": "imaginary"}
NOTICE = "// Written by python/forms.py from korm.json.\n"


def places(function):
    """Operand name to its place in a call: inputs and outputs are numbered apart."""
    counts = {False: 0, True: 0}
    for operand in function["operands"]:
        if operand["layout"] != "value":
            yield operand["name"], f"{'out' if operand['output'] else 'in'}[{counts[operand['output']]}]"
            counts[operand["output"]] += 1


def arguments(function):
    place = dict(places(function))
    sizes = {size: f"{place[operand['name']]}.shape[{i}]"
             for operand in reversed(function["operands"]) for i, size in enumerate(operand["shape"])}
    parts = {operand[part]: f"{place[operand['name']]}.{part}" for operand in function["operands"]
             for part in ("objectStride", "rowStride", "elementStride", "offset") if part in operand}
    values = 0
    for row in function["arguments"]:
        name = row["name"]
        if name in EXTRAS:
            yield f"as<{row['type']}>(c.{EXTRAS[name]})"
        elif row["role"] == "value":
            yield f"static_cast<{row['type']}>(c.value[{values}])"
            values += 1
        elif row["role"] in ("input", "output"):
            yield f"as<{row['type']}>(c.{place[name]}.base)"
        elif row["role"] == "count":
            yield "c.count"
        else:
            yield "c." + {**sizes, **parts}[name]


def family(function):
    """Its name, and the layout by which its functions are told apart."""
    name = f"{function['operation']}_{function['word']}"
    layout = function["layout"]
    if function["operation"] != "Copy":
        return [(name, layout["results"])]
    return [(name + "_toPointer", layout["sources"])] * (layout["results"] == "pointer") + [
        (name + "_fromPointer", layout["results"])] * (layout["sources"] == "pointer")


def texts(description):
    families = {}
    shims = []
    for function in description["functions"]:
        if function["layout"] is None:
            continue
        of = family(function)
        if of:
            call = f"{function['name']}({', '.join(arguments(function))})"
            shims.append(f"std::int32_t {function['name'][4:]}(const Call& c) {{ return {call}; }}\n")
        for name, layout in of:
            families.setdefault(name, {})[ELEMENTS.index(function["element"]), LAYOUTS.index(layout)] = function["name"]
    header = "".join(f"extern const Family {name};\n" for name in sorted(families))
    tables = []
    for name, members in sorted(families.items()):
        rows = [[f'{{"{members[e, l]}", {members[e, l][4:]}}}' if (e, l) in members else "{}" for l in range(3)] for e in range(2)]
        tables.append(f"const Family {name}{{{{{', '.join('{' + ', '.join(row) + '}' for row in rows)}}}}};\n")
    opening = f"{NOTICE}#pragma once\n\n#include \"call.h\"\n\nnamespace korm::python::families {{\n"
    source = (f'{NOTICE}#include "forms.h"\n\n#include "korm.h"\n\nnamespace korm::python {{\n\nnamespace {{\n\n'
              f"template <class Pointer>\nPointer as(const void* base) {{\n    return static_cast<Pointer>(const_cast<void*>(base));\n}}\n\n"
              f"{''.join(shims)}\n}}  // namespace\n\nnamespace families {{\n{''.join(tables)}}}\n\n}}\n")
    return {"forms.h": opening + header + "}\n", "forms.cpp": source}


def main(description, folder):
    for name, text in texts(json.loads(Path(description).read_text())).items():
        (Path(folder) / name).write_text(text)


if __name__ == "__main__":
    main(*sys.argv[1:3])
