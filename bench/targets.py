# SPDX-License-Identifier: LGPL-2.1-or-later
"""The table of all targets: each target once, with the measurement that is furthest from it."""

HEADER = ["target", "at most", "measured", "met"]
NOT_MEASURED = "not measured"


def groups(rows):
    """The rows that have a goal, by its text, in the order of their first rows."""
    found = {}
    for row in rows:
        if row.get("goal"):
            found.setdefault(row["goal"], []).append(row)
    return found


def number(value):
    return f"{value:,.0f}" if value >= 1000 else f"{value:.3g}"


def line(goal, rows):
    """A line of the table. A target is not met when a row of it was not measured. Rows without a target have the
    number "measured" instead of a ratio."""
    limits = [row["target"] for row in rows if row.get("target") is not None]
    if not limits:
        return [goal, "", "; ".join(f"{number(row['measured'])} ({row['name']})" for row in rows), ""]
    limit = max(limits)
    measured = [row for row in rows if row.get("ratio") is not None]
    if not measured:
        return [goal, f"{limit:g}", NOT_MEASURED, "**no**"]
    good = sum(row["ratio"] <= limit for row in measured)
    worst = max(measured, key=lambda row: row["ratio"])
    text = number(worst["ratio"])
    if len(rows) > 1:
        text += f" ({worst.get('short', worst['name'])}); {good} of {len(rows)} meet it"
    return [goal, f"{limit:g}", text, "yes" if good == len(rows) else "**no**"]


def lines(rows):
    return [line(goal, members) for goal, members in groups(rows).items()]
