"""The peer of a timeline request: reads a favourites file with plistlib and answers the rows that the large widget shows, as
the extension does: with links, and icons as base64.

peer_timeline.py FILE         once
peer_timeline.py FILE --loop  for every request on standard input, one line each
"""

import base64
import json
import plistlib
import sys

SHOWN = 7


def row(child, group):
    identifier = child["UUID"]
    icon = child.get("Icon")
    symbol = {"type": "symbol", "symbol": "doc", "foreground": "secondary"}
    picture = {"type": "image", "data": base64.b64encode(icon).decode(), "fallback": symbol} if icon else symbol
    return {"type": "link", "url": f"x-foliovault-item://{identifier}?widget=favorites", "id": identifier, "child": {
        "type": "hstack", "spacing": 8, "children": [
            {"type": "frame", "width": 18, "height": 18, "child": picture},
            {"type": "vstack", "children": [
                {"type": "text", "text": child.get("Name", "Untitled"), "lineLimit": 1, "font": {"style": "callout"}},
                {"type": "text", "text": child.get("Location") or group, "lineLimit": 1, "font": {"style": "caption2"}}]},
            {"type": "spacer"}]}}


def answer(path, number):
    with open(path, "rb") as file:
        root = plistlib.load(file)
    favourites = []
    for entry in root:
        group = entry.get("Name") if "Children" in entry else None
        favourites.extend((child, group) for child in entry.get("Children", [entry]) if "UUID" in child)
    rows = [row(child, group) for child, group in favourites[:SHOWN]]
    view = {"type": "vstack", "children": [{"type": "text", "text": f"{len(favourites)} items"}, *rows]}
    return json.dumps({"jsonrpc": "2.0", "id": number, "result": {"entries": [{"content": {"view": view}}]}})


if "--loop" in sys.argv:
    for line in sys.stdin:
        print(answer(sys.argv[1], json.loads(line)["id"]), flush=True)
else:
    print(answer(sys.argv[1], 1))
