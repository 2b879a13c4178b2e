"""The desks that people have, and how each is started without a screen."""

import contextlib
import dataclasses
import re
import shutil
import sys
import time

import Xlib.error
import Xlib.X

from picture import Picture
from support import SessionBus, wait_until
from wayland_world import WaylandWorld
from world import HEIGHT, WIDTH
from x_world import XWorld


@dataclasses.dataclass(frozen=True)
class Desk:
    """`packages` are Debian's, as in a Depends field. `commands` start the desk: first what manages windows, last what draws the desktop, if
    `draws_desktop`. In them, {tell} is a program that passes on the display's variables, {config} a file with `config` in it.
    `workspace` is the command that switches to one, `set_scale` the one for a scale while programs run, `key` leaves what is shown at first.
    `lacks` are the checks that have no meaning there.
    """
    name: str
    packages: str = ""
    commands: tuple = ()
    draws_desktop: bool = True
    blends: bool = True
    is_nested: bool = False
    config: str = ""
    workspace: str = ""
    lacks: tuple = ()
    variables: tuple = ()
    key: str = ""
    scales: tuple = (2, 3)
    set_scale: str = ""

    def all_lacks(self):
        is_whole = self.name != "sway"
        return {*self.lacks, *(["desktop restarted"] if not is_whole or not self.draws_desktop else []),
                *(["manager restarted", "rival"] if not is_whole or self.is_nested else []), *(["screens"] if self.is_nested else [])}


NESTED = (("MUTTER_DEBUG_DUMMY_MODE_SPECS", f"{WIDTH}x{HEIGHT}"),)
DESKS = {desk.name: desk for desk in (
    Desk("sway", "sway, swaybg, grim", draws_desktop=False, lacks=("show desktop",), scales=(1.25, 1.6, 2), set_scale="yes"),
    Desk("labwc", "labwc, xwayland, wlr-randr", ("labwc -s {tell}",), draws_desktop=False, is_nested=True, lacks=("show desktop", "name"),
         scales=(1.25, 1.6, 2), set_scale="wlr-randr --output X11-1 --scale {}", variables=(("WLR_BACKENDS", "x11"), ("WLR_RENDERER", "pixman"))),
    Desk("KDE Wayland", "kwin-wayland, plasma-workspace, plasma-workspace-wayland | plasma-desktop, plasma-desktop, qtwayland5 | qt6-wayland, xwayland, libkf5screen-bin | libkscreen-bin",
         (f"kwin_wayland --xwayland --width {WIDTH} --height {HEIGHT} {{tell}}", "plasmashell"), is_nested=True,
         lacks=("show desktop", "name"), scales=(1.25, 1.5, 2), set_scale="env XDG_SESSION_TYPE=wayland QT_QPA_PLATFORM=wayland KSCREEN_BACKEND_INPROCESS=1 kscreen-doctor output.1.scale.{}"),
    Desk("KDE X11", "kwin-x11, plasma-desktop, plasma-workspace", ("kwin_x11", "plasmashell"), blends=False),
    Desk("GNOME, mutter", "mutter, xwayland", ("mutter --nested --wayland -- {tell}",), draws_desktop=False, is_nested=True, variables=NESTED,
         lacks=("resolution",)),
    Desk("GNOME Shell", "gnome-shell, xwayland", ("gnome-shell --nested --wayland",), draws_desktop=False, is_nested=True, variables=NESTED,
         key="Escape", lacks=("resolution",)),
    Desk("XFCE", "xfwm4, xfdesktop4, xfce4-settings", ("xfwm4 --compositor=on", "xfdesktop")),
    Desk("MATE", "marco, caja, mate-settings-daemon", ("marco --composite", "caja -n --force-desktop")),
    Desk("Cinnamon", "cinnamon, muffin, nemo", ("cinnamon", "nemo-desktop")),
    Desk("LXQt", "openbox, xcompmgr, pcmanfm-qt, qt6-qpa-plugins", ("openbox", "xcompmgr", "pcmanfm-qt --desktop --profile=lxqt")),
    Desk("openbox", "openbox, xcompmgr", ("openbox", "xcompmgr"), draws_desktop=False),
    Desk("i3", "i3-wm", ("i3 -c {config}",), draws_desktop=False, blends=False, workspace="i3-msg workspace {}", lacks=("show desktop", "rival"),
         config="font pango:monospace 8\n"),
    # It keeps what lies on the desktop on the first of its screens.
    Desk("icewm", "icewm", ("icewm",), draws_desktop=False, blends=False, lacks=("screens",)),
)}


