"""Literals for every built-in simple type, near the borders of what each admits."""

from __future__ import annotations

INTEGERS = (
    "0 -0 +0 1 -1 +1 00 007 127 128 -128 -129 255 256 32767 32768 -32768 -32769 65535 65536 "
    "2147483647 "
    "2147483648 -2147483648 -2147483649 4294967295 4294967296 9223372036854775807 "
    "9223372036854775808 "
    "-9223372036854775808 -9223372036854775809 18446744073709551615 18446744073709551616 "
    "123456789012345678901234567890 -123456789012345678901234567890 1.0 1. 1e1 +-1 - + 0x1 "
    "1,0 |1 NaN INF "
    "000000000000000000000000000000128"
).split() + ["", " ", " 1", "1 ", " 1 ", "1 2", "\t1\n", "１"]

DECIMALS = (
    "0 -0 +0 1 -1.5 +1.5 .5 5. . -. +.5 -.5 0.0 00.00 1.2.3 1e3 1E3 INF NaN 1,5 "
    "123456789012345678901234567890.123456789 --1 +-1"
).split() + ["", " 1.5 ", "1 .5", "1. 5"]

FLOATS = (
    "0 -0 +0 1 1.5 -1.5 .5 5. . 1e3 1E3 1e+3 1e-3 1e 1e+ 1e1.5 e3 INF -INF +INF inf NaN nan "
    "-NaN 1.5E400 "
    "1.5E-400 0x1p3 Infinity 1.5f 1_000"
).split() + ["", " 1.5 ", " INF ", "1 e3"]

BOOLEANS = [
    "true",
    "false",
    "1",
    "0",
    "TRUE",
    "True",
    "yes",
    "",
    " true ",
    "01",
    "2",
    "tru",
    "true false",
]

ZONES = [
    "",
    "Z",
    "z",
    "+00:00",
    "-00:00",
    "+14:00",
    "-14:00",
    "+14:01",
    "+13:59",
    "+15:00",
    "+5:00",
    "+05",
    "0500",
    "+0500",
    "+05:60",
    " Z",
]

DATES = (
    "2024-01-01 2024-02-29 2023-02-29 2000-02-29 1900-02-29 2024-04-31 2024-04-30 2024-12-31 "
    "2024-13-01 "
    "2024-00-10 2024-01-00 2024-01-32 24-01-01 02024-01-01 12024-01-01 0001-01-01 0000-01-01 "
    "-0001-01-01 "
    "-2024-02-29 +2024-01-01 2024-1-1 2024/01/01 20240101 2024-01 9999-12-31 -12024-01-01 "
    "-0004-02-29"
).split() + ["", " 2024-01-01 ", "2024-01-01 "]

TIMES = (
    "00:00:00 12:30:45 23:59:59 24:00:00 24:00:01 24:01:00 25:00:00 12:60:00 12:30:60 "
    "12:30:61 1:00:00 12:30 "
    "12:30:45.5 12:30:45.123456789012 12:30:45. 12:30:.5 12:30:4.5 24:00:00.0 24:00:00.1 "
    "-12:30:45 12:30:5 "
    "123045"
).split() + ["", " 12:30:45 "]

YEARS = (
    "2024 0001 0000 -0001 24 224 12024 02024 -2024 +2024 -12024 99999 9999 -9999 20x4 -".split()
    + ["", " 2024 "]
)
YEAR_MONTHS = (
    "2024-01 2024-12 2024-13 2024-00 2024-1 0000-01 -0001-12 12024-05 2024 2024-01-01 24-01".split()
    + [""]
)
MONTHS = "--01 --12 --13 --00 --1 --01-- --010 -01 01".split() + ["", " --05 "]
MONTH_DAYS = (
    "--01-01 --02-29 --02-30 --02-28 --04-31 --04-30 --12-31 --13-01 --01-32 --1-1 -01-01 "
    "--00-10 --01-00 --01-31 "
    "--06-31 --09-31 --11-31"
).split() + [""]
DAYS = "---01 ---30 ---31 ---32 ---00 ---1 --01 01 ---29 ---001".split() + ["", " ---05 "]
DURATIONS = (
    "P1Y P1M P1D PT1H PT1M PT1S P1Y2M3DT4H5M6S PT1.5S PT.5S PT1.S P1Y2M P1M1Y P PT P1YT P1 "
    "1Y -P1Y +P1Y P-1Y P1.5Y "
    "PT1H1M PT1M1H P1S PT1D P0Y P1W P1D1M PT36H P1Y2M3DT4H5M6.789S P99999Y p1y P1Y1D PT1H1S "
    "P1MT1M --P1D"
).split() + ["", " P1D ", "P 1D", "P1Y2M3D T1H"]

NAMES = (
    "a A _a :a a:b a-b a.b a1 1a -a .a a:b:c a: : _ - xml é éa a·b aé élan ÿ × ÷ a×b ε日本 日 "
    "本a a\u0301 "
    "\u0301a a\U00010400 a/b a@b a+b a,b a&amp;b"
).split() + ["", " a ", "a b", "a\tb", "\ta"]

LANGUAGES = (
    "en EN en-US en-us fr-CA i-klingon x-y abcdefgh abcdefghi en-abcdefgh en-abcdefghi en- "
    "-en en_US e zh-Hant-TW "
    "1n en-1 en-1a-b2 é sr-Latn"
).split() + ["", " en ", "en US"]

URIS = (
    "http://example.org/ urn:a:b urn:ietf:params:netconf:base:1.0 a a/b ../x #f ?q "
    "mailto:a@b.c http://[::1]/ "
    "a%20b http://é/ //h/p file:///x :a 1a:b a:b http:// http://a:80/ 日本"
).split() + ["", " a ", "a b"]

