#!/usr/bin/env python3
"""Lets the contestants take turns, and notes how long each took.

Each library has a process of its own: what one leaves behind in its memory slows nobody. In a round
everyone measures the same once, one after the other, so that what else runs on the machine hits all
of them. bench/report.py makes tables of the notes.
"""

import argparse
import collections
import os
import pathlib
import sys

import contestants
import notes
from contestants import Contestant, Measurement

ALWAYS = ["tree", "tree-fast", "tree-and-free", "free", "events", "events-fast", "write", "copy",
          "validate", "parse-and-validate"]
SOURCES = ["tree-chunks", "tree-chunks-prime", "tree-file", "events-chunks", "events-chunks-prime",
           "events-file", "write-callback"]
FOR_SOURCES = ["message-12k", "config-1m", "config-10m", "attributes", "text", "chinese"]
QUICK = ["message-2k", "config-12k-compact", "config-1m", "attributes", "tiny", "text", "chinese"]
LARGE = {"config-100m": ["tree", "tree-fast", "free", "events", "write", "copy", "tree-file"]}

# Counted by every operation that sees the document, and by "tree" alone: the fast modes leave
# references and line ends as they are.
COUNTED_BY_ALL = "elements"
COUNTED_BY_TREES = ["attributes", "characters"]
# netxml's trees hold GB18030, Xerces' UTF-16: sums of characters are for documents in ASCII. Files
# that are not ours may have blanks that count for one library, or defaults that a DTD gives.
PLAIN_DOCUMENTS = ("message-", "config-", "attributes", "tiny", "text", "prose", "svg",
                   "namespaces")


def documents_of(contestant: Contestant) -> list[str]:
    return list(dict.fromkeys(work.split("/")[1] for work in contestant.offers))


def operations_for(document: str, options: argparse.Namespace) -> list[str]:
    if options.operations:
        return options.operations
    if document in LARGE:
        return LARGE[document]
    return ALWAYS + (SOURCES if document in FOR_SOURCES and not options.quick else [])


class Agreement:
    """Holds what was counted in a document, and ends the program when somebody counts otherwise."""

    def __init__(self) -> None:
        self._counts: dict[tuple[str, str], tuple[float, str]] = {}

    def check(self, document: str, operation: str, name: str, result: Measurement) -> None:
        self._check(document, COUNTED_BY_ALL, name, result)
        if operation == "tree" and document.startswith(PLAIN_DOCUMENTS):
            for what in COUNTED_BY_TREES:
                self._check(document, what, name, result)

    def _check(self, document: str, what: str, name: str, result: Measurement) -> None:
        if what not in result.counters:
            return
        count = result.counters[what]
        known, who = self._counts.setdefault((document, what), (count, name))
        if known != count:
            sys.exit(f"{document}: {name} counts {count:.0f} {what}, {who} {known:.0f}")


class Times:
    """All times in seconds by document, operation and contestant, one a round."""

    def __init__(self, options: argparse.Namespace) -> None:
        self._options = options
        self._agreement = Agreement()
        self.times: dict = collections.defaultdict(lambda: collections.defaultdict(dict))
        self.sizes: dict[str, float] = {}
        self.refused: set[tuple[str, str]] = set()

    def take(self, contestant: Contestant, operation: str, document: str) -> None:
        if (contestant.name, document) in self.refused:
            return
        result = contestants.measure(contestant, f"{operation}/{document}", self._options.seconds,
                                     self._options.keep)
        if result is None:
            self.refused.add((contestant.name, document))
            return
        self._agreement.check(document, operation, contestant.name, result)
        self.sizes[document] = result.counters["size"]
        self.times[document][operation].setdefault(contestant.name, []).append(result.seconds)

    def write(self, path: pathlib.Path) -> None:
        notes.write(path, {"rounds": self._options.rounds, "keep": self._options.keep,
                           "sizes": self.sizes, "times": self.times,
                           "refused": sorted(self.refused)})


def run_document(everyone: list[Contestant], document: str, times: Times,
                 options: argparse.Namespace) -> None:
    for number in range(options.rounds):
        print(f"{document}: round {number + 1} of {options.rounds}", flush=True)
        for operation in operations_for(document, options):
            for contestant in everyone:
                if f"{operation}/{document}" in contestant.offers:
                    times.take(contestant, operation, document)


def chosen_documents(own: Contestant, options: argparse.Namespace) -> list[str]:
    if options.documents:
        unknown = set(options.documents) - set(documents_of(own))
        if unknown:
            sys.exit(f"there is no document {', '.join(sorted(unknown))} here")
        return options.documents
    if options.quick:
        return QUICK
    return documents_of(own)


def parse_arguments() -> argparse.Namespace:
    parser = notes.parser(__doc__)
    parser.add_argument("--rounds", type=int, default=9)
    parser.add_argument("--seconds", type=float, default=0.05, help="for one measurement")
    parser.add_argument("--operations", nargs="+", metavar="NAME")
    parser.add_argument("--documents", nargs="+", metavar="NAME")
    parser.add_argument("--contestants", nargs="+", metavar="NAME")
    parser.add_argument("--quick", action="store_true", help="a few documents, two short rounds")
    parser.add_argument("--plain-malloc", dest="keep", action="store_false",
                        help="let the allocator give memory back between documents")
    parser.add_argument("--cpu", type=int, help="the processor that everything runs on")
    options = parser.parse_args()
    if options.quick:
        options.rounds, options.seconds = 2, 0.03
    return options


def main() -> None:
    options = parse_arguments()
    if options.cpu is not None:
        os.sched_setaffinity(0, {options.cpu})
    found = contestants.find(options.build)
    everyone = [c for c in found.values()
                if not options.contestants or c.name in [contestants.OWN, *options.contestants]]
    times = Times(options)
    for document in chosen_documents(found[contestants.OWN], options):
        run_document(everyone, document, times, options)
        times.write(options.output)
    for name, document in sorted(times.refused):
        print(f"{name} refuses {document}")


if __name__ == "__main__":
    main()
