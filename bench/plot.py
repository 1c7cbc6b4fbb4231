"""Draws bars of ratios as SVG: netxml's throughput over that of each peer, on a logarithmic scale.
Bars to the right of the line at 1 are for netxml, bars to the left are for the peer."""

import math
from xml.sax.saxutils import escape

from contestants import PEERS
from ratios import Throughput

BARS = [
    ("tree", "message-2k"), ("tree", "config-1m"), ("tree", "attributes"), ("tree", "tiny"),
    ("tree", "text"), ("tree", "svg"), ("tree", "chinese"), ("events", "config-1m"),
    ("write", "config-1m"), ("copy", "config-1m"), ("validate", "config-1m"),
]
# Told apart by the labels first: the colours suit light and dark.
COLORS = {"pugixml": "#d97706", "rapidxml": "#b45309", "tinyxml2": "#7c9a3c", "libxml2": "#2f7ed8",
          "xerces": "#8b5cf6", "expat": "#0f9d8a"}
STYLE = """
text { font: 12px sans-serif; fill: #24292f; }
.head { font-weight: bold; }
.grid { stroke: #24292f; stroke-opacity: 0.15; }
.one { stroke: #24292f; stroke-opacity: 0.8; }
@media (prefers-color-scheme: dark) {
  text { fill: #e6edf3; }
  .grid, .one { stroke: #e6edf3; }
}
"""
WIDTH, LEFT, RIGHT, TOP, BAR, GAP = 860, 150, 60, 50, 15, 26
TICKS = [0.03125, 0.0625, 0.125, 0.25, 0.5, 1, 2, 4, 8, 16, 32, 64, 128]


class Scale:
    """From a ratio to a place on the page."""

    def __init__(self, ratios: list[float]) -> None:
        self._lowest = min(0.5, *ratios)
        self._highest = max(2.0, *ratios)

    def __call__(self, ratio: float) -> float:
        whole = math.log(self._highest / self._lowest)
        return LEFT + (WIDTH - LEFT - RIGHT) * math.log(ratio / self._lowest) / whole

    def ticks(self) -> list[float]:
        return [tick for tick in TICKS if self._lowest <= tick <= self._highest]


def _groups(notes: Throughput) -> list[tuple[str, list[tuple[str, float]]]]:
    groups = []
    for operation, document in BARS:
        ratios = [(peer, notes.against(document, operation, peer)) for peer in PEERS]
        found = [(peer, ratio.median) for peer, ratio in ratios if ratio]
        if found:
            groups.append((f"{operation}, {document}", found))
    return groups


def _bar(scale: Scale, peer: str, ratio: float, y: float) -> list[str]:
    left, right = sorted((scale(1), scale(ratio)))
    return [
        f'<text x="{LEFT - 8}" y="{y + BAR - 4}" text-anchor="end">{escape(peer)}</text>',
        f'<rect x="{left:.1f}" y="{y + 1}" width="{max(right - left, 1):.1f}" height="{BAR - 3}" '
        f'fill="{COLORS[peer]}"/>',
        f'<text x="{right + 5:.1f}" y="{y + BAR - 4}">{ratio:.2f}</text>',
    ]


def _tick(scale: Scale, tick: float, bottom: float) -> list[str]:
    x, name = scale(tick), "one" if tick == 1 else "grid"
    return [f'<line class="{name}" x1="{x:.1f}" x2="{x:.1f}" y1="{TOP - 6}" y2="{bottom}"/>',
            f'<text x="{x:.1f}" y="{TOP - 12}" text-anchor="middle">{tick:.2g}</text>']


def draw(notes: Throughput) -> str:
    groups = _groups(notes)
    scale = Scale([ratio for _, bars in groups for _, ratio in bars])
    parts: list[str] = []
    y = TOP
    for title, bars in groups:
        parts.append(f'<text class="head" x="8" y="{y + 13}">{escape(title)}</text>')
        y += 20
        for peer, ratio in bars:
            parts += _bar(scale, peer, ratio, y)
            y += BAR
        y += GAP - 14
    grid = [part for tick in scale.ticks() for part in _tick(scale, tick, y)]
    title = "Throughput of netxml over that of its peers (logarithmic; above 1 netxml is faster)"
    return "\n".join([
        f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {y + 10}" role="img" '
        f'aria-label="{escape(title)}">',
        f"<title>{escape(title)}</title>", f"<style>{STYLE}</style>",
        f'<text class="head" x="8" y="18">{escape(title)}</text>', *grid, *parts, "</svg>", ""])
