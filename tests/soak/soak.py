#!/usr/bin/env python3
"""Refreshes beside agents that write, crash, lock, fill the disk and replace their database.

    soak.py READER [SECONDS]    SECONDS (6) of each kind of trouble

Each answer of READER, while agents are at work too, is held to what they say they have done: a
list is whole, of one moment and as new as the refresh; an error is one that the trouble explains,
and the first refresh after the trouble succeeds.
"""

import contextlib
import hashlib
import os
import pathlib
import random
import select
import sqlite3
import subprocess
import sys
import tempfile
import time

import agent

LOCKED = "无法读取 Orvik 任务：database is locked"
UNRECOVERED = "无法读取 Orvik 任务：attempt to write a readonly database"
MISSING = "找不到 Orvik 状态数据库："
VANISHED = "无法只读打开 Orvik 数据库：unable to open database file"
HANG_SECONDS = 120
IDLE_REFRESHES = 500  # ten times, in each journal mode
SLACK_BYTES = 65536  # a leak of 16 bytes a refresh is more
DISK_BYTES = 20_000_000
BYSTANDERS = 600  # so many threads more that several batches are made of them


class Failed(Exception):
    pass


class Reader:
    def __init__(self, program, database):
        self.process = subprocess.Popen([program, database], stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE)

    def _ask(self, times):
        with contextlib.suppress(BrokenPipeError):
            self.process.stdin.write(b"%d\n" % times)
            self.process.stdin.flush()
        answer = b""
        while not answer.endswith(b"\n"):
            if not select.select([self.process.stdout], [], [], HANG_SECONDS)[0]:
                raise Failed("the reader hangs")
            piece = os.read(self.process.stdout.fileno(), 1 << 20)
            if not piece:
                raise Failed(f"the reader ended: {self.process.wait()}")
            answer += piece
        return answer.decode().rstrip("\n")

    def refresh(self, times=1):
        """{id: (title, state)}, sorted, or the error."""
        line = self._ask(times)
        if line and not line.startswith("\t"):
            return line
        rows = sorted(row.split(" ") for row in line.split("\t")[1:])
        return {name: (title, state) for name, title, state in rows}

    def resources(self):
        """The bytes it has allocated and the descriptors it holds."""
        return int(self._ask(0)), len(os.listdir(f"/proc/{self.process.pid}/fd"))

    def close(self):
        self.process.stdin.close()
        if self.process.wait(HANG_SECONDS) != 0:
            raise Failed("the reader did not end well")


class Scene:
    """A home, the agents at work in it and the reader beside them."""

    def __init__(self, program, home, journal, agents=2, replaces=False):
        self.agents = [agent.Agent(home, f"agent{index}", journal, replaces)
                       for index in range(agents)]
        self.home, self.database = home, home / "state.sqlite"
        bystanders = self.agents[0].connected(self.database)
        bystanders.executemany("INSERT INTO threads (id, title) VALUES (?, 'bystander')",
                               ((f"bystander{index}",) for index in range(BYSTANDERS)))
        bystanders.close()
        self.reader = Reader(program, self.database)
        self.lists = self.errors = self.kills = 0

    def refresh(self, *explained, times=1):
        """A refresh; only an error that the trouble explains may come instead of a list."""
        before = [each.ledger.snapshot() for each in self.agents]
        answer = self.reader.refresh(times)
        if isinstance(answer, str):
            self.errors += 1
            if answer not in explained:
                raise Failed(answer)
            return
        self.lists += times
        for each, snapshot in zip(self.agents, before):
            rows = {name: row for name, row in answer.items() if name.startswith(each.name)}
            if complaint := each.ledger.complaint(rows, snapshot):
                raise Failed(f"{each.name}: {complaint}")

    def refresh_for(self, seconds, *explained):
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            self.refresh(*explained)

    @contextlib.contextmanager
    def agents_at_work(self):
        for each in self.agents:
            each.start()
        try:
            yield
            if not all([each.finish() for each in self.agents]):
                raise Failed("an agent did not recover")
        finally:
            for each in self.agents:
                each.kill()
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
            victim.ledger.wait_for_transaction()
            victim.kill()
            scene.kills += 1
            scene.refresh(LOCKED, UNRECOVERED)
            victim.start()


