"""Turns a score into what players would do: swing, small unevenness in time and touch, strums, tremolo, bends.

Everything uneven comes from one generator seeded by the score and the part's name, so a score always gives the
same performance.
"""

import math
import random
import struct
from dataclasses import dataclass

TICKS_PER_SECOND = 1920  # 960 a crotchet at the 120 a minute that MIDI files assume
BEND_RANGE = 2  # semitones each way, what General MIDI starts with


@dataclass
class Played:
    start: float  # seconds
    end: float
    key: int
    velocity: int


@dataclass
class Track:
    """One channel's worth of playing."""

    program: int
    bank: int
    drums: bool
    tune: float  # cents
    played: list
    bends: list  # (seconds, cents)
    controls: list  # (seconds, controller, value)


def clamp(value, low, high):
    return max(low, min(high, value))


def perform_part(score, part):
    chance = random.Random(f"{score.settings['seed']} {part.name}")
    sway = part.number("sway", 5) / 1000  # seconds, standard deviation
    touch = part.number("touch", 4)
    lay = part.number("lay", 0) / 1000  # seconds behind the beat
    sustain = part.number("sustain", 0.95)
    swing = part.number("swing", score.setting("swing"))
    played, bends = [], []
    for note in part.notes:
        start = score.seconds_of(note.start, swing) + lay + chance.gauss(0, sway)
        end = score.seconds_of(note.start + note.length, swing) + lay
        sounding = start + (end - start) * (0.5 if "'" in note.marks else sustain)
        if part.flag("ring"):
            sounding = end + part.number("tail", 0.6)
        velocity = note.velocity + chance.gauss(0, touch)
        start = max(0.0, start)
        if "^" in note.marks:
            bends += glide(start, -150, 0, 0.09)
        if "v" in note.marks:
            bends += glide(max(start, sounding - 0.22), 0, -200, 0.22) + [(sounding + 0.05, 0)]
        if "/" in note.marks or (part.flag("tremolo") and note.length >= 0.75 and "_" not in note.marks):
            played += picked(note, start, end, velocity, chance, 15 / score.setting("tempo"))
        elif "=" in note.marks:
            played += rolled(note, start, end, velocity, chance, part)
        elif note.stroke:
            played += strummed(note, start, sounding, velocity, chance, part)
        else:
            for index, key in enumerate(note.keys):
                softer = 0 if index < note.written else 8
                apart = abs(chance.gauss(0, sway)) if len(note.keys) > 1 else 0.0
                played.append(Played(start + apart, sounding, key, soften(velocity - softer)))
    controls = vibrato(part, score)
    tunes = [float(cents) for cents in part.options.get("tune", "0").split(",")]
    bends += wow(part, score)
    programs = [int(part.number("program"))] + ([int(part.number("double"))] if "double" in part.options else [])
    voices = [(program, tune) for program in programs for tune in tunes]
    return [
        Track(program, int(part.number("bank")), part.options.get("kind") == "drums", tune,
              [Played(p.start + 0.011 * (index % len(tunes)), p.end, p.key,
                      soften(p.velocity - (0 if program == programs[0] else 10))) for p in played], bends, controls)
        for index, (program, tune) in enumerate(voices)
    ]


def soften(velocity):
    return int(clamp(round(velocity), 8, 127))


def glide(start, low, high, seconds):
    steps = 12
    return [(start + seconds * i / steps, low + (high - low) * i / steps) for i in range(steps + 1)]


