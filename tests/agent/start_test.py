"""How the agent starts: its command line, its standard streams, and the file that it is given."""
from __future__ import annotations

import os
import stat
import subprocess
import time
import unittest
from pathlib import Path

from agent_session import (AGENT, MARK, SYSTEM, AgentCase, chunked, edit, get_config, hello, rpc,
                           run)

CONFIGURATION = f'<configuration xmlns="{SYSTEM}"><system>%s</system></configuration>'


class CommandLine(AgentCase):
    def test_a_wrong_one(self) -> None:
        config = str(self.config)
        for arguments in ([], ["--config"], ["--config", ""], ["--file", config], [config],
                          ["--config", config, "more"], ["--help"]):
            with self.subTest(arguments):
                done = subprocess.run([*AGENT, *arguments], input=hello("1.0"), check=False,
                                      capture_output=True)
                self.assertEqual((done.returncode, done.stdout), (2, b""))
                self.assertRegex(done.stderr, b"^usage: .* --config FILE\n$")
        self.assertEqual(list(self.directory.iterdir()), [])


class Streams(AgentCase):
    def shell(self, redirections: str) -> subprocess.CompletedProcess[bytes]:
        command = ["bash", "-c", f'exec "$@" {redirections}', "bash", *AGENT, "--config",
                   str(self.config)]
        return subprocess.run(command, input=hello("1.0") + rpc("<commit/>") + MARK,
                              capture_output=True, check=False)

    def test_a_closed_output(self) -> None:
        done = self.shell(">&-")
        self.assertEqual((done.returncode, done.stderr),
                         (1, b"agent: standard output is closed.\n"))
        self.assertEqual(list(self.directory.iterdir()), [])

    def test_a_closed_input(self) -> None:
        done = self.shell("<&-")
        self.assertEqual((done.returncode, done.stderr),
                         (1, b"agent: the client sent no hello.\n"))
        self.assertEqual((self.directory / "config.xml.lock").read_bytes(), b"")

    def test_a_closed_standard_error(self) -> None:
        done = self.shell("2>&-")
        self.assertEqual((done.returncode, done.stdout.count(b"<ok/>")), (0, 1))
        self.assertEqual((self.directory / "config.xml.lock").read_bytes(), b"")

    def test_a_client_that_has_gone(self) -> None:
        """A write that fails ends the session as others do: not the signal."""
        reading, writing = os.pipe()
        os.close(reading)
        with open(writing, "wb") as output:
            done = subprocess.run([*AGENT, "--config", str(self.config)], input=hello("1.0"),
                                  stdout=output, stderr=subprocess.PIPE, check=False)
        self.assertEqual((done.returncode, done.stderr), (1, b"agent: the hello cannot be sent.\n"))

    def test_a_client_that_goes_between_two_replies(self) -> None:
        agent = self.agent()
        assert agent.process.stdin and agent.process.stdout and agent.process.stderr
        self.assertEqual(agent.call(get_config()).tag, "data")
        agent.process.stdout.close()
        agent.send(get_config())
        self.assertEqual(agent.process.wait(), 1)
        self.assertEqual(agent.process.stderr.read(), b"agent: the output cannot be written.\n")
        agent.process.stdin.close()
        agent.process.stderr.close()

    def test_streams_that_do_not_wait(self) -> None:
        """Input that comes late, and output that is taken late."""
        self.keep("<interfaces>" + "".join(
            f"<interface><name>e{number}</name></interface>" for number in range(5000)) +
            "</interfaces>")
        ours_in, agents_in = os.pipe()[::-1]
        agents_out, ours_out = os.pipe()[::-1]
        for end in (agents_in, agents_out):
            os.set_blocking(end, False)
        with subprocess.Popen([*AGENT, "--config", str(self.config)], stdin=agents_in,
                              stdout=agents_out, stderr=subprocess.PIPE) as process:
            os.close(agents_in)
            os.close(agents_out)
            for piece in (hello("1.0")[:20], hello("1.0")[20:], rpc("<get/>"), MARK):
                time.sleep(0.02)
                os.write(ours_in, piece)
            os.close(ours_in)
            time.sleep(0.02)
            with open(ours_out, "rb") as output:
                received = output.read()
            assert process.stderr
            self.assertEqual((process.wait(), process.stderr.read()), (0, b""))
        self.assertEqual(received.count(b"</interface>"), 5000)
        self.assertEqual(received.count(MARK), 2)


