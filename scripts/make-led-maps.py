#!/usr/bin/env python3
"""Writes the LED map of every model into data/controler_config: where each LED lies on a small model of
the screen. The maps are kept in the repository; run this after a change here or in LVController.json.

Also set for the music modes: key_num, 0 where the user may change the length, and key_music, the segments
that a matrix shows as bars.
"""
import json
import math
import pathlib

FOLDER = pathlib.Path(__file__).resolve().parent.parent / "data" / "controler_config"
WIDE = (120, 67)        # 16 to 9
ULTRAWIDE = (156, 67)   # 21 to 9
INSET = 2               # a bezel's distance from the edge, canvas pixels


def along(corners, count):
    """`count` points at equal distances along a line through the corners, both ends included."""
    legs = list(zip(corners, corners[1:]))
    lengths = [math.dist(a, b) for a, b in legs]
    points = []
    for i in range(count):
        at = sum(lengths) * i / (count - 1)
        for (a, b), length in zip(legs, lengths):
            if at <= length + 1e-9:
                break
            at -= length
        share = min(1.0, at / length)
        points.append((a[0] + (b[0] - a[0]) * share, a[1] + (b[1] - a[1]) * share))
    return points


def three_sides(canvas, count):
    """Up the left edge from the bottom, across the top, down the right edge."""
    left, top, right, bottom = INSET, INSET, canvas[0] - 1 - INSET, canvas[1] - 1 - INSET
    return along([(left, bottom), (left, top), (right, top), (right, bottom)], count)


def four_sides(canvas, count):
    """All around, from the middle of the bottom to the left."""
    left, top, right, bottom = INSET, INSET, canvas[0] - 1 - INSET, canvas[1] - 1 - INSET
    middle = (canvas[0] - 1) / 2
    corners = [(middle, bottom), (left, bottom), (left, top), (right, top), (right, bottom), (middle, bottom)]
    return along(corners, count + 1)[:-1]


def line(canvas, count, y):
    return along([(INSET, y), (canvas[0] - 1 - INSET, y)], count)


def ring(canvas, count):
    """Clockwise from the bottom, as the cable leaves it."""
    cx, cy, r = (canvas[0] - 1) / 2, (canvas[1] - 1) / 2, canvas[1] / 2 - INSET - 1
    angles = (2 * math.pi * i / count for i in range(count))
    return [(cx - r * math.sin(a), cy + r * math.cos(a)) for a in angles]


def matrix(canvas, columns, rows):
    """As it is wired: from the bottom left, each row back the way the one below came."""
    points = []
    for row in range(rows):
        order = range(columns) if row % 2 == 0 else reversed(range(columns))
        points += [((column + 0.5) * canvas[0] / columns - 0.5,
                    canvas[1] - 0.5 - (row + 0.5) * canvas[1] / rows) for column in order]
    return points


def matrix_bars(columns, rows):
    """One bar a row, all growing from the left."""
    return [{"id": row + 1, "start": row * columns + 1, "stop": (row + 1) * columns,
             "direction": 1 if row % 2 == 0 else 0} for row in range(rows)]


MODELS = {
    "LV0124": (WIDE, lambda c, n: three_sides(c, n)),
    "LV0127": (WIDE, lambda c, n: three_sides(c, n)),
    "LV0132": (WIDE, lambda c, n: four_sides(c, n)),
    "LV0134": (ULTRAWIDE, lambda c, n: four_sides(c, n)),
    "LV0203": (WIDE, lambda c, n: three_sides(c, n)),
    "LV0B40": (WIDE, lambda c, n: line(c, n, INSET)),
    "LV0N02": (WIDE, lambda c, n: matrix(c, 16, 8)),
    "LV0N03": (WIDE, lambda c, n: matrix(c, 23, 11)),
    "LV0R24": (WIDE, lambda c, n: ring(c, n)),
    "LV0S60": (WIDE, lambda c, n: line(c, n, WIDE[1] - 1 - INSET)),
}
BARS = {"LV0N02": matrix_bars(16, 8), "LV0N03": matrix_bars(23, 11)}


def write(model, entry):
    canvas, place = MODELS[model]
    points = place(canvas, entry["nbLeds"])
    assert len(points) == entry["nbLeds"], model
    head = {"key_len": canvas[0], "key_wid": canvas[1], "screenWidth": canvas[0], "screenHeight": canvas[1],
            "key_num": 0 if entry["adjustableLength"] else entry["nbLeds"]}
    lists = {"key_music": BARS[model]} if model in BARS else {}
    lists["key_array"] = [{"id": i, "x": round(x), "y": round(y)} for i, (x, y) in enumerate(points, 1)]
    parts = [f"  {json.dumps(k)}: {v}" for k, v in head.items()]
    for key, items in lists.items():
        parts.append(f"  {json.dumps(key)}: [\n" + ",\n".join("    " + json.dumps(i) for i in items) + "\n  ]")
    (FOLDER / f"{model}.json").write_text("{\n" + ",\n".join(parts) + "\n}\n")


table = json.loads((FOLDER / "LVController.json").read_text())
assert set(table) == set(MODELS), "the table of models and this script disagree"
for name in MODELS:
    write(name, table[name])
