#!/usr/bin/env python3
"""Writes the table of advance widths that charts are composed with.

Reads TrueType files of a face with Arial's metrics (Liberation Sans) and prints
C++: one width for each Windows-1252 character, in 1/2048 of the em square.

    tools/make_font_widths.py REGULAR.ttf BOLD.ttf > src/chart/record/font_widths.inc
"""
import struct
import sys


def tables(data):
    count = struct.unpack(">H", data[4:6])[0]
    rows = (struct.unpack(">4sIII", data[12 + 16 * i:28 + 16 * i]) for i in range(count))
    return {tag.decode(): data[start:start + length] for tag, _, start, length in rows}


def unicode_map(cmap):
    """Character to glyph, of the subtable in format 4."""
    for i in range(struct.unpack(">H", cmap[2:4])[0]):
        start = struct.unpack(">I", cmap[8 + 8 * i:12 + 8 * i])[0]
        if struct.unpack(">H", cmap[start:start + 2])[0] == 4:
            return segments(cmap[start:])
    raise SystemExit("no character map in format 4")


def segments(table):
    half = struct.unpack(">H", table[6:8])[0]
    count = half // 2
    column = lambda at, kind: struct.unpack(f">{count}{kind}", table[at:at + half])
    ends, starts = column(14, "H"), column(16 + half, "H")
    deltas, offsets = column(16 + 2 * half, "h"), column(16 + 3 * half, "H")
    glyphs = {}
    for i in range(count):
        for code in range(starts[i], ends[i] + 1):
            if offsets[i] == 0:
                glyphs[code] = (code + deltas[i]) & 0xFFFF
                continue
            at = 16 + 3 * half + 2 * i + offsets[i] + 2 * (code - starts[i])
            glyph = struct.unpack(">H", table[at:at + 2])[0]
            glyphs[code] = (glyph + deltas[i]) & 0xFFFF if glyph else 0
    return glyphs


def widths(path):
    found = tables(open(path, "rb").read())
    glyphs = unicode_map(found["cmap"])
    count = struct.unpack(">H", found["hhea"][34:36])[0]
    advances = [struct.unpack(">H", found["hmtx"][4 * i:4 * i + 2])[0] for i in range(count)]
    width = lambda code: advances[min(glyphs.get(code, 0), count - 1)]
    characters = (bytes([i]).decode("cp1252", "replace") for i in range(32, 256))
    return [0 if c == "\ufffd" else width(ord(c)) for c in characters]


def print_table(name, values):
    print(f"constexpr std::array<std::uint16_t, 224> {name} = {{")
    for i in range(0, len(values), 16):
        print("    " + ", ".join(str(v) for v in values[i:i + 16]) + ",")
    print("};")


def main(regular, bold):
    print("// Written by tools/make_font_widths.py from Liberation Sans: do not edit.")
    print_table("regular_widths", widths(regular))
    print_table("bold_widths", widths(bold))


if __name__ == "__main__":
    main(*sys.argv[1:])
