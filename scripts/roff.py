"""Text of header comments as source for man(1), in the macros of man(7)."""

from __future__ import annotations

import re

SPECIAL = {"\\": r"\(rs", "-": r"\-", "~": r"\(ti", "^": r"\(ha", "`": r"\(ga", "'": r"\(aq"}


def code(text: str) -> str:
    """Characters that are to be read and copied as they are."""
    return "".join(SPECIAL.get(character, character) for character in text)


def example(lines: list[str]) -> list[str]:
    """Lines of code, as they are."""
    return [".PP", ".RS 4", ".nf", *(line(code(one)) for one in lines), ".fi", ".RE"]


def line(text: str) -> str:
    """A line of output: roff takes what begins with a full stop or an apostrophe for a request."""
    return r"\&" + text if text[:1] in (".", "'") else text


def words(text: str) -> str:
    """A paragraph: `code`, ::names and functions() in bold."""
    pieces = re.split(r"(`[^`]+`|(?<!\w)::\w+|\b[A-Za-z]\w*\(\))", text)
    result = []
    for number, piece in enumerate(pieces):
        if number % 2 == 0:
            result.append(piece.replace("\\", r"\(rs").replace("^", r"\(ha").replace("~", r"\(ti"))
        elif piece.endswith("()") and not piece.startswith("`"):
            result.append(rf"\fB{code(piece[:-2])}\fR()")
        else:
            result.append(rf"\fB{code(piece.strip('`').removeprefix('::'))}\fR")
    return "".join(result)


def paragraphs(comment: str, first: str = ".PP") -> list[str]:
    """A comment: paragraphs, lists whose items begin with "- ", and code between @code and
    @endcode. `first` stands in front of the first paragraph."""
    result: list[str] = []
    before = first
    for number, part in enumerate(re.split(r"@(?:end)?code\n?", comment)):
        if number % 2:
            result += example(part.strip("\n").split("\n"))
            continue
        for block in re.split(r"\n\s*\n", part.strip("\n")):
            if not block.strip():
                continue
            items = re.split(r"^- ", block, flags=re.MULTILINE)
            if items[0].strip():
                result += [before] if before else []
                result += [line(one) for one in sentences(items[0])]
            for item in items[1:]:
                result += [r".IP \(bu 2", *(line(one) for one in sentences(item))]
            before = ".PP"
    return result


def sentences(text: str) -> list[str]:
    """Lines that end where sentences do, for roff sets a wider blank there."""
    flat = words(re.sub(r"\s+", " ", text).strip())
    return [line for line in re.split(r"(?<=[.;:]) (?=[A-Z\\])", flat) if line]


def prototype(text: str, width: int = 76) -> list[str]:
    """A declaration in bold, broken behind commas where it is too long."""
    first, *rest = f"{text};".split(", ")
    lines = [first]
    for piece in rest:
        if len(lines[-1]) + 2 + len(piece) < width:
            lines[-1] += f", {piece}"
        else:
            lines[-1] += ","
            lines.append(f"    {piece}")
    return [rf"\fB{code(one)}\fR" for one in lines]
