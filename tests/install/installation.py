"""What the tests of the installed netxml share: running programs, and what the consumers print."""
from __future__ import annotations

import os
import shlex
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

HERE = Path(__file__).resolve().parent
CONSUMER = HERE / "consumer"
SOURCE = HERE.parent.parent
CMAKE = os.environ["NETXML_CMAKE"]

ROUND_TRIP = '<device name="edge"><mtu>1500</mtu><site>lab</site></device>\n'
DECLARATION = '<?xml version="1.0" encoding="UTF-8"?>'
VERDICTS = ("valid\nThe value of element '/device/mtu[1]' is invalid. "
            "big is an invalid value of unsignedShort type value.\n")
PROGRAMS = {"c_shared": ROUND_TRIP, "c_static": ROUND_TRIP, "cpp_shared": ROUND_TRIP,
            "cpp_static": ROUND_TRIP, "face": ROUND_TRIP, "validate": VERDICTS}


def run(*command: str | Path, env: dict[str, str] | None = None) -> str:
    """Runs a program and returns what it prints; the exception of a failing one has that, too."""
    done = subprocess.run([str(word) for word in command], text=True, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, env={**os.environ, **(env or {})}, check=False)
    if done.returncode != 0:
        words = shlex.join(map(str, command))
        raise AssertionError(f"{words} ends with {done.returncode}:\n{done.stdout}")
    return done.stdout


class InstallationCase(unittest.TestCase):
    """A test with a directory of its own."""

    work: Path

    @classmethod
    def setUpClass(cls) -> None:
        cls.work = Path(tempfile.mkdtemp(prefix="netxml-install-"))
        cls.addClassCleanup(shutil.rmtree, cls.work)

    def check_programs(self, directory: Path, names: list[str], *before: str | Path,
                       env: dict[str, str] | None = None) -> None:
        """Runs the consumers of a build and compares what they print."""
        for name in names:
            with self.subTest(program=name):
                printed = run(*before, directory / name, env=env)
                self.assertEqual(printed.replace(DECLARATION, ""), PROGRAMS[name])
