"""Changes a document in one place, in its text, so that everything else stays as it was."""

from __future__ import annotations

import random
import re
import xml.parsers.expat
from dataclasses import dataclass

_ATTRIBUTE = re.compile(rb"\s+([^\s=/>]+)\s*=\s*(\"[^\"]*\"|'[^']*')")
_NAME = re.compile(rb"</?([^\s/>]+)")
_VALUES = [b"", b"0", b"-1", b"1.5", b"x", b"a b", b" 7 ", b"true", b"2024-02-30", b"a:b", b"NaN"]


@dataclass
class Span:
    """Where an element lies in the text; an empty-element tag has no content."""

    start: int
    content: int  # behind the start tag
    content_end: int
    end: int
    parent: int | None
    children: int = 0


def spans_of(text: bytes) -> list[Span]:
    spans: list[Span] = []
    open_spans: list[int] = []
    parser = xml.parsers.expat.ParserCreate()

    def start(_name: str, _attributes: dict[str, str]) -> None:
        begin = parser.CurrentByteIndex
        parent = open_spans[-1] if open_spans else None
        if parent is not None:
            spans[parent].children += 1
        open_spans.append(len(spans))
        spans.append(Span(begin, _tag_end(text, begin), -1, -1, parent))

    def end(_name: str) -> None:
        span = spans[open_spans.pop()]
        if text[span.content - 2 : span.content] == b"/>":
            span.content_end = span.end = span.content
            return
        span.content_end = parser.CurrentByteIndex
        span.end = text.index(b">", span.content_end) + 1

    parser.StartElementHandler = start
    parser.EndElementHandler = end
    parser.Parse(text, True)
    return spans


def _tag_end(text: bytes, at: int) -> int:
    quote = 0
    for i in range(at, len(text)):
        if quote:
            quote = 0 if text[i] == quote else quote
        elif text[i] in b"\"'":
            quote = text[i]
        elif text[i] == ord(">"):
            return i + 1
    raise ValueError("a tag without its end")


