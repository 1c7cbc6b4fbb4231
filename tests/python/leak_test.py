"""Nothing leaks in a long loop: malloc's own count of bytes in use, by mallinfo2().

A leak grows in every window of rounds. A table of the interpreter that grows once does not, so the
window that grows least is looked at.
"""
import ctypes
import gc
import unittest
from collections.abc import Callable
from os import environ

import netxml

ROUNDS = int(environ.get("NETXML_TEST_PYTHON_ROUNDS", "1000"))
WINDOWS = 4
# One lost node a round is ROUNDS * 64 and more.
TOLERANCE = 4 * 1024

SCHEMA = netxml.Schema(environ["NETXML_SCHEMA"])
TEXT = '<a xmlns:p="urn:p" p:x="核心"><b y="1">text 核心</b><c/><![CDATA[d]]></a>'
INVALID = '<network xmlns="urn:example:network" version="1"><核/></network>'


class Counts(ctypes.Structure):
    """struct mallinfo2."""

    _fields_ = [(name, ctypes.c_size_t) for name in (
        "arena", "ordblks", "smblks", "hblks", "hblkhd", "usmblks", "fsmblks", "uordblks",
        "fordblks", "keepcost")]  # fmt: skip


_mallinfo2 = ctypes.CDLL(None).mallinfo2
_mallinfo2.restype = Counts


def in_use() -> int:
    gc.collect()
    counts = _mallinfo2()
    return int(counts.uordblks) + int(counts.hblkhd)


def least_growth(loop: Callable[[], object]) -> int:
    for _ in range(50):  # what is made once is made now
        loop()
    growths = []
    for _ in range(WINDOWS):
        before = in_use()
        for _ in range(ROUNDS):
            loop()
        growths.append(in_use() - before)
    return min(growths)


def parse_and_read() -> None:
    root = netxml.parse(TEXT).root
    for node in root.walk():
        if isinstance(node, netxml.Element):
            _ = (node.attributes, node.declarations, node.namespaces, node.path, node.text)


def parse_errors() -> None:
    texts: list[str | bytes] = ["<a>", "<a>\ue78d</a>", "<a><核>x</a>", b"\xff\xfe<\x00"]
    for text in texts:
        try:
            netxml.parse(text)
        except netxml.ParseError:
            pass


def edit() -> None:
    root = netxml.parse(TEXT).root
    added = root.add("n", "text", namespace="urn:n", prefix="n", before=root.elements()[0])
    added.set("{urn:q}q", "核")
    added.set("{urn:q}q", "心")
    added.unset("{urn:q}q")
    added.text = "other"
    root.add_copy(root)
    root.elements()[0].remove()
    root.add_cdata("d").value = "e"


def refused() -> None:
    root = netxml.parse(TEXT).root
    calls: list[Callable[[], object]] = [
        lambda: root.add("x", prefix="q"),
        lambda: root.add("x", before=root),
        lambda: root.add_copy(root, before=root),
        lambda: root.add("x", "\ue78d"),
    ]
    for call in calls:
        try:
            call()
        except ValueError:
            pass


def write() -> None:
    document = netxml.parse(TEXT)
    document.to_bytes("UTF-16")
    document.to_string()
    document.root.to_bytes()
    document.copy().to_bytes("GBK")
    try:
        netxml.new("a", "😀").to_bytes("GB2312")
    except netxml.WriteError:
        pass


def closed_by_hand() -> None:
    with netxml.parse(TEXT) as document:
        document.root.add("x")


def validate() -> None:
    _ = SCHEMA.validate(netxml.parse(INVALID)).sentence


def register() -> None:
    netxml.Schema(environ["NETXML_SCHEMA"])
    try:
        netxml.Schema(environ["NETXML_FAILING_SCHEMA"])
    except netxml.SchemaError:
        pass


class Leaks(unittest.TestCase):
    def test_the_count_sees_what_is_kept(self) -> None:
        kept: list[object] = []
        self.assertGreater(least_growth(lambda: kept.append(netxml.parse(TEXT))), ROUNDS * 64)
        root = netxml.parse(TEXT).root
        self.assertGreater(least_growth(lambda: root.add("x")), ROUNDS * 64)

    def test_loops(self) -> None:
        loops: list[Callable[[], None]] = [
            parse_and_read, parse_errors, edit, refused, write, closed_by_hand, validate, register
        ]  # fmt: skip
        for loop in loops:
            self.assertLess(least_growth(loop), TOLERANCE, loop.__name__)


if __name__ == "__main__":
    unittest.main()
