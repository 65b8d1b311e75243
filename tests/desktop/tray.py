"""The tray of a desktop, on its bus."""

import os
import threading

from private_desktop import Gio, GLib, until


class Tray:
    """The tray of a desktop: where items register, and what a person does with the last one."""

    WATCHER = """<node><interface name="org.kde.StatusNotifierWatcher">
        <method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
        <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
        </interface></node>"""

    def __init__(self):
        self.item = None
        self._bus = Gio.DBusConnection.new_for_address_sync(
            os.environ["DBUS_SESSION_BUS_ADDRESS"],
            Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT
            | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION, None, None)
        self._loop = GLib.MainLoop.new(GLib.MainContext.new(), False)
        self._thread = threading.Thread(target=self._serve, daemon=True)
        self._thread.start()

    def close(self):
        self._loop.quit()
        self._thread.join()
        self._bus.close_sync()

    def await_item(self):
        until(lambda: self.item, "the item in the tray")

    def property(self, name):
        return self._call("/StatusNotifierItem", "org.freedesktop.DBus.Properties", "Get",
                          GLib.Variant("(ss)", ("org.kde.StatusNotifierItem", name)))[0]

    def tool_tip(self):
        return self.property("ToolTip")[2]

    def click(self):
        self._call("/StatusNotifierItem", "org.kde.StatusNotifierItem", "Activate",
                   GLib.Variant("(ii)", (0, 0)))

    def menu(self):
        """The titles in the item's menu, and their ids."""
        _, (_, _, entries) = self._menu_call("GetLayout", GLib.Variant("(iias)", (0, -1, [])))
        return {properties["label"]: number for number, properties, _ in entries}

    def choose(self, title):
        self._menu_call("Event", GLib.Variant("(isvu)", (
            self.menu()[title], "clicked", GLib.Variant("s", ""), 0)))

    def _menu_call(self, method, arguments):
        return self._call(self.property("Menu"), "com.canonical.dbusmenu", method, arguments)

    def _call(self, path, interface, method, arguments):
        return self._bus.call_sync(
            self.item, path, interface, method, arguments, None, 0, -1, None).unpack()

    def _serve(self):
        context = self._loop.get_context()
        context.push_thread_default()
        self._bus.register_object(
            "/StatusNotifierWatcher", Gio.DBusNodeInfo.new_for_xml(self.WATCHER).interfaces[0],
            self._register, lambda *_: GLib.Variant("b", True), None)
        Gio.bus_own_name_on_connection(self._bus, "org.kde.StatusNotifierWatcher", 0, None, None)
        self._loop.run()
        context.pop_thread_default()

    def _register(self, _bus, _sender, _path, _interface, _method, arguments, invocation):
        [self.item] = arguments.unpack()
        invocation.return_value(None)
