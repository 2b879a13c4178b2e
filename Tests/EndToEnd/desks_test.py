"""Tiles on the desks that people have: they keep their places and their layer, and take the clicks on them, whatever is done around them.

desks_test.py --table FOLDER [NAME…] prints what holds on each desk, or on the named ones. It leaves a picture of each desk in the folder,
and one of each check that fails.
"""

import contextlib
import json
import sys
import tempfile
import time
import unittest
from configparser import ConfigParser
from pathlib import Path

from desks import DESKS
from desktop import DesktopTest, Placed
from support import PROJECT, wait_until
from worlds import LinkRecorder, world_of

FAVOURITES, TIPS, READING = Placed(1, place=(120, 96)), Placed(2, "TipsWidget", "small", (600, 96)), Placed(3, "ReadingListWidget", "medium", (120, 400))
TILES = (FAVOURITES, TIPS, READING)
APPLICATION = "net.foliovault.WidgetHost"
# Where the desktop is empty, and a place of a tile without a link.
EMPTY, HEADING = (900, 560), (60, 20)
SECONDS = 12
# Those that CI has, with one where another program draws the desktop.
TESTED = ("sway", "GNOME, mutter", "LXQt")


class DeskTest(DesktopTest):
    """Each check leaves the desk as it was, except for the last one."""

    def begin(self):
        self.make_world()
        self.recorder = LinkRecorder(self.world)
        self.arrange(*TILES)
        self.start()
        self.pictures = [(tile.box(), self.expected(self.rendered(tile), tile.box())) for tile in TILES]

    def restart(self, **variables):
        """The tiles of the one that ended may be on the screen a moment longer."""
        self.end()
        self.start(**variables)
        self.await_answers()

    def shown(self, why):
        self.world.rest()
        for box, picture in self.pictures:
            wait_until(lambda: self.is_shown(picture, box), f"{why}: the tile at {box[:2]}", SECONDS)

    def at(self, tile, place=HEADING):
        return tile.place[0] + place[0], tile.place[1] + place[1]

    @contextlib.contextmanager
    def program(self, name, *arguments, why="with it closed", **more):
        """One of this folder, as long as the context lasts."""
        process = self.world.start(sys.executable, "-B", Path(__file__).with_name(name), *arguments, **more)
        try:
            yield process
        finally:
            process.kill()
            process.wait()
        self.shown(why)

    def window(self, width, height, colour):
        return self.program("plain_window.py", width, height, *colour, why="without the window", **self.world.plain)

    def click_desktop(self, button=1):
        """Closes the menu that some desks open at any button."""
        self.world.click(*EMPTY, button)
        time.sleep(.5)
        self.world.key("Escape")

    def check_start(self):
        self.shown("at the start")
        self.assertEqual(self.complaints(), [])

    def check_in_no_list(self):
        for window in self.world.windows():
            if window.process == self.desktop.pid:
                self.assertLessEqual({"SKIP_TASKBAR", "SKIP_PAGER"}, set(window.states))

    def check_name(self):
        """Docks and window switchers find the name and the icon by it."""
        self.tell("desktop")
        gallery = lambda: [each for each in self.world.windows() if each.title == "Widgets"]
        try:
            self.assertEqual(wait_until(gallery, "the gallery", SECONDS)[0].application, APPLICATION)
        finally:
            self.world.close_window(self.desktop.pid)
        wait_until(lambda: not gallery(), "the end of the gallery", SECONDS)
        self.shown("without the gallery")
        entry = ConfigParser(interpolation=None)
        entry.read(PROJECT / "Resources" / "Desktop" / f"{APPLICATION}.desktop")
        self.assertEqual((entry["Desktop Entry"]["StartupWMClass"], entry["Desktop Entry"]["Icon"]), (APPLICATION, APPLICATION))

    def check_desktop_clicked(self):
        self.click_desktop()
        self.shown("after a click on the desktop")
        self.world.drag((EMPTY[0] - 60, EMPTY[1] - 60), EMPTY)
        self.world.key("Escape")
        self.shown("after a rubber band on the desktop")
        self.click_desktop(button=3)
        self.click_desktop()
        self.shown("after the desktop's menu")

    def check_under_windows(self):
        (x, y), colour = FAVOURITES.place, (0, 160, 0)
        seen = lambda: self.world.pixel(x + 200, y + 60) == colour
        with self.window(260, 200, colour) as window:
            self.world.place_window(window.pid, x + 150, y + 20, 260, 200)
            for act in (lambda: None, lambda: self.world.click(*self.at(FAVOURITES)), self.click_desktop):
                act()
                self.world.rest()
                time.sleep(.3)
                wait_until(seen, "the window over the tile", SECONDS)

    def check_under_fullscreen(self):
        colour = (160, 0, 160)
        with self.window(0, 0, colour):
            for x, y in ((200, 150), (650, 150)):
                wait_until(lambda: self.world.pixel(x, y) == colour, "the window over the tile", SECONDS)

    def check_show_desktop(self):
        with self.window(300, 200, (0, 160, 0)) as window:
            self.world.place_window(window.pid, 200, 150, 300, 200)
            for is_shown in (True, False):
                self.world.show_desktop(is_shown)
                is_shown and self.shown("with the desktop shown")

    def check_rival(self):
        """Another program that raises itself wins, instead of both doing so for ever."""
        said = self.world.folder / "rival"
        with open(said, "wb") as output, self.program("rival_window.py", why="without the rival", stdout=output):
            wait_until(lambda: said.stat().st_size, "the rival", SECONDS)
            time.sleep(2)
            before = said.stat().st_size
            time.sleep(1)
            self.assertEqual(said.stat().st_size, before, "they go on raising themselves")

    def check_workspaces(self):
        for number in (1, 0):
            self.world.switch_workspace(number)
            self.shown(f"on workspace {number + 1}")

    def check_link(self):
        tip = json.loads(self.rendered(TIPS, "--format", "tree"))["content"]["widgetURL"]
        for url, x, y in (self.links(FAVOURITES)[1], (tip, *self.at(TIPS, (85, 150)))):
            self.world.click(x, y)
            self.assertEqual(self.recorder.wait_for_link(), url)

    def check_keyboard(self):
        self.world.click(*self.at(READING))
        time.sleep(.3)
        self.world.key("Tab")
        self.world.key("Return")
        self.assertEqual(self.recorder.wait_for_link(), self.links(READING)[0][0])
        self.world.key("Escape")
        self.shown("after keys")

    def check_menu(self):
        x, y = self.at(FAVOURITES, (180, 12))
        before = self.world.screenshot()
        self.world.click(x, y, button=3)
        area = (x + 20, y + 20, 40, 120)
        wait_until(lambda: self.world.screenshot().crop(*area).difference(before.crop(*area), 8) is not None, "the menu", SECONDS)
        self.world.key("Escape")
        self.shown("after the menu")

    def check_shadow(self):
        """Clicks and drags there are the desktop's."""
        x, y, width, height = FAVOURITES.box()
        before = self.arrangement.read_bytes()
        self.world.drag((x + width // 2, y + height + 8), (x + width // 2 + 100, y + height + 120))
        self.click_desktop()
        self.shown("after a drag from its shadow")
        self.assertEqual(self.arrangement.read_bytes(), before)

    def drag_slowly(self, start, *ways):
        """As a hand does: the toolkit looks at the pointer once a frame."""
        self.world.move(*start)
        time.sleep(.1)
        self.world.press()
        for end in ways:
            for step in range(1, 9):
                time.sleep(.03)
                self.world.move(*(a + (b - a) * step // 8 for a, b in zip(start, end)))
            start = end
        time.sleep(.1)
        self.world.release()

    def check_drag(self):
        """From a link, which it does not open, also where the pointer comes back to it."""
        for tile, start in ((FAVOURITES, self.links(FAVOURITES)[1][1:]), (TIPS, self.at(TIPS, (85, 100)))):
            before = self.arranged()[tile.id]
            self.drag_slowly(start, (start[0] + 8, start[1] + 160))
            wait_until(lambda: self.arranged()[tile.id] != before, "the new place", SECONDS)
            moved = self.arranged()[tile.id]["position"]
            time.sleep(.5)
            self.drag_slowly((start[0] + moved[0] - tile.place[0], start[1] + moved[1] - tile.place[1]), start)
            wait_until(lambda: self.arranged()[tile.id]["position"] == list(tile.place), "the old place", SECONDS)
        self.drag_slowly(start, (start[0] + 40, start[1]), start)
        self.shown("back in its place")
        self.assertEqual(len(self.recorder.links()), self.recorder.seen, "a link was opened")

    def is_tile(self, box):
        """Whether something with a tile's outline is there, whatever is behind it."""
        picture = self.world.screenshot()
        inside, outside = picture.pixel(box[0] + box[2] // 2, box[1] + 6), picture.pixel(box[0] + box[2] // 2, box[1] - 24)
        return inside != outside and min(inside) > 120

    def check_screens(self):
        """A second one comes, changes its side, is unplugged and comes back. The tile on it goes along."""
        world = self.world
        first, second = world.outputs()[0].name, world.add_output()
        box = lambda: (world.output(second).x + 200, 200, *TIPS.box()[2:])
        there = lambda what: wait_until(lambda: self.is_tile(box()), f"the tile on {what}", SECONDS)
        try:
            self.tell("move", TIPS.id, 200, 200, "--output", second)
            self.tell("move", FAVOURITES.id, *FAVOURITES.place, "--output", first)
            there("the second screen")
            if hasattr(world, "server"):
                world.swap(first, second)
                there("the exchanged screen")
                world.swap(second, first)
            world.remove_output(second)
            # It is pulled to a free place of the first screen, below the others' heads.
            wait_until(lambda: self.is_shown(*reversed(self.pictures[0])), "the tile of the first screen", SECONDS)
            world.bring_back(second)
            there("the screen that came back")
        finally:
            world.remove_output(second)
            self.tell("move", TIPS.id, *TIPS.place, "--output", first)
        self.shown("on the only screen")

    def check_resolution(self):
        """The last one is that of the same screen on its side."""
        output, before = self.world.outputs()[0], self.arrangement.read_bytes()
        try:
            for width, height in ((1024, 768), (640, 480), (output.height, output.width)):
                self.world.resize(output.name, width, height)
                tiles = [tile for tile in TILES if tile.place[0] + tile.box()[2] <= width and tile.place[1] + tile.box()[3] <= height]
                for tile in tiles:
                    wait_until(lambda: self.is_tile(tile.box()), f"{tile.kind} at {width} by {height}", SECONDS)
        finally:
            self.world.resize(output.name, output.width, output.height)
        self.shown("at the old resolution")
        self.assertEqual(self.arrangement.read_bytes(), before)

    def check_scale(self):
        # A nested desk has names of its own for its screens.
        output = None if self.world.desk.is_nested else self.world.outputs()[0].name
        tile = Placed(1, family="small", place=(40, 40), output=output)
        # Xwayland takes the pointer for where it last saw it. This place no tile will have.
        self.world.move(TIPS.place[0] + 160, TIPS.place[1] + 90)
        self.world.rest()
        self.arrange(tile)
        desk = self.world.desk
        try:
            for scale in desk.scales:
                if desk.set_scale:
                    self.world.set_scale(tile.output, scale)
                else:
                    self.restart(GDK_SCALE=str(scale))
                if desk.set_scale and desk.draws_desktop:
                    # The picture behind the tile is another then.
                    wait_until(lambda: self.is_tile(tile.box(scale)), f"the tile at scale {scale}", SECONDS)
                else:
                    self.sees(tile, scale=scale)
        finally:
            self.arrange(*TILES)
            if desk.set_scale:
                self.world.set_scale(tile.output, 1)
                # Plasma does not always draw its picture again.
                desk.draws_desktop and self.restart_desktop()
            else:
                self.restart()
        self.shown("at scale 1")

    def restart_desktop(self):
        number = len(self.world.parts) - 1
        self.world.end_part(number)
        time.sleep(1)
        self.world.start_part(number)
        time.sleep(4)

    def check_desktop_restarted(self):
        self.restart_desktop()
        self.shown("with the desktop's program started again")
        self.check_desktop_clicked()

    def check_manager_restarted(self):
        self.world.end_part(0)
        self.world.start_part(0)
        wait_until(self.world.manager_answers, "the window manager", 30)
        time.sleep(2)
        self.shown("with the window manager started again")
        self.check_under_windows()

    def check_host_restarted(self):
        self.restart()
        self.shown("started again")

    def check_display_lost(self):
        start = time.monotonic()
        self.world.end_part(0) if self.world.desk.is_nested else self.world.end_compositor()
        self.assertEqual(self.desktop.wait(20), 1)
        self.assertLess(time.monotonic() - start, 2)
        self.assertLessEqual(self.complaints(), ["widgethost: the display is gone"])

    def results(self, pictures):
        """What each check found, in their order: empty where it holds, None where it has no meaning."""
        self.begin()
        desk, found = self.world.desk, {}
        for name, check in [(name[6:].replace("_", " "), check) for name, check in vars(DeskTest).items() if name.startswith("check_")]:
            try:
                found[name] = None if name in desk.all_lacks() else check(self) or ""
            except Exception as error:
                found[name] = f"{type(error).__name__}: {error}".splitlines()[0]
                self.keep_picture(pictures / f"{desk.name} - {name}.png")
            if name == "start":
                self.keep_picture(pictures / f"{desk.name}.png")
        return found

    def keep_picture(self, file):
        with contextlib.suppress(Exception):
            self.world.screenshot().save(file)


def results(name, pictures):
    test = type("Test", (DeskTest,), {"kind": world_of(name), "runTest": lambda self: None})()
    try:
        return test.results(pictures)
    finally:
        test.doCleanups()


class Desks(unittest.TestCase):
    def test_desks(self):
        for name in TESTED:
            with self.subTest(name), tempfile.TemporaryDirectory() as folder:
                self.assertEqual({check: why for check, why in results(name, Path(folder)).items() if why}, {})


def table(names, pictures):
    print("| desk | checks held | not tried | not held |\n| --- | --- | --- | --- |", flush=True)
    for name in names:
        try:
            found = results(name, pictures)
        except (Exception, unittest.SkipTest) as error:
            print(f"| {name} | cannot be started: {str(error).splitlines()[0]} | | |", flush=True)
            continue
        tried = [why for why in found.values() if why is not None]
        print(f"| {name} | {tried.count('')} of {len(tried)} | {', '.join(check for check, why in found.items() if why is None)} | "
              f"{'; '.join(f'{check}: {why}' for check, why in found.items() if why)} |", flush=True)


if __name__ == "__main__":
    if sys.argv[1:2] == ["--table"]:
        table(sys.argv[3:] or DESKS, Path(sys.argv[2]))
    else:
        unittest.main()
