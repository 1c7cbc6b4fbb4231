"""The operations: every edit, every refusal with its tag and path, filters, options."""
from __future__ import annotations

import unittest

from agent_session import BASE, SYSTEM, AgentCase, chunked, edit, get_config, rpc

ETH0 = "<interface><name>eth0</name><mtu>1500</mtu></interface>"
ETH1 = "<interface><name>eth1</name></interface>"
START = f"<hostname>r1</hostname><interfaces>{ETH0}{ETH1}</interfaces>"
IN = "/sys:system/sys:interfaces/sys:interface"


def interfaces(content: str) -> str:
    return f"<interfaces>{content}</interfaces>"


# fmt: off
EDITS = [
    # why, the edit, its default operation or "", what lies in <system> then
    ("merge adds a leaf where the schema has it", "<contact>me</contact>", "",
     f"<hostname>r1</hostname><contact>me</contact>{interfaces(ETH0 + ETH1)}"),
    ("merge changes a leaf", "<hostname>r2</hostname>", "",
     f"<hostname>r2</hostname>{interfaces(ETH0 + ETH1)}"),
    ("an empty text is one, too", "<contact></contact>", "",
     f"<hostname>r1</hostname><contact/>{interfaces(ETH0 + ETH1)}"),
    ("merge finds an entry by its key", interfaces("<interface><enabled>true</enabled>"
     "<name>eth1</name></interface>"), "", "<hostname>r1</hostname>" + interfaces(ETH0 +
     "<interface><name>eth1</name><enabled>true</enabled></interface>")),
    ("a new entry stands behind the others, its leaves in the schema's order",
     interfaces("<interface><mtu>68</mtu><name>eth2</name></interface>"), "",
     "<hostname>r1</hostname>" + interfaces(ETH0 + ETH1 +
     "<interface><name>eth2</name><mtu>68</mtu></interface>")),
    ("two lists deep", interfaces("<interface><name>eth1</name><address><ip>10.0.0.1</ip>"
     "<prefix-length>8</prefix-length></address></interface>"), "", "<hostname>r1</hostname>" +
     interfaces(ETH0 + "<interface><name>eth1</name><address><ip>10.0.0.1</ip>"
     "<prefix-length>8</prefix-length></address></interface>")),
    ("a leaf-list grows", "<name-server>10.0.0.1</name-server><name-server>10.0.0.2</name-server>"
     "<name-server>10.0.0.1</name-server>", "", "<hostname>r1</hostname><name-server>10.0.0.1"
     "</name-server><name-server>10.0.0.2</name-server>" + interfaces(ETH0 + ETH1)),
    ("replace an entry", interfaces('<interface nc:operation="replace"><name>eth0</name>'
     "<enabled>false</enabled></interface>"), "", "<hostname>r1</hostname>" + interfaces(
     "<interface><name>eth0</name><enabled>false</enabled></interface>" + ETH1)),
    ("replace a container", '<interfaces nc:operation="replace">' + ETH1 + "</interfaces>", "",
     "<hostname>r1</hostname>" + interfaces(ETH1)),
    ("replace what is not there", '<users nc:operation="replace"/>', "", START + "<users/>"),
    ("create an entry", interfaces('<interface nc:operation="create"><name>eth2</name></interface>'),
     "", "<hostname>r1</hostname>" + interfaces(ETH0 + ETH1 +
     "<interface><name>eth2</name></interface>")),
    ("delete an entry", interfaces('<interface nc:operation="delete"><name>eth0</name></interface>'),
     "", "<hostname>r1</hostname>" + interfaces(ETH1)),
    ("delete a leaf, whatever its value", interfaces("<interface><name>eth0</name>"
     '<mtu nc:operation="delete">9</mtu></interface>'), "", "<hostname>r1</hostname>" + interfaces(
     "<interface><name>eth0</name></interface>" + ETH1)),
    ("remove an entry", interfaces('<interface nc:operation="remove"><name>eth0</name></interface>'),
     "", "<hostname>r1</hostname>" + interfaces(ETH1)),
    ("remove what is not there", '<contact nc:operation="remove"/><users nc:operation="remove"/>',
     "", START),
    ("an operation holds for what lies below, until another one",
     '<interfaces nc:operation="remove"/><users nc:operation="create"><user><name>a</name>'
     '<role nc:operation="merge">admin</role></user></users>', "",
     "<hostname>r1</hostname><users><user><name>a</name><role>admin</role></user></users>"),
    ("the edits of one request build on each other", '<contact nc:operation="create">a</contact>'
     '<hostname nc:operation="delete"/>', "", f"<contact>a</contact>{interfaces(ETH0 + ETH1)}"),
    ("default none only goes there", interfaces("<interface><name>eth0</name>"
     '<mtu nc:operation="replace">68</mtu></interface>'), "none", "<hostname>r1</hostname>" +
     interfaces("<interface><name>eth0</name><mtu>68</mtu></interface>" + ETH1)),
    ("default none changes nothing by itself", "<hostname>r2</hostname>", "none", START),
    ("default replace replaces all", "<hostname>r2</hostname>", "replace",
     "<hostname>r2</hostname>"),
    ("texts in pieces, and in CDATA", "<hostname>r<!-- -->1<![CDATA[2]]></hostname>", "",
     f"<hostname>r12</hostname>{interfaces(ETH0 + ETH1)}"),
    ("each piece of a text loses its blanks", "<contact> a <!-- c --> b </contact>", "",
     f"<hostname>r1</hostname><contact>ab</contact>{interfaces(ETH0 + ETH1)}"),
    ("a key in pieces is the same key", interfaces("<interface><name>e<!-- -->th<![CDATA[0]]></name>"
     "<mtu>68</mtu></interface>"), "", "<hostname>r1</hostname>" + interfaces(
     "<interface><name>eth0</name><mtu>68</mtu></interface>" + ETH1)),
    ("text beyond ASCII, and what must be escaped", "<contact>R\u00e9my &lt;\u5e26\u5bbd&gt; \"&amp;\" "
     "\U0001f600</contact>", "", "<hostname>r1</hostname><contact>R\u00e9my <\u5e26\u5bbd> \"&\" "
     f"\U0001f600</contact>{interfaces(ETH0 + ETH1)}"),
]

