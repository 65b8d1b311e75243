"""The window as a person meets it: by eye, by keys and through assistive technology."""

import contextlib
import re
import subprocess
import time

from on_the_desktop import OnTheDesktop
from private_desktop import PROGRAM, Atspi, GLib, clipboard, main_window, pixel, until, xdotool


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

    def heard(self, state, role, *actions):
        """Takes the actions in turn and listens after each until it is quiet; the changes of a state
        that controls of a role tell of, each as (name, value)."""
        told = []
        last = 0

        def hear(event):
            nonlocal last
            last = time.monotonic()
            with contextlib.suppress(GLib.Error):  # it has gone away already
                if event.source.get_role() == role:
                    told.append((event.source.get_name(), event.detail1))

        listener = Atspi.EventListener.new(hear)
        listener.register("object:state-changed:" + state)
        for action in actions:
            action()
            last = time.monotonic()
            while time.monotonic() < last + 3:
                GLib.MainContext.default().iteration(False)
                time.sleep(0.01)
        listener.deregister("object:state-changed:" + state)
        return told

    def test_the_count_is_announced_once_where_it_was_asked_for(self):
        desktop = self.desktop
        [thread] = self.running_threads(1)
        desktop.start_application()

        def announced(action):
            heard = self.heard("showing", Atspi.Role.NOTIFICATION, action)
            return [name for name, shown in heard if shown]

        said = announced(lambda: desktop.press("radio button", re.compile("^全部，")))
        self.assertEqual(said, [self.expect("notification", re.compile(" 条$")).get_name()])
        desktop.complete_task(thread)
        self.assertEqual(announced(desktop.refresh), [], "a refresh is no occasion")

    def test_a_choice_is_told_once(self):
        self.desktop.start_application()
        xdotool("windowfocus", "--sync", str(main_window()))

        def choose(kind, name):
            self.expect(kind, name).get_component_iface().grab_focus()
            xdotool("key", "space")

        def told(role, kind, name):
            twice = [lambda: choose(kind, name)] * 2
            return self.heard("checked", role, *twice)

        self.assertEqual(told(Atspi.Role.RADIO_BUTTON, "radio button", "更早"),
                         [("更早", 1), ("今天", 0)])
        self.assertEqual(told(Atspi.Role.CHECK_BOX, "check box", "已固定"),
                         [("已固定", 1), ("已固定", 0)])
        everything = "全部项目，共 36 个任务"  # chosen already, and stays so
        self.assertEqual(told(Atspi.Role.CHECK_BOX, "check box", everything),
                         [(everything, 0), (everything, 1)] * 2)

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
