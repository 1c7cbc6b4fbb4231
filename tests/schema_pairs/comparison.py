"""Runs programs over schemas and documents, and counts where they agree."""

from __future__ import annotations

from collections import Counter
from dataclasses import dataclass, field
from pathlib import Path
from typing import Protocol

from verdicts import Answer, Verdict


class Peer(Protocol):
    name: str

    def answer(self, schema: Path, documents: list[Path]) -> Answer:
        ...


@dataclass
class Pair:
    """One document of one schema, with what each program says."""

    category: str
    schema: Path
    document: Path
    ours: Verdict
    theirs: dict[str, Verdict]

    @property
    def outcome(self) -> str:
        peers = {verdict.valid for verdict in self.theirs.values()}
        if self.ours.valid is None:
            return "all refuse the schema" if peers == {None} else "netxml refuses the schema"
        known = peers - {None}
        if not known:
            return "peers refuse the schema"
        if len(known) == 2:
            return "peers disagree"
        if known == {self.ours.valid}:
            return f"both {self.ours.word}"
        return "disagree"


@dataclass
class Comparison:
    netxml: Peer
    peers: list[Peer]
    pairs: list[Pair] = field(default_factory=list)

    def run(self, category: str, schema: Path, documents: list[Path]) -> list[Pair]:
        ours = self.netxml.answer(schema, documents)
        theirs = {peer.name: peer.answer(schema, documents) for peer in self.peers}
        added = [
            Pair(
                category,
                schema,
                document,
                ours.verdicts[document],
                {name: answer.verdicts[document] for name, answer in theirs.items()},
            )
            for document in documents
        ]
        self.pairs += added
        return added

    OUTCOMES = (
        "both valid",
        "both invalid",
        "disagree",
        "peers disagree",
        "netxml refuses the schema",
        "peers refuse the schema",
        "all refuse the schema",
    )

    def table(self) -> str:
        counts: dict[str, Counter[str]] = {}
        for pair in self.pairs:
            counts.setdefault(pair.category, Counter())[pair.outcome] += 1
        total: Counter[str] = Counter()
        for counter in counts.values():
            total += counter
        shown = [
            o for o in self.OUTCOMES if total[o] or o in ("both valid", "both invalid", "disagree")
        ]
        lines = [
            "| category | pairs | " + " | ".join(shown) + " |",
            "|---" * (len(shown) + 2) + "|",
        ]
        for category, counter in [*counts.items(), ("all", total)]:
            cells = " | ".join(str(counter[outcome]) for outcome in shown)
            lines.append(f"| {category} | {counter.total()} | {cells} |")
        return "\n".join(lines)


def described(pair: Pair) -> str:
    lines = [f"{pair.outcome}: {pair.document} by {pair.schema} ({pair.category})"]
    for name, verdict in [("netxml", pair.ours), *pair.theirs.items()]:
        lines.append(f"    {name:8}{verdict.word:9}{verdict.sentence[:300]}")
    return "\n".join(lines)
