"""The application on a desktop of its own: a sample home, the session's bus and display, and what
of it assistive technology sees. Everything lives in one temporary folder."""

import ctypes
import glob
import json
import os
import re
import shutil
import signal
import sqlite3
import subprocess
import tempfile
import time
from typing import NamedTuple

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, Gio, GLib  # noqa: E402


def until(condition, what, seconds=20):
    """Waits until `condition` gives something true, and gives it back."""
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        result = condition()
        if result:
            return result
        time.sleep(0.1)
    raise AssertionError(f"{what}: not within {seconds} s")


def role(item):
    """The name of its role; assistive technology used to say "push button" for "button"."""
    name = item.get_role_name()
    return "button" if name == "push button" else name


class Daemon(NamedTuple):
    """A notification daemon, and which click on a notice is the one that follows it."""
    command: list  # in the desktop's home
    window_class: str
    button: int
    from_corner: tuple  # to the left of the lower right corner of the notice, and above it


DAEMONS = {
    "dunst": Daemon(["dunst", "-conf", "dunstrc"], "Dunst", 2, (20, 20)),
    # On the button with the action's name; the rest of the notice closes it.
    "xfce4-notifyd": Daemon(glob.glob("/usr/lib/*/xfce4/notifyd/xfce4-notifyd"), "Xfce4-notifyd",
                            1, (45, 30)),
}


