"""Validation against a schema that the tool has compiled."""
import gc
import shutil
import tempfile
import unittest
from os import environ
from pathlib import Path

import netxml

DOCUMENTS = Path(environ["NETXML_SOURCE"]) / "examples/interfaces/documents"
SCHEMA = Path(environ["NETXML_SCHEMA"])
FAILING = Path(environ["NETXML_FAILING_SCHEMA"])
ELSEWHERE = Path(environ["NETXML_ELSEWHERE_SCHEMA"])

# The twelve kinds of violation: what each document of the example is wrong about.
BROKEN = [
    # code  document                path                                      element     attribute
    (1,  "01-model-missing",      "/network/device[1]",                       "model",    None),
    (2,  "02-vlan-without-id",    "/network/vlans[1]/vlan[2]",                None,       "id"),
    (3,  "03-small-mtu",          "/network/interfaces[1]/ethernet[1]/mtu[1]", None,      None),
    (4,  "04-interface-name",     "/network/interfaces[1]/ethernet[2]",       None,       "name"),
    (5,  "05-mask-missing",       "/network/interfaces[1]/vlanInterface[1]/ipv4[1]/address[1]",
                                                                              "mask",     None),
    (6,  "06-unknown-element",    "/network/interfaces[1]/ethernet[1]/带宽[1]", None,     None),
    (7,  "07-loopback-slot",      "/network/interfaces[1]/loopback[1]",       "loopback", "slot"),
    (8,  "08-extension-unknown",  "/network/extensions[1]",                   None,       None),
    (9,  "09-text-between",       "/network/vlans[1]",                        None,       None),
    (10, "10-not-empty",          "/network/vlans[1]/vlan[1]/isolated[1]",    None,       None),
    (11, "11-no-condition",       "/network/accessLists[1]/accessList[1]/rule[1]/match[1]",
                                                                              None,       None),
    (12, "12-another-root",       "/config",                                  None,       None),
]  # fmt: skip


class Schemas(unittest.TestCase):
    @classmethod
    def setUpClass(cls) -> None:
        cls.schema = netxml.Schema(SCHEMA)

    schema: netxml.Schema

    def test_valid_documents(self) -> None:
        files = sorted(DOCUMENTS.glob("valid-*.xml"))
        self.assertEqual(len(files), 4)
        for file in files:
            verdict = self.schema.validate(netxml.parse_file(file))
            self.assertEqual(verdict, netxml.Verdict(0), file.name)
            self.assertTrue(verdict)

    def test_every_kind_of_violation(self) -> None:
        self.assertEqual(len(BROKEN), len(list(DOCUMENTS.glob("broken-*.xml"))))
        for code, name, path, element, attribute in BROKEN:
            document = netxml.parse_file(DOCUMENTS / f"broken-{name}.xml")
            verdict = self.schema.validate(document)
            self.assertFalse(verdict)
            self.assertEqual((verdict.code, verdict.path, verdict.element, verdict.attribute),
                             (code, path, element, attribute), name)  # fmt: skip
            self.assertEqual(bool(verdict.detail), code in (3, 4))
            self.assertIn(verdict.detail, verdict.sentence)
            self.assertIsNotNone(document.find(verdict.path))

    def test_sentences(self) -> None:
        document = netxml.parse_file(DOCUMENTS / "broken-06-unknown-element.xml")
        self.assertEqual(
            self.schema.validate(document).sentence,
            "Unexpected element 'urn:example:network':'带宽' under element "
            "'/network/interfaces[1]/ethernet[1]",
        )

    def test_mending(self) -> None:
        document = netxml.parse_file(DOCUMENTS / "broken-03-small-mtu.xml")
        wrong = document.find(self.schema.validate(document).path)
        assert wrong is not None
        wrong.text = "1500"
        self.assertTrue(self.schema.validate(document))

    def test_an_element_as_a_document(self) -> None:
        document = netxml.parse_file(DOCUMENTS / "valid-01-minimal.xml")
        self.assertTrue(self.schema.validate(document.root))
        self.assertEqual(self.schema.validate(document.root.elements()[0]).code, 12)

    def test_the_prefix_is_the_files_stem_or_given(self) -> None:
        self.assertEqual((self.schema.prefix, self.schema.path), ("interfaces", SCHEMA))
        with tempfile.TemporaryDirectory() as folder:
            copy = shutil.copy(FAILING, f"{folder}/libcircular.so.2")
            self.assertEqual(netxml.Schema(copy).prefix, "circular")
            other = shutil.copy(FAILING, f"{folder}/other.so")
            self.assertEqual(netxml.Schema(other, "circular").prefix, "circular")
            with self.assertRaisesRegex(netxml.SchemaError, "other_schema_register"):
                netxml.Schema(other)

    def test_network_types_belong_to_one_namespace(self) -> None:
        for _ in range(2):
            with self.assertRaisesRegex(netxml.SchemaError, "network types"):
                netxml.Schema(ELSEWHERE)
        self.test_valid_documents()
        self.test_every_kind_of_violation()

    def test_schemas_share_the_namespace_of_network_types(self) -> None:
        with tempfile.TemporaryDirectory() as folder:
            copy = netxml.Schema(shutil.copy(SCHEMA, folder + "/another.so"), "interfaces")
            valid = DOCUMENTS / "valid-01-minimal.xml"
            self.assertTrue(copy.validate(netxml.parse_file(valid)))
            wrong = DOCUMENTS / "broken-03-small-mtu.xml"
            self.assertFalse(copy.validate(netxml.parse_file(wrong)))
        self.test_valid_documents()
        self.test_every_kind_of_violation()

    def test_what_is_no_schema(self) -> None:
        for path in ("none.so", environ["NETXML_LIBRARY"], __file__):
            with self.assertRaises(netxml.SchemaError):
                netxml.Schema(path)

    def test_a_registration_that_fails(self) -> None:
        with self.assertRaises(netxml.SchemaError):
            netxml.Schema(FAILING)

    def test_a_broken_schema_gives_no_verdict(self) -> None:
        schema = netxml.Schema(FAILING, "circular")
        with self.assertRaises(netxml.SchemaError):
            schema.validate(netxml.parse("<a/>"))

    def test_a_schema_outlives_its_handle(self) -> None:
        schema = netxml.Schema(SCHEMA)
        del schema
        gc.collect()
        self.test_valid_documents()


if __name__ == "__main__":
    unittest.main()
