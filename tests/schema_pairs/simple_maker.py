"""Random simple types, with values that fit them, and values that nearly do."""

from __future__ import annotations

import random
from dataclasses import dataclass
from xml.sax.saxutils import escape, quoteattr

from builtin_values import INTEGER_TYPES, VALID, VALUES
from pattern_maker import PatternMaker

_TEXT_TYPES = "string normalizedString token NMTOKEN NCName Name language anyURI".split()
_NUMBER_TYPES = ["decimal", *INTEGER_TYPES]
_FLOAT_TYPES = ["float", "double"]
_DATE_TYPES = "dateTime date time gYear gYearMonth gMonth gMonthDay gDay duration".split()
_BINARY_TYPES = ["hexBinary", "base64Binary"]
_WORDS = [
    "a",
    "bb",
    "ccc",
    "dddd",
    "x y",
    "é",
    "日本",
    "",
    "Z",
    "a-b",
    "12",
    " a ",
    "longer text here",
]
_ORDERED = {
    "dateTime": [
        "2024-05-06T12:30:45",
        "2024-05-06T12:30:46",
        "2023-01-01T00:00:00",
        "2024-05-06T12:30:45.5",
    ],
    "date": ["2024-05-06", "2024-05-07", "2023-12-31", "1999-01-01", "2024-02-29"],
    "time": ["12:30:45", "12:30:46", "00:00:00", "23:59:59", "12:30:45.5"],
    "gYear": ["2024", "2023", "1999", "2100"],
    "gYearMonth": ["2024-05", "2024-06", "2023-12"],
    "gMonth": ["--05", "--06", "--01", "--12"],
    "gMonthDay": ["--05-06", "--05-07", "--01-31", "--02-29"],
    "gDay": ["---05", "---06", "---01", "---31"],
    "duration": ["P1Y", "P1D", "PT36H", "P2D", "P13M", "P1M"],
}


@dataclass
class SimpleType:
    """How a declaration names it (`reference`) or holds it (`inline`), and texts to try."""

    values: list[str]
    reference: str = ""
    inline: str = ""
    base: str = "string"  # the built-in type at its root; "" for lists and unions
    variety: str = "atomic"

    def attribute(self) -> str:
        return f' type="{self.reference}"' if self.reference else ""


def fitting(name: str) -> SimpleType:
    return SimpleType(VALID[name], reference=f"xs:{name}", base=name)


