"""X11 desktops: an X server that draws into memory, with openbox or another desk."""

import contextlib
import dataclasses
import os
import re
import shutil
import signal
import time
from pathlib import Path

import Xlib.display
import Xlib.error
import Xlib.protocol.display
import Xlib.protocol.event
import Xlib.X
from PIL import ImageGrab

from desks import DESKS, HEIGHT, WIDTH
from desktop_session import DesktopSession, Output, Window
from picture import Picture
from support import wait_until
from wayland_session import WaylandSession

# The server for real cards, since its dummy one has outputs that come and go as a card's do; Xvfb has one that stays.
SERVER = "/usr/lib/xorg/Xorg"
CONFIGURATION = """
Section "ServerFlags"
    Option "AutoAddDevices" "false"
    Option "AutoEnableDevices" "false"
    Option "AutoAddGPU" "false"
EndSection
Section "Device"
    Identifier "card"
    Driver "dummy"
    VideoRam 65536
EndSection
Section "Monitor"
    Identifier "monitor"
    HorizSync 5-1000
    VertRefresh 5-200
    Modeline "{width}x{height}" {timings}
EndSection
Section "Screen"
    Identifier "screen"
    Device "card"
    Monitor "monitor"
    DefaultDepth 24
    SubSection "Display"
        Depth 24
        Modes "{width}x{height}"
        Virtual {width} {height}
    EndSubSection
EndSection
"""
# What the settings daemon sends to all programs; in 1024ths of dots per inch.
SETTINGS = "Xft/DPI {}\n"
DPI = 96 * 1024
SOCKETS = Path("/tmp/.X11-unix")


def timings(width, height):
    """The numbers of a modeline."""
    return f"83.50 {width} {width + 72} {width + 200} {width + 400} {height} {height + 3} {height + 9} {height + 31}"


