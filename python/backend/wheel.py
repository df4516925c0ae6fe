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
TAG = f"cp{sys.version_info.major}{sys.version_info.minor}"


def metadata():
    return "".join([
        "Metadata-Version: 2.1\n", f"Name: {PROJECT['name']}\n", f"Version: {VERSION}\n", f"Summary: {PROJECT['description']}\n",
        f"Requires-Python: {PROJECT['requires-python']}\n", *(f"Requires-Dist: {name}\n" for name in PROJECT["dependencies"]),
    ])


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
    platform = sysconfig.get_platform().replace("-", "_").replace(".", "_")
    name = f"korm-{VERSION}-{TAG}-{TAG}-{platform}.whl"
    info = f"korm-{VERSION}.dist-info"
    with tempfile.TemporaryDirectory() as folder:
        build = Path((config_settings or {}).get("build-dir", Path(folder) / "build"))
        contents = {file: path.read_bytes() for file, path in installed(build, Path(folder) / "prefix").items()}
    contents[f"{info}/METADATA"] = metadata().encode()
    contents[f"{info}/WHEEL"] = f"Wheel-Version: 1.0\nGenerator: korm\nRoot-Is-Purelib: false\nTag: {TAG}-{TAG}-{platform}\n".encode()
    record = ""
    with zipfile.ZipFile(Path(wheel_directory) / name, "w", zipfile.ZIP_DEFLATED) as wheel:
        for file, data in contents.items():
            digest = base64.urlsafe_b64encode(hashlib.sha256(data).digest()).rstrip(b"=").decode()
            record += f"{file},sha256={digest},{len(data)}\n"
            wheel.writestr(file, data)
        wheel.writestr(f"{info}/RECORD", f"{record}{info}/RECORD,,\n")
    return name


def build_sdist(sdist_directory, config_settings=None):
    name = f"korm-{VERSION}"
    run("git", "-C", ROOT, "archive", f"--prefix={name}/", "-o", Path(sdist_directory) / f"{name}.tar.gz", "HEAD")
    return f"{name}.tar.gz"
