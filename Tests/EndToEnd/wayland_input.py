"""A pointer and a keyboard for a Wayland compositor."""

import array
import itertools
import socket
import string
import struct
import tempfile

# Each key's symbols without shift and with it; a key of its own for each letter.
KEYS = {"Tab": "Tab, ISO_Left_Tab", **{name: name for name in ("Return", "Escape", "Up", "Down", "Menu", "F10", *string.ascii_letters)}}
FIRST_CODE = 9
BUTTONS = {1: 0x110, 2: 0x112, 3: 0x111}


def keymap():
    codes = "".join(f"<K{i}> = {FIRST_CODE + i};" for i in range(len(KEYS)))
    symbols = "".join(f"key <K{i}> {{[{symbol}]}};" for i, symbol in enumerate(KEYS.values()))
    return (f'xkb_keymap {{ xkb_keycodes "k" {{ minimum = 8; maximum = 255; {codes} }}; xkb_types "t" {{ include "complete" }};'
            f'xkb_compatibility "c" {{ include "complete" }}; xkb_symbols "s" {{ {symbols} }}; }};').encode() + b"\0"


class WaylandClient:
    """Speaks the wire protocol itself: a message is the object's number, its size and the request's or event's number, and the arguments in 32-bit
    words. `path` is the compositor's socket.
    """

    def __init__(self, path):
        self.socket = socket.socket(socket.AF_UNIX)
        self.socket.settimeout(20)
        self.socket.connect(str(path))
        self.stream = self.socket.makefile("rb")
        self.numbers = itertools.count(2)
        self.globals = {}
        self.registry = self.number()
        self.send(1, 1, struct.pack("=I", self.registry))
        self.wait()

    def close(self):
        self.stream.close()
        self.socket.close()

    def number(self):
        """For the next object; numbers must be sent in their order."""
        return next(self.numbers)

    def send(self, number, request, arguments=b"", descriptors=()):
        message = struct.pack("=2I", number, (8 + len(arguments)) << 16 | request) + arguments
        rights = [(socket.SOL_SOCKET, socket.SCM_RIGHTS, array.array("i", descriptors))] if descriptors else []
        self.socket.sendmsg([message], rights)

    def bind(self, interface):
        number, text = self.number(), interface.encode() + b"\0" * (4 - len(interface) % 4)
        self.send(self.registry, 0, struct.pack("=2I", self.globals[interface], len(interface) + 1) + text + struct.pack("=2I", 1, number))
        return number

    def event(self):
        """Returns the next one: the object's number, the event's, and its arguments."""
        number, event, size = struct.unpack("=IHH", self.stream.read(8))
        arguments = self.stream.read(size - 8)
        if (number, event) == (1, 0):
            raise ConnectionError(f"the compositor refuses: {arguments[12:].decode(errors='replace')}")
        if (number, event) == (self.registry, 0):
            name, length = struct.unpack_from("=2I", arguments)
            self.globals[arguments[8:8 + length - 1].decode()] = name
        return number, event, arguments

    def wait(self):
        """Returns when the compositor has done everything that was requested."""
        callback = self.number()
        self.send(1, 0, struct.pack("=I", callback))
        while self.event()[0] != callback:
            pass


class WaylandInput(WaylandClient):
    """Both are plugged in until `close`. Coordinates are those of the layout of `outputs`. Every call returns when the compositor has received it."""

    def __init__(self, path, outputs):
        super().__init__(path)
        self.outputs = outputs
        self.times = itertools.count(1)
        seat = self.bind("wl_seat")
        self.pointer = self.plug_in("zwlr_virtual_pointer_manager_v1", seat)
        self.keyboard = self.plug_in("zwp_virtual_keyboard_manager_v1", seat)
        with tempfile.TemporaryFile() as file:
            file.write(keymap())
            file.flush()
            self.send(self.keyboard, 0, struct.pack("=2I", 1, file.tell()), [file.fileno()])
            self.wait()

    def plug_in(self, manager, seat):
        manager, device = self.bind(manager), self.number()
        self.send(manager, 0, struct.pack("=2I", seat, device))
        return device

    def move(self, x, y):
        """The protocol counts from the corner of all outputs, in parts of their size."""
        outputs = self.outputs()
        left, top = min(each.x for each in outputs), min(each.y for each in outputs)
        right, bottom = max(each.x + each.width for each in outputs), max(each.y + each.height for each in outputs)
        self.pointer_request(1, x - left, y - top, right - left, bottom - top)

    def press(self, button=1):
        self.pointer_request(2, BUTTONS[button], 1)

    def release(self, button=1):
        self.pointer_request(2, BUTTONS[button], 0)

    def pointer_request(self, request, *arguments):
        """One that begins with the time, and the frame that ends it."""
        self.send(self.pointer, request, struct.pack(f"={1 + len(arguments)}I", next(self.times), *arguments))
        self.send(self.pointer, 4)
        self.wait()

    def key(self, name):
        """A key's name or letter, perhaps with shift: "Tab", "shift+Tab", "a"."""
        code = FIRST_CODE - 8 + list(KEYS).index(name.removeprefix("shift+"))
        self.send(self.keyboard, 2, struct.pack("=4I", name.startswith("shift+"), 0, 0, 0))
        for state in (1, 0):
            self.send(self.keyboard, 1, struct.pack("=3I", next(self.times), code, state))
        self.send(self.keyboard, 2, struct.pack("=4I", 0, 0, 0, 0))
        self.wait()
