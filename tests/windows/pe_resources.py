"""What Windows reads in a program beside its code."""

import re
import struct

ICON, GROUP_ICON, VERSION, MANIFEST = 3, 14, 16, 24


def resources(program):
    """The resources of a program's bytes: {(type, number): content}, whatever their language."""
    header = struct.unpack_from("<I", program, 0x3C)[0]
    sections, = struct.unpack_from("<H", program, header + 6)
    optional_size, = struct.unpack_from("<H", program, header + 20)
    optional = header + 24
    assert struct.unpack_from("<H", program, optional)[0] == 0x20B, "a program for 64 bits"
    directory, = struct.unpack_from("<I", program, optional + 112 + 2 * 8)

    def offset_of(address):
        for number in range(sections):
            size, start, _, raw = struct.unpack_from("<IIII", program, optional + optional_size + 40 * number + 8)
            if start <= address < start + size:
                return raw + address - start
        raise ValueError(f"{address:#x} lies in no section")

    root = offset_of(directory)

    def entries(table):
        named, numbered = struct.unpack_from("<HH", program, root + table + 12)
        for number in range(named + numbered):
            name, place = struct.unpack_from("<II", program, root + table + 16 + 8 * number)
            yield name, place & 0x7FFFFFFF

    found = {}
    for kind, names in entries(0):
        for number, languages in entries(names):
            for _, leaf in entries(languages):
                address, size = struct.unpack_from("<II", program, root + leaf)
                start = offset_of(address)
                found[kind, number] = program[start:start + size]
    return found


def icon_pictures(found):
    """The sizes of the icon that Windows shows for the program, each with its picture's content."""
    group = found[GROUP_ICON, min(number for kind, number in found if kind == GROUP_ICON)]
    pictures = {}
    for entry in range(struct.unpack_from("<H", group, 4)[0]):
        width, number = struct.unpack_from("<B11xH", group, 6 + 14 * entry)
        pictures[width or 256] = found[ICON, number]
    return pictures


def version_words(found):
    """The texts of the version by their names, and the file's version as four numbers."""
    content = found[VERSION, 1]
    place = content.index(struct.pack("<I", 0xFEEF04BD))  # begins the part with the numbers
    high, low = struct.unpack_from("<II", content, place + 8)
    # Each text: two lengths, the word 1 for a text, the name, zeros up to a whole word, the text itself.
    texts = dict(re.findall(r"\x01([A-Z]\w+)\0+([^\0]+)\0", content[place + 52:].decode("utf-16-le")))
    return texts, (high >> 16, high & 0xFFFF, low >> 16, low & 0xFFFF)
