"""Shared by the tests of the host's desktop: a session with a library in it, tiles where the arrangement has them, and what is seen there."""

import dataclasses
import json
import os
import plistlib
import shutil
import subprocess
import unittest
from pathlib import Path

from accessibility import AccessibleApplication
from desktop_session import LinkRecorder
from picture import Picture
from support import EXTENSION, HOST, IDENTIFIER, PROJECT, SIZES, children_of, wait_until

# How far a tile's round corners reach into it, in points. Its shadow is outside.
EDGE = 7
OPAQUE_GROUND = {"light": (252, 252, 253), "dark": (32, 32, 35)}
TOLERANCE = 3
# An extension that never answers.
SILENT = "#!/bin/sh\nexec sleep 1000\n"


@dataclasses.dataclass(frozen=True)
class Placed:
    """A widget of the arrangement. `place` is on its output, by default the first."""
    id: int
    kind: str = "FavoritesWidget"
    family: str = "medium"
    place: tuple = (100, 80)
    output: str = None
    settings: tuple = ()

    def member(self):
        return {"id": self.id, "extension": IDENTIFIER, "kind": self.kind, "family": self.family,
                **({"configuration": dict(self.settings)} if self.settings else {}),
                **({"position": list(self.place)} if self.place else {}), **({"output": self.output} if self.output else {})}

    def box(self, scale=1, text_size=1):
        """In its output's pixels, so many to a unit; the tile grows with texts."""
        return tuple(int(length * scale + .5) for length in (*self.place, *(text_size * length for length in SIZES[self.family])))

    def at(self, x=60, y=20):
        """A point of the tile; by default one without a link."""
        return self.place[0] + x, self.place[1] + y


