#!/usr/bin/env python3
"""Draws the bitmaps of the base resources module: run it in this folder after a change, and commit what it writes.

Bitmaps have 32 bits a pixel, blue, green, red and alpha, colours multiplied by alpha, as AlphaBlend takes them. They are
drawn large, to be reduced; a shape is known by its distance function, which 4 by 4 samples a pixel make smooth.
"""
import math
import struct
import sys

if len(sys.argv) > 1:
    print(__doc__)
    sys.exit()


def distance(point, polygon):
    """From the point to the border of a convex polygon, negative inside."""
    nearest, inside = math.inf, True
    for (ax, ay), (bx, by) in zip(polygon, polygon[1:] + polygon[:1]):
        ex, ey, px, py = bx - ax, by - ay, point[0] - ax, point[1] - ay
        along = max(0.0, min(1.0, (px * ex + py * ey) / (ex * ex + ey * ey)))
        nearest = min(nearest, math.hypot(px - along * ex, py - along * ey))
        inside = inside and ex * py - ey * px >= 0
    return -nearest if inside else nearest


def write_bitmap(name, width, height, shade):
    """shade(x, y) gives (brightness, alpha), both 0 to 1, of a point."""
    rows = []
    samples = [(i + 0.5) / 4 for i in range(4)]
    for y in reversed(range(height)):
        row = bytearray()
        for x in range(width):
            points = [shade(x + dx, y + dy) for dy in samples for dx in samples]
            alpha = sum(a for _, a in points) / len(points)
            light = sum(b * a for b, a in points) / len(points)
            row += bytes([round(255 * light)] * 3 + [round(255 * alpha)])
        rows.append(bytes(row))
    pixels = b''.join(rows)
    info = struct.pack('<IiiHHIIiiII', 40, width, height, 1, 32, 0, len(pixels), 0, 0, 0, 0)
    with open(name, 'wb') as file:
        file.write(struct.pack('<2sIHHI', b'BM', 54 + len(pixels), 0, 0, 54) + info + pixels)


def slider_handle():
    """A pointer 96 by 192: a rounded body that tapers to the scale below, an edge, a grip, and around it an eighth of
    the width for a focus ring. Sliders tint it: black becomes the edge's colour, white the body's."""
    radius, edge = 14, 11
    outline = [(12, 14), (84, 14), (84, 138), (48, 178), (12, 138)]
    centre = (48, 84)
    body = [(x + math.copysign(min(radius, abs(centre[0] - x)), centre[0] - x) if x != 48 else x,
             y + (radius if y < centre[1] else -radius * (1.36 if x == 48 else 0.42))) for x, y in outline]

    def shade(x, y):
        d = distance((x, y), body) - radius
        if d > 0:
            return 0.0, 0.0
        if d > -edge:
            return 0.0, 1.0
        if abs(x - 48) < 4.5 and 48 < y < 112:
            return 0.45, 1.0
        return 1.0 - 0.14 * (y - 14) / 164, 1.0

    write_bitmap('hpot_handle.bmp', 96, 192, shade)


if __name__ == '__main__':
    slider_handle()
