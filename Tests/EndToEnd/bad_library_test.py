"""Broken libraries: the extension shows fewer rows or the empty view, and goes on."""

import os
import plistlib
from collections import namedtuple
from datetime import datetime

from support import LISTS, PNG, Extension, HomeTest, nodes, texts

DATE = datetime(2026, 3, 16)
VALUES = {"string": ("7", "", "NO", "2026-03-16T00:00:00Z"), "integer": (7, 0, 1), "real": (7.5, 0.0), "boolean": (False, True),
          "date": (DATE,), "data": (PNG, b""), "list of dictionaries": ([{"UUID": "inner"}],), "list": (["x"],),
          "dictionary": ({"databases": [1, 2], "windows": [3]}, {})}


# A list widget, its text if there is nothing to show, a record that uses every key, and of each key, the kinds of value that it takes.
List = namedtuple("List", "kind empty record kinds")
RECORD = {"Name": "Note", "UUID": "U-1", "Type": 3, "Label": 2, "Date": DATE, "Icon": PNG, "Location": "In › Box"}
FAVOURITE = {"Name": {"string"}, "UUID": {"string"}, "Type": {"integer"}, "Label": {"integer"}, "Icon": {"data"}, "Location": {"string"}}
LIST_TABLE = [
    List("FavoritesWidget", "No Favorites", RECORD, FAVOURITE),
    List("FavoritesWidget", "No Favorites", {"Name": "Base", "Path": "/x/Base"}, {"Name": {"string"}, "Path": {"string"}}),
    List("FavoritesWidget", "No Favorites", {"Name": "Smart", "SIUUID": "S-1"}, {"Name": {"string"}, "SIUUID": {"string"}}),
    List("FavoritesWidget", "No Favorites", {"Name": "Group", "Children": [{"UUID": "U-1"}]},
         {"Name": {"string"}, "Children": {"list of dictionaries"}}),
    List("ReadingListWidget", "No Items", {"title": "Page", "URL": "https://example.org", "unread": True, "date": DATE, "type": 3, "icon": PNG},
         {"title": {"string"}, "URL": {"string"}, "unread": {"boolean"}, "type": {"integer"}, "icon": {"data"}}),
    List("WorkspacesWidget", "No Workspaces", {"Name": "Desk", "workspace": {"databases": ["a"], "windows": []}},
         {"Name": {"string"}, "workspace": {"dictionary"}}),
]
FORMS = (plistlib.FMT_XML, plistlib.FMT_BINARY)


class BadLibraries(HomeTest):
    def setUp(self):
        super().setUp()
        self.extension = self.enterContext(Extension(self.environment()))

    def view(self, kind, family="large"):
        return self.extension.timeline(family, kind=kind)["entries"][0]["content"]["view"]

    def shown(self, each):
        return texts({"content": {"view": self.view(each.kind)}})

    def test_absent_empty_and_foreign_files_have_nothing_to_show(self):
        deep = b"<plist>" + b"<array>" * 1_000_000
        cycle = b"bplist00" + b"\xa1\x00" + b"\x08" + bytes(6) + b"\x01\x01" + (1).to_bytes(8, "big") + bytes(8) + (10).to_bytes(8, "big")
        for each in LIST_TABLE:
            with self.subTest(kind=each.kind, record=each.record):
                path = self.library / LISTS[each.kind]
                path.unlink(missing_ok=True)
                self.assertIn(each.empty, self.shown(each))
                roots = [plistlib.dumps(root, fmt=form) for form in FORMS
                         for root in ([], {}, each.record, "text", 7, True, [[]], [each.record, "x"], ["x", each.record], [each.record, [each.record]])]
                broken = [root[:-20] for root in roots]
                for content in (b"", b"\n", b"hello", b"\0" * 100, PNG, deep, deep + b"</array>" * 1_000_000 + b"</plist>", cycle, *roots, *broken):
                    path.write_bytes(content)
                    self.assertIn(each.empty, self.shown(each), content[:60])
                for make in (path.mkdir, lambda: os.mkfifo(path), lambda: path.symlink_to("/dev/zero")):
                    path.unlink(missing_ok=True)
                    make()
                    self.assertIn(each.empty, self.shown(each))
                    if path.is_dir():
                        path.rmdir()

    def test_a_value_of_the_wrong_kind_counts_as_missing(self):
        for each in LIST_TABLE:
            with self.subTest(kind=each.kind, record=each.record):
                for key, accepted in each.kinds.items():
                    for form in FORMS:
                        without = {name: value for name, value in each.record.items() if name != key}
                        self.write([without], form, LISTS[each.kind])
                        missing = self.view(each.kind)
                        for kind, values in VALUES.items():
                            views = []
                            for value in values:
                                self.write([{**each.record, key: value}], form, LISTS[each.kind])
                                views.append(self.view(each.kind))
                            changed = any(view != missing for view in views)
                            self.assertEqual(changed, kind in accepted, f"{key} is a {kind}")

    def test_long_names_and_icons(self):
        names = ["line\nbreak", "עברית", "x" * 10_000, "\u202eover", "😀" * 100, ""]
        for kind, file in LISTS.items():
            def nodes_of(names, **more):
                self.write([{"Name": name, "UUID": f"U{i}", "title": name, "URL": f"x:{i}", **more} for i, name in enumerate(names)], name=file)
                return [*nodes(self.view(kind, "extraLarge"))]
            self.assertEqual([node["text"] for node in nodes_of(names) if node.get("text") in names], names)
            icon = PNG + bytes(20_000_000)
            types = [node["type"] for node in nodes_of([""] * 16, Icon=icon, icon=icon)]
            self.assertEqual((types.count("link"), types.count("image")), (16, 0))
