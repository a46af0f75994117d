"""Sets our encoder against the packaged ones on our own pictures and prints the table of docs/textures.md.

Needs libsquish-dev, libnvtt-bin and imagemagick:

    cmake --build build/assets --target dunkman-texture squish-encode
    python3 workshop/art/compare_encoders.py
"""

import math
import subprocess
import tempfile
import time
from concurrent.futures import ThreadPoolExecutor
from dataclasses import dataclass
from pathlib import Path

from drawings import ROOT, all_drawings

BIN = ROOT / "build" / "assets" / "bin"
TOOL = BIN / "dunkman-texture"

ENCODERS = {
    "dunkman-texture": [TOOL, "encode", "IN", "OUT"],
    "libsquish, iterated cluster fit": [BIN / "squish-encode", "IN", "OUT"],
    "nvcompress": ["nvcompress", "-nocuda", "KIND", "IN", "OUT"],
    "ImageMagick, cluster fit": ["convert-im6.q16", "IN", "-define", "dds:compression=dxt1", "-define",
                                 "dds:cluster-fit=true", "OUT"],
}


@dataclass
class Sum:
    squares: int = 0
    texels: int = 0
    wrong_cuts: int = 0
    seconds: float = 0

    def psnr(self):
        return 10 * math.log10(255 * 255 * 3 * self.texels / self.squares)


def run(command):
    return subprocess.run([str(word) for word in command], check=True, capture_output=True, text=True).stdout


def encode(encoder, drawing, picture, texture):
    # nvcompress is told whether there is any alpha to keep: it does better where there is none.
    words = {"IN": picture, "OUT": texture, "KIND": "-bc1" if drawing.is_opaque() else "-bc1a"}
    start = time.monotonic()
    run([words.get(word, word) for word in ENCODERS[encoder]])
    return time.monotonic() - start


def measure_all(folder, drawing):
    """Encoder -> (Sum, coverage of each level)."""
    picture = folder / (drawing.key.replace("/", "-") + ".png")
    run(["rsvg-convert", drawing.path, "--output", picture])
    results = {}
    for number, encoder in enumerate(ENCODERS):
        texture = picture.with_suffix(f".{number}.dds")
        seconds = encode(encoder, drawing, picture, texture)
        _, wrong, texels, squares = run([TOOL, "measure", picture, texture]).split()
        levels = [float(word) for word in run([TOOL, "coverage", texture]).split()]
        results[encoder] = Sum(int(squares), int(texels), int(wrong), seconds), levels
    return results


def add(total, part):
    total.squares += part.squares
    total.texels += part.texels
    total.wrong_cuts += part.wrong_cuts
    total.seconds += part.seconds


def print_totals(title, drawings, results):
    print(f"\n{title} ({len(drawings)} pictures)\n")
    print("| encoder | PSNR, dB | wrongly cut texels | coverage of level 3 against level 0 | seconds |")
    print("|---|---|---|---|---|")
    for encoder in ENCODERS:
        total, kept = Sum(), []
        for drawing in drawings:
            part, levels = results[drawing.key][encoder]
            add(total, part)
            if len(levels) > 3 and levels[0] > 0:
                kept.append(levels[3] / levels[0])
        ratio = f"{min(kept):.2f} to {max(kept):.2f}" if kept else "no levels"
        print(f"| {encoder} | {total.psnr():.2f} | {total.wrong_cuts} | {ratio} | {total.seconds:.1f} |")


def print_each(drawings, results):
    print("\n| picture | " + " | ".join(ENCODERS) + " |\n|---|" + "---|" * len(ENCODERS))
    for drawing in drawings:
        cells = []
        for encoder in ENCODERS:
            part, _ = results[drawing.key][encoder]
            wrong = f" ({part.wrong_cuts} wrong)" if part.wrong_cuts else ""
            cells.append(f"{part.psnr():.2f}{wrong}")
        print(f"| {drawing.key} | " + " | ".join(cells) + " |")


def main():
    drawings = all_drawings()
    with tempfile.TemporaryDirectory() as name:
        with ThreadPoolExecutor(max_workers=2) as pool:
            results = dict(zip([drawing.key for drawing in drawings],
                               pool.map(lambda drawing: measure_all(Path(name), drawing), drawings)))
    opaque = [drawing for drawing in drawings if drawing.is_opaque()]
    cut_out = [drawing for drawing in drawings if not drawing.is_opaque()]
    print_totals("Cut-outs", cut_out, results)
    print_totals("Opaque pictures", opaque, results)
    print_each(drawings, results)


if __name__ == "__main__":
    main()
