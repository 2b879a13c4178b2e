"""What becomes of a tile when the file changes that it was made from, in whatever way: it shows that at once, and never anything else."""

import os
import plistlib
import shutil
import signal
import time
import unittest

from desktop import DesktopTest, Placed
from support import wait_until
from worlds import WaylandWorld

FAVOURITES, OTHER = Placed(1, place=(120, 80)), Placed(2, family="large", place=(560, 80))
READING = Placed(3, "ReadingListWidget", "small", (120, 320))


class Following(DesktopTest):
    kind = WaylandWorld

    def setUp(self):
        self.make_world()
        self.file = self.library / "Favorites.plist"
        self.arrange(FAVOURITES, OTHER, READING)
        self.start()
        self.sees(FAVOURITES)
        self.number = 0

    def content(self):
        """Another one each time."""
        self.number += 1
        return plistlib.dumps([{"Name": f"Favourite {self.number}.{i}", "UUID": f"U{i}"} for i in range(self.number % 4 + 1)])

    def replace(self):
        fresh = self.library / "fresh"
        fresh.write_bytes(self.content())
        fresh.rename(self.file)

    def write(self):
        self.file.write_bytes(self.content())

    def aside(self, folder):
        """Moves a folder away and puts a copy with other favourites into its place."""
        other = self.home / f"aside{self.number}"
        folder.rename(other)
        shutil.copytree(other, folder)
        self.write()

    def link_file(self):
        target = self.library / "Target.plist"
        target.write_bytes(self.content())
        self.file.unlink()
        self.file.symlink_to(target.name)

    def link_folder(self):
        other = self.home / "elsewhere"
        self.library.rename(other)
        self.library.symlink_to(other)
        self.write()

    def hard_link(self):
        other = self.home / "hard.plist"
        self.file.hardlink_to(other) if other.exists() else os.link(self.file, other)
        other.write_bytes(self.content())

    def vanish_and_return(self):
        shutil.rmtree(self.home / "Library")
        self.sees(FAVOURITES)
        self.library.mkdir(parents=True)
        self.write()

    def test_every_way_to_write(self):
        ways = (self.write, self.replace, self.replace, self.file.unlink, self.write, self.link_file, self.write, self.replace, self.hard_link,
                lambda: self.aside(self.library), lambda: self.aside(self.home / "Library"), self.vanish_and_return,
                lambda: self.file.write_bytes(b"broken"), self.write, self.link_folder, self.write, self.replace)
        for number, way in enumerate(ways):
            with self.subTest(number):
                way()
                self.sees(FAVOURITES)
        self.sees(OTHER)
        self.assertRegex(self.tell("explain", 1).decode(), r"follows: .*/Favorites\.plist\n(.*\n)*  reason: .*/Favorites\.plist changed\n")
        self.end()

    def test_a_slow_writer_is_waited_for(self):
        shown = self.expected(self.rendered(FAVOURITES), FAVOURITES.box())
        content = self.content()
        with open(self.file, "wb", buffering=0) as writer:
            for reloads in (False, True):
                time.sleep(.3)
                if reloads:
                    self.tell("reload")
                self.assertTrue(self.is_shown(shown, FAVOURITES.box()))
            for part in (content[:20], content[20:]):
                writer.write(part)
                time.sleep(.05)
                self.assertTrue(self.is_shown(shown, FAVOURITES.box()))
        self.sees(FAVOURITES)
        self.end()

    def test_nothing_is_lost_while_the_host_is_stopped(self):
        self.desktop.send_signal(signal.SIGSTOP)
        for _ in range(3):
            self.replace()
        self.desktop.send_signal(signal.SIGCONT)
        self.sees(FAVOURITES)
        self.end()

    def test_a_storm_is_a_few_reloads_of_one_process(self):
        wait_until(lambda: not self.children(), "the extension to rest")
        children = set()
        end = time.monotonic() + 2
        while time.monotonic() < end:
            self.replace()
            children.update(self.children())
            time.sleep(.01)
        self.sees(FAVOURITES)
        self.assertEqual(len(children), 1)
        self.end()


if __name__ == "__main__":
    unittest.main()
