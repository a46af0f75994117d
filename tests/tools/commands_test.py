"""The commands, before they build anything or run a real program: what they say of themselves and what they refuse."""

import contextlib
import os
import shutil
import signal
import subprocess
import tempfile
import time
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]


PATIENCE = 30  # seconds; a command that goes on to build is stopped, with what it started


def run(command, *words, folder=ROOT):
    with subprocess.Popen([str(ROOT / command), *words], cwd=folder, text=True, stdin=subprocess.DEVNULL,
                          stdout=subprocess.PIPE, stderr=subprocess.PIPE, start_new_session=True) as process:
        try:
            out, errors = process.communicate(timeout=PATIENCE)
        except subprocess.TimeoutExpired:
            os.killpg(process.pid, signal.SIGTERM)
            raise AssertionError(f"{command} {' '.join(words)} goes on instead of ending") from None
    return subprocess.CompletedProcess(command, process.returncode, out, errors)


def write_commands(folder, scripts):
    """Writes commands of the given names for a shell to find, each a script of its own."""
    folder.mkdir()
    for name, script in scripts.items():
        path = folder / name
        path.write_text(f"#!/bin/sh\n{script}\n", encoding="utf-8")
        path.chmod(0o755)


class Help(unittest.TestCase):
    def test_is_printed_on_request(self):
        for command, words in (("play", ["record", "--skip-story", "--size", "--help"]),
                               ("test", ["tidy", "--strict", "windows-clang", "CASES", "fuzz"]), ("package", [".zip"]),
                               ("make-assets", ["--check", "player bar"]), ("bench", ["--quick"])):
            result = run(command, "--help")
            self.assertEqual((result.returncode, result.stderr), (0, ""), command)
            for word in words:
                self.assertIn(word, result.stdout)

    def test_follows_words_that_are_not_understood(self):
        for command, words in (("play", ["--louder"]), ("play", ["dance"]), ("play", ["--size"]),
                               ("play", ["--size", "big"]), ("test", ["--louder"]),
                               ("test", ["native", "a", "b", "c"]), ("package", ["now"]), ("make-assets", ["--all"]),
                               ("bench", ["--slow"])):
            result = run(command, *words)
            self.assertEqual((result.returncode, result.stdout), (2, ""), words)
            self.assertIn(run(command, "--help").stdout, result.stderr)


class MakeAssets(unittest.TestCase):
    """With a Debian in which nothing is installed, and nothing can be."""

    def missing_packages(self, *words):
        with tempfile.TemporaryDirectory() as folder:
            for name, script in (("dpkg-query", "exit 1"), ("apt-get", "exit 1"), ("id", "echo 1000"),
                                 ("sudo", "exit 1")):
                path = Path(folder) / name
                path.write_text(f"#!/bin/sh\n{script}\n", encoding="utf-8")
                path.chmod(0o755)
            result = subprocess.run([str(ROOT / "make-assets"), *words], capture_output=True, text=True,
                                    stdin=subprocess.DEVNULL, check=False,
                                    env={**os.environ, "PATH": f"{folder}:{os.environ['PATH']}"})
        self.assertEqual(result.returncode, 1, result.stdout)
        return {line.split()[0] for line in result.stdout.splitlines() if line.startswith("  ")}

    def test_of_one_picture_asks_for_no_more_than_pictures_need(self):
        one = self.missing_packages("player")
        self.assertEqual(one, {"cmake", "g++", "libpng-dev", "librsvg2-bin", "ninja-build", "python3"})
        self.assertEqual(self.missing_packages("--check", "player", "Font/A"), one)

    def test_of_everything_asks_for_what_the_music_and_the_sheets_need_too(self):
        self.assertLessEqual({"g++", "librsvg2-bin", "fluidsynth", "lame", "fonts-dejavu-core"},
                             self.missing_packages())

    def test_refuses_a_picture_that_nobody_drew_and_names_the_drawing(self):
        for word, drawing in (("playerr", "workshop/art/images/playerr.svg"), ("Font/a", "workshop/art/font/a.svg")):
            result = run("make-assets", word)
            self.assertEqual((result.returncode, result.stdout), (1, f"make-assets: there is no drawing {drawing}\n"))


