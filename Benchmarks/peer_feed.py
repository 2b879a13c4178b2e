"""The peer of the feed's parser: reads a feed with feedparser and makes its tips of it. Prints the median in seconds.

peer_feed.py FILE ROUNDS
"""

import calendar
import re
import statistics
import sys
import time

import feedparser

with open(sys.argv[1], "rb") as file:
    document = file.read()


def plain(html):
    text = re.sub("<[^>]+>", "", html)
    for name, character in (("lt", "<"), ("gt", ">"), ("quot", '"'), ("apos", "'"), ("nbsp", " "), ("amp", "&")):
        text = text.replace(f"&{name};", character)
    return " ".join(re.sub("&#([0-9]+);", lambda match: chr(int(match[1])), text).split())


def tips():
    # Cleaning the HTML and completing its addresses is left out: tips need neither.
    feed = feedparser.parse(document, sanitize_html=False, resolve_relative_uris=False)
    found = [(calendar.timegm(entry.published_parsed), entry.title, plain(entry.description), entry.link, entry.id)
             for entry in feed.entries if any(tag.term.lower() == "tips" for tag in entry.tags)]
    return sorted(found, key=lambda tip: -tip[0])


times = []
for _ in range(int(sys.argv[2])):
    start = time.perf_counter()
    if not tips():
        sys.exit("nothing was read")
    times.append(time.perf_counter() - start)
print(statistics.median(times))
