"""Handles of nodes.

A handle keeps its document alive. There is one handle of a node at a time, so handles compare by
identity. Once its node is removed, or its document is closed, a handle raises and does no harm.
"""
from __future__ import annotations

from collections.abc import Callable, Iterator, Mapping
from types import MappingProxyType
from typing import TYPE_CHECKING, NoReturn

from netxml import _access as access
from netxml import _library as lib
from netxml._text import from_tree, to_tree
from netxml.errors import RemovedError

if TYPE_CHECKING:
    from netxml.document import Document


class Node:
    """An element or a text of a document. Nodes are not made by themselves: see Element.add()."""

    __slots__ = ("_document", "_pointer", "__weakref__")

    def __init__(self, document: Document, pointer: int) -> None:
        self._document = document
        self._pointer = pointer

    def _use(self) -> int:
        """The pointer, for as long as the caller holds the document's lock."""
        self._document._check()
        if not self._pointer:
            raise RemovedError("the node has been removed from its document")
        return self._pointer

    def __reduce__(self) -> NoReturn:
        raise TypeError("a node cannot be pickled or copied so: see Element.copy(), to_bytes()")

    @property
    def document(self) -> Document:
        """The document that the node belongs to."""
        return self._document

    @property
    def removed(self) -> bool:
        """Whether the node has been removed; of a closed document all nodes have."""
        return not self._pointer or self._document.closed

    @property
    def parent(self) -> Element | None:
        """The element around the node; None for the root."""
        with self._document._lock:
            pointer: int | None = lib.get_parent(self._use())
            return self._document._element(pointer) if pointer else None

    @property
    def path(self) -> str:
        """The location path, such as "/config/interface[2]"; of a text its parent's."""
        with self._document._lock:
            return access.path(self._use())

    def remove(self) -> None:
        """Takes the node with its subtree out of the document, for good.

        Its handles and those of the nodes below it raise RemovedError from then on. The root cannot
        be removed (ValueError).
        """
        with self._document._lock:
            pointer = self._use()
            if not lib.get_parent(pointer):
                raise ValueError("the root cannot be removed")
            self._document._forget(pointer)
            lib.delete_node(pointer)


class Text(Node):
    """A text or a CDATA section."""

    __slots__ = ()

    def __repr__(self) -> str:
        return "<Text, removed>" if self.removed else f"<Text {self.value!r}>"

    @property
    def is_cdata(self) -> bool:
        """Whether it is a CDATA section."""
        with self._document._lock:
            return bool(lib.get_type(self._use()) == lib.CDATA)

    @property
    def value(self) -> str:
        """The text. The empty text cannot be assigned: remove() the node instead."""
        with self._document._lock:
            return from_tree(lib.get_value(self._use()))

    @value.setter
    def value(self, value: str) -> None:
        converted = to_tree(value)
        if not converted:
            raise ValueError("a text cannot be made empty; remove it")
        with self._document._lock:
            access.done(lib.set_value(self._use(), converted))


