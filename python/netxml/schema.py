"""Schemas that `netxml schema compile` has written in C, as shared objects."""
from __future__ import annotations

import ctypes
import os
import threading
from collections.abc import Iterator
from contextlib import contextmanager
from dataclasses import dataclass
from functools import cache
from pathlib import Path

from netxml import _access as access
from netxml import _library as lib
from netxml._text import from_cut, from_tree
from netxml.document import Document
from netxml.errors import SchemaError
from netxml.node import Element


class _Gate:
    """Lets many validate or one register: what a registration changes is partly process-wide."""

    def __init__(self) -> None:
        self._changed = threading.Condition()
        self._validating = 0

    @contextmanager
    def validating(self) -> Iterator[None]:
        with self._changed:
            self._validating += 1
        try:
            yield
        finally:
            with self._changed:
                self._validating -= 1
                self._changed.notify_all()

    @contextmanager
    def registering(self) -> Iterator[None]:
        with self._changed:
            self._changed.wait_for(lambda: self._validating == 0)
            yield


_gate = _Gate()

# Shared objects are never unloaded, and what they register stays as long.
_registered: dict[tuple[str, str], lib.SchemaRoot] = {}


@dataclass(frozen=True)
class Verdict:
    """What a validation found first. It is true if the document is valid."""

    code: int
    """0 if valid, else the number of the violation (netxml/schema.h, Schema_ErrorCode)."""
    sentence: str = ""
    """What is wrong, with the path of the place; empty if valid."""
    path: str = ""
    """The path of the element that is wrong; for codes 1, 5 and 8 of its parent."""
    element: str | None = None
    """The name of the element that is missing (1) or occurs too often (5), or has what 7 says."""
    attribute: str | None = None
    """The name of the attribute that is missing (2), wrong (4) or unexpected (7)."""
    detail: str = ""
    """For codes 3 and 4, what is wrong with the value."""

    def __bool__(self) -> bool:
        return self.code == 0


class Schema:
    """A schema that documents are validated against, by any number of threads.

    `path` is a shared object of what `netxml schema compile` wrote, linked with -lnetxml. `prefix`
    is what the tool calls --prefix: "config" for config_schema_register(). Without it the stem of
    `path` is taken, less "lib" in front and "_schema" behind.

    A schema stays registered until the process ends, and schemas of one file share that: a file
    that is compiled again needs another name. Raises SchemaError, also where a schema with network
    types of another namespace is registered already.
    """

    def __init__(self, path: str | os.PathLike[str], prefix: str | None = None) -> None:
        self.path = Path(path)
        """Where the shared object is."""
        stem = self.path.name.split(".")[0]
        self.prefix = prefix or stem.removeprefix("lib").removesuffix("_schema")
        """The prefix of its functions."""
        key = os.path.realpath(self.path), self.prefix
        with _gate.registering():
            if key not in _registered:
                _registered[key] = _register(key[0], self.prefix)
            self._root = _registered[key]

    def __repr__(self) -> str:
        return f"<Schema {self.prefix!r}>"

    def validate(self, what: Document | Element) -> Verdict:
        """Validates a document, or an element as if it were one.

        Raises SchemaError where the schema cannot be used (or memory runs out).
        """
        element = what.root if isinstance(what, Document) else what
        result = lib.ValidateResult()
        with element._document._lock, _gate.validating():
            pointer = element._use()
            status = lib.validate(pointer, ctypes.byref(self._root), ctypes.byref(result))
            if status != lib.OK:
                raise SchemaError(f"the schema {self.prefix!r} is broken, or memory ran out")
            return _verdict(result)


@cache
def _loaded(path: str) -> ctypes.CDLL:
    return ctypes.CDLL(path)


def _register(path: str, prefix: str) -> lib.SchemaRoot:
    try:
        register = _loaded(path)[f"{prefix}_schema_register"]
    except (OSError, AttributeError) as failure:
        raise SchemaError(f"{path} is no compiled schema {prefix!r}: {failure}") from failure
    register.restype = ctypes.c_uint32
    register.argtypes = (ctypes.POINTER(lib.SchemaRoot),)
    root = lib.SchemaRoot()
    if lib.init_root(ctypes.byref(root)) != lib.OK or register(ctypes.byref(root)) != lib.OK:
        lib.exit_root(ctypes.byref(root))
        raise SchemaError(
            f"{path} cannot be registered: network types belong to one namespace at a"
            " time, or memory ran out"
        )
    return root


def _verdict(result: lib.ValidateResult) -> Verdict:
    if result.code == 0:
        return Verdict(0)
    buffer = ctypes.create_string_buffer(4096)
    lib.describe(ctypes.byref(result), len(buffer), buffer)
    return Verdict(
        code=result.code,
        sentence=from_cut(buffer.value),
        path=access.path(result.node) if result.node else "",
        element=_optional(result.elementName),
        attribute=_optional(result.attrName),
        detail=from_cut(result.detail),
    )


def _optional(text: bytes | None) -> str | None:
    return None if text is None else from_tree(text)
