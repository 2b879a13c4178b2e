"""A desktop's settings portal, with values that a test changes."""

import threading

from gi.repository import Gio, GLib

APPEARANCE = "org.freedesktop.appearance"
PATH = "/org/freedesktop/portal/desktop"
INTERFACE = Gio.DBusNodeInfo.new_for_xml("""<node><interface name="org.freedesktop.portal.Settings">
    <method name="ReadAll"><arg type="as" direction="in"/><arg type="a{sa{sv}}" direction="out"/></method>
    <signal name="SettingChanged"><arg type="s"/><arg type="s"/><arg type="v"/></signal>
</interface></node>""").interfaces[0]


class SettingsPortal:
    """The portal of a session, from now on."""

    def __init__(self, session):
        self.settings = {}
        flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
        self.bus = Gio.DBusConnection.new_for_address_sync(session.bus.variables["DBUS_SESSION_BUS_ADDRESS"], flags)
        self.bus.register_object(PATH, INTERFACE, self.read_all)
        name = GLib.Variant("(su)", ("org.freedesktop.portal.Desktop", 0))
        self.bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName", name, None, 0, -1)
        threading.Thread(target=GLib.MainLoop().run, daemon=True).start()

    def read_all(self, *call):
        namespaces, invocation = call[5].unpack()[0], call[6]
        values = {APPEARANCE: self.settings} if APPEARANCE in namespaces else {}
        invocation.return_value(GLib.Variant("(a{sa{sv}})", [values]))

    def set(self, key, value):
        """Announces a value in GVariant's text form: "uint32 1", "(0.1, 0.5, 0.9)"."""
        self.settings[key] = GLib.Variant.parse(None, value, None, None)
        self.bus.emit_signal(None, PATH, INTERFACE.name, "SettingChanged", GLib.Variant("(ssv)", (APPEARANCE, key, self.settings[key])))
        self.bus.flush_sync()
