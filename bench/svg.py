"""Drawings of benchmark results: korm beside its peers over sizes, and maps of all small sizes."""

import math

COLOURS = ("#0072b2", "#d55e00", "#009e73", "#cc79a7", "#e69f00", "#56b4e9", "#5f4690", "#8c564b", "#7f7f7f", "#bcbd22")
FONT = 'font-family="sans-serif"'
LARGEST = 4  # ratio beyond which colours stay the same


def text(x, y, words, size=11, anchor="start", colour="#222", more=""):
    words = words.replace("&", "&amp;").replace("<", "&lt;")
    return (f'<text x="{x:.1f}" y="{y:.1f}" font-size="{size}" text-anchor="{anchor}" fill="{colour}" {FONT} {more}>'
            f"{words}</text>")


def document(width, height, parts):
    return (f'<svg xmlns="http://www.w3.org/2000/svg" width="{width:.0f}" height="{height:.0f}" '
            f'viewBox="0 0 {width:.0f} {height:.0f}">\n<rect width="100%" height="100%" fill="white"/>\n'
            + "\n".join(parts) + "\n</svg>\n")


def line_panel(x, y, width, height, title, sizes, lines, colours):
    """Times of peers over korm's, which is the line at 1, on a logarithmic scale. `lines` maps a peer to {size: ratio}."""
    values = [ratio for line in lines.values() for ratio in line.values()] + [1]
    low = min(math.floor(math.log2(min(values)) * 2) / 2, -0.5)
    high = max(min(math.ceil(math.log2(max(values)) * 2) / 2, 4), 1)
    left, top, right, bottom = x + 34, y + 22, x + width - 8, y + height - 24
    across = lambda i: left + (i + 0.5) * (right - left) / len(sizes)
    up = lambda ratio: bottom - (min(math.log2(ratio), high) - low) * (bottom - top) / (high - low)
    parts = [text(x + width / 2, y + 13, title, 12, "middle", more='font-weight="bold"')]
    for power in range(math.ceil(low), math.floor(high) + 1):
        at = up(2.0 ** power)
        parts.append(f'<line x1="{left}" x2="{right}" y1="{at:.1f}" y2="{at:.1f}" stroke="#ddd"/>')
        parts.append(text(left - 5, at + 4, f"{2.0 ** power:g}", 10, "end"))
    for i, size in enumerate(sizes):
        parts.append(text(across(i), bottom + 14, size, 10, "middle"))
    parts.append(f'<line x1="{left}" x2="{right}" y1="{up(1):.1f}" y2="{up(1):.1f}" stroke="black" stroke-width="2.5"/>')
    for peer, line in lines.items():
        points = [(across(i), up(line[size])) for i, size in enumerate(sizes) if size in line]
        path = " ".join(f"{a:.1f},{b:.1f}" for a, b in points)
        parts.append(f'<polyline points="{path}" fill="none" stroke="{colours[peer]}" stroke-width="1.6"/>')
        parts += [f'<circle cx="{a:.1f}" cy="{b:.1f}" r="2.4" fill="{colours[peer]}"/>' for a, b in points]
    return parts


def plot(panels, words="Time of each peer over korm's: above the black line korm is faster"):
    """Panels of (title, sizes, {peer: {size: ratio}}), two in a row, below one legend."""
    peers = list(dict.fromkeys(peer for _, _, lines in panels for peer in lines))
    colours = {peer: COLOURS[i % len(COLOURS)] for i, peer in enumerate(peers)}
    width, height, legend = 420, 240, 24 + 18 * ((len(peers) + 4) // 4)
    parts = [text(10, 16, words, 12)]
    for i, peer in enumerate([None, *peers]):
        x, y = 10 + i % 4 * 210, 34 + i // 4 * 18
        colour = colours.get(peer, "black")
        parts.append(f'<line x1="{x}" x2="{x + 22}" y1="{y - 4}" y2="{y - 4}" stroke="{colour}" stroke-width="2.5"/>')
        parts.append(text(x + 28, y, peer or "korm"))
    for i, (title, sizes, lines) in enumerate(panels):
        parts += line_panel(i % 2 * width, legend + i // 2 * height, width, height, title, sizes, lines, colours)
    return document(2 * width, legend + (len(panels) + 1) // 2 * height, parts)


STEPS = 12  # of colour on either side of 1


def colour_of(ratio):
    """From red, where korm is slower, over white at 1 to green."""
    share = max(-1.0, min(1.0, round(STEPS * math.log(ratio) / math.log(LARGEST)) / STEPS))
    end = (26, 122, 60) if share > 0 else (178, 24, 43)
    return "#" + "".join(f"{round(255 + (part - 255) * abs(share)):02x}" for part in end)


def grid(x, y, cells, rows, columns, cell):
    """A square for each (row, column) of `cells`. One path a colour keeps the file small."""
    paths = {}
    for (row, column), ratio in cells.items():
        start = f"M{x + columns.index(column) * cell} {y + rows.index(row) * cell + (cell - 1) / 2:g}h{cell - 1}"
        paths.setdefault(colour_of(ratio), []).append(start)
    frame = (f'<rect x="{x - 1}" y="{y - 1}" width="{len(columns) * cell + 1}" height="{len(rows) * cell + 1}" '
             f'fill="#e4e4e4"/>')
    return [frame] + [f'<path stroke="{colour}" stroke-width="{cell - 1}" d="{"".join(starts)}"/>'
                      for colour, starts in paths.items()]


def sweep_map(panels):
    """Panels of (title, {sizes: ratio}), sizes being a tuple of one, two (rows, columns) or three (rows, inner, columns)."""
    parts, y = [], 30
    parts.append(text(10, 16, "Time of the plain loop over korm's:", 12))
    for i, ratio in enumerate((0.25, 0.5, 0.71, 1, 1.41, 2, 4)):
        parts.append(f'<rect x="{230 + i * 44}" y="5" width="14" height="14" fill="{colour_of(ratio)}" stroke="#ccc"/>')
        parts.append(text(248 + i * 44, 16, f"{ratio:g}", 10))
    width, x, tallest = 880, 10, 0
    for title, ratios in panels:
        dimensions = len(next(iter(ratios)))
        cell = 10 if dimensions == 3 else 7
        inner = sorted({sizes[1] for sizes in ratios}) if dimensions == 3 else [None]
        rows = sorted({sizes[0] for sizes in ratios}) if dimensions > 1 else [1]
        columns = sorted({sizes[-1] for sizes in ratios})
        wide = len(inner) * (len(columns) * cell + 12) + 18
        if x > 10 and x + wide > width:
            x, y, tallest = 10, y + tallest, 0
        parts.append(text(x, y + 12, title, 11 if dimensions == 3 else 9, more='font-weight="bold"'))
        for facet, depth in enumerate(inner):
            at = x + 14 + facet * (len(columns) * cell + 12)
            cells = {((sizes[0] if dimensions > 1 else 1), sizes[-1]): ratio for sizes, ratio in ratios.items()
                     if depth is None or sizes[1] == depth}
            parts += grid(at, y + 30, cells, rows, columns, cell)
            parts.append(text(at, y + 26, f"{columns[0]} to {columns[-1]} columns" if depth is None else f"inner {depth}", 9))
        if dimensions > 1:
            middle = y + 30 + len(rows) * cell / 2
            parts.append(text(x + 9, middle, f"{rows[0]} to {rows[-1]} rows", 9, "middle",
                              more=f'transform="rotate(-90 {x + 9:.1f} {middle:.1f})"'))
        x, tallest = x + wide, max(tallest, len(rows) * cell + 44)
    return document(width, y + tallest, parts)
