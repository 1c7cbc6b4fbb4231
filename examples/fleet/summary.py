"""What the documents of a fleet came to, for each document and for each path."""
import re
from collections import Counter
from collections.abc import Iterable

from checking import INVALID, NOT_WELL_FORMED, UNREADABLE, VALID, Finding

_POSITION = re.compile(r"\[[0-9]+\]")


class Summary:
    """Collects findings in any order; what it says does not depend on it."""

    def __init__(self) -> None:
        self.counts: Counter[str] = Counter()
        self.places: Counter[tuple[str, int]] = Counter()
        """By path without positions and code: how many documents are wrong there."""
        self.wrong: list[Finding] = []

    def add(self, findings: Iterable[Finding]) -> None:
        for finding in findings:
            self.counts[finding.status] += 1
            if finding.status == VALID:
                continue
            self.wrong.append(finding)
            if finding.status == INVALID:
                self.places[_POSITION.sub("", finding.path), finding.code] += 1

    def lines(self, shown: int | None) -> Iterable[str]:
        """The summary; of the documents that are wrong the first so many by name, None for all."""
        total = sum(self.counts.values())
        parts = ", ".join(
            f"{self.counts[status]} {status}"
            for status in (VALID, INVALID, NOT_WELL_FORMED, UNREADABLE)
        )
        yield f"{total} documents: {parts}"
        if not self.wrong:
            return
        yield ""
        yield "by path"
        for (path, code), count in sorted(self.places.items(), key=lambda row: (-row[1], row[0])):
            yield f"{count:8}  code {code:<2}  {path}"
        yield ""
        yield "by document"
        wrong = sorted(self.wrong)
        for finding in wrong[:shown]:
            place = f" at {finding.path}" if finding.path else ""
            yield f"  {finding.name}: {finding.status}{place}"
            yield f"    {finding.sentence} [{finding.code}]"
        if shown is not None and len(wrong) > shown:
            yield f"  and {len(wrong) - shown} more (--show N)"

    def status(self) -> int:
        """An exit status, as the netxml tool has it: the worst there was."""
        ranks = {VALID: 0, NOT_WELL_FORMED: 1, INVALID: 3, UNREADABLE: 4}
        return max((ranks[status] for status in self.counts), default=0)
