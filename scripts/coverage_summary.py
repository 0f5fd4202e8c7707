#!/usr/bin/env python3
"""Prints coverage per directory from gcovr JSON tracefiles: the top directories,
and functions/ per family (its detail/ helpers count with the family). The last
line is the total.

usage: coverage_summary.py WINDOWS.json [NATIVE.json...]

A line counts as covered when any build ran it. Branches come from the first
tracefile (the Windows build, the one that ships) wherever it has the file:
another compiler lays out different branches for the same line, so their
numbers do not add up."""
import json
import sys
from collections import defaultdict


def group(filename):
    parts = filename.split('/')
    depth = 2 if parts[0] == 'functions' and len(parts) > 2 else 1
    return '/'.join(parts[:depth]) + '/'


def percent(covered, total):
    return 100.0 * covered / total if total else 100.0


def load(path):
    """{file: {line: (count, [branch counts])}} of the lines that hold code."""
    with open(path) as f:
        files = json.load(f)['files']
    return {entry['file']: {line['line_number']: (line['count'], [b['count'] for b in line['branches']])
                            for line in entry['lines']
                            if not line.get('gcovr/noncode') and not line.get('gcovr/excluded')}
            for entry in files}


def merge(builds):
    merged = {}
    for build in builds:
        for name, lines in build.items():
            if name not in merged:
                merged[name] = dict(lines)
                continue
            for number, (count, branches) in lines.items():
                old_count, old_branches = merged[name].get(number, (0, branches))
                merged[name][number] = (old_count + count, old_branches)
    return merged


def main(paths):
    groups = defaultdict(lambda: [0, 0, 0, 0])
    for name, lines in merge([load(p) for p in paths]).items():
        g = groups[group(name)]
        for count, branches in lines.values():
            g[0] += count > 0
            g[1] += 1
            g[2] += sum(b > 0 for b in branches)
            g[3] += len(branches)
    print(f"{'directory':<22} {'lines':>16} {'branches':>16}")
    for name in sorted(groups):
        lc, lt, bc, bt = groups[name]
        print(f'{name:<22} {lc:>6}/{lt:<6} {percent(lc, lt):5.1f}% {bc:>6}/{bt:<6} {percent(bc, bt):5.1f}%')
    lc, lt, bc, bt = (sum(g[i] for g in groups.values()) for i in range(4))
    print(f'coverage: lines {percent(lc, lt):.1f}%, branches {percent(bc, bt):.1f}%')


if __name__ == '__main__':
    main(sys.argv[1:])
