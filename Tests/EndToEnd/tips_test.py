"""Tips from a real server in the real extension, which reaches the feed's host through the server as a proxy."""

import json
import time
from datetime import datetime, timezone

from https_server import Authority, HttpsServer, body, drip, forever
from support import Extension, HomeTest, texts

REFERENCE = datetime(2001, 1, 1, tzinfo=timezone.utc)
PATH = "/2/apps/supportmaterials.xml.php?product=FOLIOvault&edition=Pro&version=4&lang=en"
HOST = "support.foliovault.example"
HOUR = 3600
AUTHORITY = Authority()
ENCODINGS = {"ISO-8859-1": "äé£", "ISO-8859-2": "łžő", "ISO-8859-15": "€Šœ", "windows-1250": "łžő€", "windows-1251": "Привет",
             "windows-1252": "€“Š”ü", "windows-1253": "αβγ", "windows-1254": "ğış", "windows-1255": "שלום", "windows-1256": "مرحبا",
             "windows-1257": "ąčė", "windows-1258": "ăđơ", "US-ASCII": "a", "UTF-16": "日本💡ä", "KOI8-R": "да",
             "Shift_JIS": "日本", "EUC-JP": "日本", "GB18030": "中文💡", "Big5": "中文", "UTF-32": "💡"}


def feed(*titles):
    items = "".join(f"""<item><title>{title}</title><category>Tips</category><link>https://blog.example/{number}</link>
        <description><![CDATA[<p>About&nbsp;<b>{title}</b> &amp; more</p>]]></description>
        <pubDate>Tue, {20 - number:02} Mar 2025 09:30:00 +0100</pubDate></item>""" for number, title in enumerate(titles))
    return f'<?xml version="1.0"?><rss version="2.0"><channel><title>Blog</title>{items}</channel></rss>'.encode()


class Tips(HomeTest):
    REQUEST = {"kind": "TipsWidget", "configuration": {}, "environment": {"family": "small"}}

    def setUp(self):
        super().setUp()
        self.server = self.enterContext(HttpsServer(AUTHORITY, names=[HOST]))
        self.cache = self.home.parent / "container" / "Caches" / "tips_cache.json"
        self.cache.parent.mkdir(parents=True)

    def extension(self):
        return Extension(self.environment(https_proxy=self.server.proxy, SSL_CERT_FILE=str(AUTHORITY.file)))

    def publish(self, page):
        self.server.pages[PATH] = page

    def keep(self, title, age):
        """A cache written `age` seconds ago."""
        then = (datetime.now(timezone.utc) - REFERENCE).total_seconds() - age
        tip = {"title": title, "description": "", "link": "https://blog.example", "pubDate": then, "guid": title}
        self.cache.write_text(json.dumps({"timestamp": then, "tips": [tip]}))

    def kept(self):
        return json.loads(self.cache.read_text())["tips"] if self.cache.exists() else []

    def shown(self, extension):
        return texts(extension.timeline("small", kind="TipsWidget")["entries"][0])

    def test_a_download_is_shown_and_kept(self):
        self.publish(body(feed("First", "Second &amp; &lt;third&gt;")))
        with self.extension() as extension:
            entry, = extension.timeline("large", kind="TipsWidget")["entries"]
            self.assertEqual(texts(entry), ["Tips", "Latest", "First", "Mar 20, 2025", "About First & more"])
            self.assertEqual([tip["title"] for tip in self.kept()], ["First", "Second & <third>"])
            now = (datetime.now(timezone.utc) - REFERENCE).total_seconds()
            self.assertLess(abs(json.loads(self.cache.read_text())["timestamp"] - now), 60)
            self.assertEqual(self.shown(extension), ["Tips", "First"])
        request, = self.server.requests
        self.assertEqual((request.host, request.path, request.is_proxied), (HOST, PATH, True))
        self.assertLessEqual({name for name, _ in request.headers}, {"Host", "Accept", "Accept-Encoding"})
        self.assertEqual(list(self.cache.parent.iterdir()), [self.cache])

    def downloaded(self, documents):
        """The tips that are kept of each feed."""
        with self.extension() as extension:
            for document in documents:
                self.cache.unlink(missing_ok=True)
                self.publish(body(document))
                self.shown(extension)
                yield self.kept()

    def test_every_encoding_is_read_as_its_utf8_twin(self):
        documents = []
        for encoding, text in ENCODINGS.items():
            # One section short, and one long.
            content = (f"<rss><item><title>{text}&#x20AC;</title><description><![CDATA[{text}]]>, <![CDATA[{text * 200}]]></description>"
                       "<category>tips</category><pubDate>Tue, 04 Mar 2025 09:30:00 Z</pubDate></item></rss>")
            documents += [f"<?xml version='1.0' encoding='{name}'?>{content}".encode(name) for name in (encoding, "UTF-8")]
        found = list(self.downloaded(documents))
        for encoding, tips, twins in zip(ENCODINGS, found[::2], found[1::2]):
            self.assertEqual(len(twins), 1)
            self.assertEqual(tips, twins, encoding)

    def test_the_end_of_input(self):
        """Requests are answered, after a download that is nearly done and without one that hangs."""
        for page, expected in ((drip([feed("New")[:300], feed("New")[300:]], .05), "New"), (forever(), "Old")):
            self.publish(page)
            self.keep("Old", 7 * HOUR)
            with self.subTest(expected), self.extension() as extension:
                waiting = {extension.send("timeline", **self.REQUEST) for _ in range(100)}
                end = time.monotonic()
                extension.process.stdin.close()
                answers = [extension.receive() for _ in waiting]
                self.assertEqual(extension.process.wait(10), 0)
                self.assertLess(time.monotonic() - end, 10)
                self.assertEqual({answer["id"] for answer in answers}, waiting)
                self.assertEqual({texts(answer["result"]["entries"][0])[1] for answer in answers}, {expected})
