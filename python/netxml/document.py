"""Documents: from text to a tree, and back."""
from __future__ import annotations

import ctypes
import os
import re
import threading
import weakref
from pathlib import Path
from types import TracebackType
from typing import NoReturn

from netxml import _access as access
from netxml import _library as lib
from netxml._report import failure_of
from netxml._text import to_tree
from netxml.errors import ClosedError, WriteError
from netxml.node import Element, Node, Text

# The encoding that a str names is that of the bytes it once came from.
_NAMED_ENCODING = re.compile(
    r"""\A\ufeff?<\?xml\s+version\s*=\s*(?:"1\.0"|'1\.0')(\s+encoding\s*=\s*(["'])([^"']*)\2)"""
)


class Document:
    """Owns a tree. It is freed by close(), at the end of a `with`, or with its last handle.

    Documents are made by parse(), parse_file(), new() and Element.copy().

    A document may be used by several threads: each call is whole. Different documents are
    independent; parsing, writing and validating let other threads of Python run.
    """

    __slots__ = ("_root", "_lock", "_handles", "_end", "__weakref__")

    def __init__(self, root: int) -> None:
        self._root = root
        self._lock = threading.RLock()
        self._handles: weakref.WeakValueDictionary[int, Node] = weakref.WeakValueDictionary()
        self._end = weakref.finalize(self, lib.delete_node, root)
        self._end.atexit = False  # the process ends anyway, and other threads may still read

    def __repr__(self) -> str:
        return "<Document, closed>" if self.closed else f"<Document {self.root.name!r}>"

    def __enter__(self) -> Document:
        return self

    def __exit__(
        self,
        kind: type[BaseException] | None,
        value: BaseException | None,
        trace: TracebackType | None,
    ) -> None:
        self.close()

    def __reduce__(self) -> NoReturn:
        raise TypeError("a document cannot be pickled or copied so: see copy(), to_bytes()")

    def close(self) -> None:
        """Frees the tree. Its nodes raise ClosedError from then on. May be called again."""
        with self._lock:
            self._root = 0
            self._end()

    @property
    def closed(self) -> bool:
        """Whether the document has been closed."""
        return not self._root

    @property
    def root(self) -> Element:
        """The document element."""
        with self._lock:
            self._check()
            return self._element(self._root)

    @property
    def encoding(self) -> str:
        """The encoding that the document is written in: of a parsed one, that of its text.

        Assigning takes one of the thirteen names that the library knows (ValueError for others).
        """
        with self._lock:
            self._check()
            name: bytes = lib.name_of_encoding(lib.get_encoding(self._root))
            return name.decode("ascii")

    @encoding.setter
    def encoding(self, name: str) -> None:
        number = encoding_number(name)
        with self._lock:
            self._check()
            lib.set_encoding(self._root, number)

    def find(self, path: str) -> Element | None:
        """The first element at a path that begins with "/", or None; see Element.find_all()."""
        return self.root.find(_absolute(path))

    def find_all(self, path: str) -> list[Element]:
        """The elements at a path that begins with "/"; see Element.find_all()."""
        return self.root.find_all(_absolute(path))

    def copy(self) -> Document:
        """A copy of the whole document."""
        return self.root.copy()

    def to_bytes(self, encoding: str | None = None, *, declaration: bool = True) -> bytes:
        """The document as XML text, in its own encoding or in another one.

        Raises WriteError where the encoding lacks a character.
        """
        flags = 0 if declaration else lib.WITHOUT_DECLARATION
        number = None if encoding is None else encoding_number(encoding)
        with self._lock:
            self._check()
            before = lib.get_encoding(self._root)
            if number is not None:
                lib.set_encoding(self._root, number)
            try:
                return self._written(self._root, flags)
            finally:
                lib.set_encoding(self._root, before)

    def to_string(self) -> str:
        """The document as XML text without a declaration."""
        return self.to_bytes("UTF-8", declaration=False).decode("utf-8")

    # -- For the handles; the caller holds the lock ----------------------------------------------

    def _check(self) -> None:
        if not self._root:
            raise ClosedError("the document has been closed")

    def _node(self, pointer: int) -> Node:
        """The one handle of a node."""
        node = self._handles.get(pointer)
        if node is None:
            kind = Element if lib.get_type(pointer) == lib.ELEMENT else Text
            node = self._handles[pointer] = kind(self, pointer)
        return node

    def _element(self, pointer: int) -> Element:
        node = self._node(pointer)
        assert isinstance(node, Element)
        return node

    def _forget(self, top: int) -> None:
        """Makes the handles of a subtree that is about to be deleted raise."""
        for pointer in access.subtree(top):
            node = self._handles.pop(pointer, None)
            if node is not None:
                node._pointer = 0

    def _written(self, pointer: int, flags: int) -> bytes:
        text, size = ctypes.c_void_p(), ctypes.c_size_t()
        if lib.to_text(pointer, flags, ctypes.byref(text), ctypes.byref(size)) != lib.OK:
            raise WriteError(f"the document cannot be written in {self.encoding}")
        try:
            return ctypes.string_at(text, size.value)
        finally:
            lib.free(text)


