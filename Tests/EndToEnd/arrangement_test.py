"""The commands that place widgets, on files that are whole, broken, newer or not to be written."""

import json
import os
import unittest

from support import CONFIGURATION, EXTENSION, KINDS, OK, UNAVAILABLE, USAGE, HostTest, SessionBus, host


class ArrangementTest(HostTest):
    def setUp(self):
        super().setUp()
        bus = SessionBus()
        self.addCleanup(bus.end)
        self.more_variables = bus.variables
        self.folder = self.home / "config" / "widgethost"
        self.arrangement = self.folder / "arrangement.json"

    def add(self, *arguments):
        return int(self.succeed("add", *arguments))

    def listed(self):
        return json.loads(self.succeed("list", "--json"))

    def keep(self, content):
        self.folder.mkdir(parents=True, exist_ok=True)
        self.arrangement.write_text(content)


class Commands(ArrangementTest):
    def test_place_change_and_list_widgets(self):
        self.assertEqual(self.succeed("list"), b"No widget is placed.\n")
        self.assertEqual(self.listed(), [])
        self.assertFalse(self.folder.exists())
        self.assertEqual(self.add("FavoritesWidget", "--family", "large", "--set", "group=Ältere", "--output", "DP-1", "--at", "-4.5,60"), 1)
        self.assertEqual(self.add("ReadingListWidget", "--set", "filter=all", "--set", "filter=unreadOnly"), 2)
        self.assertEqual(self.add("WorkspacesWidget"), 3)
        self.assertEqual(self.succeed("edit", 2, "--set", "filter=all"), b"")
        self.assertEqual(self.succeed("edit", 1, "--set", "group="), b"")
        self.assertEqual(self.succeed("move", 1, "-400", "1e2"), b"")
        self.assertEqual(self.succeed("move", 2, "0.25", "0", "--output", "HDMI-A-1"), b"")
        self.assertEqual(self.succeed("remove", 3), b"")
        # An id is not given again.
        self.assertEqual(self.add("TipsWidget"), 4)
        common = {"extension": "net.foliovault.widgets"}
        placed = [
            {"id": 1, **common, "kind": "FavoritesWidget", "family": "large", "configuration": {"group": ""}, "output": "DP-1", "position": [-400, 100]},
            {"id": 2, **common, "kind": "ReadingListWidget", "family": "medium", "configuration": {"filter": "all"}, "output": "HDMI-A-1", "position": [0.25, 0]},
            {"id": 4, **common, "kind": "TipsWidget", "family": "medium"}]
        self.assertEqual(self.listed(), placed)
        self.assertEqual(json.loads(self.arrangement.read_bytes()), {"version": 1, "nextId": 5, "instances": placed})
        self.succeed("edit", 1, "--set", "group=Ältere\n\x1b[2J")
        self.assertEqual(self.succeed("list").decode(),
                         "ID    KIND               FAMILY      SETTINGS              PLACE\n"
                         "1     FavoritesWidget    large       group=Ältere  [2J     DP-1 at -400,100\n"
                         "2     ReadingListWidget  medium      filter=all            HDMI-A-1 at 0.25,0\n"
                         "4     TipsWidget         medium\n")

    def test_check_choices_against_what_the_extension_declares(self):
        self.add("ReadingListWidget")
        before = self.arrangement.read_bytes()
        rows = [(("add", "ClockWidget"), 'no kind "ClockWidget"; accepted: ' + ", ".join(f'"{kind}"' for kind in KINDS)),
                (("add", "TipsWidget", "--family", "tiny"), 'no family "tiny"; accepted: "small", "medium", "large", "extraLarge"'),
                (("add", "TipsWidget", "--set", "mode=x"), 'no choice of "mode" "x"; accepted: "latestTip", "tipOfTheDay"'),
                (("add", "TipsWidget", "--set", "filter=all"), 'no parameter "filter"; accepted: "mode"'),
                (("add", "FavoritesWidget", "--set", "group=\udcff"), "a setting is not UTF-8"),
                (("add", "TipsWidget", "--at", "1,2,3"), "X,Y"), (("add", "TipsWidget", "--output", ""), "the name is empty"),
                (("edit", 1), "--set is required"), (("edit", 1, "--set", "filter=none"), 'accepted: "all", "unreadOnly"'),
                (("edit", 1, "--set", "mode=latestTip"), 'no parameter "mode"; accepted: "filter"'),
                (("edit", 2, "--set", "filter=all"), "there is no widget 2; there are 1"),
                (("remove", -1), '"-1" is not an id'), (("move", 1, "nan", 1), "not a number within"), (("move", 1, 1), "Y is required")]
        for arguments, says in rows:
            with self.subTest(arguments):
                self.assertIn(says, self.refused(USAGE, *arguments))
        self.assertEqual(self.arrangement.read_bytes(), before)

    def test_take_what_the_instances_own_extension_declares(self):
        described = {"widgets": [{"kind": "ClockWidget", "families": ["tiny", "small"], "configuration": {"parameters": [
            {"name": "zone", "type": "entity"}, {"name": "hands", "type": "enumeration", "cases": [{"id": "two"}]}]}}]}
        clock = self.home / "clock"
        clock.write_text("#!/bin/sh\nread line\necho '%s'\n" % json.dumps({"jsonrpc": "2.0", "id": 1, "result": described}))
        clock.chmod(0o755)
        manifest = self.home / "org.clock.json"
        manifest.write_text(json.dumps({"identifier": "org.clock", "executable": str(clock)}))
        self.add("ReadingListWidget")
        # A kind is the extension's own: the one that has it is asked, and again when the instance is edited.
        failing = self.refused(UNAVAILABLE, "edit", 1, "--set", "hands=two", extension=manifest)
        self.assertIn("the extension net.foliovault.widgets is not installed", failing)
        self.assertEqual(self.succeed("add", "ClockWidget", "--set", "zone=any", extension=manifest), b"2\n")
        self.assertIn('accepted: "two"', self.refused(USAGE, "edit", 2, "--set", "hands=three", extension=manifest))
        self.succeed("edit", 2, "--set", "hands=two", extension=manifest)
        self.assertEqual(self.listed()[1], {"id": 2, "extension": "org.clock", "kind": "ClockWidget", "family": "tiny",
                                            "configuration": {"hands": "two", "zone": "any"}})


