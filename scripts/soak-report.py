#!/usr/bin/env python3
"""Makes a table (Markdown, to standard output) and a picture (SVG) of what a soak has written; fails unless it was good.
Usage: soak-report.py FILE.csv [FILE.svg]"""
import csv
import sys
from statistics import median

GROWTH_MB = 2
SETTLED_S = 600
WIDTH, HEIGHT, LEFT, PANEL, GAP = 760, 660, 60, 120, 44
STYLE = """svg{background:#fff;color:#1c2430;font:12px sans-serif}text{fill:currentColor}.grid{stroke:currentColor;
opacity:.15}.a,.b,.c{fill:none;stroke-width:2}.a{stroke:#1769c4}.b{stroke:#c2410c}.c{stroke:#15803d}.fa{fill:#1769c4}
.fb{fill:#c2410c}.fc{fill:#15803d}@media(prefers-color-scheme:dark){svg{background:#14181f;color:#e4e9f0}
.a{stroke:#6db1ff}.b{stroke:#ff9d66}.c{stroke:#6fdc8c}.fa{fill:#6db1ff}.fb{fill:#ff9d66}.fc{fill:#6fdc8c}}"""


def read(path):
    rows = {}
    with open(path, newline="") as file:
        for kind, seconds, name, *values in csv.reader(file):
            rows.setdefault(kind, []).append((float(seconds), name, [float(each) for each in values]))
    return rows


def share(values, part):
    return sorted(values)[min(len(values) - 1, int(part * len(values)))] if values else None


def text(value, digits=0):
    return "-" if value is None else f"{value:.{digits}f}"


def rests(rows):
    """One line for each rest: seconds and the medians of what was read in it."""
    groups = []
    for seconds, _, values in rows.get("rest", []):
        if not groups or seconds - groups[-1][-1][0] > 30:
            groups.append([])
        groups[-1].append((seconds, values))
    return [(group[0][0], [median(column) for column in zip(*(values for _, values in group))]) for group in groups]


def table(rows, step, last):
    quiet = rests(rows)
    print("| Minutes | Resident, MB | Anonymous, MB | Descriptors | Threads | Log, KB | CPU, % of a core | Line used, % "
          "| 120 LEDs, ms | 300 LEDs, ms | Click, ms | Faults | Longest dark, s |")
    print("|" + "---|" * 13)
    end, cpu, log = 0, 0, 0
    while end < last:
        begin, end = end, end + step
        inside = lambda kind: [row for row in rows.get(kind, []) if begin <= row[0] < end]
        calm = [values for seconds, values in quiet if begin <= seconds < end]
        samples = [row[2] for row in inside("sample")]
        if not calm or not samples:
            continue
        columns = [median(column) for column in zip(*calm)]
        times = lambda name: [row[2][0] for row in inside("latency") if row[1] == name]
        both = lambda name: f"{text(share(times(name), .5))} / {text(share(times(name), .95))}"
        faults = [row[2][0] for row in inside("fault")]
        lines = [row[2][0] for row in inside("line")]
        span = min(end, last) - begin
        print(f"| {min(end, last) / 60:.0f} | {columns[0]:.1f} | {columns[1]:.1f} | {columns[2]:.0f} | {columns[3]:.0f} "
              f"| {(samples[-1][4] - log) / 1024:.0f} | {100 * (samples[-1][5] - cpu) / span:.1f} "
              f"| {100 * min(lines):.0f} | {both('120')} | {both('300')} | {both('click')} | {len(faults)} "
              f"| {text(max(faults) / 1000 if faults else None, 1)} |")
        log, cpu = samples[-1][4], samples[-1][5]


