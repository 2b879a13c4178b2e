"""A user's desktop to test in: a home, a session bus, a pointer and keys, and links that are recorded."""

import contextlib
import dataclasses
import os
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

from desks import HEIGHT, WIDTH
from picture import Picture
from support import COMMON, SessionBus, wait_until

NOBODY = 65534
ACCESSIBILITY_SERVICE = Path("/usr/share/dbus-1/services/org.a11y.Bus.service")
SCHEMES = ("x-foliovault-item", "x-foliovault-smartgroup", "x-foliovault", "https")


@dataclasses.dataclass(frozen=True)
class Output:
    """Position and size are those in the layout, in which the pointer moves too."""
    name: str
    x: int
    y: int
    width: int
    height: int
    scale: float = 1


@dataclasses.dataclass(frozen=True)
class Window:
    """An ordinary window; on X11 any that the window manager lists, from the lowest up. `application` is its name for docks. `kind`,
    `states` and the server's `number` are empty on Wayland."""
    title: str
    process: int
    x: int
    y: int
    width: int
    height: int
    application: str = ""
    kind: str = ""
    states: tuple = ()
    number: str = ""


class DesktopSession:
    """A desktop without a screen: WaylandSession or XSession, which have in common `outputs`, `windows`, `place_window`, `close_window`,
    `screenshot`, `add_output`, `remove_output`, `bring_back`, `resize`, `set_scale`, and input: `move`, `press`, `release`, `key`.

    `home` is the user's, a new one by default. With `accessible`, assistive technology can read programs in it. `wallpaper` is
    the screen's picture before anything else is on it.
    """
    # The variables of ordinary windows whose position can be set.
    window_variables = {}

    def __init__(self, home=None, accessible=False):
        self.accessible = accessible
        self.display, self.bus, self.compositor = {}, None, None
        self.cleanups = contextlib.ExitStack()
        # The compositor may be another user; the runtime folder alone is private.
        self.folder = Path(tempfile.mkdtemp(prefix="session-"))
        self.cleanups.callback(shutil.rmtree, self.folder, ignore_errors=True)
        self.folder.chmod(0o755)
        self.home = Path(home or self.folder / "home")
        self.data, self.configuration, self.runtime = self.home / "data", self.home / "config", self.folder / "run"
        self.services = self.folder / "services"
        for folder in (self.data, self.configuration, self.home / "cache", self.runtime, self.services):
            folder.mkdir(parents=True, exist_ok=True)
        self.runtime.chmod(0o700)
        self.wallpaper_file = self.folder / "wallpaper.png"
        Picture.gradient(WIDTH, HEIGHT).save(self.wallpaper_file)
        if accessible:
            shutil.copy(ACCESSIBILITY_SERVICE, self.services)
        try:
            self.start_display()
            if not self.bus:
                self.start_bus(self.services)
            self.wallpaper = self.await_wallpaper()
            self.rest()
        except BaseException:
            self.stop()
            raise

    def stop(self):
        """Ends everything that was started here. May be called again."""
        self.cleanups.close()

    @classmethod
    def skip_where_missing(cls):
        missing = [program for program in cls.PROGRAMS if not shutil.which(program)]
        if missing:
            raise unittest.SkipTest(f"{cls.__name__}: {', '.join(missing)} not installed")

    def environment(self, **more):
        """The variables of a program in this session."""
        return {**COMMON, **({} if self.accessible else {"NO_AT_BRIDGE": "1"}), "HOME": str(self.home), "XDG_DATA_HOME": str(self.data),
                "LANG": "C.UTF-8", "XDG_CONFIG_HOME": str(self.configuration), "XDG_CACHE_HOME": str(self.home / "cache"),
                "XDG_RUNTIME_DIR": str(self.runtime), "GSETTINGS_BACKEND": "memory", "GIO_USE_VFS": "local",
                **(self.bus.variables if self.bus else {}), **self.display, **more}

    def start_bus(self, services):
        self.bus = SessionBus(services, self.environment())
        self.cleanups.callback(self.bus.end)

    def start(self, *command, variables=None, **more):
        """A program in this session, which ends it at the latest."""
        process = subprocess.Popen([str(part) for part in command], env=self.environment(**(variables or {})), **more)
        self.cleanups.callback(self.end, process)
        return process

    def start_script(self, name, *arguments, **more):
        """A program of this folder."""
        return self.start(sys.executable, "-B", Path(__file__).with_name(name), *arguments, **more)

    def open_window(self, width, height, colour):
        """An ordinary window in one colour, without borders; one without a size fills the screen."""
        return self.start_script("plain_window.py", width, height, *colour, variables=self.window_variables)

    def start_compositor(self, *command, inherited=(), **variables):
        """The program that makes the display, as nobody if the tests run as root."""
        as_nobody = []
        if os.getuid() == 0:
            os.chown(self.runtime, NOBODY, NOBODY)
            as_nobody = ["setpriv", f"--reuid={NOBODY}", f"--regid={NOBODY}", "--clear-groups"]
        with open(self.folder / "compositor.log", "wb") as log:
            self.compositor = self.start(*as_nobody, *command, variables=variables, stdin=subprocess.DEVNULL, stdout=log, stderr=log,
                                         pass_fds=inherited)

    def end(self, process):
        # An X server that is killed leaves its lock behind.
        process.terminate() if process is self.compositor else process.kill()
        process.__exit__(None, None, None)

    def run(self, *command, variables=None, timeout=60):
        """The output of a program that succeeds."""
        done = subprocess.run([str(part) for part in command], env=self.environment(**(variables or {})), capture_output=True, timeout=timeout)
        assert done.returncode == 0, (command, done.returncode, done.stdout[-2000:], done.stderr.decode(errors="replace"))
        return done.stdout

    def draw_wallpaper(self):
        pass

    def await_wallpaper(self):
        def wallpaper():
            self.draw_wallpaper()
            picture = self.screenshot()
            # The desk's bar may lie at the lower edge by then.
            seen = (0, 0, picture.size[0], picture.size[1] - 100)
            return picture if picture.crop(*seen).difference(Picture.gradient(*picture.size).crop(*seen), 4) is None else None
        return wait_until(wallpaper, "the wallpaper")

    # Buttons: 1 is the left one, 2 the middle, 3 the right.

    def rest(self):
        """Moves the pointer to where nothing is, not even a corner that does something on some desks."""
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

    def output(self, name):
        return next(each for each in self.outputs() if each.name == name)

    def right_end(self):
        """The right end of all outputs."""
        return max(each.x + each.width for each in self.outputs())


class LinkRecorder:
    """The session's program for links of these schemes: each is written down."""

    def __init__(self, session, schemes=SCHEMES):
        self.file = session.folder / "links"
        self.seen = 0
        script = session.folder / "record-link"
        script.write_text(f"#!/bin/sh\nprintf '%s\\n' \"$1\" >> '{self.file}'\n")
        script.chmod(0o755)
        kinds = [f"x-scheme-handler/{scheme}" for scheme in schemes]
        applications = session.data / "applications"
        applications.mkdir(exist_ok=True)
        (applications / "recorder.desktop").write_text(
            f"[Desktop Entry]\nType=Application\nName=Recorder\nExec={script} %u\nMimeType={';'.join(kinds)};\n")
        (session.configuration / "mimeapps.list").write_text(
            "[Default Applications]\n" + "".join(f"{kind}=recorder.desktop\n" for kind in kinds))

    def links(self):
        return self.file.read_text().splitlines() if self.file.exists() else []

    def wait_for_link(self):
        """The next one that was opened."""
        wait_until(lambda: len(self.links()) > self.seen, "a link to be opened")
        self.seen += 1
        return self.links()[self.seen - 1]
