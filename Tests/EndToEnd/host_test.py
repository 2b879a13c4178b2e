"""The host's command line, against the real extension and against bad ones."""

import io
import json
import subprocess
from pathlib import Path

from PIL import Image

from support import CANNOT_CREATE, EXTENSION, IDENTIFIER, KINDS, OK, UNAVAILABLE, USAGE, HostTest, favourites, response, texts


class Commands(HostTest):
    def tree(self, *arguments):
        return texts(json.loads(self.succeed("render", "FavoritesWidget", "--format", "tree", *arguments)))

    def test_describe_options_and_trees(self):
        self.write([{"Name": "Work", "Children": favourites(2)}, *favourites(9)])
        before = sorted(self.home.rglob("*"))
        described = json.loads(self.succeed("describe", "--json"))
        self.assertEqual(described["identifier"], IDENTIFIER)
        self.assertEqual([widget["kind"] for widget in described["widgets"]], [*KINDS])
        self.assertIn("small, medium, large, extraLarge", self.succeed("describe"))
        options = json.loads(self.succeed("options", "FavoritesWidget", "group", "--matching", "work", "--json"))
        self.assertEqual(options["options"], [{"id": "Work", "title": "Work"}])
        self.assertEqual(self.succeed("options", "FavoritesWidget", "group"), "_all  All (default)\nWork  Work\n")
        self.assertEqual(self.succeed("options", "ReadingListWidget", "filter"), "all  All Items (default)\nunreadOnly  Unread Only\n")
        for arguments, expected in (((), "11 items"), (("--set", "group=Work"), "2 items"), (("--request", "placeholder"), "5 items"),
                                    (("--preview", "Favorites Empty"), "No Favorites")):
            self.assertIn(expected, self.tree(*arguments))
        # Only the container is written to.
        container = self.containers / IDENTIFIER
        for path in set(self.home.rglob("*")).difference(before):
            self.assertTrue(container.is_relative_to(path) or path.is_relative_to(container), path)

    def picture(self, *arguments):
        done = self.run_host("render", "FavoritesWidget", *arguments)
        self.assertEqual((done.returncode, done.stderr), (OK, b""), arguments)
        return done.stdout

    def test_pictures(self):
        self.write(favourites(9, Label=1))
        for family, scale, size in (("small", 1, (170, 170)), ("medium", 1.5, (546, 255)), ("extraLarge", 2, (1504, 728))):
            self.assertEqual(Image.open(io.BytesIO(self.picture("--family", family, "--scale", scale))).size, size)
        self.assertIn(b"<svg", self.picture("--format", "svg")[:200])
        self.assertEqual(self.picture("--format", "pdf")[:5], b"%PDF-")
        # Each option changes the picture, and other values are refused.
        variants = ((), ("--appearance", "dark"), ("--mode", "tinted"), ("--mode", "tinted", "--accent", "AF52DE"), ("--mode", "vibrant"),
                    ("--contrast", "high"), ("--scale", 2), ("--request", "placeholder"), ("--preview", "Favorites Medium"))
        pictures = [self.picture(*variant) for variant in variants]
        self.assertEqual(len(set(pictures)), len(variants))
        self.assertIn((0xAF, 0x52, 0xDE, 255), set(Image.open(io.BytesIO(pictures[3])).getdata()))
        self.assertEqual(self.picture("--mode", "tinted", "--accent", "#af52de"), pictures[3])
        for wrong in ("--accent=AF52D", "--accent=AF52DE0", "--accent=", "--accent=0xAF52", "--contrast=low"):
            self.refused(USAGE, "render", "FavoritesWidget", wrong)

    def test_a_host_without_standard_streams(self):
        """Whose pipes would have their numbers."""
        self.write(favourites(9))
        tree = self.home / "tree"
        command = ["sh", "-c", 'exec "$0" "$@" <&- >&- 2>&-', *self.command("render", "FavoritesWidget", "--format", "tree", "-o", tree)]
        self.assertEqual(subprocess.run(command, env=self.variables, timeout=100).returncode, OK)
        self.assertIn("9 items", texts(json.loads(tree.read_text())))

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
        for name in names:
            self.assertEqual((self.home / "dark" / name).read_bytes(), (self.home / "both" / name).read_bytes(), name)

    def test_wrong_arguments_are_named(self):
        render = ("render", "FavoritesWidget")
        rows = [((), ""), (("paint",), "paint"), (("render",), "KIND"), ((*render, "--family", "tiny"), "tiny"),
                ((*render, "--scale", "0"), "scale"), ((*render, "--set", "group"), "NAME=VALUE"),
                ((*render, "--set", "colour=red"), "accepted: \"group\""),
                (("render", "ClockWidget"), "accepted: " + ", ".join(f'"{kind}"' for kind in KINDS)), ((*render, "--preview", ""), "Favorites Small"),
                ((*render, "--preview", "x", "--request", "snapshot"), "preview"),
                (("options", "FavoritesWidget", "colour"), "group"), (("options", "FavoritesWidget"), "PARAMETER"),
                (("describe", "more"), "more"), (("--home", "/nowhere/at/all", "describe"), "home")]
        for arguments, reason in rows:
            with self.subTest(arguments):
                self.assertIn(reason, self.refused(USAGE, *arguments))
        for arguments in (("--help",), ("render", "--help"), ("--version",)):
            self.assertTrue(self.succeed(*arguments))

    def test_output_that_cannot_be_written(self):
        for path in ("/nowhere/picture.png", self.home, "/dev/full"):
            self.refused(CANNOT_CREATE, "render", "FavoritesWidget", "-o", path)
        self.refused(CANNOT_CREATE, "gallery", "-o", "/dev/null/gallery")
        self.assertEqual(list(self.home.glob("*.png")), [])


