"""The documents: what they show is what stands in the files and what the programs print, and no
link of theirs leads nowhere.

    docs_test.py --write [DOCUMENT ...]

puts the content of files and the output of programs into the documents instead
(scripts/docs-refresh).
"""
from __future__ import annotations

import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

from markdown_blocks import (
    CODE,
    Block,
    anchors,
    blocks,
    checked_by,
    commands,
    documents,
    links,
    region,
)

SOURCE = Path(os.environ["NETXML_SOURCE"])
BUILD = Path(os.environ["NETXML_BUILD"])
FLAGS = os.environ.get("NETXML_C_FLAGS", "")
BETWEEN = "\x1e\n"  # between the outputs of a session


class Place:
    """An installed netxml and the programs of the examples, found by their names."""

    def __init__(self) -> None:
        self.root = Path(tempfile.mkdtemp(prefix="netxml-docs-"))
        prefix = self.root / "prefix"
        subprocess.run(
            [os.environ["NETXML_CMAKE"], "--install", BUILD, "--prefix", prefix],
            check=True,
            stdout=subprocess.DEVNULL,
        )
        libraries = prefix / os.environ["NETXML_LIBDIR"]
        programs = self.root / "programs"
        programs.mkdir()
        # The compiler of this build, with its flags: a library with sanitizers needs them.
        compiler = programs / "cc"
        compiler.write_text(f'#!/bin/sh\nexec {os.environ["NETXML_C_COMPILER"]} {FLAGS} "$@"\n')
        compiler.chmod(0o755)
        for name in ("examples", "examples/tutorials", "examples/interfaces"):
            for program in (BUILD / name).iterdir():
                if program.is_file() and os.access(program, os.X_OK) and program.suffix == "":
                    (programs / program.name).symlink_to(program)
        self.environment = {
            "PATH": f"{programs}:{prefix / 'bin'}:{os.environ['PATH']}",
            "LD_LIBRARY_PATH": str(libraries),
            "PKG_CONFIG_PATH": str(libraries / "pkgconfig"),
            "CMAKE_PREFIX_PATH": str(prefix),
            "HOME": str(self.root),
            "LC_ALL": "C.UTF-8",
        }
        self.directories: dict[str, Path] = {}

    def close(self) -> None:
        shutil.rmtree(self.root)

    def directory(self, document: str, sources: str) -> Path:
        """Where those sessions of a document run that name the same directories."""
        key = f"{document} {sources}"
        if key not in self.directories:
            made = self.root / f"work{len(self.directories)}"
            for source in sources.split():
                shutil.copytree(SOURCE / source, made, dirs_exist_ok=True)
            self.directories[key] = made
        return self.directories[key]

    def session(self, document: str, block: Block) -> str:
        """Runs a session; returns it with what the commands print."""
        lines = commands(block.text)
        script = "status=0\n"
        for command in lines:
            # Each command sees the exit status of the one before.
            script += f"(exit $status)\n{command}\nstatus=$?\nprintf '\\036\\n'\n"
        ran = subprocess.run(
            ["bash", "-c", script],
            cwd=self.directory(document, block.source),
            text=True,
            env=self.environment,
            stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE,
            stderr=subprocess.STDOUT,
        )
        result = ""
        for command, output in zip(lines, ran.stdout.split(BETWEEN)):
            result += f"$ {command}\n{output}"
            if not result.endswith("\n"):
                result += "\n"
        return result


def expected(place: Place, document: str, block: Block) -> str:
    """What a block has to be."""
    if block.kind == "file":
        return region(SOURCE, block.source)
    return place.session(document, block) if block.kind == "run in" else block.text


class Documents(unittest.TestCase):
    place: Place
    maxDiff = None

    @classmethod
    def setUpClass(cls) -> None:
        cls.place = Place()
        cls.addClassCleanup(cls.place.close)

    def test_blocks_are_what_the_files_hold_and_the_programs_print(self) -> None:
        ran = 0
        for path in documents(SOURCE):
            name = str(path.relative_to(SOURCE))
            for block in blocks(path.read_text()):
                with self.subTest(f"{name}:{block.line}"):
                    self.assertEqual(block.text, expected(self.place, name, block))
                    ran += block.kind == "run in"
        self.assertGreater(ran, 10)

    def test_every_block_of_code_says_where_it_comes_from(self) -> None:
        for path in documents(SOURCE):
            for block in blocks(path.read_text()):
                where = f"{path.relative_to(SOURCE)}:{block.line}"
                marked = block.kind or block.language not in CODE or checked_by(SOURCE, path)
                self.assertTrue(marked, f"{where}: where does this block come from?")
                self.assertTrue(block.kind != "run in" or commands(block.text), where)

    def test_every_tutorial_is_in_the_list(self) -> None:
        index = (SOURCE / "docs/tutorials/README.md").read_text()
        for path in (SOURCE / "docs/tutorials").glob("*.md"):
            if path.name != "README.md":
                self.assertIn(f"]({path.name})", index)

    def test_every_program_of_the_tutorials_is_shown(self) -> None:
        text = "".join(path.read_text() for path in (SOURCE / "docs").rglob("*.md"))
        for program in (SOURCE / "examples/tutorials").glob("*.c"):
            self.assertIn(f"examples/tutorials/{program.name}", text)

    def test_no_link_leads_nowhere(self) -> None:
        count = 0
        for path in documents(SOURCE):
            for link in links(path.read_text()):
                if re.match(r"[a-z]+:", link):
                    continue  # elsewhere
                file, _, anchor = link.partition("#")
                target = (path.parent / file).resolve() if file else path
                where = f"{path.relative_to(SOURCE)}: {link}"
                self.assertTrue(target.exists(), where)
                self.assertTrue(target.is_relative_to(SOURCE), where)
                if anchor:
                    self.assertIn(anchor, anchors(target.read_text()), where)
                count += 1
        self.assertGreater(count, 30)

    def test_the_mechanism_sees_a_difference(self) -> None:
        wrong = (
            "<!-- run in: examples/tutorials -->\n"
            "```console\n$ first network.xml; exit 3\n$ echo $?\n1\n```\n"
        )
        (block,) = blocks(wrong)
        told = expected(self.place, "nowhere.md", block)
        self.assertIn("interface ge0: mtu 9000\n", told)
        self.assertNotEqual(told, block.text)
        self.assertNotIn("echo", told)  # the session had ended
        self.assertEqual(anchors("# A `b`, c!\n## A `b`, c!\n"), {"a-b-c", "a-b-c-1"})
        self.assertEqual(links("[a](b.md) `[c](d.md)` [e]\n\n[e]: f.md\n"), ["b.md", "f.md"])


def write(names: list[str]) -> None:
    """Puts into the documents what they have to show."""
    place = Place()
    for path in [Path(name).resolve() for name in names] or documents(SOURCE):
        text, name = path.read_text(), str(path.relative_to(SOURCE))
        # Sessions run in their order; they are put in from the end, where places do not move.
        made = [(block, expected(place, name, block)) for block in blocks(text)]
        for block, content in reversed(made):
            text = text[: block.begin] + content + text[block.end :]
        if text != path.read_text():
            path.write_text(text)
            print(f"docs_test: wrote {name}")
    place.close()


if __name__ == "__main__":
    if sys.argv[1:2] == ["--write"]:
        write(sys.argv[2:])
    else:
        unittest.main()
