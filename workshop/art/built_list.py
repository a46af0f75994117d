"""workshop/art/built.json5: from which sources each texture was built, so that a stale one is seen at once."""

import re

from drawings import ROOT, texture_hash

PATH = ROOT / "workshop" / "art" / "built.json5"
HEADING = "// Written by make-assets: hash of the sources of each texture, then hash of the texture itself.\n"


def read():
    if not PATH.exists():
        return {}
    return dict(re.findall(r'^"([^"]+)": "([^"]+)",$', PATH.read_text(encoding="utf-8"), re.MULTILINE))


def write(entries):
    lines = [f'"{key}": "{entries[key]}",\n' for key in sorted(entries)]
    PATH.write_text(HEADING + "{\n" + "".join(lines) + "}\n", encoding="utf-8")


def entry_for(source_hash, texture):
    return f"{source_hash} {texture_hash(texture)}"


def is_fresh(drawing, entries):
    """True when the texture is the one that was built, and was built from what the sources are now."""
    if not drawing.texture.exists():
        return False
    return entries.get(drawing.key) == entry_for(drawing.source_hash(), drawing.texture)
