"""The C++ and assembly text of forms: what a careful person would write by hand, 874 times."""

from itertools import groupby
import re
import textwrap

from fixed import FixedForm

NOTICE = "Written by tools/formgen from the tables of forms; edit those instead."
WIDTH = 110

SHAPES = {("width", "height"): "MatrixShape{{{}}}", ("length",): "VectorShape{{{}}}"}  # others as they are

TESTS = {  # letter of a check to the function that makes it
    "N": "anyNull",
    "C": "anyBelowOne",
    "S": "anyBelowOne",
    "T": "anyBadStride<{scalar}>",
    "O": "anyBadOffset<{scalar}>",
}


def wrapped(head, items, tail, indent=4):
    """`head` + items + `tail`, broken into lines where it is too long for one."""
    line = head + ", ".join(items) + tail
    if len(line) <= WIDTH:
        return line
    pad = " " * (len(head) - len(head.lstrip()) + indent)
    lines, current = [head.rstrip()], pad
    for number, item in enumerate(items):
        piece = item + (tail if number == len(items) - 1 else ", ")
        if len(current) + len(piece.rstrip()) > WIDTH:
            lines.append(current.rstrip())
            current = pad
        current += piece
    return "\n".join(lines + [current])


def returns_call(function, arguments, level):
    return wrapped(f"{'    ' * level}return {function}(", arguments, ");")


def c_declarations(form):
    return [argument.declare() for argument in form.arguments]


def kernel_declarations(form):
    """A kernel's parameters: the entry function's, but for offsets that a driver shifts (see parallel.h)."""
    for argument in form.arguments:
        wide = argument.role == "offset" and argument.operand.tabled and argument.operand.array
        yield f"std::ptrdiff_t {argument.name}" if wide else argument.declare()


def names(form):
    return [argument.name for argument in form.arguments]


def test(form, letter):
    return TESTS[letter].format(scalar=form.scalar)


def check_lines(form, without=()):
    """The checks in the form's order, but for arguments that are known to be right."""
    for check in form.checks:
        checked = [name for name in check.names if name not in without]
        condition = f"{check.condition} && " if check.condition else ""
        if check.letter == "M":
            yield f"    if (!({form.family.match})) return {check.status};"
        elif checked:
            yield wrapped(f"    if ({condition}{test(form, check.letter)}(", checked, f")) return {check.status};", 8)


def adjacent(form):
    return f"allAdjacent<{form.scalar}>({', '.join(form.element_strides)})"


def function(name, declarations, lines, attributes=""):
    return "\n".join([wrapped(f"{attributes}int32_t {name}(", declarations, ") {"), *lines, "}"])


def entry_functions(form):
    """Single objects with strides choose first and check then: element strides that equal the element size
    are right, and the short road is the one that most calls take."""
    if form.family.entry_only:
        work = ["    " + template_call(form, form.family.kernel, plain=False), "    return korStatusOk;"]
        return [function(form.entry, c_declarations(form), [*check_lines(form), *work])]
    if form.is_array or len(form.kernels) == 1:
        return [entry_function(form, [*check_lines(form), *shortcut(form), *dispatch(form)])]
    plain, general = [returns_call(kernel, names(form), 1) for kernel in form.kernels]
    if form.family.light:
        other = [textwrap.indent(line, "    ") for line in [*check_lines(form), general]]
        return [entry_function(form, [f"    if (!{adjacent(form)}) {{", *other, "    }", *light_check_lines(form), plain])]
    elsewhere = wrapped(f"        return {strided_entry(form)}(", names(form), ");")
    checked = [*check_lines(form, form.element_strides), *shortcut(form)]
    other = [*check_lines(form), *shortcut(form), general]
    return [
        function(strided_entry(form), c_declarations(form), other, "[[gnu::flatten, gnu::noinline]] "),
        entry_function(form, [f"    if (!{adjacent(form)}) {{", elsewhere, "    }", *checked, plain]),
    ]


def entry_function(form, lines):
    """A single object's kernel is a few instructions and goes into its entry function: handing up to eleven arguments
    on would cost more than the checks. Kernels that are not to have a second copy say so themselves."""
    return function(form.entry, c_declarations(form), lines, "" if form.is_array else "[[gnu::flatten]] ")


