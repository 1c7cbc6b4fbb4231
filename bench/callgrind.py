#!/usr/bin/env python3
"""Notes where netxml's instructions go for each shape of document: by room of the source, and by
function. Needs valgrind, and a build with debug information (bench/profile makes it)."""

import collections
import json
import pathlib
import re
import subprocess
import tempfile

import contestants
import notes

WORKS = ["tree/message-2k", "tree/config-1m", "tree/attributes", "tree/tiny", "tree/text",
         "tree/chinese", "tree/namespaces", "events/config-1m", "write/config-1m",
         "copy/config-1m", "validate/config-12k-compact"]
ROOMS = ["support", "io", "dom", "output", "parser", "schema", "bench"]
MOST_FUNCTIONS = 8


class Costs:
    """The instructions in a file of callgrind, by source file and by function.

    The lines of a cost name the file that they stand in, which for inlined code is not the file of
    the function; what a call costs stands in the line behind `calls=` and is skipped.
    """

    NAME = re.compile(r"^(fl|fi|fe|fn|cfl|cfi|cfn)=\((\d+)\)(?: (.*))?$")
    COST = re.compile(r"^(?:\+\d+|-\d+|\d+|\*) (\d+)")

    def __init__(self, text: str) -> None:
        self.files: collections.Counter = collections.Counter()
        self.functions: collections.Counter = collections.Counter()
        self._names: dict[tuple[bool, str], str] = {}
        self._read(text.splitlines())

    def _read(self, lines: list[str]) -> None:
        file = function = ""
        skip = False
        for line in lines:
            if found := self.NAME.match(line):
                name = self._name(found)
                if found[1] == "fn":
                    function = name
                elif found[1].startswith("f"):
                    file = name
            elif line.startswith("calls="):
                skip = True
            elif found := self.COST.match(line):
                if not skip:
                    self.files[file] += int(found[1])
                    self.functions[function] += int(found[1])
                skip = False

    def _name(self, found: re.Match) -> str:
        key = (found[1].endswith("fn"), found[2])
        if found[3]:
            self._names[key] = found[3]
        return self._names[key]


def room_of(file: str, source: pathlib.Path) -> str:
    if file.startswith(f"{source}/"):
        room = file.removeprefix(f"{source}/").split("/")[0]
        return room if room in ROOMS else "other"
    return "C library and others"


def shares(counts: collections.Counter, most: int) -> dict[str, float]:
    whole = sum(counts.values())
    return {name: count / whole for name, count in counts.most_common(most)
            if count / whole >= 0.01}


def short(function: str) -> str:
    """A function's name without its result, its arguments and the project's namespace."""
    name = re.sub(r"\(anonymous namespace\)::|netxml::|'\d+$", "", function)
    depth = begin = 0
    for place, character in enumerate(name):
        depth += {"<": 1, ">": -1}.get(character, 0)
        if depth == 0 and character == " ":
            begin = place + 1
        elif depth == 0 and character == "(" and place != begin:
            return name[begin:place]
    return name


def profile(contestant: contestants.Contestant, work: str, source: pathlib.Path) -> dict:
    with tempfile.TemporaryDirectory() as scratch:
        out = pathlib.Path(scratch) / "callgrind.out"
        run = subprocess.run(
            ["valgrind", "--tool=callgrind", "--toggle-collect=netxml::bench::runTimes*",
             f"--callgrind-out-file={out}", *contestants.command(contestant, work)],
            capture_output=True, text=True, check=True,
            env=contestants.environment(0.0, True))
        costs = Costs(out.read_text())
    result = json.loads(run.stdout)["benchmarks"][0]
    rooms: collections.Counter = collections.Counter()
    for file, count in costs.files.items():
        rooms[room_of(file, source)] += count
    functions: collections.Counter = collections.Counter()
    for function, count in costs.functions.items():
        functions[short(function)] += count
    return {"instructions_per_byte": sum(rooms.values()) / (result["runs"] * result["size"]),
            "rooms": shares(rooms, len(rooms)), "functions": shares(functions, MOST_FUNCTIONS)}


def show(work: str, found: dict) -> None:
    print(f"{work}: {found['instructions_per_byte']:.2f} instructions a byte")
    for part in ("rooms", "functions"):
        for name, share in found[part].items():
            print(f"  {share:6.1%}  {name}")
        print()


def main() -> None:
    parser = notes.parser(__doc__)
    parser.add_argument("source", type=pathlib.Path, help="the source directory")
    parser.add_argument("works", nargs="*", metavar="OPERATION/DOCUMENT")
    options = parser.parse_args()
    own = contestants.find(options.build, [])[contestants.OWN]
    found = {}
    for work in options.works or WORKS:
        found[work] = profile(own, work, options.source.resolve())
        show(work, found[work])
    notes.write(options.output, found)


if __name__ == "__main__":
    main()
