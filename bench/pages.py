"""What each page of the benchmarks tells: sections in their order, plots, goals, and what a reader should know beside."""

import math
from dataclasses import dataclass, field

from rows import EVEN, LAST_CHECK, Row, at_least, by_form, comparison, every_row, mean, number, table

SMALL = ("3", "4", "5", "6")


@dataclass
class Page:
    title: str
    about: str       # behind the summary
    sections: dict   # {section: (heading, text)}
    plots: list      # (title, regular expression over rows' names)
    goals: object    # from the run's context and its rows
    tables: dict = field(default_factory=dict)  # sections with a table of their own
    small: str = ""  # about the maps of all small sizes


def chosen(rows, section, sizes=None, form="", element="", place=""):
    return [row for row in rows if row.section == section and (sizes is None or row.size in sizes) and form in row.form
            and row.type.endswith(element) and row.place.endswith(place)]


# --- Sums, differences, scaling -------------------------------------------------------------------

LAYOUTS = {"packed": "no gaps", "padded": "rows of matrices and vectors at multiples of 16 bytes",
           "strided": "every other element", "list": "one pointer an object", "stridedList": "the same, every other element",
           "streams": "the pointer layout, objects one element apart",
           "pointers": "the pointer layout over packed objects: entries lead to adjacent elements, which the library sees",
           "stridedPointers": "the pointer layout over strided objects, where there is nothing to see"}


def layout_table(rows):
    """Geometric means of peers over korm, over all forms of a layout, and the rows that are furthest behind."""
    peers = list(dict.fromkeys(peer for row in rows for peer in row.peers))
    lines = []
    for place in dict.fromkeys(row.place for row in rows):
        group = [row for row in rows if row.place == place]
        lines.append([place, str(len(group))] + [number(mean(row.against(peer) for row in group)) for peer in peers]
                     + [number(mean(row.ratio for row in group)), number(min(row.ratio for row in group))])
    yield from table(["place", "rows"] + peers + ["best peer", "worst row"], lines)
    below = sorted((row for row in rows if row.ratio < EVEN), key=lambda row: row.ratio)
    if below:
        yield from table([f"rows below {EVEN}", "best peer / korm", "best peer"],
                         [[row.label, number(row.ratio), row.best] for row in below[:12]])


def bandwidth(row):
    """Of the library over that of a loop that copies."""
    return (row.facts["bytes"] / row.ns["korm"]) / (row.facts["copied"] / row.ns["copying loop"])


def arith_goals(context, rows):
    arrays = [row for row in rows if row.section in LAYOUTS]
    near = [row for row in arrays if row.place == "cache"]
    runs = [row for row in rows if "bytes" in row.facts and row.size in ("1000", "4000000")]
    goals = at_least("packed arrays, orders and lengths 3 to 6, in cache: Eigen with fixed sizes / korm",
                     mean(row.against("Eigen, fixed sizes") for row in near
                          if row.section == "packed" and row.size in SMALL), 1.3)
    for name, layouts in (("strided", ("strided",)), ("list", ("list", "stridedList")),
                          ("pointer", ("streams", "pointers", "stridedPointers"))):
        goals += at_least(f"{name} layout, in cache: plain loop / korm",
                          mean(row.against("plain loop") for row in near if row.section in layouts), 1.3)
    goals += every_row("every row of arrays: best peer / korm", arrays, EVEN)
    return goals + every_row("long packed runs: bandwidth of korm / of a copying loop", runs, 0.9, bandwidth)


def instructions(costs):
    """Counts of call_cost, for sums, differences and scaling."""
    yield "## Instructions of one small call"
    yield ""
    yield "From the caller's `call`, which counts, to the first load of an element or table entry, the most over orders"
    yield "and lengths 3 to 6 and over others up to 33 and 1000, and to the return with order or length 3. Counted one by"
    yield "one with the processor's trap flag (`call_cost`); a test holds some against callgrind."
    yield ""
    lines = []
    for cost in costs:
        operation, operands = cost["name"].removeprefix("korm").split("_")[:2]
        if "toLoadSquare" in cost and (operation in ("Add", "Sub") or (operation == "Mul" and "c" in operands)):
            lines.append([cost["name"], str(cost["arguments"])]
                         + [f"{cost[key]} ({number(cost[key] / cost['arguments'])})"
                            for key in ("toLoadSquare", "toLoadOther")]
                         + [str(cost["toReturn"])])
    yield from table(["form", "arguments", "to the first load, 3 to 6 (an argument)", "other sizes (an argument)",
                      "to the return"], lines)