class Element(Node):
    """An element: a name in a namespace, declarations, attributes and children.

    Names of attributes that are in a namespace are written "{namespace}name", as ElementTree does.
    """

    __slots__ = ()

    def __repr__(self) -> str:
        return "<Element, removed>" if self.removed else f"<Element {self.path}>"

    def __iter__(self) -> Iterator[Element]:
        """The child elements that there are when the iteration begins."""
        return iter(self.elements())

    # -- What it is ------------------------------------------------------------------------------

    @property
    def name(self) -> str:
        """The name without prefix and namespace. Assigning renames the element."""
        with self._document._lock:
            return from_tree(lib.get_name(self._use()))

    @name.setter
    def name(self, name: str) -> None:
        converted = access.checked_name(name)
        with self._document._lock:
            access.done(lib.set_name(self._use(), converted))

    @property
    def namespace(self) -> str | None:
        """The name of the namespace, or None."""
        with self._document._lock:
            return from_tree(access.binding(self._use())[1]) or None

    @property
    def prefix(self) -> str | None:
        """The prefix, or None."""
        with self._document._lock:
            prefix = access.binding(self._use())[0]
        return from_tree(prefix) if prefix else None

    @property
    def tag(self) -> str:
        """The name as ElementTree writes it: "{namespace}name", or "name" without a namespace."""
        with self._document._lock:
            return _clark(access.binding(self._use())[1], lib.get_name(self._pointer))

    @property
    def declarations(self) -> Mapping[str | None, str]:
        """The namespaces that this element declares, by prefix; None is the default namespace."""
        with self._document._lock:
            return _decoded(access.StartTag(self._use()).declarations)

    @property
    def namespaces(self) -> Mapping[str | None, str]:
        """The namespaces that are declared here and above, by prefix."""
        with self._document._lock:
            found = access.in_scope(self._use())
        if not found.get(b"", b"-"):
            del found[b""]  # xmlns="" takes the default namespace back
        return _decoded(found)

    # -- Attributes ------------------------------------------------------------------------------

    @property
    def attributes(self) -> Mapping[str, str]:
        """The attributes as they are now, in order; see set() for changing them."""
        with self._document._lock:
            found = access.attributes(self._use())
            return MappingProxyType(
                {_clark(space, name): from_tree(value) for name, space, value in found}
            )

    def get(self, name: str, default: str | None = None) -> str | None:
        """The value of an attribute, or the default."""
        space, local = access.split_name(name)
        with self._document._lock:
            for found, found_space, value in access.attributes(self._use()):
                if found == local and found_space == space:
                    return from_tree(value)
        return default

    def set(self, name: str, value: str, *, prefix: str | None = None) -> None:
        """Sets an attribute. One that is there already moves to the end.

        Of a name in a namespace the prefix is the one that the attribute has, or `prefix`, or one
        that is declared for that namespace, or a new one ("ns0", ...), declared on this element.
        Raises ValueError for a name that is none, or a prefix that means another namespace here.
        """
        space, local = access.split_name(name)
        if local == b"xmlns":
            raise ValueError("namespaces are declared by add()")
        converted = to_tree(value)
        chosen = to_tree(prefix) if prefix else None
        if chosen and not space:
            raise ValueError("an attribute without a namespace has no prefix")
        with self._document._lock:
            pointer = self._use()
            old = self._prefix_of(pointer, space, local)
            if space:
                chosen = _prefix_for(pointer, space, chosen or old)
            if old is not None:
                lib.delete_attribute(pointer, old, local)
            access.made(lib.add_attribute(pointer, chosen, local, converted))

    def unset(self, name: str) -> None:
        """Removes an attribute; raises KeyError if there is none of that name."""
        space, local = access.split_name(name)
        with self._document._lock:
            pointer = self._use()
            prefix = self._prefix_of(pointer, space, local)
            if prefix is None:
                raise KeyError(name)
            lib.delete_attribute(pointer, prefix, local)

    @staticmethod
    def _prefix_of(pointer: int, space: bytes, local: bytes) -> bytes | None:
        """The prefix of an attribute, b"" for none; None where there is no such attribute."""
        for index, (name, found, _) in enumerate(access.attributes(pointer)):
            if name == local and found == space:
                return access.StartTag(pointer).prefixes[index] if space else b""
        return None

    # -- Children --------------------------------------------------------------------------------

    @property
    def children(self) -> list[Node]:
        """The children of every kind that there are now."""
        with self._document._lock:
            return [self._document._node(child) for child in access.children(self._use())]

    def elements(self, name: str | None = None) -> list[Element]:
        """The child elements that there are now, all or those of a name (in any namespace)."""
        wanted = None if name is None else to_tree(name)
        with self._document._lock:
            return [
                self._document._element(child)
                for child in access.children(self._use())
                if lib.get_type(child) == lib.ELEMENT and wanted in (None, lib.get_name(child))
            ]

    def walk(self) -> Iterator[Node]:
        """This element and all below it, in the order of the document, one by one.

        To remove nodes, collect them first: the walk goes on from where it is.
        """
        node: Node = self
        while True:
            yield node
            with self._document._lock:
                top = self._use()
                following = access.next_in_order(node._use(), top)
                if following is None:
                    return
                node = self._document._node(following)

    @property
    def text(self) -> str | None:
        """The text before the first child element, CDATA included; None where there is none.

        Assigning replaces it; None or the empty text removes it.
        """
        with self._document._lock:
            parts = [from_tree(lib.get_value(p)) for p in self._leading_texts(self._use())]
        return "".join(parts) if parts else None

    @text.setter
    def text(self, text: str | None) -> None:
        converted = to_tree(text) if text else b""
        with self._document._lock:
            pointer = self._use()
            fresh = access.made(lib.create_text(converted)) if converted else None
            for old in list(self._leading_texts(pointer)):
                self._document._forget(old)
                lib.delete_node(old)
            if fresh:
                self._place(pointer, fresh, lib.get_first_child(pointer))

    @staticmethod
    def _leading_texts(pointer: int) -> Iterator[int]:
        for child in access.children(pointer):
            if lib.get_type(child) == lib.ELEMENT:
                return
            yield child

    def all_text(self) -> str:
        """The texts of this element and of all below it, joined."""
        with self._document._lock:
            found = [lib.get_value(node) for node in access.subtree(self._use())]
            return "".join(from_tree(value) for value in found if value)

    # -- Finding ---------------------------------------------------------------------------------

    def find(self, path: str) -> Element | None:
        """The first element at a path, or None; see find_all()."""
        with self._document._lock:
            for pointer in self._at(path):
                return self._document._element(pointer)
        return None

    def find_all(self, path: str) -> list[Element]:
        """The elements at a path such as "interface[2]/mtu".

        Steps are names of children, without prefixes, with a position among the children of that
        name or without one for all of them. A path that begins with "/" begins with the root's
        name; the `path` of a node is one. Raises ValueError for anything else.
        """
        with self._document._lock:
            return [self._document._element(pointer) for pointer in self._at(path)]

    def _at(self, path: str) -> Iterator[int]:
        pointer = self._use()
        if not path.startswith("/"):
            return access.at_path(pointer, access.steps(path))
        root = self._document._root
        (name, position), *below = access.steps(path[1:])
        if lib.get_name(root) != name or position > 1:
            return iter(())
        return access.at_path(root, below) if below else iter((root,))

    # -- Editing ---------------------------------------------------------------------------------

    def add(
        self,
        name: str,
        text: str | None = None,
        *,
        namespace: str | None = None,
        prefix: str | None = None,
        before: Node | None = None,
    ) -> Element:
        """Adds a child element, as the last child or before another one, and returns it.

        Without `namespace` and `prefix` it is in the default namespace of its place. `prefix` alone
        must be declared there. `namespace` is declared on the new element where that is needed;
        the empty string is no namespace.
        """
        local = access.checked_name(name)
        space = None if namespace is None else to_tree(namespace)
        chosen = to_tree(prefix) if prefix else None
        value = to_tree(text) if text else b""

        def furnish(fresh: int) -> None:
            access.bind_new(fresh, chosen, space)
            if value:
                self._place(fresh, access.made(lib.create_text(value)), None)

        with self._document._lock:
            fresh = self._attach(access.made(lib.create_element(local)), before, furnish)
            return self._document._element(fresh)

    def add_text(self, value: str, *, before: Node | None = None) -> Text:
        """Adds a text, as the last child or before another one, and returns it."""
        return self._add_textual(lib.create_text, value, before)

    def add_cdata(self, value: str, *, before: Node | None = None) -> Text:
        """Adds a CDATA section; one that holds "]]>" cannot be written (ValueError)."""
        if "]]>" in value:
            raise ValueError('a CDATA section cannot hold "]]>"')
        return self._add_textual(lib.create_cdata, value, before)

    def _add_textual(
        self, create: Callable[[bytes], int | None], value: str, before: Node | None
    ) -> Text:
        converted = to_tree(value)
        if not converted:
            raise ValueError("an empty text would not be written")
        with self._document._lock:
            fresh = self._attach(access.made(create(converted)), before)
            node = self._document._node(fresh)
            assert isinstance(node, Text)
            return node

    def add_copy(self, source: Node, *, before: Node | None = None) -> Node:
        """Adds a copy of a node with its subtree, of this or another document, and returns it.

        The copy's names stay in their namespaces; what it needs is declared on it.
        """
        with source._document._lock:
            copy, default = access.copy_of(source._use())

        def furnish(fresh: int) -> None:
            if lib.get_type(fresh) == lib.ELEMENT and access.default_namespace(fresh) != default:
                lib.declare(fresh, None, default)  # refused where it declares a default itself

        with self._document._lock:
            return self._document._node(self._attach(copy, before, furnish))

    def copy(self) -> Document:
        """A new document whose root is a copy of this element with its subtree."""
        from netxml.document import Document

        with self._document._lock:
            copy, default = access.copy_of(self._use())
            encoding = lib.get_encoding(self._pointer)
        if default:
            lib.declare(copy, None, default)  # refused where it declares a default itself
        lib.set_root(copy)
        lib.set_encoding(copy, encoding)
        return Document(copy)

    def _attach(
        self,
        fresh: int,
        before: Node | None,
        furnish: Callable[[int], None] | None = None,
    ) -> int:
        """Puts a new node in its place; deletes it again where something about it is refused."""
        try:
            parent = self._use()
            place = None
            if before is not None:
                inside = before._document is self._document
                place = before._use() if inside else None
                if not place or lib.get_parent(place) != parent:
                    raise ValueError("the node to insert before is no child of this element")
            self._place(parent, fresh, place)
            if furnish:
                furnish(fresh)
        except BaseException:
            lib.delete_node(fresh)
            raise
        return fresh

    @staticmethod
    def _place(parent: int, fresh: int, place: int | None) -> None:
        if place:
            lib.insert_before(place, fresh)
        else:
            lib.add_child(parent, fresh)

    def to_bytes(self) -> bytes:
        """This element with its subtree as XML text, in the encoding of its document."""
        with self._document._lock:
            return self._document._written(self._use(), lib.WITHOUT_DECLARATION)


