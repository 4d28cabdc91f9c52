"""What is in packaging/ is true to the build: its version, its outside libraries, its options, and the files that it takes along.

packaging_test.py SOURCE_FOLDER
"""

import json
import pathlib
import re
import subprocess
import sys
import tempfile

import conan_stand_in

HERE = pathlib.Path(__file__).resolve().parent
# Each outside library of cmake/dependencies.cmake: the ports, the recipe and the Debian packages that it comes from. The ports of Boost,
# one for each of its libraries, are looked up in the includes.
NAMES = {
    "Boost": (set(), "boost", {"libboost1.81-dev", "libboost-url1.81-dev"}),
    "CLI11": ({"cli11"}, "cli11", {"libcli11-dev"}),
    "CURL": ({"curl"}, "libcurl", {"libcurl4-openssl-dev"}),
    "ICU": ({"icu"}, "icu", {"libicu-dev"}),
    "OpenSSL": ({"openssl"}, "openssl", {"libssl-dev"}),
    "SQLite3": ({"sqlite3"}, "sqlite3", {"libsqlite3-dev"}),
    "exiv2": ({"exiv2"}, "exiv2", {"libexiv2-dev"}),
    "libzip": ({"libzip"}, "libzip", {"libzip-dev"}),
    "simdjson": ({"simdjson"}, "simdjson", {"libsimdjson-dev"}),
}
FOR_BUILDING = {"Threads", "PkgConfig"}
PROGRAMS = {"quillbox", "quillboxd"}
HELPERS_OF_VCPKG = {"vcpkg-cmake", "vcpkg-cmake-config"}


def expect_equal(found, expected, what):
    assert found == expected, f"{what}: {found}, and by the build {expected}"


