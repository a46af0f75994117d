"""Sound as arrays of floats at 48 kHz: filters, rooms, loudness, peaks and the limiter."""

import math
import subprocess

import numpy

RATE = 48000


def run(command, data=None):
    result = subprocess.run([str(word) for word in command], input=data, capture_output=True)
    if result.returncode != 0:
        raise RuntimeError(f"{command[0]}: {result.stderr.decode(errors='replace').strip()}")
    return result


def read_any(path, trim=True):
    """Mono samples of a sound file. Without trim, an MP3's encoder delay and padding are kept."""
    keep = [] if trim else ["-flags2", "+skip_manual"]
    raw = run(["ffmpeg", "-v", "error", *keep, "-i", path, "-ac", "1", "-f", "f32le", "-"]).stdout
    return numpy.frombuffer(raw, dtype="<f4").astype(numpy.float64)


def write_wav(path, samples):
    raw = samples.astype("<f4").tobytes()
    run(["sox", "-V1", "-t", "raw", "-e", "float", "-b", "32", "-r", RATE, "-c", "1", "-", "-b", "24", "-D", path], raw)


def sox(samples, effects):
    """Runs samples through a chain of sox effects."""
    shape = ["-t", "raw", "-e", "float", "-b", "32", "-r", str(RATE), "-c", "1"]
    raw = run(["sox", "-V1", *shape, "-", *shape, "-", *effects.split()], samples.astype("<f4").tobytes()).stdout
    return numpy.frombuffer(raw, dtype="<f4").astype(numpy.float64)


def convolve(samples, response):
    size = 1 << (len(samples) + len(response) - 1).bit_length()
    spectrum = numpy.fft.rfft(samples, size) * numpy.fft.rfft(response, size)
    return numpy.fft.irfft(spectrum, size)[:len(samples)]


def decibels(value):
    return 20 * math.log10(max(value, 1e-9))


def gain(db):
    return 10 ** (db / 20)


# Reverberation.

