#!/usr/bin/env python3
"""Refreshes beside agents that write, crash, lock, run out of room and replace their database.

    soak.py BINARIES [SECONDS]    SECONDS (72) of trouble, of each kind as much

Each answer of the reader, while agents are at work too, is held to what they say they have done: a
list is whole, of one moment and as new as the refresh; an error is one that the trouble explains,
and the first refresh after the trouble succeeds. The application quits within a second, whatever
it waits for, and has written its settings.
"""

import contextlib
import multiprocessing
import os
import pathlib
import random
import resource
import sqlite3
import subprocess
import sys
import tempfile
import time
from multiprocessing.sharedctypes import RawArray, RawValue

LOCKED = "无法读取 Orvik 任务：database is locked"
UNRECOVERED = "无法读取 Orvik 任务：attempt to write a readonly database"
MISSING = "找不到 Orvik 状态数据库："
VANISHED = "无法只读打开 Orvik 数据库：unable to open database file"
UNREADABLE = "无法读取 Orvik 任务：unable to open database file"
COLUMNS = ("id, title, preview, cwd, source, model, reasoning_effort, git_branch, tokens_used,"
           " created_at, created_at_ms, updated_at, updated_at_ms, recency_at, recency_at_ms,"
           " archived, agent_role, agent_path, rollout_path")
BYSTANDERS = 600  # so many threads more that several batches are made of them
LIVE = 6  # threads with a rollout file of their own


STRANGERS = [os.mkdir, os.mkfifo, lambda path: path.symlink_to(path),
             lambda path: path.symlink_to("/dev/zero")]


def cleared(path):
    """The path, with nothing but perhaps a regular file there."""
    if path.is_symlink() or path.is_fifo():
        path.unlink()
    elif path.is_dir():
        path.rmdir()
    return path


def event(kind):
    """Begins with a line feed: the line before may never have been finished."""
    return b'\n{"type":"event_msg","payload":{"type":"%s"}}\n' % kind.encode()


