#!/usr/bin/env python3
"""Refreshes beside agents that write, crash, lock, run out of room and replace their database.

    soak.py READER [SECONDS]    SECONDS (6) of each kind of trouble

Each answer of READER, while agents are at work too, is held to what they say they have done: a
list is whole, of one moment and as new as the refresh; an error is one that the trouble explains,
and the first refresh after the trouble succeeds.
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
COLUMNS = ("id, title, preview, cwd, source, model, reasoning_effort, git_branch, tokens_used,"
           " created_at, created_at_ms, updated_at, updated_at_ms, recency_at, recency_at_ms,"
           " archived, agent_role, agent_path, rollout_path")
BYSTANDERS = 600  # so many threads more that several batches are made of them
LIVE = 6  # threads with a rollout file of their own


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
        path = self.rollouts[index]
        change = random.choice((os.truncate, os.unlink, os.rename, *[None] * 7))
        if change and path.exists():
            change(*{os.truncate: (path, 0), os.rename: (path, f"{path}.1")}.get(change, (path,)))
        with open(path, "ab", buffering=0) as file:
            file.write(event(random.choice(("task_started", "turn_aborted"))))
            file.write(b'\n{"note":"' + "任务".encode() * random.randrange(2000))
            file.write(b'\xe4'[:random.randrange(2)])

    def end_with(self, index, kind):
        self.rollouts[index].write_bytes(event("task_complete") + event(kind) + b'\n{"type":"event_')
        self.runs[index] = kind == "task_started"


class Reader:
    def __init__(self, program, database):
        self.process = subprocess.Popen([program, database], encoding="utf-8",
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

    def __init__(self, program, home, journal, agents=2, replaces=False):
        self.home, self.database = home, home / "state.sqlite"
        self.agents = [Agent(home, f"agent{index}", journal, replaces) for index in range(agents)]
        with contextlib.closing(self.agents[0].connected(self.database)) as bystanders:
            bystanders.executemany("INSERT INTO threads (id, title) VALUES (?, 'bystander')",
                                   ((f"bystander{index}",) for index in range(BYSTANDERS)))
        self.reader = Reader(program, self.database)
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


def working(scene, seconds):
    with scene.agents_at_work():
        scene.refresh_for(seconds, LOCKED)


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


def locked(scene, seconds):
    with contextlib.closing(sqlite3.connect(scene.database, isolation_level=None)) as holder:
        holder.execute("BEGIN EXCLUSIVE")
        if scene.reader.refresh() != LOCKED:
            raise AssertionError("the lock was not felt")
        scene.refresh_for(seconds, LOCKED)
    scene.refresh()


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


def main(program, seconds="6"):
    for act, journal, options in [
            (working, "WAL", {}), (working, "DELETE", {}), (killed, "WAL", {}),
            (killed, "DELETE", {}), (locked, "DELETE", {}), (full, "WAL", {}),
            (replaced, "DELETE", {"agents": 1, "replaces": True})]:
        with tempfile.TemporaryDirectory(prefix="tallyview-soak-") as folder:
            scene = Scene(program, pathlib.Path(folder), journal, **options)
            act(scene, float(seconds))
            scene.reader.close()


if __name__ == "__main__":
    main(*sys.argv[1:])
