"""The desktop: how soon its tiles are on the screen, and what it takes from the machine while nothing happens.

Measured in a compositor of its own, which draws into memory. What is on the screen is seen by looking at
one column of each of its pictures.
"""

import os
import plistlib
import shutil
import signal
import statistics
import subprocess
import sys
import time
from pathlib import Path

from support import wait_until
from wayland_eye import WaylandEye
from wayland_session import WaylandSession

KINDS = ("FavoritesWidget", "ReadingListWidget", "WorkspacesWidget", "TipsWidget")
LEFT, TOP, PITCH, HEIGHT = 480, 24, 194, 170
# Also that of a window in the middle of the screen.
COLUMN = 640
REST_SECONDS = 60
# Of the compositor.
PICTURES_A_SECOND = 60
SAVES, STORM_SECONDS = 50, 60
# They differ wherever one looks.
TEXTS = ("WWWWW " * 20, "ooooo " * 20)
STORM = """
import sys, time, pathlib
from desktop_measures import save
begun = time.monotonic()
for number in range(int(float(sys.argv[2]) * 100)):
    save(pathlib.Path(sys.argv[1]), number)
    time.sleep(max(0, begun + number / 100 - time.monotonic()))
"""


class Desktop:
    def __init__(self, programs, project):
        self.session = WaylandSession()
        self.example = Path(project, "Resources", "Example")
        self.restore_library()
        self.command = [programs / "widgethost", "--extension", programs / "foliovault-widgets", "--home", self.session.home]
        self.column = WaylandEye(self.session.socket, (COLUMN, 0, 1, 800)).look
        self.empty = self.column()
        self.entries = self.session.home / "cache" / "widgethost" / "tiles"
        self.process = None

    def restore_library(self):
        self.session.run("cp", "-r", *self.example.iterdir(), self.session.home)

    def host(self, *arguments):
        return self.session.run(*self.command, *arguments)

    def place_tiles(self):
        for row, kind in enumerate(KINDS):
            self.host("add", kind, "--at", f"{LEFT},{TOP + row * PITCH}", "--output", self.session.outputs()[0].name)

    def await_change(self, before, rows, how=all):
        """Until the column has changed in all of these rows, or in any."""
        deadline = time.perf_counter() + 20
        while True:
            now = self.column()
            if how(max(abs(a - b) for a, b in zip(now.pixel(0, y), before.pixel(0, y))) > 4 for y in rows):
                return
            if time.perf_counter() > deadline:
                sys.exit("nothing comes to the screen")

    def start(self, *command, rows=(), **more):
        """The seconds from the start of a program to its tiles on the screen."""
        start = time.perf_counter()
        self.process = self.session.start(*command, **more)
        self.await_change(self.empty, rows)
        return time.perf_counter() - start

    def end(self):
        self.process.terminate()
        code = self.process.wait(20)
        while any(self.column().pixel(0, y) != self.empty.pixel(0, y) for y in range(TOP, 800, 97)):
            pass
        return code

    def started(self):
        return self.start(*self.command, "desktop", rows=[TOP + row * PITCH + 20 for row in range(len(KINDS))])

    def held(self):
        rows = (line.split() for line in Path(f"/proc/{self.process.pid}/smaps_rollup").read_text().splitlines()[1:])
        return next(int(row[1]) / 1024 for row in rows if row[0] == "Pss:")

    def children(self):
        path = Path(f"/proc/{self.process.pid}/task/{self.process.pid}/children")
        return path.read_text().split()

    def used(self, children=False):
        """Processor seconds, those of ended children too where these are asked for, and context switches."""
        fields = Path(f"/proc/{self.process.pid}/stat").read_text().rpartition(")")[2].split()
        status = Path(f"/proc/{self.process.pid}/status").read_text().splitlines()
        switches = sum(int(line.split()[1]) for line in status if "ctxt_switches" in line)
        return sum(map(int, fields[11:15 if children else 13])) / os.sysconf("SC_CLK_TCK"), switches


def groups_by_turns(desktop, rounds):
    """The seconds from the change of a tile's configuration to its new picture on the screen."""
    times = []
    for turn in range(rounds):
        before = desktop.column()
        start = time.perf_counter()
        change = subprocess.Popen([*map(str, desktop.command), "edit", "1", "--set", "group=" + ("Zuhause", "Work")[turn % 2]],
                                  env=desktop.session.environment())
        desktop.await_change(before, range(TOP, TOP + HEIGHT), any)
        times.append(time.perf_counter() - start)
        change.wait()
    return statistics.median(times)


def save(file, number):
    """Saves a library with other texts each time, as the application does."""
    fresh = file.with_name("fresh")
    fresh.write_bytes(plistlib.dumps([{"Name": TEXTS[number % 2], "UUID": str(i)} for i in range(5)], fmt=plistlib.FMT_BINARY))
    fresh.rename(file)


