"""The site in a browser, as wide as a phone and as a desk: no page is wider than its screen, and no
text is too small to read.
"""
from __future__ import annotations

import html
import json
import os
import re
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

HTML = Path(os.environ["NETXML_HTML"])
BROWSER = os.environ["NETXML_BROWSER"]
SMALLEST = 12  # pixels

# Goes through all pages in a frame of a given width: a window may have a least width, a frame has
# none.
SCRIPT = """
const pages = PAGES, frame = document.getElementById("frame"), report = [];
let next = 0;
function look(page) {
    const told = frame.contentDocument, width = told.documentElement.scrollWidth;
    if (width > WIDTH) report.push(page + " is " + width + " wide");
    const texts = told.createTreeWalker(told.body, NodeFilter.SHOW_TEXT);
    for (let text; (text = texts.nextNode());) {
        const around = text.parentElement, words = text.textContent.trim();
        const seen = words && around.offsetParent &&
                     !["SCRIPT", "STYLE", "NOSCRIPT"].includes(around.tagName);
        const size = parseFloat(told.defaultView.getComputedStyle(around).fontSize);
        if (seen && size < SMALLEST)
            report.push(page + " has text of " + size + ": " + words.slice(0, 30));
    }
}
frame.onload = () => {
    if (next > 0) look(pages[next - 1]);
    if (next < pages.length) frame.src = pages[next++];
    else document.getElementById("report").textContent = JSON.stringify({seen: next, report});
};
frame.src = "about:blank";
"""


class Browser(unittest.TestCase):
    def look(self, directory: Path, width: int) -> list[str]:
        """What is wrong with the pages in a frame of that width."""
        pages = sorted(path.name for path in directory.glob("*.html"))
        script = SCRIPT.replace("PAGES", json.dumps(pages)).replace("WIDTH", str(width))
        with tempfile.TemporaryDirectory(prefix="netxml-browser-") as work:
            # The frame's pages may only be looked into from beside them.
            shutil.copytree(directory, Path(work) / "site")
            start = Path(work) / "site/all-pages"
            frame = f'<iframe id="frame" style="border:0;width:{width}px;height:900px"></iframe>'
            code = script.replace("SMALLEST", str(SMALLEST))
            start.write_text(f'{frame}<pre id="report"></pre><script>{code}</script>')
            start = start.rename(start.with_suffix(".html"))
            ran = subprocess.run(
                [
                    BROWSER,
                    "--headless",
                    "--no-sandbox",
                    "--disable-gpu",
                    "--allow-file-access-from-files",
                    f"--user-data-dir={work}/profile",
                    "--virtual-time-budget=600000",
                    "--dump-dom",
                    f"--window-size={width + 200},1000",
                    start.as_uri(),
                ],
                capture_output=True,
                text=True,
                encoding="utf-8",
            )
        found = re.search(r'<pre id="report">(.+?)</pre>', ran.stdout, re.DOTALL)
        self.assertTrue(found, ran.stderr[-2000:])
        assert found
        result = json.loads(html.unescape(found[1]))
        self.assertEqual(result["seen"], len(pages))
        return list(result["report"])

    def test_a_phone(self) -> None:
        self.assertEqual(self.look(HTML, 390), [])

    def test_a_desk(self) -> None:
        self.assertEqual(self.look(HTML, 1280), [])

    def test_what_is_wrong_is_seen(self) -> None:
        with tempfile.TemporaryDirectory() as work:
            Path(work, "wide.html").write_text('<p style="width:500px">wide</p>')
            Path(work, "tiny.html").write_text('<p style="font-size:8px">tiny</p>')
            self.assertEqual(
                self.look(Path(work), 390),
                ["tiny.html has text of 8: tiny", "wide.html is 508 wide"],
            )


if __name__ == "__main__":
    unittest.main()
