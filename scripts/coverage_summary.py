#!/usr/bin/env python3
"""Prints a gcovr JSON summary per directory: the top directories, and functions/
per family (its detail/ helpers count with the family). The last line is the total."""
import json
import sys
from collections import defaultdict


def group(filename):
    parts = filename.split('/')
    depth = 2 if parts[0] == 'functions' and len(parts) > 2 else 1
    return '/'.join(parts[:depth]) + '/'


def percent(covered, total):
    return 100.0 * covered / total if total else 100.0


def main(path):
    with open(path) as f:
        summary = json.load(f)
    groups = defaultdict(lambda: [0, 0, 0, 0])
    for entry in summary['files']:
        g = groups[group(entry['filename'])]
        g[0] += entry['line_covered']
        g[1] += entry['line_total']
        g[2] += entry['branch_covered']
        g[3] += entry['branch_total']
    print(f"{'directory':<22} {'lines':>16} {'branches':>16}")
    for name in sorted(groups):
        lc, lt, bc, bt = groups[name]
        print(f'{name:<22} {lc:>6}/{lt:<6} {percent(lc, lt):5.1f}% {bc:>6}/{bt:<6} {percent(bc, bt):5.1f}%')
    lc, lt, bc, bt = (sum(g[i] for g in groups.values()) for i in range(4))
    print(f'coverage: lines {percent(lc, lt):.1f}%, branches {percent(bc, bt):.1f}%')


if __name__ == '__main__':
    main(sys.argv[1])
