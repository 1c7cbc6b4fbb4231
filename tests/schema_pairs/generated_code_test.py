#!/usr/bin/env python3
"""Compares generated code with the records that netxml makes at run time: for a few schemas,
compiled as C99 and as C++17 with every warning an error, the same verdict and sentence on every document.

    generated_code_test.py NETXML CC CXX LIBRARY INCLUDE_DIRECTORY DRIVER.c [COMPILER_FLAG...]
"""

from __future__ import annotations

import json
import subprocess
import sys
import tempfile
from dataclasses import dataclass
from pathlib import Path

from generated_pairs import generated

SEED = 11
DOCUMENTS_PER_SCHEMA = 4
WARNINGS = ["-Wall", "-Wextra", "-Wpedantic", "-Werror"]
# One schema of each theme that netxml follows; themes beyond these add no kind of record.
SCHEMAS_OF_EACH_THEME = 1


@dataclass
class Builder:
    """Compiles the driver together with the records of a schema."""

    netxml: str
    cc: str
    cxx: str
    built: Path
    includes: str
    driver: Path
    flags: list[str]

    def build(self, schema: Path, directory: Path, cxx: bool) -> Path:
        suffix = ".cpp" if cxx else ".c"
        source, header = directory / f"records{suffix}", directory / "records.h"
        command = [self.netxml, "schema", "compile", "-q", "--prefix", "pair", str(schema)]
        command += ["-o", str(source), "-H", str(header), f"--lang={'c++' if cxx else 'c'}"]
        self._run(command)
        program = directory / ("driver_cxx" if cxx else "driver_c")
        language = ["-x", "c++", "-std=c++17"] if cxx else ["-x", "c", "-std=c99"]
        compiler = [self.cxx if cxx else self.cc, *WARNINGS, *self.flags, "-I", self.includes]
        compiler += ["-I", str(directory), *language, str(source), str(self.driver), "-x", "none"]
        link = [str(self.built), f"-Wl,-rpath,{self.built.parent}", "-o", str(program)]
        self._run(compiler + link)
        return program

    @staticmethod
    def _run(command: list[str]) -> None:
        run = subprocess.run(command, capture_output=True, text=True, check=False)
        if run.returncode != 0:
            raise RuntimeError(f"{' '.join(command)}\n{run.stdout}{run.stderr}")


def run_time_verdicts(netxml: str, schema: Path, documents: list[Path]) -> dict[str, str] | None:
    """What `netxml validate` says of each document; nothing when it refuses the schema."""
    command = [netxml, "validate", "-q", "--max-errors=1", "--error-format=json"]
    command += ["--schema", str(schema), *map(str, documents)]
    run = subprocess.run(command, capture_output=True, text=True, check=False)
    if run.returncode == 5:
        return None
    result = {str(document): "valid" for document in documents}
    for line in run.stderr.splitlines():
        problem = json.loads(line)
        if problem["severity"] == "error":
            said = f"{problem.get('violation', 0)} {problem['message']}"
            result[problem["file"]] = said
    return result


def generated_verdicts(program: Path, documents: list[Path]) -> dict[str, str]:
    """The driver ends each verdict with a zero byte, for sentences may hold line ends."""
    command = [str(program), *map(str, documents)]
    run = subprocess.run(command, capture_output=True, text=True, check=False)
    if run.returncode != 0:
        raise RuntimeError(f"{program} ended with {run.returncode}: {run.stderr}")
    return dict(zip(map(str, documents), run.stdout.split("\0"), strict=False))


def main() -> int:
    netxml, cc, cxx, library, includes, driver, *flags = sys.argv[1:]
    builder = Builder(netxml, cc, cxx, Path(library), includes, Path(driver), flags)
    compared = invalid = differing = 0
    with tempfile.TemporaryDirectory() as scratch:
        cases = generated(Path(scratch), SEED, SCHEMAS_OF_EACH_THEME, DOCUMENTS_PER_SCHEMA)
        for number, (theme, schema, documents) in enumerate(cases):
            said = run_time_verdicts(netxml, schema, documents)
            if said is None:
                continue
            # Each schema in one language, by turns, and the first few in both.
            for as_cxx in (False, True):
                if number > 3 and as_cxx != bool(number % 2):
                    continue
                program = builder.build(schema, schema.parent, as_cxx)
                by_code = generated_verdicts(program, documents)
                for document in documents:
                    compared += 1
                    expected, found = said[str(document)], by_code.get(str(document), "nothing")
                    invalid += expected != "valid"
                    if expected != found:
                        differing += 1
                        print(
                            f"{theme}: {document.read_text()}\n  run time:  {expected}\n  "
                            f"generated: {found}"
                        )
    print(f"{compared} verdicts compared, {invalid} of them invalid, {differing} differ")
    return 1 if differing or compared < 100 or not 0 < invalid < compared else 0


if __name__ == "__main__":
    sys.exit(main())
