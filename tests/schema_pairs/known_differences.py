"""Where netxml's verdict differs from a peer's, and why. docs/schema-compiler.md says the same of
the constructs; a disagreement without a row here is a fault."""

from __future__ import annotations

import re
from collections.abc import Callable
from dataclasses import dataclass
from functools import cached_property

from comparison import Pair

_CONTENT_VIOLATIONS = {1, 5, 6, 8, 9, 10, 11}
_VALUE_VIOLATIONS = {3, 4}


class Disagreement:
    """A pair on which netxml stands alone, with what it tells of the schema."""

    def __init__(self, pair: Pair, warnings: list[str]) -> None:
        self.pair = pair
        self.warnings = warnings
        self.ours = pair.ours
        self.peer_sentences = " ".join(v.sentence for v in pair.theirs.values() if not v.valid)

    @cached_property
    def document(self) -> str:
        return self.pair.document.read_text(encoding="utf-8", errors="replace")

    @cached_property
    def schema(self) -> str:
        files = sorted(self.pair.schema.parent.glob("*.xsd"))
        return "".join(f.read_text(encoding="utf-8", errors="replace") for f in files)

    @property
    def only_ours_valid(self) -> bool:
        return self.ours.valid is True

    def told(self, *parts: str) -> bool:
        return any(part in warning for warning in self.warnings for part in parts)

    def peers_say(self, *parts: str) -> bool:
        return any(part in self.peer_sentences for part in parts)

    def peers_blame_value(self, expression: str) -> bool:
        """Whether a peer quotes a value that matches."""
        quoted = re.findall(r"'([^']*)'", self.peer_sentences)
        return any(re.fullmatch(expression, value) for value in quoted)


@dataclass(frozen=True)
class Row:
    name: str
    reason: str
    applies: Callable[[Disagreement], bool]


def _content_is_blamed(d: Disagreement) -> bool:
    if not d.only_ours_valid:
        return d.ours.violation in _CONTENT_VIOLATIONS
    return d.peers_say("not expected", "Missing child", "content model", "not allowed for content")


def _value_is_blamed(d: Disagreement) -> bool:
    if not d.only_ours_valid:
        return d.ours.violation in _VALUE_VIOLATIONS
    return d.peers_say(
        "is not a valid value",
        "[facet",
        "facet value",
        "regular expression",
        "member types",
        "enumeration",
        "invalid",
        "fixed value",
    )


def _beyond_ascii(d: Disagreement) -> bool:
    return not d.document.isascii() or "&#" in d.document


# What netxml tells of a schema itself.
_TOLD = [
    Row(
        "model without an exact form",
        "netxml matches greedily by counters; of a model that no form makes exact it warns.",
        lambda d: d.told("content model cannot be said") and _content_is_blamed(d),
    ),
    Row(
        "too many groups one in another",
        "the engine nests seven groups; netxml refuses the schema when it finds no flatter form.",
        lambda d: d.ours.valid is None and "one in another" in d.ours.sentence,
    ),
    Row(
        "pattern with classes beyond ASCII",
        "properties take the characters beyond ASCII all or none (warned).",
        lambda d: d.told("in this pattern") and _beyond_ascii(d) and _value_is_blamed(d),
    ),
    Row(
        "pattern that is not checked",
        "an expression that is too large, or has a count that POSIX lacks (warned).",
        lambda d: d.told("this pattern is not checked")
        and d.only_ours_valid
        and _value_is_blamed(d),
    ),
    Row(
        "facet that is not checked",
        "bounds on floats and durations, lengths of such types (warned).",
        lambda d: d.told("is not checked for values of this type")
        and d.only_ours_valid
        and _value_is_blamed(d),
    ),
    Row(
        "lengths in bytes",
        "of characters beyond ASCII (warned).",
        lambda d: d.told("counts bytes") and _beyond_ascii(d) and _value_is_blamed(d),
    ),
    Row(
        "items of a list",
        "when their type is no single expression (warned).",
        lambda d: d.told("the items of this list") and d.only_ours_valid and _value_is_blamed(d),
    ),
    Row(
        "enumerated dates, floats and durations",
        "compare as text (warned).",
        lambda d: d.told("compare as text") and d.ours.violation in _VALUE_VIOLATIONS,
    ),
    Row(
        "ID, IDREF, ENTITY, NOTATION",
        "uniqueness and references between values are not checked (warned).",
        lambda d: d.told('"ID"', '"IDREF"', '"ENTITY"', '"NOTATION"')
        and d.only_ours_valid
        and d.peers_say("xs:ID", "IDREF", "ID value", "ENTITY", "NOTATION", "duplicate"),
    ),
    Row(
        "QName with an unknown prefix",
        "values of QName are not resolved (warned).",
        lambda d: d.told('"QName"') and d.only_ours_valid and d.peers_say("QName"),
    ),
    Row(
        "identity constraint",
        "unique, key and keyref are not checked (warned).",
        lambda d: d.told("identity constraint")
        and d.only_ours_valid
        and d.peers_say("identity-constraint", "unique", "key", "Key"),
    ),
]