ARITH = Page(
    title="sums, differences and scaling",
    about="Peers are Eigen with sizes known to the compiler, object by object over the same memory; Eigen over all "
          "objects as one array (\"flat\"); plain loops with sizes known to the compiler, in the pointer layout also "
          "along the streams. All results are equal to the bit. `cache` is 24 KiB of operands, `memory` 64 MiB.",
    sections={**{layout: (f"Arrays, {layout}", f"Layout: {words}.") for layout, words in LAYOUTS.items()},
              "single": ("One small call", "The peers are functions for one size, without arguments for strides "
                                           "and without checks, so this shows what generality costs; use the array "
                                           "forms where there are many objects."),
              "threads": ("Two threads", "Time that passes.")},
    plots=[(f"{form}, {layout}", f"^{layout}/{form}/[^/]*/cache")
           for form, layout in (("Add_mama_32f", "packed"), ("Add_mama_64f", "packed"), ("Add_mama_32f", "strided"),
                                ("Add_vava_32f", "packed"), ("Mul_vac_32f", "packed"), ("Add_tam_32f", "packed"),
                                ("Add_mama_32f", "list"), ("Add_mama_32f", "streams"))],
    goals=arith_goals,
    tables={layout: layout_table for layout in LAYOUTS if layout != "packed"})


def rows_and_call(text, rows):
    """The goal that no row is behind, and what remains of it without the library's call: a peer's loop stands in the program."""
    return every_row(text, rows, EVEN) + every_row("the same, less a call with one object", rows, EVEN, Row.without_call)


# --- Products ---------------------------------------------------------------------------------------

def by_columns(rows):
    """Products by columns beside what they are by rows: the product of the transposes."""
    turned = {(row.form, "x".join(reversed(row.size.split("x")))): row.ns["korm"] for row in chosen(rows, "sweep", place="packed")}
    return every_row("all small shapes, stored by columns: packed product of the transposes / korm",
                     chosen(rows, "sweep", place="columns"), 0.87,
                     lambda row: turned[row.form, row.size] / row.ns["korm"] if (row.form, row.size) in turned else None)


def sweep_goals(rows):
    """All small shapes, beside the plain loop over the same layout with its sizes known at run time only."""
    sweeps = chosen(rows, "sweep")
    singles = [row for row in sweeps if LAST_CHECK in row.ns]
    arrays = [row for row in sweeps if row not in singles]
    goals = []
    for element, wanted in (("32f", 3), ("64f", 2)):
        goals += at_least(f"all small shapes, packed arrays, {element}, geometric mean: plain loop / korm",
                          mean(row.ratio for row in arrays if row.type == element and row.place == "packed"), wanted)
    for place in dict.fromkeys(row.place for row in arrays):
        goals += every_row(f"all small shapes, arrays, {place}: plain loop / korm", chosen(arrays, "sweep", place=place), EVEN)
    goals += by_columns(sweeps)
    products = lambda row: math.prod(map(int, row.size.split("x")))
    large, small = [row for row in singles if products(row) >= 8], [row for row in singles if products(row) < 8]
    goals += every_row("single calls of eight products or more: plain loop / korm", large, EVEN)
    goals += every_row("the same, with a call's checks beside the loop", large, EVEN, Row.with_checks)
    return goals + every_row("single calls of fewer products: plain loop / korm", small, 0.5)


