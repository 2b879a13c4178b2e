"""A program with an ordinary window: plain_window.py WIDTH HEIGHT RED GREEN BLUE; without width, it fills the screen. With an edge besides, TOP
or LEFT, a panel along it, of that height or width.
"""

import sys

import gi

gi.require_version("Gtk", "3.0")
from gi.repository import Gtk

width, height, *colour = map(int, sys.argv[1:6])

style = Gtk.CssProvider()
style.load_from_data(f"window {{ background: rgb({', '.join(map(str, colour))}); }}".encode())
window = Gtk.Window(title="Plain")
window.set_decorated(False)
window.get_style_context().add_provider(style, Gtk.STYLE_PROVIDER_PRIORITY_APPLICATION)
if sys.argv[6:]:
    gi.require_version("GtkLayerShell", "0.1")
    from gi.repository import GtkLayerShell

    GtkLayerShell.init_for_window(window)
    for edge in {"TOP", "LEFT", {"TOP": "RIGHT", "LEFT": "BOTTOM"}[sys.argv[6]]}:
        GtkLayerShell.set_anchor(window, getattr(GtkLayerShell.Edge, edge), True)
    window.set_size_request(width, height)
    GtkLayerShell.auto_exclusive_zone_enable(window)
else:
    window.set_default_size(width, height) if width else window.fullscreen()
window.show_all()
Gtk.main()
