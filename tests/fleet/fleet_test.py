"""The fleet example on a local cluster of two workers."""
import argparse
import json
import os
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import unittest
import zipfile
from collections import Counter
from os import environ
from pathlib import Path
from typing import Any

import distributed
from distributed.diagnostics.plugin import SchedulerPlugin

EXAMPLE = Path(environ["NETXML_SOURCE"]) / "examples/fleet"
sys.path.insert(0, str(EXAMPLE))

import checking  # noqa: E402
import fleet  # noqa: E402
import make_archive  # noqa: E402
from checking import Finding  # noqa: E402

SCHEMA = environ["NETXML_SCHEMA"]
DOCUMENTS = int(environ.get("NETXML_TEST_FLEET_DOCUMENTS", "6000"))


class Shares(SchedulerPlugin):
    """Counts the batches that each worker has finished."""

    def __init__(self) -> None:
        self.finished: Counter[str] = Counter()

    def transition(self, key: str, start: str, finish: str, *_: Any, **more: Any) -> None:
        if start == "processing" and finish == "memory":
            self.finished[more.get("worker", "")] += 1


def two_workers() -> Any:
    return distributed.LocalCluster(n_workers=2, threads_per_worker=1, dashboard_address=None)


class Fleet(unittest.TestCase):
    folder: tempfile.TemporaryDirectory[str]
    archive: Path
    expected: dict[str, tuple[int, str | None]]

    @classmethod
    def setUpClass(cls) -> None:
        cls.folder = tempfile.TemporaryDirectory()
        cls.archive = Path(cls.folder.name) / "archive.zip"
        os.chdir(cls.folder.name)  # what the cluster leaves lies there
        cls.expected = {}
        with zipfile.ZipFile(cls.archive, "w") as file:
            for entry in make_archive.entries(DOCUMENTS, 7):
                file.writestr(entry.name, entry.data)
                if entry.code:
                    cls.expected[entry.name] = entry.code, entry.path

    @classmethod
    def tearDownClass(cls) -> None:
        os.chdir("/")
        cls.folder.cleanup()

    def run_example(self, *arguments: str) -> tuple[int, str, dict[str, Finding]]:
        findings = Path(self.folder.name) / "findings.json"
        ran = subprocess.run(
            [sys.executable, "-B", str(EXAMPLE / "fleet.py"), "--schema", SCHEMA,
             "--findings", str(findings), *arguments],
            stdout=subprocess.PIPE, text=True,
        )  # fmt: skip
        rows = [Finding(**json.loads(line)) for line in findings.read_text().splitlines()]
        return ran.returncode, ran.stdout, {row.name: row for row in rows}

    def check(self, findings: dict[str, Finding]) -> None:
        """Every mistake that was put in was found at its place, and nothing else."""
        self.assertEqual(findings.keys(), self.expected.keys())
        for name, (code, path) in self.expected.items():
            found = findings[name]
            self.assertEqual(found.code, code, name)
            self.assertEqual(found.path, "3:3" if path is None else path, name)

    def test_two_workers_find_what_was_put_in(self) -> None:
        status, output, findings = self.run_example("--workers", "2", str(self.archive))
        self.check(findings)
        self.assertEqual(status, 3)
        broken = sum(1 for code, _ in self.expected.values() if code == 76)
        invalid = len(self.expected) - broken
        self.assertGreater(min(broken, invalid), 10)
        self.assertTrue(output.startswith(
            f"{DOCUMENTS} documents: {DOCUMENTS - len(self.expected)} valid, {invalid} invalid, "
            f"{broken} not well-formed, 0 unreadable\n"
        ), output)  # fmt: skip
        places = Counter(
            (re.sub(r"\[\d+\]", "", path), code) for code, path in self.expected.values() if path
        )
        printed = re.findall(r"^ +(\d+)  code (\d+) +(/\S+)$", output, re.MULTILINE)
        self.assertEqual({(p, int(c)): int(n) for n, c, p in printed}, dict(places))

    def test_a_cluster_says_what_one_process_says(self) -> None:
        alone = self.run_example("--workers", "0", "--show", "9999", str(self.archive))
        self.check(alone[2])
        for batch in ("37", "1000"):
            self.assertEqual(
                self.run_example("--batch", batch, "--show", "9999", str(self.archive)), alone
            )
        unpacked = Path(self.folder.name) / "unpacked"
        with zipfile.ZipFile(self.archive) as file:
            file.extractall(unpacked)
        self.assertEqual(self.run_example("--workers", "0", "--show", "9999", str(unpacked)), alone)

    def on_cluster(self, cluster: Any) -> Any:
        options = argparse.Namespace(
            archive=str(self.archive), schema=SCHEMA, prefix=None, batch=50,
            scheduler=cluster.scheduler_address, workers=2,
        )  # fmt: skip
        return fleet.run_on_cluster(options, checking.names_of(str(self.archive)))

    def test_both_workers_have_a_share(self) -> None:
        shares = Shares()
        with two_workers() as c:
            c.scheduler.add_plugin(shares)
            findings = [finding for batch in self.on_cluster(c) for finding in batch]
        self.assertEqual(len(findings), DOCUMENTS)
        self.check({finding.name: finding for finding in findings if finding.status != "valid"})
        self.assertEqual(len(shares.finished), 2, shares.finished)
        self.assertGreaterEqual(sum(shares.finished.values()), DOCUMENTS // 50)

    def test_a_worker_that_dies_loses_nothing(self) -> None:
        with two_workers() as c:
            findings = []
            for number, batch in enumerate(self.on_cluster(c)):
                findings += batch
                if number == 3:
                    os.kill(c.workers[0].pid, signal.SIGKILL)
        self.assertEqual(len(findings), DOCUMENTS)
        self.check({finding.name: finding for finding in findings if finding.status != "valid"})

    def test_damaged_and_empty_archives(self) -> None:
        damaged = Path(self.folder.name) / "damaged.zip"
        with zipfile.ZipFile(damaged, "w", zipfile.ZIP_STORED) as file:
            file.writestr("a.xml", "<a>" + "x" * 100 + "</a>")
            file.writestr("b.xml", "<a/>")
        damaged.write_bytes(damaged.read_bytes().replace(b"xxx", b"yyy", 1))
        status, _, findings = self.run_example("--workers", "0", str(damaged))
        self.assertEqual((status, findings["a.xml"].status), (4, "unreadable"))
        self.assertEqual(findings["b.xml"].code, 12)
        empty = Path(self.folder.name) / "empty"
        empty.mkdir()
        self.assertEqual(
            self.run_example(str(empty)),
            (0, "0 documents: 0 valid, 0 invalid, 0 not well-formed, 0 unreadable\n", {}),
        )

    def test_the_transcript_of_the_readme(self) -> None:
        """The commands of the README, in a copy of the examples, print what stands there."""
        for name in ("fleet", "interfaces"):
            shutil.copytree(EXAMPLE.parent / name, f"examples/{name}")
        tool, library = Path(environ["NETXML_TOOL"]), Path(environ["NETXML_LIBRARY"])
        environment = {
            **environ,
            "PATH": f"{tool.parent}:/usr/bin:/bin",
            "CPATH": str(EXAMPLE.parent.parent / "include"),
            "LIBRARY_PATH": str(library.parent),
            "PYTHONDONTWRITEBYTECODE": "1",
        }
        transcript = (EXAMPLE / "README.md").read_text().split("```console\n")[1].split("```")[0]
        steps = re.findall(r"^\$ (.*)\n((?:(?!\$ ).*\n)*)", transcript, re.MULTILINE)
        self.assertEqual([step[0].split()[0] for step in steps],
                         ["netxml", "cc", "python3", "python3", "echo"])  # fmt: skip
        script = "\n".join(f"echo '$ {command}'\n{command}" for command, _ in steps)
        ran = subprocess.run(["bash", "-c", script], cwd="examples/fleet", env=environment,
                             stdout=subprocess.PIPE, text=True)  # fmt: skip
        self.assertEqual(ran.stdout, transcript)


if __name__ == "__main__":
    unittest.main()
