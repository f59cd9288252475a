"""The figure of docs/performance.md: cost over size, one small plot a line, both axes logarithmic."""
import math

WIDTH, HEIGHT, COLUMNS = 176, 150, 5
LEFT, TOP, RIGHT, BOTTOM = 34, 34, 8, 24
# Readable on white and on black.
STYLE = """<style>
text { font: 9px sans-serif; fill: #24292f } .title { font-weight: bold }
.grid { stroke: #8c959f; stroke-width: .3 } .ours { stroke: #0969da; fill: none; stroke-width: 2 }
.rival { stroke: #bc4c00; fill: none; stroke-width: 1.5; stroke-dasharray: 4 2 }
.floor { stroke: #6e7781; fill: none; stroke-width: 1.5; stroke-dasharray: 1 2 }
@media (prefers-color-scheme: dark) {
text { fill: #e6edf3 } .ours { stroke: #58a6ff } .rival { stroke: #ffa657 } .floor { stroke: #8b949e } }
</style>"""


def points(name, times, sizes):
    """Where the benchmark was measured; rivals also at half a size."""
    if not name:
        return []
    counts = sorted({*sizes, *(size // 2 for size in sizes)})
    found = [(count, times.get(name.format(n=count))) for count in counts]
    return [(count, value) for count, value in found if value]


def wrapped(title):
    words, rows = title.split(), [""]
    for word in words:
        if len(rows[-1]) + len(word) > 30:
            rows.append("")
        rows[-1] = f"{rows[-1]} {word}".strip()
    return rows


def plot(line, times, sizes, x0, y0):
    curves = [(kind, points(name, times, sizes))
              for kind, name in (("floor", line[2]), ("rival", line[3]), ("ours", line[1]))]
    values = [value for _, curve in curves for _, value in curve]
    low, high = math.floor(math.log10(min(values))), math.ceil(math.log10(max(values)))
    high = max(high, low + 1)
    first, last = math.log10(sizes[0]) - 0.2, math.log10(sizes[-1]) + 0.2
    width, height = WIDTH - LEFT - RIGHT, HEIGHT - TOP - BOTTOM

    def place(count, value):
        x = x0 + LEFT + (math.log10(count) - first) / (last - first) * width
        y = y0 + TOP + (1 - (math.log10(value) - low) / (high - low)) * height
        return x, y

    text = [f'<text class="title" x="{x0 + 4}" y="{y0 + 11 + 10 * i}">{row}</text>'
            for i, row in enumerate(wrapped(line[0]))]
    for power in range(low, high + 1):
        _, y = place(sizes[0], 10 ** power)
        label = {0: "1 ns", 3: "1 µs", 6: "1 ms", 9: "1 s"}.get(power, "")
        text.append(f'<line class="grid" x1="{x0 + LEFT}" x2="{x0 + WIDTH - RIGHT}" y1="{y:.1f}" y2="{y:.1f}"/>')
        text.append(f'<text x="{x0 + LEFT - 3}" y="{y + 3:.1f}" text-anchor="end">{label}</text>')
    for size in sizes:
        x, _ = place(size, 10 ** low)
        label = f"{size // 1000}k" if size < 1_000_000 else "1M"
        text.append(f'<text x="{x:.1f}" y="{y0 + HEIGHT - 10}" text-anchor="middle">{label}</text>')
    for kind, curve in curves:
        at = [place(count, value) for count, value in curve]
        if len(at) == 1:
            x, y = at[0]
            text.append(f'<circle class="{kind}" cx="{x:.1f}" cy="{y:.1f}" r="2"/>')
        elif at:
            way = " ".join(f"{x:.1f},{y:.1f}" for x, y in at)
            text.append(f'<polyline class="{kind}" points="{way}"/>')
    return text


def draw(path, lines, sizes):
    rows = -(-len(lines) // COLUMNS)
    width, height = COLUMNS * WIDTH, rows * HEIGHT + 18
    text = [f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width} {height}" width="{width}">', STYLE]
    for number, (line, times) in enumerate(lines):
        text += plot(line, times, sizes, number % COLUMNS * WIDTH, number // COLUMNS * HEIGHT)
    for number, (kind, label) in enumerate((("ours", "this library"), ("rival", "stock selection model"),
                                            ("floor", "floor: the same work without what a browser does"))):
        x, y = 40 + number * 190, height - 6
        text.append(f'<line class="{kind}" x1="{x}" x2="{x + 24}" y1="{y - 3}" y2="{y - 3}"/>')
        text.append(f'<text x="{x + 30}" y="{y}">{label}</text>')
    with open(path, "w", encoding="utf-8") as file:
        file.write("\n".join([*text, "</svg>"]) + "\n")
