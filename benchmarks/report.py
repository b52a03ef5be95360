#!/usr/bin/env python3
"""Prints a Markdown table from the JSON output of velk-benchmark: report.py result.json"""

import json
import math
import re
import statistics
import sys

NANOSECONDS = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}


class Results:
    """Medians over the repetitions, by the name of the benchmark."""

    def __init__(self, file_name):
        with open(file_name, encoding="utf-8") as file:
            content = json.load(file)
        self.context = content["context"]
        self.failures = {}  # messages by name
        self.runs = {}
        for run in content["benchmarks"]:
            name = plain_name(run["run_name"])
            if run.get("error_occurred"):
                self.failures[name] = run["error_message"]
            elif run["run_type"] == "iteration":
                self.runs.setdefault(name, []).append(run)

    def __contains__(self, name):
        return name in self.runs

    def seconds(self, name):
        return statistics.median(run["real_time"] * NANOSECONDS[run["time_unit"]] * 1e-9 for run in self.runs[name])

    def counter(self, name, counter):
        return statistics.median(run[counter] for run in self.runs[name])

    def names(self, pattern):
        """Names that match, with the first group of the pattern."""
        found = ((name, re.fullmatch(pattern, name)) for name in self.runs)
        return [(name, match.group(1)) for name, match in found if match]


def plain_name(name):
    return re.sub(r"/(manual_time|real_time|(iterations|repeats|min_time|min_warmup_time):[\d.]+)", "", name)


def time_text(seconds):
    for unit, factor in (("s", 1), ("ms", 1e3), ("µs", 1e6)):
        if seconds * factor >= 1:
            return f"{seconds * factor:.3g} {unit}" if seconds * factor < 1000 else f"{seconds * factor:.0f} {unit}"
    return f"{seconds * 1e9:.0f} ns"


def size_text(nodes):
    nodes = int(nodes)
    return f"{nodes // 1_000_000}M" if nodes >= 1_000_000 else f"{nodes // 1_000}k"


class Table:
    def __init__(self, results):
        self.results = results
        self.has_targets = results.context["quick"] == "no"  # they are meant for the full sizes
        self.rows = []

    def add(self, task, measured, yardstick="", ratio=None, at_least=None, at_most=None, digits=2):
        target, verdict = "", ""
        if not self.has_targets:
            pass
        elif at_least is not None:
            target, met = f"at least {at_least:,}", ratio >= at_least
        elif at_most is not None:
            target, met = f"at most {at_most:,}", ratio <= at_most
        if target:
            verdict = "yes" if met else "**no**"
        ratio_text = "" if ratio is None else f"{ratio:,.{digits}f}"
        self.rows.append((task, measured, yardstick, ratio_text, target, verdict))

    def times(self, task, name, yardstick, label, at_most=None):
        """How many times the yardstick's time it takes."""
        if name in self.results and yardstick in self.results:
            time, other = self.results.seconds(name), self.results.seconds(yardstick)
            self.add(task, time_text(time), f"{label}: {time_text(other)}", time / other, at_most=at_most)

    def faster(self, task, name, yardstick, label, at_least=None, digits=1):
        """How many times faster than the yardstick it is."""
        if name in self.results and yardstick in self.results:
            time, other = self.results.seconds(name), self.results.seconds(yardstick)
            self.add(task, time_text(time), f"{label}: {time_text(other)}", other / time, at_least=at_least,
                     digits=digits)

    def print(self):
        print("| Task | Velk | Yardstick | Ratio | Target | Met |")
        print("| --- | --- | --- | ---: | --- | --- |")
        for row in self.rows:
            print("| " + " | ".join(row) + " |")


def add_reading(table):
    results = table.results
    for task, name, target in (("Read into tokens", "reading", 3), ("Read and parse", "parsing", 5)):
        velk, plain = f"{name}/velk", f"{name}/plain"
        if velk not in results or plain not in results:
            continue
        size = results.counter(velk, "bytes") / 1e6
        velk_speed, plain_speed = size / results.seconds(velk), size / results.seconds(plain)
        table.add(f"{task}, {size:.1f} MB", f"{velk_speed:.0f} MB/s", f"plain: {plain_speed:.0f} MB/s",
                  velk_speed / plain_speed, at_least=target)


def exponent(points):
    """Of growth between the smallest and the largest size."""
    (low, low_time), *_, (high, high_time) = sorted(points)
    return math.log(high_time / low_time) / math.log(high / low)


