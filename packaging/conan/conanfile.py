"""Conan 2 recipe: conan create packaging/conan"""
from __future__ import annotations

from pathlib import Path

from conan import ConanFile
from conan.tools.build import check_min_cppstd
from conan.tools.cmake import CMake, CMakeToolchain, cmake_layout
from conan.tools.files import copy, rm, rmdir


class NetxmlRecipe(ConanFile):
    name = "netxml"
    version = "1.0.0"
    license = "MIT"
    description = "XML for the management plane"
    topics = ("xml", "netconf", "schema")
    package_type = "library"
    settings = "os", "arch", "compiler", "build_type"
    options = {"shared": [True, False], "with_schema": [True, False], "with_files": [True, False],
               "with_tool": [True, False]}
    default_options = {"shared": False, "with_schema": True, "with_files": True, "with_tool": False}

    def export_sources(self) -> None:
        top = Path(self.recipe_folder).parent.parent
        for pattern in ("CMakeLists.txt", "LICENSE", "cmake/*", "dom/*", "examples/*", "include/*", "io/*",
                        "docs/netxml.1.in", "output/*", "parser/*", "schema/*", "support/*", "tools/*"):
            copy(self, pattern, str(top), self.export_sources_folder)

    def validate(self) -> None:
        check_min_cppstd(self, 20)

    def requirements(self) -> None:
        if self.options.with_tool:
            self.requires("cli11/[>=2.1]", visible=False)

    def build_requirements(self) -> None:
        self.tool_requires("cmake/[>=3.25]")

    def layout(self) -> None:
        cmake_layout(self)

    def generate(self) -> None:
        toolchain = CMakeToolchain(self)
        toolchain.cache_variables.update({
            "NETXML_WITH_SCHEMA": bool(self.options.with_schema),
            "NETXML_WITH_FILES": bool(self.options.with_files),
            "NETXML_BUILD_TOOLS": bool(self.options.with_tool),
            "NETXML_BUILD_TESTS": False,
            "NETXML_BUILD_EXAMPLES": False,
        })
        toolchain.generate()

    def build(self) -> None:
        cmake = CMake(self)
        cmake.configure()
        cmake.build()

    def package(self) -> None:
        CMake(self).install()
        # Both libraries are built; the package has the one that is asked for.
        other = "libnetxml.a" if self.options.shared else "libnetxml.so*"
        rm(self, other, str(Path(self.package_folder) / "lib"))
        copy(self, "LICENSE", self.source_folder, str(Path(self.package_folder) / "licenses"))
        # Conan writes these itself, from package_info(); netxml_add_schema() stays.
        rmdir(self, str(Path(self.package_folder) / "lib" / "pkgconfig"))

    def package_info(self) -> None:
        self.cpp_info.libs = ["netxml"]
        self.cpp_info.set_property("cmake_file_name", "netxml")
        self.cpp_info.set_property("pkg_config_name", "netxml")
        target = "netxml::netxml" if self.options.shared else "netxml::netxml-static"
        self.cpp_info.set_property("cmake_target_name", target)
        self.cpp_info.set_property("cmake_build_modules", ["lib/cmake/netxml/NetxmlAddSchema.cmake"])
