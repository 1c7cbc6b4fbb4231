"""The installed netxml, moved to another place, as its users build against it."""
from __future__ import annotations

import os
import re
import shlex
import unittest
from pathlib import Path

from installation import CMAKE, CONSUMER, HERE, PROGRAMS, SOURCE, InstallationCase, run

BUILD = Path(os.environ["NETXML_BUILD"])
LIBDIR = os.environ["NETXML_LIBDIR"]
C_COMPILER = os.environ["NETXML_C_COMPILER"]
CXX_COMPILER = os.environ["NETXML_CXX_COMPILER"]
# A library with sanitizers or counters needs programs with the same.
FLAGS = {name: os.environ[f"NETXML_{name}_FLAGS"] for name in ("C", "CXX", "LINK")}

INSTALLED = ["bin/netxml", "include/netxml/netxml.h", "include/netxml/schema.h",
             "include/netxml/netxml.hpp", "include/netxml/cpp/document.hpp",
             "share/man/man1/netxml.1", "share/man/man3/netxml_dom.3",
             "share/man/man3/XML_DOM_AddAttr.3", "share/man/man5/netxml-errors.5",
             "share/man/man7/netxml.7", "share/bash-completion/completions/netxml"]
INSTALLED_LIBRARY = ["libnetxml.so", "libnetxml.so.1", "libnetxml.a", "pkgconfig/netxml.pc",
                     "cmake/netxml/netxmlConfig.cmake", "cmake/netxml/netxmlConfigVersion.cmake",
                     "cmake/netxml/netxmlTargets.cmake", "cmake/netxml/NetxmlAddSchema.cmake"]
# Compiled again, the library is what counts, and not its speed.
PLAIN = ["-DCMAKE_C_FLAGS_RELEASE=-O0", "-DCMAKE_CXX_FLAGS_RELEASE=-O0"]