def _clark(space: bytes, name: bytes) -> str:
    return f"{{{from_tree(space)}}}{from_tree(name)}" if space else from_tree(name)


def _decoded(found: dict[bytes, bytes]) -> Mapping[str | None, str]:
    return MappingProxyType({from_tree(p) or None: from_tree(name) for p, name in found.items()})


def _prefix_for(element: int, space: bytes, wanted: bytes | None) -> bytes:
    """A prefix that means a namespace at an element; declared there if none does."""
    if space == lib.XML_NAMESPACE.encode():
        if wanted not in (None, b"", b"xml"):
            raise ValueError("the namespace of xml: has no other prefix")
        return b"xml"
    declared = access.in_scope(element)
    if wanted and wanted in declared and declared[wanted] != space:
        raise ValueError(f"the prefix {from_tree(wanted)!r} means another namespace here")
    if wanted and wanted not in declared:
        if lib.check_name(wanted) != lib.OK or lib.check_namespace(wanted, space) != lib.OK:
            raise ValueError(f"the prefix {from_tree(wanted)!r} may not be declared so")
    if not wanted:
        known = (prefix for prefix, name in declared.items() if prefix and name == space)
        free = (b"ns%d" % number for number in range(len(declared) + 1))
        wanted = next(known, None) or next(prefix for prefix in free if prefix not in declared)
    if wanted not in declared:
        if lib.check_namespace(wanted, space) != lib.OK:
            raise ValueError(f"the namespace {from_tree(space)!r} may not be declared")
        access.done(lib.declare(element, wanted, space))
    return wanted
