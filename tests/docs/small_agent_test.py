"""The agent of the tutorial: at most a hundred lines, and what it answers."""
from __future__ import annotations

import os
import subprocess
import unittest
import xml.etree.ElementTree as ElementTree
from pathlib import Path

SOURCE = Path(os.environ["NETXML_SOURCE"])
AGENT = os.environ["NETXML_AGENT"]
BASE = "urn:ietf:params:xml:ns:netconf:base:1.0"
MARK = "]]>]]>"
HELLO = f'<hello xmlns="{BASE}"><capabilities/></hello>'
GET = "<get-config><source><running/></source></get-config>"
CLOSE = f'<rpc xmlns="{BASE}" message-id="9"><close-session/></rpc>'


def rpc(content: str) -> str:
    return f'<rpc xmlns="{BASE}" message-id="7">{content}</rpc>'


def tag(name: str) -> str:
    return f"{{{BASE}}}{name}"


class SmallAgent(unittest.TestCase):
    def exchange(
        self, *messages: str, end: str = MARK
    ) -> tuple[int, list[ElementTree.Element], str]:
        """Sends messages; returns exit status, the messages that come back, and standard error."""
        sent = "".join(message + MARK for message in messages[:-1]) + messages[-1] + end
        ran = subprocess.run(
            [AGENT, SOURCE / "examples/documents/interfaces.xml"],
            input=sent,
            text=True,
            capture_output=True,
            encoding="utf-8",
        )
        pieces = ran.stdout.split(MARK)
        self.assertEqual(pieces[-1].strip(), "", "a message without a mark")
        return (
            ran.returncode,
            [ElementTree.fromstring(one.strip().encode()) for one in pieces[:-1]],
            ran.stderr,
        )

    def tag_of_error(self, content: str) -> str | None:
        status, (_, reply, _), _ = self.exchange(HELLO, rpc(content), CLOSE)
        self.assertEqual(status, 0)
        self.assertEqual(reply.tag, tag("rpc-reply"))
        return reply.findtext(f"{tag('rpc-error')}/{tag('error-tag')}")

    def test_it_has_a_hundred_lines(self) -> None:
        lines = (SOURCE / "examples/tutorials/agent.c").read_text().splitlines()
        self.assertLessEqual(len(lines), 100)
        self.assertLessEqual(max(map(len, lines)), 100)

    def test_a_session(self) -> None:
        status, (hello, config, closed), said = self.exchange(HELLO, rpc(GET), CLOSE)
        self.assertEqual((status, said), (0, ""))
        self.assertEqual(hello.tag, tag("hello"))
        self.assertEqual(
            [one.text for one in hello.iter(tag("capability"))],
            ["urn:ietf:params:netconf:base:1.0"],
        )
        self.assertEqual((config.tag, config.get("message-id")), (tag("rpc-reply"), "7"))
        interfaces = "{urn:ietf:params:xml:ns:yang:ietf-interfaces}"
        names = config.findall(
            f"{tag('data')}/{interfaces}interfaces/{interfaces}interface/{interfaces}name"
        )
        self.assertEqual([name.text for name in names], ["eth0", "eth1"])
        self.assertIn("上行链路", "".join(config.itertext()))
        self.assertEqual(
            (closed.get("message-id"), [one.tag for one in closed]), ("9", [tag("ok")])
        )

    def test_a_reply_has_the_prefixes_and_attributes_of_the_request(self) -> None:
        request = (
            f'<n:rpc xmlns:n="{BASE}" xmlns:x="urn:x" message-id="a b" x:user="fred"><n:get-config>'
            "<n:source><n:running/></n:source></n:get-config></n:rpc>"
        )
        status, (_, reply, _), _ = self.exchange(HELLO, request, CLOSE)
        self.assertEqual(status, 0)
        self.assertEqual(reply.attrib, {"message-id": "a b", "{urn:x}user": "fred"})
        self.assertEqual([one.tag for one in reply], [tag("data")])

    def test_what_it_cannot_do_it_says(self) -> None:
        self.assertEqual(self.tag_of_error("<lock/>"), "operation-not-supported")
        self.assertEqual(self.tag_of_error(""), "operation-not-supported")
        self.assertEqual(
            self.tag_of_error('<get-config xmlns="urn:other"/>'), "operation-not-supported"
        )
        self.assertEqual(
            self.tag_of_error(GET.replace("</get", "<filter/></get")), "operation-not-supported"
        )
        self.assertEqual(self.tag_of_error(GET.replace("running", "startup")), "invalid-value")
        self.assertEqual(self.tag_of_error("<get-config/>"), "invalid-value")

    def test_what_is_no_message_ends_the_session(self) -> None:
        for messages in (
            (rpc(GET),),
            (HELLO, HELLO),
            (HELLO, "<rpc/>"),
            (HELLO, ""),
            (HELLO, "<a></b>"),
        ):
            status, replies, _ = self.exchange(*messages)
            self.assertEqual((status, len(replies)), (1, 1), messages)
        _, _, said = self.exchange(HELLO, "<a></b>")
        self.assertIn("tag name mismatch.", said)

    def test_an_end_between_or_inside_messages_is_no_regular_one(self) -> None:
        for end in ("", "]]>"):
            status, replies, _ = self.exchange(HELLO, rpc(GET), end=end)
            self.assertEqual((status, len(replies)), (1, 1))
        status, replies, _ = self.exchange(HELLO, rpc(GET))
        self.assertEqual((status, len(replies)), (1, 2))

    def test_a_message_that_is_too_long_ends_the_session(self) -> None:
        filling = f"<!-- {'x' * (1 << 20)} -->"
        status, replies, _ = self.exchange(HELLO, rpc(filling + GET), CLOSE)
        self.assertEqual((status, len(replies)), (1, 1))

    def test_it_needs_a_configuration(self) -> None:
        none: list[str] = []
        for arguments in (none, ["/nowhere.xml"]):
            ran = subprocess.run([AGENT, *arguments], capture_output=True, text=True)
            self.assertEqual((ran.returncode, ran.stdout), (2, ""))
            self.assertIn("usage:", ran.stderr)


if __name__ == "__main__":
    unittest.main()