# Rules of the engine that no record can change.
_ENGINE = [
    Row(
        "encoding of a document",
        "netxml reads thirteen encodings; ISO-8859-1 is none of them.",
        lambda d: "unsupported encoding" in d.ours.sentence,
    ),
    Row(
        "entities of a document type",
        "netxml expands none in documents.",
        lambda d: "<!DOCTYPE" in d.document and "entity" in d.ours.sentence,
    ),
    Row(
        "redefine",
        "changes by redefine are refused.",
        lambda d: d.ours.valid is None and "redefine" in d.ours.sentence,
    ),
    Row(
        "the schema of XML Schema",
        "XMLSchema.xsd declares the namespace whose types are built in.",
        lambda d: d.ours.valid is None
        and "XML Schema has no simple type" in d.ours.sentence
        and 'targetNamespace="http://www.w3.org/2001/XMLSchema"' in d.schema,
    ),
    Row(
        "xsi:nil",
        "the value of xsi:nil is not read, and an empty nillable element is valid without it.",
        lambda d: d.only_ours_valid
        and "xsi:nil" in d.document
        and d.peers_say(
            "nil", "'maybe'", "xs:boolean", "Missing child", "empty content", "''", "value '0'"
        ),
    ),
    Row(
        "empty nillable element",
        "is valid without xsi:nil.",
        lambda d: d.only_ours_valid
        and 'nillable="true"' in d.schema
        and d.peers_say("''", "Missing child", "empty content"),
    ),
    Row(
        "below an undeclared element",
        (
            "under a lax wildcard, or in a type that admits anything, what an undeclared element "
            "holds is not looked into."
        ),
        lambda d: d.only_ours_valid
        and (
            'processContents="lax"' in d.schema
            or "anyType" in d.schema
            or '<xs:element name="r"/>' in d.schema
        )
        and _value_is_blamed(d),
    ),
    Row(
        "xsi:type",
        "the element is checked by its declared type.",
        lambda d: "xsi:type" in d.document,
    ),
    Row(
        "abstract type",
        "a type that is abstract is taken like others.",
        lambda d: d.only_ours_valid and "abstract" in d.peer_sentences,
    ),
    Row("anyURI", "any text is an anyURI.", lambda d: d.only_ours_valid and d.peers_say("anyURI")),
    Row(
        "blanks at the ends of a text",
        "the parser trims text at both ends, also where a type keeps white space.",
        lambda d: _value_is_blamed(d)
        and d.ours.violation != 4
        and re.search(r">\s+[^<\s]|[^>\s]\s+</|>(&#\w+;|\s)+[^<]*<|&#\w+;</", d.document)
        is not None,
    ),
    Row(
        "several texts in an element",
        "of several texts of a simple type the last is the value, CDATA is none.",
        lambda d: _value_is_blamed(d)
        and re.search(r"<!\[CDATA\[|[^>\s]\s*<!--|-->\s*[^<\s]", d.document) is not None,
    ),
    Row(
        "blanks around enumerated attribute values",
        "enumerations of attributes and fixed values are compared without collapsing white space.",
        lambda d: d.ours.valid is False
        and d.ours.violation == 4
        and re.search(r"=(\"\s|'\s|\"[^\"]*\s\"|'[^']*\s')", d.document) is not None,
    ),
    Row(
        "digits beyond ASCII",
        r"\d means the ten digits.",
        lambda d: d.ours.violation in _VALUE_VIOLATIONS
        and r"\d" in d.schema
        and not d.document.isascii(),
    ),
    Row(
        "names beyond ASCII",
        "every character beyond ASCII may stand in a name.",
        lambda d: d.only_ours_valid
        and not d.document.isascii()
        and d.peers_say("Name", "NMTOKEN", "xs:ID", r"\c+", r"\i\c*"),
    ),
    Row(
        "dates beyond the year 9999",
        "bounds hold up to that year.",
        lambda d: _value_is_blamed(d)
        and re.search(r"[\">\s-]\d{5,}", d.document) is not None
        and re.search(r'base="xs:(date|gYear)[^>]*>(<[^>]*>)?<xs:(min|max)(In|Ex)', d.schema)
        is not None,
    ),
    Row(
        "seconds of a duration",
        "a point in seconds has a digit on both sides, as XML Schema says; the peers are lax.",
        lambda d: re.search(r"T[0-9HM]*(\.\d+|\d+\.)S", d.document) is not None,
    ),
]

