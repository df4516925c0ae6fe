"""The tables of all subsystems: src/*/forms.py."""

import runpy

from grammar import ROOT, Query

SUBSYSTEMS = ["entry", "arith", "products", "vectors", "move", "linalg", "eigen", "geometry"]  # in the order of the public header


class Tables:
    def __init__(self):
        modules = [runpy.run_path(str(ROOT / "src" / name / "forms.py")) for name in SUBSYSTEMS]
        rows = [row for module in modules for row in module["FAMILIES"]]
        self.groups = {name: about for module in modules for name, about in module["GROUPS"].items()}
        self.cores = {name: module["CORES"] for name, module in zip(SUBSYSTEMS, modules) if "CORES" in module}
        self.queries = [row for row in rows if isinstance(row, Query)]
        self.families = [row for row in rows if not isinstance(row, Query)]
        self.forms = [form for family in self.families for form in family.forms()]
        self.exports = sorted(self.queries + self.forms, key=lambda form: form.name)
