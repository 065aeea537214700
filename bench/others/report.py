#!/usr/bin/python3
"""Writes the table and the chart of docs/performance.md from a run of side_by_side.

Usage: report.py RESULTS.json PERFORMANCE.md CHART.svg

RESULTS.json is what side_by_side writes with --benchmark_format=json or --benchmark_out. The table
goes between the two marks in PERFORMANCE.md, and the rest of that page stays.
"""

import json
import os
import re
import sys

BEGIN = "<!-- side by side: made by bench/others/report.py -->"
END = "<!-- end of side by side -->"
INSTANCES = (1, 16, 64, 256)
BYTES_PER_MEGABYTE = 1e6
PROGRAM = re.compile(r"TvDelay, program (\d+)$")
YARDSTICK = "Calf Vintage Delay"
FLOOR = "Bare delay"


class ReportError(Exception):
    """What was wrong with the input, in one line."""


def read_results(path):
    """The fastest run of each benchmark: {contender: {measure: value}}, and the table's notes."""
    try:
        with open(path, encoding="utf-8") as file:
            results = json.load(file)
        runs = [run for run in results["benchmarks"] if run.get("run_type") == "iteration"]
    except (OSError, ValueError, KeyError, TypeError) as error:
        raise ReportError(f"{path} can't be read as results of side_by_side: {error}") from error
    values = {}
    for run in runs:
        if run.get("error_occurred"):
            continue
        contender, measure = run["name"].split("/", 1)
        measure = re.sub(r"/iterations:\d+", "", measure)
        found = values.setdefault(contender, {})
        if measure.startswith("frame/"):
            value = 1e9 / run["items_per_second"]
        else:
            value = run["real_time"]  # nanoseconds
            found["bytes"] = max(0.0, run["bytes"])
        found[measure] = min(value, found.get(measure, value))
    if FLOOR not in values or YARDSTICK not in values:
        raise ReportError(f"{path} lacks {FLOOR} or {YARDSTICK}: run all benchmarks")
    context = results["context"]
    notes = {name: context["work of " + name] for name in context["order"].split(";")}
    return values, notes


def table(values, notes):
    lines = ["| Delay | Set to | " + " | ".join(f"{n} in turn" for n in INSTANCES) +
             " | of Calf Vintage Delay | making one | memory of one |",
             "|---|---|" + "---|" * (len(INSTANCES) + 3)]
    yardstick = values[YARDSTICK]["frame/1"]
    for name, work in notes.items():
        if name not in values:
            lines.append(f"| {name} | not installed |" + " |" * (len(INSTANCES) + 3))
            continue
        found = values[name]
        frames = " | ".join(f"{found[f'frame/{n}']:.1f}" for n in INSTANCES)
        lines.append(f"| {name} | {work} | {frames} | {found['frame/1'] / yardstick:.2f} | "
                     f"{found['instance'] / 1e6:.2f} ms | "
                     f"{found['bytes'] / BYTES_PER_MEGABYTE:.1f} MB |")
    return lines


def sentences(values):
    programs = {int(PROGRAM.match(name).group(1)): found["frame/1"]
                for name, found in values.items() if PROGRAM.match(name)}
    dearest = max(programs, key=programs.get)
    ratio = programs[dearest] / values[YARDSTICK]["frame/1"]
    plain = values["TvDelay, no filter"]["frame/1"] / values[FLOOR]["frame/1"]
    return [f"Of all {len(programs)} programs number {dearest} costs the most: "
            f"{programs[dearest]:.1f} ns a frame, {ratio:.2f} of Calf Vintage Delay. Without a "
            f"filter TvDelay takes {plain:.2f} times as long as the bare delay."]


def draw(values, notes, path):
    import matplotlib
    matplotlib.use("svg")
    matplotlib.rcParams["svg.hashsalt"] = "TvDelay"
    from matplotlib import pyplot

    names = [name for name in notes if name in values]
    figure, axes = pyplot.subplots(figsize=(9, 0.5 * len(names) + 1.6))
    colours = {1: "#b4743a", 256: "#44606a"}
    for offset, instances in ((-0.2, 1), (0.2, 256)):
        axes.barh([row + offset for row in range(len(names))],
                  [values[name][f"frame/{instances}"] for name in names], height=0.36,
                  color=colours[instances],
                  label="one instance" if instances == 1 else f"{instances} instances in turn")
    axes.set_yticks(range(len(names)), names)
    axes.invert_yaxis()
    axes.set_xscale("log")
    axes.xaxis.set_major_formatter("{x:.0f}")
    axes.set_xlabel("nanoseconds a stereo frame, blocks of 64 frames, 48 kHz")
    axes.legend(frameon=False)
    axes.spines[["top", "right"]].set_visible(False)
    figure.tight_layout()
    figure.savefig(path, metadata={"Date": None})


def insert(lines, page):
    try:
        with open(page, encoding="utf-8") as file:
            text = file.read()
    except OSError as error:
        raise ReportError(f"{page} can't be read: {error.strerror}") from error
    if text.count(BEGIN) != 1 or text.count(END) != 1:
        raise ReportError(f"{page} needs the lines '{BEGIN}' and '{END}' once each")
    before, rest = text.split(BEGIN)
    after = rest.split(END)[1]
    whole = before + BEGIN + "\n" + "\n".join(lines) + "\n" + END + after
    with open(page + ".new", "w", encoding="utf-8") as file:
        file.write(whole)
    os.replace(page + ".new", page)


def main(arguments):
    if len(arguments) != 3:
        raise ReportError("give three files: RESULTS.json PERFORMANCE.md CHART.svg")
    results, page, chart = arguments
    values, notes = read_results(results)
    draw(values, notes, chart)
    insert(table(values, notes) + [""] + sentences(values), page)


if __name__ == "__main__":
    try:
        main(sys.argv[1:])
    except ReportError as error:
        print(f"report.py: {error}", file=sys.stderr)
        sys.exit(2)
