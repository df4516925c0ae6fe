"""where: everything about one exported function, from its name to the code that does the work.

usage: where NAME                       its arguments, checks, limits and kernels, as the tables tell them
       where NAME --order N [--strided] and the way of one call through the library as it was built: all sizes are N,
                                        elements touch or, with --strided, lie two apart
"""

import argparse
from pathlib import Path
import sys

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "formgen"))

import call_path
from grammar import ROOT, Query
from tables import Tables


def definition(source, word):
    """The line on which a kernel template or a hand-written function is defined."""
    for number, line in enumerate((ROOT / "src" / source).read_text().splitlines(), 1):
        if f" {word}(" in line or f"*{word}(" in line or f"* {word}(" in line:
            if not line.rstrip().endswith(";"):
                return f"src/{source}:{number}"
    return f"src/{source}"


def show(form):
    print(form.name)
    if isinstance(form, Query):
        print(f"  {form.brief}\n  function   {form.entry}  src/{form.source}")
        return
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
    for template in dict.fromkeys(form.template(kernel) for kernel in form.kernels) or [getattr(form, "kernel", form.family.kernel)]:
        print(f"  template   {template}  {definition(form.family.source, template.partition('<')[0])}")


def main():
    parser = argparse.ArgumentParser(prog="where", usage=__doc__.partition("usage: ")[2], add_help=False)
    parser.add_argument("name")
    parser.add_argument("--order", type=int)
    parser.add_argument("--strided", action="store_true")
    parser.add_argument("--call", help=argparse.SUPPRESS)  # a library: only make the call
    options = parser.parse_args()
    form = next((form for form in Tables().exports if form.name == options.name), None)
    if form is None:
        sys.exit(f"where: '{options.name}' is not exported; 'formgen names' lists all")
    if options.call:
        return call_path.call(form, options.order, options.strided, options.call)
    show(form)
    if options.order:
        call_path.show(form, options.order, options.strided)
    return 0


if __name__ == "__main__":
    sys.exit(main())