def verdict(rows, last):
    quiet = rests(rows)
    settled = next((each for each in quiet if each[0] >= min(SETTLED_S, last / 4)), None)
    good = settled is not None and settled is not quiet[-1]
    if good:
        _, grown = settled[0], [now - then for now, then in zip(quiet[-1][1], settled[1])]
        good = grown[0] <= GROWTH_MB and grown[2] <= 0 and grown[3] <= 0
        print(f"\nFrom minute {settled[0] / 60:.0f} to minute {quiet[-1][0] / 60:.0f}: {grown[0]:+.1f} MB resident (limit "
              f"{GROWTH_MB}), {grown[2]:+.0f} descriptors, {grown[3]:+.0f} threads.")
    faults, effects = rows.get("fault", []), rows.get("effect", [])
    dark = [row for row in faults if row[2][0] < 0]
    print(f"{len(faults)} faults of {len({row[1] for row in faults})} kinds, {len(dark)} without light after them; "
          f"{len(effects)} effects.")
    kinds = {}
    for _, name, values in faults:
        kinds.setdefault(name, []).append(values[0] / 1000)
    print("Longest until all is lit again, s: " +
          ", ".join(f"{name} {max(times):.1f}" for name, times in sorted(kinds.items(), key=lambda kind: -max(kind[1]))) + ".")
    for seconds, name, values in rows.get("trouble", []):
        print(f"Trouble at minute {seconds / 60:.1f}: {name} {' '.join(map(str, values))}")
    ends = rows.get("end")
    if ends:
        print(f"The program {ends[-1][1]}, {ends[-1][2][0]:.0f} strips were lit then.")
    good = good and not dark and not rows.get("trouble") and (not ends or (ends[-1][1] == "ended" and not ends[-1][2][0]))
    print("Good." if good else "NOT GOOD.")
    return good


def panel(number, title, series, last):
    """Lines (class, name, points) or, where the name begins with a dot, ticks from the ground."""
    top = 30 + number * (PANEL + GAP)
    values = [value for _, _, points in series for _, value in points] or [0]
    low, high = min(values), max(values)
    low = 0 if low < high / 2 else low - max((high - low) * .1, 1)
    high += max((high - low) * .1, 1)
    x = lambda seconds: LEFT + seconds / last * (WIDTH - LEFT - 20)
    y = lambda value: top + PANEL - (value - low) / (high - low) * PANEL
    out = [f'<text x="{LEFT}" y="{top - 8}">{title}</text>']
    for i in range(3):
        value = low + (high - low) * i / 2
        out.append(f'<path class="grid" d="M{LEFT} {y(value):.1f}H{WIDTH - 20}"/>'
                   f'<text x="{LEFT - 6}" y="{y(value) + 4:.1f}" text-anchor="end">{value:.{0 if high > 10 else 1}f}</text>')
    for i in range(9):
        out.append(f'<text x="{x(last * i / 8):.1f}" y="{top + PANEL + 15}" text-anchor="middle">{last * i / 480:.0f}</text>')
    for i, (style, name, points) in enumerate(series):
        out.append(f'<text class="f{style}" x="{WIDTH - 20 - 110 * i}" y="{top - 8}" text-anchor="end">{name.lstrip(".")}</text>')
        if name.startswith("."):
            path = "".join(f"M{x(s):.1f} {y(low):.1f}V{y(v):.1f}" for s, v in points)
        else:
            path = "".join(f"{'L' if n else 'M'}{x(s):.1f} {y(v):.1f}" for n, (s, v) in enumerate(points))
        out.append(f'<path class="{style}" d="{path}"/>')
    return "\n".join(out)


def picture(rows, last, path):
    quiet = rests(rows)
    rest = lambda column: [(seconds, values[column]) for seconds, values in quiet]

    def latencies(name):
        points = [(seconds, values[0]) for seconds, each, values in rows.get("latency", []) if each == name]
        groups = [[point for point in points if seconds <= point[0] < seconds + 120] for seconds, _ in quiet]
        return [(group[0][0], median(value for _, value in group)) for group in groups if group]

    faults = [(seconds, values[0] / 1000) for seconds, _, values in rows.get("fault", [])]
    panels = [
        ("Memory at rest, MB, over minutes", [("a", "resident", rest(0)), ("b", "anonymous", rest(1))]),
        ("Descriptors and threads at rest", [("a", "descriptors", rest(2)), ("b", "threads", rest(3))]),
        ("Picture to last byte, median, ms", [("a", "120 LEDs", latencies("120")), ("b", "300 LEDs", latencies("300"))]),
        ("After each fault, until all is lit again, s", [("c", ".faults", faults)]),
    ]
    with open(path, "w") as file:
        file.write(f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {HEIGHT}"><style>{STYLE}</style>\n')
        file.write("\n".join(panel(number, *each, last) for number, each in enumerate(panels)) + "\n</svg>\n")


def main():
    rows = read(sys.argv[1])
    last = max(row[0] for each in rows.values() for row in each)
    table(rows, 900 if last >= 3600 else max(60, last / 6), last)
    if len(sys.argv) > 2:
        picture(rows, last, sys.argv[2])
    return 0 if verdict(rows, last) else 1


if __name__ == "__main__":
    sys.exit(main())