class PlayARecording(unittest.TestCase):
    def test_that_is_not_there_is_refused_by_its_name(self):
        with tempfile.TemporaryDirectory() as folder:
            result = run("play", "mine.json5", folder=folder)
        self.assertEqual(result.returncode, 1)
        self.assertEqual(result.stdout, f"play: there is no file {folder}/mine.json5\n")

    def test_that_is_another_kind_of_file_is_refused(self):
        result = run("play", "data/scene.json5")
        self.assertEqual(result.returncode, 1)
        self.assertIn("scene.json5 is no recording", result.stdout)

    def test_that_is_to_be_made_at_the_same_time_is_refused(self):
        self.assertEqual(run("play", "record", "data/recording.json5").returncode, 2)


PACE = 'warn:debugstr:OutputDebugStringA "{}\\n"\n'
LOG = "".join(PACE.format(line) for line in (
    "screen Menu", "pace Menu from=0 steps=480 dropped=0 frames=480 seconds=8.0 typical=1.0 longest=2.0",
    "screen Game", "pace Game from=0 steps=600 dropped=0 frames=600 seconds=10.0 typical=1.0 longest=2.0",
    "pace Game from=600 steps=3132 dropped=0 frames=3132 seconds=52.2 typical=1.0 longest=2.0"))
OLD, NEW = '[{"frame": 1, "newKeyStates": []}]', '[{"frame": 2, "newKeyStates": []}]'


class Recording(unittest.TestCase):
    """What ./play record does around the game, in a folder with a small data/."""

    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = Path(scratch.name)
        (self.folder / "data" / "AssetsCompressed").mkdir(parents=True)
        self.write("data/scene.json5", "[]")
        self.write("data/recording.json5", OLD)
        self.write("play.log", LOG)
        self.shell("make_data_folder run")

    def write(self, path, text):
        (self.folder / path).parent.mkdir(parents=True, exist_ok=True)
        (self.folder / path).write_text(text, encoding="utf-8")

    def read(self, path):
        return (self.folder / path).read_text(encoding="utf-8")

    def shell(self, command):
        script = f". {ROOT}/tools/shell/report.sh; . {ROOT}/tools/shell/recording.sh; {command}"
        result = subprocess.run(["bash", "-uc", script, "play"], cwd=self.folder, capture_output=True, text=True)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        return result.stdout

    def record(self, text):
        self.write("run/recording.json5", text)
        return self.shell("keep_recording run play.log")

    def test_runs_in_a_folder_with_all_data_but_the_recording(self):
        self.assertEqual(sorted(path.name for path in (self.folder / "run").iterdir()),
                         ["AssetsCompressed", "scene.json5"])
        self.assertEqual(self.read("run/scene.json5"), "[]")

    def test_takes_the_place_of_the_one_before(self):
        self.record(NEW)
        self.assertEqual(self.read("data/recording.json5"), NEW)

    def test_keeps_the_one_before_under_the_next_number(self):
        self.record(NEW)
        self.assertEqual(self.read("recordings/recording-1.json5"), OLD)
        self.assertIn("recordings/recording-2.json5", self.record(OLD))
        self.assertEqual(self.read("recordings/recording-2.json5"), NEW)

    def test_never_takes_a_number_again(self):
        self.write("recordings/recording-9.json5", "kept")
        self.record(NEW)
        self.assertEqual(self.read("recordings/recording-9.json5"), "kept")
        self.assertEqual(self.read("recordings/recording-10.json5"), OLD)

    def test_tells_where_it_is_how_long_it_took_and_how_it_ended(self):
        said = self.record(NEW)
        self.assertIn("saved in data/recording.json5: a game of 1 min 2.2 s (3732 steps), "
                      "which ended when the hero fell\n", said)

    def test_that_was_broken_off_leaves_everything_as_it_was_and_says_so(self):
        said = self.shell("keep_recording run play.log")
        self.assertIn("nothing was saved: the game was left on the screen Game", said)
        self.assertEqual(self.read("data/recording.json5"), OLD)
        self.assertFalse((self.folder / "recordings").exists())

    def test_that_was_broken_off_is_kept_under_a_number_as_far_as_it_went(self):
        self.write("run/recording-unfinished.json5", "half of a game")
        self.write("recordings/recording-4.json5", "another")
        said = self.shell("keep_recording run play.log")
        self.assertIn("./play recordings/recording-5.json5 replays it", said)
        self.assertEqual(self.read("recordings/recording-5.json5"), "half of a game")
        self.assertIn("data/recording.json5 is as it was", said)

    def test_that_ended_with_a_fault_says_so(self):
        self.write("play.log", LOG + PACE.format("fatal: no room"))
        self.assertIn("nothing was saved: the game stopped with a fault", self.shell("keep_recording run play.log"))


