#!/usr/bin/env python3
"""Makes a page of docs/benchmarks/ from the results of bench_FAMILY --out.

    bench/report.py FAMILY RESULTS.json... [--page] [--costs CALL_COST.json] [--before RESULTS.json...] [--places] [--sweeps]

--page writes docs/benchmarks/FAMILY.md and its drawings, and prints the goals. --before compares the library's own
times with those of runs of the library as it was. --places says that runs are of libraries linked at different places,
so that their median counts and not the best, and lists the rows that are behind a peer. --sweeps fails where a small
size takes far longer than the plain loop.
"""

import argparse
import datetime
import json
import math
import os
import re
import statistics
import sys
import textwrap
from pathlib import Path

import pages
import svg
from rows import EVEN, LAST_CHECK, Row, comparison, mean, number, table

FOLDER = Path(__file__).resolve().parents[1] / "docs" / "benchmarks"


def read(paths, joined=min):
    """Context and rows of a run. Of several runs the shortest times count, or what else `joined` makes of them."""
    runs = [json.loads(Path(path).read_text(encoding="utf-8")) for path in paths]
    rows = [Row(result) for result in runs[0]["rows"]]
    times = [{result["name"]: result["ns"] for result in run["rows"]} for run in runs]
    for row in rows:
        runs_of_row = [run[row.name] for run in times if row.name in run]
        row.ns = {name: joined(run[name] for run in runs_of_row if name in run) for name in row.ns}
    return runs[0]["context"], rows


def paragraphs(text):
    """Paragraphs end with an empty line in `text`."""
    for paragraph in filter(None, text.split("\n\n")):
        yield from textwrap.wrap(paragraph, 120, break_long_words=False, break_on_hyphens=False)
        yield ""


def standing(title, rows):
    """One sentence: where korm is ahead in this section, and where it isn't."""
    ratios = [row.ratio for row in rows]
    faster, slower = sum(ratio > 1 / EVEN for ratio in ratios), [row for row in rows if row.ratio < EVEN]
    words = (f"- **{title}**: korm is faster than every peer in {faster} of {len(rows)} rows and within 3 % of the best "
             f"in {len(rows) - faster - len(slower)}; the best peer takes {number(mean(ratios))} times as long as korm in "
             "the geometric mean.")
    if slower:
        slower.sort(key=lambda row: row.ratio)
        named = ", ".join(f"{row.label} ({number(row.ratio)}, {row.best})" for row in slower[:4])
        words += f" It is behind in {len(slower)}{', most of all in' if len(slower) > 4 else ':'} {named}."
    return words


def panels_of(rows, plots):
    for title, pattern in plots:
        chosen = [row for row in rows if re.search(pattern, row.name)]
        if chosen:
            peers = list(dict.fromkeys(peer for row in chosen for peer in row.peers))
            yield (title, list(dict.fromkeys(row.size for row in chosen)),
                   {peer: {row.size: row.against(peer) for row in chosen if peer in row.ns} for peer in peers})


def sweeps_of(rows):
    groups = {}
    for row in rows:
        groups.setdefault(f"{row.form}, {row.place}", {})[tuple(map(int, row.size.split("x")))] = row.ratio
    return groups


def sweep_table(rows):
    lines = []
    for title, ratios in sweeps_of(rows).items():
        worst = min(ratios, key=ratios.get)
        lines.append([title, str(len(ratios)), number(mean(ratios.values())), str(sum(r < EVEN for r in ratios.values())),
                      f"{number(ratios[worst])} ({'x'.join(map(str, worst))})"])
    yield from table(["form, layout", "sizes", "loop / korm, geometric mean", "below 0.97", "worst"], lines)


