"""The manual pages: they render without a warning, every exported function has one, and what they
say of functions is what the headers declare, which a compiler tells."""
from __future__ import annotations

import os
import re
import subprocess
import tempfile
import unittest
from pathlib import Path

SOURCE = Path(os.environ["NETXML_SOURCE"])
MANUALS = Path(os.environ["NETXML_MANUALS"])
COMPILER = os.environ["NETXML_C_COMPILER"]


def exported() -> set[str]:
    return set(
        re.findall(r"^    (\w+);$", (SOURCE / "cmake/exports.map").read_text(), re.MULTILINE)
    )


def pages() -> list[Path]:
    """The pages themselves, without the files that lead to one."""
    return [page for page in sorted(MANUALS.glob("man?/*")) if not is_alias(page)]


def is_alias(page: Path) -> bool:
    return page.read_text().startswith(".so ")


def plain(text: str) -> str:
    """A line of roff as it is printed."""
    for escape, shown in (
        (r"\(rs", "\\"),
        (r"\-", "-"),
        (r"\(ti", "~"),
        (r"\(ha", "^"),
        (r"\&", ""),
    ):
        text = text.replace(escape, shown)
    return re.sub(r"\\f[A-Z]", "", text)


def prototypes(page: Path) -> list[str]:
    """The declarations of a page's synopsis."""
    synopsis = page.read_text().split(".SH SYNOPSIS\n")[1].split("\n.SH ")[0]
    lines = [plain(line) for line in synopsis.split("\n") if not line.startswith((".", "/*"))]
    text = re.sub(r"\s+", " ", " ".join(line for line in lines if not line.startswith("#include")))
    return [one.strip() + ";" for one in text.split(";") if one.strip()]


