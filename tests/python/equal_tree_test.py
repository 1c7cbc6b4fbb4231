"""Parsed trees are ElementTree's, on the same documents."""
import unittest
import xml.etree.ElementTree as ElementTree
from pathlib import Path
from os import environ

import netxml
from comparable import of_element_tree, of_netxml
from random_xml import RandomXml

SOURCE = Path(environ["NETXML_SOURCE"])
DOCUMENTS = int(environ.get("NETXML_TEST_PYTHON_DOCUMENTS", "3000"))
ENCODINGS = ["UTF-8", "UTF-16LE", "UTF-16BE", "UTF-16", "UTF-32LE", "UTF-32BE", "UTF-32", "GB18030"]
# Names that Python has under another one.
CODECS = {"UCS-4": "utf-32-be", "UCS-4BE": "utf-32-be", "UCS-4LE": "utf-32-le"}


class EqualTree(unittest.TestCase):
    def same(self, text: str | bytes, document: netxml.Document) -> None:
        expected = of_element_tree(ElementTree.fromstring(text))
        self.assertEqual(of_netxml(document.root), expected, text)

    def test_random_documents(self) -> None:
        for seed in range(DOCUMENTS):
            text = RandomXml(seed).text()
            self.same(text, netxml.parse(text))

    def test_random_documents_as_they_are_written(self) -> None:
        for seed in range(DOCUMENTS):
            document = netxml.parse(RandomXml(seed).text())
            self.same(document.to_bytes(), document)

    def test_random_documents_in_other_encodings(self) -> None:
        for seed in range(DOCUMENTS // 10):
            text = RandomXml(seed).text()
            expected = of_element_tree(ElementTree.fromstring(text))
            for encoding in ENCODINGS + list(CODECS):
                declared = f'<?xml version="1.0" encoding="{encoding}"?>{text}'
                data = declared.encode(CODECS.get(encoding, encoding))
                document = netxml.parse(data)
                self.assertEqual(of_netxml(document.root), expected, (encoding, text))
                self.assertEqual(document.encoding, encoding)

    def test_documents_of_the_examples(self) -> None:
        files = sorted(SOURCE.glob("examples/**/*.x[ms][ld]"))
        self.assertGreater(len(files), 15)
        for file in files:
            if "gb18030" in file.name:  # not known to ElementTree
                continue
            try:
                ElementTree.parse(file)
            except ElementTree.ParseError:  # some show what is reported
                self.assertRaises(netxml.ParseError, netxml.parse_file, file)
            else:
                self.same(file.read_bytes(), netxml.parse_file(file))

    def test_a_deep_document(self) -> None:
        depth = 20000
        text = "<a>" * depth + "</a>" * depth
        element, levels = netxml.parse(text).root, 1
        while found := element.elements():
            element, levels = found[0], levels + 1
        self.assertEqual(levels, depth)

    def test_what_differs_on_purpose(self) -> None:
        rows = [
            # why                                      text                    children, their texts
            ("comments end a text, which is trimmed",  "<a>b <!-- --> c</a>",  ["b", "c"]),
            ("blanks alone are no text",               "<a> \n </a>",          []),
            ("a blank that is referred to is kept",    "<a>&#x20;b</a>",       [" b"]),
            ("CDATA is kept as it is",                 "<a><![CDATA[ b ]]></a>", [" b "]),
        ]  # fmt: skip
        for why, text, texts in rows:
            children = netxml.parse(text).root.children
            self.assertEqual([c.value for c in children if isinstance(c, netxml.Text)], texts, why)


if __name__ == "__main__":
    unittest.main()
