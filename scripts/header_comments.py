"""The public headers as data: what they declare, in order, each with its comment.

The headers are read with regular expressions. That relies on how they are written: a Doxygen
comment stands in front of what it describes, or behind a member (`/**<`); a section begins with a
comment whose first line is a rule of dashes.
"""

from __future__ import annotations

import itertools
import pathlib
import re
from dataclasses import dataclass, field


@dataclass(frozen=True)
class Member:
    """A field of a record or a value of an enumeration."""

    text: str
    comment: str


@dataclass(frozen=True)
class Declaration:
    """`kind` is function, callback, record, values, name (a typedef without more), define, or
    remark (a comment that stands for the functions behind it)."""

    kind: str
    name: str
    text: str
    comment: str
    members: tuple[Member, ...] = ()


@dataclass
class Section:
    """What stands between two rules of dashes; the first section of a header has no title."""

    title: str
    comment: str
    declarations: list[Declaration] = field(default_factory=list)

    def of_kind(self, *kinds: str) -> list[Declaration]:
        return [found for found in self.declarations if found.kind in kinds]

    def without_comment(self, declaration: Declaration) -> list[Declaration]:
        """What follows a declaration and shares its comment."""
        behind = self.declarations[self.declarations.index(declaration) + 1 :]
        return list(
            itertools.takewhile(
                lambda one: one.kind == declaration.kind and not one.comment, behind
            )
        )


@dataclass
class Header:
    file: str
    comment: str
    sections: list[Section]


def comment_text(comment: str) -> str:
    """A comment without its frame, and its lines without what they are indented by."""
    lines = re.sub(r"^/\*\*?<?|\*/$", "", comment).split("\n")
    bare = [re.sub(r"^\s*\*? ?", "", line).rstrip() for line in lines[1:]]
    if not comment.startswith("/**\n") and "\n * " not in comment:
        bare = [line.strip() for line in lines[1:]]
    return "\n".join([lines[0].strip(), *bare]).strip("\n")


def one_line(text: str) -> str:
    return re.sub(r"\s+", " ", text).strip()


def read_members(body: str, separator: str) -> tuple[Member, ...]:
    """The members between the braces; a comment stands in front, or behind with a `<`."""
    comments: list[str] = []

    def keep(match: re.Match[str]) -> str:
        comments.append(match[0])
        return (
            f"\0{len(comments) - 1}\0"
            if match[0].startswith("/**<")
            else f"\1{len(comments) - 1}\1"
        )

    body = re.sub(r"/\*.*?\*/", keep, body, flags=re.DOTALL)
    # A comment behind a member may stand before or after the separator.
    body = re.sub(rf"(\0\d+\0)(\s*{separator})", r"\2\1", body)
    body = re.sub(rf"{separator}\s*(\0\d+\0)", rf"\1{separator}", body)
    members = []
    for piece in body.split(separator):
        found = [
            comment_text(comments[int(number)])
            for number in re.findall(r"[\0\1](\d+)[\0\1]", piece)
        ]
        text = one_line(re.sub(r"[\0\1]\d+[\0\1]", " ", piece))
        if text:
            members.append(Member(text, one_line(" ".join(found))))
    return tuple(members)


def read_declaration(text: str, comment: str) -> Declaration:
    """One declaration, without its semicolon."""
    flat = one_line(text)
    if match := re.match(r"XML_API (.*?(\w+)\(.*\))$", flat):
        return Declaration("function", match[2], match[1], comment)
    if match := re.match(r"typedef .*\(\*(\w+)\)\(.*\)$", flat):
        return Declaration("callback", match[1], flat, comment)
    if match := re.search(r"\benum \{(.*)\}$", text, re.DOTALL):
        return Declaration("values", "", "enum", comment, read_members(match[1], ","))
    if match := re.match(r"(?:typedef )?struct (\w+) \{(.*)\}(?: \w+)?$", text.strip(), re.DOTALL):
        return Declaration(
            "record", match[1], f"struct {match[1]}", comment, read_members(match[2], ";")
        )
    if match := re.match(r"typedef (?:struct )?\w+ (\w+)$", flat):
        return Declaration("name", match[1], flat, comment)
    raise ValueError(f"a declaration of an unknown form: {flat}")


def split_declarations(text: str) -> list[tuple[str, str]]:
    """Pairs of a comment (may be empty) and what follows it up to its semicolon; nothing follows a
    comment that begins a group (@{)."""
    result = []
    comment, start, depth, place = "", None, 0, 0
    while place < len(text):
        if text.startswith("/*", place):
            end = text.index("*/", place) + 2
            if start is None and text.startswith("/**", place):
                if "@{" in text[place:end]:
                    result.append((text[place:end], ""))
                comment = "" if re.search("@[{}]", text[place:end]) else text[place:end]
            place = end
            continue
        if text[place] == "\n" and text.startswith("#define ", place + 1):
            line_end = re.compile(r"(?<!\\)\n").search(text, place + 1)
            assert line_end
            result.append((comment, text[place + 1 : line_end.start()]))
            comment, place = "", line_end.start()
            continue
        if not text[place].isspace() and start is None:
            start = place
        depth += {"{": 1, "(": 1, "}": -1, ")": -1}.get(text[place], 0)
        if text[place] == ";" and depth == 0:
            assert start is not None
            result.append((comment, text[start:place]))
            comment, start = "", None
        place += 1
    return result


def read_header(path: pathlib.Path) -> Header:
    """Reads a header of include/netxml/."""
    text = path.read_text()
    file_comment = re.search(r"/\*\*\n \* @file\n.*?\*/", text, re.DOTALL)
    assert file_comment, path
    text = text[file_comment.end() :]
    # What only compilers look at: conditions, attributes, the C++ frame, guards.
    text = re.sub(r"#ifdef __cplusplus\n.*?#endif\n", "", text, flags=re.DOTALL)
    text = re.sub(r"#define (XML_API.*|NETXML_\w+_H)\n", "", text)
    text = re.sub(r"^#(?!define).*\n", "", text, flags=re.MULTILINE)
    text = re.sub(r"__attribute__\(\(.*\)\)", "", text)

    sections = [Section("", "")]
    rule = re.compile(r"/\* -{20,}\n(.*?)\*/", re.DOTALL)
    pieces = rule.split(text)
    for number, piece in enumerate(pieces):
        if number % 2:
            words = re.sub(r"^ \* ?", "", piece, flags=re.MULTILINE).strip().split("\n\n", 1)
            title, _, rest = one_line(words[0]).partition(". ")
            comment = "\n\n".join(
                part for part in (rest, words[1] if len(words) > 1 else "") if part
            )
            sections.append(Section(title, comment))
            continue
        for raw, declared in split_declarations("\n" + piece):
            comment = comment_text(raw) if raw else ""
            if declared.startswith("#define"):
                name = declared.split()[1]
                value = one_line(declared.split(None, 2)[2])
                sections[-1].declarations.append(Declaration("define", name, value, comment))
            elif declared:
                sections[-1].declarations.append(read_declaration(declared, comment))
            else:
                remark = re.sub(r"@name (.*)|@\{", "", comment).strip()
                sections[-1].declarations.append(Declaration("remark", "", "", remark))
    return Header(
        f"netxml/{path.name}", comment_text(file_comment[0]).replace("@file\n", "", 1), sections
    )
