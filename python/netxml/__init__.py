"""XML for the management plane: parse, walk, edit, write and validate.

The module stands on the shared library libnetxml.so.1, which the loader finds, or which the
environment variable NETXML_LIBRARY names. All texts are str; they are converted at the edge.

    >>> import netxml
    >>> document = netxml.parse("<config><mtu>1500</mtu></config>")
    >>> document.root.find("mtu").text
    '1500'
"""
from netxml.document import Document, new, parse, parse_file
from netxml.errors import ClosedError, Error, ParseError, RemovedError, SchemaError, WriteError
from netxml.node import Element, Node, Text
from netxml.schema import Schema, Verdict

__all__ = [
    "ClosedError",
    "Document",
    "Element",
    "Error",
    "Node",
    "ParseError",
    "RemovedError",
    "Schema",
    "SchemaError",
    "Text",
    "Verdict",
    "WriteError",
    "new",
    "parse",
    "parse_file",
]
__version__ = "1.0.0"
