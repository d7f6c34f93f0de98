#!/usr/bin/env python3
"""Checks the compiled pictures of the program against a table of its own.

usage: check_pictures.py FILE.res

Every bitmap must be there under its one language, in its size, with the dialog's face colour in its
corners where it does not fill its rectangle; every icon must be there in all its sizes; the faces of
buttons must stand out from their captions. Prints what is wrong and ends with 1, else prints a line
with the number of pictures and their bytes.
"""
import struct
import sys
from collections import Counter

NEUTRAL, ENGLISH, CHINESE = 0, 1033, 2052
TYPE_BITMAP, TYPE_ICON, TYPE_ICON_GROUP = 2, 3, 14
BI_RGB, BI_RLE8 = 0, 1

FACE = (240, 240, 240)
WHITE, BLACK = (255, 255, 255), (0, 0, 0)
LEAST_CONTRAST = 4.5

# id: (language, width, height)
BITMAPS = {
    148: (ENGLISH, 32, 32), 149: (ENGLISH, 32, 32), 150: (ENGLISH, 32, 32),
    156: (CHINESE, 32, 32), 163: (CHINESE, 747, 60),
    166: (CHINESE, 120, 32), 167: (CHINESE, 120, 32),
    175: (CHINESE, 120, 32), 176: (CHINESE, 120, 32),
    177: (CHINESE, 220, 32), 178: (CHINESE, 220, 32),
    179: (CHINESE, 120, 32), 180: (CHINESE, 120, 32), 182: (CHINESE, 200, 200),
    186: (CHINESE, 200, 150), 187: (CHINESE, 200, 150), 188: (CHINESE, 200, 150),
    196: (CHINESE, 200, 200), 197: (CHINESE, 200, 200), 198: (CHINESE, 200, 200),
    199: (CHINESE, 200, 200), 200: (CHINESE, 200, 200), 201: (CHINESE, 200, 200),
    202: (CHINESE, 200, 150), 203: (CHINESE, 200, 150), 204: (CHINESE, 200, 150),
    205: (CHINESE, 200, 200), 206: (CHINESE, 200, 200),
    207: (ENGLISH, 24, 24), 208: (ENGLISH, 24, 24), 209: (ENGLISH, 96, 96),
    211: (CHINESE, 220, 32), 212: (CHINESE, 220, 32),
}

# id: the sizes an icon must at least have, in pixels
ICONS = {
    107: {16, 20, 24, 32, 40, 48, 64, 256},
    134: {32}, 135: {32}, 136: {32},
}

# Pictures that take each other's place on the screen.
PAIRS = [(166, 167), (175, 176), (177, 178), (177, 211), (177, 212), (179, 180), (196, 197),
         (198, 199), (200, 201), (205, 206), (186, 203), (187, 204), (188, 202)]

# id: (colour of the face, colour of the caption drawn on it)
BUTTON_FACES = {
    166: ((26, 95, 168), WHITE), 167: ((17, 70, 128), WHITE),
    176: ((230, 235, 242), BLACK), 175: ((195, 206, 221), BLACK),
    178: ((230, 235, 242), BLACK), 177: ((195, 206, 221), BLACK),
    180: ((230, 235, 242), BLACK), 179: ((195, 206, 221), BLACK),
    211: ((230, 235, 242), BLACK), 212: ((195, 206, 221), BLACK),
}
BANNER, BANNER_COLOUR = 163, (18, 57, 91)


def read_resources(path):
    """{(type, id, language): bytes} of the numbered resources in a .res file."""
    with open(path, "rb") as file:
        data = file.read()
    resources, at = {}, 0

    def name(offset):  # (number or None, offset behind it)
        if data[offset:offset + 2] == b"\xff\xff":
            return struct.unpack_from("<H", data, offset + 2)[0], offset + 4
        while data[offset:offset + 2] != b"\0\0":
            offset += 2
        return None, offset + 2

    while at < len(data):
        size, header = struct.unpack_from("<II", data, at)
        kind, after = name(at + 8)
        number, after = name(after)
        after = (after + 3) // 4 * 4
        language = struct.unpack_from("<H", data, after + 6)[0]
        resources[kind, number, language] = data[at + header:at + header + size]
        at = (at + header + size + 3) // 4 * 4
    return resources


def rle8_rows(packed, width, height):
    """The palette indices of run-length coded pixels, row by row from the bottom."""
    pixels = bytearray(width * height)
    x = y = at = 0
    while at + 1 < len(packed):
        count, value = packed[at], packed[at + 1]
        at += 2
        if count:
            pixels[y * width + x:y * width + x + count] = bytes([value]) * count
            x += count
        elif value == 0:
            x, y = 0, y + 1
        elif value == 1:
            break
        elif value == 2:
            x, y, at = x + packed[at], y + packed[at + 1], at + 2
        else:
            pixels[y * width + x:y * width + x + value] = packed[at:at + value]
            x, at = x + value, at + (value + 1) // 2 * 2
    return [pixels[row * width:(row + 1) * width] for row in range(height)]


