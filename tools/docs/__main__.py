"""The site of the documentation.

usage: docs site FOLDER    makes it with Doxygen, in FOLDER/html; fails where Doxygen warns
       docs committed      rewrites what is made in docs/: the table of functions, the page of speed, drawings
       docs check          fails where one of these differs from what it is made of
       docs examples       lists the functions that no program of the guide and no example calls
"""

from pathlib import Path
import re
import shutil
import subprocess
import sys
import time

import functions
import pictures
import speed

ROOT = Path(__file__).resolve().parents[2]
THEME = Path("/usr/share/doxygen-awesome-css")
STYLES = [THEME / "doxygen-awesome.css", THEME / "doxygen-awesome-sidebar-only.css", ROOT / "docs/site/korm.css"]


def site(folder):
    start = time.monotonic()
    version = re.search(r"project\(korm VERSION ([\d.]+)", (ROOT / "CMakeLists.txt").read_text())[1]
    folder = Path(folder).resolve()
    shutil.rmtree(folder / "html", ignore_errors=True)
    folder.mkdir(parents=True, exist_ok=True)
    settings = f"""@INCLUDE = docs/Doxyfile
PROJECT_NUMBER = {version}
OUTPUT_DIRECTORY = "{folder}"
HTML_EXTRA_STYLESHEET = {" ".join(f'"{style}"' for style in STYLES)}
"""
    run = subprocess.run(["doxygen", "-"], cwd=ROOT, input=settings, capture_output=True, text=True, check=False)
    if run.returncode or run.stderr:
        lines = run.stderr.splitlines()
        print("\n".join(lines[:20]), file=sys.stderr)
        print(f"docs: doxygen warns, {len(lines)} lines", file=sys.stderr)
        return 1
    files = [file for file in (folder / "html").rglob("*") if file.is_file()]
    size = sum(file.stat().st_size for file in files)
    print(f"docs: {folder / 'html/index.html'}, {len(files)} files, {size / 1e6:.1f} MB, in {time.monotonic() - start:.0f} s")
    return 0


def committed():
    """Path to text of the files in docs/ that follow from other files."""
    plots = {ROOT / f"docs/pictures/speed-{plot.name}.svg": speed.drawing(plot) for plot in speed.PLOTS}
    return {ROOT / "docs/functions.md": functions.page(functions.described(ROOT / "tools/formgen")),
            ROOT / "docs/speed.md": speed.page(), **pictures.texts(), **plots}


def main(verb="", folder=""):
    if verb == "site" and folder:
        return site(folder)
    if verb == "committed":
        for path, text in committed().items():
            path.parent.mkdir(exist_ok=True)
            path.write_text(text)
        return 0
    if verb == "examples":
        names = [function["name"] for function in functions.described(ROOT / "tools/formgen")["functions"]]
        without = [name for name in names if name not in functions.called()]
        print("\n".join(without))
        print(f"docs: {len(names) - len(without)} functions have an example, {len(without)} have none", file=sys.stderr)
        return 0
    if verb == "check":
        stale = [path for path, text in committed().items() if not path.exists() or path.read_text() != text]
        for path in stale:
            print(f"docs: {path.relative_to(ROOT)} is out of date; run 'python3 tools/docs committed'")
        return 1 if stale else 0
    print(__doc__, end="", file=sys.stderr)
    return 2


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:3]))
