#!/usr/bin/env python3
"""Fails when a recipe of a package manager does not fit the project.

    recipes.py PROJECT
"""

import importlib.util
import json
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

import conan_stand_ins
from conan_stand_ins import run

RANGE = re.compile(r"\[>=\d+(\.\d+)* <\d+(\.\d+)*\]")
INSTALLED = ["include/found/foundation.h", "include/kv/xml_tree.h", "share/kvfound/schemas/legacy.xsd"]

faults = []


def expect(condition, what):
    if not condition:
        faults.append(what)


def expect_same(what, expected, found):
    expect(expected == found, f"{what}: {found} instead of {expected}")


class Project:
    """What its CMakeLists.txt says of itself."""

    def __init__(self, folder):
        self.folder = pathlib.Path(folder)
        text = (self.folder / "CMakeLists.txt").read_text()
        self.version = re.search(r"^ *VERSION ([\d.]+)$", text, re.MULTILINE)[1]
        self.description = re.search(r'DESCRIPTION "(.*)"', text)[1]
        self.parts = set(re.findall(r'option\((KVFOUND_\w+) "Build ', text)) - {"KVFOUND_WARNINGS"}
        self.packages = {plain(name) for name in re.findall(r"^ *kvfound_find\((\w+) ", text, re.MULTILINE)}


def plain(name):
    """Package managers write fast_float, fast-float and FastFloat for the same."""
    return re.sub(r"[-_]", "", name).lower()


def read_cache(build):
    """Variables that the project or CMake itself declares; others have no type."""
    found = re.findall(r"^(\w+):(\w+)=(.*)$", (build / "CMakeCache.txt").read_text(), re.MULTILINE)
    return {name: value for name, kind, value in found if kind != "UNINITIALIZED"}


def check_variables(what, project, variables, cache):
    for name, value in variables.items():
        expect_same(f"{what}, {name}", "ON" if value in (True, "ON") else "OFF", cache.get(name))
    expect_same(f"{what}, parts of the project that are chosen", project.parts,
                {name for name in variables if name.startswith("KVFOUND_")})


def load_recipe(path):
    description = importlib.util.spec_from_file_location(path.parent.name, path)
    module = importlib.util.module_from_spec(description)
    description.loader.exec_module(module)
    return next(value for value in vars(module).values()
                if isinstance(value, type) and value.__module__ == module.__name__)


def run_test_package(folder, prefix, work):
    run("cmake", "-G", "Ninja", "-S", folder, "-B", work / "test", f"-DCMAKE_PREFIX_PATH={prefix}")
    run("cmake", "--build", work / "test")
    run(work / "test/test_package")


def check_cpp_info(recipe, prefix):
    """What hosts are told must be what the project installs."""
    expect_same("Conan, file", "KvFound", recipe.cpp_info.properties["cmake_file_name"])
    text = "".join(file.read_text() for file in (prefix / "lib/cmake/KvFound").glob("KvFoundTargets*.cmake"))
    for name, component in recipe.cpp_info.components.items():
        target = component.properties["cmake_target_name"]
        expect(f"add_library({target} " in text, f"Conan: the project has no {target}")
        for library in component.libs:
            expect(list((prefix / "lib").glob(f"lib{library}.*")), f"Conan: there is no {library}")
        for define in component.defines:
            expect(define in text, f"Conan: nothing needs {define}")
        for other in component.requires:
            expect(other in recipe.cpp_info.components or other.split("::")[0] in recipe.required,
                   f"Conan: {name} requires {other}")
    used = {other.split("::")[0] for part in recipe.cpp_info.components.values() for other in part.requires}
    expect(recipe.required.keys() <= used, "Conan: every requirement belongs to a component")


def check_conan(project, work):
    """Builds static libraries of what the recipe exports, and the test package with them. The installed tree."""
    folder = project.folder / "packaging/conan"
    conan_stand_ins.install_modules()
    kind = load_recipe(folder / "conanfile.py")
    recipe = kind(folder, work, {"shared": False})
    expect(set(kind.options["shared"]) == {True, False} and kind.default_options["shared"], "Conan: shared by default")
    recipe.set_version()
    expect_same("Conan, version", project.version, recipe.version)
    expect_same("Conan, description", project.description, recipe.description)
    recipe.export_sources()
    recipe.requirements()
    expect_same("Conan, requirements", project.packages, {plain(name) for name in recipe.required})
    expect(all(map(RANGE.fullmatch, recipe.required.values())), f"Conan: these are no ranges: {recipe.required}")
    recipe.validate()
    expect_same("Conan, standard of C++", [17], recipe.checked)
    recipe.layout()
    recipe.generate()
    recipe.build()
    cache = read_cache(work / "build")
    expect_same("Conan, BUILD_SHARED_LIBS", "OFF", cache["BUILD_SHARED_LIBS"])
    check_variables("Conan", project, recipe.cache_variables, cache)

    prefix = work / "prefix"  # as it is before the recipe takes something away
    run("cmake", "--install", recipe.build_folder, "--prefix", prefix)
    recipe.package_info()
    check_cpp_info(recipe, prefix)
    run_test_package(folder / "test_package", prefix, work)
    recipe.package()
    expect_files("Conan", pathlib.Path(recipe.package_folder), [*INSTALLED, "licenses/LICENSE"],
                 ["lib/cmake", "lib/pkgconfig"])
    expect(hasattr(load_recipe(folder / "test_package/conanfile.py"), "test"), "Conan: the test package has no test")
    return prefix


