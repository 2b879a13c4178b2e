"""The documentation's example of an extension, in another language, shown by the real host."""

import json

from support import PROJECT, HostTest, texts

KIND = "NoteWidget"


class Example(HostTest):
    extension = PROJECT / "Documentation" / "examples" / "notes"

    def shown(self, *arguments):
        return texts(json.loads(self.succeed("render", KIND, "--format", "tree", *arguments)))

    def test_is_shown_as_any_other(self):
        notes = self.home / "Notes"
        notes.mkdir()
        (notes / "Ideas.txt").write_text("one\ntwo\n")
        (notes / "Shopping.txt").write_text("\n".join(f"item {number}" for number in range(40)))
        widget, = json.loads(self.succeed("describe", "--json"))["widgets"]
        self.assertEqual((widget["kind"], len(widget["families"])), (KIND, 4))
        self.assertEqual(self.succeed("options", KIND, "note"), "Ideas  Ideas (default)\nShopping  Shopping\n")
        self.assertEqual(self.succeed("options", KIND, "note", "--matching", "sho"), "Shopping  Shopping\n")
        for arguments, expected in ((("--request", "placeholder"), ["Buy milk", "Call the printer", "Read the second chapter"]),
                                    (("--request", "snapshot"), ["one", "two"]), ((), ["one", "two"]), (("--set", "note=../Shopping"), [])):
            self.assertEqual(self.shown(*arguments), expected)
        self.assertEqual(self.shown("--family", "large", "--set", "note=Shopping")[-1], "item 14")