def product_goals(context, rows):
    arrays, singles = chosen(rows, "arrays"), chosen(rows, "singles")
    small = chosen(rows, "arrays", SMALL)
    goals = every_row("packed arrays, orders 3 to 6: best peer / korm", small, EVEN)
    goals += every_row("packed arrays, larger orders: best peer / korm",
                       [row for row in arrays if row not in small], EVEN)
    for element, best, eigen in (("32f", 1.3, 2.0), ("64f", 1.2, 1.3)):
        group = [row for row in small if row.type == element]
        goals += at_least(f"orders 3 to 6, geometric mean, {element}", mean(row.ratio for row in group), best)
        goals += at_least(f"Eigen with fixed sizes / korm, geometric mean, {element}",
                          mean(row.against("Eigen, fixed sizes") for row in group), eigen)
    if context["target"] == "ia32":
        goals += every_row("single products, orders 8 to 64: Eigen / korm",
                           [row for row in singles if 8 <= int(row.size) <= 64], 1.2,
                           lambda row: row.against("Eigen, dynamic"))
    else:
        goals += every_row("single products up to order 64: best peer with sizes given at run time / korm",
                           [row for row in singles if int(row.size) <= 64], EVEN,
                           lambda row: row.against("Eigen, dynamic", "OpenBLAS", "libxsmm"))
    goals += every_row("single products of order 512 and 1024: OpenBLAS / korm", chosen(rows, "singles", ("512", "1024")), 0.8,
                       lambda row: row.against("OpenBLAS"))
    common, known = chosen(rows, "known-common"), chosen(rows, "known")
    goals += at_least("small shapes, geometric mean: plain loop with known sizes / korm",
                      mean(row.ratio for row in common + known), 0.8)
    goals += every_row("small shapes: plain loop with known sizes / korm", common + known, 0.5)
    goals += rows_and_call("shapes in common use: plain loop with known sizes / korm", common)
    for row in chosen(rows, "threads"):
        if row.ns["plain loop, one thread"] / row.ns["plain loop, two threads"] >= 1.7:
            goals += at_least(f"two threads, {row.label}: one thread / two", row.ratio, 1.7)
    return goals + sweep_goals(rows)


def known_table(rows):
    """A line a form, then the rows where korm is behind."""
    behind = [row for row in rows if row.ratio < EVEN]
    by_call = sum((row.without_call() or 0) >= EVEN for row in behind)
    yield f"Below {EVEN} are {len(behind)} of {len(rows)} rows, {by_call} of them by no more than a call with one object."
    yield ""
    yield from by_form(rows)
    yield from comparison(behind)


PRODUCTS = Page(
    title="products",
    about="Peers with sizes known to the compiler are Eigen, GLM, cglm and plain loops; with sizes given at run "
          "time Eigen, OpenBLAS and libxsmm, which makes its code for a size when the program runs and is called "
          "here without looking that code up. All are held to the instruction set of the library, which is SSSE3: "
          "OpenBLAS to its kernels for Core2, libxsmm to those for Westmere (SSE4.2, the least it makes code for; "
          "its products have no instruction newer than SSE3). `build/x86_64/bin/bench_products --any-kernels` lets "
          "them take what the processor has. Results are compared to the rounding errors that an order of "
          "additions may leave.",
    sections={"arrays": ("Packed arrays of square matrices, in cache", ""),
              "memory": ("The same out of cache", "64 MiB of operands."),
              "streams": ("Objects one element apart",
                          "The plain loop knows the sizes and does all objects of one position at a time. What "
                          "additions and multiplications alone take, and why streams gain little where packed "
                          "arrays are near that, is told in "
                          "[the architecture](../architecture.md#the-kernels-of-products)."),
              "singles": ("Single products",
                          "Eigen with fixed sizes knows the order when it is compiled, and has no arguments to "
                          "check. Why `tm` and `tt` fall behind from order 128 on is told in [the "
                          "architecture](../architecture.md#the-kernels-of-products)."),
              "vectors": ("Matrices and vectors", ""),
              "known-common": ("Shapes in common use, beside loops that know their sizes",
                               "MxKxN: M by K times K by N; MxK: times a vector. Those of points, projections, Jacobians and "
                               "covariances, packed, in cache. The library knows these sizes, too. Rows of four floats "
                               "and 2 by 2 matrices of which one serves all objects are as short as the loop's, to "
                               "the instruction: eight shuffles, four products and four additions for four rows of "
                               "four. What is left there is the call, and in which lines of code a loop lies."),
              "known": ("Other small shapes, beside loops that know their sizes",
                        "Here the library knows the number of products up to eight, and no other size. Doubles have "
                        "partial sums in the last rows: of 1x8x8 each element joins eight sums of one product, which "
                        "are as many additions as the loop's but need all products in registers at once."),
              "threads": ("Two threads",
                          "Time that passes. The plain loop over the same arrays, on one thread and on two of the "
                          "same team, shows what two threads are worth on this machine at this moment.")},
    plots=[(f"{form}, {words}", f"^{section}/{form}/")
           for form, section, words in (("Mul_mama_32f", "arrays", "packed arrays"),
                                        ("Mul_mama_64f", "arrays", "packed arrays"),
                                        ("Mul_mm_32f", "singles", "single products"),
                                        ("Mul_mm_64f", "singles", "single products"),
                                        ("Mul_mava_32f", "vectors", "pair by pair"),
                                        ("Mul_mva_32f", "vectors", "one matrix, many vectors"))],
    goals=product_goals,
    tables={"known-common": known_table, "known": known_table},
    small="In `columns`, operands and results are stored by columns; goals hold them against the packed product of the "
          "transposes, whose operands lie in the same order. Doubles by columns have one sum for each element where packed "
          "ones have two or four partial sums, and wait for it where there are few elements: 1x8x4, 1x8x8 and 8x8x2 take 1.16 to "
          "1.2 times as long for that.")


