"""Pictures that both programs make of a library."""

import json
import plistlib
import unittest

from picture import png_rows
from support import FAMILIES, SIZES, USAGE, HostTest, favourites

ODD_NAMES = ["A very long title that goes on and on until nobody would read any further, not even here", "line\nbreak and\u2028more",
             "עברית ועוד", "日本語の題名", "x" * 10_000, "e\u0301" * 50, "👩‍👩‍👧‍👦 family", "\u202e\u0000tricks".replace("\u0000", ""), ""]


class Pictures(HostTest):
    def frames(self, family, *more):
        return json.loads(self.succeed("render", "FavoritesWidget", "--family", family, "--format", "frames", *more))

    def test_everything_stays_inside_and_rows_do_not_touch(self):
        self.write([{"Name": name, "UUID": f"U{i}", "Location": f"Place › {name}", "Label": i % 8} for i, name in enumerate(ODD_NAMES * 2)],
                   plistlib.FMT_XML)
        for family in FAMILIES:
            frames = self.frames(family)
            width, height = SIZES[family]
            for frame in frames:
                self.assertGreaterEqual(frame["x"], 12 - 1e-6, frame)
                self.assertGreaterEqual(frame["y"], 12 - 1e-6, frame)
                self.assertLessEqual(frame["x"] + frame["width"], width - 12 + 1e-3, frame)
                self.assertLessEqual(frame["y"] + frame["height"], height - 12 + 1e-3, frame)
            links = {json.dumps(link): link for frame in frames for link in frame["links"]}
            self.assertEqual(len(links), {"small": 4, "medium": 5, "large": 7, "extraLarge": 16}[family])
            columns = {}
            for link in links.values():
                columns.setdefault(link["x"], []).append((link["y"], link["y"] + link["height"]))
            for rows in columns.values():
                rows.sort()
                for (_, end), (start, _) in zip(rows, rows[1:]):
                    self.assertLessEqual(end, start + 1e-6)
            self.assertIn("…", "".join(frame.get("text", "") for frame in frames))
            self.assertFalse([frame for frame in frames if frame.get("text") and "\n" in frame["text"]])

    def test_options(self):
        """Each changes the picture, and other values are refused."""
        self.write(favourites(9, Label=1))
        variants = ((), ("--appearance", "dark"), ("--mode", "tinted"), ("--mode", "tinted", "--accent", "AF52DE"), ("--mode", "vibrant"),
                    ("--contrast", "high"), ("--scale", 2), ("--request", "placeholder"), ("--preview", "Favorites Medium"))
        pictures = [self.succeed("render", "FavoritesWidget", *variant) for variant in variants]
        self.assertEqual(len(set(pictures)), len(variants))
        self.assertIn(b"\xaf\x52\xde\xff", b"".join(png_rows(pictures[3])))
        self.assertEqual(self.succeed("render", "FavoritesWidget", "--mode", "tinted", "--accent", "#af52de"), pictures[3])
        for wrong in ("--accent=AF52D", "--accent=AF52DE0", "--accent=", "--accent=0xAF52", "--contrast=low"):
            self.refused(USAGE, "render", "FavoritesWidget", wrong)


class FromRightToLeft(HostTest):
    def render(self, language, *more):
        self.more_variables = {"LC_ALL": "", "LC_MESSAGES": "", "LANGUAGE": "", "LANG": language}
        return self.succeed("render", "FavoritesWidget", *more)

    def test_a_layout_is_mirrored_as_a_whole(self):
        self.write(favourites(9, Label=1) + [{"Name": name, "UUID": name} for name in ODD_NAMES if name])
        for family in FAMILIES:
            left, right = (json.loads(self.render(language, "--family", family, "--format", "frames"))
                           for language in ("en_GB.UTF-8", "he_IL.UTF-8"))
            width = SIZES[family][0]
            self.assertEqual(len(left), len(right))
            self.assertEqual((left[0]["text"], left[0]["x"]), ("Favorites", 12))
            for one, other in zip(left, right):
                for box, mirrored in zip((one, *one["links"]), (other, *other["links"])):
                    # Each was rounded.
                    self.assertAlmostEqual(width - box.pop("x") - box["width"], mirrored.pop("x"), delta=0.003)
                self.assertEqual(one, other)

    def test_the_gallery_is_mirrored_too(self):
        self.write(favourites(9, Label=1))
        picture = self.render("ar_EG.UTF-8", "--scale", 2)
        self.succeed("gallery", "-o", self.home / "gallery")
        self.assertEqual((self.home / "gallery" / "FavoritesWidget-medium-light.png").read_bytes(), picture)


if __name__ == "__main__":
    unittest.main()
