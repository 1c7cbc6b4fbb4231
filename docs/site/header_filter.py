#!/usr/bin/env python3
"""Lets doxygen see the sections of a header: what stands behind a rule of dashes becomes a group.

    header_filter.py FILE
"""

import pathlib
import re
import sys

RULE = re.compile(r"/\* -{20,}\n(.*?)\n \*/", re.DOTALL)


def main() -> None:
    path = pathlib.Path(sys.argv[1])
    text = path.read_text()
    pieces = RULE.split(text)
    # Everything stays in its line, so that warnings name the right ones.
    group = f"/** @defgroup {path.stem} netxml/{path.name} */ " if len(pieces) > 1 else ""
    result = group + pieces[0]
    for number, (section, content) in enumerate(zip(pieces[1::2], pieces[2::2])):
        words = [re.sub(r"^ \* ?", "", line) for line in section.split("\n")]
        first = words.index("") if "" in words else len(words)
        title, _, rest = " ".join(words[:first]).partition(". ")
        lines = [f"/** @defgroup {path.stem}_{number} {title}", f" * @ingroup {path.stem}"]
        lines += [f" * {line}" for line in ([rest] if rest else []) + words[first:]]
        lines += [" *"] * (len(words) + 1 - len(lines))
        result += "\n".join([*lines, " * @{ */"])
        # The last group ends in front of what closes the header.
        end = (
            content.rfind("#ifdef __cplusplus\n}")
            if number == len(pieces) // 2 - 1
            else len(content)
        )
        result += content[:end] + "/** @} */ " + content[end:]
    sys.stdout.write(result)


if __name__ == "__main__":
    main()