class Desktop:
    BINARIES = os.environ["TALLYVIEW_BINARIES"]
    PROGRAM = BINARIES + "/orvik-tallyview"

    def __init__(self):
        self.home = tempfile.mkdtemp(prefix="tallyview-desktop-")
        self.settings = os.path.join(self.home, ".config/orvik/tallyview.conf")
        self.environment = {
            **{k: v for k, v in os.environ.items() if k != "XDG_CURRENT_DESKTOP"},
            "HOME": self.home,
            "XDG_CONFIG_HOME": self.home + "/.config",
            "XDG_DATA_HOME": self.home + "/.local/share",
            "XDG_CACHE_HOME": self.home + "/.cache",
            "QT_QPA_PLATFORM": "xcb",
            "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
            "LC_ALL": "C.UTF-8",
        }
        self.processes = {}
        subprocess.run(
            [f"{self.BINARIES}/orvik-tallyview-demo", "--home", self.home, "--threads", "40",
             "--rollouts", "small"],
            check=True, stdout=subprocess.DEVNULL)
        self.database = self.home + "/.orvik/state_5.sqlite"

    def close(self):
        for name in list(self.processes):
            self.stop(name)
        shutil.rmtree(self.home, ignore_errors=True)

    # Processes, by a name of the test's choice.

    def start(self, name, *command, **more):
        environment = {**self.environment, **more}
        with open(os.path.join(self.home, name + ".errors"), "wb") as errors:
            self.processes[name] = subprocess.Popen(
                command, cwd=self.home, env=environment, stdout=errors, stderr=errors)

    def stop(self, name):
        process = self.processes.pop(name, None)
        if process and process.poll() is None:
            process.send_signal(signal.SIGTERM)
            process.wait(10)
        return process.returncode if process else None

    def start_application(self, **more):
        self.start("application", self.PROGRAM, **more)
        until(lambda: self.find("button", "刷新任务"), "the application's window")
        self._await_refresh()

    def run_application(self, *arguments, **more):
        """Starts it a second time; its exit code, standard output and standard error."""
        ended = subprocess.run([self.PROGRAM, *arguments], env={**self.environment, **more},
                               capture_output=True, text=True, timeout=10)
        return ended.returncode, ended.stdout, ended.stderr

    def close_window(self):
        """Asks the window to close, as a window manager does."""
        close_window("Orvik Tallyview")
        until(lambda: not self.find("button", "刷新任务"), "the window is gone")

    def complaints(self):
        """What the application wrote to standard error; not what Qt's bridge to AT-SPI says of the
        registry's questions, which newer releases ask before Qt knows them."""
        return [line for line in self._lines("application.errors")
                if not line.startswith("qt.accessibility.atspi: ")]

    # The desktop's settings and its other kind of display.

    @staticmethod
    def choose(key, value):
        """Sets one of GNOME's settings of the interface and waits until the portal tells it."""
        group = "org.gnome.desktop.interface"
        subprocess.run(["gsettings", "set", group, key, value], check=True)
        bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        until(lambda: str(bus.call_sync(
            "org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop",
            "org.freedesktop.portal.Settings", "Read", GLib.Variant("(ss)", (group, key)), None, 0,
            -1, None).unpack()[0]).lower() == value, f"the portal tells {key} {value}")

    def start_wayland(self):
        """From now on programs show their windows on a compositor with a large screen."""
        socket = "wayland-tallyview"
        self.start("compositor", "weston", "--backend=headless-backend.so", "--width=2600",
                   "--height=1600", f"--socket={socket}")
        until(lambda: os.path.exists(os.path.join(os.environ["XDG_RUNTIME_DIR"], socket)),
              "the compositor")
        # Nobody sits at it: without a seat some versions of Qt crash in Wayland's own input method.
        self.environment.update(WAYLAND_DISPLAY=socket, QT_QPA_PLATFORM="wayland",
                                QT_IM_MODULE="compose")

    # The agent.

    def sql(self, statement, *values):
        with sqlite3.connect(self.database, timeout=10) as database:
            return database.execute(statement, values).fetchall()

    def begin_task(self, thread, **columns):
        self._append(thread, "task_started")
        columns["updated_at_ms"] = columns["recency_at_ms"] = int(time.time() * 1000)
        changes = ", ".join(f"{column} = ?" for column in columns)
        self.sql(f"UPDATE threads SET {changes} WHERE id = ?", *columns.values(), thread)

    def complete_task(self, thread):
        self._append(thread, "task_complete")

    def _append(self, thread, event):
        [[path]] = self.sql("SELECT rollout_path FROM threads WHERE id = ?", thread)
        with open(path, "a", encoding="utf-8") as rollout:
            rollout.write('{"type":"event_msg","payload":{"type":"%s"}}\n' % event)

    def refresh(self):
        """Presses the refresh button and waits for the end of the refresh."""
        self.press("button", "刷新任务")
        time.sleep(0.3)
        self._await_refresh()

    def _await_refresh(self):
        until(lambda: self.find("button", "刷新任务", state=Atspi.StateType.ENABLED),
              "the end of the refresh")

    # The notification daemon and the application that links lead to.

    def start_daemon(self, name="dunst"):
        self.daemon = DAEMONS[name]
        script = self._script("notice", f"""json.dump([os.environ["DUNST_SUMMARY"],
            os.environ["DUNST_BODY"]], open({self.home + "/notices"!r}, "a")); print(file=
            open({self.home + "/notices"!r}, "a"))""")
        with open(self.home + "/dunstrc", "w", encoding="utf-8") as file:
            file.write(f"[global]\nmarkup = full\n[every]\nscript = {script}\n")
        self.start("daemon", *self.daemon.command)
        bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        until(lambda: bus.call_sync(
            "org.freedesktop.DBus", "/", "org.freedesktop.DBus", "NameHasOwner",
            GLib.Variant("(s)", ("org.freedesktop.Notifications",)), None, 0, -1, None).unpack()[0],
            "the notification daemon")

    def notice_window(self):
        """The window of a notice on the screen, or None."""
        found = xdotool("search", "--onlyvisible", "--class", f"^{self.daemon.window_class}$")
        return found[0] if found else None

    def click_notice(self):
        window = until(self.notice_window, "the notice on the screen")
        size = until(lambda: geometry_at_rest(window), "the notice in its place")
        place = [str(int(size[side]) - distance) for side, distance
                 in zip(("WIDTH", "HEIGHT"), self.daemon.from_corner)]
        xdotool("mousemove", "--window", window, *place, "sleep", "0.3", "click", str(self.daemon.button))

    def notices(self):
        """Summary and body of every notice so far, as dunst got them."""
        return [json.loads(line) for line in self._lines("notices")]

    def handle_links(self):
        script = self._script("open", f"""open({self.home + "/links"!r}, "a").write(
            sys.argv[1] + chr(10))""")
        applications = self.home + "/.local/share/applications"
        os.makedirs(applications, exist_ok=True)
        with open(applications + "/orvik.desktop", "w", encoding="utf-8") as file:
            file.write(f"[Desktop Entry]\nType=Application\nName=Orvik\nExec={script} %u\n"
                       "MimeType=x-scheme-handler/orvik;\n")
        with open(applications + "/mimeapps.list", "w", encoding="utf-8") as file:
            file.write("[Default Applications]\nx-scheme-handler/orvik=orvik.desktop\n")

    def links(self):
        return self._lines("links")

    def _lines(self, name):
        path = os.path.join(self.home, name)
        if not os.path.exists(path):
            return []
        with open(path, encoding="utf-8") as file:
            return file.read().splitlines()

    def _script(self, name, body):
        path = os.path.join(self.home, name)
        with open(path, "w", encoding="utf-8") as file:
            file.write(f"#!/usr/bin/python3\nimport json, os, sys\n{body}\n")
        os.chmod(path, 0o755)
        return path

    # What assistive technology sees.

    def tree(self):
        """Everything of the window in reading order."""
        root = Atspi.get_desktop(0)
        root.clear_cache()
        for i in range(root.get_child_count()):
            application = root.get_child_at_index(i)
            if application and "tallyview" in (application.get_name() or "").lower():
                yield from self._walk(application)

    def _walk(self, item):
        item.clear_cache()
        yield item
        for i in range(item.get_child_count()):
            child = item.get_child_at_index(i)
            if child:
                yield from self._walk(child)

    def find(self, kind, name, state=None):
        """The first item of a role whose name is `name`, or matches it where it is a pattern."""
        for item in self.tree():
            try:
                matches = (name.search(item.get_name() or "") if isinstance(name, re.Pattern)
                           else item.get_name() == name)
                states = item.get_state_set()
                if (matches and role(item) == kind
                        and states.contains(Atspi.StateType.VISIBLE)
                        and (not state or states.contains(state))):
                    return item
            except GLib.Error:  # it is just going away
                continue
        return None

    def press(self, kind, name):
        item = until(lambda: self.find(kind, name), f"{kind} {name}")
        actions = item.get_action_iface()
        names = [actions.get_action_name(i) for i in range(actions.get_n_actions())]
        assert actions.do_action(names.index("Press")), f"{kind} {name} cannot be pressed"

    def texts(self):
        return [text for item in self.tree()
                for text in (item.get_name(), item.get_description()) if text]

    # The settings file, as any program sees it.

    def setting(self, key):
        if not os.path.exists(self.settings):
            return None
        with open(self.settings, encoding="utf-8") as settings:
            found = re.search(f"^{key}=(.*)$", settings.read(), re.MULTILINE)
        return found and found.group(1)

    def store(self, key, value):
        os.makedirs(os.path.dirname(self.settings), exist_ok=True)
        lines = ["[General]\n"]
        if os.path.exists(self.settings):
            with open(self.settings, encoding="utf-8") as settings:
                lines = [line for line in settings if not line.startswith(key + "=")]
        with open(self.settings + ".new", "w", encoding="utf-8") as settings:
            settings.writelines(lines + [f"{key}={value}\n"])
        os.replace(self.settings + ".new", self.settings)

    @staticmethod
    def picture(x, y, width, height):
        """A stretch of the screen; equal pictures are equal."""
        return subprocess.run(
            ["import", "-silent", "-window", "root", "-crop", f"{width}x{height}+{x}+{y}", "-depth", "8", "rgb:-"],
            check=True, capture_output=True).stdout

    def pixel(self, x, y):
        """The colour of a point of the screen, as "#rrggbb"."""
        return "#" + self.picture(x, y, 1, 1).hex()


