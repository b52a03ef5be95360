#!/usr/bin/env python3
"""Prints a Markdown table from the JSON output of velk-benchmark: report.py result.json"""

import json
import math
import re
import sys


class Results:
    """The fastest of all repetitions, by the name of the benchmark and that of the contender. What else a machine does
    only ever adds to a time, and contenders take turns, so the fastest runs of two were made in like circumstances."""

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

    def has(self, name, counter):
        return name in self.runs and counter in self.runs[name][0]

    def best(self, name, counter="velk"):
        return min(run[counter] for run in self.runs[name])

    def sizes(self, pattern):
        """Names that match, with the number of nodes that is the first group of the pattern, the smallest first."""
        found = ((name, re.fullmatch(pattern, name)) for name in self.runs)
        return sorted(((name, int(match.group(1))) for name, match in found if match), key=lambda item: item[1])


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
        if self.results.has(name, yardstick):
            time, other = self.results.best(name), self.results.best(name, yardstick)
            self.add(task, time_text(time), f"{label}: {time_text(other)}", time / other, at_most=at_most)

    def limit(self, task, name, limit):
        """How much of a limit it takes."""
        if name in self.results:
            time = self.results.best(name)
            self.add(task, time_text(time), f"limit: {time_text(limit)}", time / limit, at_most=1)

    def growth(self, task, pattern, at_most):
        """How much slower than at the best size it is at the worst."""
        found = self.results.sizes(pattern)
        if len(found) > 1:
            times = [self.results.best(name) for name, _ in found]
            self.add(f"{task} at {', '.join(size_text(size) for _, size in found)} nodes",
                     ", ".join(time_text(time) for time in times), "fastest of them", max(times) / min(times),
                     at_most=at_most)

    def print(self):
        print("| Task | Velk | Yardstick | Ratio | Target | Met |")
        print("| --- | --- | --- | ---: | --- | --- |")
        for row in self.rows:
            print("| " + " | ".join(row) + " |")


def add_loading(table):
    results = table.results
    for task, name, label, floor, target in (
            ("Read and parse", "loading/model", "flat scan and bare objects", ("scan", "bare"), 2.5),
            ("Read into tokens", "loading/tree", "bare tokens", ("bare",), 1.4)):
        if name in results:
            size = results.best(name, "bytes") / 1e6
            time, other = results.best(name), sum(results.best(name, contender) for contender in floor)
            table.add(f"{task}, 8 boards, {size:.1f} MB", f"{time_text(time)}, {size / time:.0f} MB/s",
                      f"{label}: {time_text(other)}, {size / other:.0f} MB/s", time / other, at_most=target)
    if "loading/memory" in results:
        share = results.best("loading/memory", "bytes_per_byte")
        table.add("Peak memory of reading and parsing", f"{share:.1f} MB for each MB", "", share, at_most=6)


def exponent(points):
    """Of growth between the smallest and the largest size."""
    (low, low_time), *_, (high, high_time) = points
    return math.log(high_time / low_time) / math.log(high / low)


def add_joining(table, main_size):
    results = table.results
    sizes = results.sizes(r"joining/(\d+)")
    for name, size in sizes:
        table.times(f"Join 8 boards, {size_text(size)} nodes", name, "copies", "bare copies",
                    at_most=1.5 if size == main_size else None)
    table.times(f"Join 8 boards, {size_text(main_size)} nodes, few properties", "joining/few-properties", "copies",
                "bare copies")
    if len(sizes) > 1:
        velk, bare = (exponent([(results.best(name, "nodes"), results.best(name, subject)) for name, _ in sizes])
                      for subject in ("velk", "copies"))
        table.add(f"Join: exponent of growth, {size_text(sizes[0][1])} to {size_text(sizes[-1][1])}", f"{velk:.2f}",
                  f"bare copies: {bare:.2f}", velk, at_most=1.06)
    table.limit(f"First findPaths after joining, {size_text(main_size)}", "first-query/findPaths", 2e-3)
    if "first-query/getRoutes" in results:
        table.add(f"First getRoutes after loading, {size_text(main_size)}",
                  time_text(results.best("first-query/getRoutes")))


def add_sparse(table, main_size):
    results = table.results
    for system, title in (("sparse", "sparse"), ("switched-ground", "sparse, switches at ground")):
        task = f"findPaths, {title}, {size_text(main_size)}, 8 routes"
        name = f"query/{system}/{main_size}/findPaths"
        table.times(task, name, "lists", "bare lists", at_most=1.7)
        table.times(task, name, "search", "bare search")
        table.growth(f"findPaths, {title}", rf"query/{system}/(\d+)/findPaths", 1.2)
        for query in ("from-ground", "to-ground", "other-dut"):
            table.growth(f"findPaths without a route, {title}, {query.replace('-', ' ')}",
                         rf"query/{system}/(\d+)/{query}", 1.2)
    table.times(f"findPaths, sparse, {size_text(main_size)}, source with common properties",
                "query/common-properties/findPaths", "rare", "rare properties")
    table.times(f"getRoutes, sparse, {size_text(main_size)}, 8 routes", f"query/sparse/{main_size}/getRoutes",
                "records", "bare records", at_most=1.5)
    table.times(f"getRoutes, sparse, {size_text(main_size)}, 8 routes, few properties",
                "query/sparse/few-properties/getRoutes", "records", "bare records")
    table.times(f"findTracedPaths, sparse, {size_text(main_size)}, 8 routes, contacts known",
                f"query/sparse/{main_size}/realizable", "drawn", "as drawn", at_most=1.3)
    table.growth("getRoutes, sparse", r"query/sparse/(\d+)/getRoutes", 1.2)
    if "query/pairs/getRoutes" in results:
        count = results.best("query/pairs/getRoutes", "queries")
        table.limit(f"{count:,.0f} getRoutes, {size_text(main_size)}", "query/pairs/getRoutes", 35e-3 * count / 10_000)


