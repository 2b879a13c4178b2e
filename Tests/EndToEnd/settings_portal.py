"""A desktop's settings portal, with values that a test changes.

As a program it is the portal: it takes lines "KEY VALUE" from its input, the value in GVariant's text form, says "ok" to each, and stays when
there are no more.
"""

import subprocess
import sys

APPEARANCE = "org.freedesktop.appearance"
INTERFACE = """<node><interface name="org.freedesktop.portal.Settings">
    <method name="ReadAll"><arg type="as" direction="in"/><arg type="a{sa{sv}}" direction="out"/></method>
    <signal name="SettingChanged"><arg type="s"/><arg type="s"/><arg type="v"/></signal>
</interface></node>"""


class SettingsPortal:
    """The portal of a session, from now on."""

    def __init__(self, session):
        self.process = session.start_script("settings_portal.py", stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        assert self.process.stdout.readline() == b"ok\n"

    def set(self, key, value):
        """The value as GVariant's text: "uint32 1", "(0.1, 0.5, 0.9)". Its change has been announced when this returns."""
        self.process.stdin.write(f"{key} {value}\n".encode())
        self.process.stdin.flush()
        assert self.process.stdout.readline() == b"ok\n"


def serve():
    from gi.repository import Gio, GLib

    settings = {}
    bus = Gio.bus_get_sync(Gio.BusType.SESSION)
    path, interface = "/org/freedesktop/portal/desktop", Gio.DBusNodeInfo.new_for_xml(INTERFACE).interfaces[0]

    def read_all(*call):
        namespaces, invocation = call[5].unpack()[0], call[6]
        values = {APPEARANCE: settings} if APPEARANCE in namespaces else {}
        invocation.return_value(GLib.Variant("(a{sa{sv}})", [values]))

    def take(source, _):
        line = source.readline()
        if not line:
            return False
        key, text = line.split(maxsplit=1)
        settings[key] = GLib.Variant.parse(None, text.strip(), None, None)
        bus.emit_signal(None, path, interface.name, "SettingChanged", GLib.Variant("(ssv)", [APPEARANCE, key, settings[key]]))
        bus.flush_sync()
        print("ok", flush=True)
        return True

    bus.register_object(path, interface, read_all, None, None)
    Gio.bus_own_name_on_connection(bus, "org.freedesktop.portal.Desktop", 0, lambda *_: print("ok", flush=True), None)
    GLib.io_add_watch(sys.stdin, GLib.PRIORITY_DEFAULT, GLib.IOCondition.IN | GLib.IOCondition.HUP, take)
    GLib.MainLoop().run()


if __name__ == "__main__":
    serve()