def run(*command):
    done = subprocess.run([str(word) for word in command], check=False, text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    assert done.returncode == 0, f"{command}\n{done.stdout}"
    return done.stdout


class Build:
    """What the files of the build say."""

    def __init__(self, root):
        self.root = root
        self.version = re.search(r"project\(baseapi VERSION ([0-9.]+)", self.text("CMakeLists.txt")).group(1)
        dependencies = self.text("cmake/dependencies.cmake")
        always, _, rest = dependencies.partition("if(BASEAPI_PROGRAMS)")
        self.libraries = self.found(always)
        self.libraries_of_programs = self.found(rest.partition("endif()")[0])
        self.installed = set(re.findall(r"^baseapi_install_library\((\w+) ", self.text("cmake/install.cmake"), re.MULTILINE))

    def text(self, name):
        return (self.root / name).read_text(encoding="utf-8")

    @staticmethod
    def found(text):
        """The least version, or none, of each library that is looked for."""
        pattern = r"find_package\((\w+)(?: ([0-9.]+))?|IMPORTED_TARGET (\w+)>=([0-9.]+)"
        rows = re.findall(pattern, text)
        return {name or module: version or of_module for name, version, module, of_module in rows if name not in FOR_BUILDING}

    def of_boost(self, *folders):
        """The libraries of Boost that the sources in the folders include."""
        sources = [path for folder in folders for path in (self.root / folder).rglob("*") if path.suffix in (".h", ".cpp")]
        return set(re.findall(r"#include <boost/(\w+)[/.]", "\n".join(path.read_text(encoding="utf-8") for path in sources)))


def configure(source, folder, options):
    """Configures with options that all mean something; gives the names of what would be built."""
    output = run("cmake", "-G", "Ninja", "-S", source, "-B", folder, *options)
    assert "not used by the project" not in output, f"an option that the build does not have:\n{output}"
    return set(re.findall(r"^(\w+): phony", run("cmake", "--build", folder, "--target", "help"), re.MULTILINE))


def names_of(dependencies):
    return {it if isinstance(it, str) else it["name"] for it in dependencies}


def ports_of(libraries, boost):
    return set().union(*(NAMES[name][0] for name in libraries)) | {f"boost-{name}" for name in boost}


def check_port(build, folder):
    port = build.root / "packaging/vcpkg/baseapi"
    manifest = json.loads((port / "vcpkg.json").read_text(encoding="utf-8"))
    expect_equal(manifest["version"], build.version, "the version of the port")
    boost = build.of_boost("baseapi", "hostkit")
    expect_equal(names_of(manifest["dependencies"]) - HELPERS_OF_VCPKG, ports_of(build.libraries, boost), "the ports for the library")
    more_boost = build.of_boost("cli", "quillboxd") - boost
    expect_equal(names_of(manifest["features"]["programs"]["dependencies"]), ports_of(build.libraries_of_programs, more_boost),
                 "the ports for the programs")
    for features in ("", "programs"):
        check_portfile(build, port, features, folder / f"port with {features or 'nothing'}")
    for target in re.findall(r"baseapi::(\w+)", (port / "usage").read_text(encoding="utf-8")):
        assert target in build.installed, f"the usage of the port names {target}"


def check_portfile(build, port, features, folder):
    said = {}
    for line in run("cmake", f"-DPORTFILE={port / 'portfile.cmake'}", f"-DFEATURES={features}", f"-DCURRENT_PACKAGES_DIR={folder}",
                    "-P", HERE / "vcpkg_stand_in.cmake").splitlines():
        what, _, value = line.partition(" ")
        said.setdefault(what, []).append(value)
    expect_equal(said["source"], [str(build.root)], "the source of the port")
    built = configure(build.root, folder / "build", [*said["option"], "-DCMAKE_INSTALL_LIBDIR=lib"])
    assert build.installed <= built, "the port does not build all libraries"
    expect_equal(set(said.get("program", [])), built & PROGRAMS, "the programs of the port")
    installation = (folder / "build/cmake_install.cmake").read_text(encoding="utf-8")
    assert f"/{said['config'][0]}\"" in installation, f"nothing is installed in {said['config'][0]}"
    for name in ("LICENSE", "usage"):
        assert (folder / "share/baseapi" / name).exists(), f"the port does not install {name}"


def lower_bounds(references):
    return dict(re.fullmatch(r"([\w-]+)/\[>=([0-9.]+).*\]", reference).groups() for reference in references)


def check_recipe(build, folder):
    recipe_class = conan_stand_in.recipe_in(build.root / "packaging/conan")
    for programs in (False, True):
        recipe = recipe_class(build.root / "packaging/conan")
        recipe.options.programs = programs
        recipe.set_version()
        expect_equal(recipe.version, build.version, "the version of the recipe")
        check_requirements(build, recipe, programs)
        check_exported_sources(build, recipe, programs, folder / f"recipe with {programs}")
    recipe.package_info()
    expect_equal(set(recipe.cpp_info.components), build.installed, "the components of the recipe")
    used = {name.partition("::")[0] for it in recipe.cpp_info.components.values() for name in it.requires} - build.installed
    expect_equal(used, {NAMES[name][1] for name in build.libraries}, "what the components of the recipe are linked with")


def check_requirements(build, recipe, programs):
    recipe.requirements()
    recipe.build_requirements()
    libraries = {**build.libraries, **(build.libraries_of_programs if programs else {})}
    bounds = lower_bounds(recipe.required)
    expect_equal(set(bounds), {NAMES[name][1] for name in libraries}, "what the recipe requires")
    for name, version in libraries.items():
        if version:
            expect_equal(bounds[NAMES[name][1]], version, f"the least version of {name} in the recipe")


def check_exported_sources(build, recipe, programs, folder):
    """The files that the recipe takes along are enough to build from."""
    recipe.export_sources_folder = folder / "source"
    recipe.export_sources()
    recipe.generate()
    options = [f"-D{name}={'ON' if value else 'OFF'}" for name, value in recipe.toolchain.cache_variables.items()]
    built = configure(folder / "source", folder / "build", options)
    assert build.installed <= built, "the recipe does not build all libraries"
    expect_equal(built & PROGRAMS, PROGRAMS if programs else set(), "the programs of the recipe")
    for included in re.findall(r'"([^"]*/source/[^"]*)"', (folder / "build/cmake_install.cmake").read_text(encoding="utf-8")):
        assert pathlib.Path(included).exists(), f"the recipe does not take {included} along, which is installed"


def check_debian(build):
    entry = build.text("packaging/debian/changelog").splitlines()[0]
    expect_equal(re.match(r"baseapi \((.*?)\)", entry).group(1), build.version, "the newest entry of the changelog of Debian")
    asked = re.search(r"string\(JOIN \", \" needed_to_link\s+([^)]*)\)", build.text("cmake/packages.cmake")).group(1).split()
    expect_equal(set(asked), set().union(*(NAMES[name][2] for name in build.libraries)), "what the development package depends on")


def main(root):
    build = Build(pathlib.Path(root).resolve())
    check_debian(build)
    with tempfile.TemporaryDirectory(prefix="packaging ") as name:
        check_port(build, pathlib.Path(name))
        check_recipe(build, pathlib.Path(name))


if __name__ == "__main__":
    main(sys.argv[1])