class Bitmap:
    """A device-independent bitmap as a resource holds it: header, palette, pixels."""

    def __init__(self, data):
        (header, self.width, self.height, _, bits, compression, _, _, _, used, _) = \
            struct.unpack_from("<IiiHHIIiiII", data)
        if (bits, compression) not in ((8, BI_RGB), (8, BI_RLE8)):
            raise ValueError(f"{bits} bits with compression {compression}, expected 8 bits")
        colours = used or 1 << bits
        palette = [tuple(reversed(data[header + 4 * i:header + 4 * i + 3])) for i in range(colours)]
        packed = data[header + 4 * colours:]
        if compression == BI_RLE8:
            rows = rle8_rows(packed, self.width, self.height)
        else:
            stride = (self.width + 3) // 4 * 4
            rows = [packed[y * stride:y * stride + self.width] for y in range(self.height)]
        self.rows = [[palette[index] for index in row] for row in reversed(rows)]

    def corners(self):
        return [self.rows[y][x] for y in (0, -1) for x in (0, -1)]

    def dominant(self):
        return Counter(pixel for row in self.rows for pixel in row).most_common(1)[0][0]


def contrast(one, other):
    """Contrast ratio of two colours, from 1 to 21, by relative luminance."""
    def luminance(colour):
        linear = [c / 12.92 if c <= 0.04045 else ((c + 0.055) / 1.055) ** 2.4
                  for c in (part / 255 for part in colour)]
        return 0.2126 * linear[0] + 0.7152 * linear[1] + 0.0722 * linear[2]
    bright, dark = sorted((luminance(one), luminance(other)), reverse=True)
    return (bright + 0.05) / (dark + 0.05)


def check_bitmaps(resources, wrong):
    languages = {}
    for kind, number, language in resources:
        if kind == TYPE_BITMAP:
            languages.setdefault(number, []).append(language)
    for number in sorted(set(languages) - set(BITMAPS)):
        wrong.append(f"bitmap {number}: not a picture of this program")
    bitmaps = {}
    for number, (language, width, height) in BITMAPS.items():
        if languages.get(number) != [language]:
            wrong.append(f"bitmap {number}: stored under languages {languages.get(number, 'none')}, "
                         f"expected {language} only")
            continue
        try:
            bitmap = Bitmap(resources[TYPE_BITMAP, number, language])
        except (ValueError, IndexError, struct.error) as reason:
            wrong.append(f"bitmap {number}: cannot be read: {reason}")
            continue
        bitmaps[number] = bitmap
        if (bitmap.width, bitmap.height) != (width, height):
            wrong.append(f"bitmap {number}: {bitmap.width} x {bitmap.height} pixels, "
                         f"expected {width} x {height}")
        if number != BANNER and set(bitmap.corners()) != {FACE}:
            wrong.append(f"bitmap {number}: corners {bitmap.corners()}, expected {FACE} behind it")
    return bitmaps


def check_looks(bitmaps, wrong):
    for one, other in PAIRS:
        if one in bitmaps and other in bitmaps:
            sizes = [(bitmaps[n].width, bitmaps[n].height) for n in (one, other)]
            if sizes[0] != sizes[1]:
                wrong.append(f"bitmaps {one} and {other}: sizes {sizes} differ")
    for number, (face, caption) in BUTTON_FACES.items():
        if number not in bitmaps:
            continue
        dominant = bitmaps[number].dominant()
        if dominant != face:
            wrong.append(f"button face {number}: colour {dominant}, expected {face}")
        if contrast(dominant, caption) < LEAST_CONTRAST:
            wrong.append(f"button face {number}: contrast {contrast(dominant, caption):.1f} to its "
                         f"caption, at least {LEAST_CONTRAST} needed")
    if BANNER in bitmaps and bitmaps[BANNER].dominant() != BANNER_COLOUR:
        wrong.append(f"banner {BANNER}: colour {bitmaps[BANNER].dominant()}, "
                     f"expected {BANNER_COLOUR}")


def check_icons(resources, wrong):
    for number, sizes in ICONS.items():
        group = resources.get((TYPE_ICON_GROUP, number, NEUTRAL))
        if group is None:
            wrong.append(f"icon {number}: missing, or not language neutral")
            continue
        count = struct.unpack_from("<H", group, 4)[0]
        found = {}
        for i in range(count):
            width, height, _, _, _, _, _, image = struct.unpack_from("<BBBBHHIH", group, 6 + 14 * i)
            found[width or 256] = image  # 0 stands for 256
            if width != height:
                wrong.append(f"icon {number}: an image of {width} x {height} pixels is not square")
            if (TYPE_ICON, image, NEUTRAL) not in resources:
                wrong.append(f"icon {number}: image {image} is missing")
        missing = sizes - set(found)
        if missing:
            wrong.append(f"icon {number}: sizes {sorted(missing)} are missing")


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    resources, wrong = read_resources(sys.argv[1]), []
    check_looks(check_bitmaps(resources, wrong), wrong)
    check_icons(resources, wrong)
    for line in wrong:
        print(f"{sys.argv[1]}: {line}", file=sys.stderr)
    if wrong:
        sys.exit(1)
    print(f"{len(BITMAPS)} bitmaps and {len(ICONS)} icons, "
          f"{sum(len(data) for data in resources.values())} bytes")


if __name__ == "__main__":
    main()
