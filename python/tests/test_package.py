"""The package as its users get it: types, installation, and arrays that several processes share out."""

import importlib.util
import os
from pathlib import Path
import shutil
import subprocess
import sys

import korm
import pytest

SOURCE, BUILD = (Path(os.environ.get(name, ".")) for name in ("KORM_SOURCE", "KORM_BUILD"))
has = importlib.util.find_spec


def run(*command, **environment):
    done = subprocess.run([str(word) for word in command], capture_output=True, text=True, env={**os.environ, **environment})
    assert done.returncode == 0, done.stdout + done.stderr
    return done.stdout


@pytest.mark.skipif(has("mypy") is None and shutil.which("mypy") is None, reason="mypy isn't installed")
def test_types(tmp_path):
    user = tmp_path / "user.py"
    user.write_text("import numpy as np\nimport korm\n\nx = korm.inv(np.eye(3))\nw, v = korm.eigh(x)\n"
                    "print(x.shape, w.sum(), korm.plan(korm.inv, x).functions[0].upper())\n")
    run(shutil.which("mypy") or "mypy", "--config-file", SOURCE / "pyproject.toml", "--cache-dir", tmp_path / "cache",
        SOURCE / "python/korm/__init__.py", SOURCE / "python/korm/_korm.pyi", user, MYPYPATH=str(SOURCE / "python"), PYTHONPATH="")


@pytest.mark.skipif(has("pip") is None, reason="pip isn't installed")
def test_pip_install(tmp_path):
    target = tmp_path / "site"
    run(sys.executable, "-m", "pip", "install", "--quiet", "--no-deps", "--no-index", "--target", target,
        "--config-settings", f"build-dir={BUILD}", SOURCE)
    names = {path.name for path in (target / "korm").iterdir()}
    assert {"__init__.py", "py.typed", "_korm.pyi", "libkorm.so.7", "libkorcore.so.7"} <= names
    program = ("import korm, numpy as np; maps = open('/proc/self/maps').read(); print(korm.__file__); print(korm.inv(np.eye(2))[0, 0]); "
               "print({line.split()[-1] for line in maps.splitlines() if 'libkor' in line})")
    told = run(sys.executable, "-c", program, PYTHONPATH=str(target))
    assert str(target) in told.splitlines()[0] and "1.0" in told and str(BUILD) not in told
    information = run(sys.executable, "-m", "pip", "show", "korm", PYTHONPATH=str(target))
    assert "Name: korm" in information and f"Version: {korm.__version__}" in information


@pytest.mark.skipif(has("distributed") is None, reason="Dask isn't installed (python3-dask, python3-distributed)")
def test_dask_example():
    told = run(sys.executable, "-B", SOURCE / "examples/dask_matrices.py", "--matrices", "20000")
    assert "equal to the bit" in told
