"""What random schemas are put together from: declarations, content models, files, and documents."""

from __future__ import annotations

import random
from collections.abc import Callable
from dataclasses import dataclass, field

from content_models import UNBOUNDED, Determinism, Particle
from simple_maker import SimpleMaker, SimpleType, as_attribute, as_text, fitting

TARGET = "urn:t"
HEAD = (
    '<?xml version="1.0"?>\n<xs:schema xmlns:xs="http://www.w3.org/2001/XMLSchema" '
    'xmlns:t="{space}"{more}>\n'
)
_BINDINGS = 'xmlns:t="urn:t" xmlns:o="urn:o" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance"'


@dataclass
class Case:
    """A schema of some files, of which the first is the main one, and documents for it."""

    theme: str
    files: dict[str, str]
    documents: list[str]


@dataclass
class Attribute:
    text: str
    name: str
    sample: Callable[[], str]
    required: bool = False


@dataclass
class Complex:
    """The inside of a complex type, and how to write attributes and content of a document."""

    model: Particle | None = None
    attributes: list[Attribute] = field(default_factory=list)
    mixed: bool = False
    text: SimpleType | None = None
    wildcard: str = ""  # anyAttribute's namespace constraint and processing
    body: str = ""  # when it is derived: what stands in the complexType


class SchemaParts:
    """The schema that is being made, and ways to make parts of it; everything random comes from
    `chance`."""

    def __init__(self, chance: random.Random, wide: bool = True) -> None:
        self.chance = chance
        self.wide = wide
        self.definitions: list[str] = []
        self.simple = SimpleMaker(chance, self.definitions, wide)
        self.qualified = True
        self.attributes_qualified = False
        self.count = 0

    def _name(self, stem: str) -> str:
        self.count += 1
        return f"{stem}{self.count}"

    def _tag(self, name: str, qualified: bool | None = None) -> str:
        return f"t:{name}" if (self.qualified if qualified is None else qualified) else name

    def _schema(self, more: str = "", space: str = TARGET) -> str:
        forms = ' elementFormDefault="qualified"' if self.qualified else ""
        forms += ' attributeFormDefault="qualified"' if self.attributes_qualified else ""
        head = HEAD.format(space=space, more=f' targetNamespace="{space}"{forms}')
        return head + more + "\n".join(self.definitions) + "\n</xs:schema>\n"

    def _case(
        self, documents: list[str], more: dict[str, str] | None = None, imports: str = ""
    ) -> Case:
        return Case("", {"main.xsd": self._schema(imports), **(more or {})}, documents)

    def _document(self, name: str, attributes: str, content: str) -> str:
        return f"<t:{name} {_BINDINGS}{attributes}>{content}</t:{name}>\n"

    def _declaration(self, name: str, kind: SimpleType, more: str = "") -> str:
        if kind.reference:
            return f'<xs:element name="{name}" type="{kind.reference}"{more}/>'
        return f'<xs:element name="{name}"{more}>{kind.inline}</xs:element>'

    def _element(
        self, name: str, kind: SimpleType, more: str = "", qualified: bool | None = None
    ) -> Particle:
        tag = self._tag(name, qualified)
        space = TARGET if tag.startswith("t:") else ""
        return Particle(
            "element",
            text=f'<xs:element name="{name}"{kind.attribute()}{more}',
            rest=f">{kind.inline}</xs:element>" if kind.inline else "/>",
            names=frozenset({(space, name)}),
            sample=lambda: f"<{tag}>{as_text(self.chance.choice(kind.values))}</{tag}>",
        )

    def _bounds(self, part: Particle) -> Particle:
        part.least, part.most = self.chance.choice(
            [(1, 1)] * 5
            + [
                (0, 1),
                (0, 1),
                (0, UNBOUNDED),
                (1, UNBOUNDED),
                (2, 2),
                (1, 2),
                (0, 2),
                (2, 3),
                (2, UNBOUNDED),
                (3, 5),
            ]
        )
        return part

    def _random_model(self, names: str, depth: int, leaf: Callable[[str], Particle]) -> Particle:
        result = Particle(self.chance.choice(("sequence", "sequence", "choice")))
        for _ in range(self.chance.choice((1, 2, 2, 3, 3, 4))):
            if depth > 0 and self.chance.random() < 0.4:
                result.parts.append(self._random_model(names, depth - 1, leaf))
            else:
                result.parts.append(self._bounds(leaf(self.chance.choice(names))))
        return self._bounds(result)

    def _deterministic(self, make: Callable[[], Particle]) -> Particle:
        while True:
            model = make()
            if Determinism(model).deterministic:
                return model

    def _plain_leaf(self, name: str) -> Particle:
        return self._element(name, fitting("string"))

    def _complex(self, inside: Complex, name: str = "") -> str:
        head = f'<xs:complexType name="{name}"' if name else "<xs:complexType"
        head += ' mixed="true">' if inside.mixed and not inside.body else ">"
        return head + (inside.body or self._inside(inside)) + "</xs:complexType>"

    def _inside(self, inside: Complex) -> str:
        text = inside.model.schema() if inside.model else ""
        return text + "".join(a.text for a in inside.attributes) + inside.wildcard

    def _content(self, inside: Complex) -> str:
        if inside.text:
            return as_text(self.chance.choice(inside.text.values))
        children = inside.model.children(self.chance) if inside.model else []
        if inside.mixed:
            children = [self.chance.choice(("", "text", " x ")) + child for child in children]
            children.append(self.chance.choice(("", "tail")))
        return "".join(children)

    def _attributes_of(self, inside: Complex) -> str:
        chosen = [a for a in inside.attributes if a.required or self.chance.random() < 0.6]
        return "".join(" " + a.sample() for a in chosen)

    def _of_complex(self, inside: Complex, documents: int) -> list[str]:
        return [
            self._document("r", self._attributes_of(inside), self._content(inside))
            for _ in range(documents)
        ]

    def _root(self, inside: Complex) -> None:
        if self.chance.random() < 0.3:
            name = self._name("T")
            self.definitions.append(self._complex(inside, name))
            self.definitions.append(f'<xs:element name="r" type="t:{name}"/>')
        else:
            self.definitions.append(f'<xs:element name="r">{self._complex(inside)}</xs:element>')

    def _sampled(self, name: str, texts: list[str]) -> Callable[[], str]:
        tag = self._tag(name)

        def sample() -> str:
            text = self.chance.choice(texts)
            return f"<{tag}>{as_text(text)}</{tag}>" if text else f"<{tag}/>"

        return sample

    def _attribute(
        self, name: str, kind: SimpleType, more: str, values: list[str] | None = None
    ) -> Attribute:
        end = f">{kind.inline}</xs:attribute>" if kind.inline else "/>"
        tag = f"t:{name}" if self.attributes_qualified else name
        choices = values or kind.values
        return Attribute(
            f'<xs:attribute name="{name}"{kind.attribute()}{more}{end}',
            name,
            lambda: f"{tag}={as_attribute(self.chance.choice(choices))}",
            "required" in more,
        )

    def _small_attributes(self, names: str) -> list[Attribute]:
        return [
            self._attribute(
                name,
                fitting(self.chance.choice(["int", "string", "boolean"])),
                self.chance.choice(("", "", ' use="required"', ' use="optional"')),
            )
            for name in names
            if self.chance.random() < 0.6
        ]

    def _chosen(self, texts: list[str]) -> Callable[[], str]:
        return lambda: self.chance.choice(texts)
