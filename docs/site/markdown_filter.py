#!/usr/bin/env python3
"""Lets doxygen 1.9 read the documents as a forge does.

    markdown_filter.py FILE

Blocks of code get the form of the language that they name, headings a label, and links to them that
label. A link to the C++ header leads to its section; links to directories and to other files that are
no page of the site lose their target.
"""

import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
LANGUAGES = {"c": "{.c}", "cpp": "{.cpp}", "python": "{.py}", "xml": "{.xml}"}
LINK = re.compile(r"(!?)\[([^\]]+)\]\(([^)\s]+)\)")


def slug(heading: str) -> str:
    """What a forge names a heading in links."""
    return re.sub(r"[^\w\- ]", "", heading.strip().lower()).replace(" ", "-")


def label(path: pathlib.Path, name: str) -> str:
    """What doxygen shall name a heading: no two pages may share one."""
    page = re.sub(r"\W", "_", str(path.relative_to(ROOT).with_suffix("")))
    return f"{page}-{re.sub(r'[^a-z0-9_-]', '', name)}"


def link(match: re.Match[str], path: pathlib.Path) -> str:
    picture, words, target = match.groups()
    file, _, anchor = target.partition("#")
    if re.match(r"[a-z]+:", target):
        return match[0]
    place = (path.parent / file).resolve() if file else path
    if place.suffix == ".md" and place.is_relative_to(ROOT):
        # In the words of a link doxygen knows no code.
        words = words.replace("`", "")
        return f"[{words}](@ref {label(place, anchor)})" if anchor else f"[{words}]({target})"
    if place == ROOT / "include/netxml/netxml.hpp":
        return f"[{words.replace('`', '')}](@ref cpp)"
    return match[0] if picture else words


def heading(match: re.Match[str], path: pathlib.Path, count: dict[str, int]) -> str:
    """A heading with its label; what stands twice gets a number, as on a forge."""
    name = slug(match[2])
    count[name] = count.get(name, -1) + 1
    if count[name]:
        name += f"-{count[name]}"
    return f"{match[1]} {match[2]} {{#{label(path, name)}}}"


def main() -> None:
    path = pathlib.Path(sys.argv[1]).resolve()
    pieces = re.split(r"^(```.*?^```)$", path.read_text(), flags=re.MULTILINE | re.DOTALL)
    count: dict[str, int] = {}
    for number, piece in enumerate(pieces):
        if number % 2:
            language = re.match(r"```(\w*)\n", piece)
            form = LANGUAGES.get(language[1], "{.unparsed}") if language else "{.unparsed}"
            pieces[number] = re.sub(r"^```\w*", f"```{form}", piece)
        else:
            # A comment in front of a block says where it comes from.
            bare = re.sub(r"^<!-- .*? -->\n", "", piece, flags=re.MULTILINE)
            bare = LINK.sub(lambda found: link(found, path), bare)
            # The heading of the first level is the page.
            labelled = []
            for line in bare.split("\n"):
                found = re.fullmatch(r"(##+) (.*)", line)
                labelled.append(heading(found, path, count) if found else line)
            pieces[number] = "\n".join(labelled)
    sys.stdout.write("".join(pieces))


if __name__ == "__main__":
    main()
