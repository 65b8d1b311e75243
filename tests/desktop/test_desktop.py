"""The application as a person meets it: a real window, a real bus, real daemons."""

import os
import pathlib
import re
import shutil
import signal
import subprocess
import time
import unittest

from private_desktop import (PROGRAM, Atspi, Desktop, GLib, clipboard, close_window, main_window,
                             pixel, start_accessibility, until, xdotool)
from tray import Tray

REFRESH = "button", "刷新任务"


def setUpModule():
    start_accessibility()


class OnTheDesktop(unittest.TestCase):
    def setUp(self):
        self.desktop = Desktop()
        self.addCleanup(self.desktop.close)

    def expect(self, kind, name):
        return until(lambda: self.desktop.find(kind, name), f"{kind} {name}")

    def stored(self, key, value):
        """The settings file comes to hold a value; changes are written a moment later."""
        until(lambda: self.desktop.setting(key) == value, f"{key}={value} is stored")

    def tearDown(self):
        self.assertEqual(self.desktop.complaints(), [])

    def close_window(self):
        close_window()
        until(lambda: not self.desktop.find(*REFRESH), "the window is gone")

    def running_threads(self, count):
        """The ids of threads that have just started to run."""
        ids = [row[0] for row in self.desktop.sql(
            "SELECT id FROM threads WHERE archived = 0 AND rollout_path <> '' LIMIT ?", count)]
        for thread in ids:
            self.desktop.begin_task(thread, cwd="/src/atlas", title=f"Task {thread}")
        return ids


