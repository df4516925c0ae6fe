"""docs/functions.md: from task to operation to form, with its cost, and all functions by groups."""

from functools import cache
import json
from pathlib import Path
import re

from figures import nanoseconds
from tasks import TASKS

ROOT = Path(__file__).resolve().parents[2]

HEAD = """# Which function do I need?

First what to do, then how many of each operand, then the type, then where things lie: that is how a name is made, and how to
find it.

1. Find the task in the tables below. They show the form for packed arrays of `float`.
2. One object or many? `ma` is an array of matrices, `m` one matrix; `va` and `v` are vectors, `ca` and `c` constants, `ta` and
   `t` matrices that are read as their transposes. The same operation comes with many combinations of these.
3. `_32f` is `float`, `_64f` is `double`.
4. No suffix: objects at a fixed distance in memory. `_L`: a list leads to them. `_P`: a table leads to streams, one for each
   element. [Layouts](layouts.md) has drawings.

**Take an array form where there are many objects.** A 4 by 4 product of `float` takes {mm} ns in a call of its own and {mama} ns in
an array, a sum of two vectors of four {vv} and {vava} ns.

## From task to function

Times are nanoseconds an object on one core, from the tables of [the benchmarks](benchmarks.md), which name the processor. A sum
belongs to a task of two calls; times behind commas are those of functions of which one is called. `-` stands where those pages
have no row.
"""

ALL = """## All functions

All %d of them, by groups of the header, where each has its arguments, checks and limits. A row holds the types and layouts of
one form.
"""


EXAMPLES = """## Examples

The manual page of each function ends with a complete program, as does its description in the header's pages: `man
kormMul_mama_32f_P`. None is without. Programs of this guide and of the [examples](examples.md), which are about more than a call,
call functions of {operations} of the {all} operations. {rest} `python3 tools/docs examples` lists the functions that they don't call.
"""


@cache
def called():
    """Functions that the programs of the guide and the examples call."""
    programs = [code for page in (ROOT / "README.md", *ROOT.glob("docs/*.md"))
                for code in re.findall(r"^```(?:c|cpp)\n(.*?)^```$", page.read_text(), flags=re.MULTILINE | re.DOTALL)]
    programs += [source.read_text() for source in ROOT.glob("examples/**/*.cpp")]
    return set(re.findall(r"\bkorm\w+", "\n".join(programs)))


def examples(description):
    """The operations without an example."""
    operations = {}
    for function in description["functions"]:
        operations.setdefault((function["group"], function["operation"]), set()).add(function["name"])
    without = [f"`{operation}` of {group.replace('_', ' ')}" for (group, operation), names in operations.items()
               if not names & called()]
    return EXAMPLES.format(operations=len(operations) - len(without),
                           all=len(operations), rest=f"Without an example: {', '.join(without)}." if without else "None is without.")


def full_name(call, element):
    """`Copy_ma:SP` is a form whose suffix stands behind the type."""
    form, _, suffix = call.partition(":")
    return "korm" + form + ("" if form == "GetLibVersion" else f"_{element}") + (f"_{suffix}" if suffix else "")


def time(task, call, element):
    ns = nanoseconds(full_name(call, element).removeprefix("korm"), task.size, task.place)
    return None if ns is None else f"{ns:.1f}" if ns < 100 else f"{ns:.0f}"


def cost(task, element):
    """The times of all calls of a task: a sum where one follows the other."""
    if element not in task.elements:
        return ""
    times = [time(task, call, element) or "-" for call in task.calls]
    return (", " if len(task.elements) == 1 else " + ").join(times) if set(times) != {"-"} else "-"


def row(cells):
    return "| " + " | ".join(cells) + " |"


def table(*heading):
    return [row(heading), "|" + "---|" * len(heading)]


def task_tables():
    for family, page, unit, tasks in TASKS:
        yield f"### {family}"
        yield ""
        yield f"Explained in [{page.removesuffix('.md')}]({page})." + (f" Times: {unit}." if unit else "")
        yield ""
        yield from table("to", "call", "`float`", "`double`")
        for task in tasks:
            names = ", ".join(f"`{full_name(call, task.elements[0])}`" for call in task.calls)
            yield row([task.words, names, cost(task, "32f"), cost(task, "64f")])
        yield ""


def formula(text):
    return text.replace("|", "&#124;").replace("*", "\\*")


def all_tables(description):
    for group in description["groups"]:
        rows = {}
        for function in description["functions"]:
            if function["group"] == group["name"]:
                rows.setdefault((function["operation"], function["word"]), []).append(function)
        yield f"### {group['title']}"
        yield ""
        yield from table("computes", "functions")
        for same in rows.values():
            yield row([formula(same[0]["formula"]), ", ".join(f"`{function['name']}`" for function in same)])
        yield ""


def guides(description):
    """The page of the guide that explains a group, by the group's name."""
    groups = {function["name"]: function["group"] for function in description["functions"]}
    return {groups[full_name(call, element)]: page for _, page, _, tasks in TASKS for task in tasks for call in task.calls
            for element in task.elements}


def page(description):
    """The page's text, from what korm.json says."""
    names = {function["name"] for function in description["functions"]}
    wanted = {full_name(call, element) for *_, tasks in TASKS for task in tasks for call in task.calls
              for element in task.elements}
    if wanted - names:
        raise SystemExit(f"docs: tasks name functions that there aren't: {sorted(wanted - names)}")
    without = {group["name"] for group in description["groups"]} - set(guides(description))
    if without:
        raise SystemExit(f"docs: no task leads to the groups {sorted(without)}")
    single_and_array = {"mm": nanoseconds("Mul_mm_32f", "4"), "mama": nanoseconds("Mul_mama_32f", "4"),
                        "vv": nanoseconds("Add_vv_32f", "4", "packed"), "vava": nanoseconds("Add_vava_32f", "4", "cache")}
    lines = [HEAD.format(**single_and_array), *task_tables(), ALL % len(names), *all_tables(description), examples(description)]
    return re.sub(r"\n{3,}", "\n\n", "\n".join(lines)).rstrip() + "\n"


def described(formgen):
    """What korm.json holds, made from the tables of forms."""
    import sys
    sys.path.insert(0, str(formgen))
    import description
    from tables import Tables
    return json.loads(description.text(Tables(), ""))
