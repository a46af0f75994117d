"""The stages of ./make-assets, which see."""

import argparse
import os
import subprocess
import sys
import tempfile
import time
from concurrent.futures import ThreadPoolExecutor, as_completed
from pathlib import Path

import built_list
import contact_sheet
import icon
from drawings import ROOT, TEXTURES, BadDrawing, all_drawings

# How far a texture may be from a fresh one, since rasterisers differ by version: mean and largest difference
# of a colour channel (0 to 255), and the share of texels that is cut in one and kept in the other. The same
# drawings with another antialiasing gave up to 0.57, 107 and 0.08 %.
MEAN_BOUND = 1.0
LARGEST_BOUND = 128
CUT_BOUND = 0.005

# Later stages: each is a program that builds what is stale, or with --check compares and changes nothing.
LATER_STAGES = [ROOT / "workshop" / "music" / "build", ROOT / "workshop" / "playthrough" / "build"]


def run(command):
    result = subprocess.run([str(word) for word in command], capture_output=True, text=True)
    if result.returncode != 0:
        raise BadDrawing(f"{Path(str(command[0])).name}: {result.stderr.strip()}")
    return result.stdout


def build_texture(tool, drawing, texture):
    """Draws, cuts out, makes the levels and encodes."""
    width, height = drawing.size()
    options = ["--tile", drawing.tiling()] if drawing.tiling() else []
    options += ["--opaque"] if drawing.is_opaque() else []
    texture.parent.mkdir(parents=True, exist_ok=True)
    with tempfile.TemporaryDirectory() as folder:
        picture = Path(folder) / "picture.png"
        run(["rsvg-convert", "--width", width, "--height", height, drawing.path, "--output", picture])
        run([tool, "encode", *options, picture, texture])


def for_each(drawings, work):
    """Runs work(drawing) on all cores, prints a line for each as it ends; returns how many failed."""
    failures = 0
    start = time.monotonic()
    with ThreadPoolExecutor(max_workers=os.cpu_count()) as pool:
        jobs = {pool.submit(work, drawing): drawing for drawing in drawings}
        for number, job in enumerate(as_completed(jobs), start=1):
            try:
                note = job.result()
            except BadDrawing as problem:
                failures += 1
                note = f"FAILED: {problem}"
            print(f"[{number}/{len(jobs)}] {jobs[job].key}: {note}", flush=True)
    if drawings:
        print(f"{len(drawings)} textures in {time.monotonic() - start:.1f} s, {failures} failed")
    return failures


def build_stale(tool, drawings):
    entries = built_list.read()
    stale = [drawing for drawing in drawings if not built_list.is_fresh(drawing, entries)]
    print(f"Textures: {len(stale)} of {len(drawings)} to build")

    def work(drawing):
        # Taken first: a drawing that is saved while it is being drawn stays stale.
        source_hash = drawing.source_hash()
        build_texture(tool, drawing, drawing.texture)
        entries[drawing.key] = built_list.entry_for(source_hash, drawing.texture)
        width, height = drawing.size()
        return f"{width} x {height}, {drawing.texture.stat().st_size / 1024:.0f} KiB"

    failures = for_each(stale, work)
    built_list.write(entries)
    return failures


def remove_orphans(drawings):
    """Textures whose drawing is gone."""
    keys = {drawing.key for drawing in drawings}
    for texture in sorted(TEXTURES.rglob("*.dds")):
        key = texture.relative_to(TEXTURES).with_suffix("").as_posix()
        if key not in keys:
            print(f"Removing {key}: it has no drawing")
            texture.unlink()
    entries = built_list.read()
    known = keys | contact_sheet.sheet_keys() | {icon.KEY}
    built_list.write({key: value for key, value in entries.items() if key in known})


def check_textures(tool, drawings):
    print(f"Textures: comparing {len(drawings)} with fresh ones")
    with tempfile.TemporaryDirectory() as folder:

        def work(drawing):
            if not drawing.texture.exists():
                raise BadDrawing("has not been built")
            fresh = Path(folder) / (drawing.key + ".dds")
            build_texture(tool, drawing, fresh)
            if fresh.read_bytes() == drawing.texture.read_bytes():
                return "the same to the last byte"
            numbers = run([tool, "compare", fresh, drawing.texture]).split()
            mean, largest, cut = (float(number) for number in numbers)
            note = f"mean {mean:.3f}, largest {largest:.0f}, cut differs {100 * cut:.3f} %"
            if mean > MEAN_BOUND or largest > LARGEST_BOUND or cut > CUT_BOUND:
                raise BadDrawing(note)
            return note

        return for_each(drawings, work)


def icon_failures(work, tool):
    """Runs icon.build_stale or icon.check."""
    try:
        print(f"Icon: {work(tool)}", flush=True)
        return 0
    except BadDrawing as problem:
        print(f"Icon: FAILED: {problem}", flush=True)
        return 1


def run_later_stages(options):
    failures = 0
    for stage in LATER_STAGES:
        if stage.exists():
            print(f"{stage.parent.name.capitalize()}:", flush=True)
            failures += 1 if subprocess.run([str(stage), *options], cwd=ROOT).returncode != 0 else 0
    return failures


def wanted_drawings(keys):
    drawings = all_drawings()
    unknown = sorted(set(keys) - {drawing.key for drawing in drawings})
    if unknown:
        sys.exit(f"make-assets: no such drawing: {', '.join(unknown)}")
    return [drawing for drawing in drawings if not keys or drawing.key in keys]


def main():
    parser = argparse.ArgumentParser(prog="make-assets", description="Rebuilds what the game ships.")
    parser.add_argument("--tool", type=Path, required=True, help=argparse.SUPPRESS)
    parser.add_argument("--check", action="store_true", help="compare with fresh ones and change nothing")
    parser.add_argument("keys", nargs="*", metavar="KEY", help="build only these textures")
    arguments = parser.parse_args()
    drawings = wanted_drawings(arguments.keys)

    if arguments.check:
        failures = check_textures(arguments.tool, drawings)
        failures += 0 if arguments.keys else icon_failures(icon.check, arguments.tool) + run_later_stages(["--check"])
        print("Everything is what the sources give" if failures == 0 else f"{failures} failures")
    else:
        failures = build_stale(arguments.tool, drawings)
        if not arguments.keys:
            remove_orphans(drawings)
            failures += icon_failures(icon.build_stale, arguments.tool)
            failures += run_later_stages([])
            contact_sheet.make(arguments.tool)
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
