"""The application as a person meets it: a real window, a real bus, real daemons."""

import re
import subprocess
import time
import unittest

from private_desktop import Atspi, Desktop, role, start_accessibility, until, window_titled
from tray import Tray


def setUpModule():
    start_accessibility()


class OnTheDesktop(unittest.TestCase):
    def setUp(self):
        self.desktop = Desktop()
        self.addCleanup(self.desktop.close)

    def expect(self, kind, name, description=None):
        item = until(lambda: self.desktop.find(kind, name), f"{kind} {name}")
        if description is not None:
            self.assertEqual(item.get_description(), description)
        return item

    def stored(self, key, value):
        """The settings file comes to hold a value; changes are written a moment later."""
        until(lambda: self.desktop.setting(key) == value, f"{key}={value} is stored")

    def quiet(self):
        self.assertEqual(self.desktop.complaints(), [])

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
        shown = "\n".join(f"{role(item)}: {item.get_name()} | {item.get_description()}"
                          for item in desktop.tree())
        for line in """
button: 切换到专注模式 | 在项目平铺视图和标准三栏视图之间切换
check box: 全部项目，共 [0-9]+ 个任务 |
button: 今天更新 | [0-9]+
check box: 已固定 | 0
button: 已归档 | [0-9]+
radio button: 浅色 |
radio button: 深色 |
radio button: 跟随系统 |
label: SQLite · 本机只读 |
label: 不会回写 Orvik |
slider: 调整项目栏宽度 | 拖动调整宽度，双击恢复默认宽度
label: 任务动态 |
button: 刷新任务 |
radio button: 进行中，[0-9]+ 个任务 |
radio button: 已完成，[0-9]+ 个任务 |
radio button: 全部，[0-9]+ 个任务 |
text: 搜索任务标题、项目或工作目录… |
radio button: 刚刚 |
radio button: 今天 |
radio button: 本周 |
radio button: 更早 |
button: Task .* | ATL / ATLAS / .*
image: 进行中 |
button: 在 Orvik 中打开 Task .* |
button: 固定任务 |
button: 复制 Thread ID |
button: 在 Orvik 中继续 |""".strip().splitlines():
            pattern = line.replace("|", "[|]")
            self.assertRegex(shown, re.compile(f"^{pattern} ?$", re.MULTILINE))
        width = self.expect("slider", "调整项目栏宽度", "拖动调整宽度，双击恢复默认宽度")
        value = width.get_value_iface()
        self.assertEqual([value.get_current_value(), value.get_minimum_value(),
                          value.get_maximum_value(), value.get_minimum_increment()],
                         [224, 200, 360, 20])

        desktop.press("button", "切换到专注模式")
        self.expect("button", "切换到标准模式", "在项目平铺视图和标准三栏视图之间切换")
        self.expect("label", "专注空间")
        self.expect("label", "点击右上角按钮随时返回标准模式")
        card = re.compile("^(.+)，[0-9]+ 个进行中，[0-9]+ 个任务$")
        first = self.expect("button", card, "打开该项目的任务动态").get_name()
        desktop.press("button", first)
        self.expect("label", card.match(first).group(1) + " · 任务动态")
        desktop.press("button", "返回项目列表")
        self.expect("button", card)
        desktop.press("button", "切换到标准模式")
        self.expect("label", "任务动态")
        self.quiet()

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
        until(lambda: subprocess.run(["xclip", "-selection", "clipboard", "-o"],
                                     capture_output=True, text=True).stdout == thread,
              "the id on the clipboard")
        width = self.expect("slider", "调整项目栏宽度").get_value_iface()
        width.set_current_value(300)
        self.stored("sidebarWidth", "300")
        width.set_current_value(1000)
        self.stored("sidebarWidth", "360")
        desktop.press("radio button", re.compile("^全部，"))
        desktop.press("radio button", "更早")
        checked = [item.get_name() for item in desktop.tree()
                   if item.get_state_set().contains(Atspi.StateType.CHECKED)]
        self.assertRegex(" ".join(checked), "^全部项目，共 [0-9]+ 个任务 跟随系统 全部，[0-9]+ 个任务 更早$")
        desktop.press("button", "重置筛选")
        until(lambda: not desktop.find("button", "重置筛选"), "the filters are reset")
        self.quiet()


class Size(OnTheDesktop):
    def test_the_window_answers_beside_a_million_threads(self):
        desktop = self.desktop
        desktop.sql("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n LIMIT 1000000)"
                    " INSERT INTO threads (id, title, cwd, updated_at_ms, rollout_path)"
                    " SELECT 'many-' || i, 'Task ' || i, '/src/' || i % 50, 1000 * unixepoch(), '' FROM n")
        desktop.start("application", desktop.PROGRAM)
        button = self.expect("button", "刷新任务")
        longest = 0

        def is_refreshed():
            nonlocal longest
            end = time.monotonic() + 1
            while time.monotonic() < end:
                start = time.monotonic()
                is_idle = button.get_state_set().contains(Atspi.StateType.ENABLED)
                longest = max(longest, time.monotonic() - start)
                time.sleep(0.02)
            return is_idle

        until(is_refreshed, "a million threads", 120)
        self.expect("check box", re.compile("^全部项目，共 10000[0-9]{2} 个任务$"))
        desktop.press("button", "刷新任务")
        until(is_refreshed, "the next refresh", 120)
        self.assertLess(longest, 5)
        self.quiet()


