"""What ends up in a picture, from a real library through both programs."""

import json
import plistlib
import unittest
import zlib

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

    def test_a_broken_picture_gives_way_to_the_symbol(self):
        bomb = b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", (60000).to_bytes(4, "big") * 2 + b"\x08\x06\0\0\0") + chunk(b"IDAT", zlib.compress(bytes(60001))) + chunk(b"IEND", b"")
        good = b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", (2).to_bytes(4, "big") * 2 + b"\x08\x02\0\0\0") + chunk(b"IDAT", zlib.compress(b"\0\xff\0\0\xff\0\0" * 2)) + chunk(b"IEND", b"")
        icons = [b"no image", bomb, good[:20], b"", good]
        self.write([{"Name": f"N{i}", "UUID": f"U{i}", "Icon": icon} for i, icon in enumerate(icons)])
        types = [frame["type"] for frame in self.frames("large") if frame["type"] in ("image", "symbol")]
        self.assertEqual(types, ["symbol", "symbol", "symbol", "symbol", "image"])
        tinted = [frame["type"] for frame in self.frames("large", "--mode", "tinted") if frame["type"] in ("image", "symbol")]
        self.assertEqual(tinted, ["symbol"] * 5)
        rows = png_rows(self.succeed("render", "FavoritesWidget", "--family", "large"))
        red = sum(row[x:x + 4] == b"\xff\0\0\xff" for row in rows for x in range(0, len(row), 4))
        self.assertGreater(red, 100)

    def test_scale_changes_pixels_and_nothing_else(self):
        self.write(favourites(9, Label=1))
        once = png_rows(self.succeed("render", "FavoritesWidget", "--family", "medium", "--scale", 1))
        twice = png_rows(self.succeed("render", "FavoritesWidget", "--family", "medium", "--scale", 2))
        self.assertEqual((len(once), len(twice)), (170, 340))
        self.assertEqual(once[0][:4][3], 0, "the corner is not clear")
        self.assertGreater(once[85][4 * 182 + 3], 200, "the middle is not covered")

    def test_a_placeholder_keeps_its_texts_to_itself(self):
        def picture(*more):
            return self.succeed("render", "FavoritesWidget", "--family", "medium", "--request", "placeholder", *more)
        self.assertEqual(picture(), picture())
        shown = self.succeed("render", "FavoritesWidget", "--family", "medium", "--preview", "Favorites Medium")
        self.assertNotEqual(picture(), shown)

    def test_light_dark_and_tinted_differ(self):
        self.write(favourites(9, Label=1))
        variants = [("--appearance", "light"), ("--appearance", "dark"), ("--mode", "tinted"), ("--mode", "vibrant")]
        pictures = [self.succeed("render", "FavoritesWidget", *variant) for variant in variants]
        self.assertEqual(len(set(pictures)), 4)

    def test_contrast_and_accent(self):
        self.write(favourites(9, Label=1))
        def picture(*more):
            return self.succeed("render", "FavoritesWidget", *more)
        self.assertEqual(picture("--contrast", "normal"), picture())
        self.assertEqual(png_rows(picture("--contrast", "high"))[85][4 * 4:4 * 5], b"\xff\xff\xff\xff")
        purple = picture("--mode", "tinted", "--accent", "AF52DE")
        self.assertIn(b"\xaf\x52\xde\xff", b"".join(png_rows(purple)))
        self.assertEqual(picture("--mode", "tinted", "--accent", "#af52de"), purple)
        for wrong in ("AF52D", "AF52DE0", "#", "", "red", "0xAF52", "-AF52D"):
            self.refused(USAGE, "render", "FavoritesWidget", f"--accent={wrong}")
        self.refused(USAGE, "render", "FavoritesWidget", "--contrast", "low")


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

    def test_pictures_and_galleries_follow_the_user(self):
        self.write(favourites(9, Label=1))
        english, hebrew, arabic = (self.render(language) for language in ("en_GB.UTF-8", "he_IL.UTF-8", "ar_EG.UTF-8"))
        self.assertNotEqual(english, hebrew)
        self.assertEqual(hebrew, arabic)
        self.succeed("gallery", "-o", self.home / "gallery")
        self.assertEqual((self.home / "gallery" / "FavoritesWidget-medium-light.png").read_bytes(), self.render("ar_EG.UTF-8", "--scale", 2))


def chunk(kind, content):
    return len(content).to_bytes(4, "big") + kind + content + zlib.crc32(kind + content).to_bytes(4, "big")


if __name__ == "__main__":
    unittest.main()
