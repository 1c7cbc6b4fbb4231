"""Texts between str and the encoding of trees, GB18030.

ASCII is the same in both. The rest goes through the library's own streams and not through Python's
codec of that name: the two differ in 26 characters of the Basic Multilingual Plane, and what the
library has written must be read as it was meant.
"""
import ctypes
import threading
import weakref

from netxml import _library as lib
from netxml.errors import Error


class _Converter:
    """One direction, for one thread."""

    def __init__(self, source: int, target: int) -> None:
        self._directions = source, target
        self._renew()

    def _renew(self) -> None:
        stream: int | None = lib.create_stream(*self._directions)
        if not stream:
            raise Error("iconv has no GB18030, or memory ran out")
        self._stream = stream
        self._end = weakref.finalize(self, lib.destroy_stream, stream)
        self._end.atexit = False

    def convert(self, text: bytes) -> bytes | None:
        """Returns the text in the target encoding, None where it has no form there."""
        if lib.append_to_stream(self._stream, text, len(text)) != lib.OK:
            self._end()  # what the stream holds back must not get into the next text
            self._renew()
            return None
        size = ctypes.c_size_t()
        block: int | None = lib.look_at_stream(self._stream, ctypes.byref(size))
        converted = ctypes.string_at(block, size.value) if block else b""
        lib.empty_stream(self._stream)
        return converted


class _Converters(threading.local):
    """Both directions of one thread, made when they are first needed."""

    _to_tree: _Converter | None = None
    _from_tree: _Converter | None = None

    def to_tree(self, text: bytes) -> bytes | None:
        if self._to_tree is None:
            self._to_tree = _Converter(lib.UTF_8, lib.GB18030)
        return self._to_tree.convert(text)

    def from_tree(self, text: bytes) -> bytes | None:
        if self._from_tree is None:
            self._from_tree = _Converter(lib.GB18030, lib.UTF_8)
        return self._from_tree.convert(text)


_converters = _Converters()


def to_tree(text: str) -> bytes:
    """Returns a text as a tree holds it. Raises ValueError for what no tree can hold."""
    if not isinstance(text, str):
        raise TypeError(f"a text must be str, not {type(text).__name__}")
    if "\0" in text:
        raise ValueError("a text in a tree cannot hold U+0000")
    if text.isascii():
        return text.encode("ascii")
    converted = _converters.to_tree(text.encode("utf-8"))
    if converted is None:
        raise ValueError(f"a tree cannot hold a character of {text!r}")
    return converted


def tree_can_hold(text: bytes) -> bool:
    """Whether a text in UTF-8 has a form in the encoding of trees."""
    return text.isascii() or _converters.to_tree(text) is not None


def from_tree(text: bytes) -> str:
    """Returns a text of a tree as str."""
    if text.isascii():
        return text.decode("ascii")
    converted = _converters.from_tree(text)
    if converted is None:
        raise Error(f"a tree holds bytes that are no text: {text!r}")
    return converted.decode("utf-8", "replace")


def from_cut(text: bytes) -> str:
    """Returns a text of a tree that may have been cut within its last character."""
    if text.isascii():
        return text.decode("ascii")
    # A stream of its own holds back what is incomplete, and drops it.
    converted = _Converter(lib.GB18030, lib.UTF_8).convert(text)
    return text.decode("gb18030", "replace") if converted is None else converted.decode("utf-8")


def escaped(value: bytes) -> bytes:
    """Returns a value as the library writes it: blanks at its ends are references."""
    head = tail = b""
    if value[:1] and value[0] in _BLANKS:
        head, value = _BLANKS[value[0]], value[1:]
    if value[-1:] and value[-1] in _BLANKS:
        tail, value = _BLANKS[value[-1]], value[:-1]
    value = value.replace(b"&", b"&amp;").replace(b"<", b"&lt;").replace(b">", b"&gt;")
    return head + value + tail


_BLANKS = {0x20: b"&#x20;", 0x09: b"&#x09;", 0x0A: b"&#x0a;", 0x0D: b"&#x0d;"}
