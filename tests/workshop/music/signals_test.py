"""Filters, rooms, loudness, peaks and the limiter, against definitions and published figures."""

import shutil
import tempfile
import unittest
from pathlib import Path

from music_tools import need_numpy

need_numpy()

import numpy  # noqa: E402

import signals  # noqa: E402
from signals import RATE  # noqa: E402


def sine(frequency, seconds=2.0, level=1.0, phase=0.0):
    return level * numpy.sin(2 * numpy.pi * frequency * numpy.arange(int(seconds * RATE)) / RATE + phase)


def energy(samples):
    return float(numpy.sum(samples ** 2))


class Decibels(unittest.TestCase):
    def test_twice_the_level_is_six_more(self):
        self.assertAlmostEqual(signals.decibels(2), 6.0206, places=4)
        self.assertAlmostEqual(signals.gain(6.0206), 2, places=4)

    def test_they_lead_back(self):
        for level in (-60, -3.5, 0, 12):
            self.assertAlmostEqual(signals.decibels(signals.gain(level)), level)

    def test_silence_is_very_low_and_no_error(self):
        self.assertEqual(signals.decibels(0), -180)


class Convolution(unittest.TestCase):
    def test_it_is_the_sum_of_shifted_copies(self):
        found = signals.convolve(numpy.array([1.0, 2, 3, 4]), numpy.array([1.0, 0, 0.5]))
        numpy.testing.assert_allclose(found, [1, 2, 3.5, 5], atol=1e-12)

    def test_it_keeps_the_length_and_never_wraps_around(self):
        samples = numpy.zeros(1000)
        samples[-1] = 1
        found = signals.convolve(samples, numpy.ones(500))
        self.assertEqual(len(found), 1000)
        self.assertLess(numpy.abs(found[:-1]).max(), 1e-12)


class Loudness(unittest.TestCase):
    def test_a_full_sine_of_997_hz_in_one_channel_is_minus_3_01(self):
        # The figure that ITU-R BS.1770 gives for checking a meter.
        self.assertAlmostEqual(signals.integrated_loudness(sine(997, 5)), -3.01, delta=0.02)

    def test_it_follows_the_level(self):
        self.assertAlmostEqual(signals.integrated_loudness(sine(997, 3, 0.1)), -23.01, delta=0.02)

    def test_the_ear_hears_deep_sound_less_and_high_sound_more(self):
        deep, middle, high = (signals.integrated_loudness(sine(frequency, 3, 0.1)) for frequency in (40, 997, 5000))
        self.assertLess(deep, middle - 3)
        self.assertAlmostEqual(high, middle + 3.3, delta=0.5)

    def test_silence_is_the_floor(self):
        self.assertEqual(signals.integrated_loudness(numpy.zeros(RATE)), -70)

    def test_silence_around_a_piece_does_not_count(self):
        piece = sine(997, 8, 0.1)
        with_rest = numpy.concatenate([numpy.zeros(4 * RATE), piece, numpy.zeros(4 * RATE)])
        self.assertAlmostEqual(signals.integrated_loudness(with_rest), signals.integrated_loudness(piece), delta=0.3)

    def test_what_is_ten_below_the_mean_does_not_count(self):
        loud, faint = numpy.full(10, -20.0), numpy.full(10, -45.0)
        self.assertAlmostEqual(signals.gated_mean(numpy.concatenate([loud, faint])), -20)

    def test_what_is_below_the_floor_does_not_count(self):
        self.assertAlmostEqual(signals.gated_mean(numpy.repeat([-68.0, -72.0], 10)), -68)

    def test_blocks_of_400_ms_begin_every_100_ms(self):
        self.assertEqual(len(signals.block_loudness(numpy.zeros(RATE))), 7)

    def test_less_than_a_block_is_one_block(self):
        self.assertEqual(len(signals.block_loudness(sine(997, 0.1))), 1)


class Peaks(unittest.TestCase):
    def test_the_top_between_two_samples_is_found(self):
        # A quarter of the rate, an eighth of a turn off: every sample is at 0.707, the wave at 1.
        samples = sine(RATE / 4, 1, phase=numpy.pi / 4)
        self.assertAlmostEqual(numpy.abs(samples).max(), 0.7071, places=4)
        self.assertAlmostEqual(signals.peaks_between(samples)[1000:-1000].max(), 1, places=3)

    def test_the_samples_themselves_stay(self):
        samples = sine(440, 0.2)
        numpy.testing.assert_allclose(signals.four_times(samples)[::4], samples, atol=1e-9)


