"""What the module raises besides ValueError, TypeError, KeyError, OSError and MemoryError."""


class Error(Exception):
    """The base of the module's own exceptions."""


class ParseError(Error):
    """A document is not well-formed, or a tree cannot hold it."""

    def __init__(self, message: str, code: int, line: int, column: int, excerpt: str = "") -> None:
        super().__init__(message, code, line, column, excerpt)
        self.message = message
        """What is wrong, as a sentence in lower case."""
        self.code = code
        """The number of the error, as netxml/parser.h lists them (XML_ERROR_...)."""
        self.line = line
        """From 1."""
        self.column = column
        """In characters, from 1."""
        self.excerpt = excerpt
        """Some of the input around the place."""

    def __str__(self) -> str:
        return f"{self.line}:{self.column}: {self.message} [{self.code}]"


class RemovedError(Error):
    """A node is used that has been removed from its document."""


class ClosedError(Error):
    """A document, or a node of it, is used after Document.close()."""


class WriteError(Error):
    """A document cannot be written: its encoding lacks a character, or is not supported."""


class SchemaError(Error):
    """A shared object is no compiled schema, or validation met a mistake in the schema."""
