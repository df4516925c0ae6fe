"""The drawings of docs/pictures, one a family: squares for elements, arrows for what becomes of them."""

from pathlib import Path
import math
import sys

ROOT = Path(__file__).resolve().parents[2]
sys.path.append(str(ROOT / "bench"))
import svg  # noqa: E402  (the drawings of benchmarks use the same)

BLUE, ORANGE, GREEN, PURPLE, GREY = "#4878a8", "#d97f2b", "#4f9a51", "#9069ab", "#d8d8d8"
CELL = 26


def cell(x, y, words="", fill=BLUE, width=CELL, height=CELL):
    parts = [f'<rect x="{x}" y="{y}" width="{width}" height="{height}" fill="{fill}" stroke="white"/>']
    if words:
        parts.append(svg.text(x + width / 2, y + height / 2 + 4, words, 11, "middle", "#222" if fill == GREY else "white"))
    return parts


def grid(x, y, rows, columns, fill=BLUE, chosen=lambda i, j: True, words=lambda i, j: ""):
    return [part for i in range(rows) for j in range(columns)
            for part in cell(x + j * CELL, y + i * CELL, words(i, j), fill if chosen(i, j) else GREY)]


def arrow(x1, y1, x2, y2):
    angle = math.atan2(y2 - y1, x2 - x1)
    ends = [(x2 - 9 * math.cos(angle + turn), y2 - 9 * math.sin(angle + turn)) for turn in (0.4, -0.4)]
    head = " ".join(f"{x:.1f},{y:.1f}" for x, y in ((x2, y2), *ends))
    return [f'<line x1="{x1}" y1="{y1}" x2="{x2}" y2="{y2}" stroke="#444" stroke-width="1.5"/>',
            f'<polygon points="{head}" fill="#444"/>']


def box(x, y, width, words, fill="#eef2f6", height=34):
    return [f'<rect x="{x}" y="{y}" width="{width}" height="{height}" rx="6" fill="{fill}" stroke="#8fa3b5"/>',
            svg.text(x + width / 2, y + height / 2 + 4, words, 12, "middle")]


def arithmetic():
    parts = []
    for k in range(3):
        parts += grid(20 + k * 100, 40, 2, 3, words=lambda i, j: f"{i},{j}")
        parts += grid(480 + k * 100, 40, 2, 3, GREEN, words=lambda i, j: f"{i},{j}")
    parts += [svg.text(340, 72, "-", 24, "middle"), svg.text(458, 72, "=", 20, "middle")]
    parts += grid(362, 40, 2, 3, ORANGE, words=lambda i, j: f"{i},{j}")
    for x, words in ((20, "src1, an array: ma"), (362, "src2: m"), (480, "dst: each minus the one")):
        parts.append(svg.text(x, 28, words, 12))
    return svg.document(790, 120, parts + [svg.text(20, 112, "kormSub_mam: element (i, j) of each matrix", 12)])


def products():
    parts = grid(20, 40, 3, 4, chosen=lambda i, j: i == 1) + grid(180, 40, 4, 3, ORANGE, lambda i, j: j == 2)
    parts += grid(330, 40, 3, 3, GREEN, lambda i, j: (i, j) == (1, 2))
    parts += [svg.text(152, 84, "*", 24, "middle"), svg.text(294, 84, "=", 20, "middle")]
    for x, words in ((20, "src1: width 4, height 3"), (180, "src2: width 3, height 4"), (330, "dst: 3 by 3")):
        parts.append(svg.text(x, 28, words, 12))
    return svg.document(470, 165, parts + [svg.text(20, 158, "row 1 times column 2, summed over l, is element (1, 2)", 12)])


def vectors():
    parts = []
    for x, title, rows in ((20, "dot product: a number", 1), (240, "combination: a vector", 3), (460, "cross product: at right angles", 0)):
        parts.append(svg.text(x, 22, title, 12))
        if rows:
            parts += grid(x, 40, 3, 1) + grid(x + 60, 40, 3, 1, ORANGE) + arrow(x + 94, 79, x + 122, 79)
            parts += grid(x + 130, 40 if rows == 3 else 40 + CELL, rows, 1, GREEN)
            parts.append(svg.text(x + 43, 84, "+" if rows == 3 else "*", 18, "middle"))
    for (x, y), colour, words in (((630, 130), BLUE, "a"), ((520, 145), ORANGE, "b"), ((540, 40), GREEN, "a x b")):
        parts.append(f'<line x1="560" y1="110" x2="{x}" y2="{y}" stroke="{colour}" stroke-width="4"/>')
        parts.append(svg.text(x + 6, y, words, 13, colour=colour))
    return svg.document(680, 155, parts)


