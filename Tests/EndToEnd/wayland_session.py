"""A Wayland desktop: sway, drawing into memory."""

import json
import os
import socket
import subprocess
from pathlib import Path

from desks import DESKS, HEIGHT, WIDTH
from desktop_session import DesktopSession, Output, Window
from picture import Picture
from support import wait_until
from wayland_input import WaylandInput

CONFIGURATION = """
xwayland disable
output * mode {width}x{height}
output HEADLESS-1 position 0 0
output * bg "{wallpaper}" fill
default_border none
default_floating_border none
focus_on_window_activation none
for_window [title="^Plain$"] floating enable
"""


class WaylandSession(DesktopSession):
    PROGRAMS = ("sway", "swaybg", "grim")
    desk = DESKS["sway"]
    blends = True
    parts = ()

    def start_display(self):
        configuration = self.folder / "sway"
        configuration.write_text(CONFIGURATION.format(width=WIDTH, height=HEIGHT, wallpaper=self.wallpaper_file))
        library = Path(os.environ["TEST_PROGRAMS"]) / "libheadless_outputs.so"
        assert library.exists(), library
        self.control = self.runtime / "control"
        self.start_compositor("sway", "-c", configuration, WLR_BACKENDS="headless", WLR_RENDERER="pixman", WLR_LIBINPUT_NO_DEVICES="1",
                              SWAYSOCK=str(self.control), LD_PRELOAD=str(library))
        wait_until(self.is_started, "sway")
        self.socket, = (path for path in self.runtime.glob("wayland-*") if path.is_socket())
        self.display = {"WAYLAND_DISPLAY": self.socket.name}
        device = WaylandInput(self.socket, self.outputs)
        self.cleanups.callback(device.close)
        self.move, self.press, self.release, self.key = device.move, device.press, device.release, device.key

    def is_started(self):
        assert self.compositor.poll() is None, (self.folder / "compositor.log").read_text()
        with socket.socket(socket.AF_UNIX) as control:  # Its file exists before sway listens.
            return control.connect_ex(bytes(self.control)) == 0 and self.outputs()

    def ask(self, kind):
        return json.loads(self.run("swaymsg", "-s", self.control, "-r", "-t", kind))

    def command(self, text):
        self.run("swaymsg", "-s", self.control, "--", text)

    def outputs(self):
        return [Output(each["name"], **each["rect"], scale=each["scale"]) for each in self.ask("get_outputs") if each["active"]]

    def windows(self):
        """Ordinary windows alone: sway does not list those of its layers."""
        def walk(node):
            if node.get("pid") and node["type"] in ("con", "floating_con"):
                yield Window(node["name"] or "", node["pid"], **node["rect"], application=node.get("app_id") or "")
            for child in node["nodes"] + node["floating_nodes"]:
                yield from walk(child)
        return list(walk(self.ask("get_tree")))

    def place_window(self, process, x, y, width, height):
        wait_until(lambda: any(each.process == process for each in self.windows()), "a window")
        self.command(f"[pid={process}] floating enable, resize set {width} px {height} px, move absolute position {x} {y}")

    def close_window(self, process):
        self.command(f"[pid={process}] kill")

    def screenshot(self, output=None):
        """Of one output in its pixels, or of the whole layout, a pixel to each unit of it; without the pointer."""
        return Picture.from_file(self.run("grim", "-t", "ppm", *(["-o", output] if output else ["-s", 1]), "-"))

    def add_output(self):
        """Adds one to the right of all others, and returns its name."""
        names, end = {each.name for each in self.outputs()}, self.right_end()
        self.command("create_output")
        name, = {each.name for each in self.outputs()} - names
        self.command(f"output {name} position {end} 0")
        return name

    def remove_output(self, name):
        self.command(f"output {name} disable")
        assert name not in {each.name for each in self.outputs()}

    def bring_back(self, name):
        self.command(f"output {name} enable")
        output = self.output(name)

        def is_drawn():
            try:
                return self.run("grim", "-o", name, "-", timeout=2)
            except subprocess.TimeoutExpired:
                # sway 1.10 draws nothing there until something else about it changes.
                for y in (output.y + 1, output.y):
                    self.command(f"output {name} position {output.x} {y}")
        wait_until(is_drawn, f"a picture of {name}")

    def resize(self, name, width, height):
        """An output that is higher than wide is rotated."""
        self.command(f"output {name} mode {max(width, height)}x{min(width, height)} transform {90 if height > width else 'normal'}")

    def add_panel(self, edge, thickness):
        """Along the edge TOP or LEFT, until the process ends that is returned."""
        size = (1, thickness) if edge == "TOP" else (thickness, 1)
        return self.start_script("plain_window.py", *size, 0, 0, 0, edge)

    def switch_workspace(self, number):
        self.command(f"workspace {number + 1}")

    def set_scale(self, output, scale):
        self.command(f"output {output} scale {scale}")