def single_calls(rows):
    """What single calls pay for being calls with checks. A call can take no less than its checks and then the loop's work, so
    sizes that are slower than both together are slow for a reason of their own."""
    singles = [row for row in rows if LAST_CHECK in row.ns]
    if not singles:
        return
    products = lambda row: math.prod(map(int, row.size.split("x")))
    yield "### Single calls"
    yield ""
    yield from paragraphs("Checks come in a fixed order, and the last of them is at the end of about 50 instructions. A call that "
                          "ends there, with an argument that it finds, shows what the call and its checks take. Where a loop has "
                          "eight products, that is as much as the loop; sizes at which korm takes longer than the loop and the "
                          "checks together are named.")
    lines = []
    for form in dict.fromkeys(row.form for row in singles):
        group = [row for row in singles if row.form == form]
        large = [row for row in group if products(row) >= 8]
        small = [row for row in group if products(row) < 8]
        slow = [row for row in group if row.with_checks() < EVEN]
        lines.append([form, number(mean(row.ns[LAST_CHECK] for row in group)),
                      f"{sum(row.ratio < EVEN for row in large)} of {len(large)}", number(min(row.ratio for row in large)),
                      f"{sum(row.ratio < 0.5 for row in small)} of {len(small)}", number(min(row.ratio for row in small)),
                      ", ".join(f"{row.size} ({number(row.with_checks())})" for row in sorted(slow, key=Row.with_checks)) or "none"])
    yield from table(["form", "checks, ns", "8 products or more: below 0.97", "worst", "fewer: below 0.5", "worst",
                      "slower than loop and checks"], lines)


def slow_sizes(rows):
    """Rows of sweeps that take twice as long as the plain loop. A single call may take five times as long as one loop of few
    elements: that is what the call and its checks cost."""
    for row in rows:
        if row.section.startswith("sweep"):
            is_array = "a" in row.form.split("_")[1]
            if row.ratio < (0.5 if is_array else 0.2):
                yield row


def goals_table(goals):
    yield "## Goals"
    yield ""
    yield from table(["goal", "figure", "wanted", "met"],
                     [[goal.text, goal.figure, goal.wanted, "yes" if goal.is_met else "**no**"] for goal in goals])


def conditions(context):
    with open("/proc/cpuinfo", encoding="utf-8") as file:
        processor = re.search(r"model name\s*: (.*)", file.read())
    yield (f"- {datetime.date.today()}, {processor[1] if processor else os.uname().machine}, {os.cpu_count()} processors, "
           f"load {os.getloadavg()[1]:.1f} (of which the benchmark is 1)")
    yield (f"- {context['library']}, {context['target']}, {context['compiler']}, flags `{context['flags'].strip()}` "
           "for the library and for peers in headers")
    known = ("library", "target", "compiler", "flags", "mode")
    yield "- " + "; ".join(f"{key} {value.removeprefix(key + ' ')}" for key, value in context.items() if key not in known)
    if context["mode"] != "full":
        yield f"- Mode: {context['mode']}"
    yield ""


def page_of(family, page, context, rows, goals, costs):
    sweeps = [row for row in rows if row.section.startswith("sweep")]
    rows = [row for row in rows if not row.section.startswith("sweep")]
    chosen = lambda section: [row for row in rows if row.section == section]
    yield f"# Benchmarks of {page.title}"
    yield ""
    yield f"![korm beside its peers over sizes]({family}.svg)"
    yield ""
    for section, (title, _) in page.sections.items():
        judged = [row for row in chosen(section) if row.ratio]
        if judged:
            yield standing(title, judged)
    yield ""
    yield from paragraphs(page.about)
    yield "How rows are measured is told in [the overview](../benchmarks.md); nanoseconds are those of one object. To"
    yield f"repeat: `scripts/bench {family}`, or `scripts/bench {family} --filter REGEX` for some rows."
    yield ""
    yield from conditions(context)
    if goals:
        yield from goals_table(goals)
    for section, (title, words) in page.sections.items():
        if chosen(section):
            yield f"## {title}"
            yield ""
            yield from paragraphs(words)
            yield from page.tables.get(section, comparison)(chosen(section))
    if sweeps:
        yield "## All small sizes"
        yield ""
        yield f"![maps of all small sizes]({family}-sweep.svg)"
        yield ""
        yield from paragraphs("Against the plain loop with sizes known at run time only, in one short measurement each. "
                              + page.small)
        yield from sweep_table(sweeps)
        yield from single_calls(sweeps)
    if costs:
        yield from pages.instructions(costs)