# --- Combinations and reductions of vectors ---------------------------------------------------------------

def vector_table(rows):
    """A line a form, then all rows in cache."""
    yield from by_form(rows)
    yield from comparison([row for row in rows if row.place == "cache"])


def vector_goals(context, rows):
    packed = chosen(rows, "packed")
    near = [row for row in packed if row.place == "cache"]
    reductions = [row for row in near if row.form.startswith(("DotProduct", "L2Norm", "FrobNorm", "Trace"))]
    norms = [row for row in reductions if "Norm" in row.form and row.type.endswith("32f")]
    short = [row for row in reductions if row.size in SMALL]
    goals = []
    for element, least in (("32f", 1.3), ("64f", 1.15)):
        goals += at_least(f"reductions, lengths and orders 3 to 6, {element}, geometric mean: best peer / korm",
                          mean(row.ratio for row in short if row.type.endswith(element)), least)
    goals += rows_and_call("reductions, lengths and orders 3 to 6, every row: best peer / korm", short)
    goals += at_least("norms of 32f, lengths and orders 3 to 6, geometric mean: best peer / korm",
                      mean(row.ratio for row in norms if row.size in SMALL), 1.5)
    goals += rows_and_call("reductions of 16, 256 and 1000 elements: best peer / korm",
                           [row for row in reductions if row.size in ("16", "256", "1000")
                            and row.form.startswith(("DotProduct", "L2Norm"))])
    combinations = [row for row in near if row.form.startswith(("Saxpy", "LComb", "Gaxpy")) and row.size in SMALL]
    goals += at_least("combinations, lengths and orders 3 to 6, geometric mean: Eigen with fixed sizes / korm",
                      mean(row.against("Eigen") for row in combinations), 1.3)
    return goals + every_row("all small sizes: plain loop / korm", chosen(rows, "sweep"), EVEN)


VECTORS = Page(
    title="combinations and reductions",
    about="Saxpy, linear combinations, cross and dot products, norms and traces of packed arrays. Eigen and GLM "
          "know the lengths when they are compiled, and so do the plain loops. `cache` is 24 KiB of operands, "
          "`memory` 64 MiB. Results are compared to the rounding errors that an order of additions may leave.",
    sections={"packed": ("Packed arrays",
                         "Two vectors are loaded in a cycle, which bounds dot products of two arrays from length 16 on. "
                         "`partial sums alone` is a loop that knows the size and adds as the library does, in eight "
                         "partial sums: dot products of several objects side by side, norms of doubles one by one. What it "
                         "takes longer than Eigen is the price of that order; what the library takes longer than it, that of "
                         "a call and of loops for any length. In norms of doubles the order asks each row to wait for the "
                         "one before.\n\n"
                         "Goals less a call with one object leave the library the time of its loops: peers' loops stand in "
                         "the program, and 24 KiB of short vectors are done in 100 ns, of which a call with its checks is 4 "
                         "to 8. Floats of length 4 beside one vector wait for shuffles, eight for four objects and two in a "
                         "cycle, whoever adds them; their norms for roots. Of one or two products an object is a loop of its "
                         "own for the library, and a line of vectors for peers that know the length.")},
    plots=[(form, f"^packed/{form}/[^/]*/cache")
           for form in ("Saxpy_vava_32f", "LComb_vava_32f", "DotProduct_vava_32f", "DotProduct_vava_64f", "L2Norm_va_32f",
                        "L2Norm_va_64f", "FrobNorm_ma_32f", "Trace_ma_32f")],
    goals=vector_goals,
    tables={"packed": vector_table},
    small="Behind are scaled sums of strided lists, by what a call takes beside so few objects ([architecture](../architecture.md#the-"
          "kernels-of-vectors) has the limit of such loops).")


