#!/usr/bin/env python3
"""Doxygen's input filter: filter.py FILE prints a page or the header as Doxygen wants it.

Pages are written for whoever reads them as plain text or on a web host. For Doxygen headings get anchors, links between
pages become references, and the name of a function leads to its description.
"""

import re
import sys
from collections import Counter
from functools import cache
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
HOME = ROOT / "docs/guide.md"
FENCES = re.compile(r"(^```.*?^```\n?)", re.MULTILINE | re.DOTALL)


def slug(title):
    """The anchor of a heading, as web hosts make it."""
    return re.sub(r"[^\w\- ]", "", title.lower()).replace(" ", "-")


@cache
def pages():
    """The pages of the site; all others in the tree are for those who look at the sources."""
    return {page.resolve() for page in (*ROOT.glob("docs/**/*.md"), ROOT / "CHANGELOG.md")}


@cache
def exported():
    return set(re.findall(r"^(?:\w+ )+\*?(korm\w+)\(", (ROOT / "include/korm.h").read_text(), flags=re.MULTILINE))


def page_id(page):
    return "mainpage" if page == HOME else "_".join(page.relative_to(ROOT).with_suffix("").parts).lower()


def anchor_id(page, anchor):
    return f"{page_id(page)}_{anchor.replace('-', '_')}"


def link(page, match):
    words, target = match.groups()
    if re.match(r"[a-z]+:", target):
        return match[0]
    file, _, anchor = target.partition("#")
    to = (page.parent / file).resolve() if file else page
    if to == ROOT / "README.md":
        to = HOME
    if to not in pages():
        return words if words.startswith("`") else f"{words} (`{to.relative_to(ROOT)}`)"
    if anchor:
        return f"[{words}](@ref {anchor_id(to, anchor)})"
    # In the site's tree pages stand below the first one, or below the page that is named as their folder.
    is_below = page == HOME or to.parent == page.with_suffix("")
    return f'@subpage {page_id(to)} "{words}"' if is_below else f"[{words}](@ref {page_id(to)})"


def prose(page, text, slugs):
    """Text between blocks of code. Of headings with the same slug the later ones get a number, as web hosts have it."""
    def heading(match):
        level, title = match.groups()
        if level == "#":
            return f"# {title} {{#{page_id(page)}}}"
        anchor = slug(title)
        slugs[anchor] += 1
        number = f"-{slugs[anchor] - 1}" if slugs[anchor] > 1 else ""
        return f"{level} {title} {{#{anchor_id(page, anchor + number)}}}"

    text = re.sub(r"^(#+) (.+)$", heading, text, flags=re.MULTILINE)
    text = re.sub(r"(?<!!)\[([^\]\n]+)\]\(([^)\s]+)\)", lambda match: link(page, match), text)
    return re.sub(r"`(korm\w+)`", lambda match: f'@ref {match[1]} "{match[1]}"' if match[1] in exported() else match[0], text)


def header(text):
    """korm.h: its first page gives way to the guide's, each group leads to the page that explains it, each function has its example."""
    import functions  # here, since pages need nothing of it
    description = functions.described(ROOT / "tools/formgen")
    import examples
    programs = examples.programs(description)
    guides = functions.guides(description)
    text = re.sub(r"^( \* @defgroup (\w+) .*\n)",
                  lambda group: f"{group[1]} * @ref {page_id(ROOT / 'docs' / guides[group[2]])} explains when to use what.\n *\n",
                  text, flags=re.MULTILINE)

    def example(match):
        code = "".join(f" * {line}\n" for line in programs[match[2]].text().rstrip().split("\n"))
        return f" *\n * @code{{.c}}\n{code} * @endcode\n{match[1]}"

    text = re.sub(r"^( \*/\n(?:\w+ )+\*?(korm\w+)\()", example, text, flags=re.MULTILINE)
    return text.replace("@mainpage korm", "@page conventions Conventions of all functions")


def filtered(path):
    text = path.read_text()
    if path.suffix != ".md":
        return header(text)
    slugs = Counter()
    return "".join(part if part.startswith("```") else prose(path, part, slugs) for part in FENCES.split(text))


if __name__ == "__main__":
    sys.stdout.write(filtered(Path(sys.argv[1]).resolve()))
