"""Pictures of the screen, and the one that is its wallpaper."""

import io

from PIL import Image, ImageChops


class Picture:
    """Pixels in red, green and blue. A box is (x, y, width, height)."""

    def __init__(self, image):
        self.image, self.size = image, image.size

    @classmethod
    def from_file(cls, data):
        return cls(Image.open(io.BytesIO(data)).convert("RGB"))

    @classmethod
    def gradient(cls, width, height):
        """No two places of it look alike, and few look like a window."""
        reds = Image.new("L", (width, 1))
        reds.putdata([60 + x * 190 // width for x in range(width)])
        greens = Image.new("L", (1, height))
        greens.putdata([220 - y * 180 // height for y in range(height)])
        return cls(Image.merge("RGB", (*(each.resize((width, height)) for each in (reds, greens)), Image.new("L", (width, height), 155))))

    @classmethod
    def plain(cls, width, height, colour):
        return cls(Image.new("RGB", (width, height), tuple(colour)))

    def under(self, png):
        """This one, seen through a picture of the same size whose pixels may be translucent."""
        return Picture(Image.alpha_composite(self.image.convert("RGBA"), Image.open(io.BytesIO(png)).convert("RGBA")).convert("RGB"))

    def pixel(self, x, y):
        return self.image.getpixel((x, y))

    def crop(self, x, y, width, height):
        assert 0 <= x and x + width <= self.size[0] and 0 <= y and y + height <= self.size[1], (x, y, width, height, self.size)
        return Picture(self.image.crop((x, y, x + width, y + height)))

    def difference(self, other, tolerance=0):
        """The smallest box around all pixels of which a channel differs by more than the tolerance; None if none does."""
        assert self.size == other.size, (self.size, other.size)
        box = ImageChops.difference(self.image, other.image).point(lambda value: 255 * (value > tolerance)).getbbox()
        return box and (box[0], box[1], box[2] - box[0], box[3] - box[1])

    def save(self, path):
        self.image.save(path, compress_level=1)
