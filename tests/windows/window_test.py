#!/usr/bin/env python3
"""What a player meets around the game: keys that are none of its, displays of other sizes, no media features.

    window_test.py FOLDER      FOLDER holds the programs

Needs a display, Wine and xdotool; tools/with-desktop brings them up. Pictures of the displays are left in
build/window-test.
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
PICTURES = os.path.abspath("build/window-test")
PATIENCE = 120  # seconds that any single wait may take on a busy machine
SMALL_WINDOW = "160x90"  # pixels: software rendering is fast enough for more turns of the loop than steps
HALF_WINDOW = "960x540"
ESCAPE = 0x1B


def program(name):
    return ["wine", os.path.join(PROGRAMS, name)]


def xdotool(*words):
    return subprocess.run(["xdotool", *words], capture_output=True, text=True, check=False).stdout


def run(*words):
    quiet = {"stdin": subprocess.DEVNULL, "stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL}
    return subprocess.run(words, check=False, **quiet)


class Program:
    """A run of a Windows program, with what it writes and what goes to the debugger output."""

    def __init__(self, name, *arguments, **environment):
        self.name = name
        self.log = tempfile.NamedTemporaryFile(prefix="dunkman-", suffix=".log")
        self.process = subprocess.Popen(
            program(name) + list(arguments), cwd=DATA, stdin=subprocess.DEVNULL, stdout=self.log, stderr=self.log,
            env=dict(os.environ, WINEDEBUG="-all,warn+debugstr", **environment))

    def output(self):
        with open(self.log.name, errors="replace") as file:
            return file.read()

    def counts(self):
        """The last line of counts that show-probe.exe wrote."""
        lines = re.findall(r"^steps (\d+) swaps (\d+) idle (\d+) unpainted (\d+)", self.output(), re.M)
        return dict(zip(("steps", "swaps", "idle", "unpainted"), map(int, lines[-1]))) if lines else None

    def wait(self, condition, what):
        end = time.monotonic() + PATIENCE
        while not condition():
            if self.process.poll() is not None:
                raise AssertionError(f"{self.name} ended with {self.process.returncode} while waiting for {what}:\n"
                                     + self.output()[-2000:])
            if time.monotonic() > end:
                raise AssertionError(f"{self.name}: {what} did not come:\n" + self.output()[-2000:])
            time.sleep(0.1)

    def wait_for_screen(self, name):
        self.wait(lambda: f'"screen {name}' in self.output(), f"the screen {name}")

    def window(self):
        ids = []

        def found():
            ids[:] = xdotool("search", "--onlyvisible", "--class", self.name).split()
            return ids
        self.wait(found, "the window")
        return ids[0]

    def close(self):
        if self.process.poll() is None:
            self.process.kill()
        self.process.wait()
        self.log.close()


class WindowTest(unittest.TestCase):
    def start(self, name, *arguments, **environment):
        started = Program(name, *arguments, **environment)
        self.addCleanup(started.close)
        return started


class Keys(WindowTest):
    def test_an_escape_that_was_typed_before_the_game_began_does_not_end_it(self):
        other = self.start("press-key.exe", str(ESCAPE), "hold")  # keeps the desktop with its keys alive
        other.wait(lambda: "pressed" in other.output(), "the key")
        game = self.start("dunkman-live.exe")
        game.wait_for_screen("Intro")

    def test_no_click_and_no_key_of_the_desktop_holds_the_game_up(self):
        game = self.start("show-probe.exe", "live", "60")
        game.wait(lambda: game.counts() is not None, "the first step")
        # Smaller than the display: Wine 10 confines the pointer to a window that covers all of it, and where no window
        # manager is, it tries so for ever and lets no program have its messages.
        run(*program("resize-window.exe"), "show-probe.exe", HALF_WINDOW)
        xdotool("windowfocus", game.window())
        for words in (["mousemove", "300", "300", "click", "1"], ["click", "2"], ["click", "3"], ["key", "Menu"],
                      ["key", "shift+F10"], ["key", "Alt_L"], ["key", "F10"], ["key", "alt+space"],
                      ["mousedown", "1", "mousemove", "400", "350", "mouseup", "1"], ["type", "beach 123"]):
            with self.subTest(" ".join(words)):
                xdotool(*words)
                time.sleep(0.3)  # a menu would be open by now
                before = game.counts()["steps"]
                game.wait(lambda before=before: game.counts()["steps"] > before + 5, f"a step after {' '.join(words)}")


class Picture(WindowTest):
    def test_no_buffer_that_nobody_drew_is_ever_shown(self):
        game = self.start("show-probe.exe", "replay", "144")
        game.window()
        run(*program("resize-window.exe"), "show-probe.exe", SMALL_WINDOW)

        def has_both():
            counts = game.counts()
            return counts and min(counts["steps"], counts["idle"]) > 10
        game.wait(has_both, "swaps with a step and swaps without one")
        counts = game.counts()
        print(f"\n{counts}", file=sys.stderr)
        self.assertEqual(counts["unpainted"], 0)


class Display:
    """A virtual display of another size, and a Wine that starts anew on it."""

    def __init__(self, size):
        reader, writer = os.pipe()
        command = ["Xvfb", "-displayfd", str(writer), "-screen", "0", size + "x24", "-nolisten", "tcp"]
        self.server = subprocess.Popen(command, pass_fds=[writer], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(writer)
        with os.fdopen(reader) as number:
            self.name = ":" + number.readline().strip()

    def __enter__(self):
        run("wineserver", "-k")
        run("wineserver", "-w")
        self.before = os.environ["DISPLAY"]
        os.environ["DISPLAY"] = self.name
        return self

    def __exit__(self, *_):
        run("wineserver", "-k")
        run("wineserver", "-w")
        os.environ["DISPLAY"] = self.before
        self.server.terminate()
        self.server.wait()


class Displays(WindowTest):
    def cover(self, size):
        width, height = size.split("x")
        os.makedirs(PICTURES, exist_ok=True)
        picture = os.path.join(PICTURES, size + ".png")
        with Display(size):
            game = Program("dunkman-live.exe")
            try:
                game.wait_for_screen("Intro")
                geometry = xdotool("getwindowgeometry", "--shell", game.window())
                time.sleep(3)
                run("import", "-window", "root", picture)
            finally:
                game.close()
        self.assertIn(f"WIDTH={width}\n", geometry)
        self.assertIn(f"HEIGHT={height}\n", geometry)
        self.assertIn("X=0\nY=0\n", geometry)
        # The story's background reaches into every corner: none is black as the bare display is, or white.
        for x, y in ((0, 0), (int(width) - 1, 0), (0, int(height) - 1), (int(width) - 1, int(height) - 1)):
            colour = subprocess.run(["convert", picture, "-depth", "8", "-format", f"%[pixel:p{{{x},{y}}}]", "info:"],
                                    capture_output=True, text=True, check=True).stdout
            self.assertNotRegex(colour, r"\((0,0,0|255,255,255)\b|black|white", f"{size} at {x},{y}")

    def test_a_display_that_is_smaller_is_covered_whole(self):
        self.cover("1366x768")

    def test_a_display_that_is_larger_is_covered_whole(self):
        self.cover("3840x2160")


class Sound(WindowTest):
    def test_without_media_features_the_show_runs_silent_and_says_so_once(self):
        hidden = os.environ.get("WINEDLLOVERRIDES", "") + ";mfplat=;mfreadwrite="
        game = self.start("dunkman-live.exe", WINEDLLOVERRIDES=hidden)
        game.wait_for_screen("Intro")
        self.assertEqual(game.output().count("media features"), 1, game.output())
        # On a busy machine a device that stopped may be told of too.
        self.assertEqual(game.output().count("no music"), 1, game.output())


if __name__ == "__main__":
    unittest.main(verbosity=2)
