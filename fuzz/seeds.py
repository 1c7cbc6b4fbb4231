#!/usr/bin/env python3
"""Writes the seed corpus: small inputs for each target, from the lists below.

    fuzz/seeds.py [DIRECTORY]     into DIRECTORY, or fuzz/corpus beside this file

Files there that have another name, such as former findings, are left alone.
"""

import random
import sys
from pathlib import Path

DOCUMENTS: dict[str, str] = {
    "empty-element": "<a/>",
    "nested": "<a><b>one<c/>two</b><b> x </b></a>",
    "attributes": "<a x='1' y=\"&lt;2&amp;&#x20;\" z=''/>",
    "namespaces": "<p:a xmlns:p='urn:a' xmlns='urn:b' p:x='1'><b xmlns=''><p:c/></b></p:a>",
    "xml-prefix": "<a xml:lang='zh'><b xmlns:p='u' xmlns:q='u' p:c='1'/></a>",
    "cdata": "<a><![CDATA[<&]]]]>&gt;<![CDATA[]]></a>",
    "comments": "<?xml version='1.0'?><!-- c --><?t d?><a>x<!-- - -->y<?t?></a><!----> ",
    "doctype": "<!DOCTYPE a [<!ENTITY b 'c'><!-- > -->]><a>t</a>",
    "references": "<a>&#65;&#x4E2D;&lt;&gt;&amp;&quot;&apos;&#13;&#10;</a>",
    "chinese": "<\u4e2d\u6587 \u540d='\u503c'>\u4e0a\u884c\u94fe\u8def\U0001f600</\u4e2d\u6587>",
    "blanks": "<a >\r\n\t<b\n/>  t  </a >\n",
    "mismatch": "<a><b></a></b>",
    "undeclared-prefix": "<a><p:b/></a>",
    "redefined": "<a xmlns:p='u' xmlns:q='u' p:b='' q:b=''/>",
    "not-closed": "<a><b><!-- ",
    "long-text": "<a>" + "text of a line\n" * 80 + "<b>" + "y" * 300 + "<1</a>",
}

ENCODINGS = ["UTF-8", "UTF-16LE", "UTF-16BE", "GB2312", "UTF-32LE", "UTF-32BE", "UTF-16",
             "UTF-32", "GBK", "GB18030", "UCS-4", "UCS-4BE", "UCS-4LE"]

VALUES: dict[str, bytes] = {
    "short": b"\x00\x04\x10-32768",
    "unsigned-long": b"\x00\x0a\x1018446744073709551615",
    "duration": b"\x01\x13\x10P1Y2M3DT4H5M6S",
    "date-time": b"\x01\x14\x102000-02-29T23:59:59.5+14:00",
    "month": b"\x01\x18\x10--12--|01:00",
    "base64": b"\x01\x1f\x10QUJDRA==",
    "uri": b"\x01\x20\x10http://a/b?c",
    "oid": b"\x02\x00\x501.3.6.1.4.1",
    "ipv6": b"\x02\x01\x50::ffff:192.0.2.1",
    "prefix": b"\x02\x02\x502001:db8::/32",
    "prefix-limit": b"\x02\x02\x50::/128",
    "prefix-beyond": b"\x02\x02\x50::/129",
    "ports": b"\x02\x03\x501-3,65535",
    "vlans": b"\x02\x04\x501,2-4094",
    "mask": b"\x02\x05\x50255.255.254.0",
    "enumeration": b"\x03\x01\x07\x50+5\x00005",
    "max-inclusive": b"\x03\x05\x14\x502000-01-01T00:00:00Z\x001999-12-31T23:00:00-02:00",
    "pattern-facet": b"\x03\x0a\x1c\x50^[a-z]+$\x00abc",
    "digits": b"\x04\x0b\x0b\x503\x00-0123",
    "pattern": b"\x05^(a|b){2}[0-9]*\\.?$\x00ab12.\x00ab\x00abc\x00\xd6\x00",
    "states": b"\x05^(a|b)*a(a|b){5}$\x00abababab\x00bbbbbbbbb\x00",
    "split": b"\x06\x00\x04abcdef,g,,h,",
    "language": b"\x06\x00\x10zh-cn",
    "order": b"\x07\x07\xd0\x02\x1d\x17\x3b\x3b\x01\x00\x00\x01\x05\x01\x07\xd0\x03",
}