def encoding_number(name: str) -> int:
    """The library's number of an encoding; ValueError for a name that it does not know."""
    number: int = lib.encoding_of_name(name.encode("ascii", "replace"))
    if number == lib.NO_ENCODING:
        raise ValueError(f"netxml does not know the encoding {name!r}")
    return number


def parse(source: bytes | bytearray | memoryview | str | os.PathLike[str]) -> Document:
    """Parses a document: its text as bytes or str, or the file that a path object names.

    Bytes may be in any of the thirteen encodings. Of a str that names an encoding, that one becomes
    the document's (it is written in it); the text is taken as it is. A path that is a str goes to
    parse_file(). Raises ParseError, and OSError where a file cannot be read.
    """
    if isinstance(source, str):
        return _parse_str(source)
    if isinstance(source, os.PathLike):
        return parse_file(source)
    return Document(_build(bytes(memoryview(source))))


def parse_file(path: str | os.PathLike[str]) -> Document:
    """Parses the document in a file; see parse()."""
    return Document(_build(Path(path).read_bytes()))


def new(name: str, text: str | None = None, *, namespace: str | None = None) -> Document:
    """Makes a document of one element, in UTF-8; `namespace` becomes the default namespace."""
    local = access.checked_name(name)
    space = to_tree(namespace) if namespace else b""
    value = to_tree(text) if text else b""
    pointer = access.made(lib.create_element(local))
    try:
        if space:
            access.done(lib.declare(pointer, None, space))
        if value:
            lib.add_child(pointer, access.made(lib.create_text(value)))
        access.done(lib.set_root(pointer))
    except BaseException:
        lib.delete_node(pointer)
        raise
    return Document(pointer)


def _parse_str(text: str) -> Document:
    named = _NAMED_ENCODING.match(text)
    number = lib.encoding_of_name(named[3].encode("ascii", "replace")) if named else lib.NO_ENCODING
    if named and number != lib.NO_ENCODING:
        # Blanks in its place keep the columns as they are.
        start, end = named.span(1)
        text = text[:start] + " " * (end - start) + text[end:]
    document = Document(_build(text.encode("utf-8")))
    if number != lib.NO_ENCODING:
        lib.set_encoding(document._root, number)
    return document


def _build(text: bytes) -> int:
    """Parses a text into a tree, or raises what is wrong with it."""
    report = ctypes.create_string_buffer(1024)
    if len(text) <= lib.LARGEST_BLOCK:
        root: int | None = lib.build_by_mem(text, len(text), len(report), report)
    else:
        chunk = lib.MemChunk(None, len(text), text)
        chunks = lib.MemList(ctypes.pointer(chunk))
        root = lib.build_by_list(ctypes.byref(chunks), len(report), report)
    if root:
        return root
    raise failure_of(text, report.value)


def _absolute(path: str) -> str:
    if not path.startswith("/"):
        raise ValueError(f'the path {path!r} does not begin with "/"')
    return path
