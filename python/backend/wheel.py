"""Builds the wheel that pip installs: CMake does the work, this puts the files that it installs into a zip.

The library is a CMake project, and Debian has no build backend for those; backends for setuptools or Meson would have to call
CMake as well. A wheel is a zip file with three files of metadata, so the standard library does.

config settings: build-dir=FOLDER takes a folder that has been configured, and rebuilds what has changed there.
"""

import base64
import hashlib
import os
from pathlib import Path
import re
import subprocess
import sys
import sysconfig
import tempfile
import zipfile

try:
    import tomllib
except ImportError:
    sys.exit("korm needs Python 3.11 or later")

ROOT = Path(__file__).resolve().parents[2]
PROJECT = tomllib.loads((ROOT / "pyproject.toml").read_text())["project"]
VERSION = re.search(r"project\(korm VERSION ([\d.]+)", (ROOT / "CMakeLists.txt").read_text())[1]
PYTHON = f"cp{sys.version_info.major}{sys.version_info.minor}"
TAG = f"{PYTHON}-{PYTHON}-{sysconfig.get_platform().replace('-', '_').replace('.', '_')}"
INFO = f"korm-{VERSION}.dist-info"


def metadata():
    """Name to text of the files that tell what is installed."""
    about = [("Metadata-Version", "2.1"), ("Name", PROJECT["name"]), ("Version", VERSION), ("Summary", PROJECT["description"]),
             ("Requires-Python", PROJECT["requires-python"]), *(("Requires-Dist", name) for name in PROJECT["dependencies"])]
    wheel = [("Wheel-Version", "1.0"), ("Generator", "korm"), ("Root-Is-Purelib", "false"), ("Tag", TAG)]
    return {name: "".join(f"{key}: {text}\n" for key, text in rows) for name, rows in (("METADATA", about), ("WHEEL", wheel))}


def prepare_metadata_for_build_wheel(metadata_directory, config_settings=None):
    """Called by CMake as well, for packages of a distribution."""
    (Path(metadata_directory) / INFO).mkdir(parents=True, exist_ok=True)
    for name, text in metadata().items():
        (Path(metadata_directory) / INFO / name).write_text(text)
    return INFO


def run(*command):
    subprocess.run([str(word) for word in command], check=True)


def installed(build, prefix):
    """Name in the package to file. Libraries are there under the names that programs are linked with alone."""
    if not (build / "CMakeCache.txt").exists():
        run("cmake", "-S", ROOT, "-B", build, "-Wno-dev", "-DKORM_DEVELOPER=OFF", "-DKORM_PYTHON=ON", "-DCMAKE_BUILD_TYPE=Release",
            f"-DKORM_PYTHON_EXECUTABLE={sys.executable}")
    run("cmake", "--build", build, "--target", "korm_python", "--parallel", os.cpu_count() or 1)
    run("cmake", "--install", build, "--prefix", prefix, "--component", "python")
    files = {path.relative_to(prefix).as_posix(): path.resolve() for path in sorted(prefix.rglob("*")) if path.is_file()}
    linked = {path for name, path in files.items() if (prefix / name).is_symlink()}
    return {name: path for name, path in files.items() if (prefix / name).is_symlink() or path not in linked}


def build_wheel(wheel_directory, config_settings=None, metadata_directory=None):
    name = f"korm-{VERSION}-{TAG}.whl"
    with tempfile.TemporaryDirectory() as folder:
        build = Path((config_settings or {}).get("build-dir", Path(folder) / "build"))
        contents = {file: path.read_bytes() for file, path in installed(build, Path(folder) / "prefix").items()}
    contents.update({f"{INFO}/{file}": text.encode() for file, text in metadata().items()})
    record = ""
    with zipfile.ZipFile(Path(wheel_directory) / name, "w", zipfile.ZIP_DEFLATED) as wheel:
        for file, data in contents.items():
            digest = base64.urlsafe_b64encode(hashlib.sha256(data).digest()).rstrip(b"=").decode()
            record += f"{file},sha256={digest},{len(data)}\n"
            wheel.writestr(file, data)
        wheel.writestr(f"{INFO}/RECORD", f"{record}{INFO}/RECORD,,\n")
    return name


def build_sdist(sdist_directory, config_settings=None):
    name = f"korm-{VERSION}"
    run("git", "-C", ROOT, "archive", f"--prefix={name}/", "-o", Path(sdist_directory) / f"{name}.tar.gz", "HEAD")
    return f"{name}.tar.gz"
