#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""Makes the report or the plots from the results of the benchmarks in the build tree.

Every row of the report is a ratio of two measurements of the same run. Besides the library's own sections, the report has one
for each file *.json of the form
{"section": title, "rows": [{"name": ..., "value": ..., "against": ..., "ratio": ..., "target": ..., "goal": ...}]}.
Rows that have the same goal share a line of the table "Targets", which has the row's "short" name when there is one.
"""

import argparse
import json
import math
import re
import subprocess
from collections import defaultdict
from pathlib import Path

import targets

FRAMEWORK = "framework-res.apk"
SMALLEST_TABLE, LARGEST_TABLE = 100_000, 1_000_000  # bytes: the packages that have targets for time, with FRAMEWORK
MANIFEST_TARGET = 1.3
LAUNCHERS_TARGET = 0.1
EXPONENT_TARGET = 1.05
HELD_TARGET = 1.0
PEAK_TARGET = 2.0
PEAK_GOAL = "libsorrel: peak of the heap, against the members that are loaded"
HELD_GOAL = "libsorrel: table in memory, against its member"
MEMBERS = 65535
MEMBERS_TARGET = 10.0  # milliseconds
INSTRUCTIONS_TARGET = 1.05
BASELINE = Path(__file__).with_name("instructions.json")

QUERIES = [  # row, what it is called, target
    ("manifest", "resources() and getManifest()", MANIFEST_TARGET),
    ("resources", "resources()", None),
    ("package", "mainPackage() after that", None),
    ("sdk", "minSdkVersion() after that", None),
    ("launchers", "getLauncherInfo(false) after that, without pictures", LAUNCHERS_TARGET),
    ("pictures", "getLauncherInfo(false) after that, with pictures", None),
    ("table", "decoding the table alone", None),
    ("document", "decoding the manifest alone", None),
]


def seconds(value):
    for factor, unit in ((1, "s"), (1e3, "ms"), (1e6, "µs")):
        if value * factor >= 1:
            return f"{value * factor:.3g} {unit}" if value * factor < 1000 else f"{value * factor:.0f} {unit}"
    return f"{value * 1e9:.0f} ns"


def size(value):
    for factor, unit in ((1e6, "MB"), (1e3, "kB")):
        if value >= factor:
            return f"{value / factor:.4g} {unit}"
    return f"{value:.0f} bytes"


def row(name, value, against, target=None, show=seconds, goal=None):
    return {"name": name, "value": show(value), "against": show(against), "ratio": value / against, "target": target,
            "goal": goal if target is not None else None}


def verdict(measured, target):
    if not isinstance(target, (int, float)) or not isinstance(measured, (int, float)):
        return "", ""
    return f"≤ {target:g}", "yes" if measured <= target else "**no**"


def shown(value):
    if isinstance(value, float):
        return f"{value:.3f}" if value < 10 else f"{value:,.1f}"
    return "" if value is None else str(value)


def print_table(header, lines):
    yield "| " + " | ".join(header) + " |"
    yield "|" + "---|" * len(header)
    for line in lines:
        yield "| " + " | ".join(line) + " |"
    yield ""


def print_rows(title, text, rows):
    yield f"## {title}\n"
    if text:
        yield text + "\n"
    lines = []
    for item in rows:
        target, met = verdict(item.get("ratio"), item.get("target"))
        lines.append([item["name"], shown(item.get("value")), shown(item.get("against")), shown(item.get("ratio")),
                      target, met])
    yield from print_table(["what", "measured", "against", "ratio", "target", "met"], lines)


def medians(path):
    """The results of Google Benchmark by row: the median in seconds and the medians of the counters."""
    found = {}
    unit = {"ns": 1e-9, "us": 1e-6, "ms": 1e-3, "s": 1}
    for item in json.loads(path.read_text())["benchmarks"]:
        if item.get("error_occurred"):
            raise SystemExit(f"{item['name']}: {item['error_message']}")
        if item.get("aggregate_name") == "median":
            name = re.sub("/(iterations:|manual_time|real_time).*", "", item["run_name"])
            found[name] = {**item, "seconds": item["real_time"] * unit[item["time_unit"]]}
    return found


def has_time_targets(name, floor):
    return name == FRAMEWORK or SMALLEST_TABLE <= floor["table_bytes"] <= LARGEST_TABLE


def floor_rows(times, packages):
    parts = [("directory", "directory"), ("table", "table"), ("manifest", "manifest")]
    for name in packages:
        floor = times[f"floor/{name}"]
        for key, part in parts:
            yield row(f"{name}: {part}", floor[key], floor["seconds"])


def query_rows(times, packages):
    for query, title, target in QUERIES:
        for name in packages:
            floor = times[f"floor/{name}"]
            applies = has_time_targets(name, floor)
            yield {**row(f"{title}: {name}", times[f"{query}/{name}"]["seconds"], floor["seconds"],
                         target if applies else None, goal=f"libsorrel: {title}, against the ZIP library"), "short": name}


def exponent(points):
    """The exponent of the power law that fits best, by least squares of the logarithms."""
    logs = [(math.log(x), math.log(y)) for x, y in points]
    mean_x = sum(x for x, _ in logs) / len(logs)
    mean_y = sum(y for _, y in logs) / len(logs)
    return sum((x - mean_x) * (y - mean_y) for x, y in logs) / sum((x - mean_x) ** 2 for x, _ in logs)


def series_title(kind, shape):
    if kind == "manifest":
        return "manifest, by activities"
    configurations, fill = shape.split()
    plural = "" if configurations == "1" else "s"
    return f"table, {configurations} configuration{plural}, {'dense' if fill == 'dense' else 'mostly empty'}"


def in_order(series):
    """Sorts by the numbers in the titles, dense before mostly empty; results are in the order of measurement."""
    def place(title):
        kind, *shape = title.split(", ")
        return kind != "table", int(shape[0].split()[0]) if kind == "table" else 0, shape[-1]

    return {title: sorted(series[title]) for title in sorted(series, key=place)}


def time_growth(times):
    """The points (count, seconds to load, seconds to read, bytes) of each series."""
    series = defaultdict(list)
    for name, item in times.items():
        kind, shape, count, what = name.split("/")
        if what == "load":
            read = times[f"{kind}/{shape}/{count}/read"]["seconds"]
            series[series_title(kind, shape)].append((int(count), item["seconds"], read, item["bytes"]))
    return in_order(series)


def memory_growth(cases):
    """The points (count, peak, held, bytes) of each series."""
    series = defaultdict(list)
    for case in cases:
        kind, *rest = case["name"].split("/")
        if kind == "table":
            title, count, length = series_title(kind, " ".join(rest[1:])), case["values"], case["table_bytes"]
        elif kind == "manifest":
            title, count, length = series_title(kind, None), case["activities"], case["manifest_bytes"]
        else:
            continue
        series[title].append((count, case["peak"], case["held"], length))
    return in_order(series)


def query_growth(times):
    """The points (count, seconds) of each query of the kit, by what grows."""
    series = defaultdict(list)
    for name, item in times.items():
        query, what, count = name.split("/")
        series[f"{query}, by {what}"].append((int(count), item["seconds"]))
    return {title: sorted(series[title]) for title in sorted(series)}


def growth_rows(series, columns, show, goal):
    for title, points in series.items():
        for column, what in columns:
            first, last = points[0], points[-1]
            power = exponent([(point[0], point[column]) for point in points])
            yield {"name": f"{title}: {what}" if what else title, "value": f"{last[0]:,}: {show(last[column])}",
                   "against": f"{first[0]:,}: {show(first[column])}", "growth": last[column] / first[column],
                   "ratio": power, "target": EXPONENT_TARGET, "goal": goal}


def print_growth(title, text, rows):
    yield f"## {title}\n"
    yield text + "\n"
    lines = [[item["name"], item["value"], item["against"], f"{item['growth']:,.0f}", f"{item['ratio']:.3f}",
              *verdict(item["ratio"], item["target"])] for item in rows]
    yield from print_table(["series", "largest", "smallest", "ratio", "exponent", "target", "met"], lines)


def member_rows(series):
    """The time to open the package with the most members."""
    for count, value in series["package name, by members"]:
        if count == MEMBERS:
            yield {"name": f"{count:,} members", "ratio": value * 1000, "target": MEMBERS_TARGET,
                   "goal": f"the kit: opening {count:,} members and returning the package name, in milliseconds"}


def case_name(title, count):
    return f"{title}: {count:,}"


def load_rows(series):
    for title, points in series.items():
        for count, load, read, _ in points:
            yield row(case_name(title, count), load, read)


def memory_rows(series):
    for title, points in series.items():
        is_table = title.startswith("table")
        for count, peak, held, length in points:
            name = case_name(title, count)
            yield row(f"{name}, peak", peak, length, PEAK_TARGET if is_table else None, size, PEAK_GOAL)
            yield row(f"{name}, held", held, length, HELD_TARGET if is_table else None, size, HELD_GOAL)


def package_memory_rows(cases):
    for case in cases:
        if case["name"].startswith("package/"):
            name = case["name"].split("/")[1]
            applies = case["table_bytes"] >= SMALLEST_TABLE
            yield row(f"{name}: peak of resources() and getManifest(), against both members", case["peak"],
                      case["table_bytes"] + case["manifest_bytes"], PEAK_TARGET if applies else None, size, PEAK_GOAL)
            yield row(f"{name}: peak of the ZIP library alone, against both members", case["floor_peak"],
                      case["table_bytes"] + case["manifest_bytes"], show=size)
            yield row(f"{name}: table kept, against its member", case["held"], case["table_bytes"],
                      HELD_TARGET if applies else None, size, HELD_GOAL)


def instruction_rows(counts):
    for name, count in counts.items():
        what, package = name.split("/")
        if what != "floor":
            yield row(name, count, counts[f"floor/{package}"], show=lambda number: f"{number:,}")


def baseline_rows(counts):
    baseline = json.loads(BASELINE.read_text())["counts"]
    for name in sorted(counts.keys() & baseline.keys()):
        yield row(name, counts[name], baseline[name], INSTRUCTIONS_TARGET, show=lambda number: f"{number:,}",
                  goal="instructions, against bench/instructions.json")


def icon_rows(times):
    for name in sorted({name.rsplit("/", 1)[0] for name in times}):
        yield row(name, times[f"{name}/icon"]["seconds"], times[f"{name}/Qt"]["seconds"])


def other_sections(directory):
    """The sections that other programs have written: title and rows."""
    for path in sorted(directory.glob("*.json")):
        content = json.loads(path.read_text())
        if isinstance(content, dict) and "section" in content:
            yield content["section"], content["rows"]


def memory_cases(directory):
    return [json.loads(line) for line in (directory / "memory.jsonl").read_text().splitlines()]


def report(directory):
    times = medians(directory / "packages.json")
    growth = time_growth(medians(directory / "growth.json"))
    queries = query_growth(medians(directory / "queries.json"))
    icons = medians(directory / "icons.json")
    cases = memory_cases(directory)
    grown = memory_growth(cases)
    counts = json.loads((directory / "instructions.json").read_text())["counts"]
    packages = sorted((name.split("/")[1] for name in times if name.startswith("floor/")),
                      key=lambda name: times[f"floor/{name}"]["table_bytes"])

    ours = {
        "queries": [*query_rows(times, packages)],
        "growth": [*growth_rows(growth, [(1, "time")], seconds, "libsorrel: growth of loading, exponent"),
                   *growth_rows(grown, [(1, "peak"), (2, "held")], size, "libsorrel: growth of memory, exponent")],
        "kit": [*growth_rows(queries, [(1, "")], seconds, "the kit: growth of every query, exponent")],
        "members": [*member_rows(queries)],
        "memory": [*memory_rows(grown)],
        "packages": [*package_memory_rows(cases)],
        "baseline": [*baseline_rows(counts)],
    }
    others = [*other_sections(directory)]

    yield "# Measurements\n"
    yield ("Times are medians of repeated runs, in wall time. Targets for time are those of packages whose table has "
           f"{size(SMALLEST_TABLE)} to {size(LARGEST_TABLE)}, and of {FRAMEWORK}; those for memory, of every table of "
           f"at least {size(SMALLEST_TABLE)}.\n")
    yield "## Targets\n"
    yield "Each line shows the measurement that is furthest from the target.\n"
    yield from print_table(targets.HEADER, targets.lines(
        [*(item for _, rows in others for item in rows), *(item for rows in ours.values() for item in rows)]))
    yield from print_rows("Floor", "What the ZIP library alone takes to open a package and find the table and the "
                          "manifest (directory), and to read both: the parts against their sum.",
                          floor_rows(times, packages))
    yield from print_rows("Queries against the floor", "Each from an object made anew, against the floor of the same "
                          "package. Without pictures, icon references are resolved, and no file is looked for.",
                          ours["queries"])
    yield from print_growth("Growth", "From the smallest to the largest of four sizes; the exponent is that of the power "
                            "law that fits the four best. Time is that of loading alone, out of memory; peak and held "
                            "are bytes on the heap while loading and afterwards.", ours["growth"])
    yield from print_growth("Growth of the kit's queries", "Each opens a package by its name and makes one query.",
                            ours["kit"])
    yield from print_rows("Loading against reading", "Loading out of memory, against reading the same bytes through "
                          "the same device and taking nothing from them.", load_rows(growth))
    yield from print_rows("Memory against the member", "Bytes on the heap, against the bytes of the table or the "
                          "manifest that was loaded.", ours["memory"])
    yield from print_rows("Memory of packages", None, ours["packages"])
    yield from print_rows("Instructions", "Instructions of a row, against those of the floor of the same package.",
                          instruction_rows(counts))
    yield from print_rows("Icons", "Drawing an icon of 96 pixels with the kit, against painting the same paths, or "
                          "decoding and scaling the same file, with Qt alone.", icon_rows(icons))
    for title, rows in others:
        yield from print_rows(title, None, rows)


def plot(path, label, series, column, factor):
    """A log-log plot with a line for each series."""
    commands = [
        "set terminal svg size 900,760 dynamic background rgb 'white' font 'sans-serif,13'",
        "set logscale xy",
        "set grid",
        "set key bmargin center vertical maxrows 8 reverse Left",
        "set format y '%g'",
        "set xlabel 'values of a table, activities of a manifest'",
        f"set ylabel '{label}'",
    ]
    lines, data = [], []
    for title, points in series.items():
        power = exponent([(point[0], point[column]) for point in points])
        lines.append(f"'-' with linespoints linewidth 1.5 title '{title}: exponent {power:.2f}'")
        data += [f"{point[0]} {point[column] * factor}" for point in points] + ["e"]
    script = "\n".join(commands + ["plot " + ", ".join(lines)] + data) + "\n"
    drawn = subprocess.run(["gnuplot"], input=script, text=True, check=True, stdout=subprocess.PIPE).stdout
    path.write_text(drawn.replace("<title>Gnuplot</title>", f"<title>{label}</title>"))


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("directory", type=Path, help="the build tree, with the results in it")
    parser.add_argument("--plots", type=Path, metavar="DIRECTORY", help="write the plots of growth there instead")
    arguments = parser.parse_args()

    if arguments.plots:
        growth = time_growth(medians(arguments.directory / "growth.json"))
        plot(arguments.plots / "growth-time.svg", "time to load, ms", growth, 1, 1e3)
        plot(arguments.plots / "growth-memory.svg", "peak of the heap while loading, MB",
             memory_growth(memory_cases(arguments.directory)), 1, 1e-6)
        return
    text = "\n".join(report(arguments.directory))
    (arguments.directory / "report.md").write_text(text + "\n")
    print(text)


if __name__ == "__main__":
    main()
