#!/usr/bin/env python3
"""Runs the benchmarks that ./bench has built and writes docs/performance.md and its figure.

--quick  sizes up to 100,000, one repetition; prints, writes nothing
--check  ends with 1 when a line grows more than allowed from 1,000 to 10,000 objects in run after run
"""
import json
import os
import re
import subprocess
import sys
import tempfile

from figure import draw
from lines import FIGURE, KNOWN_FAULTS, MOST_GROWTH, NOTES, ONCE, SHAPES, SIGNAL, SIZES, TABLES

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
PAGE = os.path.join(ROOT, "docs", "performance.md")
FIGURE_FILE = os.path.join(ROOT, "docs", "images", "performance.svg")
BEGIN, END = "<!-- written by ./bench -->", "<!-- end of what ./bench writes -->"
# What else the machine did may be in one run, hardly in all; what grows too much does in each.
ATTEMPTS = 3
NANOSECONDS = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}


def entries_of(program, pattern, repetitions):
    """What the benchmarks said, the median of the repetitions."""
    path = os.path.join(ROOT, "build", "bench", "benchmarks", program, f"{program}_benchmark")
    with tempfile.NamedTemporaryFile(suffix=".json") as output:
        subprocess.run([path, f"--benchmark_out={output.name}", f"--benchmark_filter={pattern}",
                        f"--benchmark_repetitions={repetitions}", "--benchmark_min_time=0.1"],
                       check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        entries = json.load(output)["benchmarks"]
    for entry in entries:
        if entry.get("error_occurred"):
            sys.exit(f"{entry['name']}: {entry['error_message']}")
    wanted = "median" if repetitions > 1 else None
    return [entry for entry in entries if entry.get("aggregate_name") == wanted and "cpu_time" in entry]


def run(program, pattern, repetitions):
    """CPU time in nanoseconds by name."""
    return {entry["run_name"]: entry["cpu_time"] * NANOSECONDS[entry["time_unit"]]
            for entry in entries_of(program, pattern, repetitions)}


def measure(largest, repetitions, is_check):
    sizes = [size for size in SIZES if size <= largest]
    times = {}
    for title, program, lines in TABLES:
        print(f"{title} ...", flush=True)
        names = {name.format(n=count) for line in lines for name in line[1:] if name
                 for size in sizes for count in (size, size // 2)}
        found = times.setdefault(program, {})
        names -= found.keys()
        # What takes long is run once.
        once = {name for name in names if name.endswith(ONCE)}
        for group, count in ((names - once, repetitions), (once, 1)):
            if group:
                found.update(run(program, f"^({'|'.join(sorted(group))})$", count))
    if not is_check:
        print("signal ...", flush=True)
        times["signal"] = run("signal", r"^emit/", max(3, repetitions))
    return times


def time_text(nanoseconds):
    for unit, size in (("s", 1e9), ("ms", 1e6), ("µs", 1e3)):
        if nanoseconds >= size:
            return f"{nanoseconds / size:.3g} {unit}"
    return f"{nanoseconds:.3g} ns"


def at(times, name, size):
    return times.get(name.format(n=size)) if name else None


def ratio(times, line, size):
    ours, floor = at(times, line[1], size), at(times, line[2], size)
    return f"{ours / floor:.2f}" if ours and floor else ""


def growths(times, name):
    if not name:
        return []
    known = {size: at(times, name, size) for size in SIZES}
    return [(small, known[10 * small] / known[small]) for small in SIZES
            if known[small] and known.get(10 * small)]


def rival_text(times, line):
    for size in reversed(SIZES):
        # Some rivals are measured at half a size, where they still end in reasonable time.
        for count in (size, size // 2):
            rival = at(times, line[3], count)
            if rival:
                return f"{count:,}: {time_text(rival)}"
    return ""


def table_text(title, times, lines, largest):
    sizes = [size for size in SIZES if size <= largest and any(at(times, line[1], size) for line in lines)]
    text = [f"## {title}", "", *([NOTES[title], ""] if title in NOTES else []),
            "| operation | " + " | ".join(f"{size:,}" for size in sizes) +
            " | growth | over its floor | rival |", "|---" * (len(sizes) + 4) + "|"]
    for line in lines:
        cells = [time_text(at(times, line[1], size)) if at(times, line[1], size) else "" for size in sizes]
        growth = ", ".join(f"{value:.1f}" for small, value in growths(times, line[1]) if small >= 10_000)
        over = ", ".join(filter(None, (ratio(times, line, size) for size in sizes if size >= 10_000)))
        text.append(f"| {line[0]} | " + " | ".join(cells) + f" | {growth} | {over} | {rival_text(times, line)} |")
    return "\n".join(text) + "\n"


def pieces_text(repetitions):
    """How long the jobs of the clipboard keep the processor at a time."""
    text = ["## Pieces of a copy and a paste of 100,000 objects", "",
            "Milliseconds that the window does nothing else, in slices of one: what starts the job, its longest",
            "slice, the last one, and letting go of it.", "",
            "| job | start | longest slice | last slice | end |", "|---|---|---|---|---|"]
    for entry in entries_of("property_clipboard", "^(copy|paste)InSlices/100000$", repetitions):
        cells = " | ".join(f"{entry[name]:.3g}" for name in ("start_ms", "longest_slice_ms", "last_ms", "end_ms"))
        text.append(f"| {entry['run_name'].split('InSlices')[0]} | {cells} |")
    return "\n".join(text) + "\n"


def memory(sizes):
    """Bytes a row of the panel's list, its floor and its rival, by benchmark, shape and size."""
    pattern = f"^memoryOf(Rows|Indexes|Proxies)/.*/({'|'.join(map(str, sizes))})/"
    return {entry["run_name"].replace(ONCE, ""): entry for entry in entries_of("panel", pattern, 1)}


def memory_text(largest):
    sizes = [size for size in SIZES if 10_000 <= size <= largest]
    found = memory(sizes)

    def cell(kind, size, counter="open"):
        entry = found.get(f"memoryOf{kind}/{shape}/{size}")
        return f"{entry[counter]:.1f}" if entry else ""

    text = ["## Memory a row", "",
            "Bytes that malloc handed out and did not get back for a shown row of the panel's list, all rows open:",
            "as the panel opens, after every row was asked for its index and back (100,000 rows), and sorted",
            "besides (100,000). The floor is a plain list of the indexes, the rival `KDescendantsProxyModel` over",
            "`QSortFilterProxyModel` after every row was shown once (10,000), which calls itself for each level and",
            "has no chain.", "",
            "| shape | " + " | ".join(f"{size:,}" for size in sizes) + " | asked | sorted | floor | rival |",
            "|---" * (len(sizes) + 5) + "|"]
    for shape in SHAPES:
        cells = [*(cell("Rows", size) for size in sizes), cell("Rows", 100_000, "looked at"),
                 cell("Rows", 100_000, "sorted"), cell("Indexes", 100_000),
                 cell("Proxies", 10_000, "looked at")]
        text.append(f"| {shape.replace('_', ' ')} | " + " | ".join(cells) + " |")
    return "\n".join(text) + "\n"


def signal_text(times):
    text = ["## Signal", "",
            "Nanoseconds of an emission, with a second thread parked: without one the C library skips its",
            "locks. The bare loop does one lock and one pin a slot over a plain array and keeps no promise.", "",
            "| slots | " + " | ".join(SIGNAL) + " | ours over the bare loop |", "|---" * (len(SIGNAL) + 2) + "|"]
    for slots in (1, 10, 100, 1000):
        row = {name: times.get(f"emit/{key}/{slots}") for name, key in SIGNAL.items()}
        cells = [f"{value:.4g}" if value else "" for value in row.values()]
        text.append(f"| {slots:,} | " + " | ".join(cells) + f" | {row['ours'] / row['bare loop']:.2f} |")
    return "\n".join(text) + "\n"


def machine_text(repetitions):
    with open("/proc/cpuinfo", encoding="utf-8") as file:
        model = re.search(r"model name\s*: (.*)", file.read())
    load = os.getloadavg()[0]
    return (f"{os.cpu_count()} cores ({model.group(1) if model else 'unknown'}), release build, CPU time, medians of "
            f"{repetitions} repetitions, the stock model and 1,000 changes of rows measured once. The load of the last minute was {load:.1f} at the end of the run: "
            "where it is above the number of cores, read ratios and not figures.\n")


def again(program, name):
    """The growths of a line in a run of its own."""
    names = (name.format(n=size) for size in (1_000, 10_000))
    return growths(run(program, f"^({'|'.join(names)})$", 9), name)


def check(times):
    failed = False

    def tell(growth, small, title, line):
        nonlocal failed
        is_known = (title, line) in KNOWN_FAULTS
        failed = failed or (growth > MOST_GROWTH and not is_known)
        verdict = "ok" if growth <= MOST_GROWTH else "KNOWN" if is_known else "FAIL"
        print(f"{verdict:5} {growth:5.1f} x from {small:,}: {title}: {line}")

    for title, program, lines in TABLES:
        for line in lines:
            found = growths(times[program], line[1])
            for _ in range(ATTEMPTS):
                if all(growth <= MOST_GROWTH for _, growth in found):
                    break
                found = again(program, line[1])
            for small, growth in found:
                tell(growth, small, title, line[0])
    bytes_a_row = memory((1_000, 10_000))
    for shape in SHAPES:
        small, large = (bytes_a_row[f"memoryOfRows/{shape}/{size}"]["sorted"] for size in (1_000, 10_000))
        tell(10 * large / small, 1_000, "Memory", shape.replace("_", " "))
    return 1 if failed else 0


def main():
    is_check = "--check" in sys.argv
    is_quick = is_check or "--quick" in sys.argv
    largest, repetitions = (10_000, 5) if is_check else (100_000, 1) if is_quick else (1_000_000, 3)
    times = measure(largest, repetitions, is_check)
    if is_check:
        return check(times)
    tables = [table_text(title, times[program], lines, largest) for title, program, lines in TABLES]
    text = "\n".join([machine_text(repetitions), *tables, pieces_text(repetitions), memory_text(largest),
                      signal_text(times["signal"])])
    print(text)
    if is_quick:
        return 0
    with open(PAGE, encoding="utf-8") as file:
        page = file.read()
    before, rest = page.split(BEGIN)
    after = rest.split(END)[1]
    with open(PAGE, "w", encoding="utf-8") as file:
        file.write(f"{before}{BEGIN}\n\n{text}\n{END}{after}")
    every = {line[0]: (line, times[program]) for _, program, lines in TABLES for line in lines}
    draw(FIGURE_FILE, [every[title] for title in FIGURE], SIZES)
    return 0


if __name__ == "__main__":
    sys.exit(main())