class ManPages(unittest.TestCase):
    def test_there_are_the_pages(self) -> None:
        names = {page.name for page in pages()}
        self.assertLessEqual(
            {
                "netxml.7",
                "netxml-errors.5",
                "netxml-schema.5",
                "netxml_base.3",
                "netxml_dom.3",
                "netxml_io.3",
                "netxml_output.3",
                "netxml_parser.3",
                "netxml_schema.3",
            },
            names,
        )

    def test_they_render_without_a_warning(self) -> None:
        for page in pages():
            for command in (
                ["groff", "-ww", "-k", "-man", "-Tutf8", "-rLL=80n", str(page)],
                ["man", "--warnings", "-E", "UTF-8", "-l", str(page)],
            ):
                ran = subprocess.run(command, capture_output=True, text=True, cwd=MANUALS)
                self.assertEqual((ran.returncode, ran.stderr), (0, ""), page.name)
                self.assertIn("SEE ALSO", re.sub(r".\x08|\x1b\[\d*m", "", ran.stdout), page.name)

    def test_nothing_of_a_template_is_left(self) -> None:
        for page in pages():
            self.assertNotRegex(page.read_text(), r"@[A-Z_]+[ @]|`", page.name)

    def test_every_exported_function_has_a_page(self) -> None:
        aliases = {
            page.stem: page.read_text() for page in MANUALS.glob("man3/*.3") if is_alias(page)
        }
        self.assertEqual(set(aliases), exported())
        for name, text in aliases.items():
            target = text.removeprefix(".so ").strip()
            declared = re.findall(r"(\w+)\(", " ".join(prototypes(MANUALS / target)))
            self.assertIn(name, declared, f"{target} does not show it")

    def test_a_function_leads_to_its_page(self) -> None:
        ran = subprocess.run(
            ["man", "-M", MANUALS, "3", "Schema_ValidateXml"], capture_output=True, text=True
        )
        self.assertEqual((ran.returncode, ran.stderr), (0, ""))
        self.assertIn("netxml_schema - schemas as records", ran.stdout)

    def test_every_prototype_is_that_of_the_header(self) -> None:
        """What is declared twice, a compiler refuses unless both agree."""
        found = [
            one
            for page in MANUALS.glob("man3/netxml_*.3")
            if page.stem != "netxml_base"
            for one in prototypes(page)
        ]
        self.assertEqual(len(found), len(exported()))
        code = "#include <netxml/netxml.h>\n" + "\n".join(found) + "\n"
        self.assertEqual(self.compile(code), "")
        wrong = code.replace("size_t size, char* buffer", "int size, char* buffer")
        self.assertIn("conflicting types for", self.compile(wrong))

    def compile(self, code: str) -> str:
        with tempfile.TemporaryDirectory() as directory:
            file = Path(directory) / "prototypes.c"
            file.write_text(code)
            ran = subprocess.run(
                [
                    COMPILER,
                    "-std=c99",
                    "-Wall",
                    "-fsyntax-only",
                    f"-I{SOURCE / 'include'}",
                    str(file),
                ],
                capture_output=True,
                text=True,
                env={**os.environ, "LC_ALL": "C"},
            )
            return ran.stderr

    def test_every_constant_of_the_headers_is_explained(self) -> None:
        text = "".join(plain(page.read_text()) for page in MANUALS.glob("man3/netxml_*.3"))
        for header in (SOURCE / "include/netxml").glob("*.h"):
            declared = re.findall(
                r"^(?:#define|    )\s*((?:XML|SCHEMA)_[A-Z0-9_]+)(?: = \d+|\s+(?:UINT32_C|\"))",
                header.read_text(),
                re.MULTILINE,
            )
            for name in declared:
                self.assertRegex(text, rf"\b{name}\b", header.name)

    def test_see_also_leads_to_pages(self) -> None:
        known = {path.name for path in MANUALS.glob("man?/*")} | {"netxml.1", "free.3"}
        for page in pages():
            text = page.read_text()
            named = re.findall(r"\\fB([\w\\-]+)\\fR\((\d)\)", text)
            named += re.findall(r"^\.BR ([\w\\-]+) \((\d)\)", text, re.MULTILINE)
            self.assertTrue(named, page.name)
            for name, number in named:
                self.assertIn(f"{plain(name)}.{number}", known, page.name)

    def test_the_codes_are_those_of_the_header(self) -> None:
        page = plain((MANUALS / "man5/netxml-errors.5").read_text())
        header = (SOURCE / "include/netxml/parser.h").read_text()
        for name, number in re.findall(r"(XML_ERROR_\w+) = (\d+)", header):
            if number != "0":
                self.assertIn(f"\n{number} {name}\n", page)
        outcome = (
            (SOURCE / "tools/outcome.hpp").read_text().split("enum class ToolCode")[1].split("}")[0]
        )
        for number in re.findall(r" = (\d+)", outcome):
            self.assertIn(f"\n.B {number}\n", page)

    def test_the_sentences_are_those_of_the_code(self) -> None:
        """docs/validation.md, of which the page is made, and the forms in the library."""
        code = (SOURCE / "schema/validate/result_text.cpp").read_text()
        body = code[code.index("void elementExpected") :]
        forms = [
            form or sentence
            for form, sentence in re.findall(r's\.put\((?:"%s", \{"([^"]+)"\}|"([^"]+)")', body)
        ]
        table = (SOURCE / "docs/validation.md").read_text().split("## What a violation says")[1]
        shown = [
            row.split("|")[3].strip() for row in re.findall(r"^\| \d+ .*", table, re.MULTILINE)
        ]
        self.assertEqual(len(forms), 12)
        for form, sentence in zip(forms, shown, strict=True):
            pattern = re.sub(r"\b(NAMESPACE|NAME|PATH|PARENT|DETAIL)\b", "%s", sentence)
            # Code 6 ends where its form has a quote and a full stop.
            self.assertIn(form, (pattern, pattern + "'."))


if __name__ == "__main__":
    unittest.main()
