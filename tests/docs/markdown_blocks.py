"""The documents in Markdown: their blocks of code, and where the content of each comes from.

In front of a block stands a comment that browsers and forges do not show:

    <!-- file: PATH -->       the block is that file, without its lines of marks
    <!-- file: PATH#NAME -->  what stands there between the lines "begin: NAME" and "end: NAME"
    <!-- run in: PATHS -->    a session: commands behind "$ ", each with what it prints; it runs in
                              a directory with copies of what is in those
    <!-- not run: WHY -->     nothing is compared

A document may say that a test of its own looks at its blocks: <!-- checked by: PATH -->, or by naming
the test in its text.
"""

from __future__ import annotations

import re
import textwrap
from dataclasses import dataclass
from pathlib import Path

MARK = re.compile(r"<!-- (file|run in|not run): (.*?) -->")
FENCE = re.compile(r"^```(\w*)\n(.*?)^```$", re.MULTILINE | re.DOTALL)
# What is told by its language to be code; other blocks are pictures, grammars and the like.
CODE = {"c", "cmake", "console", "cpp", "python", "sh", "xml"}


@dataclass(frozen=True)
class Block:
    language: str
    text: str
    begin: int  # of the content, in the document
    end: int
    line: int
    kind: str  # file, run in, not run, or nothing
    source: str


def documents(root: Path) -> list[Path]:
    """All documents of the tree, without what was built."""
    found = (
        path for path in sorted(root.rglob("*.md")) if "build" not in path.relative_to(root).parts
    )
    return [
        path
        for path in found
        if not any(part.startswith(".") for part in path.relative_to(root).parts)
    ]


def blocks(text: str) -> list[Block]:
    result = []
    for fence in FENCE.finditer(text):
        before = text[: fence.start()].rstrip("\n").rsplit("\n", 1)[-1]
        mark = MARK.fullmatch(before.strip())
        line = text.count("\n", 0, fence.start()) + 1
        result.append(
            Block(
                fence[1],
                fence[2],
                fence.start(2),
                fence.end(2),
                line,
                mark[1] if mark else "",
                mark[2] if mark else "",
            )
        )
    return result


def checked_by(root: Path, path: Path) -> bool:
    """Whether a test that the document names looks at it."""
    text = path.read_text()
    named = re.findall(r"<!-- checked by: (\S+) -->|`(tests/[\w/]+_test\.py)`", text)
    tests = [root / (comment or words) for comment, words in named]
    return any(test.is_file() and path.name in test.read_text() for test in tests)


def region(root: Path, source: str) -> str:
    """A file, or the part of it behind a number sign, as it stands in a document."""
    name, _, part = source.partition("#")
    text = (root / name).read_text()
    if part:
        found = re.search(
            rf"^[^\n]*\bbegin: {re.escape(part)}\n(.*?)^[^\n]*\bend: {re.escape(part)}$",
            text,
            re.MULTILINE | re.DOTALL,
        )
        if not found:
            raise ValueError(f"{name} has no part {part}")
        text = found[1]
    lines = [
        line for line in text.splitlines() if not re.fullmatch(r"\s*(//|#) (begin|end): \S+", line)
    ]
    return textwrap.dedent("\n".join(lines)).strip("\n") + "\n"


def commands(text: str) -> list[str]:
    """The commands of a session; one that ends in a backslash goes on in the next line."""
    result: list[str] = []
    going_on = False
    for line in text.splitlines():
        if going_on:
            result[-1] += "\n" + line
        elif line.startswith("$ "):
            result.append(line[2:])
        going_on = (going_on or line.startswith("$ ")) and line.endswith("\\")
    return result


def anchors(text: str) -> set[str]:
    """What a forge lets links lead to: the headings, written small and with hyphens."""
    found: dict[str, int] = {}
    result = set(re.findall(r'<a (?:id|name)="([^"]+)"', text))
    for heading in re.findall(r"^#+ (.*)$", FENCE.sub("", text), re.MULTILINE):
        name = re.sub(r"[^\w\- ]", "", heading.strip().lower()).replace(" ", "-")
        count = found.get(name, 0)
        found[name] = count + 1
        result.add(f"{name}-{count}" if count else name)
    return result


def links(text: str) -> list[str]:
    """The targets of links and pictures, outside of code."""
    bare = re.sub(r"`[^`\n]+`", "", FENCE.sub("", text))
    return re.findall(r"\]\(<?([^)\s>]+)>?\)", bare) + re.findall(
        r"^\[[^\]]+\]: (\S+)$", bare, re.MULTILINE
    )
