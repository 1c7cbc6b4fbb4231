"""Every allocation of a session fails once, and with all that follow: the agent ends well."""
from __future__ import annotations

import os
import re
import subprocess
import unittest
import xml.etree.ElementTree as ElementTree

from agent_session import (AGENT, MARK, AgentCase, chunked, edit, get_config, hello, rpc,
                           without_session_id)

ENTRY = "<interfaces><interface><name>eth0</name><mtu>%s</mtu></interface></interfaces>"
# More than is removed in place, which takes memory, too.
SERVERS = "".join(f"<name-server>10.0.0.{number}</name-server>" for number in range(10))
REMOVED = SERVERS.replace("<name-server>", '<name-server nc:operation="remove">')
INPUT = hello("1.1") + b"".join(chunked(rpc(content), 100) for content in (
    "<lock><target><candidate/></target></lock>",
    edit(ENTRY % "1<!-- -->500", "candidate"),
    edit(ENTRY % "\u5e26", "candidate"),
    edit("<hostname nc:operation='delete'/>", "candidate"),
    edit(SERVERS + REMOVED, "candidate", "<test-option>test-only</test-option>"),
    "<commit/>",
    get_config("running", '<system xmlns=""><interfaces><interface><name>eth0</name><mtu/>'
               "</interface></interfaces></system>"),
    "<get/>",
    "<reboot/>",
    "<close-session/>"))


class Allocations(AgentCase):
    def session(self, allowed: int | None, once: bool) -> tuple[int, bytes, str, int]:
        """Exit status, output, what was said, and the blocks held at the end."""
        for path in self.directory.iterdir():
            path.unlink()
        self.keep("<contact>me</contact>")
        environment = {"LD_PRELOAD": os.environ["NETXML_AGENT_PRELOAD"]}
        if allowed is not None:
            environment["ALLOCATIONS_ALLOWED"] = str(allowed)
        if once:
            environment["ALLOCATIONS_FAIL_ONCE"] = "1"
        done = subprocess.run([*AGENT, "--config", str(self.config)], input=INPUT,
                              capture_output=True, check=False, env=environment)
        said = re.fullmatch(r"(.*)held: (-?[0-9]+)\n", done.stderr.decode(), re.DOTALL)
        assert said, done.stderr
        return done.returncode, without_session_id(done.stdout), said[1], int(said[2])

    def check_replies(self, output: bytes) -> None:
        """What was sent whole is well-formed."""
        greeting, mark, rest = output.partition(MARK)
        if mark:
            ElementTree.fromstring(greeting)
        for reply in re.findall(rb"\n#[0-9]+\n(.*?)\n##\n", rest, re.DOTALL):
            ElementTree.fromstring(reply)

    def test_each_one(self) -> None:
        status, whole, said, held_usually = self.session(None, False)
        self.assertEqual((status, said, whole.count(b"<ok/>"), whole.count(b"<data>")),
                         (0, "", 5, 2), whole)
        for once in (False, True):
            allowed, unharmed = 0, 0
            while unharmed < 50:  # behind the last allocation nothing can fail
                status, output, said, held = self.session(allowed, once)
                why = f"{allowed} allowed, once: {once}: {said}"
                self.assertIn(status, (0, 1), why)
                self.assertEqual(status == 0, said == "", why)
                # What iconv and stdio keep for the process counts, too.
                self.assertLessEqual(held, held_usually, why)
                self.check_replies(output)
                self.assertIn(self.kept(), (
                    "<system><contact>me</contact></system>",
                    f"<system><contact>me</contact>{ENTRY % 1500}</system>"), why)
                unharmed = unharmed + 1 if output == whole and status == 0 else 0
                allowed += 1
            print(f"fails {'once' if once else 'from there on'}: {allowed - unharmed} allocations",
                  flush=True)
            self.assertGreater(allowed, 300)


if __name__ == "__main__":
    unittest.main(verbosity=2)
