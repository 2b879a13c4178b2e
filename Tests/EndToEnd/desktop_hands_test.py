"""What hands do to the tiles of the host's desktop."""

import fcntl
import itertools
import json
import sys
import unittest
from pathlib import Path

from desktop import DesktopTest, Placed
from support import favourites, wait_until
from worlds import LinkRecorder, WaylandWorld, XWorld

FAVOURITES, READING = Placed(1, place=(104, 80)), Placed(2, "ReadingListWidget", "medium", (600, 80))
TIPS = Placed(3, "TipsWidget", "small", (104, 400))
# A place of a tile without a link.
HEADING = (60, 20)


def at(tile, place=HEADING):
    return tile.place[0] + place[0], tile.place[1] + place[1]


class Hands:
    def test_links(self):
        self.make_world(accessible=True)
        recorder = LinkRecorder(self.world, ("https", "x-foliovault"))
        self.write([{"title": f"Page {number}", "URL": f"https://www.example.org/{number}?a=b&c#d", "unread": True} for number in range(4)],
                   "ReadingList.plist")
        self.arrange(FAVOURITES, READING, TIPS)
        self.start()
        for tile in (FAVOURITES, READING, TIPS):
            self.sees(tile)
        links = self.links(READING)
        for url, x, y in links:
            self.world.click(x, y)
            self.assertEqual(recorder.wait_for_link(), url)
        own = json.loads(self.rendered(TIPS, "--format", "tree"))["content"]["widgetURL"]
        self.world.click(*at(TIPS, (85, 150)))
        self.assertEqual(recorder.wait_for_link(), own)

        # Beside the rows there is nothing to open, but the tile has the keyboard then.
        self.world.click(*at(READING))
        for key, place in (("Tab", 0), ("Tab", 1), ("Down", 2), ("shift+Tab", 1), ("Up", 0)):
            self.world.key(key)
            self.world.key("Return")
            self.assertEqual(recorder.wait_for_link(), links[place][0], key)
        plain = self.expected(self.rendered(READING), READING.box())
        wait_until(lambda: not self.is_shown(plain, READING.box()), "what has the keyboard")
        self.world.click(*at(READING))
        self.sees(READING)

        url, x, y = next(link for link in self.links(FAVOURITES) if link[0].startswith("x-foliovault-item:"))
        self.world.click(x, y)
        application = self.accessible()
        wait_until(lambda: {"Nothing opens this link", url} <= {each.name for each in application.find_all()}, "the reason")
        self.world.move(1, 1)
        self.sees(FAVOURITES)
        self.end()

    def test_dragging(self):
        self.make_world(accessible=True)
        other = Placed(2, "WorkspacesWidget", "small", (600, 296))
        self.arrange(FAVOURITES, other)
        self.start()
        self.sees(FAVOURITES)
        self.sees(other)
        tile = FAVOURITES
        rows = [("to the grid", (159, 293 - 160), (160, 136)), ("beside a neighbour, in line with it", (218, 303), (212, 296)),
                ("to the screen's margin", (300, 18), (304, 24)), ("off the screen", (1200, 790), (916, 630)), ("back", (104, 80), (104, 80))]
        for what, goal, place in rows:
            with self.subTest(what):
                stamp = self.stamp()
                start, end = at(tile), at(Placed(1, place=goal))
                self.world.move(*start)
                self.world.press()
                for step in range(1, 6):
                    self.world.move(*(a + (b - a) * step // 5 for a, b in zip(start, end)))
                    self.assertEqual(self.stamp(), stamp)
                self.world.release()
                wait_until(lambda: self.stamp() != stamp, "the new place to be kept")
                stamp = self.stamp()
                self.assertEqual(self.arranged()[1]["position"], list(place))
                self.world.move(1, 799)
                # What shows where the tile would lie looks like the tile, and may be gone a moment later than its new place is known.
                wait_until(lambda: self.is_clear((*at(tile, (20, 20)), 20, 20)), "the tile to leave its place")
                tile = Placed(1, place=place)
                self.sees(tile)
                self.assertEqual(self.stamp(), stamp)

        stamp = self.stamp()
        self.world.move(*at(tile))
        self.world.press()
        # No hand is quite still; the toolkit may keep a motion back until the next.
        trembling = itertools.cycle([(400, 500), (401, 500)])
        wait_until(lambda: self.world.move(*next(trembling)) or not self.is_clear((360, 500, 200, 80)), "the tile to move")
        self.world.key("Escape")
        self.world.release()
        self.world.move(1, 1)
        self.sees(tile)
        self.assertTrue(self.is_clear((360, 500, 200, 80)))
        self.assertEqual(self.stamp(), stamp)

        self.world.click(*at(tile), button=3)
        self.choose("Lock")
        wait_until(lambda: self.stamp() != stamp, "the lock")
        stamp = self.stamp()
        self.world.drag(at(tile), (400, 500))
        self.world.move(1, 1)
        self.sees(tile)
        self.assertEqual(self.stamp(), stamp)
        self.end()


class Wayland(Hands, DesktopTest):
    kind = WaylandWorld

    def test_the_menu(self):
        self.make_world(accessible=True)
        self.arrange(FAVOURITES)
        self.start(WIDGETHOST_MESSAGE_MILLISECONDS="4000")
        self.sees(FAVOURITES)
        self.world.click(*at(FAVOURITES))
        for key in ("Menu", "shift+F10"):
            self.world.key(key)
            self.assertEqual([each.name for each in self.menu()],
                             ["Edit…", "Size", "Reload", "Remove", "Add Widgets…", "Colors", "Lock"])
            self.world.key("Escape")
            wait_until(lambda: not self.accessible().find_all("menu"), "the end of the menu")

        url, x, y = self.links(FAVOURITES)[1]
        self.world.click(x, y, button=3)
        self.choose("Copy Link")
        clipboard = Path(__file__).with_name("read_clipboard.py")
        wait_until(lambda: self.world.run(sys.executable, "-B", clipboard).decode() == url, "the link in the clipboard")

        self.write(favourites(3))
        self.world.click(x, y, button=3)
        self.choose("Reload")
        self.world.move(1, 1)
        self.sees(FAVOURITES)

        self.world.click(x, y, button=3)
        self.choose("Size", "Large")
        large = Placed(1, family="large", place=FAVOURITES.place)
        self.world.move(1, 1)
        self.sees(large)
        self.assertEqual(self.arranged()[1]["family"], "large")

        before = self.arranged()
        self.world.click(x, y, button=3)
        self.choose("Remove")
        undo = self.accessible().find("link", "Undo")
        self.assertEqual(self.arranged(), {})
        inset = 16 if self.shines_through() else 0
        self.world.click(*at(FAVOURITES, (undo.extents[0] - inset + undo.extents[2] // 2, undo.extents[1] - inset + undo.extents[3] // 2)))
        self.world.move(1, 1)
        self.sees(large)
        self.assertEqual(self.arranged(), before)

        self.world.click(x, y, button=3)
        self.choose("Remove")
        wait_until(lambda: self.is_clear(large.box()), "the end of the tile")
        self.assertEqual(self.arranged(), {})
        self.end()

    def test_what_is_not_written(self):
        """The tile lies where it was dropped as long as that waits for another process; what fails changes nothing."""
        self.make_world(accessible=True)
        lock = self.arrangement.with_name("arrangement.lock")
        self.arrange(FAVOURITES)
        self.start()
        self.sees(FAVOURITES)
        moved = Placed(1, place=(160, 136))
        with open(lock, "w") as held:
            fcntl.flock(held, fcntl.LOCK_EX)
            self.world.drag(at(FAVOURITES), at(moved))
            self.world.move(1, 1)
            self.sees(moved)
            self.tell("explain", 1)
            self.assertEqual(self.arranged()[1]["position"], list(FAVOURITES.place))
        wait_until(lambda: self.arranged()[1]["position"] == list(moved.place), "the new place to be kept")

        lock.unlink()
        lock.mkdir()
        before = self.arranged()
        for act in (lambda: self.world.drag(at(moved), at(FAVOURITES)),
                    lambda: self.world.click(*at(moved), button=3) or self.choose("Remove"),
                    lambda: self.world.click(*at(moved), button=3) or self.choose("Size", "Large")):
            act()
            self.accessible().find("label", "The change could not be saved")
            self.assertEqual(self.accessible().find_all("link", "Undo"), [])
            self.world.key("Escape")
            wait_until(lambda: not self.accessible().find_all("alert"), "the end of the message")
            self.world.move(1, 1)
            self.sees(moved)
            self.assertEqual(self.arranged(), before)
        self.end()


class X11(Hands, DesktopTest):
    kind = XWorld


if __name__ == "__main__":
    unittest.main()
