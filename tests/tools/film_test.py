#!/usr/bin/env python3
"""Films of a few seconds: what is in them, and what becomes of one that cannot be made.

    film_test.py FOLDER     FOLDER holds dunkman-film, dunkman-frames and dunkman-headless

Needs ffmpeg.
"""

import array
import json
import math
import os
import resource
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import unittest

PROGRAMS = os.path.abspath(sys.argv.pop(1))
FILM = os.path.abspath("tools/film/film")
DATA = os.path.abspath("data")
SIZE = (160, 90)
RATE = 48000  # samples a second
STEPS = 60  # a second


def have(*programs):
    return all(shutil.which(program) for program in programs)


def film(*words, **options):
    return subprocess.run([FILM, *words, "--programs", PROGRAMS], capture_output=True, text=True, check=False,
                          **options)


def samples(*words):
    """What ffmpeg decodes, as mono 16-bit samples."""
    return array.array("h", subprocess.run(
        ["ffmpeg", "-v", "error", *words, "-af", "pan=mono|c0=c0", "-f", "s16le", "-ar", str(RATE), "-"],
        stdout=subprocess.PIPE, check=True).stdout)


def frame(path, number):
    """One picture of a film: red, green and blue from the top."""
    return subprocess.run(["ffmpeg", "-v", "error", "-i", path, "-vf", f"select=eq(n\\,{number})", "-frames:v", "1",
                           "-f", "rawvideo", "-pix_fmt", "rgb24", "-"], stdout=subprocess.PIPE, check=True).stdout


def apart(left, right):
    """The mean difference of two pictures' bytes."""
    assert len(left) == len(right) > 0
    return sum(abs(a - b) for a, b in zip(left, right)) / len(left)


def alike(left, right):
    """Correlation of two stretches of sound: 1 is the same."""
    power = math.sqrt(sum(a * a for a in left) * sum(b * b for b in right))
    return sum(a * b for a, b in zip(left, right)) / power if power else 0.0


def first_step(screen):
    course = subprocess.run([os.path.join(PROGRAMS, "dunkman-headless"), "--data", DATA, "--iterations", "20000",
                             "--size", "%dx%d" % SIZE], stdout=subprocess.PIPE, text=True, check=True).stdout
    return next(int(line.split()[1]) for line in course.splitlines()
                if line.startswith("step ") and f" screen={screen} " in line)


class FolderTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.mkdtemp(prefix="dunkman film ")
        self.addCleanup(shutil.rmtree, self.folder)
        self.path = os.path.join(self.folder, "a film.mp4")

    def left_behind(self):
        return sorted(os.listdir(self.folder))


