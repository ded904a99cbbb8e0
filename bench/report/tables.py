"""Makes tables in Markdown of what was measured."""

from orders import find_order


def number(value):
    """Three digits."""
    if value is None:
        return ""
    if value >= 99.5:
        return f"{value:,.0f}"
    return f"{value:.1f}" if value >= 9.95 else f"{value:.2f}"


def instructions(value):
    """As exact as counts are."""
    return "" if value is None else f"{value:,.0f}" if value >= 100 else f"{value:.1f}"


def table(head, rows, rest="---:"):
    """The first column is text; the rest are numbers, unless said otherwise by a rule for them."""
    lines = ["| " + " | ".join(head) + " |", "|---|" + f"{rest}|" * (len(head) - 1)]
    lines += ["| " + " | ".join(row) + " |" for row in rows]
    return "\n".join(lines)


class Operation:
    """One operation: what was measured of each peer."""

    def __init__(self, times, counts):
        self.times = times
        self.counts = counts

    def ns(self, peer):
        """The median time of one item, or nothing."""
        return self.times[peer]["ns"] if peer in self.times else None

    def best_peer(self):
        """The fastest that does all that the operation asks for, or nothing."""
        peers = [peer for peer in self.times
                 if peer.split("[")[0] not in ("iokern", "limit", "floor") and "[less:" not in peer]
        return min(peers, key=self.ns, default=None)

    def ratio(self, peer, base):
        """How many times as long, as text; nothing where one is missing."""
        if peer not in self.times or base not in self.times:
            return ""
        return number(self.ns(peer) / self.ns(base))

    def rows(self):
        """One row for each peer, the fastest first."""
        best = self.best_peer()
        for peer in sorted(self.times, key=self.ns):
            one = self.times[peer]
            yield [f"**{peer}**" if peer == "iokern" else peer, number(one["ns"]),
                   f"{one['spread']:.0f}", instructions(self.counts.get(peer)),
                   self.ratio(peer, "limit"), self.ratio(peer, best), number(one["rate"])]

    def table(self):
        """The rows under their head, without columns that are empty throughout."""
        head = ["", "ns", "± %", "instructions", "× limit", "× best peer", "GB/s"]
        rows = list(self.rows())
        kept = [i for i in range(len(head)) if i == 0 or any(row[i] for row in rows)]
        return table([head[i] for i in kept], [[row[i] for i in kept] for row in rows])

    def summary(self, title):
        """One row for the summary."""
        best = self.best_peer()
        other = next((peer for peer in ("limit[gateway]", "floor", "limit[avx2]")
                      if peer in self.times), None)
        second = f"{self.ratio('iokern', other)} ({other})" if other else ""
        return [title, number(self.ns("iokern")), instructions(self.counts.get("iokern")),
                number(self.ns("limit")), self.ratio("iokern", "limit"), second,
                f"{self.ratio('iokern', best)} ({best})" if best else ""]


SUMMARY_HEAD = ["one item is", "ns", "instructions", "limit, ns", "× limit", "× other bound",
                "× best peer"]


def growth_tables(described, growth):
    """The orders, the times and the instructions of each container operation, by size."""
    orders, times, counts = [], [], []
    sizes = sorted({size for entry in growth.values() for size in entry["ns"]})
    for one in described:
        entry = growth.get(one["operation"])
        if not entry:
            continue
        found, misfit = find_order(entry["instructions"])
        orders.append([one["title"], entry["order"], found, percent(misfit),
                       percent(None if entry["rms"] is None else 100 * entry["rms"])])
        times.append([one["title"]] + [number(entry["ns"].get(size)) for size in sizes])
        counts.append([one["title"]] +
                      [instructions(entry["instructions"].get(size)) for size in sizes])
    columns = [f"{size:,}" for size in sizes]
    return "\n\n".join((
        table(["order", "stated", "by instructions", "± %", "times from the stated one, ± %"],
              orders),
        table(["ns for one pass", *columns], times),
        table(["instructions for one pass", *columns], counts)))


def percent(value):
    """Whole percents, or nothing."""
    return "" if value is None else f"{value:.0f}"