class Accessibility(OnTheDesktop):
    def test_every_view_tells_what_it_shows(self):
        desktop = self.desktop
        self.running_threads(1)
        desktop.start_application()
        self.expect("image", "进行中")
        shown = desktop.texts()
        for line in """
button: 切换到专注模式 | 在项目平铺视图和标准三栏视图之间切换
check box: 全部项目，共 [0-9]+ 个任务 |
button: 今天更新 | [0-9]+
check box: 已固定 | 0
button: 已归档 | [0-9]+
radio button: 跟随系统 |
label: SQLite · 本机只读 |
slider: 调整项目栏宽度 | 拖动调整宽度，双击恢复默认宽度
label: 任务动态 |
button: 刷新任务 |
radio button: 进行中，[0-9]+ 个任务 |
text: 搜索任务标题、项目或工作目录… |
radio button: 刚刚 |
button: Task .* | 进行中，刚刚，ATL / ATLAS / .*
image: 进行中 |
button: 在 Orvik 中打开 Task .* |
button: 固定任务 |
button: 复制 Thread ID |
button: 在 Orvik 中继续 |""".strip().splitlines():
            pattern = line.replace("|", "[|]")
            self.assertRegex(shown, re.compile(f"^{pattern} ?$", re.MULTILINE))
        value = self.expect("slider", "调整项目栏宽度").get_value_iface()
        self.assertEqual([value.get_current_value(), value.get_minimum_value(),
                          value.get_maximum_value(), value.get_minimum_increment()],
                         [224, 200, 360, 20])
        desktop.press("button", "切换到专注模式")
        self.expect("label", "点击右上角按钮随时返回标准模式")
        card = re.compile("^(.+)，[0-9]+ 个进行中，[0-9]+ 个任务$")
        first = self.expect("button", card)
        self.assertEqual(first.get_description(), "打开该项目的任务动态")
        name = first.get_name()
        desktop.press("button", name)
        self.expect("label", card.match(name).group(1) + " · 任务动态")
        desktop.press("button", "返回项目列表")
        self.expect("button", card)

    def test_assistive_technology_works_the_window(self):
        desktop = self.desktop
        thread = self.running_threads(2)[1]
        desktop.start_application()
        desktop.press("button", f"Task {thread}")
        self.expect("label", thread)
        desktop.press("button", "固定任务")
        self.expect("button", "取消固定")
        self.stored("pinnedThreadIDs", thread)
        desktop.press("button", "复制 Thread ID")
        until(lambda: clipboard() == thread, "the id on the clipboard")
        width = self.expect("slider", "调整项目栏宽度").get_value_iface()
        for wanted, kept in (300, "300"), (1000, "360"):
            width.set_current_value(wanted)
            self.stored("sidebarWidth", kept)
        desktop.press("radio button", re.compile("^全部，"))
        desktop.press("radio button", "更早")
        checked = [item.get_name() for item in desktop.tree()
                   if item.get_state_set().contains(Atspi.StateType.CHECKED)]
        self.assertRegex(" ".join(checked),
                         "^全部项目，共 [0-9]+ 个任务 跟随系统 全部，[0-9]+ 个任务 更早$")
        desktop.press("button", "重置筛选")
        until(lambda: not desktop.find("button", "重置筛选"), "the filters are reset")

    def test_tab_follows_the_eye(self):
        desktop = self.desktop
        self.running_threads(1)
        desktop.start_application()
        self.expect("image", "进行中")
        xdotool("windowfocus", "--sync", str(main_window()))

        def focused():
            for item in desktop.tree():
                if item.get_state_set().contains(Atspi.StateType.FOCUSED) and item.get_name():
                    return item.get_name()
            return None

        def reached(last):
            names = []
            while not names or not re.fullmatch(last, names[-1]) and len(names) < 60:
                before = focused()
                xdotool("key", "Tab")
                names.append(until(lambda: focused() not in (before, None) and focused(), "focus"))
            return "\n".join(names)

        self.assertRegex(reached("在 Orvik 中继续"), """^切换到专注模式
全部项目，共 [0-9]+ 个任务
今天更新
已固定
已归档
(.+\n)+浅色
深色
跟随系统
调整项目栏宽度
刷新任务
进行中，.*
已完成，.*
全部，.*
搜索任务标题、项目或工作目录…
刚刚
今天
本周
更早
(.+\n在 Orvik 中打开 .+\n)+固定任务
复制 Thread ID
在 Orvik 中继续$""")
        desktop.press("button", "切换到专注模式")
        self.expect("label", "专注空间")
        self.assertRegex(reached("调整项目栏宽度"), """^(.+，[0-9]+ 个进行中，[0-9]+ 个任务\n)+切换到标准模式
浅色
深色
跟随系统
调整项目栏宽度$""")

    def test_the_count_is_announced_once_where_it_was_asked_for(self):
        desktop = self.desktop
        [thread] = self.running_threads(1)
        desktop.start_application()
        said = []

        def hear(event):
            if event.detail1 and event.source.get_role() == Atspi.Role.NOTIFICATION:
                said.append(event.source.get_name())

        listener = Atspi.EventListener.new(hear)
        listener.register("object:state-changed:showing")
        self.addCleanup(listener.deregister, "object:state-changed:showing")

        def listen(seconds):
            end = time.monotonic() + seconds
            while time.monotonic() < end:
                GLib.MainContext.default().iteration(False)
                time.sleep(0.01)
            return said

        desktop.press("radio button", re.compile("^全部，"))
        self.assertEqual(len(listen(3)), 1, said)
        self.assertEqual(said, [self.expect("notification", re.compile(" 条$")).get_name()])
        desktop.complete_task(thread)
        desktop.refresh()
        self.assertEqual(len(listen(2)), 1, "a refresh is no occasion")

    def test_the_terminal_lists_what_the_window_lists(self):
        desktop = self.desktop
        self.running_threads(3)
        desktop.start_application()
        self.expect("image", "进行中")
        row = re.compile(r"^(?:button: (.*) [|] .*? / (.*) / .*|label: ([^|]*(?:分钟|小时)前) [|] |"
                         r"image: (进行中|已完成) [|] )$", re.MULTILINE)

        def lists_agree():
            desktop.refresh()  # ages grow
            shown = sorted("".join(found) for found in row.findall(desktop.texts()))
            # State, id, age, project and title. The window shows no id, and groups and filters are
            # called "刚刚" too.
            cells = [re.split("  +", line) for line in desktop.terminal("list").splitlines()
                     if line.startswith(("●", "○"))]
            return shown == sorted(
                text for state, _, age, project, title in cells
                for text in (state[2:], age, title + project.upper()) if text != "刚刚")

        until(lists_agree, "the terminal lists what the window lists")


