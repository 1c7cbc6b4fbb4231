"""The session in the agent's README is what happens."""
from __future__ import annotations

import re
import unittest
from pathlib import Path

from agent_session import MARK, AgentCase, hello, run

README = Path(__file__).parents[2] / "examples" / "agent" / "README.md"
DECLARATION = '<?xml version="1.0" encoding="UTF-8"?>'


def compact(text: str) -> str:
    """XML without the line breaks and indents that the page adds."""
    return re.sub(r">\s+<", "><", re.sub(r"\s*\n\s*", " ", text.strip()))


class Transcript(AgentCase):
    def test_the_readme_tells_what_happens(self) -> None:
        steps = re.findall(r"^(Client|Agent):\n\n```xml\n(.*?)```$", README.read_text(),
                           re.MULTILINE | re.DOTALL)
        said = [compact(text) for who, text in steps if who == "Client"]
        answered = [compact(text) for who, text in steps if who == "Agent"]
        self.assertEqual(len(said), len(answered))
        self.assertGreater(len(said), 4)
        status, output, error = run(self.config, hello("1.0") + b"".join(
            text.encode() + MARK for text in said))
        self.assertEqual((status, error), (0, ""))
        replies = output.decode().split(MARK.decode())[1:-1]
        self.assertEqual([compact(reply.removeprefix(DECLARATION)) for reply in replies], answered)


if __name__ == "__main__":
    unittest.main(verbosity=2)
