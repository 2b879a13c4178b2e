"""What assistive technology reads of an application, and does in it."""

import dataclasses
import json
import sys
from pathlib import Path

from support import wait_until


@dataclasses.dataclass(frozen=True)
class Accessible:
    """`path` is the object's place in the tree: the number of each child on the way. `extents` are x, y, width and height in its
    window."""
    path: tuple
    role: str
    name: str
    description: str
    states: frozenset
    actions: tuple
    extents: tuple
    children: tuple

    def all(self):
        """Itself and all below, in their order."""
        yield self
        for child in self.children:
            yield from child.all()


class AccessibleApplication:
    """A process in a world that was made with `accessible`."""

    def __init__(self, world, process):
        self.ask = lambda *more: json.loads(world.run(sys.executable, "-B", Path(__file__).with_name("read_accessibility.py"), process.pid, *more))

    def tree(self):
        """As it is now; None where the application is not to be read (yet)."""
        def read(node):
            return Accessible(**{**node, "path": tuple(node["path"]), "states": frozenset(node["states"]), "actions": tuple(node["actions"]),
                                 "extents": tuple(node["extents"]), "children": tuple(map(read, node["children"]))})
        node = self.ask()
        return node and read(node)

    def find_all(self, role=None, name=None):
        tree = self.tree()
        return [each for each in (tree.all() if tree else ()) if role in (None, each.role) and name in (None, each.name)]

    def find(self, role=None, name=None):
        """The first one, as soon as it is there."""
        return wait_until(lambda: self.find_all(role, name), f"an accessible {role or 'object'} {name or ''}")[0]

    def do_action(self, accessible, name=None):
        """The named one, or the first."""
        assert self.ask(",".join(map(str, accessible.path)), name or accessible.actions[0]), (accessible, name)
