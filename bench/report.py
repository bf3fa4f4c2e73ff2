"""The table of results."""


class Table:
    HEADINGS = ("what", "ours", "peer", "ratio", "wanted", "")

    def __init__(self):
        self._rows = []
        self._missed = 0

    def ratio(self, what, ours, peer, unit, at_most, aim=None):
        """`ours` at most `at_most` times `peer`, better `aim` times."""
        ratio = ours / peer
        self._add(what, amount(ours, unit), amount(peer, unit), f"{ratio:.2f}", ratio, at_most, aim,
                  "")

    def limit(self, what, ours, unit, at_most, aim=None):
        self._add(what, amount(ours, unit), "", "", ours, at_most, aim, unit)

    def floor(self, what, ours, unit, at_least):
        met = ours >= at_least
        self._missed += not met
        self._rows.append((what, amount(ours, unit), "", "", f">= {amount(at_least, unit)}",
                           "met" if met else "MISSED"))

    def note(self, what, ours, unit):
        """A figure to compare by eye."""
        self._rows.append((what, amount(ours, unit), "", "", "", ""))

    def _add(self, what, ours, peer, ratio, value, at_most, aim, unit):
        wanted = f"<= {amount(at_most, unit)}"
        if aim is not None:
            wanted += f", aim {amount(aim, unit)}"
        verdict = "met" if value <= at_most else "MISSED"
        if verdict == "met" and aim is not None:
            verdict = "aim met" if value <= aim else "met, not the aim"
        self._missed += verdict == "MISSED"
        self._rows.append((what, ours, peer, ratio, wanted, verdict))

    def all_met(self):
        return self._missed == 0

    def text(self):
        rows = [self.HEADINGS, *self._rows]
        widths = [max(len(row[column]) for row in rows) for column in range(len(self.HEADINGS))]
        return "\n".join(self._line(row, widths).rstrip() for row in rows)

    @staticmethod
    def _line(row, widths):
        numbers = range(1, 4)
        return "  ".join(cell.rjust(width) if column in numbers else cell.ljust(width)
                         for column, (cell, width) in enumerate(zip(row, widths)))

    def markdown(self, rounds):
        lines = ["# Results of bench/run", "", f"Medians of {rounds} runs; processor time unless "
                 "a row says \"elapsed\".", "", "| " + " | ".join(self.HEADINGS) + " |",
                 "|---|--:|--:|--:|---|---|"]
        lines += ["| " + " | ".join(row) + " |" for row in self._rows]
        return "\n".join(lines) + "\n"


def amount(value, unit):
    digits = 0 if value == int(value) or value >= 100 else 1 if value >= 10 else 2
    return f"{value:.{digits}f} {unit}".strip()