class Install(InstallationCase):
    prefix: Path

    @classmethod
    def setUpClass(cls) -> None:
        super().setUpClass()
        first = cls.work / "first"
        run(CMAKE, "--install", BUILD, "--prefix", first)
        cls.prefix = cls.work / "a place" / "moved"
        cls.prefix.parent.mkdir()
        first.rename(cls.prefix)

    def build(self, source: Path, name: str, *options: str | Path) -> Path:
        """Configures and builds a project; returns its build directory."""
        directory = self.work / name
        run(CMAKE, "-S", source, "-B", directory, "-DCMAKE_BUILD_TYPE=Release",
            f"-DCMAKE_C_COMPILER={C_COMPILER}", f"-DCMAKE_CXX_COMPILER={CXX_COMPILER}",
            f"-DCMAKE_C_FLAGS={FLAGS['C']}", f"-DCMAKE_CXX_FLAGS={FLAGS['CXX']}",
            f"-DCMAKE_EXE_LINKER_FLAGS={FLAGS['LINK']}",
            f"-DCMAKE_SHARED_LINKER_FLAGS={FLAGS['LINK']}", *options)
        run(CMAKE, "--build", directory)
        return directory

    def pkg_config(self, *options: str) -> str:
        return run("pkg-config", *options, "netxml",
                   env={"PKG_CONFIG_PATH": str(self.prefix / LIBDIR / "pkgconfig")}).strip()

    def test_everything_is_in_its_place(self) -> None:
        for name in INSTALLED + [f"{LIBDIR}/{library}" for library in INSTALLED_LIBRARY]:
            self.assertTrue((self.prefix / name).is_file(), name)
        self.assertFalse(os.path.isabs(os.readlink(self.prefix / LIBDIR / "libnetxml.so")))

    def test_nothing_names_where_it_was_built_or_installed(self) -> None:
        """The texts; the programs may carry paths for debuggers."""
        places = [str(self.work / "first"), str(SOURCE), str(BUILD)]
        for directory in ("pkgconfig", "cmake/netxml"):
            for file in (self.prefix / LIBDIR / directory).iterdir():
                for place in places:
                    self.assertNotIn(place, file.read_text(), file.name)

    def test_the_tool_finds_its_library(self) -> None:
        document = SOURCE / "examples/documents/interfaces.xml"
        self.assertEqual(run(self.prefix / "bin/netxml", "check", document), f"{document}: ok\n")
        self.assertIn("netxml", run(self.prefix / "bin/netxml", "--version"))

    def test_pkg_config(self) -> None:
        project = (SOURCE / "CMakeLists.txt").read_text()
        version = re.search(r"project\(netxml VERSION ([0-9.]+)", project)
        assert version
        self.assertEqual(self.pkg_config("--modversion"), version[1])
        for language, compiler, flags in (("c", C_COMPILER, "C"), ("cpp", CXX_COMPILER, "CXX")):
            for kind in ("shared", "static"):
                program = self.work / "pkg-config" / f"{language}_{kind}"
                program.parent.mkdir(exist_ok=True)
                options = ["--libs", "--static"] if kind == "static" else ["--libs"]
                linked = shlex.split(self.pkg_config(*options))
                if kind == "static":
                    linked = ["-Wl,-Bstatic" if word == "-lnetxml" else word for word in linked]
                    place = linked.index("-Wl,-Bstatic")
                    linked[place + 1:place + 1] = ["-lnetxml", "-Wl,-Bdynamic"]
                run(compiler, *shlex.split(FLAGS[flags]), *shlex.split(self.pkg_config("--cflags")),
                    CONSUMER / f"round_trip.{language}", "-o", program, *linked,
                    *shlex.split(FLAGS["LINK"]))
        directory = self.work / "pkg-config"
        self.check_programs(directory, ["c_static", "cpp_static"])
        self.check_programs(directory, ["c_shared", "cpp_shared"],
                            env={"LD_LIBRARY_PATH": str(self.prefix / LIBDIR)})

    def test_static_programs_need_no_library_of_ours(self) -> None:
        directory = self.build(HERE / "c_only", "c-only", f"-DCMAKE_PREFIX_PATH={self.prefix}")
        self.check_programs(directory, ["c_shared", "c_static"])
        self.assertIn("libnetxml.so.1", run("readelf", "-d", directory / "c_shared"))
        self.assertNotIn("libnetxml", run("readelf", "-d", directory / "c_static"))

    def test_find_package(self) -> None:
        directory = self.build(CONSUMER, "find-package", f"-DCMAKE_PREFIX_PATH={self.prefix}")
        self.check_programs(directory, list(PROGRAMS))
        cache = (directory / "CMakeCache.txt").read_text()
        self.assertIn(f"NETXML_TOOL:FILEPATH={self.prefix}/bin/netxml", cache)

    def test_find_package_refuses_another_major_version(self) -> None:
        source = self.work / "too-new"
        source.mkdir()
        text = (CONSUMER / "CMakeLists.txt").read_text()
        (source / "CMakeLists.txt").write_text(text.replace("netxml 1.0", "netxml 2.0"))
        with self.assertRaisesRegex(AssertionError, r'compatible\s+with requested version "2.0"'):
            self.build(source, "too-new-build", f"-DCMAKE_PREFIX_PATH={self.prefix}")

    def test_a_schema_without_the_tool_says_so(self) -> None:
        with self.assertRaisesRegex(AssertionError, "the tool netxml is not installed"):
            # Empty, it is not looked for: this machine may have the tool installed.
            self.build(CONSUMER, "no-tool", f"-DCMAKE_PREFIX_PATH={self.prefix}", "-DNETXML_TOOL=")

    def test_add_subdirectory(self) -> None:
        directory = self.build(HERE / "embedded", "embedded", f"-DNETXML_SOURCE={SOURCE}",
                               f"-DNETXML_TOOL={self.prefix}/bin/netxml", *PLAIN)
        self.check_programs(directory, list(PROGRAMS))

    def test_fetch_content(self) -> None:
        archive = self.work / "netxml.tar.gz"
        run("tar", "-czf", archive, "-C", SOURCE.parent, "--exclude=./*/build", "--exclude=*/.git",
            "--exclude=*/.cache", f"./{SOURCE.name}")
        directory = self.build(HERE / "fetched", "fetched", f"-DNETXML_ARCHIVE={archive}",
                               f"-DNETXML_TOOL={self.prefix}/bin/netxml", *PLAIN)
        self.check_programs(directory, list(PROGRAMS))


