"""The figures of a piece and how two renderings are compared."""

import contextlib
import io
import unittest
from types import SimpleNamespace
from unittest import mock

from music_tools import need_numpy, score_of

need_numpy()

import numpy  # noqa: E402

import measure  # noqa: E402
import signals  # noqa: E402
from signals import RATE  # noqa: E402


def sine(frequency, seconds=2.0, level=0.1):
    return level * numpy.sin(2 * numpy.pi * frequency * numpy.arange(int(seconds * RATE)) / RATE)


def noise(seconds=2.0, level=0.1):
    return level * numpy.random.default_rng(1).standard_normal(int(seconds * RATE))


class Bands(unittest.TestCase):
    def test_a_tone_is_wholly_in_its_band(self):
        for index, frequency in enumerate((100, 400, 1000, 5000, 12000)):
            levels = measure.band_levels(sine(frequency))
            self.assertAlmostEqual(levels[index], 0, places=1)
            self.assertTrue(all(level < -40 for at, level in enumerate(levels) if at != index))

    def test_two_equal_tones_have_half_each(self):
        levels = measure.band_levels(sine(100) + sine(5000))
        self.assertAlmostEqual(levels[0], -3.01, places=2)
        self.assertAlmostEqual(levels[3], -3.01, places=2)


class Sections(unittest.TestCase):
    SCORE = "tempo 120\nmetre 4\nsection soft 1\nsection loud 1\nsection after the end 1\n"

    def test_each_has_its_start_and_its_own_loudness(self):
        samples = numpy.concatenate([sine(997, 2, 0.01), sine(997, 2, 0.1)])
        found = measure.section_loudness(score_of(self.SCORE), samples)
        self.assertEqual([(name, start) for name, start, _ in found], [("soft", 0), ("loud", 2), ("after the end", 4)])
        self.assertAlmostEqual(found[1][2] - found[0][2], 20, delta=0.1)

    def test_one_that_does_not_sound_is_at_the_floor(self):
        samples = sine(997, 4)
        self.assertEqual(measure.section_loudness(score_of(self.SCORE), samples)[2][2], -70)

    def test_less_than_half_a_second_is_too_short_to_tell(self):
        self.assertEqual(measure.section_loudness(score_of(self.SCORE), sine(997, 4.4))[2][2], -70)

    def test_the_table_of_stems_is_empty_where_one_is_silent(self):
        samples = numpy.concatenate([numpy.zeros(2 * RATE), sine(997, 2), numpy.zeros(2 * RATE)])
        heading, line = measure.stem_table(score_of(self.SCORE), {"brass": samples}).splitlines()
        self.assertEqual(heading.split(), ["soft", "loud", "after", "t"])
        self.assertEqual(line.split(), ["brass", "-23.0"])


class Meter(unittest.TestCase):
    TEXT = """Parsed_ebur128_0 t: 0.5 M: -20.0
[Parsed_ebur128_0] Summary:

  Integrated loudness:
    I:         -15.0 LUFS
    Threshold: -25.4 LUFS

  True peak:
    Peak:       {peak} dBFS
"""

    def read(self, peak):
        answer = SimpleNamespace(stderr=self.TEXT.format(peak=peak).encode())
        with mock.patch.object(signals, "run", lambda command: answer):
            return measure.ebur128("any.mp3")

    def test_its_summary_is_read(self):
        self.assertEqual(self.read("-1.2"), (-15.0, -1.2))

    def test_silence_has_no_peak(self):
        self.assertEqual(self.read("-inf"), (-15.0, -numpy.inf))


class Description(unittest.TestCase):
    def test_it_has_every_figure(self):
        text = measure.describe({"seconds": 50.0, "decodedSeconds": 50.05, "lufs": -15.0, "truePeak": -1.4,
                                 "samplePeak": -1.6, "bands": [-9.0, -4.0, -5.0, -12.0, -21.0],
                                 "sections": [("theme", 6.5, -14.2)], "kilobytes": 880.0})
        for figure in ("50.000 s", "50.050 s", "880 KiB", "-15.0 LUFS", "-1.4 dBTP", "-1.6 dB", "8000-16000 Hz -21.0",
                       "6.50 s", "-14.2 LUFS  theme"):
            self.assertIn(figure, text)


class Differences(unittest.TestCase):
    def between(self, one, other):
        with mock.patch.object(signals, "read_any", {"one": one, "other": other}.get), \
                contextlib.redirect_stdout(io.StringIO()):
            return measure.differences("one", "other")

    def test_the_same_has_none(self):
        self.assertEqual(self.between(noise(), noise()), [])

    def test_a_little_is_allowed(self):
        self.assertEqual(self.between(noise(), noise(2.05, 0.102)), [])

    def test_another_length_is_one(self):
        self.assertEqual(self.between(noise(), noise(2.5)), ["length differs by 0.50, allowed 0.1"])

    def test_another_loudness_is_one(self):
        self.assertEqual(self.between(noise(), noise(level=0.11)), ["loudness differs by 0.83, allowed 0.5"])

    def test_another_course_of_the_loudness_is_one(self):
        swell = noise(4) * numpy.linspace(0.2, 1.8, 4 * RATE)
        (found,) = self.between(swell, swell[::-1])
        self.assertIn("level curve differs", found)

    def test_another_colour_is_one(self):
        (found,) = self.between(noise(), noise() + sine(100, level=0.08))
        self.assertIn("bands differs", found)


if __name__ == "__main__":
    unittest.main()
