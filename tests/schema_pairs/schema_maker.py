"""Random schemas, one idea each, with documents that follow them or nearly do."""

from __future__ import annotations

from collections.abc import Callable

from content_models import Particle
from content_themes import ContentThemes
from open_themes import OpenThemes
from schema_parts import TARGET, Attribute, Case, Complex
from simple_maker import as_attribute, as_text, fitting


class SchemaMaker(ContentThemes, OpenThemes):
    """Makes cases of a theme; those about values, attributes and the like stand here."""

    THEMES = (
        "builtin",
        "facets",
        "pattern",
        "list",
        "union",
        "values",
        "model",
        "groups",
        "all",
        "mixed",
        "extension",
        "restriction",
        "simple content",
        "wildcard",
        "substitution",
        "forms",
        "files",
        "nillable",
        "attributes",
        "instance type",
    )

    def case(self, theme: str, documents: int) -> Case:
        self.definitions.clear()
        self.qualified = True
        self.attributes_qualified = False
        self.count = 0
        maker = {
            "values": self._values,
            "model": self._model,
            "groups": self._groups,
            "all": self._all,
            "mixed": self._mixed,
            "extension": self._extension,
            "restriction": self._restriction,
            "simple content": self._simple_content,
            "wildcard": self._wildcard,
            "substitution": self._substitution,
            "forms": self._forms,
            "files": self._files,
            "nillable": self._nillable,
            "attributes": self._attributes,
            "instance type": self._instance_type,
        }.get(theme, lambda n: self._simple_types(theme, n))
        made = maker(documents)
        made.theme = theme
        return made

    def _simple_types(self, theme: str, documents: int) -> Case:
        kind = self.simple.make(theme)
        self.definitions.append(self._declaration("r", kind))
        other = self.simple.make(theme)
        written = (
            f' type="{other.reference}"/>' if other.reference else f">{other.inline}</xs:attribute>"
        )
        self.definitions.append(
            f'<xs:element name="q"><xs:complexType><xs:attribute '
            f'name="v"{written}</xs:complexType></xs:element>'
        )
        result = []
        for number in range(documents):
            if number % 2 == 0:
                result.append(self._document("r", "", as_text(self.chance.choice(kind.values))))
            else:
                result.append(
                    self._document("q", f" v={as_attribute(self.chance.choice(other.values))}", "")
                )
        return self._case(result)

    def _values(self, documents: int) -> Case:
        """Fixed and default values of elements and attributes."""
        parts, attributes = [], []
        for name in "abc":
            kind = fitting(
                self.chance.choice(
                    ["string", "token", "int", "decimal", "boolean", "NCName", "anyURI"]
                )
            )
            value = self.chance.choice(kind.values)
            word = self.chance.choice(("fixed", "default"))
            part = self._element(name, kind, f' {word}="{value}"')
            texts = (
                [value] * 12 + ["", "+" + value, value + ".0", " " + value, "other"] + kind.values
            )
            part.sample = self._sampled(name, texts)
            part.least = self.chance.choice((0, 1))
            parts.append(part)
            attributes.append(self._attribute(name, kind, f' {word}="{value}"', texts))
        inside = Complex(Particle("sequence", parts=parts), attributes)
        self._root(inside)
        return self._case(self._of_complex(inside, documents))

    def _nillable(self, documents: int) -> Case:
        parts = []
        for name in "abc":
            kind = fitting(self.chance.choice(["int", "string", "boolean", "token", "dateTime"]))
            more = self.chance.choice(
                (' nillable="true"', ' nillable="true"', ' nillable="false"', "")
            )
            part = self._element(name, kind, more)
            value = self.chance.choice(kind.values)
            tag = self._tag(name)
            forms = [
                f"<{tag}>{value}</{tag}>",
                f'<{tag} xsi:nil="true"/>',
                f'<{tag} xsi:nil="1"></{tag}>',
                f'<{tag} xsi:nil="false">{value}</{tag}>',
                f'<{tag} xsi:nil="true">{value}</{tag}>',
                f"<{tag}/>",
                f'<{tag} xsi:nil="maybe">{value}</{tag}>',
                f'<{tag} xsi:nil="0"/>',
            ]
            part.sample = self._chosen(forms + forms[:1] * 12)
            parts.append(part)
        if self.chance.random() < 0.5:
            inner = (
                '<xs:complexType><xs:sequence><xs:element name="i" type="xs:int"/>'
                '</xs:sequence><xs:attribute name="w" use="required"/></xs:complexType>'
            )
            forms = [
                '<t:d w="1"><t:i>1</t:i></t:d>',
                '<t:d w="1" xsi:nil="true"/>',
                '<t:d xsi:nil="true"/>',
                '<t:d w="1" xsi:nil="true"><t:i>1</t:i></t:d>',
                '<t:d w="1"/>',
            ]
            parts.append(
                Particle(
                    "element",
                    text='<xs:element name="d" nillable="true"',
                    rest=f">{inner}</xs:element>",
                    names=frozenset({(TARGET, "d")}),
                    sample=self._chosen(forms + forms[:2] * 4),
                )
            )
        inside = Complex(Particle("sequence", parts=parts))
        self._root(inside)
        return self._case(self._of_complex(inside, documents))

    def _attributes(self, documents: int) -> Case:
        inside = Complex(Particle("sequence") if self.chance.random() < 0.5 else None)
        for name in "abcd":
            kind = self.simple.make("facets") if self.chance.random() < 0.4 else self.simple.plain()
            use = self.chance.choice(
                ("", "", ' use="required"', ' use="optional"', ' use="prohibited"')
            )
            inside.attributes.append(self._attribute(name, kind, use))
        self.definitions.append('<xs:attribute name="g" type="xs:int"/>')
        use = self.chance.choice(
            ("", ' use="required"', ' use="prohibited"', ' fixed="5"', ' default="5"')
        )
        reference = Attribute(
            f'<xs:attribute ref="t:g"{use}/>',
            "g",
            self._chosen(['t:g="5"', 't:g="x"', 't:g="6"', 'g="5"']),
            "required" in use,
        )
        inside.attributes.append(reference)
        if self.chance.random() < 0.5:
            grouped = inside.attributes[:2]
            inner = '<xs:attributeGroup name="ag0">' + grouped[0].text + "</xs:attributeGroup>"
            outer = (
                '<xs:attributeGroup name="ag"><xs:attributeGroup ref="t:ag0"/>'
                + grouped[1].text
                + "</xs:attributeGroup>"
            )
            self.definitions += [inner, outer]
            grouped = [Attribute("", a.name, a.sample, a.required) for a in grouped]
            inside.attributes = grouped + inside.attributes[2:]
            inside.wildcard = '<xs:attributeGroup ref="t:ag"/>'
        self._root(inside)
        return self._case(self._of_complex(inside, documents))

    def _instance_type(self, documents: int) -> Case:
        self.definitions += [
            (
                '<xs:complexType name="B"><xs:sequence><xs:element name="a" type="xs:int"/>'
                "</xs:sequence></xs:complexType>"
            ),
            '<xs:complexType name="E"><xs:complexContent><xs:extension base="t:B">'
            '<xs:sequence><xs:element name="b" '
            'type="xs:int"/></xs:sequence></xs:extension></xs:complexContent></xs:complexType>',
            '<xs:complexType name="A" abstract="true"><xs:complexContent><xs:extension '
            'base="t:B"/></xs:complexContent>'
            "</xs:complexType>",
            f'<xs:element name="r" type="t:{self.chance.choice("BBA")}"/>',
            '<xs:element name="q" type="xs:decimal"/>',
        ]
        result = []
        for _ in range(documents):
            if self.chance.random() < 0.3:
                kind = self.chance.choice(("", ' xsi:type="xs:int"', ' xsi:type="xs:string"'))
                space = ' xmlns:xs="http://www.w3.org/2001/XMLSchema"'
                result.append(
                    self._document("q", space + kind, self.chance.choice(("5", "1.5", "x")))
                )
            else:
                kind = self.chance.choice(
                    ("", ' xsi:type="t:B"', ' xsi:type="t:E"', ' xsi:type="t:A"', ' xsi:type="t:N"')
                )
                content = "<t:a>1</t:a>" + self.chance.choice(("", "<t:b>2</t:b>"))
                result.append(self._document("r", kind, content))
        return self._case(result)
