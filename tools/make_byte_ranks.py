#!/usr/bin/env python3
"""Writes engine/byte_ranks.inc: how common each byte is in files that people search.

Run it by hand on a mixture of source, documents and programs:
    tools/make_byte_ranks.py FOLDER... > engine/byte_ranks.inc
"""

import math
import os
import sys


def count(folders, budget=1 << 20):
    totals = [0] * 256
    for folder in folders:
        for root, _, names in os.walk(folder):
            for name in names:
                path = os.path.join(root, name)
                if os.path.islink(path) or not os.path.isfile(path):
                    continue
                with open(path, "rb") as file:
                    data = file.read(budget)
                for byte in range(256):
                    totals[byte] += data.count(byte)
    return totals


def main():
    totals = count(sys.argv[1:])
    weights = [math.log2(1 + n) for n in totals]
    low, high = min(weights), max(weights)
    ranks = [round(255 * (weight - low) / (high - low)) for weight in weights]
    print("// Made by tools/make_byte_ranks.py: 0 for the rarest byte, 255 for the commonest, on a")
    print("// logarithmic scale.")
    for row in range(0, 256, 16):
        print(" ".join("%d," % rank for rank in ranks[row:row + 16]))


if __name__ == "__main__":
    sys.exit(main())
