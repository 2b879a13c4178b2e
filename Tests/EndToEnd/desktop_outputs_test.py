"""The host's desktop on screens that come and go and have other scales, and in other colours."""

import unittest

from desktop import DesktopTest, Placed
from settings_portal import SettingsPortal
from support import SIZES, wait_until
from worlds import WaylandWorld, XWorld

PLACE = (104, 80)
# Where nobody has chosen one, that of the toolkit's own theme.
THEME_ACCENT = "3584E4"


class Wayland(DesktopTest):
    kind = WaylandWorld

    def test_tiles_follow_their_screens(self):
        self.make_world()
        first, second = self.world.outputs()[0].name, self.world.add_output()
        here, there = Placed(1, place=(120, 80), output=first), Placed(2, "ReadingListWidget", place=(640, 320), output=second)
        self.arrange(here, there)
        before = self.arrangement.read_bytes()
        self.start()
        self.sees(here)
        self.sees(there)
        self.world.remove_output(second)
        # The first free place from the upper right corner.
        self.sees(Placed(2, "ReadingListWidget", place=(892, 24), output=first))
        self.sees(here)
        self.world.bring_back(second)
        self.sees(there)
        self.sees(here)
        self.assertEqual(self.arrangement.read_bytes(), before)

        self.world.drag((140, 100), (self.world.output(second).x + 124, 500))
        moved = Placed(1, place=(104, 480), output=second)
        self.sees(moved)
        self.assertEqual(self.arranged()[1], moved.member())
        self.end()

    def test_colours(self):
        self.make_world()
        portal = SettingsPortal(self.world)
        portal.set("color-scheme", "uint32 1")
        tile = Placed(1, place=PLACE)
        self.arrange(tile)
        self.start()
        self.sees(tile, appearance="dark")
        portal.set("contrast", "uint32 1")
        self.sees(tile, "--contrast", "high", appearance="dark")
        portal.set("color-scheme", "uint32 2")
        self.sees(tile, "--contrast", "high")
        portal.set("contrast", "uint32 0")
        self.sees(tile)
        self.tell("mode", "tinted")
        self.sees(tile, "--mode", "tinted", "--accent", THEME_ACCENT)
        portal.set("accent-color", "(0.5, 0.25, 1.0)")
        self.sees(tile, "--mode", "tinted", "--accent", "8040FF")
        self.end()

    def test_fractional_scales(self):
        self.make_world()
        first, second = self.world.outputs()[0].name, self.world.add_output()
        tile, moved = Placed(1, place=PLACE, output=first), Placed(1, place=(104, 200), output=second)
        self.arrange(tile)
        self.start()
        self.sees(tile)
        # Such that the screen has a whole number of units, for the sake of its screenshot.
        for scale in (2, 1.25, 1.6):
            self.world.set_scale(first, scale)
            self.sees(tile, scale=scale)
        # Where its edges round differently.
        self.world.drag((124, 100), (140, 100))
        self.sees(Placed(1, place=(120, 80), output=first), scale=1.6)
        self.world.drag((140, 100), (self.world.output(second).x + 124, 220))
        self.sees(moved)
        self.world.set_scale(second, 1.6)
        self.sees(moved, scale=1.6)
        self.world.remove_output(second)
        self.sees(Placed(1, place=(412, 24), output=first), scale=1.6)
        self.end()

    def test_panels_come_and_go(self):
        """Tiles lie beside panels, and their places count from the corner that those leave."""
        self.make_world()
        output = self.world.outputs()[0]
        width, height = SIZES["small"]
        near, far = Placed(1, place=(100, 40)), Placed(2, "WorkspacesWidget", "small", (output.width - width - 8, output.height - height - 8))
        self.arrange(near, far)
        self.start()
        self.sees(near)
        self.sees(far)
        panels = self.world.add_panel("TOP", 60), self.world.add_panel("LEFT", 50)
        self.sees(Placed(1, place=(150, 100)))
        self.sees(Placed(2, "WorkspacesWidget", "small", (output.width - width, output.height - height)))
        self.world.drag((210, 120), (214, 160))
        self.world.rest()
        self.sees(Placed(1, place=(154, 140)))
        moved = Placed(1, place=(104, 80), output=output.name)
        wait_until(lambda: self.arranged()[1] == moved.member(), "the place to be written")
        for panel in panels:
            panel.kill()
        self.sees(moved)
        self.sees(far)
        self.assertEqual(self.arranged()[2], far.member())
        self.end()


class X11(DesktopTest):
    kind = XWorld

    def test_a_panel_comes_and_goes(self):
        self.make_world()
        tile, moved = Placed(1, place=(100, 40)), Placed(1, place=(100, 90))
        self.arrange(tile)
        self.start()
        self.sees(tile)
        panel = self.world.open_window_over(900, 500, 100, 100)
        self.world.reserve_top(panel.pid, 90)
        self.sees(moved)
        panel.kill()
        self.sees(tile)
        self.assertEqual(self.arranged()[1], tile.member())
        self.end()

    def test_size_of_texts(self):
        self.make_world()
        tile = Placed(1, place=PLACE)
        self.arrange(tile)
        self.start()
        for times in (1.5, 1):
            self.world.set_text_size(times)
            self.sees(tile, text_size=times)
        self.end()


if __name__ == "__main__":
    unittest.main()