class XSession(DesktopSession):
    """A desk of the table in an X server, or nested in a window that fills it; openbox by default. Windows may be translucent if it `blends`.
    The server has handled all input before a call returns.
    """
    PROGRAMS = (SERVER, "xdotool", "xrandr", "xprop", "hsetroot", "openbox", "xsettingsd", "xcompmgr")
    desk = dataclasses.replace(DESKS["openbox"], commands=DESKS["openbox"].commands[:2], blends=False)

    def __init__(self, home=None, accessible=False):
        self.blends = self.desk.blends
        # Whether the desk has a picture and services of its own.
        self.is_whole = self.desk.draws_desktop or self.desk.is_nested
        self.window_variables = {"GDK_BACKEND": "x11"} if self.desk.is_nested else {}
        self.server = {}
        super().__init__(home, accessible)

    def environment(self, **more):
        return super().environment(LIBGL_ALWAYS_SOFTWARE="1", QT_LOGGING_RULES="*=false", **{**dict(self.desk.variables), **more})

    def start_display(self):
        configuration = self.folder / "server"
        configuration.write_text(CONFIGURATION.format(width=WIDTH, height=HEIGHT, timings=timings(WIDTH, HEIGHT)))
        if os.getuid() == 0 and not SOCKETS.exists():
            # Nested servers trust it only if root or their own user owns it.
            SOCKETS.mkdir()
            SOCKETS.chmod(0o1777)
        reader, writer = os.pipe()
        try:
            os.set_inheritable(writer, True)
            self.start_compositor(SERVER, "-displayfd", str(writer), "-config", configuration, "-logfile", self.runtime / "server.log", "-nolisten",
                                  "tcp", "-noreset", "-novtswitch", "-sharevts", "-nocursor", inherited=(writer,))
        finally:
            os.close(writer)
        with open(reader) as number:
            self.server = self.display = {"DISPLAY": ":" + number.readline().strip()}
        assert self.server["DISPLAY"] != ":", (self.folder / "compositor.log").read_text()
        self.positions = {each.name: each.x for each in self.outputs()}
        self.start_desk()

    def start_desk(self):
        self.parts = {}
        self.report = self.folder / "report"
        report, config, self.settings = (self.folder / name for name in ("report-variables", "config", "settings"))
        report.write_text(f"#!/bin/sh\nenv > '{self.report}.new'\nmv '{self.report}.new' '{self.report}'\nexec sleep 10000\n")
        report.chmod(0o755)
        config.write_text(self.desk.config)
        self.settings.write_text(SETTINGS.format(DPI))
        if self.is_whole:
            # Some programs start one of their own otherwise.
            self.start_bus("/usr/share/dbus-1/services")
        self.commands = [command.format(report=report, config=config, settings=self.settings).split() for command in self.desk.commands]
        self.start_part(0)
        if self.desk.is_nested:
            self.display = wait_until(self.nested_display, self.desk.name, 60)
        wait_until(self.has_window_manager, self.desk.name, 60)
        for number in range(1, len(self.commands)):
            self.start_part(number)
        if self.desk.draws_desktop and not self.desk.is_nested:
            try:
                wait_until(self.has_desktop, "what draws the desktop", 20)
            except AssertionError:
                # Qt 6 has it hang at some of its starts.
                self.end_part(number)
                self.start_part(number)
                wait_until(self.has_desktop, "what draws the desktop", 60)

    def has_desktop(self):
        """Whether a window of the desktop type is there; not all window managers list those of others."""
        with self.connection() as display:
            names = lambda atom: display.intern_atom(f"_NET_WM_WINDOW_TYPE{atom}")
            with contextlib.suppress(Xlib.error.BadWindow):  # one that has just been closed
                frames = display.screen().root.query_tree().children
                windows = [*frames, *(window for frame in frames for window in frame.query_tree().children)]
                kinds = (window.get_full_property(names(""), Xlib.X.AnyPropertyType) for window in windows)
                return any(kind and names("_DESKTOP") in kind.value for kind in kinds)

    def start_part(self, number):
        words = self.commands[number]
        if number == 0 and words[0] == "kwin_wayland":
            # A program that the kernel gives capabilities does not trust its environment; a copy has none.
            words = [shutil.copy(shutil.which(words[0]), self.folder / words[0]), *words[1:]]
        with open(self.folder / f"part{number}", "ab") as log:
            self.parts[number] = self.start(*words, variables=self.server if number == 0 else {}, stdout=log, stderr=log)

    def end_part(self, number):
        self.parts[number].kill()
        self.parts[number].wait()

    def nested_display(self):
        """The variables of programs in it, once they are known."""
        log = (self.folder / "part0").read_text(errors="replace")
        assert self.parts[0].poll() is None, log[-600:]
        if self.report.exists():
            variables = dict(re.findall(r"^(\w+)=(.*)$", self.report.read_text(), re.MULTILINE))
            return {name: variables[name] for name in ("WAYLAND_DISPLAY", "DISPLAY", "XAUTHORITY") if name in variables}
        wayland, x11 = re.search(r"Wayland display name '(.*)'", log), re.search(r"public X11 display (:\d+)", log)
        authority = sorted(self.runtime.glob(".mutter-Xwaylandauth*"))
        return wayland and x11 and authority and {"WAYLAND_DISPLAY": wayland[1], "DISPLAY": x11[1], "XAUTHORITY": str(authority[0])}

    def has_window_manager(self):
        return b"window id" in self.run("xprop", "-root", "_NET_SUPPORTING_WM_CHECK")

    def draw_wallpaper(self):
        if not self.is_whole:
            self.run("hsetroot", "-fill", self.wallpaper_file)

    def await_wallpaper(self):
        """Ours, or the desk's own as soon as it has stopped changing."""
        if not self.is_whole:
            wait_until(lambda: self.blends == self.is_composited(), "the compositing manager")
            return super().await_wallpaper()
        self.rest()
        seen = lambda: self.screenshot().crop(0, 0, WIDTH - 200, HEIGHT - 100)
        if self.desk.is_nested and self.desk.draws_desktop:
            wait_until(lambda: seen().difference(Picture.plain(WIDTH - 200, HEIGHT - 100, (0, 0, 0)), 4), "the desktop's picture", 60)

        def still():
            pictures = []

            def is_still():
                time.sleep(.5)
                pictures.append(seen())
                return len(pictures) > 6 and all(pictures[-1].difference(each) is None for each in pictures[-6:])
            wait_until(is_still, "the desk to come to rest", 90)
            return pictures[-1]
        picture, before = still(), None
        while self.desk.key and (before is None or picture.difference(before)):
            before = picture
            self.key(self.desk.key)
            picture = still()
        return self.screenshot()

    def switch_workspace(self, number):
        if self.desk.workspace:
            self.run(*self.desk.workspace.format(number + 1).split())
        else:
            self.ask_manager("_NET_NUMBER_OF_DESKTOPS", 2)
            self.ask_manager("_NET_CURRENT_DESKTOP", number)

    def show_desktop(self, is_shown):
        self.ask_manager("_NET_SHOWING_DESKTOP", int(is_shown))

    @contextlib.contextmanager
    def connection(self, display=None):
        variables = display or self.display
        os.environ["XAUTHORITY"] = variables.get("XAUTHORITY", "")
        # The library takes the events of one server's extensions for those of all.
        Xlib.protocol.display.Display.event_classes = Xlib.protocol.event.event_class.copy()
        display = Xlib.display.Display(variables["DISPLAY"])
        try:
            yield display
        finally:
            display.close()

    def is_composited(self):
        with self.connection() as display:
            return display.get_selection_owner(display.intern_atom("_NET_WM_CM_S0")) != Xlib.X.NONE

    def windows(self):
        listed = self.run("xprop", "-root", "_NET_CLIENT_LIST_STACKING").decode()
        windows = []
        for number in re.findall("0x[0-9a-f]+", listed):
            try:
                properties = self.run("xprop", "-id", number, "_NET_WM_NAME", "_NET_WM_PID", "_NET_WM_WINDOW_TYPE", "_NET_WM_STATE", "WM_CLASS").decode()
                geometry = dict(re.findall(r"(\w+)=(-?\d+)", self.run("xdotool", "getwindowgeometry", "--shell", number).decode()))
            except AssertionError:
                continue  # It was closed meanwhile.
            found = lambda pattern: re.findall(pattern, properties, re.MULTILINE) or [""]
            windows.append(Window(
                title=found('^_NET_WM_NAME.* = "(.*)"')[0], process=int(found(r"^_NET_WM_PID.* = (\d+)")[0] or 0),
                **{name.lower(): int(geometry[name]) for name in ("X", "Y", "WIDTH", "HEIGHT")}, application=found('^WM_CLASS.* "(.*)"$')[0],
                kind=found("_NET_WM_WINDOW_TYPE_(\\w+)")[0], states=tuple(filter(None, found("_NET_WM_STATE_(\\w+)"))), number=number))
        return windows

    def ordinary_window(self, process):
        """The number of the topmost one."""
        ordinary = lambda: [window.number for window in self.windows() if window.process == process and window.kind in ("NORMAL", "DIALOG")]
        return wait_until(ordinary, "a window")[-1]

    def place_window(self, process, x, y, width, height):
        number = self.ordinary_window(process)
        self.run("xdotool", "windowmove", number, x, y, "windowsize", number, width, height, "windowactivate", number)

    def reserve_top(self, process, height):
        """Keeps others below so much of the screen, as below a panel, while the process has a window."""
        self.run("xprop", "-id", self.ordinary_window(process), "-f", "_NET_WM_STRUT", "32c", "-set", "_NET_WM_STRUT", f"0, 0, {height}, 0")

    def close_window(self, process):
        self.ask_manager("_NET_CLOSE_WINDOW", window=int(self.ordinary_window(process), 16))

    def ask_manager(self, message, value=0, window=None):
        """Sends the window manager a message, about a window or about the whole screen."""
        with self.connection() as display:
            root = display.screen().root
            about = display.create_resource_object("window", window) if window else root
            event = Xlib.protocol.event.ClientMessage(window=about, client_type=display.intern_atom(message), data=(32, [value, 0, 0, 0, 0]))
            root.send_event(event, event_mask=Xlib.X.SubstructureRedirectMask | Xlib.X.SubstructureNotifyMask)
            display.sync()

    def screenshot(self, output=None):
        """Of one output or of the whole screen; without the pointer."""
        picture = Picture(ImageGrab.grab(xdisplay=self.server["DISPLAY"]))
        box = output and self.output(output)
        return picture.crop(box.x, box.y, box.width, box.height) if box else picture

    def xrandr(self, *arguments):
        return self.run("xrandr", *arguments, variables=self.server).decode()

    def outputs(self):
        """Positions are in pixels at any scale."""
        lines = re.findall(r"^(\S+) connected (?:primary )?(\d+)x(\d+)\+(\d+)\+(\d+)", self.xrandr(), re.MULTILINE)
        return [Output(name, int(x), int(y), int(width), int(height)) for name, width, height, x, y in lines]

    def change_outputs(self, *arguments):
        self.xrandr(*arguments)
        # The dummy card counts an output as plugged in once it is asked again.
        self.xrandr()
        self.draw_wallpaper()

    def add_output(self):
        """Adds one to the right of all others, and returns its name."""
        name = f"DUMMY{1 + max(int(each.name[5:]) for each in self.outputs())}"
        self.xrandr("--addmode", name, f"{WIDTH}x{HEIGHT}")
        self.positions[name] = self.right_end()
        self.bring_back(name)
        return name

    def remove_output(self, name):
        self.change_outputs("--output", name, "--off")
        assert name not in {each.name for each in self.outputs()}

    def bring_back(self, name):
        self.change_outputs("--output", name, "--mode", f"{WIDTH}x{HEIGHT}", "--pos", f"{self.positions[name]}x0")
        assert name in {each.name for each in self.outputs()}

    def resize(self, name, width, height):
        if self.desk.is_nested:
            with self.connection(self.server) as display:
                window = max(display.screen().root.query_tree().children, key=lambda each: each.get_geometry().width)
                window.configure(width=width, height=height)
                display.sync()
            return
        if f"{width}x{height} " not in self.xrandr():
            self.xrandr("--newmode", f"{width}x{height}", *timings(width, height).split())
            self.xrandr("--addmode", name, f"{width}x{height}")

        def is_set():
            # A window manager that changes the screen at the same moment has the server refuse it.
            with contextlib.suppress(AssertionError):
                self.change_outputs("--output", name, "--mode", f"{width}x{height}")
            output = self.output(name)
            return (output.width, output.height) == (width, height)
        wait_until(is_set, f"{width} by {height} pixels")

    def swap(self, left, right):
        """Exchanges the positions of two outputs."""
        self.change_outputs("--output", right, "--pos", "0x0", "--output", left, "--pos", f"{WIDTH}x0")

    def set_scale(self, _, scale):
        """Of all outputs, where the desk has a command for it."""
        self.run(*self.desk.set_scale.format(scale).split())

    def set_text_size(self, factor):
        """Of all programs, as a multiple of the usual one."""
        self.settings.write_text(SETTINGS.format(int(DPI * factor)))
        self.parts[1].send_signal(signal.SIGHUP)

    def xdotool(self, *arguments):
        self.run("xdotool", *arguments, variables=self.server)

    def move(self, x, y):
        # With its option to wait it does not return if the pointer is there already.
        self.xdotool("mousemove", x, y)

    def press(self, button=1):
        self.xdotool("mousedown", button)

    def release(self, button=1):
        self.xdotool("mouseup", button)

    def key(self, name):
        """A key's name or letter, perhaps with shift: "Tab", "shift+Tab", "a"."""
        self.xdotool("key", "--delay", 0, name)


def session_of(name):
    """The class for a desk of the table."""
    desk = DESKS[name]
    programs = (*XSession.PROGRAMS[:4], *(command.split()[0] for command in desk.commands))
    return type(name, (XSession,), {"desk": desk, "PROGRAMS": programs}) if desk.commands else WaylandSession
