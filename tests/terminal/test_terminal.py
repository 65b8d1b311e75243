#!/usr/bin/env python3
"""The program tallyview as people meet it: through pipes, on a pseudo-terminal and on tmux's screen.

    test_terminal.py PROGRAM [TEST...]
"""

import contextlib
import fcntl
import json
import os
import pathlib
import pty
import re
import select
import signal
import sqlite3
import struct
import subprocess
import sys
import tempfile
import termios
import time
import unicodedata
import unittest

PROGRAM = os.path.realpath(sys.argv.pop(1))
COMPLETIONS = pathlib.Path(__file__).resolve().parents[2] / "packaging/completions"
COLUMNS = ["id", "title", "preview", "cwd", "source", "model", "reasoning_effort", "git_branch",
           "tokens_used", "created_at", "created_at_ms", "updated_at", "updated_at_ms",
           "recency_at", "recency_at_ms", "archived", "agent_role", "agent_path", "rollout_path"]
# Where it is noon now: a midnight that has just been would part the threads of some minutes ago.
NOON = f"UTC{time.gmtime().tm_hour - 12:+d}"
HOSTILE = ("".join(map(chr, [*range(1, 32), *range(127, 160)])) + "\x1b]52;c;cHduZWQ=\x07\x1b[2J"
           "\u202eevil\u2066\u200f\u2028forged\u2029line\u200d\ufeff" + "a" + "\u0301" * 10000 + "END")
LEAVE = "\x1b[m\x1b[?7h\x1b[?25h\x1b[?1049l"


def columns_of(text):
    return sum(0 if unicodedata.combining(c) else 2 if unicodedata.east_asian_width(c) in "WF" else 1
               for c in text)


class TerminalTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="tallyview-terminal-")
        self.addCleanup(folder.cleanup)
        self.home = pathlib.Path(folder.name)
        self.now = int(time.time())  # the same for all threads, so that their order is certain
        (self.home / ".orvik").mkdir()
        self.environment = {"HOME": folder.name, "XDG_CONFIG_HOME": f"{folder.name}/.config",
                            "PATH": f"{folder.name}:{os.environ['PATH']}", "LANG": "C",
                            "TERM": "xterm-256color", "TZ": NOON} | {
            name: value for name, value in os.environ.items() if name.endswith("SAN_OPTIONS")}
        self.database = sqlite3.connect(self.home / ".orvik/state_5.sqlite", isolation_level=None)
        self.addCleanup(self.database.close)
        self.database.execute(f"CREATE TABLE threads ({', '.join(COLUMNS)})")

    def add(self, number, title, running=True, age=300, **values):
        rollout = self.home / f"{number}.jsonl"
        self.set_running(number, running)
        values = {"id": number, "title": title, "cwd": "/src/atlas", "source": "cli",
                  "updated_at": self.now - age, "rollout_path": str(rollout)} | values
        self.database.execute(
            f"INSERT INTO threads ({', '.join(values)}) VALUES ({', '.join('?' * len(values))})",
            list(values.values()))

    def set_running(self, number, running):
        event = "task_started" if running else "task_complete"
        (self.home / f"{number}.jsonl").write_text(
            json.dumps({"type": "event_msg", "payload": {"type": event}}) + "\n")

    def run_program(self, *arguments, status=0, **options):
        run = subprocess.run([PROGRAM, *arguments], env=self.environment, text=True,
                             stdin=subprocess.DEVNULL, stderr=subprocess.PIPE,
                             **({"stdout": subprocess.PIPE} | options))
        self.assertEqual((run.returncode, bool(run.stderr)), (status, status != 0), run.stderr)
        return run.stderr if status else run.stdout

    def titles(self, *arguments):
        return [thread["title"] for thread in json.loads(self.run_program("--json", *arguments))]

    @contextlib.contextmanager
    def on_terminal(self, *arguments, program=(PROGRAM,), columns=80, rows=24, **environment):
        """The process and the terminal's other end, which reads what the process has written."""
        child, terminal = pty.fork()
        if child == 0:
            fcntl.ioctl(0, termios.TIOCSWINSZ, struct.pack("4H", rows, columns, 0, 0))
            os.execvpe(program[0], [*program, *arguments], self.environment | environment)
        try:
            yield child, terminal
        finally:
            with contextlib.suppress(OSError):
                os.close(terminal)

    def read(self, terminal, until=None, seconds=20):
        """What comes until the end or until `until` has come."""
        text = b""
        end = time.monotonic() + seconds
        while time.monotonic() < end and (until is None or until.encode() not in text):
            if select.select([terminal], [], [], 0.1)[0]:
                try:
                    text += os.read(terminal, 65536)
                except OSError:
                    break
        self.assertIn((until or "").encode(), text)
        return text.decode()

    def status_of(self, child):
        for _ in range(200):
            ended, status = os.waitpid(child, os.WNOHANG)
            if ended:
                return os.waitstatus_to_exitcode(status)
            time.sleep(0.05)
        os.kill(child, signal.SIGKILL)
        os.waitpid(child, 0)
        return self.fail("it does not end")

    def lines_on_terminal(self, *arguments, **options):
        with self.on_terminal(*arguments, **options) as (child, terminal):
            text = self.read(terminal)
            self.assertEqual(self.status_of(child), 0)
            return text.replace("\r\n", "\n").splitlines()

    def test_the_list_is_what_the_filters_let_through(self):
        self.add("a1", "Now 修正", cwd="/src/数据看板")
        self.add("b1", "Done", running=False)
        self.add("c1", "Child", agent_role="worker")
        self.add("d1", "Old", running=False, age=864000)
        self.add("e1", "Timeless", running=False, updated_at=0)
        (self.home / ".config/orvik").mkdir(parents=True)
        (self.home / ".config/orvik/tallyview.conf").write_text("[General]\npinnedThreadIDs=b1\n")
        before = sorted(self.home.rglob("*"))
        for arguments, expected in {
            (): ["Now 修正"],
            ("--status", "completed"): ["Done"],
            ("--subagents",): ["Now 修正", "Child"],
            ("--all",): ["Now 修正", "Done", "Child", "Old", "Timeless"],
            ("--all", "--status=running"): ["Now 修正", "Child"],
            ("--all", "--recency=older"): ["Old", "Timeless"],
            ("--all", "--oldest-first", "-n2"): ["Now 修正", "Done"],
            ("--status=all", "--pinned"): ["Done"],
            ("--status=all", "--project=atlas"): ["Done"],
            ("--all", "--project=数据看板"): ["Now 修正"],
            ("--all", "--recency=recent", "--search=看板"): ["Now 修正"],
            ("--search", "nowhere"): [],
        }.items():
            with self.subTest(arguments):
                self.assertEqual(self.titles(*arguments), expected)
        self.assertEqual(self.run_program("list", "--status=all"),
                         "刚刚  2\n● 进行中  a1  5 分钟前  数据看板  Now 修正\n"
                         "○ 已完成  b1  5 分钟前  atlas     Done\n")
        self.assertEqual(self.run_program("--search", "nowhere"), "")
        self.assertEqual(self.run_program("status"), "进行中 1 · 已完成 3\n")
        self.assertEqual(sorted(self.home.rglob("*")), before, "nothing is written")
        self.add("f1", "T", cwd="/src/a\u200db")
        self.assertEqual(self.run_program("projects"), "atlas\n数据看板\n", "those that can be typed")

    def test_one_thread_by_the_beginning_of_its_id(self):
        self.add("019a-1", "Title\nmore", preview="one\ntwo\x1b[31m", tokens_used=1234567)
        self.add("019a-12", "Other")
        sheet = self.run_program("show", "019a-1")
        self.assertTrue(sheet.startswith("Title more\n● 进行中  ATL-019A-\n\n项目       atlas\n"), sheet)
        self.assertIn("Token      1,234,567\n", sheet)
        self.assertTrue(sheet.endswith("\n\n  one\n  two\uFFFD[31m\n"), sheet)
        self.assertEqual(json.loads(self.run_program("show", "019a-12", "--json"))["title"], "Other")
        opener = self.home / "xdg-open"
        opener.write_text(f'#!/bin/sh\necho "$1" >{self.home}/opened.part\n'
                          f"mv {self.home}/opened.part {self.home}/opened\n")
        opener.chmod(0o755)
        self.run_program("open", "019a-12")
        while not (self.home / "opened").exists():
            time.sleep(0.05)
        self.assertEqual((self.home / "opened").read_text(), "orvik://threads/019a-12\n")
        self.environment["PATH"] = str(self.home)  # xdg-open is there, what starts it is not
        self.assertIn("setsid", self.run_program("open", "019a-12", status=1))
        self.assertIn("019a-1、019a-12", self.run_program("show", "019a", status=1))

    def test_nothing_of_a_title_acts_on_the_terminal(self):
        self.add("h1", HOSTILE, preview=HOSTILE, cwd="/src/x\x1b[2J\u202e", git_branch=HOSTILE,
                 model="m\nforged")
        self.add("i1", "Plain api_key=abcdefgh12345")
        for arguments in ([], ["show", "h1"], ["status", "--format=waybar"], ["--json"],
                          ["show", "h1", "--json"], ["projects"]):
            with self.subTest(arguments):
                text = self.run_program(*arguments)
                acting = [c for c in text if unicodedata.category(c) in ("Cc", "Cf", "Zl", "Zp")]
                self.assertLessEqual(set(acting), {"\n"})
                self.assertLess(text.count("\u0301"), 20 if "--json" not in arguments else 1e6)
        self.assertEqual(self.titles("-n1"), [HOSTILE])
        self.assertEqual(self.titles()[1], "Plain api_key=[REDACTED]")
        for arguments, end in (("", ["$"]), ("watch", [])):
            screen = self.on_tmux(60, 10, arguments, until=(end or ["REDACTED"])[0])
            self.assertEqual(screen[0], "刚刚  2")
            self.assertTrue(screen[1].startswith("● 进行中  h1  5 分钟前  "), screen)
            self.assertTrue(screen[1].endswith("…"), screen)
            self.assertTrue(screen[2].endswith("Plain api_key=[REDACTED]"), screen)
            self.assertEqual(screen[3:], end)

    def on_tmux(self, columns, rows, arguments, until):
        tmux = ["tmux", "-f/dev/null", "-S", str(self.home / f"tmux{arguments}")]
        environment = self.environment | {"LANG": "C.UTF-8"}
        subprocess.run([*tmux, "new-session", "-d", "-x", str(columns), "-y", str(rows),
                        f"{PROGRAM} {arguments}; printf '$'; exec sleep 60"], env=environment, check=True)
        try:
            for _ in range(100):
                screen = subprocess.run([*tmux, "capture-pane", "-p"], env=environment, text=True,
                                        stdout=subprocess.PIPE, check=True).stdout
                if until in screen:
                    return screen.rstrip().splitlines()
                time.sleep(0.1)
            self.fail(screen)
        finally:
            subprocess.run([*tmux, "kill-server"], env=environment, check=False)

    def test_json_has_the_documented_fields(self):
        self.environment["TZ"] = "UTC-8"
        self.add("j1", "T 😀", preview="", updated_at=1709812800, updated_at_ms=1709812800250)
        [thread] = json.loads(self.run_program("--all", "--json"))
        self.assertEqual(thread, {
            "id": "j1", "state": "running", "title": "T 😀", "preview": "", "project": "atlas",
            "directory": "/src/atlas", "source": "cli", "model": None, "reasoning_effort": None,
            "branch": None, "tokens": 0, "created_at": None,
            "updated_at": "2024-03-07T20:00:00.250+08:00", "archived": False, "subagent": False,
            "pinned": False, "group": "older"})
        status = json.loads(self.run_program("status", "--json"))
        self.assertEqual((status["running"], status["completed"]), (1, 0))
        bar = json.loads(self.run_program("status", "--format=waybar"))
        self.assertEqual((bar["class"], bar["text"]), ("running", "进行中 1 · 已完成 0"))

    def completions(self, *words):
        (self.home / "tallyview").unlink(missing_ok=True)
        (self.home / "tallyview").symlink_to(PROGRAM)
        return subprocess.run(
            ["bash", "-c", '. "$0"; COMP_WORDS=(tallyview "$@") COMP_CWORD=$#; _tallyview; '
             'eval "printf \'%s\\n\' ${COMPREPLY[*]}"', COMPLETIONS / "tallyview.bash", *words],
            env=self.environment, cwd=self.home, text=True, check=True,
            stdout=subprocess.PIPE).stdout.splitlines()

    def test_completions_are_offered_as_they_are(self):
        names = ["$(touch run)", "`touch run`", "* ;touch run", "a b"]
        for name in names:
            self.add(name, "T", cwd=f"/src/{name}")
        self.assertCountEqual(self.completions("show", ""), names)
        self.assertCountEqual(self.completions("--project", "="), names)
        self.assertEqual(self.completions("show", "a"), ["a b"])
        self.assertEqual(self.completions("--status", "=", "c"), ["completed"])
        self.assertFalse((self.home / "run").exists())

    def test_errors(self):
        for arguments in (["--foo"], ["-n"], ["-n0"], ["--json=1"], ["--status=x"], ["frob"],
                          ["show"], ["show", "a", "b"], ["status", "--json", "--format=plain"], ["status", "--pinned"], ["--interval=5"],
                          ["watch", "--interval=0"]):
            with self.subTest(arguments):
                self.assertEqual(self.run_program(*arguments, status=2).count("\n"), 1)
        self.add("k1", "T")
        with open("/dev/full", "w", encoding="utf-8") as full:
            self.run_program(status=1, stdout=full)
        self.assertIn("x\uFFFD", self.run_program("show", "x\x1b", status=1))
        reader, writer = os.pipe()
        os.close(reader)
        self.assertEqual(subprocess.run([PROGRAM], env=self.environment, stdout=writer,
                                        stderr=subprocess.PIPE).stderr, b"")
        os.close(writer)
        (self.home / ".orvik/state_5.sqlite").write_bytes(b"damaged" * 1000)
        for arguments in ([], ["show", "k1"], ["status"], ["--json"]):
            self.assertIn("读取", self.run_program(*arguments, status=1))
        (self.home / ".orvik/state_5.sqlite").unlink()
        self.assertIn(str(self.home), self.run_program(status=1))
        self.assertIn("--oldest-first", self.run_program("--help"))
        self.assertRegex(self.run_program("--version"), r"^tallyview \d")

    def test_a_long_title_forges_no_property(self):
        self.add("k1", "x" * 40 + "项目       forged" + "y" * 60)
        lines = self.lines_on_terminal("show", "k1", columns=40, NO_COLOR="1")
        self.assertEqual(lines[1:3], ["  项目       forged" + "y" * 21, "  " + "y" * 38])

    def test_lines_fit_the_terminal(self):
        self.add("l1", "修正排序 👩‍👩‍👧 e\u0301 " * 30, cwd="/src/" + "项目" * 30)
        for columns in (1, 9, 10, 11, 24, 40, 80, 1000):
            for arguments in ([], ["show", "l1"]):
                with self.subTest(columns=columns, arguments=arguments):
                    lines = self.lines_on_terminal(*arguments, columns=columns, NO_COLOR="1")
                    self.assertLessEqual(max(map(columns_of, lines)), max(columns, 10))
        for environment, coloured in (({}, True), ({"NO_COLOR": "1"}, False), ({"TERM": "dumb"}, False)):
            text = "".join(self.lines_on_terminal(**environment))
            self.assertEqual("\x1b[32m" in text, coloured)
        self.assertIn("\x1b[32m", self.run_program("--color=always"))

    def test_watch_on_a_terminal(self):
        self.add("m1", "First")
        for number in (signal.SIGINT, signal.SIGHUP, signal.SIGTERM):
            with self.on_terminal("watch", "--interval=1") as (child, terminal):
                self.read(terminal, "First")
                if number == signal.SIGINT:
                    self.add("m2", "Second")
                    self.read(terminal, "Second")
                    fcntl.ioctl(terminal, termios.TIOCSWINSZ, struct.pack("4H", 24, 10, 0, 0))
                    self.read(terminal, "Sec")
                    os.write(terminal, b"q\x1a")  # with no shell to wake it, it goes on
                    self.read(terminal, "\x1b[?1049l\x1b[?1049h")
                    self.add("m3", "Third")
                    self.read(terminal, "Third")
                    os.write(terminal, b"\x1c\x03")
                else:
                    os.kill(child, number)
                self.assertTrue(self.read(terminal).endswith(LEAVE))
                self.assertEqual(self.status_of(child), 0)

    def test_watch_gives_a_shell_its_terminal_back(self):
        self.add("m1", "First")
        script = 'stty -g; "$0" watch; echo "ended $?"; stty -g; fg; echo "ended $?"; stty -g'
        with self.on_terminal(program=("bash", "-mc", script, PROGRAM)) as (child, terminal):
            shown = self.read(terminal, "First")
            os.write(terminal, b"\x1a")
            shown += self.read(terminal, "First")
            os.write(terminal, b"\x03")
            shown += self.read(terminal)
            self.assertEqual(re.findall(r"ended (\d+)", shown), [str(128 + signal.SIGTSTP), "0"])
            self.assertEqual(len(set(re.findall(r"\S+(?::\S+){9,}", shown))), 1, shown)
            self.assertEqual(self.status_of(child), 0)

    def test_control_c_twice_leaves_the_terminal_in_order(self):
        for number in range(300):
            self.add(f"m{number}", "x" * 280)
        with self.on_terminal("watch", columns=300, rows=300) as (child, terminal):
            self.read(terminal, "xxx")  # the rest is more than the terminal takes unread
            for _ in range(2):
                time.sleep(0.3)
                os.kill(child, signal.SIGINT)
            self.assertTrue(self.read(terminal).endswith(LEAVE))
            self.assertTrue(termios.tcgetattr(terminal)[3] & termios.ECHO)
            self.assertEqual(self.status_of(child), -signal.SIGINT)

    def test_watch_ends_without_its_terminal(self):
        self.add("m1", "First")
        self.addCleanup(signal.signal, signal.SIGHUP, signal.signal(signal.SIGHUP, signal.SIG_IGN))
        for arguments, shown in (((), "First"), (("--json",), "")):
            with self.on_terminal("watch", "--interval=1", *arguments) as (child, terminal):
                self.read(terminal, shown)
            self.assertGreaterEqual(self.status_of(child), 0)

    def watch_through_pipe(self, *arguments):
        watch = subprocess.Popen([PROGRAM, "watch", "--interval=1", *arguments], text=True,
                                 env=self.environment, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        self.addCleanup(watch.communicate)
        self.addCleanup(watch.kill)
        time.sleep(0.7)
        return watch

    def test_watch_through_a_pipe(self):
        self.add("n1", "First", age=864000)
        plain, structured = self.watch_through_pipe(), self.watch_through_pipe("--json", "-n2")
        self.set_running("n1", False)
        self.assertRegex(plain.stdout.readline(), r"^\d{4}/\d\d/\d\d \d\d:\d\d  已完成  atlas  First\n$")
        self.add("n2", "Se\x1bcond")
        self.assertTrue(plain.stdout.readline().endswith("  进行中  atlas  Se\uFFFDcond\n"))
        events = [json.loads(structured.stdout.readline()) for _ in range(2)]
        self.assertEqual([(event["event"], event["thread"]["id"]) for event in events],
                         [("completed", "n1"), ("started", "n2")])
        self.database.execute("ALTER TABLE threads RENAME TO hidden")
        self.assertIn("threads", plain.stderr.readline())
        time.sleep(2.2)
        self.database.execute("ALTER TABLE hidden RENAME TO threads")
        self.set_running("n1", True)
        self.assertIn("进行中", plain.stdout.readline())
        plain.stdout.close()  # its reader has gone
        self.assertEqual((plain.wait(10), plain.stderr.read()), (0, ""), "the failure is told once")
        self.assertEqual(structured.wait(10), 0, "ended after two")


if __name__ == "__main__":
    unittest.main()
