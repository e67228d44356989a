"""Prints what a benchmark run measured, each as the ratio to its floor in the same run.

Usage: ratios.py RESULT.json...
Reads Google Benchmark's JSON; of repeated measurements the quickest counts.
"""
import json
import sys


def quickest(paths):
    times = {}
    for path in paths:
        with open(path, encoding="utf-8") as file:
            for run in json.load(file)["benchmarks"]:
                if run["run_type"] == "iteration":
                    name, records = run["run_name"].replace("/manual_time", "").rsplit("/", 1)
                    key = (name, int(records))
                    times[key] = min(times.get(key, run["real_time"]), run["real_time"])
    return times


def main():
    times = quickest(sys.argv[1:])
    print(f"{'':24}{'records':>10}{'ns/record':>11}{'x floor':>9}{'x fewest':>10}")
    for name, records in sorted(times):
        floor = times.get((name + "_floor", records))
        if floor is None:
            continue
        time = times[name, records]
        fewest = min(n for other, n in times if other == name)
        growth = time / records / (times[name, fewest] / fewest)
        print(f"{name:24}{records:>10}{time * 1000 / records:>11.0f}{time / floor:>9.2f}{growth:>10.2f}")


main()
