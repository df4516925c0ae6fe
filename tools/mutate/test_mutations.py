"""What counts as a mistake, shown with small texts."""

import unittest

from mutations import code_mutations, generator_mutations, named, table_mutations

CODE = """\
// a < b stays
#include <vector>
template <int n>
float sum(const float* x, int n) {
    if (n <= 0 && x[0] < 0x1p-23F) return 0;
    store(to, x[0]);
    return x[0] + x[1] + x[2];
}
"""

TABLE = '''\
"""Limits of 10."""
from grammar import below, up_to
GROUPS = {"sums": """Sums
below 5000 they are serial"""}
LIMITS = limits(below(3000, 2000), up_to(15))
ROW = family("sums", order="N C S", estimate="2 * count + 1", kernel="plusElements", match="M == K")
OTHER = family("sums", order="N S:src C", kernel="minusElements", light=True)
'''

GENERATOR = '''\
def checks(form):
    \"\"\"Written if count < 2.\"\"\"
    lines = ["count < 2 && order"]
    if form.is_array and not form.light:
        lines.append("return 1;")
    return lines if len(lines) <= 3 else []
'''


def told(mutations, text):
    return {(one.kind, text[one.start : one.end], one.new) for one in mutations}


class Mistakes(unittest.TestCase):
    def test_in_code(self):
        found = told(code_mutations("sum.h", CODE), CODE)
        for wanted in [
            ("comparison", "<=", "<"),
            ("comparison", "<", "<="),
            ("operation", "&&", "||"),
            ("operation", "+", "-"),
            ("constant", "0", "1"),
            ("tolerance", "-23", "-22"),
            ("order of a sum", "x[0] + x[1] + x[2]", "x[0] + (x[1] + x[2])"),
            ("arguments swapped", "to, x[0]", "x[0], to"),
            ("statement dropped", "store(to, x[0]);", ";"),
        ]:
            self.assertIn(wanted, found)
        self.assertEqual([old for kind, old, _ in found if kind == "comparison"].count("<"), 1)

    def test_one_at_a_time(self):
        for one in code_mutations("sum.h", CODE):
            changed = one.applied(CODE)
            self.assertEqual(len(changed) - len(CODE), len(one.new) - (one.end - one.start))
            self.assertIn(f"sum.h:{one.line(CODE)}: ", one.told(CODE))

    def test_names_stay_when_other_lines_change(self):
        twice = CODE + CODE
        names = named(code_mutations("sum.h", twice), twice)
        self.assertEqual(len(names), 2 * len(list(code_mutations("sum.h", CODE))))
        longer = "int before = 1 + n;\n" + twice
        after = named(code_mutations("sum.h", longer), longer)
        self.assertTrue(set(names) < set(after))
        self.assertTrue(all(after[name].line(longer) == one.line(twice) + 1 for name, one in names.items()))

    def test_in_tables(self):
        found = told(table_mutations("forms.py", TABLE), TABLE)
        for wanted in [
            ("limit", "below", "up_to"),
            ("limit", "up_to", "below"),
            ("limit", "3000", "3001"),
            ("order of checks", '"N C S"', '"C N S"'),
            ("order of checks", '"N C S"', '"N S C"'),
            ("order of checks", '"N S:src C"', '"N C S:src"'),
            ("estimate", '"2 * count + 1"', '"2 + count + 1"'),
            ("estimate", '"2 * count + 1"', '"2 * count + 2"'),
            ("kernel", '"plusElements"', '"minusElements"'),
            ("match of sizes", '"M == K"', '"M != K"'),
            ("switch", "True", "False"),
        ]:
            self.assertIn(wanted, found)
        self.assertNotIn(("limit", "5000", "5001"), found)
        self.assertEqual([old for _, old, _ in found].count("below"), 1)

    def test_in_the_generator(self):
        found = told(generator_mutations("emit.py", GENERATOR), GENERATOR)
        self.assertEqual(found, {
            ("written operation", "<", "<="),
            ("written operation", "&&", "||"),
            ("condition negated", "if", "if not"),
            ("condition negated", "not", ""),
            ("operation", "and", "or"),
            ("statement dropped", 'lines.append("return 1;")', "pass"),
            ("comparison", "<=", "<"),
            ("constant", "3", "4"),
        })


if __name__ == "__main__":
    unittest.main()
