"""The peer of a timeline request: reads a file of favourites, or a reading list, with plistlib and answers the rows that the
large widget shows, as the extension does: with links, and icons as base64.

peer_timeline.py FILE         once
peer_timeline.py FILE --loop  for every request on standard input, one line each
"""

import base64
import json
import plistlib
import sys

SHOWN = 7


def row(identifier, title, subtitle, icon):
    symbol = {"type": "symbol", "symbol": "doc", "foreground": "secondary"}
    picture = {"type": "image", "data": base64.b64encode(icon).decode(), "fallback": symbol} if icon else symbol
    return {"type": "link", "url": f"x-foliovault-item://{identifier}?widget=favorites", "id": identifier, "child": {
        "type": "hstack", "spacing": 8, "children": [
            {"type": "frame", "width": 18, "height": 18, "child": picture},
            {"type": "vstack", "children": [
                {"type": "text", "text": title, "lineLimit": 1, "font": {"style": "callout"}},
                {"type": "text", "text": subtitle, "lineLimit": 1, "font": {"style": "caption2"}}]},
            {"type": "spacer"}]}}


def answer(path, number):
    with open(path, "rb") as file:
        root = plistlib.load(file)
    items = []
    for entry in root:
        if "title" in entry and "URL" in entry:
            items.append((entry["URL"], entry["title"], entry.get("type"), entry.get("icon")))
        group = entry.get("Name") if "Children" in entry else None
        items.extend((child["UUID"], child.get("Name", "Untitled"), child.get("Location") or group, child.get("Icon"))
                     for child in entry.get("Children", [entry]) if "UUID" in child)
    rows = [row(*item) for item in items[:SHOWN]]
    view = {"type": "vstack", "children": [{"type": "text", "text": f"{len(items)} items"}, *rows]}
    return json.dumps({"jsonrpc": "2.0", "id": number, "result": {"entries": [{"content": {"view": view}}]}})


if "--loop" in sys.argv:
    for line in sys.stdin:
        print(answer(sys.argv[1], json.loads(line)["id"]), flush=True)
else:
    print(answer(sys.argv[1], 1))
