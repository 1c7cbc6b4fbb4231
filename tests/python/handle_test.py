"""Handles of what is gone raise; none crashes."""
import copy
import gc
import pickle
import unittest
import weakref
from collections.abc import Callable
from typing import Any

import netxml

TEXT = '<a x="1"><b y="2"><c>t</c></b><d/></a>'


def element_uses(element: netxml.Element) -> dict[str, Callable[[], Any]]:
    """Every way to use an element."""
    return {
        "parent": lambda: element.parent,
        "path": lambda: element.path,
        "remove": element.remove,
        "iter": lambda: list(element),
        "name": lambda: element.name,
        "name=": lambda: setattr(element, "name", "n"),
        "namespace": lambda: element.namespace,
        "prefix": lambda: element.prefix,
        "tag": lambda: element.tag,
        "declarations": lambda: element.declarations,
        "namespaces": lambda: element.namespaces,
        "attributes": lambda: element.attributes,
        "get": lambda: element.get("x"),
        "set": lambda: element.set("x", "1"),
        "set in a namespace": lambda: element.set("{u}x", "1"),
        "unset": lambda: element.unset("y"),
        "children": lambda: element.children,
        "elements": lambda: element.elements(),
        "walk": lambda: list(element.walk())[1:],
        "text": lambda: element.text,
        "text=": lambda: setattr(element, "text", "t"),
        "all_text": element.all_text,
        "find": lambda: element.find("c"),
        "find from the root": lambda: element.find("/a"),
        "find_all": lambda: element.find_all("c"),
        "add": lambda: element.add("x"),
        "add_text": lambda: element.add_text("x"),
        "add_cdata": lambda: element.add_cdata("x"),
        "add_copy": lambda: element.add_copy(netxml.new("n").root),
        "add_copy of it": lambda: netxml.new("n").root.add_copy(element),
        "add before it": lambda: element.document.root.add("x", before=element),
        "copy": element.copy,
        "to_bytes": element.to_bytes,
    }


def text_uses(text: netxml.Text) -> dict[str, Callable[[], Any]]:
    return {
        "value": lambda: text.value,
        "value=": lambda: setattr(text, "value", "v"),
        "is_cdata": lambda: text.is_cdata,
        "parent": lambda: text.parent,
        "path": lambda: text.path,
        "remove": text.remove,
    }


class Handles(unittest.TestCase):
    def setUp(self) -> None:
        self.document = netxml.parse(TEXT)
        self.root = self.document.root
        self.b = self.root.elements()[0]
        self.c = self.b.elements()[0]
        text = self.c.children[0]
        assert isinstance(text, netxml.Text)
        self.text = text

    def all_raise(self, kind: type[Exception], uses: dict[str, Callable[[], Any]]) -> None:
        for name, use in uses.items():
            with self.assertRaises(kind, msg=name):
                use()

    def test_the_table_of_uses_is_complete(self) -> None:
        def public(what: type) -> set[str]:
            names = {name for name in dir(what) if not name.startswith("_")}
            return names - {"document", "removed"}

        used = {name.split(" ")[0].rstrip("=") for name in element_uses(self.b)} - {"iter"}
        self.assertEqual(used, public(netxml.Element))
        used = {name.rstrip("=") for name in text_uses(self.text)}
        self.assertEqual(used, public(netxml.Text))

    def test_every_use_works_while_the_node_is_there(self) -> None:
        for name in element_uses(self.b):
            document = netxml.parse(TEXT)
            element_uses(document.root.elements()[0])[name]()
        for name, use in text_uses(self.text).items():
            use()

    def test_a_removed_subtree(self) -> None:
        self.b.remove()
        for element in (self.b, self.c):
            self.assertTrue(element.removed)
            self.all_raise(netxml.RemovedError, element_uses(element))
            self.assertEqual(repr(element), "<Element, removed>")
        self.all_raise(netxml.RemovedError, text_uses(self.text))
        self.assertEqual(repr(self.text), "<Text, removed>")
        self.assertEqual(self.document.to_string(), '<a x="1"><d/></a>')
        self.assertFalse(self.root.removed)

    def test_a_closed_document(self) -> None:
        with self.document:
            pass
        for element in (self.root, self.b):
            self.assertTrue(element.removed)
            self.all_raise(netxml.ClosedError, element_uses(element))
        self.all_raise(netxml.ClosedError, text_uses(self.text))
        document = self.document
        self.all_raise(netxml.ClosedError, {
            "root": lambda: document.root,
            "encoding": lambda: document.encoding,
            "encoding=": lambda: setattr(document, "encoding", "GBK"),
            "find": lambda: document.find("/a"),
            "find_all": lambda: document.find_all("/a"),
            "copy": document.copy,
            "to_bytes": document.to_bytes,
            "to_string": document.to_string,
        })  # fmt: skip
        self.assertEqual((document.closed, repr(document)), (True, "<Document, closed>"))
        document.close()  # once more does nothing

    def test_texts_that_an_assignment_replaces(self) -> None:
        self.c.text = "u"
        self.all_raise(netxml.RemovedError, text_uses(self.text))

    def test_a_handle_keeps_its_document(self) -> None:
        reference = weakref.ref(self.document)
        del self.document, self.root, self.b, self.c
        gc.collect()
        self.assertEqual((self.text.value, self.text.path), ("t", "/a/b[1]/c[1]"))
        self.assertIsNotNone(reference())
        del self.text
        gc.collect()
        self.assertIsNone(reference())

    def test_one_handle_a_node(self) -> None:
        self.assertIs(self.root.elements()[0], self.b)
        self.assertIs(self.b.parent, self.root)
        self.assertIsNone(self.root.parent)
        self.assertEqual(len({self.b, self.document.find("/a/b"), self.c.parent}), 1)
        # A new node at the address of a removed one gets a handle of its own.
        gone = [self.root.add("n") for _ in range(50)]
        for element in gone:
            element.remove()
        fresh = [self.root.add("n") for _ in range(50)]
        self.assertFalse(set(map(id, gone)) & set(map(id, fresh)))
        self.assertTrue(all(e.removed for e in gone) and all(e.name == "n" for e in fresh))

    def test_handles_cannot_be_doubled(self) -> None:
        calls: list[Callable[[Any], Any]] = [copy.copy, copy.deepcopy, pickle.dumps]
        for call in calls:
            for what in (self.document, self.b, self.text):
                with self.assertRaises(TypeError):
                    call(what)

    def test_a_walk_whose_node_is_removed_ends_in_an_error(self) -> None:
        walk = self.root.walk()
        self.assertEqual([next(walk), next(walk)], [self.root, self.b])
        self.b.remove()
        with self.assertRaises(netxml.RemovedError):
            next(walk)

    def test_children_may_be_removed_while_they_are_gone_through(self) -> None:
        for child in self.root:
            child.remove()
        self.assertEqual(self.document.to_string(), '<a x="1"/>')

    def test_representations(self) -> None:
        self.assertEqual([repr(x) for x in (self.document, self.b, self.text)],
                         ["<Document 'a'>", "<Element /a/b[1]>", "<Text 't'>"])  # fmt: skip


if __name__ == "__main__":
    unittest.main()
