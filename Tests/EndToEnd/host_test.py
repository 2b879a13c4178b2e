"""The host's command line, against the real extension and against bad ones."""

import json
import os
import stat
import subprocess
import unittest
from pathlib import Path

from support import CANNOT_CREATE, EXTENSION, HOST, KINDS, NO_WEB, OK, SANITIZING, UNAVAILABLE, USAGE, HostTest, favourites, host, texts


class Commands(HostTest):
    def test_describe_and_options(self):
        self.write([{"Name": "Work", "Children": favourites(2)}])
        described = json.loads(self.succeed("describe", "--json"))
        self.assertEqual(described["identifier"], "net.foliovault.widgets")
        self.assertEqual([widget["kind"] for widget in described["widgets"]], [*KINDS])
        people = self.succeed("describe").decode()
        self.assertIn("small, medium, large, extraLarge", people)
        options = json.loads(self.succeed("options", "FavoritesWidget", "group", "--matching", "work", "--json"))
        self.assertEqual(options["options"], [{"id": "Work", "title": "Work"}])
        self.assertEqual(self.succeed("options", "FavoritesWidget", "group").decode(), "_all  All (default)\nWork  Work\n")
        self.assertEqual(self.succeed("options", "ReadingListWidget", "filter").decode(),
                         "all  All Items (default)\nunreadOnly  Unread Only\n")

    def test_trees_are_entries_as_they_came(self):
        self.write([{"Name": "Work", "Children": favourites(2)}, *favourites(9)])
        tree = json.loads(self.succeed("render", "FavoritesWidget", "--format", "tree"))
        self.assertIn("11 items", texts(tree))
        tree = json.loads(self.succeed("render", "FavoritesWidget", "--set", "group=Work", "--format", "tree"))
        self.assertIn("2 items", texts(tree))
        tree = json.loads(self.succeed("render", "FavoritesWidget", "--request", "placeholder", "--format", "tree"))
        self.assertIn("5 items", texts(tree))
        tree = json.loads(self.succeed("render", "FavoritesWidget", "--preview", "Favorites Empty", "--format", "tree"))
        self.assertIn("No Favorites", texts(tree))

    def test_pictures_are_of_the_size_that_is_asked_for(self):
        self.write(favourites(9))
        for family, scale, size in (("small", 1, (170, 170)), ("medium", 1.5, (546, 255)), ("extraLarge", 2, (1504, 728))):
            png = self.succeed("render", "FavoritesWidget", "--family", family, "--scale", scale)
            self.assertEqual(png[:8], b"\x89PNG\r\n\x1a\n")
            self.assertEqual((int.from_bytes(png[16:20], "big"), int.from_bytes(png[20:24], "big")), size)
        self.assertIn(b"<svg", self.succeed("render", "FavoritesWidget", "--format", "svg")[:200])
        self.assertEqual(self.succeed("render", "FavoritesWidget", "--format", "pdf")[:5], b"%PDF-")

    def test_a_host_without_standard_streams(self):
        """Whose pipes would have their numbers."""
        self.write(favourites(9))
        picture = self.home / "picture"
        command = ["sh", "-c", 'exec "$0" "$@" <&- >&- 2>&-', HOST, "--extension", EXTENSION, "--home", self.home,
                   "render", "FavoritesWidget", "--format", "tree", "-o", picture]
        self.assertEqual(subprocess.run(command, timeout=100).returncode, OK)
        self.assertIn("9 items", texts(json.loads(picture.read_text())))

    def test_a_gallery_of_one_appearance_is_half_of_both(self):
        self.write(favourites(9))
        for appearance, count in (("both", 8 * len(KINDS)), ("dark", 4 * len(KINDS))):
            folder = self.home / appearance
            self.succeed("gallery", "--appearance", appearance, "-o", folder)
            page = (folder / "index.html").read_text()
            names = [picture.name for picture in folder.glob("*.png")]
            self.assertEqual((len(names), page.count('.png"')), (count, count))
            for name in names:
                self.assertIn(f'src="{name}"', page)
            self.assertNotIn("http", page)
        self.succeed("gallery", "--appearance", "dark", "--contrast", "high", "-o", self.home / "high")
        for name in names:
            dark = (self.home / "dark" / name).read_bytes()
            self.assertEqual(dark, (self.home / "both" / name).read_bytes(), name)
            self.assertNotEqual(dark, (self.home / "high" / name).read_bytes(), name)

    def test_the_users_own_library_is_not_touched(self):
        before = sorted(self.home.rglob("*"))
        self.succeed("render", "FavoritesWidget", "--format", "tree")
        after = [path for path in sorted(self.home.rglob("*")) if path not in before]
        container = self.home / ".local" / "share" / "widgethost" / "containers" / "net.foliovault.widgets"
        for path in after:
            self.assertTrue(container.is_relative_to(path) or path.is_relative_to(container), path)


