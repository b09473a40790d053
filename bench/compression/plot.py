#!/usr/bin/env python3
"""Draws how the cost of compression grows with the queue.

    build/dev/bench/bench_eventcompressor --benchmark_filter='Drag/' --benchmark_format=json > drag.json
    bench/compression/plot.py drag.json > docs/compression-performance.svg
"""

import json
import math
import sys

WIDTH, HEIGHT = 640, 400
LEFT, RIGHT, TOP, BOTTOM = 70, 20, 20, 50
SERIES = [("compressDrag", "compressed", "#1f5fa8"), ("copyDrag", "copied only", "#b0562b")]


def measured(report):
    """Milliseconds by series and number of moves."""
    times = {}
    for run in report["benchmarks"]:
        name, _, moves = run["name"].partition("/")
        assert run["time_unit"] == "ms", run
        times.setdefault(name, {})[int(moves)] = run["cpu_time"]
    return times


def decades(values):
    return range(math.floor(math.log10(min(values))), math.ceil(math.log10(max(values))) + 1)


def main():
    with open(sys.argv[1]) as file:
        times = measured(json.load(file))
    all_moves = [moves for name, _, _ in SERIES for moves in times[name]]
    all_times = [time for name, _, _ in SERIES for time in times[name].values()]
    x_decades, y_decades = decades(all_moves), decades(all_times)

    def x(moves):
        share = (math.log10(moves) - x_decades[0]) / (x_decades[-1] - x_decades[0])
        return LEFT + share * (WIDTH - LEFT - RIGHT)

    def y(time):
        share = (math.log10(time) - y_decades[0]) / (y_decades[-1] - y_decades[0])
        return HEIGHT - BOTTOM - share * (HEIGHT - TOP - BOTTOM)

    print(f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {HEIGHT}" font-family="sans-serif" font-size="13">')
    print(f'<rect width="{WIDTH}" height="{HEIGHT}" fill="white"/>')
    for decade in x_decades:
        at = x(10**decade)
        print(f'<line x1="{at:.1f}" y1="{TOP}" x2="{at:.1f}" y2="{HEIGHT - BOTTOM}" stroke="#ddd"/>')
        print(f'<text x="{at:.1f}" y="{HEIGHT - BOTTOM + 18}" text-anchor="middle">{10**decade:,}</text>')
    for decade in y_decades:
        at = y(10.0**decade)
        print(f'<line x1="{LEFT}" y1="{at:.1f}" x2="{WIDTH - RIGHT}" y2="{at:.1f}" stroke="#ddd"/>')
        print(f'<text x="{LEFT - 6}" y="{at + 4:.1f}" text-anchor="end">{10.0**decade:g} ms</text>')
    print(f'<text x="{(LEFT + WIDTH) / 2}" y="{HEIGHT - 10}" text-anchor="middle">moves of one drag, all in the queue</text>')
    for index, (name, label, colour) in enumerate(SERIES):
        points = sorted(times[name].items())
        path = " ".join(f"{x(moves):.1f},{y(time):.1f}" for moves, time in points)
        print(f'<polyline points="{path}" fill="none" stroke="{colour}" stroke-width="2"/>')
        for moves, time in points:
            print(f'<circle cx="{x(moves):.1f}" cy="{y(time):.1f}" r="3" fill="{colour}"><title>{moves:,}: {time:.3g} ms</title></circle>')
        print(f'<text x="{LEFT + 16}" y="{TOP + 20 + 18 * index}" fill="{colour}">{label}</text>')
    print("</svg>")


if __name__ == "__main__":
    main()
