"""The examples of docs/python.md and of the module's docstrings."""
import doctest
import os
import subprocess
import sys
import unittest
from os import environ
from pathlib import Path

import netxml

SOURCE = Path(environ["NETXML_SOURCE"])


class Guide(unittest.TestCase):
    def test_the_guide(self) -> None:
        result = doctest.testfile(
            str(SOURCE / "docs/python.md"),
            module_relative=False,
            encoding="utf-8",
            globs={
                "schema_path": environ["NETXML_SCHEMA"],
                "documents": SOURCE / "examples/interfaces/documents",
            },
        )
        self.assertGreater(result.attempted, 25)
        self.assertEqual(result.failed, 0)

    def test_the_modules_docstring(self) -> None:
        result = doctest.testmod(netxml)
        self.assertEqual((result.attempted > 2, result.failed), (True, 0))

    def test_everything_public_is_documented(self) -> None:
        for name in netxml.__all__:
            what = getattr(netxml, name)
            self.assertTrue(what.__doc__, name)
            for member, value in vars(what).items() if isinstance(what, type) else ():
                if not member.startswith("_") and (callable(value) or isinstance(value, property)):
                    self.assertTrue(value.__doc__, f"{name}.{member}")

    def test_the_readme(self) -> None:
        text = (SOURCE / "python/README.md").read_text()
        code = text.split("```python\n")[1].split("```")[0]
        ran = subprocess.run([sys.executable, "-B", "-c", code], capture_output=True, text=True)
        expected = "<config><mtu>1500</mtu><hostname>edge-1</hostname></config>\n"
        self.assertEqual((ran.stdout, ran.stderr), (expected, ""))

    def test_a_missing_library_is_an_import_error(self) -> None:
        environment = {**os.environ, "NETXML_LIBRARY": "/nowhere/libnetxml.so.1"}
        ran = subprocess.run([sys.executable, "-B", "-c", "import netxml"], env=environment,
                             capture_output=True, text=True)  # fmt: skip
        self.assertEqual(ran.returncode, 1)
        self.assertIn("ImportError: the netxml library is not found; NETXML_LIBRARY", ran.stderr)

    def test_the_loader_finds_the_library_by_its_name(self) -> None:
        folder = str(Path(environ["NETXML_LIBRARY"]).parent)
        environment = {**os.environ, "LD_LIBRARY_PATH": folder}
        del environment["NETXML_LIBRARY"]
        code = "import netxml; print(netxml.new('a').to_string())"
        ran = subprocess.run([sys.executable, "-B", "-c", code], env=environment,
                             capture_output=True, text=True)  # fmt: skip
        self.assertEqual((ran.stdout, ran.stderr), ("<a/>\n", ""))


if __name__ == "__main__":
    unittest.main()
