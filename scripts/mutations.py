"""Small changes to C++ code that a test should notice: where they can be made, and what they are.

The code is read with regular expressions, on a copy whose comments, strings and preprocessor lines
are blanked out. That relies on the formatting of this repository: binary operators stand between
blanks, template brackets do not.
"""

import re
from collections.abc import Callable
from dataclasses import dataclass


@dataclass(frozen=True)
class Mutation:
    """One change: the characters from `begin` to `end` of a file become `new`."""

    file: str
    line: int
    begin: int
    end: int
    kind: str
    old: str
    new: str

    def apply(self, text: str) -> str:
        return text[: self.begin] + self.new + text[self.end :]

    def __str__(self) -> str:
        return f"{self.file}:{self.line}: {self.kind}: {self.old}  ->  {self.new or '(nothing)'}"


# What a pattern may become; each finds the operator alone.
OPERATORS: tuple[tuple[str, str, tuple[str, ...]], ...] = (
    ("comparison", r"(?<= )==(?= )", ("!=",)),
    ("comparison", r"(?<= )!=(?= )", ("==",)),
    ("comparison", r"(?<= )<(?= )", ("<=", ">=")),
    ("comparison", r"(?<= )<=(?= )", ("<", ">")),
    ("comparison", r"(?<= )>(?= )", (">=", "<=")),
    ("comparison", r"(?<= )>=(?= )", (">", "<")),
    ("condition", r"(?<= )&&(?= |$)", ("||",)),
    ("condition", r"(?<= )\|\|(?= |$)", ("&&",)),
    ("condition", r"!(?=[A-Za-z_(:])", ("",)),
    ("arithmetic", r"(?<= )\+(?= )", ("-",)),
    ("arithmetic", r"(?<= )-(?= )", ("+",)),
    ("arithmetic", r"(?<= )\+=(?= )", ("-=",)),
    ("arithmetic", r"(?<= )-=(?= )", ("+=",)),
    ("arithmetic", r"(?<= )\*(?= )", ("/",)),
    ("arithmetic", r"(?<= )/(?= )", ("*",)),
    ("arithmetic", r"\+\+(?=[\w(*])", ("--",)),
    ("arithmetic", r"--(?=[\w(*])", ("++",)),
    ("bits", r"(?<= )&(?= )", ("|",)),
    ("bits", r"(?<= )\|(?= )", ("&",)),
    ("constant", r"\btrue\b", ("false",)),
    ("constant", r"\bfalse\b", ("true",)),
)
NUMBER = re.compile(r"(?<![\w.'])(0[xX][0-9A-Fa-f]+|\d+)([uUlL]*)(?![\w.'])")
CONDITION = re.compile(r"\b(if|while) \(")
# Notes one change: kind, begin, end, what comes there, and the old text where more of it is shown.
Add = Callable[..., None]

# A whole statement on one line that is no declaration.
STATEMENT = re.compile(
    r"\s*((?:\+\+|--)[^;]*"
    r"|[\w.\->\[\]:*()]+ (?:[-+*/|&^%]|<<|>>)?= [^;]*"
    r"|(?!return\b|delete\b|using\b|typedef\b|friend\b)[\w.\->:\[\]<>]+\([^;]*\)"
    r"|break|continue|return);\s*")
GUARDED = re.compile(r"\b(?:if|while|else if) \(.*\) ((?:return|break|continue)\b[^;]*;)\s*$")
NOT_CODE = re.compile(
    r"""//[^\n]*|/\*.*?\*/|R"(\w*)\(.*?\)\1"|"(?:\\.|[^"\\\n])*\""""
    r"""|(?<![0-9A-Fa-f])'(?:\\.|[^'\\\n])+'""",
    re.DOTALL)
LEFT_ALONE = re.compile(
    r"^\s*#[^\n]*(?:\\\n[^\n]*)*|\bstatic_assert\s*\([^;]*;|\btemplate <[^;{]*?>(?=\n)"
    r"|\boperator(?:[^\w\s(]+|\(\))|\[\[[^\]]*\]\]|\balignas\([^)]*\)|= 0;(?=\n\n)",
    re.DOTALL | re.MULTILINE)


def code_only(text: str) -> str:
    """The text with all that is no code blanked out; every character keeps its place."""

    def blank(match: re.Match[str]) -> str:
        return re.sub(r"[^\n]", " ", match[0])

    # Characters and strings become blanks between their quotes: nothing is found in them.
    return LEFT_ALONE.sub(blank, NOT_CODE.sub(blank, text))


def closing(code: str, opening: int) -> int:
    """The place of the bracket that closes the one at `opening`; -1 if there is none."""
    depth = 0
    for place in range(opening, len(code)):
        if code[place] == "(":
            depth += 1
        elif code[place] == ")":
            depth -= 1
            if depth == 0:
                return place
    return -1


def neighbours(number: str) -> list[str]:
    """The numbers beside a literal, in its base; none is below zero."""
    if number[:2] in ("0x", "0X"):
        value, form = int(number, 16), "0x{:X}"
    elif number[0] == "0" and number != "0":
        value, form = int(number, 8), "0{:o}"
    else:
        value, form = int(number), "{}"
    return [form.format(changed) for changed in (value + 1, value - 1) if changed >= 0]


def find_mutations(file: str, text: str) -> list[Mutation]:
    code = code_only(text)
    found: list[Mutation] = []

    def add(kind: str, begin: int, end: int, new: str, old: str | None = None) -> None:
        line = text.count("\n", 0, begin) + 1
        found.append(Mutation(file, line, begin, end, kind, old or text[begin:end], new))

    for kind, pattern, replacements in OPERATORS:
        for match in re.finditer(pattern, code, re.MULTILINE):
            for new in replacements:
                add(kind, match.start(), match.end(), new)
    for match in NUMBER.finditer(code):
        for written in neighbours(match[1]):
            add("constant", match.start(), match.end(), written + match[2])
    for match in CONDITION.finditer(code):
        end = closing(code, match.end() - 1)
        condition = text[match.end() : end]
        declares = re.search(r"[^=!<>]= |;", code[match.end() : end])
        if end >= 0 and not declares and "\n" not in condition:
            add("negated condition", match.end(), end, f"!({condition})")
    add_statements(code, text, add)
    return found


def add_statements(code: str, text: str, add: Add) -> None:
    """Statements that may be left out: whole lines after a complete one, and those behind an if."""
    place = 0
    before = ";"
    for line in code.split("\n"):
        end = place + len(line)
        begin = place + len(line) - len(line.lstrip())
        whole = STATEMENT.fullmatch(line) and line.count("(") == line.count(")")
        if whole and before[-1] in ";{}:)":
            if before[-1] != ":" or not line.lstrip().startswith("break"):
                # Behind a condition without braces the empty statement takes its place.
                add("dropped statement", begin, end, ";" if before[-1] == ")" else "")
        guarded = GUARDED.search(line)
        if guarded:
            add("dropped statement", place + guarded.start(1), place + guarded.end(1), ";",
                text[begin:end].strip())
        if line.strip():
            before = line.rstrip()
        place = end + 1
