"""Where documents come from, and every error."""
import tempfile
import unittest
import unittest.mock
from pathlib import Path

import netxml
from netxml import _library, _report

ERRORS: list[tuple[int, int, int, str | bytes]] = [
    # code  line  column  document
    (1,     1,    5,  "<a>\ue78d</a>"),  # well-formed, but no tree can hold it
    (1,     1,    12, "<a><b c='\ue78d'/></a>"),
    (4,     1,    1,  ""),
    (4,     1,    1,  b""),
    (5,     1,    5,  "<a/>b"),
    (9,     2,    1,  "<a>\n\x01</a>"),
    (9,     1,    4,  b"<a>\xf9\x80</a>"),  # whose report has no form in a tree's encoding
    (25,    1,    11, "<a>&#x4e2d</a>"),
    (26,    1,    5,  "<a>&b;</a>"),
    (32,    1,    37, '<?xml version="1.0" encoding="latin1"?><a/>'),
    (33,    1,    6,  "<a b=c/>"),
    (34,    1,    8,  '<a b="c'),
    (35,    1,    14, '<a xmlns:b="" />'),
    (38,    1,    7,  '<a b="<"/>'),
    (42,    1,    15, '<a b="1" b="2"/>'),
    (45,    1,    8,  "<!-- a "),
    (46,    1,    3,  "<?"),
    (47,    1,    5,  "<?a "),
    (57,    1,    21, '<?xml version="1.0" ><a/>'),
    (61,    1,    12, "<!DOCTYPE a"),
    (62,    1,    4,  "<a>]]></a>"),
    (63,    1,    13, "<a><![CDATA["),
    (65,    1,    9,  '<a b="1"c="2"/>'),
    (68,    1,    4,  "<a:"),
    (72,    1,    1,  "text"),
    (75,    1,    5,  "<a b>"),
    (76,    2,    7,  "<a>\n <b></a>"),
    (77,    1,    4,  "<a>"),
    (78,    1,    33, '<?xml version="1.0" standalone="x"?><a/>'),
    (80,    1,    6,  "<!-- -- -->"),
    (96,    1,    7,  "<?xml ?><a/>"),
    (97,    1,    16, '<?xml version="2.0"?><a/>'),
    (201,   1,    5,  "<b:a/>"),
    (1500,  1,    2,  b"\xff\xfe<\x00a\x00>\x00\x00\xd8\x00\xd8<\x00"),
]  # fmt: skip


class Errors(unittest.TestCase):
    def failure(self, source: str | bytes) -> netxml.ParseError:
        with self.assertRaises(netxml.ParseError, msg=source) as raised:
            netxml.parse(source)
        return raised.exception

    def test_every_error_has_its_number_and_place(self) -> None:
        for code, line, column, source in ERRORS:
            error = self.failure(source)
            self.assertEqual((error.code, error.line, error.column), (code, line, column), source)

    def test_the_messages_are_the_librarys(self) -> None:
        for code, _, _, source in ERRORS:
            self.assertEqual(self.failure(source).message, _report._MESSAGES[code])
        # 2 is for memory, and nothing gives 41.
        self.assertEqual(set(_report._MESSAGES) - {row[0] for row in ERRORS}, {2, 41})

    def test_the_place_is_where_the_report_has_it(self) -> None:
        """A report without an excerpt's trouble names the same place as the parser's events."""
        for before in ("", "x" * 300, "核心\n" * 50):
            for _, _, _, source in ERRORS[4:5] + ERRORS[7:]:
                if not isinstance(source, str) or not source.startswith("<a"):
                    continue
                text = f"<z>{before}</z>" + source if source == "<a/>b" else f"<z>{before}{source}"
                error = self.failure(text)
                place = _report._Place(text.encode())
                self.assertEqual((place.line, place.column), (error.line, error.column), text)

    def test_a_tree_failure_is_at_the_same_place_with_and_without_its_report(self) -> None:
        far = self.failure("<a>\n" + "\ue78d" + "y" * 200 + "</a>")
        self.assertIn("yyy", far.excerpt)
        self.assertEqual((far.code, far.line), (1, 2))
        place = _report._Place(("<a>\n" + "\ue78d" + "y" * 200 + "</a>").encode())
        self.assertEqual((place.code, place.line, place.column), (1, far.line, far.column))

    def test_as_text(self) -> None:
        self.assertEqual(str(self.failure("<a>\n <b></a>")), "2:7: tag name mismatch. [76]")

    def test_an_excerpt_may_hold_quotes(self) -> None:
        error = self.failure('<a>", b", <c></a>')
        self.assertEqual((error.message, error.excerpt[:8]), ("tag name mismatch.", '<a>", b"'))

    def test_a_text_above_the_largest_block_goes_through_a_list(self) -> None:
        text = "<a>" + "<b>核心</b>" * 5
        with unittest.mock.patch.object(_library, "LARGEST_BLOCK", 10):
            self.assertEqual(len(netxml.parse(text + "</a>").root.elements()), 5)
            error = self.failure(text)
        self.assertEqual((error.code, error.column), (77, len(text) + 1))


class Sources(unittest.TestCase):
    def test_kinds(self) -> None:
        text = "<a>核心</a>"
        sources: list[str | bytes | bytearray | memoryview] = [
            text, text.encode(), bytearray(text.encode()), memoryview(text.encode())
        ]  # fmt: skip
        for source in sources:
            self.assertEqual(netxml.parse(source).root.text, "核心")

    def test_files(self) -> None:
        with tempfile.TemporaryDirectory() as folder:
            path = Path(folder) / "名.xml"
            path.write_bytes("<a>核心</a>".encode("utf-16"))
            ways = netxml.parse(path), netxml.parse_file(path), netxml.parse_file(str(path))
            for document in ways:
                self.assertEqual((document.root.text, document.encoding), ("核心", "UTF-16LE"))
            with self.assertRaises(FileNotFoundError):
                netxml.parse_file(path.with_suffix(".none"))
            with self.assertRaises(IsADirectoryError):
                netxml.parse(Path(folder))

    def test_a_str_keeps_its_encoding_for_writing(self) -> None:
        for name in ("GBK", "gb18030", "UTF-16LE", "UTF-8"):
            text = f"<?xml version='1.0'  encoding = '{name}' standalone='yes'?><a>核心</a>"
            document = netxml.parse(text)
            self.assertEqual((document.root.text, document.encoding), ("核心", name.upper()))
        self.assertEqual(netxml.parse("\ufeff<a/>").encoding, "UTF-8")

    def test_a_strs_columns_stay(self) -> None:
        with self.assertRaises(netxml.ParseError) as raised:
            netxml.parse('<?xml version="1.0" encoding="GBK"?><a><b></a>')
        self.assertEqual(raised.exception.column, 45)

    def test_refused(self) -> None:
        for wrong in (None, 5, ["<a/>"]):
            with self.assertRaises(TypeError):
                netxml.parse(wrong)  # type: ignore[arg-type]
        with self.assertRaises(ValueError):
            netxml.parse("<a>\ud800</a>")  # half a character


if __name__ == "__main__":
    unittest.main()
