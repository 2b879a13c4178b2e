"""Looks once at an application, through the bus that the variables name, and writes what it sees as JSON; null where it is not there.

read_accessibility.py PROCESS               the application's tree
read_accessibility.py PROCESS PLACE ACTION  does the action of the object in that place, "0,3,1"; whether it was done. "select" is one that
                                            every object of a list has
"""

import json
import sys

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib


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


try:
    answer = look(int(sys.argv[1]), *sys.argv[2:])
except GLib.Error:
    # What was there has gone while it was read.
    answer = None
print(json.dumps(answer))