class Settings(OnTheDesktop):
    def test_the_desktop_and_the_file_are_followed(self):
        desktop = self.desktop

        def frame():
            """What the window manager is told of the frame."""
            return subprocess.run(["xprop", "-id", str(window_titled("Orvik Tallyview")),
                                   "_GTK_THEME_VARIANT"],
                                  check=True, capture_output=True, text=True).stdout.split('"')[1]

        def moves():
            """Whether the marks of the running tasks pulse."""
            pictures = {desktop.picture(290, 230, 50, 60) for _ in range(6)}
            return len(pictures) > 1

        self.addCleanup(desktop.choose, "color-scheme", "default")
        self.addCleanup(desktop.choose, "enable-animations", "true")
        self.running_threads(1)
        desktop.choose("color-scheme", "prefer-dark")
        desktop.start_application()
        until(lambda: desktop.pixel(5, 700) == "#1a2429", "the dark sidebar")
        self.assertEqual(frame(), "dark")
        desktop.choose("color-scheme", "default")
        until(lambda: desktop.pixel(5, 700) == "#f7fafb", "the light sidebar")
        self.assertEqual(frame(), "light")
        until(moves, "the pulse")
        desktop.choose("enable-animations", "false")
        until(lambda: not moves(), "the end of the pulse")
        desktop.store("appearanceMode", "dark")
        until(lambda: desktop.pixel(5, 700) == "#1a2429", "the stored choice")
        desktop.store("dashboardMode", "focus")
        self.expect("label", "专注空间")
        self.quiet()


class LargeText(OnTheDesktop):
    def test_the_next_start_is_as_large_as_texts_are_wanted(self):
        desktop = self.desktop
        desktop.start_wayland()
        self.addCleanup(desktop.choose, "text-scaling-factor", "1.0")
        for factor, least_width in [("1.5", 1650), ("1.0", 1100)]:
            desktop.choose("text-scaling-factor", factor)
            desktop.start("application", desktop.PROGRAM, WAYLAND_DEBUG="1")
            told = f".set_min_size({least_width}, "
            until(lambda: any(told in line for line in desktop.complaints()), told)
            self.assertEqual(desktop.stop("application"), 0)


class Notices(OnTheDesktop):
    def complete(self, thread):
        self.desktop.complete_task(thread)
        self.desktop.refresh()

    def test_a_completed_task_is_told_once_and_leads_back(self):
        desktop = self.desktop
        desktop.start_daemon()
        desktop.handle_links()
        [thread] = self.running_threads(1)
        desktop.begin_task(thread, cwd="/src/R&D <i>",
                           title="Fix <b>bold</b> &amp; \"quotes\" 🚀 13812345678")
        desktop.start_application()
        self.complete(thread)
        until(desktop.notices, "the notice")
        desktop.refresh()
        self.assertEqual(desktop.notices(), [
            ["Orvik 任务已完成",
             'R&amp;D &lt;i&gt;\nFix &lt;b&gt;bold&lt;/b&gt; &amp;amp; "quotes" 🚀 138****5678']])
        desktop.click_notice()
        until(lambda: desktop.links() == [f"orvik://threads/{thread}"], "the link")
        self.stored("notificationAuthorizationGranted", "true")
        self.stored("notificationAuthorizationStatus", "2")
        self.stored("notificationDeliveryError", "")
        until(lambda: not desktop.notice_window(), "the notice is closed")
        self.quiet()

    def test_another_daemon_leads_back_too(self):
        desktop = self.desktop
        desktop.start_daemon("xfce4-notifyd")
        desktop.handle_links()
        [thread] = self.running_threads(1)
        desktop.start_application()
        self.complete(thread)
        desktop.click_notice()
        until(lambda: desktop.links() == [f"orvik://threads/{thread}"], "the link")
        until(lambda: not desktop.notice_window(), "the notice is closed")
        self.stored("notificationDeliveryError", "")
        self.quiet()

    def test_a_home_full_of_secrets_is_told_masked(self):
        desktop = self.desktop
        desktop.start_daemon()
        desktop.sql("UPDATE threads SET preview = 'sk-a1B2a1B2a1B2a1B2a1B2 token=0123456789abcdef', title = "
                    "'13812345678 eyJhbGciOiJI.c2VjcmV0c2VjcmV0.c2lnbmF0dXJl password: hunter2hunter2'")
        running = self.running_threads(3)
        for thread in running:
            desktop.begin_task(thread, title=f"{thread} api_key=0123456789abcdef for 13812345678")
        desktop.start_application()
        shown = "\n".join(desktop.texts())
        self.assertIn("api_key=[REDACTED] for 138****5678", shown)
        self.assertIn("sk-[REDACTED] token=[REDACTED]", shown)
        desktop.press("button", "切换到专注模式")
        desktop.press("button", re.compile("^atlas，"))
        self.expect("label", "atlas · 任务动态")
        shown += "\n".join(desktop.texts())
        desktop.press("button", "切换到标准模式")
        desktop.press("radio button", re.compile("^全部，"))
        desktop.press("radio button", "本周")
        self.expect("button", "138****5678 [REDACTED_JWT] password: [REDACTED]")
        shown += "\n".join(desktop.texts())
        for thread in running:
            desktop.complete_task(thread)
        desktop.refresh()
        until(lambda: len(desktop.notices()) == len(running), "the notices")
        shown += "\n".join(desktop.texts()) + str(desktop.notices())
        for secret in ("hunter2", "13812345678", "a1B2", "0123456789abcdef", "c2VjcmV0"):
            self.assertNotIn(secret, shown)
        self.quiet()

    def test_the_process_outlives_its_window(self):
        desktop = self.desktop
        desktop.start_daemon()
        [thread] = self.running_threads(1)
        desktop.start_application()
        desktop.close_window()
        desktop.complete_task(thread)
        until(desktop.notices, "the notice of the next refresh", 45)
        # Starting it again shows the window of the one that runs.
        for _ in range(2):
            self.assertEqual(desktop.run_application(), (0, "", ""))
            self.expect("button", "刷新任务")
            desktop.close_window()
        # A start while it ends takes its place.
        desktop.processes["application"].terminate()
        desktop.start("next", desktop.PROGRAM)
        self.assertEqual(desktop.processes["application"].wait(10), 0)
        self.expect("button", "刷新任务")
        self.assertEqual(desktop.stop("next"), 0)
        self.quiet()

    def test_no_bus_is_needed(self):
        desktop = self.desktop
        desktop.start("application", desktop.PROGRAM,
                      DBUS_SESSION_BUS_ADDRESS="unix:path=/nonexistent")
        self.stored("notificationAuthorizationGranted", "false")
        self.assertEqual(desktop.stop("application"), 0)