HEX = "00 0f FF 0 000 0g abCDef 0F0".split() + ["", " 0f ", "0f 0f", "é0"]
BASE64 = (
    "QUJD QUI= QQ== QQ= Q=== QUJ QUJDR QUJDREVG QUJDREU= QR== QUJ= ==== = QUJD= Q+/D QU-D "
    "Q_JD QQ==QQ== QU=D "
    "QUI=x"
).split() + [
    "",
    " QUJD ",
    "QU JD",
    "Q U J D",
    "QUJD\nREVG",
    "QUJD\nREU=\n",
    "QQ =\n=",
    "QUJD  REVG",
]

QNAMES = [
    "a",
    "t:a",
    "u:a",
    "t:",
    ":a",
    "a:b:c",
    "t:1a",
    "1a",
    "xml:a",
    "",
    " t:a ",
    "t :a",
    "a b",
    "t:é",
]
STRINGS = ["", " ", "a", " a ", "a  b", "a\tb", "a\nb", "  ", "é", "日本", "a&amp;b", "&lt;", "1"]

VALUES: dict[str, list[str]] = {
    "string": STRINGS,
    "normalizedString": STRINGS,
    "token": STRINGS,
    "anySimpleType": STRINGS,
    "language": LANGUAGES,
    "Name": NAMES,
    "NCName": NAMES,
    "NMTOKEN": NAMES,
    "NMTOKENS": NAMES,
    "ID": NAMES,
    "anyURI": URIS,
    "QName": QNAMES,
    "boolean": BOOLEANS,
    "decimal": DECIMALS,
    "float": FLOATS,
    "double": FLOATS,
    "time": [],
    "dateTime": [],
    "date": [],
    "gYear": [],
    "gYearMonth": [],
    "gMonth": [],
    "gMonthDay": [],
    "gDay": [],
    "duration": DURATIONS,
    "hexBinary": HEX,
    "base64Binary": BASE64,
}

INTEGER_TYPES = (
    "integer nonNegativeInteger positiveInteger nonPositiveInteger negativeInteger long int "
    "short byte "
    "unsignedLong unsignedInt unsignedShort unsignedByte"
).split()
for _name in INTEGER_TYPES:
    VALUES[_name] = INTEGERS


def _zoned(literals: list[str], valid: str) -> list[str]:
    return literals + [valid + zone for zone in ZONES] + [one + "Z" for one in literals[:12]]


VALUES["date"] = _zoned(DATES, "2024-05-06")
VALUES["time"] = _zoned(TIMES, "12:30:45") + ["12:30:45.5Z"]
VALUES["gYear"] = _zoned(YEARS, "2024")
VALUES["gYearMonth"] = _zoned(YEAR_MONTHS, "2024-05")
VALUES["gMonth"] = _zoned(MONTHS, "--05")
VALUES["gMonthDay"] = _zoned(MONTH_DAYS, "--05-06")
VALUES["gDay"] = _zoned(DAYS, "---06")
VALUES["dateTime"] = (
    [date + "T12:30:45" for date in DATES]
    + ["2024-05-06T" + time for time in TIMES]
    + ["2024-05-06T12:30:45" + zone for zone in ZONES]
    + [
        "2024-05-06T12:30:45.5+01:00",
        "2024-05-06 12:30:45",
        "2024-05-06t12:30:45",
        "2024-05-06T",
        "T12:30:45",
        "2024-12-31T24:00:00",
        "2024-05-06T12:30:45.1234567890123456789",
    ]
)

# Values that every program takes, in canonical form mostly, for places where validity is wanted.
VALID: dict[str, list[str]] = {
    "string": ["", "a", "some text", "x y"],
    "normalizedString": ["a", "b c"],
    "token": ["a", "b c"],
    "anySimpleType": ["a", "1"],
    "language": ["en", "de-AT"],
    "Name": ["a", "b1"],
    "NCName": ["a", "b-c"],
    "NMTOKEN": ["a", "1.b"],
    "NMTOKENS": ["a b", "c"],
    "anyURI": ["urn:a:b", "http://example.org/x"],
    "QName": ["a", "t:b"],
    "boolean": ["true", "0"],
    "decimal": ["1.5", "-3", "0"],
    "float": ["1.5", "1e3"],
    "double": ["2.5", "-1E-2"],
    "date": ["2024-05-06", "1999-12-31"],
    "time": ["12:30:45", "00:00:00Z"],
    "dateTime": ["2024-05-06T12:30:45", "2000-01-01T00:00:00Z"],
    "gYear": ["2024"],
    "gYearMonth": ["2024-05"],
    "gMonth": ["--05"],
    "gMonthDay": ["--05-06"],
    "gDay": ["---06"],
    "duration": ["P1Y2M3DT4H5M6S", "PT1H"],
    "hexBinary": ["0f", "ABCD"],
    "base64Binary": ["QUJD", "QQ=="],
    "integer": ["5", "-17"],
    "nonNegativeInteger": ["0", "9"],
    "positiveInteger": ["1", "9"],
    "nonPositiveInteger": ["0", "-9"],
    "negativeInteger": ["-1"],
    "long": ["5", "-5"],
    "int": ["5", "-5"],
    "short": ["5"],
    "byte": ["5", "-5"],
    "unsignedLong": ["5"],
    "unsignedInt": ["5"],
    "unsignedShort": ["5"],
    "unsignedByte": ["5", "200"],
}
