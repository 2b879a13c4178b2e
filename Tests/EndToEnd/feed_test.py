"""The tips of feeds, judged by feedparser, and by Python's own codecs."""

import calendar
import html
import json
import os
import random
import re
import subprocess
import tempfile
import unittest
from datetime import datetime, timedelta, timezone
from pathlib import Path
from xml.sax.saxutils import escape

import feedparser

PROBE = Path(os.environ["TEST_PROGRAMS"]) / "feed_probe"
WORDS = "search the archive für größere Dokumente Straße naïve 日本語 💡 “quoted” tags — Ordner".split()
HTML_PIECES = (" ", "\n\n", "<p>", "</p>", "<br/>", '<a href="https://a.example/?b=c&amp;d">', "</a>", "&amp;", "&lt;b&gt;", "&nbsp;",
               "&#8217;", "&#x2014;", "&hellip;", "&quot;", "\t", "1 &lt; 2", "\u00a0", "\u2003")
ZONES = ("+0000", "GMT", "UT", "Z", "+0100", "-0430", "+02:00")


def plain(text):
    """The description's rules once more, as Python would put them."""
    text = re.sub("<[^>]+>", "", text)
    for name, character in (("lt", "<"), ("gt", ">"), ("quot", '"'), ("apos", "'"), ("nbsp", " "), ("amp", "&")):
        text = text.replace(f"&{name};", character)
    for pattern, radix in (("&#([0-9]+);", 10), ("&#x([0-9a-fA-F]+);", 16)):
        text = re.sub(pattern, lambda match, radix=radix: chr(int(match[1], radix)), text)
    return " ".join(text.split())


class Blog:
    """Feeds as blogs' software writes them, each of its own kind."""

    def __init__(self, seed):
        self.random = random.Random(seed)

    def words(self, count):
        return " ".join(self.random.choices(WORDS, k=self.random.randint(1, count)))

    def html(self):
        return "".join(self.random.choice((*HTML_PIECES, self.words(4))) for _ in range(self.random.randint(0, 80))) + "<p>end</p>"

    def element(self, name, text):
        blank = self.random.choice(("", "", "\n", " \t"))
        quoted = self.random.choice((f"<![CDATA[{text}]]>", escape(text, {"'": "&#39;", "💡": "&#x1F4A1;"})))
        return f"<{name}>{blank}{quoted}{blank}</{name}>"

    def item(self, number):
        moment = datetime(2025, 1, 1, tzinfo=timezone.utc) + timedelta(minutes=self.random.randrange(10**6))
        link = f"https://a.example/blog/{number}?a=1&b=2"
        fields = [self.element("title", self.words(6)), self.element("link", link), self.element("description", self.html()),
                  f"<pubDate>{moment:%a, %d %b %Y %H:%M:%S} {self.random.choice(ZONES)}</pubDate>"]
        if self.random.random() < .8:
            fields.append(f'<guid isPermaLink="false">{number}</guid>')
        fields += [self.element("category", name) for name in self.random.sample(("Tips", "tips", "TIPS", "News", "tip", "Größe"), 2)]
        self.random.shuffle(fields)
        return "<item>" + "\n".join(fields) + "</item>"

    def feed(self):
        items = "".join(self.item(number) for number in range(self.random.randint(0, 20)))
        return ('<rss version="2.0">'
                f"<channel><title>Blog</title><link>https://a.example</link><description>{self.words(9)}</description>{items}</channel></rss>")


def judged(document):
    """What feedparser sees."""
    feed = feedparser.parse(document, sanitize_html=False, resolve_relative_uris=False)
    tips = [{"title": html.unescape(entry.title), "description": plain(entry.description), "link": entry.link,
             "pubDate": calendar.timegm(entry.published_parsed), "guid": entry.get("id", entry.link)}
            for entry in feed.entries if any(tag.term.lower() == "tips" for tag in entry.tags)]
    return sorted(tips, key=lambda tip: -tip["pubDate"])


class Feeds(unittest.TestCase):
    maxDiff = None

    def tips(self, documents):
        with tempfile.TemporaryDirectory() as folder:
            files = [Path(folder, f"{number}.xml") for number in range(len(documents))]
            for file, document in zip(files, documents):
                file.write_bytes(document)
            return [json.loads(line) for line in subprocess.run([PROBE, *files], capture_output=True, check=True).stdout.splitlines()]

    def test_tips_are_those_that_feedparser_sees(self):
        documents = [f'<?xml version="1.0" encoding="UTF-8"?>\n{Blog(seed).feed()}'.encode() for seed in range(200)]
        found = self.tips(documents)
        self.assertGreater(sum(map(len, found)), 800)
        for seed, (document, tips) in enumerate(zip(documents, found)):
            self.assertEqual(tips, judged(document), f"seed {seed}")

    def test_every_encoding_is_its_utf8_twin(self):
        texts = {"ISO-8859-1": "äé£", "ISO-8859-2": "łžő", "ISO-8859-15": "€Šœ", "windows-1250": "łžő€", "windows-1251": "Привет",
                 "windows-1252": "€“Š”ü", "windows-1253": "αβγ", "windows-1254": "ğış", "windows-1255": "שלום", "windows-1256": "مرحبا",
                 "windows-1257": "ąčė", "windows-1258": "ăđơ", "Windows-1252": "€", "US-ASCII": "a", "UTF-16": "日本💡ä", "KOI8-R": "да",
                 "Shift_JIS": "日本", "EUC-JP": "日本", "GB18030": "中文💡", "Big5": "中文", "UTF-32": "💡"}
        documents = []
        for encoding, text in texts.items():
            # A section short, and one long.
            content = (f"<rss><item><title>{text}&#x20AC;</title><description><![CDATA[{text}]]>, <![CDATA[{text * 200}]]></description>"
                       "<category>tips</category><pubDate>Tue, 04 Mar 2025 09:30:00 Z</pubDate></item></rss>")
            for name in (encoding, "UTF-8"):
                documents.append(f"<?xml version='1.0' encoding='{name}'?>{content}".encode(name))
        found = self.tips(documents)
        for encoding, tips, twins in zip(texts, found[::2], found[1::2]):
            self.assertEqual(len(twins), 1)
            self.assertEqual(tips, twins, encoding)


if __name__ == "__main__":
    unittest.main()
