"""The peer of drawing: pycairo draws the frames of a large tile at scale 2. Prints the median in seconds.

peer_drawing.py FRAMES ROUNDS
"""

import json
import statistics
import sys
import time

import cairo

SIZE, SCALE = 364, 2

with open(sys.argv[1], encoding="utf-8") as file:
    frames = json.load(file)
surface = cairo.ImageSurface(cairo.FORMAT_ARGB32, SIZE * SCALE, SIZE * SCALE)


def draw():
    context = cairo.Context(surface)
    context.scale(SCALE, SCALE)
    context.set_source_rgba(.96, .96, .97, .86)
    context.rectangle(0, 0, SIZE, SIZE)
    context.fill()
    context.set_source_rgba(0, 0, 0, .88)
    context.select_font_face("Inter")
    context.set_font_size(12)
    for frame in frames:
        if "text" in frame:
            context.move_to(frame["x"], frame["y"] + 12)
            context.show_text(frame["text"])
        else:
            context.rectangle(frame["x"], frame["y"], frame["width"], frame["height"])
            context.fill()


times = []
for _ in range(int(sys.argv[2])):
    start = time.perf_counter()
    draw()
    times.append(time.perf_counter() - start)
print(statistics.median(times))
