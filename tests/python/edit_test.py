"""Editing, beside ElementTree: the same steps give the same tree."""
import copy
import random
import unittest
import xml.etree.ElementTree as ElementTree
from collections.abc import Callable
from os import environ

import netxml
from comparable import of_element_tree, of_netxml

RUNS = int(environ.get("NETXML_TEST_PYTHON_EDITS", "150"))
NAMES = ["a", "interface", "名称", "mtu"]
SPACES = ["", "urn:a", "urn:b", "http://www.w3.org/XML/1998/namespace"]
VALUES = ["1500", "<核心>", " & ", "x\ny", "😀", "]]>", "'"]


class Pair:
    """A document of both kinds. Every step is taken in both."""

    def __init__(self, seed: int) -> None:
        self._random = random.Random(seed)
        text = (
            '<a xmlns="urn:a" xmlns:p="urn:b">'
            '<p:b c="1" p:c="2"><mtu/></p:b><d xmlns="">t</d></a>'
        )
        self.ours = netxml.parse(text)
        self.theirs = ElementTree.fromstring(text)

    def step(self) -> None:
        self._random.choice(
            [self._add, self._add, self._add, self._copy, self._remove, self._set, self._set,
             self._unset, self._text, self._rename]
        )()  # fmt: skip

    def _pick(self) -> tuple[netxml.Element, "ElementTree.Element"]:
        """An element and its twin: the same way down in both."""
        ours, theirs = self.ours.root, self.theirs
        while len(theirs) and self._random.random() < 0.7:
            index = self._random.randrange(len(theirs))
            ours, theirs = ours.elements()[index], theirs[index]
        return ours, theirs

    def _place(
        self, ours: netxml.Element, theirs: "ElementTree.Element"
    ) -> tuple[int, netxml.Node | None]:
        index = self._random.randrange(len(theirs) + 1)
        return index, (ours.elements()[index] if index < len(theirs) else None)

    def _name(self, spaces: list[str]) -> tuple[str, str, str]:
        space, name = self._random.choice(spaces), self._random.choice(NAMES)
        return space, name, f"{{{space}}}{name}" if space else name

    def _add(self) -> None:
        ours, theirs = self._pick()
        index, before = self._place(ours, theirs)
        space, name, tag = self._name(SPACES[:3])
        text = self._random.choice([None, *VALUES])
        prefix = self._random.choice([None, "p", "q"]) if space else None
        ours.add(name, text, namespace=space, prefix=prefix, before=before)
        twin = ElementTree.Element(tag)
        twin.text = text
        theirs.insert(index, twin)

    def _copy(self) -> None:
        source, source_twin = self._pick()
        if sum(1 for _ in source_twin.iter()) > 20:
            return
        ours, theirs = self._pick()
        index, before = self._place(ours, theirs)
        ours.add_copy(source, before=before)
        theirs.insert(index, copy.deepcopy(source_twin))

    def _remove(self) -> None:
        ours, theirs = self._pick()
        if len(theirs):
            index = self._random.randrange(len(theirs))
            ours.elements()[index].remove()
            theirs.remove(theirs[index])

    def _set(self) -> None:
        ours, theirs = self._pick()
        _, _, tag = self._name(SPACES)
        value = self._random.choice(VALUES)
        ours.set(tag, value)
        theirs.set(tag, value)

    def _unset(self) -> None:
        ours, theirs = self._pick()
        if theirs.attrib:
            tag = self._random.choice(sorted(theirs.attrib))
            ours.unset(tag)
            del theirs.attrib[tag]

    def _text(self) -> None:
        ours, theirs = self._pick()
        ours.text = theirs.text = self._random.choice([None, *VALUES])

    def _rename(self) -> None:
        ours, theirs = self._pick()
        name = self._random.choice(NAMES)
        ours.name = name
        theirs.tag = theirs.tag[: theirs.tag.find("}") + 1] + name


def untrimmed(top: "ElementTree.Element") -> list[tuple[str, dict[str, str], str]]:
    return [(e.tag, dict(e.attrib), e.text or "") for e in top.iter()]


