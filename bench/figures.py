# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""The results of a run: rows with a figure and its floor, and curves over the number of printers."""

import math
import statistics


def row(name, unit, values, floors=None, limit=None, in_unit=False):
    """One line of the table. `value` and `floor` are medians in `unit`; `ratio` is their quotient. `min` and `max` are
    the extremes of the ratio over the rounds, or of the value if there is no floor. `limit` is the highest ratio, or
    with `in_unit` the highest value; a row without a limit has no goal."""
    value = statistics.median(values)
    result = {"name": name, "unit": unit, "value": value, "floor": None, "ratio": None, "min": min(values),
              "max": max(values), "goal": None, "met": None}
    if floors:
        floor = statistics.median(floors)
        ratios = [one / other for one, other in zip(values, floors)]
        result.update(floor=floor, ratio=value / floor, min=min(ratios), max=max(ratios))
    if limit is not None:
        result["goal"] = f"≤ {limit} {unit}" if in_unit else f"≤ {limit} ×"
        result["met"] = (value if in_unit else result["ratio"]) <= limit
    return result


def curve(name, unit, points, base=0):
    """`points` are figures by number of printers; `base` is the figure without printers. The exponent says how the
    difference grows with the number of printers."""
    return {"name": name, "unit": unit, "points": points, "exponent": _exponent(points, base)}


def _exponent(points, base):
    """The slope of the best-fitting line on logarithmic axes."""
    logs = [(math.log(count), math.log(value - base)) for count, value in points.items() if value > base]
    if len(logs) < 2:
        return None
    middle_x = statistics.mean(x for x, _ in logs)
    middle_y = statistics.mean(y for _, y in logs)
    return (sum((x - middle_x) * (y - middle_y) for x, y in logs) / sum((x - middle_x) ** 2 for x, _ in logs))
