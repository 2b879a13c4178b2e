"""Pictures of the screen, and the one that is its wallpaper."""

import re
import struct
import zlib
from pathlib import Path


def png_rows(png):
    """The rows of a PNG file without filters, four bytes to a pixel: red, green, blue and alpha."""
    width, height = struct.unpack(">2I", png[16:24])
    data, position = b"", 8
    while position < len(png):
        length, kind = struct.unpack(">I4s", png[position:position + 8])
        if kind == b"IDAT":
            data += png[position + 8:position + 8 + length]
        position += 12 + length
    raw = zlib.decompress(data)
    stride = 1 + 4 * width
    assert len(raw) == stride * height and not any(raw[::stride])
    return [raw[row * stride + 1:(row + 1) * stride] for row in range(height)]


class Picture:
    """Pixels of three bytes, red, green and blue, row by row from the top left. A box is (x, y, width, height)."""

    def __init__(self, width, height, data):
        assert len(data) == width * height * 3, (width, height, len(data))
        self.size = (width, height)
        self.data = bytes(data)

    @classmethod
    def from_ppm(cls, data):
        """What grim writes."""
        header = re.match(rb"P6\s(\d+)\s(\d+)\s255\s", data)
        return cls(int(header[1]), int(header[2]), data[header.end():])

    @classmethod
    def from_words(cls, width, height, data):
        """From pixels of four bytes, blue first, the last unused."""
        pixels = bytearray(width * height * 3)
        for channel in range(3):
            pixels[channel::3] = data[2 - channel::4]
        return cls(width, height, pixels)

    @classmethod
    def gradient(cls, width, height):
        """No two places of it look alike, and few look like a window."""
        reds = bytes(60 + x * 190 // width for x in range(width))
        rows = []
        for y in range(height):
            row = bytearray(width * 3)
            row[0::3], row[1::3], row[2::3] = reds, bytes([220 - y * 180 // height]) * width, b"\x9b" * width
            rows.append(row)
        return cls(width, height, b"".join(rows))

    @classmethod
    def plain(cls, width, height, colour):
        return cls(width, height, bytes(colour) * (width * height))

    def under(self, png):
        """This one, seen through a picture of the same size whose pixels may be translucent."""
        rows = png_rows(png)
        assert (len(rows[0]) // 4, len(rows)) == self.size, (self.size, len(rows))
        data = bytearray(self.data)
        for index, (red, green, blue, alpha) in enumerate(struct.iter_unpack("4B", b"".join(rows))):
            if alpha:
                for channel, value in enumerate((red, green, blue), 3 * index):
                    data[channel] = (value * alpha + data[channel] * (255 - alpha) + 127) // 255
        return Picture(*self.size, data)

    def pixel(self, x, y):
        assert 0 <= x < self.size[0] and 0 <= y < self.size[1], (x, y, self.size)
        start = (y * self.size[0] + x) * 3
        return tuple(self.data[start:start + 3])

    def row(self, y):
        length = self.size[0] * 3
        return self.data[y * length:(y + 1) * length]

    def crop(self, x, y, width, height):
        return Picture(width, height, b"".join(self.row(line)[x * 3:(x + width) * 3] for line in range(y, y + height)))

    def difference(self, other, tolerance=0):
        """The smallest box around all pixels of which a channel differs by more than the tolerance; None where there are none."""
        assert self.size == other.size, (self.size, other.size)
        lines, left, right = [], self.size[0], -1
        for y in range(self.size[1]):
            mine, others = self.row(y), other.row(y)
            if mine == others:
                continue
            places = [i // 3 for i, (a, b) in enumerate(zip(mine, others)) if abs(a - b) > tolerance]
            if places:
                lines.append(y)
                left, right = min(left, places[0]), max(right, places[-1])
        return (left, lines[0], right - left + 1, lines[-1] - lines[0] + 1) if lines else None

    def save(self, path):
        """Writes a PNG file."""
        def chunk(kind, content):
            return struct.pack(">I", len(content)) + kind + content + struct.pack(">I", zlib.crc32(kind + content))
        rows = b"".join(b"\0" + self.row(y) for y in range(self.size[1]))
        Path(path).write_bytes(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", *self.size, 8, 2, 0, 0, 0)) +
                               chunk(b"IDAT", zlib.compress(rows, 1)) + chunk(b"IEND", b""))
