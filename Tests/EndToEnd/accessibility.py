"""What assistive technology reads of an application, and does in it.

As a program, accessibility.py PROCESS [PLACE ACTION], it looks once at an application, through the bus that the variables name, and writes
its tree as JSON, null where it is not there; or does the action of the object in that place, "0,3,1". "select" is one that every object of
a list has.
"""

import dataclasses
import json
import sys


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
        self.ask = lambda *more: json.loads(world.run(sys.executable, "-B", __file__, process.pid, *more))

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
        from support import wait_until
        return wait_until(lambda: self.find_all(role, name), f"an accessible {role or 'object'} {name or ''}")[0]

    def do_action(self, accessible, name=None):
        """The named one, or the first."""
        assert self.ask(",".join(map(str, accessible.path)), name or accessible.actions[0]), (accessible, name)


def children(node):
    return [child for child in (node.get_child_at_index(i) for i in range(node.get_child_count())) if child]


def actions(node):
    interface = node.get_action_iface()
    return [Atspi.Action.get_action_name(interface, i) for i in range(Atspi.Action.get_n_actions(interface))] if interface else []


def describe(node, path):
    component = node.get_component_iface()
    box = Atspi.Component.get_extents(component, Atspi.CoordType.WINDOW) if component else None
    # What some versions call a push button, others call a button.
    return {"path": path, "role": node.get_role_name().removeprefix("push "), "name": node.get_name(), "description": node.get_description(),
            "states": [state.value_nick for state in node.get_state_set().get_states()], "actions": actions(node),
            "extents": [box.x, box.y, box.width, box.height] if box else [0, 0, 0, 0],
            "children": [describe(child, [*path, i]) for i, child in enumerate(children(node))]}


def look(process, place=None, action=None):
    application = next((each for each in children(Atspi.get_desktop(0)) if each.get_process_id() == process), None)
    if place is None or application is None:
        return application and describe(application, [])
    node = application
    for number in filter(None, place.split(",")):
        node = children(node)[int(number)]
    if action == "select":
        return Atspi.Selection.select_child(node.get_parent().get_selection_iface(), node.get_index_in_parent())
    return Atspi.Action.do_action(node.get_action_iface(), actions(node).index(action))


if __name__ == "__main__":
    import gi

    gi.require_version("Atspi", "2.0")
    from gi.repository import Atspi, GLib

    try:
        answer = look(int(sys.argv[1]), *sys.argv[2:])
    except GLib.Error:
        # What was there has gone while it was read.
        answer = None
    print(json.dumps(answer))
