"""Figures of the committed pages of benchmarks, from their tables: nanoseconds an object of korm and of everyone beside it."""

from dataclasses import dataclass
from functools import cache
from pathlib import Path
import re

FOLDER = Path(__file__).resolve().parents[2] / "docs" / "benchmarks"
FAMILIES = ("arith", "products", "vectors", "move", "linalg", "eigen", "geometry")


@dataclass
class Row:
    section: str
    form: str
    size: str
    place: str
    ns: dict

    best: float = None  # time of the best peer over the library's: 1.2 means that it takes 1.2 times as long as korm


def cells(line):
    return [cell.strip() for cell in line.strip().strip("|").split("|")]


@cache
def rows(family):
    """The rows of a page, in its order."""
    section, names, found = "", [], []
    for line in (FOLDER / f"{family}.md").read_text().splitlines():
        if line.startswith("## "):
            section, names = line[3:], []
        elif re.match(r"\| (form, size|function) \| korm \|", line):
            names = cells(line)
        elif names and re.match(r"\| \w+_\w+[ ,]", line):
            label, *figures = cells(line)
            form, size, place = (label.split(", ", 2) + ["", ""])[:3]
            ns = {name: float(figure) for name, figure in zip(names[1:], figures)
                  if figure and "/" not in name and not name.startswith(("best peer", "without the stub"))}
            best = dict(zip(names[1:], figures)).get("best peer / korm")
            found.append(Row(section, form, size, place, ns, float(best) if best else None))
    return found


@cache
def conditions(family):
    """When, on what processor and by which compiler a page was measured."""
    text = (FOLDER / f"{family}.md").read_text()
    return re.search(r"^- (\d{4}-[\d-]+), (.*?), \d+ processors.*?x86_64, (GNU [\d.]+)", text, flags=re.MULTILINE | re.DOTALL).groups()


def nanoseconds(form, size, place=""):
    """Of the first row for a form without `korm`, in a place that begins so; None where no page has such a row."""
    for family in FAMILIES:
        for row in rows(family):
            if row.form == form and row.size == size and row.place.startswith(place):
                return row.ns["korm"]
    return None
