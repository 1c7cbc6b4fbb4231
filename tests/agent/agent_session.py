"""Talks NETCONF to the agent over a pipe, without SSH, and reads what it answers."""
from __future__ import annotations

import os
import re
import shlex
import shutil
import socket
import subprocess
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree
from pathlib import Path

BASE = "urn:ietf:params:xml:ns:netconf:base:1.0"
SYSTEM = "urn:example:agent:system"
MARK = b"]]>]]>"
AGENT = shlex.split(os.environ.get("NETXML_AGENT_EMULATOR", "")) + [os.environ["NETXML_AGENT"]]


def hello(*versions: str) -> bytes:
    """The client's hello, with its mark."""
    said = "".join(f"<capability>urn:ietf:params:netconf:base:{v}</capability>" for v in versions)
    return f'<hello xmlns="{BASE}"><capabilities>{said}</capabilities></hello>'.encode() + MARK


def rpc(content: str, message_id: str = "1") -> bytes:
    return f'<rpc xmlns="{BASE}" message-id="{message_id}">{content}</rpc>'.encode()


def chunked(message: bytes, *sizes: int) -> bytes:
    """A message in chunks of the sizes given; what is left is the last one."""
    framed, rest = b"", message
    for size in (*sizes, len(message)):
        piece, rest = rest[:size], rest[size:]
        if piece:
            framed += b"\n#%d\n%b" % (len(piece), piece)
    return framed + b"\n##\n"


def edit(content: str, target: str = "running", options: str = "") -> str:
    """An edit of what lies in <system>; `nc` is the prefix of its attributes."""
    return (f"<edit-config><target><{target}/></target>{options}<config>"
            f'<system xmlns="{SYSTEM}" xmlns:nc="{BASE}">{content}</system>'
            "</config></edit-config>")


def get_config(source: str = "running", conditions: str | None = None) -> str:
    wanted = "" if conditions is None else f"<filter>{conditions}</filter>"
    return f"<get-config><source><{source}/></source>{wanted}</get-config>"


def local(element: ElementTree.Element) -> str:
    return element.tag.rpartition("}")[2]


def outline(element: ElementTree.Element) -> str:
    """An element without namespaces, on one line: what tests compare."""
    inside = (element.text or "") + "".join(outline(child) for child in element)
    return f"<{local(element)}>{inside}</{local(element)}>" if inside else f"<{local(element)}/>"


class Reply:
    """One <rpc-reply>."""

    def __init__(self, text: bytes) -> None:
        self.text = text
        self.root = ElementTree.fromstring(text)
        assert self.root.tag == f"{{{BASE}}}rpc-reply", self.root.tag
        self.content = self.root[0]

    def field(self, name: str) -> str | None:
        """A part of <rpc-error>."""
        found = self.content.find(f".//{{{BASE}}}{name}")
        return None if found is None else found.text

    @property
    def tag(self) -> str | None:
        """The error's tag; "ok" or "data" where there is none."""
        name = local(self.content)
        return self.field("error-tag") if name == "rpc-error" else name

    @property
    def system(self) -> str:
        """What lies in <data>, as an outline."""
        assert local(self.content) == "data", self.text
        return "".join(outline(child) for child in self.content)


