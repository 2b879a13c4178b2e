"""The documentation's example of an extension, in another language, shown by the real host."""

import json
import unittest

from support import PROJECT, USAGE, HostTest, texts

EXAMPLE = PROJECT / "Documentation" / "examples" / "notes"
KIND = "NoteWidget"


class Example(HostTest):
    def setUp(self):
        super().setUp()
        notes = self.home / "Notes"
        notes.mkdir()
        (notes / "Ideas.txt").write_text("one\ntwo\n")
        (notes / "Shopping.txt").write_text("\n".join(f"item {number}" for number in range(40)))

    def host(self, *arguments, extension=EXAMPLE, **more):
        return super().host(*arguments, extension=extension, **more)

    def shown(self, *arguments):
        return texts(json.loads(self.succeed("render", KIND, "--format", "tree", *arguments)))

    def test_is_shown_as_any_other(self):
        widget, = json.loads(self.succeed("describe", "--json"))["widgets"]
        self.assertEqual((widget["kind"], len(widget["families"])), (KIND, 4))
        self.assertEqual(self.succeed("options", KIND, "note").decode(), "Ideas  Ideas (default)\nShopping  Shopping\n")
        self.assertEqual(self.succeed("options", KIND, "note", "--matching", "sho").decode(), "Shopping  Shopping\n")
        self.assertEqual(self.shown("--request", "placeholder"), ["Buy milk", "Call the printer", "Read the second chapter"])
        for request in ("snapshot", "timeline"):
            self.assertEqual(self.shown("--request", request), ["one", "two"])
        self.assertEqual(self.shown("--family", "large", "--set", "note=Shopping")[-1], "item 14")
        self.assertEqual(self.shown("--set", "note=../Shopping"), [])
        self.succeed("gallery", "-o", self.home / "gallery")
        self.assertEqual(len(list((self.home / "gallery").glob("*.png"))), 8)

    def test_refuses_what_it_does_not_have(self):
        for arguments in ((KIND, "--set", "colour=red"), ("ClockWidget",)):
            self.assertIn(KIND, self.refused(USAGE, "render", *arguments, "--format", "tree"))


if __name__ == "__main__":
    unittest.main()