def compare(rows, before):
    """The library's times of another run over those of this one, by section."""
    earlier = {row.name: row.ns["korm"] for row in before if "korm" in row.ns}
    ratios = {row.name: earlier[row.name] / row.ns["korm"] for row in rows if row.name in earlier and "korm" in row.ns}
    for section in dict.fromkeys(name.split("/")[0] for name in ratios):
        group = [ratio for name, ratio in ratios.items() if name.split("/")[0] == section]
        print(f"{section:16} {len(group):5} rows, before / now: geometric mean {number(mean(group), 3)}, "
              f"least {number(min(group))}, greatest {number(max(group))}")
    print(f"{'all':16} {len(ratios):5} rows, before / now: geometric mean {number(mean(ratios.values()), 3)}")
    for name, ratio in sorted(ratios.items(), key=lambda item: item[1]):
        if ratio < 0.95:
            print(f"  {number(ratio)}  {name}")


def behind(rows):
    """How many rows of each section the best peer is ahead in, and which."""
    for section in dict.fromkeys(row.section for row in rows):
        group = [row for row in rows if row.section == section]
        print(f"{section:16} {len(group):5} rows, {sum(row.ratio < EVEN for row in group)} of them below {EVEN}")
    for row in sorted(rows, key=lambda row: row.ratio):
        if row.ratio < EVEN:
            print(f"  {number(row.ratio)}  {row.name}")


def main():
    parser = argparse.ArgumentParser(description="Pages of benchmark results.")
    parser.add_argument("family", choices=pages.PAGES)
    parser.add_argument("results", nargs="+")
    parser.add_argument("--page", action="store_true")
    parser.add_argument("--costs")
    parser.add_argument("--before", nargs="+")
    parser.add_argument("--places", action="store_true")
    parser.add_argument("--sweeps", action="store_true")
    options = parser.parse_args()
    page = pages.PAGES[options.family]
    joined = statistics.median if options.places else min
    context, all_rows = read(options.results, joined)
    rows = [row for row in all_rows if not row.error]
    if options.before:
        return compare(rows, read(options.before, joined)[1])
    if options.places:
        return behind(rows)
    if options.sweeps:
        slow = list(slow_sizes(rows))
        for row in slow:
            print(f"SLOW   {row.label}: the plain loop takes {number(row.ratio)} of the time")
        print(f"{len(rows)} small sizes, {len(slow)} of them slow")
        return 1 if slow or len(rows) < len(all_rows) or not rows else 0
    costs = json.loads(Path(options.costs).read_text(encoding="utf-8")) if options.costs else []
    goals = page.goals(context, rows)
    if options.page:
        FOLDER.mkdir(exist_ok=True)
        lines = page_of(options.family, page, context, rows, goals, costs)
        (FOLDER / f"{options.family}.md").write_text("\n".join(lines).rstrip() + "\n", encoding="utf-8")
        (FOLDER / f"{options.family}.svg").write_text(svg.plot(list(panels_of(rows, page.plots))), encoding="utf-8")
        sweeps = sweeps_of([row for row in rows if row.section.startswith("sweep")])
        if sweeps:
            (FOLDER / f"{options.family}-sweep.svg").write_text(svg.sweep_map(list(sweeps.items())), encoding="utf-8")
    for goal in goals:
        print(f"{'met   ' if goal.is_met else 'MISSED'} {goal.figure:>8} {goal.wanted:>8}  {goal.text}")
    errors = [row for row in all_rows if row.error]
    for row in errors:
        print(f"ERROR  {row.name}: the results of {row.error} differ")
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main())
