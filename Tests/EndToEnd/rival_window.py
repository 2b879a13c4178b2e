"""Draws the desktop of an X server, and raises itself whenever something lies above it: a line of output each time."""

import Xlib.display
import Xlib.X
import Xlib.Xatom

display = Xlib.display.Display()
screen = display.screen()
root, named = screen.root, display.intern_atom
window = root.create_window(0, 0, screen.width_in_pixels, screen.height_in_pixels, 0, screen.root_depth, background_pixel=0x404040)
window.change_property(named("_NET_WM_WINDOW_TYPE"), Xlib.Xatom.ATOM, 32, [named("_NET_WM_WINDOW_TYPE_DESKTOP")])
root.change_attributes(event_mask=Xlib.X.PropertyChangeMask)
window.map()
while True:
    event = display.next_event()
    if event.type == Xlib.X.PropertyNotify and event.atom == named("_NET_CLIENT_LIST_STACKING"):
        stack = root.get_full_property(event.atom, Xlib.X.AnyPropertyType)
        if stack and window.id in stack.value and stack.value[-1] != window.id:
            window.configure(stack_mode=Xlib.X.Above)
            print("raised", flush=True)
