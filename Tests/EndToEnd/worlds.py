"""The desktops that windows are tested in. Their interface stands in world.py."""

import shutil
import unittest

from wayland_world import WaylandWorld
from world import LinkRecorder
from x_world import XWorld

__all__ = ["WaylandWorld", "XWorld", "LinkRecorder", "WORLDS", "skip_where_missing"]
WORLDS = (WaylandWorld, XWorld)


def skip_where_missing(kind):
    """Leaves the test out on a machine without the programs of that world."""
    missing = [program for program in kind.PROGRAMS if not shutil.which(program)]
    if missing:
        raise unittest.SkipTest(f"{kind.KIND}: {', '.join(missing)} not installed")
