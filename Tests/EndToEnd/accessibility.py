"""What assistive technology reads of an application, and does in it.

As a program, accessibility.py PROCESS [PATH ACTION], it prints an application's tree as JSON, null if there is none; or does the action of
the object at that path, "0,3,1". "select" is one that every object of a list has. The variables name the bus.
"""

import json
import sys
from types import SimpleNamespace


class AccessibleApplication:
    """A process in a session that was made with `accessible`. An object has a `path`, the number of each child on the way to it, `role`, `name`,
    `states`, `actions`, `extents` (x, y, width and height in its window) and `children`."""

    def __init__(self, session, process):
        self.ask = lambda *more: json.loads(session.run(sys.executable, "-B", __file__, process.pid, *more), object_hook=lambda each: SimpleNamespace(**each))

    def all(self, node=None):
        """An object and all below, in their order; by default those of the whole application, none while it cannot be read."""
        node = node or self.ask()
        return [node, *(below for child in node.children for below in self.all(child))] if node else []

    def find_all(self, role=None, name=None):
        return [each for each in self.all() if role in (None, each.role) and name in (None, each.name)]

    def find(self, role=None, name=None):
        """The first one, as soon as it is there."""
        from support import wait_until
        return wait_until(lambda: self.find_all(role, name), f"an accessible {role or 'object'} {name or ''}")[0]

    def do_action(self, node, name=None):
        """The named one, or the first."""
        assert self.ask(",".join(map(str, node.path)), name or node.actions[0]), (node, name)


def children(node):
    return [child for child in (node.get_child_at_index(i) for i in range(node.get_child_count())) if child]


def actions(node):
    interface = node.get_action_iface()
    return [Atspi.Action.get_action_name(interface, i) for i in range(Atspi.Action.get_n_actions(interface))] if interface else []


def describe(node, path):
    component = node.get_component_iface()
    box = Atspi.Component.get_extents(component, Atspi.CoordType.WINDOW) if component else None
    # Some versions call a button a push button.
    return {"path": path, "role": node.get_role_name().removeprefix("push "), "name": node.get_name(),
            "states": [state.value_nick for state in node.get_state_set().get_states()], "actions": actions(node),
            "extents": [box.x, box.y, box.width, box.height] if box else [0, 0, 0, 0],
            "children": [describe(child, [*path, i]) for i, child in enumerate(children(node))]}


def main(process, path=None, action=None):
    node = next((each for each in children(Atspi.get_desktop(0)) if each.get_process_id() == int(process)), None)
    if path is None or node is None:
        return node and describe(node, [])
    for number in filter(None, path.split(",")):
        node = children(node)[int(number)]
    if action == "select":
        return Atspi.Selection.select_child(node.get_parent().get_selection_iface(), node.get_index_in_parent())
    return Atspi.Action.do_action(node.get_action_iface(), actions(node).index(action))


if __name__ == "__main__":
    import gi

    gi.require_version("Atspi", "2.0")
    from gi.repository import Atspi, GLib

    try:
        print(json.dumps(main(*sys.argv[1:])))
    except GLib.Error:
        print("null")  # An object vanished while it was read.
