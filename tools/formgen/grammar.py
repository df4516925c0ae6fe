"""From rows of the tables to forms: names, arguments, checks, kernels.

A row of a table (a Family) names an operation, its operand words, and what is common to them. One
Family expands to forms, one for each operand word, element type and layout. Everything else, from
the C prototype to the parallel driver, follows from a form by the rules in this file.
"""

from dataclasses import dataclass, field
from fnmatch import fnmatchcase
from pathlib import Path
import re

ROOT = Path(__file__).resolve().parents[2]

ELEMENTS = {"32f": ("float", 4), "64f": ("double", 8)}

# How a letter of a suffix is called.
LAYOUTS = {"S": "standard", "L": "list", "P": "pointer"}

# The processor variant: internal names begin with it.
VARIANT = re.search(r"#define KORM_VARIANT (\w+)", (ROOT / "src/entry/variant.h").read_text())[1]

# The checks by their letters, with the status that each gives.
CHECKS = {
    "N": ("null", "korStatusNullPointer"),
    "C": ("count", "korStatusBadCount"),
    "S": ("size", "korStatusBadSize"),
    "T": ("stride", "korStatusBadStride"),
    "O": ("offset", "korStatusBadOffset"),
    "M": ("match", "korStatusSizeMismatch"),
}

# The order of the checks where a table says nothing else. A check of nothing is left out: a single object in the
# standard layout has "N S T", in the pointer layout "N S O".
GENERAL_ORDER = "N C S T O"

# What a check of strides may be narrowed to, as in "T:objects"; the name of an operand narrows any check. Distances
# between objects that are checked by themselves are looked at only where there is more than one object.
NARROWED = {"inner": "stride within an object", "objects": "stride between objects, if count is above 1"}


ARRAY, SINGLE = "- L P", "- P"  # layout suffixes of a Family: an array form has all three, a single object no list


@dataclass(frozen=True)
class Limit:
    """Up to where a work estimate stays serial: below a number, or up to and including it."""

    comparison: str
    plain: int
    general: int


def below(plain, general=None):
    return Limit("<", plain, plain if general is None else general)


def up_to(plain, general=None):
    return Limit("<=", plain, plain if general is None else general)


def limits(standard_32f, standard_64f, list_32f, list_64f, pointer_32f, pointer_64f=None):
    """Those of an array form with all layouts; the last may be left out where both types have the same."""
    return {
        ("standard", "32f"): standard_32f,
        ("standard", "64f"): standard_64f,
        ("list", "32f"): list_32f,
        ("list", "64f"): list_64f,
        ("pointer", "32f"): pointer_32f,
        ("pointer", "64f"): pointer_64f or pointer_32f,
    }


def everywhere(limit):
    return limits(limit, limit, limit, limit, limit)


@dataclass(frozen=True)
class Departure:
    """One row of a family's exceptions: the forms it is about, what they do instead, and why."""

    forms: str
    value: object
    reason: str

    def covers(self, form):
        return any(fnmatchcase(form.stem_and_suffix, pattern) for pattern in self.forms.split())


@dataclass(frozen=True)
class Shortcut:
    """What an entry function answers itself after its checks, before any estimate: no kernel and no driver sees it."""

    condition: str
    template: str


@dataclass(frozen=True)
class Variant:
    """Kernels, by operands and suffix (mam_32f_LS2), and the template arguments that are theirs."""

    kernels: str
    arguments: str

    def covers(self, kernel):
        return any(fnmatchcase(kernel, pattern) for pattern in self.kernels.split())


