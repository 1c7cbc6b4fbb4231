"""Calls of the system that fail, one kind at a time, see failing_system.c."""
from __future__ import annotations

import os
import unittest

from agent_session import Agent, AgentCase, Reply, edit, get_config

UNSYNCED = "The change is done, but may not survive a loss of power: Input/output error."


def lock(datastore: str, what: str = "lock") -> str:
    return f"<{what}><target><{datastore}/></target></{what}>"


def contact(text: str) -> str:
    return f"<contact>{text}</contact>"


class Failures(AgentCase):
    def setUp(self) -> None:
        super().setUp()
        self.failure = self.directory / "failure"
        self.keep(contact("old"))

    def failing_agent(self) -> Agent:
        return self.agent(environment={"LD_PRELOAD": os.environ["NETXML_AGENT_PRELOAD"],
                                       "SYSTEM_FAILURE": str(self.failure)})

    def failed(self, reply: Reply, message: str) -> None:
        self.assertEqual((reply.tag, reply.field("error-message")), ("operation-failed", message))

    def names(self) -> set[str]:
        return {path.name for path in self.directory.iterdir()} - {"failure"}

    def test_a_directory_that_is_not_synchronised(self) -> None:
        agent = self.failing_agent()
        self.failure.write_text("fsync-directory")
        self.failed(agent.call(edit(contact("new"))), UNSYNCED)
        self.assertEqual(self.kept(), f"<system>{contact('new')}</system>")
        self.failed(agent.call(edit(contact("newer"), "candidate")), UNSYNCED)
        self.failed(agent.call("<commit/>"), UNSYNCED)
        self.assertEqual(self.kept(), f"<system>{contact('newer')}</system>")
        self.assertEqual(self.names(), {"config.xml", "config.xml.lock"})
        self.failure.unlink()
        self.assertEqual(agent.call("<commit/>").tag, "ok")
        self.assert_closes(agent)

    def test_a_directory_that_cannot_be_opened(self) -> None:
        """Nothing is changed then; and nothing is left."""
        agent = self.failing_agent()
        self.assertEqual(agent.call(edit(contact("new"), "candidate")).tag, "ok")
        before = self.config.read_bytes()
        names = self.names()
        self.failure.write_text("open-directory")
        for request in (edit(contact("a")), edit(contact("b"), "candidate"), "<commit/>",
                        "<discard-changes/>"):
            self.failed(agent.call(request), "Too many open files")
            self.assertEqual((self.config.read_bytes(), self.names()), (before, names))
        self.failure.unlink()
        self.assertEqual(agent.call("<commit/>").tag, "ok")
        self.assertEqual(self.kept(), f"<system>{contact('new')}</system>")
        self.assert_closes(agent)

    def test_a_file_that_cannot_be_renamed(self) -> None:
        agent = self.failing_agent()
        self.failure.write_text("rename")
        self.failed(agent.call(edit(contact("new"))), "Input/output error")
        self.assertEqual(self.names(), {"config.xml", "config.xml.lock"})
        self.failure.unlink()
        self.assertEqual(agent.call(edit(contact("new"), "candidate")).tag, "ok")
        self.failure.write_text("rename")
        self.failed(agent.call("<commit/>"), "Input/output error")
        self.assertEqual(self.kept(), f"<system>{contact('old')}</system>")
        self.failure.unlink()
        self.assertEqual(agent.call("<commit/>").tag, "ok")
        self.assertEqual(self.kept(), f"<system>{contact('new')}</system>")
        self.assert_closes(agent)

    def test_locks_that_do_not_work(self) -> None:
        agent = self.failing_agent()
        self.failure.write_text("lock")
        for request in (lock("running"), lock("candidate"), edit(contact("new")), "<commit/>"):
            self.failed(agent.call(request), "No locks available")
        self.failure.unlink()
        self.assertEqual(agent.call(lock("running")).tag, "ok")
        self.assert_closes(agent)

    def test_a_candidate_that_cannot_be_looked_at(self) -> None:
        agent = self.failing_agent()
        self.failure.write_text("access")
        self.failed(agent.call(lock("candidate")), "Input/output error")
        self.failure.unlink()
        self.assertEqual(agent.call(lock("candidate")).tag, "ok")
        self.assert_closes(agent)

    def test_a_holder_that_nobody_can_name(self) -> None:
        """As one in another PID namespace: it holds the lock all the same."""
        one, two = self.agent(), self.failing_agent()
        self.failure.write_text("holder")
        for datastore in ("running", "candidate"):
            self.assertEqual(one.call(lock(datastore)).tag, "ok")
            reply = two.call(lock(datastore))
            self.assertEqual((reply.tag, reply.field("session-id")), ("lock-denied", "0"))
            self.assertEqual(two.call(edit(contact("x"), datastore)).tag, "in-use")
            self.assertEqual(two.call("<commit/>").tag, "in-use")
        self.assertEqual(one.call(edit(contact("one"), "candidate")).tag, "ok")
        # The holder lives: its changes are not taken for those of one that was killed.
        self.assertEqual(two.call(get_config("candidate")).system,
                         f"<system>{contact('one')}</system>")
        self.assertEqual(one.call("<commit/>").tag, "ok")
        self.assert_closes(one)
        self.assert_closes(two)

    def test_a_session_ends_whatever_happens(self) -> None:
        one, two = self.failing_agent(), self.agent()
        for datastore in ("running", "candidate"):
            self.assertEqual(one.call(lock(datastore)).tag, "ok")
        self.assertEqual(one.call(edit(contact("one"), "candidate")).tag, "ok")
        self.failure.write_text("unlink")
        self.failed(one.call(lock("candidate", "unlock")), "Input/output error")
        self.assertEqual(two.call(edit(contact("x"), "candidate")).tag, "in-use")
        self.assert_closes(one)
        # Whoever comes next discards what it could not.
        self.assertEqual(two.call(get_config("candidate")).system,
                         f"<system>{contact('old')}</system>")
        for datastore in ("running", "candidate"):
            self.assertEqual(two.call(lock(datastore)).tag, "ok")
        self.assert_closes(two)


if __name__ == "__main__":
    unittest.main(verbosity=2)
