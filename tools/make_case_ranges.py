#!/usr/bin/env python3
"""Writes engine/case_ranges.inc: Unicode's simple lower-case mapping as ranges.

Run it by hand when a newer Unicode version is wanted:
    tools/make_case_ranges.py > engine/case_ranges.inc
"""

import sys
import unicodedata


def step_ranges(pairs):
    """Joins (code, delta) pairs, in ascending order, into (first, last, step, delta)."""
    ranges = []
    for code, delta in pairs:
        if ranges and ranges[-1][3] == delta:
            first, last, step, _ = ranges[-1]
            gap = code - last
            if gap <= 2 and (first == last or gap == step):
                ranges[-1] = (first, code, gap, delta)
                continue
        ranges.append((code, code, 1, delta))
    return ranges


def main():
    pairs = []
    for code in range(0x80, 0x110000):
        lower = chr(code).lower()
        if len(lower) == 1 and ord(lower) != code:
            pairs.append((code, ord(lower) - code))

    print("// Made by tools/make_case_ranges.py from Unicode " + unicodedata.unidata_version + ".")
    print("// First and last upper-case code point, distance between two of them, and what")
    print("// to add for lower case.")
    for first, last, step, delta in step_ranges(pairs):
        print("{0x%04X, 0x%04X, %d, %d}," % (first, last, step, delta))


if __name__ == "__main__":
    sys.exit(main())