def light_check_lines(form):
    """Checks before a kernel that looks at the sizes itself: they come into it only where a stride is bad too."""
    sizes = form.named("size")
    yield from check_lines(form, [*form.element_strides, *sizes, *form.row_strides])
    if form.row_strides:
        yield wrapped(f"    if ({test(form, 'T')}(", form.row_strides, ")) {", 8)
        yield f"        return {test(form, 'S')}({', '.join(sizes)}) ? korStatusBadSize : korStatusBadStride;"
        yield "    }"


def strided_entry(form):
    return f"{form.entry}_strided"


def shortcut(form):
    """A shortcut's views are plain or of tables: it is taken before element strides are looked at."""
    taken = form.family.shortcut
    if taken is None:
        return []
    call = template_call(form, taken.template, plain=True, level=2)
    return [f"    if ({taken.condition}) {{", f"        return {call}", "    }"]


def dispatch(form):
    """After the checks: below the limit to a kernel, else to the driver."""
    plain, general = form.kernels[0], form.kernels[-1]
    limit = form.limit
    if limit is None:
        lines, choices, last = [], [(adjacent(form), plain)], general
    else:
        lines, last = ["    " + estimate(form)], form.driver
        serial = f"estimate {limit.comparison}"
        strided = "" if limit.plain == limit.general else f" && !{adjacent(form)}"
        choices = [(f"{serial} {limit.plain} && {adjacent(form)}", plain), (f"{serial} {limit.general}{strided}", general)]
    if plain == general:
        choices = [] if limit is None else [(f"{serial} {limit.plain}", plain)]
    for condition, kernel in choices:
        lines += [f"    if ({condition}) {{", returns_call(kernel, names(form), 2), "    }"]
    return lines + [returns_call(last, names(form), 1)]


def estimate(form):
    """The estimate's formula; every operand of it is an Estimate, so that all arithmetic wraps."""
    numbers = {*form.named("size"), "count"}
    formula = re.sub(r"\w+", lambda word: f"Estimate({word[0]})" if word[0] in numbers else word[0],
                     form.spelled(form.family.estimate))
    return f"const Estimate estimate = {formula};"


def pitch_of(form, operand):
    """How many entries of a table make a stored row."""
    own = f"{operand.name}Width"
    if own in names(form):
        return own
    if operand.output and form.family.result_width:
        return form.spelled(form.family.result_width)
    if "order" in form.named("size"):
        return "order"
    return {"m": "width", "t": "height", "v": "length" if "length" in names(form) else "noRows"}[operand.kind]


def view(form, operand, plain):
    """The maker call of views.h for one operand."""
    if operand.bare:
        return operand.name
    given = [operand.prefix + part for part, _ in operand.parts() if not (plain and part == "ElementStride")]
    if operand.kind == "c":
        maker = "constant"
    elif operand.tabled:
        maker = "scattered"
        given.append(pitch_of(form, operand))
    else:
        maker = "plain" if plain else "strided"
        if operand.kind == "v":
            given.insert(len(given) - (not plain), "noRows")
    array = "List" if operand.listed else "Array" if operand.array else ""
    text = f"{maker}{array}({', '.join([operand.name, *given])})"
    return f"transposed({text})" if operand.kind == "t" else text


def kernel_function(form, kernel):
    """The arguments as views, extras as they are, sizes as a shape, in a call of the family's template."""
    call = template_call(form, form.template(kernel), form.is_plain(kernel))
    body = f"    return {call}" if form.family.merges_status else f"    {call}\n    return korStatusOk;"
    # Kernels of array forms are called from entry function and driver, and show in a profile under their own names. A light
    # kernel for any stride is handed all but two arguments in registers where there are eight, and has no second copy then.
    called = form.is_array or (form.family.light and not form.is_plain(kernel) and len(form.arguments) <= 8)
    return function(kernel, list(unused_marked(form, call)), [body], "[[gnu::noinline]] " if called else "")


def template_call(form, template, plain, level=1):
    sizes = form.named("size")
    shape = form.spelled(form.family.shape) or SHAPES.get(tuple(sizes), "{}").format(", ".join(sizes))
    parts = [view(form, operand, plain) for operand in form.operands.values()]
    parts += [argument.name for argument in form.extras]
    parts.append(", ".join([*filter(None, [shape]), "count" if form.is_array else "oneObject"]))
    indent = "\n" + "    " * (level + 1)
    return f"{template}({indent}" + f",{indent}".join(parts) + ");"