class Mutator:
    """One change to a document; gives the text and the name of the change, or nothing."""

    def __init__(self, chance: random.Random) -> None:
        self.chance = chance

    def mutated(self, text: bytes) -> tuple[bytes, str] | None:
        changes = [
            self._delete,
            self._delete,
            self._repeat,
            self._swap,
            self._rename,
            self._insert,
            self._lose_attribute,
            self._change_attribute,
            self._add_attribute,
            self._change_text,
            self._change_text,
            self._add_text,
            self._empty,
            self._move_namespace,
        ]
        spans = spans_of(text)
        for _ in range(10):
            change = self.chance.choice(changes)
            result = change(text, spans)
            if result is not None and result != text:
                return result, change.__name__.strip("_").replace("_", " ")
        return None

    def _inner(self, spans: list[Span]) -> Span | None:
        return self.chance.choice(spans[1:]) if len(spans) > 1 else None

    def _delete(self, text: bytes, spans: list[Span]) -> bytes | None:
        span = self._inner(spans)
        return text[: span.start] + text[span.end :] if span else None

    def _repeat(self, text: bytes, spans: list[Span]) -> bytes | None:
        span = self._inner(spans)
        if not span:
            return None
        times = self.chance.choice((1, 1, 1, 2, 3))
        return text[: span.end] + text[span.start : span.end] * times + text[span.end :]

    def _swap(self, text: bytes, spans: list[Span]) -> bytes | None:
        first = self._inner(spans)
        behind = [s for s in spans if first and s.parent == first.parent and s.start >= first.end]
        if not first or not behind:
            return None
        second = self.chance.choice(behind[:3])
        return (
            text[: first.start]
            + text[second.start : second.end]
            + text[first.end : second.start]
            + text[first.start : first.end]
            + text[second.end :]
        )

    def _rename(self, text: bytes, spans: list[Span]) -> bytes | None:
        span = self._inner(spans)
        if not span:
            return None
        other = self._name(text, self.chance.choice(spans)) if self.chance.random() < 0.7 else b"zz"
        return self._renamed(text, span, other)

    @staticmethod
    def _name(text: bytes, span: Span) -> bytes:
        match = _NAME.match(text, span.start)
        assert match
        return match[1]

    def _renamed(self, text: bytes, span: Span, name: bytes) -> bytes:
        old = self._name(text, span)
        start_tag = b"<" + name + text[span.start + 1 + len(old) : span.content]
        inside = text[span.content : span.content_end]
        end_tag = b"</" + name + b">" if span.end != span.content_end else b""
        return text[: span.start] + start_tag + inside + end_tag + text[span.end :]

    def _insert(self, text: bytes, spans: list[Span]) -> bytes | None:
        span = self.chance.choice(spans)
        other = self.chance.choice(spans[1:]) if len(spans) > 1 else None
        piece = text[other.start : other.end] if other and self.chance.random() < 0.7 else b"<zz/>"
        if span.end == span.content_end:
            return None
        return text[: span.content_end] + piece + text[span.content_end :]

    def _attributes(self, text: bytes, spans: list[Span]) -> list[re.Match[bytes]]:
        matches: list[re.Match[bytes]] = []
        for span in spans:
            name = _NAME.match(text, span.start)
            at = name.end() if name else span.content
            while match := _ATTRIBUTE.match(text, at, span.content):
                matches.append(match)
                at = match.end()
        return [m for m in matches if not m[1].startswith((b"xmlns", b"xsi:schema", b"xsi:noName"))]

    def _lose_attribute(self, text: bytes, spans: list[Span]) -> bytes | None:
        found = self._attributes(text, spans)
        if not found:
            return None
        match = self.chance.choice(found)
        return text[: match.start()] + text[match.end() :]

    def _change_attribute(self, text: bytes, spans: list[Span]) -> bytes | None:
        found = self._attributes(text, spans)
        if not found:
            return None
        match = self.chance.choice(found)
        value = match[2][1:-1]
        return text[: match.start(2) + 1] + self._other_value(value) + text[match.end(2) - 1 :]

    def _add_attribute(self, text: bytes, spans: list[Span]) -> bytes | None:
        span = self.chance.choice(spans)
        match = _NAME.match(text, span.start)
        assert match
        return text[: match.end()] + b' zz="1"' + text[match.end() :]

    def _other_value(self, value: bytes) -> bytes:
        kind = self.chance.randrange(4)
        if kind == 0 or not value:
            return self.chance.choice(_VALUES)
        at = self.chance.randrange(len(value))
        if b"&" in value:
            return b"zz"
        if max(value) > 127:
            return value + b"z"
        if kind == 1:
            return value[:at] + value[at + 1 :]
        if kind == 2:
            return value[: at + 1] + value[at : at + 1] + value[at + 1 :]
        return value[:at] + bytes([self.chance.choice(b"059azAZ.-+ _:")]) + value[at + 1 :]

    def _change_text(self, text: bytes, spans: list[Span]) -> bytes | None:
        leaves = [s for s in spans if s.children == 0 and s.content_end > s.content]
        if not leaves:
            return None
        span = self.chance.choice(leaves)
        inside = text[span.content : span.content_end]
        if b"<" in inside:
            return None
        return text[: span.content] + self._other_value(inside) + text[span.content_end :]

    def _add_text(self, text: bytes, spans: list[Span]) -> bytes | None:
        span = self.chance.choice(spans)
        if span.end == span.content_end:
            return None
        return text[: span.content] + b"some text" + text[span.content :]

    def _empty(self, text: bytes, spans: list[Span]) -> bytes | None:
        span = self.chance.choice(spans)
        return text[: span.content] + text[span.content_end :]

    def _move_namespace(self, text: bytes, spans: list[Span]) -> bytes | None:
        span = self._inner(spans)
        if not span:
            return None
        name = self._name(text, span)
        plain = name.split(b":")[-1]
        space = self.chance.choice((b"", b"urn:other", b"urn:t"))
        renamed = self._renamed(text, span, plain)
        at = span.start + 1 + len(plain)
        return renamed[:at] + b' xmlns="' + space + b'"' + renamed[at:]
