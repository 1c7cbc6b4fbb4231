"""Threads: documents of their own, one document for all, one schema for all."""
import random
import threading
import unittest
from collections.abc import Callable
from contextlib import suppress
from os import environ

import netxml
from netxml.schema import _Gate
from random_xml import RandomXml

THREADS = 4


def in_threads(work: Callable[[int], None]) -> None:
    """Runs work(0), work(1), ... at the same time, and raises what one of them raised."""
    failures: list[BaseException] = []
    start = threading.Barrier(THREADS)

    def run(number: int) -> None:
        try:
            start.wait()
            work(number)
        except BaseException as failure:  # handed on to the test
            failures.append(failure)

    threads = [threading.Thread(target=run, args=(number,)) for number in range(THREADS)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    if failures:
        raise failures[0]


class Threads(unittest.TestCase):
    def test_documents_of_their_own(self) -> None:
        texts = [RandomXml(seed).text() for seed in range(100)]
        expected = [netxml.parse(text).to_bytes() for text in texts]

        def work(number: int) -> None:
            for index in range(len(texts)):
                at = (index * (number + 1)) % len(texts)
                if netxml.parse(texts[at]).to_bytes() != expected[at]:
                    raise AssertionError(texts[at])

        in_threads(work)

    def test_one_document_for_all(self) -> None:
        """Whatever the others do meanwhile, a call is whole or raises that its node is gone."""
        document = netxml.new("a")
        counts = [0] * THREADS

        def work(number: int) -> None:
            chance = random.Random(number)
            for step in range(400):
                elements = document.root.elements()
                chosen = chance.choice([document.root, *elements])
                try:
                    counts[number] += self.use(document, chosen, chance, step)
                except netxml.RemovedError:
                    pass

        in_threads(work)
        self.assertEqual(len(document.root.elements()), sum(counts))
        self.assertEqual(netxml.parse(document.to_bytes()).to_bytes(), document.to_bytes())

    @staticmethod
    def use(
        document: netxml.Document, chosen: netxml.Element, chance: random.Random, step: int
    ) -> int:
        """Uses an element somehow; returns by how many the root's children have grown."""
        action = chance.randrange(6)
        if action == 0 and chosen is not document.root:
            chosen.remove()
            return -1
        if action == 1:
            chosen.set(f"{{urn:{step % 3}}}n", "核心")
        elif action == 2:
            document.to_bytes("UTF-16")
        elif action == 3:
            _ = [node.path for node in chosen.children], chosen.namespaces
        else:
            added = document.root.add("b", "text")
            with suppress(netxml.RemovedError):  # another thread may take it away at once
                added.add("c")
            return 1
        return 0

    def test_a_document_that_is_closed_meanwhile(self) -> None:
        for _ in range(20):
            document = netxml.parse("<a>" + "<b>text</b>" * 200 + "</a>")

            def work(number: int) -> None:
                if number == 0:
                    document.close()
                    return
                try:
                    while True:
                        for element in document.root.elements():
                            _ = element.path, element.text
                except netxml.ClosedError:
                    pass

            in_threads(work)

    def test_one_schema_for_all(self) -> None:
        schema = netxml.Schema(environ["NETXML_SCHEMA"])

        def work(number: int) -> None:
            for step in range(200):
                inner = f"<n{number}.{step}/>"
                text = f'<network xmlns="urn:example:network" version="1">{inner}</network>'
                verdict = schema.validate(netxml.parse(text))
                if not (verdict.code == 1 and verdict.path == "/network" and verdict.element):
                    raise AssertionError(verdict)

        in_threads(work)

    def test_schemas_registered_at_once(self) -> None:
        def work(_: int) -> None:
            for _ in range(50):
                netxml.Schema(environ["NETXML_SCHEMA"])

        in_threads(work)

    def test_a_registration_waits_for_validations(self) -> None:
        """It may change what is process-wide. (The pause only gives a mistake time to show.)"""
        gate = _Gate()

        def register() -> None:
            with gate.registering():
                pass

        registering = threading.Thread(target=register)
        with gate.validating(), gate.validating():
            registering.start()
            registering.join(0.2)
            self.assertTrue(registering.is_alive())
        registering.join()

    def test_copies_between_documents_in_both_directions(self) -> None:
        documents = [netxml.parse("<a><b>x</b></a>"), netxml.parse("<c><d>y</d></c>")]

        def work(number: int) -> None:
            source, target = documents[number % 2], documents[1 - number % 2]
            for _ in range(200):
                target.root.add_copy(source.root.elements()[0])

        in_threads(work)
        self.assertEqual([len(d.root.elements()) for d in documents], [1 + 200 * THREADS // 2] * 2)


if __name__ == "__main__":
    unittest.main()
