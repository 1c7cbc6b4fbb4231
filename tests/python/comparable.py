"""Trees of netxml and of ElementTree in one form, in which they can be compared."""
import xml.etree.ElementTree as ElementTree
from typing import Any

import netxml

BLANKS = " \t\r\n"

# A tag, the attributes, and by turns a text and a child: texts are trimmed of blanks at both ends,
# as netxml's trees are (a run of text ends where an element begins or ends).
Form = tuple[str, dict[str, str], list[Any]]


def of_netxml(top: netxml.Element) -> Form:
    """The form of an element; without recursion, for deep trees."""
    result: Form = (top.tag, dict(top.attributes), [""])
    waiting = [(top, result)]
    while waiting:
        element, form = waiting.pop()
        for child in element.children:
            if isinstance(child, netxml.Text):
                form[2][-1] += child.value
            elif isinstance(child, netxml.Element):
                below: Form = (child.tag, dict(child.attributes), [""])
                form[2].extend((below, ""))
                waiting.append((child, below))
    return result


def of_element_tree(top: "ElementTree.Element") -> Form:
    """The same of ElementTree's."""
    result: Form = (top.tag, dict(top.attrib), [_trimmed(top.text)])
    waiting = [(top, result)]
    while waiting:
        element, form = waiting.pop()
        for child in element:
            below: Form = (child.tag, dict(child.attrib), [_trimmed(child.text)])
            form[2].extend((below, _trimmed(child.tail)))
            waiting.append((child, below))
    return result


def _trimmed(text: str | None) -> str:
    return (text or "").strip(BLANKS)
