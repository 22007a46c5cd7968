#!/usr/bin/env python3
"""Writes engine/letters.inc: Unicode's letters and its simple case folding, as ranges.

Run it by hand when a newer Unicode version is wanted:
    tools/make_letters.py > engine/letters.inc
"""

import sys
import unicodedata

from make_case_ranges import step_ranges


def simple_fold(code):
    """Folds by the statuses C and S of CaseFolding.txt: a character whose full folding is several
    characters folds to its lower case, when that is one character."""
    character = chr(code)
    for folded in (character.casefold(), character.lower()):
        if len(folded) == 1:
            return ord(folded)
    return code


def letter_ranges():
    ranges = []
    for code in range(0x110000):
        if unicodedata.category(chr(code))[0] not in "LM":
            continue
        if ranges and ranges[-1][1] == code - 1:
            ranges[-1][1] = code
        else:
            ranges.append([code, code])
    return ranges


def fold_ranges():
    deltas = ((code, simple_fold(code) - code) for code in range(0x110000))
    return step_ranges((code, delta) for code, delta in deltas if delta != 0)


def main():
    print("// Made by tools/make_letters.py from Unicode " + unicodedata.unidata_version + ".")
    print("// First and last character.")
    print("constexpr LetterRange letters[] = {")
    for first, last in letter_ranges():
        print("{0x%04X, 0x%04X}," % (first, last))
    print("};")
    print("// First and last character, distance between two of them, and what to add to fold them.")
    print("constexpr FoldRange folds[] = {")
    for first, last, step, delta in fold_ranges():
        print("{0x%04X, 0x%04X, %d, %d}," % (first, last, step, delta))
    print("};")


if __name__ == "__main__":
    sys.exit(main())
