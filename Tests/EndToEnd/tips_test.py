"""Tips from a real server, through the real extension: its feed's host is reached through the server as a proxy."""

import fcntl
import gzip
import json
import os
import shutil
import tempfile
import threading
import time
import unittest
from contextlib import ExitStack
from datetime import datetime, timedelta, timezone

from https_server import Authority, HttpsServer, Peer, body, cut, drip, flood, gzip_bomb, gzipped, hang, redirect
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

    def test_the_body_counts_whatever_the_status(self):
        rows = [(body(feed("A"), status=404), ["A"]), (body(feed("A"), status=500), ["A"]), (gzipped(feed("A")), ["A"]),
                (redirect(f"https://{HOST}/elsewhere"), ["B"]), (drip([feed("A")[:200], feed("A")[200:]], .1), ["A"]),
                (body(b"<html><body><p>404</p></body></html>", status=404), []), (body(b"", status=304), []), (body(b"", status=200), []),
                (body(b"<rss><channel/></rss>", status=500), []), (body(gzip.compress(feed("A"))), [])]
        self.server.pages["/elsewhere"] = body(feed("B"))
        for page, expected in rows:
            self.keep("Old", 7 * HOUR)
            self.publish(page)
            with self.extension() as extension:
                shown = self.shown(extension, "small")
                self.assertEqual(shown, ["Tips", *expected] if expected else ["No Tips", "Tips could not be loaded."])
                # An answer without tips leaves alone what is kept.
                self.assertEqual(self.kept(), expected or ["Old"])

    def test_failed_downloads_show_the_last_tips(self):
        self.server.pages["/loop"] = redirect(f"https://{HOST}/loop")
        pages = [cut(feed("New")[:100], announced=5000), flood(100 << 20), gzip_bomb(1 << 30), redirect(f"http://{HOST}/plain"),
                 redirect(f"https://{HOST}/loop"), redirect("file:///etc/passwd")]
        self.keep("Old", 1000 * HOUR)
        with self.extension() as extension:
            for page in pages:
                self.publish(page)
                self.assertEqual(self.shown(extension, "small"), ["Tips", "Old"])
            with open(f"/proc/{extension.process.pid}/status", encoding="ascii") as lines:
                peak = next(int(line.split()[1]) for line in lines if line.startswith("VmHWM"))
            if not os.environ.get("SANITIZED"):
                self.assertLess(peak, 64 << 10)
            self.assertEqual(self.kept(), ["Old"])
            self.cache.unlink()
            self.assertEqual(self.shown(extension, "small")[0], "No Tips")

    def test_servers_that_cannot_prove_who_they_are_are_not_believed(self):
        self.publish(body(feed("New")))
        self.keep("Old", 7 * HOUR)
        other = tempfile.TemporaryDirectory()
        self.addCleanup(other.cleanup)
        stranger = Authority(other.name)
        for variables in ({"SSL_CERT_FILE": str(stranger.file)}, {"SSL_CERT_FILE": "/nowhere"}, {"https_proxy": "http://127.0.0.1:1"}):
            environment = {**self.environment(https_proxy=self.server.proxy, SSL_CERT_FILE=str(authority.file)), **variables}
            with Extension(environment) as extension:
                self.assertEqual(self.shown(extension, "small"), ["Tips", "Old"], variables)
        self.assertEqual(self.server.requests, [])
        with self.extension(SSL_CERT_DIR="/nowhere") as extension:
            self.assertEqual(self.shown(extension, "small"), ["Tips", "New"])


