#!/usr/bin/env python3
"""Runs the contestants in turns and prints how their throughput relates to netxml's.

Each library has a process of its own, and the processes take turns: what one leaves behind in its
memory slows nobody, and what else runs on the machine hits all of them. A ratio is taken within one
round; the table shows the median of the rounds and their spread.
"""

import argparse
import json
import os
import pathlib
import platform
import statistics
import subprocess
import sys

OWN = "netxml"
PEERS = ["pugixml", "libxml2", "expat"]
OPERATIONS = ["tree", "tree-fast", "tree-and-free", "events", "write", "copy"]
# What a peer's operation is compared with, where netxml has none of that name.
COUNTERPART = {"tree-fast": "tree"}
DOCUMENTS = [
    "message-400", "message-2k", "message-12k", "config-1m", "config-1m-compact", "config-10m",
    "attributes", "tiny", "text", "chinese", "namespaces",
]


def measure(program, name, seconds, keep):
    """Nanoseconds for one operation, or None when the program does not offer it."""
    environment = dict(os.environ, NETXML_BENCH_KEEP="1" if keep else "0")
    run = subprocess.run(
        [program, f"--benchmark_filter=^{name}/manual_time$", f"--benchmark_min_time={seconds}",
         "--benchmark_format=json"],
        capture_output=True, text=True, env=environment)
    if run.returncode != 0:
        sys.exit(f"{program} {name} failed:\n{run.stderr}")
    results = json.loads(run.stdout)["benchmarks"] if run.stdout.strip() else []
    return results[0]["real_time"] if results else None


def offered(program):
    listing = subprocess.run([program, "--benchmark_list_tests"], capture_output=True, text=True)
    return {line.removesuffix("/manual_time") for line in listing.stdout.split()}


def spread(values):
    return f"{statistics.median(values):.2f} ({min(values):.2f} to {max(values):.2f})"


def compare(programs, operation, document, options):
    """The ratios of each peer: the peer's time over netxml's, one a round."""
    own = f"{COUNTERPART.get(operation, operation)}/{document}"
    peers = [p for p in PEERS if p in programs and f"{operation}/{document}" in programs[p][1]]
    if not peers or own not in programs[OWN][1]:
        return None, {}
    times, ratios = [], {peer: [] for peer in peers}
    for _ in range(options.rounds):
        mine = measure(programs[OWN][0], own, options.seconds, options.keep)
        times.append(mine)
        for peer in peers:
            theirs = measure(programs[peer][0], f"{operation}/{document}", options.seconds,
                             options.keep)
            ratios[peer].append(theirs / mine)
    return statistics.median(times), ratios


def table(programs, operation, documents, options):
    peers = [p for p in PEERS if p in programs]
    lines = [f"### {operation}", "",
             "| document | netxml | " + " | ".join(f"x {p}" for p in peers) + " |",
             "|---|---|" + "---|" * len(peers)]
    for document in documents:
        nanoseconds, ratios = compare(programs, operation, document, options)
        if not ratios:
            continue
        cells = [spread(ratios[p]) if p in ratios else "" for p in peers]
        lines.append(f"| {document} | {nanoseconds / 1000:,.1f} us | " + " | ".join(cells) + " |")
        print(lines[-1], flush=True)
    return lines if len(lines) > 4 else []


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("build", type=pathlib.Path, help="the build directory")
    parser.add_argument("--rounds", type=int, default=5)
    parser.add_argument("--seconds", type=float, default=0.1, help="for one measurement")
    parser.add_argument("--operations", nargs="+", default=OPERATIONS)
    parser.add_argument("--documents", nargs="+", default=DOCUMENTS)
    parser.add_argument("--plain-malloc", dest="keep", action="store_false",
                        help="let the allocator give memory back between documents")
    parser.add_argument("--output", type=pathlib.Path, help="write the tables to this file")
    options = parser.parse_args()

    programs = {}
    for name in [OWN] + PEERS:
        program = options.build / "bench" / f"bench_{name}"
        if program.exists():
            programs[name] = (str(program), offered(str(program)))
        else:
            print(f"{name} is not built: left out", file=sys.stderr)
    if OWN not in programs:
        sys.exit(f"no {options.build}/bench/bench_{OWN}: configure with -DNETXML_BUILD_BENCH=ON")

    lines = [f"{platform.machine()}, {os.cpu_count()} processors, {platform.platform()}; "
             f"{options.rounds} rounds. A number is netxml's throughput over the peer's.", ""]
    for operation in options.operations:
        print(f"{operation}:", flush=True)
        found = table(programs, operation, options.documents, options)
        lines += found + [""] if found else []
    if options.output:
        options.output.write_text("\n".join(lines))


if __name__ == "__main__":
    main()
