"""A desktop's settings as its portal tells them, with values that a test changes.

As a program it is the portal: it takes lines "NAMESPACE KEY VALUE" from its input, the value in GVariant's text form, says "ok" to
each, and stays when there are no more.
"""

import fnmatch
import subprocess
import sys
from pathlib import Path

APPEARANCE = "org.freedesktop.appearance"
INTERFACE = """<node><interface name="org.freedesktop.portal.Settings">
    <method name="Read"><arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="v" direction="out"/></method>
    <method name="ReadOne"><arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="v" direction="out"/></method>
    <method name="ReadAll"><arg type="as" direction="in"/><arg type="a{sa{sv}}" direction="out"/></method>
    <signal name="SettingChanged"><arg type="s"/><arg type="s"/><arg type="v"/></signal>
    <property name="version" type="u" access="read"/>
</interface></node>"""
VERSION = 2


class SettingsPortal:
    """The portal of a world, from now on. Before, there is none."""

    def __init__(self, world):
        self.process = world.start(sys.executable, "-B", Path(__file__), stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        assert self.process.stdout.readline() == b"there\n"

    def set(self, key, value, namespace=APPEARANCE):
        """The value as GVariant's text: "uint32 1", "(0.1, 0.5, 0.9)". Its change has been announced when this returns."""
        self.process.stdin.write(f"{namespace} {key} {value}\n".encode())
        self.process.stdin.flush()
        assert self.process.stdout.readline() == b"ok\n"

    def stop(self):
        self.process.kill()
        self.process.wait()


def serve():
    from gi.repository import Gio, GLib

    settings = {}
    bus = Gio.bus_get_sync(Gio.BusType.SESSION)
    path, interface = "/org/freedesktop/portal/desktop", Gio.DBusNodeInfo.new_for_xml(INTERFACE).interfaces[0]

    def call(_bus, _sender, _path, _interface, method, arguments, invocation):
        arguments = arguments.unpack()
        if method == "ReadAll":
            patterns = arguments[0] or ["*"]
            told = {namespace: values for namespace, values in settings.items()
                    if any(fnmatch.fnmatchcase(namespace, pattern) or pattern == "" for pattern in patterns)}
            invocation.return_value(GLib.Variant("(a{sa{sv}})", [told]))
        elif (value := settings.get(arguments[0], {}).get(arguments[1])) is None:
            invocation.return_dbus_error("org.freedesktop.portal.Error.NotFound", "Requested setting not found")
        else:
            # The older of the two wraps the value twice.
            invocation.return_value(GLib.Variant("(v)", [GLib.Variant("v", value) if method == "Read" else value]))

    def take(source, _):
        line = source.readline()
        if not line:
            return False
        namespace, key, text = line.split(maxsplit=2)
        value = settings.setdefault(namespace, {})[key] = GLib.Variant.parse(None, text.strip(), None, None)
        bus.emit_signal(None, path, interface.name, "SettingChanged", GLib.Variant("(ssv)", [namespace, key, value]))
        bus.flush_sync()
        print("ok", flush=True)
        return True

    bus.register_object(path, interface, call, lambda *_: GLib.Variant("u", VERSION), None)
    Gio.bus_own_name_on_connection(bus, "org.freedesktop.portal.Desktop", 0, lambda *_: print("there", flush=True), None)
    GLib.io_add_watch(sys.stdin, GLib.PRIORITY_DEFAULT, GLib.IOCondition.IN | GLib.IOCondition.HUP, take)
    GLib.MainLoop().run()


if __name__ == "__main__":
    serve()
