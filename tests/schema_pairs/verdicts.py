"""Verdicts of netxml and of two peers on documents and a schema, one process for many documents."""

from __future__ import annotations

import json
import re
import subprocess
import xml.parsers.expat
from dataclasses import dataclass, field
from pathlib import Path

SCHEMA_NAMESPACE = "http://www.w3.org/2001/XMLSchema"
INSTANCE_NAMESPACE = "http://www.w3.org/2001/XMLSchema-instance"
DOCUMENTS_PER_PROCESS = 200
SECONDS_FOR_A_PROCESS = 300


@dataclass
class Verdict:
    """What a program says of one document; a schema that it refuses makes `valid` None."""

    valid: bool | None
    sentence: str = ""
    violation: int = 0  # netxml's number of what is wrong

    @property
    def word(self) -> str:
        return {True: "valid", False: "invalid", None: "refused"}[self.valid]


@dataclass
class Answer:
    """What a program says of all documents of one schema."""

    verdicts: dict[Path, Verdict] = field(default_factory=dict)
    refusal: str = ""  # why it does not take the schema


def _chunks(documents: list[Path]) -> list[list[Path]]:
    step = DOCUMENTS_PER_PROCESS
    return [documents[i : i + step] for i in range(0, len(documents), step)]


def _run(command: list[str]) -> subprocess.CompletedProcess[str]:
    return subprocess.run(
        command,
        stdin=subprocess.DEVNULL,
        capture_output=True,
        text=True,
        errors="replace",
        timeout=SECONDS_FOR_A_PROCESS,
        check=False,
    )


def _refused(documents: list[Path], reason: str) -> Answer:
    return Answer({document: Verdict(None, reason) for document in documents}, reason)


class Netxml:
    """The tool, with its options for finding schemas."""

    name = "netxml"

    def __init__(self, program: str, options: list[str] | None = None) -> None:
        self.program = program
        self.options = options or []

    def answer(self, schema: Path, documents: list[Path]) -> Answer:
        result = Answer()
        for chunk in _chunks(documents):
            command = [self.program, "validate", "--max-errors=1", "--error-format=json"]
            command += self.options
            run = _run([*command, "--schema", str(schema), *map(str, chunk)])
            problems: dict[str, str] = {}
            numbers: dict[str, int] = {}
            for line in run.stderr.splitlines():
                if not line.startswith("{"):
                    raise RuntimeError(f"netxml says of {schema}: {line}")
                problem = json.loads(line)
                if problem["severity"] == "error":
                    place = f"{problem['line']}:{problem['column']}: "
                    problems.setdefault(problem["file"], place + problem["message"])
                    numbers.setdefault(problem["file"], problem.get("violation", 0))
            if run.returncode == 5:
                return _refused(documents, " ".join(problems.values()))
            accepted = set(run.stdout.splitlines())
            for document in chunk:
                said_valid = f"{document}: valid" in accepted
                if said_valid == (str(document) in problems):
                    raise RuntimeError(f"netxml gives no clear verdict on {document}: {run.stderr}")
                name = str(document)
                sentence, number = problems.get(name, ""), numbers.get(name, 0)
                result.verdicts[document] = Verdict(said_valid, sentence, number)
        return result

    def warnings(self, schema: Path, scratch: Path) -> list[str]:
        """What of the schema is not followed exactly, as `schema compile` tells it."""
        outputs = ["-o", str(scratch / "records.c"), "-H", str(scratch / "records.h")]
        command = [self.program, "schema", "compile", "--error-format=json", *self.options]
        run = _run([*command, *outputs, str(schema)])
        problems = [json.loads(line) for line in run.stderr.splitlines()]
        return [problem["message"] for problem in problems]


class Xmllint:
    """libxml2's program."""

    name = "libxml2"

    def answer(self, schema: Path, documents: list[Path]) -> Answer:
        result = Answer()
        for chunk in _chunks(documents):
            run = _run(["xmllint", "--noout", "--nonet", "--schema", str(schema), *map(str, chunk)])
            lines = run.stderr.splitlines()
            if run.returncode in (5, 6) and not any(line.endswith(" validates") for line in lines):
                if not any(line.endswith(" fails to validate") for line in lines):
                    reason = next((line for line in lines if " error :" in line), run.stderr[:300])
                    return _refused(documents, reason)
            for document in chunk:
                result.verdicts[document] = self._verdict(str(document), lines)
        return result

    @staticmethod
    def _verdict(document: str, lines: list[str]) -> Verdict:
        if f"{document} validates" in lines:
            return Verdict(True)
        mine = [line for line in lines if line.startswith(document + ":")]
        if not mine and f"{document} fails to validate" not in lines:
            raise RuntimeError(f"xmllint gives no verdict on {document}")
        return Verdict(False, mine[0][len(document) + 1 :] if mine else "")