class BesideElementTree(unittest.TestCase):
    def test_random_steps(self) -> None:
        for seed in range(RUNS):
            pair = Pair(seed)
            for _ in range(40):
                pair.step()
            ours = [(e.tag, dict(e.attributes), e.text or "") for e in pair.ours.root.walk()
                    if isinstance(e, netxml.Element)]  # fmt: skip
            self.assertEqual(ours, untrimmed(pair.theirs), seed)

    def test_what_is_written_then_is_the_same(self) -> None:
        for seed in range(RUNS):
            pair = Pair(seed)
            for _ in range(40):
                pair.step()
            written = pair.ours.to_bytes()
            read = ElementTree.fromstring(written)
            # A line feed in an attribute is written as it is, and read as a space.
            for element in pair.theirs.iter():
                element.attrib = {k: v.replace("\n", " ") for k, v in element.attrib.items()}
            self.assertEqual(untrimmed(read), untrimmed(pair.theirs), seed)
            again = netxml.parse(written)
            self.assertEqual(again.to_bytes(), written)
            self.assertEqual(of_netxml(pair.ours.root.copy().root), of_netxml(pair.ours.root))


class Rows(unittest.TestCase):
    def setUp(self) -> None:
        self.document = netxml.parse('<a xmlns:p="urn:p"><b/>text<c/><![CDATA[data]]></a>')
        self.root = self.document.root

    def test_add_before(self) -> None:
        last = self.root.elements()[1]
        self.root.add("x", before=self.root.elements()[0])
        self.root.add_text("t", before=last)
        self.root.add_cdata("<d>", before=last)
        self.assertEqual(
            self.document.to_string(),
            '<a xmlns:p="urn:p"><x/><b/>textt<![CDATA[<d>]]><c/><![CDATA[data]]></a>',
        )

    def test_a_refused_addition_leaves_nothing(self) -> None:
        before = self.document.to_bytes()
        other = netxml.parse("<a><b/></a>").root.elements()[0]
        inner = self.root.add("i").add("j")
        refused: list[Callable[[], object]] = [
            lambda: self.root.add("p:x"),
            lambda: self.root.add(""),
            lambda: self.root.add("x", "a\0b"),
            lambda: self.root.add("x", "\ue78d"),
            lambda: self.root.add("x", prefix="q"),
            lambda: self.root.add("x", prefix="q", namespace=""),
            lambda: self.root.add("x", prefix="a b", namespace="u"),
            lambda: self.root.add("x", prefix="xmlns", namespace="u"),
            lambda: self.root.add("x", prefix="xml", namespace="u"),
            lambda: self.root.add("x", before=self.root),
            lambda: self.root.add("x", before=other),
            lambda: self.root.add("x", before=inner),
            lambda: self.root.add_text(""),
            lambda: self.root.add_cdata("]]>"),
            lambda: self.root.set("xmlns", "u"),
            lambda: self.root.set("p:x", "1"),
            lambda: self.root.set("x", "1", prefix="p"),
            lambda: self.root.set("{urn:q}x", "1", prefix="p"),
            lambda: self.root.set("{urn:q}x", "1", prefix="xmlns"),
            lambda: self.root.set("{http://www.w3.org/2000/xmlns/}x", "1"),
            lambda: self.root.set("x", "\0"),
            lambda: self.root.remove(),
            lambda: setattr(self.root, "name", "a:b"),
            lambda: setattr(self.root.children[1], "value", ""),
            lambda: self.root.find("b["),
            lambda: self.root.find("b[0]"),
            lambda: self.root.find(""),
            lambda: self.document.find("a"),
            lambda: netxml.new("a b"),
            lambda: setattr(self.document, "encoding", "latin1"),
        ]
        for number, call in enumerate(refused):
            with self.assertRaises(ValueError, msg=f"row {number}"):
                call()
        inner.document.find("/a/i").remove()  # type: ignore[union-attr]
        self.assertEqual(self.document.to_bytes(), before)
        with self.assertRaises(KeyError):
            self.root.unset("none")
        with self.assertRaises(TypeError):
            self.root.set("x", 5)  # type: ignore[arg-type]

    def test_copies_stay_in_their_namespaces(self) -> None:
        source = netxml.parse('<a xmlns="urn:d" xmlns:p="urn:e"><p:b><c p:x="1"/></p:b></a>')
        target = netxml.parse('<t xmlns="urn:f" xmlns:p="urn:g"><b/></t>')
        copied = target.root.add_copy(source.root.elements()[0], before=target.root.elements()[0])
        assert isinstance(copied, netxml.Element)
        below = copied.elements()[0]
        self.assertEqual((copied.tag, below.tag, dict(below.attributes)),
                         ("{urn:e}b", "{urn:d}c", {"{urn:e}x": "1"}))  # fmt: skip
        plain = target.root.add_copy(netxml.parse("<n><m/></n>").root)
        assert isinstance(plain, netxml.Element)
        self.assertEqual((plain.tag, plain.elements()[0].tag), ("n", "m"))
        ElementTree.fromstring(target.to_bytes())

    def test_an_element_can_be_copied_into_itself(self) -> None:
        self.root.add_copy(self.root)
        self.assertEqual([e.path for e in self.root.find_all("a/b")], ["/a/a[1]/b[1]"])

    def test_text(self) -> None:
        rows: list[tuple[str, str | None, str]] = [
            # before, new text, after
            ("<a/>", "x", "<a>x</a>"),
            ("<a>t<b/>u</a>", "x", "<a>x<b/>u</a>"),
            ("<a>t<![CDATA[v]]>w<b/></a>", "x", "<a>x<b/></a>"),
            ("<a><b/>u</a>", "x", "<a>x<b/>u</a>"),
            ("<a>t</a>", None, "<a/>"),
            ("<a>t</a>", "", "<a/>"),
        ]
        for before, text, after in rows:
            document = netxml.parse(before)
            document.root.text = text
            self.assertEqual(document.to_string(), after)
            self.assertEqual(document.root.text, text or None)

    def test_values(self) -> None:
        text, data = self.root.children[1], self.root.children[3]
        assert isinstance(text, netxml.Text) and isinstance(data, netxml.Text)
        self.assertEqual((text.value, text.is_cdata, data.value, data.is_cdata),
                         ("text", False, "data", True))  # fmt: skip
        text.value = "核心"
        self.assertEqual(self.root.all_text(), "核心data")

    def test_declarations(self) -> None:
        document = netxml.parse(
            """<a xmlns="u&lt;" xmlns:p=' v" xmlns:q="w' p:x='1" y="2' z="3"><b xmlns=""/></a>"""
        )
        root, inner = document.root, document.root.elements()[0]
        self.assertEqual(root.declarations, {None: "u<", "p": ' v" xmlns:q="w'})
        self.assertEqual(root.namespaces, root.declarations)
        self.assertEqual(inner.declarations, {None: ""})
        self.assertEqual(inner.namespaces, {"p": ' v" xmlns:q="w'})
        root.unset('{ v" xmlns:q="w}x')
        root.set("z", "4")
        self.assertEqual(root.attributes, {"z": "4"})
        self.assertEqual((root.prefix, root.namespace, inner.namespace), (None, "u<", None))

    def test_paths(self) -> None:
        document = netxml.parse("<a><b><c>1</c></b><b><c>2</c><c>3</c></b><名/></a>")
        for node in document.root.walk():
            if isinstance(node, netxml.Element):
                self.assertIs(document.find(node.path), node)
        rows: dict[str, list[str]] = {
            "b/c": ["1", "2", "3"], "b[2]/c[1]": ["2"], "b/c[2]": ["3"], "/a/b[1]/c": ["1"],
            "b[3]": [], "/b": [], "/a[2]": [], "c": [],
        }  # fmt: skip
        for path, texts in rows.items():
            self.assertEqual([e.text for e in document.root.find_all(path)], texts, path)
        self.assertEqual(document.find("/a/名"), document.root.elements("名")[0])
        deep = netxml.parse("<abcdefgh>" * 500 + "</abcdefgh>" * 500)
        last = list(deep.root.walk())[-1]
        self.assertEqual(last.path, "/abcdefgh" + "/abcdefgh[1]" * 499)
        self.assertIs(deep.find(last.path), last)


if __name__ == "__main__":
    unittest.main()
