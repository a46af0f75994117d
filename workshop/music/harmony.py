"""Pitches and chord symbols."""

import re
from dataclasses import dataclass

LETTERS = {"c": 0, "d": 2, "e": 4, "f": 5, "g": 7, "a": 9, "b": 11}
NAMES = ["C", "C#", "D", "Eb", "E", "F", "F#", "G", "Ab", "A", "Bb", "B"]

# Semitones above the root: root, third (or fourth), fifth, then what colours the chord.
QUALITIES = {
    "": (0, 4, 7),
    "6": (0, 4, 7, 9),
    "69": (0, 4, 7, 9, 2),
    "maj7": (0, 4, 7, 11),
    "maj9": (0, 4, 7, 11, 2),
    "7": (0, 4, 7, 10),
    "9": (0, 4, 7, 10, 2),
    "7b9": (0, 4, 7, 10, 1),
    "7#5b9": (0, 4, 8, 10, 1),
    "7b13": (0, 4, 7, 10, 8),
    "7b9b13": (0, 4, 7, 10, 1, 8),
    "7sus4": (0, 5, 7, 10),
    "m": (0, 3, 7),
    "m6": (0, 3, 7, 9),
    "m7": (0, 3, 7, 10),
    "m9": (0, 3, 7, 10, 2),
    "m(maj7)": (0, 3, 7, 11),
    "m7b5": (0, 3, 6, 10),
    "dim7": (0, 3, 6, 9),
    "5": (0, 7),
}


class BadScore(Exception):
    """Something in a score that cannot be played; the text says where and what."""


def pitch_of(text):
    """MIDI key of a name such as c4 (middle C), f#5, bb3."""
    match = re.fullmatch(r"([a-g])(#|b)?(-?\d)", text.lower())
    if not match:
        raise BadScore(f"'{text}' is no pitch")
    letter, accidental, octave = match.groups()
    return LETTERS[letter] + {"#": 1, "b": -1, None: 0}[accidental] + 12 * (int(octave) + 1)


def name_of(key):
    return f"{NAMES[key % 12]}{key // 12 - 1}"


@dataclass(frozen=True)
class Chord:
    symbol: str
    root: int  # pitch class
    bass: int  # pitch class, differs from root in G/B
    tones: tuple  # pitch classes: root, third, fifth, colours

    def degree(self, number):
        """Pitch class of the bass (1), third (3), fifth (5) or fourth chord note (7)."""
        if number == 1:
            return self.bass
        index = {3: 1, 5: 2, 7: 3}[number]
        return self.tones[index] if index < len(self.tones) else self.tones[-1]


def chord_of(symbol):
    match = re.fullmatch(r"([A-G])(#|b)?([^/]*)(?:/([A-G][#b]?))?", symbol)
    if not match or match.group(3) not in QUALITIES:
        raise BadScore(f"'{symbol}' is no known chord")
    root = pitch_of(match.group(1) + (match.group(2) or "") + "4") % 12
    bass = pitch_of(match.group(4) + "4") % 12 if match.group(4) else root
    tones = tuple((root + step) % 12 for step in QUALITIES[match.group(3)])
    return Chord(symbol, root, bass, tones)


def place(pitch_class, low):
    """The lowest key of this pitch class that is not below low."""
    return low + (pitch_class - low) % 12


def tones_below(chord, top, count):
    """The next chord notes beneath a melody note, no nearer to it than a minor third."""
    found = []
    key = top - 3
    while len(found) < count:
        if key % 12 in chord.tones and (not found or found[-1] - key >= 2):
            found.append(key)
        key -= 1
    return found


def voicing(chord, low, high, previous):
    """Four keys within low..high with all of the chord's colour, moving as little as possible from previous."""
    tones = list(chord.tones)
    if len(tones) > 4:
        tones.remove(chord.tones[0])  # the bass plays the root
        tones = tones[:4]
    while len(tones) < 4:
        tones.append(tones[len(tones) - 3])
    best = None
    for order in _orders(tones):
        keys = [place(order[0], low)]
        for tone in order[1:]:
            keys.append(place(tone, keys[-1] + 1))
        for lift in (0, 12):
            lifted = [key + lift for key in keys]
            if lifted[-1] > high or lifted[-1] - lifted[0] > 14:
                continue
            crowding = sum(6 for a, b in zip(lifted, lifted[1:]) if b - a < 2)
            motion = sum(abs(a - b) for a, b in zip(lifted, previous)) if previous else abs(lifted[0] - low)
            cost = (motion + crowding, lifted)
            best = cost if best is None or cost < best else best
    if best is None:
        raise BadScore(f"{chord.symbol} does not fit between {name_of(low)} and {name_of(high)}")
    return best[1]


def _orders(items):
    if len(items) <= 1:
        yield list(items)
        return
    for index, item in enumerate(items):
        for rest in _orders(items[:index] + items[index + 1:]):
            yield [item] + rest
