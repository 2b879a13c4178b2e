"""What the host's desktop shows: tiles where they belong, as the host draws them, whatever becomes of the extension."""

import json
import os
import signal
import unittest

from desktop import SILENT, DesktopTest, Placed
from support import EXTENSION, favourites, wait_until
from worlds import WaylandWorld, XWorld

GREEN = (0, 160, 0)
# The reference date, 2001, in the stored pictures' dates.
LONG_AGO = 0
FAVOURITES, READING = Placed(1, place=(120, 80)), Placed(2, "ReadingListWidget", "large", (520, 120))
FAILED = "Could not be updated"


class Shown:
    def test_tiles_lie_in_their_places_below_windows(self):
        for more in self.variants:
            with self.subTest(more):
                self.make_world(**more)
                small = Placed(3, "WorkspacesWidget", "small", (940, 300))
                self.arrange(FAVOURITES, READING, small)
                self.start()
                for tile in (FAVOURITES, READING, small):
                    self.sees(tile)
                x, y, width, height = FAVOURITES.box()
                self.assertTrue(self.is_clear((x, y + height + 40, width, 200)))
                window = self.world.open_window_over(x + 100, y - 20, 150, 120, GREEN)
                self.assertEqual(self.world.pixel(x + 101, y + 50), GREEN)
                self.assertIn((window.pid, x + 100, y - 20, 150, 120),
                              [(each.process, each.x, each.y, each.width, each.height) for each in self.world.windows()])
                window.kill()
                self.sees(FAVOURITES)
                self.end()

    def test_there_is_always_something_to_see(self):
        self.make_world(accessible=True)
        self.arrange(FAVOURITES)
        self.use(SILENT)
        self.start()
        box = FAVOURITES.box()
        wait_until(lambda: not self.is_clear(box), "a placeholder")
        self.end()
        self.assertFalse(self.pictures.exists() and list(self.pictures.iterdir()), "a placeholder was kept")

        self.use(EXTENSION)
        shown = self.expected(self.rendered(FAVOURITES), box)
        self.start()
        self.sees(FAVOURITES)
        self.end()
        self.use(SILENT)
        self.start()
        wait_until(lambda: self.is_shown(shown, box), "the last picture")
        self.assertEqual(self.marks(), [])
        self.end()

        self.age_picture()
        self.start()
        wait_until(lambda: self.marks() and self.marks()[0].startswith("as of "), "the picture's age")
        self.assertEqual(self.accessible().find_all("link", FAILED), [])
        self.kill_extension()
        wait_until(lambda: FAILED in self.marks(), "the mark of a failure")

    def test_failures_are_marked_and_explained(self):
        self.make_world(accessible=True)
        self.arrange(FAVOURITES)
        self.start()
        self.sees(FAVOURITES)
        shown = self.expected(self.rendered(FAVOURITES), FAVOURITES.box())
        wait_until(lambda: not self.children(), "the extension to rest")

        # It is killed while the tile waits for its answer.
        self.use(SILENT)
        self.world.start(*self.command("reload"), stderr=self.nowhere())
        self.kill_extension()
        application = self.accessible()
        application.do_action(application.find("link", FAILED))
        application.find("heading", FAILED)
        reasons = [each.name for each in application.find_all("label")]
        self.assertRegex(" ".join(reasons), r"stopped without an answer\. The next attempt is at \d+:\d\d")

        self.write(favourites(2))
        self.use(EXTENSION)
        self.tell("reload")
        self.sees(FAVOURITES)
        self.assertEqual(self.marks(), [])
        self.assertFalse(self.is_shown(shown, FAVOURITES.box()))

    def nowhere(self):
        file = open(os.devnull, "wb")
        self.addCleanup(file.close)
        return file

    def kill_extension(self):
        os.kill(wait_until(self.children, "the extension")[0], signal.SIGKILL)

    def marks(self):
        """What the tile says of itself over its picture."""
        return [each.name for each in self.accessible().find_all() if each.name == FAILED or each.name.startswith("as of ")]

    def age_picture(self):
        picture, = self.pictures.iterdir()
        head, _, pixels = picture.read_bytes().partition(b"\n")
        picture.write_bytes(json.dumps({**json.loads(head), "made": LONG_AGO, "reload": LONG_AGO}).encode() + b"\n" + pixels)


class Wayland(Shown, DesktopTest):
    kind = WaylandWorld
    variants = ({},)


class X11(Shown, DesktopTest):
    kind = XWorld
    variants = ({}, {"compositing": True})


if __name__ == "__main__":
    unittest.main()
