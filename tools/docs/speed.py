"""docs/speed.md and its six plots: korm beside the best peer of each row of the committed benchmarks."""

import math
import re
import textwrap
from dataclasses import dataclass

from figures import FAMILIES, conditions, rows
import svg  # of bench/, whose folder pictures.py adds to the path

ELEMENTS = (("32f", "float"), ("64f", "double"))
EVEN = 0.97


@dataclass
class Plot:
    name: str
    title: str
    pages: tuple      # of benchmarks
    lines: tuple      # forms without the type; `Copy_ma:SP` has a suffix behind it
    sizes: tuple
    places: tuple     # how the place of a row begins; the first row that fits is taken
    why: str          # where korm is behind, and the reason


PLOTS = (
    Plot("sums", "Sums, scaling and vectors", ("arith", "vectors"),
         ("Add_mama", "Add_tama", "Mul_mac", "Add_vava", "Saxpy_vava", "DotProduct_vava", "L2Norm_va"), ("3", "4", "5", "6"),
         ("cache",),
         "A sum of small objects is a few loads and one addition, so that there is little to gain over a loop that knows its sizes when it "
         "is compiled; elements that are gathered one by one, and lengths of 1 and 2, are where such a loop is ahead. **One small call** "
         "costs about 4 ns for checks and strides that a function for one size doesn't have: take array forms."),
    Plot("products", "Products of matrices", ("products",), ("Mul_mama", "Mul_mam", "Mul_mma", "Mul_tama", "Mul_mata"),
         ("3", "4", "5", "6", "8", "16", "32"), ("",),
         "Single products of odd orders from 7 on are libxsmm's, which writes code for a size at run time. Products with a single "
         "vector are over before the checks of a call are. Large products belong to a BLAS with wider instructions."),
    Plot("movement", "Movement", ("move",), ("Copy_ma:SP", "Copy_ma:PS", "Copy_ma:LS", "Transpose_ma", "Extract_ma"),
         ("3", "4", "6", "3x3", "4x4", "6x6"), ("packed to streams cache", "streams to packed cache", "list to packed cache",
                                                "cache", "strided cache"),
         "Copies from packed to packed are what `memcpy` does. Out of cache everything waits for memory."),
    Plot("systems", "Systems, inverses and determinants", ("linalg",),
         ("LUDecomp_ma", "LUBackSubst_mava", "LUBackSubst_mva", "CholeskyDecomp_ma", "CholeskyBackSubst_mava",
          "QRDecomp_ma", "QRBackSubst_mava", "Invert_ma", "Det_ma"),
         ("2", "3", "4", "5", "6", "7", "8", "16"), ("shuffled", "cache"),
         "Determinants of `double` of orders 3 to 6 are formed in 80 bits, and inverses of orders 2, 7 and above cofactor by cofactor, "
         "because results rest on it: from order 7 on solve instead ([systems](systems.md#when-to-use-what)). Solves of "
         "order 32 are behind LAPACK, which goes in blocks; order 1 is behind a division. QR, which isn't behind, is that of square "
         "matrices in the cache."),
    Plot("eigenproblems", "Eigenproblems", ("eigen",),
         ("EigenValuesVectorsSym_ma", "EigenValuesSym_ma", "EigenValues_ma", "EigenValuesVectorsLeft_ma", "EigenValuesVectors_ma"),
         ("2", "3", "4", "5", "6", "8", "16"), ("shuffled", ""),
         "Eigen's closed form of order 3 is faster, and loses half of the digits where values lie close together."),
    Plot("geometry", "Batches of 3D geometry", ("geometry",),
         ("AffineTransform_m4v3a", "AffineTransformCoord_m4v3a", "AffineTransformNormal_m4v3a", "Project_m4v3a", "Unproject_m4v3a"),
         ("100", "1000", "10000", "100000", "1000000"), ("12-16", "12-12"),
         "From 100,000 vectors on all wait for memory. One call for one object is entered over a stub, one jump more than GLM's and "
         "cglm's: 0.7 ns."),
)

HEAD = """# Speed at a glance

Each line is an operation on packed arrays, each point a size: how many times as long as korm the **best** of its peers takes. Above
the black line korm is faster. Peers are Eigen with sizes known to the compiler, OpenBLAS, LAPACK, libxsmm, GLM, cglm and plain loops,
all held to SSSE3 and one thread. The figures are those of [the benchmarks](benchmarks.md), which tell how they are measured.
"""

TAIL = """## Where it was measured

{conditions}

The machine is a shared one. Rows are measured by turns, each contender behind each of the others, and compare medians, so that
ratios hold where times are noisy; differences of a few percent mean nothing.

To repeat all of it, on a quiet machine:

    scripts/bench all

It rewrites the pages of benchmarks, and with them this page and its plots.

## All rows

| page | rows | korm is faster | within 3 % | behind | best peer / korm, geometric mean |
|---|---:|---:|---:|---:|---:|
{summary}

Rows are single small calls and sizes from 1 to 32 as well as arrays. What each page's opening says of the rows that are behind is
the place to look before deciding.

Beside NumPy and SciPy: [korm for Python](python.md#speed).
"""


def line(plot, form, element):
    """Size to ratio of one operation."""
    stem, _, suffix = form.partition(":")
    name = f"{stem}_{element}" + (f"_{suffix}" if suffix else "")
    found = {}
    for page in plot.pages:
        for place in plot.places:
            for row in rows(page):
                size = row.size if row.size in plot.sizes else re.sub(r"^(\d+)x\1$", r"\1", row.size)
                if row.form == name and size in plot.sizes and row.best and row.place.startswith(place):
                    found.setdefault(size, row.best)
    return found


def drawing(plot):
    panels = []
    for element, words in ELEMENTS:
        lines = {form.replace(":", " "): line(plot, form, element) for form in plot.lines}
        lines = {form: points for form, points in lines.items() if points}
        if lines:
            sizes = [size for size in plot.sizes if any(size in points for points in lines.values())]
            panels.append((f"{plot.title}, {words}", sizes, lines))
    return svg.plot(panels, "Time of the best peer over korm's: above the black line korm is faster")


def summary():
    for family in FAMILIES:
        ratios = [row.best for row in rows(family) if row.best]
        faster, behind = sum(ratio > 1 / EVEN for ratio in ratios), sum(ratio < EVEN for ratio in ratios)
        mean = math.exp(sum(map(math.log, ratios)) / len(ratios))
        yield (f"| [{family}](benchmarks/{family}.md) | {len(ratios)} | {faster} | {len(ratios) - faster - behind} | {behind} | "
               f"{mean:.2f} |")


def page():
    lines = [HEAD]
    for plot in PLOTS:
        links = ", ".join(f"[{name}](benchmarks/{name}.md)" for name in plot.pages)
        lines += [f"## {plot.title}", "", f"![{plot.title}: the best peer beside korm](pictures/speed-{plot.name}.svg)", ""]
        lines += [f"    scripts/bench {name}" for name in plot.pages]
        behind = f"Where korm is behind: {plot.why} All rows: {links}."
        lines += ["", *textwrap.wrap(behind, 128, break_long_words=False, break_on_hyphens=False), ""]
    when = {conditions(family) for family in FAMILIES}
    told = "\n".join(f"- {date}, {processor}, {compiler}" for date, processor, compiler in sorted(when))
    return "\n".join(lines) + "\n" + TAIL.format(conditions=told, summary="\n".join(summary()))
