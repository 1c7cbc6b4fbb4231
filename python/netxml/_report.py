"""From the library's report of a failed parse to an exception."""
import ctypes
import re
from collections.abc import Iterator
from ctypes import c_char_p, c_uint32, c_void_p
from typing import Any

from netxml import _library as lib
from netxml._text import from_cut, tree_can_hold
from netxml.errors import Error, ParseError

# An excerpt may hold anything, a message no such sequence: the last one divides them.
_REPORT = re.compile(r'The Line (\d+) Column (\d+) :"(.*)", (.*)', re.DOTALL)
_CODE_INTERNAL = 1
_CODE_EMPTY = 4

# What the library says of each number, for reports that got lost.
_MESSAGES = {
    1: "internal error.",
    2: "memory allocation failed.",
    4: "document is empty.",
    5: "extra content at the end of the document.",
    9: "invalid character.",
    25: "expecting a ';'.",
    26: "undeclared entity.",
    32: "unsupported encoding.",
    33: 'string not started expecting " or \'.',
    34: 'string not closed expecting " or \'.',
    35: "namespace declare error.",
    38: "unescaped '<' not allowed in attributes values",
    41: "attribute without value.",
    42: "attribute redefined.",
    45: "comment not terminated.",
    46: "no target name.",
    47: "expecting an end tag for style-sheet.",
    57: "parsing XML declaration: '?>' expected.",
    61: "DOCTYPE improperly terminated.",
    62: "sequence ']]>' not allowed in content.",
    63: "CData not finished.",
    65: "expecting a space.",
    68: "name required.",
    72: "start tag expected, '<' not found.",
    75: "expecting a '='.",
    76: "tag name mismatch.",
    77: "tag not finished.",
    78: "standalone accepts only yes or no.",
    80: "comment must not contain '--' (double-hyphen).",
    96: "missing version in text declaration.",
    97: "unsupported version.",
    201: "namespace prefix is not defined.",
    1500: "transition IO stream enCoding error.",
}

_Context = ctypes.POINTER(lib.ParserContext)
_ErrorSlot = ctypes.CFUNCTYPE(None, _Context, c_void_p)  # the format's arguments are left alone
_TextSlot = ctypes.CFUNCTYPE(None, _Context, c_void_p, c_uint32)
_StartSlot = ctypes.CFUNCTYPE(
    None, _Context, c_char_p, c_char_p, c_char_p, c_uint32,
    ctypes.POINTER(c_void_p), c_uint32, c_uint32, ctypes.POINTER(c_void_p),
)  # fmt: skip


def failure_of(text: bytes, report: bytes) -> Exception:
    """The exception for a text that gave no tree, and the report about it."""
    if not text:
        return ParseError("document is empty.", _CODE_EMPTY, 1, 1)
    place = _Place(text)
    if not place.code:
        return Error(f"the document gives no tree: {from_cut(report) or 'no memory'}")
    found = _REPORT.fullmatch(from_cut(report))
    if found:
        return ParseError(found[4], place.code, int(found[1]), int(found[2]), found[3])
    # The excerpt has no form in the encoding of trees, and the report went with it.
    message = _MESSAGES.get(place.code, "unknown error occurred.")
    return ParseError(message, place.code, place.line, place.column)


class _Place:
    """Where a text is wrong, and the number of the error, which the report does not hold.

    The parser's events say it. Where these find nothing, the text is well-formed and only a tree
    cannot hold it: then the events' texts are looked at, one by one.
    """

    def __init__(self, text: bytes) -> None:
        self.code = self.line = self.column = 0
        slots: dict[str, Any] = {"error": _ErrorSlot(self._error)}
        self._run(text, slots)
        if not self.code:
            slots["characters"] = slots["cdata"] = _TextSlot(self._text)
            slots["startElementNs"] = _StartSlot(self._start)
            self._run(text, slots)

    def _run(self, text: bytes, slots: dict[str, Any]) -> None:
        handler = lib.Handler()
        for name, slot in slots.items():
            setattr(handler, name, ctypes.cast(slot, c_void_p))
        if len(text) <= lib.LARGEST_BLOCK:
            lib.parse_by_mem(text, len(text), ctypes.byref(handler))
        else:
            chunk = lib.MemChunk(None, len(text), text)
            chunks = lib.MemList(ctypes.pointer(chunk))
            lib.parse_by_list(ctypes.byref(chunks), ctypes.byref(handler))

    def _error(self, context: Any, _: int) -> None:
        parser = context.contents
        self.code, self.line, self.column = parser.error, parser.line, parser.column

    def _text(self, context: Any, start: int, size: int) -> None:
        if not tree_can_hold(ctypes.string_at(start, size) if size else b""):
            context.contents.error = _CODE_INTERNAL

    def _start(self, context: Any, name: bytes, prefix: bytes | None, space: bytes | None,
               declared: int, declarations: Any, count: int, _: int, attributes: Any) -> None:
        for text in (name, *_listed(declarations, 2 * declared), *_values(attributes, count)):
            if not tree_can_hold(text):
                context.contents.error = _CODE_INTERNAL


def _listed(texts: Any, count: int) -> Iterator[bytes]:
    for index in range(count):
        if texts[index]:
            yield ctypes.string_at(texts[index])


def _values(attributes: Any, count: int) -> Iterator[bytes]:
    """The names and values: of five fields the first, and between the last two."""
    for at in range(0, 5 * count, 5):
        yield ctypes.string_at(attributes[at])
        start, end = attributes[at + 3], attributes[at + 4]
        yield ctypes.string_at(start, end - start)