REFUSED = [
    # why, the edit, tag, path, the parts of <error-info>
    ("create what is there", interfaces('<interface nc:operation="create"><name>eth0</name>'
     "</interface>"), "data-exists", f"{IN}[sys:name='eth0']", {}),
    ("create a leaf that is there", '<hostname nc:operation="create">r2</hostname>', "data-exists",
     "/sys:system/sys:hostname", {}),
    ("create twice in one edit", "<users><user nc:operation='create'><name>a</name><role>admin"
     "</role></user><user nc:operation='create'><name>a</name><role>admin</role></user></users>",
     "data-exists", "/sys:system/sys:users/sys:user[sys:name='a']", {}),
    ("delete an entry that is not there", interfaces('<interface nc:operation="delete"><name>eth9'
     "</name></interface>"), "data-missing", f"{IN}[sys:name='eth9']", {}),
    ("delete a leaf that is not there", '<contact nc:operation="delete"/>', "data-missing",
     "/sys:system/sys:contact", {}),
    ("delete one of a leaf-list that is not there", '<name-server nc:operation="delete">10.0.0.9'
     "</name-server>", "data-missing", "/sys:system/sys:name-server[.='10.0.0.9']", {}),
    ("an unknown element", "<location>here</location>", "unknown-element",
     "/sys:system/sys:location", {"bad-element": "sys:location"}),
    ("an element of elsewhere", "<mtu>1500</mtu>", "unknown-element", "/sys:system/sys:mtu",
     {"bad-element": "sys:mtu"}),
    ("an element in a leaf", "<hostname><x/></hostname>", "unknown-element",
     "/sys:system/sys:hostname/sys:x", {"bad-element": "sys:x"}),
    ("another namespace", '<x:hostname xmlns:x="urn:x">r2</x:hostname>', "unknown-namespace",
     "/sys:system/*[local-name()='hostname']",
     {"bad-element": "other:hostname", "bad-namespace": "urn:x"}),
    ("an unknown element in what is deleted", '<interfaces nc:operation="delete"><x/></interfaces>',
     "unknown-element", "/sys:system/sys:interfaces/sys:x", {"bad-element": "sys:x"}),
    ("text in a container", "<interfaces>text</interfaces>", "bad-element",
     "/sys:system/sys:interfaces", {"bad-element": "sys:interfaces"}),
    ("text behind an element", f"<interfaces>{ETH1}text</interfaces>", "bad-element",
     "/sys:system/sys:interfaces", {"bad-element": "sys:interfaces"}),
    ("a leaf twice", "<contact>a</contact><contact>b</contact>", "bad-element",
     "/sys:system/sys:contact", {"bad-element": "sys:contact"}),
    ("a key twice, to give an entry another's", interfaces("<interface><name>eth0</name><name>eth1"
     "</name></interface>"), "bad-element", f"{IN}[sys:name='eth0']/sys:name",
     {"bad-element": "sys:name"}),
    ("no key", interfaces("<interface><mtu>68</mtu></interface>"), "missing-element", IN,
     {"bad-element": "sys:name"}),
    ("the key deleted", interfaces('<interface><name nc:operation="delete">eth0</name></interface>'),
     "missing-element", IN, {"bad-element": "sys:name"}),
    ("a mandatory leaf left out", "<users><user><name>a</name></user></users>", "missing-element",
     "/sys:system/sys:users/sys:user[sys:name='a']", {"bad-element": "sys:role"}),
    ("an unknown operation", '<contact nc:operation="none">a</contact>', "bad-attribute",
     "/sys:system/sys:contact", {"bad-attribute": "operation", "bad-element": "sys:contact"}),
    ("an operation without a namespace", '<contact operation="delete"/>', "unknown-attribute",
     "/sys:system/sys:contact", {"bad-attribute": "operation", "bad-element": "sys:contact"}),
    ("a number too small", interfaces("<interface><name>eth0</name><mtu>67</mtu></interface>"),
     "invalid-value", f"{IN}[sys:name='eth0']/sys:mtu", {}),
    ("no number", interfaces("<interface><name>eth1</name><mtu>big</mtu></interface>"),
     "invalid-value", f"{IN}[sys:name='eth1']/sys:mtu", {}),
    ("an unknown role", "<users><user><name>a</name><role>root</role></user></users>",
     "invalid-value", "/sys:system/sys:users/sys:user[sys:name='a']/sys:role", {}),
    ("no address", interfaces("<interface><name>eth1</name><address><ip>10.0.0.256</ip>"
     "<prefix-length>8</prefix-length></address></interface>"), "invalid-value",
     f"{IN}[sys:name='eth1']/sys:address[sys:ip='10.0.0.256']/sys:ip", {}),
    ("a key with a quote", interfaces("<interface><name>a'b</name></interface>"), "invalid-value",
     f'{IN}[sys:name="a\'b"]/sys:name', {}),
    ("a name with two kinds of quotes", interfaces("<interface><name>a'b\"c</name></interface>"),
     "invalid-value", f"{IN}/sys:name", {}),
    ("too many of a leaf-list", "".join(f"<name-server>10.0.0.{i}</name-server>" for i in range(5)),
     "bad-element", "/sys:system/sys:name-server[.='10.0.0.4']", {"bad-element": "sys:name-server"}),
    ("a value that is cut inside a character", "<hostname>" + "\u5e26" * 3000 + "</hostname>",
     "invalid-value", "/sys:system/sys:hostname", {}),
]

