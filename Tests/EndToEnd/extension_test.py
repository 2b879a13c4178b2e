"""The extension's process, as any host may drive it."""

import json
import os
import plistlib
import signal
import socket
import subprocess
import threading
import unittest
from datetime import datetime, timedelta, timezone

from support import EXTENSION, FAMILIES, Extension, HomeTest, favourites, nodes, texts

PNG = bytes.fromhex("89504e470d0a1a0a0000000d4948445200000001000000010806000000")


class Answers(HomeTest):
    def test_a_timeline_is_the_file_as_it_is_now(self):
        with Extension(self.environment()) as extension:
            self.assertIn("No Favorites", texts(extension.timeline()["entries"][0]))
            self.write([{"Name": "Work", "Children": favourites(17, Icon=PNG)}, *favourites(3)])
            before = datetime.now(timezone.utc) - timedelta(seconds=1)
            timeline = extension.timeline()
            entry, = timeline["entries"]
            self.assertIn("20 items", texts(entry))
            self.assertIn("+13 more", texts(entry))
            date = datetime.fromisoformat(entry["date"].replace("Z", "+00:00"))
            reload = datetime.fromisoformat(timeline["reload"]["date"].replace("Z", "+00:00"))
            self.assertLess(abs((date - before).total_seconds()), 60)
            self.assertLess(abs((reload - date).total_seconds() - 300), 1)
            self.assertRegex(entry["date"], r"^\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}Z$")
            self.assertIn("17 items", texts(extension.timeline(group="Work")["entries"][0]))
            self.assertIn("No Favorites", texts(extension.timeline(group="Gone")["entries"][0]))
            self.file.unlink()
            self.assertIn("No Favorites", texts(extension.timeline()["entries"][0]))

    def test_links_and_icons_arrive(self):
        self.write([{"Name": "A\nB", "UUID": "U/1?x#y", "Icon": PNG}, {"Name": "no URL", "UUID": "{U 2}"},
                    {"Name": "Base", "Path": str(self.home / "Data" / "B & C.fvBase2")}], plistlib.FMT_XML)
        with Extension(self.environment()) as extension:
            view = extension.timeline()["entries"][0]["content"]["view"]
            links = [(node["url"], node["id"]) for node in nodes(view) if node["type"] == "link"]
            path = str(self.home / "Data" / "B & C.fvBase2")
            self.assertEqual(links[0], ("x-foliovault-item://U/1?x&widget=favorites#y", "item:U/1?x#y"))
            self.assertEqual(links[1][1], "db:" + path)
            self.assertRegex(links[1][0], r"^x-foliovault://open-path\?path=/.*Ada%20%C3%84/Data/B%20%26%20C.fvBase2&widget=favorites$")
            self.assertEqual(len(links), 2)
            self.assertIn("~/Data/B & C.fvBase2", texts({"content": {"view": view}}))
            images = [node for node in nodes(view) if node["type"] == "image"]
            self.assertEqual(len(images), 1)
            self.assertEqual(images[0]["fallback"]["symbol"], "doc")
            tinted = extension.timeline(renderingMode="tinted")["entries"][0]["content"]["view"]
            self.assertFalse([node for node in nodes(tinted) if node["type"] == "image"])

    def test_groups_are_offered(self):
        self.write([{"Name": "Äpfel", "Children": []}, {"Name": "Work", "Children": []}])
        with Extension(self.environment(LANG="en_GB.UTF-8")) as extension:
            def ids(**more):
                answer = extension.call("options", kind="FavoritesWidget", parameter="group", **more)["result"]
                self.assertEqual(answer["default"], {"id": "_all", "title": "All"})
                return [option["id"] for option in answer["options"]]
            self.assertEqual(ids(), ["_all", "Äpfel", "Work"])
            self.assertEqual(ids(matching="ÄPF"), ["Äpfel"])
            self.assertEqual(ids(identifiers=["Gone"]), ["Gone"])

    def test_germans_read_german_wherever_the_machine_comes_from(self):
        self.write(favourites(9))
        german, english = ("Favoriten", "+2 weitere"), ("Favorites", "+2 more")
        rows = [({"LANG": "de_DE.UTF-8"}, german), ({"LANG": "de_AT"}, german), ({"LC_ALL": "de_CH.UTF-8", "LANG": "fr"}, german),
                ({"LANG": "fr_FR.UTF-8", "LANGUAGE": "fr:de:en"}, german), ({"LANG": "en_US.UTF-8", "LANGUAGE": "en:de"}, english),
                ({"LANG": "C", "LANGUAGE": "de"}, english), ({"LANG": "ja_JP.UTF-8"}, english), ({}, english)]
        for variables, (title, more) in rows:
            with self.subTest(variables), Extension(self.environment(**variables)) as extension:
                shown = texts(extension.timeline()["entries"][0])
                self.assertIn(title, shown)
                self.assertIn(more, shown)

    def test_a_host_may_use_one_socket_for_both_ways(self):
        ours, theirs = socket.socketpair()
        with subprocess.Popen([EXTENSION], stdin=theirs, stdout=theirs, env=self.environment()) as process:
            theirs.close()
            ours.sendall(b'{"jsonrpc":"2.0","id":"a","method":"previews"}\n')
            ours.shutdown(socket.SHUT_WR)
            answer = json.loads(ours.makefile().read())
            self.assertEqual(len(answer["result"]["previews"]), 4)
            self.assertEqual(process.wait(10), 0)
        ours.close()


