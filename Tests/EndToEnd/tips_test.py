"""Tips from a real server in the real extension, which reaches the feed's host through the server as a proxy."""

import gzip
import json
import os
import tempfile
import threading
import time
import unittest
from datetime import datetime, timezone

from https_server import Authority, HttpsServer, body, drip, gzip_bomb, hang, stop
from support import Extension, HomeTest, favourites, nodes, texts, wait_until

REFERENCE = datetime(2001, 1, 1, tzinfo=timezone.utc)
PATH = "/2/apps/supportmaterials.xml.php?product=FOLIOvault&edition=Pro&version=4&lang="
HOST = "support.foliovault.example"
HOUR = 3600


def feed(*titles):
    items = "".join(f"""<item><title>{title}</title><category>Tips</category><link>https://blog.example/{number}</link>
        <description><![CDATA[<p>About&nbsp;<b>{title}</b> &amp; more</p>]]></description>
        <pubDate>Tue, {20 - number:02} Mar 2025 09:30:00 +0100</pubDate></item>""" for number, title in enumerate(titles))
    return f'<?xml version="1.0"?><rss version="2.0"><channel><title>Blog</title>{items}</channel></rss>'.encode()


def setUpModule():
    folder = tempfile.TemporaryDirectory()
    unittest.addModuleCleanup(folder.cleanup)
    global authority
    authority = Authority(folder.name)


class TipsTest(HomeTest):
    def setUp(self):
        super().setUp()
        self.server = HttpsServer(authority, names=[HOST])
        self.server.__enter__()
        self.addCleanup(self.server.__exit__)
        self.caches = self.home.parent / "container" / "Caches"
        self.caches.mkdir(parents=True)
        self.cache = self.caches / "tips_cache.json"

    def extension(self, **more):
        return Extension(self.environment(https_proxy=self.server.proxy, SSL_CERT_FILE=str(authority.file), **more))

    def publish(self, page, language="en"):
        self.server.pages[PATH + language] = page

    def keep(self, title, age):
        """A cache written `age` seconds ago."""
        then = (datetime.now(timezone.utc) - REFERENCE).total_seconds() - age
        tip = {"title": title, "description": "", "link": "https://blog.example", "pubDate": then, "guid": title}
        self.cache.write_text(json.dumps({"timestamp": then, "tips": [tip]}))

    def kept(self):
        return [tip["title"] for tip in json.loads(self.cache.read_text())["tips"]]

    def shown(self, extension, family="medium", **configuration):
        return texts(extension.timeline(family, kind="TipsWidget", **configuration)["entries"][0])


class Feeds(TipsTest):
    def test_a_download_is_shown_and_kept(self):
        self.publish(body(feed("First", "Second & <third>".replace("&", "&amp;").replace("<", "&lt;"))))
        with self.extension() as extension:
            before = datetime.now(timezone.utc)
            timeline = extension.timeline("large", kind="TipsWidget")
            entry, = timeline["entries"]
            self.assertEqual(texts(entry), ["Tips", "Latest", "First", "Mar 20, 2025", "About First & more"])
            self.assertEqual(entry["content"]["widgetURL"], "x-foliovault://open-url?location=https://blog.example/0&widget=tips")
            self.assertFalse([node for node in nodes(entry["content"]["view"]) if node["type"] == "link"])
            reload = datetime.fromisoformat(timeline["reload"]["date"].replace("Z", "+00:00"))
            self.assertLess(abs((reload - before).total_seconds() - 6 * HOUR), 60)
            self.assertEqual(self.kept(), ["First", "Second & <third>"])
            kept = json.loads(self.cache.read_text())
            self.assertLess(abs(kept["timestamp"] - (before - REFERENCE).total_seconds()), 60)
            self.assertEqual(kept["tips"][0]["pubDate"], (datetime(2025, 3, 20, 8, 30, tzinfo=timezone.utc) - REFERENCE).total_seconds())
            self.assertEqual(self.shown(extension, "small"), ["Tips", "First"])
        request, = self.server.requests
        self.assertEqual((request.host, request.path, request.proxied), (HOST, PATH + "en", True))
        self.assertLessEqual({name for name, _ in request.headers}, {"Host", "Accept", "Accept-Encoding"})
        self.assertEqual(sorted(path.name for path in self.caches.iterdir()), ["tips_cache.json"])

    def test_germans_get_the_german_feed_and_dates(self):
        self.publish(body(feed("Deutsch")), "de")
        self.publish(body(feed("English")), "en")
        rows = [({"LANG": "de_AT.UTF-8"}, ["Tipps", "Neuester", "Deutsch", "20. März 2025"]),
                ({"LANG": "en_US.UTF-8", "LANGUAGE": "de"}, ["Tipps", "Neuester", "Deutsch", "Mar 20, 2025"]),
                ({"LANG": "fr_FR.UTF-8", "LANGUAGE": "fr:de"}, ["Tipps", "Neuester", "English", "20 mars 2025"]),
                ({"LANG": "C", "LANGUAGE": "de"}, ["Tips", "Latest", "English", "Mar 20, 2025"])]
        for variables, expected in rows:
            with self.subTest(variables), self.extension(**variables) as extension:
                self.cache.unlink(missing_ok=True)
                self.assertEqual(self.shown(extension, "large")[:4], expected)

    def test_pages(self):
        """The body counts, whatever the status. A failed download shows the last tips, and what has none leaves those on the disk."""
        none = ["No Tips", "Tips could not be loaded."]
        rows = [(body(feed("A"), status=404), ["Tips", "A"]), (body(b"<html><body><p>404</p></body></html>", status=404), none), (body(b"", status=304), none),
                (body(gzip.compress(feed("A"))), none), (stop(feed("New")[:100], 5000, closes=True), ["Tips", "Old"]), (gzip_bomb(1 << 30), ["Tips", "Old"])]
        with self.extension() as extension:
            for page, expected in rows:
                self.keep("Old", 1000 * HOUR)
                self.publish(page)
                self.assertEqual(self.shown(extension, "small"), expected)
                self.assertEqual(self.kept(), [expected[1] if expected is not none else "Old"])
            with open(f"/proc/{extension.process.pid}/status", encoding="ascii") as lines:
                peak = next(int(line.split()[1]) for line in lines if line.startswith("VmHWM"))
            if not os.environ.get("SANITIZED"):
                self.assertLess(peak, 64 << 10)


