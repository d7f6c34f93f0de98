"""Cuts the unused end off the colour table of an 8-bit run-length coded BMP file, in place.

The converter always writes 256 colours; the pictures use far fewer, and the tables of all of them
together would be a twentieth of the program.
"""

import struct
import sys

OFFSET_OF_PIXELS = 10  # in the file header
HEADER_END = 54
COLOURS_USED = 46
COLOURS_IMPORTANT = 50
COLOUR_BYTES = 4
RLE8 = 1


def highest_colour(codes: bytes) -> int:
    """The highest index into the colour table that the run-length codes use."""
    highest = 0
    at = 0
    while at + 1 < len(codes):
        count, value = codes[at], codes[at + 1]
        at += 2
        if count:
            highest = max(highest, value)
        elif value == 1:  # end of the bitmap
            break
        elif value == 2:  # a jump, which the program's reader does not know
            raise ValueError("has a jump in its run-length codes")
        elif value > 2:  # that many colours as they are, padded to an even number
            highest = max(highest, *codes[at : at + value])
            at += value + value % 2
    return highest


def trimmed(bitmap: bytes) -> bytes:
    """The bitmap without the colours that no pixel has."""
    bits, compression = struct.unpack_from("<HI", bitmap, 28)
    if bitmap[:2] != b"BM" or bits != 8 or compression != RLE8:
        raise ValueError("not an 8-bit run-length coded BMP file")
    (pixels,) = struct.unpack_from("<I", bitmap, OFFSET_OF_PIXELS)
    colours = highest_colour(bitmap[pixels:]) + 1
    start = HEADER_END + colours * COLOUR_BYTES
    result = bytearray(bitmap[:start] + bitmap[pixels:])
    struct.pack_into("<I", result, 2, len(result))
    struct.pack_into("<I", result, OFFSET_OF_PIXELS, start)
    struct.pack_into("<I", result, COLOURS_USED, colours)
    struct.pack_into("<I", result, COLOURS_IMPORTANT, colours)
    return bytes(result)


def main() -> int:
    for path in sys.argv[1:]:
        try:
            with open(path, "rb") as file:
                result = trimmed(file.read())
        except (ValueError, struct.error) as error:
            print(f"trim_palette.py: {path}: {error}", file=sys.stderr)
            return 1
        with open(path, "wb") as file:
            file.write(result)
    return 0


if __name__ == "__main__":
    sys.exit(main())
