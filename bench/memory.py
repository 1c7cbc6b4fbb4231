#!/usr/bin/env python3
"""Notes what each library takes: heap for a document, and the sizes of the libraries themselves."""

import pathlib
import re
import subprocess
import tempfile

import contestants
import notes
from contestants import Contestant

OPERATIONS = ["tree", "tree-fast", "events"]
DOCUMENTS = ["message-400", "message-2k", "message-12k", "config-1m", "config-1m-compact",
             "attributes", "tiny", "text", "prose", "svg", "chinese", "namespaces",
             "mime-database"]
# RapidXML is its headers; the others are one library each.
LIBRARY = {"pugixml": "libpugixml", "tinyxml2": "libtinyxml2", "libxml2": "libxml2",
           "xerces": "libxerces-c", "expat": "libexpat", "netxml": "libnetxml"}


def heap_of(contestant: Contestant, work: str, counter: pathlib.Path) -> dict[str, float] | None:
    """Heap bytes per byte of input; the peak includes what a parse gives back at its end."""
    result = contestants.measure(contestant, work, 0.0001, False, counter)
    if result is None:
        return None
    size = result.counters["size"]
    return {what: result.counters[f"heap_{what}"] / size for what in ("kept", "peak")}


def heap(everyone: dict[str, Contestant], counter: pathlib.Path) -> dict:
    table: dict = {}
    for document in DOCUMENTS:
        for operation in OPERATIONS:
            for name, contestant in everyone.items():
                work = f"{operation}/{document}"
                if work in contestant.offers and (taken := heap_of(contestant, work, counter)):
                    table.setdefault(document, {}).setdefault(operation, {})[name] = taken
    return table


def shared_library(contestant: Contestant) -> pathlib.Path | None:
    name = LIBRARY.get(contestant.name)
    if not name:
        return None
    listing = subprocess.run(["ldd", contestant.program], capture_output=True, text=True,
                             check=True)
    found = re.search(rf"{re.escape(name)}[^\s/]*\.so\S* => (\S+)", listing.stdout)
    return pathlib.Path(found[1]) if found else None


def sections(library: pathlib.Path) -> dict[str, int]:
    """The sizes of the sections of a stripped copy, and what `size` sums up as text and data."""
    with tempfile.TemporaryDirectory() as scratch:
        stripped = pathlib.Path(scratch) / "stripped.so"
        subprocess.run(["strip", "-o", stripped, library], check=True)
        listing = subprocess.run(["size", "-A", stripped], capture_output=True, text=True,
                                 check=True).stdout
        summary = subprocess.run(["size", stripped], capture_output=True, text=True, check=True)
    sizes = {name: int(size) for name, size in re.findall(r"^(\.\S+)\s+(\d+)", listing, re.M)}
    text, data, bss = summary.stdout.splitlines()[1].split()[:3]
    return sizes | {"text": int(text), "data": int(data), "bss": int(bss)}


def libraries(everyone: dict[str, Contestant]) -> dict[str, dict[str, int]]:
    found = {name: shared_library(contestant) for name, contestant in everyone.items()}
    return {name: sections(library) for name, library in found.items() if library}


def main() -> None:
    options = notes.parser(__doc__).parse_args()
    everyone = contestants.find(options.build)
    counter = (options.build / "bench" / "libnetxml_heap_count.so").resolve()
    notes.write(options.output, {"heap": heap(everyone, counter),
                                 "libraries": libraries(everyone)})


if __name__ == "__main__":
    main()