class WrongArguments(HostTest):
    def test_are_named_in_one_line(self):
        rows = [((), ""), (("paint",), "paint"), (("render",), "KIND"), (("render", "FavoritesWidget", "--family", "tiny"), "tiny"),
                (("render", "FavoritesWidget", "--scale", "0"), "scale"), (("render", "FavoritesWidget", "--set", "group"), "NAME=VALUE"),
                (("render", "FavoritesWidget", "--set", "colour=red"), "accepted: \"group\""),
                (("render", "ClockWidget"), "accepted: " + ", ".join(f'"{kind}"' for kind in KINDS)), (("render", "FavoritesWidget", "--preview", "x"), "Favorites Small"),
                (("render", "FavoritesWidget", "--preview", "x", "--request", "snapshot"), "preview"),
                (("options", "FavoritesWidget", "colour"), "group"), (("options", "FavoritesWidget"), "PARAMETER"),
                (("describe", "more"), "more"), (("--home", "/nowhere/at/all", "describe"), "home")]
        for arguments, says in rows:
            with self.subTest(arguments):
                done = host("--extension", EXTENSION, *arguments)
                self.assertEqual(done.returncode, USAGE, done.stderr)
                self.assertRegex(done.stderr.decode(), r"\Awidgethost: [^\n]+\n\Z")
                self.assertIn(says, done.stderr.decode())

    def test_help_and_version_are_no_failures(self):
        for arguments in (("--help",), ("render", "--help"), ("--version",)):
            done = host(*arguments)
            self.assertEqual((done.returncode, done.stderr), (OK, b""))
            self.assertTrue(done.stdout)

    def test_output_that_cannot_be_written(self):
        for path in ("/nowhere/picture.png", self.home, "/dev/full"):
            self.refused(CANNOT_CREATE, "render", "FavoritesWidget", "-o", path)
        self.refused(CANNOT_CREATE, "gallery", "-o", "/dev/null/gallery")
        self.assertEqual([path for path in self.home.iterdir() if path.suffix == ".png"], [])