class Variants(InstallationCase):
    """Builds that leave something out, or that need something besides."""

    def installed(self, name: str, *options: str | Path) -> Path:
        """Builds the library alone and installs it; returns the prefix."""
        build, prefix = self.work / f"{name}-build", self.work / name
        run(CMAKE, "-S", SOURCE, "-B", build, "-DCMAKE_BUILD_TYPE=None", "-DNETXML_BUILD_TOOLS=OFF",
            "-DNETXML_BUILD_TESTS=OFF", "-DNETXML_BUILD_EXAMPLES=OFF",
            f"-DCMAKE_C_COMPILER={C_COMPILER}", f"-DCMAKE_CXX_COMPILER={CXX_COMPILER}", *options)
        run(CMAKE, "--build", build)
        run(CMAKE, "--install", build, "--prefix", prefix)
        return prefix

    def symbols(self, library: Path, kind: str) -> set[str]:
        """The names a shared library exports (--defined-only) or takes (--undefined-only)."""
        lines = run("nm", "-D", kind, library).splitlines()
        return {re.sub("@.*", "", line.split()[-1]) for line in lines} - {"NETXML_1.0"}

    def test_what_is_left_out_is_not_there(self) -> None:
        prefix = self.installed("small", "-DNETXML_WITH_SCHEMA=OFF", "-DNETXML_WITH_FILES=OFF",
                              "-DCMAKE_CXX_FLAGS=-O1")
        library = prefix / LIBDIR / "libnetxml.so"
        exports = (SOURCE / "cmake/exports.map").read_text()
        listed = re.findall(r"^    (\w+);$", exports, re.MULTILINE)
        left_out = re.compile(r"(?i:schema)|XML_IsMatchRegex$|.*(ByFile|FileOutStream)")
        self.assertEqual(self.symbols(library, "--defined-only"),
                         {name for name in listed if not left_out.match(name)})
        taken = self.symbols(library, "--undefined-only")
        self.assertLessEqual({"iconv_open", "malloc"}, taken)
        opening = {"open", "open64", "openat", "fopen", "pread", "fstat", "fstat64"}
        self.assertEqual(taken & opening, set())

        directory = self.work / "small-consumer"
        run(CMAKE, "-S", HERE / "c_only", "-B", directory, f"-DCMAKE_PREFIX_PATH={prefix}")
        run(CMAKE, "--build", directory)
        run(CXX_COMPILER, "-std=c++17", "-O0", f"-I{prefix}/include", CONSUMER / "face.cpp", "-o",
            directory / "face", library, f"-Wl,-rpath,{library.parent}")
        self.check_programs(directory, ["c_shared", "c_static", "face"])

    def test_iconv_of_a_library_of_its_own(self) -> None:
        """A library that hands on to the C library's iconv stands for GNU libiconv."""
        iconv = self.work / "libiconv"
        (iconv / "include").mkdir(parents=True)
        (iconv / "lib").mkdir()
        (iconv / "include/iconv.h").write_text((HERE / "separate_iconv.h").read_text())
        run(C_COMPILER, "-fPIC", "-shared", "-Wl,-soname,libiconv.so", HERE / "separate_iconv.c",
            "-o", iconv / "lib/libiconv.so")
        prefix = self.installed("separate", "-DNETXML_ICONV=libiconv", f"-DCMAKE_PREFIX_PATH={iconv}")
        self.assertIn("libiconv.so", run("readelf", "-d", prefix / LIBDIR / "libnetxml.so"))

        env = {"PKG_CONFIG_PATH": str(prefix / LIBDIR / "pkgconfig")}
        self.assertNotIn("-liconv", run("pkg-config", "--libs", "netxml", env=env))
        self.assertIn("-liconv", run("pkg-config", "--static", "--libs", "netxml", env=env).split())
        directory = self.work / "separate-consumer"
        run(CMAKE, "-S", HERE / "c_only", "-B", directory, f"-DCMAKE_PREFIX_PATH={prefix}",
            f"-DCMAKE_EXE_LINKER_FLAGS=-L{iconv}/lib -Wl,-rpath-link,{iconv}/lib")
        run(CMAKE, "--build", directory)
        self.check_programs(directory, ["c_shared", "c_static"],
                            env={"LD_LIBRARY_PATH": str(iconv / "lib")})
        self.assertIn("libiconv.so", run("readelf", "-d", directory / "c_static"))


if __name__ == "__main__":
    unittest.main()
