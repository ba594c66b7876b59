"""Draws the pictures and packs the animations of the example content.

Pictures are flat shapes in PNG files of four colours: real files that any decoder opens, small, and
the same bytes wherever they are made.
"""

import colorsys
import functools
import io
import json
import math
import struct
import zipfile
import zlib

# Each tells whether a point of the square from (-1, -1) to (1, 1) lies inside; y grows downwards.
SHAPES = {
    "disk": lambda x, y: x * x + y * y < 0.8,
    "ring": lambda x, y: 0.42 < x * x + y * y < 0.9,
    "gem": lambda x, y: abs(x) + abs(y) < 0.95,
    "heart": lambda x, y: (1.6 * x * x + 1.6 * y * y - 0.8) ** 3 + 3.2 * x * x * y * y * y < 0,
    "star": lambda x, y: (-0.45 < y < 0.9 - 1.8 * abs(x)) or (0.45 > y > 1.8 * abs(x) - 0.9),
    "box": lambda x, y: abs(x) < 0.75 and -0.5 < y < 0.8 and abs(x) > 0.08 or
           abs(x) < 0.35 and -0.8 < y < -0.6,
    "flower": lambda x, y: min((abs(x) - 0.45) ** 2 + (abs(y) - 0.45) ** 2, x * x + y * y) < 0.2,
    "crown": lambda x, y: abs(x) < 0.85 and -0.6 + 1.5 * abs(abs(x) - 0.42) < y < 0.6,
    "leaf": lambda x, y: max((x - 0.4) ** 2 + y * y, (x + 0.4) ** 2 + y * y) < 0.9,
    "rocket": lambda x, y: abs(x) < 0.3 * (y + 1.0) < 0.6 and y < 0.4 or
              abs(x) < 0.6 and 0.4 <= y < 0.75,
    "face": lambda x, y: x * x + y * y < 0.85 and (abs(x) - 0.35) ** 2 + (y + 0.2) ** 2 > 0.03 and
            not (0.3 < y < 0.42 and abs(x) < 0.45),
    "tag": lambda x, y: abs(y) < 0.55 and abs(x) < 0.95 - 0.3 * abs(y),
    "sheet": lambda x, y: True,
}


def chunk(kind, data):
    return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))


def stored(raw):
    """A zlib stream of stored blocks: unlike a compressed one it does not depend on the zlib at hand."""
    out = [b"\x78\x01"]
    for start in range(0, len(raw), 0xFFFF):
        block = raw[start:start + 0xFFFF]
        last = start + 0xFFFF >= len(raw)
        out.append(struct.pack("<BHH", last, len(block), len(block) ^ 0xFFFF) + block)
    return b"".join(out) + struct.pack(">I", zlib.adler32(raw))


def bubble(row, column, height, width, radius=14):
    """A pixel of a nine-patch: round corners within the borders, and its marks around it."""
    if row in (0, height - 1) or column in (0, width - 1):
        along, length = (column, width) if row in (0, height - 1) else (row, height)
        return 3 if abs(2 * along + 1 - length) < 0.2 * length / 2 else 0
    x, y = (min(at, size - 1 - at) - 0.5 for at, size in ((column, width), (row, height)))
    depth = min(x, y) if max(x, y) > radius else radius - math.hypot(
        max(0, radius - x), max(0, radius - y))
    return 0 if depth < 0 else 2 if depth < 2 else 1


@functools.lru_cache(maxsize=None)
def pixels(shape, width, height):
    """Two bits a pixel: 0 outside, 1 lit, 2 shaded, 3 outline. A nine-patch has its marks instead."""
    inside = SHAPES.get(shape)
    raw = bytearray()
    for row in range(height):
        y = (2 * row + 1) / height - 1
        line = []
        for column in range(width):
            x = (2 * column + 1) / width - 1
            if shape == "ninepatch":
                line.append(bubble(row, column, height, width))
            elif not inside(x, y):
                line.append(0)
            elif not inside(1.13 * x, 1.13 * y):
                line.append(3)
            else:
                line.append(1 if x + y < 0 else 2)
        line += [0] * (-width % 4)
        raw.append(0)
        raw += bytes(a << 6 | b << 4 | c << 2 | d for a, b, c, d in zip(*[iter(line)] * 4))
    return stored(bytes(raw))


def picture_head(width, height, number, outline=(0.9, 0.4)):
    """Everything before the pixels: a palette of four, the first of them transparent."""
    hue = 0.618034 * number % 1.0
    shades = ((0.0, 0.0), (0.35, 1.0), (0.75, 0.85), outline)
    palette = bytes(round(255 * part) for saturation, value in shades
                    for part in colorsys.hsv_to_rgb(hue, saturation, value))
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 2, 3, 0, 0, 0))
            + chunk(b"PLTE", palette) + chunk(b"tRNS", b"\x00"))


def picture(shape, number, width=48, height=None):
    """A PNG; the number picks the colour, neighbours in number differing clearly."""
    height = height or width
    # The stretch marks of a nine-patch have to be black.
    outline = (0.0, 0.0) if shape == "ninepatch" else (0.9, 0.4)
    return (picture_head(width, height, number, outline)
            + chunk(b"IDAT", pixels(shape, width, height)) + chunk(b"IEND", b""))


def moving_picture(shapes, number, size=48):
    """An animated PNG of one frame per shape, half a second each."""
    out = [picture_head(size, size, number), chunk(b"acTL", struct.pack(">II", len(shapes), 0))]
    sequence = 0
    for frame, shape in enumerate(shapes):
        out.append(chunk(b"fcTL", struct.pack(">IIIIIHHBB", sequence, size, size, 0, 0, 1, 2, 1, 0)))
        sequence += 1
        if frame == 0:
            out.append(chunk(b"IDAT", pixels(shape, size, size)))
        else:
            out.append(chunk(b"fdAT", struct.pack(">I", sequence) + pixels(shape, size, size)))
            sequence += 1
    return b"".join(out) + chunk(b"IEND", b"")


def archive(name, shape, number):
    """An animation: "<name>.flajson" and its frames in the folder "<name>"."""
    frames = [f"{name}/frame_{frame}.png" for frame in range(2)]
    plan = {"name": name, "width": 64, "height": 64, "framesPerSecond": 12, "frames": frames}
    entries = [(f"{name}.flajson", json.dumps(plan, indent=1).encode())]
    entries += [(frame, picture(shape, number + step, 64)) for step, frame in enumerate(frames)]
    out = io.BytesIO()
    with zipfile.ZipFile(out, "w", zipfile.ZIP_DEFLATED) as packed:
        for path, data in entries:
            entry = zipfile.ZipInfo(path, (2024, 1, 1, 0, 0, 0))
            entry.compress_type = zipfile.ZIP_DEFLATED
            entry.create_system = 3
            entry.external_attr = 0o100644 << 16
            packed.writestr(entry, data)
    return out.getvalue()


def film():
    """A well-formed MP4 container that holds no track: there is nothing to play in it."""
    def box(kind, data):
        return struct.pack(">I", 8 + len(data)) + kind + data
    unity = struct.pack(">9I", 0x10000, 0, 0, 0, 0x10000, 0, 0, 0, 0x40000000)
    header = (struct.pack(">IIIIIIHH8x", 0, 0, 0, 1000, 0, 0x10000, 0x0100, 0) + unity
              + bytes(24) + struct.pack(">I", 1))
    return box(b"ftyp", b"isom" + struct.pack(">I", 512) + b"isommp41") + box(b"moov", box(b"mvhd", header))
