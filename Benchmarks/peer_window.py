"""The desktop's peer: a plain GTK window from Python that draws one tile. FRAMES is a file of what is laid out on it."""

import json
import sys
from pathlib import Path

import gi

gi.require_version("Gtk", "3.0")
from gi.repository import Gtk

from peer_drawing import SIZES, draw_on

WIDTH, HEIGHT = SIZES["medium"]
frames = json.loads(Path(sys.argv[1]).read_text(encoding="utf-8"))
window, area = Gtk.Window(title="Plain", decorated=False, resizable=False), Gtk.DrawingArea()
area.set_size_request(WIDTH, HEIGHT)
area.connect("draw", lambda _, context: draw_on(context, WIDTH, HEIGHT, frames))
window.add(area)
window.show_all()
Gtk.main()