class Files(ArrangementTest):
    def test_a_broken_one_is_said_and_set_aside_by_the_next_addition(self):
        content = '{"version": 1, "instances": 7}'
        self.keep(content)
        for arguments in (("list", "--json"), ("remove", 1), ("edit", 1, "--set", "a=b")):
            self.assertIn(f"{self.arrangement} is broken", self.refused(CONFIGURATION, *arguments))
        added = self.host("add", "TipsWidget")
        self.assertEqual((added.returncode, added.stdout), (OK, b"1\n"))
        aside = self.folder / "arrangement.json.broken-1"
        self.assertRegex(added.stderr.decode(), rf"\Awidgethost: [^\n]+ was broken [^\n]+ kept as {aside}\n\Z")
        self.assertEqual(aside.read_text(), content)

    def test_lie_where_the_variables_say(self):
        below = {"PATH": os.environ["PATH"], "HOME": str(self.home), "XDG_DATA_HOME": str(self.home / "data")}
        for variables in (below, {**below, "XDG_CONFIG_HOME": "relative"}):
            self.assertEqual(host("--extension", EXTENSION, "add", "TipsWidget", env=variables, cwd=self.home).returncode, OK)
        self.assertEqual((self.home / ".config").stat().st_mode & 0o777, 0o700)
        self.assertEqual(json.loads((self.home / ".config" / "widgethost" / "arrangement.json").read_bytes())["nextId"], 3)
        self.assertFalse((self.home / "relative").exists())
        done = host("list", env={"PATH": os.environ["PATH"], "HOME": "relative"}, cwd=self.home)
        self.assertEqual(done.returncode, CONFIGURATION, done.stderr)


if __name__ == "__main__":
    unittest.main()