def vibrato(part, score):
    depth = int(part.number("vibrato"))
    if not depth:
        return []
    controls = [(0.0, 1, 0)]
    for note in part.notes:
        start = score.seconds_of(note.start)
        length = score.seconds_of(note.start + note.length) - start
        controls.append((start, 1, 0))
        if length > 0.4:
            controls += [(start + 0.2 + 0.04 * i, 1, depth * i // 5) for i in range(6)]
    return controls


def wow(part, score):
    """Slow unsteadiness of pitch, as of worn clockwork."""
    depth = part.number("wow")
    if not depth:
        return []
    end = score.seconds_of(score.beat_of_bar(score.bar_count + 1))
    times = [0.05 * i for i in range(int(end / 0.05))]
    down = part.number("rundown", 0)  # cents lost in the last seconds, while the spring gives out
    last = part.number("rundownfrom", end)
    return [(t, depth * (math.sin(t * 4.1) * 0.6 + math.sin(t * 1.7 + 1) * 0.4)
             - (down * (t - last) / (end - last) if t > last else 0)) for t in times]


def picked(note, start, end, velocity, chance, semiquaver):
    """Alternate picking: the down strokes a little stronger, swelling through the note."""
    stroke = semiquaver
    count = max(2, round((end - start) / stroke))
    step = (end - start) / count
    strokes = []
    for index in range(count):
        at = start + index * step + (chance.gauss(0, 0.0025) if index else 0)
        accent = 6 if index == 0 else (0 if index % 2 == 0 else -9)
        swell = 5 * index / count
        for key in note.keys:
            strokes.append(Played(at, at + step * 0.98, key,
                                  soften(velocity + accent + swell - 4 + chance.gauss(0, 2))))
    return strokes


def rolled(note, start, end, velocity, chance, part):
    """A mallet roll: hands alternate between the notes, or on one note."""
    rate = part.number("roll", 0.062)
    count = max(2, round((end - start) / rate))
    step = (end - start) / count
    strokes = []
    for index in range(count):
        shape = 1.0 if index == 0 else 0.72 + 0.18 * math.sin(math.pi * index / count)
        key = note.keys[index % len(note.keys)]
        strokes.append(Played(start + index * step + chance.gauss(0, 0.003), start + (index + 1.6) * step, key,
                              soften(velocity * shape + chance.gauss(0, 3))))
    return strokes


def strummed(note, start, sounding, velocity, chance, part):
    gap = part.number("strum", 11) / 1000
    keys = note.keys if note.stroke == "D" else note.keys[::-1]
    keys = keys if note.stroke == "D" or len(keys) < 4 else keys[:3]
    spread = gap * (1.0 if note.stroke == "D" else 0.8)
    return [Played(start + index * spread * (1 + chance.gauss(0, 0.1)), sounding, key,
                   soften(velocity - 2 * index + chance.gauss(0, 3))) for index, key in enumerate(keys)]


# The MIDI file.

def write_midi(path, tracks):
    chunks = []
    channels = [channel for channel in range(16) if channel != 9]
    for track in tracks:
        channel = 9 if track.drums else channels.pop(0)
        chunks.append(track_chunk(track, channel))
    header = b"MThd" + struct.pack(">IHHH", 6, 1, len(chunks), TICKS_PER_SECOND // 2)
    path.write_bytes(header + b"".join(chunks))


def track_chunk(track, channel):
    events = []  # (tick, order, bytes): releases come before whatever starts at the same tick
    setup = []
    if not track.drums:
        setup += [bytes([0xB0 | channel, 0, track.bank])]
    setup += [bytes([0xC0 | channel, track.program]), bytes([0xB0 | channel, 10, 64])]
    if track.tune:
        fine = int(clamp(8192 + track.tune / 100 * 8192, 0, 16383))
        for controller, value in ((101, 0), (100, 1), (6, fine >> 7), (38, fine & 127)):
            setup.append(bytes([0xB0 | channel, controller, value]))
    events += [(0, index, message) for index, message in enumerate(setup)]
    for at, cents in track.bends:
        bend = int(clamp(8192 + cents / (100 * BEND_RANGE) * 8192, 0, 16383))
        events.append((tick(at), 30, bytes([0xE0 | channel, bend & 127, bend >> 7])))
    for at, controller, value in track.controls:
        events.append((tick(at), 31, bytes([0xB0 | channel, controller, value])))
    for start, end, key, velocity in without_overlaps(track.played):
        events.append((start, 40, bytes([0x90 | channel, key, velocity])))
        events.append((end, 20, bytes([0x80 | channel, key, 64])))
    events.sort(key=lambda event: (event[0], event[1]))
    body, now = b"", 0
    for at, _, message in events:
        body += variable(at - now) + message
        now = at
    body += variable(0) + b"\xff\x2f\x00"
    return b"MTrk" + struct.pack(">I", len(body)) + body


def without_overlaps(played):
    """The same key is let go before it is struck again."""
    following = {}
    result = []
    for note in sorted(played, key=lambda p: (p.start, p.key), reverse=True):
        start, end = tick(note.start), max(tick(note.start) + 20, tick(note.end))
        if note.key in following:
            if following[note.key] - start < 20:
                continue
            end = min(end, following[note.key] - 1)
        following[note.key] = start
        result.append((start, end, note.key, note.velocity))
    return result


def tick(seconds):
    return max(0, round(seconds * TICKS_PER_SECOND))


def variable(value):
    groups = [value & 127]
    while value > 127:
        value >>= 7
        groups.append((value & 127) | 128)
    return bytes(reversed(groups))
