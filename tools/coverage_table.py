#!/usr/bin/env python3
"""coverage_table.py FILE: the lines and branches that ran, by folder, from gcovr's report in JSON."""

import collections
import json
import sys


def sums_by_folder(report):
    """Of each part, of each of its folders, and of all: lines, lines that ran, the same of branches."""
    sums = collections.defaultdict(lambda: [0, 0, 0, 0])
    for file in report["files"]:
        lines = [line for line in file["lines"] if not line.get("gcovr/noncode")]
        branches = [branch for line in lines for branch in line["branches"]]
        figures = (len(lines), sum(line["count"] > 0 for line in lines),
                   len(branches), sum(branch["count"] > 0 for branch in branches))
        part, folder = file["file"].split("/")[0], file["file"].rpartition("/")[0]
        for name in {part, folder, "total"}:
            sums[name] = [sum(pair) for pair in zip(sums[name], figures)]
    return sums


def cell(hit, of):
    return f"{hit}/{of} {100 * hit / of:6.2f} %" if of else "-"


def main():
    with open(sys.argv[1]) as file:
        sums = sums_by_folder(json.load(file))
    print(f"{'folder':28}{'lines':>22}{'branches':>22}")
    for name in sorted(sums, key=lambda name: (name == "total", name)):
        lines, lines_hit, branches, branches_hit = sums[name]
        print(f"{'  ' * name.count('/') + name:28}{cell(lines_hit, lines):>22}{cell(branches_hit, branches):>22}")


if __name__ == "__main__":
    main()
