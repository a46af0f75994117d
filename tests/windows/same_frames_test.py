#!/usr/bin/env python3
"""The pictures of the off-screen machine, which films are made of, are those that the game shows on Windows' screen.

    same_frames_test.py FOLDER     FOLDER holds frame-probe.exe

The same steps are drawn by the Windows build under Wine, taken off the display, and by dunkman-frames, both by the
same driver, and are compared pixel for pixel. Needs a display of 1920 by 1080, Wine and ImageMagick;
tools/with-desktop brings them up. Builds dunkman-frames in build/native. Pictures that differ are left in
build/same-frames.
"""

import os
import re
import subprocess
import sys
import tempfile
import time
import unittest

PROGRAMS = os.path.abspath(sys.argv.pop(1))
DATA = os.path.abspath("data")
NATIVE = os.path.abspath("build/native")
KEPT = os.path.abspath("build/same-frames")
SIZE = (1920, 1080)
PATIENCE = 60  # seconds until a picture that is drawn is on the display of a busy machine


def build_native():
    quiet = {"check": True, "stdout": subprocess.DEVNULL}
    if not os.path.exists(os.path.join(NATIVE, "build.ninja")):
        subprocess.run(["cmake", "--preset", "native", "-DDUNKMAN_TESTS=OFF", "-DDUNKMAN_BENCHMARKS=OFF"], **quiet)
    subprocess.run(["cmake", "--build", NATIVE, "--target", "dunkman-frames"], **quiet)


def pixels(ppm):
    """The bytes of a picture of the display's size: red, green and blue from the top."""
    header = re.match(rb"P6\s+(\d+)\s+(\d+)\s+255\s", ppm)
    if header is None or (int(header.group(1)), int(header.group(2))) != SIZE:
        raise AssertionError(f"not a picture of {SIZE[0]} by {SIZE[1]}")
    return ppm[header.end():]


def display():
    return pixels(subprocess.run(["import", "-silent", "-window", "root", "-depth", "8", "ppm:-"],
                                 stdout=subprocess.PIPE, check=True).stdout)


def difference(left, right):
    """In words: how many pixels, by how much at most, and where the first of them is."""
    count, first, most = 0, None, 0
    for at in range(0, len(left), 3):
        if left[at:at + 3] != right[at:at + 3]:
            count += 1
            first = at // 3 if first is None else first
            most = max(most, *(abs(a - b) for a, b in zip(left[at:at + 3], right[at:at + 3])))
    return f"{count} pixels differ, by {most} at most, the first at {first % SIZE[0]},{first // SIZE[0]}"


def keep(name, data):
    os.makedirs(KEPT, exist_ok=True)
    with open(os.path.join(KEPT, name + ".ppm"), "wb") as file:
        file.write(b"P6\n%d %d\n255\n" % SIZE + data)


class SameFrames(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        build_native()

    def compare(self, screen, steps):
        with tempfile.TemporaryDirectory() as folder:
            pictures = {step: os.path.join(folder, f"{step}.ppm") for step in steps}
            command = [os.path.join(NATIVE, "bin", "dunkman-frames"), "--data", DATA, "--screen", screen,
                       "--size", "%dx%d" % SIZE]
            for step, path in pictures.items():
                command += ["--picture", f"{step}:{path}"]
            subprocess.run(command, check=True, stdout=subprocess.DEVNULL)
            probe = subprocess.Popen(["wine", os.path.join(PROGRAMS, "frame-probe.exe"), screen, *map(str, steps)],
                                     cwd=DATA, stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
            self.addCleanup(probe.stdout.close)
            self.addCleanup(probe.stdin.close)
            self.addCleanup(probe.wait)
            self.addCleanup(probe.kill)
            seen = set()
            for step, path in pictures.items():
                self.assertEqual(probe.stdout.readline().strip(), f"shown {step}")
                with open(path, "rb") as file:
                    expected = pixels(file.read())
                seen.add(expected)
                end = time.monotonic() + PATIENCE
                shown = display()
                while shown != expected and time.monotonic() < end:
                    time.sleep(1)
                    shown = display()
                if shown != expected:
                    keep(f"{screen}-{step}-windows", shown)
                    keep(f"{screen}-{step}-offscreen", expected)
                    self.fail(f"{screen}, step {step}: {difference(shown, expected)}; see {KEPT}")
                probe.stdin.write("\n")
                probe.stdin.flush()
            probe.stdin.close()
            self.assertEqual(probe.wait(), 0)
            self.assertEqual(len(seen), len(steps), "pictures that are all alike show nothing")

    def test_from_the_loading_screen_into_the_game(self):
        self.compare("Loading", [100, 900, 3000, 3200, 3700, 4600, 5200])

    def test_the_end(self):
        self.compare("GameOver", [60, 700, 1100])


if __name__ == "__main__":
    unittest.main(verbosity=2)
