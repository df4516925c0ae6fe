"""Holds the manual pages against the export list and the header, and lets mandoc and groff judge them.

usage: test_manual.py FOLDER-OF-PAGES
"""

import json
from pathlib import Path
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

import examples

ROOT = Path(__file__).resolve().parents[2]
PAGES = Path(sys.argv.pop()) if sys.argv[1:] else None
PROGRAMS = examples.programs(json.loads((PAGES.parent / "korm.json").read_text()))
HEADER = (ROOT / "include/korm.h").read_text()
STATUS_OF = {"null": "korStatusNullPointer", "count": "korStatusBadCount", "size": "korStatusBadSize", "stride": "korStatusBadStride",
             "offset": "korStatusBadOffset", "match": "korStatusSizeMismatch"}


def run(*command, **keywords):
    return subprocess.run(command, capture_output=True, text=True, check=False, **keywords)


def words(text):
    return re.sub(r"\W+", " ", text).strip()


class ManualPages(unittest.TestCase):
    names = re.findall(r"^\s+(korm\w+);", (ROOT / "src/entry/exports.map").read_text(), re.M)
    texts = {path.stem: path.read_text() for path in PAGES.glob("man3/*.3")}
    links = {name: Path(text.split()[1]).stem for name, text in texts.items() if text.startswith(".so ")}

    def test_every_function_has_a_page(self):
        self.assertEqual(len(self.names), 874)
        self.assertEqual(sorted(self.texts), sorted(self.names))

    def test_a_link_leads_to_a_page_that_names_the_function(self):
        for name, target in self.links.items():
            self.assertNotIn(target, self.links)
            self.assertRegex(self.texts[target], rf"(?m)^\.Nm {name}$")

    def test_prototypes_are_those_of_the_header(self):
        for name in self.names:
            text = self.texts[self.links.get(name, name)]
            arguments = re.search(rf"^\.Fo {name}\n(.*?)^\.Fc$", text, re.M | re.S)[1]
            declared = re.search(rf"\b{name}\(([^)]*)\);", HEADER)[1]
            self.assertEqual(words(re.sub(r"^\.Fa", "", arguments, flags=re.M)), words(declared), name)
            self.assertEqual(arguments.count("*"), declared.count("*"), name)

    def test_checks_are_those_of_the_header(self):
        for comment, name in re.findall(r"/\*\*((?:(?!\*/).)*)\*/\n\w+ (korm\w+)\(", HEADER, re.S):
            told = re.search(r"Checks: (.*?)\.", re.sub(r"\n \*", "", comment))
            found = re.findall(r"^\.It\n\\fB(korStatus\w+)\\fR:", self.texts[self.links.get(name, name)], re.M)
            if told:
                checks = re.sub(r", if[^,]*", "", told[1]).split(", ")
                self.assertEqual(found, [STATUS_OF[check.split()[0]] for check in checks], name)

    def test_examples_are_those_that_are_run(self):
        """test_examples.py runs the program of each function."""
        for name, text in self.texts.items():
            if name not in self.links:
                shown = re.search(r"^\.Sh EXAMPLES\n\.Bd -literal\n(.*?)\n\.Ed$", text, re.M | re.S)[1]
                for escape, character in ((r"\(aq", "'"), (r"\-", "-"), (r"\(ha", "^"), (r"\e", "\\")):
                    shown = shown.replace(escape, character)
                self.assertEqual(shown + "\n", PROGRAMS[name].text(), name)

    def test_no_mark_of_the_header_is_left(self):
        for name, text in self.texts.items():
            self.assertNotRegex(text, r"`|::|^\|", name)

    def test_every_reference_leads_to_a_page(self):
        for text in [*self.texts.values(), (PAGES / "man7/korm.7").read_text()]:
            for name in re.findall(r"^\.Xr (korm\w+) 3", text, re.M):
                self.assertIn(name, self.texts)

    @unittest.skipUnless(shutil.which("mandoc"), "mandoc isn't here")
    def test_mandoc_finds_nothing(self):
        # It looks for each page that is referred to among those installed, which takes seconds, so one reference is left.
        with tempfile.TemporaryDirectory() as folder:
            for name, text in self.texts.items():
                if name not in self.links:
                    (Path(folder) / f"{name}.3").write_text(re.sub(r"^\.Xr korm\w+ 3( ,)?\n", "", text, flags=re.M))
            found = run("mandoc", "-T", "lint", *sorted(map(str, Path(folder).iterdir())), PAGES / "man7/korm.7").stdout.splitlines()
        self.assertEqual([line for line in found if "STYLE: referenced manual not found: Xr korm" not in line], [])

    @unittest.skipUnless(shutil.which("groff"), "groff isn't here")
    def test_groff_warns_of_nothing(self):
        pages = sorted(path for path in PAGES.glob("man3/*.3") if path.stem not in self.links)
        self.assertEqual(run("groff", "-mandoc", "-Tutf8", "-Kutf8", "-ww", "-z", *pages, PAGES / "man7/korm.7").stderr, "")

    @unittest.skipUnless(shutil.which("man"), "man isn't here")
    def test_man_shows_them(self):
        for page in ("man7/korm.7", "man3/kormInvert_ma_32f.3", "man3/kormAdd_mam_64f_L.3"):
            shown = run("man", "--warnings", "-E", "UTF-8", "-l", "-Tutf8", "-Z", page, cwd=PAGES)
            self.assertEqual((shown.returncode, shown.stderr), (0, ""), page)


if __name__ == "__main__":
    unittest.main()