def unused_marked(form, call):
    """A kernel takes the arguments of its entry function, also those it has no use for (element strides in plain
    layouts, sizes that are those of another operand), so that a call passes through untouched."""
    used = set(re.findall(r"\w+", call))
    for name, text in zip(names(form), kernel_declarations(form)):
        yield text if name in used else f"{text[: -len(name)]}/*{name}*/"


def driver_function(form):
    lines = []
    kernel = form.kernels[0]
    if len(form.kernels) == 2:
        lines.append(f"    const bool adjacent = {adjacent(form)};")
        lines.append(wrapped("    const auto kernel = ", [f"adjacent ? {kernel} : {form.kernels[1]}"], ";"))
        kernel = "kernel"
    for elements in form.family.scratch.values():
        lines.append(f"    const std::size_t pieceSize = sizeof({form.scalar}) * ({full_width(form, elements)});")
    lines.append(f"    return forEachRun({', '.join(['count', *region(form)])} {{")
    arguments = [shifted(form, argument) for argument in form.arguments]
    lines.append(wrapped(f"        return {kernel}(", arguments, ");"))
    return function(form.driver, c_declarations(form), lines + ["    });"], "[[gnu::noinline]] ")


def region(form):
    """What a driver tells the frame beside the count, up to the head of its lambda."""
    family = form.family
    if not family.merges_status and not family.scratch:
        return ["[=](Run run)"]
    statuses = f"Statuses::{'merged' if family.merges_status else 'none'}"
    for name in family.scratch:
        return [statuses, f"Scratch{{pieceSize, {name}}}", "[=](Run run, void* piece)"]
    return [statuses, "Scratch{}", "[=](Run run, void*)"]


def full_width(form, formula):
    """A number of elements: computed in full width, unlike an estimate."""
    sizes = form.named("size")
    return re.sub(r"\w+", lambda word: f"static_cast<std::size_t>({word[0]})" if word[0] in sizes else word[0],
                  form.spelled(formula))


def shifted(form, argument):
    """An argument as the kernel of a run sees it: moved to the run's first object."""
    operand = argument.operand
    if argument.role == "count":
        return "run.count"
    if argument.name in form.family.per_object:
        return f"shiftedElements({argument.name}, run.first, {form.family.per_object[argument.name]})"
    if argument.name in form.family.scratch:
        return f"static_cast<{form.scalar}*>(piece)"
    if operand is None or not operand.array:
        return argument.name
    if operand.bare:
        return f"shiftedElements({argument.name}, run.first)"
    if operand.tabled:
        stride = f"{operand.prefix}ObjectStride"
        return f"shiftedOffset({argument.name}, run.first, {stride})" if argument.role == "offset" else argument.name
    if argument.role != "pointer":
        return argument.name
    if operand.listed:
        return f"shiftedList({argument.name}, run.first)"
    return f"shifted({argument.name}, run.first, {operand.prefix}ObjectStride)"


def fixed_function(form):
    """A function of fixed size: its checks, if it has any, and the arithmetic. It is little more than a call: one that
    begins in the middle of a line of code and goes on in the next costs a cycle more than one that fits, out of nine or ten."""
    call = returns_call(form.kernel, names(form), 1)
    if not form.family.fails:
        call = call.replace("return ", "", 1) + "\n    return korStatusOk;"
    return function(form.entry, c_declarations(form), [*check_lines(form), call], "[[gnu::flatten, gnu::aligned(64)]] ")


def functions(form):
    """All functions of one form, those first that are called by others."""
    if isinstance(form, FixedForm):
        return [fixed_function(form)]
    driver = [] if form.limit is None else [driver_function(form)]
    return [kernel_function(form, kernel) for kernel in form.kernels] + driver + entry_functions(form)