# --- Movement ---------------------------------------------------------------------------------------

def move_goals(context, rows):
    blocks, structures, pairs = (chosen(rows, section) for section in ("blocks", "structures", "pairs"))
    goals = every_row("packed blocks: memcpy / korm", blocks, 0.95, lambda row: row.against("memcpy"))
    for place, least in (("cache", 2.0), ("memory", 1.0)):
        near = [row for row in structures if row.place.endswith(place)]
        goals += at_least(f"structures to streams and back, {place}: plain loop / korm", mean(row.ratio for row in near), least)
    goals += at_least("other pairs of layouts: plain loop / korm", mean(row.ratio for row in pairs), 1.2)
    goals += rows_and_call("transposed arrays, orders 3 to 6: best peer / korm", chosen(rows, "arrays"))
    for element, least in (("32f", 1.2), ("64f", 1.0)):
        large = chosen(rows, "singles", ("64", "100", "512", "1000", "2048"), element=element)
        goals += every_row(f"transposed matrices, {element}: best peer / korm", large, least)
    return goals + every_row("all small sizes: plain loop / korm", chosen(rows, "sweep"), EVEN)


MOVE = Page(
    title="movement",
    about="Copies are held against `memcpy` where both sides are packed, and against the plain loop over the same layouts "
          "with sizes at run time; transposition against Eigen, plain loops in tiles, OpenBLAS and libxsmm (`otrans`).",
    sections={"blocks": ("Packed to packed", ""),
              "structures": ("Structures to streams and back",
                             "An array of structures is packed or a list, streams are the pointer layout with contiguous "
                             "elements."),
              "pairs": ("Other pairs of layouts", ""), "arrays": ("Transposed arrays", ""),
              "singles": ("One transposed matrix", ""),
              "extract": ("Extracted blocks", "Packed sources are one block, the others are gathered."),
              "identities": ("Identities", "Packed arrays.")},
    plots=[("Transpose_m_32f", "^singles/Transpose_m_32f/"), ("Transpose_m_64f", "^singles/Transpose_m_64f/")],
    goals=move_goals,
    small="What is behind here is so at some places of the code only: by medians over four of them (`--places`) no row is.")


# --- LU, solve, inverse, determinant -----------------------------------------------------------------

CHOLESKY = ("cholesky", "cholesky-solve", "cholesky-solve-one")
LU_SOLVES = ("solve", "solve-one")
MEDIUM = tuple(str(order) for order in range(7, 17))


