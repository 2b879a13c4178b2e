"""What the worlds' links and settings are true to; all else of them is proved by the tests of the desktop."""

import subprocess
import unittest

from settings_portal import SettingsPortal
from support import wait_until
from worlds import LinkRecorder, WaylandWorld, skip_where_missing


class LinksAndSettings(unittest.TestCase):
    def setUp(self):
        skip_where_missing(WaylandWorld)
        self.world = WaylandWorld()
        self.addCleanup(self.world.stop)

    def test_links_are_caught_whole(self):
        links = LinkRecorder(self.world)
        for link in ("x-foliovault-item://A%20B?page=2", "https://www.example.org/a?b=c&d#e"):
            self.world.run("gio", "open", link)
            self.assertEqual(links.wait_for_link(), link)

    def test_settings_are_told_in_each_way(self):
        portal = SettingsPortal(self.world)
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


if __name__ == "__main__":
    unittest.main()