class Agent:
    """An agent at work, in a session that has begun."""

    def __init__(self, config: Path, version: str = "1.1", begin: bool = True,
                 environment: dict[str, str] | None = None) -> None:
        self.chunked = version == "1.1"
        self.process = subprocess.Popen([*AGENT, "--config", str(config)], stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                                        env={**os.environ, **(environment or {})})
        self.hello = ElementTree.fromstring(self.receive_marked()) if begin else None
        if begin:
            self.send_raw(hello("1.0", version))

    def send_raw(self, octets: bytes) -> None:
        assert self.process.stdin
        self.process.stdin.write(octets)
        self.process.stdin.flush()

    def read_byte(self) -> bytes:
        assert self.process.stdout and self.process.stderr
        octet = self.process.stdout.read(1)
        if not octet:
            raise EOFError(self.process.stderr.read().decode())
        return octet

    def receive_marked(self) -> bytes:
        received = b""
        while not received.endswith(MARK):
            received += self.read_byte()
        return received[:-len(MARK)]

    def receive_chunked(self) -> bytes:
        received = b""
        while True:
            header = self.read_byte() + self.read_byte()
            while not header.endswith(b"\n") or len(header) < 3:
                header += self.read_byte()
            if header == b"\n##\n":
                return received
            size = re.fullmatch(rb"\n#([1-9][0-9]*)\n", header)
            assert size and self.process.stdout, header
            received += self.process.stdout.read(int(size[1]))

    def send(self, content: str) -> None:
        message = rpc(content)
        self.send_raw(chunked(message) if self.chunked else message + MARK)

    def call(self, content: str) -> Reply:
        self.send(content)
        return self.receive()

    def receive(self) -> Reply:
        return Reply(self.receive_chunked() if self.chunked else self.receive_marked())

    @property
    def session_id(self) -> str:
        assert self.hello is not None
        return self.hello.findtext(f"{{{BASE}}}session-id") or ""

    def close(self) -> tuple[int, str]:
        """Ends the input; the exit status and what was said on standard error."""
        assert self.process.stdin and self.process.stdout and self.process.stderr
        self.process.stdin.close()
        said = self.process.stderr.read().decode()
        self.process.stdout.close()
        self.process.stderr.close()
        return self.process.wait(), said

    def kill(self) -> None:
        """Ends it by force, unless it has ended."""
        assert self.process.stdin
        if not self.process.stdin.closed:
            self.process.kill()
            self.close()


def run(config: Path, octets: bytes, pieces: list[bytes] | None = None) -> tuple[int, bytes, str]:
    """A whole session from its input: exit status, output, and what was said on standard error.

    With `pieces` each of them is what one read() of the agent gets: records of a packet socket
    stand in for a stream that delivers so much at a time.
    """
    command = [*AGENT, "--config", str(config)]
    if pieces is None:
        done = subprocess.run(command, input=octets, capture_output=True, check=False)
        return done.returncode, done.stdout, done.stderr.decode()
    ours, theirs = socket.socketpair(socket.AF_UNIX, socket.SOCK_SEQPACKET)
    with ours, theirs, subprocess.Popen(command, stdin=theirs, stdout=subprocess.PIPE,
                                        stderr=subprocess.PIPE) as process:
        theirs.close()
        for piece in pieces:
            ours.send(piece)
        ours.close()
        output, said = process.communicate()
        return process.returncode, output, said.decode()


def without_session_id(output: bytes) -> bytes:
    return re.sub(rb"<session-id>[0-9]+</session-id>", b"<session-id>N</session-id>", output)


class AgentCase(unittest.TestCase):
    """A test with a directory of its own, and with agents that are gone at its end."""

    maxDiff = None

    def setUp(self) -> None:
        self.directory = Path(tempfile.mkdtemp(prefix="netxml-agent-"))
        self.addCleanup(shutil.rmtree, self.directory)
        self.config = self.directory / "config.xml"

    def agent(self, version: str = "1.1", environment: dict[str, str] | None = None) -> Agent:
        agent = Agent(self.config, version, environment=environment)
        self.addCleanup(agent.kill)
        return agent

    def keep(self, content: str) -> None:
        """Puts a configuration into the file: what lies in <system>."""
        self.config.write_text(f'<configuration xmlns="{SYSTEM}"><system>{content}</system>'
                               "</configuration>")

    def kept(self) -> str:
        """What the file holds, as an outline of what lies in <configuration>; nothing without it."""
        if not self.config.exists():
            return ""
        root = ElementTree.parse(self.config).getroot()
        self.assertEqual(root.tag, f"{{{SYSTEM}}}configuration")
        return "".join(outline(child) for child in root)

    def assert_closes(self, agent: Agent) -> None:
        """The session ends well; under a sanitizer that says, too, that nothing leaked."""
        self.assertEqual(agent.call("<close-session/>").tag, "ok")
        self.assertEqual(agent.close(), (0, ""))