def source(family_forms):
    """One .cpp: the forms of one documentation group and element type, each with all its functions. They stand in the
    namespace of their kernels, with C names, so that profiles and stack traces show them bare."""
    headers = {"entry/checks.h", "entry/variant.h", *(form.family.source for form in family_forms)}
    if not all(isinstance(form, FixedForm) for form in family_forms):
        headers |= {"entry/parallel.h", "entry/views.h"}
    parts = [f"// {NOTICE}", "\n".join(f'#include "{name}"' for name in sorted(headers))]
    for folder, forms in groupby(family_forms, key=lambda form: form.family.source.partition("/")[0]):
        parts.append(f'namespace korm::inline KORM_VARIANT::{folder} {{\nextern "C" {{')
        for form in forms:
            parts += [f"// --- {form.name}: {form.formula}", *functions(form)]
        parts.append(f'}}  // extern "C"\n}}  // namespace korm::inline KORM_VARIANT::{folder}')
    return "\n\n".join(parts) + "\n"


def in_cores(folder, includes, parts):
    namespace = f"korm::inline KORM_VARIANT::{folder}::cores"
    lines = "\n".join(f'#include "{name}"' for name in includes)
    return "\n\n".join([lines, f"namespace {namespace} {{", *parts, f"}}  // namespace {namespace}"]) + "\n"


def cores_header(folder, cores):
    parts = []
    for core in cores:
        functions = list(core.functions())
        lines = [f"// {core.about}"]
        for one in functions:
            if "<" in one.name:
                primary = wrapped(f"template <int>\n{core.returns} {one.name.partition('<')[0]}(", one.declarations, ");")
                lines += [primary] if primary not in lines else []
        for one in functions:
            head = "template <>\n" if "<" in one.name else ""
            lines.append(wrapped(f"{head}[[gnu::noinline]] {core.returns} {one.name}(", one.declarations, f') asm(KORM_SYMBOL("{one.symbol}"));'))
        parts.append("\n".join(lines))
    return f"// {NOTICE}\n#pragma once\n\n#include <cstddef>\n#include <cstdint>\n\n" + in_cores(
        folder, ["entry/variant.h", "entry/views.h"], parts)


def cores_source(folder, cores):
    """A core is its kernel, in a function of its own."""
    parts = []
    for one in (one for core in cores for one in core.functions()):
        passed = [re.split(r"[ *&]", declared)[-1] for declared in one.declarations]
        head = "template <>\n" if "<" in one.name else ""
        parts.append(wrapped(f"{head}{one.core.returns} {one.name}(", one.declarations, ") {")
                     + "\n" + returns_call(f"{folder}::{one.kernel}", passed, 1) + "\n}")
    return f"// {NOTICE}\n\n" + in_cores(folder, sorted({f"{folder}/cores.h", *(core.source for core in cores)}), parts)


STUBS = """\
// {notice}
//
// For each export a stub and its record. A stub jumps through slot 0 of the record and leaves stack and
// arguments as they are, so one shape serves every argument list. Records are 16 bytes apart in one run.

#if defined(__x86_64__)
#define SLOT .quad
#define JUMP_THROUGH(record) jmp *record(%rip)
#else
// %eax carries no argument; the thunk puts the address of the next instruction into it.
#define SLOT .long
#define JUMP_THROUGH(record) \\
    call korm_pc_thunk_ax; addl $_GLOBAL_OFFSET_TABLE_, %eax; jmp *record@GOTOFF(%eax)
#endif

#define EXPORT(name, record, entry) \\
    .text; .p2align 4; .globl name; .type name, @function; name: .cfi_startproc; JUMP_THROUGH(record); \\
    .cfi_endproc; .size name, . - name; .hidden entry; \\
    .data; .p2align 4; .type record, @object; .size record, 16; record: SLOT entry; .p2align 4, 0

#if !defined(__x86_64__)
    .text; .p2align 4; .type korm_pc_thunk_ax, @function
korm_pc_thunk_ax: .cfi_startproc; movl (%esp), %eax; ret; .cfi_endproc
    .size korm_pc_thunk_ax, . - korm_pc_thunk_ax
#endif

{exports}

    .section .note.GNU-stack, "", @progbits
"""


def stubs(exports):
    rows = "\n".join(f"EXPORT({form.name}, {form.name}_arraddr, {form.entry})" for form in exports)
    return STUBS.format(notice=NOTICE, exports=rows)


def sources(families):
    """The generated .cpp files: name to forms, one file for each group and element type."""
    forms = sorted((form for family in families for form in family.forms()), key=file_name)
    return {name: list(group) for name, group in groupby(forms, key=file_name)}


def file_name(form):
    return f"{form.family.group}_{form.element}.cpp"
