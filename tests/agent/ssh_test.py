"""The agent as a subsystem of SSH: a private sshd on the loopback interface, and ncclient.

The server runs as the user who runs the test, with a key, a configuration and a port of its own.
"""
from __future__ import annotations

import getpass
import os
import shutil
import signal
import socket
import subprocess
import tempfile
import time
import unittest
from pathlib import Path

from ncclient import manager
from ncclient.operations.rpc import RPCError

BASE = "urn:ietf:params:xml:ns:netconf:base:1.0"
SYSTEM = "urn:example:agent:system"
AGENT = os.environ["NETXML_AGENT"]
PRIVILEGE_DIRECTORY = Path("/run/sshd")  # a server that root runs insists on it
IN = "/sys:system/sys:interfaces/sys:interface"


def config(content: str) -> str:
    return (f'<config xmlns="{BASE}" xmlns:nc="{BASE}"><system xmlns="{SYSTEM}">{content}</system>'
            "</config>")


def interface(name: str, content: str = "", operation: str = "") -> str:
    attribute = operation and f' nc:operation="{operation}"'
    return config(f"<interfaces><interface{attribute}><name>{name}</name>{content}</interface>"
                  "</interfaces>")


class Server:
    """A private sshd whose subsystem `netconf` is the agent."""

    def __init__(self, directory: Path) -> None:
        self.directory = directory
        self.config = directory / "config.xml"
        self.key = directory / "user_key"
        self.log = directory / "sshd.log"
        self.made_privilege_directory = False
        for name in ("host_key", "user_key"):
            subprocess.run(["ssh-keygen", "-q", "-t", "ed25519", "-N", "", "-f", directory / name],
                           check=True)
        (directory / "authorized_keys").write_bytes((directory / "user_key.pub").read_bytes())
        if os.geteuid() == 0 and not PRIVILEGE_DIRECTORY.exists():
            PRIVILEGE_DIRECTORY.mkdir(mode=0o755)
            self.made_privilege_directory = True
        self.start()

    def start(self) -> None:
        """A port that was free may be taken when the server wants it: then another one is tried."""
        for _ in range(10):
            with socket.socket() as probe:
                probe.bind(("127.0.0.1", 0))
                self.port = probe.getsockname()[1]
            self.process = self.launch()
            if self.listens():
                return
            self.process.wait()
        raise RuntimeError("sshd does not listen:\n" + self.log.read_text())

    def launch(self) -> subprocess.Popen:
        (self.directory / "sshd_config").write_text("\n".join((
            "ListenAddress 127.0.0.1",
            f"Port {self.port}",
            f"HostKey {self.directory}/host_key",
            f"AuthorizedKeysFile {self.directory}/authorized_keys",
            "PidFile none",
            "StrictModes no",  # the directory lies below /tmp
            "UsePAM no",
            "PasswordAuthentication no",
            "KbdInteractiveAuthentication no",
            "PermitRootLogin prohibit-password",
            f"Subsystem netconf {AGENT} --config {self.config} 2>>{self.directory}/agent.log",
        )) + "\n")
        with self.log.open("ab") as log:
            # sshd starts itself again for each connection, so it wants its absolute name.
            return subprocess.Popen([shutil.which("sshd", path=os.environ["PATH"] + ":/usr/sbin"),
                                     "-D", "-e", "-f", self.directory / "sshd_config"],
                                    stdin=subprocess.DEVNULL, stdout=log, stderr=log)

    def listens(self) -> bool:
        """Waits until the server listens, or ends."""
        while self.process.poll() is None:
            with socket.socket() as probe:
                if probe.connect_ex(("127.0.0.1", self.port)) == 0:
                    return True
            time.sleep(0.01)
        return False

    def connect(self) -> manager.Manager:
        return manager.connect(host="127.0.0.1", port=self.port, username=getpass.getuser(),
                               key_filename=str(self.key), hostkey_verify=False,
                               allow_agent=False, look_for_keys=False)

    def stop(self) -> None:
        self.process.send_signal(signal.SIGTERM)
        self.process.wait()
        if self.made_privilege_directory:
            PRIVILEGE_DIRECTORY.rmdir()