@dataclass
class Family:
    operation: str
    operands: str  # operand words, such as "mam mat tam"
    layouts: str  # layout suffixes; "-" stands for none, two letters are the layouts of sources and of results
    signature: str  # words in argument order: operands, sizes, extras, count
    kernel: str  # the kernel template that serves all of these forms; {} in it is filled in from `variants`
    source: str  # the header that holds it
    group: str  # the documentation group of include/korm.h
    formula: str = ""  # left empty where the operands tell it; {src1[i,l]} is an element, transposed where src1 is
    estimate: str = ""
    limits: dict = field(default_factory=dict)  # (layout, type) to Limit; none: always serial, without a driver
    types: str = "32f 64f"
    reads: dict = field(default_factory=dict)  # operand word to what is read, where the name doesn't tell it
    results: str = "dst"  # their names, in order; "dstVectors:dst" has dstVectors, dstRowStride, ...
    result: str = ""  # their kind, where it isn't that of the operands: m, v, scalars, block
    extras: dict = field(default_factory=dict)  # words that are no operand and no size: name to C type
    per_object: dict = field(default_factory=dict)  # contiguous extras: their elements for each object
    order: str = GENERAL_ORDER  # of the checks, see Form.checks
    order_departures: list = field(default_factory=list)
    serial_departures: list = field(default_factory=list)  # forms without estimate and driver
    variants: list = field(default_factory=list)  # the first row that covers a kernel holds
    # Of operands with sizes beside them. Letters stand for sizes in `estimate`, in `shape`, which is what the kernel
    # is given, and in `result_width`. `match` is a C++ condition on sizes.
    letters: dict = field(default_factory=dict)
    shape: str = ""
    result_width: str = ""
    match: str = ""
    merges_status: bool = False
    # Kernels of single objects are a few instructions: the entry function holds those of both roads, and the plain one
    # looks itself at sizes that have no path of their own.
    light: bool = False
    scratch: dict = field(default_factory=dict)  # the argument that is scratch: elements of a thread's piece of it
    single_kernel: bool = False  # one kernel for any element stride
    entry_only: bool = False  # the entry function does the work itself, by the template for any element stride
    shortcut: object = None  # a Shortcut; its template takes the kernel template's arguments

    def forms(self):
        for word in self.operands.split():
            for layout in self.layouts.split():
                for element in self.types.split():
                    form = Form(self, word, element, "" if layout == "-" else layout)
                    if form.is_array or "L" not in form.suffix:
                        yield form


@dataclass(frozen=True)
class Operand:
    name: str
    kind: str  # m, t, v, c; scalars and block for bare results; fixed such as v3 or m4
    array: bool
    layout: str  # standard, list, pointer
    output: bool = False
    prefix: str = ""  # how the names of the arguments behind the base begin

    @property
    def bare(self):
        return len(self.kind) > 1

    @property
    def listed(self):
        return self.array and self.layout == "list"

    @property
    def tabled(self):
        return self.layout == "pointer" and self.kind != "c"

    def parts(self):
        """The arguments behind the base, as (suffix of the name, role)."""
        if self.bare or (self.kind == "c" and not self.array):
            return []
        if self.kind == "c":
            return [("Offset", "offset")] if self.listed else [("ObjectStride", "stride")]
        if self.tabled:
            return [("Offset", "offset")] + ([("ObjectStride", "stride")] if self.array else [])
        first = [("Offset", "offset")] if self.listed else [("ObjectStride", "stride")] if self.array else []
        rows = [("RowStride", "stride")] if self.kind in "mt" else []
        return first + rows + [("ElementStride", "stride")]

    def arguments(self, scalar):
        if self.kind == "c" and not self.array:
            return [Argument(self.name, scalar, "value", self)]
        const = "" if self.output else "const "
        if (self.tabled or self.listed) and not self.bare:
            base = f"{const}{scalar} *const *"
        else:
            base = f"{const}{scalar} *"
        return [Argument(self.name, base, "pointer", self)] + [
            Argument(self.prefix + part, "int32_t", role, self) for part, role in self.parts()
        ]

    def indices(self):
        """The operand's element in a formula."""
        inner = {"m": "i,j", "t": "j,i", "v": "j", "c": ""}.get(self.kind, "")
        text = ",".join(filter(None, ["k" if self.array else "", inner]))
        return f"{self.name}({text})" if text else self.name

    @property
    def object(self):
        """The whole of it in a formula."""
        return f"{self.name}(k)" if self.array else self.name

    def __getitem__(self, indices):
        """An element in a formula by its logical indices, as "i,j"."""
        stored = reversed(indices.split(",")) if self.kind == "t" else indices.split(",")
        return f"{self.name}({','.join([*(['k'] if self.array else []), *stored])})"


