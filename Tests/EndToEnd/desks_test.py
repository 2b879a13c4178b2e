"""Tiles on real desks: they keep their places and their layer, and take the clicks on them, while windows, outputs and programs change.

desks_test.py --table FOLDER [NAME…] prints what holds on each desk, or on the named ones. It leaves a picture of each desk in the folder,
and one of each check that fails.
"""

import contextlib
import json
import sys
import tempfile
import time
import unittest
from pathlib import Path

from desks import DESKS, HEIGHT, WIDTH
from desktop import DesktopTest, Placed
from desktop_session import LinkRecorder
from support import PROJECT, wait_until
from x_session import session_of

FAVOURITES, TIPS, READING = Placed(1, place=(120, 96)), Placed(2, "TipsWidget", "small", (600, 96)), Placed(3, "ReadingListWidget", "medium", (120, 400))
TILES = (FAVOURITES, TIPS, READING)
APPLICATION = "net.foliovault.WidgetHost"
# Where the desktop is empty.
EMPTY = (900, 560)
GREEN = (0, 160, 0)
# Those that CI has, with one where another program draws the desktop.
TESTED = ("sway", "GNOME, mutter", "LXQt")


class DeskTest(DesktopTest):
    """Each check leaves the desk as it was, except for the last one."""

    def restart(self, **variables):
        """The tiles of the one that ended may be on the screen a moment longer."""
        self.end()
        self.start(**variables)
        self.await_answers()

    def shown(self, why):
        self.session.rest()
        for picture in self.pictures:
            wait_until(lambda: self.is_shown(*picture), f"{why}: the tile at {picture[1][:2]}")

    @contextlib.contextmanager
    def running(self, process, why):
        """As long as the context lasts."""
        try:
            yield process
        finally:
            process.kill()
            process.wait()
        self.shown(why)

    def window(self, *description):
        return self.running(self.session.open_window(*description), "without the window")

    def click_desktop(self, button=1):
        """Closes the menu that some desks open at any button."""
        self.session.click(*EMPTY, button)
        time.sleep(.5)
        self.session.key("Escape")

    def check_start(self):
        self.shown("at the start")
        self.assertEqual(self.complaints(), [])

    def check_in_no_list(self):
        for window in self.session.windows():
            if window.process == self.desktop.pid:
                self.assertLessEqual({"SKIP_TASKBAR", "SKIP_PAGER"}, set(window.states))

    def check_name(self):
        """Docks and window switchers find the name and the icon by it."""
        self.succeed("desktop")
        gallery = lambda: [each for each in self.session.windows() if each.title == "Widgets"]
        try:
            window = wait_until(gallery, "the gallery")[0]
            self.assertEqual(window.application, APPLICATION)
            # Where windows are not tiled, its header can be reached.
            self.assertTrue(window.width == WIDTH or window.height < HEIGHT, window)
        finally:
            self.session.close_window(self.desktop.pid)
        wait_until(lambda: not gallery(), "the end of the gallery")
        self.shown("without the gallery")
        entry = PROJECT / "Resources" / "Desktop" / f"{APPLICATION}.desktop"
        self.assertIn(f"\nStartupWMClass={APPLICATION}\n", entry.read_text())

    def check_desktop_clicked(self):
        self.click_desktop()
        self.shown("after a click on the desktop")
        self.session.drag((EMPTY[0] - 60, EMPTY[1] - 60), EMPTY)
        self.session.key("Escape")
        self.shown("after a rubber band on the desktop")
        self.click_desktop(button=3)
        self.click_desktop()
        self.shown("after the desktop's menu")

    def check_under_windows(self):
        x, y = FAVOURITES.place
        with self.window(260, 200, GREEN) as window:
            self.session.place_window(window.pid, x + 150, y + 20, 260, 200)
            for act in (lambda: None, lambda: self.session.click(*FAVOURITES.at()), self.click_desktop):
                act()
                self.session.rest()
                time.sleep(.3)
                wait_until(lambda: self.session.screenshot().pixel(x + 200, y + 60) == GREEN, "the window over the tile")

    def check_under_fullscreen(self):
        with self.window(0, 0, GREEN):
            for place in ((200, 150), (650, 150)):
                wait_until(lambda: self.session.screenshot().pixel(*place) == GREEN, "the window over the tile")

    def check_show_desktop(self):
        with self.window(300, 200, GREEN) as window:
            self.session.place_window(window.pid, 200, 150, 300, 200)
            for is_shown in (True, False):
                self.session.show_desktop(is_shown)
                is_shown and self.shown("with the desktop shown")

    def check_rival(self):
        """Another program that raises itself wins, instead of both doing so endlessly."""
        log = self.session.folder / "rival"
        with open(log, "wb") as output, self.running(self.session.start_script("rival_window.py", stdout=output), "without the rival"):
            wait_until(lambda: log.stat().st_size, "the rival")
            time.sleep(2)
            before = log.stat().st_size
            time.sleep(1)
            self.assertEqual(log.stat().st_size, before, "they go on raising themselves")

    def check_workspaces(self):
        for number in (1, 0):
            self.session.switch_workspace(number)
            self.shown(f"on workspace {number + 1}")

    def check_link(self):
        tip = json.loads(self.rendered(TIPS, "--format", "tree"))["content"]["widgetURL"]
        for url, x, y in (self.links(FAVOURITES)[1], (tip, *TIPS.at(85, 150))):
            self.session.click(x, y)
            self.assertEqual(self.recorder.wait_for_link(), url)

    def check_keyboard(self):
        self.session.click(*READING.at())
        time.sleep(.3)
        self.session.key("Tab")
        self.session.key("Return")
        self.assertEqual(self.recorder.wait_for_link(), self.links(READING)[0][0])
        self.session.key("Escape")
        self.shown("after keys")

    def check_menu(self):
        x, y = FAVOURITES.at(180, 12)
        before = self.session.screenshot()
        self.session.click(x, y, button=3)
        area = (x + 20, y + 20, 40, 120)
        wait_until(lambda: self.session.screenshot().crop(*area).difference(before.crop(*area), 8) is not None, "the menu")
        self.session.key("Escape")
        self.shown("after the menu")

    def check_shadow(self):
        """Clicks and drags there are the desktop's."""
        _, _, width, height = FAVOURITES.box()
        before = self.arrangement.read_bytes()
        self.session.drag(FAVOURITES.at(width // 2, height + 8), FAVOURITES.at(width // 2 + 100, height + 120))
        self.click_desktop()
        self.shown("after a drag from its shadow")
        self.assertEqual(self.arrangement.read_bytes(), before)

    def drag_slowly(self, start, *ways):
        """As a person does: the toolkit looks at the pointer once a frame."""
        self.session.move(*start)
        time.sleep(.1)
        self.session.press()
        for end in ways:
            for step in range(1, 9):
                time.sleep(.03)
                self.session.move(*(a + (b - a) * step // 8 for a, b in zip(start, end)))
            start = end
        time.sleep(.1)
        self.session.release()

    def check_drag(self):
        """From a link, which it does not open, also where the pointer comes back to it."""
        for tile, start in ((FAVOURITES, self.links(FAVOURITES)[1][1:]), (TIPS, TIPS.at(85, 100))):
            before = self.arranged()[tile.id]
            self.drag_slowly(start, (start[0] + 8, start[1] + 160))
            wait_until(lambda: self.arranged()[tile.id] != before, "the new place")
            x, y = self.arranged()[tile.id]["position"]
            time.sleep(.5)
            self.drag_slowly((start[0] + x - tile.place[0], start[1] + y - tile.place[1]), start)
            wait_until(lambda: self.arranged()[tile.id]["position"] == list(tile.place), "the old place")
        self.drag_slowly(start, (start[0] + 40, start[1]), start)
        self.shown("back in its place")
        self.assertEqual(len(self.recorder.links()), self.recorder.seen, "a link was opened")

    def await_tile(self, box, what):
        """Something with a tile's outline, over any background."""
        def is_tile():
            picture = self.session.screenshot()
            inside, outside = picture.pixel(box[0] + box[2] // 2, box[1] + 6), picture.pixel(box[0] + box[2] // 2, box[1] - 24)
            return inside != outside and min(inside) > 120
        wait_until(is_tile, what)

    def check_screens(self):
        """A second one comes, changes its side, is unplugged and comes back. The tile on it goes along."""
        session = self.session
        first, second = session.outputs()[0].name, session.add_output()
        there = lambda what: self.await_tile((session.output(second).x + 200, 200, *TIPS.box()[2:]), f"the tile on {what}")
        try:
            self.succeed("move", TIPS.id, 200, 200, "--output", second)
            self.succeed("move", FAVOURITES.id, *FAVOURITES.place, "--output", first)
            there("the second screen")
            if hasattr(session, "swap"):
                session.swap(first, second)
                there("the exchanged screen")
                session.swap(second, first)
            session.remove_output(second)
            # It is pulled to a free place of the first screen, below the others' heads.
            wait_until(lambda: self.is_shown(*self.pictures[0]), "the tile of the first screen")
            session.bring_back(second)
            there("the screen that came back")
        finally:
            session.remove_output(second)
            self.succeed("move", TIPS.id, *TIPS.place, "--output", first)
        self.shown("on the only screen")

    def check_resolution(self):
        """The last one is that of the same screen on its side."""
        output, before = self.session.outputs()[0], self.arrangement.read_bytes()
        try:
            for width, height in ((1024, 768), (640, 480), (output.height, output.width)):
                self.session.resize(output.name, width, height)
                for tile in TILES:
                    if tile.place[0] + tile.box()[2] <= width and tile.place[1] + tile.box()[3] <= height:
                        self.await_tile(tile.box(), f"{tile.kind} at {width} by {height}")
        finally:
            self.session.resize(output.name, output.width, output.height)
        self.shown("at the old resolution")
        self.assertEqual(self.arrangement.read_bytes(), before)

    def check_scale(self):
        desk = self.session.desk
        # A nested desk has names of its own for its screens.
        tile = Placed(1, family="small", place=(40, 40), output=None if desk.is_nested else self.session.outputs()[0].name)
        # Xwayland takes the pointer for where it last saw it. No tile will have this place.
        self.session.move(*TIPS.at(160, 90))
        self.session.rest()
        self.arrange(tile)
        try:
            for scale in desk.scales:
                self.session.set_scale(tile.output, scale) if desk.set_scale else self.restart(GDK_SCALE=str(scale))
                if desk.set_scale and desk.draws_desktop:
                    # The picture behind the tile is another then.
                    self.await_tile(tile.box(scale), f"the tile at scale {scale}")
                else:
                    self.sees(tile, scale=scale)
        finally:
            self.arrange(*TILES)
            self.session.set_scale(tile.output, 1) if desk.set_scale else self.restart()
            # Plasma does not always draw its picture again.
            desk.set_scale and desk.draws_desktop and self.restart_desktop()
        self.shown("at scale 1")

    def restart_desktop(self):
        number = len(self.session.parts) - 1
        self.session.end_part(number)
        time.sleep(1)
        self.session.start_part(number)
        time.sleep(4)

    def check_desktop_restarted(self):
        self.restart_desktop()
        self.shown("with the desktop's program started again")
        self.check_desktop_clicked()

    def check_manager_restarted(self):
        self.session.end_part(0)
        self.session.start_part(0)
        wait_until(self.session.has_window_manager, "the window manager", 30)
        time.sleep(2)
        self.shown("with the window manager started again")
        self.check_under_windows()

    def check_host_restarted(self):
        self.restart()
        self.shown("started again")

    def check_display_lost(self):
        self.session.end_part(0) if self.session.desk.is_nested else self.session.end(self.session.compositor)
        self.assertEqual(self.desktop.wait(10), 1)
        self.assertLessEqual(self.complaints(), ["widgethost: the display is gone"])

    def results(self, pictures):
        """What each check found, in their order: empty if it holds, None if it has no meaning."""
        self.start_session()
        self.recorder = LinkRecorder(self.session)
        self.arrange(*TILES)
        self.start()
        self.pictures = [(self.expected(self.rendered(tile), tile.box()), tile.box()) for tile in TILES]
        desk, found = self.session.desk, {}
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
            self.session.screenshot().save(file)


def results(name, pictures):
    test = type("Test", (DeskTest,), {"session_class": session_of(name), "runTest": lambda self: None})()
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
    table(sys.argv[3:] or DESKS, Path(sys.argv[2]))