class Limiter(unittest.TestCase):
    CEILING = 0.5

    def limited(self, samples):
        return signals.limit(samples, signals.peaks_between(samples), self.CEILING)

    def test_true_peaks_stay_under_the_ceiling(self):
        samples = sine(RATE / 4, 1, phase=numpy.pi / 4) * numpy.linspace(0, 2, RATE)
        self.assertLessEqual(signals.peaks_between(self.limited(samples))[500:-500].max(), self.CEILING * 1.01)

    def test_a_click_is_ducked(self):
        samples = sine(440, 1, 0.1)
        samples[RATE // 2] = 1.5
        self.assertLessEqual(numpy.abs(self.limited(samples)).max(), self.CEILING + 1e-9)

    def test_what_is_quiet_is_left_alone(self):
        samples = sine(440, 0.5, 0.3)
        numpy.testing.assert_allclose(self.limited(samples), samples, atol=1e-9)


class Windows(unittest.TestCase):
    def test_the_lowest_within_reach_to_both_sides(self):
        values = numpy.random.default_rng(1).random(300)
        for reach in (1, 2, 3, 7, 16, 50):
            expected = [values[max(0, at - reach):at + reach + 1].min() for at in range(len(values))]
            numpy.testing.assert_array_equal(signals.lowest(values, reach), expected)

    def test_smoothing_leaves_what_is_even(self):
        numpy.testing.assert_allclose(signals.smooth(numpy.full(200, 0.6), 20), 0.6)

    def test_smoothing_reaches_no_further_than_told(self):
        values = numpy.ones(201)
        values[100] = 0
        smoothed = signals.smooth(values, 10)
        numpy.testing.assert_allclose(smoothed[:90], 1)
        numpy.testing.assert_allclose(smoothed[111:], 1)
        self.assertEqual(smoothed.argmin(), 100)

    def test_smoothing_never_amplifies(self):
        self.assertLessEqual(signals.smooth(numpy.random.default_rng(2).random(500), 5).max(), 1)


class Reverberation(unittest.TestCase):
    def test_the_low_pass_leaves_a_constant_as_it_is(self):
        self.assertAlmostEqual(signals.lowpass_response(140).sum(), 1)

    def test_room_and_spring_give_as_much_as_they_get(self):
        for response in (signals.room(0.9), signals.spring()):
            self.assertAlmostEqual(energy(response), 1)

    def test_they_are_the_same_every_time(self):
        numpy.testing.assert_array_equal(signals.room(0.5), signals.room(0.5))
        numpy.testing.assert_array_equal(signals.spring(), signals.spring())

    def test_a_room_answers_after_a_moment_and_dies_away(self):
        response = signals.room(1.0, predelay=0.02)
        before, early, late = response[:int(0.015 * RATE)], response[:RATE // 4], response[-RATE // 4:]
        self.assertLess(energy(before), 1e-6)
        self.assertLess(energy(late), energy(early) / 1000)

    def test_the_high_part_of_a_room_dies_sooner(self):
        response = signals.room(1.0)

        def share_above(samples):
            power = numpy.abs(numpy.fft.rfft(samples)) ** 2
            return power[numpy.fft.rfftfreq(len(samples), 1 / RATE) > 4000].sum() / power.sum()

        self.assertLess(share_above(response[RATE // 2:]), share_above(response[:RATE // 4]) / 2)

    def test_high_notes_come_later_out_of_a_spring(self):
        response = signals.spring()

        def first_echo(low, high):
            spectrum = numpy.fft.rfft(response)
            frequency = numpy.fft.rfftfreq(len(response), 1 / RATE)
            band = numpy.fft.irfft(numpy.where((frequency > low) & (frequency < high), spectrum, 0), len(response))
            return numpy.argmax(numpy.abs(band[:RATE // 8]))

        self.assertLess(first_echo(300, 800), first_echo(2500, 3500))


class Files(unittest.TestCase):
    def test_a_tool_that_fails_is_named_with_what_it_said(self):
        with self.assertRaisesRegex(RuntimeError, "^sh: no such luck$"):
            signals.run(["sh", "-c", "echo no such luck >&2; exit 3"])

    @unittest.skipUnless(shutil.which("sox") and shutil.which("ffmpeg"), "sox or ffmpeg is not here")
    def test_a_sound_comes_back_from_its_file(self):
        samples = sine(440, 0.1, 0.5)
        with tempfile.TemporaryDirectory() as folder:
            path = Path(folder) / "test.wav"
            signals.write_wav(path, samples)
            numpy.testing.assert_allclose(signals.read_any(path), samples, atol=1e-6)


if __name__ == "__main__":
    unittest.main()