MESSAGES = [
    # why, what lies in <rpc>, type, tag, path, the parts of <error-info>
    ("an unknown operation", "<reboot/>", "protocol", "operation-not-supported",
     "/nc:rpc/nc:reboot", {}),
    ("an operation of another namespace", '<x:get xmlns:x="urn:x"/>', "protocol",
     "operation-not-supported", "/nc:rpc/*[local-name()='get']", {}),
    ("no operation", "", "protocol", "missing-element", "/nc:rpc", {"bad-element": "rpc"}),
    ("one twice", "<commit/><commit/>", "protocol", "bad-element", "/nc:rpc/nc:commit",
     {"bad-element": "commit"}),
    ("a second one", "<commit/><get/>", "protocol", "unknown-element", "/nc:rpc/nc:get",
     {"bad-element": "get"}),
    ("a datastore that we lack", "<lock><target><startup/></target></lock>", "protocol",
     "unknown-element", "/nc:rpc/nc:lock/nc:target/nc:startup", {"bad-element": "startup"}),
    ("no datastore", "<get-config><source/></get-config>", "protocol", "missing-element",
     "/nc:rpc/nc:get-config/nc:source", {"bad-element": "source"}),
    ("no source", "<get-config/>", "protocol", "missing-element", "/nc:rpc/nc:get-config",
     {"bad-element": "source"}),
    ("no config", "<edit-config><target><running/></target></edit-config>", "protocol",
     "missing-element", "/nc:rpc/nc:edit-config", {"bad-element": "config"}),
    ("a parameter too many", "<get><x/></get>", "protocol", "unknown-element", "/nc:rpc/nc:get/nc:x",
     {"bad-element": "x"}),
    ("text", "<commit>now</commit>", "protocol", "bad-element", "/nc:rpc/nc:commit",
     {"bad-element": "commit"}),
    ("an attribute", '<get a="b"/>', "protocol", "unknown-attribute", "/nc:rpc/nc:get",
     {"bad-attribute": "a", "bad-element": "get"}),
    ("an unknown kind of filter", '<get><filter type="regex"/></get>', "protocol", "bad-attribute",
     "/nc:rpc/nc:get/nc:filter", {"bad-attribute": "type", "bad-element": "filter"}),
    ("a filter by XPath", '<get><filter type="xpath" select="/"/></get>', "protocol",
     "operation-not-supported", "/nc:rpc/nc:get/nc:filter", {}),
    ("an unknown option", edit("", "running", "<error-option>ignore</error-option>"), "protocol",
     "invalid-value", "/nc:rpc/nc:edit-config/nc:error-option", {}),
    ("going on after errors", edit("", "running", "<error-option>continue-on-error</error-option>"),
     "protocol", "operation-not-supported", "/nc:rpc/nc:edit-config/nc:error-option", {}),
    ("an edit of something else", "<edit-config><target><running/></target><config><system/>"
     "</config></edit-config>", "application", "unknown-namespace",
     "/nc:rpc/nc:edit-config/nc:config/nc:system", {"bad-element": "system", "bad-namespace": BASE}),
    ("a lock that is not held", "<unlock><target><running/></target></unlock>", "application",
     "operation-failed", None, {}),
]

