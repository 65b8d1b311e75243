"""The application on a desktop of its own: a sample home, the session's bus and display, and what
of it assistive technology sees. Everything lives in one temporary folder."""

import contextlib
import ctypes
import os
import pathlib
import re
import shutil
import sqlite3
import subprocess
import tempfile
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, Gio, GLib  # noqa: E402

BINARIES = os.environ["TALLYVIEW_BINARIES"]
PROGRAM = BINARIES + "/orvik-tallyview"


def until(condition, what, seconds=20):
    """Waits until `condition` gives something true, and gives it back. An item of the accessibility
    tree that goes away while it is asked counts as not yet."""
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        with contextlib.suppress(GLib.Error):
            result = condition()
            if result:
                return result
        time.sleep(0.1)
    raise AssertionError(f"{what}: not within {seconds} s")


def call(service, path, interface, method, arguments=None):
    """The first value that a call over the session's bus answers with."""
    bus = Gio.bus_get_sync(Gio.BusType.SESSION)
    return bus.call_sync(service, path, interface, method, arguments, None, 0, -1, None).unpack()[0]


def xdotool(*arguments):
    """The words of its answer; none where nothing is found."""
    return subprocess.run(["xdotool", *arguments], capture_output=True, text=True).stdout.split()


class Desktop:
    def __init__(self):
        self.home = pathlib.Path(tempfile.mkdtemp(prefix="tallyview-desktop-"))
        self.settings = self.home / ".config/orvik/tallyview.conf"
        self.environment = {
            **os.environ,
            "HOME": str(self.home),
            "XDG_CONFIG_HOME": f"{self.home}/.config",
            "XDG_DATA_HOME": f"{self.home}/.local/share",
            "XDG_CACHE_HOME": f"{self.home}/.cache",
            "QT_QPA_PLATFORM": "xcb",
            "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
        }
        self.processes = {}
        subprocess.run([f"{BINARIES}/orvik-tallyview-demo", "--home", self.home, "--threads", "40",
                        "--rollouts", "small"], check=True, stdout=subprocess.DEVNULL)

    def close(self):
        for name in list(self.processes):
            self.stop(name)
        shutil.rmtree(self.home, ignore_errors=True)

    def read(self, name):
        path = self.home / name
        return path.read_text() if path.exists() else ""

    def write(self, name, text, mode=0o644):
        path = self.home / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text)
        path.chmod(mode)
        return path

    # Processes, by a name of the test's choice.

    def start(self, name, *command, **more):
        with open(self.home / f"{name}.errors", "wb") as errors:
            self.processes[name] = subprocess.Popen(command, cwd=self.home, stdout=errors,
                                                    stderr=errors, env=self.environment | more)

    def stop(self, name):
        process = self.processes.pop(name)
        process.terminate()
        return process.wait(10)

    def start_application(self):
        self.start("application", PROGRAM)
        self.await_refresh()

    def run_application(self, *arguments, **more):
        """Runs it to its end; its exit code, standard output and standard error."""
        ended = subprocess.run([PROGRAM, *arguments], env=self.environment | more,
                               capture_output=True, text=True, timeout=10)
        return ended.returncode, ended.stdout, ended.stderr

    def terminal(self, *arguments):
        """What the terminal's program writes."""
        return subprocess.run([f"{BINARIES}/tallyview", *arguments], env=self.environment,
                              capture_output=True, text=True, check=True).stdout

    def complaints(self):
        """What the application wrote to standard error; not what Qt's bridge to AT-SPI says of the
        registry's questions, which newer releases ask before Qt knows them."""
        return [line for line in self.read("application.errors").splitlines()
                if not line.startswith("qt.accessibility.atspi: ")]

    # The desktop's settings and its other kind of display.

    @staticmethod
    def choose(key, value):
        """Sets one of GNOME's settings of the interface and waits until the portal tells it."""
        group = "org.gnome.desktop.interface"
        subprocess.run(["gsettings", "set", group, key, value], check=True)
        until(lambda: str(call("org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop",
                               "org.freedesktop.portal.Settings", "Read",
                               GLib.Variant("(ss)", (group, key)))).lower() == value,
              f"the portal tells {key} {value}")

    def start_x11(self):
        """From now on programs show their windows on a server of the test's own."""
        self.start("compositor", "Xvfb", "-displayfd", "2", "-screen", "0", "1600x1000x24")
        number = until(lambda: re.search("^[0-9]+$", self.read("compositor.errors"), re.MULTILINE),
                       "the server").group()
        self.environment["DISPLAY"] = f":{number}"

    def start_wayland(self):
        """From now on programs show their windows on a compositor with a large screen."""
        socket = "wayland-tallyview"
        self.start("compositor", "weston", "--backend=headless-backend.so", "--width=2600",
                   "--height=1600", f"--socket={socket}")
        until(pathlib.Path(os.environ["XDG_RUNTIME_DIR"], socket).exists, "the compositor")
        # Nobody sits at it: without a seat some versions of Qt crash in Wayland's own input method.
        self.environment.update(WAYLAND_DISPLAY=socket, QT_QPA_PLATFORM="wayland",
                                QT_IM_MODULE="compose")

    # The agent.

    def sql(self, statement, *values):
        with sqlite3.connect(self.home / ".orvik/state_5.sqlite", timeout=10) as database:
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

    def lock(self):
        """Locks the agent's database, for readers too, until what it gives back is closed."""
        writer = sqlite3.connect(self.home / ".orvik/state_5.sqlite", timeout=10)
        writer.execute("PRAGMA locking_mode = EXCLUSIVE")
        writer.execute("BEGIN EXCLUSIVE")
        return writer

    # The notification daemon and the application that links lead to.

    def start_daemon(self):
        script = self.write("notice", '#!/bin/sh\nprintf "%s\\n%s\\0" "$DUNST_SUMMARY" '
                            f'"$DUNST_BODY" >>{self.home}/notices\n', 0o755)
        self.write("dunstrc", f"[global]\nmarkup = full\n[every]\nscript = {script}\n")
        self.start("daemon", "dunst", "-conf", "dunstrc")
        subprocess.run(["gdbus", "wait", "--session", "--timeout=20",
                        "org.freedesktop.Notifications"], check=True)

    @staticmethod
    def notice_windows():
        """The windows of the notices on the screen."""
        return xdotool("search", "--onlyvisible", "--class", "^Dunst$")

    def click_notice(self):
        [window, *_] = until(self.notice_windows, "the notice on the screen")
        middle_button = "2"
        xdotool("mousemove", "--window", window, "20", "20", "sleep", "0.3", "click", middle_button)

    def notices(self):
        """Every notice so far, as the daemon got it: its summary, its body from the next line on."""
        return self.read("notices").split("\0")[:-1]

    def handle_links(self):
        script = self.write("open", f'#!/bin/sh\necho "$1" >>{self.home}/links\n', 0o755)
        self.write(".local/share/applications/orvik.desktop",
                   f"[Desktop Entry]\nType=Application\nName=Orvik\nExec={script} %u\n"
                   "MimeType=x-scheme-handler/orvik;\n")
        self.write(".local/share/applications/mimeapps.list",
                   "[Default Applications]\nx-scheme-handler/orvik=orvik.desktop\n")

    # What assistive technology sees.

    @staticmethod
    def tree():
        """Everything of the window in reading order."""
        return walk(Atspi.get_desktop(0))

    def find(self, kind, name, state=Atspi.StateType.VISIBLE):
        """The first item of a role whose name is `name`, or matches it where it is a pattern."""
        for item in self.tree():
            try:
                matches = (name.search(item.get_name() or "") if isinstance(name, re.Pattern)
                           else item.get_name() == name)
                if matches and role(item) == kind and {state, Atspi.StateType.VISIBLE} <= set(
                        item.get_state_set().get_states()):
                    return item
            except GLib.Error:  # it is just going away
                continue
        return None

    def press(self, kind, name):
        def is_pressed():
            item = self.find(kind, name)
            actions = item and item.get_action_iface()
            return actions and any(
                actions.get_action_name(i) == "Press" and actions.do_action(i)
                for i in range(actions.get_n_actions()))

        until(is_pressed, f"{kind} {name} can be pressed")

    def await_refresh(self):
        until(lambda: self.find("button", "刷新任务", Atspi.StateType.ENABLED), "the refresh's end")

    def refresh(self):
        """Presses the refresh button and waits for the end of the refresh."""
        self.press("button", "刷新任务")
        time.sleep(0.3)
        self.await_refresh()

    def texts(self):
        lines = []
        for item in self.tree():
            with contextlib.suppress(GLib.Error):  # it is just going away
                lines.append(f"{role(item)}: {item.get_name()} | {item.get_description()}")
        return "\n".join(lines)

    # The settings file, as any program sees it.

    def setting(self, key):
        found = re.search(f"^{key}=(.*)$", self.read(self.settings), re.MULTILINE)
        return found and found.group(1)

    def store(self, key, value):
        lines = (self.read(self.settings) or "[General]\n").splitlines()
        kept = [line for line in lines if not line.startswith(key + "=")]
        self.write(self.settings.with_suffix(".new"), "\n".join([*kept, f"{key}={value}\n"])).replace(
            self.settings)


