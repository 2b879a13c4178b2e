"""What the tests of the host's desktop share: a world with a library in it, tiles where the arrangement has them, and what is seen there."""

import dataclasses
import json
import os
import plistlib
import shutil
import subprocess
import unittest
from pathlib import Path

from accessibility import AccessibleApplication
from picture import Picture
from support import EXTENSION, HOST, PROJECT, SIZES, wait_until
from worlds import skip_where_missing

IDENTIFIER = "net.foliovault.widgets"
# How far a tile's round corners reach into it, in points; its shadow lies there, or nothing.
EDGE = 7
OPAQUE_GROUND = {"light": (252, 252, 253), "dark": (32, 32, 35)}
TOLERANCE = 3
# What takes an extension's place: it never answers.
SILENT = "#!/bin/sh\nexec sleep 1000\n"


@dataclasses.dataclass(frozen=True)
class Placed:
    """A widget of the arrangement. `place` is on its output, the first one where it names none."""
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
        """In its output's pixels, where so many are drawn for a unit; the tile grows with texts."""
        return tuple(int(length * scale + .5) for length in (*self.place, *(text_size * length for length in SIZES[self.family])))


class DesktopTest(unittest.TestCase):
    """`kind` is the world's."""
    kind = None

    def make_world(self, **more):
        skip_where_missing(self.kind)
        self.world = self.kind(**more)
        self.addCleanup(self.world.stop)
        self.home = self.world.home
        shutil.copytree(PROJECT / "Resources" / "Example", self.home, dirs_exist_ok=True)
        self.library = self.home / "Library" / "Application Support" / "FOLIOvault"
        self.arrangement = self.world.configuration / "widgethost" / "arrangement.json"
        self.entries = self.home / "cache" / "widgethost" / "tiles"
        self.manifest = self.world.folder / "extension.json"
        self.use(EXTENSION)
        self.said = self.world.folder / "said"

    def use(self, extension):
        """What the next start of the extension runs: a program, or the text of a script."""
        if not isinstance(extension, Path):
            script = self.world.folder / "script"
            script.write_text(extension)
            script.chmod(0o755)
            extension = script
        other = self.world.folder / "other.json"
        other.write_text(json.dumps({"identifier": IDENTIFIER, "executable": str(extension), "network": False,
                                     "reads": ["Library/Application Support/FOLIOvault"]}))
        os.replace(other, self.manifest)

    def write(self, items, name="Favorites.plist"):
        (self.library / name).write_bytes(plistlib.dumps(items, fmt=plistlib.FMT_BINARY))

    def arrange(self, *placed, **more):
        """Whole at once, since a running desktop reads it."""
        self.arrangement.parent.mkdir(exist_ok=True)
        fresh = self.arrangement.with_name("fresh")
        fresh.write_text(json.dumps({"version": 1, "nextId": len(placed) + 1, "instances": [each.member() for each in placed], **more}))
        os.replace(fresh, self.arrangement)

    def arranged(self):
        """The arrangement's members by their ids."""
        return {each["id"]: each for each in json.loads(self.arrangement.read_text())["instances"]}

    def stamp(self):
        """Another one after each time that the arrangement was written."""
        status = self.arrangement.stat()
        return status.st_ino, status.st_mtime_ns

    def command(self, *arguments):
        return (HOST, "--extension", self.manifest, "--home", self.home, *arguments)

    def tell(self, *arguments, **variables):
        """What a command says that succeeds."""
        return self.world.run(*self.command(*arguments), variables=variables)

    def start(self, options=("--background",), **variables):
        """The desktop, which ends with the world at the latest; without the gallery where no tile is placed."""
        with open(self.said, "wb") as said:
            self.desktop = self.world.start(*self.command("desktop", *options), variables=variables, stderr=said)
        return self.desktop

    def await_answers(self):
        """Until commands reach the desktop."""
        reload = lambda: self.world.start(*self.command("reload"), stderr=subprocess.DEVNULL).wait(20)
        wait_until(lambda: reload() == 0, "the desktop to answer")

    def end(self):
        self.desktop.terminate()
        self.assertEqual(self.desktop.wait(20), 0)
        self.assertEqual(self.complaints(), [])

    def complaints(self):
        """What the desktop has said on its standard error."""
        lines = self.said.read_text().splitlines()
        # The libraries that tell assistive technology of a menu complain of one that was closed in the meantime.
        # The toolkit prepares for tooltips at the pointer's first event, and complains where that comes while there is no screen.
        return [line for line in lines if line and "gdk_monitor_get_scale_factor: assertion" not in line
                and not (self.world.accessible and "-CRITICAL **" in line)]

    def children(self):
        # It is the program's own main thread that starts processes.
        path = Path(f"/proc/{self.desktop.pid}/task/{self.desktop.pid}/children")
        return [int(child) for child in path.read_text().split()] if path.exists() else []

    def accessible(self):
        return AccessibleApplication(self.world, self.desktop)

    # What is seen.

    def shines_through(self):
        """Whether tiles may be translucent."""
        return self.kind.KIND == "wayland" or self.world.compositing

    def rendered(self, placed, *more, **variables):
        """The PNG file that the host draws of a widget."""
        settings = [part for key, value in placed.settings for part in ("--set", f"{key}={value}")]
        return self.tell("render", placed.kind, "--family", placed.family, *settings, *more, **variables)

    def expected(self, png, box, appearance="light"):
        """The picture in its place on the screen."""
        below = self.world.wallpaper.crop(*box) if self.shines_through() else Picture.plain(*box[2:], OPAQUE_GROUND[appearance])
        return below.under(png)

    def is_shown(self, picture, box, output=None, edge=EDGE):
        inner = (edge, edge, box[2] - 2 * edge, box[3] - 2 * edge)
        return self.world.screenshot(output).crop(*box).crop(*inner).difference(picture.crop(*inner), TOLERANCE) is None

    def sees(self, placed, *more, scale=1, text_size=1, appearance="light", **variables):
        """Waits until the tile is to be seen in its place as the host draws it."""
        box, size = placed.box(scale, text_size), scale * text_size
        picture = self.expected(self.rendered(placed, "--scale", size, "--appearance", appearance, *more, **variables), box, appearance)
        wait_until(lambda: self.is_shown(picture, box, placed.output, int(EDGE * size)), f"the picture of {placed} {more}")

    def is_clear(self, box):
        """Whether there is nothing but the wallpaper."""
        return self.world.screenshot().crop(*box).difference(self.world.wallpaper.crop(*box)) is None

    def links(self, placed):
        """The tile's links from the top, each with the middle of its place on the screen."""
        frames = json.loads(self.rendered(placed, "--format", "frames"))
        boxes = {link["url"]: (link["x"], link["y"], link["width"], link["height"]) for frame in frames for link in frame["links"]}
        return [(url, int(placed.place[0] + x + width / 2), int(placed.place[1] + y + height / 2))
                for url, (x, y, width, height) in boxes.items()]

    # Menus.

    def menu(self):
        """The entries of the menu that is open."""
        menus = wait_until(lambda: [each for each in self.accessible().find_all("menu") if each.children and "showing" in each.states], "a menu")
        return [each for each in menus[0].children if each.name]

    def choose(self, *names):
        """By the keyboard, in the menu that was opened by the pointer: an entry, or one and then another of its submenu."""
        entries = self.menu()
        for depth, name in enumerate(names):
            place = [each.name for each in entries if "sensitive" in each.states].index(name)
            for _ in range(place + (depth == 0)):
                self.world.key("Down")
            if depth + 1 < len(names):
                self.world.key("Right")
                entries = [each for each in entries if each.name == name][0].children
        self.world.key("Return")
