"""formgen: from the tables of forms (src/*/forms.py) to header, export list, stubs and entry functions.

usage: formgen sources          names of the generated source files
       formgen generate FOLDER  write them there, and the manual pages below FOLDER/man
       formgen committed        rewrite include/korm.h and src/entry/exports.map, and the version in the changelog
       formgen check            fail where any of these differ from the tables
       formgen names            the exported names
"""

from datetime import date
import json
from pathlib import Path
import re
import sys

import description
import emit
from grammar import ROOT
import header
import manual
from tables import Tables


def generated(tables):
    """Name to text of everything that goes into the build folder."""
    texts = {name: emit.source(forms) for name, forms in emit.sources(tables.families).items()}
    for folder, cores in tables.cores.items():
        texts[f"{folder}/cores.h"] = emit.cores_header(folder, cores)
        texts[f"{folder}_cores.cpp"] = emit.cores_source(folder, cores)
    texts["stubs.S"] = emit.stubs(tables.exports)
    texts["korm.json"] = description.text(tables, version())
    return texts


def version():
    return re.search(r"project\(korm VERSION ([\d.]+)", (ROOT / "CMakeLists.txt").read_text())[1]


def manual_pages(description_text):
    """They bear the day of the version, which the changelog tells."""
    day = date.fromisoformat(re.search(r"^## [\d.]+ \(([\d-]+)\)", (ROOT / "CHANGELOG.md").read_text(), re.M)[1])
    pages = manual.pages(json.loads(description_text), f"{day:%B} {day.day}, {day.year}")
    return {f"man/{path}": text for path, text in pages.items()}


def committed(tables):
    """Path to text of the files in the tree that follow from the tables, as a whole or in a number."""
    changes = ROOT / "CHANGELOG.md"
    return {
        ROOT / "include/korm.h": header.text(tables.families, tables.queries, tables.groups),
        ROOT / "src/entry/exports.map": header.exports_map(tables.exports),
        changes: re.sub(r"^## [\d.]+", f"## {version()}", changes.read_text(), count=1, flags=re.M),
    }


def write(path, text):
    """Leave a file alone that holds the text already, so that nothing is rebuilt for it."""
    if not path.exists() or path.read_text() != text:
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text)


def main(verb="", argument=""):
    tables = Tables()
    if verb == "sources":
        print("\n".join(sorted(generated(tables))))
    elif verb == "generate" and argument:
        texts = generated(tables)
        for name, text in (texts | manual_pages(texts["korm.json"])).items():
            write(Path(argument) / name, text)
    elif verb == "committed":
        for path, text in committed(tables).items():
            write(path, text)
    elif verb == "check":
        stale = [path for path, text in committed(tables).items() if not path.exists() or path.read_text() != text]
        for path in stale:
            print(f"formgen: {path.relative_to(ROOT)} differs from the tables; run 'python3 tools/formgen committed'")
        return 1 if stale else 0
    elif verb == "names":
        print("\n".join(form.name for form in tables.exports))
    else:
        print(__doc__, end="", file=sys.stderr)
        return 2
    return 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:3]))
