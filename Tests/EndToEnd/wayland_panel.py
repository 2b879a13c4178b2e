"""A panel of a desktop: a surface along an edge of the screen that other windows leave free."""

import os
import struct

from wayland_client import WaylandClient, text_argument

TOP, BOTTOM, LEFT, RIGHT = 1, 2, 4, 8
TOP_LAYER = 2
XRGB8888 = 1


class WaylandPanel(WaylandClient):
    """`edge` is "top" or "left"; `thickness` is in units."""

    def __init__(self, path, edge, thickness):
        super().__init__(path)
        compositor, shell, memory = (self.bind(name, 1) for name in ("wl_compositor", "zwlr_layer_shell_v1", "wl_shm"))
        surface = self.number()
        self.send(compositor, 0, struct.pack("=I", surface))
        layer = self.number()
        self.send(shell, 0, struct.pack("=4I", layer, surface, 0, TOP_LAYER) + text_argument("panel"))
        anchor, *size = (TOP | LEFT | RIGHT, 0, thickness) if edge == "top" else (LEFT | TOP | BOTTOM, thickness, 0)
        self.send(layer, 0, struct.pack("=2I", *size))
        self.send(layer, 1, struct.pack("=I", anchor))
        self.send(layer, 2, struct.pack("=i", thickness))
        self.send(surface, 6)
        while (event := self.event())[:2] != (layer, 0):
            pass
        serial, width, height = struct.unpack("=3I", event[2])
        self.send(layer, 6, struct.pack("=I", serial))
        # In black.
        file = os.memfd_create("panel")
        os.truncate(file, 4 * width * height)
        pool = self.number()
        self.send(memory, 0, struct.pack("=2I", pool, 4 * width * height), [file])
        os.close(file)
        buffer = self.number()
        self.send(pool, 0, struct.pack("=I5i", buffer, 0, width, height, 4 * width, XRGB8888))
        self.send(surface, 1, struct.pack("=I2i", buffer, 0, 0))
        self.send(surface, 6)
        self.wait()