class Background(OnTheDesktop):
    def tray(self):
        tray = Tray()
        self.addCleanup(tray.close)
        return tray

    def tells(self, tray, text):
        until(lambda: tray.tool_tip() == f"Orvik Tallyview · {text}", text)

    def window_shows(self):
        return self.desktop.find("button", "刷新任务")

    def test_a_closed_window_leaves_an_item_in_the_tray(self):
        desktop = self.desktop
        [thread] = self.running_threads(1)
        desktop.start_application()
        running = int(re.search("[0-9]+", self.expect(
            "radio button", re.compile("^进行中，[0-9]+ 个任务$")).get_name()).group())
        desktop.close_window()
        first = Tray()  # later than the application
        first.await_item()
        first.close()
        tray = self.tray()
        tray.await_item()
        self.assertTrue(any(any(pixels) for _, _, pixels in tray.property("IconPixmap")))
        self.tells(tray, f"{running} 个任务进行中")
        tray.click()
        until(self.window_shows, "the window, by a click")
        desktop.close_window()
        self.assertEqual(list(tray.menu()), ["显示窗口", "刷新索引", "退出"])
        desktop.complete_task(thread)
        tray.choose("刷新索引")
        self.tells(tray, f"{running - 1} 个任务进行中")
        desktop.sql("ALTER TABLE threads RENAME TO others")
        tray.choose("刷新索引")
        self.tells(tray, "读取失败")
        self.assertFalse(self.window_shows())
        tray.choose("显示窗口")
        until(self.window_shows, "the window, by the menu")
        tray.choose("退出")
        self.assertEqual(desktop.processes["application"].wait(10), 0)
        self.quiet()

    def test_it_starts_without_a_window(self):
        desktop = self.desktop
        desktop.start_daemon()
        [thread] = self.running_threads(1)
        tray = self.tray()
        desktop.start("application", desktop.PROGRAM, "--background")
        tray.await_item()
        until(lambda: "任务进行中" in tray.tool_tip(), "the first refresh")
        desktop.complete_task(thread)
        tray.choose("刷新索引")
        until(desktop.notices, "the notice")
        self.assertEqual(desktop.run_application("--background"), (0, "", ""))
        time.sleep(1)
        self.assertFalse(self.window_shows())
        self.assertEqual(desktop.run_application(), (0, "", ""))
        until(self.window_shows, "the window")
        self.quiet()

    def test_the_command_line_is_answered(self):
        desktop = self.desktop
        [code, usage, complaint] = desktop.run_application("--help", DISPLAY="")
        self.assertRegex(usage, "^Usage: orvik-tallyview .*(\n.*)*--background ")
        self.assertEqual([code, complaint], [0, ""])
        self.assertRegex(desktop.run_application("--version", DISPLAY="")[1],
                         "^orvik-tallyview [0-9.]+\n$")
        for mistake in "--backgrounds", "background", "-b":
            self.assertEqual(desktop.run_application("--background", mistake), (
                2, "", f'orvik-tallyview: what is "{mistake}"?\n{usage}'))