class Film(unittest.TestCase):
    """Two seconds that begin with the game screen, whose music is the title's, going on."""

    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.mkdtemp(prefix="dunkman film ")
        cls.path = os.path.join(cls.folder, "a film.mp4")
        cls.made = film("--film", cls.path, "--size", "%dx%d" % SIZE, "--from", "Game", "--seconds", "2")
        if cls.made.returncode != 0:
            raise AssertionError(cls.made.stdout + cls.made.stderr)
        cls.first = first_step("Game")

    @classmethod
    def tearDownClass(cls):
        shutil.rmtree(cls.folder)

    def test_has_a_picture_for_every_step_and_sound_as_long(self):
        streams = {stream["codec_type"]: stream for stream in json.loads(subprocess.run(
            ["ffprobe", "-v", "error", "-show_streams", "-of", "json", self.path], stdout=subprocess.PIPE,
            check=True).stdout)["streams"]}
        video, audio = streams["video"], streams["audio"]
        self.assertEqual((video["codec_name"], video["width"], video["height"]), ("h264", *SIZE))
        self.assertEqual((video["nb_frames"], video["r_frame_rate"], video["pix_fmt"]), ("120", "60/1", "yuv420p"))
        self.assertEqual((audio["codec_name"], audio["sample_rate"], audio["channels"]), ("aac", str(RATE), 2))
        self.assertAlmostEqual(float(video["duration"]), 2.0, delta=0.001)
        self.assertAlmostEqual(float(audio["duration"]), 2.0, delta=0.020)
        self.assertEqual(os.listdir(self.folder), ["a film.mp4"])

    def drawn(self, numbers):
        """The game's own pictures of these steps, counted from the film's first: red, green and blue from the top."""
        paths = {number: os.path.join(self.folder, f"{number}.ppm") for number in numbers}
        words = []
        for number, path in paths.items():
            words += ["--picture", f"{self.first + number}:{path}"]
        subprocess.run([os.path.join(PROGRAMS, "dunkman-frames"), "--data", DATA, "--screen", "Loading", "--size",
                        "%dx%d" % SIZE, *words], stdout=subprocess.DEVNULL, check=True)
        pictures = {}
        for number, path in paths.items():
            with open(path, "rb") as file:
                pictures[number] = file.read()[-3 * SIZE[0] * SIZE[1]:]
            os.remove(path)
        return pictures

    def test_is_made_of_every_step_from_the_first_on_to_the_last_pixel(self):
        raw = subprocess.run([os.path.join(PROGRAMS, "dunkman-film"), "--data", DATA, "--size", "%dx%d" % SIZE,
                              "--from", str(self.first), "--steps", "3"], stdout=subprocess.PIPE,
                             stderr=subprocess.DEVNULL, check=True).stdout
        row, picture = 4 * SIZE[0], 4 * SIZE[0] * SIZE[1]
        self.assertEqual(len(raw), 3 * picture)
        expected = self.drawn([0, 1, 2])
        self.assertEqual(len(set(expected.values())), 3)
        for number in range(3):
            from_below = raw[number * picture:(number + 1) * picture]
            pixels = b"".join(from_below[y:y + row] for y in range(picture - row, -1, -row))
            self.assertEqual(b"".join(pixels[at:at + 3] for at in range(0, picture, 4)), expected[number], number)

    def test_shows_the_step_of_its_time_from_the_first_to_the_last(self):
        wanted = [0, 60, 119]
        drawn = self.drawn([0, 40, 60, 80, 119])
        for number in wanted:
            shown = frame(self.path, number)
            distances = {other: apart(shown, drawn[other]) for other in drawn}
            self.assertLess(distances[number], 8.0, "compression takes a little, not a picture")
            self.assertEqual(min(distances, key=distances.get), number, distances)

    def test_sounds_as_the_music_file_does_in_step_with_the_picture(self):
        # The piece begins with the last step of the story, which brings up the title.
        begins = (first_step("Menu") - 1) / STEPS
        heard = samples("-i", self.path, "-map", "0:a")
        piece = samples("-i", os.path.join(DATA, "zombiegame.mp3"))
        for second in (0.25, 1.5):
            at = int(second * RATE)
            window = heard[at:at + RATE // 8]
            expected = round((self.first / STEPS + second - begins) * RATE)
            matches = {shift: alike(window, piece[expected + shift:expected + shift + len(window)])
                       for shift in range(-24, 25)}
            best = max(matches, key=matches.get)
            self.assertGreater(matches[best], 0.98, matches)
            self.assertEqual(best, 0, "samples")


class AnimatedPicture(FolderTest):
    def test_has_fifteen_pictures_a_second(self):
        path = os.path.join(self.folder, "show.webp")
        made = film(path, "--size", "160x90", "--from", "Game", "--seconds", "1")
        self.assertEqual(made.returncode, 0, made.stdout + made.stderr)
        with open(path, "rb") as file:
            data = file.read()
        self.assertEqual(data[8:12], b"WEBP")
        self.assertEqual(data.count(b"ANMF"), 15)


class NoFilm(FolderTest):
    def expect_refusal(self, made, status, message):
        self.assertEqual(made.returncode, status, made.stdout + made.stderr)
        self.assertIn(message, made.stdout + made.stderr)
        self.assertEqual(self.left_behind(), [])

    def test_of_words_that_make_no_sense(self):
        for words, message in [
                ([], "needs a name"),
                ([os.path.join(self.folder, "film.avi")], "needs a name that ends in .mp4"),
                ([self.path, "--size", "161x90"], "161x90 is no size of a film"),
                ([self.path, "--size", "0x90"], "0x90 is no size of a film"),
                ([self.path, "--from", "Beach"], "--from takes a number of seconds or a screen's name, not Beach"),
                ([self.path, "--seconds", "-1"], "--seconds takes a number, not -1"),
                ([self.path, "--fast", "1"], "there is no option --fast"),
                ([self.path, self.path], "one film at a time")]:
            with self.subTest(words):
                self.expect_refusal(film(*words), 2, message)

    def test_of_a_time_or_a_screen_that_never_comes(self):
        self.expect_refusal(film(self.path, "--from", "3000"), 1, "the show is over after 229 s")
        self.expect_refusal(film(self.path, "--from", "Pause"), 1, "the show never comes to the screen Pause")

    def test_where_there_is_no_folder(self):
        self.expect_refusal(film(os.path.join(self.folder, "none", "film.mp4")), 1, "there is no folder")

    def test_but_not_where_the_folder_of_what_is_built_is_not_there_yet(self):
        project = os.path.join(self.folder, "clone")
        for path in ("film", "shell"):
            shutil.copytree(os.path.join("tools", path), os.path.join(project, "tools", path))
        result = subprocess.run([os.path.join(project, "tools", "film", "film"), "build/film.mp4", "--data", "none"],
                                cwd=project, capture_output=True, text=True, check=False)
        self.assertEqual((result.returncode, result.stderr), (1, f"film: there is no folder {project}/none\n"))

    def test_without_an_encoder(self):
        tools = os.path.join(self.folder, "bin")
        os.mkdir(tools)
        for name in os.listdir("/usr/bin"):
            if not name.startswith("ff"):
                os.symlink(os.path.join("/usr/bin", name), os.path.join(tools, name))
        made = film(self.path, "--seconds", "1", env=dict(os.environ, PATH=tools))
        shutil.rmtree(tools)
        self.expect_refusal(made, 1, "ffmpeg is not here")

    def test_when_nothing_more_can_be_written(self):
        def limit():
            signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
            resource.setrlimit(resource.RLIMIT_FSIZE, (2000000, 2000000))

        made = film(self.path, "--size", "160x90", "--seconds", "10", preexec_fn=limit, restore_signals=False)
        self.expect_refusal(made, 1, "could not be written whole: File too large")

    def test_and_the_older_one_stays_when_somebody_ends_it(self):
        with open(self.path, "w") as file:
            file.write("an older film")
        process = subprocess.Popen([FILM, self.path, "--size", "640x360", "--programs", PROGRAMS],
                                   stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                                   start_new_session=True)
        self.addCleanup(process.stdout.close)
        while "filming" not in process.stdout.readline():
            self.assertIsNone(process.poll())
        time.sleep(1)
        for _ in range(2):  # as timeout does it
            process.send_signal(signal.SIGTERM)
            os.killpg(process.pid, signal.SIGTERM)
        asked = time.monotonic()
        self.assertEqual(process.wait(timeout=60), 130)
        self.assertLess(time.monotonic() - asked, 15, "the whole show takes longer")
        self.assertEqual(self.left_behind(), ["a film.mp4"])
        with open(self.path) as file:
            self.assertEqual(file.read(), "an older film")


if __name__ == "__main__":
    if not have("ffmpeg", "ffprobe"):
        print("ffmpeg is not here")
        sys.exit(77)
    unittest.main(verbosity=2)