class OtherExtensions(HostTest):
    def script(self, body):
        path = self.home / "extension"
        path.write_text("#!/bin/sh\n" + body)
        path.chmod(path.stat().st_mode | stat.S_IXUSR)
        return path

    def test_the_entry_that_is_due_is_drawn(self):
        """Entries may come in any order."""
        entries = [{"date": f"{date}T00:00:00Z", "content": {"view": {"type": "text", "text": text}}}
                   for date, text in (("2200-01-01", "later"), ("2001-01-03", "due"), ("2001-01-02", "past"))]

        def script(*results):
            answers = (json.dumps({"jsonrpc": "2.0", "id": i, "result": result}) for i, result in enumerate(results, 1))
            return self.script("".join(f"read line; echo '{answer}'\n" for answer in answers))

        timeline = {"entries": entries, "reload": {"policy": "after", "date": "2200-01-01T00:00:00Z"}}
        tree = self.succeed("render", "X", "--format", "tree", extension=script(timeline))
        self.assertEqual(texts(json.loads(tree)), ["due"])
        picture = self.succeed("render", "X", "--family", "small", "--scale", 2, extension=script(timeline))
        description = {"widgets": [{"kind": "X", "displayName": "X", "families": ["small"]}]}
        self.succeed("gallery", "-o", self.home, extension=script(description, timeline))
        self.assertEqual((self.home / "X-small-light.png").read_bytes(), picture)

    def test_bad_ones_are_said_to_be_unavailable(self):
        rows = [("exit 3", "exited with 3"), ("echo last words >&2; exit 1", "last words"), ("kill -SEGV $$", "signal 11"),
                ("while :; do printf %9999s x; done", "more than"),
                ("read line; echo '{\"jsonrpc\":\"2.0\",\"id\":1,\"result\":{\"date\":\"now\"}}'", "is invalid")]
        for body, says in rows:
            with self.subTest(body):
                self.assertIn(says, self.refused(UNAVAILABLE, "render", "X", "--format", "tree", extension=self.script(body)))
        self.refused(UNAVAILABLE, "describe", extension=self.home / "nothing")

    def test_bad_ones_leave_the_others_alone(self):
        self.write(favourites(1))
        folder = self.home / "data" / "widgethost" / "extensions"
        folder.mkdir(parents=True)
        (folder / "broken.json").write_text("{")
        for name, executable in (("dead", self.script("exit 3")), ("fv", EXTENSION), ("missing", "nowhere")):
            (folder / f"{name}.json").write_text(json.dumps({"identifier": name, "executable": str(executable)}))
        variables = {"PATH": os.environ["PATH"], "XDG_DATA_HOME": str(self.home / "data"), "XDG_DATA_DIRS": "/nowhere", "HOME": "/nowhere",
                     "XDG_CONFIG_HOME": str(self.home / "config"), **NO_WEB, **SANITIZING}
        rows = [(("describe",), "broken", "dead", "missing"), (("gallery", "-o", self.home), "broken", "dead", "missing"),
                *((command, "broken", "dead") for command in (("options", "FavoritesWidget", "group"), ("add", "FavoritesWidget"),
                                                              ("render", "FavoritesWidget", "--format", "tree")))]
        for command, *names in rows:
            with self.subTest(command):
                done = host(*command, env=variables)
                self.assertEqual(done.returncode, OK, done.stderr)
                said = [line for line in done.stderr.decode().splitlines() if line.startswith("widgethost: ") and "session bus" not in line]
                self.assertEqual(len(said), len(names), said)
                for line, name in zip(said, names):
                    self.assertIn(name, line)

    def test_one_that_stays_after_its_answer_is_ended(self):
        marker = self.home / ".local" / "share" / "widgethost" / "containers" / "extension" / "pid"
        body = """echo $$ > "$HOME/pid"; read line; echo '{"jsonrpc":"2.0","id":1,"result":{"widgets":[]}}'; exec sleep 1000"""
        self.succeed("describe", extension=self.script(body))
        self.assertFalse(Path(f"/proc/{marker.read_text().strip()}").exists())

    def test_gets_only_the_variables_it_is_to_have(self):
        variables = {**os.environ, "SECRET": "x", "LC_TIME": "de_DE", "https_proxy": "p", "TZ": "Asia/Tokyo", "LD_LIBRARY_PATH": "/x"}
        host("--extension", self.script('exec env > "$HOME/variables"'), "describe", env={**variables, "XDG_DATA_HOME": str(self.home)})
        lines = (self.home / "widgethost" / "containers" / "extension" / "variables").read_text().splitlines()
        names = {line.split("=")[0] for line in lines} - {"PWD", "SHLVL", "_", "OLDPWD"}
        self.assertLessEqual({"PATH", "HOME", "XDG_CACHE_HOME", "LC_TIME", "https_proxy", "TZ"}, names)
        self.assertFalse({"SECRET", "LD_LIBRARY_PATH", "XDG_DATA_HOME", "PROGRAMS"} & names)
        self.assertIn(f"HOME={self.home}/widgethost/containers/extension", lines)


if __name__ == "__main__":
    unittest.main()
