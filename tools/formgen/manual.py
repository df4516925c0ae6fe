"""Manual pages in mdoc: one of section 3 for a function and its twin of the other element type, and korm(7).

They are made from what korm.json says of a function, from its example, and from the header's conventions; no fact stands here alone.
"""

import re
import textwrap

import emit
import examples
import header

STATUS = "int32_t"


def escaped(text):
    """Backslashes, and the two characters that roff would draw otherwise: a minus is no hyphen."""
    text = text.replace("\\", "\\e").replace("^", "\\(ha")
    return re.sub(r"(?<![A-Za-z])-|-(?![A-Za-z])", r"\\-", text)


def inline(text):
    """The header's marks of code and of links."""
    text = re.sub(r"\[([^]\n]+)\]\([^)]*\)", r"\1", escaped(text))
    return re.sub(r"`([^`]+)`|::(\w+)", lambda found: rf"\fB{found[1] or found[2]}\fR", text)


def sentences(text):
    """Each begins on a line of its own, which is how roff knows where one ends."""
    words = inline(" ".join(text.split()))
    for sentence in re.split(r"(?<=[.!?:]) (?=\W*[A-Z0-9\\])", words):
        for line in textwrap.wrap(sentence, 78, break_long_words=False, break_on_hyphens=False):
            yield rf"\&{line}" if line[0] in ".'" else line


def table(rows):
    """In columns, or entry by entry where they would be too wide."""
    cells = [[cell.strip() for cell in row.strip().strip("|").split("|")] for row in rows]
    headings, _, *entries = cells
    *widths, _ = (max(len(cell) for cell in column) for column in zip(*cells))
    if sum(widths) > 60:
        yield ".Bl -tag -width Ds"
        for first, *others in entries:
            yield f".It {headings[0]} {first}"
            for heading, cell in zip(headings[1:], others):
                yield from sentences(f"{heading[0].upper()}{heading[1:]}: {cell}.")
    else:
        yield ".Bl -column " + " ".join(f'"{"x" * width}"' for width in widths) + ' "x"'
        for row in [headings, *entries]:
            yield ".It " + " Ta ".join(rf'"\&{inline(cell)}"' for cell in row)
    yield ".El"


def paragraphs(text):
    for number, block in enumerate(filter(None, re.split(r"\n\s*\n", text.strip()))):
        if block.startswith("|"):
            yield from table(block.split("\n"))
        else:
            yield from ([".Pp"] if number else []) + list(sentences(block))


def address(operand):
    """Where an element lies."""
    name, layout, vector = operand["name"], operand["layout"], operand["kind"] == "vector"
    single = operand["kind"] == "constant"
    if layout == "pointer":
        start = name if single else f"{name}[i]" if vector else f"{name}[i*{operand['shape'][1]} + j]"
    else:
        start = f"{name}[k]" if layout == "list" else name
    steps = [operand[key] if key == "offset" else f"{index}*{operand[key]}" for key, index in (
        ("offset", ""), ("objectStride", "k"), ("rowStride", "i"), ("elementStride", "i" if vector else "j")) if key in operand]
    return " + ".join([start, *steps])


def operand_text(operand):
    kind, many, does = operand["kind"], operand["array"], "written" if operand["output"] else "read"
    if operand["layout"] == "value":
        return "A constant, for all objects."
    noun = {"matrix": ("matrices", "matrix"), "vector": ("vectors", "vector"), "constant": ("constants", "constant"),
            "number": ("numbers", "number"), "block": ("packed objects", "packed object")}[kind][not many]
    shape = [length if length.isdigit() else f"`{length}`" for length in operand["shape"]]
    sizes = ["", f" of {''.join(shape)} elements", f" of {' rows and '.join(shape)} columns"][len(shape)]
    turned = ", as stored; it is read as its transpose" if operand["transposed"] else ""
    text = f"{f'`count` {noun}' if many else f'One {noun}'}{sizes}, {does}{turned}."
    if operand["layout"] == "packed":
        return text + (" They lie one behind the other." if many else "")
    index = {"matrix": "(i,j)", "vector": "i"}.get(kind)
    of = f"Element {index}" if index else "The constant"
    return f"{text} {of}{' of object k' if many else ''} lies at `{address(operand)}`."


def argument_text(argument, strided):
    if "elements" in argument:
        does = {"scratch": "scratch, whatever its content", "input": "read", "output": "written"}[argument["role"]]
        count = argument["elements"]
        return f"{count} element{'' if count == '1' else 's'}{' of each object' if strided else ''}, {does}."
    return {"size": "In elements.", "count": "How many objects there are.", "stride": "Bytes from one object to the next.",
            "value": "A number."}[argument["role"]]


def arguments(function):
    """All arguments of an operand have one entry, and so have all sizes."""
    operands = {operand["name"]: operand for operand in function["operands"]}
    entries = {}
    for argument in function["arguments"]:
        shared = "sizes" if argument["role"] == "size" else argument["name"]
        entries.setdefault(argument.get("operand", shared), []).append(argument)
    for name, members in entries.items():
        yield ".It " + " , ".join(f"Fa {argument['name']}" for argument in members)
        yield from sentences(operand_text(operands[name]) if name in operands
                             else argument_text(members[0], f"{name}Stride" in entries))


def synopsis(function):
    yield f".Ft {quoted(STATUS if function['returns'] == 'status' else function['returns'])}"
    yield f".Fo {function['name']}"
    for argument in function["arguments"] or [{"type": "void", "name": ""}]:
        space = "" if argument["type"].endswith("*") else " "
        yield f".Fa {quoted((argument['type'] + space + argument['name']).strip())}"
    yield ".Fc"


