"""Themes about content models and what is derived from them."""

from __future__ import annotations

import copy

from content_models import UNBOUNDED, Particle, leaves
from schema_parts import Attribute, Case, Complex, SchemaParts
from simple_maker import as_attribute, fitting


class ContentThemes(SchemaParts):
    """One method a theme."""

    def _model(self, documents: int) -> Case:
        names = self.chance.choice(("ab", "abc", "abcde", "abcdefgh"))
        depth = self.chance.choice((1, 2, 2, 3))
        model = self._deterministic(lambda: self._random_model(names, depth, self._plain_leaf))
        inside = Complex(model)
        self._root(inside)
        return self._case(self._of_complex(inside, documents))

    def _groups(self, documents: int) -> Case:
        """Named groups, one in another, deeper than six where chance has it."""
        groups: list[Particle] = []

        def make() -> Particle:
            groups.clear()
            depth = self.chance.choice((2, 3, 5, 8))
            model = self._random_model("abcdefghijkl", 1, self._plain_leaf)
            for _ in range(depth):
                model.least = model.most = 1
                inner = copy.copy(model)
                inner.group = f"g{len(groups)}"
                groups.append(inner)
                outer = Particle(self.chance.choice(("sequence", "choice")))
                extra = self._plain_leaf(self.chance.choice("abcdefghijkl"))
                outer.parts = self.chance.sample([self._bounds(copy.copy(inner)), extra], 2)
                model = outer
            return self._bounds(model)

        model = self._deterministic(make)
        for group in groups:
            text = f"<xs:{group.kind}>{group.inner()}</xs:{group.kind}>"
            self.definitions.append(f'<xs:group name="{group.group}">{text}</xs:group>')
        inside = Complex(model)
        self._root(inside)
        return self._case(self._of_complex(inside, documents))

    def _all(self, documents: int) -> Case:
        parts = []
        for name in self.chance.sample("abcdef", self.chance.randint(1, 5)):
            part = self._element(name, self.simple.plain())
            part.least = self.chance.choice((0, 1))
            parts.append(part)
        model = Particle("all", parts=parts)
        model.least = self.chance.choice((1, 1, 0))
        inside = Complex(model, mixed=self.chance.random() < 0.2)
        self._root(inside)
        return self._case(self._of_complex(inside, documents))

    def _mixed(self, documents: int) -> Case:
        kind = self.chance.choice(("model", "empty", "model", "any type", "no content"))
        if kind == "any type":
            self.definitions.append(
                self.chance.choice(
                    (
                        '<xs:element name="r" type="xs:anyType"/>',
                        '<xs:element name="r"/>',
                        '<xs:element name="r"><xs:complexType><xs:complexContent>'
                        '<xs:restriction base="xs:anyType"/>'
                        "</xs:complexContent></xs:complexType></xs:element>",
                    )
                )
            )
            contents = ["", "text", "<t:r/>", "a<b/>c", "<t:r><zz/></t:r>", "<o:x a='1'>y</o:x>"]
            return self._case(
                [self._document("r", "", self.chance.choice(contents)) for _ in range(documents)]
            )
        model = None
        if kind == "model":
            model = self._deterministic(lambda: self._random_model("abcd", 1, self._plain_leaf))
        elif kind == "empty":
            model = Particle("sequence")
        inside = Complex(model, mixed=kind != "no content" or self.chance.random() < 0.5)
        self._root(inside)
        return self._case(self._of_complex(inside, documents))

    def _extension(self, documents: int) -> Case:
        steps = self.chance.choice((1, 1, 2))

        def make() -> Particle:
            models = [self._random_model("abcdefgh", 1, self._plain_leaf) for _ in range(steps + 1)]
            if self.chance.random() < 0.15:
                models[0] = Particle("sequence")
            return Particle("sequence", parts=models)

        model = self._deterministic(make)
        mixed = self.chance.random() < 0.2
        first = Complex(model.parts[0], self._small_attributes("pq"), mixed)
        name = self._name("T")
        self.definitions.append(self._complex(first, name))
        attributes = first.attributes
        for part in model.parts[1:]:
            more = self._small_attributes("uv" if part is model.parts[1] else "xy")
            attributes = attributes + more
            inner = Complex(part if self.chance.random() < 0.85 else None, more)
            if inner.model is None:
                part.least = part.most = 0
                part.parts.clear()
            flag = ' mixed="true"' if mixed else ""
            body = (
                f"<xs:complexContent{flag}><xs:extension "
                f'base="t:{name}">{self._inside(inner)}</xs:extension></xs:complexContent>'
            )
            name = self._name("T")
            self.definitions.append(f'<xs:complexType name="{name}">{body}</xs:complexType>')
        self.definitions.append(f'<xs:element name="r" type="t:{name}"/>')
        whole = Complex(model, attributes, mixed)
        return self._case(self._of_complex(whole, documents))

    def _restriction(self, documents: int) -> Case:
        model = self._deterministic(lambda: self._random_model("abcdef", 1, self._plain_leaf))
        base = Complex(model, self._small_attributes("pqs"))
        self.definitions.append(self._complex(base, "B"))
        narrower = copy.deepcopy(model)
        for leaf, original in zip(leaves(narrower), leaves(model)):
            leaf.sample = original.sample
            if leaf.most == UNBOUNDED:
                leaf.most = leaf.least + self.chance.choice((1, 2))
            elif leaf.least < leaf.most and self.chance.random() < 0.5:
                leaf.least += 1
        attributes, texts = [], ""
        for attribute in base.attributes:
            kind = self.chance.choice(("keep", "prohibit", "require"))
            if kind == "keep" or (kind == "prohibit" and attribute.required):
                attributes.append(attribute)
            elif kind == "prohibit":
                texts += f'<xs:attribute name="{attribute.name}" use="prohibited"/>'
            else:
                text = attribute.text.replace(' use="required"', "").replace(' use="optional"', "")
                texts += text.replace("/>", ' use="required"/>')
                attributes.append(Attribute(text, attribute.name, attribute.sample, True))
        body = (
            f"<xs:complexContent><xs:restriction "
            f'base="t:B">{narrower.schema()}{texts}</xs:restriction></xs:complexContent>'
        )
        self.definitions.append(
            f'<xs:element name="r"><xs:complexType>{body}</xs:complexType></xs:element>'
        )
        whole = Complex(narrower, attributes)
        wide = Complex(model, base.attributes)
        half = documents // 2
        return self._case(self._of_complex(whole, documents - half) + self._of_complex(wide, half))

    def _simple_content(self, documents: int) -> Case:
        kind = self.simple.make(self.chance.choice(("facets", "pattern", "union", "list")))
        base = kind.reference
        if not base:
            base = "t:" + self._name("S")
            self.definitions.append(
                kind.inline.replace("<xs:simpleType>", f'<xs:simpleType name="{base[2:]}">', 1)
            )
        first = self._small_attributes("pq")
        inner = "".join(a.text for a in first)
        name = self._name("T")
        self.definitions.append(
            f'<xs:complexType name="{name}"><xs:simpleContent><xs:extension '
            f'base="{base}">{inner}</xs:extension>'
            "</xs:simpleContent></xs:complexType>"
        )
        whole = Complex(attributes=first, text=kind)
        step = self.chance.choice(("none", "extend", "restrict"))
        if step != "none":
            more = self._small_attributes("uv") if step == "extend" else []
            facets = (
                ""
                if step == "extend"
                else self.chance.choice(
                    (
                        '<xs:pattern value=".{0,3}"/>',
                        f"<xs:enumeration value={as_attribute(kind.values[0])}/>",
                    )
                )
            )
            texts = facets + "".join(a.text for a in more)
            other = "extension" if step == "extend" else "restriction"
            self.definitions.append(
                f'<xs:complexType name="Last"><xs:simpleContent><xs:{other} '
                f'base="t:{name}">{texts}</xs:{other}>'
                "</xs:simpleContent></xs:complexType>"
            )
            whole.attributes = first + more
            name = "Last"
        self.definitions.append(f'<xs:element name="r" type="t:{name}"/>')
        return self._case(self._of_complex(whole, documents))
