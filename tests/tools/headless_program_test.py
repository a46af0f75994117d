"""Runs the headless runner as a person does: what it prints, where, and its exit status.

    headless_program_test.py PROGRAM
"""

import os
import subprocess
import sys
import tempfile
import unittest

PROGRAM = os.path.abspath(sys.argv.pop(1))


def run(*options):
    return subprocess.run([PROGRAM, *options], capture_output=True, text=True)


class HeadlessProgram(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.trace = os.path.join(self.folder.name, "trace.txt")

    def tearDown(self):
        self.folder.cleanup()

    def record(self, *options):
        result = run("--iterations", "30", "--trace", "screen,draws", "--out", self.trace, *options)
        self.assertEqual(result.returncode, 0)

    def test_is_content_with_the_trace_that_it_wrote_itself(self):
        self.record()
        result = run("--iterations", "30", "--trace", "screen,draws", "--expect", self.trace)
        self.assertEqual((result.returncode, result.stdout, result.stderr), (0, "", ""))

    def test_stops_at_the_first_difference_and_names_it(self):
        self.record()
        result = run("--iterations", "30", "--trace", "screen,draws", "--expect", self.trace, "--size", "1600x1080")
        self.assertEqual(result.returncode, 1)
        self.assertEqual(result.stdout, "")
        self.assertRegex(result.stderr, r"^step 0, view 0: number 5: expected \S+, found \S+\n$")

    def test_says_when_the_disk_is_full(self):
        if not os.path.exists("/dev/full"):
            self.skipTest("this machine has no /dev/full")
        result = run("--iterations", "30", "--out", "/dev/full")
        self.assertEqual(result.returncode, 1)
        self.assertRegex(result.stderr, "^The trace could not be written whole to /dev/full: No space left on device")

    def test_refuses_arguments_that_it_cannot_use(self):
        for options in (["--expect", self.trace + ".missing"], ["--out", self.folder.name],
                        ["--out", self.trace, "--expect", self.trace]):
            result = run(*options)
            self.assertEqual(result.returncode, 2, options)
            self.assertEqual(len(result.stderr.splitlines()), 1, options)


if __name__ == "__main__":
    unittest.main()
