"""What a recipe uses of Conan, as far as it takes to run one: what it sets is kept, and CMake is called."""

import fnmatch
import pathlib
import shutil
import subprocess
import sys
import types


class ConanFile:
    def __init__(self, recipe_folder, work, options):
        self.recipe_folder = str(recipe_folder)
        self.export_sources_folder = self.source_folder = str(work / "source")
        self.build_folder = str(work / "build")
        self.package_folder = str(work / "package")
        self.options = types.SimpleNamespace(**options)
        self.required = {}
        self.cpp_info = CppInfo()
        self.cache_variables = {}
        self.checked = []

    def requires(self, reference, **_):
        name, version = reference.split("/")
        self.required[name] = version


class CppInfo:
    def __init__(self):
        self.properties = {}
        self.libs = []
        self.requires = []
        self.defines = []
        self.components = Components()

    def set_property(self, name, value):
        self.properties[name] = value


class Components(dict):
    def __missing__(self, name):
        self[name] = CppInfo()
        return self[name]


class Generator:
    def __init__(self, recipe):
        self.recipe = recipe
        self.cache_variables = {}

    def generate(self):
        self.recipe.cache_variables.update(self.cache_variables)


def run(*command):
    done = subprocess.run([str(part) for part in command], stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                          check=False)
    if done.returncode != 0:
        raise RuntimeError(f"{' '.join(map(str, command))}\n{done.stdout}")
    return done.stdout


class CMake:
    def __init__(self, recipe):
        self.recipe = recipe

    def configure(self):
        variables = [f"-D{name}={'ON' if value is True else 'OFF' if value is False else value}"
                     for name, value in self.recipe.cache_variables.items()]
        run("cmake", "-G", "Ninja", "-S", self.recipe.source_folder, "-B", self.recipe.build_folder,
            "-DCMAKE_UNITY_BUILD=ON", *variables)

    def build(self):
        run("cmake", "--build", self.recipe.build_folder)

    def install(self):
        run("cmake", "--install", self.recipe.build_folder, "--prefix", self.recipe.package_folder)


def copy(_, pattern, src, dst):
    """Conan's patterns fit whole paths, so that a star stands for folders, too."""
    src = pathlib.Path(src)
    copied = []
    for file in (src / pattern.split("/")[0]).rglob("*") if "/" in pattern else src.iterdir():
        name = file.relative_to(src).as_posix()
        if file.is_file() and fnmatch.fnmatch(name, pattern):
            target = pathlib.Path(dst) / name
            target.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(file, target)
            copied.append(name)
    if not copied:
        raise RuntimeError(f"nothing in {src} fits {pattern}")
    return copied


def install_modules():
    """From here on, `import conan` finds the above."""
    contents = {
        "conan": {"ConanFile": ConanFile},
        "conan.tools": {},
        "conan.tools.build": {"check_min_cppstd": lambda recipe, version: recipe.checked.append(version),
                              "can_run": lambda recipe: True},
        "conan.tools.cmake": {"CMake": CMake, "CMakeDeps": Generator, "CMakeToolchain": Generator,
                              "cmake_layout": lambda recipe: None},
        "conan.tools.files": {"copy": copy, "load": lambda recipe, path: pathlib.Path(path).read_text(),
                              "rmdir": lambda recipe, path: shutil.rmtree(path)},
    }
    for name, members in contents.items():
        module = types.ModuleType(name)
        vars(module).update(members)
        sys.modules[name] = module
