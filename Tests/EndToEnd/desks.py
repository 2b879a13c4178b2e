"""The desks that people have, and how each is started without a screen."""

import dataclasses
import sys

# The size of each screen, in its own pixels.
WIDTH, HEIGHT = 1280, 800
OPENBOX = """<?xml version="1.0"?>
<openbox_config xmlns="http://openbox.org/3.4/rc"><desktops><number>1</number></desktops></openbox_config>
"""


@dataclasses.dataclass(frozen=True)
class Desk:
    """`packages` are Debian's, as in a Depends field. `commands` start the desk: first what manages windows, last what draws the desktop, if
    `draws_desktop`. In them, {report} is a program that passes on the display's variables, {config} a file with `config` in it, {settings} that of xsettingsd.
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
    # Its scale is set in 256ths, so that it has no 1.6.
    Desk("labwc", "labwc, xwayland, wlr-randr", ("labwc -s {report}",), draws_desktop=False, is_nested=True, lacks=("show desktop", "name"),
         scales=(1.25, 1.75, 2), set_scale="wlr-randr --output X11-1 --scale {}", variables=(("WLR_BACKENDS", "x11"), ("WLR_RENDERER", "pixman"))),
    Desk("KDE Wayland", "kwin-wayland, plasma-workspace, plasma-workspace-wayland | plasma-desktop, plasma-desktop, qtwayland5 | qt6-wayland, xwayland, libkf5screen-bin | libkscreen-bin",
         (f"kwin_wayland --xwayland --width {WIDTH} --height {HEIGHT} {{report}}", "plasmashell"), is_nested=True,
         lacks=("show desktop", "name"), scales=(1.25, 1.5, 2), set_scale="env XDG_SESSION_TYPE=wayland QT_QPA_PLATFORM=wayland KSCREEN_BACKEND_INPROCESS=1 kscreen-doctor output.1.scale.{}"),
    Desk("KDE X11", "kwin-x11, plasma-desktop, plasma-workspace", ("kwin_x11", "plasmashell"), blends=False),
    Desk("GNOME, mutter", "mutter, xwayland", ("mutter --nested --wayland -- {report}",), draws_desktop=False, is_nested=True, variables=NESTED,
         lacks=("resolution",)),
    Desk("GNOME Shell", "gnome-shell, xwayland", ("gnome-shell --nested --wayland",), draws_desktop=False, is_nested=True, variables=NESTED,
         key="Escape", lacks=("resolution",)),
    Desk("XFCE", "xfwm4, xfdesktop4, xfce4-settings", ("xfwm4 --compositor=on", "xfdesktop")),
    Desk("MATE", "marco, caja, mate-settings-daemon", ("marco --composite", "caja -n --force-desktop")),
    Desk("Cinnamon", "cinnamon, muffin, nemo", ("cinnamon", "nemo-desktop"), variables=(("XDG_SESSION_TYPE", "x11"),)),
    Desk("LXQt", "openbox, xcompmgr, pcmanfm-qt, qt6-qpa-plugins", ("openbox", "xcompmgr", "pcmanfm-qt --desktop --profile=lxqt")),
    Desk("openbox", "openbox, xcompmgr, xsettingsd", ("openbox --sm-disable --config-file {config}", "xsettingsd -c {settings}", "xcompmgr"),
         draws_desktop=False, config=OPENBOX),
    Desk("i3", "i3-wm", ("i3 -c {config}",), draws_desktop=False, blends=False, workspace="i3-msg workspace {}", lacks=("show desktop", "rival"),
         config="font pango:monospace 8\n"),
    # It keeps what lies on the desktop on the first of its screens.
    Desk("icewm", "icewm", ("icewm",), draws_desktop=False, blends=False, lacks=("screens",)),
)}


if __name__ == "__main__":
    # Prints the packages of these desks, or of all, a line each.
    for each in sys.argv[1:] or DESKS:
        print(DESKS[each].packages)
