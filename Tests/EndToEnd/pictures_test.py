"""Pictures that both programs make of a library."""

import io
import json
import unittest

from PIL import Image

from support import SIZES, USAGE, HostTest, favourites



class Pictures(HostTest):
    def test_options(self):
        """Each changes the picture, and other values are refused."""
        self.write(favourites(9, Label=1))
        variants = ((), ("--appearance", "dark"), ("--mode", "tinted"), ("--mode", "tinted", "--accent", "AF52DE"), ("--mode", "vibrant"),
                    ("--contrast", "high"), ("--scale", 2), ("--request", "placeholder"), ("--preview", "Favorites Medium"))
        pictures = [self.succeed("render", "FavoritesWidget", *variant) for variant in variants]
        self.assertEqual(len(set(pictures)), len(variants))
        self.assertIn((0xAF, 0x52, 0xDE, 255), set(Image.open(io.BytesIO(pictures[3])).getdata()))
        self.assertEqual(self.succeed("render", "FavoritesWidget", "--mode", "tinted", "--accent", "#af52de"), pictures[3])
        for wrong in ("--accent=AF52D", "--accent=AF52DE0", "--accent=", "--accent=0xAF52", "--contrast=low"):
            self.refused(USAGE, "render", "FavoritesWidget", wrong)

    def test_from_right_to_left(self):
        self.write(favourites(9, Label=1))
        self.more_variables = {"LC_ALL": "", "LC_MESSAGES": "", "LANGUAGE": "", "LANG": "ar_EG.UTF-8"}
        picture = self.succeed("render", "FavoritesWidget", "--scale", 2)
        self.succeed("gallery", "-o", self.home / "gallery")
        self.assertEqual((self.home / "gallery" / "FavoritesWidget-medium-light.png").read_bytes(), picture)
        frame = json.loads(self.succeed("render", "FavoritesWidget", "--format", "frames"))[0]
        self.assertAlmostEqual(frame["x"] + frame["width"], SIZES["medium"][0] - 12, delta=.003)


if __name__ == "__main__":
    unittest.main()
