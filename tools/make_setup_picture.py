#!/usr/bin/env python3
"""Draws the program's icon for the installer's last page: make_setup_picture.py BMP"""

import struct
import sys

import make_icon

WIDTH, HEIGHT = 164, 314
SIDE = 96
BACKGROUND = (226, 234, 244)


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    image = make_icon.draw(SIDE)
    left, top = (WIDTH - SIDE) // 2, 28
    rows = []
    for y in reversed(range(HEIGHT)):  # bottom row first
        row = b""
        for x in range(WIDTH):
            inside = left <= x < left + SIDE and top <= y < top + SIDE
            point = image[y - top][x - left] if inside else (0, 0, 0, 0)
            mixed = [round(back + (front - back) * point[3] / 255)
                     for front, back in zip(point, BACKGROUND)]
            row += bytes(reversed(mixed))
        rows.append(row.ljust((len(row) + 3) // 4 * 4, b"\0"))
    pixels = b"".join(rows)
    with open(sys.argv[1], "wb") as file:
        file.write(struct.pack("<2sIHHI", b"BM", 54 + len(pixels), 0, 0, 54) +
                   struct.pack("<IiiHHIIiiII", 40, WIDTH, HEIGHT, 1, 24, 0, len(pixels), 0, 0, 0,
                               0) + pixels)


if __name__ == "__main__":
    main()
