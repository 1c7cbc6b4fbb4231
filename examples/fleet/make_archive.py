#!/usr/bin/python3
"""Makes an archive of configurations, some of which are wrong; the same for the same seed."""
import argparse
import random
import zipfile
from collections.abc import Callable, Iterator
from typing import NamedTuple

import netxml

NAMESPACE = "urn:example:network"


class Entry(NamedTuple):
    """A document, and what is wrong with it: None where it is valid."""

    name: str
    data: bytes
    code: int
    path: str | None


def entries(count: int, seed: int) -> Iterator[Entry]:
    """The documents of an archive, one by one."""
    chance = random.Random(seed)
    for number in range(count):
        document = _switch(chance, number)
        code, path = 0, None
        if chance.random() < 0.08:
            code, path = chance.choice(_MISTAKES)(chance, document)
        data = document.to_bytes(chance.choice(["UTF-8", "UTF-8", "UTF-16", "GB18030"]))
        if chance.random() < 0.01:
            data, code, path = b"<network>\n  <device>\n</network>\n", 76, None
        yield Entry(f"site-{number % 40:02}/switch-{number:06}.xml", data, code, path)


def _switch(chance: random.Random, number: int) -> netxml.Document:
    document = netxml.new("network", namespace=NAMESPACE)
    document.root.set("version", "1.2")
    device = document.root.add("device")
    device.add("hostname", f"switch-{number}")
    device.add("model", "EX-2400")
    vlans = document.root.add("vlans")
    for vlan in range(1, chance.randrange(2, 20)):
        added = vlans.add("vlan")
        added.set("id", str(vlan))
        added.add("name", f"vlan-{vlan}")
    interfaces = document.root.add("interfaces")
    for port in range(1, chance.randrange(2, 25)):
        ethernet = interfaces.add("ethernet")
        ethernet.set("name", f"ge0-0-{port}")
        ethernet.add("description", f"上行链路 {port}")
        ethernet.add("mtu", str(chance.randrange(1500, 9001)))
    return document


def _some(chance: random.Random, document: netxml.Document, path: str) -> netxml.Element:
    return chance.choice(document.find_all(path))


def _small_mtu(chance: random.Random, document: netxml.Document) -> tuple[int, str]:
    mtu = _some(chance, document, "/network/interfaces/ethernet/mtu")
    mtu.text = "67"
    return 3, mtu.path


def _vlan_without_id(chance: random.Random, document: netxml.Document) -> tuple[int, str]:
    vlan = _some(chance, document, "/network/vlans/vlan")
    vlan.unset("id")
    return 2, vlan.path


def _unknown_element(chance: random.Random, document: netxml.Document) -> tuple[int, str]:
    added = _some(chance, document, "/network/interfaces/ethernet").add("bandwidth", "fast")
    return 6, added.path


def _model_missing(_: random.Random, document: netxml.Document) -> tuple[int, str]:
    device = document.root.elements("device")[0]
    device.elements("model")[0].remove()
    return 5, device.path


_MISTAKES: list[Callable[[random.Random, netxml.Document], tuple[int, str]]] = [
    _small_mtu, _small_mtu, _vlan_without_id, _unknown_element, _model_missing
]  # fmt: skip


def main() -> None:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("archive", help="the ZIP file to write")
    parser.add_argument("--documents", type=int, default=10000, metavar="N")
    parser.add_argument("--seed", type=int, default=1)
    options = parser.parse_args()
    with zipfile.ZipFile(options.archive, "w", zipfile.ZIP_DEFLATED) as archive:
        for entry in entries(options.documents, options.seed):
            archive.writestr(entry.name, entry.data)


if __name__ == "__main__":
    main()
