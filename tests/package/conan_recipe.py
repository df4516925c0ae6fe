"""Runs the Conan recipe with stand-ins for what it imports: conan_recipe.py SOURCE BUILD FOLDER LIBDIR

What it configures with must be options that CMake knows; what it installs comes from BUILD, which saves compiling.
"""

from pathlib import Path
import runpy
import shutil
import subprocess
import sys
from types import ModuleType, SimpleNamespace

source, build, folder, libdir = (Path(word) for word in sys.argv[1:])
steps = []


class Toolchain:
    def __init__(self, recipe):
        self.cache_variables = recipe.variables

    def generate(self):
        steps.append("generate")


class CMake:
    def __init__(self, recipe):
        self.recipe = recipe

    def configure(self):
        options = [f"-D{name}={value}" for name, value in self.recipe.variables.items()]
        assert "-DKORM_DEVELOPER=False" in options, options
        sources = self.recipe.export_sources_folder  # what it exports has to be enough
        done = subprocess.run(["cmake", "-S", sources, "-B", folder / "build", "-DCMAKE_BUILD_TYPE=Release", *options],
                              capture_output=True, text=True, check=False)
        assert done.returncode == 0 and "Manually-specified" not in done.stdout + done.stderr, done.stdout + done.stderr
        steps.append("configure")

    def build(self):
        names = subprocess.run(["cmake", "--build", folder / "build", "--target", "help"], capture_output=True, text=True, check=True)
        assert "korm" in names.stdout
        steps.append("build")

    def install(self):
        subprocess.run(["cmake", "--install", build, "--prefix", self.recipe.package_folder], capture_output=True, check=True)
        steps.append("install")


def copy(recipe, pattern, src, dst):
    found = [path for path in Path(src).glob(pattern) if path.is_file() or pattern.endswith("/*")]
    assert found, f"{pattern}: there is no such file"
    for path in found:
        to = Path(dst) / path.relative_to(src)
        to.parent.mkdir(parents=True, exist_ok=True)
        if path.is_dir():
            shutil.copytree(path, to, dirs_exist_ok=True)
        else:
            shutil.copy(path, to)


def module(name, **contents):
    sys.modules[name] = ModuleType(name)
    vars(sys.modules[name]).update(contents)


module("conan", ConanFile=type("ConanFile", (), {}))
module("conan.errors", ConanInvalidConfiguration=ValueError)
module("conan.tools")
module("conan.tools.build", check_min_cppstd=lambda recipe, standard: steps.append(f"C++{standard}"))
module("conan.tools.cmake", CMake=CMake, CMakeToolchain=Toolchain, cmake_layout=lambda recipe: steps.append("layout"))
module("conan.tools.files", copy=copy, load=lambda recipe, path: Path(path).read_text())

path = source / "packaging/conan/conanfile.py"
recipe = runpy.run_path(str(path))["KormConan"]()
recipe.recipe_folder, recipe.variables, recipe.settings = str(path.parent), {}, SimpleNamespace(os="Linux", arch="x86_64")
recipe.export_sources_folder, recipe.package_folder = str(folder / "source"), str(folder / "package")
recipe.source_folder = recipe.export_sources_folder
recipe.cpp_info = SimpleNamespace(properties={}, builddirs=[], libs=[])
recipe.cpp_info.set_property = recipe.cpp_info.properties.__setitem__
for step in ("set_version", "export_sources", "validate", "layout", "generate", "build", "package", "package_info"):
    getattr(recipe, step)()

assert steps == ["C++20", "layout", "generate", "configure", "build", "install"], steps
assert f"VERSION {recipe.version} " in (source / "CMakeLists.txt").read_text(), recipe.version
package = Path(recipe.package_folder)
assert (package / "licenses/LICENCE.md").exists()
for name in recipe.cpp_info.libs:
    assert (package / libdir / f"lib{name}.so").exists(), name
assert (package / libdir / "cmake/korm/kormConfig.cmake").exists() and recipe.cpp_info.builddirs == ["lib/cmake/korm"]
recipe.settings.os = "Windows"
try:
    recipe.validate()
except ValueError:
    print("Conan recipe: version", recipe.version)
else:
    sys.exit("FAILED: it would be built for Windows")
