#!/usr/bin/env python3
"""Notes how netxml's work grows with the size of a document, in each direction it can grow."""

import json
import subprocess

import notes


def main() -> None:
    parser = notes.parser(__doc__)
    parser.add_argument("--bytes", type=int, default=100_000_000, help="the largest document")
    parser.add_argument("--depth", type=int, default=1_000_000, help="the deepest document")
    options = parser.parse_args()
    run = subprocess.run([options.build / "bench" / "bench_growth", str(options.bytes),
                          str(options.depth)], capture_output=True, text=True, check=True)
    notes.write(options.output, [json.loads(line) for line in run.stdout.splitlines()])


if __name__ == "__main__":
    main()
