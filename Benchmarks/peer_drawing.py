"""The peer of drawing: pycairo draws the frames of tiles at scale 2, texts with Pango.

peer_drawing.py FRAMES ROUNDS         draws one large tile again and again, and prints the median in seconds
peer_drawing.py --write FOLDER FRAMES…  draws each tile, named KIND-FAMILY.json, and writes it as PNG into the folder
"""

import json
import math
import statistics
import sys
import time
from pathlib import Path

import cairo
import gi

gi.require_version("Pango", "1.0")
gi.require_version("PangoCairo", "1.0")
from gi.repository import Pango, PangoCairo  # noqa: E402

SIZES = {"small": (170, 170), "medium": (364, 170), "large": (364, 364), "extraLarge": (752, 364)}
SCALE, RADIUS, ICON = 2, 20, 64
# A line's height says which of the text styles it has.
FONTS = {20: "Inter Semi-Bold 15px", 16: "Inter Bold 13px", 15: "Inter 12px", 13: "Inter Medium 10px"}

icon = cairo.ImageSurface(cairo.FORMAT_ARGB32, ICON, ICON)
cairo.Context(icon).paint()
fonts = {height: Pango.FontDescription.from_string(name) for height, name in FONTS.items()}


def rounded(context, x, y, width, height, radius):
    for across, down, quarter in ((width - radius, radius, -1), (width - radius, height - radius, 0), (radius, height - radius, 1), (radius, radius, 2)):
        context.arc(x + across, y + down, radius, quarter * math.pi / 2, (quarter + 1) * math.pi / 2)
    context.close_path()


def tile(context, width, height):
    rounded(context, 0, 0, width, height, RADIUS)
    context.set_source_rgba(.96, .96, .97, .86)
    context.fill_preserve()
    context.clip()
    rounded(context, .25, .25, width - .5, height - .5, RADIUS)
    context.set_source_rgba(0, 0, 0, .1)
    context.set_line_width(.5)
    context.stroke()


def text(context, frame):
    lines = frame["text"].split("\n")
    height = frame["height"] / len(lines)
    for row, line in enumerate(lines):
        layout = PangoCairo.create_layout(context)
        layout.set_font_description(fonts[round(height)])
        layout.set_text(line, -1)
        context.move_to(frame["x"], frame["y"] + row * height)
        PangoCairo.show_layout(context, layout)


def symbol(context, frame):
    context.set_line_width(frame["width"] * 1.75 / 24)
    x, y, width, height = (frame[key] for key in ("x", "y", "width", "height"))
    context.rectangle(x + width * .2, y + height * .1, width * .6, height * .8)
    for row in (.35, .5, .65):
        context.move_to(x + width * .35, y + height * row)
        context.line_to(x + width * .65, y + height * row)
    context.stroke()


def image(context, frame):
    context.save()
    context.translate(frame["x"], frame["y"])
    context.scale(frame["width"] / ICON, frame["height"] / ICON)
    rounded(context, 0, 0, ICON, ICON, ICON * .14)
    context.set_source_surface(icon, 0, 0)
    context.fill()
    context.restore()


def draw(surface, frames):
    context = cairo.Context(surface)
    context.scale(SCALE, SCALE)
    draw_on(context, surface.get_width() / SCALE, surface.get_height() / SCALE, frames)


def draw_on(context, width, height, frames):
    context.set_operator(cairo.Operator.CLEAR)
    context.paint()
    context.set_operator(cairo.Operator.OVER)
    tile(context, width, height)
    for frame in frames:
        context.set_source_rgba(0, 0, 0, .88)
        if frame["type"] == "text":
            text(context, frame)
        elif frame["type"] == "symbol":
            symbol(context, frame)
        elif frame["type"] == "image":
            image(context, frame)
        elif frame["type"] == "circle":
            context.arc(frame["x"] + frame["width"] / 2, frame["y"] + frame["height"] / 2, frame["width"] / 2, 0, 2 * math.pi)
            context.fill()
        else:
            context.rectangle(frame["x"], frame["y"], frame["width"], frame["height"])
            context.fill()


def canvas(family):
    width, height = SIZES[family]
    return cairo.ImageSurface(cairo.FORMAT_ARGB32, width * SCALE, height * SCALE)


def time_large(file, rounds):
    frames, times = json.loads(Path(file).read_text(encoding="utf-8")), []
    for _ in range(rounds):
        start = time.perf_counter()
        draw(canvas("large"), frames)
        times.append(time.perf_counter() - start)
    print(statistics.median(times))


def write(folder, files):
    for file in map(Path, files):
        surface = canvas(file.stem.split("-")[1])
        draw(surface, json.loads(file.read_text(encoding="utf-8")))
        surface.write_to_png(str(Path(folder) / f"{file.stem}.png"))


if __name__ == "__main__":
    if sys.argv[1] == "--write":
        write(sys.argv[2], sys.argv[3:])
    else:
        time_large(sys.argv[1], int(sys.argv[2]))
