"""The peer of a timeline request: reads a favourites file with plistlib and prints the rows that a widget shows.

peer_timeline.py FILE         once
peer_timeline.py FILE --loop  for every line of standard input, as one line
"""

import json
import plistlib
import sys

CAP = 16


def rows(path):
    with open(path, "rb") as file:
        root = plistlib.load(file)
    favourites = []
    for entry in root:
        group = entry.get("Name") if "Children" in entry else None
        for child in entry.get("Children", [entry]):
            identifier = child.get("Path") or child.get("UUID") or child.get("SIUUID")
            if identifier:
                favourites.append((child.get("Name", "Untitled"), child.get("Location") or group,
                                   f"x-foliovault-item://{identifier}?widget=favorites"))
    return json.dumps({"count": len(favourites), "rows": favourites[:CAP]})


if "--loop" in sys.argv:
    for _ in sys.stdin:
        print(rows(sys.argv[1]), flush=True)
else:
    print(rows(sys.argv[1]))