class DeskWorld(XWorld):
    """A desk of the table in an X server, or nested in a window that fills it."""
    desk = None
    PROGRAMS = ("Xorg", "xdotool", "xrandr", "xprop")
    KIND = "desk"
    plain = {"variables": {"GDK_BACKEND": "x11"}}

    def __init__(self, **more):
        super().__init__(compositing=self.desk.blends, **more)

    def environment(self, **more):
        return super().environment(LIBGL_ALWAYS_SOFTWARE="1", QT_LOGGING_RULES="*=false", **{**dict(self.desk.variables), **more})

    def start_desk(self):
        self.parts = {}
        self.told = self.folder / "told"
        tell, config = self.folder / "tell", self.folder / "config"
        tell.write_text(f"#!/bin/sh\nenv > '{self.told}.new'\nmv '{self.told}.new' '{self.told}'\nexec sleep 10000\n")
        tell.chmod(0o755)
        config.write_text(self.desk.config)
        # Some programs start one of their own otherwise.
        self.bus = SessionBus("/usr/share/dbus-1/services", self.environment())
        self.words = [command.format(tell=tell, config=config).split() for command in self.desk.commands]
        self.start_part(0)
        if self.desk.is_nested:
            self.display = wait_until(self.nested_display, self.desk.name, 60)
        wait_until(self.manager_answers, self.desk.name, 60)
        for number in range(1, len(self.words)):
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
        words = self.words[number]
        if number == 0 and words[0] == "kwin_wayland":
            # A program that the kernel gives capabilities does not trust its environment; a copy has none.
            words = [shutil.copy(shutil.which(words[0]), self.folder / words[0]), *words[1:]]
        with open(self.folder / f"part{number}", "ab") as said:
            self.parts[number] = self.start(*words, variables=self.server if number == 0 else {}, stdout=said, stderr=said)

    def end_part(self, number):
        self.parts[number].kill()
        self.parts[number].wait()

    def nested_display(self):
        """The variables of programs in it, once they are known."""
        assert self.parts[0].poll() is None, (self.folder / "part0").read_text(errors="replace")[-600:]
        if self.told.exists():
            variables = dict(re.findall(r"^(\w+)=(.*)$", self.told.read_text(), re.MULTILINE))
            return {name: variables[name] for name in ("WAYLAND_DISPLAY", "DISPLAY", "XAUTHORITY") if name in variables}
        said = (self.folder / "part0").read_text(errors="replace")
        wayland, x11 = re.search(r"Wayland display name '(.*)'", said), re.search(r"public X11 display (:\d+)", said)
        authority = sorted(self.runtime.glob(".mutter-Xwaylandauth*"))
        return wayland and x11 and authority and {"WAYLAND_DISPLAY": wayland[1], "DISPLAY": x11[1], "XAUTHORITY": str(authority[0])}

    def manager_answers(self):
        return b"window id" in self.run("xprop", "-root", "_NET_SUPPORTING_WM_CHECK")

    def draw_wallpaper(self):
        if not self.desk.draws_desktop and not self.desk.is_nested:
            super().draw_wallpaper()

    def await_wallpaper(self):
        """Whatever the desk draws, once it has come to rest."""
        self.draw_wallpaper()
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
        picture = still()
        while self.desk.key:
            before = picture
            self.key(self.desk.key)
            picture = still()
            if picture.difference(before) is None:
                break
        return self.screenshot()

    def switch_workspace(self, number):
        if self.desk.workspace:
            self.run(*self.desk.workspace.format(number + 1).split())
        else:
            self.ask_manager("_NET_NUMBER_OF_DESKTOPS", 2)
            self.ask_manager("_NET_CURRENT_DESKTOP", number)

    def set_scale(self, output, scale):
        self.run(*self.desk.set_scale.format(scale).split())

    def resize(self, name, width, height):
        if not self.desk.is_nested:
            return super().resize(name, width, height)
        with self.connection(self.server) as display:
            window = max(display.screen().root.query_tree().children, key=lambda each: each.get_geometry().width)
            window.configure(width=width, height=height)
            display.sync()

    def show_desktop(self, is_shown):
        self.ask_manager("_NET_SHOWING_DESKTOP", int(is_shown))


class SwayWorld(WaylandWorld):
    desk = DESKS["sway"]
    parts = {}

    def switch_workspace(self, number):
        self.command(f"workspace {number + 1}")


def world_of(name):
    """The kind of world that a desk is tested in."""
    if name == "sway":
        return SwayWorld
    desk = DESKS[name]
    return type(name, (DeskWorld,), {"desk": desk, "KIND": name, "PROGRAMS": (*DeskWorld.PROGRAMS, *(each.split()[0] for each in desk.commands))})


if __name__ == "__main__":
    # Prints the packages of these desks, or of all, a line each.
    for each in sys.argv[1:] or DESKS:
        print(DESKS[each].packages)