class Settings(OnTheDesktop):
    def test_the_desktop_and_the_file_are_followed(self):
        desktop = self.desktop

        def frame():
            """What the window manager is told of the frame."""
            command = ["xprop", "-id", str(main_window()), "_GTK_THEME_VARIANT"]
            return subprocess.check_output(command, text=True).split('"')[1]

        def sidebar_is(colour):
            return lambda: pixel(5, 700) == colour

        self.addCleanup(desktop.choose, "color-scheme", "default")
        desktop.choose("color-scheme", "prefer-dark")
        desktop.start_application()
        until(sidebar_is("1a2429"), "the dark sidebar")
        self.assertEqual(frame(), "dark")
        desktop.choose("color-scheme", "default")
        until(sidebar_is("f7fafb"), "the light sidebar")
        self.assertEqual(frame(), "light")
        desktop.store("appearanceMode", "dark")
        until(sidebar_is("1a2429"), "the stored choice")


class LargeText(OnTheDesktop):
    def test_the_next_start_is_as_large_as_texts_are_wanted(self):
        desktop = self.desktop
        desktop.start_wayland()
        self.addCleanup(desktop.choose, "text-scaling-factor", "1.0")
        for factor, least_width in [("1.5", 1650), ("1.0", 1100)]:
            desktop.choose("text-scaling-factor", factor)
            # Without Mesa, whose module leaves something behind under no name when it is unloaded.
            desktop.start("traced", PROGRAM, WAYLAND_DEBUG="1",
                          QT_WAYLAND_CLIENT_BUFFER_INTEGRATION="none")
            told = f".set_min_size({least_width}, "
            until(lambda: told in desktop.read("traced.errors"), told)
            self.assertEqual(desktop.stop("traced"), 0)


