#!/usr/bin/env python3
"""Tests of the benchmarks' harness and report: test_benchmarks.py HARNESS_TEST_ROWS"""

import contextlib
import io
import json
import statistics
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

import pages
import report
import rows
import svg


def run(*arguments):
    """Standard output, exit code, and the results of a run."""
    with tempfile.TemporaryDirectory() as folder:
        out = Path(folder) / "results.json"
        done = subprocess.run([program, "--quick", "--out", out, *arguments], capture_output=True, text=True, check=False)
        return done.stdout.split(), done.returncode, json.loads(out.read_text(encoding="utf-8"))


def made(name, ns, controls=(), facts=None):
    return rows.Row({"name": name, "ns": ns, "controls": list(controls), "facts": facts or {}, "error": ""})


class Harness(unittest.TestCase):
    def test_results_that_differ_are_told_and_not_timed(self):
        _, code, data = run("--filter", "^wrong/")
        self.assertEqual(code, 1)
        self.assertEqual([row["name"].split("/")[1] for row in data["rows"]], ["Close_32f", "Equal_32f", "Missing_32f"])
        for row in data["rows"]:
            self.assertEqual((row["error"], row["ns"]), ("peer", {}), row["name"])

    def test_right_rows_are_timed(self):
        _, code, data = run("--filter", "^right/")
        self.assertEqual(code, 0)
        self.assertEqual(data["context"]["peer"], 'a "quoted" name')
        self.assertEqual(len(data["rows"]), 3)
        for row in data["rows"]:
            self.assertEqual((row["error"], row["controls"]), ("", ["control"]))
            self.assertEqual(list(row["ns"]), ["korm", "peer", "control"])
            self.assertTrue(all(0 < time < 1e6 for time in row["ns"].values()))
        self.assertEqual([row["facts"] for row in data["rows"]], [{"gap": 0}, {"gap": 0}, {"gap": 1}])

    def test_filter_is_a_regular_expression_and_list_measures_nothing(self):
        names, code, data = run("--list", "--filter", "(Equal|Unused)_32f/[0-9]")
        self.assertEqual((names, code), (["right/Equal_32f/4", "right/Unused_32f/4", "wrong/Equal_32f/4"], 0))
        self.assertEqual(data["rows"], [])


