"""The tables of docs/performance.md, in Markdown."""

import statistics
from typing import Callable, Iterable

from contestants import OWN, PEERS, own_operation
from ratios import Throughput

TITLES = {
    "tree": "Parse to a tree, everyone in the default mode",
    "tree-fast": "Parse to a tree, the peers in their fastest mode",
    "tree-and-free": "Parse to a tree and free it",
    "tree-file": "Parse a file to a tree",
    "events": "Parse to events, everyone in the default mode",
    "events-fast": "Parse to events, the peers in their fastest mode",
    "write": "Write to a string",
    "write-callback": "Write to a callback",
    "copy": "Copy a tree",
    "validate": "Validate a ready tree",
    "parse-and-validate": "Parse and validate",
}
HEAP_TITLES = {
    "tree": "A tree",
    "tree-fast": "A tree, the peers in their fastest mode",
    "events": "Events: the peak alone, as nothing is kept",
}
SOURCES = ["tree-chunks", "tree-chunks-prime", "tree-file", "events-chunks", "events-chunks-prime",
           "events-file"]
SMALLEST_TO_GROW = 1000
SECTIONS = [".text", ".rodata", ".eh_frame", ".data.rel.ro"]


def table(head: list[str], rows: Iterable[list[str]]) -> str:
    lines = ["| " + " | ".join(head) + " |", "|---" * len(head) + "|"]
    return "\n".join(lines + ["| " + " | ".join(row) + " |" for row in rows])


def _time(seconds: float) -> str:
    for unit, size in (("s", 1), ("ms", 1e-3), ("µs", 1e-6)):
        if seconds >= size:
            return f"{seconds / size:.3g} {unit}"
    return f"{seconds * 1e9:.3g} ns"


def _own_cells(notes: Throughput, document: str, operation: str) -> list[str]:
    seconds = statistics.median(notes.seconds(document, operation))
    return [document, _time(seconds), f"{notes.sizes[document] / seconds / 1e6:,.0f}"]


def _peer_cell(notes: Throughput, document: str, operation: str, peer: str) -> str:
    if (peer, document) in notes.refused:
        return "refuses"
    ratio = notes.against(document, operation, peer)
    return str(ratio) if ratio else ""


def operation(notes: Throughput, name: str) -> str:
    """One row a document: netxml's time, and its throughput over that of each peer."""
    own = own_operation(name)
    documents = [d for d in notes.documents() if notes.seconds(d, own)]
    peers = [p for p in PEERS if any(notes.seconds(d, name, p) for d in documents)]
    documents = [d for d in documents if any(notes.seconds(d, name, p) for p in peers)]
    if not documents:
        return ""
    head = ["document", "netxml", "MB/s", *(f"× {peer}" for peer in peers)]
    rows = [_own_cells(notes, d, own) + [_peer_cell(notes, d, name, p) for p in peers]
            for d in documents]
    return f"### {TITLES[name]}\n\n{table(head, rows)}"


def _shares(notes: Throughput, title: str, columns: list[str],
            cell: Callable[[str, str], object]) -> str:
    rows = [[document, *(str(cell(document, column) or "") for column in columns)]
            for document in notes.documents()]
    rows = [row for row in rows if any(row[1:])]
    return f"### {title}\n\n{table(['document', *columns], rows)}" if rows else ""


def free(notes: Throughput) -> str:
    def share(document: str, name: str) -> str:
        ratio = notes.within(document, "free", "tree", name)
        return f"{ratio.median * 100:.2f} %" if ratio else ""

    return _shares(notes, "Free a tree, in percent of the library's own parse",
                   [OWN, *(p for p in PEERS if p != "expat")], share)


def sources(notes: Throughput) -> str:
    def factor(document: str, name: str) -> object:
        return notes.within(document, name, name.split("-")[0])

    return _shares(notes, "netxml's time from chunks and files over that from memory", SOURCES,
                   factor)


def throughput(notes: Throughput) -> str:
    parts = [operation(notes, name) for name in TITLES]
    parts[3:3] = [free(notes)]
    parts[5:5] = [sources(notes)]
    return "\n\n".join(part for part in parts if part)


def plain_malloc(notes: Throughput) -> str:
    names = ["tree-and-free", "write"]
    return "\n\n".join(part for name in names if (part := operation(notes, name)))


def heap(notes: dict) -> str:
    """One table a mode: what is kept after the parse, and the peak."""
    parts = []
    for name, title in HEAP_TITLES.items():
        taken = {document: {OWN: operations.get(own_operation(name), {}).get(OWN)} |
                 operations.get(name, {}) for document, operations in notes["heap"].items()}
        columns = [n for n in [OWN, *PEERS] if any(n in cells for cells in taken.values())]
        rows = [[document, *(_heap_cell(cells.get(n), name) for n in columns)]
                for document, cells in taken.items()]
        parts.append(f"### {title}\n\n{table(['document', *columns], rows)}")
    return "\n\n".join(parts)


def _heap_cell(taken: dict | None, operation_name: str) -> str:
    if not taken:
        return ""
    if operation_name == "events":
        return f"{taken['peak']:.2f}"
    return f"{taken['kept']:.2f} / {taken['peak']:.2f}"


def libraries(notes: dict) -> str:
    head = ["library", "text + read-only data", *SECTIONS, "data", "bss"]
    rows = []
    for name, sizes in notes["libraries"].items():
        cells = [sizes.get(key, 0) for key in ("text", *SECTIONS, "data", "bss")]
        rows.append([name, *(f"{cell / 1000:,.1f}" for cell in cells)])
    return table(head, rows)


def checks(notes: dict) -> str:
    """One row a malformed document: who refuses it."""
    names = [name for name in [OWN, *PEERS] if name in notes]
    rows = [[what, *("refused" if notes[name][what] else "—" for name in names)]
            for what in notes[names[0]]]
    return table(["", *names], rows)


def growth(notes: list[dict]) -> str:
    """One row a shape and operation: the time for a unit in each power of ten."""
    series: dict = {}
    for note in notes:
        series.setdefault((note["shape"], note["unit"], note["operation"]), {})[note["size"]] = note
    parts = []
    for shape in dict.fromkeys(note["shape"] for note in notes):
        rows, head = [], []
        for (of, unit, name), sizes in series.items():
            if of != shape:
                continue
            full = [size for size in sizes if size // 2 in sizes]
            head = [f"per {unit}", *(f"{size:,}" for size in full), "most for twice the size"]
            cells = [_time(sizes[size]["seconds"] / size) for size in full]
            rows.append([name, *cells, f"{most_for_twice(sizes):.2f}"])
        parts.append(f"### By {shape}\n\n{table(head, rows)}")
    return "\n\n".join(parts)


def most_for_twice(sizes: dict[int, dict]) -> float:
    """The largest factor between a size and its double; in small documents fixed costs decide."""
    return max(sizes[size]["seconds"] / sizes[size // 2]["seconds"]
               for size in sizes if size // 2 in sizes and size >= SMALLEST_TO_GROW)


def profile(notes: dict) -> str:
    parts = []
    for work, found in notes.items():
        rooms = ", ".join(f"{room} {share:.0%}" for room, share in found["rooms"].items())
        rows = [[f"{share:.1%}", f"`{name}`"] for name, share in found["functions"].items()]
        parts.append(f"### {work}\n\n{found['instructions_per_byte']:.1f} instructions a byte: "
                     f"{rooms}.\n\n{table(['share', 'function'], rows)}")
    return "\n\n".join(parts)
