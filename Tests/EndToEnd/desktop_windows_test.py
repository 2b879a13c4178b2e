"""The windows of the host's desktop: the editor of a tile, and the gallery of all widgets."""

import json
import shutil

from desktop import DesktopTest, Placed
from support import user_database, wait_until
from wayland_session import WaylandSession

FAVOURITES, READING = Placed(1, place=(104, 80)), Placed(2, "ReadingListWidget", place=(104, 400))
TITLES = {"small": "Small", "medium": "Medium", "large": "Large", "extraLarge": "Extra Large"}
GERMAN_MENU = ["Bearbeiten …", "Größe", "Neu laden", "Entfernen", "Widgets hinzufügen …", "Farben", "Sperren"]


class Windows(DesktopTest):
    session_class = WaylandSession

    def setUp(self):
        self.start_session(accessible=True)

    def start(self, *tiles, **more):
        super().start(*tiles, **more)
        self.application = self.accessible()

    def open_editor(self, tile):
        self.session.click(*tile.at(), button=3)
        self.choose("Edit…")
        self.application.find("button", "Done")

    def click(self, name):
        self.application.do_action(self.application.find("button", name))

    def await_end(self):
        wait_until(lambda: not self.application.find_all("button", "Done"), "the end of the editor")

    def rows(self, list_name):
        return [row for row in self.application.find("list box", list_name).children if row.children]

    def groups(self):
        return [row.children[0].name for row in self.rows("Group")]

    def test_the_editor(self):
        self.arrange(FAVOURITES, READING)
        self.start(FAVOURITES)
        options = json.loads(self.succeed("options", "FavoritesWidget", "group", "--json"))["options"]
        chosen = next(each["id"] for each in options if each["title"] == "Reading")

        # The search has the keyboard at first.
        self.open_editor(FAVOURITES)
        wait_until(lambda: {each["title"] for each in options} <= set(self.groups()), "all groups")
        for letter in "Readi":
            self.session.key(letter)
        wait_until(lambda: self.groups() == ["Reading"], "the one group")
        self.session.key("Down")
        self.assertNotIn("configuration", self.arranged()[1])
        self.session.key("Return")
        self.await_end()
        edited = Placed(1, place=FAVOURITES.place, settings=(("group", chosen),))
        self.session.move(1, 1)
        self.sees(edited)
        self.assertEqual(self.arranged()[1], edited.member())

        before = self.arrangement.read_bytes()
        self.open_editor(FAVOURITES)
        wait_until(lambda: len(self.groups()) >= len(options), "all groups")
        self.application.do_action(next(row for row in self.rows("Group") if row.children[0].name != "Reading"), "select")
        self.session.key("Escape")
        self.await_end()
        self.assertEqual(self.arrangement.read_bytes(), before)

        self.open_editor(READING)
        for title, choice in (("Filter", "Unread Only"), ("Size", "Large")):
            box = self.application.find("combo box", title)
            self.application.do_action(next(each for each in self.application.all(box) if each.name == choice), "click")
        self.click("Done")
        self.await_end()
        large = Placed(2, READING.kind, "large", READING.place, settings=(("filter", "unreadOnly"),))
        wait_until(lambda: self.arranged()[2] == large.member(), "both choices")

        # A group that was chosen once may be gone; that is no reason to choose another.
        self.succeed("edit", 1, "--set", "group=Vanished")
        before = self.arrangement.read_bytes()
        self.open_editor(FAVOURITES)
        wait_until(lambda: "Vanished (no longer there)" in self.groups(), "the group that is not there")
        self.click("Done")
        self.await_end()
        self.assertEqual(self.arrangement.read_bytes(), before)
        self.end()

    def test_the_gallery(self):
        self.arrange()
        self.start()
        self.await_answers()
        self.succeed("desktop")
        self.application.find("frame", "Widgets")
        described = json.loads(self.succeed("describe", "--json"))["widgets"]
        pages = lambda: self.rows(None)
        wait_until(lambda: [row.name for row in pages()] == [each["displayName"] for each in described], "all widgets in their order")
        self.assertEqual(["selected" in row.states for row in pages()], [page == 0 for page in range(len(described))])
        for page, widget in enumerate(described):
            self.application.do_action(pages()[page], "select")
            wanted = [f"Add {widget['displayName']}, {TITLES[family]}" for family in widget["families"]]
            wait_until(lambda: [each.name for each in self.application.find_all("button") if each.name.startswith("Add ")] == wanted,
                       f"{widget['displayName']} in all sizes")
            if widget["kind"] == "FavoritesWidget":
                self.assertIn("focusable", self.application.find("button", "Add Favorites, Medium").states)
                self.click("Add Favorites, Medium")
                self.application.find("label", "Added: Favorites, Medium")
                self.click("Undo")
                wait_until(lambda: self.arranged() == {}, "the end of the widget")
                self.click("Add Favorites, Medium")
        self.application.do_action(pages()[0], "select")
        output = self.session.outputs()[0].name
        added = Placed(2, place=(892, 24), output=output)
        wait_until(lambda: self.arranged().get(2) == added.member(), "the new tile's place")

        # Away from the place where something is to be dropped. The window has moved when this is seen.
        self.session.place_window(self.desktop.pid, 560, 20, 700, 600)
        wait_until(lambda: self.is_clear((210, 430, 100, 100)), "the free place")
        window = wait_until(lambda: [each for each in self.session.windows() if each.title == "Widgets" and each.x >= 560], "the gallery aside")[0]
        left, top, width, height = self.application.find("button", "Add Reading List, Small").extents
        self.session.move(window.x + left + width // 2, window.y + top + height // 2)
        self.session.press()
        # As slow as a person: the toolkit starts no drag if it receives all this at once.
        for x, y in ((600, 300), (400, 400), (203, 423), (203, 424)):
            self.application.all()
            self.session.move(x, y)
        wait_until(lambda: not self.is_clear((210, 430, 100, 100)), "the picture that is dragged")
        # The desktop has accepted the drag when it has had time to answer.
        for x in (202, 203):
            self.session.move(x, 424)
            self.application.all()
        self.session.release()
        dropped = Placed(3, "ReadingListWidget", "small", (200, 424), output)
        wait_until(lambda: self.arranged().get(3) == dropped.member(), "the dropped widget")
        self.session.close_window(self.desktop.pid)
        self.session.move(1, 1)
        self.sees(added)
        self.sees(dropped)
        self.end()

    def test_the_first_run(self):
        """Shows examples, one of which a click places, and the user's library as soon as it exists."""
        shutil.rmtree(self.library)
        self.start(options=(), **user_database(self.session.folder, self.home))
        self.application.find(name="These are examples. Your own library is shown once there is one.")
        self.click("Add Reading List, Small")
        placed = Placed(1, "ReadingListWidget", "small", (1086, 24), self.session.outputs()[0].name)
        wait_until(lambda: self.arrangement.exists() and self.arranged().get(1) == placed.member(), "the widget in its place")
        self.library.mkdir(parents=True)
        self.write([{"title": "One's own", "URL": "https://www.example.org/"}], "ReadingList.plist")
        self.succeed("desktop")
        self.session.move(1, 1)
        self.sees(placed)
        self.end()

    def test_a_gallery_without_widgets(self):
        self.use("#!/bin/sh\nexit 3\n")
        self.start(options=())
        self.application.find(name="An extension does not say what widgets it has.")
        self.application.find(name="the extension script exited with 3")
        self.end()

    def test_languages(self):
        self.arrange(FAVOURITES)
        self.start(LANG="de_DE.UTF-8")
        self.sees(FAVOURITES, LANG="de_DE.UTF-8")
        self.session.click(*FAVOURITES.at(), button=3)
        self.assertEqual([each.name for each in self.menu()], GERMAN_MENU)
        self.session.key("Escape")
        self.succeed("desktop", LANG="de_DE.UTF-8")
        self.application.find("button", "Hinzufügen Leseliste, Mittel")
        self.end()

        left = self.rendered(FAVOURITES)
        self.start(LANG="ar_EG.UTF-8")
        self.sees(FAVOURITES, LANG="ar_EG.UTF-8")
        self.assertFalse(self.is_shown(self.expected(left, FAVOURITES.box()), FAVOURITES.box()))
        self.end()