TOOL: dict[str, tuple[int, list[str], str]] = {
    "check": (0, ["in.xml", "other.xml", "-j", "2"], "<a>\n <b>\n</a>"),
    "check-recursive": (0, ["-r", ".", "--error-format", "json"], "<a><1</a>"),
    "format": (1, ["in.xml", "--indent", "4"], "<a><b>1</b><!-- c --><c/></a>"),
    "format-in-place": (1, ["-i", "in.xml"], "<?xml version='1.0'?>\n<a><b>1</b>\n\n<c/></a>"),
    "format-doctype": (1, ["--drop-doctype", "-i", "in.xml"], "<!DOCTYPE a><a><b/></a>"),
    "format-check": (1, ["--check", "in.xml", "missing.xml"], "<a>\n  <b/>\n</a>\n"),
    "convert": (2, ["-t", "GB18030", "-o", "out.xml", "in.xml"], DOCUMENTS["chinese"]),
    "convert-utf16": (2, ["--to=UTF-16", "-o", "in.xml", "in.xml"], DOCUMENTS["attributes"]),
    "convert-missing": (2, ["-t", "GB2312", "in.xml"], "<a>\U0001f600</a>"),
    "tree": (3, ["in.xml", "--color", "always"], DOCUMENTS["namespaces"]),
    "path": (4, ["in.xml", "-"], "<config><interfaces/><interfaces/></config>"),
    "validate": (5, ["--schema=interfaces", "in.xml", "-q"], "<config><a/></config>"),
    "help": (0, ["--help"], ""),
    "version": (6, ["--version"], ""),
    "mistake": (6, ["nonsense", "--what"], ""),
}


def tool_input(command: int, words: list[str], content: str) -> bytes:
    arguments = b"".join(b"\xf0" + word.encode() + b"\0" for word in words)
    path = b"\x06" if command == 4 else b""
    return bytes([command]) + path + arguments + b"\0\x01" + content.encode()


def marked(text: str, encoding: str) -> bytes:
    return ("\ufeff" + text).encode(encoding)


def inputs() -> dict[str, dict[str, bytes]]:
    choices = random.Random(20)
    made: dict[str, dict[str, bytes]] = {name: {} for name in (
        "sources", "roundtrip", "encodings", "edit", "values", "schema", "output", "tool")}
    for number, (name, text) in enumerate(DOCUMENTS.items()):
        document = text.encode()
        made["sources"][name] = bytes([number, 1, number, 2, 7, (0, 250)[number % 4 == 1]]) + document
        made["roundtrip"][name] = document
    for encoding in ("utf-16-le", "utf-16-be", "utf-32-le", "utf-32-be"):
        made["sources"][encoding] = b"\x03\x05\x01\x02\x01\0" + marked(DOCUMENTS["chinese"], encoding)
    bodies = [DOCUMENTS[name] for name in ("chinese", "references", "namespaces", "cdata")]
    for number, encoding in enumerate(ENCODINGS):
        body = bodies[number % len(bodies)].encode()
        made["encodings"][encoding.lower()] = bytes([number, number % 2]) + body
        target = (5 * number + 6) % len(ENCODINGS)
        made["output"][f"{encoding}-{ENCODINGS[target]}".lower()] = (
            bytes([number, target, number % 3, 1, 2, 3, 5, 9, 0]) + body)
    for number in range(6):
        made["edit"][f"calls-{number}"] = choices.randbytes(60 + 60 * number)
        made["schema"][f"choices-{number}"] = choices.randbytes(8) + b"\0" + choices.randbytes(200)
        made["schema"][f"broken-{number}"] = (
            choices.randbytes(8) + bytes([5 + number % 3]) + choices.randbytes(60))
    made["values"] = VALUES
    made["tool"] = {name: tool_input(*parts) for name, parts in TOOL.items()}
    return made


def main() -> None:
    top = Path(sys.argv[1]) if len(sys.argv) > 1 else Path(__file__).parent / "corpus"
    for target, files in inputs().items():
        (top / target).mkdir(parents=True, exist_ok=True)
        for name, content in files.items():
            (top / target / name).write_bytes(content)


if __name__ == "__main__":
    main()