class Notices(OnTheDesktop):
    def test_a_completed_task_is_told_once_and_leads_back(self):
        desktop = self.desktop
        desktop.start_daemon()
        desktop.handle_links()
        [thread] = self.running_threads(1)
        desktop.begin_task(thread, cwd="/src/R&D <i>",
                           title="Fix <b>bold</b> &amp; \"quotes\" 🚀 13812345678")
        desktop.start_application()
        desktop.complete_task(thread)
        desktop.refresh()
        until(desktop.notice_windows, "the notice")
        desktop.refresh()
        desktop.click_notice()
        until(lambda: desktop.read("links") == f"orvik://threads/{thread}\n", "the link")
        until(lambda: not desktop.notice_windows(), "the notice is closed")
        self.assertEqual(desktop.notices(), [
            "Orvik 任务已完成\nR&amp;D &lt;i&gt;\n"
            'Fix &lt;b&gt;bold&lt;/b&gt; &amp;amp; "quotes" 🚀 138****5678'])
        self.stored("notificationDeliveryError", "")
        self.stored("notificationAuthorizationGranted", "true")
        self.stored("notificationAuthorizationStatus", "2")

    def test_no_secret_leaves_the_program(self):
        desktop = self.desktop
        desktop.start_daemon()
        desktop.handle_links()
        desktop.sql("UPDATE threads SET preview = 'sk-a1B2a1B2a1B2a1B2a1B2 token=0123456789abcdef',"
                    " title = '13812345678 eyJhbGciOiJI.c2VjcmV0c2VjcmV0.c2lnbmF0dXJl password: "
                    "hunter2hunter2'")
        running = self.running_threads(3)
        for thread in running:
            desktop.begin_task(thread, title=f"{thread} api_key=0123456789abcdef for 13812345678")
        before = set(desktop.home.rglob("*"))
        desktop.start("application", "strace", "-D", "-f", "--seccomp-bpf", "-o", "trace", "-e",
                      "trace=socket,execve", PROGRAM, ASAN_OPTIONS="detect_leaks=0")
        desktop.await_refresh()
        shown = desktop.texts()
        self.assertIn("api_key=[REDACTED] for 138****5678", shown)
        self.assertIn("sk-[REDACTED] token=[REDACTED]", shown)
        desktop.press("button", "切换到专注模式")
        desktop.press("button", re.compile("^atlas，"))
        self.expect("label", "atlas · 任务动态")
        shown += desktop.texts()
        desktop.press("button", "切换到标准模式")
        desktop.press("radio button", re.compile("^全部，"))
        desktop.press("radio button", "本周")
        self.expect("button", "138****5678 [REDACTED_JWT] password: [REDACTED]")
        shown += desktop.texts()
        for thread in running:
            desktop.complete_task(thread)
        desktop.refresh()
        until(lambda: len(desktop.notices()) == len(running), "the notices")
        shown += desktop.texts() + str(desktop.notices())
        desktop.press("button", "复制 Thread ID")
        self.assertEqual(desktop.read("trace").count(" execve("), 1)
        desktop.press("button", "在 Orvik 中继续")
        until(lambda: desktop.read("links"), "the link")
        trace = desktop.read("trace")
        outputs = "trace", "application.errors", "notices", "links"
        modes = {str(path.relative_to(desktop.home)): oct(path.stat().st_mode & 0o777)
                 for path in set(desktop.home.rglob("*")) - before}
        self.assertEqual({name: mode for name, mode in modes.items()
                          if name not in outputs and not name.startswith(".orvik/state_5.sqlite-")},
                         {".config": "0o700", ".config/orvik": "0o700",
                          ".config/orvik/tallyview.conf": "0o600"})
        self.assertEqual(set(re.findall(r" socket\((\w+)", trace)), {"AF_UNIX"})
        self.assertEqual(re.findall(r' execve\("(.*?)"', trace)[1:2], [shutil.which("setsid")])
        title = " ".join(xdotool("getwindowname", str(main_window())))
        shown += title + clipboard() + desktop.read("links") + desktop.read("application.errors")
        shown += "".join(desktop.read(path) for path in desktop.home.glob(".config/orvik/*"))
        for arguments in (["--all"], ["--all", "--json"], ["show", running[0]]):
            shown += desktop.terminal(*arguments)
        for secret in ("hunter2", "13812345678", "a1B2", "0123456789abcdef", "c2VjcmV0"):
            self.assertNotIn(secret, shown)

    def test_the_process_outlives_its_window(self):
        desktop = self.desktop
        desktop.start_daemon()
        [thread] = self.running_threads(1)
        desktop.start_application()
        self.close_window()
        desktop.complete_task(thread)
        until(desktop.notices, "the notice of the next refresh", 45)
        # Starting it again shows the window of the one that runs.
        for _ in range(2):
            self.assertEqual(desktop.run_application(), (0, "", ""))
            self.expect(*REFRESH)
            self.close_window()
        # A start while it ends takes its place.
        desktop.processes["application"].terminate()
        desktop.start("next", PROGRAM)
        self.assertEqual(desktop.processes["application"].wait(10), 0)
        self.expect(*REFRESH)
        self.assertEqual(desktop.stop("next"), 0)

    def test_no_bus_is_needed(self):
        self.desktop.start("alone", PROGRAM, DBUS_SESSION_BUS_ADDRESS="unix:path=/nonexistent")
        self.stored("notificationAuthorizationGranted", "false")
        self.assertEqual(self.desktop.stop("alone"), 0)


