#!/usr/bin/env python3
"""Pictures of steps, as somebody who changes a level asks for them.

    preview_test.py FOLDER     FOLDER holds dunkman-frames
"""

import hashlib
import os
import shutil
import struct
import subprocess
import sys
import tempfile
import unittest
import zlib

PROGRAMS = os.path.abspath(sys.argv.pop(1))
RENDER = os.path.abspath("tools/preview/render_frame")
DATA = os.path.abspath("data")
WIDTH, HEIGHT = 64, 36


class Preview(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.mkdtemp(prefix="dunkman preview ")
        self.addCleanup(shutil.rmtree, self.folder)

    def render(self, *words):
        return subprocess.run([RENDER, "--programs", PROGRAMS, "--size", f"{WIDTH}x{HEIGHT}", *words], cwd=self.folder,
                              capture_output=True, text=True, check=False)

    def read(self, name):
        """Width, height and rows of a picture; a row is a filter of 0 and three bytes a pixel."""
        with open(os.path.join(self.folder, name), "rb") as file:
            data = file.read()
        width, height = struct.unpack(">II", data[16:24])
        length = struct.unpack(">I", data[33:37])[0]
        rows = zlib.decompress(data[41:41 + length])
        self.assertEqual(len(rows), height * (3 * width + 1))
        return width, height, [rows[y * (3 * width + 1) + 1:(y + 1) * (3 * width + 1)] for y in range(height)]

    def test_each_step_is_a_picture_of_its_own(self):
        result = self.render("--step", "600", "--step", "900", "-o", "at %d.png")
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual(sorted(os.listdir(self.folder)), ["at 600.png", "at 900.png"])
        first, second = self.read("at 600.png"), self.read("at 900.png")
        self.assertEqual(first[:2], (WIDTH, HEIGHT))
        self.assertNotEqual(first, second)

    def test_a_sheet_holds_them_row_by_row(self):
        result = self.render("--every", "300", "--until", "900", "--sheet", "2", "-o", "sheet.png")
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual(self.render("--step", "600", "-o", "second.png").returncode, 0)
        width, height, rows = self.read("sheet.png")
        self.assertEqual((width, height), (2 * WIDTH, 2 * HEIGHT))
        self.assertEqual([row[3 * WIDTH:] for row in rows[:HEIGHT]], self.read("second.png")[2])
        self.assertEqual(rows[-1][3 * WIDTH:], bytes(3 * WIDTH))

    def test_any_place_can_be_looked_at_and_the_data_stays_as_it_is(self):
        def digest():
            with open(os.path.join(DATA, "scene.json5"), "rb") as file:
                return hashlib.sha256(file.read()).hexdigest()

        before = digest()
        for name, place in (("bar.png", "17.5,0"), ("pier.png", "34,0")):
            result = self.render(f"--at={place}", "-o", name)
            self.assertEqual(result.returncode, 0, result.stderr)
        self.assertNotEqual(self.read("bar.png"), self.read("pier.png"))
        self.assertEqual(digest(), before)

    def test_many_pictures_do_not_overwrite_one(self):
        result = self.render("--step", "1", "--step", "2", "-o", "one.png")
        self.assertEqual(result.returncode, 2)
        self.assertIn("2 pictures do not go into one one.png", result.stderr)
        self.assertEqual(os.listdir(self.folder), [])

    def test_a_step_behind_the_end_is_told(self):
        result = self.render("--screen", "Credits", "--step", "5000", "-o", "end.png")
        self.assertEqual(result.returncode, 1)
        self.assertIn("the show ended before the last step that was asked for", result.stderr)
        self.assertEqual(os.listdir(self.folder), [])


if __name__ == "__main__":
    unittest.main(verbosity=2)
