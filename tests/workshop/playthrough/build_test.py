"""The builder of the play-through, as somebody meets it who has changed the level.

    build_test.py FOLDER     FOLDER holds dunkman-author and dunkman-headless
"""

import re
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[3]
PROGRAMS = Path(sys.argv.pop(1)).resolve()
OWN_FILES = ["scene.json5", "recipes.json5", "recording.json5"]  # the rest of the data is linked


class ChangedLevel(unittest.TestCase):
    """In a small copy of the project."""

    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.root = Path(scratch.name)
        shutil.copytree(ROOT / "workshop" / "playthrough", self.root / "workshop" / "playthrough")
        (self.root / "data").mkdir()
        for path in (ROOT / "data").iterdir():
            if path.name in OWN_FILES:
                shutil.copy(path, self.root / "data")
            else:
                (self.root / "data" / path.name).symlink_to(path)
        self.results = [self.root / "data" / "recording.json5",
                        self.root / "workshop" / "playthrough" / "playthrough.keys"]
        self.before = [path.read_bytes() for path in self.results]

    def change(self, name, pattern, text):
        path = self.root / "data" / name
        changed, count = re.subn(pattern, text, path.read_text())
        self.assertEqual(count, 1, pattern)
        path.write_text(changed)

    def build(self, *words):
        builder = self.root / "workshop" / "playthrough" / "build"
        return subprocess.run([builder, "--bin", self.linked_programs(), *words], capture_output=True, text=True,
                              check=False)

    def linked_programs(self):
        """The builder notes beside them what it made last."""
        folder = self.root / "bin"
        folder.mkdir(exist_ok=True)
        for name in ("dunkman-author", "dunkman-headless"):
            if not (folder / name).exists():
                (folder / name).symlink_to(PROGRAMS / name)
        return folder

    def assert_refused(self, result, *sentences):
        self.assertEqual(result.returncode, 1, result.stdout)
        for sentence in sentences:
            self.assertRegex(result.stderr, sentence)
        self.assertEqual([path.read_bytes() for path in self.results], self.before)

    def test_a_hero_who_dies_too_early_stops_it_with_step_and_act(self):
        self.change("recipes.json5", r'"hero": \{"_type": "Player"\}', '"hero": {"_type": "Player", "health": 0}')
        refused = [r"^workshop/playthrough/playthrough\.plan does not tell the story of this level:\n",
                   r"\n  step \d+ \(\d+\.\d s\), act \d \([A-Z]\w+[ \w]*\), x = \S+, line \d+ of the plan: "
                   r"the hero dies (in the fight at x = \S+, )?before ",
                   r"\n  act 5 \(Last resort\) is not reached"]
        self.assert_refused(self.build(), *refused)
        self.assert_refused(self.build("--check"), *refused)

    def test_a_fight_that_the_hero_does_not_reach_stops_it(self):
        self.change("scene.json5", r"\n\]\s*$", '\n{"recipe": "arena", "position": [150, 0]},\n]\n')
        self.assert_refused(self.build(), r": the hero dies in the fight at x = 85, before the fight at x = 150\n",
                            r"\n  act 5 \(Last resort\): the fight at x = 150 is not reached\n")

    def test_keys_that_are_kept_are_held_against_the_level_too(self):
        self.change("recipes.json5", r'"hero": \{"_type": "Player"\}', '"hero": {"_type": "Player", "health": 0}')
        self.assert_refused(self.build("--keep-keys"),
                            r"^workshop/playthrough/playthrough\.keys does not tell the story of this level:\n",
                            r"\n  step \d+ \(\d+\.\d s\), act \d \(.*\), x = \S+: the hero dies ")

    def test_the_level_as_it_is_gives_what_is_there(self):
        result = self.build("--keep-keys")
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assertEqual([path.read_bytes() for path in self.results], self.before)


if __name__ == "__main__":
    unittest.main()
