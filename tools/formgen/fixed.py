"""Functions of fixed size: vectors of 2, 3 or 4 elements and 4 by 4 matrices, all contiguous.

They are outside the grammar of operands. Their arguments are what the signature spells out, they have no
layouts, no kernels of their own and no drivers: between stub and arithmetic stands one function.
"""

from dataclasses import dataclass
import re

from grammar import ELEMENTS, Argument


@dataclass
class Fixed:
    """A row of a table: one function for each operand word."""

    operation: str
    operands: str
    signature: str  # names of the arguments, in order
    kernel: str  # the function that does the work; {n} stands for the size of the word's vector
    source: str  # the header that holds it
    group: str
    formula: str
    arguments: dict  # name to C type, of all arguments that a signature may name
    checks: str = ""  # their letters, in order
    fails: bool = False  # the kernel returns a status of its own
    match = ""  # no sizes that could differ

    def forms(self):
        for word in self.operands.split():
            yield FixedForm(self, word)


@dataclass
class FixedForm:
    family: Fixed
    word: str

    element = "32f"
    is_array = False  # a batch has strides and a count, but no object that a team of threads could share out
    limit = None
    departures = ()
    kernels = ()

    def __post_init__(self):
        self.scalar, self.size = ELEMENTS[self.element]
        self.name = f"korm{self.family.operation}_{self.word}_{self.element}"
        self.arguments = [self._argument(name) for name in self.family.signature.split()]

    def _argument(self, name):
        if name not in self.family.arguments:
            raise ValueError(f"{self.name}: the signature's word '{name}' has no type")
        declared = self.family.arguments[name]
        return Argument(name, declared, "pointer" if declared.endswith("*") else "value")

    @property
    def vector_size(self):
        found = re.search(r"v([234])", self.word)
        return int(found[1]) if found else 4

    @property
    def kernel(self):
        return self.family.kernel.format(n=self.vector_size)

    @property
    def formula(self):
        return self.family.formula

    @property
    def checks(self):
        """A fixed size leaves nothing to look at but pointers."""
        pointers = [argument.name for argument in self.arguments if argument.role == "pointer"]
        for letter in self.family.checks.split():
            if letter != "N":
                raise ValueError(f"{self.name}: there is no check '{letter}' of a fixed size")
            yield letter, pointers

    @property
    def entry(self):
        return f"v8_{self.name}"
