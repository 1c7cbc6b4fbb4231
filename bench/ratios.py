"""What the notes of bench/compare.py say: ratios of throughput, taken within a round."""

import dataclasses
import statistics

from contestants import OWN, own_operation


@dataclasses.dataclass(frozen=True)
class Ratio:
    median: float
    lowest: float
    highest: float

    def __str__(self) -> str:
        return f"{self.median:.2f} ({self.lowest:.2f}–{self.highest:.2f})"


class Throughput:
    def __init__(self, notes: dict) -> None:
        self.times: dict = notes["times"]
        self.sizes: dict = notes["sizes"]
        self.rounds: int = notes["rounds"]
        self.refused: set = {tuple(pair) for pair in notes["refused"]}

    def documents(self) -> list[str]:
        return [document for document in self.sizes if document in self.times]

    def seconds(self, document: str, operation: str, name: str = OWN) -> list[float]:
        """One time a round, or none when it was not measured."""
        return self.times.get(document, {}).get(operation, {}).get(name, [])

    def against(self, document: str, operation: str, peer: str) -> Ratio | None:
        """How many times netxml's throughput is the peer's."""
        return _ratio(self.seconds(document, operation, peer),
                      self.seconds(document, own_operation(operation)))

    def within(self, document: str, operation: str, base: str, name: str = OWN) -> Ratio | None:
        """How many times one operation takes the time of another one of the same library."""
        return _ratio(self.seconds(document, operation, name), self.seconds(document, base, name))


def _ratio(above: list[float], below: list[float]) -> Ratio | None:
    rounds = [a / b for a, b in zip(above, below)]
    return Ratio(statistics.median(rounds), min(rounds), max(rounds)) if rounds else None