def role(item):
    """The name of its role; assistive technology used to say "push button" for "button"."""
    name = item.get_role_name()
    return "button" if name == "push button" else name


def walk(item):
    item.clear_cache()
    yield item
    for child in (item.get_child_at_index(i) for i in range(item.get_child_count())):
        if child:
            yield from walk(child)


def clipboard():
    return subprocess.run(["xclip", "-selection", "clipboard", "-o"],
                          capture_output=True, text=True).stdout


def pixel(x, y):
    """The colour of a point of the screen, as six hexadecimal digits."""
    return subprocess.run(["import", "-silent", "-window", "root", "-crop", f"1x1+{x}+{y}",
                           "-depth", "8", "rgb:-"], check=True, capture_output=True).stdout.hex()


def main_window():
    return int(xdotool("search", "--onlyvisible", "--name", "^Orvik Tallyview$")[0])


def close_window():
    """Sends WM_DELETE_WINDOW to the main window; there is no window manager here."""
    x11 = ctypes.CDLL("libX11.so.6")
    x11.XOpenDisplay.restype = ctypes.c_void_p
    x11.XInternAtom.restype = ctypes.c_ulong
    display, window = ctypes.c_void_p(x11.XOpenDisplay(None)), main_window()
    protocols, delete = (x11.XInternAtom(display, name, 0)
                         for name in (b"WM_PROTOCOLS", b"WM_DELETE_WINDOW"))
    client_message, longs = 33, 32
    event = (ctypes.c_long * 24)(client_message, 0, 0, 0, window, protocols, longs, delete)
    x11.XSendEvent(display, ctypes.c_ulong(window), 0, ctypes.c_long(0), ctypes.byref(event))
    x11.XCloseDisplay(display)


def start_accessibility():
    """To be called before the first program starts."""
    call("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress")
    Atspi.init()
    # A program that starts before the registry runs may never be entered there.
    Atspi.get_desktop(0).get_child_count()