class BadLibraries(HomeTest):
    def rows(self, family="extraLarge"):
        with Extension(self.environment()) as extension:
            entry, = extension.timeline(family)["entries"]
            return sum(node["type"] == "link" for node in nodes(entry["content"]["view"])), texts(entry)

    def test_what_is_no_file_is_not_waited_for(self):
        self.file.mkdir()
        self.assertIn("No Favorites", self.rows()[1])
        self.file.rmdir()
        os.mkfifo(self.file)
        self.assertIn("No Favorites", self.rows()[1])
        self.file.unlink()
        self.file.symlink_to("/dev/zero")
        self.assertIn("No Favorites", self.rows()[1])

    def test_files_cut_off_anywhere_never_end_the_process(self):
        root = [{"Name": "G", "Children": favourites(2, Icon=PNG, Label=3)}, *favourites(2)]
        for form in (plistlib.FMT_XML, plistlib.FMT_BINARY):
            whole = plistlib.dumps(root, fmt=form)
            with Extension(self.environment()) as extension:
                for length in range(len(whole)):
                    self.file.write_bytes(whole[:length])
                    shown = texts(extension.timeline("medium")["entries"][0])
                    # Only the line's end after the closing tag may be missing.
                    self.assertEqual("No Favorites" in shown, length < len(whole) - 1 or form == plistlib.FMT_BINARY, length)

    def test_a_hundred_thousand_favourites_are_counted(self):
        self.write(favourites(100_000))
        links, shown = self.rows()
        self.assertEqual(links, 16)
        self.assertIn("100000 items", shown)

    def test_odd_names_arrive_as_they_are(self):
        names = ["line\nbreak", "עברית", "x" * 10_000, "\u202eover", "😀" * 100, ""]
        self.write([{"Name": name, "UUID": f"U{i}"} for i, name in enumerate(names)])
        self.assertEqual(self.rows()[1][2:], names)

    def test_depth_and_cycles_are_no_favourites(self):
        deep = b"<plist>" + b"<array>" * 1_000_000
        cycle = b"bplist00" + b"\xa1\x00" + b"\x08" + bytes(6) + b"\x01\x01" + (1).to_bytes(8, "big") + bytes(8) + (10).to_bytes(8, "big")
        for content in (deep, deep + b"</array>" * 1_000_000 + b"</plist>", cycle):
            self.file.write_bytes(content)
            self.assertIn("No Favorites", self.rows()[1])

    def test_a_large_icon_costs_its_row_the_picture_and_nothing_else(self):
        self.write(favourites(16, Icon=PNG + bytes(20_000_000)))
        self.assertEqual(self.rows()[0], 16)