def expect_files(what, folder, present, absent):
    for name in present:
        expect((folder / name).exists(), f"{what}: {name} is missing")
    for name in absent:
        expect(not (folder / name).exists(), f"{what}: {name} should not be there")


def check_vcpkg(project, installed, work):
    port = project.folder / "packaging/vcpkg/kvfound"
    manifest = json.loads((port / "vcpkg.json").read_text())
    expect_same("vcpkg, name", port.name, manifest["name"])
    expect_same("vcpkg, version", project.version, manifest["version"])
    expect_same("vcpkg, description", project.description, manifest["description"])
    names = {entry for entry in manifest["dependencies"] if isinstance(entry, str)}
    tools = {entry["name"] for entry in manifest["dependencies"] if isinstance(entry, dict) and entry["host"]}
    expect_same("vcpkg, dependencies", project.packages, {plain(name) for name in names})
    expect_same("vcpkg, tools", {"vcpkg-cmake", "vcpkg-cmake-config"}, tools)

    run("cmake", f"-DPORTFILE={port / 'portfile.cmake'}", f"-DINSTALLED={installed}", f"-DWORK={work}", "-P",
        pathlib.Path(__file__).with_name("vcpkg_stand_ins.cmake"))
    variables = dict(option[len("-D"):].split("=") for option in (work / "options").read_text().split(";"))
    check_variables("vcpkg", project, variables, read_cache(work / "build"))
    expect_files("vcpkg", work / "package",
                 [*INSTALLED, *(f"share/kvfound/{name}" for name in ("copyright", "usage", "KvFoundConfig.cmake"))],
                 ["lib/cmake/KvFound", "debug/include", "debug/share"])
    usage = (port / "usage").read_text()
    expect("find_package(KvFound" in usage and "KvFound::found KvFound::platform" in usage, "vcpkg: usage")


NIX = """
let package = import %s { lib = { inherit (builtins) head; }; stdenv.mkDerivation = attributes: attributes;
  cmake = "cmake"; ninja = "ninja"; pugixml = "pugixml"; fast-float = "fast-float"; fmt = "fmt"; utf8proc = "utf8proc";
  cli11 = "cli11"; nlohmann_json = "nlohmann_json"; simdjson = "simdjson"; libcsv = "libcsv"; };
in { inherit (package) pname version buildInputs cmakeFlags; inherit (package.meta) description; }
"""


def check_nix(project, work):
    program = shutil.which("nix-instantiate")
    folder = project.folder / "packaging/nix"
    if program is None:
        print("The recipe of Nix is not looked at without nix-instantiate (nix-bin).")
        return
    run(program, "--parse", folder / "flake.nix")
    done = subprocess.run([program, "--eval", "--strict", "--json", "-E", NIX % (folder / "package.nix")], check=True,
                          stdout=subprocess.PIPE)
    package = json.loads(done.stdout)
    expect_same("Nix, version", project.version, package["version"])
    expect_same("Nix, description", project.description, package["description"])
    expect(project.packages <= {plain(name) for name in package["buildInputs"]}, "Nix: libraries are missing")
    variables = dict(flag[len("-D"):].split("=") for flag in package["cmakeFlags"])
    run("cmake", "-G", "Ninja", "-S", project.folder, "-B", work / "nix", *package["cmakeFlags"])
    check_variables("Nix", project, variables, read_cache(work / "nix"))


def main(folder):
    project = Project(folder)
    expect(len(project.parts) >= 5 and len(project.packages) >= 3, "the project is read")
    with tempfile.TemporaryDirectory() as name:
        work = pathlib.Path(name)
        for part in ("conan", "vcpkg"):
            (work / part).mkdir()
        try:
            installed = check_conan(project, work / "conan")
            check_vcpkg(project, installed, work / "vcpkg")
            check_nix(project, work)
        except RuntimeError as error:  # of a command that the next checks depend on
            faults.append(str(error))
    print("\n".join(faults))
    print(f"{len(faults)} faults")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
