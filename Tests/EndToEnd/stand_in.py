"""A program with one tile, in whose place the real host is to be tested: it says on its output what happens to it."""

import gi

gi.require_version("Gdk", "3.0")
gi.require_version("Gtk", "3.0")
from gi.repository import Gdk, Gio, Gtk

LEFT, TOP, WIDTH, HEIGHT = 200, 100, 300, 160


def say(*words):
    print(*words, flush=True)


def key(_, event):
    say("key", Gdk.keyval_name(event.keyval))
    return True


def button_event(name):
    # Handled here: a theme may have GTK move a window that is dragged by its background.
    return lambda _, event: say(name, event.button, int(event.x), int(event.y)) or True


display = Gdk.Display.get_default()
window = Gtk.Window(title="Stand-in")
window.set_size_request(WIDTH, HEIGHT)
window.set_decorated(False)
if "Wayland" in type(display).__name__:
    gi.require_version("GtkLayerShell", "0.1")
    from gi.repository import GtkLayerShell
    GtkLayerShell.init_for_window(window)
    GtkLayerShell.set_namespace(window, "widgethost")
    GtkLayerShell.set_layer(window, GtkLayerShell.Layer.BOTTOM)
    GtkLayerShell.set_keyboard_mode(window, GtkLayerShell.KeyboardMode.ON_DEMAND)
    GtkLayerShell.set_monitor(window, display.get_monitor(0))
    for edge, margin in ((GtkLayerShell.Edge.LEFT, LEFT), (GtkLayerShell.Edge.TOP, TOP)):
        GtkLayerShell.set_anchor(window, edge, True)
        GtkLayerShell.set_margin(window, edge, margin)
else:
    window.set_type_hint(Gdk.WindowTypeHint.DESKTOP)
    window.move(LEFT, TOP)

style = Gtk.CssProvider()
style.load_from_data(b"window { background: rgb(200, 30, 30); }")
Gtk.StyleContext.add_provider_for_screen(Gdk.Screen.get_default(), style, Gtk.STYLE_PROVIDER_PRIORITY_APPLICATION)
button = Gtk.Button(label="Open", halign=Gtk.Align.START, valign=Gtk.Align.START, margin=20)
button.connect("clicked", lambda _: Gio.AppInfo.launch_default_for_uri("x-foliovault-item://U-1", None))
window.add(button)
window.add_events(Gdk.EventMask.BUTTON_PRESS_MASK | Gdk.EventMask.BUTTON_RELEASE_MASK | Gdk.EventMask.POINTER_MOTION_MASK)
window.connect("button-press-event", button_event("press"))
window.connect("button-release-event", button_event("release"))
window.connect("key-press-event", key)
window.connect("notify::scale-factor", lambda *_: say("scale", window.get_scale_factor()))
display.connect("monitor-added", lambda *_: say("monitors", display.get_n_monitors()))
display.connect("monitor-removed", lambda *_: say("monitors", display.get_n_monitors()))
window.show_all()
Gtk.main()
