"""Prints the medians of two sets of hyperfine results, and the ratio of the first to the second.

Usage: medians.py NAME LIMIT OURS.json… -- THEIRS.json…
Exit status 1 when the ratio of CPU times is above LIMIT.
"""

import json
import statistics
import sys


def medians(files):
    runs = [json.load(open(file))["results"][0] for file in files]
    cpu = statistics.median(run["user"] + run["system"] for run in runs)
    wall = statistics.median(run["median"] for run in runs)
    return cpu, wall


def main():
    name, limit = sys.argv[1], float(sys.argv[2])
    files = sys.argv[3:]
    middle = files.index("--")
    ours, theirs = medians(files[:middle]), medians(files[middle + 1:])
    ratio = ours[0] / theirs[0]
    print(f"{name}: CPU {ours[0] * 1e3:.1f} ms against {theirs[0] * 1e3:.1f} ms, ratio {ratio:.3f} (at most {limit});"
          f" wall {ours[1] * 1e3:.1f} ms against {theirs[1] * 1e3:.1f} ms, ratio {ours[1] / theirs[1]:.3f};"
          f" medians of {middle} runs")
    sys.exit(ratio > limit)


main()
