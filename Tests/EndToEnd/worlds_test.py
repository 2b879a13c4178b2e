"""The worlds that windows are tested in, with a stand-in for the host: what hands do arrives, and what is seen is true."""

import subprocess
import sys
import unittest
from pathlib import Path

from accessibility import AccessibleApplication
from settings_portal import SettingsPortal
from support import wait_until
from worlds import LinkRecorder, WaylandWorld, XWorld, skip_where_missing

TILE = (200, 100, 300, 160)
RED, GREEN = (200, 30, 30), (0, 160, 0)


class Worlds:
    def make_world(self, **more):
        skip_where_missing(self.kind)
        self.world = self.kind(**more)
        self.addCleanup(self.world.stop)
        self.said = self.world.folder / "said"
        with open(self.said, "ab") as said:
            self.tile = self.world.start(sys.executable, "-B", Path(__file__).with_name("stand_in.py"), stdout=said)
        wait_until(lambda: self.world.screenshot().difference(self.world.wallpaper) == TILE, "the tile in its place")

    def hears(self, line):
        wait_until(lambda: line in self.said.read_text().splitlines(), f"the stand-in to say {line!r}")

    def test_hands_reach_the_tile(self):
        self.make_world()
        self.world.click(450, 230, button=3)
        self.hears("press 3 250 130")
        self.world.drag((420, 220), (440, 250))
        self.hears("press 1 220 120")
        self.hears("release 1 240 150")
        for key, name in (("Tab", "Tab"), ("shift+Tab", "ISO_Left_Tab"), ("Return", "Return")):
            self.world.key(key)
            self.hears(f"key {name}")
        self.world.type("a+")
        for name in ("a", "plus"):
            self.hears(f"key {name}")

    def test_other_windows_lie_above(self):
        self.make_world()
        window = self.world.open_window_over(350, 80, 200, 100, GREEN)
        self.assertIn((window.pid, 350, 80, 200, 100), [(each.process, each.x, each.y, each.width, each.height) for each in self.world.windows()])
        self.assertEqual((self.world.pixel(400, 150), self.world.pixel(400, 200)), (GREEN, RED))
        window.kill()
        wait_until(lambda: self.world.pixel(400, 150) == RED, "the tile again")

    def test_outputs_come_and_go(self):
        self.make_world()
        name = self.world.add_output()
        self.hears("monitors 2")
        self.world.remove_output(name)
        self.hears("monitors 1")
        self.said.write_text("")
        self.world.bring_back(name)
        self.hears("monitors 2")
        self.assertEqual([(each.name, each.x) for each in self.world.outputs()][1:], [(name, 1280)])
        self.assertEqual(self.world.screenshot().size, (2560, 800))
        self.assertEqual(self.world.pixel(250, 250), RED)

    def test_scale(self):
        self.make_world()
        output = self.world.outputs()[0]
        self.world.set_scale(output.name, 2)
        self.hears("scale 2")
        wait_until(lambda: (self.world.screenshot(output.name).difference(self.world.wallpaper) or ())[2:] == (600, 320), "a larger tile")

    def test_links_and_settings(self):
        self.make_world()
        links, portal = LinkRecorder(self.world), SettingsPortal(self.world)
        for link in ("x-foliovault-item://A%20B?page=2", "https://www.example.org/a?b=c&d#e"):
            self.world.run("gio", "open", link)
            self.assertEqual(links.wait_for_link(), link)
        told = self.world.start("gdbus", "monitor", "--session", "--dest", "org.freedesktop.portal.Desktop", stdout=subprocess.PIPE,
                                stderr=subprocess.DEVNULL)
        wait_until(lambda: b"is owned by" in told.stdout.readline(), "the monitor")
        read = ("gdbus", "call", "--session", "--dest", "org.freedesktop.portal.Desktop", "--object-path", "/org/freedesktop/portal/desktop", "--method")
        for key, value in (("color-scheme", "uint32 1"), ("accent-color", "(0.5, 0.25, 1.0)")):
            portal.set(key, value)
            for method, answer in (("Read", f"(<<{value}>>,)"), ("ReadOne", f"(<{value}>,)")):
                said = self.world.run(*read, f"org.freedesktop.portal.Settings.{method}", "org.freedesktop.appearance", key)
                self.assertEqual(said.decode().strip(), answer)
            self.assertIn(f"SettingChanged ('org.freedesktop.appearance', '{key}', <{value}>)", told.stdout.readline().decode())

    def test_accessibility(self):
        self.make_world(accessible=True)
        links = LinkRecorder(self.world)
        application = AccessibleApplication(self.world, self.tile)
        button = application.find("push button", "Open")
        self.assertEqual(button.extents[:2], (20, 20))
        self.assertLessEqual({"showing", "focusable"}, button.states)
        application.do_action(button)
        self.assertEqual(links.wait_for_link(), "x-foliovault-item://U-1")

    def test_the_compositor_may_go(self):
        self.make_world()
        self.world.end_compositor()
        self.assertNotEqual(self.tile.wait(20), None)


class Wayland(Worlds, unittest.TestCase):
    kind = WaylandWorld


class X11(Worlds, unittest.TestCase):
    kind = XWorld

    def test_compositing(self):
        self.make_world(compositing=True)
        self.assertEqual(self.world.pixel(250, 250), RED)
        self.assertIn(("Stand-in", "DESKTOP"), [(each.title, each.kind) for each in self.world.windows()])


if __name__ == "__main__":
    unittest.main()
