"""The windows of the host's desktop: the editor of a tile, and the gallery of all widgets."""

import json
import os
import shutil
import unittest

from desktop import DesktopTest, Placed
from support import wait_until
from worlds import WaylandWorld

FAVOURITES, READING = Placed(1, place=(104, 80)), Placed(2, "ReadingListWidget", place=(104, 400))
TITLES = {"small": "Small", "medium": "Medium", "large": "Large", "extraLarge": "Extra Large"}
GERMAN_MENU = ["Bearbeiten …", "Größe", "Neu laden", "Entfernen", "Widgets hinzufügen …", "Farben", "Sperren"]


class Windows(DesktopTest):
    kind = WaylandWorld

    def open_editor(self, tile):
        self.world.click(tile.place[0] + 60, tile.place[1] + 20, button=3)
        self.choose("Edit…")
        self.application.find("button", "Done")

    def press(self, name):
        """A button of the editor, which closes it."""
        self.application.do_action(self.application.find("button", name))
        self.await_end()

    def press_key(self, key):
        """One that closes the editor."""
        self.world.key(key)
        self.await_end()

    def await_end(self):
        wait_until(lambda: not self.application.find_all("button", "Done"), "the end of the editor")

    def groups(self):
        rows = self.application.find("list box", "Group").children
        return [row.children[0].name for row in rows if row.children]

    def test_the_editor(self):
        self.make_world(accessible=True)
        self.arrange(FAVOURITES, READING)
        self.start()
        self.application = self.accessible()
        self.sees(FAVOURITES)
        groups = json.loads(self.tell("options", "FavoritesWidget", "group", "--json"))
        titles = [each["title"] for each in groups["options"]]
        chosen = next(each for each in groups["options"] if each["title"] == "Reading")

        # The search has the keyboard at first.
        self.open_editor(FAVOURITES)
        wait_until(lambda: set(titles) <= set(self.groups()), "all groups")
        self.world.type("Readi")
        wait_until(lambda: self.groups() == ["Reading"], "the one group")
        self.world.key("Down")
        self.assertNotIn("configuration", self.arranged()[1])
        self.press_key("Return")
        edited = Placed(1, place=FAVOURITES.place, settings=(("group", chosen["id"]),))
        self.world.move(1, 1)
        self.sees(edited)
        self.assertEqual(self.arranged()[1], edited.member())

        before = self.arrangement.read_bytes()
        self.open_editor(FAVOURITES)
        wait_until(lambda: len(self.groups()) > len(titles) - 1, "all groups")
        row = next(row for row in self.application.find("list box", "Group").children if row.children and row.children[0].name != "Reading")
        self.application.do_action(row, "select")
        self.press_key("Escape")
        self.assertEqual(self.arrangement.read_bytes(), before)

        self.open_editor(READING)
        for title, choice in (("Filter", "Unread Only"), ("Size", "Large")):
            box = self.application.find("combo box", title)
            self.application.do_action(next(each for each in box.all() if each.name == choice), "click")
        self.press("Done")
        large = Placed(2, READING.kind, "large", READING.place, settings=(("filter", "unreadOnly"),))
        wait_until(lambda: self.arranged()[2] == large.member(), "both choices")

        # What was chosen once may be gone; that is no reason to choose something else.
        self.tell("edit", 1, "--set", "group=Vanished")
        before = self.arrangement.read_bytes()
        self.open_editor(FAVOURITES)
        wait_until(lambda: "Vanished (no longer there)" in self.groups(), "the group that is not there")
        self.press("Done")
        self.assertEqual(self.arrangement.read_bytes(), before)
        self.end()

    def open_gallery(self, **variables):
        self.world.run(*self.command("desktop"), variables=variables)
        return self.application.find("frame", "Widgets")

    def test_the_gallery(self):
        self.make_world(accessible=True)
        self.arrange()
        self.start()
        self.await_answers()
        self.application = self.accessible()
        self.open_gallery()
        described = json.loads(self.tell("describe", "--json"))["widgets"]
        pages = lambda: [row for row in self.application.find("list box").children if row.children]
        wait_until(lambda: [row.name for row in pages()] == [each["displayName"] for each in described], "all widgets in their order")
        self.assertEqual(["selected" in row.states for row in pages()], [page == 0 for page in range(len(described))])
        for page, widget in enumerate(described):
            self.application.do_action(pages()[page], "select")
            wanted = [f"Add {widget['displayName']}, {TITLES[family]}" for family in widget["families"]]
            wait_until(lambda: [each.name for each in self.application.find_all("button") if each.name.startswith("Add ")] == wanted,
                       f"{widget['displayName']} in all sizes")
            if widget["kind"] == "FavoritesWidget":
                preview = self.application.find("button", "Add Favorites, Medium")
                self.assertIn("focusable", preview.states)
                self.application.do_action(preview)
                self.application.find("label", "Added: Favorites, Medium")
                self.application.do_action(self.application.find("button", "Undo"))
                wait_until(lambda: self.arranged() == {}, "the end of the widget")
                self.application.do_action(preview)
        self.application.do_action(pages()[0], "select")
        added = Placed(2, place=(892, 24), output=self.world.outputs()[0].name)
        wait_until(lambda: 2 in self.arranged() and "position" in self.arranged()[2], "the new tile's place")
        self.assertEqual(self.arranged()[2], added.member())

        # Away from the place where something is to be dropped; where the window is said to be, it is when this is seen.
        self.world.place_window(self.desktop.pid, 560, 20, 700, 600)
        wait_until(lambda: self.is_clear((210, 430, 100, 100)), "the free place")
        window = wait_until(lambda: [each for each in self.world.windows() if each.title == "Widgets" and each.x >= 560], "the gallery aside")[0]
        card = self.application.find("button", "Add Reading List, Small")
        left, top, width, height = card.extents
        self.world.move(window.x + left + width // 2, window.y + top + height // 2)
        self.world.press()
        # As slow as a hand: the toolkit starts no drag where it hears of all this at once.
        for x, y in ((600, 300), (400, 400), (203, 423), (203, 424)):
            self.application.tree()
            self.world.move(x, y)
        wait_until(lambda: not self.is_clear((210, 430, 100, 100)), "the picture that is dragged")
        # What lies below has said that it takes it when the desktop has time to answer.
        for x in (202, 203):
            self.world.move(x, 424)
            self.application.tree()
        self.world.release()
        wait_until(lambda: 3 in self.arranged(), "the dropped widget")
        dropped = Placed(3, "ReadingListWidget", "small", (200, 424), self.world.outputs()[0].name)
        self.assertEqual(self.arranged()[3], dropped.member())
        self.world.close_window(self.desktop.pid)
        self.world.move(1, 1)
        self.sees(added)
        self.sees(dropped)
        self.end()

    def test_the_first_run(self):
        """Examples, one of which a click places; and one's own library, once there is one."""
        self.make_world(accessible=True)
        shutil.rmtree(self.library)
        users, groups = self.world.folder / "passwd", self.world.folder / "group"
        users.write_text(f"user:x:{os.getuid()}:{os.getgid()}::{self.home}:/bin/sh\n")
        groups.write_text(f"user:x:{os.getgid()}:\n")
        self.start(options=(), LD_PRELOAD="libnss_wrapper.so", NSS_WRAPPER_PASSWD=str(users), NSS_WRAPPER_GROUP=str(groups),
                   **({"ASAN_OPTIONS": "verify_asan_link_order=0"} if os.environ.get("SANITIZED") else {}))
        self.application = self.accessible()
        self.application.find(name="These are examples. Your own library is shown once there is one.")
        self.application.do_action(self.application.find("button", "Add Reading List, Small"))
        placed = Placed(1, "ReadingListWidget", "small", (1086, 24), self.world.outputs()[0].name)
        wait_until(lambda: self.arrangement.exists() and self.arranged().get(1) == placed.member(), "the widget in its place")
        self.library.mkdir(parents=True)
        self.write([{"title": "One's own", "URL": "https://www.example.org/"}], "ReadingList.plist")
        self.tell("desktop")
        self.world.move(1, 1)
        self.sees(placed)
        self.end()

    def test_a_gallery_without_widgets(self):
        self.make_world(accessible=True)
        self.use("#!/bin/sh\nexit 3\n")
        self.start(options=())
        application = self.accessible()
        application.find(name="An extension does not say what widgets it has.")
        application.find(name="the extension script exited with 3")
        self.end()

    def test_languages(self):
        self.make_world(accessible=True)
        self.arrange(FAVOURITES)
        self.start(LANG="de_DE.UTF-8")
        self.application = self.accessible()
        self.sees(FAVOURITES, LANG="de_DE.UTF-8")
        self.world.click(FAVOURITES.place[0] + 60, FAVOURITES.place[1] + 20, button=3)
        self.assertEqual([each.name for each in self.menu()], GERMAN_MENU)
        self.world.key("Escape")
        self.open_gallery(LANG="de_DE.UTF-8")
        self.application.find("button", "Hinzufügen Leseliste, Mittel")
        self.end()

        left = self.rendered(FAVOURITES)
        self.start(LANG="ar_EG.UTF-8")
        self.sees(FAVOURITES, LANG="ar_EG.UTF-8")
        self.assertFalse(self.is_shown(self.expected(left, FAVOURITES.box()), FAVOURITES.box()))
        self.end()


if __name__ == "__main__":
    unittest.main()