FILTERS = [
    # why, what lies in <filter>, what is selected of START with a contact and two users
    ("nothing selects nothing", "", ""),
    ("a selection", "<system><hostname/></system>", "<system><hostname>r1</hostname></system>"),
    ("the whole", "<system/>", "all"),
    ("a container that is not there", "<system><name-server/></system>", ""),
    ("content match alone selects its fellows", "<system><interfaces><interface><name>eth0</name>"
     "</interface></interfaces></system>", f"<system>{interfaces(ETH0)}</system>"),
    ("content match beside a selection", "<system><users><user><name>ann</name><role/></user>"
     "</users></system>", "<system><users><user><name>ann</name><role>admin</role></user></users>"
     "</system>"),
    ("a content match that fails", "<system><users><user><name>eve</name></user></users></system>",
     ""),
    ("two that must hold", "<system><users><user><role>admin</role><name>bob</name></user></users>"
     "</system>", ""),
    ("match by what is no key", "<system><users><user><role>viewer</role><full-name/></user></users>"
     "</system>", "<system><users><user><name>bob</name><full-name>Bob</full-name><role>viewer"
     "</role></user></users></system>"),
    ("a selection in all entries brings the keys", "<system><interfaces><interface><mtu/></interface>"
     "</interfaces></system>", "<system><interfaces><interface><name>eth0</name><mtu>1500</mtu>"
     "</interface></interfaces></system>"),
    ("two conditions on one list are a union", "<system><interfaces><interface><name>eth1</name>"
     "</interface><interface><name>eth0</name><mtu/></interface></interfaces><contact/></system>",
     f"<system><contact>me</contact>{interfaces(ETH1 + ETH0)}</system>"),
    ("no node is selected twice", "<system><hostname/><hostname/></system><system/>", "all"),
    ("another namespace", '<x:system xmlns:x="urn:x"/>', ""),
    ("an attribute matches nothing", '<system><hostname a="b"/></system>', ""),
    ("deeper than the configuration", "<system><hostname><a><b/></a></hostname></system>", ""),
]
# fmt: on


