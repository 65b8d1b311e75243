"""An agent that the reader is held against: what it does, and what it says that it has done."""

import json
import multiprocessing
import os
import pathlib
import random
import sqlite3
import time
from multiprocessing.sharedctypes import RawArray, RawValue

LIVE = 6  # threads with a rollout file of their own
LONGEST_ROLLOUT = 400_000
COLUMNS = ("id, title, preview, cwd, source, model, reasoning_effort, git_branch, tokens_used,"
           " created_at, created_at_ms, updated_at, updated_at_ms, recency_at, recency_at_ms,"
           " archived, agent_role, agent_path, rollout_path")
COMPLETED, RUNNING, CUT = range(3)  # CUT: completed, because the file ends inside a character


class Ledger:
    """What an agent has done so far, in memory that outlives it."""

    def __init__(self):
        self.begun = RawValue("q", 0)      # number of the last transaction, whether or not
        self.committed = RawValue("q", 0)  # it was committed
        self.refused = RawValue("q", 0)    # writes that failed
        self.moves = RawArray("q", LIVE)   # odd while the state of a thread changes
        self.states = RawArray("b", LIVE)
        self.is_stopping = RawValue("b", 0)

    def snapshot(self):
        return self.committed.value, list(self.moves), list(self.states)

    def wait_for_transaction(self):
        """Returns early in a transaction, or after a while without one."""
        end = time.monotonic() + 0.1
        while self.begun.value == self.committed.value and time.monotonic() < end:
            pass
        time.sleep(random.random() / 200)

    def complaint(self, rows, before):
        """What is wrong with rows ({id: (title, state)}) read since the snapshot `before`."""
        committed, moves, states = before
        titles = {int(title) for title, _ in rows.values()}
        if len(titles) != 1 or not committed <= min(titles) <= self.begun.value:
            return f"transactions {titles} instead of one from {committed} to {self.begun.value}"
        if len(rows) != row_count(min(titles)):
            return f"{len(rows)} rows instead of {row_count(min(titles))}"
        for index, (_, state) in enumerate(rows.values()):
            is_known = index >= LIVE or (moves[index] % 2 == 0 and self.moves[index] == moves[index])
            is_running = index < LIVE and states[index] == RUNNING
            if is_known and state != ("running" if is_running else "completed"):
                return f"thread {index} is {state}"
        return None


def row_count(number):
    """Transactions add and remove rows, so that a part of a list is seen."""
    return LIVE + 4 + number % 7


class Agent:
    """Each transaction writes all of its rows anew, with the transaction's number as their title."""

    def __init__(self, home, name, journal="WAL", replaces=False):
        self.database = home / "state.sqlite"
        self.rollouts = [home / f"{name}{index}.jsonl" for index in range(LIVE)]
        self.name, self.journal, self.replaces = name, journal, replaces
        self.ledger = Ledger()
        self.process = None
        connection = self.connected(self.database)
        self.commit(connection)
        connection.close()

    def start(self):
        self.ledger.is_stopping.value = 0
        self.process = multiprocessing.Process(target=self.work)
        self.process.start()

    def kill(self):
        self.process.kill()
        self.process.join()

    def finish(self):
        """The last transaction of an agent that finishes is committed."""
        self.ledger.is_stopping.value = 1
        self.process.join(60)
        return self.process.exitcode == 0 and self.ledger.committed.value == self.ledger.begun.value

    # In the agent's process.

    def work(self):
        random.seed()
        connection = self.connected(self.database)
        self.repair()
        while not self.ledger.is_stopping.value:
            try:
                self.write(connection)
                for _ in range(4):
                    self.act(random.randrange(LIVE))
            except (OSError, sqlite3.OperationalError):  # the disk is full
                self.ledger.refused.value += 1
                connection.rollback()
                self.repair()
            time.sleep(random.random() / 50)
        self.write(connection)
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
        other = self.connected(successor)
        self.commit(other, is_visible=False)
        other.close()
        if random.random() < 0.3:
            self.database.unlink()
            time.sleep(random.random() / 50)
        os.replace(successor, self.database)
        self.ledger.committed.value = self.ledger.begun.value

    def commit(self, connection, is_visible=True):
        number = self.ledger.begun.value + 1
        self.ledger.begun.value = number
        connection.execute("BEGIN IMMEDIATE")
        connection.execute("DELETE FROM threads WHERE id GLOB ?", (self.name + "-*",))
        for index in range(row_count(number)):
            is_live = index < LIVE
            connection.execute(
                "INSERT INTO threads (id, title, preview, updated_at_ms, archived, rollout_path)"
                " VALUES (?, ?, ?, ?, ?, ?)",
                (f"{self.name}-{index:02}", str(number), "x" * random.randrange(4000), number,
                 not is_live, str(self.rollouts[index if is_live else 0])))
        time.sleep(random.choice((0, 0.02)) * random.random())
        connection.execute("COMMIT")
        if is_visible:
            self.ledger.committed.value = number

    def repair(self):
        """Begins again where a change was not finished."""
        for index, path in enumerate(self.rollouts):
            if self.ledger.moves[index] % 2 or self.ledger.states[index] == CUT:
                self.ledger.moves[index] |= 1
                path.unlink(missing_ok=True)
                self.ledger.states[index] = COMPLETED
                self.ledger.moves[index] += 1

    def change(self, index, state, action, *arguments):
        self.ledger.moves[index] += 1
        action(*arguments)
        self.ledger.states[index] = state
        self.ledger.moves[index] += 1

    def act(self, index):
        path = self.rollouts[index]
        state = self.ledger.states[index]
        size = path.stat().st_size if path.exists() else 0
        kind = random.choice("start end end work work work cut empty delete rotate".split())
        if kind == "start":
            self.change(index, RUNNING, append, path, event("task_started"))
        elif kind == "end":
            self.change(index, COMPLETED, append, path,
                        event(random.choice(("task_complete", "turn_aborted"))))
        elif kind == "work" and size < LONGEST_ROLLOUT:
            append(path, noise())
        elif kind == "cut" and size < LONGEST_ROLLOUT:
            line = '\n{"note":"任务"}\n'.encode()
            self.change(index, CUT, append, path, line[:-5])
            time.sleep(random.random() / 100)
            self.change(index, state, append, path, line[-5:])
        elif size > 0 and kind in ("empty", "delete", "rotate"):
            self.change(index, COMPLETED, *{"empty": (os.truncate, path, 0),
                                            "delete": (os.unlink, path),
                                            "rotate": (os.rename, path, f"{path}.1")}[kind])


# An event begins with a line feed: the line before may never have been finished.
def event(kind):
    return b"\n" + json.dumps({"type": "event_msg", "payload": {"type": kind}}).encode() + b"\n"


def noise():
    """Events that decide nothing, without the end of the last one."""
    decoy = {"type": "response_item", "payload": {"type": random.choice(("task_started", "turn_aborted")),
                                                  "text": "y" * random.randrange(20_000)}}
    return (b"\n" + json.dumps(decoy).encode()) * random.randrange(1, 4) + b'\n{"type":"event_msg"'


def append(path, data):
    """In several writes, so that the file is seen, and left, in the midst of a line."""
    descriptor = os.open(path, os.O_WRONLY | os.O_APPEND | os.O_CREAT, 0o600)
    try:
        step = random.randrange(len(data) // 8 + 1, len(data) + 1)
        while data:
            data = data[os.write(descriptor, data[:step]):]
    finally:
        os.close(descriptor)