def linalg_goals(context, rows):
    goals = []

    def of(section, sizes, element=""):
        return chosen(rows, section, sizes, element=element, place="shuffled")

    for element, wanted in (("32f", 4), ("64f", 2)):
        goals += at_least(f"LU, {element}, geometric mean: Eigen / korm",
                          mean(row.against("Eigen") for row in of("lu", SMALL, element)), wanted)
    goals += every_row("LU, orders 2 to 6: Eigen / korm", of("lu", ("2",) + SMALL), 1, lambda row: row.against("Eigen"))
    goals += every_row("LU, orders 7 to 16: Eigen / korm", of("lu", MEDIUM), 1.25, lambda row: row.against("Eigen"))
    goals += every_row("LU of one matrix of order 64 to 512: LAPACK / korm", chosen(rows, "lu-large"), 0.8,
                       lambda row: row.against("LAPACK"))
    for element, wanted in (("32f", 2), ("64f", 1.5)):
        for section, words in (("solve", "a matrix for each vector"), ("solve-one", "one matrix for all vectors")):
            goals += at_least(f"solve, {words}, {element}, geometric mean: Eigen / korm",
                              mean(row.against("Eigen", "Eigen, one call") for row in of(section, SMALL, element)),
                              wanted)
    for element, wanted in (("32f", 3), ("64f", 1.8)):
        goals += every_row(f"QR of 4x3, 6x6 and 16x8, {element}: best peer / korm",
                           chosen(rows, "qr", ("4x3", "6x6", "16x8"), element=element), wanted)
    least_squares = chosen(rows, "qr-solve") + chosen(rows, "qr-solve-one")
    goals += at_least("solves with QR, geometric mean: best peer / korm", mean(row.ratio for row in least_squares), 2)
    goals += every_row("QR and its solves, every row: best peer / korm", chosen(rows, "qr") + least_squares, 1)
    goals += every_row("LU and solves, every row: best peer / korm",
                       of("lu", SMALL) + of("solve", SMALL) + of("solve-one", SMALL), 1)
    for element, wanted in (("32f", (3.5, 2, 3)), ("64f", (2, 2, 3))):
        for section, words, least in zip(CHOLESKY, ("Cholesky", "its solve, a matrix for each vector",
                                                    "its solve, one matrix for all vectors"), wanted):
            goals += at_least(f"{words}, {element}, geometric mean: best peer / korm",
                              mean(row.ratio for row in of(section, SMALL, element)), least)
    for element, wanted in (("32f", 1.5), ("64f", 1.25)):
        for section, words in zip(CHOLESKY + LU_SOLVES, ("Cholesky", "Cholesky's solve, a matrix for each vector",
                                                         "Cholesky's solve, one matrix for all vectors",
                                                         "solve with LU, a matrix for each vector",
                                                         "solve with LU, one matrix for all vectors")):
            goals += every_row(f"{words}, orders 7 to 16, {element}: best peer / korm", of(section, MEDIUM, element), wanted)
    goals += every_row("Cholesky and all solves, orders 1 to 16: best peer / korm",
                       [row for section in CHOLESKY + LU_SOLVES for row in of(section, ("1", "2") + SMALL + MEDIUM)], 1)
    goals += every_row("inverse, orders 3 and 4: best peer / korm", of("inverse", ("3", "4")), 1)
    goals += at_least("the same, 32f, geometric mean", mean(row.ratio for row in of("inverse", ("3", "4"), "32f")), 1.3)
    for element, wanted in (("32f", 4), ("64f", 2)):
        goals += every_row(f"inverse, orders 5 and 6, {element}: best peer / korm",
                           of("inverse", ("5", "6"), element), wanted)
    goals += every_row("determinant in single precision, orders 3 and 4: best peer / korm",
                       of("determinant", ("3", "4"), "32f"), 1)
    goals += every_row("determinant, orders 5 and 6: best peer / korm", of("determinant", ("5", "6")), 2)
    return goals


def extended_table(rows):
    lines = []
    for row in rows:
        limit = max(row.facts["multiplications"], row.facts["additions"]) * row.facts["multiplication"]
        cycles = row.ns["korm"] * row.facts["gigahertz"]
        lines.append([row.label, f"{row.facts['multiplications']:g}", f"{row.facts['additions']:g}", number(limit, 0),
                      number(cycles, 0), number(cycles / limit)])
    yield (f"Here the unit multiplies once in {number(rows[0].facts['multiplication'])} cycles, six independent products "
           f"in flight, by a clock of {number(rows[0].facts['gigahertz'])} GHz: the best time of a chain of additions of "
           "which each takes one cycle.")
    yield ""
    yield from table(["form, order", "multiplications", "additions", "the unit's limit, cycles", "cycles a determinant",
                      "cycles / limit"], lines)


