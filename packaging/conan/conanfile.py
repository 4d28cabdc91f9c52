"""The recipe of baseapi for Conan 2, which builds the tree that it lies in: conan create packaging/conan"""

import os
import re

from conan import ConanFile
from conan.tools.build import check_min_cppstd
from conan.tools.cmake import CMake, CMakeDeps, CMakeToolchain, cmake_layout
from conan.tools.files import copy, load
from conan.tools.gnu import PkgConfigDeps


class BaseapiRecipe(ConanFile):
    name = "baseapi"
    description = "The client library of a personal cloud drive"
    license = "MIT"
    package_type = "library"
    settings = "os", "arch", "compiler", "build_type"
    options = {"shared": [True, False], "fPIC": [True, False], "programs": [True, False]}
    default_options = {"shared": False, "fPIC": True, "programs": False}
    implements = ["auto_shared_fpic"]

    @property
    def _tree(self):
        return os.path.join(self.recipe_folder, "..", "..")

    def set_version(self):
        lists = load(self, os.path.join(self._tree, "CMakeLists.txt"))
        self.version = re.search(r"project\(baseapi VERSION ([0-9.]+)", lists).group(1)

    def export_sources(self):
        for pattern in ("CMakeLists.txt", "LICENSE", "baseapi/*", "cli/*", "cmake/*", "docs/quillboxd.1", "hostkit/*", "quillboxd/*"):
            copy(self, pattern, self._tree, self.export_sources_folder)

    def requirements(self):
        self.requires("boost/[>=1.81 <2]")
        self.requires("exiv2/[>=0.27]")
        self.requires("icu/[>=72]")
        self.requires("libcurl/[>=7.88 <9]")
        self.requires("openssl/[>=3.0 <4]")
        self.requires("simdjson/[>=3.0 <4]")
        self.requires("sqlite3/[>=3 <4]")
        if self.options.programs:
            self.requires("cli11/[>=2.1 <3]")
            self.requires("libzip/[>=1.7 <2]")

    def build_requirements(self):
        if self.options.programs:
            self.tool_requires("pkgconf/[>=2 <3]")

    def validate(self):
        check_min_cppstd(self, 20)

    def layout(self):
        cmake_layout(self)

    def generate(self):
        toolchain = CMakeToolchain(self)
        toolchain.cache_variables["BASEAPI_BENCHMARKS"] = False
        toolchain.cache_variables["BASEAPI_BOTH_KINDS"] = False
        toolchain.cache_variables["BASEAPI_INSTALL"] = True
        toolchain.cache_variables["BASEAPI_PROGRAMS"] = bool(self.options.programs)
        toolchain.cache_variables["BASEAPI_TESTS"] = False
        toolchain.cache_variables["BASEAPI_WARNINGS_AS_ERRORS"] = False
        toolchain.generate()
        CMakeDeps(self).generate()
        PkgConfigDeps(self).generate()

    def build(self):
        cmake = CMake(self)
        cmake.configure()
        cmake.build()

    def package(self):
        copy(self, "LICENSE", self.source_folder, os.path.join(self.package_folder, "licenses"))
        CMake(self).install()

    def package_info(self):
        # For CMake the installed package speaks for itself; the rest is for other build systems.
        self.cpp_info.set_property("cmake_find_mode", "none")
        self.cpp_info.builddirs = [os.path.join("lib", "cmake", "baseapi")]
        components = self.cpp_info.components
        components["baseapi"].libs = ["baseapi"]
        components["baseapi"].requires = [
            "boost::url", "icu::icu-uc", "libcurl::libcurl", "openssl::crypto", "simdjson::simdjson", "sqlite3::sqlite3"]
        components["baseapi"].system_libs = ["pthread"]
        components["hostkit"].libs = ["hostkit"]
        components["hostkit"].requires = ["baseapi", "openssl::crypto", "simdjson::simdjson"]
        components["hostkit_photos"].libs = ["hostkit_photos"]
        components["hostkit_photos"].requires = ["baseapi", "exiv2::exiv2lib"]
