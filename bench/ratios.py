"""Prints what benchmark runs measured, each as the ratio to its floor in the same run.

Usage: ratios.py RESULT.json...
Reads Google Benchmark's JSON; of repeated measurements the quickest counts. Of the measurements of peak memory,
those count whose run measured nothing else.
"""
import json
import sys


def main():
    times, peaks = {}, {}
    for path in sys.argv[1:]:
        with open(path, encoding="utf-8") as file:
            runs = [run for run in json.load(file)["benchmarks"] if run["run_type"] == "iteration"]
        for run in runs:
            group, what, records = run["run_name"].split("/")[:3]
            name, records = f"{group}/{what}", int(records)
            if "peak" in run:
                peaks[name] = run["peak"]
            else:
                times[name, records] = min(times.get((name, records), run["real_time"]), run["real_time"])

    print(f"{'':24}{'records':>10}{'ns/record':>11}{'x floor':>9}{'x fewest':>10}")
    for (name, records), time in sorted(times.items()):
        floor = times.get((name + "_floor", records))
        if floor is None:
            continue
        fewest = min(n for other, n in times if other == name)
        growth = time / records / (times[name, fewest] / fewest)
        print(f"{name:24}{records:>10}{time * 1000 / records:>11.0f}{time / floor:>9.2f}{growth:>10.2f}")
    for name, peak in peaks.items():
        print(f"{name:24}  memory that a load takes at its peak: {peak:.1f} x the file")


main()