class Lifetime(HomeTest):
    def run_lines(self, lines):
        return subprocess.run([EXTENSION], input=lines, capture_output=True, timeout=30, env=self.environment())

    def test_the_end_of_input_ends_it_after_its_answers(self):
        self.write(favourites(5000, Icon=PNG))
        request = {"jsonrpc": "2.0", "method": "timeline", "params": {
            "kind": "FavoritesWidget", "configuration": {}, "environment": {"family": "small"}}}
        lines = b"".join(json.dumps({**request, "id": i}).encode() + b"\n" for i in range(50))
        done = self.run_lines(lines)
        self.assertEqual(done.returncode, 0)
        self.assertEqual(done.stderr, b"")
        self.assertEqual(sorted(json.loads(line)["id"] for line in done.stdout.splitlines()), list(range(50)))
        self.assertEqual(self.run_lines(b"").returncode, 0)

    def test_no_line_ends_it(self):
        for line in (b"\0", b"\xff\xfe", b"{" * 100_000, b'"' + b"\\u0000" * 1000, b"[" * 1_000_000, b"1" * 3_000_000):
            done = self.run_lines(line + b'\n{"jsonrpc":"2.0","id":1,"method":"previews"}')
            self.assertEqual(done.returncode, 0, line[:10])
            ids = sorted(str(json.loads(answer)["id"]) for answer in done.stdout.splitlines())
            self.assertEqual(ids, ["1", "None"], line[:10])

    def test_a_closed_output_ends_it_quietly(self):
        process = subprocess.Popen([EXTENSION], stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                                   env=self.environment())
        process.stdout.close()
        self.assertEqual(process.wait(10), 0)
        self.assertEqual(process.stderr.read(), b"")
        process.stdin.close()
        process.stderr.close()

    def test_the_file_may_be_replaced_while_it_is_read(self):
        old, new = favourites(2000), favourites(3000, Label=1)
        stop = threading.Event()

        def replace():
            while not stop.is_set():
                for root in (new, old):
                    fresh = self.file.with_suffix(".new")
                    fresh.write_bytes(plistlib.dumps(root, fmt=plistlib.FMT_BINARY))
                    fresh.rename(self.file)
        self.write(old)
        thread = threading.Thread(target=replace)
        thread.start()
        try:
            with Extension(self.environment()) as extension:
                for _ in range(100):
                    shown = texts(extension.timeline()["entries"][0])
                    self.assertTrue({"2000 items", "3000 items"} & set(shown), shown)
        finally:
            stop.set()
            thread.join()

    @unittest.skipIf(os.environ.get("SANITIZED"), "sanitizers bring libraries of their own")
    def test_nothing_is_loaded_that_a_list_does_not_need(self):
        self.write(favourites(3))
        with Extension({"PATH": os.environ["PATH"], "HOME": str(self.home), "LANG": "de_DE.UTF-8"}) as extension:
            extension.timeline()
            with open(f"/proc/{extension.process.pid}/maps", encoding="utf-8") as maps:
                files = {line.split()[-1].rsplit("/", 1)[-1] for line in maps if ".so" in line}
        self.assertLessEqual(files, {"libc.so.6", "libm.so.6", "ld-linux-x86-64.so.2", "ld-linux-aarch64.so.1"})

    def test_signals_are_those_of_any_process(self):
        with Extension(self.environment()) as extension:
            extension.call("describe")
            extension.process.send_signal(signal.SIGTERM)
            self.assertEqual(extension.process.wait(10), -signal.SIGTERM)


class EveryFamily(HomeTest):
    def test_shows_its_rows(self):
        self.write(favourites(20))
        with Extension(self.environment()) as extension:
            rows = {}
            for family in (*FAMILIES, "wallSized"):
                view = extension.timeline(family)["entries"][0]["content"]["view"]
                rows[family] = sum(node["type"] == "link" for node in nodes(view))
            self.assertEqual(rows, {"small": 4, "medium": 5, "large": 7, "extraLarge": 16, "wallSized": 5})


if __name__ == "__main__":
    unittest.main()
