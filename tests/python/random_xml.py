"""Random documents, the same for the same seed."""
import random

NAMES = ["config", "interface", "mtu", "a", "b-1", "_x.y", "名称", "élan", "ünï"]
WORDS = ["up", "1500", "ge0/0/1", "核心", "naïve", "😀", "𠀀", "x y"]
WORDS += ["&lt;", "&amp;", "&#x4e2d;", "]]", "'"]
SPACES = ["urn:a", "urn:b", "http://example.net/核心", "urn:ietf:params:xml:ns:netconf:base:1.0"]


class RandomXml:
    """Writes one document. Runs of text have blanks only at their ends, where netxml trims them."""

    def __init__(self, seed: int, size: int = 60) -> None:
        self._random = random.Random(seed)
        self._left = self._random.randrange(1, size)

    def text(self) -> str:
        """A whole document, without a declaration."""
        misc = self._pick(["", "<!-- before -->", "<?target data?>\n", "<!DOCTYPE config>\n"])
        return misc + self._element({}) + self._pick(["", "\n", "<!-- behind -->"])

    def _pick(self, choices: list[str]) -> str:
        return self._random.choice(choices)

    def _element(self, outer: dict[str, str]) -> str:
        self._left -= 1
        scope, declarations = self._declarations(outer)
        prefix = self._pick([p for p in scope if p] + [""] * 2)
        name = (prefix + ":" if prefix else "") + self._pick(NAMES)
        tag = name + "".join(self._shuffled(declarations + self._attributes(scope)))
        content = self._content(scope)
        if not content and self._random.random() < 0.5:
            return f"<{tag}/>"
        return f"<{tag}{self._pick(['', ' '])}>{content}</{name}>"

    def _shuffled(self, texts: list[str]) -> list[str]:
        self._random.shuffle(texts)
        return texts

    def _declarations(self, outer: dict[str, str]) -> tuple[dict[str, str], list[str]]:
        scope, texts = dict(outer), []
        count = self._random.choice([0, 0, 0, 1, 2])
        for prefix in self._random.sample(["", "p", "q", "前"], count):
            scope[prefix] = self._pick(SPACES + [""] if not prefix else SPACES)
            texts.append(f' xmlns{":" if prefix else ""}{prefix}="{scope[prefix]}"')
        return scope, texts

    def _attributes(self, scope: dict[str, str]) -> list[str]:
        """No two attributes of a name, so that no two are equal by their namespace."""
        texts = []
        for name in self._random.sample(NAMES, self._random.choice([0, 0, 1, 2, 4])):
            prefix = self._pick([p + ":" for p in scope if p] + ["", "", "xml:"])
            quote = self._pick(['"', "'"])
            value = " ".join(self._words()).replace("'", "").replace("]]", "]]&gt;")
            texts.append(f" {prefix}{name}={quote}{value}{quote}")
        return texts

    def _words(self) -> list[str]:
        return [self._pick(WORDS) for _ in range(self._random.choice([0, 1, 1, 3]))]

    def _content(self, scope: dict[str, str]) -> str:
        pieces = [self._run()]
        while self._left > 0 and self._random.random() < 0.7:
            pieces += [self._element(scope), self._run()]
        return "".join(pieces)

    def _run(self) -> str:
        """Text, CDATA, comments and instructions between two tags, with blanks around them."""
        pieces = [self._piece() for _ in range(self._random.choice([0, 1, 1, 3]))]
        margin = self._pick(["", " ", "\n  ", "\t"])
        return margin + "".join(pieces) + self._pick(["", margin])

    def _piece(self) -> str:
        words = " ".join(self._words())
        kind = self._random.randrange(6)
        if kind == 0:
            return f"<!-- {words.replace('-', '')} -->"
        if kind == 1:
            return f"<?pi {words}?>"
        if kind == 2:
            return f"<![CDATA[{words.replace(']]', '').strip() or 'x'}]]>"
        return words