class Agent:
    """Each transaction writes all of its rows anew, with the transaction's number as their title.
    What the agent says of itself lies in memory that outlives its process."""

    def __init__(self, home, name, journal, replaces):
        self.database = home / "state.sqlite"
        self.rollouts = [home / f"{name}{index}.jsonl" for index in range(LIVE)]
        self.name, self.journal, self.replaces = name, journal, replaces
        self.begun = RawValue("q", 0)  # number of the last transaction
        self.committed = RawValue("q", 0)  # number of the last that was committed
        self.runs = RawArray("b", LIVE)  # whether the last event of each thread started a task
        self.is_stopping = RawValue("b", 0)
        self.refused = RawValue("q", 0)
        with contextlib.closing(self.connected(self.database)) as connection:
            self.commit(connection)

    def start(self):
        self.is_stopping.value = 0
        self.process = multiprocessing.Process(target=self.work)
        self.process.start()

    def kill(self):
        self.process.kill()
        self.process.join()

    def finish(self):
        """The last transaction of an agent that finishes is committed."""
        self.is_stopping.value = 1
        self.process.join(60)
        if self.process.exitcode != 0 or self.committed.value != self.begun.value:
            raise AssertionError("an agent did not recover")

    def wait_for_transaction(self):
        """Returns early in a transaction, or after a while without one."""
        end = time.monotonic() + 0.1
        while self.begun.value == self.committed.value and time.monotonic() < end:
            pass
        time.sleep(random.random() / 200)

    def complaint(self, rows, committed, is_at_work):
        """What is wrong with rows ({id: (title, state)}) read since a transaction was committed."""
        numbers = {int(title) for title, _ in rows.values()}
        if len(numbers) != 1 or not committed <= min(numbers) <= self.begun.value:
            return f"transactions {numbers} instead of one from {committed} to {self.begun.value}"
        if len(rows) != self.row_count(min(numbers)):
            return f"{len(rows)} rows in transaction {numbers}"
        running = [state == "running" for _, state in rows.values()]
        expected = [bool(runs) for runs in self.runs] + [False] * (len(rows) - LIVE)
        known = slice(LIVE if is_at_work else 0, None)
        return None if running[known] == expected[known] else f"{running} instead of {expected}"

    @staticmethod
    def row_count(number):
        """Transactions add and remove rows, so that a part of a list is seen."""
        return LIVE + 4 + number % 7

    # In the agent's process.

    def work(self):
        random.seed()
        connection = self.connected(self.database)
        while not self.is_stopping.value:
            try:
                self.write(connection)
                for _ in range(4):
                    self.act(random.randrange(LIVE))
            except (OSError, sqlite3.OperationalError):  # there is no room
                self.refused.value += 1
                connection.rollback()
            time.sleep(random.random() / 50)
        self.write(connection)
        for index in range(LIVE):
            self.end_with(index, random.choice(("task_started", "task_complete", "turn_aborted")))
        connection.close()

    def connected(self, path):
        connection = sqlite3.connect(path, timeout=30, isolation_level=None)
        # With so small a cache changed pages are written before they are committed.
        connection.executescript(f"PRAGMA journal_mode = {self.journal}; PRAGMA cache_size = 5;"
                                 "PRAGMA synchronous = OFF; CREATE TABLE IF NOT EXISTS threads"
                                 f" ({COLUMNS.replace('id,', 'id PRIMARY KEY,', 1)})")
        return connection

    def write(self, connection):
        if not self.replaces:
            self.commit(connection)
            return
        successor = self.database.with_name("successor.sqlite")
        successor.unlink(missing_ok=True)
        with contextlib.closing(self.connected(successor)) as other:
            self.commit(other, is_visible=False)
        if random.random() < 0.3:
            self.database.unlink()
            time.sleep(random.random() / 50)
        os.replace(successor, self.database)
        self.committed.value = self.begun.value

    def commit(self, connection, is_visible=True):
        number = self.begun.value = self.begun.value + 1
        connection.execute("BEGIN IMMEDIATE")
        connection.execute("DELETE FROM threads WHERE id GLOB ?", (self.name + "-*",))
        for index in range(self.row_count(number)):
            is_live = index < LIVE
            connection.execute(
                "INSERT INTO threads (id, title, preview, updated_at_ms, archived, rollout_path)"
                " VALUES (?, ?, ?, ?, ?, ?)",
                (f"{self.name}-{index:02}", str(number), "x" * random.randrange(4000), number,
                 not is_live, str(self.rollouts[index if is_live else 0])))
        time.sleep(random.choice((0, 0.02)) * random.random())
        connection.execute("COMMIT")
        if is_visible:
            self.committed.value = number

    def act(self, index):
        """Does something to a rollout file, which is seen, and left, in the midst of it."""
        path = cleared(self.rollouts[index])
        if random.random() < 0.1:
            path.unlink(missing_ok=True)
            random.choice(STRANGERS)(path)
            return
        change = random.choice((os.truncate, os.unlink, os.rename, *[None] * 7))
        if change and path.exists():
            change(*{os.truncate: (path, 0), os.rename: (path, f"{path}.1")}.get(change, (path,)))
        with open(path, "ab", buffering=0) as file:
            file.write(event(random.choice(("task_started", "turn_aborted"))))
            file.write(b'\n{"note":"' + "任务".encode() * random.randrange(2000))
            file.write(b'\xe4'[:random.randrange(2)])

    def end_with(self, index, kind):
        cleared(self.rollouts[index]).write_bytes(
            event("task_complete") + event(kind) + b'\n{"type":"event_')
        self.runs[index] = kind == "task_started"


class Reader:
    def __init__(self, *command):
        self.process = subprocess.Popen(command, encoding="utf-8",
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE)

    def refresh(self):
        """{id: (title, state)}, sorted, or the error."""
        self.process.stdin.write("\n")
        self.process.stdin.flush()
        answer = self.process.stdout.readline()
        if not answer.endswith("\n"):
            raise AssertionError(f"the reader ended: {self.process.wait()}")
        line = answer.rstrip("\n")
        if line and not line.startswith("\t"):
            return line
        rows = sorted(row.split(" ") for row in line.split("\t")[1:])
        return {name: (title, state) for name, title, state in rows}

    def close(self):
        self.process.stdin.close()
        if self.process.wait() != 0:
            raise AssertionError("the reader did not end well")


