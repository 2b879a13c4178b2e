"""Looks at a part of a Wayland compositor's first output, at no more cost than the copy of its pixels."""

import mmap
import os
import struct

from PIL import Image

from picture import Picture
from wayland_input import WaylandClient

BUFFER, READY, FAILED = 0, 2, 3


class WaylandEye(WaylandClient):
    """`box` is (x, y, width, height)."""

    def __init__(self, path, box):
        super().__init__(path)
        self.box = box
        self.output, self.memory = self.bind("wl_output"), self.bind("wl_shm")
        self.screencopy = self.bind("zwlr_screencopy_manager_v1")
        self.buffer = None

    def look(self):
        """The next picture that the compositor draws."""
        frame = self.number()
        self.send(self.screencopy, 1, struct.pack("=3I4i", frame, 0, self.output, *self.box))
        while True:
            number, event, body = self.event()
            if number != frame:
                continue
            if event == BUFFER:
                self.provide(*struct.unpack("=4I", body))
                self.send(frame, 0, struct.pack("=I", self.buffer))
            elif event == READY:
                self.send(frame, 1)
                return Picture(Image.frombytes("RGB", self.box[2:], self.pixels[:], "raw", "BGRX"))
            elif event == FAILED:
                raise ConnectionError("the compositor has no picture")

    def provide(self, form, width, height, stride):
        """A buffer, the same for all looks."""
        if self.buffer:
            return
        assert stride == 4 * width, (stride, width)
        file = os.memfd_create("screen")
        os.ftruncate(file, stride * height)
        self.pixels = mmap.mmap(file, stride * height)
        pool, self.buffer = self.number(), self.number()
        self.send(self.memory, 0, struct.pack("=2I", pool, stride * height), [file])
        self.send(pool, 0, struct.pack("=I4iI", self.buffer, 0, width, height, stride, form))
        os.close(file)
