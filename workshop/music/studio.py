"""From a score to an MP3: each stem played by the synthesiser, given its effects, balanced, mixed and mastered."""

from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

import numpy

import perform
import signals
from signals import RATE

SOUND_FONT = Path("/usr/share/sounds/sf2/FluidR3_GM.sf2")
TARGET_LUFS = -15.0
CEILING_DB = -1.6  # before encoding: an MP3 decodes to slightly higher peaks


def frames_of(score):
    """Samples before encoding."""
    return int(round(score.setting("length") * RATE))


def render_stems(score, folder):
    names = list(score.stems)
    with ThreadPoolExecutor(max_workers=2) as pool:
        rendered = pool.map(lambda name: render_stem(score, name, folder), names)
    return dict(zip(names, rendered))


def render_stem(score, name, folder):
    options = score.stems[name]
    tracks = []
    for part in score.parts.values():
        if part.options["stem"] == name and part.notes:
            tracks += perform.perform_part(score, part)
    midi, wav = folder / f"{name}.mid", folder / f"{name}.wav"
    perform.write_midi(midi, tracks)
    signals.run(["fluidsynth", "-n", "-i", "-q", "-R", "0", "-C", "0", "-g", "0.5", "-r", RATE, "-T", "wav",
                 "-O", "float", "-F", wav, SOUND_FONT, midi])
    samples = fit(signals.read_any(wav), frames_of(score))
    if "sox" in options:
        samples = fit(signals.sox(samples * 0.5, options["sox"]), frames_of(score))
    samples = reverberate(samples, options)
    return samples * signals.gain(float(options["level"]) - signals.integrated_loudness(samples))


def reverberate(samples, options):
    dry = samples
    if "spring" in options:
        samples = samples + float(options["spring"]) * signals.convolve(dry, signals.spring())
    if "room" in options:
        seconds = float(options.get("roomtime", 0.9))
        samples = samples + float(options["room"]) * signals.convolve(dry, signals.room(seconds))
    return samples


def fit(samples, length):
    return samples[:length] if len(samples) >= length else numpy.pad(samples, (0, length - len(samples)))


def mix(score, stems):
    total = numpy.zeros(frames_of(score))
    for samples in stems.values():
        total += samples
    if "bus" in score.settings:
        total = fit(signals.sox(total * 0.25, score.settings["bus"]) * 4, len(total))
    return ending(score, total)


def ending(score, samples):
    """Lets the last sound die to true silence: `fade` gives the seconds at which it starts and ends. `lead` is
    the silence before the first beat, so that a loop's seam does not lie on its attack."""
    samples = fit(numpy.pad(samples, (int(score.setting("lead") * RATE), 0)), len(samples))
    start, end = (int(float(word) * RATE) for word in score.settings["fade"].split())
    curve = numpy.ones(len(samples))
    curve[start:end] = 0.5 + 0.5 * numpy.cos(numpy.linspace(0, numpy.pi, end - start))
    curve[end:] = 0
    lead = int(0.002 * RATE)
    curve[:lead] = numpy.linspace(0, 1, lead)
    return samples * curve


def master(samples, folder, path):
    """Raises the mix to the target loudness under the ceiling, judged by what the MP3 decodes to."""
    peaks = signals.peaks_between(samples)
    aim = TARGET_LUFS
    boost = aim - signals.integrated_loudness(samples)
    for _ in range(3):
        for _ in range(3):  # the more is limited, the more is lost
            factor = signals.gain(boost)
            limited = signals.limit(samples * factor, peaks * factor, signals.gain(CEILING_DB))
            boost += aim - signals.integrated_loudness(limited)
        encode(limited, folder, path)
        miss = TARGET_LUFS - signals.integrated_loudness(signals.read_any(path))
        if abs(miss) < 0.05:
            return
        aim += miss


def encode(samples, folder, path):
    wav = folder / "master.wav"
    signals.write_wav(wav, samples)
    signals.run(["lame", "--quiet", "-m", "m", "--cbr", "-b", "144", "-q", "0", "--noreplaygain", wav, path])


def render(score, folder, path):
    stems = render_stems(score, folder)
    mixed = mix(score, stems)
    master(mixed, folder, path)
    return stems
