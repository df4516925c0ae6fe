"""What the reports of all benchmarks share: means, tables, and goals that are met or missed."""

import math
import os


def mean(values):
    """The geometric mean of what is there, None of nothing."""
    values = [value for value in values if value is not None]
    return math.exp(sum(map(math.log, values)) / len(values)) if values else None


def number(value, digits=2):
    return "" if value is None else f"{value:.{digits}f}"


def table(header, lines):
    yield "| " + " | ".join(header) + " |"
    yield "|" + "|".join("---" if i == 0 else "---:" for i in range(len(header))) + "|"
    for line in lines:
        yield "| " + " | ".join(line) + " |"
    yield ""


class Goal:
    def __init__(self, text, figure, wanted, is_met):
        self.text, self.figure, self.wanted, self.is_met = text, figure, wanted, is_met


def at_least(text, figure, wanted):
    """The goal as a list; none where nothing was measured."""
    return [] if figure is None else [Goal(text, number(figure), f">= {wanted}", figure >= wanted)]


def every_row(text, rows, wanted, ratio=lambda row: row.ratio):
    """The goal that no row is below, with how many are and the worst."""
    ratios = [(ratio(row), row.name) for row in rows]
    ratios = [judged for judged in ratios if judged[0] is not None]
    if not ratios:
        return []
    below = sum(value < wanted for value, _ in ratios)
    least, name = min(ratios)
    return at_least(f"{text} ({len(ratios)} rows, {below} below; worst: {name})", least, wanted)


def goals_section(goals, scope=None):
    if not goals:
        return
    yield "## Goals"
    yield ""
    if scope:
        yield scope
        yield ""
    yield from table(["goal", "figure", "wanted", "met"],
                     [[goal.text, goal.figure, goal.wanted, "yes" if goal.is_met else "**no**"] for goal in goals])


def print_goals(goals):
    """True if all are met."""
    for goal in goals:
        print(f"{'met   ' if goal.is_met else 'MISSED'} {goal.figure:>8} {goal.wanted:>8}  {goal.text}")
    return all(goal.is_met for goal in goals)


def processor():
    with open("/proc/cpuinfo", encoding="utf-8") as file:
        for line in file:
            if line.startswith("model name"):
                return line.split(":", 1)[1].strip()
    return os.uname().machine


def write(path, lines):
    with open(path, "w", encoding="utf-8") as file:
        file.write("\n".join(lines).rstrip() + "\n")