class SimpleMaker:
    """Makes simple types; `definitions` gathers the named ones."""

    def __init__(self, chance: random.Random, definitions: list[str], wide: bool = True) -> None:
        self.chance = chance
        self.definitions = definitions
        self.patterns = PatternMaker(chance, wide)
        self.count = 0

    def plain(self) -> SimpleType:
        return fitting(self.chance.choice(list(VALID)))

    def make(self, kind: str) -> SimpleType:
        maker = {
            "builtin": self._builtin,
            "facets": self._facets,
            "pattern": self._pattern,
            "list": self._list,
            "union": self._union,
        }[kind]
        return self._placed(maker())

    def _builtin(self) -> SimpleType:
        name = self.chance.choice(list(VALUES))
        return SimpleType(VALUES[name], reference=f"xs:{name}", base=name)

    def _placed(self, made: SimpleType) -> SimpleType:
        """Sometimes under a name."""
        if made.reference or self.chance.random() < 0.4:
            return made
        self.count += 1
        name = f"s{self.count}"
        head = f'<xs:simpleType name="{name}">'
        self.definitions.append(made.inline.replace("<xs:simpleType>", head, 1))
        return SimpleType(made.values, f"t:{name}", "", made.base, made.variety)

    def _restriction(self, base: SimpleType, facets: str) -> str:
        if base.reference:
            return (
                f"<xs:simpleType><xs:restriction "
                f'base="{base.reference}">{facets}</xs:restriction></xs:simpleType>'
            )
        return (
            f"<xs:simpleType><xs:restriction>{base.inline}{facets}</xs:restriction></xs:simpleType>"
        )

    def _restricted(self, base: SimpleType, facets: str, values: list[str]) -> SimpleType:
        return SimpleType(
            values + base.values[:6], "", self._restriction(base, facets), base.base, base.variety
        )

    def _facets(self) -> SimpleType:
        family = self.chance.choice(
            [
                self._lengths,
                self._bounds,
                self._digits,
                self._enumeration,
                self._dates,
                self._binary,
                self._floats,
                self._bounds,
                self._two_steps,
            ]
        )
        return family()

    def _two_steps(self) -> SimpleType:
        base = self._placed(self._bounds())
        if self.chance.random() < 0.5:
            text = "[0-9]{1,3}"
            return self._restricted(base, f'<xs:pattern value="{text}"/>', ["7", "77", "7777"])
        members = [v for v in base.values if v.strip("-").isdigit()][:3]
        facets = "".join(f'<xs:enumeration value="{v}"/>' for v in members)
        return self._restricted(base, facets, members + ["07"]) if members else base

    def _lengths(self) -> SimpleType:
        base = fitting(self.chance.choice(_TEXT_TYPES))
        low = self.chance.randint(0, 4)
        high = low + self.chance.randint(0, 3)
        facets = self.chance.choice(
            [
                f'<xs:length value="{low}"/>',
                f'<xs:minLength value="{low}"/>',
                f'<xs:maxLength value="{high}"/>',
                f'<xs:minLength value="{low}"/><xs:maxLength value="{high}"/>',
            ]
        )
        values = ["abcdefgh"[:n] for n in range(max(0, low - 1), high + 2)] + [
            "éé"[:low],
            "日本語"[:high],
        ]
        return self._restricted(base, facets, values)

    def _binary(self) -> SimpleType:
        base = fitting(self.chance.choice(_BINARY_TYPES))
        count = self.chance.randint(0, 4)
        facets = f'<xs:{self.chance.choice(("length", "minLength", "maxLength"))} value="{count}"/>'
        values = ["", "00", "0011", "001122", "00112233"]
        if base.base == "base64Binary":
            values = ["", "QQ==", "QUI=", "QUJD", "QUJDRA==", "QUJDREU="]
        return self._restricted(base, facets, values)

    def _number(self, integral: bool) -> str:
        text = str(self.chance.choice([0, 1, -1, 5, 10, 99, 100, -100, 127, -128, 255, 1000]))
        if not integral and self.chance.random() < 0.6:
            text += self.chance.choice([".5", ".0", ".25", ".125", ".999"])
        return text

    def _bounds(self) -> SimpleType:
        name = self.chance.choice(
            [
                "decimal",
                "integer",
                "int",
                "long",
                "short",
                "byte",
                "nonNegativeInteger",
                "unsignedByte",
                "unsignedInt",
                "positiveInteger",
                "negativeInteger",
            ]
        )
        low, high = sorted([self._number(name != "decimal") for _ in range(2)], key=float)
        if name.startswith(("un", "non", "pos")):
            low, high = low.lstrip("-"), high.lstrip("-")
            low, high = sorted((low, high), key=float)
        if name == "negativeInteger":
            low, high = str(-abs(int(low)) - 20), "-2"
        if name == "positiveInteger":
            low, high = str(int(low) + 1), str(int(high) + 1)
        limit = {"byte": 127, "unsignedByte": 255}.get(name, 10**6)
        low, high = str(min(float(low), limit)), str(min(float(high), limit))
        low, high = (t.removesuffix(".0") for t in (low, high))
        facets = self.chance.choice(
            [
                f'<xs:minInclusive value="{low}"/>',
                f'<xs:maxInclusive value="{high}"/>',
                f'<xs:minExclusive value="{low}"/>',
                f'<xs:maxExclusive value="{high}"/>',
                f'<xs:minInclusive value="{low}"/><xs:maxInclusive value="{high}"/>',
                f'<xs:minInclusive value="{low}"/><xs:maxExclusive value="{high}x"/>'.replace(
                    "x", "1"
                ),
                f'<xs:minExclusive value="{low}"/><xs:maxInclusive value="{high}1"/>',
            ]
        )
        if name == "decimal":
            values = [self._near(v) for v in (low, high) for _ in range(4)]
        else:
            values = [str(int(float(v)) + d) for v in (low, high) for d in (-1, 0, 1)]
        values += ["0" + low, "+" + high, "-0", "1e2", high + "0", high + ".0"]
        return self._restricted(fitting(name), facets, values)

    def _near(self, value: str) -> str:
        return self.chance.choice(
            [
                value,
                value + ("0" if "." in value else ".0"),
                str(float(value) + 0.5),
                str(float(value) - 0.25),
                value + ("01" if "." in value else ".001"),
            ]
        )

    def _digits(self) -> SimpleType:
        name = self.chance.choice(["decimal", "decimal", "integer", "int", "nonNegativeInteger"])
        total = self.chance.randint(1, 5)
        fraction = self.chance.randint(0, min(total, 3))
        facets = self.chance.choice(
            [
                f'<xs:totalDigits value="{total}"/>',
                f'<xs:fractionDigits value="{fraction}"/>',
                f'<xs:totalDigits value="{total}"/><xs:fractionDigits value="{fraction}"/>',
            ]
        )
        if name != "decimal":
            facets = f'<xs:totalDigits value="{total}"/>'
        values = ["1" * n for n in range(1, 7)] + [
            "0.1",
            "0.10",
            "1.1",
            "11.11",
            "00012",
            "1.000",
            "100",
            "-12",
            "+12",
            ".5",
            "5.",
            "0",
            "0.0",
            "10.010",
            "-0.001",
        ]
        return self._restricted(fitting(name), facets, values)

    def _dates(self) -> SimpleType:
        name = self.chance.choice(_DATE_TYPES)
        value = self.chance.choice(_ORDERED[name])
        facet = self.chance.choice(
            ["minInclusive", "maxInclusive", "minExclusive", "maxExclusive", "enumeration"]
        )
        return self._restricted(fitting(name), f'<xs:{facet} value="{value}"/>', _ORDERED[name])

    def _floats(self) -> SimpleType:
        name = self.chance.choice(_FLOAT_TYPES)
        value = self.chance.choice(["0", "1.5", "-2", "1e3", "INF"])
        facet = self.chance.choice(
            ["minInclusive", "maxInclusive", "minExclusive", "maxExclusive", "enumeration"]
        )
        values = [
            "0",
            "-0",
            "1.5",
            "1.50",
            "15e-1",
            "2",
            "-2",
            "-2.5",
            "1000",
            "1e3",
            "INF",
            "-INF",
            "NaN",
        ]
        return self._restricted(fitting(name), f'<xs:{facet} value="{value}"/>', values)

    def _enumeration(self) -> SimpleType:
        name = self.chance.choice(_TEXT_TYPES + _NUMBER_TYPES + ["boolean", "QName", "hexBinary"])
        valid = [v for v in VALID[name] if v]
        if name in ("string", "token", "normalizedString"):
            valid = [w for w in _WORDS if w.strip() == w]
        members = self.chance.sample(valid, min(len(valid), self.chance.randint(1, 3)))
        facets = "".join(f"<xs:enumeration value={quoteattr(m)}/>" for m in members)
        values = (
            members
            + [m + "x" for m in members]
            + [" " + m for m in members]
            + ["0" + m for m in members]
        )
        return self._restricted(fitting(name), facets, values + _WORDS[:4])

    def _pattern(self) -> SimpleType:
        base = fitting(
            self.chance.choice(["string", "string", "string", "token", "normalizedString"])
        )
        facets, values = "", []
        for _ in range(self.chance.choice((1, 1, 1, 2))):
            text, words = self.patterns.make()
            facets += f"<xs:pattern value={quoteattr(text)}/>"
            values += words
        made = self._restricted(base, facets, values)
        if self.chance.random() < 0.15:
            text, words = self.patterns.make()
            made = self._placed(made)
            made = self._restricted(made, f"<xs:pattern value={quoteattr(text)}/>", words)
            made.values += values
        return made

    def _atomic(self) -> SimpleType:
        kind = self.chance.randrange(4)
        if kind == 0:
            return self._placed(self._facets())
        if kind == 1:
            return self._placed(self._pattern())
        return fitting(
            self.chance.choice([n for n in VALID if n not in ("anySimpleType", "NMTOKENS")])
        )

    def _list(self) -> SimpleType:
        item = self._atomic() if self.chance.random() < 0.85 else self._placed(self._union())
        if item.reference:
            text = f'<xs:simpleType><xs:list itemType="{item.reference}"/></xs:simpleType>'
        else:
            text = f"<xs:simpleType><xs:list>{item.inline}</xs:list></xs:simpleType>"
        values = [" ".join(self.chance.choices(item.values, k=n)) for n in (0, 1, 1, 2, 2, 3, 4)]
        made = SimpleType(values, "", text, "", "list")
        if self.chance.random() < 0.4:
            made = self._placed(made)
            count = self.chance.randint(0, 3)
            facet = self.chance.choice(["length", "minLength", "maxLength"])
            made = self._restricted(made, f'<xs:{facet} value="{count}"/>', values)
        elif self.chance.random() < 0.2:
            made = self._placed(made)
            members = [v for v in values if v.strip() == v and "  " not in v][:2]
            facets = "".join(f"<xs:enumeration value={quoteattr(m)}/>" for m in members)
            made = self._restricted(made, facets, values) if members else made
        return made

    def _union(self) -> SimpleType:
        members = [self._atomic() for _ in range(self.chance.choice((1, 2, 2, 3)))]
        if self.chance.random() < 0.2:
            members.append(self._placed(self._list()))
        named = " ".join(m.reference for m in members if m.reference)
        inner = "".join(m.inline for m in members if not m.reference)
        attribute = f' memberTypes="{named}"' if named else ""
        text = f"<xs:simpleType><xs:union{attribute}>{inner}</xs:union></xs:simpleType>"
        values = [v for m in members for v in self.chance.sample(m.values, min(4, len(m.values)))]
        return SimpleType(values + ["zz", "7", ""], "", text, "", "union")


def as_text(value: str) -> str:
    return escape(value).replace("\t", "&#9;").replace("\n", "&#10;").replace("\r", "&#13;")


def as_attribute(value: str) -> str:
    return quoteattr(value, {"\t": "&#9;", "\n": "&#10;", "\r": "&#13;"})
