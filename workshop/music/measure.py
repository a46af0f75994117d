"""Figures of a finished piece, and how far two renderings of it are apart."""

import math
import re

import numpy

import signals
from signals import RATE

BANDS = [(40, 160), (160, 640), (640, 2560), (2560, 8000), (8000, 16000)]


def figures(score, path):
    samples = signals.read_any(path)
    whole = signals.read_any(path, trim=False)
    loudness, peak = ebur128(path)
    return {
        "seconds": len(samples) / RATE,
        "decodedSeconds": len(whole) / RATE,
        "lufs": loudness,
        "truePeak": peak,
        "samplePeak": signals.decibels(numpy.max(numpy.abs(samples))),
        "bands": band_levels(samples),
        "sections": section_loudness(score, samples),
        "kilobytes": path.stat().st_size / 1024,
    }


def ebur128(path):
    """Integrated loudness and true peak as ffmpeg measures them on the decoded file."""
    command = ["ffmpeg", "-nostats", "-i", path, "-af", "ebur128=peak=true", "-f", "null", "-"]
    text = signals.run(command).stderr.decode()
    summary = text[text.rindex("Summary:"):]
    return (float(re.search(r"I:\s+(-?[\d.]+) LUFS", summary).group(1)),
            float(re.search(r"Peak:\s+(-?[\d.]+|-inf) dBFS", summary).group(1)))


def band_levels(samples):
    """Level of each frequency band, in dB below the whole."""
    power = numpy.abs(numpy.fft.rfft(samples)) ** 2
    frequency = numpy.fft.rfftfreq(len(samples), 1 / RATE)
    return [10 * math.log10(max(power[(frequency >= low) & (frequency < high)].sum() / power.sum(), 1e-12))
            for low, high in BANDS]


def section_loudness(score, samples):
    result = []
    for section in score.sections:
        start = score.seconds_of(score.beat_of_bar(section.first_bar))
        end = score.seconds_of(score.beat_of_bar(section.first_bar + section.bars))
        stretch = samples[int(start * RATE):int(end * RATE)]
        loudness = signals.integrated_loudness(stretch) if len(stretch) > RATE // 2 else -70.0
        result.append((section.name, start, loudness))
    return result


def describe(found):
    bands = ", ".join(f"{low}-{high} Hz {level:.1f}" for (low, high), level in zip(BANDS, found["bands"]))
    lines = [
        f"  {found['seconds']:.3f} s ({found['decodedSeconds']:.3f} s with the encoder's padding), "
        f"{found['kilobytes']:.0f} KiB",
        f"  {found['lufs']:.1f} LUFS, true peak {found['truePeak']:.1f} dBTP, sample peak {found['samplePeak']:.1f} dB",
        f"  bands in dB of the whole: {bands}",
    ]
    for name, start, loudness in found["sections"]:
        lines.append(f"  {start:6.2f} s  {loudness:6.1f} LUFS  {name}")
    return "\n".join(lines)


def stem_table(score, stems):
    """Loudness of each stem in each section, before the mix is mastered; empty where it is silent."""
    lines = ["  " + " " * 12 + "".join(f"{section.name[:7]:>8}" for section in score.sections)]
    for name, samples in stems.items():
        levels = [level for _, _, level in section_loudness(score, samples)]
        lines.append(f"  {name:12}" + "".join(f"{level:8.1f}" if level > -60 else " " * 8 for level in levels))
    return "\n".join(lines)


# Bounds for a fresh rendering by other versions of the same tools.
LENGTH_BOUND = 0.1  # seconds
LOUDNESS_BOUND = 0.5  # LU, whole piece
CURVE_BOUND = 2.0  # dB, mean difference of 400 ms blocks
BAND_BOUND = 2.0  # dB, each band


def differences(fresh, kept):
    """What is out of bounds between two renderings, as sentences."""
    one, other = signals.read_any(fresh), signals.read_any(kept)
    length = abs(len(one) - len(other)) / RATE
    loudness = abs(signals.integrated_loudness(one) - signals.integrated_loudness(other))
    shorter = min(len(one), len(other))
    curve = numpy.abs(numpy.maximum(signals.block_loudness(one[:shorter]), -50)
                      - numpy.maximum(signals.block_loudness(other[:shorter]), -50)).mean()
    bands = max(abs(a - b) for a, b in zip(band_levels(one), band_levels(other)))
    print(f"  against a fresh one: length {length:.3f} s, loudness {loudness:.2f} LU, level curve {curve:.2f} dB, "
          f"bands {bands:.2f} dB", flush=True)
    found = (("length", length, LENGTH_BOUND), ("loudness", loudness, LOUDNESS_BOUND),
             ("level curve", curve, CURVE_BOUND), ("bands", bands, BAND_BOUND))
    return [f"{what} differs by {value:.2f}, allowed {bound}" for what, value, bound in found if value > bound]
