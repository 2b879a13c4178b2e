"""The extension's process, as any host may drive it."""

import json
import os
import socket
import subprocess
import unittest

from support import EXTENSION, KINDS, LISTS, PNG, SANITIZED, SIZES, Extension, HomeTest, favourites


class ExtensionTest(HomeTest):
    def test_a_host_may_use_one_socket_for_both_ways(self):
        ours, theirs = socket.socketpair()
        with subprocess.Popen([EXTENSION], stdin=theirs, stdout=theirs, env=self.environment()) as process:
            theirs.close()
            ours.sendall(b'{"jsonrpc":"2.0","id":"a","method":"previews"}\n')
            ours.shutdown(socket.SHUT_WR)
            answer = json.loads(ours.makefile().read())
            names = [preview["name"] for preview in answer["result"]["previews"]]
            self.assertEqual((names[0], names[-1]), ("Small", "Tips Empty"))
            self.assertEqual(process.wait(10), 0)
        ours.close()

    def test_no_answer_is_longer_than_a_host_takes(self):
        caches = self.home.parent / "container" / "Caches"
        caches.mkdir(parents=True)
        icon = PNG + bytes((256 << 10) - len(PNG))
        for character in ("\1", "ä"):
            endless, long = character * 40_000, character * 1500
            for file in LISTS.values():
                self.write([{"Name": f"{i}{endless}"} for i in range(16)], name=file)
            self.write([{"Name": endless, "Location": endless, "UUID": f"{i}{long if i % 2 else endless}", "Icon": icon} for i in range(16)])
            self.write([{"title": endless, "URL": f"https://example.org/{i}{long if i % 2 else endless}", "icon": icon} for i in range(16)],
                       name="ReadingList.plist")
            tip = {"title": endless, "description": endless * 60, "link": f"https://example.org/{endless}", "pubDate": 0, "guid": "1"}
            (caches / "tips_cache.json").write_text(json.dumps({"timestamp": 1e12, "tips": [tip]}, ensure_ascii=False))
            with Extension(self.environment()) as extension:
                for kind in KINDS:
                    for family in SIZES:
                        extension.send("timeline", kind=kind, configuration={}, environment={"family": family})
                        self.assertTrue(8000 < len(extension.process.stdout.readline()) < 8 << 20, (kind, family, character))

    def test_lines_that_are_no_requests_hold_nothing_up(self):
        request = b'\n{"jsonrpc":"2.0","id":1,"method":"previews"}'
        for line in (b"\0", b"\xff\xfe", b"{" * 100_000, b'"' + b"\\u0000" * 1000, b"[" * 1_000_000, b"1" * 3_000_000):
            done = subprocess.run([EXTENSION], input=line + request, capture_output=True, timeout=30, env=self.environment())
            self.assertEqual((done.returncode, done.stderr), (0, b""), line[:10])
            self.assertEqual([json.loads(answer)["id"] for answer in done.stdout.splitlines()], [None, 1], line[:10])

    @unittest.skipIf(SANITIZED, "sanitizers bring libraries of their own")
    def test_nothing_is_loaded_that_a_list_does_not_need(self):
        self.write(favourites(3))
        with Extension({"PATH": os.environ["PATH"], "HOME": str(self.home), "LANG": "de_DE.UTF-8"}) as extension:
            for kind in LISTS:
                extension.timeline(kind=kind)
            extension.call("placeholder", kind="TipsWidget", environment={"family": "medium"})
            self.assertLessEqual(self.libraries(extension), {"libc.so.6", "libm.so.6", "ld-linux-x86-64.so.2", "ld-linux-aarch64.so.1"})
            # The large one has a date.
            extension.call("placeholder", kind="TipsWidget", environment={"family": "large"})
            self.assertTrue(any(name.startswith("libicui18n.so.") for name in self.libraries(extension)))

    @staticmethod
    def libraries(extension):
        with open(f"/proc/{extension.process.pid}/maps", encoding="utf-8") as maps:
            return {line.split()[-1].rsplit("/", 1)[-1] for line in maps if ".so" in line}
