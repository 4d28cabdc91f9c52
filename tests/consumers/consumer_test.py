"""A small host builds against the library, in a folder with a blank in its name, and runs.

consumer_test.py install BUILD_FOLDER PLACE         installs into PLACE, and moves what is there by then
consumer_test.py static|shared PLACE                find_package of what is installed
consumer_test.py pkg-config PLACE COMPILER...       the compiler's own command line, with each one
consumer_test.py subdirectory SOURCE_FOLDER         add_subdirectory
"""

import os
import pathlib
import re
import shlex
import shutil
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
POSIX = r"|(sys|arpa|netinet)/[a-z]+\.h|(fcntl|poll|signal|unistd)\.h"
WARNINGS = ["-std=c++20", "-Wall", "-Wextra", "-Wpedantic", "-Werror"]


def run(*command, **options):
    """What the command says; where it fails, that is the end."""
    done = subprocess.run([str(word) for word in command], check=False, text=True, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, **options)
    if done.returncode != 0:
        sys.exit(f"{shlex.join(done.args)}\n{done.stdout}")
    return done.stdout


def prefix_in(place):
    return pathlib.Path(place) / "moved here"


def install(build_folder, place):
    shutil.rmtree(place, ignore_errors=True)
    first = pathlib.Path(place) / "first place"
    run("cmake", "--install", build_folder, "--prefix", first)
    first.rename(prefix_in(place))
    check_headers(prefix_in(place) / "include")


def check_headers(include):
    """They include each other and the C++ library, those for tests POSIX too, and define no macro of another name."""
    headers = sorted(include.rglob("*.h"))
    assert len(headers) > 50, "headers are missing"
    for header in headers:
        text = header.read_text(encoding="utf-8")
        for included in re.findall(r'^#include "(.*)"', text, re.MULTILINE):
            assert (include / included).exists(), f"{header} includes {included}, which is not installed"
        for outside in re.findall(r"^#include <(.*)>", text, re.MULTILINE):
            known = "[a-z_]+" + (POSIX if header.parent.name == "testkit" else "")
            assert re.fullmatch(known, outside), f"{header} includes {outside}, which is not of the C++ library"
        for macro in re.findall(r"^\s*#\s*define\s+(\w+)", text, re.MULTILINE):
            assert macro.startswith("BASEAPI_"), f"{header} defines {macro}"


def check_run(program):
    output = run(program, HERE / "main.cpp")
    assert output == "all is well\n", output


def build_with_cmake(project, folder, *options):
    """Builds the project in the folder; gives its program."""
    run("cmake", "-G", "Ninja", "-S", project, "-B", folder, *options)
    run("cmake", "--build", folder, "--target", "my_application")
    return next(path for path in folder.rglob("my_application") if path.is_file())


def needs_shared_library(program):
    return "libbaseapi.so" in run("readelf", "-d", program)


def installed(kind, place, folder):
    program = build_with_cmake(HERE / "installed", folder, f"-DCMAKE_PREFIX_PATH={prefix_in(place)}", "-DCMAKE_BUILD_TYPE=Debug",
                               f"-DBUILD_SHARED_LIBS={'ON' if kind == 'shared' else 'OFF'}")
    check_run(program)
    assert needs_shared_library(program) == (kind == "shared"), f"the library is not linked {kind}"


def pkg_config(place, compilers, folder):
    """A host without exceptions and with all warnings by each compiler, then one that links the static libraries."""
    packages = next(prefix_in(place).rglob("hostkit.pc")).parent
    libraries = packages.parent

    def ask(*question):
        return shlex.split(run("pkg-config", *question, env={**os.environ, "PKG_CONFIG_PATH": str(packages)}))

    for compiler in compilers:
        program = folder / pathlib.Path(compiler).name
        run(compiler, *WARNINGS, "-fno-exceptions", HERE / "main.cpp", "-o", program, *ask("--cflags", "--libs", "hostkit"),
            f"-Wl,-rpath,{libraries}")
        check_run(program)
        assert needs_shared_library(program)

    # What --static adds on top, the static libraries of libcurl's own libraries, few machines have.
    private = [word for word in ask("--print-requires-private", "hostkit", "baseapi") if re.match("[a-z]", word)]
    own = re.search(r"^Libs.private: (.*)", (packages / "baseapi.pc").read_text(encoding="utf-8"), re.MULTILINE).group(1).split()
    run(compilers[0], *WARNINGS, *ask("--cflags", "hostkit"), HERE / "main.cpp", "-o", folder / "static",
        libraries / "libhostkit.a", libraries / "libbaseapi.a", *ask("--libs", *private), *own)
    check_run(folder / "static")
    assert not needs_shared_library(folder / "static")


def subdirectory(source, folder):
    """Compiled as fast as may be: what is tested is that it links."""
    project = shutil.copytree(HERE / "subdirectory", folder / "project")
    shutil.copy(HERE / "main.cpp", folder)
    (project / "baseapi").symlink_to(source)
    check_run(build_with_cmake(project, folder / "build", "-DCMAKE_UNITY_BUILD=ON", "-DCMAKE_UNITY_BUILD_BATCH_SIZE=16",
                               "-DCMAKE_BUILD_TYPE="))


def main(kind, *arguments):
    if kind == "install":
        return install(*arguments)
    with tempfile.TemporaryDirectory(prefix="a consumer ") as name:
        folder = pathlib.Path(name)
        if kind in ("static", "shared"):
            installed(kind, *arguments, folder)
        elif kind == "pkg-config":
            pkg_config(arguments[0], arguments[1:], folder)
        else:
            subdirectory(*arguments, folder)


if __name__ == "__main__":
    main(*sys.argv[1:])
