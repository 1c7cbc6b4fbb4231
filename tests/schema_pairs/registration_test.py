#!/usr/bin/env python3
"""Registers generated schemas in several roots and takes them out again, in C99 and in C++17.

    registration_test.py NETXML CC CXX LIBRARY INCLUDE_DIRECTORY DRIVER.c [COMPILER_FLAG...]
"""

from __future__ import annotations

import subprocess
import sys
import tempfile
from pathlib import Path

OPEN = "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema' xmlns='urn:net' targetNamespace='urn:net'"
FIRST = f"{OPEN}><xs:element name='a' type='OID'/><xs:element name='v' type='_VlanRange'/></xs:schema>"
SECOND = f"{OPEN}><xs:element name='b' type='OID'/></xs:schema>"
OTHER = SECOND.replace("urn:net", "urn:other")
EMPTY = f"{OPEN}/>"
WARNINGS = ["-Wall", "-Wextra", "-Wpedantic", "-Werror"]

# The second schema, the steps (see the driver), and what holds after each.
ROWS = {
    "one schema": (SECOND, "aA", "a:OV A:"),
    "one root holds it twice": (SECOND, "aaAA", "a:OV a:OV A:OV A:"),
    "taken out of a root that does not hold it": (SECOND, "axA", "a:OV x:OV A:"),
    "and again after the last one": (SECOND, "aAAaxA", "a:OV A: A: a:OV x:OV A:"),
    "two of one namespace": (SECOND, "abBA", "a:OV b:OV B:OV A:"),
    "two of one namespace, the smaller one first": (SECOND, "baAB", "b:O a:OV A:O B:"),
    "the first one out first: the other one's type keeps its name, also afterwards":
        (SECOND, "abABabBA", "a:OV b:OV A:O B:O a:OV b:OV B:OV A:"),
    "two, with a root that holds none": (SECOND, "abxXBA", "a:OV b:OV x:OV X:OV B:OV A:"),
    "two, twice": (SECOND, "abBAabBA", "a:OV b:OV B:OV A: a:OV b:OV B:OV A:"),
    "two namespaces do not go together": (OTHER, "abAB", "a:OV b:failsOV A: B:"),
    "a schema without declarations": (EMPTY, "bBaA", "b: B: a:OV A:"),
}


class Driver:
    def __init__(self, netxml: str, cc: str, cxx: str, library: str, includes: str, driver: str,
                 *flags: str) -> None:
        self.netxml, self.cc, self.cxx, self.driver = netxml, cc, cxx, driver
        self.linked, self.includes, self.flags = Path(library), includes, list(flags)

    def build(self, directory: Path, second: str, cxx: bool) -> Path:
        suffix = ".cpp" if cxx else ".c"
        for name, text in (("first", FIRST), ("second", second)):
            (directory / f"{name}.xsd").write_text(text)
            space = "urn:other" if text == OTHER else "urn:net"
            run([self.netxml, "schema", "compile", f"{name}.xsd", "--network-types", space,
                 f"--lang={'c++' if cxx else 'c'}", "-o", f"{name}{suffix}", "-H",
                 f"{name}_schema.h"], directory)
        language = ["-x", "c++", "-std=c++17"] if cxx else ["-x", "c", "-std=c99"]
        run([self.cxx if cxx else self.cc, *WARNINGS, *self.flags, "-I", self.includes, "-I", ".",
             *language, f"first{suffix}", f"second{suffix}", self.driver, "-x", "none",
             str(self.linked), f"-Wl,-rpath,{self.linked.parent}", "-o", "driver"], directory)
        return directory / "driver"


def run(command: list[str], directory: Path) -> str:
    ran = subprocess.run(command, cwd=directory, capture_output=True, text=True, check=False)
    if ran.returncode != 0:
        raise RuntimeError(f"{' '.join(command)}\n{ran.stdout}{ran.stderr}")
    return ran.stdout


def main() -> int:
    driver = Driver(*sys.argv[1:])
    failures = 0
    for cxx in (False, True):
        programs: dict[str, Path] = {}
        with tempfile.TemporaryDirectory() as work:
            for why, (second, steps, expected) in ROWS.items():
                if second not in programs:
                    directory = Path(work) / str(len(programs))
                    directory.mkdir()
                    programs[second] = driver.build(directory, second, cxx)
                said = run([str(programs[second]), steps], Path(work)).strip()
                if said != expected:
                    print(f"{'C++' if cxx else 'C'}, {why}:\n  {said}\n  expected {expected}")
                    failures += 1
    print(f"{2 * len(ROWS)} sequences of registrations, {failures} of them wrong")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
