#!/usr/bin/env python3
"""What comes of it when Windows refuses a call of start-up: each fails once, one run each.

    start_faults_test.py FOLDER      FOLDER holds start-faults.exe

Needs a display and Wine; tools/with-desktop brings them up.
"""

import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

PROGRAM = os.path.join(os.path.abspath(sys.argv.pop(1)), "start-faults.exe")
PATIENCE = 120  # seconds; a run that takes longer hangs
DATA = os.path.abspath("tests/replays/three_minutes/data")  # small pictures, no music
MOST_CALLS = 2  # of one function that fail, each in a run of its own; the look-ups of OpenGL are tried natively, each

# Without these there is no picture. The others are conveniences: the game is played without what they bring.
NEEDED = {"LoadLibraryA", "CreateWindowExA", "GetDC", "SetPixelFormat", "wglCreateContext", "wglMakeCurrent",
          "wglGetProcAddress"}


class StartFaults(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.data = os.path.join(folder.name, "data")
        shutil.copytree(DATA, self.data)
        with open(os.path.join(self.data, "recording.json5"), "w", encoding="utf-8") as file:
            file.write('[{"frame": 9, "newKeyStates": []}]')

    def run_with(self, *words):
        result = subprocess.run(["wine", PROGRAM, *words], cwd=self.data, capture_output=True, text=True,
                                timeout=PATIENCE, stdin=subprocess.DEVNULL, check=False)
        return result.returncode, result.stdout.replace("\r", "")

    def test_each_ends_with_a_message_or_is_done_without(self):
        status, names = self.run_with()
        self.assertEqual(status, 0)
        tried = told = 0
        for name in names.split():
            number = 1
            calls = 1
            while number <= min(calls, MOST_CALLS):
                with self.subTest(f"{name}, call {number}"):
                    status, out = self.run_with(name, str(number))
                    self.assertEqual(status, 0, out)
                    found = re.search(r"^called (\d+)\n(played|told (.*))$", out, re.M)
                    self.assertIsNotNone(found, out)
                    calls = int(found[1])
                    tried += 1
                    told += found[2] != "played"
                    print(f"{name} {number} of {calls}: {found[2]}", flush=True)
                    if found[2] != "played":
                        self.assertIn("OpenGL", found[3])
                number += 1
        print(f"{tried} calls failed, {told} with a message, {tried - told} done without")
        self.assertGreater(told, 0)
        self.assertGreater(tried, 20)


if __name__ == "__main__":
    unittest.main()
