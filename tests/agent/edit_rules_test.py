"""Rules of edits and their refusals beyond one element: what default replace means, what an edit
leaves that changes nothing, long lists, and how names are written in errors."""
from __future__ import annotations

import re
import unittest

from agent_session import BASE, SYSTEM, AgentCase, edit, get_config

START = "<hostname>r1</hostname><contact>me</contact>"
REPLACE = "<default-operation>replace</default-operation>"


def system(content: str, attribute: str = "") -> str:
    return f'<system xmlns="{SYSTEM}" xmlns:nc="{BASE}"{attribute}>{content}</system>'


def config(content: str, target: str = "running", options: str = "") -> str:
    return (f"<edit-config><target><{target}/></target>{options}<config>{content}</config>"
            "</edit-config>")


def entries(numbers: range, content: str = "", operation: str = "") -> str:
    attribute = operation and f' nc:operation="{operation}"'
    return "".join(f"<interface{attribute}><name>e{number}</name>{content}</interface>"
                   for number in numbers)


# fmt: off
REPLACED = [
    # why, the content of <config>, what lies in <configuration> then
    ("nothing is named: nothing stays", "", ""),
    ("what is not named goes", system("<contact>x</contact>"),
     "<system><contact>x</contact></system>"),
    ("a merge makes what was not there", system("<contact>x</contact>", ' nc:operation="merge"'),
     "<system><contact>x</contact></system>"),
    ("a create does", system("<contact>x</contact>", ' nc:operation="create"'),
     "<system><contact>x</contact></system>"),
    ("a remove removes nothing more", system("", ' nc:operation="remove"'), ""),
    ("two systems are one container", system("<contact>x</contact>") +
     system("<hostname>h</hostname>"),
     "<system><hostname>h</hostname><contact>x</contact></system>"),
    ("unless the second one says replace", system("<contact>x</contact>") +
     system("<hostname>h</hostname>", ' nc:operation="replace"'),
     "<system><hostname>h</hostname></system>"),
]

UNCHANGING = [
    # why, the content of <config>, the default operation
    ("nothing", "", "merge"),
    ("nothing, with none", "", "none"),
    ("a walk with none", system("<hostname>other</hostname>"), "none"),
    ("what is there already", system("<hostname>r1</hostname>"), "merge"),
    ("a removal of nothing", system('<name-server nc:operation="remove">1.1.1.1</name-server>'),
     "merge"),
    ("a removal below what is not there", system('<users><user nc:operation="remove"><name>a</name>'
     "</user></users>"), "merge"),
]

KEPT = [
    # why, the edit of nothing, what is kept
    ("a removal leaves no empty parents", system('<users><user nc:operation="remove"><name>a</name>'
     "</user></users>"), ""),
    ("nor beside what is made", system('<users><user nc:operation="remove"><name>a</name></user>'
     "</users><contact>x</contact>"), "<system><contact>x</contact></system>"),
    ("what is made on purpose stays", system("<users/>"), "<system><users/></system>"),
    ("and what is said to be created", system('<users nc:operation="create"><user nc:operation='
     '"remove"><name>a</name></user></users>'), "<system><users/></system>"),
    ("made, then emptied by the next one", system("<users/>") + system(
     '<users><user nc:operation="remove"><name>a</name></user></users>'),
     "<system><users/></system>"),
    ("removed and made again", system("<interfaces><interface><name>a</name></interface>"
     "</interfaces>") + system('<interfaces nc:operation="delete"/>') + system(
     "<interfaces><interface><name>b</name></interface></interfaces>"),
     "<system><interfaces><interface><name>b</name></interface></interfaces></system>"),
    ("an entry removed and made again", system("<interfaces><interface><name>a</name><mtu>99</mtu>"
     '</interface><interface nc:operation="delete"><name>a</name></interface><interface><name>a'
     "</name></interface></interfaces>"),
     "<system><interfaces><interface><name>a</name></interface></interfaces></system>"),
    ("a key removed, then its list, then the entry again", system("<interfaces><interface><name>a"
     '</name></interface><interface><name nc:operation="remove">a</name></interface></interfaces>')
     + system('<interfaces nc:operation="replace"><interface><name>a</name></interface>'
     "</interfaces>"),
     "<system><interfaces><interface><name>a</name></interface></interfaces></system>"),
]

