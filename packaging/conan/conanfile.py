"""Conan recipe of korm, made from the tree that it stands in: conan create packaging/conan

LLVM's OpenMP runtime comes from the system (Debian: libomp-dev).
"""

import os
import re

from conan import ConanFile
from conan.errors import ConanInvalidConfiguration
from conan.tools.build import check_min_cppstd
from conan.tools.cmake import CMake, CMakeToolchain, cmake_layout
from conan.tools.files import copy, load


class KormConan(ConanFile):
    name = "korm"
    description = "Numeric primitives for small dense matrices and vectors"
    license = "none chosen yet"  # LICENCE.md
    topics = ("linear-algebra", "matrix", "simd")
    package_type = "shared-library"
    settings = "os", "arch", "compiler", "build_type"

    @property
    def _root(self):
        return os.path.normpath(os.path.join(self.recipe_folder, "..", ".."))

    def set_version(self):
        lists = load(self, os.path.join(self._root, "CMakeLists.txt"))
        self.version = re.search(r"project\(korm VERSION ([\d.]+)", lists)[1]

    def export_sources(self):
        for pattern in ("CMakeLists.txt", "LICENCE.md", "CHANGELOG.md", "cmake/*", "core/*", "include/*", "python/CMakeLists.txt",
                        "scripts/*", "src/*", "tools/formgen/*"):
            copy(self, pattern, src=self._root, dst=self.export_sources_folder)

    def validate(self):
        if self.settings.os != "Linux" or self.settings.arch not in ("x86_64", "x86"):
            raise ConanInvalidConfiguration("korm is for Linux on x86_64 or x86")
        check_min_cppstd(self, 20)

    def layout(self):
        cmake_layout(self)

    def generate(self):
        toolchain = CMakeToolchain(self)
        toolchain.cache_variables["KORM_DEVELOPER"] = False
        toolchain.cache_variables["KORM_PYTHON"] = False
        toolchain.cache_variables["KORM_TARGET"] = "ia32" if self.settings.arch == "x86" else "x86_64"
        toolchain.generate()

    def build(self):
        cmake = CMake(self)
        cmake.configure()
        cmake.build()

    def package(self):
        copy(self, "LICENCE.md", src=self.source_folder, dst=os.path.join(self.package_folder, "licenses"))
        CMake(self).install()

    def package_info(self):
        # The package has its own files for CMake.
        self.cpp_info.set_property("cmake_find_mode", "none")
        self.cpp_info.builddirs.append(os.path.join("lib", "cmake", "korm"))
        self.cpp_info.libs = ["korm", "korcore"]