class Report(unittest.TestCase):
    def test_ratio_is_that_of_the_best_peer_without_controls(self):
        row = made("arrays/Mul_mama_32f/4", {"korm": 2, "Eigen": 3, "GLM": 5, "copy": 1}, controls=["copy"])
        self.assertEqual((row.ratio, row.best), (1.5, "Eigen"))
        self.assertEqual((row.against("GLM", "none"), row.against("none")), (2.5, None))
        self.assertEqual((row.section, row.form, row.size, row.place), ("arrays", "Mul_mama_32f", "4", ""))

    def test_a_call_with_one_object_is_taken_off_and_no_column(self):
        row = made("a/A_32f/3", {"korm": 5, rows.ONE_OBJECT: 1, "x": 3}, controls=[rows.ONE_OBJECT])
        self.assertEqual((row.ratio, row.without_call()), (0.6, 0.75))
        self.assertIsNone(made("a/A_32f/3", {"korm": 5, "x": 3}).without_call())
        self.assertEqual(next(rows.comparison([row])), "| form, size | korm | x | best peer / korm |")

    def test_the_standing_names_where_korm_is_behind(self):
        words = report.standing("Arrays", [made(f"a/A_32f/{size}", {"korm": 1, "x": time})
                                           for size, time in ((3, 2), (4, 0.98), (5, 0.5))])
        self.assertIn("in 1 of 3 rows and within 3 % of the best in 1;", words)
        self.assertIn("It is behind in 1: A_32f, 5 (0.50, x).", words)

    def test_of_several_runs_the_shortest_times_count_or_the_median(self):
        with tempfile.TemporaryDirectory() as folder:
            paths = [Path(folder) / name for name in ("first", "second")]
            for path, time in zip(paths, (3, 2)):
                row = {"name": "a/A_32f/3", "ns": {"korm": time, "x": 5 - time}, "facts": {}, "error": "", "controls": []}
                path.write_text(json.dumps({"context": {"run": path.name}, "rows": [row]}), encoding="utf-8")
            context, (row,) = report.read(paths)
            _, (median_row,) = report.read(paths, statistics.median)
        self.assertEqual((context["run"], row.ns), ("first", {"korm": 2, "x": 2}))
        self.assertEqual(median_row.ns, {"korm": 2.5, "x": 2.5})

    def test_rows_behind_a_peer_are_listed_the_worst_first(self):
        group = [made(f"a/A_32f/{size}", {"korm": 1, "x": time}) for size, time in ((3, 0.98), (4, 0.96), (5, 0.5))]
        with contextlib.redirect_stdout(io.StringIO()) as printed:
            report.behind(group)
        self.assertEqual([line.split() for line in printed.getvalue().splitlines()],
                         [["a", "3", "rows,", "2", "of", "them", "below", "0.97"],
                          ["0.50", "a/A_32f/5"], ["0.96", "a/A_32f/4"]])

    def test_goals(self):
        met, missed = (rows.every_row("text", [made("a/A_32f/3", {"korm": 1, "x": value})], 0.97)[0]
                       for value in (0.97, 0.96))
        self.assertTrue(met.is_met)
        self.assertFalse(missed.is_met)
        self.assertEqual(rows.every_row("nothing measured", [], 1), [])

    def test_each_page_is_written_from_any_rows(self):
        for family, page in pages.PAGES.items():
            some = [made(f"{section}/Form_32f/4/shuffled", {"korm": 1, "Eigen": 2, "korm, without its stub": 1,
                                                            "korm, one thread": 2, "plain loop, one thread": 2,
                                                            "plain loop, two threads": 1},
                         facts={"multiplications": 2, "additions": 1, "multiplication": 1, "gigahertz": 3})
                    for section in page.sections]
            some += [made(f"sweep/Form_32f/{size}/packed", {"korm": 2, "loop": 1}) for size in ("1x2x3", "2x2x3")]
            context = {"library": "korm", "target": "x86_64", "compiler": "g++", "flags": "-O3", "mode": "full",
                       "Eigen": "3"}
            text = "\n".join(report.page_of(family, page, context, some, page.goals(context, some), []))
            for title, _ in page.sections.values():
                self.assertIn(f"## {title}\n", text)
            self.assertIn("| Form_32f, packed | 2 | 0.50 | 2 | 0.50 (1x2x3) |", text)

    def test_slow_sizes_are_those_of_arrays_below_half_and_of_calls_below_a_fifth(self):
        some = [made(f"{section}/{form}/2x2x2/packed", {"korm": 10, "loop": loop})
                for section in ("sweep", "arrays") for form in ("Mul_mama_32f", "Mul_tat_64f_L", "Mul_tm_32f")
                for loop in (1, 3, 6)]
        self.assertEqual([(row.form, row.ratio) for row in report.slow_sizes(some)],
                         [("Mul_mama_32f", 0.1), ("Mul_mama_32f", 0.3), ("Mul_tat_64f_L", 0.1), ("Mul_tat_64f_L", 0.3),
                          ("Mul_tm_32f", 0.1)])

    def test_single_calls_are_held_against_the_loop_and_the_checks(self):
        some = [made(f"sweep/Mul_mm_32f/{size}/packed", {"korm": korm, "loop": 6, "korm, last check": 4},
                     controls=["korm, last check"])
                for size, korm in (("1x1x1", 15), ("1x2x3", 8), ("2x2x2", 5), ("1x8x2", 8), ("3x4x5", 20))]
        some += [made("sweep/Mul_mama_32f/2x2x2/packed", {"korm": 9, "loop": 1})]
        self.assertEqual(list(report.single_calls(some))[-2],
                         "| Mul_mm_32f | 4.00 | 2 of 3 | 0.30 | 1 of 2 | 0.40 | 3x4x5 (0.50), 1x1x1 (0.67) |")
        self.assertEqual(list(report.single_calls(some[-1:])), [])

    def test_products_by_columns_are_held_against_the_transposes_by_rows(self):
        some = [made(f"sweep/Mul_mama_32f/{size}/{place}", {"korm": korm, "loop": 100})
                for size, place, korm in (("1x2x3", "packed", 10), ("3x2x1", "packed", 30), ("3x2x1", "columns", 20),
                                          ("1x2x3", "columns", 20), ("2x2x2", "columns", 20))]
        goal, = pages.by_columns(some)
        self.assertEqual((goal.figure, goal.is_met), ("0.50", False))
        self.assertIn("(2 rows, 1 below; worst: Mul_mama_32f, 3x2x1, columns)", goal.text)

    def test_every_small_shape_of_products_has_a_goal(self):
        some = [made("sweep/Mul_mama_64f/2x2x2/packed", {"korm": 2, "loop": 6}),
                made("sweep/Mul_mama_64f/2x2x2/list", {"korm": 2, "loop": 1})]
        some += [made(f"sweep/Mul_mm_32f/{size}/packed", {"korm": 8, "loop": 4, "korm, last check": 5},
                      controls=["korm, last check"]) for size in ("1x2x3", "2x2x2")]
        self.assertEqual([(goal.figure, goal.is_met) for goal in pages.sweep_goals(some)],
                         [("3.00", True), ("3.00", True), ("0.50", False), ("0.50", False), ("1.12", True), ("0.50", True)])

    def test_maps_have_a_square_for_each_size(self):
        drawing = svg.sweep_map([("form", {(m, k, n): 2.0 for m in (1, 2) for k in (1, 2, 3) for n in (1, 2)})])
        self.assertEqual(drawing.count("h9"), 12)
        self.assertEqual(svg.colour_of(1), "#ffffff")
        self.assertNotEqual(svg.colour_of(2), svg.colour_of(0.5))


if __name__ == "__main__":
    program = sys.argv.pop(1)
    unittest.main()