@dataclass(frozen=True)
class Argument:
    name: str
    type: str
    role: str  # pointer, value, stride, offset, size, count
    operand: object = None

    def declare(self):
        return self.type + ("" if self.type.endswith("*") else " ") + self.name


@dataclass(frozen=True)
class Check:
    letter: str
    names: list  # of the arguments
    narrowed: str = ""

    @property
    def status(self):
        return CHECKS[self.letter][1]

    @property
    def words(self):
        word = CHECKS[self.letter][0]
        return NARROWED.get(self.narrowed) or word + (f" of {self.narrowed}" if self.narrowed else "")

    @property
    def condition(self):
        """Of being made at all, in C++."""
        return "count > 1" if self.narrowed == "objects" else ""


SIZE = re.compile(r"(src\d?)?(width|height|length|order)", re.IGNORECASE)


@dataclass
class Form:
    family: Family
    word: str
    element: str
    suffix: str

    def __post_init__(self):
        self.scalar, self.size = ELEMENTS[self.element]
        read = self.family.reads.get(self.word, self.word)
        self.tokens = re.findall(r"(m4|v[234]|[mtvc])(a?)", read)
        self.is_array = "a" in self.word
        self.layout = " ".join(LAYOUTS[letter] for letter in self.suffix or "S")
        self.stem = f"{self.family.operation}_{self.word}_{self.element}"
        self.stem_and_suffix = self.stem + (f"_{self.suffix}" if self.suffix else "")
        self.name = "korm" + self.stem_and_suffix
        self.operands = {operand.name: operand for operand in self._operands()}
        self.arguments = list(self._arguments())

    def _operands(self):
        """The inputs as the formula reads them, then the results. A constant is val, whatever its place."""
        several = sum(kind != "c" for kind, _ in self.tokens) > 1
        number = 0
        layouts = self.layout.split()
        for kind, array in self.tokens:
            number += kind != "c"
            name = "val" if kind == "c" else f"src{number}" if several else "src"
            yield Operand(name, kind, bool(array), layouts[0], prefix=name)
        kind = self.family.result or ("m" if any(kind in "mt" for kind, _ in self.tokens) else "v")
        for result in self.family.results.split():
            name, _, prefix = result.partition(":")
            yield Operand(name, kind, self.is_array, layouts[-1], output=True, prefix=prefix or name)

    def _arguments(self):
        """What a word of the signature stands for: an operand's descriptor, an extra, a size or count."""
        for word in self.family.signature.split():
            if word in self.operands:
                yield from self.operands[word].arguments(self.scalar)
            elif word in self.family.extras:
                declared = self.family.extras[word].replace("element", self.scalar)
                yield Argument(word, declared, "pointer" if declared.endswith("*") else "value")
            elif SIZE.fullmatch(word):
                yield Argument(word, "int32_t", "size")
            elif word == "count" and self.is_array:
                yield Argument(word, "int32_t", "count")
            elif word != "count":
                raise ValueError(f"{self.name}: the signature's word '{word}' names nothing")

    @property
    def inputs(self):
        return [operand for operand in self.operands.values() if not operand.output]

    @property
    def extras(self):
        return [argument for argument in self.arguments if argument.name in self.family.extras]

    def named(self, role):
        return [argument.name for argument in self.arguments if argument.role == role]

    @property
    def element_strides(self):
        return [name for name in self.named("stride") if name.endswith("ElementStride")]

    @property
    def row_strides(self):
        return [name for name in self.named("stride") if name.endswith("RowStride")]

    @property
    def formula(self):
        if self.family.formula:
            return self.family.formula.format(**self.operands)
        return "{} = {} {} {}".format(
            self.operands["dst"].indices(),
            self.inputs[0].indices(),
            {"Add": "+", "Sub": "-", "Mul": "*"}[self.family.operation],
            self.inputs[1].indices(),
        )

    @property
    def check_order(self):
        for departure in self.family.order_departures:
            if departure.covers(self):
                return departure.value
        return self.family.order

    @property
    def checks(self):
        """The checks in order. In a table an order is written as letters, narrowed where need be: "N S T:src T:dst"."""
        for word in self.check_order.split():
            letter, _, narrowed = word.partition(":")
            names = [argument.name for argument in self._checked(letter, narrowed)]
            if names:
                yield Check(letter, names, narrowed)

    def _checked(self, letter, narrowed):
        if letter == "M":
            return [argument for argument in self.arguments if argument.name in re.findall(r"\w+", self.family.match)]
        role = {"N": "pointer", "C": "count", "S": "size", "T": "stride", "O": "offset"}[letter]
        arguments = [argument for argument in self.arguments if argument.role == role]
        if narrowed in NARROWED:
            objects = narrowed == "objects"
            return [argument for argument in arguments if argument.name.endswith("ObjectStride") == objects]
        if narrowed and narrowed not in self.operands:
            raise ValueError(f"{self.name}: there is no operand '{narrowed}' to check")
        return [argument for argument in arguments if not narrowed or argument.operand == self.operands[narrowed]]

    def spelled(self, formula):
        """A formula with the sizes in the place of their letters."""
        return re.sub(r"\w+", lambda word: self.family.letters.get(word[0], word[0]), formula)

    def template(self, kernel):
        """The template behind a kernel, with its arguments."""
        name = kernel.partition(f"{self.family.operation}_")[2]
        for variant in self.family.variants:
            if variant.covers(name):
                return self.family.kernel.format(variant.arguments)
        if self.family.variants:
            raise ValueError(f"{kernel}: no row of variants covers it")
        return self.family.kernel

    @property
    def limit(self):
        if not self.is_array or any(departure.covers(self) for departure in self.family.serial_departures):
            return None
        return self.family.limits.get((self.layout, self.element))

    @property
    def departures(self):
        """The rows of exceptions that this form falls under."""
        rows = self.family.order_departures + self.family.serial_departures
        return [row for row in rows if row.covers(self)]

    @property
    def entry(self):
        return f"{VARIANT}_{self.name}"

    @property
    def driver(self):
        return f"{VARIANT}_ownOMP_{self.name}"

    @property
    def kernels(self):
        """The kernel for adjacent elements, and the one for any element stride where there is one."""
        if self.family.entry_only:
            return []
        kernel = f"{VARIANT}_own{self.name}"
        if self.family.single_kernel or not self.element_strides:
            return [kernel]
        return [kernel, kernel + ("S2" if self.suffix else "_S2")]

    def is_plain(self, kernel):
        """Is this the kernel for adjacent elements alone?"""
        return kernel != self.kernels[-1]


