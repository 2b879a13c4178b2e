"""What the host's desktop shows: tiles where they belong, as the host draws them, whatever becomes of the extension."""

import json
import os
import signal
import unittest

from desktop import EDGE, SILENT, DesktopTest, Placed
from settings_portal import SettingsPortal
from support import EXTENSION, favourites, wait_until
from worlds import WaylandWorld

LONG_AGO = "2001-01-01T00:00:00.000Z"
FAVOURITES = Placed(1, place=(120, 80))
FAILED = "Could not be updated"


class Shown(DesktopTest):
    kind = WaylandWorld

    def test_there_is_always_something_to_see(self):
        self.make_world(accessible=True)
        self.arrange(FAVOURITES)
        self.use(SILENT)
        self.start()
        box = FAVOURITES.box()
        wait_until(lambda: not self.is_clear(box), "a placeholder")
        self.end()
        self.assertFalse(self.entries.exists() and list(self.entries.iterdir()), "a placeholder was kept")

        self.use(EXTENSION)
        output = self.world.outputs()[0].name
        light, dark, fine = ((self.expected(self.rendered(FAVOURITES, "--scale", scale, "--appearance", appearance), FAVOURITES.box(scale), appearance),
                              FAVOURITES.box(scale), output, EDGE * scale) for appearance, scale in (("light", 1), ("dark", 1), ("light", 2)))
        self.start()
        self.sees(FAVOURITES)
        self.end()
        # What comes from the disk looks like the desktop of now.
        self.use(SILENT)
        portal = SettingsPortal(self.world)
        portal.set("color-scheme", "uint32 1")
        self.start()
        wait_until(lambda: self.is_shown(*dark), "the last entry on a dark desktop")
        self.assertEqual(self.marks(), [])
        portal.set("color-scheme", "uint32 2")
        wait_until(lambda: self.is_shown(*light), "the last entry on a light desktop")
        self.world.set_scale(output, 2)
        wait_until(lambda: self.is_shown(*fine), "the last entry on a fine screen")
        self.world.set_scale(output, 1)
        self.end()
        self.start(LANG="de_DE.UTF-8")
        wait_until(lambda: not self.is_clear(box), "a placeholder")
        self.assertFalse(self.is_shown(*light))
        self.end()

        self.age_entry()
        self.start()
        wait_until(lambda: self.marks() and self.marks()[0].startswith("as of "), "the picture's age")
        self.assertEqual(self.accessible().find_all("link", FAILED), [])
        self.kill_extension()
        wait_until(lambda: FAILED in self.marks(), "the mark of a failure")

    def test_failures_are_marked_and_explained(self):
        self.make_world(accessible=True)
        self.arrange(FAVOURITES)
        self.start(WIDGETHOST_MESSAGE_MILLISECONDS="5000")
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

    def age_entry(self):
        file, = self.entries.iterdir()
        made, asked, answer = file.read_text().splitlines()
        answer = json.loads(answer)
        answer["reload"]["date"] = LONG_AGO
        file.write_text("\n".join((LONG_AGO, asked, json.dumps(answer))))


if __name__ == "__main__":
    unittest.main()
