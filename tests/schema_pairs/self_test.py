#!/usr/bin/env python3
"""Tests what the comparison rests on: generator and mutator, and that a fault is seen as one."""

from __future__ import annotations

import random
import tempfile
import unittest
from pathlib import Path

from comparison import Comparison, Pair, Peer
from content_models import UNBOUNDED, Determinism, Particle, admitted_spaces
from generated_pairs import generated
from known_differences import explain
from mutation import Mutator, spans_of
from pattern_maker import PatternMaker
from verdicts import Answer, Verdict, root_name_end


def element(name: str, least: int = 1, most: int = 1) -> Particle:
    return Particle("element", least, most, names=frozenset({("", name)}))


def group(kind: str, *parts: Particle, least: int = 1, most: int = 1) -> Particle:
    return Particle(kind, least, most, list(parts))


class DeterminismTest(unittest.TestCase):
    ROWS = [
        ("(a, b)", group("sequence", element("a"), element("b")), True),
        ("(a?, a)", group("sequence", element("a", 0), element("a")), False),
        ("(a, a?)", group("sequence", element("a"), element("a", 0)), True),
        ("(a*, a)", group("sequence", element("a", 0, UNBOUNDED), element("a")), False),
        ("(a | a)", group("choice", element("a"), element("a")), False),
        ("(a{2,3}, a)", group("sequence", element("a", 2, 3), element("a")), False),
        ("(a{2}, a)", group("sequence", element("a", 2, 2), element("a")), True),
        (
            "(a?, b)*, a",
            group(
                "sequence",
                group("sequence", element("a", 0), element("b"), least=0, most=UNBOUNDED),
                element("a"),
            ),
            False,
        ),
        (
            "((a, b) | (a, c))",
            group(
                "choice",
                group("sequence", element("a"), element("b")),
                group("sequence", element("a"), element("c")),
            ),
            False,
        ),
        ("(a & b?)", group("all", element("a"), element("b", 0)), True),
    ]

    def test_models(self) -> None:
        for text, model, expected in self.ROWS:
            self.assertEqual(Determinism(model).deterministic, expected, text)

    def test_wildcards(self) -> None:
        self.assertEqual(admitted_spaces("##other", "urn:t"), {"urn:o", "urn:third"})
        self.assertEqual(admitted_spaces("##targetNamespace ##local", "urn:t"), {"urn:t", ""})


class GeneratorTest(unittest.TestCase):
    def test_same_seed_same_bytes(self) -> None:
        texts = []
        for _ in range(2):
            with tempfile.TemporaryDirectory() as place:
                for _ in generated(Path(place), 3, 1, 2):
                    pass
                files = sorted(p for p in Path(place).rglob("*") if p.is_file())
                texts.append([(str(f.relative_to(place)), f.read_bytes()) for f in files])
        self.assertEqual(texts[0], texts[1])
        self.assertGreater(len(texts[0]), 60)

    def test_patterns_have_words(self) -> None:
        chance = random.Random(1)
        for _ in range(200):
            pattern, words = PatternMaker(chance).make()
            self.assertTrue(words, pattern)


class MutatorTest(unittest.TestCase):
    TEXT = b'<?xml version="1.0"?>\n<r a="1 > 0"><b>x</b><!-- <c/> --><d e=\'2\'/></r>\n'

    def test_spans(self) -> None:
        cuts = [self.TEXT[s.start : s.end] for s in spans_of(self.TEXT)]
        self.assertEqual(cuts[1:], [b"<b>x</b>", b"<d e='2'/>"])
        self.assertEqual(spans_of(self.TEXT)[0].content, self.TEXT.index(b"<b>"))

    def test_changes_stay_well_formed(self) -> None:
        mutator = Mutator(random.Random(2))
        kinds = set()
        for _ in range(300):
            mutated = mutator.mutated(self.TEXT)
            assert mutated
            kinds.add(mutated[1])
            self.assertNotEqual(mutated[0], self.TEXT)
            spans_of(mutated[0])  # fails when it is not well-formed
        self.assertGreater(len(kinds), 10)

    def test_root(self) -> None:
        self.assertEqual(root_name_end(b"<!-- <x> --><root\n/>"), len(b"<!-- <x> --><root"))


class FakeProgram:
    def __init__(self, name: str, valid: bool | None) -> None:
        self.name = name
        self.valid = valid

    def answer(self, schema: Path, documents: list[Path]) -> Answer:
        return Answer({document: Verdict(self.valid, "because") for document in documents})


class ComparisonTest(unittest.TestCase):
    ROWS = [
        (True, True, True, "both valid"),
        (False, False, False, "both invalid"),
        (True, False, False, "disagree"),
        (False, True, None, "disagree"),
        (True, True, False, "peers disagree"),
        (None, True, False, "netxml refuses the schema"),
        (None, None, None, "all refuse the schema"),
        (True, None, None, "peers refuse the schema"),
    ]

    def test_outcomes(self) -> None:
        for ours, one, other, expected in self.ROWS:
            peers: list[Peer] = [FakeProgram("one", one), FakeProgram("other", other)]
            comparison = Comparison(FakeProgram("netxml", ours), peers)
            pairs = comparison.run("any", Path("x.xsd"), [Path("x.xml")])
            self.assertEqual(pairs[0].outcome, expected)
            self.assertIn("| any | 1 |", comparison.table())

    def test_a_fault_has_no_row(self) -> None:
        with tempfile.TemporaryDirectory() as place:
            schema, document = Path(place) / "a.xsd", Path(place) / "a.xml"
            schema.write_text("<schema/>")
            document.write_text("<r><a/><b/></r>")
            ours = Verdict(False, "1:4: Unexpected element", 6)
            peers = {"libxml2": Verdict(True)}
            pair = Pair("model", schema, document, ours, peers)
            self.assertIsNone(explain(pair, []))
            # The same where netxml tells of it.
            told = explain(pair, ["the content model cannot be said in a form that ..."])
            assert told
            self.assertEqual(told.name, "model without an exact form")


if __name__ == "__main__":
    unittest.main()
