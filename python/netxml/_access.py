"""Reading and building at the level of pointers.

Whoever calls these holds the document's lock and knows that the pointers live.
"""
import ctypes
import re
from collections.abc import Iterator

from netxml import _library as lib
from netxml._text import escaped, from_tree, to_tree

_DECLARATION = re.compile(rb" xmlns(?::([^=]*))?=")
_STEP = re.compile(r"([^/\[\]:]+)(?:\[([1-9][0-9]*)\])?")
_CLARK = re.compile(r"\{([^}]*)\}(.*)", re.DOTALL)


def children(pointer: int) -> Iterator[int]:
    """The children of a node, first to last."""
    child: int | None = lib.get_first_child(pointer)
    while child:
        yield child
        child = lib.get_next_sibling(child)


def subtree(top: int) -> Iterator[int]:
    """A node and all below it, in the order of the document."""
    pointer: int | None = top
    while pointer:
        yield pointer
        pointer = next_in_order(pointer, top)


def next_in_order(pointer: int, top: int) -> int | None:
    """What follows a node in the subtree of `top`, or None behind its end."""
    below: int | None = lib.get_first_child(pointer)
    if below:
        return below
    while pointer != top:
        behind: int | None = lib.get_next_sibling(pointer)
        if behind:
            return behind
        pointer = lib.get_parent(pointer)
    return None


def attributes(pointer: int) -> Iterator[tuple[bytes, bytes, bytes]]:
    """The name, namespace name (b"" for none) and value of each attribute."""
    name, space = ctypes.c_char_p(), ctypes.c_char_p()
    attribute: int | None = lib.get_first_attribute(pointer)
    while attribute:
        lib.get_attribute_name(attribute, ctypes.byref(name), ctypes.byref(space))
        yield name.value or b"", space.value or b"", lib.get_attribute_value(attribute)
        attribute = lib.get_next_attribute(attribute)


def binding(pointer: int) -> tuple[bytes | None, bytes]:
    """The prefix of a node, and the name of its namespace (b"" for none)."""
    prefix, space = ctypes.c_char_p(), ctypes.c_char_p()
    lib.get_namespace(pointer, ctypes.byref(prefix), ctypes.byref(space))
    return prefix.value, space.value or b""


def path(pointer: int) -> str:
    """The location path of a node, such as "/config/interface[2]"."""
    size = 256
    while True:
        buffer = ctypes.create_string_buffer(size)
        if lib.get_path(pointer, size, buffer) < size - 1:
            return from_tree(buffer.value)
        size *= 2


def split_name(name: str) -> tuple[bytes, bytes]:
    """Splits "{namespace}name" into the namespace's name (b"" for none) and the name."""
    match = _CLARK.fullmatch(name)
    if match:
        return to_tree(match[1]), checked_name(match[2])
    return b"", checked_name(name)


def checked_name(name: str) -> bytes:
    """Returns a name without a prefix as a tree holds it, or raises ValueError."""
    converted = to_tree(name)
    if lib.check_name(converted) != lib.OK:
        raise ValueError(f"{name!r} is no name")
    return converted


def steps(text: str) -> list[tuple[bytes, int]]:
    """Reads a path without its first slash: names, and positions or 0 for all of a name."""
    found = []
    for step in text.split("/"):
        match = _STEP.fullmatch(step)
        if not match:
            raise ValueError(f"{step!r} is no step of a path")
        found.append((checked_name(match[1]), int(match[2] or 0)))
    return found


def at_path(start: int, wanted: list[tuple[bytes, int]]) -> Iterator[int]:
    """The elements that a path leads to from `start`, in the order of the document."""
    open_steps = [_matching(start, *wanted[0])]
    while open_steps:
        found = next(open_steps[-1], None)
        if found is None:
            open_steps.pop()
        elif len(open_steps) == len(wanted):
            yield found
        else:
            open_steps.append(_matching(found, *wanted[len(open_steps)]))


def _matching(parent: int, name: bytes, position: int) -> Iterator[int]:
    count = 0
    for child in children(parent):
        if lib.get_name(child) != name:
            continue
        count += 1
        if position in (0, count):
            yield child
        if count == position:
            return


