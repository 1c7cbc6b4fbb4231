"""What is kept: candidate and running, locks between sessions, and files that no crash tears."""
from __future__ import annotations

import os
import random
import select
import signal
import unittest

from agent_session import SYSTEM, Agent, AgentCase, edit, get_config, hello, run

KILLS = 64


def lock(datastore: str) -> str:
    return f"<lock><target><{datastore}/></target></lock>"


def unlock(datastore: str) -> str:
    return lock(datastore).replace("lock>", "unlock>").replace("ununlock", "unlock")


def contact(text: str) -> str:
    return f"<contact>{text}</contact>"


class Datastores(AgentCase):
    def test_candidate_and_running(self) -> None:
        agent = self.agent()
        self.assertEqual(agent.call(edit(contact("a"), "candidate")).tag, "ok")
        self.assertEqual(agent.call(get_config("candidate")).system,
                         "<system><contact>a</contact></system>")
        self.assertEqual(agent.call(get_config("running")).system, "")
        self.assertEqual(agent.call("<discard-changes/>").tag, "ok")
        self.assertEqual(agent.call(get_config("candidate")).system, "")
        self.assertEqual(agent.call("<discard-changes/>").tag, "ok")

        self.assertEqual(agent.call(edit(contact("b"), "candidate")).tag, "ok")
        self.assertEqual(agent.call(edit("<hostname>r</hostname>", "candidate")).tag, "ok")
        self.assertEqual(agent.call("<commit/>").tag, "ok")
        self.assertEqual(agent.call("<commit/>").tag, "ok")
        kept = "<system><hostname>r</hostname><contact>b</contact></system>"
        for datastore in ("candidate", "running"):
            self.assertEqual(agent.call(get_config(datastore)).system, kept)
        self.assertEqual(self.kept(), kept)
        # An unchanged candidate follows the running configuration.
        self.assertEqual(agent.call(edit(contact("c"), "running")).tag, "ok")
        self.assertIn("<contact>c", agent.call(get_config("candidate")).system)
        self.assert_closes(agent)

    def test_sessions_share_both(self) -> None:
        one, two = self.agent(), self.agent("1.0")
        self.assertEqual(one.call(edit(contact("a"), "candidate")).tag, "ok")
        self.assertIn("<contact>a", two.call(get_config("candidate")).system)
        self.assertEqual(two.call("<commit/>").tag, "ok")
        self.assertIn("<contact>a", one.call(get_config("running")).system)
        self.assert_closes(one)
        self.assert_closes(two)

    def test_a_configuration_outlives_its_sessions(self) -> None:
        text = "R\u00e9my \u5e26 <&>"
        escaped = text.replace("&", "&amp;").replace("<", "&lt;")
        one = self.agent()
        self.assertEqual(one.call(edit(contact(escaped))).tag, "ok")
        self.assert_closes(one)
        two = self.agent()
        self.assertEqual(two.call("<get/>").system, f"<system><contact>{text}</contact></system>")
        self.assert_closes(two)
        self.assertEqual({path.name for path in self.directory.iterdir()},
                         {"config.xml", "config.xml.lock"})

    def test_a_file_that_is_not_valid_is_not_served(self) -> None:
        system = f'<configuration xmlns="{SYSTEM}"><system>%s</system></configuration>'
        user = "<user><name>a</name><role>admin</role></user>"
        for text in ("", "text", system[:40], system % "<mtu/>", "<configuration/>",
                     system % "<hostname>-</hostname>", system % f"<users>{user}{user}</users>"):
            self.config.write_text(text)
            status, output, said = run(self.config, hello("1.0"))
            self.assertEqual((status, output), (1, b""), text)
            self.assertRegex(said, "^agent: .*config.xml: .")
        self.config.unlink()
        agent = self.agent()
        self.config.write_text(system % "<mtu/>")
        self.assertEqual(agent.call(get_config()).tag, "unknown-element")
        self.config.write_text("text")
        self.assertEqual(agent.call(get_config()).tag, "operation-failed")
        self.assert_closes(agent)

    def test_a_file_that_cannot_be_written(self) -> None:
        agent = self.agent()
        self.assertEqual(agent.call(edit(contact("a"))).tag, "ok")
        before = self.config.read_bytes()
        (self.directory / "config.xml.new").mkdir()  # stands in the way of the temporary file
        for datastore in ("running", "candidate"):
            reply = agent.call(edit(contact("b"), datastore))
            self.assertEqual((reply.tag, reply.field("error-message")),
                             ("operation-failed", "Is a directory"))
        self.assertEqual(self.config.read_bytes(), before)
        self.assertEqual(agent.call(get_config("candidate")).system,
                         "<system><contact>a</contact></system>")
        (self.directory / "config.xml.new").rmdir()
        self.assertEqual(agent.call(edit(contact("b"))).tag, "ok")
        self.assert_closes(agent)

    def test_wrong_places(self) -> None:
        (self.directory / "directory").mkdir()
        for path in (self.directory / "directory", self.directory / "none" / "config.xml"):
            status, output, said = run(path, hello("1.0"))
            self.assertEqual((status, output), (1, b""), said)
            self.assertTrue(said.startswith("agent: "), said)