class Background(OnTheDesktop):
    def tray(self):
        tray = Tray()
        self.addCleanup(tray.close)
        return tray

    def test_a_closed_window_leaves_an_item_in_the_tray(self):
        desktop = self.desktop

        def tells(text):
            until(lambda: tray.tool_tip() == f"Orvik Tallyview · {text}", text)

        [thread] = self.running_threads(1)
        desktop.start_application()
        running = int(re.search("[0-9]+", self.expect(
            "radio button", re.compile("^进行中，[0-9]+ 个任务$")).get_name()).group())
        self.close_window()
        first = Tray()  # later than the application
        first.await_item()
        first.close()
        tray = self.tray()
        tray.await_item()
        self.assertTrue(any(any(pixels) for _, _, pixels in tray.property("IconPixmap")))
        tells(f"{running} 个任务进行中")
        tray.click()
        self.expect(*REFRESH)
        self.close_window()
        self.assertEqual(list(tray.menu()), ["显示窗口", "刷新索引", "退出"])
        desktop.complete_task(thread)
        tray.choose("刷新索引")
        tells(f"{running - 1} 个任务进行中")
        desktop.sql("ALTER TABLE threads RENAME TO others")
        tray.choose("刷新索引")
        tells("读取失败")
        self.assertFalse(desktop.find(*REFRESH))
        tray.choose("显示窗口")
        self.expect(*REFRESH)
        tray.choose("退出")
        self.assertEqual(desktop.processes["application"].wait(10), 0)

    def test_of_many_starts_at_once_one_stays(self):
        starts = [subprocess.Popen([PROGRAM], env=self.desktop.environment) for _ in range(12)]

        def left():
            return [each for each in starts if each.poll() is None]

        until(lambda: len(left()) == 1, "all but one have ended", 60)
        self.expect(*REFRESH)
        left()[0].terminate()
        self.assertEqual({each.wait(10) for each in starts}, {0})

    def test_it_can_be_ended_at_any_time(self):
        for delay in (0, 0.05, 0.1, 0.2, 0.4, 0.8):
            self.desktop.start("starting", PROGRAM)
            time.sleep(delay)
            self.assertIn(self.desktop.stop("starting"), (0, -signal.SIGTERM))

    def test_quitting_waits_for_no_lock_and_loses_no_choice(self):
        desktop = self.desktop
        desktop.start_application()
        writer = desktop.lock()
        self.addCleanup(writer.close)
        desktop.press("button", "刷新任务")
        time.sleep(0.2)
        self.expect("slider", "调整项目栏宽度").get_value_iface().set_current_value(300)
        start = time.monotonic()
        self.assertEqual(desktop.stop("application"), 0)
        self.assertLess(time.monotonic() - start, 1)
        self.assertEqual(desktop.setting("sidebarWidth"), "300")

    def test_it_ends_with_its_display(self):
        desktop = self.desktop
        for kind, start in ("X11", desktop.start_x11), ("Wayland", desktop.start_wayland):
            start()
            desktop.start("there", PROGRAM)
            self.expect("slider", "调整项目栏宽度").get_value_iface().set_current_value(300)
            self.stored("sidebarWidth", "300")
            desktop.await_refresh()
            desktop.processes["compositor"].kill()
            self.assertEqual(desktop.processes["there"].wait(10), 1)
            self.assertRegex(desktop.read("there.errors"), f"^The {kind} connection broke.*\n$")
            desktop.store("sidebarWidth", "224")

    def test_it_outlives_its_bus(self):
        desktop = self.desktop
        address = f"unix:path={desktop.home}/bus"
        rules = pathlib.Path(__file__).parents[1] / "platform/session.conf"
        desktop.start("bus", "dbus-daemon", f"--config-file={rules}", "--nofork",
                      f"--address={address}")
        until((desktop.home / "bus").exists, "the bus")
        desktop.start("there", PROGRAM, DBUS_SESSION_BUS_ADDRESS=address)
        self.stored("notificationAuthorizationGranted", "false")
        desktop.processes["bus"].kill()
        time.sleep(1)

        def seconds_worked():
            fields = pathlib.Path(f"/proc/{desktop.processes['there'].pid}/stat").read_text().split()
            return (int(fields[13]) + int(fields[14])) / os.sysconf("SC_CLK_TCK")

        before = seconds_worked()
        time.sleep(2)
        self.assertLess(seconds_worked() - before, 0.5)
        self.assertEqual(desktop.stop("there"), 0)

    def test_it_starts_without_a_window(self):
        desktop = self.desktop
        tray = self.tray()
        desktop.start("application", PROGRAM, "--background")
        tray.await_item()
        until(lambda: "任务进行中" in tray.tool_tip(), "the first refresh")
        self.assertEqual(desktop.run_application("--background"), (0, "", ""))
        time.sleep(1)
        self.assertFalse(desktop.find(*REFRESH))

    def test_the_command_line_is_answered(self):
        run = self.desktop.run_application
        [code, usage, complaint] = run("--help", DISPLAY="")
        self.assertRegex(usage, "^Usage: orvik-tallyview .*(\n.*)*--background ")
        self.assertEqual([code, complaint], [0, ""])
        self.assertRegex(run("--version", DISPLAY="")[1], "^orvik-tallyview [0-9.]+\n$")
        for mistake in "--backgrounds", "background":
            self.assertEqual(run("--background", mistake), (
                2, "", f'orvik-tallyview: what is "{mistake}"?\n{usage}'))
