#!/usr/bin/env python3
"""Drives the real game in a real window with real key events.

    end_to_end_test.py FOLDER ZIP
FOLDER holds dunkman.exe, dunkman-live.exe, dunkman-record.exe and resize-window.exe; ZIP is the one for players.

Needs a display, Wine and xdotool; tools/with-desktop brings them up. Each program runs in a copy of the data directory
with a short scene: a hero with few hearts left and a zombie beside him, who finds him wherever he has run to: recording
goes as fast as the machine can draw, which makes a key held for a second a walk of any length.
"""

import json
import os
import re
import shutil
import subprocess
import sys
import tempfile
import time
import unittest
import zipfile

PROGRAMS = os.path.abspath(sys.argv.pop(1))
ZIP = os.path.abspath(sys.argv.pop(1))
DATA = os.path.abspath("data")
SMALL_WINDOW = "480x270"  # pixels: software rendering keeps up with it
PATIENCE = 240  # seconds that any single wait may take on a busy machine

SHORT_SCENE = """[
  {"recipe": "hero", "position": [0, 0], "health": %d},
  {"recipe": "camera", "position": [0, 0]},
  {"recipe": "zombie", "position": [3, 0], "searchRadius": 100000}
]"""

KEY_CODES = {"d": 0x44, "x": 0x58, "w": 0x57}
PRESSED, RELEASED = 3, 2


class Game:
    """One run of a program in a folder of its own."""

    def __init__(self, program, health=0, recording="[]", scene=None):
        self.folder = tempfile.mkdtemp(prefix="dunkman-")
        data = os.path.join(self.folder, "data")
        os.mkdir(data)
        for name in os.listdir(DATA):  # textures and music are large: linked; the rest is copied
            source = os.path.join(DATA, name)
            if name in ("AssetsCompressed",) or name.endswith(".mp3"):
                os.symlink(source, os.path.join(data, name))
            else:
                shutil.copy(source, data)
        self.data = data
        self.write("scene.json5", scene or SHORT_SCENE % health)
        self.write("recording.json5", recording)
        self.start(os.path.join(PROGRAMS, program), data)

    def start(self, path, working_directory):
        self.log_path = os.path.join(self.folder, "debug.log")
        self.log = open(self.log_path, "wb")
        environment = dict(os.environ, WINEDEBUG="-all,warn+debugstr")
        self.program = os.path.basename(path)
        self.process = subprocess.Popen(
            ["wine", path], cwd=working_directory, env=environment,
            stdin=subprocess.DEVNULL, stdout=self.log, stderr=self.log)
        self.window = None

    def write(self, name, text):
        with open(os.path.join(self.data, name), "w", encoding="utf-8") as file:
            file.write(text)

    def read(self, name):
        with open(os.path.join(self.data, name), encoding="utf-8") as file:
            return file.read()

    def debug_output(self):
        with open(self.log_path, errors="replace") as file:
            return file.read()

    def screens(self):
        return re.findall(r'"screen (\w+)', self.debug_output())

    def wait_for_screen(self, name):
        self.wait(lambda: name in self.screens(), f"the screen {name}")
        if self.window is None:
            self.find_window()

    def wait(self, condition, what):
        end = time.monotonic() + PATIENCE
        while not condition():
            if self.process.poll() is not None:
                raise AssertionError(f"{self.program} ended with {self.process.returncode} while waiting for {what}:\n"
                                     + self.debug_output()[-2000:])
            if time.monotonic() > end:
                raise AssertionError(f"{self.program}: {what} did not come:\n" + self.debug_output()[-2000:])
            time.sleep(0.1)

    def find_window(self):
        def found():
            ids = xdotool("search", "--onlyvisible", "--class", self.program).split()
            self.window = ids[0] if ids else None
            return self.window is not None
        self.wait(found, "the window")
        resize = os.path.join(PROGRAMS, "resize-window.exe")
        resized = subprocess.run(["wine", resize, self.program, SMALL_WINDOW],
                                 capture_output=True, text=True, check=False)
        if resized.returncode != 0:
            raise AssertionError(resized.stderr)
        xdotool("windowfocus", self.window)

    def hold(self, key, seconds):
        xdotool("windowfocus", self.window)
        xdotool("keydown", key)
        time.sleep(seconds)
        xdotool("keyup", key)

    def wait_for_end(self):
        try:
            return self.process.wait(timeout=PATIENCE)
        except subprocess.TimeoutExpired:
            raise AssertionError(f"{self.program} does not end:\n" + self.debug_output()[-2000:]) from None

    def close(self):
        if self.process.poll() is None:
            self.process.kill()
            self.process.wait()
        self.log.close()
        shutil.rmtree(self.folder, ignore_errors=True)


