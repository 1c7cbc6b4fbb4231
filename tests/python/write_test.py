"""Writing: encodings, declarations, and texts between str and the encoding of trees."""
import unittest

import netxml
from netxml import _library as lib
from netxml import _text

ENCODINGS = ["UTF-8", "UTF-16LE", "UTF-16BE", "GB2312", "UTF-32LE", "UTF-32BE", "UTF-16", "UTF-32",
             "GBK", "GB18030", "UCS-4", "UCS-4BE", "UCS-4LE"]  # fmt: skip
CODECS = {"UCS-4": "utf-32-be", "UCS-4BE": "utf-32-be", "UCS-4LE": "utf-32-le"}


class Writing(unittest.TestCase):
    def test_every_encoding(self) -> None:
        document = netxml.parse("<a>核心</a>")
        for name in ENCODINGS:
            data = document.to_bytes(name)
            expected = f'<?xml version="1.0" encoding="{name}"?><a>核心</a>'
            self.assertEqual(data.decode(CODECS.get(name, name)).lstrip("\ufeff"), expected)
            self.assertEqual(document.encoding, "UTF-8")  # as before
            again = netxml.parse(data)
            self.assertEqual((again.root.text, again.encoding), ("核心", name))
            document.encoding = name.lower()
            self.assertEqual((document.encoding, document.to_bytes()), (name, data))
            document.encoding = "UTF-8"

    def test_without_a_declaration(self) -> None:
        document = netxml.parse("<a><b>é</b></a>")
        self.assertEqual(document.to_string(), "<a><b>é</b></a>")
        written = document.to_bytes("GBK", declaration=False)
        self.assertEqual(written, "<a><b>é</b></a>".encode("gbk"))
        self.assertEqual(document.root.elements()[0].to_bytes(), "<b>é</b>".encode())

    def test_a_character_that_the_encoding_lacks(self) -> None:
        document = netxml.parse("<a>😀</a>")
        for name in ("GB2312", "GBK"):
            with self.assertRaisesRegex(netxml.WriteError, name):
                document.to_bytes(name)
        self.assertEqual(document.encoding, "UTF-8")
        with self.assertRaises(ValueError):
            document.to_bytes("latin1")

    def test_new_documents(self) -> None:
        document = netxml.new("a", " x", namespace="urn:a")
        self.assertEqual(
            document.to_bytes(),
            b'<?xml version="1.0" encoding="UTF-8"?><a xmlns="urn:a">&#x20;x</a>',
        )
        self.assertEqual(netxml.new("a").copy().to_string(), "<a/>")

    def test_a_quote_in_an_attribute_is_written_as_it_is(self) -> None:
        self.assertEqual(netxml.parse("<a b='\"'/>").to_string(), '<a b="""/>')


class Texts(unittest.TestCase):
    def test_every_character_of_the_first_two_planes(self) -> None:
        lost = []
        for code in [*range(0x80, 0xD800), *range(0xE000, 0x20000)]:
            try:
                self.assertEqual(_text.from_tree(_text.to_tree(chr(code))), chr(code))
            except ValueError:
                lost.append(code)
        # The private-use characters that glibc's GB18030 lacks.
        self.assertEqual((len(lost), lost[0], lost[-1]), (24, 0xE78D, 0xE864))

    def test_all_ways_in_and_out(self) -> None:
        text = "".join(map(chr, range(0x1E00, 0x1F00))) + "\u9fb4\u9fbb"  # Python's codec differs
        document = netxml.new("a", text)
        document.root.set("b", text)
        again = netxml.parse(document.to_bytes())
        self.assertEqual((again.root.text, again.root.get("b")), (text, text))

    def test_what_a_failed_conversion_leaves_is_not_in_the_next(self) -> None:
        for _ in range(3):
            with self.assertRaises(ValueError):
                _text.to_tree("核心\ue78d")
            self.assertEqual(_text.from_tree(_text.to_tree("核")), "核")
        with self.assertRaises(netxml.Error):
            _text.from_tree(b"\xff\xff")
        self.assertEqual(_text.from_tree(_text.to_tree("核")), "核")

    def test_a_cut_text_loses_its_last_character_only(self) -> None:
        whole = _text.to_tree("x核😀")
        self.assertEqual([_text.from_cut(whole[:size]) for size in range(len(whole) + 1)],
                         ["", "x", "x", "x核", "x核", "x核", "x核", "x核😀"])  # fmt: skip

    def test_escaping_is_the_librarys(self) -> None:
        for value in ("", " ", "  ", " a ", "\t<&>\n", "\r", 'a"b', "核 ", "&amp;"):
            document = netxml.new("a")
            document.root.set("b", value)
            written = document.to_bytes("GB18030", declaration=False)
            self.assertEqual(written, b'<a b="' + _text.escaped(_text.to_tree(value)) + b'"/>')

    def test_the_encodings_are_the_headers(self) -> None:
        self.assertEqual([lib.name_of_encoding(n).decode() for n in range(13)], ENCODINGS)


if __name__ == "__main__":
    unittest.main()
