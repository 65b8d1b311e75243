"""Runs the programs that measure and prints one table of what they found.

    report.py BINARIES HOMES [--quick] [--markdown] [--use SECONDS]

HOMES holds the sample homes that scripts/bench writes. A display and a session bus are there.
"""

import argparse
import json
import math
import os
import resource
import shutil
import sqlite3
import statistics
import subprocess
import sys
import time
from dataclasses import dataclass
from pathlib import Path

HEADINGS = ["What", "Against", "Measure", "Ours", "Theirs", "Ratio", "Quartiles", "Reach",
            "Reached"]
UNITS = {"wall": " ms", "processor": " ms", "median frame": " ms", "99th percentile": " ms",
         "of a processor": " %", "PSS": " MiB", "peak": " MiB"}


@dataclass
class Times:
    """Ours is to be at most `limit` times theirs, or is only shown."""
    limit: float = math.inf

    def scores(self, pairs):
        return [ours / theirs if theirs else math.inf for ours, theirs in pairs]

    def text(self, score, _unit):
        return f"{score:.2f}" if score < 10 else f"{score:.0f}"


@dataclass
class More:
    """Ours is to be at most `limit` above theirs."""
    limit: float

    def scores(self, pairs):
        return [ours - theirs for ours, theirs in pairs]

    def text(self, score, unit):
        return f"{score:+.3g}{unit}"


SHOWN = Times()


def figure(value, unit):
    return f"{value:.3g}{unit}" if value < 100 else f"{value:.0f}{unit}"


def quartiles(values):
    return statistics.quantiles(values, n=4, method="inclusive") if len(values) > 1 else values * 3


def verdict(lower, upper, limit):
    """Where the pairs differ so much that half of them say either, the machine was too busy."""
    if limit == math.inf:
        return "–"
    return "yes" if upper <= limit else "falls short" if lower > limit else "unsure"


def cells(what, against, measure, reach, pairs):
    """One line of the table: `pairs` holds ours and theirs of each round."""
    unit = UNITS.get(measure, "")
    lower, middle, upper = quartiles(reach.scores(pairs))
    ours, theirs = (figure(statistics.median(side), unit) for side in zip(*pairs))
    return [what, against, measure, ours, theirs, reach.text(middle, unit),
            f"{reach.text(lower, '')} … {reach.text(upper, '')}",
            "–" if reach.limit == math.inf else
            f"{reach.limit:g}" if isinstance(reach, Times) else reach.text(reach.limit, unit),
            verdict(lower, upper, reach.limit)]


