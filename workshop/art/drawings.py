"""The drawings in workshop/art/ and what is known of them without drawing them."""

import hashlib
import re
from dataclasses import dataclass
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
DRAWINGS = ROOT / "workshop" / "art"
IMAGES = DRAWINGS / "images"
FONT = DRAWINGS / "font"
TEXTURES = ROOT / "data" / "AssetsCompressed"

# Raise this when dunkman-texture gives other bytes for the same drawing: every texture is then built again.
# The encoder's tests hold a checksum that reminds of it.
ENCODER_VERSION = 1


class BadDrawing(Exception):
    """A drawing that cannot become a texture; the text names file and reason."""


@dataclass(frozen=True)
class Drawing:
    key: str  # "player", "Font/A": path of the texture without its suffix
    path: Path

    @property
    def texture(self):
        return TEXTURES / (self.key + ".dds")

    def text(self):
        return self.path.read_text(encoding="utf-8")

    def root_attribute(self, name):
        root = re.search(r"<svg\b[^>]*>", self.text())
        found = root and re.search(r'\s' + re.escape(name) + r'="([^"]*)"', root.group())
        return found.group(1) if found else None

    def size(self):
        """Width and height of the texture in texels."""
        sides = [self.root_attribute("width"), self.root_attribute("height")]
        if not all(side and re.fullmatch(r"[1-9][0-9]*", side) for side in sides):
            raise BadDrawing(f"{self.path}: width and height must be whole numbers of texels")
        return int(sides[0]), int(sides[1])

    def view_size(self):
        """Width and height in the drawing's own units, 100 to a unit of the game."""
        box = (self.root_attribute("viewBox") or "").split()
        if len(box) != 4:
            raise BadDrawing(f"{self.path}: has no viewBox")
        return float(box[2]), float(box[3])

    def tiling(self):
        axes = self.root_attribute("data-tile")
        if axes not in (None, "x", "y", "xy"):
            raise BadDrawing(f"{self.path}: data-tile must be x, y or xy")
        return axes

    def is_opaque(self):
        return self.root_attribute("data-opaque") == "true"

    def sources(self):
        """The drawing and all files it takes parts from, sorted."""
        return sorted(_with_parts(self.path, set()))

    def source_hash(self):
        digest = hashlib.sha256(f"encoder {ENCODER_VERSION}\n".encode())
        for source in self.sources():
            content = source.read_bytes()
            digest.update(f"{source.relative_to(DRAWINGS).as_posix()} {len(content)}\n".encode())
            digest.update(content)
        return digest.hexdigest()[:16]


def _with_parts(path, found):
    if path in found:
        return found
    if not path.is_file():
        raise BadDrawing(f"{path}: is used by a drawing, but does not exist")
    found.add(path)
    for target in re.findall(r'href="([^"#]+)[#"]', path.read_text(encoding="utf-8")):
        _with_parts((path.parent / target).resolve(), found)
    return found


def all_drawings():
    """Every drawing that becomes a texture, sorted by key."""
    images = [Drawing(path.stem, path) for path in IMAGES.glob("*.svg")]
    letters = [Drawing("Font/" + path.stem, path) for path in FONT.glob("*.svg")]
    return sorted(images + letters, key=lambda drawing: drawing.key)


def texture_hash(path):
    return hashlib.sha256(path.read_bytes()).hexdigest()[:16]