def spring(seed=7):
    """What a guitar amplifier's spring tank answers to a click: two springs, each a train of echoes in which high
    notes arrive later and later, which is the drip of surf guitars."""
    size = 1 << 17
    frequency = numpy.fft.rfftfreq(size, 1 / RATE)
    cut = 4300.0
    response = numpy.zeros(size // 2 + 1, dtype=complex)
    band = 1 / (1 + (frequency / cut) ** 12) * (frequency / 160) ** 2 / (1 + (frequency / 160) ** 2)
    for base, sign, strength in ((0.0333, 1, 1.0), (0.0411, -1, 0.8)):
        delay = base * (1 + 0.9 * numpy.minimum(frequency / cut, 1.2) ** 2)
        for echo in range(1, 34):
            phase = -2 * math.pi * numpy.cumsum(delay * (2 * echo - 1)) * (RATE / size)
            response += strength * (sign * 0.86) ** echo * band ** (0.35 * echo) * numpy.exp(1j * phase)
    answer = numpy.fft.irfft(response, size)
    return answer / numpy.sqrt(numpy.sum(answer ** 2))


def room(seconds, brightness=5000.0, predelay=0.012, seed=3):
    """A small hall: noise that dies away, the high part sooner."""
    chance = numpy.random.Generator(numpy.random.PCG64(seed))
    length = int(seconds * 1.3 * RATE)
    time = numpy.arange(length) / RATE
    noise = chance.standard_normal(length)
    size = 1 << (length - 1).bit_length()
    spectrum = numpy.fft.rfft(noise, size)
    frequency = numpy.fft.rfftfreq(size, 1 / RATE)
    low = numpy.fft.irfft(spectrum / (1 + (frequency / (brightness * 0.4)) ** 2), size)[:length]
    high = numpy.fft.irfft(spectrum * (frequency / (brightness * 0.4)) ** 2
                           / (1 + (frequency / (brightness * 0.4)) ** 2)
                           / (1 + (frequency / (brightness * 1.8)) ** 4), size)[:length]
    tail = low * 10 ** (-3 * time / seconds) + high * 10 ** (-3 * time / (seconds * 0.55))
    tail *= numpy.minimum(1, time / 0.006)
    lead = numpy.zeros(int(predelay * RATE))
    answer = numpy.concatenate([lead, tail])
    answer = answer - convolve(answer, lowpass_response(140))
    return answer / numpy.sqrt(numpy.sum(answer ** 2))


def lowpass_response(frequency):
    time = numpy.arange(int(RATE * 0.05)) / RATE
    answer = numpy.exp(-2 * math.pi * frequency * time)
    return answer / answer.sum()


# Loudness after ITU-R BS.1770: K weighting, 400 ms blocks, two gates.

def k_weighted(samples):
    size = 1 << (len(samples) + RATE - 1).bit_length()
    frequency = numpy.fft.rfftfreq(size, 1 / RATE)
    z = numpy.exp(-2j * math.pi * frequency / RATE)
    shelf = ((1.53512485958697 - 2.69169618940638 * z + 1.19839281085285 * z ** 2)
             / (1 - 1.69065929318241 * z + 0.73248077421585 * z ** 2))
    high = (1 - 2 * z + z ** 2) / (1 - 1.99004745483398 * z + 0.99007225036621 * z ** 2)
    return numpy.fft.irfft(numpy.fft.rfft(samples, size) * shelf * high, size)[:len(samples)]


def block_loudness(samples, seconds=0.4, hop=0.1):
    """LUFS of each overlapping block."""
    power = numpy.concatenate([[0.0], numpy.cumsum(k_weighted(samples) ** 2)])
    length, step = int(seconds * RATE), int(hop * RATE)
    starts = numpy.arange(0, max(1, len(samples) - length + 1), step)
    ends = numpy.minimum(starts + length, len(samples))
    mean = numpy.maximum((power[ends] - power[starts]) / (ends - starts), 1e-12)
    return -0.691 + 10 * numpy.log10(mean)


def gated_mean(loudness):
    loud = loudness[loudness > -70]
    if not len(loud):
        return -70.0
    mean = 10 * math.log10(numpy.mean(10 ** (loud / 10)))
    loud = loud[loud > mean - 10]
    return 10 * math.log10(numpy.mean(10 ** (loud / 10)))


def integrated_loudness(samples):
    return gated_mean(block_loudness(samples))


def four_times(samples):
    """Between the samples: the same sound at four times the rate."""
    size = 1 << (len(samples) + 4095).bit_length()
    spectrum = numpy.fft.rfft(samples, size)
    wide = numpy.zeros(2 * size + 1, dtype=complex)
    wide[:len(spectrum)] = spectrum
    wide[len(spectrum) - 1] *= 0.5
    return 4 * numpy.fft.irfft(wide, 4 * size)[:4 * len(samples)]


def peaks_between(samples):
    """For each sample, the highest level from it to the next one, in between included."""
    return numpy.abs(four_times(samples)).reshape(-1, 4).max(axis=1)


def limit(samples, peaks, ceiling, seconds=0.004, release=0.09):
    """Keeps true peaks (see peaks_between) under the ceiling: looks ahead, ducks smoothly, lets go slowly."""
    needed = numpy.minimum(1.0, ceiling / numpy.maximum(peaks, 1e-9))
    fast = smooth(lowest(needed, int(seconds * RATE)), int(seconds * RATE))
    slow = smooth(lowest(needed, int(release * RATE)), int(release * RATE))
    return samples * numpy.minimum(fast, 0.5 * slow + 0.5)


def lowest(values, reach):
    """Minimum over reach samples to each side."""
    result = numpy.pad(values, reach, mode="edge")
    width, span = 2 * reach + 1, 1
    while span * 2 <= width:
        result = numpy.minimum(result[:len(result) - span], result[span:])
        span *= 2
    rest = width - span
    return numpy.minimum(result[:len(result) - rest], result[rest:]) if rest else result


def smooth(values, reach):
    window = numpy.hanning(2 * reach + 3)[1:-1]
    window /= window.sum()
    padded = numpy.pad(values, reach, mode="edge")
    size = 1 << (len(padded) + len(window)).bit_length()
    result = numpy.fft.irfft(numpy.fft.rfft(padded, size) * numpy.fft.rfft(window, size), size)
    return numpy.minimum(result[2 * reach:2 * reach + len(values)], 1.0)
