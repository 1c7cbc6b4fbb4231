"""Writes generated schemas and documents into a directory."""

from __future__ import annotations

import random
from collections.abc import Iterator
from pathlib import Path

from mutation import Mutator
from schema_maker import SchemaMaker


def generated(
    directory: Path, seed: int, schemas: int, documents: int, wide: bool = True
) -> Iterator[tuple[str, Path, list[Path]]]:
    """`schemas` of each theme with so many documents each, and each of these changed in a place."""
    for theme in SchemaMaker.THEMES:
        for number in range(schemas):
            chance = random.Random(f"{seed}/{theme}/{number}")
            case = SchemaMaker(chance, wide).case(theme, documents)
            place = directory / f"{theme.replace(' ', '_')}-{number}"
            place.mkdir(parents=True, exist_ok=True)
            for name, text in case.files.items():
                (place / name).write_text(text, encoding="utf-8")
            written: list[Path] = []
            mutator = Mutator(chance)
            for at, text in enumerate(case.documents):
                written.append(place / f"{at}.xml")
                written[-1].write_text(text, encoding="utf-8")
                mutated = mutator.mutated(text.encode())
                if mutated:
                    written.append(place / f"{at}-{mutated[1].replace(' ', '_')}.xml")
                    written[-1].write_bytes(mutated[0])
            yield theme, place / "main.xsd", written


def mutated_copies(
    document: Path, directory: Path, count: int, chance: random.Random
) -> list[Path]:
    """Copies of a real document, each changed in one place."""
    try:
        text = document.read_bytes()
        mutator = Mutator(chance)
        copies: list[Path] = []
        for number in range(count):
            mutated = mutator.mutated(text)
            if mutated:
                name = f"{document.stem}-{number}-{mutated[1].replace(' ', '_')}.xml"
                copies.append(directory / name)
                copies[-1].write_bytes(mutated[0])
        return copies
    except Exception as error:  # expat's and its codecs' errors: no mutation of such a document
        print(f"not changed: {document}: {error}")
        return []
