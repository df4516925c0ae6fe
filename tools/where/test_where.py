"""Tests of scripts/where: every function has a place, and a profile leads to where the work is."""

import contextlib
import importlib.util
import io
from pathlib import Path
import sys
import tempfile
import unittest

sys.path.insert(0, str(Path(__file__).resolve().parent))
sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "formgen"))

import call_path

spec = importlib.util.spec_from_file_location("where_main", Path(__file__).with_name("__main__.py"))
where = importlib.util.module_from_spec(spec)
spec.loader.exec_module(where)

PROFILE = """\
ob=/usr/bin/python3
fn=main
0x10 0 5
cob=/lib/libkorm.so
cfn=v8_kormX
calls=1 0x100
0x11 0 90
ob=/lib/libkorm.so
fn=v8_kormX
0x100 0 3
cfn=v8_ownkormX
calls=1 0x200
0x101 0 80
cob=/lib/libm.so
cfn=sqrtf
calls=1 0x900
0x102 0 7
0x103 0 2
fn=v8_ownkormX
0x200 0 30
0x201 0 50
"""


class Where(unittest.TestCase):
    def test_every_function_is_found(self):
        for form in where.Tables().exports:
            with contextlib.redirect_stdout(io.StringIO()) as shown:
                where.show(form)
            for line in shown.getvalue().splitlines():
                if line.startswith("  template"):
                    self.assertRegex(line, r"  src/\w+/\w+\.h:\d+$", form.name)

    def test_a_profile_holds_what_one_library_did(self):
        with tempfile.NamedTemporaryFile("w") as file:
            file.write(PROFILE)
            file.flush()
            profile = call_path.Profile(Path(file.name), "/lib/libkorm.so")
        self.assertEqual(dict(profile.own), {"v8_kormX": {"0x100": 3, "0x103": 2}, "v8_ownkormX": {"0x200": 30, "0x201": 50}})
        self.assertEqual(dict(profile.calls), {"v8_kormX": {("0x101", "v8_ownkormX"): 80}})

    def test_the_chain_goes_where_most_instructions_are(self):
        stacks = {"0x101": [("v8_kormX", "x.cpp:1")],
                  "0x200": [("v8_ownkormX", "x.cpp:7"), ("kernel", "k.h:10")],
                  "0x201": [("v8_ownkormX", "x.cpp:7"), ("kernel", "k.h:11"), ("loop", "k.h:3")]}
        profile = call_path.Profile.__new__(call_path.Profile)
        profile.own = {"v8_kormX": call_path.Counter({"0x101": 5}), "v8_ownkormX": call_path.Counter({"0x200": 30, "0x201": 50})}
        profile.calls = call_path.defaultdict(call_path.Counter, {"v8_kormX": call_path.Counter({("0x101", "v8_ownkormX"): 80})})
        original, call_path.places = call_path.places, lambda library, addresses: iter([stacks[address] for address in addresses])
        try:
            chain = list(call_path.chain(profile, "lib", "v8_kormX"))
        finally:
            call_path.places = original
        self.assertEqual(chain, [("v8_kormX", "x.cpp:1"), ("v8_ownkormX", "x.cpp:7"), ("kernel", "k.h:11"), ("loop", "k.h:3")])

    def test_names_are_cut_to_what_tells_them_apart(self):
        self.assertEqual(call_path.shortened("int korm::v8::linalg::luArray<4, float, korm::v8::GridView<float> >(int)"), "luArray<4>")
        self.assertEqual(call_path.shortened("korm::v8::(anonymous namespace)::runTeam(int)"), "runTeam")
        self.assertEqual(call_path.shortened("_ZN4korm12forRowGroupsIXtlNS_7RowSumsEEE"), "forRowGroups")
        self.assertEqual(call_path.shortened("eliminateColumn<0, 4, float>"), "eliminateColumn<0, 4>")


if __name__ == "__main__":
    unittest.main()
