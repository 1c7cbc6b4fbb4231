#!/usr/bin/python3
"""Validates an archive of many documents on a cluster of workers.

Exit status: 0 all are valid, 1 some are not well-formed, 2 a mistake in the command line, 3 some
are not valid, 4 some cannot be read; the worst counts.
"""
import argparse
import json
import os
import sys
from collections.abc import Iterator
from pathlib import Path

import checking
from checking import Finding
from summary import Summary


def batches(names: list[str], size: int) -> Iterator[list[str]]:
    """The names, some at a time: a batch is what a worker gets at once."""
    for start in range(0, len(names), size):
        yield names[start : start + size]


def run_here(options: argparse.Namespace, names: list[str]) -> Iterator[list[Finding]]:
    """Without a cluster, in this process."""
    for batch in batches(names, options.batch):
        yield checking.check_batch(options.archive, batch, options.schema, options.prefix)


def run_on_cluster(options: argparse.Namespace, names: list[str]) -> Iterator[list[Finding]]:
    """On the workers of a scheduler, or on workers of this machine, as they finish."""
    import distributed

    cluster = options.scheduler or distributed.LocalCluster(
        n_workers=options.workers, threads_per_worker=1, dashboard_address=None
    )
    with distributed.Client(cluster) as client:
        client.upload_file(str(Path(checking.__file__)))
        waiting = distributed.as_completed(with_results=True)
        left = batches(names, options.batch)

        def submit_next() -> None:
            batch = next(left, None)
            if batch is not None:
                waiting.add(client.submit(
                    checking.check_batch, options.archive, batch, options.schema, options.prefix,
                    pure=False,
                ))  # fmt: skip

        # Some batches a worker are on their way at any time, however many there are in all.
        for _ in range(4 * max(1, len(client.scheduler_info()["workers"]))):
            submit_next()
        for _, findings in waiting:
            yield [Finding(*finding) for finding in findings]
            submit_next()
    if not options.scheduler:
        cluster.close()


def command_line() -> argparse.Namespace:
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0] if __doc__ else None)
    parser.add_argument("archive", help="a ZIP file or a folder of documents (*.xml)")
    parser.add_argument("--schema", required=True, help="the compiled schema, a shared object")
    parser.add_argument("--prefix", help="the schema's --prefix, if it is not the file's stem")
    where = parser.add_mutually_exclusive_group()
    where.add_argument("--workers", type=int, default=2, metavar="N",
                       help="on N workers of this machine (2); 0: in this process")  # fmt: skip
    where.add_argument("--scheduler", metavar="ADDRESS", help="on the workers of a scheduler")
    parser.add_argument("--batch", type=int, default=250, metavar="N",
                        help="documents that a worker gets at once (250)")  # fmt: skip
    parser.add_argument("--show", type=int, default=5, metavar="N",
                        help="of the documents that are wrong, show N (5)")  # fmt: skip
    parser.add_argument("--findings", metavar="FILE",
                        help="write all that is wrong, a JSON object a line")  # fmt: skip
    options = parser.parse_args()
    if options.batch < 1 or options.workers < 0 or options.show < 0:
        parser.error("a number is too small")
    for name in (options.archive, options.schema):
        if not os.path.exists(name):
            parser.error(f"{name} is not there")
    # Workers may stand in another folder.
    options.archive, options.schema = map(os.path.abspath, (options.archive, options.schema))
    return options


def main() -> int:
    options = command_line()
    names = checking.names_of(options.archive)
    here = options.workers == 0 and not options.scheduler
    summary = Summary()
    for findings in (run_here if here else run_on_cluster)(options, names):
        summary.add(findings)
    for line in summary.lines(options.show):
        print(line)
    if options.findings:
        with open(options.findings, "w", encoding="utf-8") as file:
            for finding in sorted(summary.wrong):
                print(json.dumps(finding._asdict(), ensure_ascii=False), file=file)
    return summary.status()


if __name__ == "__main__":
    sys.exit(main())