def target_namespace(schema: Path) -> str | None:
    found: list[str | None] = []

    def start(_name: str, attributes: dict[str, str]) -> None:
        if not found:
            found.append(attributes.get("targetNamespace"))

    parser = xml.parsers.expat.ParserCreate()
    parser.StartElementHandler = start
    try:
        parser.Parse(schema.read_bytes(), True)
    except xml.parsers.expat.ExpatError:
        pass
    return found[0] if found else None


class Xerces:
    """Xerces-C by its sample program SAX2Count (Debian's libxerces-c-samples).

    The program knows a schema only by the attribute that a document names it with, so it gets
    copies that have this attribute. -f asks for its checks of the schema.
    """

    name = "Xerces"
    _PROBLEM = re.compile(r"^(Fatal Error|Error|Warning) at file (.*), line (\d+), char (\d+)$")
    _HINT = re.compile(rb"\s[\w.-]+:(?:noNamespaceS|s)chemaLocation\s*=\s*(?:\"[^\"]*\"|'[^']*')")

    def __init__(self, program: str, scratch: Path) -> None:
        self.program = program
        self.scratch = scratch

    def answer(self, schema: Path, documents: list[Path]) -> Answer:
        result = Answer()
        hint = self._hint(schema.resolve())
        for chunk in _chunks(documents):
            left = chunk
            while left:
                copies = self._copies(left, hint)
                names = self.scratch / "names.txt"
                names.write_text("".join(f"{name}\n" for name in copies))
                run = _run([self.program, "-l", "-v=always", "-f", str(names)])
                refusal = self._read(run.stdout + run.stderr, copies, result)
                if refusal:
                    return _refused(documents, refusal)
                left = [document for document in left if document not in result.verdicts]
                if left:  # it ended at the first of these, by a pattern that is too much for it
                    result.verdicts[left.pop(0)] = Verdict(None, f"ended with {run.returncode}")
        return result

    def _copies(self, documents: list[Path], hint: bytes) -> dict[str, Path]:
        copies: dict[str, Path] = {}
        for number, document in enumerate(documents):
            copy = self.scratch / f"copy{number}.xml"
            copy.write_bytes(self._with_hint(document.read_bytes(), hint))
            copies[str(copy.resolve())] = document
        return copies

    def _read(self, text: str, copies: dict[str, Path], result: Answer) -> str:
        """Fills in the verdicts that there are; returns why the schema itself is refused."""
        problems: dict[str, str] = {}
        lines = [line for line in text.splitlines() if line]
        for at, line in enumerate(lines):
            match = self._PROBLEM.match(line)
            if not match or match[1] == "Warning":
                continue
            message = lines[at + 1].strip().removeprefix("Message: ") if at + 1 < len(lines) else ""
            file = match[2].removeprefix("file://")
            if file not in copies:
                return f"{file}:{match[3]}:{match[4]}: {message}"
            problems.setdefault(file, f"{match[3]}:{match[4]}: {message}")
        for copy, document in copies.items():
            if copy in problems:
                result.verdicts[document] = Verdict(False, problems[copy])
            elif any(line.startswith(copy + ":") for line in lines):
                result.verdicts[document] = Verdict(True)
        return ""

    @staticmethod
    def _hint(schema: Path) -> bytes:
        name = target_namespace(schema)
        path = str(schema).replace(" ", "%20")
        attribute = (
            f'schemaLocation="{name} {path}"' if name else f'noNamespaceSchemaLocation="{path}"'
        )
        return f' xmlns:place-of="{INSTANCE_NAMESPACE}" place-of:{attribute}'.encode()

    def _with_hint(self, text: bytes, hint: bytes) -> bytes:
        """The document whose root names the schema; one that is not well-formed stays as it is."""
        place = root_name_end(text)
        if place is None:
            return text
        end = text.find(b">", place)
        return text[:place] + hint + self._HINT.sub(b"", text[place:end]) + text[end:]


def root_name_end(text: bytes) -> int | None:
    """Where the name of the root element ends."""
    found: list[int] = []

    def start(_name: str, _attributes: dict[str, str]) -> None:
        if not found:
            found.append(parser.CurrentByteIndex)

    parser = xml.parsers.expat.ParserCreate()
    parser.StartElementHandler = start
    try:
        parser.Parse(text, True)
    except xml.parsers.expat.ExpatError:
        pass
    if not found or text[found[0] : found[0] + 1] != b"<":
        return None
    match = re.compile(rb"<[^\s/>]+").match(text, found[0])
    return match.end() if match else None