def locked(scene, seconds):
    holder = sqlite3.connect(scene.database, isolation_level=None)
    holder.execute("BEGIN EXCLUSIVE")
    scene.refresh_for(max(seconds, 10), LOCKED)
    if scene.lists:
        raise Failed("the lock was not felt")
    holder.execute("COMMIT")
    holder.close()
    scene.refresh()


def full(scene, seconds):
    filler = scene.home / "filler"
    with scene.agents_at_work():
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            for _ in range(5):  # the agents delete files too
                with filler.open("ab", buffering=0) as file, contextlib.suppress(OSError):
                    while file.write(b"x" * 4096):
                        pass
                scene.refresh_for(0.1, LOCKED, UNRECOVERED)
            filler.unlink()
            scene.refresh_for(0.5, LOCKED, UNRECOVERED)
    if not all(each.ledger.refused.value for each in scene.agents):
        raise Failed("the disk was not full")


def replaced(scene, seconds):
    with scene.agents_at_work():
        scene.refresh_for(seconds, LOCKED, VANISHED, MISSING + str(scene.database))


def idle(scene, _seconds):
    """Nothing changes, not by the reader either, and it keeps nothing."""
    held = scene.agents[0].connected(scene.database)  # so that the log stays
    held.execute("SELECT count(*) FROM threads").fetchone()
    working(scene, 0.5)

    def fingerprint():
        return {path: hashlib.sha256(path.read_bytes()).digest()
                for path in scene.home.iterdir() if not path.name.endswith("-shm")}

    scene.refresh(times=IDLE_REFRESHES)
    files, (memory, descriptors) = fingerprint(), scene.reader.resources()
    for _ in range(10):
        scene.refresh(times=IDLE_REFRESHES)
    memory_now, descriptors_now = scene.reader.resources()
    if fingerprint() != files:
        raise Failed("a file has changed")
    if descriptors_now != descriptors or memory_now > memory + SLACK_BYTES:
        raise Failed(f"{descriptors} -> {descriptors_now} descriptors, "
                     f"{memory} -> {memory_now} bytes")
    held.close()


def run(program, name, act, seconds, home, **options):
    scene = Scene(program, home, **options)
    act(scene, seconds)
    scene.reader.close()
    print(f"{name:22} {scene.lists:6} lists {scene.errors:5} errors {scene.kills:4} kills "
          f"{sum(each.ledger.committed.value for each in scene.agents):6} transactions", flush=True)


TROUBLES = [
    ("working, log", working, {"journal": "WAL"}),
    ("working, journal", working, {"journal": "DELETE"}),
    ("killed, log", killed, {"journal": "WAL"}),
    ("killed, journal", killed, {"journal": "DELETE"}),
    ("locked", locked, {"journal": "DELETE"}),
    ("replaced", replaced, {"journal": "DELETE", "agents": 1, "replaces": True}),
    ("full, log", full, {"journal": "WAL"}),
    ("full, journal", full, {"journal": "DELETE"}),
    ("idle, log", idle, {"journal": "WAL"}),
    ("idle, journal", idle, {"journal": "DELETE"}),
]


def main(program, seconds="6"):
    with tempfile.TemporaryDirectory(prefix="tallyview-soak-") as folder:
        for number, (name, act, options) in enumerate(TROUBLES):
            home = pathlib.Path(folder, str(number))
            home.mkdir()
            if act is full:
                if not HAS_MOUNTS:
                    print(f"{name:22} left out: a small disk cannot be mounted here")
                    continue
                mount = ["mount", "-t", "tmpfs", "-o", f"size={DISK_BYTES}", "tmpfs", home]
                subprocess.run(mount, check=True)
            try:
                run(program, name, act, float(seconds), home, **options)
            finally:
                if act is full:
                    subprocess.run(["umount", "--lazy", home], check=True)


# Mounts of its own, for a small disk; they go with the process.
HAS_MOUNTS = "TALLYVIEW_SOAK_HAS_MOUNTS" in os.environ

if __name__ == "__main__":
    alone = ["unshare", "--mount", *([] if os.geteuid() == 0 else ["--map-root-user"])]
    if not HAS_MOUNTS and subprocess.run([*alone, "true"], check=False).returncode == 0:
        os.environ["TALLYVIEW_SOAK_HAS_MOUNTS"] = "yes"
        os.execvp("unshare", [*alone, sys.executable, *sys.argv])
    main(*sys.argv[1:])
