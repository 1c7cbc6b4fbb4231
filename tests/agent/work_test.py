"""How the agent's work grows with what it is given: twice as much takes about twice as long.

What is counted is steps on trees and comparisons, see counted_work.c: no clock is looked at.
"""
from __future__ import annotations

import os
import re
import subprocess
import unittest
from typing import Callable

from agent_session import AGENT, BASE, MARK, SYSTEM, AgentCase, chunked, edit, hello, rpc

SMALL = 1500
LARGEST_RATIO = 2.5


def entry(number: int, content: str = "", operation: str = "") -> str:
    attribute = operation and f' nc:operation="{operation}"'
    return f"<interface{attribute}><name>e{number}</name>{content}</interface>"


def entries(count: int, content: str = "", operation: str = "", last_first: bool = False) -> str:
    numbers = range(count - 1, -1, -1) if last_first else range(count)
    inside = "".join(entry(number, content, operation) for number in numbers)
    return f"<interfaces>{inside}</interfaces>"


def filtered(content: str) -> str:
    return f'<get><filter><system xmlns="{SYSTEM}">{content}</system></filter></get>'


def servers(count: int) -> str:
    return "".join(f"<name-server>10.0.{n // 256}.{n % 256}</name-server>" for n in range(count))


def systems(count: int, content: str) -> str:
    """So many <system> in one edit."""
    one = f'<system xmlns="{SYSTEM}" xmlns:nc="{BASE}">{content}</system>'
    return f"<edit-config><target><running/></target><config>{one * count}</config></edit-config>"


Maker = Callable[[int], str]

# fmt: off
WORK: list[tuple[str, Maker, Maker, str]] = [
    # why, what lies in <system> before, the request, what must be in its reply
    ("new entries", lambda n: "", lambda n: edit(entries(n)), "<ok/>"),
    ("entries that are there", entries, lambda n: edit(entries(n, "<mtu>99</mtu>")), "<ok/>"),
    ("one entry among many", entries, lambda n: edit("<contact>me</contact>"), "<ok/>"),
    ("entries that are replaced", entries,
     lambda n: edit(entries(n, "<mtu>99</mtu>", "replace")), "<ok/>"),
    ("entries deleted from the last to the first", entries,
     lambda n: edit(entries(n, "", "delete", True)), "<ok/>"),
    ("entries deleted, others kept", lambda n: entries(2 * n),
     lambda n: edit(entries(n, "", "delete", True)), "<ok/>"),
    ("all of them replaced by default", entries,
     lambda n: edit(entries(n), "running",
                    "<default-operation>replace</default-operation>"), "<ok/>"),
    ("one edit after the other", lambda n: "", lambda n: systems(n, entries(1)), "<ok/>"),
    ("what is replaced again and again", lambda n: "",
     lambda n: systems(n, '<users nc:operation="replace"/>'), "<ok/>"),
    ("leaves in front of others", lambda n: "<interfaces/><users/>", lambda n: edit(servers(n)),
     "bad-element"),
    ("get", entries, lambda n: "<get/>", "<data>"),
    ("each entry by its key", entries, lambda n: filtered(entries(n)), "<data>"),
    ("a part of each entry by its key", lambda n: entries(n, "<mtu>99</mtu>"),
     lambda n: filtered(entries(n, "<mtu/>")), "<data>"),
    ("the same selection many times", entries,
     lambda n: filtered(f"<interfaces>{'<interface/>' * n}</interfaces>"), "<data>"),
    ("a part of all entries", lambda n: entries(n, "<mtu>99</mtu>"),
     lambda n: filtered("<interfaces><interface><mtu/></interface></interfaces>"), "<data>"),
]
# fmt: on


class Work(AgentCase):
    def work(self, content: str, request: str, expected: str) -> int:
        for path in self.directory.iterdir():
            path.unlink()
        self.keep(content)
        environment = {**os.environ, "LD_PRELOAD": os.environ["NETXML_AGENT_PRELOAD"]}
        done = subprocess.run([*AGENT, "--config", str(self.config)], env=environment,
                              input=hello("1.1") + chunked(rpc(request)), capture_output=True,
                              check=False)
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertIn(expected, done.stdout.partition(MARK)[2].decode())
        said = re.fullmatch(r"work: ([0-9]+)\n", done.stderr.decode())
        assert said, done.stderr
        return int(said[1])

    def test_twice_as_much_is_twice_the_work(self) -> None:
        for why, content, request, expected in WORK:
            with self.subTest(why):
                small, large = (self.work(content(count), request(count), expected)
                                for count in (SMALL, 2 * SMALL))
                print(f"{why}: {small} and {large} steps, {large / small:.2f} times", flush=True)
                self.assertGreater(small, SMALL)
                self.assertLess(large / small, LARGEST_RATIO)

    def test_conditions_without_a_key_copy_nothing_twice(self) -> None:
        """Each of them looks at each entry; what it would select is there already."""
        condition = "<interface><enabled>true</enabled></interface>"
        content = entries(100, "<enabled>true</enabled>")
        one, many = (self.work(content, filtered(f"<interfaces>{condition * count}</interfaces>"),
                               "<data>") for count in (1, 101))
        # A look at an entry: its leaves, by name and by value.
        self.assertLess(many - one, 100 * 100 * 30)


if __name__ == "__main__":
    unittest.main(verbosity=2)