def quoted(text):
    return f'"{text}"' if " " in text else text


def threads(function):
    limit = function["threads"]
    if not limit:
        return
    other = f", from {limit['strided']} on where an element stride isn't the element size" if limit["strided"] != limit["adjacent"] else ""
    yield ".Sh IMPLEMENTATION NOTES"
    yield from sentences(f"A call is spread over threads from an estimate of {limit['adjacent']} on{other}. The estimate is "
                         f"`{limit['estimate']}`, in 32 bits.")


def statuses(function, status_text):
    if function["returns"] != "status":
        return
    yield ".Sh RETURN VALUES"
    if function["checks"]:
        yield from sentences("The first of these checks that fails gives its status, before anything is read or written:")
        yield ".Bl -enum -compact"
        for check in function["checks"]:
            when = f" if `{check['when']}`" if "when" in check else ""
            what = f"`{function['match']}`" if check["about"] == "match" else ", ".join(f"`{name}`" for name in check["arguments"])
            yield ".It"
            yield from sentences(f"::{check['status']}: {what}{when}")
        yield ".El"
        yield ".Pp"
    yield from paragraphs(status_text or "::korStatusOk")


def code(text):
    yield from [".Bd -literal", *(escaped(line).replace("'", "\\(aq") for line in text.rstrip().split("\n")), ".Ed"]


def opening(document, date, title, section):
    return [f'.\\" korm {document["version"]}. {emit.NOTICE}', f".Dd {date}", f".Dt {title.upper()} {section}", ".Os", ".Sh NAME"]


def function_page(document, date, twins, relatives, program):
    function = twins[0]
    group = next(group for group in document["groups"] if group["name"] == function["group"])
    title, formula = group["title"], function["formula"].replace("`", "").rstrip(".")
    status = re.search(r"^Status: .*?(?=\n\s*\n|\Z)", group["text"], re.M | re.S)
    about = group["text"].replace(status[0], "") if status else group["text"]
    yield from opening(document, date, function["name"], 3)
    yield " ,\n".join(f".Nm {twin['name']}" for twin in twins)
    yield rf".Nd {escaped(f'{title}: {formula}')}\&"  # a bracket at its end is no punctuation
    yield from [".Sh LIBRARY", "korm (libkorm, \\-lkorm)", ".Sh SYNOPSIS", ".In korm.h"]
    for twin in twins:
        yield from synopsis(twin)
    yield from [".Sh DESCRIPTION", *sentences(f"{title}: `{formula}`")]
    if function["arguments"]:
        yield from [".Bl -tag -width Ds", *arguments(function), ".El"]
    if about.strip():
        yield from [".Pp", *paragraphs(about)]
    yield from threads(function)
    yield from statuses(function, status and status[0].removeprefix("Status: "))
    yield from [".Sh EXAMPLES", *code(program.text())]
    names = [f".Xr {name} 3" for name in relatives] + [".Xr korm 7"]
    yield from [".Sh SEE ALSO", " ,\n".join(names)]


def overview(document, date, pages):
    """The conventions as the header opens with them, and the functions by group."""
    text = re.sub(r"^ \* ?", "", header.PREAMBLE.partition("@mainpage korm\n")[2].partition("\n */")[0], flags=re.M)
    yield from opening(document, date, "korm", 7)
    yield from [".Nm korm", ".Nd numeric primitives for small dense matrices and vectors", ".Sh SYNOPSIS", ".In korm.h",
                ".Sh DESCRIPTION", f"This is version {document['version']}.", "Programs are linked with \\-lkorm."]
    for section in re.split(r"^@section \w+ ", text, flags=re.M)[1:]:
        title, _, body = section.partition("\n")
        yield from [f".Ss {title}", *paragraphs(body)]
    yield from [".Ss Functions", ".Bl -tag -width Ds"]
    for group in document["groups"]:
        members = [twins[0] for twins in reversed(pages.values()) if twins[0]["group"] == group["name"]]
        first = {function["operation"]: function["name"] for function in members}  # of an operation
        yield from [f".It {group['title']}", " ,\n".join(f".Xr {name} 3" for name in sorted(first.values()))]
    yield from [".El", ".Ss Statuses", ".Bl -tag -width Ds"]
    for status in document["statuses"]:
        yield from [f".It Dv {status['name']} Pq {escaped(str(status['value']))}", *sentences(status["meaning"])]
    yield ".El"


def kin(function):
    """Equal for functions that differ in the element type alone."""
    return re.sub(r"32f|64f", "", re.sub(r"\b(float|double)\b", "real", str(function)))


def related(function, other):
    """One operation, and operands or layout and type in common."""
    shares = [function[key] == other[key] for key in ("operation", "group", "word", "layout", "element")]
    return shares != [True] * 5 and all(shares[:2]) and (shares[2] or all(shares[3:]))


def pages(document, date):
    """Path below the manual's folder to text; a twin's page is a link to the first one's."""
    together = {}
    for function in document["functions"]:
        together.setdefault(kin(function), []).append(function)
    named = {twins[0]["name"]: twins for twins in together.values()}
    programs = examples.programs(document)
    texts = {"man7/korm.7": overview(document, date, named)}
    for name, twins in named.items():
        relatives = [other for other in named if related(named[other][0], twins[0])]
        texts[f"man3/{name}.3"] = function_page(document, date, twins, relatives, programs[name])
        texts.update({f"man3/{twin['name']}.3": [f".so man3/{name}.3"] for twin in twins[1:]})
    return {path: "\n".join(lines) + "\n" for path, lines in texts.items()}
