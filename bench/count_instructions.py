#!/usr/bin/env python3
"""Holds the counts of call_cost against callgrind's: count_instructions.py CALL_COST [FORM...]

callgrind counts from the first instruction of the function to its return, so the caller's `call` comes on top.
"""

import json
import re
import subprocess
import sys
import tempfile
from pathlib import Path

FORMS = ("kormAdd_mm_32f", "kormSub_tt_64f", "kormAdd_mm_64f_P", "kormMul_mc_32f", "kormAdd_vv_32f",
         "kormSub_cv_64f", "kormMul_vc_32f_P", "kormCholeskyDecomp_m_64f", "kormNormalize_v3_32f", "kormInvert_m4_32f")


def counted_by_callgrind(program, form, folder):
    result = subprocess.run(
        ["valgrind", "--tool=callgrind", f"--toggle-collect={form}", f"--callgrind-out-file={folder}/out",
         program, "--call", form], capture_output=True, text=True, check=False)
    found = re.search(r"Collected : (\d+)", result.stderr)
    if result.returncode or not found:
        sys.exit(f"callgrind failed for {form}:\n{result.stderr}")
    return int(found.group(1)) + 1


def main():
    program, forms = sys.argv[1], sys.argv[2:] or FORMS
    differing = 0
    with tempfile.TemporaryDirectory() as folder:
        costs = Path(folder) / "costs.json"
        subprocess.run([program, "--json", costs], stdout=subprocess.DEVNULL, check=True)
        stepped = {cost["name"]: cost["toReturn"] for cost in json.loads(costs.read_text())}
        for form in forms:
            counted = counted_by_callgrind(program, form, folder)
            differing += counted != stepped[form]
            print(f"{form:24} {stepped[form]:4} stepped {counted:4} by callgrind"
                  + ("" if counted == stepped[form] else "  DIFFER"))
    return 1 if differing else 0


if __name__ == "__main__":
    sys.exit(main())