def add_dense(table):
    results = table.results
    for name in [name for name in results.runs if re.fullmatch(r"query/dense/.*/findPaths", name)]:
        shape = name.split("/")[2]
        task = f"findPaths, {shape}, {results.best(name, 'routes'):,.0f} routes"
        table.times(task, name, "lists", "bare lists", at_most=1.5)
        table.times(task, name, "search", "bare search")
        igraph = name.replace("findPaths", "igraph")
        if igraph in results:
            time, other = results.best(name), results.best(igraph, "igraph")
            table.add(task, time_text(time), f"igraph: {time_text(other)}", other / time,
                      at_least=150 if shape == "32x32x32" else 3, digits=1)
        table.times(task.replace("findPaths", "findTracedPaths") + ", contacts known",
                    name.replace("findPaths", "realizable"), "drawn", "as drawn", at_most=1.3)
        size = results.best(name, "bytes_per_path")
        table.add(f"Memory for each route, {shape}", f"{size:.0f} bytes", "200 bytes", size / 200, at_most=1)


def add_exported(table):
    for call, yardsticks in (("findPaths", (("lists", "bare lists"), ("search", "bare search"))),
                             ("getRoutes", (("records", "bare records"),))):
        name, plain = f"query/exported/{call}", "query/exported/plain-search"
        task = f"{call}, exported system, 346 routes"
        if name in table.results and plain in table.results:
            time, other = table.results.best(name), table.results.best(plain, "plain")
            table.add(task, time_text(time), f"exhaustive search: {time_text(other)}", other / time, at_least=10_000,
                      digits=0)
        for yardstick, label in yardsticks:
            table.times(task, name, yardstick, label)


def add_threads(table):
    for system in ("dense", "sparse"):
        for queries in ("same-query", "two-queries"):
            name = f"threads/{system}/{queries}"
            if name in table.results:
                time, other = table.results.best(name, "at_once"), table.results.best(name, "one_after_the_other")
                table.add(f"Two threads, {system}, {queries.replace('-', ' ')}", time_text(time),
                          f"one after the other: {time_text(other)}", time / other, at_most=1)


def add_states(table):
    if "state/model" in table.results:
        table.add("What the relays can do, exported system", time_text(table.results.best("state/model")))
    table.limit("What is connected, exported system", "state/large", 2e-3)
    table.limit("The same after a relay has changed", "state/change", 50e-6)


def add_coverage(table):
    table.limit("Who reaches whom, exported system, 42 x 128 pins", "coverage/large", 50e-3)
    if "coverage/large" in table.results:
        table.add("The same as drawn", time_text(table.results.best("coverage/large", "drawn")))
    table.limit("The same with critical components", "coverage/large-critical", 0.5)
    if "coverage/sparse" in table.results:
        count = table.results.best("coverage/sparse", "pairs")
        task = f"Who reaches whom, sparse, {count:,.0f} pairs"
        table.limit(task, "coverage/sparse", 40e-3)
        table.times(task, "coverage/sparse", "queries", "findPaths, a bound of 1", at_most=1)


def add_planning(table):
    for name, task, limit in (
            ("demo", "Plan, demo, {connections} connections at once", 20e-3),
            ("large", "Plan, exported system, {connections} connections at once", 0.3),
            ("matrix", "Plan, {connections}x{connections} crosspoints, all rows to columns in any order", 2),
            ("bottleneck", "No plan, {connections} connections over {lines} lines, the bottleneck named", 0.5),
            ("network", "Plan, 5 stages, {connections} lines, any order", 5),
            ("steps", "Plan, exported system, {steps} steps of {connections} connections", 20)):
        name = f"planning/{name}"
        if name in table.results:
            connections, steps = (int(table.results.best(name, size)) for size in ("connections", "steps"))
            table.limit(task.format(connections=connections, lines=connections - 1, steps=steps), name, limit)


def main():
    results = Results(sys.argv[1])
    table = Table(results)
    main_size = int(results.context["main_size"])
    add_loading(table)
    add_joining(table, main_size)
    add_sparse(table, main_size)
    add_dense(table)
    add_exported(table)
    add_threads(table)
    add_states(table)
    add_coverage(table)
    add_planning(table)
    table.times(f"1,000 queries from Python, sparse, {size_text(main_size)}, 8 routes each", f"python/sparse/{main_size}",
                "cpp", "VelkSystem from C++", at_most=1.5)
    table.limit("velk routes, exported system, start to finish", "command/routes", 40e-3)
    table.print()
    for name, message in results.failures.items():
        print(f"failed: {name}: {message}", file=sys.stderr)
    return 1 if results.failures else 0


if __name__ == "__main__":
    sys.exit(main())
