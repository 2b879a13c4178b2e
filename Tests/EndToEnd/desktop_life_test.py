"""The life of the host's desktop: commands that reach it, rest, and its end."""

import json
import os
import signal
import time
import unittest
from pathlib import Path

from desktop import IDENTIFIER, DesktopTest, Placed
from support import HOST, UNAVAILABLE, favourites, wait_until
from worlds import WaylandWorld

PLACE = (104, 80)
REST_SECONDS = 3


class Life(DesktopTest):
    kind = WaylandWorld

    def test_commands_reach_it(self):
        self.make_world()
        self.arrange()
        self.start()
        self.await_answers()
        # The command starts no process of the extension, and what it adds is written with its place.
        manifest = self.world.folder / "command.json"
        manifest.write_text(json.dumps({"identifier": IDENTIFIER, "executable": "/bin/false"}))
        self.assertEqual(self.world.run(HOST, "--extension", manifest, "add", "FavoritesWidget"), b"1\n")
        stamp, children = self.stamp(), self.children()
        first = Placed(1, place=(892, 24))
        self.sees(first)
        self.assertEqual(self.stamp(), stamp)
        self.assertEqual(len(children), 1)
        self.assertEqual(self.children(), children)
        self.tell("move", 1, *PLACE)
        self.sees(Placed(1, place=PLACE))
        self.assertTrue(self.is_clear((1100, 24, 60, 40)))
        self.write(favourites(3))
        self.tell("reload")
        self.sees(Placed(1, place=PLACE))
        self.tell("edit", 1, "--set", "group=Vanished")
        self.sees(Placed(1, place=PLACE, settings=(("group", "Vanished"),)))
        self.tell("remove", 1)
        wait_until(lambda: self.is_clear(Placed(1, place=PLACE).box()), "the end of the tile")
        self.end()

    def test_at_rest(self):
        self.make_world()
        tiles = [Placed(1, place=PLACE), Placed(2, "ReadingListWidget", "large", (600, 80))]
        self.arrange(*tiles)
        self.start()
        for tile in tiles:
            self.sees(tile)
        wait_until(lambda: not self.children(), "the end of the extension")
        before = self.work()
        deadline = time.monotonic() + REST_SECONDS
        while time.monotonic() < deadline:
            time.sleep(deadline - time.monotonic())
        switches, processor = (now - then for now, then in zip(self.work(), before))
        self.assertLessEqual(switches, 2)
        self.assertEqual(processor, 0)
        self.end()

    def work(self):
        """How often the desktop's main thread has waited, and its processor time in the clock's ticks."""
        folder = Path(f"/proc/{self.desktop.pid}")
        waits = next(line for line in (folder / "status").read_text().splitlines() if line.startswith("voluntary_ctxt_switches"))
        user, system = (folder / "stat").read_text().rpartition(")")[2].split()[11:13]
        return int(waits.split()[1]), int(user) + int(system)

    def test_it_ends_when_told_to_and_when_its_world_does(self):
        self.make_world()
        tile = Placed(1, place=PLACE)
        self.arrange(tile)
        # A supervisor starts the desktop anew where the display was lost and comes back.
        ends = [("SIGTERM", 0, lambda: self.desktop.send_signal(signal.SIGTERM)), ("SIGINT", 0, lambda: self.desktop.send_signal(signal.SIGINT)),
                ("the bus", 0, self.world.bus.process.terminate), ("the display", 1, self.world.end_compositor)]
        for what, code, end in ends:
            with self.subTest(what):
                self.start()
                self.sees(tile)
                self.assertNotEqual(self.relatives(), [])
                end()
                self.assertEqual(self.desktop.wait(20), code)
                self.assertLessEqual(len(self.complaints()), 1 + code, self.complaints())
                for line in self.complaints():
                    self.assertRegex(line, r"\Awidgethost: ")
                wait_until(lambda: not self.relatives(), "the end of the extension")
        # The display may come back later than the supervisor's first attempt.
        for options, code in ((("--background",), 1), ((), UNAVAILABLE)):
            self.assertEqual(self.start(options).wait(20), code)
            self.assertEqual(self.complaints(), ["widgethost: there is no display to show widgets on"])

    def relatives(self):
        """The processes of the host and of the extension in this world."""
        found = []
        for folder in Path("/proc").glob("[0-9]*"):
            try:
                is_ours = Path(os.readlink(folder / "exe")).parent == HOST.parent
                if is_ours and str(self.world.folder).encode() in (folder / "environ").read_bytes():
                    found.append(folder.name)
            except OSError:
                pass  # It has ended meanwhile.
        return found


if __name__ == "__main__":
    unittest.main()
