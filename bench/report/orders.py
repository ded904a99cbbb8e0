"""Finds the order of growth of a count, which is free of noise."""

import math

ORDERS = {"1": lambda n: 0.0, "log n": math.log2, "n": float, "n log n": lambda n: n * math.log2(n),
          "n²": lambda n: float(n) ** 2}


def misfit(counts, order):
    """How far the counts are from a fixed part and one that grows so: relative, root mean square."""
    rows = [(1 / count, order(size) / count) for size, count in counts.items()]
    # The least squares of a * x + b * y = 1.
    xx, xy, yy = (sum(row[i] * row[j] for row in rows) for i, j in ((0, 0), (0, 1), (1, 1)))
    x, y = (sum(row[i] for row in rows) for i in (0, 1))
    determinant = xx * yy - xy * xy
    if yy == 0 or determinant < 1e-12 * xx * yy:
        a, b = x / xx, 0.0
    else:
        a, b = (x * yy - y * xy) / determinant, (y * xx - x * xy) / determinant
    return math.sqrt(sum((a * row[0] + b * row[1] - 1) ** 2 for row in rows) / len(rows))


def find_order(counts):
    """The name of the order that fits best, and by how many percent it does not; constant where
    nothing grows by a twentieth."""
    if len(counts) < 3:
        return "", None
    if max(counts.values()) < 1.05 * min(counts.values()):
        return "1", 100 * misfit(counts, ORDERS["1"])
    grown = [name for name in ORDERS if name != "1"]
    best = min(grown, key=lambda name: misfit(counts, ORDERS[name]))
    return best, 100 * misfit(counts, ORDERS[best])
