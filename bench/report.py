"""Runs the programs that measure and prints one table of what they found.

    report.py BINARIES HOMES [--quick] [--markdown]

HOMES holds the sample homes that scripts/bench writes. A display and a session bus are there.
"""

import os
import shutil
import statistics
import subprocess
import sys
import time
from dataclasses import dataclass
from pathlib import Path

HEADINGS = ["What", "Against", "Ours", "Theirs", "Ratio", "Reach", "Reached"]
# By which two equal things may differ: a share, and so much of the unit whatever the share.
NOISE = 0.1
LEAST_NOISE = {"ms": 5, "times": 5}


@dataclass
class Row:
    what: str
    against: str
    reach: float | None  # None: equal within noise
    ours: float
    theirs: float
    unit: str
    noise: float = 0  # by which the runs of the other side differ

    def reached(self):
        if self.reach is None:
            noise = max(self.noise, LEAST_NOISE.get(self.unit, 0), NOISE * self.theirs)
            return self.ours <= self.theirs + noise
        return self.ours <= self.theirs * self.reach

    def cells(self):
        ratio = f"{self.ours / self.theirs:.2f}" if self.theirs else "-"
        reach = "equal" if self.reach is None else f"{self.reach:g}"
        verdict = "yes" if self.reached() else "falls short"
        return [self.what, self.against, figure(self.ours, self.unit), figure(self.theirs, self.unit),
                ratio, reach, verdict]


def figure(value, unit):
    if unit == "times":
        return f"{value:.0f}"
    return f"{value:.3g} {unit}" if value < 100 else f"{value:.0f} {unit}"


class Bench:
    def __init__(self, binaries, homes, quick):
        self.binaries = binaries
        self.homes = homes
        self.quick = quick

    def run(self, home, program, *arguments):
        folder = self.homes / home
        environment = {**os.environ, "HOME": str(folder), "XDG_CONFIG_HOME": str(folder / "config"),
                       "XDG_CACHE_HOME": str(folder / "cache"),
                       "XDG_DATA_HOME": str(folder / "data"),
                       "XDG_STATE_HOME": str(folder / "state"),
                       "QT_QPA_PLATFORM": "xcb", "QSG_NO_VSYNC": "1", "LC_ALL": "C.UTF-8"}
        command = [self.binaries / program, *map(str, arguments)]
        print("…", home, program, *arguments[-2:], file=sys.stderr, flush=True)
        return subprocess.run(command, env=environment, check=True, text=True,
                              stdout=subprocess.PIPE).stdout

    def program_rows(self, home, label, program, *arguments):
        output = self.run(home, program, *arguments)
        for what, against, reach, ours, theirs, unit in (
                line.split("\t") for line in output.splitlines()):
            yield Row(f"{what}, {label}", against, float(reach), float(ours), float(theirs), unit)

    def milliseconds(self, home, program, *arguments):
        start = time.monotonic()
        self.run(home, program, *arguments)
        return (time.monotonic() - start) * 1000

    def terminal_rows(self, rounds):
        """Programs from their start to their end."""
        def median(home, program, *arguments):
            return statistics.median(self.milliseconds(home, program, *arguments)
                                     for _ in range(rounds))
        yield Row("tallyview status, one thread", "sqlite3 --version and 30 ms", 1,
                  median("one", "tallyview", "status"),
                  median("one", shutil.which("sqlite3"), "--version") + 30, "ms")
        yield Row("tallyview, 20,000 threads", "one refresh in a process of its own", 1.3,
                  median("20000", "tallyview"),
                  median("20000", "CoreBench", self.homes / "20000"), "ms")

    def sides(self, home, mode, amount, rounds):
        """The numbers of each run of each side, the sides in turn. The first start fills caches."""
        runs = {"app": [], "bare": [], "plain": []}
        warming = 1 if mode == "start" else 0
        for round_ in range(warming + rounds):
            for side, results in runs.items():
                argument = time.monotonic_ns() if mode == "start" else amount
                output = self.run(home, "AppBench", side, mode, argument)
                if round_ >= warming:
                    results.append([float(number) for number in output.split()])
        return {side: list(zip(*results)) for side, results in runs.items()}

    def window_rows(self, home, mode, amount, rounds, names, other="bare window"):
        """`names`: what, reach and unit of each number that the program prints."""
        numbers = self.sides(home, mode, amount, rounds)
        for position, (what, reach, unit) in enumerate(names):
            ours = statistics.median(numbers["app"][position])
            for side, against in (("bare", other), ("plain", f"{other}, drawn alike")):
                theirs = numbers[side][position]
                yield Row(what, against, reach, ours, statistics.median(theirs), unit,
                          max(theirs) - min(theirs))

    def rows(self):
        script = Path(__file__).with_name("list_threads.py")
        few = 3 if self.quick else 9
        for home, label in ("2000", "2,000 threads"), ("20000", "20,000 threads"):
            yield from self.program_rows(home, label, "CoreBench", self.homes / home, few, script)
        yield from self.terminal_rows(2 * few)
        yield from self.program_rows("20000", "20,000 threads", "ModelBench",
                                     self.homes / "20000", 2 * few)
        yield from self.window_rows("2000", "start", 0, few,
                                    [("cold start to first frame, 2,000 threads", 1.4, "ms")])
        yield from self.window_rows("20000", "memory", 0, 3,
                                    [("peak memory, 20,000 threads", 1.6, "MiB")])
        yield from self.window_rows(
            "old", "scroll", 300 if self.quick else 1000, 1 if self.quick else 3,
            [("scrolling 20,000 rows, median frame", 2, "ms"),
             ("scrolling 20,000 rows, 99th percentile", 3, "ms")], "list of rectangles")
        seconds = 8 if self.quick else 25
        yield from self.window_rows(
            "old", "idle", seconds, 1,
            [(f"idle for {seconds} s, processor time", None, "ms"),
             (f"idle for {seconds} s, wake-ups", None, "times")])
        seconds = 4 if self.quick else 10
        yield from self.window_rows(
            "one", "pulse", seconds, 1 if self.quick else 2,
            [(f"one running row pulsing for {seconds} s, processor time", 1.5, "ms")],
            "one item pulsing")


def aligned(rows):
    cells = [HEADINGS] + [row.cells() for row in rows]
    widths = [max(map(len, column)) for column in zip(*cells)]
    for line in cells:
        texts = [text.ljust(width) if position < 2 or position == 6 else text.rjust(width)
                 for position, (text, width) in enumerate(zip(line, widths))]
        print("  ".join(texts).rstrip())


def markdown(rows):
    print("|", " | ".join(HEADINGS), "|")
    print("|---|---|---:|---:|---:|---:|---|")
    for row in rows:
        print("|", " | ".join(row.cells()), "|")


def main(binaries, homes, *options):
    bench = Bench(Path(binaries).resolve(), Path(homes).resolve(), "--quick" in options)
    rows = list(bench.rows())
    (markdown if "--markdown" in options else aligned)(rows)


main(*sys.argv[1:])