def saves(desktop, count):
    """The seconds from the saving of a library to its tile's new picture on the screen, the extension not running before."""
    file = desktop.session.home / "Library" / "Application Support" / "FOLIOvault" / "Favorites.plist"
    times = []
    for number in range(count):
        for child in desktop.children():
            # Rather than wait for its end each time.
            os.kill(int(child), signal.SIGTERM)
        wait_until(lambda: not desktop.children(), "the extension to rest")
        before = desktop.column()
        # A tile is asked for four times a second at most.
        time.sleep(.3 + number / count / PICTURES_A_SECOND)
        start = time.perf_counter()
        save(file, number)
        desktop.await_change(before, range(TOP, TOP + HEIGHT), any)
        times.append(time.perf_counter() - start)
    return times


def storm(desktop, seconds):
    """How many pictures come of a hundred saves a second, and the processor's seconds for them, the extension's included."""
    file = desktop.session.home / "Library" / "Application Support" / "FOLIOvault" / "Favorites.plist"
    wait_until(lambda: not desktop.children(), "the extension to rest")
    used, pictures, seen = desktop.used(children=True)[0], 0, desktop.column()
    saving = subprocess.Popen([sys.executable, "-c", STORM, str(file), str(seconds)], env={**os.environ, "PYTHONPATH": os.pathsep.join(sys.path)})
    end = time.perf_counter() + seconds + 2
    while time.perf_counter() < end:
        now = desktop.column()
        pictures += now.difference(seen) is not None
        seen = now
    saving.wait()
    wait_until(lambda: not desktop.children(), "the extension to rest")
    return pictures, desktop.used(children=True)[0] - used


def figures(times):
    return f"{statistics.median(times) * 1e3:.0f} ms, at worst {max(times) * 1e3:.0f} ms"


def measure(table, rounds, programs, project, frames, peer):
    desktop = Desktop(programs, project)
    try:
        desktop.place_tiles()
        first, ours, plain = [], [], []
        for turn in range(rounds):
            shutil.rmtree(desktop.entries, ignore_errors=True)
            first.append(desktop.started())
            wait_until(lambda: len(list(desktop.entries.glob("*"))) == len(KINDS), "the entries to be kept")
            desktop.end()
            # Each start at another time between two pictures.
            time.sleep(turn / rounds / PICTURES_A_SECOND)
            ours.append(desktop.started())
            desktop.end()
            time.sleep(turn / rounds / PICTURES_A_SECOND)
            plain.append(desktop.start("/usr/bin/python3", "-B", peer, frames, rows=[400]))
            desktop.end()
        table.row("start of the desktop to its four tiles on the screen, over a window with one from Python",
                  statistics.median(ours), statistics.median(plain), .5)
        desktop.started()
        time.sleep(10)
        rest = desktop.used()
        time.sleep(REST_SECONDS)
        spent = [after - before for after, before in zip(desktop.used(), rest)]
        held = desktop.held()
        desktop.session.move(LEFT + 60, TOP + 60)
        time.sleep(3)
        hovered = desktop.held()
        desktop.session.move(1, 1)
        other = desktop.session.start("/usr/bin/python3", "-B", peer, frames)
        desktop.await_change(desktop.column(), [400])
        shared = desktop.held()
        other.terminate()
        other.wait(20)
        children = len(desktop.children())
        saved = saves(desktop, SAVES)
        pictures, busy = storm(desktop, STORM_SECONDS)
        desktop.restore_library()
        changed = groups_by_turns(desktop, rounds)
        code = desktop.end()
    finally:
        desktop.session.stop()
    print(f"""
The desktop with four tiles:

| what | measured | at most |
| --- | --- | --- |
| a first start, without entries on disk, to four tiles on the screen | {statistics.median(first) * 1e3:.0f} ms | 120 ms |
| memory at rest, proportional set size, no other GTK program running | {held:.1f} MiB | 21 MiB |
| the same once the pointer was over a tile | {hovered:.1f} MiB | |
| the same beside another GTK window, which shares the libraries | {shared:.1f} MiB | |
| extensions running at rest | {children} | 0 |
| processor time in {REST_SECONDS} s at rest | {spent[0] * 1e3:.0f} ms | 10 ms |
| context switches meanwhile | {spent[1]} | 10 |
| a command that changes a configuration to the new picture on the screen | {changed * 1e3:.0f} ms | 50 ms |
| a library saved to its new picture on the screen, {SAVES} times, the extension not running before | {figures(saved)} | 100 ms |
| pictures of {100 * STORM_SECONDS:,} saves in {STORM_SECONDS} s | {pictures} | {4 * STORM_SECONDS + 1} |
| processor time meanwhile, the extension included | {busy * 1e3:.0f} ms | |
| exit code when told to end | {code} | 0 |
""")