class StartTag:
    """What the interface does not list: an element's own declarations, and attributes' prefixes.

    They are read from the start tag as the library writes it. A value is known beforehand, so that
    its end is where it must be, whatever the value holds (quotes are not escaped).
    """

    def __init__(self, element: int) -> None:
        self.declarations: dict[bytes, bytes] = {}
        """By prefix; b"" is the default namespace."""
        self.prefixes: list[bytes] = []
        """Of the attributes in their order; b"" for none."""
        self._text = _written(element)
        self._at = min(p for p in (self._text.find(b" "), self._text.find(b">")) if p > 0)
        self._read_declarations(element)
        for name, _, value in attributes(element):
            equals = self._text.index(b"=", self._at)
            self.prefixes.append(self._text[self._at + 1 : equals - len(name)].rstrip(b":"))
            self._pass(equals, value)

    def _read_declarations(self, element: int) -> None:
        alone: int | None = None
        try:
            while match := _DECLARATION.match(self._text, self._at):
                if alone is None:
                    alone = made(lib.copy_node(element))
                prefix = match[1] or b""
                lib.bind(alone, prefix)
                self.declarations[prefix] = binding(alone)[1]
                self._pass(match.end() - 1, self.declarations[prefix])
        finally:
            lib.delete_node(alone)

    def _pass(self, equals: int, value: bytes) -> None:
        self._at = equals + len(b'=""') + len(escaped(value))


def _written(element: int) -> bytes:
    """The start tag, in the encoding of the tree."""
    encoding = lib.get_encoding(element)
    lib.set_encoding(element, lib.GB18030)
    size = ctypes.c_size_t()
    try:
        block = made(lib.begin_to_text(element, lib.WITHOUT_DECLARATION, ctypes.byref(size)))
    finally:
        lib.set_encoding(element, encoding)
    text = ctypes.string_at(block, size.value)
    lib.free(block)
    return text


def in_scope(element: int | None) -> dict[bytes, bytes]:
    """The declarations in force at an element, the nearest of each prefix."""
    found: dict[bytes, bytes] = {}
    while element:
        for prefix, name in StartTag(element).declarations.items():
            found.setdefault(prefix, name)
        element = lib.get_parent(element)
    return found


def default_namespace(element: int) -> bytes:
    """The default namespace at an element, b"" for none."""
    prefix, name = binding(element)
    return name if prefix is None else in_scope(element).get(b"", b"")


def made(pointer: int | None) -> int:
    """Returns what was made; the arguments were checked, so only memory can have been missing."""
    if not pointer:
        raise MemoryError("netxml: no memory")
    return pointer


def done(status: int) -> None:
    """As made(), for a status."""
    if status != lib.OK:
        raise MemoryError("netxml: no memory")


def copy_of(source: int) -> tuple[int, bytes]:
    """A detached copy of a node with its subtree, and the default namespace that it counts on."""
    if lib.get_type(source) != lib.ELEMENT:
        return made(lib.copy_node(source)), b""
    copy = made(lib.copy_node(source))
    if lib.copy_children(copy, source) != lib.OK:
        lib.delete_node(copy)
        raise MemoryError("netxml: no memory")
    return copy, default_namespace(source)


def bind_new(element: int, prefix: bytes | None, namespace: bytes | None) -> None:
    """Gives a new element that is in its place already its namespace, declared there if need be.

    `namespace` None is what is in scope for the prefix, b"" no namespace.
    """
    if not prefix:
        if namespace is not None and default_namespace(element) != namespace:
            done(lib.declare(element, None, namespace))
        return
    bound = lib.bind(element, prefix) == lib.OK
    if bound and namespace in (None, binding(element)[1]):
        return
    if not namespace:
        raise ValueError(f"nothing declares the prefix {from_tree(prefix)!r} here")
    if lib.check_name(prefix) != lib.OK or lib.check_namespace(prefix, namespace) != lib.OK:
        raise ValueError(f"the prefix {from_tree(prefix)!r} may not be declared so")
    done(lib.declare(element, prefix, namespace))
    done(lib.bind(element, prefix))
