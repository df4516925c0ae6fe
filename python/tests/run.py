"""Runs the tests of the package, or says what is missing: run.py FILE... The exit code 77 means that tests were skipped."""

import importlib.util
import sys

needed = {"numpy": "python3-numpy", "scipy": "python3-scipy", "pytest": "python3-pytest", "hypothesis": "python3-hypothesis"}
missing = [package for module, package in needed.items() if importlib.util.find_spec(module) is None]
if missing:
    print(f"skipped: the tests for Python need {' '.join(missing)}")
    sys.exit(77)

import pytest  # noqa: E402

sys.exit(pytest.main(["-q", "-p", "no:cacheprovider", "--durations=3", *sys.argv[1:]]))
