"""What the demo has computed, how fast, and where the pictures lie, on one screen.

usage: summary.py FOLDER    FOLDER has for each picture NAME.png what the program said that drew it, NAME.txt
"""

from pathlib import Path
import re
import sys


def drawn(text):
    """Of render_mesh: what korm did of the work."""
    vertices, triangles = re.search(r"(\d+) vertices, (\d+) triangles$", text, re.M).groups()
    korm, all_of_it, each = re.search(r"korm took ([\d.]+) of ([\d.]+) ms .*?, ([\d.]+) ns a vertex", text).groups()
    yield f"{vertices} vertices centred, projected and lit, {triangles} triangles drawn"
    yield f"korm {float(each):.0f} ns a vertex, {float(korm):.1f} of {float(all_of_it):.0f} ms; reading and drawing are the rest"


def solved(text):
    """Of mesh_shape: one problem a vertex, and Eigen's times for the same."""
    problem = "least squares by QR" if "quadrics fitted" in text else "eigenvectors of a 3 by 3 matrix"
    times = re.findall(r"^  (korm|Eigen): (.*?) +([\d.]+) ms, +([\d.]+) ns a vertex$", text, re.M)
    korm = next(float(each) for who, _, _, each in times if who == "korm")
    yield f"{re.search(r'([0-9]+) places', text)[1]} problems of one vertex each: {problem}"
    peers = [f"Eigen's {what.partition(',')[0]} {float(each):.0f}" for who, what, _, each in times if who == "Eigen"]
    yield f"korm {korm:.0f} ns a problem, {', '.join(peers)}"


def main(folder):
    print("\nWhat was computed, and how fast:")
    for log in sorted(Path(folder).glob("*.txt")):
        text, picture = log.read_text(), log.with_suffix(".png")
        if not picture.exists():
            sys.exit(f"summary: there is no {picture}")
        print(f"  {picture}")
        for line in drawn(text) if "korm took" in text else solved(text):
            print(f"      {line}")
    print("korm beside more peers, where it is ahead and where it isn't: docs/benchmarks.md")


if __name__ == "__main__":
    main(*sys.argv[1:]) if len(sys.argv) == 2 else sys.exit(__doc__)
