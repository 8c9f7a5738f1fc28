"""Builds the package with CMake, as a wheel that carries the libraries it needs:

    python3 -m build --no-isolation --wheel tools/python

pyproject.toml has the rest. CMake finds the libraries as for the program; KVFOUND_CMAKE_OPTIONS are
further options for it.
"""

import os
import pathlib
import re
import shlex
import shutil
import subprocess
import sys

from setuptools import Extension, setup
from setuptools.command.build_ext import build_ext
from setuptools.command.sdist import sdist

HERE = pathlib.Path(__file__).resolve().parent
PROJECT = HERE.parent.parent


def find_version():
    text = (PROJECT / "CMakeLists.txt").read_text(encoding="utf-8")
    return re.search(r"^\s*VERSION ([\d.]+)$", text, re.MULTILINE)[1]


def copy_licence(library, folder):
    """The licence of a library that the wheel carries, where the system keeps it."""
    owner = subprocess.run(
        ["dpkg", "--search", f"*/{library}"], stdout=subprocess.PIPE, text=True, check=True
    ).stdout.split(":")[0]
    folder.mkdir(exist_ok=True)
    shutil.copyfile(f"/usr/share/doc/{owner}/copyright", folder / owner)


class BuildWithCMake(build_ext):
    def build_extension(self, ext):
        folder = (PROJECT / "build/wheel/cmake").resolve()
        package = pathlib.Path(self.get_ext_fullpath(ext.name)).resolve().parent
        options = {
            "CMAKE_BUILD_TYPE": "Release",
            "BUILD_SHARED_LIBS": "OFF",  # those of the project become a part of the extension
            "KVFOUND_EXAMPLES": "OFF",
            "KVFOUND_PYTHON": "ON",
            "KVFOUND_PYTHON_WHEEL": "ON",
            "KVFOUND_TOOLS": "OFF",
            "KVFOUND_TOOLS_TOGETHER": "ON",
            "Python_EXECUTABLE": sys.executable,
        }
        subprocess.run(
            [
                *("cmake", "-S", PROJECT, "-B", folder, "-G", "Ninja"),
                *(f"-D{name}={value}" for name, value in options.items()),
                *shlex.split(os.environ.get("KVFOUND_CMAKE_OPTIONS", "")),
            ],
            check=True,
        )
        subprocess.run(["cmake", "--build", folder, "--target", "kvfound-python"], check=True)
        for old in package.glob("*.so*"):
            old.unlink()
        install = ["cmake", "--install", folder, "--component", "wheel", "--strip"]
        subprocess.run([*install, "--prefix", package], check=True)
        for library in package.glob("*.so.*"):
            if library.is_symlink():  # a wheel would hold it twice
                copy_licence(library.resolve().name, package / "licenses")
                library.resolve().rename(library)


class RefuseSources(sdist):
    def run(self):
        sys.exit("The package is built in the whole project: make a wheel, with build --wheel.")


(PROJECT / "build/wheel").mkdir(parents=True, exist_ok=True)
os.chdir(HERE)
setup(
    version=find_version(),
    ext_modules=[Extension("kvfound._core", sources=[])],
    cmdclass={"build_ext": BuildWithCMake, "sdist": RefuseSources},
)
