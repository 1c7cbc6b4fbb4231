"""The site as doxygen has made it: every link leads somewhere, and every page fits a phone."""
from __future__ import annotations

import os
import re
import unittest
import urllib.parse
from html.parser import HTMLParser
from pathlib import Path

SOURCE = Path(os.environ["NETXML_SOURCE"])
HTML = Path(os.environ["NETXML_HTML"])


class Page(HTMLParser):
    """The links and anchors of a page, and its text."""

    def __init__(self, path: Path) -> None:
        super().__init__()
        self.links: list[str] = []
        self.anchors: set[str] = set()
        self.metas: dict[str, str] = {}
        self.words: list[str] = []
        self.inside = ""
        self.feed(path.read_text(encoding="utf-8"))

    def handle_starttag(self, tag: str, attrs: list[tuple[str, str | None]]) -> None:
        found = {name: value or "" for name, value in attrs}
        self.inside = tag
        self.anchors |= {found[name] for name in ("id", "name") if name in found}
        self.links += [found[name] for name in ("href", "src") if name in found and tag != "use"]
        if tag == "meta" and "name" in found:
            self.metas[found["name"]] = found.get("content", "")

    def handle_data(self, data: str) -> None:
        if self.inside not in ("script", "style"):
            self.words.append(data)


class Site(unittest.TestCase):
    pages: dict[str, Page]

    @classmethod
    def setUpClass(cls) -> None:
        cls.pages = {path.name: Page(path) for path in HTML.glob("*.html")}

    def test_every_document_has_a_page(self) -> None:
        titles = " ".join((HTML / "pages.html").read_text().split())
        for path in [*SOURCE.glob("docs/*.md"), *SOURCE.glob("docs/tutorials/*.md")]:
            title = re.search(r"^# (.*)$", path.read_text(), re.MULTILINE)
            assert title, path
            self.assertIn(title[1], titles)

    def test_no_link_leads_nowhere(self) -> None:
        count = 0
        for name, page in self.pages.items():
            for link in page.links:
                if re.match(r"[a-z]+:", link) or link in ("", "#"):
                    continue
                file, _, anchor = urllib.parse.unquote(link).partition("#")
                target = file or name
                self.assertTrue((HTML / target).is_file(), f"{name}: {link}")
                if anchor and target in self.pages:
                    self.assertIn(anchor, self.pages[target].anchors, f"{name}: {link}")
                count += 1
        self.assertGreater(count, 1000)

    def test_every_function_is_explained(self) -> None:
        exported = re.findall(
            r"^    (\w+);$", (SOURCE / "cmake/exports.map").read_text(), re.MULTILINE
        )
        text = " ".join(
            word
            for name, page in self.pages.items()
            if name.startswith("group__")
            for word in page.words
        )
        for function in exported:
            self.assertRegex(text, rf"\b{function}\b")

    def test_every_class_of_the_cpp_face_has_a_page(self) -> None:
        self.assertIn("group__cpp.html", self.pages["md_docs_cpp.html"].links)
        self.assertIn("md_docs_cpp.html", self.pages["group__cpp.html"].links)
        self.assertIn('"group__cpp.html"', (HTML / "menudata.js").read_text())
        count = 0
        for path in SOURCE.glob("include/netxml/cpp/*.hpp"):
            bare = re.sub(
                r"^namespace detail \{.*?^\}  // namespace detail",
                "",
                path.read_text(),
                flags=re.DOTALL | re.MULTILINE,
            )
            declared = r"^(class|struct) (?:\[\[nodiscard\]\] )?(\w+)(?: \{| :)"
            for kind, name in re.findall(declared, bare, re.MULTILINE):
                self.assertIn(f"{kind}netxml_1_1{name}.html", self.pages)
                count += 1
        self.assertGreater(count, 20)

    def test_pages_fit_their_screen(self) -> None:
        for name, page in self.pages.items():
            self.assertIn("width=device-width", page.metas.get("viewport", ""), name)
            self.assertIn("netxml.css", page.links, name)
        style = (HTML / "netxml.css").read_text()
        self.assertIn("@media (max-width: 767px)", style)
        self.assertIn("prefers-color-scheme: dark", style)

    def test_the_documents_are_read_as_on_a_forge(self) -> None:
        for name, page in self.pages.items():
            text = " ".join(page.words)
            for mark in (
                "<!-- file: ",
                "<!-- run in: ",
                "`",
                ".md)",
                "{.unparsed}",
                "{#",
                "@ref",
            ):
                self.assertNotIn(mark, text, name)


if __name__ == "__main__":
    unittest.main()
