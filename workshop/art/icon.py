"""The icon of the Windows programs: app/windows/dunkman.ico, from the drawings in workshop/art/icon/."""

import struct
import subprocess
import tempfile
from pathlib import Path

import built_list
from drawings import DRAWINGS, ROOT, BadDrawing, Drawing

KEY = "icon"
FILE = ROOT / "app" / "windows" / "dunkman.ico"
# The sizes that Windows asks for, at the scales of its displays.
SMALL_SIZES = [16, 20, 24]
LARGE_SIZES = [32, 40, 48, 64, 256]

# How far a texel may be from a fresh one, since rasterisers differ by version: mean of a channel (0 to 255).
MEAN_BOUND = 2.0


def sources():
    """Drawing -> sizes that are made of it."""
    return {Drawing(KEY, DRAWINGS / "icon" / "small.svg"): SMALL_SIZES,
            Drawing(KEY, DRAWINGS / "icon" / "large.svg"): LARGE_SIZES}


def source_hash():
    return "-".join(drawing.source_hash() for drawing in sources())


def is_fresh(entries):
    return FILE.exists() and entries.get(KEY) == built_list.entry_for(source_hash(), FILE)


def draw(tool, path):
    with tempfile.TemporaryDirectory() as folder:
        pictures = []
        for drawing, sizes in sources().items():
            for size in sizes:
                picture = Path(folder) / f"{size}.png"
                run(["rsvg-convert", "--width", str(size), "--height", str(size), drawing.path, "--output", picture])
                pictures.append(picture)
        run([tool, "icon", path, *pictures])


def run(command):
    result = subprocess.run(command, capture_output=True, text=True)
    if result.returncode != 0:
        raise BadDrawing(f"{Path(command[0]).name}: {result.stderr.strip()}")


def build_stale(tool):
    """Builds the file when the drawings have changed; returns what there is to say of it."""
    entries = built_list.read()
    if is_fresh(entries):
        return "nothing to build"
    built_from = source_hash()
    draw(tool, FILE)
    entries[KEY] = built_list.entry_for(built_from, FILE)
    built_list.write(entries)
    return f"{len(pictures_of(FILE))} sizes, {FILE.stat().st_size / 1024:.0f} KiB"


def pictures_of(path):
    """Size -> what the file holds of that size."""
    content = path.read_bytes()
    pictures = {}
    for number in range(struct.unpack_from("<H", content, 4)[0]):
        width, length, offset = struct.unpack_from("<B7xII", content, 6 + 16 * number)
        pictures[width or 256] = content[offset:offset + length]
    return pictures


def check(tool):
    """Raises BadDrawing when the file is not what the drawings give; returns how far it is from that."""
    if not FILE.exists():
        raise BadDrawing("has not been built")
    with tempfile.TemporaryDirectory() as folder:
        fresh_file = Path(folder) / "icon.ico"
        draw(tool, fresh_file)
        fresh, built = pictures_of(fresh_file), pictures_of(FILE)
    if fresh == built:
        return "the same to the last byte"
    if fresh.keys() != built.keys():
        raise BadDrawing(f"holds the sizes {sorted(built)} instead of {sorted(fresh)}")
    worst = 0.0
    for size in fresh:
        if size < 256:  # the largest is packed; it shows the same drawing
            differences = [abs(one - other) for one, other in zip(fresh[size], built[size])]
            worst = max(worst, sum(differences) / len(differences))
    if worst > MEAN_BOUND:
        raise BadDrawing(f"mean difference {worst:.3f}")
    return f"mean difference {worst:.3f}"
