"""A program with an ordinary window: plain_window.py WIDTH HEIGHT RED GREEN BLUE; without width, it fills the screen."""

import sys

import gi

gi.require_version("Gtk", "3.0")
from gi.repository import Gtk

width, height, *colour = map(int, sys.argv[1:])

style = Gtk.CssProvider()
style.load_from_data(f"window {{ background: rgb({', '.join(map(str, colour))}); }}".encode())
window = Gtk.Window(title="Plain")
window.set_decorated(False)
window.set_default_size(width, height) if width else window.fullscreen()
window.get_style_context().add_provider(style, Gtk.STYLE_PROVIDER_PRIORITY_APPLICATION)
window.show_all()
Gtk.main()
