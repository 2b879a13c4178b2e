"""Tips from a real server, which programs reach through it as a proxy."""

import json
import time

from https_server import Authority, HttpsServer, body, drip, forever
from support import IDENTIFIER, Extension, HostTest, texts

PATH = "/2/apps/supportmaterials.xml.php?product=FOLIOvault&edition=Pro&version=4&lang=en"
HOST = "support.foliovault.example"
CACHE = "Caches/tips_cache.json"
AUTHORITY = Authority()
ENCODINGS = {"ISO-8859-1": "äé£", "ISO-8859-2": "łžő", "ISO-8859-15": "€Šœ", "windows-1250": "łžő€", "windows-1251": "Привет",
             "windows-1252": "€“Š”ü", "windows-1253": "αβγ", "windows-1254": "ğış", "windows-1255": "שלום", "windows-1256": "مرحبا",
             "windows-1257": "ąčė", "windows-1258": "ăđơ", "US-ASCII": "a", "UTF-16": "日本💡ä", "KOI8-R": "да",
             "Shift_JIS": "日本", "EUC-JP": "日本", "GB18030": "中文💡", "Big5": "中文", "UTF-32": "💡"}


def feed(title):
    return f"""<?xml version="1.0"?><rss version="2.0"><channel><title>Blog</title>
        <item><title>{title}</title><category>Tips</category><link>https://blog.example/1</link>
        <description><![CDATA[<p>About&nbsp;<b>{title}</b> &amp; more</p>]]></description>
        <pubDate>Tue, 20 Mar 2025 09:30:00 +0100</pubDate></item></channel></rss>""".encode()


class Tips(HostTest):
    def setUp(self):
        super().setUp()
        self.server = self.enterContext(HttpsServer(AUTHORITY, names=[HOST]))
        self.web = {"https_proxy": self.server.proxy, "SSL_CERT_FILE": str(AUTHORITY.file)}
        self.cache = self.home.parent / "container" / CACHE
        self.cache.parent.mkdir(parents=True)

    def start(self):
        return Extension(self.environment(**self.web))

    def test_a_confined_extension_downloads_and_keeps_them(self):
        """What its lists do not take: certificates, names and the web, and a cache."""
        self.server.pages[PATH] = body(feed("A tip"))
        shown = self.succeed("render", "TipsWidget", "--family", "large", "--format", "tree", variables=self.web)
        self.assertEqual(texts(json.loads(shown)), ["Tips", "Latest", "A tip", "Mar 20, 2025", "About A tip & more"])
        cache = self.containers / IDENTIFIER / CACHE
        self.assertEqual([tip["title"] for tip in json.loads(cache.read_text())["tips"]], ["A tip"])
        self.assertEqual(list(cache.parent.iterdir()), [cache])
        request, = self.server.requests
        self.assertEqual((request.host, request.path), (HOST, PATH))
        self.assertLessEqual({name for name, _ in request.headers}, {"Host", "Accept", "Accept-Encoding"})

    def test_every_encoding_is_read_as_its_utf8_twin(self):
        with self.start() as extension:
            for encoding, text in ENCODINGS.items():
                # One section short, and one long.
                content = (f"<rss><item><title>{text}&#x20AC;</title><description><![CDATA[{text}]]>, <![CDATA[{text * 200}]]></description>"
                           "<category>tips</category><pubDate>Tue, 04 Mar 2025 09:30:00 Z</pubDate></item></rss>")
                kept = []
                for name in (encoding, "UTF-8"):
                    self.cache.unlink(missing_ok=True)
                    self.server.pages[PATH] = body(f"<?xml version='1.0' encoding='{name}'?>{content}".encode(name))
                    extension.timeline(kind="TipsWidget")
                    kept.append(json.loads(self.cache.read_text())["tips"])
                self.assertEqual(len(kept[1]), 1)
                self.assertEqual(*kept, encoding)

    def test_the_end_of_input(self):
        """Requests are answered, after a download that is nearly done and without one that hangs."""
        tip = {"title": "Old", "description": "", "link": "https://blog.example", "pubDate": 0, "guid": "1"}
        for page, expected in ((drip([feed("New")[:300], feed("New")[300:]], .05), "New"), (forever(), "Old")):
            self.server.pages[PATH] = page
            self.cache.write_text(json.dumps({"timestamp": 0, "tips": [tip]}))
            with self.subTest(expected), self.start() as extension:
                waiting = {extension.send("timeline", kind="TipsWidget", configuration={}, environment={"family": "small"}) for _ in range(100)}
                end = time.monotonic()
                extension.process.stdin.close()
                answers = [extension.receive() for _ in waiting]
                self.assertEqual(extension.process.wait(10), 0)
                self.assertLess(time.monotonic() - end, 10)
                self.assertEqual({answer["id"] for answer in answers}, waiting)
                self.assertEqual({texts(answer["result"]["entries"][0])[1] for answer in answers}, {expected})
