"""korm.json: all functions as data, for those who bind korm to another language. korm.schema.json says how it is built.

The header tells people the same; nothing stands here that isn't in the tables, but for how many elements pointers outside
the grammar of operands lead to.
"""

import json
import re

from fixed import FixedForm
from grammar import Family, Query
import header

SCHEMA = "korm.schema.json"

# A driver's pieces of scratch are larger than what a caller has to bring (eigenvalues), or there is no driver at all.
SCRATCH = {"EigenValues": "order * (order + 5)", **dict.fromkeys(
    ["EigenValuesVectors", "EigenValuesVectorsLeft", "EigenValuesVectorsRight"], "order * (3 * order + 5)")}

KINDS = {"m": "matrix", "t": "matrix", "v": "vector", "c": "constant", "scalars": "number", "block": "block"}


def statuses():
    """Those of the header, where they are written down."""
    rows = re.findall(r"(korStatus\w+) = (-?\d+),?\s*/\*\*< (.*?) \*/", header.PREAMBLE)
    return [{"name": name, "value": int(value), "meaning": meaning} for name, value, meaning in rows]


def page(group):
    """Of the HTML that doxygen makes of the header."""
    return f"group__{group.replace('_', '__')}.html"


def groups(tables):
    for name, about in tables.groups.items():
        title, *text = about.strip().split("\n")
        yield {"name": name, "title": title, "page": page(name), "text": "\n".join(text)}


def stored_shape(form, operand):
    """The sizes of an operand as it is stored: rows and columns of a matrix, length of a vector."""
    sizes = form.named("size")
    letters = form.family.letters
    own = [f"{operand.name}{word}" for word in ("Height", "Width")]
    if operand.kind in ("m", "t"):
        if own[0] in sizes:
            return own
        if "order" in sizes:
            return ["order", "order"]
        if operand.output and "N" in letters:
            return [letters["M"], letters["N"]]
        if "width" in sizes:
            turned = operand.kind == "t" or (operand.output and form.family.operation == "Transpose")
            return ["width", "height"] if turned else ["height", "width"]
        return ["4", "4"]
    if operand.kind == "v":
        if form.family.operation == "QRBackSubst":
            return ["width" if operand.output else "height"]
        if f"{operand.name}Length" in sizes:
            return [f"{operand.name}Length"]
        if operand.output and ("M" in letters or "src1Height" in sizes):
            return [letters.get("M", "src1Height")]
        return [next((name for name in ("length", "order") if name in sizes), "3")]
    if operand.kind == "block":
        return ["height", "width"] if "width" in sizes else ["length"]
    return []


def layout_of(operand):
    if operand.bare:
        return "packed"
    if operand.kind == "c" and not operand.array:
        return "value"
    return "pointer" if operand.tabled else "list" if operand.listed else "standard"


def operands(form):
    for operand in form.operands.values():
        parts = {part[0].lower() + part[1:]: operand.prefix + part for part, _ in operand.parts()}
        yield {
            "name": operand.name,
            "kind": KINDS[operand.kind],
            "transposed": operand.kind == "t",
            "output": operand.output,
            "array": operand.array,
            "layout": layout_of(operand),
            "shape": stored_shape(form, operand),
            **parts,
        }


def extra_elements(form, argument, families):
    """How many elements an argument outside the grammar of operands leads to."""
    operation = form.family.operation
    if argument.name == "buffer":
        pieces = {family.operation: family.scratch["buffer"] for family in families if family.scratch}
        return {**pieces, **SCRATCH}[operation]
    each = form.is_array and (argument.name in form.family.per_object or not argument.type.startswith("const"))
    return "order * count" if each else "order"


def fixed_elements(form, name):
    group, operation = form.family.group, form.family.operation
    if group == "fixed_constructors":
        return 16 if name == "dst" else 3
    if group == "fixed_matrices":
        return 1 if name == "det" or (name == "dst" and operation in ("Det", "IsIdentity")) else 16
    if name in ("projection", "view", "world") or (group == "transforms" and name == "src1"):
        return 16
    if name == "dst" and operation == "AffineTransform":
        return 4
    number = operation in ("DotProduct", "Len", "LenSqr") or form.name == "kormCrossProduct_v2_32f"
    return 1 if name == "dst" and number else form.vector_size


