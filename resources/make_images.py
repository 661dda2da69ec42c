#!/usr/bin/env python3
"""Draws the program's built-in images (issue icons, the default executable icon and the splash)
into Imgs/. Pure Python, no imaging library: each image is a function from pixel centre to RGBA,
supersampled 4x4 for smooth edges. Run it after changing a drawing and commit the PNGs."""
import math
import os
import struct
import zlib

HERE = os.path.dirname(os.path.abspath(__file__))
OUT = os.path.join(HERE, "Imgs")


def write_png(path, width, height, pixel):
    rows = []
    for y in range(height):
        row = bytearray([0])
        for x in range(width):
            acc = [0.0, 0.0, 0.0, 0.0]
            for sy in range(4):
                for sx in range(4):
                    r, g, b, a = pixel(x + (sx + 0.5) / 4, y + (sy + 0.5) / 4)
                    acc[0] += r * a
                    acc[1] += g * a
                    acc[2] += b * a
                    acc[3] += a
            alpha = acc[3] / 16
            if acc[3] > 0:
                row += bytes(int(round(c / acc[3])) for c in acc[:3])
            else:
                row += b"\0\0\0"
            row.append(int(round(alpha * 255)))
        rows.append(bytes(row))
    raw = zlib.compress(b"".join(rows), 9)

    def chunk(tag, data):
        body = tag + data
        return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body) & 0xFFFFFFFF)

    with open(path, "wb") as f:
        f.write(b"\x89PNG\r\n\x1a\n")
        f.write(chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 6, 0, 0, 0)))
        f.write(chunk(b"IDAT", raw))
        f.write(chunk(b"IEND", b""))


def seg_dist(px, py, ax, ay, bx, by):
    dx, dy = bx - ax, by - ay
    t = max(0.0, min(1.0, ((px - ax) * dx + (py - ay) * dy) / (dx * dx + dy * dy)))
    return math.hypot(px - ax - t * dx, py - ay - t * dy)


CLEAR = (0, 0, 0, 0.0)


def disc_icon(fill, mark):
    def pixel(x, y):
        if math.hypot(x - 8, y - 8) > 7.5:
            return CLEAR
        if mark(x, y):
            return (255, 255, 255, 1.0)
        return fill + (1.0,)
    return pixel


def error_mark(x, y):
    return min(seg_dist(x, y, 5, 5, 11, 11), seg_dist(x, y, 11, 5, 5, 11)) < 1.1


def info_mark(x, y):
    return math.hypot(x - 8, y - 4.5) < 1.3 or seg_dist(x, y, 8, 7.5, 8, 12) < 1.1


def ok_mark(x, y):
    return min(seg_dist(x, y, 4.5, 8.5, 7, 11), seg_dist(x, y, 7, 11, 11.5, 5)) < 1.1


def warn(x, y):
    # Triangle with its apex at the top centre.
    inside = y <= 14.5 and y >= 1.5 and abs(x - 8) <= (y - 1.5) * 7 / 13
    if not inside:
        return CLEAR
    if seg_dist(x, y, 8, 5.5, 8, 10) < 1.0 or math.hypot(x - 8, y - 12.3) < 1.1:
        return (20, 20, 20, 1.0)
    return (240, 190, 30, 1.0)


def mugen(x, y):
    # Rounded square with a white "M" of four strokes.
    if max(abs(x - 8) - 5.5, abs(y - 8) - 5.5) > 1.5 and math.hypot(max(abs(x - 8) - 5.5, 0), max(abs(y - 8) - 5.5, 0)) > 1.5:
        return CLEAR
    strokes = [(4.5, 12, 4.5, 4.5), (4.5, 4.5, 8, 9), (8, 9, 11.5, 4.5), (11.5, 4.5, 11.5, 12)]
    if min(seg_dist(x, y, *s) for s in strokes) < 0.9:
        return (255, 255, 255, 1.0)
    return (200, 70, 40, 1.0)


def splash(x, y):
    w, h = 480, 270
    t = y / h
    r, g, b = 24 + 30 * t, 28 + 20 * t, 48 + 60 * (1 - t)
    # The program's mark: a "T" inside a ring.
    cx, cy = w / 2, h / 2 - 10
    d = math.hypot(x - cx, y - cy)
    t_bar = seg_dist(x, y, cx - 38, cy - 28, cx + 38, cy - 28) < 7
    t_stem = seg_dist(x, y, cx, cy - 28, cx, cy + 45) < 7
    if 70 < d < 82 or t_bar or t_stem:
        return (235, 150, 60, 1.0)
    if abs(y - (h - 40)) < 2 and abs(x - cx) < 150:
        return (235, 150, 60, 0.8)
    return (r, g, b, 1.0)


def main():
    os.makedirs(OUT, exist_ok=True)
    write_png(os.path.join(OUT, "error.png"), 16, 16, disc_icon((200, 40, 40), error_mark))
    write_png(os.path.join(OUT, "info.png"), 16, 16, disc_icon((40, 110, 200), info_mark))
    write_png(os.path.join(OUT, "ok.png"), 16, 16, disc_icon((40, 160, 70), ok_mark))
    write_png(os.path.join(OUT, "warn.png"), 16, 16, warn)
    write_png(os.path.join(OUT, "mugen.png"), 16, 16, mugen)
    write_png(os.path.join(OUT, "Splash.png"), 480, 270, splash)


if __name__ == "__main__":
    main()