NAMES = [
    # why, the request, the name in <error-info> with its declaration
    ("an element of the configuration", edit("<x/>"),
     f'<bad-element xmlns:sys="{SYSTEM}">sys:x</bad-element>'),
    ("one that the schema misses", edit("<users><user><name>a</name></user></users>"),
     f'<bad-element xmlns:sys="{SYSTEM}">sys:role</bad-element>'),
    ("one of another namespace", edit('<x xmlns="urn:x"/>'),
     '<bad-element xmlns:other="urn:x">other:x</bad-element>'),
    ("one whose namespace cannot be declared", edit("<x xmlns='urn:\"'/>"),
     "<bad-element>x</bad-element>"),
    ("an attribute of another namespace", edit('<contact xmlns:x="urn:x" x:y="z"/>'),
     '<bad-attribute xmlns:other="urn:x">other:y</bad-attribute>'),
    ("an attribute whose prefix all know", edit('<contact xml:lang="en"/>'),
     "<bad-attribute>xml:lang</bad-attribute>"),
    ("an attribute without one", edit('<contact y="z"/>'), "<bad-attribute>y</bad-attribute>"),
    ("NETCONF's own", "<get><x/></get>", "<bad-element>x</bad-element>"),
    ("its attribute", edit('<contact nc:operation="x"/>'),
     "<bad-attribute>operation</bad-attribute>"),
]

BELOW_EMPTY = [
    # the request, the name and the path that are refused
    ("<commit><confirmed/></commit>", "confirmed", "/nc:rpc/nc:commit/nc:confirmed"),
    ("<close-session><x/></close-session>", "x", "/nc:rpc/nc:close-session/nc:x"),
    ("<lock><target><running><y/></running></target></lock>", "y",
     "/nc:rpc/nc:lock/nc:target/nc:running/nc:y"),
]
# fmt: on


class Edits(AgentCase):
    def test_default_replace(self) -> None:
        agent = self.agent()
        for target in ("running", "candidate"):
            for why, content, expected in REPLACED:
                with self.subTest(f"{why}: {target}"):
                    self.keep(START)
                    self.assertEqual(agent.call(config(content, target, REPLACE)).tag, "ok")
                    self.assertEqual(agent.call(get_config(target)).system, expected)
                    self.assertEqual(agent.call("<commit/>").tag, "ok")
                    self.assertEqual(self.kept(), expected)
        self.keep(START)
        gone = system('<contact nc:operation="delete"/>')
        self.assertEqual(agent.call(config(gone, "running", REPLACE)).tag, "data-missing")
        self.assertEqual(self.kept(), f"<system>{START}</system>")
        self.assert_closes(agent)

    def test_an_edit_that_changes_nothing(self) -> None:
        agent = self.agent()
        self.keep(START)
        before = self.config.stat()
        for why, content, default in UNCHANGING:
            option = f"<default-operation>{default}</default-operation>"
            for target in ("running", "candidate"):
                with self.subTest(f"{why}: {target}"):
                    self.assertEqual(agent.call(config(content, target, option)).tag, "ok")
                    self.assertEqual(self.config.stat(), before)
                    # The candidate is not a changed one, so it can be locked.
                    lock = "<lock><target><candidate/></target></lock>"
                    self.assertEqual(agent.call(lock).tag, "ok")
                    self.assertEqual(agent.call(lock.replace("lock>", "unlock>")
                                                .replace("ununlock", "unlock")).tag, "ok")
        self.assert_closes(agent)

    def test_what_an_edit_leaves(self) -> None:
        agent = self.agent()
        for why, content, expected in KEPT:
            with self.subTest(why):
                self.config.unlink(missing_ok=True)
                self.assertEqual(agent.call(config(content)).tag, "ok")
                self.assertEqual(self.kept(), expected)
        self.assert_closes(agent)

    def test_long_lists(self) -> None:
        """Beyond what is edited in place: the order stays, and no other entry is touched."""
        count = 5000
        agent = self.agent()
        self.keep("<users><user><name>u</name><role>admin</role></user></users>")
        users = self.kept()[len("<system>"):]
        made = f"<interfaces>{entries(range(count))}</interfaces>"
        self.assertEqual(agent.call(edit(made)).tag, "ok")
        self.assertEqual(self.kept(), f"<system>{made}{users}")
        even = entries(range(count - 2, -1, -2), "", "delete")
        odd = entries(range(1, count, 2), "<mtu>99</mtu>")
        self.assertEqual(agent.call(edit(f"<contact>me</contact><interfaces>{even}{odd}"
                                         "</interfaces>")).tag, "ok")
        left = f"<interfaces>{odd}</interfaces>"
        self.assertEqual(self.kept(), f"<system><contact>me</contact>{left}{users}")
        again = f"<interfaces>{entries(range(0, 20, 2))}</interfaces>"
        self.assertEqual(agent.call(edit(again)).tag, "ok")
        wanted = entries(range(21, 2, -2), "<mtu/>")
        self.assertEqual(
            agent.call(get_config("running", system(f"<interfaces>{wanted}</interfaces>"))).system,
            f'<system><interfaces>{entries(range(21, 2, -2), "<mtu>99</mtu>")}</interfaces>'
            "</system>")
        twice = f'<interfaces>{entries(range(4998, 5001), "", "create")}</interfaces>'
        self.assertEqual(agent.call(edit(twice)).tag, "data-exists")
        self.assert_closes(agent)

    def test_many_leaves_come_into_order(self) -> None:
        """A list in front of others, more of it than the schema wants: by an edit that takes most
        of it back."""
        servers = [f"10.0.0.{number}" for number in range(200)]
        made = "".join(f"<name-server>{server}</name-server>" for server in servers)
        gone = "".join(f'<name-server nc:operation="delete">{server}</name-server>'
                       for server in servers[2:-2])
        agent = self.agent()
        self.keep("<interfaces/><users/>")
        self.assertEqual(agent.call(edit(made + gone)).tag, "ok")
        kept = "".join(f"<name-server>{server}</name-server>" for server in servers[:2] +
                       servers[-2:])
        self.assertEqual(self.kept(), f"<system>{kept}<interfaces/><users/></system>")
        self.assert_closes(agent)


