"""The desktops that windows are tested in. Their interface stands in world.py."""

import shutil
import unittest

from desks import DESKS
from wayland_world import WaylandWorld
from world import LinkRecorder
from x_world import XWorld

__all__ = ["WaylandWorld", "XWorld", "LinkRecorder", "world_of", "skip_where_missing"]


def world_of(name):
    """The kind of world that a desk of the table is tested in."""
    desk = DESKS[name]
    programs = (*XWorld.PROGRAMS[:4], *(command.split()[0] for command in desk.commands))
    return type(name, (XWorld,), {"desk": desk, "KIND": name, "PROGRAMS": programs}) if desk.commands else WaylandWorld


def skip_where_missing(kind):
    """Leaves the test out on a machine without the programs of that world."""
    missing = [program for program in kind.PROGRAMS if not shutil.which(program)]
    if missing:
        raise unittest.SkipTest(f"{kind.KIND}: {', '.join(missing)} not installed")
