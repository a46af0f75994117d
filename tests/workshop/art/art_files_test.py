"""Checks of workshop/art/ and data/ that need neither the texture tool nor the rasteriser: run as a test by CTest."""

import re
import sys
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[3]
sys.path.insert(0, str(ROOT / "workshop" / "art"))
sys.dont_write_bytecode = True

import built_list  # noqa: E402
import drawings  # noqa: E402
import icon  # noqa: E402

COLOUR_ATTRIBUTES = r'(?:fill|stroke|stop-color|color|flood-color)\s*[=:]\s*"?\s*([^";}]+)'
WORDS_FOR_NO_COLOUR = {"none", "inherit"}
# What a texture cannot show (its alpha has one bit), or what is no drawing by hand.
FORBIDDEN_ELEMENTS = ["image", "text", "filter", "mask", "style", "foreignObject", "script"]
MEBIBYTE = 1024 * 1024


def svg_files():
    return sorted((ROOT / "workshop" / "art").rglob("*.svg"))


def name_of(path):
    return path.relative_to(ROOT).as_posix()


def palette():
    text = (ROOT / "workshop" / "art" / "palette.json5").read_text(encoding="utf-8")
    return {colour.lower() for colour in re.findall(r'^\s*\w+: "(#[0-9a-fA-F]{6})",', text, re.MULTILINE)}


class Drawings(unittest.TestCase):
    def test_colours_come_from_the_palette(self):
        known = palette()
        self.assertGreater(len(known), 20)
        for path in svg_files():
            for colour in re.findall(COLOUR_ATTRIBUTES, path.read_text(encoding="utf-8")):
                if colour in WORDS_FOR_NO_COLOUR or colour.startswith("url(#"):
                    continue
                with self.subTest(file=name_of(path), colour=colour):
                    self.assertIn(colour.lower(), known)

    def test_use_only_what_a_texture_can_show(self):
        for path in svg_files():
            text = path.read_text(encoding="utf-8")
            with self.subTest(file=name_of(path)):
                for element in FORBIDDEN_ELEMENTS:
                    self.assertNotRegex(text, rf"<{element}\b")
                self.assertNotRegex(text, r"opacity\s*[=:]", "nothing is half transparent")

    def test_state_their_size_and_keep_their_ratio(self):
        for drawing in drawings.all_drawings():
            with self.subTest(drawing=drawing.key):
                width, height = drawing.size()
                across, down = drawing.view_size()
                # The view box may be off by rounding to whole texels, or the rasteriser leaves empty margins.
                self.assertAlmostEqual(width / across * down, height, delta=0.75)
                drawing.tiling()

    def test_hold_all_letters(self):
        letters = [drawing.key for drawing in drawings.all_drawings() if drawing.key.startswith("Font/")]
        self.assertEqual(letters, ["Font/" + chr(letter) for letter in range(ord("A"), ord("Z") + 1)])


class Textures(unittest.TestCase):
    def test_are_built_from_what_the_drawings_are_now(self):
        entries = built_list.read()
        for drawing in drawings.all_drawings():
            with self.subTest(drawing=drawing.key):
                self.assertTrue(built_list.is_fresh(drawing, entries), "run ./make-assets")

    def test_all_have_a_drawing(self):
        keys = {drawing.key for drawing in drawings.all_drawings()}
        for texture in sorted(drawings.TEXTURES.rglob("*.dds")):
            self.assertIn(texture.relative_to(drawings.TEXTURES).with_suffix("").as_posix(), keys)

    def test_go_with_an_icon_of_all_usual_sizes_from_what_its_drawings_are_now(self):
        self.assertTrue(icon.is_fresh(built_list.read()), "run ./make-assets")
        self.assertEqual(list(icon.pictures_of(icon.FILE)), [16, 20, 24, 32, 40, 48, 64, 256])

    def test_fit_into_the_download(self):
        size = sum(path.stat().st_size for path in (ROOT / "data").rglob("*") if path.is_file())
        self.assertLess(size, 40 * MEBIBYTE)


if __name__ == "__main__":
    unittest.main()