class Caches(TipsTest):
    def test_fresh_ones_touch_no_network(self):
        self.publish(body(feed("New")))
        for age, expected, downloads in ((5 * HOUR, "Old", 0), (-1000 * HOUR, "Old", 0), (7 * HOUR, "New", 1)):
            self.server.requests.clear()
            self.keep("Old", age)
            with self.extension() as extension:
                self.assertEqual(self.shown(extension, "small"), ["Tips", expected])
                self.assertEqual(self.shown(extension, "small"), ["Tips", expected])
            self.assertEqual(len(self.server.requests), downloads)

    def test_they_age_by_the_clock(self):
        self.publish(body(feed("First")))
        with self.extension() as extension:
            self.assertEqual(self.shown(extension, "small"), ["Tips", "First"])
        self.publish(body(feed("Second")))
        for offset, expected in (("+5h", "First"), ("+7h", "Second"), ("+0", "Second")):
            clock = {"LD_PRELOAD": "libfaketime.so.1:libnss_wrapper.so", "FAKETIME": offset, "FAKETIME_DONT_FAKE_MONOTONIC": "1",
                     "LD_LIBRARY_PATH": ":".join(f"/usr/lib/{machine}/faketime" for machine in ("x86_64-linux-gnu", "aarch64-linux-gnu"))}
            with self.extension(**clock) as extension:
                self.assertEqual(self.shown(extension, "small"), ["Tips", expected], offset)

    def test_what_cannot_be_kept_is_shown_all_the_same(self):
        self.publish(body(feed("New")))
        names = [f".tips_cache.json.new{number}" for number in ("", *range(1, 8))]
        with ExitStack() as stuck, self.extension() as extension:
            for name in names:
                fcntl.flock(stuck.enter_context(open(self.caches / name, "wb")), fcntl.LOCK_EX)
            self.assertEqual(self.shown(extension, "small"), ["Tips", "New"])
            self.assertFalse(self.cache.exists())
        shutil.rmtree(self.caches)
        with self.extension() as extension:
            self.assertEqual(self.shown(extension, "small"), ["Tips", "New"])
            self.assertEqual(self.shown(extension, "small"), ["Tips", "New"])
        self.assertEqual(len(self.server.requests), 3)
        self.assertFalse(self.caches.exists())

    def test_broken_ones_are_none(self):
        self.publish(body(feed("New")))
        self.keep("Old", 0)
        whole = self.cache.read_bytes()
        for content in (b"", b"{}", whole[:-1], whole.replace(b'"guid"', b'"id"'), b"[" * 1_000_000, b"\xff" * 100):
            self.cache.write_bytes(content)
            with self.extension() as extension:
                self.assertEqual(self.shown(extension, "small"), ["Tips", "New"], content[:50])

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


class TipsOfTheDay(TipsTest):
    def test_depend_on_the_calendar_and_end_at_midnight(self):
        titles = [f"Tip {i}" for i in range(19)]
        self.publish(body(feed(*titles)))
        for variables, years in (({"TZ": "Asia/Tokyo"}, 0), ({"TZ": "Asia/Tokyo", "LC_TIME": "th_TH.UTF-8"}, 543)):
            with self.extension(**variables) as extension:
                timeline = extension.call("timeline", kind="TipsWidget", configuration={"mode": "tipOfTheDay"},
                                          environment={"family": "medium"})["result"]
                entry, = timeline["entries"]
                today = datetime.fromisoformat(entry["date"].replace("Z", "+00:00")) + timedelta(hours=9)
                h = (today.year + years) * 10000 + today.month * 100 + today.day
                h ^= h >> 16
                h = h * 0x45D9F3B & (1 << 64) - 1
                h ^= h >> 16
                self.assertEqual(texts(entry)[:3], ["Tips", "Tip of the Day", titles[h % len(titles)]])
                tomorrow = (today + timedelta(days=1)).date()
                self.assertEqual(timeline["reload"]["date"], f"{tomorrow - timedelta(days=1)}T15:00:00.000Z")


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

    def test_the_end_of_input_gives_downloads_up_and_answers(self):
        self.publish(hang())
        self.keep("Old", 7 * HOUR)
        talks = {"server": None, "proxy": lambda connection, pause: pause(),
                 "TLS": lambda connection, pause: (connection.recv(1000), connection.sendall(b"HTTP/1.1 200 OK\r\n\r\n"), pause())}
        for what, talk in talks.items():
            with self.subTest(what), Peer(talk) as peer:
                proxy = self.server.proxy if talk is None else f"http://127.0.0.1:{peer.port}"
                with Extension({**self.environment(SSL_CERT_FILE=str(authority.file)), "https_proxy": proxy}) as extension:
                    waiting = {extension.send("timeline", **self.REQUEST) for _ in range(100)}
                    wait_until(lambda: self.server.requests or peer.connections, "the download")
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
            while not self.server.requests:
                time.sleep(.01)
            extension.process.stdout.close()
            self.assertEqual(extension.process.wait(10), 0)


if __name__ == "__main__":
    unittest.main()
