#!/usr/bin/env python3
"""Compares netxml's verdicts on generated schemas and documents with xmllint's.

    pairs_test.py NETXML [SCHEMAS_OF_EACH_THEME [SEED]]

Fails on a disagreement that known_differences.py has no row for.
"""

from __future__ import annotations

import sys
import tempfile
from collections import Counter
from pathlib import Path

from comparison import Comparison, described
from generated_pairs import generated
from known_differences import explain
from verdicts import Netxml, Xmllint

DOCUMENTS_PER_SCHEMA = 3


def main() -> int:
    netxml = Netxml(sys.argv[1])
    schemas = int(sys.argv[2]) if len(sys.argv) > 2 else 3
    seed = int(sys.argv[3]) if len(sys.argv) > 3 else 7
    faults = 0
    rows: Counter[str] = Counter()
    with tempfile.TemporaryDirectory() as scratch:
        comparison = Comparison(netxml, [Xmllint()])
        for theme, schema, documents in generated(
            Path(scratch), seed, schemas, DOCUMENTS_PER_SCHEMA
        ):
            pairs = comparison.run(theme, schema, documents)
            odd = [p for p in pairs if p.outcome in ("disagree", "netxml refuses the schema")]
            warnings = netxml.warnings(schema, Path(scratch)) if odd else []
            for pair in odd:
                row = explain(pair, warnings)
                if row:
                    rows[row.name] += 1
                    continue
                faults += 1
                print(described(pair), schema.read_text(), pair.document.read_text(), sep="\n")
        print(comparison.table())
        for name, count in sorted(rows.items()):
            print(f"known difference: {name}: {count}")
        outcomes = Counter(pair.outcome for pair in comparison.pairs)

    # The sample itself: both verdicts are frequent, and most schemas are taken by both programs.
    total = len(comparison.pairs)
    if outcomes["both valid"] < total / 4 or outcomes["both invalid"] < total / 4:
        print("The sample is one-sided.")
        faults += 1
    print(f"{total} pairs, {faults} faults")
    return 1 if faults or not total else 0


if __name__ == "__main__":
    sys.exit(main())