# Faults of libxml2, seen where it is the only peer; Xerces-C and XML Schema say what netxml says.
_LIBXML2 = [
    Row(
        "libxml2: white space around values",
        (
            "it does not collapse it for the bounded integers, INF, dates and durations, nor "
            "before comparing fixed values."
        ),
        lambda d: d.only_ours_valid
        and (d.peers_blame_value(r"\s+.*|.*\s+") or "&#" in d.peer_sentences),
    ),
    Row(
        "libxml2: large numbers",
        "it holds 24 digits.",
        lambda d: d.only_ours_valid and d.peers_blame_value(r"[-+]?0*[0-9.]{24,}"),
    ),
    Row(
        "libxml2: exponent without digits",
        "it takes 1e and 1e+ for floats.",
        lambda d: d.ours.valid is False
        and re.search(r"[0-9][eE][-+]?[\"'<\s]", d.document) is not None,
    ),
    Row(
        "libxml2: second 60",
        "it takes a second of 60 in lists.",
        lambda d: re.search(r":60", d.document) is not None,
    ),
    Row(
        "libxml2: signs of unsigned types",
        "it refuses them outside of lists only, or there only.",
        lambda d: re.search(r"[\"'>\s][-+]0*\d", d.document) is not None
        and "unsigned" in d.schema
        and _value_is_blamed(d),
    ),
    Row(
        "libxml2: patterns",
        "its matcher errs where a counted group may be empty, and on classes that hold properties.",
        lambda d: _value_is_blamed(d)
        and re.search(r'<xs:pattern value="[^"]*(\)\{|\[[^\]]*\\[pPwWsSdDiIcC]|-\[)', d.schema)
        is not None,
    ),
    Row(
        "libxml2: fixed values",
        "it compares them as text.",
        lambda d: d.only_ours_valid and "fixed value" in d.peer_sentences,
    ),
    Row(
        "libxml2: base64Binary",
        "where the type has facets it leaves other characters out of the value.",
        lambda d: d.ours.violation in _VALUE_VIOLATIONS and "base64Binary" in d.schema,
    ),
    Row(
        "libxml2: fixed value of an attribute reference",
        "it does not compare with it.",
        lambda d: d.ours.violation == 4
        and re.search(r'<xs:attribute ref="[^"]*" fixed=', d.schema) is not None,
    ),
    Row(
        "libxml2: abstract head without members",
        "it takes the reference for optional.",
        lambda d: d.ours.violation in (5, 11, 1) and 'abstract="true"' in d.schema,
    ),
]

ROWS = [*_TOLD, *_ENGINE, *_LIBXML2]


def explain(pair: Pair, warnings: list[str]) -> Row | None:
    """The first row that a disagreement has."""
    disagreement = Disagreement(pair, warnings)
    peers_alone = list(pair.theirs) == ["libxml2"]
    rows = ROWS if peers_alone else [*_TOLD, *_ENGINE]
    return next((row for row in rows if row.applies(disagreement)), None)