class Errors(AgentCase):
    def test_names_have_their_namespace(self) -> None:
        agent = self.agent()
        for why, request, expected in NAMES:
            with self.subTest(why):
                self.assertIn(expected, agent.call(request).text.decode())
        self.assert_closes(agent)

    def test_below_what_must_be_empty(self) -> None:
        agent = self.agent()
        for request, name, path in BELOW_EMPTY:
            with self.subTest(request):
                reply = agent.call(request)
                self.assertEqual((reply.tag, reply.field("bad-element"), reply.field("error-path")),
                                 ("unknown-element", name, path))
        self.assert_closes(agent)

    def test_sentences(self) -> None:
        """They have an end, and quotes in pairs; and say nothing of the file's document element."""
        agent = self.agent()
        for request in ("<get><x/></get>", "<commit><confirmed/></commit>", "<commit/><get/>",
                        edit("<hostname>-</hostname>"), edit("<contact y='z'/>"),
                        edit("<users><user><name>a</name></user></users>"),
                        edit("".join(f"<name-server>10.0.0.{n}</name-server>" for n in range(5)))):
            with self.subTest(request):
                message = agent.call(request).field("error-message") or ""
                self.assertRegex(message, r"^[A-Z].*[.]$")
                self.assertEqual(message.count("'") % 2, 0, message)
                self.assertNotIn("/configuration", message)
        self.assertEqual(agent.call("<get><x/></get>").field("error-message"),
                         "The element 'x' is not expected here, in 'get'.")
        self.assertTrue(re.match("The value of element '/system", agent.call(
            edit("<hostname>-</hostname>")).field("error-message") or ""))
        self.assert_closes(agent)

    def test_a_configuration_to_validate_has_no_operations(self) -> None:
        agent = self.agent()
        for content in (system('<hostname nc:operation="create">a</hostname>'),
                        system("", ' nc:operation="delete"'), system("", ' operation="merge"')):
            reply = agent.call(f"<validate><source><config>{content}</config></source></validate>")
            self.assertEqual((reply.tag, reply.field("bad-attribute")),
                             ("unknown-attribute", "operation"))
        self.assert_closes(agent)


if __name__ == "__main__":
    unittest.main(verbosity=2)
