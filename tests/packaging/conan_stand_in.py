"""Loads a recipe without Conan, with the classes and functions that the recipe of baseapi takes from it."""

import fnmatch
import pathlib
import runpy
import shutil
import sys
import types


class ConanFile:
    def __init__(self, recipe_folder):
        self.recipe_folder = str(recipe_folder)
        self.required, self.tools = [], []
        self.options = types.SimpleNamespace(**self.default_options)
        self.cpp_info = CppInfo()

    def requires(self, reference):
        self.required.append(reference)

    def tool_requires(self, reference):
        self.tools.append(reference)


class CppInfo:
    def __init__(self):
        self.components = Components()
        self.properties = {}

    def set_property(self, name, value):
        self.properties[name] = value


class Components(dict):
    def __missing__(self, name):
        self[name] = CppInfo()
        return self[name]


class CMakeToolchain:
    def __init__(self, recipe):
        recipe.toolchain = self
        self.cache_variables = {}

    def generate(self):
        pass


class Generator:
    def __init__(self, recipe):
        pass

    def generate(self):
        pass


def copy(recipe, pattern, src, dst):
    for path in pathlib.Path(src).rglob("*"):
        name = path.relative_to(src)
        if path.is_file() and fnmatch.fnmatch(str(name), pattern):
            (dst / name).parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(path, dst / name)


def load(recipe, path):
    return pathlib.Path(path).read_text(encoding="utf-8")


MODULES = {
    "conan": {"ConanFile": ConanFile},
    "conan.tools": {},
    "conan.tools.build": {"check_min_cppstd": None},
    "conan.tools.cmake": {"CMake": None, "CMakeDeps": Generator, "CMakeToolchain": CMakeToolchain, "cmake_layout": None},
    "conan.tools.files": {"copy": copy, "load": load},
    "conan.tools.gnu": {"PkgConfigDeps": Generator},
}


def recipe_in(folder):
    """The class of the recipe in the folder's conanfile.py."""
    for name, content in MODULES.items():
        sys.modules[name] = types.ModuleType(name)
        vars(sys.modules[name]).update(content)
    names = runpy.run_path(str(folder / "conanfile.py"))
    return next(it for it in names.values() if isinstance(it, type) and issubclass(it, ConanFile) and it is not ConanFile)
