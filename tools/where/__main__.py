"""scripts/where: everything about one exported function, from its name to its kernel template."""

import sys

from grammar import Query


def definition(root, source, word):
    """The line on which a kernel template or a hand-written function is defined."""
    for number, line in enumerate((root / "src" / source).read_text().splitlines(), 1):
        if f" {word}(" in line or f"*{word}(" in line or f"* {word}(" in line:
            if not line.rstrip().endswith(";"):
                return f"src/{source}:{number}"
    return f"src/{source}"


def show(name, exports, root):
    form = next((form for form in exports if form.name == name), None)
    if form is None:
        print(f"where: '{name}' is not exported; 'formgen names' lists all", file=sys.stderr)
        return 1
    print(f"{form.name}")
    if isinstance(form, Query):
        print(f"  {form.brief}\n  function   {form.entry}  {definition(root, form.source, form.entry)}")
        return 0
    print(f"  formula    {form.formula}")
    for number, argument in enumerate(form.arguments):
        print(f"  {'arguments' if number == 0 else '':10} {argument.declare()}")
    for number, check in enumerate(form.checks):
        print(f"  {'checks' if number == 0 else '':10} {check.words:7} {check.status:21} {' '.join(check.names)}")
    for row in form.departures:
        print(f"  departure  {row.reason}")
    limit = form.limit
    if limit is None:
        print("  serial     always")
    else:
        general = "" if limit.plain == limit.general else f" ({limit.general} with any other element stride than {form.size})"
        print(f"  estimate   {form.family.estimate}")
        print(f"  serial     while estimate {limit.comparison} {limit.plain}{general}")
        print(f"  driver     {form.driver}")
    print(f"  entry      {form.entry}")
    if form.kernels:
        print(f"  kernels    {' '.join(form.kernels)}")
    for template in dict.fromkeys(form.template(kernel) for kernel in form.kernels) or [form.kernel]:
        print(f"  template   {template}  {definition(root, form.family.source, template.partition('<')[0])}")
    return 0
