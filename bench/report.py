"""Runs the programs that measure and prints one table of what they found.

    report.py BINARIES HOMES [--quick] [--markdown]

HOMES holds the sample homes that scripts/bench writes. A display and a session bus are there.
"""

import os
import statistics
import subprocess
import sys
import time
from dataclasses import dataclass
from pathlib import Path

HEADINGS = ["What", "Against", "Ours", "Theirs", "Ratio", "Reach", "Reached"]
NOISE = 0.1  # share by which two equal things may differ


@dataclass
class Row:
    what: str
    against: str
    reach: float | None  # None: equal within noise
    ours: float
    theirs: float
    unit: str
    noise: float = 0  # by which the other side differs from itself

    def reached(self):
        if self.reach is None:
            return self.ours <= self.theirs * (1 + NOISE) + self.noise
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

    def sides(self, home, mode, amount, rounds):
        """The numbers of each run of either side, the sides in turn."""
        runs = {"app": [], "bare": []}
        for round_ in range(rounds + 1):
            for side, results in runs.items():
                argument = time.monotonic_ns() if amount == "now" else amount
                output = self.run(home, "AppBench", side, mode, argument)
                if round_ > 0 or amount != "now":  # the first start fills the caches
                    results.append([float(number) for number in output.split()])
            if round_ + 1 == rounds and amount != "now":
                break
        return zip(zip(*runs["app"]), zip(*runs["bare"]))

    def window_rows(self, home, mode, amount, rounds, names):
        """`names`: what, against, reach and unit of each number that the program prints."""
        for name, (ours, theirs) in zip(names, self.sides(home, mode, amount, rounds)):
            if name:
                what, against, reach, unit = name
                yield Row(what, against, reach, statistics.median(ours),
                          statistics.median(theirs), unit, max(theirs) - min(theirs))

    def rows(self):
        script = Path(__file__).with_name("list_threads.py")
        few = 3 if self.quick else 9
        for home, label in ("2000", "2,000 threads"), ("20000", "20,000 threads"):
            yield from self.program_rows(home, label, "CoreBench", self.homes / home, few, script)
        yield from self.program_rows("20000", "20,000 threads", "ModelBench",
                                     self.homes / "20000", 2 * few)
        bare = "bare window"
        yield from self.window_rows("2000", "start", "now", few,
                                    [("cold start to first frame, 2,000 threads", bare, 1.4, "ms")])
        yield from self.window_rows("20000", "memory", 0, 3,
                                    [("peak memory, 20,000 threads", bare, 1.6, "MiB")])
        rectangles = "list of rectangles"
        yield from self.window_rows(
            "old", "scroll", 500 if self.quick else 2000, 1 if self.quick else 3,
            [("scrolling 20,000 rows, median frame", rectangles, 2, "ms"),
             ("scrolling 20,000 rows, 99th percentile", rectangles, 3, "ms")])
        seconds = 8 if self.quick else 25
        yield from self.window_rows(
            "old", "idle", seconds, 1 if self.quick else 3,
            [(f"idle for {seconds} s, processor time", bare, None, "ms"),
             (f"idle for {seconds} s, wake-ups", bare, None, "times"), None])
        yield from self.window_rows(
            "one", "pulse", 4 if self.quick else 10, 1 if self.quick else 3,
            [("one running row pulsing, processor time", "one item pulsing", 1.5, "ms"), None,
             ("frames meanwhile", "", None, "times")])


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
