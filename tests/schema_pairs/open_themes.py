"""Themes about what stands for something else: wildcards, substitution groups, other files."""

from __future__ import annotations

from collections.abc import Callable

from content_models import Particle, admitted_spaces
from schema_parts import HEAD, TARGET, Attribute, Case, Complex, SchemaParts
from simple_maker import as_attribute, fitting

_CONSTRAINTS = [
    "##any",
    "##other",
    "##local",
    "##targetNamespace",
    "urn:o",
    "urn:o ##local",
    "##targetNamespace ##local",
    "urn:third urn:o",
    "##targetNamespace urn:o",
]


class OpenThemes(SchemaParts):
    """One method a theme."""

    _OTHERS = [
        ("urn:o", "<o:x/>"),
        ("urn:o", "<o:n>5</o:n>"),
        ("urn:o", "<o:n>five</o:n>"),
        ("urn:t", "<t:n>5</t:n>"),
        ("urn:t", "<t:n>five</t:n>"),
        ("urn:t", "<t:undeclared/>"),
        ("", "<plain/>"),
        ("", "<plain><t:n>q</t:n></plain>"),
        ("urn:o", "<o:deep a='1'><t:n>six</t:n></o:deep>"),
        ("urn:third", '<z xmlns="urn:third"/>'),
    ]
    _OTHER_ATTRIBUTES = [
        'o:n="5"',
        'o:n="x"',
        'o:zz="1"',
        'zz="1"',
        't:n="5"',
        't:n="x"',
        't:zz="1"',
    ]

    def _any(self) -> Particle:
        constraint = self.chance.choice(_CONSTRAINTS)
        process = self.chance.choice(("strict", "lax", "skip"))
        spaces = admitted_spaces(constraint, TARGET)
        fitting_ones = [t for s, t in self._OTHERS if s in spaces] or ["<o:x/>"]
        anything = [t for _, t in self._OTHERS]
        return Particle(
            "any",
            text=f'<xs:any namespace="{constraint}" processContents="{process}"',
            spaces=spaces,
            sample=lambda: self.chance.choice(
                fitting_ones if self.chance.random() < 0.85 else anything
            ),
        )

    def _other_schema(self) -> tuple[dict[str, str], str]:
        head = HEAD.format(space="urn:o", more=' targetNamespace="urn:o"')
        text = head + (
            '<xs:element name="n" type="xs:int"/><xs:attribute name="n" type="xs:int"/>'
            "</xs:schema>\n"
        )
        return {"other.xsd": text}, '<xs:import namespace="urn:o" schemaLocation="other.xsd"/>\n'

    def _wildcard(self, documents: int) -> Case:
        def leaf(name: str) -> Particle:
            return self._any() if self.chance.random() < 0.4 else self._plain_leaf(name)

        model = self._deterministic(lambda: self._random_model("abcd", 1, leaf))
        wildcard = ""
        attributes: list[Attribute] = []
        if self.chance.random() < 0.6:
            constraint = self.chance.choice(_CONSTRAINTS)
            process = self.chance.choice(("strict", "lax", "skip"))
            wildcard = f'<xs:anyAttribute namespace="{constraint}" processContents="{process}"/>'
        more = [Attribute("", "", lambda: self.chance.choice(self._OTHER_ATTRIBUTES))]
        self.definitions += [
            '<xs:element name="n" type="xs:int"/>',
            '<xs:attribute name="n" type="xs:int"/>',
        ]
        inside = Complex(model, attributes, False, None, wildcard)
        self._root(inside)
        result = [
            self._document(
                "r",
                self._attributes_of(Complex(attributes=more)) if wildcard else "",
                self._content(inside),
            )
            for _ in range(documents)
        ]
        files, imports = self._other_schema()
        return self._case(result, files, imports)

    def _substitution(self, documents: int) -> Case:
        """Heads with members, also in chains, some of them abstract."""
        members: dict[str, list[str]] = {}
        abstract: set[str] = set()
        for head in ("h", "k")[: self.chance.choice((1, 2))]:
            names = [head] + [f"{head}{i}" for i in range(self.chance.randint(0, 4))]
            members[head] = names
            for at, name in enumerate(names):
                above = self.chance.choice(names[:at]) if at else ""
                flag = ""
                if self.chance.random() < (0.5 if not at else 0.15):
                    flag = ' abstract="true"'
                    abstract.add(name)
                link = f' substitutionGroup="t:{above}"' if above else ""
                kind = ' type="xs:string"' if not at or self.chance.random() < 0.5 else ""
                self.definitions.append(f'<xs:element name="{name}"{kind}{link}{flag}/>')

        def leaf(name: str) -> Particle:
            if self.chance.random() < 0.5:
                return self._plain_leaf(name)
            head = self.chance.choice(list(members))
            choices = members[head]
            good = [m for m in choices if m not in abstract] or choices
            return Particle(
                "element",
                text=f'<xs:element ref="t:{head}"',
                names=frozenset((TARGET, m) for m in choices),
                sample=lambda: self._member(good if self.chance.random() < 0.9 else choices),
            )

        model = self._deterministic(lambda: self._random_model("abc", 1, leaf))
        inside = Complex(model)
        self._root(inside)
        return self._case(self._of_complex(inside, documents))

    def _member(self, names: list[str]) -> str:
        name = self.chance.choice(names)
        return f"<t:{name}>x</t:{name}>"

    def _forms(self, documents: int) -> Case:
        self.qualified = self.chance.random() < 0.5
        self.attributes_qualified = self.chance.random() < 0.4
        parts = []
        for name in "abc":
            form = self.chance.choice((None, None, True, False))
            more = "" if form is None else f' form="{"qualified" if form else "unqualified"}"'
            parts.append(self._bounds(self._element(name, fitting("int"), more, form)))
        model = Particle(self.chance.choice(("sequence", "choice")), parts=parts)
        attributes = self._small_attributes("pq")
        for attribute in attributes:
            if self.chance.random() < 0.4:
                qualified = self.chance.random() < 0.5
                word = "qualified" if qualified else "unqualified"
                attribute.text = attribute.text.replace("/>", f' form="{word}"/>')
                attribute.sample = self._attribute_sample(attribute.name, qualified)
        inside = Complex(model, attributes)
        self._root(inside)
        return self._case(self._of_complex(inside, documents))

    def _attribute_sample(self, name: str, qualified: bool) -> Callable[[], str]:
        tag = f"t:{name}" if qualified else name
        return lambda: f'{tag}="1"'

    def _files(self, documents: int) -> Case:
        """Includes (of the same namespace, and of none), circles, and imports."""
        chameleon = self.chance.random() < 0.5
        qualified = self.chance.random() < 0.5
        own = "" if chameleon else ' targetNamespace="urn:t"'
        forms = ' elementFormDefault="qualified"' if qualified else ""
        space = "" if chameleon else ' xmlns:t="urn:t"'
        prefix = "" if chameleon else "t:"
        circle = (
            self.chance.choice(("", '<xs:include schemaLocation="main.xsd"/>'))
            if not chameleon
            else ""
        )
        part = (
            f'<xs:schema xmlns:xs="http://www.w3.org/2001/XMLSchema"{space}{own}{forms}>{circle}'
            '<xs:simpleType name="small"><xs:restriction base="xs:int"><xs:maxInclusive '
            'value="9"/></xs:restriction>'
            "</xs:simpleType>"
            f'<xs:complexType name="pair"><xs:sequence><xs:element name="x" type="{prefix}small"/>'
            f'<xs:element name="y" type="{prefix}small" minOccurs="0"/><xs:element '
            f'ref="{prefix}leaf" minOccurs="0"/>'
            f'</xs:sequence><xs:attribute name="k" type="{prefix}small"/></xs:complexType>'
            f'<xs:element name="leaf" type="{prefix}small"/></xs:schema>\n'
        )
        tag = "t:" if qualified else ""
        other, imports = self._other_schema()
        self.definitions.append(
            '<xs:element name="r"><xs:complexType><xs:sequence><xs:element name="p" type="t:pair" '
            'maxOccurs="2"/><xs:element ref="o:n" minOccurs="0"/><xs:element ref="t:leaf" '
            'minOccurs="0"/>'
            '</xs:sequence><xs:attribute ref="o:n"/></xs:complexType></xs:element>'
        )
        result = []
        for _ in range(documents):
            x = self.chance.choice(("5", "9", "10", "-3"))
            y = self.chance.choice(("", f"<{tag}y>7</{tag}y>", "<y>7</y>", "<t:leaf>1</t:leaf>"))
            content = (
                f"<t:p{self.chance.choice(('', ' k=' + as_attribute(x)))}>"
                f"<{tag}x>{x}</{tag}x>{y}</t:p>"
            )
            content += self.chance.choice(
                ("", "<o:n>5</o:n>", "<o:n>q</o:n>", "<t:leaf>4</t:leaf>", "<t:leaf>40</t:leaf>")
            )
            result.append(
                self._document(
                    "r", self.chance.choice(("", ' o:n="5"', ' o:n="x"', ' n="5"')), content
                )
            )
        made = self._case(
            result,
            {"part.xsd": part, **other},
            '<xs:include schemaLocation="part.xsd"/>\n' + imports,
        )
        made.files["main.xsd"] = made.files["main.xsd"].replace(
            "<xs:schema ", '<xs:schema xmlns:o="urn:o" ', 1
        )
        return made