LINALG = Page(
    title="LU, Cholesky, QR, solve, inverse and determinant",
    about="Packed arrays on one thread. `cache` is 24 KiB of matrices; `shuffled` up to a hundred thousand objects "
          "with their rows in random order, so that no branch on a pivot can be learnt. Eigen, GLM and cglm know "
          "the order when they are compiled. LAPACK is OpenBLAS's, held to its kernels for Core2. Results are "
          "compared to the rounding errors that another order of operations may leave. Maps hold orders up to 24, and QR of "
          "all sizes up to 16, against plain loops of the same steps: of single objects at small orders those are ahead by "
          "the checks of a call.",
    sections={"lu": ("LU decomposition",
                     "Order 1 is a copy with a test of each pivot. Eigen makes no test: its two copies are the C library's, 32 "
                     "bytes at a time. The plain loop makes it."),
              "lu-large": ("LU decomposition of one large matrix", "Rows are a power of two apart where the order is one."),
              "solve": ("Solve, a matrix for each vector", ""),
              "solve-one": ("Solve, one matrix for all vectors", ""),
              "cholesky": ("Cholesky decomposition", ""),
              "cholesky-solve": ("Solve with a Cholesky factor for each vector", ""),
              "cholesky-solve-one": ("Solve with one Cholesky factor for all vectors", ""),
              "qr": ("QR decomposition", "ROWSxCOLUMNS. Eigen's HouseholderQR of fixed size, LAPACK's `geqrf`."),
              "qr-solve": ("Least squares, a matrix for each vector", ""),
              "qr-solve-one": ("Least squares, one matrix for all vectors", ""),
              "inverse": ("Inverse",
                          "Orders 2, 7 and above: each element is a cofactor by an elimination of its own, about "
                          "n^5 / 3 multiplications, because results rest on it ([numerics](../numerics.md#what- "
                          "larger-inverses-cost)). Order 2 of arrays is straight-line code. For larger orders call "
                          "`kormLUDecomp_ma` and, for each column of the identity, `kormLUBackSubst_mava`; this is "
                          "the column \"korm, LU and solves\". Best of all is not to want the inverse: one solve for "
                          "each right-hand side."),
              "determinant": ("Determinant", ""),
              "extended": ("Determinants in extended precision",
                           "Determinants of adjacent elements go through the x87 unit, so their measure is not a "
                           "peer, which computes in the vector unit and in the element's own type, but what that "
                           "unit can do. Multiplications and additions are those of the expansion with each minor "
                           "made once. The unit adds beside its multiplications, so the limit is the larger of the "
                           "two numbers. The products of minors of two rows of floats are exact in doubles and are "
                           "made by the vector unit, so that floats could come below it; in turn these minors are "
                           "subtracted anew for each use, since 80 bits take about ten cycles through memory.")},
    plots=[(f"{words}, {element}", f"^{section}/.*_{element}/.*/shuffled")
           for section, words in (("lu", "LU"), ("solve", "solve, a matrix for each vector"), ("cholesky", "Cholesky"),
                                  ("cholesky-solve", "solve with a Cholesky factor"), ("inverse", "inverse"),
                                  ("determinant", "determinant"))
           for element in ("32f", "64f")],
    goals=linalg_goals,
    tables={"extended": extended_table})


# --- Eigenproblems ------------------------------------------------------------------------------------

GENERAL_VECTORS = ("general-left", "general-right", "general-both")
EIGEN_AT_RUN_TIME = "Eigen, order at run time"


def eigen_goals(context, rows):
    goals = []
    for element, wanted in (("32f", 2), ("64f", 1.5)):
        small = chosen(rows, "symmetric-vectors", SMALL, element=element, place="shuffled")
        goals += at_least(f"symmetric with vectors, orders 3 to 6, {element}, geometric mean: Eigen / korm",
                          mean(row.against("Eigen") for row in small), wanted)
    goals += every_row("symmetric with vectors, every row: Eigen / korm", chosen(rows, "symmetric-vectors", SMALL), 1,
                       lambda row: row.against("Eigen"))
    goals += every_row("symmetric with vectors, order 16: Eigen / korm", chosen(rows, "symmetric-vectors", ("16",)), 1.2,
                       lambda row: row.against("Eigen"))
    goals += every_row("symmetric, every order up to 16: Eigen / korm",
                       chosen(rows, "symmetric-vectors-sweep") + chosen(rows, "symmetric-values-sweep"), 1,
                       lambda row: row.against(EIGEN_AT_RUN_TIME))
    values = chosen(rows, "general-values")
    goals += at_least("general, values, orders 4, 6 and 16, geometric mean: Eigen / korm",
                      mean(row.against("Eigen", EIGEN_AT_RUN_TIME) for row in values if row.size in ("4", "6", "16")), 1.5)
    goals += every_row("general, values, orders 3 to 16: best peer / korm",
                       [row for row in values if int(row.size) >= 3], 1.1)
    return goals + every_row("general with vectors, every row: best peer / korm",
                             [row for section in GENERAL_VECTORS for row in chosen(rows, section)], 1)


