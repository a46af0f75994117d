"""What every developer program says of itself.

    about_test.py VERSION PROGRAM... [--by EMULATOR]      EMULATOR runs programs of another system
"""

import subprocess
import sys
import unittest
from pathlib import PurePath

if "--by" in sys.argv:
    EMULATOR = [sys.argv.pop()]
    sys.argv.pop()
else:
    EMULATOR = []
VERSION, *PROGRAMS = sys.argv[1:]


def run(program, *words):
    result = subprocess.run([*EMULATOR, program, *words], capture_output=True, text=True, timeout=120)
    return result.returncode, result.stdout


class About(unittest.TestCase):
    def test_help_names_the_program_and_both_questions(self):
        for program in PROGRAMS:
            with self.subTest(program):
                status, text = run(program, "--help")
                self.assertEqual(status, 0)
                self.assertIn(PurePath(program).stem, text)
                self.assertIn("--help", text)
                self.assertIn("--version", text)

    def test_version_is_that_of_the_project(self):
        for program in PROGRAMS:
            with self.subTest(program):
                self.assertEqual(run(program, "--version"), (0, f"{PurePath(program).stem} {VERSION}\n"))

    def test_the_question_is_heard_behind_other_words(self):
        for program in PROGRAMS:
            with self.subTest(program):
                self.assertEqual(run(program, "other", "--help"), run(program, "--help"))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
