#!/usr/bin/env python3
"""Makes a table (Markdown, to standard output) and a picture of what a soak has written; fails unless it was good.
Usage: soak-report.py FILE.csv [FILE.svg]"""
import csv
import sys
from statistics import median

GROWTH_MB, SETTLED_S, SPAN_S = 2, 600, 900
WIDTH, LEFT, RIGHT, PANEL, GAP = 760, 60, 20, 120, 44
STYLE = """svg{color:#1c2430;font:12px sans-serif}rect{fill:#fff}text{fill:currentColor}.grid{stroke:currentColor;
opacity:.15}path.a,path.b{fill:none;stroke-width:2;stroke:#1769c4}path.b{stroke:#c2410c}text.a{fill:#1769c4}
text.b{fill:#c2410c}@media(prefers-color-scheme:dark){svg{color:#e4e9f0}rect{fill:#14181f}path.a{stroke:#6db1ff}
path.b{stroke:#ff9d66}text.a{fill:#6db1ff}text.b{fill:#ff9d66}}"""


def read(path):
    rows = {kind: [] for kind in ("rest", "line", "latency", "fault", "effect", "trouble", "end")}
    with open(path, newline="") as file:
        for kind, seconds, name, *values in csv.reader(file):
            rows.setdefault(kind, []).append((float(seconds), name, [float(each) for each in values]))
    return rows


def rests(rows):
    """For each rest its begin in seconds and the medians of memory, anonymous memory, descriptors, threads, log bytes
    and processor seconds."""
    groups = []
    for seconds, _, values in rows["rest"]:
        if not groups or seconds - groups[-1][-1][0] > 30:
            groups.append([])
        groups[-1].append((seconds, values))
    return [(group[0][0], [median(column) for column in zip(*(values for _, values in group))]) for group in groups]


def times(rows, name, begin, end):
    return sorted(values[0] for seconds, each, values in rows["latency"] if each == name and begin <= seconds < end)


def percentiles(values):
    return f"{median(values):.0f} / {values[min(len(values) - 1, int(.95 * len(values)))]:.0f}" if values else "-"


def table(rows, step, last):
    print("| Until minute | Resident, MB | Anonymous, MB | Descriptors | Threads | Log, KB | Processor, % | Lines used, % "
          "| 120 LEDs, ms | 300 LEDs, ms | Click, ms | Faults | Longest dark, s |\n|" + "---|" * 13)
    before, end = rests(rows)[0], 0
    while end < last:
        begin, end = end, end + step
        calm = [rest for rest in rests(rows) if begin <= rest[0] < end]
        if not calm:
            continue
        memory, anonymous, files, threads, _, _ = (median(column) for column in zip(*(values for _, values in calm)))
        log, cpu = (calm[-1][1][i] - before[1][i] for i in (4, 5))
        lines = [100 * values[0] for seconds, _, values in rows["line"] if begin <= seconds < end]
        dark = [values[0] / 1000 for seconds, _, values in rows["fault"] if begin <= seconds < end]
        latencies = " | ".join(percentiles(times(rows, name, begin, end)) for name in ("120", "300", "click"))
        print(f"| {min(end, last) / 60:.0f} | {memory:.1f} | {anonymous:.1f} | {files:.0f} | {threads:.0f} | {log / 1024:.0f} "
              f"| {100 * cpu / max(calm[-1][0] - before[0], 1):.1f} | {min(lines, default=0):.0f} to {max(lines, default=0):.0f} | {latencies} "
              f"| {len(dark)} | {max(dark, default=0):.1f} |")
        before = calm[-1]


