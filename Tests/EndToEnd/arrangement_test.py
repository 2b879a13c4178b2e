"""The commands that place widgets."""

import json

from support import CONFIGURATION, IDENTIFIER, KINDS, OK, UNAVAILABLE, USAGE, HostTest, response


class ArrangementTest(HostTest):
    def listed(self):
        return json.loads(self.succeed("list", "--json"))

    def test_widgets_are_placed_changed_and_listed(self):
        self.assertEqual(self.succeed("list"), "No widget is placed.\n")
        self.assertEqual(self.listed(), [])
        self.assertFalse(self.arrangement.parent.exists())
        # An id is not given again.
        rows = [("1\n", "add", "FavoritesWidget", "--family", "large", "--set", "group=Ältere", "--output", "DP-1", "--at", "-4.5,60"),
                ("2\n", "add", "ReadingListWidget", "--set", "filter=all", "--set", "filter=unreadOnly"), ("3\n", "add", "WorkspacesWidget"),
                ("", "edit", 2, "--set", "filter=all"), ("", "edit", 1, "--set", "group="), ("", "move", 1, "-400", "1e2"),
                ("", "move", 2, "0.25", "0", "--output", "HDMI-A-1"), ("", "remove", 3), ("4\n", "add", "TipsWidget")]
        for output, *arguments in rows:
            self.assertEqual(self.succeed(*arguments), output, arguments)
        common = {"extension": IDENTIFIER}
        placed = [
            {"id": 1, **common, "kind": "FavoritesWidget", "family": "large", "configuration": {"group": ""}, "output": "DP-1", "position": [-400, 100]},
            {"id": 2, **common, "kind": "ReadingListWidget", "family": "medium", "configuration": {"filter": "all"}, "output": "HDMI-A-1", "position": [0.25, 0]},
            {"id": 4, **common, "kind": "TipsWidget", "family": "medium"}]
        self.assertEqual(self.listed(), placed)
        self.assertEqual(json.loads(self.arrangement.read_bytes()), {"version": 1, "nextId": 5, "instances": placed})
        self.assertEqual(self.arrangement.parent.stat().st_mode & 0o777, 0o700)
        self.succeed("edit", 1, "--set", "group=Ältere\n\x1b[2J")
        self.assertEqual(self.succeed("list"),
                         "ID    KIND               FAMILY      SETTINGS              PLACE\n"
                         "1     FavoritesWidget    large       group=Ältere  [2J     DP-1 at -400,100\n"
                         "2     ReadingListWidget  medium      filter=all            HDMI-A-1 at 0.25,0\n"
                         "4     TipsWidget         medium\n")

    def test_choices_are_checked_against_the_extensions_declarations(self):
        self.succeed("add", "ReadingListWidget")
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
        for arguments, reason in rows:
            with self.subTest(arguments):
                self.assertIn(reason, self.refused(USAGE, *arguments))
        self.assertEqual(self.arrangement.read_bytes(), before)

        # A kind is the extension's own: its extension is asked, and again when the instance is edited.
        parameters = [{"name": "zone", "type": "entity"}, {"name": "hands", "type": "enumeration", "cases": [{"id": "two"}]}]
        described = response(widgets=[{"kind": "ClockWidget", "families": ["tiny", "small"], "configuration": {"parameters": parameters}}])
        clock = self.script(f"read line\necho '{described}'\n")
        self.assertIn(f"the extension {IDENTIFIER} is not installed", self.refused(UNAVAILABLE, "edit", 1, "--set", "hands=two", extension=clock))
        self.assertEqual(self.succeed("add", "ClockWidget", "--set", "zone=any", extension=clock), "2\n")
        self.assertIn('accepted: "two"', self.refused(USAGE, "edit", 2, "--set", "hands=three", extension=clock))
        self.succeed("edit", 2, "--set", "hands=two", extension=clock)
        self.assertEqual(self.listed()[1], {"id": 2, "extension": clock.name, "kind": "ClockWidget", "family": "tiny",
                                            "configuration": {"hands": "two", "zone": "any"}})

    def test_a_broken_file_is_reported_and_set_aside_by_the_next_addition(self):
        content = '{"version": 1, "instances": 7}'
        self.arrangement.parent.mkdir()
        self.arrangement.write_text(content)
        for arguments in (("list", "--json"), ("remove", 1), ("edit", 1, "--set", "a=b")):
            self.assertIn(f"{self.arrangement} is broken", self.refused(CONFIGURATION, *arguments))
        added = self.run_host("add", "TipsWidget")
        self.assertEqual((added.returncode, added.stdout), (OK, b"1\n"))
        aside = self.arrangement.with_name("arrangement.json.broken-1")
        self.assertRegex(added.stderr.decode(), rf"\Awidgethost: [^\n]+ was broken [^\n]+ kept as {aside}\n\Z")
        self.assertEqual(aside.read_text(), content)

    def test_the_file_lies_where_the_variables_say(self):
        self.succeed("add", "TipsWidget", variables={"XDG_CONFIG_HOME": "relative"}, cwd=self.home)
        self.assertTrue((self.home / ".config" / "widgethost" / "arrangement.json").exists())
        self.refused(CONFIGURATION, "list", variables={"XDG_CONFIG_HOME": "", "HOME": "relative"}, cwd=self.home)
