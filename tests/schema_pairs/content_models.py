"""Content models: their text in a schema, children that fit them, and whether each child's particle
is known from the children before it alone, which XML Schema asks for."""

from __future__ import annotations

import random
from collections.abc import Callable, Iterator
from dataclasses import dataclass, field

UNBOUNDED = -1
MOST_POSITIONS = 400
_SAMPLE_SPACES = ("urn:t", "urn:o", "urn:third", "")


@dataclass
class Particle:
    """An element, a wildcard or a group of particles."""

    kind: str  # element, any, sequence, choice, all
    least: int = 1
    most: int = 1
    parts: list[Particle] = field(default_factory=list)
    text: str = ""  # of an element or wildcard: its tag up to where the bounds go
    rest: str = "/>"
    names: frozenset[tuple[str, str]] = frozenset()  # of an element: it and its substitutes
    spaces: frozenset[str] = frozenset()  # of a wildcard: those of the sample that it admits
    sample: Callable[[], str] = lambda: ""
    group: str = ""  # the name of the group definition that stands for it

    @property
    def is_leaf(self) -> bool:
        return self.kind in ("element", "any")

    def bounds(self) -> str:
        text = f' minOccurs="{self.least}"' if self.least != 1 else ""
        most = "unbounded" if self.most == UNBOUNDED else str(self.most)
        return text + (f' maxOccurs="{most}"' if self.most != 1 else "")

    def schema(self) -> str:
        if self.is_leaf:
            return f"{self.text}{self.bounds()}{self.rest}"
        if self.group:
            return f'<xs:group ref="t:{self.group}"{self.bounds()}/>'
        return f"<xs:{self.kind}{self.bounds()}>{self.inner()}</xs:{self.kind}>"

    def inner(self) -> str:
        return "".join(part.schema() for part in self.parts)

    def notation(self) -> str:
        name = "/".join(sorted(n for _, n in self.names)) or ("any" if self.kind == "any" else "")
        mark = {"sequence": ",", "choice": "|", "all": "&"}.get(self.kind, "")
        text = name if self.is_leaf else f"({mark.join(p.notation() for p in self.parts)})"
        if (self.least, self.most) == (1, 1):
            return text
        return f"{text}{{{self.least},{'' if self.most == UNBOUNDED else self.most}}}"

    def children(self, chance: random.Random) -> list[str]:
        most = self.least + 2 if self.most == UNBOUNDED else self.most
        count = chance.randint(self.least, max(self.least, min(most, self.least + 3)))
        result: list[str] = []
        for _ in range(count):
            result += self._once(chance)
        return result

    def _once(self, chance: random.Random) -> list[str]:
        if self.is_leaf:
            return [self.sample()]
        if self.kind == "choice":
            return chance.choice(self.parts).children(chance) if self.parts else []
        parts = list(self.parts)
        if self.kind == "all":
            chance.shuffle(parts)
        return [child for part in parts for child in part.children(chance)]


# An automaton of positions: what may come first, what last, what behind each.
@dataclass
class _Ends:
    first: set[int]
    last: set[int]
    empty: bool


class Determinism:
    """Asks whether two particles may take the same child (Unique Particle Attribution)."""

    def __init__(self, model: Particle) -> None:
        self.positions: list[Particle] = []
        self.follow: list[set[int]] = []
        self.too_large = False
        ends = self._ends(model)
        self.deterministic = not self.too_large and self._unique(ends.first)
        self.deterministic = self.deterministic and all(map(self._unique, self.follow))

    def _ends(self, model: Particle) -> _Ends:
        result = _Ends(set(), set(), True)
        copies = max(model.least, 1 if model.most == UNBOUNDED else model.most)
        for number in range(copies):
            once = self._once(model)
            if number >= model.least:
                once.empty = True
            if model.most == UNBOUNDED and number == copies - 1:
                self._join(once.last, once.first)
            result = self._sequence(result, once)
        return result

    def _once(self, model: Particle) -> _Ends:
        if len(self.positions) > MOST_POSITIONS:
            self.too_large = True
            return _Ends(set(), set(), True)
        if model.is_leaf:
            self.positions.append(model)
            self.follow.append(set())
            number = len(self.positions) - 1
            return _Ends({number}, {number}, False)
        ends = [self._ends(part) for part in model.parts]
        if model.kind == "sequence":
            result = _Ends(set(), set(), True)
            for part in ends:
                result = self._sequence(result, part)
            return result
        first = set().union(*(part.first for part in ends))
        last = set().union(*(part.last for part in ends))
        if model.kind == "all":
            self._join(last, first)
            return _Ends(first, last, all(part.empty for part in ends))
        return _Ends(first, last, not ends or any(part.empty for part in ends))

    def _sequence(self, before: _Ends, behind: _Ends) -> _Ends:
        self._join(before.last, behind.first)
        first = before.first | (behind.first if before.empty else set())
        last = behind.last | (before.last if behind.empty else set())
        return _Ends(first, last, before.empty and behind.empty)

    def _join(self, last: set[int], first: set[int]) -> None:
        for number in last:
            self.follow[number] |= first

    def _unique(self, numbers: set[int]) -> bool:
        particles = list({id(self.positions[n]): self.positions[n] for n in numbers}.values())
        return not any(
            _overlap(one, other)
            for at, one in enumerate(particles)
            for other in particles[at + 1 :]
        )


def _overlap(one: Particle, other: Particle) -> bool:
    if one.kind == other.kind == "element":
        return bool(one.names & other.names)
    if one.kind == other.kind == "any":
        return bool(one.spaces & other.spaces)
    element, wildcard = (one, other) if one.kind == "element" else (other, one)
    return any(space in wildcard.spaces for space, _ in element.names)


def leaves(model: Particle) -> Iterator[Particle]:
    if model.is_leaf:
        yield model
    for part in model.parts:
        yield from leaves(part)


def admitted_spaces(constraint: str, target: str) -> frozenset[str]:
    """Which of the sample's namespaces a wildcard's constraint admits."""
    if constraint == "##any":
        return frozenset(_SAMPLE_SPACES)
    if constraint == "##other":
        return frozenset(s for s in _SAMPLE_SPACES if s not in (target, ""))
    words = constraint.split()
    names = {"##targetNamespace": target, "##local": ""}
    return frozenset(names.get(word, word) for word in words)