class Work:
    """Five running tasks that get on while a window shows them; there are no others."""

    def __init__(self, home, running):
        self.database = sqlite3.connect(home / ".orvik/state_5.sqlite", isolation_level=None)
        self.update("archived = 1", running[5:])
        self.tasks = running[:5]

    def update(self, changes, tasks, *values):
        self.database.executemany(f"UPDATE threads SET {changes} WHERE id = ?",
                                  [(*values, task) for task in tasks])

    def step(self):
        now = time.time_ns() // 1_000_000
        self.update("updated_at = ?, updated_at_ms = ?, recency_at = ?, recency_at_ms = ?,"
                    " tokens_used = tokens_used + 1000", self.tasks,
                    now // 1000, now, now // 1000, now)


class Bench:
    """Each way to measure answers what each round found: our numbers and theirs."""

    def __init__(self, options):
        self.binaries = options.binaries.resolve()
        self.homes = options.homes.resolve()
        self.quick = options.quick
        self.use = options.use

    def start(self, home, program, *arguments, output=subprocess.PIPE):
        folder = self.homes / home
        environment = {**os.environ, "HOME": str(folder), "XDG_CONFIG_HOME": str(folder / "config"),
                       "XDG_CACHE_HOME": str(folder / "cache"),
                       "XDG_DATA_HOME": str(folder / "data"),
                       "XDG_STATE_HOME": str(folder / "state"),
                       "SCRIPT": str(Path(__file__).with_name("list_threads.py")),
                       "QT_QPA_PLATFORM": "xcb", "QSG_NO_VSYNC": "1", "LC_ALL": "C.UTF-8"}
        print("…", home, program, *arguments, file=sys.stderr, flush=True)
        # An absolute path is taken as it stands.
        return subprocess.Popen([self.binaries / program, *map(str, arguments)], env=environment,
                                text=True, stdout=output)

    def run(self, *command, meanwhile=None, **options):
        """What the program prints; `meanwhile` is called every five seconds."""
        with self.start(*command, **options) as process:
            while True:
                if meanwhile:
                    meanwhile()
                try:
                    output, _ = process.communicate(timeout=5)
                    break
                except subprocess.TimeoutExpired:
                    continue
        if process.returncode != 0:
            sys.exit(f"{command[1]} ended with {process.returncode}")
        return output

    def program(self, home, program, pair, rounds, *prefix):
        """CoreBench or ModelBench, which runs both sides itself."""
        command = [*prefix, self.binaries / program, self.homes / home, pair, rounds]
        for line in self.run(home, *command).splitlines():
            numbers = list(map(float, line.split()))
            yield tuple(dict(zip(("wall", "processor"), side))
                        for side in (numbers[:2], numbers[2:]))

    def timed(self, *command):
        """A program from its start to its end."""
        def now():
            usage = resource.getrusage(resource.RUSAGE_CHILDREN)
            return time.monotonic(), usage.ru_utime + usage.ru_stime
        start = now()
        self.run(*command, output=subprocess.DEVNULL)
        return dict(zip(("wall", "processor"),
                        (1000 * (after - before) for before, after in zip(start, now()))))

    def in_turn(self, rounds, ours, theirs):
        """The one side is first and the other by turns."""
        for round_ in range(rounds):
            if round_ % 2 == 0:
                yield ours(), theirs()
            else:
                yield tuple(reversed((theirs(), ours())))

    def processes(self, rounds, ours, theirs):
        self.timed(*ours), self.timed(*theirs)  # warms up
        return self.in_turn(rounds, lambda: self.timed(*ours), lambda: self.timed(*theirs))

    def windows(self, home, mode, amount, rounds, names, meanwhile=None):
        def side(name):
            argument = time.monotonic() * 1000 if mode == "start" else amount
            output = self.run(home, "AppBench", name, mode, argument, meanwhile=meanwhile)
            return dict(zip(names, map(float, output.split())))
        if mode == "start":
            side("app"), side("bare")  # fills caches
        return self.in_turn(rounds, lambda: side("app"), lambda: side("bare"))

    def rows(self):
        """What, against what, which numbers are to reach what, and the rounds."""
        yield from self.reading_rows(3 if self.quick else 9)
        yield from self.model_rows(5 if self.quick else 21)
        yield from self.terminal_rows(3 if self.quick else 11)
        yield from self.window_rows()
        yield from self.lasting_rows()

    def reading_rows(self, rounds):
        floor = "query, last 512 KiB read"
        yield ("refresh, 2,000 threads", floor, {"wall": Times(0.8), "processor": SHOWN},
               self.program("2000", "CoreBench", "refresh", rounds))
        yield ("refresh, 20,000 threads", floor, {"wall": Times(0.6), "processor": Times(0.9)},
               self.program("20000", "CoreBench", "refresh", rounds))
        core = min(os.sched_getaffinity(0))
        yield ("refresh, 20,000 threads, one core", floor,
               {"wall": Times(0.9), "processor": Times(0.9)},
               self.program("20000", "CoreBench", "refresh", rounds,
                            shutil.which("taskset"), "-c", core))
        yield ("refresh, 20,000 threads", "query, last 16 KiB read",
               {"wall": Times(1.5), "processor": SHOWN},
               self.program("20000", "CoreBench", "refresh-less", rounds))
        yield ("refresh, 20,000 threads, nothing changed", "Python script",
               {"wall": Times(0.1), "processor": Times(0.1)},
               self.program("20000", "CoreBench", "unchanged", min(rounds, 5)))
        yield ("redact, all titles and previews, 20,000 threads", "one memchr pass",
               {"wall": Times(20), "processor": SHOWN},
               self.program("20000", "CoreBench", "redact", rounds))

    def model_rows(self, rounds):
        yield ("one key in the search field, 20,000 threads", "ICU lower-casing the texts once",
               {"wall": Times(0.15), "processor": SHOWN},
               self.program("20000", "ModelBench", "key", rounds))
        yield ("applying 10 changes of 20,000 threads, main thread", "copying the list's values",
               {"processor": Times(2)}, self.program("20000", "ModelBench", "apply", rounds))

    def terminal_rows(self, rounds):
        refresh = "20000", "CoreBench", self.homes / "20000"
        for arguments, reach in ((), 1.3), (("list", "--all", "--json"), 1.5):
            yield (" ".join(["tallyview", *arguments, "of 20,000 threads"]),
                   "one refresh in a process of its own",
                   {"wall": Times(reach), "processor": SHOWN},
                   self.processes(rounds, ("20000", "tallyview", *arguments), refresh))
        yield ("tallyview status, one thread", "sqlite3 --version",
               {"wall": More(30), "processor": SHOWN},
               self.processes(rounds, ("one", "tallyview", "status"),
                              ("one", shutil.which("sqlite3"), "--version")))

    def window_rows(self):
        start = {"wall": Times(2.5), "processor": SHOWN}
        yield ("cold start to first frame, 2,000 threads", "bare window", start,
               self.windows("2000", "start", 0, 3 if self.quick else 11, start))
        memory = {"PSS": Times(2.5), "peak": SHOWN}
        yield ("memory, 20,000 threads", "bare window", memory,
               self.windows("20000", "memory", 0, 1 if self.quick else 3, memory))
        frame = {"median frame": Times(1.1), "99th percentile": Times(2), "processor": SHOWN}
        yield ("scrolling 20,000 rows, a frame", "list of rectangles", frame,
               self.windows("old", "scroll", 200 if self.quick else 700, 1 if self.quick else 3,
                            frame))

    def lasting_rows(self):
        """Processor time of windows that are left alone."""
        seconds, rounds = (4, 1) if self.quick else (8, 3)
        idle = {"of a processor": More(0.05), "wake-ups": More(5), "frames": More(0)}
        yield (f"idle for {seconds} s", "bare window", idle,
               self.windows("old", "idle", seconds, rounds, idle))
        pulse = {"of a processor": Times(0.8)}
        yield (f"one running row pulsing for {seconds} s", "one item pulsing", pulse,
               self.windows("one", "pulse", seconds, rounds, pulse))
        running = self.run("live", "tallyview", "list", "--recency", "week", "--json")
        work = Work(self.homes / "live", [task["id"] for task in json.loads(running)])
        use = {"of a processor": More(1.5)}
        seconds = min(30, self.use)  # a refresh falls into each 30 seconds
        rounds = self.use // seconds
        yield (f"real use for {rounds * seconds} s, five running tasks in view", "bare window", use,
               self.windows("live", "use", seconds, rounds, use, work.step))


def aligned(lines):
    widths = [max(map(len, column)) for column in zip(*lines)]
    for line in lines:
        texts = [text.rjust(width) if 3 <= position <= 7 else text.ljust(width)
                 for position, (text, width) in enumerate(zip(line, widths))]
        print("  ".join(texts).rstrip())


def markdown(lines):
    for line in lines[:1] + [["---"] * 3 + ["---:"] * 5 + ["---"]] + lines[1:]:
        print("|", " | ".join(line), "|")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("binaries", type=Path)
    parser.add_argument("homes", type=Path)
    parser.add_argument("--quick", action="store_true")
    parser.add_argument("--markdown", action="store_true")
    parser.add_argument("--use", type=int)
    options = parser.parse_args()
    options.use = options.use or (30 if options.quick else 60)
    lines = [HEADINGS]
    for what, against, reaches, rounds in Bench(options).rows():
        rounds = list(rounds)
        for measure, reach in reaches.items():
            lines.append(cells(what, against, measure, reach,
                               [(ours[measure], theirs[measure]) for ours, theirs in rounds]))
    (markdown if options.markdown else aligned)(lines)


main()