class UnpackedGame(Game):
    """A program of the zip, unpacked into a folder with a name as people give them, and started from another folder."""

    def __init__(self, program, with_data=True):
        self.folder = tempfile.mkdtemp(prefix="dunkman-")
        self.elsewhere = os.path.join(self.folder, "elsewhere")
        os.mkdir(self.elsewhere)
        unpacked = os.path.join(self.folder, "Spiele f\u00fcr den Strand")
        with zipfile.ZipFile(ZIP) as package:
            package.extractall(unpacked)
        top = os.path.join(unpacked, os.listdir(unpacked)[0])
        if not with_data:
            shutil.rmtree(os.path.join(top, "data"))
        self.start(os.path.join(top, program), self.elsewhere)


def xdotool(*words):
    return subprocess.run(["xdotool", *words], capture_output=True, text=True, check=False).stdout


class EndToEnd(unittest.TestCase):
    # Half a minute of play, so that the hero does not fall while a key is still held: recording goes several times as
    # fast.
    RECORDED_HEALTH = 12

    def start(self, program, **options):
        game = Game(program, **options)
        self.addCleanup(game.close)
        return game

    def skip_to_menu(self, game):
        game.wait_for_screen("Intro")
        while "Menu" not in game.screens():
            game.hold("x", 0.3)
            time.sleep(0.3)

    def test_a_game_that_was_recorded_replays_to_the_same_end(self):
        record = self.start("dunkman-record.exe", health=self.RECORDED_HEALTH)
        self.skip_to_menu(record)
        record.wait_for_screen("Game")
        record.hold("w", 0.7)
        record.hold("d", 0.7)
        self.assertEqual(record.wait_for_end(), 0)
        saved = record.read("recording.json5")
        changes = [(change["key"], change["state"]) for entry in json.loads(saved) for change in entry["newKeyStates"]]
        self.assertIn((KEY_CODES["w"], PRESSED), changes)
        self.assertIn((KEY_CODES["w"], RELEASED), changes)
        self.assertIn((KEY_CODES["d"], PRESSED), changes)

        replay = self.start("dunkman.exe", health=self.RECORDED_HEALTH, recording=saved)
        self.skip_to_menu(replay)
        self.assertEqual(replay.wait_for_end(), 0)
        self.assertEqual(replay.screens()[-3:], ["Game", "GameOver", "Credits"])
        self.assertEqual(replay.read("recording.json5"), saved)

    def escape_from(self, screen, program="dunkman-live.exe", **options):
        game = self.start(program, **options)
        if screen not in ("Loading", "Intro"):
            self.skip_to_menu(game)
        game.wait_for_screen(screen)
        time.sleep(0.5)
        while game.process.poll() is None:
            self.assertEqual(game.screens()[-1], screen)
            game.hold("Escape", 0.5)
        self.assertEqual(game.wait_for_end(), 0)

    def test_escape_leaves_from_the_loading_screen(self):
        self.escape_from("Loading")

    def test_escape_leaves_from_the_intro(self):
        self.escape_from("Intro")

    def test_escape_leaves_from_the_menu(self):
        self.escape_from("Menu")

    def test_escape_leaves_from_the_game(self):
        self.escape_from("Game", health=5)

    def test_escape_leaves_from_the_game_over_screen(self):
        self.escape_from("GameOver", program="dunkman.exe")  # its empty recording ends the game at once

    def test_escape_leaves_from_the_credits(self):
        self.escape_from("Credits", program="dunkman.exe")


class Unpacked(unittest.TestCase):
    def test_a_program_of_the_zip_runs_wherever_it_lies_and_is_started(self):
        game = UnpackedGame("dunkman-live.exe")
        self.addCleanup(game.close)
        game.wait_for_screen("Intro")
        while game.process.poll() is None:
            game.hold("Escape", 0.5)
        self.assertEqual(game.wait_for_end(), 0)
        self.assertEqual(os.listdir(game.elsewhere), [])


class FaultyData(unittest.TestCase):
    def test_a_broken_recipe_ends_with_a_message_box_that_names_it(self):
        self.expect_message(Game("dunkman.exe", scene='[{"recipe": "kraken"}]'), "kraken")

    def test_missing_data_ends_with_a_message_box_that_names_where_it_was_looked_for(self):
        self.expect_message(UnpackedGame("dunkman.exe", with_data=False), r"\\elsewhere\n",
                            r"Spiele f\xc3\xbcr den Strand")

    def expect_message(self, game, *words):
        self.addCleanup(game.close)
        game.wait(lambda: "fatal: " in game.debug_output(), "the message")
        for word in words:
            self.assertIn(word, game.debug_output())
        box = None
        end = time.monotonic() + PATIENCE
        while box is None and time.monotonic() < end:
            ids = xdotool("search", "--onlyvisible", "--name", "^Dunkman$").split()
            box = ids[0] if ids else None
            time.sleep(0.1)
        self.assertIsNotNone(box, "no message box came up")
        while game.process.poll() is None and time.monotonic() < end:
            xdotool("windowfocus", box)
            xdotool("key", "Return")
            time.sleep(0.5)
        self.assertEqual(game.wait_for_end(), 1)


if __name__ == "__main__":
    unittest.main(verbosity=2)
