"""The peer of drawing: pycairo draws the frames of a large tile at scale 2, texts with Pango. Prints the median in seconds.

peer_drawing.py FRAMES ROUNDS
"""

import json
import math
import statistics
import sys
import time

import cairo
import gi

gi.require_version("Pango", "1.0")
gi.require_version("PangoCairo", "1.0")
from gi.repository import Pango, PangoCairo  # noqa: E402

SIZE, SCALE, RADIUS, ICON = 364, 2, 20, 64
# A line's height says which of the text styles it has.
FONTS = {16: "Inter Bold 13px", 15: "Inter 12px", 13: "Inter Medium 10px"}

with open(sys.argv[1], encoding="utf-8") as file:
    frames = json.load(file)
surface = cairo.ImageSurface(cairo.FORMAT_ARGB32, SIZE * SCALE, SIZE * SCALE)
icon = cairo.ImageSurface(cairo.FORMAT_ARGB32, ICON, ICON)
cairo.Context(icon).paint()
fonts = {height: Pango.FontDescription.from_string(name) for height, name in FONTS.items()}


def tile(context):
    for x, y, quarter in ((SIZE - RADIUS, RADIUS, -1), (SIZE - RADIUS, SIZE - RADIUS, 0), (RADIUS, SIZE - RADIUS, 1), (RADIUS, RADIUS, 2)):
        context.arc(x, y, RADIUS, quarter * math.pi / 2, (quarter + 1) * math.pi / 2)
    context.close_path()
    context.set_source_rgba(.96, .96, .97, .86)
    context.fill_preserve()
    context.clip()


def text(context, frame):
    layout = PangoCairo.create_layout(context)
    layout.set_font_description(fonts[round(frame["height"])])
    layout.set_text(frame["text"], -1)
    context.move_to(frame["x"], frame["y"])
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
    context.set_source_surface(icon, 0, 0)
    context.paint()
    context.restore()


def draw():
    surface_context = cairo.Context(surface)
    surface_context.set_operator(cairo.Operator.CLEAR)
    surface_context.paint()
    surface_context.set_operator(cairo.Operator.OVER)
    surface_context.scale(SCALE, SCALE)
    tile(surface_context)
    for frame in frames:
        surface_context.set_source_rgba(0, 0, 0, .88)
        if frame["type"] == "text":
            text(surface_context, frame)
        elif frame["type"] == "symbol":
            symbol(surface_context, frame)
        elif frame["type"] == "image":
            image(surface_context, frame)
        elif frame["type"] == "circle":
            surface_context.arc(frame["x"] + frame["width"] / 2, frame["y"] + frame["height"] / 2, frame["width"] / 2, 0, 2 * math.pi)
            surface_context.fill()
        else:
            surface_context.rectangle(frame["x"], frame["y"], frame["width"], frame["height"])
            surface_context.fill()


times = []
for _ in range(int(sys.argv[2])):
    start = time.perf_counter()
    draw()
    times.append(time.perf_counter() - start)
print(statistics.median(times))