class Scene:
    """A home, the agents at work in it and the reader beside them."""

    def __init__(self, binaries, home, journal, agents=2, replaces=False, reads_through=()):
        self.home, self.database = home, home / "state.sqlite"
        self.agents = [Agent(home, f"agent{index}", journal, replaces) for index in range(agents)]
        with contextlib.closing(self.agents[0].connected(self.database)) as bystanders:
            bystanders.executemany("INSERT INTO threads (id, title) VALUES (?, 'bystander')",
                                   ((f"bystander{index}",) for index in range(BYSTANDERS)))
        self.reader = Reader(*reads_through, binaries / "soak_reader", self.database)
        self.is_at_work = False

    def refresh(self, *explained):
        """A refresh; only an error that the trouble explains may come instead of a list."""
        before = [each.committed.value for each in self.agents]
        answer = self.reader.refresh()
        if isinstance(answer, str):
            if answer not in explained:
                raise AssertionError(answer)
            return
        for each, committed in zip(self.agents, before):
            rows = {name: row for name, row in answer.items() if name.startswith(each.name)}
            if complaint := each.complaint(rows, committed, self.is_at_work):
                raise AssertionError(f"{each.name}: {complaint}")

    def refresh_for(self, seconds, *explained):
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            self.refresh(*explained)

    @contextlib.contextmanager
    def agents_at_work(self):
        self.is_at_work = True
        for each in self.agents:
            each.start()
        try:
            yield
            for each in self.agents:
                each.finish()
        finally:
            for each in self.agents:
                each.kill()
        self.is_at_work = False
        self.refresh()


def working(scene, seconds, *explained):
    with scene.agents_at_work():
        scene.refresh_for(seconds, LOCKED, *explained)


def killed(scene, seconds):
    with scene.agents_at_work():
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            scene.refresh_for(random.random() / 5, LOCKED, UNRECOVERED)
            victim = random.choice(scene.agents)
            victim.wait_for_transaction()
            victim.kill()
            scene.refresh(LOCKED, UNRECOVERED)
            victim.start()


def full(scene, seconds):
    """There is room for the database, but none for a log of its size."""
    room, endless = scene.database.stat().st_size + 20_000, resource.RLIM_INFINITY
    with scene.agents_at_work():
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            for limit in room, endless:
                for each in scene.agents:
                    resource.prlimit(each.process.pid, resource.RLIMIT_FSIZE, (limit, endless))
                scene.refresh_for(0.3, LOCKED, UNRECOVERED)
    if not all(each.refused.value for each in scene.agents):
        raise AssertionError("there was room")


def replaced(scene, seconds):
    with scene.agents_at_work():
        scene.refresh_for(seconds, LOCKED, VANISHED, MISSING + str(scene.database))


@contextlib.contextmanager
def taken_away(path):
    """Nobody has a right to the file, even where an agent moves it meanwhile."""
    file = os.open(path, os.O_RDONLY | os.O_NOFOLLOW | os.O_NONBLOCK)
    try:
        os.fchmod(file, 0)
        yield
    finally:
        os.fchmod(file, 0o700)
        os.close(file)


def barred(scene, seconds):
    with scene.agents_at_work():
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            for path in scene.database, scene.home, *scene.agents[0].rollouts:
                with contextlib.suppress(OSError), taken_away(path):
                    scene.refresh(LOCKED, VANISHED, MISSING + str(scene.database))
                scene.refresh(LOCKED)


def unwritable(scene, seconds):
    """While anybody has the database open, the files of its log are there; else nobody can make
    them. A reader that meets the log's index while it is written may take it for broken, which it
    cannot mend."""
    if scene.reader.refresh() != UNREADABLE:
        raise AssertionError("a log was made")
    with contextlib.closing(sqlite3.connect(scene.database)) as keeper:
        keeper.execute("SELECT count(*) FROM threads").fetchone()
        working(scene, seconds, UNRECOVERED)


