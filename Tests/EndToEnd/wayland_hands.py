"""A pointer and a keyboard for a Wayland compositor, plugged in for as long as this client is connected.

Speaks the compositor's wire protocol itself: a message is the object's number, its size and the request's number, and the arguments
in 32-bit words.
"""

import array
import itertools
import socket
import struct
import tempfile

NAMED_KEYS = ("Return", "Escape", "BackSpace", "Delete", "Left", "Right", "Up", "Down", "Home", "End", "Page_Up", "Page_Down",
              "Menu", "space", *(f"F{number}" for number in range(1, 13)))
CHARACTERS = [chr(code) for code in range(32, 127)] + list("äöüÄÖÜßéèç€")
MODIFIERS = {"shift": 1, "ctrl": 4, "alt": 8, "super": 64}
BUTTONS = {1: 0x110, 2: 0x112, 3: 0x111}

# Each key's symbols without shift and with it; a key of its own for each character.
KEYS = {"Tab": "Tab, ISO_Left_Tab", **{name: name for name in NAMED_KEYS}, **{c: f"U{ord(c):04X}" for c in CHARACTERS}}
FIRST_CODE = 9


def keymap():
    codes = "".join(f"<K{i}> = {FIRST_CODE + i};" for i in range(len(KEYS)))
    symbols = "".join(f"key <K{i}> {{[{symbol}]}};" for i, symbol in enumerate(KEYS.values()))
    return (f'xkb_keymap {{ xkb_keycodes "k" {{ minimum = 8; maximum = 255; {codes} }}; xkb_types "t" {{ include "complete" }};'
            f'xkb_compatibility "c" {{ include "complete" }}; xkb_symbols "s" {{ {symbols} }}; }};').encode() + b"\0"


def text_argument(text):
    data = text.encode() + b"\0"
    return struct.pack("=I", len(data)) + data + b"\0" * (-len(data) % 4)


class WaylandHands:
    """Every call returns when the compositor has taken it in. Coordinates are those of the compositor's layout; `bounds` answers
    with the box around all its outputs."""

    def __init__(self, path, bounds):
        self.bounds = bounds
        self.socket = socket.socket(socket.AF_UNIX)
        self.socket.settimeout(20)
        self.socket.connect(str(path))
        self.received = b""
        self.numbers = itertools.count(2)
        self.times = itertools.count(1)
        self.globals = {}
        self.registry = next(self.numbers)
        self.send(1, 1, struct.pack("=I", self.registry))
        self.wait()
        seat = self.bind("wl_seat", 1)
        self.pointer = self.plug_in("zwlr_virtual_pointer_manager_v1", seat)
        self.keys = self.plug_in("zwp_virtual_keyboard_manager_v1", seat)
        with tempfile.TemporaryFile() as file:
            file.write(keymap())
            file.flush()
            self.send(self.keys, 0, struct.pack("=2I", 1, file.tell()), [file.fileno()])
            self.wait()

    def close(self):
        self.socket.close()

    def send(self, number, request, arguments=b"", descriptors=()):
        message = struct.pack("=2I", number, (8 + len(arguments)) << 16 | request) + arguments
        rights = [(socket.SOL_SOCKET, socket.SCM_RIGHTS, array.array("i", descriptors))] if descriptors else []
        self.socket.sendmsg([message], rights)

    def bind(self, interface, version):
        number = next(self.numbers)
        self.send(self.registry, 0, struct.pack("=I", self.globals[interface]) + text_argument(interface) +
                  struct.pack("=2I", version, number))
        return number

    def plug_in(self, manager, seat):
        # Numbers are given in the order in which the compositor hears of them.
        manager, device = self.bind(manager, 1), next(self.numbers)
        self.send(manager, 0, struct.pack("=2I", seat, device))
        return device

    def wait(self):
        """Until the compositor has done all that it was asked for."""
        callback = next(self.numbers)
        self.send(1, 0, struct.pack("=I", callback))
        while True:
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
            if number == callback:
                return

    def move(self, x, y):
        left, top, width, height = self.bounds()
        self.pointer_request(1, struct.pack("=4I", x - left, y - top, width, height))

    def press(self, button):
        self.pointer_request(2, struct.pack("=2I", BUTTONS[button], 1))

    def release(self, button):
        self.pointer_request(2, struct.pack("=2I", BUTTONS[button], 0))

    def scroll(self, clicks):
        """Down by so many clicks of a wheel; up where they are negative."""
        self.send(self.pointer, 5, struct.pack("=I", 0))
        self.pointer_request(7, struct.pack("=Iii", 0, clicks * 15 * 256, clicks))

    def pointer_request(self, request, arguments):
        """One that begins with the time, and the frame that ends it."""
        self.send(self.pointer, request, struct.pack("=I", next(self.times)) + arguments)
        self.send(self.pointer, 4)
        self.wait()

    def key(self, name):
        """A key's name or character, with modifiers before it: "Tab", "shift+Tab", "ctrl+a"."""
        *modifiers, name = name.split("+") if len(name) > 1 else [name]
        self.send(self.keys, 2, struct.pack("=4I", sum(MODIFIERS[each] for each in modifiers), 0, 0, 0))
        for state in (1, 0):
            code = FIRST_CODE - 8 + list(KEYS).index(name)
            self.send(self.keys, 1, struct.pack("=3I", next(self.times), code, state))
        self.send(self.keys, 2, struct.pack("=4I", 0, 0, 0, 0))
        self.wait()

    def type(self, text):
        for character in text:
            self.key(character)
