"""What the pointer and keys do to the tiles of the host's desktop."""

import fcntl
import itertools
import json
import re

from desktop import DesktopTest, Placed
from desktop_session import LinkRecorder
from support import favourites, wait_until
from wayland_session import WaylandSession
from x_session import XSession

FAVOURITES, READING = Placed(1, place=(104, 80)), Placed(2, "ReadingListWidget", "medium", (600, 80))
TIPS = Placed(3, "TipsWidget", "small", (104, 400))


class Pointer:
    """On each display."""

    def setUp(self):
        self.start_session(accessible=True)

    def sees_alone(self, tile):
        """Without anything under the pointer."""
        self.session.move(1, 1)
        self.sees(tile)

    def choose_from(self, point, *names):
        self.session.click(*point, button=3)
        self.choose(*names)

    def test_links(self):
        recorder = LinkRecorder(self.session, ("https", "x-foliovault"))
        self.write([{"title": f"Page {number}", "URL": f"https://www.example.org/{number}?a=b&c#d", "unread": True} for number in range(4)],
                   "ReadingList.plist")
        self.arrange(FAVOURITES, READING, TIPS)
        self.start(FAVOURITES, READING, TIPS)
        links = self.links(READING)
        tip = json.loads(self.rendered(TIPS, "--format", "tree"))["content"]["widgetURL"]
        for url, x, y in (*links, (tip, *TIPS.at(85, 150))):
            self.session.click(x, y)
            self.assertEqual(recorder.wait_for_link(), url)

        # Beside the rows there is nothing to open, but the tile has the keyboard then.
        self.session.click(*READING.at())
        for key, place in (("Tab", 0), ("Tab", 1), ("Down", 2), ("shift+Tab", 1), ("Up", 0)):
            self.session.key(key)
            self.session.key("Return")
            self.assertEqual(recorder.wait_for_link(), links[place][0], key)
        plain = self.expected(self.rendered(READING), READING.box())
        wait_until(lambda: not self.is_shown(plain, READING.box()), "the focused link")
        self.session.click(*READING.at())
        self.sees(READING)

        url, x, y = next(link for link in self.links(FAVOURITES) if link[0].startswith("x-foliovault-item:"))
        self.session.click(x, y)
        application = self.accessible()
        wait_until(lambda: {"Nothing opens this link", url} <= {each.name for each in application.find_all()}, "the reason")
        self.sees_alone(FAVOURITES)
        self.end()

    def test_dragging(self):
        other = Placed(2, "WorkspacesWidget", "small", (600, 296))
        self.arrange(FAVOURITES, other)
        self.start(FAVOURITES, other)
        tile = FAVOURITES
        rows = [("to the grid", (159, 293 - 160), (160, 136)), ("beside a neighbour, in line with it", (218, 303), (212, 296)),
                ("to the screen's margin", (300, 18), (304, 24)), ("off the screen", (1200, 790), (916, 630)), ("back", (104, 80), (104, 80))]
        for name, goal, place in rows:
            with self.subTest(name):
                stamp = self.stamp()
                self.session.drag(tile.at(), Placed(1, place=goal).at(), steps=5)
                wait_until(lambda: self.stamp() != stamp, "the new place to be written")
                stamp = self.stamp()
                self.assertEqual(self.arranged()[1]["position"], list(place))
                self.session.move(1, 799)
                # The preview of the tile's place looks like the tile, and may be gone a moment later than its new place is known.
                wait_until(lambda: self.is_clear((*tile.at(20, 20), 20, 20)), "the tile to leave its place")
                tile = Placed(1, place=place)
                self.sees(tile)
                self.assertEqual(self.stamp(), stamp)

        self.session.move(*tile.at())
        self.session.press()
        # No pointer is quite still; the toolkit may keep a motion back until the next.
        trembling = itertools.cycle([(400, 500), (401, 500)])
        wait_until(lambda: self.session.move(*next(trembling)) or not self.is_clear((360, 500, 200, 80)), "the tile to move")
        self.assertEqual(self.stamp(), stamp)
        self.session.key("Escape")
        self.session.release()
        self.sees_alone(tile)
        self.assertTrue(self.is_clear((360, 500, 200, 80)))
        self.assertEqual(self.stamp(), stamp)

        self.choose_from(tile.at(), "Lock")
        wait_until(lambda: self.stamp() != stamp, "the lock")
        stamp = self.stamp()
        self.session.drag(tile.at(), (400, 500))
        self.sees_alone(tile)
        self.assertEqual(self.stamp(), stamp)
        self.end()


