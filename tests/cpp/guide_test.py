"""The C++ shown in README.md, docs/cpp.md and examples/cpp is what the tests compile and run."""
from __future__ import annotations

import os
import re
import shlex
import subprocess
import tempfile
import unittest
from pathlib import Path

SOURCE = Path(__file__).resolve().parents[2]
EXAMPLES = SOURCE / "examples" / "cpp"
PROGRAMS = Path(os.environ["NETXML_PROGRAMS"])
COMPILER = os.environ["NETXML_CXX_COMPILER"]
FLAGS = shlex.split(os.environ["NETXML_CXX_FLAGS"])
LIBRARY = Path(os.environ["NETXML_LIBRARY"])


def blocks(page: Path, language: str) -> list[str]:
    return re.findall(rf"^```{language}\n(.*?)^```$", page.read_text(), re.MULTILINE | re.DOTALL)


def printed_by(*command: str | Path, cwd: Path = EXAMPLES) -> str:
    done = subprocess.run([str(word) for word in command], text=True, cwd=cwd, check=False,
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    return done.stdout


class Guide(unittest.TestCase):
    def test_the_readme_shows_the_example(self) -> None:
        self.assertIn((EXAMPLES / "walk.cpp").read_text(), blocks(SOURCE / "README.md", "cpp"))

    def test_the_example_of_the_readme_walks_and_adds(self) -> None:
        printed = printed_by(PROGRAMS / "walk", SOURCE / "examples/documents/interfaces.xml")
        self.assertRegex(printed, r'\A/config/interfaces\[1\]\n<\?xml version="1.0" encoding="UTF-8'
                                  r'"\?><config .*<hostname>edge-1</hostname></config>\n\Z')

    def test_the_transcript_of_the_examples_is_what_happens(self) -> None:
        [transcript] = blocks(EXAMPLES / "README.md", "console")
        steps = re.findall(r"^\$ (\w+) (.*)\n((?:(?!\$ ).*\n)*)", transcript, re.MULTILINE)
        self.assertEqual(len(steps), 2)
        for program, arguments, expected in steps:
            self.assertEqual(printed_by(PROGRAMS / program, *shlex.split(arguments)), expected)

    def test_the_page_is_a_program_that_prints_what_it_says(self) -> None:
        page = SOURCE / "docs" / "cpp.md"
        code = "".join(blocks(page, "cpp"))
        with tempfile.TemporaryDirectory(prefix="netxml-guide-") as directory:
            source, program = Path(directory) / "guide.cpp", Path(directory) / "guide"
            source.write_text("#include <netxml/netxml.hpp>\n\n#include <iostream>\n\n"
                              f"int main()\n{{\n{code}return 0;\n}}\n")
            built = printed_by(COMPILER, "-std=c++17", "-Wall", "-Wextra", "-Werror", *FLAGS,
                               f"-I{SOURCE}/include", source, "-o", program, LIBRARY,
                               f"-Wl,-rpath,{LIBRARY.parent}")
            self.assertEqual(built, "")
            self.assertEqual(printed_by(program), "".join(blocks(page, "text")))


if __name__ == "__main__":
    unittest.main()