def verdict(rows, last):
    settled = SETTLED_S if last >= 2 * SETTLED_S else last / 4
    span = min(SPAN_S, (last - settled) / 2)
    quiet = rests(rows)
    early = [values for seconds, values in quiet if settled <= seconds < settled + span]
    late = [values for seconds, values in quiet if seconds >= last - span]
    if not early or not late:
        print("\nToo short for a verdict.")
        return False
    # Some threads live for half a minute longer than they are needed: of those and of files the least tells.
    memory = median(values[0] for values in late) - median(values[0] for values in early)
    files, threads = (min(values[i] for values in late) - min(values[i] for values in early) for i in (2, 3))
    print(f"\nFrom minutes {settled / 60:.0f} to {(settled + span) / 60:.0f} to the last {span / 60:.0f}: {memory:+.1f} MB "
          f"resident (limit {GROWTH_MB}), {files:+.0f} descriptors, {threads:+.0f} threads; {len(rows['effect'])} effects.")
    kinds = {}
    for _, name, values in rows["fault"]:
        kinds.setdefault(name, []).append(values[0] / 1000)
    print(f"{len(rows['fault'])} faults; until all was lit again it took at most, in seconds: " +
          ", ".join(f"{name} {max(each):.1f}" for name, each in sorted(kinds.items(), key=lambda kind: -max(kind[1]))) + ".")
    troubles = {}
    for seconds, name, values in rows["trouble"]:
        troubles.setdefault(" ".join([name, *map("{:.0f}".format, values)]), []).append(seconds / 60)
    for name, minutes in troubles.items():
        print(f"Trouble: {name}, {len(minutes)} times, first at minute {minutes[0]:.0f}.")
    for _, name, values in rows["end"]:
        print(f"The program {name}, {values[0]:.0f} strips were lit then.")
    good = (memory <= GROWTH_MB and files <= 0 and threads <= 0 and not rows["trouble"]
            and all(name == "ended" and not values[0] for _, name, values in rows["end"]))
    print("Good." if good else "NOT GOOD.")
    return good


def panel(number, title, series, last):
    """Lines of (class, name, points); where the name begins with a dot, ticks from the ground."""
    top, right = 30 + number * (PANEL + GAP), WIDTH - RIGHT
    values = [value for *_, points in series for _, value in points] or [0]
    low, high = min(values), max(values)
    margin = max((high - low) * .1, .5)
    low, high = 0 if low < high / 2 else low - margin, high + margin
    x = lambda seconds: f"{LEFT + seconds / last * (right - LEFT):.1f}"
    y = lambda value: f"{top + PANEL - (value - low) / (high - low) * PANEL:.1f}"
    out = [f'<text x="{LEFT}" y="{top - 8}">{title}</text>']
    for value in (low, (low + high) / 2, high):
        out.append(f'<path class="grid" d="M{LEFT} {y(value)}H{right}"/><text x="{LEFT - 6}" y="{y(value)}" '
                   f'dy="4" text-anchor="end">{value:.1f}</text>')
    for eighth in range(9):
        out.append(f'<text x="{x(last * eighth / 8)}" y="{top + PANEL + 15}" text-anchor="middle">{last * eighth / 480:.0f}</text>')
    for i, (style, name, points) in enumerate(series):
        if name.startswith("."):
            path = "".join(f"M{x(seconds)} {y(low)}V{y(value)}" for seconds, value in points)
        else:
            path = "".join(f"{'L' if n else 'M'}{x(seconds)} {y(value)}" for n, (seconds, value) in enumerate(points))
        out.append(f'<text class="{style}" x="{right - 110 * i}" y="{top - 8}" text-anchor="end">{name.lstrip(".")}</text>'
                   f'<path class="{style}" d="{path}"/>')
    return "\n".join(out)


def picture(rows, last, path):
    rest = lambda column: [(seconds, values[column]) for seconds, values in rests(rows)]
    latency = lambda name: [(seconds, median(each)) for seconds, _ in rests(rows)
                            if (each := times(rows, name, seconds, seconds + 60))]
    panels = [
        ("Memory at rest, MB, over minutes", [("a", "resident", rest(0)), ("b", "anonymous", rest(1))]),
        ("Descriptors and threads at rest", [("a", "descriptors", rest(2)), ("b", "threads", rest(3))]),
        ("From picture to last byte, median, ms", [("a", "120 LEDs", latency("120")), ("b", "300 LEDs", latency("300"))]),
        ("From the end of a fault until all is lit, s",
         [("b", ".faults", [(seconds, values[0] / 1000) for seconds, _, values in rows["fault"]])]),
    ]
    height = 30 + len(panels) * (PANEL + GAP)
    with open(path, "w") as file:
        file.write(f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {height}"><style>{STYLE}</style>'
                   f'<rect width="{WIDTH}" height="{height}"/>\n' +
                   "\n".join(panel(number, *each, last) for number, each in enumerate(panels)) + "\n</svg>\n")


rows = read(sys.argv[1])
if not rows["rest"]:
    sys.exit("soak-report.py: nothing was measured so far")
last = max(row[0] for each in rows.values() for row in each)
table(rows, 900 if last >= 3600 else max(60, last / 6), last)
if len(sys.argv) > 2:
    picture(rows, last, sys.argv[2])
sys.exit(not verdict(rows, last))