def movement():
    colours = (BLUE, ORANGE, GREEN)
    parts = [svg.text(20, 22, "structures: x y z and something else, one behind the other (S)", 12)]
    for k in range(4):
        for e in range(3):
            parts += cell(20 + (4 * k + e) * CELL, 32, f"{'xyz'[e]}{k}", colours[e])
        parts += cell(20 + (4 * k + 3) * CELL, 32, "", GREY)
    parts += arrow(220, 66, 220, 96) + [svg.text(232, 86, "Copy _SP;  back: _PS", 12)]
    for e in range(3):
        for k in range(4):
            parts += cell(20 + e * 140 + k * CELL, 104, f"{'xyz'[e]}{k}", colours[e])
    parts.append(svg.text(20, 150, "streams: a pointer leads to each (P)", 12))
    return svg.document(470, 162, parts)


def systems():
    parts = box(20, 70, 150, "A x = b")
    ends = (("more rows than columns", "QR: least squares", 14), ("symmetric, positive definite", "Cholesky", 70),
            ("square, anything else", "LU", 126))
    for why, what, y in ends:
        parts += arrow(170, 87, 380, y + 17) + box(386, y, 170, what, "#e6f2e6")
        parts.append(svg.text(262 if y != 70 else 372, y + (6 if y == 14 else 12 if y == 70 else 26), why, 11, "middle" if y != 70 else "end"))
        parts += arrow(556, y + 17, 600, y + 17) + box(604, y, 150, "BackSubst")
    return svg.document(775, 175, parts)


def eigenproblems():
    angle = math.radians(-30)
    parts = [f'<circle cx="110" cy="110" r="50" fill="none" stroke="{BLUE}" stroke-width="2.5"/>',
             f'<ellipse cx="390" cy="110" rx="110" ry="40" transform="rotate(-30 390 110)" fill="none" stroke="{GREEN}" '
             'stroke-width="2.5"/>', *arrow(185, 110, 255, 110), svg.text(220, 100, "A", 14, "middle")]
    for length, turn, words in ((110, 0, "value 1 * vector 1"), (40, -math.pi / 2, "value 2 * vector 2")):
        x, y = 390 + length * math.cos(angle + turn), 110 + length * math.sin(angle + turn)
        parts += arrow(390, 110, round(x, 1), round(y, 1)) + [svg.text(x + (10 if turn == 0 else -110), y - 14, words, 12)]
        x, y = 110 + 50 * math.cos(angle + turn), 110 + 50 * math.sin(angle + turn)
        parts += arrow(110, 110, round(x, 1), round(y, 1))
    parts += [svg.text(110, 185, "all vectors of length 1", 12, "middle"), svg.text(390, 205, "A y = w y along two axes", 12, "middle")]
    return svg.document(640, 215, parts)


def geometry():
    parts, x = [], 20
    steps = (("mesh", "world"), ("space", "view"), ("before the viewer", "projection"), ("-1 .. 1", "viewport"), ("picture", None))
    for words, matrix in steps:
        parts += box(x, 40, 110, words)
        if matrix:
            parts += arrow(x + 110, 57, x + 166, 57) + [svg.text(x + 138, 36, matrix, 11, "middle")]
        x += 170
    parts += arrow(75, 100, 755, 100) + arrow(755, 122, 75, 122)
    parts += [svg.text(415, 96, "Project", 12, "middle"), svg.text(415, 138, "Unproject", 12, "middle")]
    return svg.document(835, 150, parts)


PICTURES = (arithmetic, products, vectors, movement, systems, eigenproblems, geometry)


def texts():
    """Path to text of every drawing."""
    return {ROOT / "docs/pictures" / f"{picture.__name__}-picture.svg": picture() for picture in PICTURES}
