#!/usr/bin/env python3
"""Draws the reference host's icons and writes them as .ico files (16, 24 and 32 pixels, 32-bit
colour with alpha) beside this script: open.ico, an open folder, and delete.ico, a red cross.
Run again after a change: python3 refhost/resources/make-icons.py"""

import os
import struct

SAMPLES = 4  # per pixel and axis, for smooth edges


def polygon_contains(points, x, y):
    inside = False
    for (x1, y1), (x2, y2) in zip(points, points[1:] + points[:1]):
        if (y1 > y) != (y2 > y) and x < x1 + (y - y1) * (x2 - x1) / (y2 - y1):
            inside = not inside
    return inside


def render(shapes, size):
    """shapes: (colour (r, g, b), polygon in units of a 32-pixel square), later ones on top.
    Returns rows of (r, g, b, a), top row first."""
    scale = 32.0 / size
    pixels = []
    for row in range(size):
        line = []
        for column in range(size):
            coverage = {}
            for sy in range(SAMPLES):
                for sx in range(SAMPLES):
                    x = (column + (sx + 0.5) / SAMPLES) * scale
                    y = (row + (sy + 0.5) / SAMPLES) * scale
                    for index in range(len(shapes) - 1, -1, -1):
                        if polygon_contains(shapes[index][1], x, y):
                            coverage[index] = coverage.get(index, 0) + 1
                            break
            total = sum(coverage.values())
            if not total:
                line.append((0, 0, 0, 0))
                continue
            r = sum(shapes[i][0][0] * n for i, n in coverage.items()) // total
            g = sum(shapes[i][0][1] * n for i, n in coverage.items()) // total
            b = sum(shapes[i][0][2] * n for i, n in coverage.items()) // total
            line.append((r, g, b, 255 * total // (SAMPLES * SAMPLES)))
        pixels.append(line)
    return pixels


def dib(pixels):
    """One icon image: BITMAPINFOHEADER (double height), BGRA rows bottom up, AND mask."""
    size = len(pixels)
    header = struct.pack("<IiiHHIIiiII", 40, size, size * 2, 1, 32, 0, 0, 0, 0, 0, 0)
    colour = b"".join(bytes((b, g, r, a)) for line in reversed(pixels) for (r, g, b, a) in line)
    stride = ((size + 31) // 32) * 4
    mask = b""
    for line in reversed(pixels):
        row = bytearray(stride)
        for x, (_, _, _, a) in enumerate(line):
            if a == 0:
                row[x // 8] |= 0x80 >> (x % 8)
        mask += bytes(row)
    return header + colour + mask


def write_ico(path, shapes, sizes=(16, 24, 32)):
    images = [dib(render(shapes, size)) for size in sizes]
    out = struct.pack("<HHH", 0, 1, len(images))
    offset = 6 + 16 * len(images)
    for size, image in zip(sizes, images):
        out += struct.pack("<BBBBHHII", size, size, 0, 0, 1, 32, len(image), offset)
        offset += len(image)
    with open(path, "wb") as file:
        file.write(out + b"".join(images))


def box(x1, y1, x2, y2):
    return [(x1, y1), (x2, y1), (x2, y2), (x1, y2)]


def bar(x1, y1, x2, y2, width):
    """A thick line from (x1, y1) to (x2, y2)."""
    dx, dy = x2 - x1, y2 - y1
    length = (dx * dx + dy * dy) ** 0.5
    nx, ny = -dy / length * width / 2, dx / length * width / 2
    return [(x1 + nx, y1 + ny), (x2 + nx, y2 + ny), (x2 - nx, y2 - ny), (x1 - nx, y1 - ny)]


OUTLINE = (122, 86, 12)
BACK = (226, 176, 58)
FRONT = (252, 214, 102)
OPEN_FOLDER = [
    (OUTLINE, [(1, 6), (12, 6), (15, 9), (28, 9), (28, 27), (1, 27)]),      # the back with its tab
    (BACK, [(3, 8), (11, 8), (14, 11), (26, 11), (26, 25), (3, 25)]),
    (OUTLINE, [(7, 14), (31, 14), (26, 28), (1, 28)]),                     # the front flap, open
    (FRONT, [(8.5, 16), (28.5, 16), (24.5, 26), (3.5, 26)]),
]

RED_DARK = (150, 16, 16)
RED = (224, 40, 40)
RED_CROSS = [
    (RED_DARK, bar(5, 5, 27, 27, 9)),
    (RED_DARK, bar(27, 5, 5, 27, 9)),
    (RED, bar(6.5, 6.5, 25.5, 25.5, 5.5)),
    (RED, bar(25.5, 6.5, 6.5, 25.5, 5.5)),
]

if __name__ == "__main__":
    here = os.path.dirname(os.path.abspath(__file__))
    write_ico(os.path.join(here, "open.ico"), OPEN_FOLDER)
    write_ico(os.path.join(here, "delete.ico"), RED_CROSS)