class OtherExtensions(HostTest):
    def test_the_entry_that_is_due_is_drawn(self):
        """Entries may come in any order."""
        entries = [{"date": f"{date}T00:00:00Z", "content": {"view": {"type": "text", "text": text}}}
                   for date, text in (("2200-01-01", "later"), ("2001-01-03", "due"), ("2001-01-02", "past"))]
        line = response(entries=entries, reload={"policy": "after", "date": "2200-01-01T00:00:00Z"})
        shown = self.succeed("render", "X", "--format", "tree", extension=self.script(f"read line; echo '{line}'\n"))
        self.assertEqual(texts(json.loads(shown)), ["due"])

    def test_bad_ones_are_unavailable(self):
        rows = [("exit 3", "exited with 3"), ("echo last words >&2; exit 1", "last words"), ("kill -SEGV $$", "signal 11"),
                ("while :; do printf %9999s x; done", "more than"), (f"read line; echo '{response(date='now')}'", "is invalid")]
        for body, reason in rows:
            with self.subTest(body):
                self.assertIn(reason, self.refused(UNAVAILABLE, "render", "X", "--format", "tree", extension=self.script(body)))
        self.refused(UNAVAILABLE, "describe", extension=self.home / "nothing")

    def test_bad_ones_leave_the_others_alone(self):
        self.write(favourites(1))
        self.write_manifest("broken")
        for name, executable in (("dead", self.script("exit 3")), ("fv", EXTENSION), ("missing", "nowhere")):
            self.write_manifest(name, executable)
        self.extension = None
        rows = [(("describe",), "broken", "dead", "missing"), (("gallery", "-o", self.home), "broken", "dead", "missing"),
                *((command, "broken", "dead") for command in (("options", "FavoritesWidget", "group"), ("add", "FavoritesWidget"),
                                                              ("render", "FavoritesWidget", "--format", "tree")))]
        for command, *names in rows:
            with self.subTest(command):
                done = self.run_host(*command)
                self.assertEqual(done.returncode, OK, done.stderr)
                lines = [line for line in done.stderr.decode().splitlines() if line.startswith("widgethost: ")]
                self.assertEqual(len(lines), len(names), lines)
                for line, name in zip(lines, names):
                    self.assertIn(name, line)

    def test_one_that_stays_after_its_answer_is_ended(self):
        self.succeed("describe", extension=self.script(f"""echo $$ > "$HOME/pid"; read line; echo '{response(widgets=[])}'; exec sleep 1000"""))
        self.assertFalse(Path("/proc", (self.containers / "script" / "pid").read_text().strip()).exists())

    def test_gets_only_the_variables_it_is_to_have(self):
        more = {"SECRET": "x", "LC_TIME": "de_DE", "https_proxy": "p", "TZ": "Asia/Tokyo", "LD_LIBRARY_PATH": "/x"}
        self.refused(UNAVAILABLE, "describe", extension=self.script('exec env > "$HOME/variables"'), variables=more)
        lines = (self.containers / "script" / "variables").read_text().splitlines()
        names = {line.split("=")[0] for line in lines}
        self.assertLessEqual({"PATH", "HOME", "XDG_CACHE_HOME", "LC_TIME", "https_proxy", "TZ"}, names)
        self.assertFalse({"SECRET", "LD_LIBRARY_PATH", "XDG_DATA_HOME", "DBUS_SESSION_BUS_ADDRESS"} & names)
        self.assertIn(f"HOME={self.containers / 'script'}", lines)