class StoppedByHand(unittest.TestCase):
    """./play record with a Debian, a CMake and a Wine that only say yes, and a game that never ends."""

    COMMANDS = {
        "dpkg-query": "echo install ok installed",
        "cmake": "exit 0", "pactl": "exit 0", "xdotool": "exit 1",
        "wine": """case $1 in
            *dunkman-record.exe)
                echo 'warn:debugstr:OutputDebugStringA "screen Game\\n"'
                echo "half of a game" >recording-unfinished.json5
                echo $$ >game
                exec sleep 60 ;;
            esac""",
        "wineserver": 'case $1 in -k) kill "$(cat build/play-data/game)" ;; esac',
    }

    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = Path(scratch.name)
        for path in ("play", "tools/shell", "data/recording.json5", "tests/replays/production/expected.txt"):
            target = self.folder / "project" / path
            target.parent.mkdir(parents=True, exist_ok=True)
            if path == "play":
                shutil.copy(ROOT / path, target)
            elif path == "tools/shell":
                shutil.copytree(ROOT / path, target)
            else:
                target.write_text("", encoding="utf-8")
        write_commands(self.folder / "bin", self.COMMANDS)

    def test_keeps_what_was_recorded_and_ends_the_game(self):
        project = self.folder / "project"
        game = project / "build" / "play-data" / "game"
        environment = {**os.environ, "PATH": f"{self.folder / 'bin'}:{os.environ['PATH']}", "DISPLAY": ":9"}
        with subprocess.Popen([project / "play", "record"], env=environment, text=True, stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, start_new_session=True) as process:
            try:
                for _ in range(10 * PATIENCE):
                    if game.exists() and game.read_text(encoding="utf-8"):
                        break
                    time.sleep(0.1)
                os.killpg(process.pid, signal.SIGINT)  # as a terminal does with Ctrl-C
                said, _ = process.communicate(timeout=PATIENCE)
            finally:
                with contextlib.suppress(ProcessLookupError):
                    os.killpg(process.pid, signal.SIGKILL)
        self.assertEqual(process.returncode, 130, said)
        self.assertIn("./play recordings/recording-1.json5 replays it", said)
        self.assertEqual((project / "recordings" / "recording-1.json5").read_text(encoding="utf-8"),
                         "half of a game\n")
        with self.assertRaises(ProcessLookupError):
            os.kill(int(game.read_text(encoding="utf-8")), 0)


class RunWine(unittest.TestCase):
    """tools/run-wine with a Wine whose first program starts services, which keep that program's output open."""

    COMMANDS = {
        "wineserver": "exit 0",
        "wine": """[ -e "$WINEPREFIX/services" ] || { sleep 60 & echo $! >"$WINEPREFIX/services"; }
            echo "the output of $*" """,
    }

    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = Path(scratch.name)
        write_commands(self.folder / "bin", self.COMMANDS)

    def test_ends_its_output_with_the_program(self):
        environment = {**os.environ, "PATH": f"{self.folder / 'bin'}:{os.environ['PATH']}",
                       "WINEPREFIX": str(self.folder)}
        try:
            said = subprocess.run([ROOT / "tools" / "run-wine", "a.exe"], env=environment, text=True, timeout=PATIENCE,
                                  stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                                  check=True).stdout
        finally:
            os.kill(int((self.folder / "services").read_text(encoding="utf-8")), signal.SIGKILL)
        self.assertEqual(said, "the output of a.exe\n")


if __name__ == "__main__":
    unittest.main()
