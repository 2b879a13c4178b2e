"""The host's desktop on screens that come and go and have other scales, and in other colours."""

from desktop import DesktopTest, Placed
from settings_portal import SettingsPortal
from support import SIZES, wait_until
from wayland_session import WaylandSession
from x_session import XSession

PLACE = (104, 80)
# That of the toolkit's own theme, if no other is chosen.
THEME_ACCENT = "3584E4"


class Wayland(DesktopTest):
    session_class = WaylandSession

    def setUp(self):
        self.start_session()

    def test_colours(self):
        portal = SettingsPortal(self.session)
        portal.set("color-scheme", "uint32 1")
        tile = Placed(1, place=PLACE)
        self.arrange(tile)
        self.start()
        self.sees(tile, appearance="dark")
        rows = [("contrast", "uint32 1", ("--contrast", "high"), "dark"), ("color-scheme", "uint32 2", ("--contrast", "high"), "light"),
                ("contrast", "uint32 0", (), "light")]
        for key, value, arguments, appearance in rows:
            portal.set(key, value)
            self.sees(tile, *arguments, appearance=appearance)
        self.succeed("mode", "tinted")
        self.sees(tile, "--mode", "tinted", "--accent", THEME_ACCENT)
        portal.set("accent-color", "(0.5, 0.25, 1.0)")
        self.sees(tile, "--mode", "tinted", "--accent", "8040FF")
        self.end()

    def test_screens_and_their_scales(self):
        first, second = self.session.outputs()[0].name, self.session.add_output()
        tile, moved = Placed(1, place=PLACE, output=first), Placed(1, place=(104, 200), output=second)
        self.arrange(tile)
        self.start(tile)
        # At each the screen has a whole number of units, as its screenshot requires.
        for scale in (2, 1.25, 1.6):
            self.session.set_scale(first, scale)
            self.sees(tile, scale=scale)
        # Where its edges round differently.
        self.session.drag((124, 100), (140, 100))
        self.sees(Placed(1, place=(120, 80), output=first), scale=1.6)
        self.session.drag((140, 100), (self.session.output(second).x + 124, 220))
        self.sees(moved)
        self.session.set_scale(second, 1.6)
        self.sees(moved, scale=1.6)
        before = self.arrangement.read_bytes()
        self.session.remove_output(second)
        # The first free place from the upper right corner.
        self.sees(Placed(1, place=(412, 24), output=first), scale=1.6)
        self.session.bring_back(second)
        self.sees(moved, scale=1.6)
        self.assertEqual(self.arrangement.read_bytes(), before)
        self.assertEqual(self.arranged()[1], moved.member())
        self.end()

    def test_panels_come_and_go(self):
        """Tiles lie beside panels, and their places count from the corner that those leave."""
        output = self.session.outputs()[0]
        width, height = SIZES["small"]
        near, far = Placed(1, place=(100, 40)), Placed(2, "WorkspacesWidget", "small", (output.width - width - 8, output.height - height - 8))
        self.arrange(near, far)
        self.start(near, far)
        panels = self.session.add_panel("TOP", 60), self.session.add_panel("LEFT", 50)
        self.sees(Placed(1, place=(150, 100)))
        self.sees(Placed(2, "WorkspacesWidget", "small", (output.width - width, output.height - height)))
        self.session.drag((210, 120), (214, 160))
        self.session.rest()
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
    session_class = XSession

    def test_a_panel_the_size_of_texts_and_what_doctor_finds(self):
        self.start_session()
        tile = Placed(1, place=(100, 40))
        self.arrange(tile)
        self.start(tile)
        self.examine({"compositor": ("ok", "X11, "), "window manager": ("ok", "^Openbox$"), "windows": ("ok", "desktop type, under"),
                      "compositing": ("note", "corners")})
        panel = self.session.open_window(100, 100, (0, 160, 0))
        self.session.reserve_top(panel.pid, 90)
        self.session.place_window(panel.pid, 900, 500, 100, 100)
        self.sees(Placed(1, place=(100, 90)))
        panel.kill()
        self.sees(tile)
        self.assertEqual(self.arranged()[1], tile.member())
        for factor in (1.5, 1):
            self.session.set_text_size(factor)
            self.sees(tile, text_size=factor)
        self.end()
