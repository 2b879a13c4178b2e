"""Draws how cost grows with the library as an SVG: panels side by side, both axes logarithmic, each line named at its end."""

import math
from html import escape
from typing import NamedTuple

PANEL_WIDTH, PANEL_HEIGHT, LABEL_WIDTH = 320, 300, 150
LEFT, TOP, BOTTOM = 64, 52, 52
INK, PALE, GRID = "#24292f", "#6e7781", "#e6e9ec"
LINE_HEIGHT = 15


class Line(NamedTuple):
    name: str
    colour: str
    """By the number of entries; none of them 0."""
    values: dict
    dashed: bool = False


class Panel(NamedTuple):
    title: str
    unit: str
    lines: list


def decades(values):
    """The powers of ten that hold the values."""
    return range(math.floor(math.log10(min(values))), math.ceil(math.log10(max(values))) + 1)


def power(exponent):
    return f"{10 ** exponent:,}" if exponent >= 0 else f"{10.0 ** exponent:.{-exponent}f}"


def spread(wanted, least, most):
    """The wanted places, moved apart until a line of text fits between two; in the order of what was wanted."""
    places = {}
    lowest = most
    for index in sorted(range(len(wanted)), key=lambda i: -wanted[i]):
        places[index] = lowest = min(wanted[index], lowest)
        lowest -= LINE_HEIGHT
    rise = max(0, least - min(places.values()))
    return [places[index] + rise for index in range(len(wanted))]


def text(x, y, content, anchor="start", size=12, fill=PALE, weight="normal"):
    return (f'<text x="{x:.1f}" y="{y:.1f}" text-anchor="{anchor}" font-size="{size}" font-weight="{weight}" '
            f'fill="{fill}">{escape(content)}</text>')


def panel_parts(panel, left):
    counts = sorted({count for line in panel.lines for count in line.values})
    rows = decades([value for line in panel.lines for value in line.values.values()])
    first, last = math.log10(counts[0]), math.log10(counts[-1])

    def x(count):
        return left + (math.log10(count) - first) / (last - first) * PANEL_WIDTH

    def y(value):
        return TOP + PANEL_HEIGHT - (math.log10(value) - rows[0]) / (rows[-1] - rows[0]) * PANEL_HEIGHT

    yield text(left, 24, panel.title, size=14, fill=INK, weight="600")
    yield text(left - 8, TOP - 12, panel.unit, "end")
    for exponent in rows:
        place = y(10 ** exponent)
        yield f'<path d="M{left} {place:.1f}H{left + PANEL_WIDTH}" stroke="{GRID}"/>'
        yield text(left - 8, place + 4, power(exponent), "end")
    for count in counts:
        yield f'<path d="M{x(count):.1f} {TOP}V{TOP + PANEL_HEIGHT}" stroke="{GRID}"/>'
        yield text(x(count), TOP + PANEL_HEIGHT + 20, f"{count:,}", "middle")
    yield text(left + PANEL_WIDTH / 2, TOP + PANEL_HEIGHT + 40, "entries", "middle")

    ends = spread([y(line.values[counts[-1]]) for line in panel.lines], TOP, TOP + PANEL_HEIGHT)
    for line, end in zip(panel.lines, ends):
        points = [(x(count), y(line.values[count])) for count in counts]
        path = "M" + "L".join(f"{across:.1f} {down:.1f}" for across, down in points)
        dash = ' stroke-dasharray="5 4"' if line.dashed else ""
        yield f'<path d="{path}" fill="none" stroke="{line.colour}" stroke-width="2" stroke-linejoin="round"{dash}/>'
        for across, down in points:
            yield f'<circle cx="{across:.1f}" cy="{down:.1f}" r="3" fill="#ffffff" stroke="{line.colour}" stroke-width="1.75"/>'
        yield text(left + PANEL_WIDTH + 10, end + 4, line.name, fill=line.colour, weight="600")


def drawn(panels):
    """The panels as the text of an SVG file."""
    step = LEFT + PANEL_WIDTH + LABEL_WIDTH
    width, height = step * len(panels), TOP + PANEL_HEIGHT + BOTTOM
    parts = [part for index, panel in enumerate(panels) for part in panel_parts(panel, LEFT + index * step)]
    return (f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{height}" viewBox="0 0 {width} {height}" '
            f'font-family="Inter, Helvetica, Arial, sans-serif">\n<rect width="{width}" height="{height}" rx="8" fill="#ffffff"/>\n'
            + "\n".join(parts) + "\n</svg>\n")
