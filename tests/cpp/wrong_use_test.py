"""Wrong use of the C++ face does not compile; what is meant instead does.

The cases stand in wrong_use.cpp. The header is compiled beforehand, once for each compiler.
"""
from __future__ import annotations

import os
import re
import subprocess
import tempfile
import unittest
from pathlib import Path

SOURCE = Path(__file__).with_name("wrong_use.cpp")
INCLUDE = Path(os.environ["NETXML_INCLUDE"])
COMPILERS = list(dict.fromkeys(filter(None, os.environ["NETXML_COMPILERS"].split(":"))))
FLAGS = ["-std=c++17", "-fno-exceptions", "-fno-rtti", "-Wall", "-Wextra", "-Wpedantic",
         "-Wconversion", "-Wshadow", "-Wsign-conversion", "-Werror", f"-I{INCLUDE}"]
CASE = re.compile(r"#if IS_WRONG\((\d+)\)  // (.*): (.*)")
EVERY_CASE = -1
# C++20 has no part in the cases; that the header is good C++20 too is seen once.
STANDARDS = ["-std=c++17", "-std=c++20"]


class Case:
    """A case: its number, why it stands there, the message, and the lines of the mistake."""

    def __init__(self, number: int, why: str, message: str, lines: range) -> None:
        self.number, self.why, self.message, self.lines = number, why, message, lines


def cases() -> list[Case]:
    found = []
    lines = SOURCE.read_text().splitlines()
    for index, line in enumerate(lines):
        if match := CASE.fullmatch(line):
            end = lines.index("#else", index)
            found.append(Case(int(match[1]), match[2], match[3], range(index + 2, end + 1)))
    return found


def lines_in(*messages: str) -> set[int]:
    """The lines of the source that messages name."""
    return {int(line) for line in re.findall(rf"{SOURCE.name}:(\d+)", "\n".join(messages))}


class WrongUse(unittest.TestCase):
    """Each compiler on each case."""

    work: Path

    @classmethod
    def setUpClass(cls) -> None:
        directory = tempfile.TemporaryDirectory(prefix="netxml-wrong-use-")
        cls.addClassCleanup(directory.cleanup)
        cls.work = Path(directory.name)

    def compile(self, compiler: str, *options: str) -> tuple[int, str]:
        done = subprocess.run([compiler, *FLAGS, *options], text=True, check=False,
                              capture_output=True, env={**os.environ, "LC_ALL": "C"})
        return done.returncode, done.stderr

    def prepared(self, compiler: str) -> Path:
        """A header that the compiler finds compiled beside it."""
        directory = self.work / str(COMPILERS.index(compiler))
        directory.mkdir()
        header = directory / "beforehand.hpp"
        header.write_text("#include <netxml/netxml.hpp>\n")
        status, printed = self.compile(compiler, "-x", "c++-header", str(header), "-o",
                                       f"{header}.gch")
        self.assertEqual(status, 0, printed)
        return header

    def test_the_cases_are_numbered_through(self) -> None:
        self.assertEqual(sorted(case.number for case in cases()), list(range(1, len(cases()) + 1)))
        self.assertGreaterEqual(len(cases()), 20)

    def test_what_is_wrong_fails_where_it_stands(self) -> None:
        for compiler in COMPILERS:
            header = self.prepared(compiler)
            options = ("-include", str(header), "-fsyntax-only", str(SOURCE))
            status, printed = self.compile(compiler, "-DWRONG=0", *options)
            self.assertEqual(status, 0, f"{compiler}, nothing wrong:\n{printed}")
            clear = self.clear_together(compiler, options)
            for case in cases():
                if case.number in clear:
                    continue
                with self.subTest(compiler=compiler, case=case.number, why=case.why):
                    status, printed = self.compile(compiler, f"-DWRONG={case.number}", *options)
                    self.assertNotEqual(status, 0)
                    self.assertRegex(printed, case.message)
                    self.assertTrue(lines_in(printed) & self.places(case), printed)
                    errors = lines_in(*re.findall(r".* error: ", printed))
                    self.assertLessEqual(errors, self.places(case), printed)

    def clear_together(self, compiler: str, options: tuple[str, ...]) -> set[int]:
        """The cases whose error is to be seen when all are wrong; alone, each costs a second."""
        _, printed = self.compile(compiler, f"-DWRONG={EVERY_CASE}", *options)
        errors = re.split(rf"(?m)^(?=\S*{SOURCE.name}:\d+:\d+: error: )", printed)
        found = set()
        for error in errors[1:]:
            line = int(re.search(rf"{SOURCE.name}:(\d+)", error)[1])
            found |= {case.number for case in cases()
                      if line in case.lines and re.search(case.message, error)}
        self.assertGreater(len(found), len(cases()) // 3, "is there no error at all?")
        return found

    def places(self, case: Case) -> set[int]:
        """Where a compiler may say that a case is wrong: for a handler, also where it is used."""
        lines = set(case.lines)
        if "handler" in case.why:
            text = SOURCE.read_text().splitlines()
            lines.add(next(at for at, line in enumerate(text, 1) if "netxml::read(" in line))
        return lines

    def test_the_header_is_good_in_each_standard(self) -> None:
        for compiler in COMPILERS:
            for standard in STANDARDS:
                with self.subTest(compiler=compiler, standard=standard):
                    status, printed = self.compile(compiler, standard, "-DWRONG=0",
                                                   "-fsyntax-only", str(SOURCE))
                    self.assertEqual((status, printed), (0, ""))


if __name__ == "__main__":
    unittest.main()