class DesktopTest(unittest.TestCase):
    """`session_class` is where it runs."""
    session_class = None

    def start_session(self, accessible=False):
        self.session_class.skip_where_missing()
        self.session = self.session_class(accessible=accessible)
        self.addCleanup(self.session.stop)
        self.home = self.session.home
        shutil.copytree(PROJECT / "Resources" / "Example", self.home, dirs_exist_ok=True)
        self.library = self.home / "Library" / "Application Support" / "FOLIOvault"
        self.arrangement = self.session.configuration / "widgethost" / "arrangement.json"
        self.entries = self.home / "cache" / "widgethost" / "tiles"
        self.manifest = self.session.folder / "extension.json"
        self.messages = self.session.folder / "messages"
        self.use(EXTENSION)

    def use(self, extension):
        """What the next start of the extension runs: a program, or the text of a script."""
        if not isinstance(extension, Path):
            script = self.session.folder / "script"
            script.write_text(extension)
            script.chmod(0o755)
            extension = script
        self.replace(self.manifest, {"identifier": IDENTIFIER, "executable": str(extension), "network": False,
                                     "reads": ["Library/Application Support/FOLIOvault"]})

    def replace(self, file, content):
        """Whole at once, since a running desktop reads it."""
        file.parent.mkdir(exist_ok=True)
        fresh = file.with_name("fresh")
        fresh.write_text(json.dumps(content))
        os.replace(fresh, file)

    def write(self, items, name="Favorites.plist"):
        (self.library / name).write_bytes(plistlib.dumps(items, fmt=plistlib.FMT_BINARY))

    def arrange(self, *placed):
        self.replace(self.arrangement, {"version": 1, "nextId": len(placed) + 1, "instances": [each.member() for each in placed]})

    def arranged(self):
        """The arrangement's members by their ids."""
        return {each["id"]: each for each in json.loads(self.arrangement.read_text())["instances"]}

    def stamp(self):
        """Another one after each time that the arrangement was written."""
        status = self.arrangement.stat()
        return status.st_ino, status.st_mtime_ns

    def command(self, *arguments):
        return (HOST, "--extension", self.manifest, "--home", self.home, *arguments)

    def succeed(self, *arguments, **variables):
        """The output of a command."""
        return self.session.run(*self.command(*arguments), variables=variables)

    def start(self, *tiles, options=("--background",), **variables):
        """The desktop, until these tiles are shown. It does not open the gallery if no tile is placed, and ends with the session at the latest."""
        with open(self.messages, "wb") as messages:
            self.desktop = self.session.start(*self.command("desktop", *options), variables=variables, stderr=messages)
        for tile in tiles:
            self.sees(tile)
        return self.desktop

    def examine(self, expected):
        """Requires these states and patterns of the findings of `doctor`, by their names."""
        LinkRecorder(self.session)
        findings = {each["check"]: each for each in json.loads(self.succeed("doctor", "--json"))}
        for name, (state, pattern) in expected.items():
            self.assertEqual(findings[name]["state"], state, findings[name])
            self.assertRegex(findings[name]["found"], pattern)

    def await_answers(self):
        """Until commands reach the desktop."""
        reload = lambda: self.session.start(*self.command("reload"), stderr=subprocess.DEVNULL).wait(20)
        wait_until(lambda: reload() == 0, "the desktop to answer")

    def end(self):
        self.desktop.terminate()
        self.assertEqual(self.desktop.wait(20), 0)
        self.assertEqual(self.complaints(), [])

    def complaints(self):
        """The desktop's lines on standard error."""
        # The libraries for assistive technology complain of a menu that was closed in the meantime.
        # The toolkit prepares for tooltips at the pointer's first event, and complains if there is no screen then.
        return [line for line in self.messages.read_text().splitlines() if line and "gdk_monitor_get_scale_factor: assertion" not in line
                and not (self.session.accessible and "-CRITICAL **" in line)]

    def children(self):
        return children_of(self.desktop)

    def accessible(self):
        return AccessibleApplication(self.session, self.desktop)

    # What is seen.

    def rendered(self, placed, *more, **variables):
        """The PNG file that the host draws of a widget."""
        settings = [part for key, value in placed.settings for part in ("--set", f"{key}={value}")]
        return self.succeed("render", placed.kind, "--family", placed.family, *settings, *more, **variables)

    def expected(self, png, box, appearance="light"):
        """The picture in its place on the screen."""
        below = self.session.wallpaper.crop(*box) if self.session.blends else Picture.plain(*box[2:], OPAQUE_GROUND[appearance])
        return below.under(png)

    def is_shown(self, picture, box, output=None, edge=EDGE):
        inner = (edge, edge, box[2] - 2 * edge, box[3] - 2 * edge)
        return self.session.screenshot(output).crop(*box).crop(*inner).difference(picture.crop(*inner), TOLERANCE) is None

    def sees(self, placed, *more, scale=1, text_size=1, appearance="light", **variables):
        """Waits until the tile is seen in its place as the host draws it."""
        box, size = placed.box(scale, text_size), scale * text_size
        picture = self.expected(self.rendered(placed, "--scale", size, "--appearance", appearance, *more, **variables), box, appearance)
        wait_until(lambda: self.is_shown(picture, box, placed.output, int(EDGE * size)), f"the picture of {placed} {more}")

    def is_clear(self, box):
        """Whether there is nothing but the wallpaper."""
        return self.session.screenshot().crop(*box).difference(self.session.wallpaper.crop(*box)) is None

    def links(self, placed):
        """The tile's links from the top, each with its middle on the screen."""
        frames = json.loads(self.rendered(placed, "--format", "frames"))
        boxes = {link["url"]: (link["x"], link["y"], link["width"], link["height"]) for frame in frames for link in frame["links"]}
        return [(url, *placed.at(int(x + width / 2), int(y + height / 2))) for url, (x, y, width, height) in boxes.items()]

    # Menus.

    def menu(self):
        """The entries of the menu that is open."""
        menus = wait_until(lambda: [each for each in self.accessible().find_all("menu") if each.children and "showing" in each.states], "a menu")
        return [each for each in menus[0].children if each.name]

    def choose(self, *names):
        """An entry of the menu that is open, or one and then another of its submenu."""
        entries = self.menu()
        for name in names:
            entry = next(each for each in entries if each.name == name)
            entries = entry.children
        self.accessible().do_action(entry, "click")
