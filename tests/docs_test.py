#!/usr/bin/env python3
"""Holds the documents against the tree: docs_test.py ROOT

Links lead to files that exist and to headings of theirs; commands that are shown call scripts, programs and presets that
there are; each command line of the README and the guide is of a kind that something runs. (package.guides runs the programs.)
The header warns of the safe ranges wherever docs/ranges.md has one.
"""

import json
import re
import subprocess
import sys
from pathlib import Path


# Lines of their own, and who runs such ones.
RUN_BY = {
    r"g?cc .*": "package.guides, as they stand",
    r"scripts/(demo|test)( .*)?": ".ci/run",
    r"scripts/bench .*": ".ci/run, the sweeps of products; the others for the pages of benchmarks",
    r"python3 tools/docs \w+": "docs.committed",
    r"scripts/(docs|package|install|fuzz|soak|sanitize|reproducible|abi)\b.*": "tests and .ci/run, or a long run by hand",
    r"sudo apt-get (install|purge) .*": "scripts/test, the same packages; the packages themselves by scripts/package",
    r"(sudo )?cmake --(preset|build|install) .*": "package.subproject and package.install",
    r"pip install \.": "python.package",
    r"import korm.*": "python.package",
    r"PYTHONPATH=\S+ bench/python/compare.py": "for the table of docs/python.md",
    r"for seed in .*korm_eigen_robustness .*": "eigen_robustness, fewer matrices",
}


def headings(page):
    """The anchors of a page, made of its headings as web hosts make them."""
    text = re.sub(r"```.*?```", "", page.read_text(), flags=re.DOTALL)
    titles = re.findall(r"^#+ (.+)$", text, flags=re.MULTILINE)
    return {re.sub(r"[^\w\- ]", "", title.lower()).replace(" ", "-") for title in titles}


def broken_links(page):
    text = re.sub(r"```.*?```|`[^`\n]*`", "", page.read_text(), flags=re.DOTALL)
    for target in re.findall(r"\]\(([^)\s]+)\)", text):
        if re.match(r"[a-z]+:", target):
            continue
        file, _, anchor = target.partition("#")
        to = (page.parent / file).resolve() if file else page
        if not to.exists():
            yield f"a link to {target}, which isn't there"
        elif anchor and anchor not in headings(to):
            yield f"a link to {target}: {to.name} has no such heading"


def commands(page):
    """Code that stands in a line of its own or between backticks."""
    text = page.read_text()
    yield from re.findall(r"^    +(\S.*)$", text, flags=re.MULTILINE)
    yield from re.findall(r"`([^`\n]+)`", text)
    for block in re.findall(r"```(?:sh|bash)?\n(.*?)```", text, flags=re.DOTALL):
        yield from block.splitlines()


def broken_commands(root, page, programs, presets):
    for command in commands(page):
        for script in re.findall(r"(?<![\w/.])((?:scripts|\.ci|bench|tools|tests)/[\w./-]*\w)", command):
            if not list(root.glob(script + "*")):  # some are stems, with several endings
                yield f"`{command}`: there is no {script}"
        for program in re.findall(r"\bbin/(\w+)", command):
            if not any(re.fullmatch(name, program) for name in programs):
                yield f"`{command}`: no program {program} is built"
        for preset in re.findall(r"--preset[ =]([\w-]+)", command):
            if preset not in presets:
                yield f"`{command}`: there is no preset {preset}"


def unknown_commands(page):
    """Indented lines that look like commands and are of no kind that something runs."""
    text = re.sub(r"```.*?```", "", page.read_text(), flags=re.DOTALL)
    for line in re.findall(r"^    (?! )((?:\w+=\S+ )*(?:sudo |for )?[\w./-]+(?: .*)?)$", text, flags=re.MULTILINE):
        command = re.sub(r"\s+# .*", "", line)
        looks_like_one = re.match(r"(\w+=\S+ |sudo |for )|(scripts|tests|bench|tools|build|\.ci)/|(g?cc|cmake|pip|python3|git|make|apt) ", line)
        if looks_like_one and not any(re.fullmatch(kind, command) for kind in RUN_BY):
            yield f"`{line}`: nothing is known to run it"


def without_warning(root):
    """Functions with a row in the table of safe ranges whose part of the header doesn't lead there."""
    groups = (root / "include/korm.h").read_text().split("@defgroup ")
    names = re.findall(r"`(korm\w+)`", "".join(re.findall(r"^\| (`korm[^|]*)\|(?: +\S+ to| +\|)", (root / "docs/ranges.md").read_text(), re.M)))
    if len(names) < 30:
        yield f"docs/ranges.md: only {len(names)} functions are found in its table"
    for name in names:
        group = next((text for text in groups if re.search(rf"\b{name}\w*\(", text)), "")
        if "docs/ranges.md" not in group:
            yield f"include/korm.h: {name} has a row in docs/ranges.md, and its group doesn't say so"


def main():
    root = Path(sys.argv[1]).resolve()
    tracked = subprocess.run(["git", "-C", root, "ls-files"], capture_output=True, text=True, check=False).stdout.split()
    files = [root / name for name in tracked if (root / name).is_file()]
    if not files:  # no checkout of git: the sources as they were unpacked
        files = [file for file in root.rglob("*") if file.is_file() and "build" not in file.relative_to(root).parts]
    lists = "".join(file.read_text() for file in files if file.name == "CMakeLists.txt" or file.suffix == ".cmake")
    names = re.findall(r"(?:add_executable|kormProgram|kormTests)\(\s*([\w${}]+)", lists)
    programs = {re.sub(r"\$\{\w+\}", r"\\w+", name) for name in names if not name.startswith("$")}
    presets = {preset["name"] for preset in json.loads((root / "CMakePresets.json").read_text())["configurePresets"]}
    pages = sorted(file for file in files if file.suffix == ".md")
    mistakes = [f"{page.relative_to(root)}: {mistake}" for page in pages
                for mistake in (*broken_links(page), *broken_commands(root, page, programs, presets))]
    guide = [page for page in pages if page.parent == root / "docs" or page == root / "README.md"]
    mistakes += [f"{page.relative_to(root)}: {mistake}" for page in guide for mistake in unknown_commands(page)]
    mistakes += without_warning(root)
    print("\n".join(mistakes) or f"{len(pages)} pages agree with the tree")
    return 1 if mistakes or not pages else 0


if __name__ == "__main__":
    sys.exit(main())
