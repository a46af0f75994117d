#!/usr/bin/env python3
"""Opens the zip for players.

    package_test.py ZIP VERSION CPACK CONFIGURATION      the last two pack it again
"""

import os
import re
import subprocess
import sys
import tempfile
import unittest
import zipfile
from pathlib import Path

ZIP, VERSION, CPACK, CONFIGURATION = (sys.argv.pop(1) for _ in range(4))
TOP = f"dunkman-{VERSION}-windows-x64/"
PROGRAMS = {"dunkman.exe", "dunkman-live.exe", "dunkman-record.exe"}
TEXTS = ("README.txt", "CREDITS.txt", "RUNTIME-LICENCES.txt")
EXECUTABLE = 0o111


def shipped_data():
    return {path.as_posix() for path in Path("data").rglob("*") if path.is_file() and path.suffix != ".new"}


class Package(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.zip = zipfile.ZipFile(ZIP)

    @classmethod
    def tearDownClass(cls):
        cls.zip.close()

    def text(self, name):
        return self.zip.read(TOP + name).decode("utf-8")

    def test_bears_the_version_in_its_name(self):
        self.assertEqual(os.path.basename(ZIP), TOP[:-1] + ".zip")

    def test_holds_the_programs_their_data_and_three_texts_in_one_folder(self):
        expected = PROGRAMS | shipped_data() | set(TEXTS)
        self.assertEqual({name for name in self.zip.namelist()}, {TOP + name for name in expected})

    def test_holds_the_data_as_it_is(self):
        for name in shipped_data():
            self.assertEqual(self.zip.read(TOP + name), Path(name).read_bytes(), name)

    def test_holds_its_files_in_the_order_of_their_names_and_with_one_date(self):
        self.assertEqual(self.zip.namelist(), sorted(self.zip.namelist()))
        self.assertEqual(len({entry.date_time for entry in self.zip.infolist()}), 1)

    def test_marks_the_programs_alone_as_executable(self):
        marked = {entry.filename for entry in self.zip.infolist() if entry.external_attr >> 16 & EXECUTABLE}
        self.assertEqual(marked, {TOP + name for name in PROGRAMS})

    def test_has_the_same_bytes_when_it_is_packed_again_with_files_of_another_date(self):
        text = Path(CONFIGURATION).parent / "package_texts" / "README.txt"
        os.utime(text, (1e9, 1e9))
        with tempfile.TemporaryDirectory() as folder:
            subprocess.run([CPACK, "--config", CONFIGURATION, "-B", folder], check=True, capture_output=True)
            again = (Path(folder) / os.path.basename(ZIP)).read_bytes()
        self.assertEqual(again, Path(ZIP).read_bytes())

    def test_has_texts_that_every_editor_of_windows_shows(self):
        for name in TEXTS:
            self.assertNotRegex(self.text(name), r"[^\r]\n", name)

    def test_bears_the_licences_of_what_the_compiler_put_into_the_programs(self):
        text = self.text("RUNTIME-LICENCES.txt")
        self.assertIn("winpthreads", text)
        self.assertIn("MIT", text)

    def test_tells_a_player_what_there_is_to_know(self):
        text = self.text("README.txt")
        self.assertTrue(text.startswith(f"DUNKMAN {VERSION}\r\n"))
        for words in (*PROGRAMS, "W A S D", "Escape", "data\\recording.json5", "OpenGL 4.5",
                      "has not been seen on Windows"):
            self.assertIn(words, text)
        self.assertIsNone(re.search(r"@\w+@", text), "a place that was not filled in")


if __name__ == "__main__":
    unittest.main(verbosity=2)