EIGEN = Page(
    title="eigenproblems",
    about="Packed arrays on one thread. Of symmetric matrices `cache` is 24 KiB, `shuffled` up to a hundred thousand of them; "
          "general ones are a hundred or more with random elements. Eigen knows the order when it is compiled unless the column "
          "says otherwise; its closed form, of order 3, loses half of the digits where values lie close together. LAPACK is "
          "OpenBLAS's, held to its kernels for Core2.\n\n"
          "Solvers of general problems find eigenvalues in different orders and scale vectors differently: compared are the "
          "sum of the squares of the eigenvalues, and how far each vector is from its equation. Eigen's vectors are not "
          "scaled to length 1; its right ones, beside left ones, are rows of an inverse. LAPACK's `geev` balances the "
          "matrix first.",
    sections={"symmetric-vectors": ("Symmetric, values and vectors", ""), "symmetric-values": ("Symmetric, values", ""),
              "symmetric-vectors-sweep": ("Symmetric, values and vectors, every order up to 16", ""),
              "symmetric-values-sweep": ("Symmetric, values, every order up to 16", ""),
              "general-values": ("General, values", ""),
              "general-left": ("General, values and left vectors", "Left vectors y satisfy A y = w y."),
              "general-right": ("General, values and right vectors", "Right vectors y satisfy y^T A = w y^T."),
              "general-both": ("General, values and both sets of vectors", "")},
    plots=[(f"{words}, {element}", f"^{section}/.*_{element}/{place}")
           for section, words, place in (("symmetric-vectors", "symmetric, with vectors", ".*/shuffled"),
                                         ("symmetric-values", "symmetric, values", ".*/shuffled"),
                                         ("general-values", "general, values", ""),
                                         ("general-left", "general, with left vectors", ""),
                                         ("general-both", "general, with both sets of vectors", ""))
           for element in ("32f", "64f")],
    goals=eigen_goals)


# --- Functions of fixed size ----------------------------------------------------------------------------

def without_stub(row):
    """Time of the best peer over that of korm's function without its stub."""
    return row.ratio and row.ratio * row.ns["korm"] / row.ns["korm, without its stub"]


def call_table(rows):
    names = list(dict.fromkeys(name for row in rows for name in row.ns))
    yield from table(["function"] + names + ["best peer / korm", "without the stub"],
                     [[row.label] + [number(row.ns.get(name)) for name in names]
                      + [number(row.ratio), number(without_stub(row))] for row in rows])


def geometry_goals(context, rows):
    batches = chosen(rows, "batches")
    calls = [row for row in chosen(rows, "calls") if row.form != "empty_32f"]
    return (at_least("batches, geometric mean: best peer / korm", mean(row.ratio for row in batches), 1.2)
            + every_row("every batch", batches, EVEN) + every_row("every call", calls, EVEN)
            + every_row("the same without the stub's jump", calls, EVEN, without_stub))


GEOMETRY = Page(
    title="functions of fixed size",
    about="Peers are GLM, with its plain types and with those that have SIMD instructions, cglm, and plain loops. "
          "Rounding differs between the contenders by design; results are compared within that.",
    sections={"batches": ("Batches",
                          "Named by the function, the number of vectors, and the bytes from one vector to the next "
                          "in source and result. From 100,000 vectors on all wait for memory."),
              "calls": ("One call for one object",
                        "Every contender is a call from one loop over the linker's table into a shared library: "
                        "GLM in functions of one that was built for this, cglm in its own. korm's functions are "
                        "entered over a stub, one jump more. What that costs is measured: \"without its stub\" is "
                        "the same function of the same library, entered at the address to which its stub jumps, "
                        "over a table as the others are. `empty` is a function that does nothing: branches alone, "
                        "of which each costs about two cycles. A small function's arithmetic vanishes behind them. "
                        "A longer function hides the jump instead.\n\n"
                        "Loops and functions start at lines of code, but for cglm's functions: crossing a line is "
                        "a cycle too. cglm's vectors and matrices must be aligned to 16 bytes, korm's need not. "
                        "The inverse of korm is the full adjugate in a fixed order of operations, 44 vectors of "
                        "products and sums; that of the others shares minors. The weights of korm's curves are "
                        "formed in double precision.")},
    plots=[(f"{form}, {place} bytes apart", f"^batches/{form}_32f/.*/{place}")
           for form, place in (("AffineTransform_m4v3a", "12-16"), ("AffineTransformCoord_m4v3a", "12-12"),
                               ("AffineTransformNormal_m4v3a", "16-16"), ("Project_m4v3a", "12-12"),
                               ("Unproject_m4v3a", "12-12"), ("AffineTransform3DH_mva", "16-16"))],
    goals=geometry_goals,
    tables={"calls": call_table})


PAGES = {"arith": ARITH, "products": PRODUCTS, "vectors": VECTORS, "move": MOVE, "linalg": LINALG, "eigen": EIGEN, "geometry": GEOMETRY}
