#!/usr/bin/env python3
"""Lets doxygen see the C++ face as its users do.

    cpp_filter.py FILE

What a header declares becomes a group of its own, which its first comment explains. The inline
namespace goes, since nobody writes it, and so do `detail` and what is private or protected, which are
not for users.
"""

import pathlib
import re
import sys

DETAIL = re.compile(r"^namespace detail \{\n.*?^\}  // namespace detail$", re.DOTALL | re.MULTILINE)
INNER = re.compile(
    r"^( *)(?:private|protected):\n.*?(?=^\1(?:\};|public:|private:|protected:))",
    re.DOTALL | re.MULTILINE,
)
FILE = re.compile(r"/\*\*\n \* @file\n \* (.*?)\.\n")


def blank(match: re.Match[str]) -> str:
    """As many lines with nothing in them, so that warnings name the right ones."""
    return "\n" * match[0].count("\n")


def main() -> None:
    path = pathlib.Path(sys.argv[1])
    text = DETAIL.sub(blank, path.read_text())
    title = FILE.match(text)
    if title is None:
        sys.exit(f"{path}: the first comment is not the file's")
    group = "cpp" if path.parent.name == "netxml" else f"cpp_{path.stem}"
    parent = "" if group == "cpp" else "@ingroup cpp"
    text = text.replace(title[0], f"/**\n * @defgroup {group} {title[1]}\n * {parent}\n", 1)
    text = text.replace("inline namespace face {", f"/** @addtogroup {group}\n * @{{ */")
    text = text.replace("}  // namespace face", "/** @} */")
    text = INNER.sub(blank, text)
    # The guide is a page of the site.
    text = text.replace("docs/cpp.md", "[The guide](@ref md_docs_cpp)")
    sys.stdout.write(text)


if __name__ == "__main__":
    main()