@dataclass(frozen=True)
class Core:
    """Functions that kernels share, called and never inlined: one for each element type and each of `each`. Kernels call
    them by the name of the template that does the work, in the namespace `cores`; profiles and stack traces show `symbol`."""

    about: str
    kernel: str  # the template, with arguments where they can't be deduced
    arguments: str  # C++ declarations
    symbol: str  # behind the variant's prefix
    source: str  # the header that holds the template
    returns: str = "std::int32_t"
    types: str = "32f 64f"
    each: tuple = ({},)  # words for {braces}, beside {element} and {scalar}, in all of these texts

    def functions(self):
        for element in self.types.split():
            for words in self.each:
                yield CoreFunction(self, dict(words, element=element, scalar=ELEMENTS[element][0]))


@dataclass(frozen=True)
class CoreFunction:
    core: Core
    words: dict

    def filled(self, text):
        return text.format(**self.words)

    @property
    def kernel(self):
        return self.filled(self.core.kernel)

    @property
    def name(self):
        """An order stays a template argument; a type is told by the function's arguments."""
        return re.sub(r"<[a-z]\w*>", "", self.kernel)

    @property
    def declarations(self):
        return self.filled(self.core.arguments).split(", ")

    @property
    def symbol(self):
        return self.filled(self.core.symbol)


@dataclass
class Query:
    """An export outside the grammar: hand-written under its entry name, it shares stub and record."""

    name: str
    returns: str
    group: str
    brief: str
    source: str
    arguments: str = "void"

    @property
    def entry(self):
        return f"{VARIANT}_{self.name}"

    def forms(self):
        yield self