class Caches(TipsTest):
    def test_they_age_with_the_clock(self):
        self.publish(body(feed("First")))
        with self.extension() as extension:
            self.assertEqual(self.shown(extension, "small"), ["Tips", "First"])
        self.publish(body(feed("Second")))
        for offset, expected in (("+5h", "First"), ("+7h", "Second"), ("+0", "Second")):
            clock = {"LD_PRELOAD": "libfaketime.so.1:libnss_wrapper.so", "FAKETIME": offset, "FAKETIME_DONT_FAKE_MONOTONIC": "1",
                     "LD_LIBRARY_PATH": ":".join(f"/usr/lib/{machine}/faketime" for machine in ("x86_64-linux-gnu", "aarch64-linux-gnu"))}
            with self.extension(**clock) as extension:
                self.assertEqual(self.shown(extension, "small"), ["Tips", expected], offset)

    def test_many_who_write_at_once_leave_one_whole_file(self):
        self.publish(body(feed(*(f"Tip {i}" for i in range(19)))))
        extensions = [self.extension() for _ in range(4)]
        for _ in range(5):
            self.cache.unlink(missing_ok=True)
            numbers = [(extension, extension.send("timeline", kind="TipsWidget", configuration={}, environment={"family": "small"}))
                       for extension in extensions]
            for extension, number in numbers:
                self.assertEqual(extension.receive()["id"], number)
            self.assertEqual(len(self.kept()), 19)
        for extension in extensions:
            extension.__exit__()
        self.assertEqual({path.name for path in self.caches.iterdir()}, {"tips_cache.json"})


class Waiting(TipsTest):
    REQUEST = {"kind": "TipsWidget", "configuration": {}, "environment": {"family": "small"}}

    def test_any_number_shares_a_download_and_holds_up_nobody(self):
        self.write(favourites(3))
        release = threading.Event()

        def page(handler):
            release.wait(30)
            body(feed("New"))(handler)
        self.publish(page)
        with self.extension() as extension:
            waiting = {extension.send("timeline", **self.REQUEST) for _ in range(1000)}
            for _ in range(5):
                self.assertIn("3 items", texts(extension.timeline("medium")["entries"][0]))
            release.set()
            answers = [extension.receive() for _ in waiting]
            self.assertEqual({answer["id"] for answer in answers}, waiting)
            self.assertEqual({texts(answer["result"]["entries"][0])[1] for answer in answers}, {"New"})
        self.assertEqual(len(self.server.requests), 1)

    def test_the_end_of_input_cancels_downloads_and_answers(self):
        self.publish(hang())
        self.keep("Old", 7 * HOUR)
        with self.extension() as extension:
            waiting = {extension.send("timeline", **self.REQUEST) for _ in range(100)}
            wait_until(lambda: self.server.requests, "the download")
            end = time.monotonic()
            extension.process.stdin.close()
            answers = [extension.receive() for _ in waiting]
            self.assertEqual(extension.process.wait(10), 0)
            self.assertLess(time.monotonic() - end, 2)
            self.assertEqual({answer["id"] for answer in answers}, waiting)
            self.assertEqual({texts(answer["result"]["entries"][0])[1] for answer in answers}, {"Old"})

    def test_a_download_that_is_nearly_done_is_waited_for_at_the_end(self):
        self.publish(drip([feed("New")[:300], feed("New")[300:]], .05))
        with self.extension() as extension:
            extension.send("timeline", **self.REQUEST)
            extension.process.stdin.close()
            self.assertEqual(texts(extension.receive()["result"]["entries"][0]), ["Tips", "New"])
            self.assertEqual(extension.process.wait(10), 0)

    def test_a_host_that_is_gone_ends_the_download(self):
        self.publish(hang())
        with self.extension() as extension:
            extension.send("timeline", **self.REQUEST)
            wait_until(lambda: self.server.requests, "the download")
            extension.process.stdout.close()
            self.assertEqual(extension.process.wait(10), 0)


if __name__ == "__main__":
    unittest.main()