class Files(AgentCase):
    def serve(self, path: Path, content: str) -> None:
        """One edit through this name."""
        status, output, said = run(path, hello("1.1") + chunked(rpc(edit(content))))
        self.assertEqual((status, said, output.count(b"<ok/>")), (0, "", 1), output)

    def test_a_link_stays_one(self) -> None:
        elsewhere = self.directory / "elsewhere"
        elsewhere.mkdir()
        target = elsewhere / "real.xml"
        target.write_text(CONFIGURATION % "<contact>old</contact>")
        (elsewhere / "second").symlink_to("real.xml")
        self.config.symlink_to("elsewhere/second")
        self.serve(self.config, "<contact>new</contact>")
        self.assertTrue(self.config.is_symlink())
        self.assertTrue((elsewhere / "second").is_symlink())
        self.assertIn("<contact>new</contact>", target.read_text())
        # All names have the same locks.
        self.assertEqual({path.name for path in self.directory.rglob("*.lock")}, {"real.xml.lock"})

    def test_a_link_to_nothing(self) -> None:
        self.config.symlink_to("none.xml")
        status, output, said = run(self.config, hello("1.0"))
        self.assertEqual((status, output, said), (
            1, b"", f"agent: {self.config}: this is a symbolic link to nothing\n"))
        self.config.unlink()
        self.config.symlink_to("config.xml")
        status, output, said = run(self.config, hello("1.0"))
        self.assertEqual((status, output), (1, b""), said)

    def test_the_mode_stays(self) -> None:
        for mode in (0o644, 0o640, 0o600):
            for target in ("running", "candidate"):
                with self.subTest(f"{mode:o}, {target}"):
                    self.keep("<contact>old</contact>")
                    self.config.chmod(mode)
                    agent = self.agent()
                    self.assertEqual(agent.call(edit("<contact>new</contact>", target)).tag, "ok")
                    if target == "candidate":  # a mode that is given in between counts, too
                        self.config.chmod(mode | 0o044)
                        mode |= 0o044
                    self.assertEqual(agent.call("<commit/>").tag, "ok")
                    self.assert_closes(agent)
                    self.assertIn("new", self.kept())
                    self.assertEqual(stat.S_IMODE(self.config.stat().st_mode), mode)

    def test_the_owner_stays(self) -> None:
        """Root alone may give files away; others have their groups, perhaps more than one."""
        groups = [os.getgid(), *os.getgroups()]
        user, group = (1234, 4321) if os.geteuid() == 0 else (-1, groups[-1])
        self.keep("<contact>old</contact>")
        os.chown(self.config, user, group)
        before = self.config.stat()
        self.serve(self.config, "<contact>new</contact>")
        found = self.config.stat()
        self.assertNotEqual(found.st_ino, before.st_ino)
        self.assertEqual((found.st_uid, found.st_gid), (before.st_uid, before.st_gid))

    def test_a_new_file_is_for_its_owner(self) -> None:
        self.serve(self.config, "<contact>new</contact>")
        self.assertEqual(stat.S_IMODE(self.config.stat().st_mode), 0o600)

    def test_a_document_type_declaration(self) -> None:
        text = '<?xml version="1.0" encoding="UTF-8"?><!-- <a> --><!DOCTYPE configuration>'
        for encoding in ("utf-8", "utf-16"):
            declaration = text.replace("UTF-8", encoding.upper())
            self.config.write_bytes((declaration + CONFIGURATION % "").encode(encoding))
            status, output, said = run(self.config, hello("1.0"))
            self.assertEqual((status, output), (1, b""))
            self.assertIn("has a document type declaration", said)
        self.config.write_text("<?p <!DOCTYPE a> ??><!-- - <!DOCTYPE a> -->" + CONFIGURATION % "")
        self.assertEqual(run(self.config, hello("1.0"))[0], 0)

    def test_a_file_with_prefixes(self) -> None:
        """As somebody may have written it by hand: what is added fits in."""
        entries = "".join(f"<s:interface><s:name>e{number}</s:name></s:interface>"
                          for number in range(20))
        self.config.write_text(f'<s:configuration xmlns:s="{SYSTEM}"><s:system><s:interfaces>'
                               f"{entries}</s:interfaces></s:system></s:configuration>")
        deleted = "".join(f'<interface nc:operation="delete"><name>e{number}</name></interface>'
                          for number in range(19))
        self.serve(self.config, f"<contact>me</contact><interfaces>{deleted}</interfaces>")
        self.assertEqual(self.kept(), "<system><contact>me</contact><interfaces><interface><name>"
                                      "e19</name></interface></interfaces></system>")


if __name__ == "__main__":
    unittest.main(verbosity=2)
