"""Python's plistlib as a reference for property lists.

reference.py FOLDER COUNT   writes generated property lists, each as NAME.binary and NAME.xml, and what plistlib reads of each as
                            FILE.reference, one line of canonical text (see CanonicalText.h)
"""

import datetime
import pathlib
import plistlib
import random
import sys

REFERENCE_DATE = datetime.datetime(2001, 1, 1)
# Common letters, and those that are stored, escaped or ordered in a way of their own.
TEXTS = ["", "a", "Name", "x" * 14, "y" * 15, "z" * 300, "äöü", "日本語", "😀 wide", "<&>\"'", " blank ", "line\nbreak\ttab",
         "&amp;", "]]>", "\u00ff", "\ud7ff\ue000", "é" * 200]
INTEGERS = [0, 1, 127, 128, 255, 256, 32767, 32768, 65535, 65536, 2**31 - 1, 2**31, 2**32 - 1, 2**32, 2**53 + 1, 2**63 - 1,
            2**63, 2**64 - 1, -1, -128, -129, -2**31, -2**31 - 1, -2**63]
REALS = [0.0, -0.0, 0.5, 1e300, -1e-300, 3.141592653589793, 5e-324, float("inf"), float("-inf")]


def generated(source, depth):
    choice = source.randrange(10 if depth < 5 else 7)
    if choice == 0:
        return source.choice(TEXTS) + source.choice(["", str(source.randrange(1000))])
    if choice == 1:
        return source.choice(INTEGERS)
    if choice == 2:
        return source.choice(REALS)
    if choice == 3:
        return source.random() < 0.5
    if choice == 4:
        return datetime.datetime(source.randrange(1, 10000), source.randrange(1, 13), source.randrange(1, 29),
                                 source.randrange(24), source.randrange(60), source.randrange(60))
    if choice == 5:
        return source.randbytes(source.choice([0, 1, 2, 3, 14, 15, 16, 300]))
    if choice == 6:
        return source.randrange(-1000, 1000)
    size = source.choice([0, 1, 2, 3, 8, 14, 15, 16, 40]) if depth < 3 else source.randrange(4)
    if choice == 7:
        return [generated(source, depth + 1) for _ in range(size)]
    return {source.choice(TEXTS) + str(i % 7): generated(source, depth + 1) for i in range(size)}


def quoted(text):
    return '"' + "".join(f"\\{ord(c):02x}" if c in '"\\' or c < " " else c for c in text) + '"'


def shortest(number):
    text = f"{number:.17e}"
    for digits in range(17):
        if float(f"{number:.{digits}e}") == number:
            text = f"{number:.{digits}e}"
            break
    return text


def canonical(value):
    if isinstance(value, str):
        return quoted(value)
    if isinstance(value, bool):
        return "true" if value else "false"
    if isinstance(value, int):
        return str(value) if -2**63 <= value < 2**63 else "r" + shortest(float(value))
    if isinstance(value, float):
        return "r" + shortest(value)
    if isinstance(value, datetime.datetime):
        return "d" + shortest((value - REFERENCE_DATE).total_seconds())
    if isinstance(value, bytes):
        return f"<{value.hex()}>"
    if isinstance(value, list):
        return "[" + ", ".join(map(canonical, value)) + "]"
    entries = sorted(value.items(), key=lambda entry: entry[0].encode())
    return "{" + ", ".join(f"{quoted(key)}: {canonical(entry)}" for key, entry in entries) + "}"


def make(folder, count):
    source = random.Random(2001)
    for number in range(count):
        root = generated(source, 0) if number % 4 else [generated(source, 1) for _ in range(20)]
        for suffix, form in (("binary", plistlib.FMT_BINARY), ("xml", plistlib.FMT_XML)):
            content = plistlib.dumps(root, fmt=form, sort_keys=number % 2 == 0)
            (folder / f"{number:03}.{suffix}").write_bytes(content)
            (folder / f"{number:03}.{suffix}.reference").write_text(canonical(plistlib.loads(content)), encoding="utf-8")


make(pathlib.Path(sys.argv[1]), int(sys.argv[2]))
