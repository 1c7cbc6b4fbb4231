#!/usr/bin/env python3
"""netxml_add_schema() in projects: the names of its outputs, what it finds, and what makes it run again.

    add_schema_test.py CMAKE NETXML C_COMPILER SOURCE_DIRECTORY
"""
from __future__ import annotations

import os
import shutil
import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path

CMAKE, NETXML, C_COMPILER, SOURCE = sys.argv[1:5]
GENERATORS = ["Unix Makefiles"] + (["Ninja"] if shutil.which("ninja") else [])

OPEN = "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'"
SIMPLE = f"{OPEN}><xs:element name='a' type='xs:int'/></xs:schema>"
TYPES = f"{OPEN} targetNamespace='urn:o'><xs:simpleType name='T'><xs:restriction base='xs:int'/>" \
        "</xs:simpleType></xs:schema>"
IMPORTING = f"{OPEN}><xs:import namespace='urn:o' schemaLocation='LOCATION'/><xs:element name='a' " \
            "type='o:T' xmlns:o='urn:o'/></xs:schema>"
CATALOG = "<catalog xmlns='urn:oasis:names:tc:entity:xmlns:xml:catalog'><uri name='urn:o' " \
          "uri='../types/o.xsd'/></catalog>"


class AddSchema(unittest.TestCase):
    def setUp(self) -> None:
        work = tempfile.TemporaryDirectory(prefix="netxml-schema-")
        self.addCleanup(work.cleanup)
        self.source = Path(work.name).resolve() / "a project"
        self.build = self.source.parent / "build"

    def write(self, files: dict[str, str]) -> None:
        for name, text in files.items():
            (self.source / name).parent.mkdir(parents=True, exist_ok=True)
            (self.source / name).write_text(text)

    def project(self, text: str) -> None:
        self.write({"CMakeLists.txt": f"""cmake_minimum_required(VERSION 3.20)
project(p LANGUAGES C)
include("{SOURCE}/cmake/NetxmlAddSchema.cmake")
include_directories("{SOURCE}/include")
{text}"""})

    def run_cmake(self, *arguments: str | Path) -> subprocess.CompletedProcess[str]:
        return subprocess.run([CMAKE, *map(str, arguments)], capture_output=True, text=True,
                              check=False)

    def configure(self, generator: str = GENERATORS[0]) -> subprocess.CompletedProcess[str]:
        return self.run_cmake("-S", self.source, "-B", self.build, "-G", generator,
                              f"-DNETXML_TOOL={NETXML}", f"-DCMAKE_C_COMPILER={C_COMPILER}")

    def make(self) -> str:
        ran = self.run_cmake("--build", self.build)
        self.assertEqual(ran.returncode, 0, ran.stdout + ran.stderr)
        return ran.stdout

    def configured(self, generator: str = GENERATORS[0]) -> None:
        ran = self.configure(generator)
        self.assertEqual(ran.returncode, 0, ran.stderr)

    def test_names_end_at_the_last_dot(self) -> None:
        self.write({"device-1.0.xsd": SIMPLE, "device-1.1.xsd": SIMPLE})
        self.project("add_library(x STATIC)\n"
                     "netxml_add_schema(x FILES device-1.0.xsd)\n"
                     "netxml_add_schema(x FILES device-1.1.xsd LANG c)\n")
        self.configured()
        self.make()
        for version in ("0", "1"):
            header = (self.build / f"device-1.{version}_schema.h").read_text()
            self.assertIn(f"uint32_t device_1_{version}_schema_register(Schema_Root* root);", header)

    def test_a_prefix_names_the_files(self) -> None:
        self.write({"a/config.xsd": SIMPLE, "b/config.xsd": SIMPLE.replace("'a'", "'b'")})
        self.project("add_library(x STATIC)\n"
                     "netxml_add_schema(x FILES a/config.xsd PREFIX first)\n"
                     "netxml_add_schema(x FILES b/config.xsd PREFIX second)\n")
        self.configured()
        self.make()
        self.assertIn("first_element_a", (self.build / "first_schema.c").read_text())
        self.assertIn("second_element_b", (self.build / "second_schema.c").read_text())
        self.assertFalse((self.build / "config_schema.c").exists())

    def test_two_of_one_name_are_refused(self) -> None:
        self.write({"a/config.xsd": SIMPLE, "b/config.xsd": SIMPLE})
        self.project("add_library(x STATIC)\n"
                     "netxml_add_schema(x FILES a/config.xsd)\n"
                     "netxml_add_schema(x FILES b/config.xsd)\n")
        ran = self.configure()
        self.assertNotEqual(ran.returncode, 0)
        self.assertIn('netxml_add_schema: another schema in this directory is called "config", too; '
                      "give one of them a PREFIX of its own", " ".join(ran.stderr.split()))

    def test_two_targets_may_take_one_schema(self) -> None:
        self.write({"config.xsd": SIMPLE})
        self.project("add_library(x STATIC)\nadd_library(y STATIC)\nadd_dependencies(y x)\n"
                     "netxml_add_schema(x FILES config.xsd)\n"
                     "netxml_add_schema(y FILES config.xsd)\n")
        self.configured()
        self.make()

    def test_its_target_can_be_exported(self) -> None:
        self.write({"config.xsd": SIMPLE})
        self.project("add_library(x STATIC)\n"
                     "netxml_add_schema(x FILES config.xsd)\n"
                     "install(TARGETS x EXPORT e)\n"
                     "install(EXPORT e DESTINATION cmake)\n")
        self.configured()
        self.make()
        prefix = self.source.parent / "prefix"
        ran = self.run_cmake("--install", self.build, "--prefix", prefix)
        self.assertEqual(ran.returncode, 0, ran.stderr)
        self.assertNotIn(str(self.build), (prefix / "cmake/e.cmake").read_text())

    def test_paths_are_below_the_source_directory(self) -> None:
        """Also in the rule that make or ninja reads: what the options find is watched."""
        ways = {"path": ("o.xsd", "--include-path types"),
                "place": ("http://example.net/o.xsd", "--location urn:o=types/o.xsd"),
                "catalog": ("http://example.net/o.xsd", "--catalog sub/catalog.xml")}
        for generator in GENERATORS:
            for way, (location, options) in ways.items():
                with self.subTest(generator=generator, way=way):
                    shutil.rmtree(self.source.parent)
                    self.write({"part/x.xsd": IMPORTING.replace("LOCATION", location),
                                "part/types/o.xsd": TYPES, "part/sub/catalog.xml": CATALOG,
                                "part/CMakeLists.txt": "add_library(x STATIC)\n"
                                f"netxml_add_schema(x FILES x.xsd OPTIONS {options})\n"})
                    self.project("add_subdirectory(part)\n")
                    self.configured(generator)
                    self.assertIn("Compiling schema x", self.make())
                    self.assertNotIn("Compiling schema x", self.make())
                    watched = ["types/o.xsd"] + (["sub/catalog.xml"] if way == "catalog" else [])
                    for name in watched:
                        self.touch(self.source / "part" / name)
                        self.assertIn("Compiling schema x", self.make(), name)
                        self.assertNotIn("Compiling schema x", self.make(), name)

    def touch(self, path: Path) -> None:
        """Makes the file newer than what is made of it, however coarse the clock of files is."""
        later = time.time()
        made = max(file.stat().st_mtime for file in self.build.rglob("*_schema.*"))
        while later <= made:
            time.sleep(0.01)
            later = time.time()
        os.utime(path, (later, later))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
