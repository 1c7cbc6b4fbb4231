"""Random patterns of XML Schema's regular expressions, with words that fit them or nearly do."""

from __future__ import annotations

import random
import unicodedata
from collections.abc import Callable

POOL = "abcxyzABCXYZ0123456789_-.:+*/\\^$()[]{}|?,;#~ '=!%@`" + "éßΩя日本٣½€😀·"
_META = ".\\?*+{}()[]|^$-"
_CATEGORIES = "L Lu Ll N Nd P Pd S Sm Sc Z Zs Lo".split()
_BLOCKS = {"IsBasicLatin": (0, 0x7F), "IsLatin-1Supplement": (0x80, 0xFF)}

Predicate = Callable[[str], bool]


def _category(name: str) -> Predicate:
    return lambda c: unicodedata.category(c).startswith(name)


def _block(first: int, last: int) -> Predicate:
    return lambda c: first <= ord(c) <= last


def _name_start(c: str) -> bool:
    return c in "_:" or c.isalpha()


def _name_character(c: str) -> bool:
    return c.isalnum() and unicodedata.category(c) != "No" or c in "._-:·"


_ESCAPES: dict[str, Predicate] = {
    "d": _category("Nd"),
    "w": lambda c: unicodedata.category(c)[0] not in "PZC",
    "s": lambda c: c in " \t\n\r",
    "i": _name_start,
    "c": _name_character,
}


class PatternMaker:
    """Makes a pattern; `words` gives texts for the one made last."""

    def __init__(self, chance: random.Random, wide: bool = True) -> None:
        self.chance = chance
        self.wide = wide
        self._writers: list[Callable[[], str]] = []

    def make(self) -> tuple[str, list[str]]:
        text, word = self._alternatives(0)
        return text, self._words(word)

    def _words(self, word: Callable[[], str]) -> list[str]:
        words = []
        for _ in range(4):
            fitting = word()
            words += [fitting, self._spoiled(fitting)]
        return [w for w in words if len(w) < 200]

    def _spoiled(self, word: str) -> str:
        other = self.chance.choice(POOL if self.wide else POOL[:60])
        at = self.chance.randint(0, len(word))
        kind = self.chance.randrange(4)
        if kind == 0:
            return word[:at] + other + word[at:]
        if kind == 1:
            return word[:at] + word[at + 1 :]
        if kind == 2:
            return word + word
        return word[:at] + other + word[at + 1 :]

    def _alternatives(self, depth: int) -> tuple[str, Callable[[], str]]:
        parts = [self._branch(depth) for _ in range(self.chance.choice((1, 1, 1, 2, 3)))]
        return "|".join(t for t, _ in parts), lambda: self.chance.choice(parts)[1]()

    def _branch(self, depth: int) -> tuple[str, Callable[[], str]]:
        pieces = [self._piece(depth) for _ in range(self.chance.choice((0, 1, 1, 2, 2, 3)))]
        return "".join(t for t, _ in pieces), lambda: "".join(w() for _, w in pieces)

    def _piece(self, depth: int) -> tuple[str, Callable[[], str]]:
        if depth < 2 and self.chance.random() < 0.25:
            inner, word = self._alternatives(depth + 1)
            text = f"({inner})"
        else:
            text, fits = self._atom()
            word = self._one_of(fits)
        return self._repeated(text, word)

    def _repeated(self, text: str, word: Callable[[], str]) -> tuple[str, Callable[[], str]]:
        low = self.chance.randint(0, 3)
        high = low + self.chance.randint(0, 3)
        quantifier, least, most = self.chance.choice(
            [("", 1, 1)] * 5
            + [("?", 0, 1), ("*", 0, 3), ("+", 1, 3)]
            + [
                (f"{{{low}}}", low, low),
                (f"{{{low},}}", low, low + 2),
                (f"{{{low},{high}}}", low, high),
            ]
        )
        if quantifier in ("{0}", "{0,0}"):
            quantifier, least, most = "?", 0, 1
        return text + quantifier, lambda: "".join(
            word() for _ in range(self.chance.randint(least, most))
        )

    def _one_of(self, fits: Predicate) -> Callable[[], str]:
        members = [c for c in (POOL if self.wide else POOL[:52]) if fits(c)]
        return lambda: self.chance.choice(members) if members else "a"

    def _atom(self) -> tuple[str, Predicate]:
        kind = self.chance.randrange(10)
        if kind < 4:
            c = self.chance.choice(POOL[:52] if kind or not self.wide else POOL)
            return ("\\" + c if c in _META else c), lambda x: x == c
        if kind == 4:
            return ".", lambda c: c not in "\n\r"
        if kind == 5:
            return self._escape()
        return self._group(0)

    def _escape(self) -> tuple[str, Predicate]:
        negated = self.chance.random() < 0.25
        if self.wide and self.chance.random() < 0.4:
            name = self.chance.choice(_CATEGORIES + list(_BLOCKS))
            fits = _block(*_BLOCKS[name]) if name in _BLOCKS else _category(name)
            text = f"\\{'P' if negated else 'p'}{{{name}}}"
        else:
            letter = self.chance.choice("dddwwsic")
            fits = _ESCAPES[letter]
            text = "\\" + (letter.upper() if negated else letter)
        return text, (lambda c: not fits(c)) if negated else fits

    def _group(self, depth: int) -> tuple[str, Predicate]:
        members: list[tuple[str, Predicate]] = []
        for _ in range(self.chance.choice((1, 2, 2, 3))):
            members.append(self._member())
        negated = self.chance.random() < 0.25
        text = "".join(t for t, _ in members)
        taken: Predicate = lambda _: False
        if depth == 0 and self.chance.random() < 0.15:
            inner, taken = self._group(1)
            text += "-" + inner
        text = f"[{'^' if negated else ''}{text}]"
        return text, lambda c: (any(f(c) for _, f in members) != negated) and not taken(c)

    def _member(self) -> tuple[str, Predicate]:
        kind = self.chance.randrange(6)
        if kind < 3:
            ends = self.chance.choice(["az", "ac", "AZ", "09", "05", "xz"])
            return f"{ends[0]}-{ends[1]}", lambda c: ends[0] <= c <= ends[1]
        if kind == 3:
            return self._escape()
        c = self.chance.choice(POOL[:52] if kind == 4 or not self.wide else POOL)
        return ("\\" + c if c in "\\[]^-" else c), lambda x: x == c
