import os
import re

from conan import ConanFile
from conan.tools.build import check_min_cppstd
from conan.tools.cmake import CMake, CMakeDeps, CMakeToolchain, cmake_layout
from conan.tools.files import copy, load, rmdir

PROJECT = os.path.join("..", "..")  # from the folder of the recipe


class KvFoundRecipe(ConanFile):
    name = "kvfound"
    description = "Beddings of structural models: kept, pruned, read and written"
    license = "MIT"
    topics = ("structural-engineering", "foundations", "beddings", "xml")
    package_type = "library"
    settings = "os", "arch", "compiler", "build_type"
    options = {"shared": [True, False]}
    # Its header-only target is what the project links, and what leaves nothing for hosts to find.
    default_options = {"shared": True, "fmt/*:header_only": True}

    def set_version(self):
        text = load(self, os.path.join(self.recipe_folder, PROJECT, "CMakeLists.txt"))
        self.version = re.search(r"^ *VERSION ([\d.]+)$", text, re.MULTILINE)[1]

    def export_sources(self):
        project = os.path.join(self.recipe_folder, PROJECT)
        for pattern in ("CMakeLists.txt", "LICENSE", "THIRD-PARTY-NOTICES.md", "cmake/*", "include/*",
                        "platform/*", "schemas/*", "src/*"):
            copy(self, pattern, src=project, dst=self.export_sources_folder)

    def requirements(self):
        self.requires("pugixml/[>=1.11 <2]")
        self.requires("fast_float/[>=3.4 <9]")
        self.requires("fmt/[>=9 <12]")

    def validate(self):
        check_min_cppstd(self, 17)

    def layout(self):
        cmake_layout(self)

    def generate(self):
        CMakeDeps(self).generate()
        toolchain = CMakeToolchain(self)
        toolchain.cache_variables["BUILD_SHARED_LIBS"] = bool(self.options.shared)
        for part in ("TOOLS", "PYTHON", "WEB", "EXAMPLES", "TESTS", "BENCHMARKS", "FUZZERS"):
            toolchain.cache_variables[f"KVFOUND_{part}"] = False
        toolchain.generate()

    def build(self):
        cmake = CMake(self)
        cmake.configure()
        cmake.build()

    def package(self):
        CMake(self).install()
        copy(self, "LICENSE", src=self.source_folder, dst=os.path.join(self.package_folder, "licenses"))
        # CMakeDeps and PkgConfigDeps make these for the host.
        rmdir(self, os.path.join(self.package_folder, "lib", "cmake"))
        rmdir(self, os.path.join(self.package_folder, "lib", "pkgconfig"))

    def package_info(self):
        self.cpp_info.set_property("cmake_file_name", "KvFound")
        platform = self.cpp_info.components["platform"]
        platform.set_property("cmake_target_name", "KvFound::platform")
        platform.libs = ["kvplatform"]
        platform.requires = ["pugixml::pugixml", "fast_float::fast_float", "fmt::fmt"]
        found = self.cpp_info.components["found"]
        found.set_property("cmake_target_name", "KvFound::found")
        found.set_property("pkg_config_name", "kvfound")
        found.libs = ["kvfound"]
        found.requires = ["platform"]
        if not self.options.shared:
            platform.defines = ["KVFOUND_STATIC"]
            found.defines = ["KVFOUND_STATIC"]
