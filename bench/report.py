#!/usr/bin/env python3
"""Puts what was noted into docs/performance.md, between its markers, and draws the plot beside it.

What has not been measured this time stays as it is.
"""

import argparse
import json
import pathlib
import re
import sys

import goals
import plot
import tables
from ratios import Throughput


def replace(text: str, name: str, content: str) -> str:
    begin, end = f"<!-- begin: {name} -->", f"<!-- end: {name} -->"
    pattern = re.compile(re.escape(begin) + ".*?" + re.escape(end), re.S)
    if not pattern.search(text):
        sys.exit(f"no markers for {name}")
    return pattern.sub(lambda _: f"{begin}\n{content}\n{end}", text)


def sections(notes: dict) -> dict[str, str]:
    """The generated parts by the names of their markers."""
    found = {}
    if "throughput" in notes:
        found["throughput"] = tables.throughput(Throughput(notes["throughput"]))
    if "plain" in notes:
        found["plain malloc"] = tables.plain_malloc(Throughput(notes["plain"]))
    if "memory" in notes:
        found["heap"] = tables.heap(notes["memory"])
        found["libraries"] = tables.libraries(notes["memory"])
    if "checks" in notes:
        found["checks"] = tables.checks(notes["checks"])
    if "growth" in notes:
        found["growth"] = tables.growth(notes["growth"])
    if "profile" in notes:
        found["profile"] = tables.profile(notes["profile"])
    if "machine" in notes:
        found["machine"] = notes["machine"]["text"]
    if {"throughput", "memory", "growth"} <= notes.keys():
        all_notes = goals.Notes(Throughput(notes["throughput"]), notes["memory"], notes["growth"])
        found["goals"] = goals.table(all_notes)
    return found


def update(page: pathlib.Path, notes: dict) -> None:
    text = page.read_text()
    for name, content in sections(notes).items():
        text = replace(text, name, content)
    page.write_text(text)
    if "throughput" in notes:
        page.with_suffix(".svg").write_text(plot.draw(Throughput(notes["throughput"])))


def main() -> None:
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("notes", type=pathlib.Path, help="the directory of the notes")
    parser.add_argument("--page", type=pathlib.Path, help="docs/performance.md; else printed")
    options = parser.parse_args()
    notes = {path.stem: json.loads(path.read_text()) for path in options.notes.glob("*.json")}
    if options.page:
        update(options.page, notes)
    else:
        print("\n\n".join(sections(notes).values()))


if __name__ == "__main__":
    main()
