#!/usr/bin/env python3
"""Holds the page "Which function do I need?" of the site against the header: functions_test.py HEADER HTML

Every exported function has a link there, and the link leads to where the function is described.
"""

from pathlib import Path
import re
import sys

FUNCTIONS = 874


def main():
    header, site = map(Path, sys.argv[1:3])
    wanted = set(re.findall(r"^[\w *]*?\b(korm\w+)\(", header.read_text(), flags=re.MULTILINE))
    links = dict((name, (file, anchor)) for file, anchor, name in re.findall(
        r'<a class="el" href="([\w.-]+)#(\w+)"[^>]*>(korm\w+)</a>', (site / "docs_functions.html").read_text()))
    described = {}
    for page in site.glob("group__*.html"):
        for anchor in re.findall(r'<a id="(\w+)"', page.read_text()):
            described[page.name, anchor] = True
    mistakes = [f"{name} isn't on the page" for name in sorted(wanted - set(links))]
    mistakes += [f"{name} is on the page, and no function" for name in sorted(set(links) - wanted)]
    mistakes += [f"the link of {name} leads nowhere" for name, target in links.items() if target not in described]
    if len(wanted) != FUNCTIONS:
        mistakes.append(f"the header has {len(wanted)} functions, not {FUNCTIONS}")
    print("\n".join(mistakes[:20]) or f"{len(links)} functions are within reach")
    return 1 if mistakes else 0


if __name__ == "__main__":
    sys.exit(main())
