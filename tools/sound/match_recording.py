#!/usr/bin/env python3
"""Finds pieces of music in a recording, and tells how faithfully they were played.

match_recording.py [--expect NAME,NAME] [--ignore SECONDS] RECORDING.raw MUSIC.raw...

All files are mono 32-bit floats at 48 kHz. Each window of the recording is matched against each piece by normalised
cross-correlation; windows that follow each other in the same piece make a stretch. Within a stretch the recording is
then compared with the piece sample by sample: where it is silent although the piece is not, there is a gap; where the
offset between the two changes, there is a jump. Exit status 1 if a stretch has a gap of more than 1 ms, its offset
moves by more than 5 ms or its piece comes back after a break, or if the expected pieces are not heard in their order;
2 if there is nothing to judge.
"""
import argparse
import os
import sys

import numpy

RATE = 48000
WINDOW = RATE  # samples: one second
HOP = RATE // 4
ALIKE = 0.85  # correlation from which on a window counts as the piece; two different pieces stay below 0.3
SURELY = 0.98  # correlation from which on there is no better place to look for
COARSE = 8  # samples
LONGEST_GAP = 0.001  # seconds
LARGEST_DRIFT = 0.005  # seconds
QUIET = 2.0 / 32768.0  # of full scale


def load(path):
    return numpy.fromfile(path, dtype="<f4")


def coarse(samples):
    """Every COARSE-th sample, after a plain average over as many: enough to find a place."""
    whole = len(samples) // COARSE * COARSE
    return samples[:whole].reshape(-1, COARSE).mean(axis=1)


def energy_of_windows(samples, length):
    squares = numpy.concatenate([[0.0], numpy.cumsum(samples.astype(numpy.float64) ** 2)])
    return numpy.maximum(squares[length:] - squares[:-length], 1e-9)