# Without the rights that root has beyond all others'.
BARRED = (["setpriv", "--bounding-set=-dac_override,-dac_read_search"] if os.geteuid() == 0 else [])
# On a mount of its own that nothing can be written to.
UNWRITABLE = ["unshare", "--map-root-user", "--mount", "sh", "-c",
              'home=$(dirname "$2") && mount --bind "$home" "$home" &&'
              ' mount -o remount,ro,bind "$home" && exec "$@"', "sh"]


def holds_open(process, path):
    with contextlib.suppress(FileNotFoundError):  # it has just been closed
        return any(os.path.realpath(each) == str(path)
                   for each in pathlib.Path(f"/proc/{process.pid}/fd").iterdir())


def quits(binaries, home, trouble):
    """Quits while the first refresh waits for a rollout file, a lock or an endless query."""
    database, rollout = home / ".orvik/state_5.sqlite", home / "rollout.jsonl"
    database.parent.mkdir()
    rollout.write_bytes(event("task_started"))
    with contextlib.closing(sqlite3.connect(database, isolation_level=None)) as writer:
        writer.executescript(f"CREATE TABLE threads ({COLUMNS});"
                             f"INSERT INTO threads (id, rollout_path) VALUES ('a', '{rollout}');"
                             + trouble)
        preloaded = {} if trouble else {"LD_PRELOAD": str(binaries / "libsoak_stall.so")}
        process = subprocess.Popen([binaries / "orvik-tallyview"], env={
            **os.environ, **preloaded, "HOME": str(home), "XDG_CONFIG_HOME": str(home / ".config"),
            "XDG_RUNTIME_DIR": str(home), "DBUS_SESSION_BUS_ADDRESS": "unix:path=/nonexistent",
            "QT_QPA_PLATFORM": "offscreen", "QT_QUICK_BACKEND": "software",
            "ASAN_OPTIONS": "verify_asan_link_order=0"})
        awaited = home / "rollout.jsonl.awaited"
        while not (holds_open(process, database) if trouble else awaited.exists()):
            if process.poll() is not None:
                raise AssertionError("it does not read")
            time.sleep(0.01)
        time.sleep(random.random())
        start = time.monotonic()
        process.terminate()
        code, took = process.wait(40), time.monotonic() - start
    if code != 0 or took > 1:
        raise AssertionError(f"it ended with {code} after {took:.1f} s of {trouble or 'a stall'}")


TROUBLES = ["", "BEGIN EXCLUSIVE", "ALTER TABLE threads RENAME TO others; CREATE VIEW threads AS"
            " SELECT * FROM others WHERE 2 IN (WITH n AS (SELECT 1 AS i UNION ALL SELECT i FROM n)"
            " SELECT i FROM n)"]
ACTS = [
    (working, "WAL", {}), (working, "DELETE", {}), (killed, "WAL", {}), (killed, "DELETE", {}),
    (full, "WAL", {}), (barred, "DELETE", {"reads_through": BARRED}),
    (replaced, "DELETE", {"agents": 1, "replaces": True}),
    (working, "DELETE", {"reads_through": UNWRITABLE}),
    (unwritable, "WAL", {"reads_through": UNWRITABLE})]


def main(binaries, seconds="72"):
    binaries, share = pathlib.Path(binaries).resolve(), float(seconds) / (len(ACTS) + 2)
    for act, journal, options in ACTS:
        with tempfile.TemporaryDirectory(prefix="tallyview-soak-") as folder:
            way = options.get("reads_through", [])
            if way and subprocess.run([*way, "true", f"{folder}/database"]).returncode != 0:
                print("Left out: a reader on a mount of its own.")
                continue
            scene = Scene(binaries, pathlib.Path(folder), journal, **options)
            act(scene, share)
            scene.reader.close()
    end = time.monotonic() + 2 * share
    while time.monotonic() < end:
        for trouble in TROUBLES:
            with tempfile.TemporaryDirectory(prefix="tallyview-soak-") as folder:
                quits(binaries, pathlib.Path(folder), trouble)


if __name__ == "__main__":
    main(*sys.argv[1:])
