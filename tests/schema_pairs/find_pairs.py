"""Finds which documents in a directory belong to which schema there."""

from __future__ import annotations

import os
import re
import shutil
import xml.etree.ElementTree as ElementTree
from dataclasses import dataclass, field
from pathlib import Path

from verdicts import INSTANCE_NAMESPACE, SCHEMA_NAMESPACE

MOST_BYTES = 1_000_000  # a document beyond this says nothing that a smaller one does not
_DOCUMENTS = {".xml", ".xsd", ".svg", ".rdf", ".gml", ".gpx", ".xslt", ".xsl"}


@dataclass
class Schemas:
    """The schema documents below a directory, and what their top-level elements are."""

    all: list[Path] = field(default_factory=list)
    by_root: dict[str, list[Path]] = field(default_factory=dict)
    by_name: dict[str, list[Path]] = field(default_factory=dict)


def _root(file: Path) -> ElementTree.Element | None:
    try:
        return ElementTree.parse(file).getroot()
    except (ElementTree.ParseError, OSError, ValueError, LookupError):
        return None


def schemas_below(directory: Path) -> Schemas:
    result = Schemas()
    for file in sorted(directory.rglob("*.xsd")):
        root = _root(file) if file.is_file() else None
        if root is None or root.tag != f"{{{SCHEMA_NAMESPACE}}}schema":
            continue
        result.all.append(file)
        result.by_name.setdefault(file.name, []).append(file)
        space = root.get("targetNamespace")
        for element in root.iter(f"{{{SCHEMA_NAMESPACE}}}element"):
            name = element.get("name")
            if name and element in list(root):
                key = f"{{{space}}}{name}" if space else name
                result.by_root.setdefault(key, []).append(file)
    return result


def _named(root: ElementTree.Element, schemas: Schemas) -> list[Path]:
    """The schemas that the document itself names, by their file names."""
    places = root.get(f"{{{INSTANCE_NAMESPACE}}}noNamespaceSchemaLocation", "").split()
    words = root.get(f"{{{INSTANCE_NAMESPACE}}}schemaLocation", "").split()
    own = re.match(r"\{(.*)\}", root.tag)
    for space, place in zip(words[::2], words[1::2]):
        if own and space == own[1]:
            places.append(place)
    return [f for place in places for f in schemas.by_name.get(place.rsplit("/", 1)[-1], [])]


def _near(document: Path, candidates: list[Path]) -> Path:
    """The schema that shares most of its path with the document."""
    return max(candidates, key=lambda c: sum(1 for a, b in zip(c.parts, document.parts) if a == b))


def pairs_below(directory: Path) -> dict[Path, list[Path]]:
    """Each schema with its documents; schemas without any stand with none."""
    schemas = schemas_below(directory)
    result: dict[Path, list[Path]] = {schema: [] for schema in schemas.all}
    for file in sorted(directory.rglob("*")):
        if file.suffix not in _DOCUMENTS or not file.is_file() or file.stat().st_size > MOST_BYTES:
            continue
        root = _root(file)
        if root is None:
            continue
        candidates = _named(root, schemas) or schemas.by_root.get(root.tag, [])
        if candidates:
            result[_near(file, candidates)].append(file)
    return result


_LOCATION = re.compile(
    rb"(schemaLocation\s*=\s*[\"'])(?:https?|ftp|urn|classpath):[^\"']*?([^/:\"']+)([\"'])"
)
_EXTERNAL_TYPE = re.compile(rb"<!DOCTYPE\s[^\[>]*(\[[^\]]*\]\s*)?>")


def localized(directory: Path, to: Path, more: list[Path]) -> Path:
    """A copy of a directory's documents in which schemas import from files only, and nothing has an
    external document type, so that no peer needs the network. `more` are schemas to import besides.
    """
    schemas: dict[str, Path] = {file.name: file for file in more}
    copies: list[Path] = []
    for file in sorted(directory.rglob("*")):
        if file.suffix not in _DOCUMENTS or not file.is_file() or file.stat().st_size > MOST_BYTES:
            continue
        copy = to / file.relative_to(directory)
        copy.parent.mkdir(parents=True, exist_ok=True)
        shutil.copyfile(file, copy)
        copies.append(copy)
        if copy.suffix == ".xsd":
            schemas[copy.name] = copy
    for copy in copies:
        text = copy.read_bytes()
        own = _LOCATION.sub(lambda m: m[1] + _local(m[2], copy, schemas) + m[3], text)
        own = (
            _EXTERNAL_TYPE.sub(_without_external, own)
            if copy.suffix == ".xsd" or b"<!DOCTYPE" in own
            else own
        )
        if own != text:
            copy.write_bytes(own)
    return to


def _local(name: bytes, copy: Path, schemas: dict[str, Path]) -> bytes:
    beside = copy.parent / name.decode(errors="replace")
    target = beside if beside.exists() else schemas.get(name.decode(errors="replace"))
    return os.path.relpath(target, copy.parent).encode() if target else b"missing-" + name


def _without_external(match: re.Match[bytes]) -> bytes:
    """A document type keeps its internal subset only."""
    if not match[1]:
        return b""
    name = match[0].split()[1]
    return b"<!DOCTYPE " + name + b" " + match[1] + b">"