def xdotool(*arguments):
    """The lines of its answer; none where nothing is found."""
    return subprocess.run(["xdotool", *arguments], capture_output=True, text=True).stdout.split()


def geometry_at_rest(window):
    """Place and size of a window that has stopped moving and growing, or None."""
    first = xdotool("getwindowgeometry", "--shell", window)
    time.sleep(0.3)
    return xdotool("getwindowgeometry", "--shell", window) == first and dict(
        line.split("=") for line in first)


def window_titled(title):
    return int(xdotool("search", "--onlyvisible", "--name", f"^{title}$")[0])


def close_window(title):
    """Sends WM_DELETE_WINDOW to the window with a title; there is no window manager here."""
    window = window_titled(title)
    x11 = ctypes.CDLL("libX11.so.6")
    x11.XOpenDisplay.restype = ctypes.c_void_p
    x11.XInternAtom.argtypes = [ctypes.c_void_p, ctypes.c_char_p, ctypes.c_int]
    x11.XInternAtom.restype = ctypes.c_ulong
    x11.XSendEvent.argtypes = [ctypes.c_void_p, ctypes.c_ulong, ctypes.c_int, ctypes.c_long,
                               ctypes.c_void_p]
    x11.XCloseDisplay.argtypes = [ctypes.c_void_p]
    display = x11.XOpenDisplay(None)
    client_message, longs = 33, 32
    event = (ctypes.c_long * 24)(client_message, 0, 0, 0, window,
                                 x11.XInternAtom(display, b"WM_PROTOCOLS", 0), longs,
                                 x11.XInternAtom(display, b"WM_DELETE_WINDOW", 0), 0)
    x11.XSendEvent(display, window, 0, 0, ctypes.byref(event))
    x11.XCloseDisplay(display)


def start_accessibility():
    """To be called before the first program starts."""
    bus = Gio.bus_get_sync(Gio.BusType.SESSION)
    bus.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", None, None, 0, -1)
    Atspi.init()
    # A program that starts before the registry runs may never be entered there.
    Atspi.get_desktop(0).get_child_count()