class Piece:
    def __init__(self, path, loops):
        self.name = os.path.splitext(os.path.basename(path))[0]
        once = load(path)
        self.length = len(once)
        # A window may lie across the seam of a looping piece.
        self.samples = numpy.concatenate([once, once[: WINDOW * 2]]) if loops else once
        self.coarse = coarse(self.samples)
        self.size = 1
        while self.size < len(self.coarse) + WINDOW // COARSE:
            self.size *= 2
        self.spectrum = numpy.conj(numpy.fft.rfft(self.coarse, self.size))
        self.coarse_energy = energy_of_windows(self.coarse, WINDOW // COARSE)
        self.energy = energy_of_windows(self.samples, WINDOW)

    def match_near(self, window, place, reach):
        """The best match at most `reach` samples from `place`."""
        first = max(0, place - reach)
        last = min(len(self.energy) - 1, place + reach)
        if first > last:
            return 0, 0.0
        products = numpy.correlate(self.samples[first:last + WINDOW], window, mode="valid")
        scores = products / numpy.sqrt(self.energy[first:last + 1])
        at = int(numpy.argmax(scores))
        return first + at, float(scores[at] / loudness(window))

    def best_match(self, window):
        """Where in the piece the window lies (samples), and how alike the two are (1: the same)."""
        spectrum = numpy.fft.rfft(coarse(window), self.size)
        product = numpy.fft.irfft(numpy.conj(spectrum * self.spectrum), self.size)
        scores = product[: len(self.coarse_energy)] / numpy.sqrt(self.coarse_energy)
        return self.match_near(window, COARSE * int(numpy.argmax(scores)), 2 * COARSE)


def loudness(window):
    return max(numpy.sqrt(numpy.sum(window.astype(numpy.float64) ** 2)), 1e-9)


class Stretch:
    def __init__(self, piece):
        self.piece = piece
        self.matches = []  # (place in the recording, place in the piece), samples

    @property
    def start(self):
        return self.matches[0][0]

    @property
    def end(self):
        return self.matches[-1][0] + WINDOW

    def offsets(self):
        """Recording minus piece, samples, with the turns of the loop taken out."""
        first = self.matches[0][0] - self.matches[0][1]
        length = self.piece.length
        return [first + (r - p - first + length // 2) % length - length // 2 for r, p in self.matches]


def find_stretches(recording, pieces):
    stretches = []
    for at in range(0, len(recording) - WINDOW + 1, HOP):
        window = recording[at:at + WINDOW]
        if numpy.sqrt(numpy.mean(window.astype(numpy.float64) ** 2)) < 4 * QUIET:
            continue
        # Mostly the music just goes on; only where it does not is it looked for everywhere.
        score = 0.0
        if stretches:
            piece = stretches[-1].piece
            last_at, last_place = stretches[-1].matches[-1]
            place, score = piece.match_near(window, (last_place + at - last_at) % piece.length, 8)
        if score < SURELY:
            matches = [(piece, *piece.best_match(window)) for piece in pieces]
            piece, place, score = max(matches, key=lambda match: match[2])
        if score < ALIKE:
            continue
        if not stretches or stretches[-1].piece is not piece or at - stretches[-1].end > WINDOW:
            stretches.append(Stretch(piece))
        stretches[-1].matches.append((at, place))
    return stretches


def beginning(recording, stretch):
    """From where on the stretch is judged. The first window may reach into what comes before: into silence even, which
    before a looping piece's first sample must not be taken for the loss of its last ones."""
    at, place = stretch.matches[0]
    seam = at + stretch.piece.length - place
    if at < seam < at + WINDOW:
        heard = recording[at:seam].astype(numpy.float64)
        ending = stretch.piece.samples[place:stretch.piece.length]
        if numpy.dot(heard, ending) < ALIKE * numpy.linalg.norm(heard) * numpy.linalg.norm(ending):
            return max(at + HOP, seam)
    return at + HOP


def longest_gap(recording, stretch):
    """The longest silence in the recording where the piece, at the stretch's usual offset, is not silent: its length
    and its place, both in seconds."""
    offset = int(numpy.median(stretch.offsets()))
    # The last window may reach into what comes behind.
    start, end = beginning(recording, stretch), stretch.end - HOP
    places = (numpy.arange(start, end) - offset) % stretch.piece.length
    heard = numpy.abs(recording[start:end])
    # Around a zero crossing the piece itself is quiet: look at its loudness over a few milliseconds.
    wanted = numpy.abs(stretch.piece.samples[places])
    reach = RATE // 200
    loud = numpy.convolve(wanted, numpy.ones(reach) / reach, mode="same") > 16 * QUIET
    silent = (heard < QUIET) & loud
    turns = numpy.flatnonzero(numpy.diff(numpy.concatenate([[0], silent.astype(numpy.int8), [0]])))
    if len(turns) > 0 and turns[-1] == len(silent):
        turns = turns[:-2]  # the music has ended, for instance with the program
    begins, lengths = turns[::2], turns[1::2] - turns[::2]
    if len(begins) == 0:
        return 0.0, start / RATE
    longest = int(numpy.argmax(lengths))
    return float(lengths[longest] / RATE), (start + begins[longest]) / RATE


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--expect", default="")
    parser.add_argument("--ignore", type=float, default=0.0)
    parser.add_argument("recording")
    parser.add_argument("music", nargs="+")
    arguments = parser.parse_args()

    recording = load(arguments.recording)
    pieces = [Piece(path, loops=not os.path.basename(path).startswith("intro")) for path in arguments.music]
    print(f"recording: {len(recording) / RATE:.1f} s, peak {numpy.max(numpy.abs(recording), initial=0.0):.3f}")
    stretches = find_stretches(recording, pieces)
    good = True
    for stretch in stretches:
        offsets = numpy.array(stretch.offsets())
        drift = (offsets.max() - offsets.min()) / RATE
        gap, gap_at = longest_gap(recording, stretch)
        judged = stretch.start / RATE >= arguments.ignore
        fault = judged and (gap > LONGEST_GAP or drift > LARGEST_DRIFT)
        good = good and not fault
        print(
            f"{stretch.start / RATE:7.2f} s to {stretch.end / RATE:7.2f} s: {stretch.piece.name},"
            f" piece begins at {offsets[0] / RATE:.4f} s, offset moves by {1000 * drift:.2f} ms,"
            f" longest gap {1000 * gap:.2f} ms at {gap_at:.2f} s"
            f"{'' if not fault else '  <-- fault'}{'' if judged else '  (not judged)'}"
        )
        if fault:
            for (at, _), before, after in zip(stretch.matches[1:], offsets, offsets[1:]):
                if abs(after - before) > RATE * LARGEST_DRIFT / 5:
                    print(f"        at {at / RATE:.2f} s the offset jumps by {1000 * (after - before) / RATE:.2f} ms")
    for before, after in zip(stretches, stretches[1:]):
        if before.piece is after.piece and after.start / RATE >= arguments.ignore:
            print(f"{before.piece.name} breaks off at {before.end / RATE:.2f} s and is back at "
                  f"{after.start / RATE:.2f} s")
            good = False
    heard = []
    for stretch in stretches:
        if not heard or heard[-1] != stretch.piece.name:
            heard.append(stretch.piece.name)
    expected = [name for name in arguments.expect.split(",") if name]
    if expected and heard != expected:
        print(f"heard {', '.join(heard) or 'nothing'}; expected {', '.join(expected)}")
        good = False
    if not stretches and not expected:
        print("no music in the recording")
        return 2
    print("good" if good else "not good")
    return 0 if good else 1


if __name__ == "__main__":
    sys.exit(main())
