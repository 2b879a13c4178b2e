"""The life of the host's desktop: commands and files that reach it, rest, and its end."""

import json
import shutil
import signal
import time
from pathlib import Path

from desktop import DesktopTest, Placed
from support import HOST, IDENTIFIER, UNAVAILABLE, favourites, is_running, wait_until
from wayland_session import WaylandSession

TILE = Placed(1, place=(104, 80))
REST_SECONDS = 3


class Life(DesktopTest):
    session_class = WaylandSession

    def setUp(self):
        self.start_session()

    def test_commands_reach_it(self):
        self.arrange()
        self.start()
        self.await_answers()
        # The command starts no process of the extension, and what it adds is written with its place.
        manifest = self.session.folder / "command.json"
        manifest.write_text(json.dumps({"identifier": IDENTIFIER, "executable": "/bin/false"}))
        self.assertEqual(self.session.run(HOST, "--extension", manifest, "add", "FavoritesWidget"), b"1\n")
        stamp, children = self.stamp(), self.children()
        self.sees(Placed(1, place=(892, 24)))
        self.assertEqual(self.stamp(), stamp)
        self.assertEqual(len(children), 1)
        self.assertEqual(self.children(), children)
        self.succeed("move", 1, *TILE.place)
        self.sees(TILE)
        self.assertTrue(self.is_clear((1100, 24, 60, 40)))
        self.write(favourites(3))
        self.succeed("reload")
        self.sees(TILE)
        self.succeed("edit", 1, "--set", "group=Vanished")
        self.sees(Placed(1, place=TILE.place, settings=(("group", "Vanished"),)))
        self.examine({"compositor": ("ok", "Wayland, wayland-"), "windows": ("ok", r"layer shell, version \d"), "session bus": ("ok", "answers"),
                      "running host": ("ok", "running"), "links": ("ok", "opens Recorder")})
        self.succeed("remove", 1)
        wait_until(lambda: self.is_clear(TILE.box()), "the end of the tile")
        self.end()

    def test_it_follows_the_file(self):
        other = Placed(2, family="large", place=(560, 80))
        self.arrange(TILE, other)
        self.start(TILE)
        changes = (lambda: self.write(favourites(3)), lambda: (self.library / "Favorites.plist").write_bytes(b"broken"), lambda: self.write(favourites(2)),
                   lambda: shutil.rmtree(self.home / "Library"), lambda: self.library.mkdir(parents=True) or self.write(favourites(1)))
        for change in changes:
            change()
            self.sees(TILE)
        self.sees(other)
        self.assertRegex(self.succeed("explain", 1).decode(), r"follows: .*/Favorites\.plist\n(.*\n)*  reason: .*/Favorites\.plist changed\n")
        self.end()

    def test_at_rest(self):
        tiles = [TILE, Placed(2, "ReadingListWidget", "large", (600, 80))]
        self.arrange(*tiles)
        self.start(*tiles)
        wait_until(lambda: not self.children(), "the end of the extension")
        before = self.work()
        time.sleep(REST_SECONDS)
        switches, processor = (now - then for now, then in zip(self.work(), before))
        self.assertLessEqual(switches, 2)
        self.assertEqual(processor, 0)
        self.assertNotIn("/fonts/", Path(f"/proc/{self.desktop.pid}/maps").read_text())
        self.end()

    def work(self):
        """How often the desktop's main thread has waited, and its processor time in the clock's ticks."""
        folder = Path(f"/proc/{self.desktop.pid}")
        waits = next(line for line in (folder / "status").read_text().splitlines() if line.startswith("voluntary_ctxt_switches"))
        user, system = (folder / "stat").read_text().rpartition(")")[2].split()[11:13]
        return int(waits.split()[1]), int(user) + int(system)

    def test_its_end(self):
        self.arrange(TILE)
        # A supervisor starts the desktop anew where the display was lost and comes back.
        ends = [("SIGTERM", 0, lambda: self.desktop.send_signal(signal.SIGTERM)), ("SIGINT", 0, lambda: self.desktop.send_signal(signal.SIGINT)),
                ("the bus", 0, self.session.bus.process.terminate), ("the display", 1, lambda: self.session.end(self.session.compositor))]
        for name, code, end in ends:
            with self.subTest(name):
                self.start(TILE)
                extension, = self.children()
                end()
                self.assertEqual(self.desktop.wait(20), code)
                self.assertLessEqual(len(self.complaints()), 1 + code, self.complaints())
                for line in self.complaints():
                    self.assertRegex(line, r"\Awidgethost: ")
                wait_until(lambda: not is_running(extension), "the end of the extension")
        # The display may come back later than the supervisor's first attempt.
        for options, code in ((("--background",), 1), ((), UNAVAILABLE)):
            self.assertEqual(self.start(options=options).wait(20), code)
            self.assertEqual(self.complaints(), ["widgethost: there is no display to show widgets on"])
