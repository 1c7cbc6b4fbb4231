"""The framing of RFC 6242: whole, in pieces, and broken."""
from __future__ import annotations

import unittest
from os import environ

from agent_session import (MARK, AgentCase, Reply, chunked, edit, get_config, hello, rpc,
                           run, without_session_id)

LARGEST = 4 << 20  # FRAME_LARGEST_MESSAGE

DIALOGUES = {
    "marked": hello("1.0") + b"\n" + rpc(get_config()) + MARK + b"\r\n" +
              rpc("<close-session/>", "]]]]>]]") + MARK,
    "chunked": hello("1.1") + chunked(rpc(get_config()), 1, 2, 30) +
               chunked(rpc("<close-session/>", MARK.decode().replace(">", "&gt;"))),
}

# What is sent behind a hello of :base:1.1, and what the agent says as it ends the session.
# fmt: off
MALFORMED = [
    # why                                   input                               sentence
    ("no line feed in front",               b"#3\nabc\n##\n",                   "malformed"),
    ("no hash",                             b"\n3\nabc\n##\n",                  "malformed"),
    ("a size of zero",                      b"\n#0\n\n##\n",                    "malformed"),
    ("a zero in front of the size",         b"\n#03\nabc\n##\n",                "malformed"),
    ("a negative size",                     b"\n#-3\nabc\n##\n",                "malformed"),
    ("a plus sign",                         b"\n#+3\nabc\n##\n",                "malformed"),
    ("a letter in the size",                b"\n#3a\nabc\n##\n",                "malformed"),
    ("a blank behind the size",             b"\n#3 \nabc\n##\n",                "malformed"),
    ("a carriage return",                   b"\n#3\r\nabc\n##\n",               "malformed"),
    ("no size",                             b"\n#\nabc\n##\n",                  "malformed"),
    ("one more than 32 bits",               b"\n#4294967296\n",                 "malformed"),
    ("a size of twenty digits",             b"\n#11111111111111111111\n",       "malformed"),
    ("an end without a chunk",              b"\n##\n",                          "malformed"),
    ("an end of three hashes",              b"\n#3\nabc\n###\n",                "malformed"),
    ("no line feed at the end",             b"\n#3\nabc\n##x",                  "malformed"),
    ("a chunk longer than said",            b"\n#3\nabcd\n##\n",                "malformed"),
    ("the mark of the other framing",       rpc("<commit/>") + MARK,            "malformed"),
    ("the input ends behind a line feed",   b"\n",                              "malformed"),
    ("the input ends inside a size",        b"\n#3",                            "malformed"),
    ("the input ends inside a chunk",       b"\n#3\nab",                        "malformed"),
    ("the input ends behind a chunk",       b"\n#3\nabc",                       "malformed"),
    ("the input ends inside the end",       b"\n#3\nabc\n##",                   "malformed"),
    ("the largest size there is",           b"\n#4294967295\n",                 "too long"),
    ("a size just above what we take",      b"\n#%d\n" % (LARGEST + 1),         "too long"),
    ("chunks that come to too much",        b"\n#1000000\n" + b" " * 1000000 +
                                            (b"\n#1000000\n" + b" " * 1000000) * 4, "too long"),
    ("one-byte chunks that do",             b"\n#1\n " * (LARGEST // 5 + 1),    "too long"),
]
# fmt: on


class Framing(AgentCase):
    def test_pieces_make_no_difference(self) -> None:
        for name, dialogue in DIALOGUES.items():
            status, whole, said = run(self.config, dialogue)
            self.assertEqual((status, said), (0, ""), name)
            self.assertEqual(whole.count(b"<rpc-reply"), 2, name)
            expected = (0, without_session_id(whole), "")
            # Behind each byte; a watched process takes its time to start, and an emulated one.
            places = range(1, len(dialogue), int(environ.get("NETXML_AGENT_STEP", "1")))
            splits = [[dialogue[:at], dialogue[at:]] for at in places]
            splits.append([dialogue[at:at + 1] for at in range(len(dialogue))])
            for pieces in splits:
                status, output, said = run(self.config, b"", pieces)
                self.assertEqual((status, without_session_id(output), said), expected,
                                 f"{name}, after {len(pieces[0])} of {len(dialogue)} bytes")
            print(f"{name}: {len(splits)} ways to deliver {len(dialogue)} bytes", flush=True)

    def test_broken_framing_ends_the_session(self) -> None:
        for why, octets, sentence in MALFORMED:
            with self.subTest(why):
                status, output, said = run(self.config, hello("1.1") + octets)
                self.assertEqual(status, 1)
                self.assertRegex(said, f"^agent: the (framing|message) is {sentence}[.]\n$")
                self.assertNotIn(b"rpc-reply", output)

    def test_a_request_before_the_break_is_answered(self) -> None:
        octets = hello("1.1") + chunked(rpc(get_config())) + b"garbage"
        status, output, said = run(self.config, octets)
        self.assertEqual((status, said), (1, "agent: the framing is malformed.\n"))
        self.assertEqual(output.count(b"<rpc-reply"), 1)

    def test_ends_inside_a_marked_message(self) -> None:
        message = rpc(get_config()) + MARK
        for length in range(1, len(message), int(environ.get("NETXML_AGENT_STEP", "1"))):
            status, output, said = run(self.config, hello("1.0") + message[:length])
            self.assertEqual((status, said), (1, "agent: the framing is malformed.\n"), length)
            self.assertNotIn(b"rpc-reply", output)

    def test_an_endless_marked_message(self) -> None:
        for octets in (b"x" * (LARGEST + 1), b"]" * (LARGEST + 1), b" " * (LARGEST + 1)):
            status, _, said = run(self.config, hello("1.0") + octets)
            self.assertEqual((status, said), (1, "agent: the message is too long.\n"))

    def test_the_end_between_two_messages_is_a_good_one(self) -> None:
        for octets in (hello("1.0"), hello("1.0") + b"\n \n", hello("1.1"),
                       hello("1.1") + chunked(rpc(get_config()))):
            status, _, said = run(self.config, octets)
            self.assertEqual((status, said), (0, ""))

    def test_both_sides_must_know_chunks(self) -> None:
        for versions, framed in ((("1.0",), rpc(get_config()) + MARK),
                                 (("1.1",), chunked(rpc(get_config()))),
                                 (("1.0", "1.1"), chunked(rpc(get_config())))):
            status, output, said = run(self.config, hello(*versions) + framed)
            self.assertEqual((status, said), (0, ""), versions)
            reply = output.partition(MARK)[2]
            self.assertEqual(reply.endswith(b"\n##\n"), "1.1" in versions, versions)

    def test_many_messages_in_one_read(self) -> None:
        message = chunked(rpc("<commit/>"))
        status, output, said = run(self.config, hello("1.1") + message * 500)
        self.assertEqual((status, said), (0, ""))
        self.assertEqual(output.count(b"<ok/>"), 500)

    def test_a_large_message_in_chunks_of_every_size(self) -> None:
        users = "".join(f"<user><name>u{i}</name><role>viewer</role></user>" for i in range(2000))
        agent = self.agent()
        message = rpc(edit(f"<users>{users}</users>"))
        for sizes in ((1,) * 20000, range(1, 400), (8192,) * 9, (8191, 8193) * 5, ()):
            agent.send_raw(chunked(message, *sizes))
            self.assertEqual(agent.receive().tag, "ok")
        self.assertEqual(agent.call(get_config()).system.count("<user>"), 2000)
        self.assert_closes(agent)


class Messages(AgentCase):
    def test_what_is_not_well_formed_is_answered_since_base_1_1(self) -> None:
        agent = self.agent()
        for message in (b"<rpc", b"text", b"<a/><b/>", b"<rpc xmlns='u'></rpc",
                        b"\xff\xfe" + rpc("<commit/>").decode().encode("utf-16-le"),
                        b"<?xml version='1.0' encoding='GBK'?>" + rpc("<commit/>"), b"<hello/>"):
            agent.send_raw(chunked(message))
            reply = agent.receive()
            self.assertEqual((reply.tag, reply.field("error-type")), ("malformed-message", "rpc"))
        self.assert_closes(agent)

    def test_a_reply_has_the_attributes_of_a_broken_rpc(self) -> None:
        agent = self.agent()
        agent.send_raw(chunked(rpc("<commit>", "the id")))
        reply = agent.receive()
        self.assertEqual((reply.tag, reply.root.get("message-id")), ("malformed-message", "the id"))
        self.assert_closes(agent)

    def test_what_is_malformed_ends_a_session_of_base_1_0(self) -> None:
        """There is no malformed-message in it."""
        for message, sentence in ((b"<rpc", "is malformed"), (b"<foo/>", "is no rpc"),
                                  (hello("1.0")[:-len(MARK)], "is no rpc"),
                                  (b'<rpc message-id="1"><commit/></rpc>', "is no rpc"),
                                  (b"<!DOCTYPE rpc>" + rpc("<commit/>"), "is malformed")):
            with self.subTest(message):
                octets = hello("1.0") + rpc("<commit/>") + MARK + message + MARK
                status, output, said = run(self.config, octets + rpc("<commit/>") + MARK)
                self.assertEqual((status, said), (1, f"agent: a message {sentence}.\n"))
                self.assertEqual(output.count(b"rpc-reply>"), 1)

    def test_document_type_declarations(self) -> None:
        """RFC 6241 has none; what looks like one elsewhere is none."""
        agent = self.agent()
        declaration = b"<!DOCTYPE rpc [<!ENTITY e 'x'>]>"
        for before in (b"", b"<?xml version='1.0' encoding='UTF-8'?>\n", b"\xef\xbb\xbf",
                       b"<!-- a - b -->", b"<?p ?>", b"<?p ??> \t\r\n<!-- <a> -->"):
            message = rpc("<commit/>")
            for size in (1, len(message)):
                pieces = range(size, len(before + declaration), size)
                agent.send_raw(chunked(before + declaration + message, *(size for _ in pieces)))
                self.assertEqual(agent.receive().tag, "malformed-message", before)
                agent.send_raw(chunked(before + message, *(size for _ in pieces)))
                self.assertEqual(agent.receive().tag, "ok", before)
        for inside in (b"<!-- <!DOCTYPE rpc> -->", b"<?p <!DOCTYPE rpc> ?>"):
            agent.send_raw(chunked(inside + rpc(f"<commit>{inside.decode()}</commit>")))
            self.assertEqual(agent.receive().tag, "ok", inside)
        self.assert_closes(agent)

    def test_attributes_of_rpc_come_back(self) -> None:
        attributes = ('message-id="a&amp;b&lt;&gt;&quot;\'&#9;&#10;&#13; ]]&gt;]]&gt; &#x20AC;" '
                      'xmlns:e="urn:e&quot;&amp;" e:user="fred" xml:lang="fr" empty=""')
        for prefix, colon in (("", ""), (":nc", "nc:")):
            message = (f'<{colon}rpc xmlns{prefix}="urn:ietf:params:xml:ns:netconf:base:1.0" '
                       f'{attributes}><{colon}commit/></{colon}rpc>').encode()
            agent = self.agent()
            agent.send_raw(chunked(message))
            reply = agent.receive()
            self.assertEqual(reply.tag, "ok")
            self.assertEqual(reply.root.attrib, Reply(message.replace(b"rpc", b"rpc-reply"))
                             .root.attrib)
            self.assertIn(f"<{colon}rpc-reply".encode(), reply.text)
            self.assertIn(b'xmlns:e="urn:e&quot;&amp;"', reply.text)
            self.assert_closes(agent)

    def test_hellos_that_end_the_session(self) -> None:
        good = hello("1.0")
        for why, octets, sentence in (
                ("nothing", b"", "the client sent no hello"),
                ("an rpc instead", rpc("<commit/>") + MARK, "the client sent no hello"),
                ("not well-formed", b"<hello" + MARK, "the client sent no hello"),
                ("a document type", b"<!DOCTYPE hello>" + good, "the client sent no hello"),
                ("no capability", hello(), "the client's hello is not valid"),
                ("another base", hello("2.0"), "the client has no base we know"),
                ("a session-id", good.replace(b"</hello>", b"<session-id>4</session-id></hello>"),
                 "the client's hello has a session-id"),
                ("another element", good.replace(b"</hello>", b"<x/></hello>"),
                 "the client's hello is not valid")):
            with self.subTest(why):
                status, output, said = run(self.config, octets)
                self.assertEqual((status, said), (1, f"agent: {sentence}.\n"))
                self.assertEqual(output.count(MARK), 1)


if __name__ == "__main__":
    unittest.main(verbosity=2)
