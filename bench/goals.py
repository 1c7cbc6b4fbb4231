"""What netxml wants to reach, and how far it is from there."""

import dataclasses
import statistics
from typing import Callable

import tables
from contestants import OWN
from ratios import Throughput

CONFIGURATIONS = ["config-1m", "config-1m-compact", "config-10m", "config-100m"]
MESSAGES = ["message-400", "message-2k", "message-12k"]


@dataclasses.dataclass(frozen=True)
class Notes:
    throughput: Throughput
    memory: dict
    growth: list[dict]


@dataclasses.dataclass(frozen=True)
class Goal:
    what: str
    bound: float
    at_most: bool
    figures: Callable[[Notes], dict[str, float]]  # by document, or by what else it is measured at
    unit: str = ""


def _against(operation: str, peer: str, documents: list[str] | None = None):
    def figures(notes: Notes) -> dict[str, float]:
        chosen = documents or notes.throughput.documents()
        ratios = {d: notes.throughput.against(d, operation, peer) for d in chosen}
        return {d: ratio.median for d, ratio in ratios.items() if ratio}

    return figures


def _within(operations: list[str], percent: bool = False):
    def figures(notes: Notes) -> dict[str, float]:
        found = {}
        for operation in operations:
            base = "tree" if operation == "free" else operation.split("-")[0]
            for document in notes.throughput.documents():
                if ratio := notes.throughput.within(document, operation, base):
                    found[f"{operation}, {document}"] = ratio.median * (100 if percent else 1)
        return found

    return figures


def _heap(peer: str, what: str):
    def figures(notes: Notes) -> dict[str, float]:
        trees = {d: operations["tree"] for d, operations in notes.memory["heap"].items()}
        return {d: tree[OWN][what] / tree[peer][what] for d, tree in trees.items() if peer in tree}

    return figures


def _size(notes: Notes) -> dict[str, float]:
    return {"libnetxml.so": notes.memory["libraries"][OWN]["text"] / 1000}


def _growth(notes: Notes) -> dict[str, float]:
    series: dict = {}
    for note in notes.growth:
        key = f"{note['operation']}, {note['shape']}"
        series.setdefault(key, {})[note["size"]] = note
    return {key: tables.most_for_twice(sizes) for key, sizes in series.items()}


def _at_least(what: str, bound: float, figures) -> Goal:
    return Goal(what, bound, False, figures, "×")


def _at_most(what: str, bound: float, figures, unit: str = "×") -> Goal:
    return Goal(what, bound, True, figures, unit)


GOALS = [
    _at_least("tree from configurations, over pugixml", 1.1,
              _against("tree", "pugixml", CONFIGURATIONS)),
    _at_least("tree from messages, over pugixml", 1.3, _against("tree", "pugixml", MESSAGES)),
    _at_least("tree, many attributes, over pugixml", 1.0,
              _against("tree", "pugixml", ["attributes"])),
    _at_least("tree, tiny elements, over pugixml", 0.7, _against("tree", "pugixml", ["tiny"])),
    _at_least("tree, long ASCII text, over pugixml", 2.0, _against("tree", "pugixml", ["text"])),
    _at_least("tree, SVG, over pugixml", 1.5, _against("tree", "pugixml", ["svg"])),
    _at_least("tree, Chinese in UTF-8, over pugixml", 0.5,
              _against("tree", "pugixml", ["chinese"])),
    _at_least("tree, Chinese in UTF-8, over libxml2", 3.0,
              _against("tree", "libxml2", ["chinese"])),
    _at_least("events, over libxml2 SAX2", 3.0, _against("events", "libxml2")),
    _at_least("events, over Expat with namespaces", 5.0, _against("events", "expat")),
    _at_most("free, of the parse", 5.0, _within(["free"], percent=True), "%"),
    _at_least("write to a string, over pugixml", 1.5, _against("write", "pugixml")),
    _at_least("write to a string, over libxml2", 4.0, _against("write", "libxml2")),
    _at_least("copy a tree, over pugixml", 1.1, _against("copy", "pugixml")),
    _at_most("heap kept by a tree, of pugixml's", 1.3, _heap("pugixml", "kept")),
    _at_most("heap at the peak, of pugixml's", 1.3, _heap("pugixml", "peak")),
    _at_most("heap kept by a tree, of libxml2's", 0.8, _heap("libxml2", "kept")),
    _at_most("heap at the peak, of libxml2's", 0.8, _heap("libxml2", "peak")),
    _at_least("validate a ready tree, over libxml2", 10.0, _against("validate", "libxml2")),
    _at_most("text and read-only data", 160.0, _size, "KB"),
    _at_most("work for twice the size", 2.3, _growth),
    _at_most("time from a file or chunks, of that from memory", 1.3,
             _within(tables.SOURCES)),
]


def _row(goal: Goal, notes: Notes) -> list[str]:
    figures = goal.figures(notes)
    bound = f"{'≤' if goal.at_most else '≥'} {goal.bound:g} {goal.unit}"
    if not figures:
        return [goal.what, bound, "not measured", "", "", ""]
    worst = (max if goal.at_most else min)(figures, key=figures.__getitem__)
    reached = [value <= goal.bound if goal.at_most else value >= goal.bound
               for value in figures.values()]
    return [goal.what, bound, f"{figures[worst]:.2f} ({worst})",
            f"{statistics.median(figures.values()):.2f}", f"{sum(reached)} of {len(reached)}",
            "yes" if all(reached) else "no"]


def table(notes: Notes) -> str:
    head = ["what", "goal", "worst", "median", "reached in", "reached"]
    return tables.table(head, (_row(goal, notes) for goal in GOALS))
