"""Rows of benchmark results, means, tables, and goals that are met or missed."""

import math

EVEN = 0.97  # of the best peer, in every row that is held to parity; the missing part allows for noise


ONE_OBJECT = "call with one object"  # beside array forms; no peer
LAST_CHECK = "korm, last check"      # beside single calls; no peer


class Row:
    def __init__(self, result):
        self.name, self.ns, self.facts, self.error = (result[key] for key in ("name", "ns", "facts", "error"))
        self.section, self.form, self.size, self.place = (self.name.split("/") + ["", ""])[:4]
        self.type = "64f" if "_64f" in self.form else "32f"
        self.peers = [name for name in self.ns if name != "korm" and name not in result["controls"]]

    @property
    def label(self):
        return ", ".join(part for part in (self.form, self.size, self.place) if part)

    def against(self, *names):
        """Time of the best of these over the library's: 1.2 means that it takes 1.2 times as long as korm."""
        times = [self.ns[name] for name in names if name in self.ns]
        return min(times) / self.ns["korm"] if times else None

    def without_call(self):
        """The ratio, less what a call with one object takes of the library's time."""
        if ONE_OBJECT not in self.ns:
            return None
        return min(self.ns[peer] for peer in self.peers) / (self.ns["korm"] - self.ns[ONE_OBJECT])

    def with_checks(self):
        """The ratio, as if the best peer had a single call's checks to make, too."""
        return (self.ns[self.best] + self.ns[LAST_CHECK]) / self.ns["korm"] if LAST_CHECK in self.ns else None

    @property
    def best(self):
        return min(self.peers, key=self.ns.get)

    @property
    def ratio(self):
        return self.against(*self.peers)


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


def comparison(rows):
    """Nanoseconds an object of the library and of everyone beside it."""
    names = list(dict.fromkeys(name for row in rows for name in row.ns if name != ONE_OBJECT))
    cell = lambda ns: "" if ns is None else number(ns, 2 if ns < 1000 else 0)
    yield from table(["form, size"] + names + ["best peer / korm"],
                     [[row.label] + [cell(row.ns.get(name)) for name in names] + [number(row.ratio)] for row in rows])


def by_form(rows):
    """A line a form, for sections with more rows than anyone would read."""
    lines = []
    for form in dict.fromkeys(row.form for row in rows):
        group = [row for row in rows if row.form == form]
        worst = min(group, key=lambda row: row.ratio)
        lines.append([form, str(len(group)), number(mean(row.ratio for row in group)), number(worst.ratio), worst.label])
    yield from table(["form", "rows", "best peer / korm, geometric mean", "worst", "worst row"], lines)


class Goal:
    def __init__(self, text, figure, wanted, is_met):
        self.text, self.figure, self.wanted, self.is_met = text, figure, wanted, is_met


def at_least(text, figure, wanted):
    """The goal as a list; none where nothing was measured."""
    return [] if figure is None else [Goal(text, number(figure), f">= {wanted}", figure >= wanted)]


def every_row(text, rows, wanted, ratio=lambda row: row.ratio):
    """The goal that no row is below, with how many are and the worst."""
    ratios = [(ratio(row), row.label) for row in rows]
    ratios = [judged for judged in ratios if judged[0] is not None]
    if not ratios:
        return []
    below = sum(value < wanted for value, _ in ratios)
    least, label = min(ratios)
    return at_least(f"{text} ({len(ratios)} rows, {below} below; worst: {label})", least, wanted)