class Wayland(Pointer, DesktopTest):
    session_class = WaylandSession

    def test_the_menu(self):
        self.arrange(FAVOURITES)
        # A busy machine may take long to find and click what a message offers.
        self.start(FAVOURITES, WIDGETHOST_MESSAGE_MILLISECONDS="60000")
        self.session.click(*FAVOURITES.at())
        for key in ("Menu", "shift+F10"):
            self.session.key(key)
            self.assertEqual([each.name for each in self.menu()],
                             ["Edit…", "Size", "Reload", "Remove", "Add Widgets…", "Colors", "Lock"])
            self.session.key("Escape")
            wait_until(lambda: not self.accessible().find_all("menu"), "the end of the menu")

        url, *row = self.links(FAVOURITES)[1]
        self.choose_from(row, "Copy Link")
        wait_until(lambda: self.session.run("wl-paste", "--no-newline").decode() == url, "the link in the clipboard")

        self.write(favourites(3))
        self.choose_from(row, "Reload")
        self.sees_alone(FAVOURITES)

        self.choose_from(row, "Size", "Large")
        large = Placed(1, family="large", place=FAVOURITES.place)
        self.sees_alone(large)
        self.assertEqual(self.arranged()[1]["family"], "large")

        before = self.arranged()
        self.choose_from(row, "Remove")
        x, y, width, height = self.accessible().find("link", "Undo").extents
        self.assertEqual(self.arranged(), {})
        # Of the window, which has a margin of 16 for the shadow.
        self.session.click(*FAVOURITES.at(x - 16 + width // 2, y - 16 + height // 2))
        self.sees_alone(large)
        self.assertEqual(self.arranged(), before)

        self.end()
        self.start(large, WIDGETHOST_MESSAGE_MILLISECONDS="500")
        self.choose_from(row, "Remove")
        wait_until(lambda: self.is_clear(large.box()), "the end of the tile")
        self.assertEqual(self.arranged(), {})
        self.end()

    def test_cursors(self):
        """An arrow and, over a link, a hand, of the theme, which is read once the pointer is over a tile."""
        self.arrange(FAVOURITES)
        self.start(FAVOURITES, WAYLAND_DEBUG="client")
        link, ground = self.links(FAVOURITES)[1][1:], FAVOURITES.at()
        hot_spots = lambda: set(re.findall(r"set_cursor\(.*?(\d+, \d+)\)", self.messages.read_text()))
        # That of GTK's own cursors is at 1, 1.
        wait_until(lambda: self.session.move(*link) or self.session.move(*ground) or len(hot_spots() - {"1, 1"}) == 2, "both cursors")

    def test_changes_that_are_not_written(self):
        """The tile lies where it was dropped while another process holds the lock; a change that fails is undone."""
        lock = self.arrangement.with_name("arrangement.lock")
        self.arrange(FAVOURITES)
        self.start(FAVOURITES)
        moved = Placed(1, place=(160, 136))
        with open(lock, "w") as held:
            fcntl.flock(held, fcntl.LOCK_EX)
            self.session.drag(FAVOURITES.at(), moved.at())
            self.sees_alone(moved)
            self.succeed("explain", 1)
            self.assertEqual(self.arranged()[1]["position"], list(FAVOURITES.place))
        wait_until(lambda: self.arranged()[1]["position"] == list(moved.place), "the new place to be written")

        lock.unlink()
        lock.mkdir()
        before = self.arranged()
        for act in (lambda: self.session.drag(moved.at(), FAVOURITES.at()), lambda: self.choose_from(moved.at(), "Remove"),
                    lambda: self.choose_from(moved.at(), "Size", "Large")):
            act()
            self.accessible().find("label", "The change could not be saved")
            self.assertEqual(self.accessible().find_all("link", "Undo"), [])
            self.session.key("Escape")
            wait_until(lambda: not self.accessible().find_all("alert"), "the end of the message")
            self.sees_alone(moved)
            self.assertEqual(self.arranged(), before)
        self.end()


class X11(Pointer, DesktopTest):
    session_class = XSession