def pointer_role(type_):
    return "input" if type_.startswith("const") else "output"


def argument_row(name, type_, role, **more):
    unit = {"stride": "bytes", "offset": "bytes", "size": "elements", "count": "objects"}.get(role)
    return {"name": name, "type": type_, "role": role, **({"unit": unit} if unit else {}), **more}


def grammar_arguments(form, families):
    for argument in form.arguments:
        operand = {"operand": argument.operand.name} if argument.operand else {}
        if argument.role == "pointer" and argument.name in form.family.extras:
            role = "scratch" if argument.name == "buffer" else pointer_role(argument.type)
            operand["elements"] = extra_elements(form, argument, families)
        elif argument.role == "pointer":
            role = pointer_role(argument.type)
        else:
            role = argument.role
        yield argument_row(argument.name, argument.type, role, **operand)


def fixed_arguments(form):
    for argument in form.arguments:
        if argument.type.endswith("*"):
            elements = str(fixed_elements(form, argument.name))
            yield argument_row(argument.name, argument.type, pointer_role(argument.type), elements=elements)
        elif argument.name.endswith("Stride"):
            yield argument_row(argument.name, argument.type, "stride")
        else:
            yield argument_row(argument.name, argument.type, "count" if argument.name == "count" else argument.role)


def checks(form):
    for check in form.checks:
        when = {"when": check.condition} if check.condition else {}
        yield {"status": check.status, "about": check.words, "arguments": check.names, **when}


def limit(form):
    """From which estimate of its work on a call is spread over threads: from `adjacent` on where elements touch."""
    if form.limit is None:
        return None
    first = 1 if form.limit.comparison == "<=" else 0
    return {
        "estimate": form.spelled(form.family.estimate),
        "adjacent": form.limit.plain + first,
        "strided": form.limit.general + first,
    }


def function(form, families):
    fixed = isinstance(form, FixedForm)
    layout = None if fixed else {"sources": form.layout.split()[0], "results": form.layout.split()[-1]}
    match = {"match": form.family.match} if form.family.match else {}
    return {
        "name": form.name,
        "operation": form.family.operation,
        "word": form.word,
        "element": form.element,
        "layout": layout,
        "array": form.is_array,
        "group": form.family.group,
        "page": page(form.family.group),
        "formula": form.formula,
        "returns": "status",
        "operands": [] if fixed else list(operands(form)),
        "arguments": list(fixed_arguments(form) if fixed else grammar_arguments(form, families)),
        "checks": list(checks(form)),
        **match,
        "threads": limit(form),
    }


def query(row):
    arguments = [re.fullmatch(r"(.*?)(\w+)", text).groups() for text in row.arguments.split(", ") if text != "void"]
    return {
        "name": row.name,
        "operation": row.name.removeprefix("korm").partition("_")[0],
        "word": "",
        "element": row.name.partition("_")[2] or None,
        "layout": None,
        "array": False,
        "group": row.group,
        "page": page(row.group),
        "formula": row.brief,
        "returns": "status" if row.returns.startswith("int32_t") else row.returns.strip(),
        "operands": [],
        "arguments": [
            argument_row(name, type_.strip(), pointer_role(type_), elements="1") if "*" in type_
            else argument_row(name, type_.strip(), "size") for type_, name in arguments
        ],
        "checks": [
            {"status": "korStatusNullPointer", "about": "null", "arguments": ["size"]},
            {"status": "korStatusBadSize", "about": "size", "arguments": ["order"]},
        ] if arguments else [],
        "threads": None,
    }


def text(tables, version):
    families = [family for family in tables.families if isinstance(family, Family)]
    functions = [query(form) if isinstance(form, Query) else function(form, families) for form in tables.exports]
    head = {"$schema": SCHEMA, "name": "korm", "version": version, "statuses": statuses(), "groups": list(groups(tables))}
    opening = json.dumps(head, indent=1)[:-2]
    rows = ",\n".join("  " + json.dumps(row) for row in functions)  # a function a line, so that grep finds all of it
    return f'{opening},\n "functions": [\n{rows}\n ]\n}}\n'
