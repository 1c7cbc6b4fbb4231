"""The programs that measure one library each, and how one measurement is taken."""

import dataclasses
import json
import os
import pathlib
import subprocess
import sys

OWN = "netxml"
PEERS = ["pugixml", "rapidxml", "tinyxml2", "libxml2", "xerces", "expat"]
# What Google Benchmark adds to a name.
SUFFIX = "/iterations:1/manual_time"
# What netxml does beside a peer's fastest mode: it has one mode.
COUNTERPART = {"tree-fast": "tree", "events-fast": "events"}


@dataclasses.dataclass(frozen=True)
class Contestant:
    name: str
    program: pathlib.Path
    offers: tuple[str, ...]  # "OPERATION/DOCUMENT"


@dataclasses.dataclass(frozen=True)
class Measurement:
    seconds: float  # the median of the readings
    counters: dict[str, float]


def own_operation(operation: str) -> str:
    return COUNTERPART.get(operation, operation)


def _offers(program: pathlib.Path) -> tuple[str, ...]:
    listing = subprocess.run([program, "--benchmark_list_tests"], capture_output=True, text=True,
                             check=True)
    if OWN in program.name:  # the others would repeat which documents the machine lacks
        sys.stderr.write(listing.stderr)
    return tuple(line.removesuffix(SUFFIX) for line in listing.stdout.split())


def find(build: pathlib.Path, peers: list[str] = PEERS) -> dict[str, Contestant]:
    """netxml, and the peers that were built."""
    found = {}
    for name in [OWN, *peers]:
        program = build / "bench" / f"bench_{name}"
        if program.exists():
            found[name] = Contestant(name, program, _offers(program))
        else:
            print(f"{name} is not built: left out", file=sys.stderr)
    if OWN not in found:
        sys.exit(f"no {build}/bench/bench_{OWN}: configure with -DNETXML_BUILD_BENCH=ON")
    return found


def command(contestant: Contestant, work: str) -> list[str]:
    return [str(contestant.program), f"--benchmark_filter=^{work}{SUFFIX}$",
            "--benchmark_format=json"]


def environment(seconds: float, keep: bool) -> dict[str, str]:
    return dict(os.environ, NETXML_BENCH_SECONDS=str(seconds), NETXML_BENCH_KEEP=str(int(keep)))


def measure(contestant: Contestant, work: str, seconds: float, keep: bool,
            preload: pathlib.Path | None = None) -> Measurement | None:
    """Runs a process of its own. None when the library refuses the document."""
    variables = environment(seconds, keep)
    if preload:
        variables["LD_PRELOAD"] = str(preload)
    run = subprocess.run(command(contestant, work), capture_output=True, text=True, env=variables)
    if run.returncode != 0:
        sys.exit(f"{contestant.program} {work} failed:\n{run.stderr}")
    result = json.loads(run.stdout)["benchmarks"][0]
    if result.get("error_occurred"):
        return None
    counters = {key: value for key, value in result.items() if isinstance(value, (int, float))}
    return Measurement(result["real_time"] / 1e9, counters)
