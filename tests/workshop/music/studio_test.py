"""How stems become a piece: lengths, effects, the mix and its end. The synthesiser and the encoder stay out."""

import unittest
from types import SimpleNamespace
from unittest import mock

from music_tools import need_numpy

need_numpy()

import numpy  # noqa: E402

import signals  # noqa: E402
import studio  # noqa: E402
from signals import RATE  # noqa: E402


def piece(**settings):
    settings = {"length": "2", "lead": "0", "fade": "1.5 1.75"} | settings
    return SimpleNamespace(settings=settings, setting=lambda name: float(settings[name]))


class Length(unittest.TestCase):
    def test_it_is_what_the_score_says(self):
        self.assertEqual(studio.frames_of(piece(length="1.5")), 72000)

    def test_what_is_longer_is_cut_and_what_is_shorter_ends_in_silence(self):
        samples = numpy.ones(4)
        numpy.testing.assert_array_equal(studio.fit(samples, 2), [1, 1])
        numpy.testing.assert_array_equal(studio.fit(samples, 6), [1, 1, 1, 1, 0, 0])


class Ending(unittest.TestCase):
    def test_the_last_sound_dies_between_the_two_moments_of_the_fade(self):
        samples = studio.ending(piece(), numpy.ones(2 * RATE))
        self.assertEqual(samples[int(1.5 * RATE) - 1], 1)
        self.assertAlmostEqual(samples[int(1.625 * RATE)], 0.5, places=3)
        self.assertTrue((samples[int(1.75 * RATE):] == 0).all())
        self.assertTrue((numpy.diff(samples[int(1.5 * RATE):]) <= 0).all())

    def test_it_begins_from_silence_within_two_milliseconds(self):
        samples = studio.ending(piece(), numpy.ones(2 * RATE))
        self.assertEqual(samples[0], 0)
        self.assertEqual(samples[int(0.002 * RATE)], 1)

    def test_lead_is_silence_before_the_first_beat_and_keeps_the_length(self):
        samples = studio.ending(piece(lead="0.25"), numpy.ones(2 * RATE))
        self.assertEqual(len(samples), 2 * RATE)
        self.assertTrue((samples[:RATE // 4] == 0).all())
        self.assertEqual(samples[RATE // 4 + 1], 1)


class Mix(unittest.TestCase):
    def test_it_is_the_sum_of_the_stems(self):
        one, other = numpy.full(2 * RATE, 0.25), numpy.full(2 * RATE, 0.5)
        self.assertEqual(studio.mix(piece(), {"one": one, "other": other})[RATE], 0.75)

    def test_effects_on_the_whole_come_after_and_have_room_to_spare(self):
        seen = []

        def sox(samples, effects):
            seen.append((float(samples[RATE]), effects))
            return samples

        with mock.patch.object(signals, "sox", sox):
            mixed = studio.mix(piece(bus="bass +2"), {"one": numpy.full(2 * RATE, 0.8)})
        self.assertEqual(seen, [(0.2, "bass +2")])
        self.assertAlmostEqual(mixed[RATE], 0.8)


class Reverberation(unittest.TestCase):
    def setUp(self):
        self.click = numpy.zeros(RATE)
        self.click[0] = 1

    def test_a_stem_that_asks_for_none_stays_dry(self):
        numpy.testing.assert_array_equal(studio.reverberate(self.click, {"level": "-20"}), self.click)

    def test_what_is_added_is_the_share_that_is_asked_for(self):
        for kind, response in (("room", signals.room(0.9)), ("spring", signals.spring())):
            wet = studio.reverberate(self.click, {kind: "0.5"}) - self.click
            numpy.testing.assert_allclose(wet, 0.5 * studio.fit(response, RATE), atol=1e-9)

    def test_both_hear_the_dry_sound(self):
        both = studio.reverberate(self.click, {"room": "0.5", "spring": "0.5"})
        room, spring = (studio.reverberate(self.click, {kind: "0.5"}) for kind in ("room", "spring"))
        numpy.testing.assert_allclose(both, room + spring - self.click, atol=1e-9)

    def test_roomtime_is_how_long_it_rings(self):
        small, large = (studio.reverberate(self.click, {"room": "1", "roomtime": time}) for time in ("0.3", "2"))
        self.assertLess(numpy.abs(small[RATE // 2:]).max(), numpy.abs(large[RATE // 2:]).max())


class Master(unittest.TestCase):
    def test_it_is_as_loud_as_the_target_and_stays_under_the_ceiling(self):
        made = []

        def encode(samples, folder, path):
            made.append(samples)

        tone = 0.02 * numpy.sin(2 * numpy.pi * 997 * numpy.arange(3 * RATE) / RATE)
        with mock.patch.object(studio, "encode", encode), \
                mock.patch.object(signals, "read_any", lambda path: made[-1]):
            studio.master(tone, None, None)
        self.assertAlmostEqual(signals.integrated_loudness(made[-1]), studio.TARGET_LUFS, delta=0.05)
        self.assertLessEqual(signals.peaks_between(made[-1]).max(), signals.gain(studio.CEILING_DB) + 1e-6)

    def test_what_the_encoder_takes_away_is_made_up_for(self):
        made = []

        def encode(samples, folder, path):
            made.append(samples)

        tone = 0.02 * numpy.sin(2 * numpy.pi * 997 * numpy.arange(3 * RATE) / RATE)
        with mock.patch.object(studio, "encode", encode), \
                mock.patch.object(signals, "read_any", lambda path: made[-1] * signals.gain(-0.5)):
            studio.master(tone, None, None)
        heard = signals.integrated_loudness(made[-1]) - 0.5
        self.assertAlmostEqual(heard, studio.TARGET_LUFS, delta=0.05)


if __name__ == "__main__":
    unittest.main()
