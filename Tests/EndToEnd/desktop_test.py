"""What the host's desktop shows: tiles in their places as the host draws them, also when the extension fails."""

import json
import os
import signal
import subprocess

from desktop import EDGE, SILENT, DesktopTest, Placed
from settings_portal import SettingsPortal
from support import EXTENSION, favourites, wait_until
from wayland_session import WaylandSession

LONG_AGO = "2001-01-01T00:00:00.000Z"
FAVOURITES = Placed(1, place=(120, 80))
FAILED = "Could not be updated"


class Shown(DesktopTest):
    session_class = WaylandSession

    def setUp(self):
        self.start_session(accessible=True)
        self.arrange(FAVOURITES)

    def test_there_is_always_something_to_see(self):
        self.use(SILENT)
        self.start()
        box = FAVOURITES.box()
        wait_until(lambda: not self.is_clear(box), "a placeholder")
        self.end()
        self.assertFalse(self.entries.exists() and list(self.entries.iterdir()), "a placeholder was kept")

        self.use(EXTENSION)
        output = self.session.outputs()[0].name
        light, dark, fine = ((self.expected(self.rendered(FAVOURITES, "--scale", scale, "--appearance", appearance), FAVOURITES.box(scale), appearance),
                              FAVOURITES.box(scale), output, EDGE * scale) for appearance, scale in (("light", 1), ("dark", 1), ("light", 2)))
        self.start(FAVOURITES)
        self.end()
        # The kept entry is drawn for the desktop of now.
        self.use(SILENT)
        portal = SettingsPortal(self.session)
        portal.set("color-scheme", "uint32 1")
        self.start()
        wait_until(lambda: self.is_shown(*dark), "the last entry on a dark desktop")
        self.assertEqual(self.badges(), [])
        portal.set("color-scheme", "uint32 2")
        wait_until(lambda: self.is_shown(*light), "the last entry on a light desktop")
        self.session.set_scale(output, 2)
        wait_until(lambda: self.is_shown(*fine), "the last entry on a fine screen")
        self.session.set_scale(output, 1)
        self.end()
        self.start(LANG="de_DE.UTF-8")
        wait_until(lambda: not self.is_clear(box), "a placeholder")
        self.assertFalse(self.is_shown(*light))
        self.end()

        file, = self.entries.iterdir()
        _, requested, answer = file.read_text().splitlines()
        answer = json.loads(answer)
        answer["reload"]["date"] = LONG_AGO
        file.write_text("\n".join((LONG_AGO, requested, json.dumps(answer))))
        self.start()
        wait_until(lambda: self.badges() and self.badges()[0].startswith("as of "), "the picture's age")
        self.assertEqual(self.accessible().find_all("link", FAILED), [])
        self.kill_extension()
        wait_until(lambda: FAILED in self.badges(), "the badge of a failure")

    def test_failures_are_marked_and_explained(self):
        self.start(FAVOURITES, WIDGETHOST_MESSAGE_MILLISECONDS="5000")
        shown = self.expected(self.rendered(FAVOURITES), FAVOURITES.box())
        wait_until(lambda: not self.children(), "the end of the extension")

        # It is killed while the tile waits for its answer.
        self.use(SILENT)
        self.session.start(*self.command("reload"), stderr=subprocess.DEVNULL)
        self.kill_extension()
        application = self.accessible()
        application.do_action(application.find("link", FAILED))
        application.find("heading", FAILED)
        reasons = [each.name for each in application.find_all("label")]
        self.assertRegex(" ".join(reasons), r"stopped without an answer\. The next attempt is at \d+:\d\d")

        self.write(favourites(2))
        self.use(EXTENSION)
        self.succeed("reload")
        self.sees(FAVOURITES)
        self.assertEqual(self.badges(), [])
        self.assertFalse(self.is_shown(shown, FAVOURITES.box()))

    def kill_extension(self):
        os.kill(wait_until(self.children, "the extension")[0], signal.SIGKILL)

    def badges(self):
        """The texts over the tile's picture."""
        return [each.name for each in self.accessible().find_all() if each.name == FAILED or each.name.startswith("as of ")]