class Ssh(unittest.TestCase):
    def setUp(self) -> None:
        directory = Path(tempfile.mkdtemp(prefix="netxml-agent-ssh-"))
        self.addCleanup(shutil.rmtree, directory)
        self.server = Server(directory)
        self.addCleanup(self.server.stop)
        self.addCleanup(self.show_logs)

    def show_logs(self) -> None:
        """What the agents say on standard error is an error: they end well here."""
        log = self.server.directory / "agent.log"
        self.assertEqual(log.read_text() if log.exists() else "", "", self.server.log.read_text())

    def system(self, client: manager.Manager, source: str = "running", wanted: str = "") -> str:
        """The leaves of a configuration, as NAME=TEXT."""
        chosen = ("subtree", wanted) if wanted else None
        data = client.get_config(source=source, filter=chosen).data
        return " ".join(f"{leaf.tag.rpartition('}')[2]}={leaf.text}" for leaf in data.iter()
                        if leaf.text)

    def refused(self, tag: str, path: str | None, call, *arguments, **named) -> RPCError:
        with self.assertRaises(RPCError) as caught:
            call(*arguments, **named)
        self.assertEqual((caught.exception.tag, caught.exception.path), (tag, path))
        return caught.exception

    def test_a_working_day(self) -> None:
        client = self.server.connect()
        print("session", client.session_id, "with", len(list(client.server_capabilities)),
              "capabilities", flush=True)
        for capability in (":base:1.1", ":candidate", ":writable-running", ":rollback-on-error",
                           ":validate:1.1", SYSTEM):
            self.assertIn(capability, client.server_capabilities)
        self.assertEqual(self.system(client), "")

        with client.locked("candidate"):
            self.edits(client)
            client.validate("candidate")
            self.assertEqual(self.system(client), "")
            client.commit()
        kept = "hostname=r1 name=eth0 mtu=9000 name=eth1"
        self.assertEqual(self.system(client), kept)
        self.assertEqual(self.system(client, wanted=f'<system xmlns="{SYSTEM}"><interfaces>'
                                     "<interface><mtu/></interface></interfaces></system>"),
                         "name=eth0 mtu=9000")
        self.refusals(client)
        self.assertEqual(self.system(client, "candidate"), kept)
        self.assertTrue(client.close_session().ok)

        again = self.server.connect()
        self.assertEqual(self.system(again), kept)
        again.edit_config(target="running", config=config("<contact>me</contact>"))
        self.assertTrue(again.close_session().ok)
        self.assertIn("<contact>me</contact>", self.server.config.read_text())

    def edits(self, client: manager.Manager) -> None:
        """Every operation, on the candidate."""
        def edit(content: str, **options) -> None:
            self.assertTrue(client.edit_config(target="candidate", config=content, **options).ok)
        edit(config("<hostname>r1</hostname>"))
        edit(interface("eth0", "<mtu>1500</mtu>", "create"))
        edit(interface("eth0", "<enabled>true</enabled>", "merge"))
        edit(interface("eth1", "<mtu>68</mtu>", "create"))
        edit(interface("eth2", "", "create"))
        self.assertEqual(self.system(client, "candidate"), "hostname=r1 name=eth0 mtu=1500 "
                         "enabled=true name=eth1 mtu=68 name=eth2")
        edit(interface("eth0", "<mtu>9000</mtu>", "replace"))
        edit(interface("eth1", '<mtu nc:operation="delete"/>'), default_operation="none")
        edit(interface("eth2", "", "delete"))
        edit(interface("eth3", "", "remove"), error_option="rollback-on-error")
        edit(interface("eth4"), test_option="test-only")

    def refusals(self, client: manager.Manager) -> None:
        """Each failing edit, on the running configuration."""
        def refuse(tag: str, path: str, content: str, **options) -> RPCError:
            return self.refused(tag, path, client.edit_config, target="running", config=content,
                                **options)
        refuse("data-exists", f"{IN}[sys:name='eth0']", interface("eth0", "", "create"))
        refuse("data-missing", f"{IN}[sys:name='eth9']", interface("eth9", "", "delete"))
        refuse("data-missing", f"{IN}[sys:name='eth9']", interface("eth9"),
               default_operation="none")
        small = refuse("invalid-value", f"{IN}[sys:name='eth0']/sys:mtu",
                       interface("eth0", "<mtu>1</mtu>", "replace"))
        self.assertIn("must be greater than or equal to 68", small.message)
        refuse("unknown-element", f"{IN}[sys:name='eth0']/sys:speed",
               interface("eth0", "<speed/>", "merge"))
        refuse("missing-element", IN, config("<interfaces><interface/></interfaces>"))
        refuse("bad-attribute", f"{IN}[sys:name='eth0']", interface("eth0", "", "swap"))
        refuse("missing-element", "/sys:system/sys:users/sys:user[sys:name='a']",
               config("<users><user><name>a</name></user></users>"))
        refuse("operation-not-supported", "/nc:rpc/nc:edit-config/nc:error-option",
               interface("eth9"), error_option="continue-on-error")

    def test_two_sessions(self) -> None:
        one, two = self.server.connect(), self.server.connect()
        self.assertNotEqual(one.session_id, two.session_id)
        for datastore in ("running", "candidate"):
            self.assertTrue(one.lock(datastore).ok)
            denied = self.refused("lock-denied", None, two.lock, datastore)
            self.assertIn(f"<session-id>{one.session_id}</session-id>", denied.info)
            self.refused("in-use", None, two.edit_config, target=datastore, config=interface("e"))
            self.refused("in-use", None, two.commit)
            self.refused("operation-failed", None, two.unlock, datastore)
        self.assertTrue(one.edit_config(target="candidate", config=interface("eth0")).ok)
        self.assertTrue(one.close_session().ok)
        # The locks are gone with the session, and so are its changes.
        for datastore in ("running", "candidate"):
            self.assertTrue(two.lock(datastore).ok)
        self.assertEqual(self.system(two, "candidate"), "")
        self.assertTrue(two.close_session().ok)


if __name__ == "__main__":
    unittest.main(verbosity=2)
