"""What a worker does: it reads some documents of an archive and validates them."""
import zipfile
import zlib
from collections.abc import Callable
from pathlib import Path
from typing import NamedTuple

import netxml

UNREADABLE, NOT_WELL_FORMED, INVALID, VALID = "unreadable", "not well-formed", "invalid", "valid"


class Finding(NamedTuple):
    """What one document came to."""

    name: str
    status: str
    code: int = 0
    path: str = ""
    """The path of what is invalid, or line and column of what is not well-formed."""
    sentence: str = ""


def names_of(archive: str) -> list[str]:
    """The documents of an archive: a ZIP file, or a folder with everything below it."""
    if Path(archive).is_dir():
        return sorted(str(p.relative_to(archive)) for p in Path(archive).rglob("*.xml"))
    with zipfile.ZipFile(archive) as file:
        return sorted(name for name in file.namelist() if name.endswith(".xml"))


def check_batch(archive: str, names: list[str], schema: str, prefix: str | None) -> list[Finding]:
    """Checks some documents. Archive and schema are files that every worker can open."""
    known = netxml.Schema(schema, prefix)  # loaded once a process
    folder = Path(archive)
    if folder.is_dir():
        return [_check(name, lambda name: (folder / name).read_bytes(), known) for name in names]
    with zipfile.ZipFile(archive) as file:
        return [_check(name, file.read, known) for name in names]


def _check(name: str, read: Callable[[str], bytes], schema: netxml.Schema) -> Finding:
    try:
        data = read(name)
    except (OSError, zipfile.BadZipFile, zlib.error) as failure:
        return Finding(name, UNREADABLE, sentence=str(failure))
    try:
        with netxml.parse(data) as document:
            verdict = schema.validate(document)
    except netxml.ParseError as error:
        place = f"{error.line}:{error.column}"
        return Finding(name, NOT_WELL_FORMED, error.code, place, error.message)
    if verdict:
        return Finding(name, VALID)
    return Finding(name, INVALID, verdict.code, verdict.path, verdict.sentence)