class Locks(AgentCase):
    def denied(self, reply, holder: str) -> None:
        self.assertEqual((reply.tag, reply.field("session-id")), ("lock-denied", holder))

    def test_between_sessions(self) -> None:
        one, two = self.agent(), self.agent()
        for datastore in ("running", "candidate"):
            self.assertEqual(one.call(lock(datastore)).tag, "ok")
            self.denied(two.call(lock(datastore)), one.session_id)
            self.denied(one.call(lock(datastore)), one.session_id)
            self.assertEqual(two.call(unlock(datastore)).tag, "operation-failed")
            self.assertEqual(two.call(edit(contact("x"), datastore)).tag, "in-use")
            self.assertEqual(two.call("<commit/>").tag, "in-use")
            self.assertEqual(two.call(get_config(datastore)).tag, "data")
            self.assertEqual(one.call(edit(contact(datastore), datastore)).tag, "ok")
            self.assertEqual(one.call("<commit/>").tag, "ok")
            self.assertEqual(one.call(unlock(datastore)).tag, "ok")
            self.assertEqual(one.call(unlock(datastore)).tag, "operation-failed")
            self.assertEqual(two.call(lock(datastore)).tag, "ok")
            self.assertEqual(two.call(unlock(datastore)).tag, "ok")
        self.assert_closes(one)
        self.assert_closes(two)

    def test_discard_needs_the_candidate(self) -> None:
        one, two = self.agent(), self.agent()
        self.assertEqual(one.call(lock("candidate")).tag, "ok")
        self.assertEqual(two.call("<discard-changes/>").tag, "in-use")
        self.assert_closes(one)
        self.assertEqual(two.call("<discard-changes/>").tag, "ok")
        self.assert_closes(two)

    def test_a_changed_candidate_cannot_be_locked(self) -> None:
        agent = self.agent()
        self.assertEqual(agent.call(edit(contact("a"), "candidate")).tag, "ok")
        self.denied(agent.call(lock("candidate")), "0")
        self.assertEqual(agent.call("<discard-changes/>").tag, "ok")
        self.assertEqual(agent.call(lock("candidate")).tag, "ok")
        self.assert_closes(agent)

    def test_the_holder_comes_before_its_changes(self) -> None:
        """Whoever is denied a lock is told who holds it, also once that has edited."""
        one, two = self.agent(), self.agent()
        self.assertEqual(one.call(lock("candidate")).tag, "ok")
        self.assertEqual(one.call(edit(contact("a"), "candidate")).tag, "ok")
        self.denied(two.call(lock("candidate")), one.session_id)
        self.denied(one.call(lock("candidate")), one.session_id)
        self.assertEqual(one.call("<commit/>").tag, "ok")
        self.assertEqual(one.call(unlock("candidate")).tag, "ok")
        # A lock that is refused for changes is not held afterwards.
        self.assertEqual(one.call(edit(contact("b"), "candidate")).tag, "ok")
        self.denied(two.call(lock("candidate")), "0")
        self.assertEqual(one.call("<discard-changes/>").tag, "ok")
        self.assertEqual(one.call(lock("candidate")).tag, "ok")
        self.assert_closes(one)
        self.assert_closes(two)

    def test_changes_go_with_the_lock(self) -> None:
        for ending in ("unlock", "close-session", "end of input", "kill"):
            with self.subTest(ending):
                one, two = self.agent(), self.agent()
                self.assertEqual(one.call(lock("candidate")).tag, "ok")
                self.assertEqual(one.call(lock("running")).tag, "ok")
                self.assertEqual(one.call(edit(contact("a"), "candidate")).tag, "ok")
                if ending == "unlock":
                    self.assertEqual(one.call(unlock("candidate")).tag, "ok")
                    self.assertEqual(one.call(unlock("running")).tag, "ok")
                elif ending == "close-session":
                    self.assert_closes(one)
                elif ending == "kill":
                    one.kill()
                else:
                    self.assertEqual(one.close(), (0, ""))
                self.assertEqual(two.call(get_config("candidate")).system, "")
                for datastore in ("running", "candidate"):
                    self.assertEqual(two.call(lock(datastore)).tag, "ok")
                self.assert_closes(two)


