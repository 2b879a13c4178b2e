"""A client of a Wayland compositor that speaks its wire protocol itself: a message is the object's number, its size and the request's
or event's number, and the arguments in 32-bit words.
"""

import array
import itertools
import socket
import struct


def text_argument(text):
    data = text.encode() + b"\0"
    return struct.pack("=I", len(data)) + data + b"\0" * (-len(data) % 4)


class WaylandClient:
    """`path` is the compositor's socket."""

    def __init__(self, path):
        self.socket = socket.socket(socket.AF_UNIX)
        self.socket.settimeout(20)
        self.socket.connect(str(path))
        self.received = b""
        self.numbers = itertools.count(2)
        self.globals = {}
        self.registry = self.number()
        self.send(1, 1, struct.pack("=I", self.registry))
        self.wait()

    def close(self):
        self.socket.close()

    def number(self):
        """For the next object; they are given in the order in which the compositor hears of them."""
        return next(self.numbers)

    def send(self, number, request, arguments=b"", descriptors=()):
        message = struct.pack("=2I", number, (8 + len(arguments)) << 16 | request) + arguments
        rights = [(socket.SOL_SOCKET, socket.SCM_RIGHTS, array.array("i", descriptors))] if descriptors else []
        self.socket.sendmsg([message], rights)

    def bind(self, interface, version):
        number = self.number()
        self.send(self.registry, 0, struct.pack("=I", self.globals[interface]) + text_argument(interface) +
                  struct.pack("=2I", version, number))
        return number

    def event(self):
        """The next one: the object's number, the event's, and its arguments."""
        while len(self.received) < 8 or len(self.received) < (size := struct.unpack_from("=I", self.received, 4)[0] >> 16):
            more = self.socket.recv(65536)
            if not more:
                raise ConnectionError("the compositor hung up")
            self.received += more
        number, event = struct.unpack_from("=IH", self.received)
        body, self.received = self.received[8:size], self.received[size:]
        if number == 1 and event == 0:
            raise ConnectionError(f"the compositor refuses: {body[12:].decode(errors='replace')}")
        if number == self.registry and event == 0:
            name, length = struct.unpack_from("=2I", body)
            self.globals[body[8:8 + length - 1].decode()] = name
        return number, event, body

    def wait(self):
        """Until the compositor has done all that it was asked for."""
        callback = self.number()
        self.send(1, 0, struct.pack("=I", callback))
        while self.event()[0] != callback:
            pass
