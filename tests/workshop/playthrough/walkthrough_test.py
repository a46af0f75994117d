"""docs/level-walkthrough.md, followed to the letter on a copy of the data: its lines fit, and the programs print what
it shows.

    walkthrough_test.py FOLDER     FOLDER holds dunkman-author and dunkman-inspect
"""

import re
import shutil
import subprocess
import sys
import tempfile
import textwrap
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[3]
PROGRAMS = Path(sys.argv.pop(1)).resolve()
DOCUMENT = (ROOT / "docs" / "level-walkthrough.md").read_text(encoding="utf-8")
PLAN = "workshop/playthrough/playthrough.plan"


def blocks(language):
    found = re.findall(r"^```(\w*)\n(.*?)^```", DOCUMENT, re.MULTILINE | re.DOTALL)
    return [text for block_language, text in found if block_language == language]


def printed(beginning):
    """The indented lines that begin so, as a program prints them."""
    for block in re.findall(r"(?:^    .*\n)+", DOCUMENT, re.MULTILINE):
        text = textwrap.dedent(block)
        if text.lstrip().startswith(beginning):
            return text
    raise AssertionError(f"the document shows nothing that begins with {beginning}")


class Walkthrough(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.root = Path(scratch.name)
        shutil.copytree(ROOT / "data", self.root / "data")
        (self.root / PLAN).parent.mkdir(parents=True)
        shutil.copy(ROOT / PLAN, self.root / PLAN)
        self.palm, self.moved_palm, *self.added = blocks("json5")

    def replace(self, name, old, new):
        path = self.root / name
        text = path.read_text(encoding="utf-8")
        self.assertEqual(text.count(old), 1, f"{old} in {name}")
        path.write_text(text.replace(old, new), encoding="utf-8")

    def add(self, name, block, before):
        self.replace(name, before, block + before)

    def change_the_level(self):
        self.replace("data/scene.json5", self.palm, self.moved_palm)
        for block in self.added:
            if '"_type"' in block:
                self.add("data/recipes.json5", block, '"arena": {')
            elif "AssetsCompressed" in block:
                self.add("data/images_compressed.json5", block, '"zombieDeath0"')
            else:
                place = 53.9 if "lifeguard" in block else 27
                self.add("data/scene.json5", block, f'{{"prefab": "palm", "offset": [{place},')

    def draw_the_picture(self):
        """Of the drawing that it is a copy of: only colours differ."""
        textures = self.root / "data" / "AssetsCompressed"
        shutil.copy(textures / "weakZombie.dds", textures / "lifeguard.dds")

    def run_program(self, program, *words):
        return subprocess.run([PROGRAMS / program, *words], cwd=self.root, capture_output=True, text=True, check=False)

    def check(self):
        return self.run_program("dunkman-inspect", "check", "--data", "data").stdout

    def play_the_plan(self):
        return self.run_program("dunkman-author", PLAN, "keys", "--data", "data")

    def test_a_mistake_in_the_first_line_is_found_as_it_says(self):
        self.replace("data/scene.json5", self.palm, self.moved_palm.replace("prefab", "prefb"))
        self.assertEqual(self.check(), printed("scene.json5"))

    def test_its_lines_are_sound_once_the_picture_is_there(self):
        self.change_the_level()
        self.assertEqual(self.check(), printed("images_compressed.json5"))
        self.draw_the_picture()
        self.assertEqual(self.check(), "")

    def test_the_careful_player_goes_through_the_new_fight_as_it_says(self):
        self.change_the_level()
        self.draw_the_picture()
        command = re.search(r"^build/native/bin/dunkman-author (--careful.*)$", DOCUMENT, re.MULTILINE)[1]
        told = self.run_program("dunkman-author", *command.split()).stdout
        self.assertEqual(textwrap.dedent(told), printed("14.00 s"))

    def test_the_play_through_is_refused_as_it_says_until_the_plan_is_mended(self):
        self.change_the_level()
        self.draw_the_picture()
        refused = self.play_the_plan()
        self.assertEqual(refused.returncode, 1)
        self.assertTrue(printed(PLAN).startswith(refused.stderr), refused.stderr)

        fight, lifeguard = [block for block in blocks("") if block.startswith("walk")]
        self.add(PLAN, fight, "act 28 Pier\n")
        self.replace(PLAN, "act 50 Hut row\n", "act 50 Hut row\n" + lifeguard)
        told = self.play_the_plan()
        self.assertEqual((told.returncode, told.stderr), (0, ""))


if __name__ == "__main__":
    unittest.main()
