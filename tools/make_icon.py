#!/usr/bin/env python3
"""Draws the program's icon in all its sizes: make_icon.py OUTPUT.ico [PREVIEW.png].

The icon is a sheet of text with one marked word, and a magnifying glass over it. The drawing is a
list of shapes in a unit square, sampled several times per pixel. The script needs only the standard
library and makes the same bytes on every machine.
"""

import math
import struct
import sys
import zlib

SIZES = (16, 20, 24, 32, 40, 48, 64, 96, 128, 256)
INK = (38, 70, 110)
PAPER = (250, 251, 253)
LINE = (150, 170, 195)
MARK = (255, 190, 60)
GLASS = (205, 232, 250)
HANDLE = (196, 92, 44)


def box(left, top, right, bottom, radius=0.0):
    """Makes a rectangle with rounded corners, as a test of a point."""
    def inside(x, y):
        if not (left <= x <= right and top <= y <= bottom):
            return False
        near_x = min(max(x, left + radius), right - radius)
        near_y = min(max(y, top + radius), bottom - radius)
        return (x - near_x) ** 2 + (y - near_y) ** 2 <= radius * radius + 1e-12
    return inside


def disc(centre_x, centre_y, radius):
    return lambda x, y: (x - centre_x) ** 2 + (y - centre_y) ** 2 <= radius * radius


def stroke(x1, y1, x2, y2, width):
    """Makes a thick line with round ends, as a test of a point."""
    dx, dy = x2 - x1, y2 - y1
    length = dx * dx + dy * dy

    def inside(x, y):
        along = max(0.0, min(1.0, ((x - x1) * dx + (y - y1) * dy) / length))
        return math.hypot(x - x1 - along * dx, y - y1 - along * dy) <= width / 2
    return inside


def drawing(size):
    """Returns the shapes from back to front, each with its colour and opacity."""
    small = size < 40  # fewer, thicker lines where there are few pixels

    def snap(value):
        """Returns the nearest pixel border, so that straight edges stay sharp."""
        return round(value * size) / size

    left, top, right, bottom = snap(0.07), snap(0.02), snap(0.76), snap(0.98)
    edge = max(1, round(0.035 * size)) / size
    shapes = [(box(left, top, right, bottom, 0.06), INK, 1.0),
              (box(left + edge, top + edge, right - edge, bottom - edge, 0.04), PAPER, 1.0)]
    rows = (0.20, 0.40, 0.60, 0.80) if small else (0.16, 0.28, 0.40, 0.52, 0.64, 0.76, 0.86)
    thick = max(1, round((0.065 if small else 0.05) * size)) / size
    for number, row in enumerate(rows):
        row = snap(row - thick / 2)
        end = snap(0.64 if number % 3 else 0.56)
        shapes.append((box(snap(0.19), row, end, row + thick, thick / 4), LINE, 1.0))
    centre_x, centre_y, radius = 0.56, 0.50, 0.25
    rim = 0.075 if small else 0.055
    shapes += [(stroke(0.74, 0.68, 0.90, 0.86, 0.145), INK, 1.0),
               (stroke(0.78, 0.725, 0.90, 0.86, 0.075), HANDLE, 1.0),
               (disc(centre_x, centre_y, radius), INK, 1.0),
               (disc(centre_x, centre_y, radius - rim), GLASS, 1.0),
               (box(0.42, 0.445, 0.70, 0.56, 0.025), MARK, 1.0)]
    if not small:
        shapes += [(box(0.45, 0.478, 0.67, 0.527, 0.015), INK, 1.0),
                   (stroke(0.45, 0.40, 0.51, 0.355, 0.035), PAPER, 0.9)]
    return shapes


def pixel(shapes, column, row, size):
    """Returns the mean of a pixel's samples: red, green, blue (not premultiplied), alpha."""
    across = 4 if size < 96 else 2  # samples per direction: small icons need the smoothness more
    total = [0.0, 0.0, 0.0, 0.0]
    for sample in range(across * across):
        x = (column + (sample % across + 0.5) / across) / size
        y = (row + (sample // across + 0.5) / across) / size
        colour, alpha = (0.0, 0.0, 0.0), 0.0
        for inside, paint, opacity in shapes:
            if inside(x, y):
                colour = tuple(old * (1 - opacity) + new * opacity
                               for old, new in zip(colour, paint))
                alpha = max(alpha, opacity)
        for channel in range(3):
            total[channel] += colour[channel] * alpha
        total[3] += alpha
    if total[3] == 0:
        return (0, 0, 0, 0)
    return tuple(round(value / total[3]) for value in total[:3]) + (
        round(255 * total[3] / across ** 2),)


def draw(size):
    """Returns rows of pixels, top first."""
    shapes = drawing(size)
    return [[pixel(shapes, column, row, size) for column in range(size)] for row in range(size)]


def png(image):
    size = len(image)

    def chunk(kind, data):
        return (struct.pack(">I", len(data)) + kind + data +
                struct.pack(">I", zlib.crc32(kind + data)))
    raw = b"".join(b"\0" + b"".join(bytes(point) for point in row) for row in image)
    header = struct.pack(">IIBBBBB", size, size, 8, 6, 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) +
            chunk(b"IDAT", zlib.compress(raw, 9)) + chunk(b"IEND", b""))


def bitmap(image):
    """Makes a 32-bit device-independent bitmap with its mask, as in icons: bottom row first."""
    size = len(image)
    mask_bytes = (size + 31) // 32 * 4
    header = struct.pack("<IiiHHIIiiII", 40, size, size * 2, 1, 32, 0,
                         size * (size * 4 + mask_bytes), 0, 0, 0, 0)
    colours = b"".join(bytes((blue, green, red, alpha))
                       for row in reversed(image) for red, green, blue, alpha in row)
    mask = b""
    for row in reversed(image):
        bits = "".join("1" if point[3] == 0 else "0" for point in row).ljust(mask_bytes * 8, "0")
        mask += int(bits, 2).to_bytes(mask_bytes, "big")
    return header + colours + mask


def icon(images):
    """Packs small sizes as bitmaps, which every reader knows, and 256 as PNG, as Windows needs."""
    parts = [png(image) if len(image) >= 256 else bitmap(image) for image in images]
    offset = 6 + 16 * len(parts)
    entries = b""
    for image, part in zip(images, parts):
        side = len(image) % 256  # 256 is written as 0
        entries += struct.pack("<BBBBHHII", side, side, 0, 0, 1, 32, len(part), offset)
        offset += len(part)
    return struct.pack("<HHH", 0, 1, len(parts)) + entries + b"".join(parts)


def main():
    if len(sys.argv) not in (2, 3):
        sys.exit("usage: make_icon.py OUTPUT.ico [PREVIEW.png]")
    images = [draw(size) for size in SIZES]
    with open(sys.argv[1], "wb") as file:
        file.write(icon(images))
    if len(sys.argv) == 3:
        with open(sys.argv[2], "wb") as file:
            file.write(png(images[-1]))


if __name__ == "__main__":
    main()
