"""A web page that shows the gallery's widgets: the peer of drawing them is a browser that takes its picture."""

import html
import json
import re

SIZES = {"small": (170, 170), "medium": (364, 170), "large": (364, 364), "extraLarge": (752, 364)}
GAP = 20
WIDTH = GAP + sum(width + GAP for width, _ in SIZES.values())
FONTS = {20: "600 15px", 16: "700 13px", 15: "400 12px", 13: "500 10px"}
STYLE = """
body { margin: 0; background: #b9c7b0; color: rgba(0, 0, 0, .88); font-family: Inter, sans-serif }
div, span, svg, img { position: absolute; white-space: pre }
.tile { border-radius: 20px; background: rgba(245, 245, 247, .86); overflow: hidden; box-shadow: inset 0 0 0 .5px rgba(0, 0, 0, .1) }
.circle { border-radius: 50%; background: #0a84ff } .divider { background: rgba(0, 0, 0, .1) } .background { background: #0a84ff }
img { border-radius: 14% }
"""


def height(kinds):
    return GAP + len(kinds) * (SIZES["large"][1] + GAP)


def box(x, y, width, height):
    return f"left:{x}px;top:{y}px;width:{width}px;height:{height}px"


def item(frame, symbols, icons):
    place = box(*(frame[key] for key in ("x", "y", "width", "height")))
    if frame["type"] == "text":
        line = frame["height"] / (1 + frame["text"].count("\n"))
        return f'<span style="{place};font:{FONTS[round(line)]}/{line}px Inter">{html.escape(frame["text"])}</span>'
    if frame["type"] == "symbol":
        drawing = (symbols / f"{frame['symbol']}.svg").read_text(encoding="utf-8")
        return re.sub(r'<svg(.*?) width="24" height="24"', rf'<svg style="{place}"\1', drawing, count=1)
    if frame["type"] == "image":
        return f'<img style="{place}" src="data:image/png;base64,{next(icons)}">'
    return f'<div class="{frame["type"]}" style="{place}"></div>'


def images(node):
    """The icons of a view tree, in the order they are drawn in."""
    if isinstance(node, dict):
        if node.get("type") == "image":
            yield node["data"]
        node = list(node.values())
    if isinstance(node, list):
        for each in node:
            yield from images(each)


def page(kinds, read, symbols):
    """`read(kind, family, form)`: the text of the widget's frames or tree. `symbols`: their folder."""
    tiles = []
    for row, kind in enumerate(kinds):
        x = GAP
        for family, size in SIZES.items():
            icons = images(json.loads(read(kind, family, "tree")))
            items = "".join(item(frame, symbols, icons) for frame in json.loads(read(kind, family, "frames")))
            tiles.append(f'<div class="tile" style="{box(x, GAP + row * (SIZES["large"][1] + GAP), *size)}">{items}</div>\n')
            x += size[0] + GAP
    return f'<!doctype html>\n<meta charset="utf-8">\n<style>{STYLE}</style>\n{"".join(tiles)}'
