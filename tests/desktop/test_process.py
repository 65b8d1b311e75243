"""The process on a real desktop: its notices, its life in the background, its end."""

import os
import pathlib
import re
import shutil
import signal
import subprocess
import time

from on_the_desktop import REFRESH, OnTheDesktop
from private_desktop import PROGRAM, clipboard, main_window, until, xdotool
from tray import Tray


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
        starts = [subprocess.Popen([PROGRAM], env=self.desktop.environment) for _ in range(50)]

        def left():
            return [each for each in starts if each.poll() is None]

        until(lambda: len(left()) == 1, "all but one have ended", 60)
        self.expect(*REFRESH)
        left()[0].terminate()
        self.assertEqual({each.wait(10) for each in starts}, {0})

    def test_it_can_be_ended_at_any_time(self):
        for delay in range(0, 800, 50):  # milliseconds
            self.desktop.start("starting", PROGRAM)
            time.sleep(delay / 1000)
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
            self.assertGreater(desktop.processes["there"].wait(10), 0)  # the toolkit chooses which
            self.assertIn(f"The {kind} connection broke", desktop.read("there.errors"))
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
