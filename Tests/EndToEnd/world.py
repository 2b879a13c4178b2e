"""What desktops to test in have in common: a home, a session bus, hands, and links that are caught."""

import dataclasses
import os
import shutil
import stat
import subprocess
import sys
import tempfile
from pathlib import Path

from desks import HEIGHT, WIDTH
from picture import Picture
from support import COMMON, SessionBus, wait_until

NOBODY = 65534
ACCESSIBILITY_SERVICE = Path("/usr/share/dbus-1/services/org.a11y.Bus.service")
SCHEMES = ("x-foliovault-item", "x-foliovault", "https")


@dataclasses.dataclass(frozen=True)
class Output:
    """Place and size are those in the layout, in which hands move too."""
    name: str
    x: int
    y: int
    width: int
    height: int
    scale: float


@dataclasses.dataclass(frozen=True)
class Window:
    """An ordinary window, or on X11 any that the window manager lists, from the lowest up. `application` is what docks know it by. `kind`
    and `states` are empty on Wayland."""
    title: str
    process: int
    x: int
    y: int
    width: int
    height: int
    application: str = ""
    kind: str = ""
    states: tuple = ()


class World:
    """A desktop of its own without a screen. What a test needs more is in the two kinds, WaylandWorld and XWorld: each has `outputs`,
    `windows`, `place_window`, `close_window`, `screenshot`, `add_output`, `remove_output`, `bring_back`, `resize` and `set_scale`.

    `home` is the user's, made up where none is given. With `accessible`, programs in it can be read by assistive technology.
    `wallpaper` is the screen's picture before anything else is on it.
    """

    # How ordinary windows are started: in places that can be chosen for them.
    plain = {}

    def __init__(self, home=None, accessible=False):
        self.accessible = accessible
        self.processes = []
        self.hands = self.bus = self.compositor = None
        # The compositor may be another user; the runtime folder alone is private.
        self.folder = Path(tempfile.mkdtemp(prefix="world-"))
        self.folder.chmod(0o755)
        self.home = Path(home or self.folder / "home")
        self.data, self.configuration, self.runtime = self.home / "data", self.home / "config", self.folder / "run"
        self.services = self.folder / "services"
        for folder in (self.data, self.configuration, self.home / "cache", self.runtime, self.services):
            folder.mkdir(parents=True, exist_ok=True)
        self.runtime.chmod(0o700)
        self.wallpaper_file = self.folder / "wallpaper.png"
        Picture.gradient(WIDTH, HEIGHT).save(self.wallpaper_file)
        self.display = {}
        try:
            self.start_display()
            self.move, self.press, self.release, self.key, self.type = (getattr(self.hands, name) for name in ("move", "press", "release", "key", "type"))
            if accessible:
                shutil.copy(ACCESSIBILITY_SERVICE, self.services)
            self.bus = self.bus or SessionBus(self.services, self.environment())
            self.wallpaper = self.await_wallpaper()
            self.rest()
        except BaseException:
            self.stop()
            raise

    def environment(self, **more):
        """The variables of a program in this world."""
        hidden = {} if self.accessible else {"NO_AT_BRIDGE": "1"}
        return {**COMMON, **hidden, "HOME": str(self.home), "XDG_DATA_HOME": str(self.data), "LANG": "C.UTF-8",
                "XDG_CONFIG_HOME": str(self.configuration), "XDG_CACHE_HOME": str(self.home / "cache"),
                "XDG_RUNTIME_DIR": str(self.runtime), "GSETTINGS_BACKEND": "memory", "GIO_USE_VFS": "local",
                **(self.bus.variables if self.bus else {}), **self.display, **more}

    def start(self, *command, variables=None, **more):
        """A program in this world, ended with it at the latest."""
        process = subprocess.Popen([str(part) for part in command], env=self.environment(**(variables or {})), **more)
        self.processes.append(process)
        return process

    def start_compositor(self, *command, inherited=(), **variables):
        """The program that makes the display, as nobody where the tests run as root."""
        as_nobody = []
        if os.getuid() == 0:
            os.chown(self.runtime, NOBODY, NOBODY)
            as_nobody = ["setpriv", f"--reuid={NOBODY}", f"--regid={NOBODY}", "--clear-groups"]
        with open(self.folder / "compositor.log", "wb") as said:
            return self.start(*as_nobody, *command, variables=variables, stdin=subprocess.DEVNULL, stdout=said, stderr=said,
                              pass_fds=inherited)

    def run(self, *command, variables=None, timeout=60, **more):
        """What a program says that ends at once."""
        done = subprocess.run([str(part) for part in command], env=self.environment(**(variables or {})), capture_output=True, timeout=timeout, **more)
        assert done.returncode == 0, (command, done.stderr.decode(errors="replace"))
        return done.stdout

    def draw_wallpaper(self):
        pass

    def await_wallpaper(self):
        picture = None

        def is_there():
            nonlocal picture
            self.draw_wallpaper()
            picture = self.screenshot()
            return picture.difference(Picture.gradient(*picture.size), 4) is None
        wait_until(is_there, "the wallpaper")
        return picture

    # Hands. Buttons: 1 is the left one, 2 the middle, 3 the right.

    def rest(self):
        """Moves the pointer to where nothing is, and no corner that a desk has something behind."""
        self.move(WIDTH - 2, HEIGHT // 2)

    def click(self, x, y, button=1):
        self.move(x, y)
        self.press(button)
        self.release(button)

    def drag(self, start, end, steps=10):
        self.move(*start)
        self.press()
        for step in range(1, steps + 1):
            self.move(*(a + (b - a) * step // steps for a, b in zip(start, end)))
        self.release()

    # What is around.

    def output(self, name):
        return next(each for each in self.outputs() if each.name == name)

    def bounds(self):
        """The box around all outputs."""
        outputs = self.outputs()
        left, top = min(each.x for each in outputs), min(each.y for each in outputs)
        return left, top, max(each.x + each.width for each in outputs) - left, max(each.y + each.height for each in outputs) - top

    def open_window_over(self, x, y, width, height, colour=(0, 160, 0)):
        """An ordinary window in one colour, without borders, once it is seen there. Ends with the process that is returned."""
        window = self.start(sys.executable, "-B", Path(__file__).with_name("plain_window.py"), width, height, *colour, **self.plain)
        self.place_window(window.pid, x, y, width, height)
        wait_until(lambda: self.pixel(x + width // 2, y + height // 2) == tuple(colour), "the window in its place")
        return window

    def pixel(self, x, y):
        """The colour at a place of the layout."""
        for output in self.outputs():
            if 0 <= x - output.x < output.width and 0 <= y - output.y < output.height:
                return self.screenshot(output.name).pixel(int((x - output.x) * output.scale), int((y - output.y) * output.scale))
        raise AssertionError(f"no output at {x}, {y}")

    def end_compositor(self):
        """Takes the display away from under all programs."""
        if self.hands:
            self.hands.close()
        self.compositor.terminate()
        self.compositor.wait(20)

    def stop(self):
        """Ends all that was started here. May be called again."""
        if self.hands:
            self.hands.close()
        if self.bus:
            self.bus.end()
        for process in reversed(self.processes):
            # An X server that is killed leaves its lock behind.
            process.terminate() if process is self.compositor else process.kill()
            process.__exit__(None, None, None)
        self.processes.clear()
        shutil.rmtree(self.folder, ignore_errors=True)


class LinkRecorder:
    """The world's programs for links of these schemes: each is written down."""

    def __init__(self, world, schemes=SCHEMES):
        self.file = world.folder / "links"
        self.seen = 0
        script = world.folder / "record-link"
        script.write_text(f"#!/bin/sh\nprintf '%s\\n' \"$1\" >> '{self.file}'\n")
        script.chmod(script.stat().st_mode | stat.S_IXUSR)
        kinds = [f"x-scheme-handler/{scheme}" for scheme in schemes]
        applications = world.data / "applications"
        applications.mkdir(exist_ok=True)
        (applications / "recorder.desktop").write_text(
            f"[Desktop Entry]\nType=Application\nName=Recorder\nExec={script} %u\nMimeType={';'.join(kinds)};\n")
        (world.configuration / "mimeapps.list").write_text(
            "[Default Applications]\n" + "".join(f"{kind}=recorder.desktop\n" for kind in kinds))

    def links(self):
        return self.file.read_text().splitlines() if self.file.exists() else []

    def wait_for_link(self):
        """The next one that was opened."""
        wait_until(lambda: len(self.links()) > self.seen, "a link to be opened")
        self.seen += 1
        return self.links()[self.seen - 1]
