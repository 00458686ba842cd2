#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""Makes the report or the plots from the results of the benchmarks in the build tree.

Every row of the report is a ratio of two measurements of the same run. Besides the library's own sections, the report has one
for each file *.json of the form
{"section": title, "rows": [{"name": ..., "value": ..., "against": ..., "ratio": ..., "target": ...}]}.
"""

import argparse
import json
import math
import subprocess
from collections import defaultdict
from pathlib import Path

FRAMEWORK = "framework-res.apk"
SMALLEST_TABLE, LARGEST_TABLE = 100_000, 1_000_000  # bytes: the packages that have targets for time, with FRAMEWORK
MANIFEST_TARGET = 1.3
LAUNCHERS_TARGET = 0.1
EXPONENT_TARGET = 1.05
HELD_TARGET = 1.0
PEAK_TARGET = 2.0

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


def row(name, value, against, target=None, show=seconds):
    return {"name": name, "value": show(value), "against": show(against), "ratio": value / against, "target": target}


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
            name = item["run_name"].split("/iterations:")[0]
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
            yield row(f"{title}: {name}", times[f"{query}/{name}"]["seconds"], floor["seconds"],
                      target if applies else None)


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


def growth_lines(series, columns, show):
    for title, points in series.items():
        for column, what in columns:
            first, last = points[0], points[-1]
            power = exponent([(point[0], point[column]) for point in points])
            yield [f"{title}: {what}", f"{last[0]:,}: {show(last[column])}", f"{first[0]:,}: {show(first[column])}",
                   f"{last[column] / first[column]:,.0f}", f"{power:.3f}", *verdict(power, EXPONENT_TARGET)]


def print_growth(times, memory):
    yield "## Growth\n"
    yield ("From the smallest to the largest of four sizes; the exponent is that of the power law that fits the four "
           "best. Time is that of loading alone, out of memory; peak and held are bytes on the heap while loading and "
           "afterwards.\n")
    lines = [*growth_lines(times, [(1, "time")], seconds), *growth_lines(memory, [(1, "peak"), (2, "held")], size)]
    yield from print_table(["series", "largest", "smallest", "ratio", "exponent", "target", "met"], lines)


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
            yield row(f"{name}, peak", peak, length, PEAK_TARGET if is_table else None, show=size)
            yield row(f"{name}, held", held, length, HELD_TARGET if is_table else None, show=size)


def package_memory_rows(cases):
    for case in cases:
        if case["name"].startswith("package/"):
            name = case["name"].split("/")[1]
            applies = case["table_bytes"] >= SMALLEST_TABLE
            yield row(f"{name}: peak of resources() and getManifest(), against both members", case["peak"],
                      case["table_bytes"] + case["manifest_bytes"], PEAK_TARGET if applies else None, show=size)
            yield row(f"{name}: peak of the ZIP library alone, against both members", case["floor_peak"],
                      case["table_bytes"] + case["manifest_bytes"], show=size)
            yield row(f"{name}: table kept, against its member", case["held"], case["table_bytes"],
                      HELD_TARGET if applies else None, show=size)


def instruction_rows(counts):
    for name, count in counts.items():
        what, package = name.split("/")
        if what != "floor":
            yield row(name, count, counts[f"floor/{package}"], show=lambda number: f"{number:,}")


def other_sections(directory):
    for path in sorted(directory.glob("*.json")):
        content = json.loads(path.read_text())
        if isinstance(content, dict) and "section" in content:
            yield from print_rows(content["section"], None, content["rows"])


def memory_cases(directory):
    return [json.loads(line) for line in (directory / "memory.jsonl").read_text().splitlines()]


def report(directory):
    times = medians(directory / "packages.json")
    growth = time_growth(medians(directory / "growth.json"))
    cases = memory_cases(directory)
    grown = memory_growth(cases)
    counts = json.loads((directory / "instructions.json").read_text())["counts"]
    packages = sorted((name.split("/")[1] for name in times if name.startswith("floor/")),
                      key=lambda name: times[f"floor/{name}"]["table_bytes"])

    yield "# Measurements\n"
    yield ("Times are medians of repeated runs, in wall time. Targets for time are those of packages whose table has "
           f"{size(SMALLEST_TABLE)} to {size(LARGEST_TABLE)}, and of {FRAMEWORK}; those for memory, of every table of "
           f"at least {size(SMALLEST_TABLE)}.\n")
    yield from print_rows("Floor", "What the ZIP library alone takes to open a package and find the table and the "
                          "manifest (directory), and to read both: the parts against their sum.",
                          floor_rows(times, packages))
    yield from print_rows("Queries against the floor", "Each from an object made anew, against the floor of the same "
                          "package. Without pictures, icon references are resolved, and no file is looked for.",
                          query_rows(times, packages))
    yield from print_growth(growth, grown)
    yield from print_rows("Loading against reading", "Loading out of memory, against reading the same bytes through "
                          "the same device and taking nothing from them.", load_rows(growth))
    yield from print_rows("Memory against the member", "Bytes on the heap, against the bytes of the table or the "
                          "manifest that was loaded.", memory_rows(grown))
    yield from print_rows("Memory of packages", None, package_memory_rows(cases))
    yield from print_rows("Instructions", "Instructions of a row, against those of the floor of the same package.",
                          instruction_rows(counts))
    yield from other_sections(directory)


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
