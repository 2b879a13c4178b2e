"""The windows of the host's desktop: the editor of a tile, and the gallery of all widgets."""

import json
import shutil
import unittest
from pathlib import Path

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
        wait_until(lambda: not self.application.find_all("button", name), "the end of the editor")

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
        for key in ("Tab", "space"):
            self.world.key(key)
        self.assertNotIn("configuration", self.arranged()[1])
        self.press("Done")
        edited = Placed(1, place=FAVOURITES.place, settings=(("group", chosen["id"]),))
        self.world.move(1, 1)
        self.sees(edited)
        self.assertEqual(self.arranged()[1], edited.member())

        before = self.arrangement.read_bytes()
        self.open_editor(FAVOURITES)
        wait_until(lambda: len(self.groups()) > len(titles) - 1, "all groups")
        row = next(row for row in self.application.find("list box", "Group").children if row.children and row.children[0].name != "Reading")
        self.application.do_action(row, "select")
        self.press("Cancel")
        self.assertEqual(self.arrangement.read_bytes(), before)

        self.open_editor(READING)
        box = self.application.find("combo box", "Filter")
        self.application.do_action(next(each for each in box.all() if each.name == "Unread Only"), "click")
        self.press("Done")
        self.assertEqual(self.arranged()[2]["configuration"], {"filter": "unreadOnly"})

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
        wait_until(lambda: [row.children[0].name for row in pages()] == [each["displayName"] for each in described], "all widgets in their order")
        self.assertEqual(["selected" in row.states for row in pages()], [page == 0 for page in range(len(described))])
        for page, widget in enumerate(described):
            self.application.do_action(pages()[page], "select")
            wanted = [f"Add {widget['displayName']}, {TITLES[family]}" for family in widget["families"]]
            wait_until(lambda: [each.name for each in self.application.find_all("button") if each.name.startswith("Add ")] == wanted,
                       f"{widget['displayName']} in all sizes")
            if widget["kind"] == "FavoritesWidget":
                self.application.do_action(self.application.find("button", "Add Favorites, Medium"))
        self.application.do_action(pages()[0], "select")
        added = Placed(1, place=(24, 24), output=self.world.outputs()[0].name)
        wait_until(lambda: 1 in self.arranged() and "position" in self.arranged()[1], "the new tile's place")
        self.assertEqual(self.arranged()[1], added.member())

        # Away from the place where something is to be dropped; where the window is said to be, it is when this is seen.
        self.world.place_window(self.desktop.pid, 560, 20, 700, 600)
        wait_until(lambda: self.is_clear((210, 430, 100, 100)), "the free place")
        window = wait_until(lambda: [each for each in self.world.windows() if each.title == "Widgets" and each.x >= 560], "the gallery aside")[0]
        card = self.application.find(name="Reading List, Small")
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
        wait_until(lambda: 2 in self.arranged(), "the dropped widget")
        dropped = Placed(2, "ReadingListWidget", "small", (200, 424), self.world.outputs()[0].name)
        self.assertEqual(self.arranged()[2], dropped.member())
        self.world.close_window(self.desktop.pid)
        self.world.move(1, 1)
        self.sees(added)
        self.sees(dropped)
        self.end()

    def test_the_first_run(self):
        self.make_world(accessible=True)
        shutil.rmtree(self.library)
        self.start(options=())
        self.application = self.accessible()
        self.application.find("frame", "Widgets")
        self.application.find(name=f"There is no library yet. It is looked for here:\n{self.library}")
        self.application.do_action(self.application.find("button", "Show Examples"))
        examples = self.home / "data" / "widgethost" / "examples"
        wait_until(lambda: str(examples) in Path(f"/proc/{self.desktop.pid}/cmdline").read_text(), "the desktop with examples")
        self.await_answers()
        wait_until(lambda: [each for each in self.world.windows() if each.title == "Widgets"], "the gallery of the examples")
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