def add_joining(table, main_size):
    results = table.results
    sizes = sorted(results.names(r"joining/velk/(\d+)"), key=lambda found: int(found[1]))
    for name, size in sizes:
        table.times(f"Join 8 boards, {size_text(size)} nodes", name, name.replace("velk", "copying"), "bare copying",
                    at_most=2.5 if size == main_size else None)
    table.times(f"Join 8 boards, {size_text(main_size)} nodes, few properties", "joining/velk/few-properties",
                "joining/copying/few-properties", "bare copying")
    if len(sizes) > 1:
        def growth(subject):
            names = [name.replace("velk", subject) for name, _ in sizes]
            return exponent([(results.counter(name, "nodes"), results.seconds(name)) for name in names])
        table.add(f"Join: exponent of growth, {size_text(sizes[0][1])} to {size_text(sizes[-1][1])}",
                  f"{growth('velk'):.2f}", f"bare copying: {growth('copying'):.2f}", growth("velk"), at_most=1.15)
    if "first-query/findPaths" in results:
        time = results.seconds("first-query/findPaths")
        table.add(f"First findPaths after joining, {size_text(main_size)}", time_text(time), "2 ms", time / 2e-3,
                  at_most=1)
    if "first-query/getRoutes" in results:
        table.add(f"First getRoutes after loading, {size_text(main_size)}",
                  time_text(results.seconds("first-query/getRoutes")))


def add_sparse(table, main_size):
    results = table.results
    name = f"query/sparse/{main_size}/"
    task = f"sparse, {size_text(main_size)}, 8 routes"
    table.times(f"findPaths, {task}", name + "findPaths", name + "materialise", "bare lists", at_most=2.2)
    table.times(f"findPaths, {task}", name + "findPaths", name + "floor", "floor")
    table.times(f"findPaths, {task}, source with common properties", "query/common-properties/findPaths",
                name + "findPaths", "rare properties")
    table.times(f"getRoutes, {task}", name + "getRoutes", name + "materialise", "bare lists", at_most=7.4)
    table.times(f"getRoutes, {task}, few properties", "query/sparse/few-properties/getRoutes", name + "materialise",
                "bare lists")
    for call in ("findPaths", "getRoutes"):
        sizes = sorted(results.names(rf"query/sparse/(\d+)/{call}"), key=lambda found: int(found[1]))
        if len(sizes) < 2:
            continue
        times = [results.seconds(found) for found, _ in sizes]
        table.add(f"{call} at {', '.join(size_text(size) for _, size in sizes)} nodes",
                  ", ".join(time_text(time) for time in times), "fastest of them", max(times) / min(times),
                  at_most=1.3)
    if "query/pairs/getRoutes" in results:
        time, count = results.seconds("query/pairs/getRoutes"), results.counter("query/pairs/getRoutes", "queries")
        limit = 60e-3 * count / 10_000
        table.add(f"{count:,.0f} getRoutes, {size_text(main_size)}", time_text(time), time_text(limit), time / limit,
                  at_most=1)


def add_dense(table):
    results = table.results
    for group, target in (("dense", 3.5), ("cascade", 100)):
        for found, shape in results.names(rf"query/{group}/([\dx]+)/findPaths"):
            name = f"query/{group}/{shape}/"
            routes = results.counter(found, "routes")
            task = f"findPaths, {shape}, {routes:,.0f} routes"
            table.faster(task, found, name + "igraph", "igraph", at_least=target)
            table.times(task, found, name + "materialise", "bare lists")
            table.times(task, found, name + "floor", "floor")
            size = results.counter(found, "bytes_per_path")
            table.add(f"Memory for each route, {shape}", f"{size:.0f} bytes", "260 bytes", size / 260, at_most=1)


def add_exported(table):
    name = "query/exported/"
    for call in ("findPaths", "getRoutes"):
        task = f"{call}, exported system, 346 routes"
        table.faster(task, name + call, name + "plain-search", "exhaustive search", at_least=10_000, digits=0)
        table.times(task, name + call, name + "materialise", "bare lists")
        if call == "findPaths":
            table.times(task, name + call, name + "floor", "floor")


def add_threads(table):
    for system in ("dense", "sparse"):
        for queries in ("same-query", "two-queries"):
            name = f"threads/{system}/{queries}/"
            table.times(f"Two threads, {system}, {queries.replace('-', ' ')}", name + "at-once",
                        name + "one-after-the-other", "one after the other", at_most=1)


def main():
    results = Results(sys.argv[1])
    table = Table(results)
    main_size = results.context["main_size"]
    add_reading(table)
    add_joining(table, main_size)
    add_sparse(table, main_size)
    add_dense(table)
    add_exported(table)
    add_threads(table)
    table.print()
    for name, message in results.failures.items():
        print(f"failed: {name}: {message}", file=sys.stderr)
    return 1 if results.failures else 0


if __name__ == "__main__":
    sys.exit(main())