class Kills(AgentCase):
    def state(self) -> tuple[int, int, int]:
        """Which file it is, and how long: an agent that wrote it in place would show by that."""
        if not self.config.exists():
            return (0, 0, 0)
        found = self.config.stat()
        return (found.st_ino, found.st_size, found.st_mtime_ns)

    def is_time(self, agent: Agent, moment: str, before: tuple[int, int, int]) -> bool:
        """Whether a kill hits the moment now; or has missed it, for the reply is there."""
        if select.select([agent.process.stdout], [], [], 0)[0]:
            return True
        if moment == "writing":
            return (self.directory / "config.xml.new").exists()
        return self.state() != before

    def kill_at(self, agent: Agent, moment: str, before: tuple[int, int, int], replies: int,
                looks: int) -> None:
        """Kills the agent while it works on what it was sent: while it writes its temporary file, as
        soon as the file changes from `before`, after its replies, or after so many looks."""
        if moment == "replied":
            for _ in range(replies):
                self.assertEqual(agent.receive().tag, "ok")
        elif moment == "any time":
            for _ in range(looks):
                self.config.exists()
        else:
            if moment == "changed" and replies == 2:  # a commit renames, after the edit's reply
                self.assertEqual(agent.receive().tag, "ok")
            while agent.process.poll() is None and not self.is_time(agent, moment, before):
                pass
        self.assertIsNone(agent.process.poll(), "the agent has ended by itself")
        os.kill(agent.process.pid, signal.SIGKILL)
        agent.process.wait()
        agent.close()

    def test_a_kill_leaves_the_old_or_the_new(self) -> None:
        """An agent is killed while it replaces one configuration by the other; the file then holds
        one of them, whole, and the next session works."""
        chance = random.Random(1)
        users = {name: "".join(f"<user><name>{name}{i}</name><role>viewer</role></user>"
                               for i in range(700)) for name in "ab"}
        whole = {f"<system><users>{users[name]}</users></system>": name for name in "ab"}
        seen = dict.fromkeys(("old", "new", "by commit", "by edit", "left a temporary file"), 0)
        held = None
        for kill in range(10 * KILLS):
            if kill >= KILLS and all(seen.values()):
                break
            commits = kill % 2 == 0
            agent = Agent(self.config)
            # A candidate may be left of the session before.
            self.assertEqual(agent.call("<discard-changes/>").tag, "ok")
            name = "b" if held == "a" else "a"
            (self.directory / "config.xml.new").unlink(missing_ok=True)
            before = self.state()
            agent.send(edit(f'<users nc:operation="replace">{users[name]}</users>',
                            "candidate" if commits else "running"))
            if commits:
                agent.send("<commit/>")
            moment = ("writing", "changed", "replied", "any time")[kill // 2 % 4]
            self.kill_at(agent, moment, before, 1 + commits, chance.randrange(3000))
            found = whole[self.kept()] if self.config.exists() else None
            self.assertIn(found, (held, name))
            seen["new" if found == name else "old"] += 1
            seen["by commit" if commits else "by edit"] += 1
            seen["left a temporary file"] += (self.directory / "config.xml.new").exists()
            held = found
        print(f"{kill} kills: {seen}", flush=True)
        self.assertTrue(all(seen.values()), seen)
        (self.directory / "config.xml.new").write_text("what a crash has left")
        agent = self.agent()
        self.assertEqual(agent.call("<discard-changes/>").tag, "ok")
        self.assertEqual(agent.call(edit(contact("after"))).tag, "ok")
        self.assertIn("<contact>after</contact>", self.kept())
        self.assertFalse((self.directory / "config.xml.new").exists())
        self.assert_closes(agent)


if __name__ == "__main__":
    unittest.main(verbosity=2)
