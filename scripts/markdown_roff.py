"""Sections of the documents in Markdown, for manual pages.

Knows what the documents of this repository use: paragraphs, lists, tables, blocks of code, `code`,
emphasis and links.
"""

from __future__ import annotations

import re

from roff import code, example, line


def section(text: str, title: str) -> str:
    """What stands below a heading, up to the next one of its level or above."""
    found = re.search(rf"^(#+) {re.escape(title)}\n", text, re.MULTILINE)
    if not found:
        raise ValueError(f"there is no heading {title!r}")
    rest = text[found.end() :]
    end = re.search(rf"^#{{1,{len(found[1])}}} ", rest, re.MULTILINE)
    return rest[: end.start()] if end else rest


def words(text: str) -> str:
    """A paragraph in one line; code in bold, links as their words."""
    text = re.sub(r"\s+", " ", text).strip()
    pieces = re.split(r"(`[^`]+`)", re.sub(r"\[([^\]]+)\]\([^)]+\)", r"\1", text))
    result = []
    for number, piece in enumerate(pieces):
        if number % 2:
            result.append(rf"\fB{code(piece[1:-1])}\fR")
        else:
            piece = piece.replace("\\", r"\(rs").replace("^", r"\(ha").replace("~", r"\(ti")
            result.append(re.sub(r"\*\*([^*]+)\*\*", r"\\fI\1\\fR", piece))
    return "".join(result)


def sentences(text: str) -> list[str]:
    found = re.split(r"(?<=[.;:]) (?=[A-Z\\])", words(text))
    return [line(one) for one in found if one]


def cells(row: str) -> list[str]:
    """The cells of a row; a bar in a cell is written with a backslash."""
    return [cell.strip().replace(r"\|", "|") for cell in re.split(r"(?<!\\)\|", row.strip())[1:-1]]


def table(rows: list[str]) -> list[str]:
    """A list: the first cell as its head, the others below with the names of their columns."""
    head = cells(rows[0])
    result = []
    for row in rows[2:]:
        first, *others = cells(row)
        if len(others) == 1:
            body = sentences(others[0])
        else:
            named = [(name, cell) for name, cell in zip(head[1:], others) if cell]
            body = [one for name, cell in named for one in (f"{name}: {words(cell)}", ".br")][:-1]
        result += [".TP", line(words(first)), *body]
    return result


def roff_of(text: str) -> list[str]:
    """A piece of Markdown as lines of roff; headings become subsections."""
    result: list[str] = []
    for number, part in enumerate(
        re.split(r"^```", re.sub(r"<!--.*?-->\n", "", text), flags=re.MULTILINE)
    ):
        if number % 2:
            lines = part.split("\n")[1:]
            result += example([one for one in lines if one or lines[-1] != one])
            continue
        for block in re.split(r"\n\s*\n", part.strip("\n")):
            if not block.strip():
                continue
            if heading := re.match(r"#+ (.*)", block):
                result.append(f".SS {words(heading[1])}")
                block = block[heading.end() :].lstrip("\n")
                if not block:
                    continue
            if block.startswith("|"):
                result += table(block.split("\n"))
                continue
            items = re.split(r"^- ", block, flags=re.MULTILINE)
            if items[0].strip():
                result += [".PP", *sentences(items[0])]
            for item in items[1:]:
                result += [r".IP \(bu 2", *sentences(item)]
    return result
