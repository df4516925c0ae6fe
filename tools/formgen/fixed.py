"""Functions of fixed size: vectors of 2, 3 or 4 elements and 4 by 4 matrices, all contiguous; and queries of sizes.

They are outside the grammar of operands. Their arguments are what the signature spells out, they have no
layouts, no kernels of their own and no drivers: between stub and arithmetic stands one function.
"""

from dataclasses import dataclass
import re

from grammar import ELEMENTS, SIZE, VARIANT, Argument, Check


@dataclass
class Fixed:
    """A row of a table: one function for each operand word."""

    operation: str
    operands: str  # operand words; "-" stands for none
    signature: str  # names of the arguments, in order
    kernel: str  # the function that does the work; {n} stands for the size of the word's vector, {scalar} for the type
    source: str  # the header that holds it
    group: str
    formula: str
    arguments: dict  # name to C type, of all arguments that a signature may name
    checks: str = ""  # their letters, in order
    fails: bool = False  # the kernel returns a status of its own
    types: str = "32f"
    match = ""  # no sizes that could differ

    def forms(self):
        for word in self.operands.split():
            for element in self.types.split():
                yield FixedForm(self, "" if word == "-" else word, element)


@dataclass
class FixedForm:
    family: Fixed
    word: str
    element: str

    is_array = False  # a batch has strides and a count, but no object that a team of threads could share out
    limit = None
    departures = ()
    kernels = ()

    def __post_init__(self):
        self.scalar, self.size = ELEMENTS[self.element]
        self.name = "_".join(filter(None, [f"korm{self.family.operation}", self.word, self.element]))
        self.arguments = [self._argument(name) for name in self.family.signature.split()]

    def _argument(self, name):
        if name not in self.family.arguments:
            raise ValueError(f"{self.name}: the signature's word '{name}' has no type")
        declared = self.family.arguments[name]
        return Argument(name, declared, "pointer" if declared.endswith("*") else "size" if SIZE.fullmatch(name) else "value")

    @property
    def vector_size(self):
        found = re.search(r"v([234])", self.word)
        return int(found[1]) if found else 4

    @property
    def kernel(self):
        return self.family.kernel.format(n=self.vector_size, scalar=self.scalar)

    @property
    def formula(self):
        return self.family.formula

    @property
    def checks(self):
        for letter in self.family.checks.split():
            role = {"N": "pointer", "S": "size"}.get(letter)
            names = [argument.name for argument in self.arguments if argument.role == role]
            if not names:
                raise ValueError(f"{self.name}: there is nothing for a check '{letter}'")
            yield Check(letter, names)

    @property
    def entry(self):
        return f"{VARIANT}_{self.name}"