class Edits(AgentCase):
    def check(self, reply, tag, path, info) -> None:
        self.assertEqual((reply.tag, reply.field("error-path")), (tag, path), reply.text)
        found = {name: reply.field(name) for name in ("bad-element", "bad-attribute",
                                                      "bad-namespace")}
        self.assertEqual({name: text for name, text in found.items() if text}, info)
        self.assertEqual(reply.field("error-severity"), "error")
        self.assertTrue(reply.field("error-message"))

    def test_edits(self) -> None:
        agent = self.agent()
        for why, content, default, expected in EDITS:
            with self.subTest(why):
                self.keep(START)
                option = default and f"<default-operation>{default}</default-operation>"
                reply = agent.call(edit(content, "running", option))
                self.assertEqual(reply.tag, "ok", reply.text)
                self.assertEqual(self.kept(), f"<system>{expected}</system>")
        self.assert_closes(agent)

    def test_refused_edits_change_nothing(self) -> None:
        agent = self.agent()
        self.keep(START)
        before = self.config.read_bytes()
        for why, content, tag, path, info in REFUSED:
            # What stands before the failing part must not stay, either.
            before_it = "" if "name-server" in content else "<name-server>10.1.1.1</name-server>"
            for first in {"", before_it}:
                with self.subTest(why):
                    self.check(agent.call(edit(first + content)), tag, path, info)
                    self.assertEqual(self.config.read_bytes(), before)
        self.assertEqual(agent.call(get_config()).system, f"<system>{START}</system>")
        self.assert_closes(agent)

    def test_refused_messages(self) -> None:
        agent = self.agent()
        for why, content, kind, tag, path, info in MESSAGES:
            with self.subTest(why):
                reply = agent.call(content)
                self.check(reply, tag, path, info)
                self.assertEqual(reply.field("error-type"), kind)
        self.assert_closes(agent)

    def test_no_message_id(self) -> None:
        agent = self.agent()
        agent.send_raw(chunked(f'<rpc xmlns="{BASE}"><commit/></rpc>'.encode()))
        reply = agent.receive()
        self.check(reply, "missing-attribute", "/nc:rpc",
                   {"bad-attribute": "message-id", "bad-element": "rpc"})
        self.assertEqual((reply.field("error-type"), reply.root.attrib), ("rpc", {}))
        self.assert_closes(agent)

    def test_options(self) -> None:
        agent = self.agent()
        self.keep(START)
        only = "<test-option>test-only</test-option>"
        self.assertEqual(agent.call(edit("<contact>a</contact>", "running", only)).tag, "ok")
        self.assertEqual(agent.call(edit("<mtu/>", "running", only)).tag, "unknown-element")
        self.assertEqual(self.kept(), f"<system>{START}</system>")
        for options in ("<test-option>set</test-option>",
                        "<test-option>test-then-set</test-option><error-option>rollback-on-error"
                        "</error-option>", "<error-option>stop-on-error</error-option>"):
            self.keep(START)
            self.assertEqual(agent.call(edit("<contact>a</contact>", "running", options)).tag, "ok")
            self.assertIn("<contact>a</contact>", self.kept())
        self.assert_closes(agent)

    def test_the_whole_configuration(self) -> None:
        agent = self.agent()
        system = f'<system xmlns="{SYSTEM}" xmlns:nc="{BASE}" nc:operation="%s"/>'
        config = "<edit-config><target><running/></target><config>%s</config></edit-config>"
        for operation, tag, left in (("delete", "data-missing", None), ("remove", "ok", ""),
                                     ("create", "ok", "<system/>"), ("create", "data-exists", None),
                                     ("delete", "ok", ""), ("merge", "ok", "<system/>")):
            self.assertEqual(agent.call(config % system % operation).tag, tag)
            if left is not None:
                self.assertEqual((self.kept(), agent.call(get_config()).system), (left, left))
        self.assertEqual(agent.call(config % "").tag, "ok")
        self.assert_closes(agent)

    def test_a_prefix_for_the_configuration(self) -> None:
        agent = self.agent()
        agent.send_raw(chunked((
            f'<n:rpc xmlns:n="{BASE}" message-id="1"><n:edit-config><n:target><n:running/>'
            f'</n:target><n:config><s:system xmlns:s="{SYSTEM}"><s:users>'
            '<s:user n:operation="create"><s:name>a</s:name><s:role>admin</s:role></s:user></s:users></s:system></n:config>'
            '</n:edit-config></n:rpc>').encode()))
        self.assertEqual(agent.receive().tag, "ok")
        self.assertEqual(self.kept(), "<system><users><user><name>a</name><role>admin</role></user>"
                                      "</users></system>")
        self.assert_closes(agent)

    def test_filters(self) -> None:
        whole = ("<hostname>r1</hostname><contact>me</contact>" + interfaces(ETH0 + ETH1) +
                 "<users><user><name>ann</name><role>admin</role></user><user><name>bob</name>"
                 "<full-name>Bob</full-name><role>viewer</role></user></users>")
        self.keep(whole)
        agent = self.agent()
        self.assertEqual(agent.call("<get/>").system, f"<system>{whole}</system>")
        for why, conditions, expected in FILTERS:
            expected = f"<system>{whole}</system>" if expected == "all" else expected
            # In its namespace; without any, which stands for all; and by get.
            own = conditions.replace("<system", f'<system xmlns="{SYSTEM}"')
            none = conditions.replace("<system", '<system xmlns=""')
            for filtered in (get_config("running", own), get_config("candidate", none),
                             f'<get><filter type="subtree">{own}</filter></get>'):
                with self.subTest(why):
                    self.assertEqual(agent.call(filtered).system, expected)
        self.assert_closes(agent)

    def test_validate(self) -> None:
        agent = self.agent()
        inline = (f'<validate><source><config><system xmlns="{SYSTEM}">%s</system></config>'
                  "</source></validate>")
        self.assertEqual(agent.call(inline % START).tag, "ok")
        self.assertEqual(agent.call(inline % "<hostname>-</hostname>").tag, "invalid-value")
        self.assertEqual(agent.call(inline % (ETH0)).tag, "unknown-element")
        self.assertEqual(agent.call(inline % interfaces(ETH0 + ETH0)).tag, "data-exists")
        for datastore in ("running", "candidate"):
            validate = f"<validate><source><{datastore}/></source></validate>"
            self.assertEqual(agent.call(validate).tag, "ok")
        self.assertFalse(self.config.exists())
        self.assert_closes(agent)

    def test_depth_takes_no_stack(self) -> None:
        agent = self.agent()
        deep = "<a>" * 200_000 + "</a>" * 200_000
        self.assertEqual(agent.call(edit(deep)).tag, "unknown-element")
        self.assertEqual(agent.call(f"<get><filter>{deep}</filter></get>").system, "")
        self.assertEqual(agent.call(deep).tag, "operation-not-supported")
        agent.send_raw(chunked(rpc("<a>" * 200_000)))
        self.assertEqual(agent.receive().tag, "malformed-message")
        self.assert_closes(agent)


if __name__ == "__main__":
    unittest.main(verbosity=2)
