"""Reads a score (the notation is described in docs/music.md) into parts full of notes.

Times in a score are beats (crotchets) from the start of the piece, the pick-up included, written straight:
swing is applied when the score is performed.
"""

import re
import shlex
from dataclasses import dataclass, field

from harmony import BadScore, chord_of, pitch_of, place, tones_below, voicing

LEVELS = {"pp": 42, "p": 55, "mp": 68, "mf": 82, "f": 97, "ff": 112}
DRUMS = {
    "kick": 36, "rim": 37, "snare": 38, "clap": 39, "snare2": 40, "floor": 43, "hat": 42, "low": 45, "open": 46,
    "mid": 47, "crash": 49, "high": 50, "pedal": 44, "ride": 51, "china": 52, "bell": 53, "tambourine": 54,
    "splash": 55, "crash2": 57, "bongo": 60, "bongolow": 61, "shaker": 70, "maracas": 70, "triangle": 81,
    "woodblock": 76, "slap": 39,
}
STROKES = {"X": 116, "x": 92, "o": 70, "g": 44}
MARKS = "~!'*/^v=_"
TOKEN = re.compile(r"(r|[a-g][#b]?\d|\[[a-g#b0-9+]+\])(?::(\d+)(\.*)(t?))?([" + MARKS + r"]*)")
STEP = re.compile(r"([13578]|>)(,*)('*)(?::(\d+)(\.*)(t?))?([!'*]*)")


@dataclass
class Note:
    start: float  # beats
    length: float  # beats
    keys: list  # MIDI keys, from the written (top or only) note downwards or as given
    velocity: float
    marks: str
    bar: int
    written: int = 1  # how many of the keys are written out; the rest is harmony added beneath
    stroke: str = ""  # D or U for a strummed chord


@dataclass
class Part:
    name: str
    options: dict
    notes: list = field(default_factory=list)

    def number(self, key, default=0.0):
        return float(self.options.get(key, default))

    def flag(self, key):
        return self.options.get(key) == "yes"

    def span(self):
        low, high = self.options["range"].split("-")
        return pitch_of(low), pitch_of(high)


@dataclass
class Section:
    name: str
    first_bar: int
    bars: int


class Score:
    def __init__(self, path):
        self.path = path
        self.settings = {"swing": "0.5", "pickup": "0", "metre": "4", "seed": "1", "lead": "0"}
        self.parts = {}
        self.stems = {}
        self.sections = []
        self.chords = {}  # bar number -> chords that share the bar evenly
        self._grooves = {}
        self._figures = {}
        self._strokes = {}
        self._state = {}
        self._read(path.read_text(encoding="utf-8"))

    # What the rest asks for.

    def setting(self, name):
        return float(self.settings[name])

    @property
    def bar_count(self):
        return self.sections[-1].first_bar + self.sections[-1].bars - 1

    def beat_of_bar(self, bar):
        """Start of a bar, bar 1 being the first whole one."""
        return self.setting("pickup") + (bar - 1) * self.setting("metre")

    def seconds_of(self, beat, swing=None):
        """When a written beat sounds: swing moves the middle of each beat."""
        whole, part = divmod(beat, 1.0)
        swing = self.setting("swing") if swing is None else swing
        part = part * 2 * swing if part < 0.5 else swing + (part - 0.5) * 2 * (1 - swing)
        return (whole + part) * 60 / self.setting("tempo")

    def chord_at(self, beat):
        position = beat - self.setting("pickup")
        bar = max(1, int(position // self.setting("metre")) + 1)
        chords = self.chords.get(min(bar, self.bar_count))
        if not chords:
            return None
        into = max(0.0, position - (bar - 1) * self.setting("metre"))
        return chords[min(len(chords) - 1, int(into / self.setting("metre") * len(chords) + 1e-6))]

    # Reading.

    def _read(self, text):
        block = None
        for number, raw in enumerate(text.splitlines(), start=1):
            line = re.sub(r"(^|\s)#(\s.*)?$", "", raw).rstrip()
            if not line.strip():
                continue
            try:
                block = self._read_line(line, block)
            except (BadScore, ValueError, KeyError, IndexError) as problem:
                raise BadScore(f"{self.path.name}:{number}: {problem}") from problem

    def _read_line(self, line, block):
        word, _, rest = line.strip().partition(" ")
        rest = rest.strip()
        if line[0] in " \t" and block is not None:
            drum, pattern = line.split()
            self._grooves[block].append((DRUMS[drum], pattern))
            return block
        if "|" in line:
            self._read_bars(word, rest)
        elif word == "part":
            name, *options = shlex.split(rest)
            self.parts[name] = Part(name, dict(option.split("=", 1) for option in options))
        elif word == "stem":
            name, *options = shlex.split(rest)
            self.stems[name] = dict(option.split("=", 1) for option in options)
        elif word == "groove":
            self._grooves[rest] = []
            return rest
        elif word == "figure":
            name, _, steps = rest.partition(" ")
            self._figures[name] = steps.split()
        elif word == "strokes":
            name, _, pattern = rest.partition(" ")
            self._strokes[name] = pattern.strip()
        elif word == "section":
            name, bars = rest.rsplit(" ", 1)
            first = self.sections[-1].first_bar + self.sections[-1].bars if self.sections else 1
            self.sections.append(Section(name.strip(), first, int(bars)))
            self._state = {}
        else:
            self.settings[word] = rest
        return None

    def _read_bars(self, name, rest):
        bars = [bar.split() for bar in rest.strip().strip("|").split("|")]
        section = self.sections[-1]
        done = self._state.setdefault(name, {"bars": 0, "level": LEVELS["mf"], "ramp": None, "last": None})
        for bar in bars:
            if bar == ["%"]:
                bar = done["last"]
            done["last"] = bar
            number = section.first_bar + done["bars"]
            if done["bars"] >= section.bars:
                raise BadScore(f"{name} has more bars than section {section.name}")
            if name == "chords":
                self.chords[number] = [chord_of(symbol) for symbol in bar]
            else:
                self._read_bar(self.parts[name], bar, number, done)
            done["bars"] += 1

    def _level(self, state, beat):
        if state["ramp"]:
            start, end, low, high = state["ramp"]
            return low + (high - low) * min(1.0, max(0.0, (beat - start) / (end - start)))
        return state["level"]

    def _direct(self, state, word, beat):
        match = re.fullmatch(r"@([a-z]+)(?:[<>]([a-z]+):(\d+))?", word)
        if not match:
            raise BadScore(f"'{word}' is no dynamic mark")
        state["level"], state["ramp"] = LEVELS[match.group(1)], None
        if match.group(2):
            end = beat + int(match.group(3)) * self.setting("metre")
            state["ramp"] = (beat, end, LEVELS[match.group(1)], LEVELS[match.group(2)])

    def _read_bar(self, part, words, number, state):
        beat = self.beat_of_bar(number)
        metre = self.setting("metre")
        if number == 1 and "pickup" in part.options and state["bars"] == 0:
            self._read_notes(part, part.options["pickup"].split(), 0.0, 0, state)
        while words and words[0].startswith("@"):
            self._direct(state, words[0], beat)
            words = words[1:]
        if words in ([], ["-"]):
            return
        kind = part.options.get("kind", "notes")
        if kind == "drums":
            for name in words[0].split("+"):
                for key, pattern in self._grooves[name]:
                    self._hit(part, key, pattern, beat, number, state)
        elif kind == "strum":
            self._strum(part, self._strokes.get(words[0], words[0]), beat, number, state)
        else:
            length = self._read_notes(part, words, beat, number, state)
            if abs(length - metre) > 1e-6:
                raise BadScore(f"{part.name}, bar {number}: {length} beats instead of {metre:g}")

    def _hit(self, part, key, pattern, beat, number, state):
        step = self.setting("metre") / len(pattern)
        for index, stroke in enumerate(pattern):
            if stroke != ".":
                at = beat + index * step
                velocity = STROKES[stroke] * self._level(state, at) / LEVELS["mf"]
                part.notes.append(Note(at, step, [key], velocity, "", number))

    def _strum(self, part, pattern, beat, number, state):
        step = self.setting("metre") / len(pattern)
        for index, stroke in enumerate(pattern):
            if stroke not in ".-":
                at = beat + index * step
                following = len(pattern[index + 1:]) - len(pattern[index + 1:].lstrip("-"))
                keys = voicing(self.chord_at(at), *part.span(), part.options.get("_last"))
                part.options["_last"] = keys
                level = self._level(state, at) * (1.12 if stroke in "DU" and stroke == "D" else 0.92)
                short = stroke in "du"
                length = step * (0.45 if short else 1 + following)
                part.notes.append(Note(at, length, keys, level, "'" if short else "", number, 4, stroke.upper()))

    def _read_notes(self, part, words, beat, number, state):
        """Adds the notes of one bar; returns how many beats they take."""
        start = beat
        length = state.get("length", 1.0)
        for word in words:
            if word.startswith("@"):
                self._direct(state, word, beat)
                continue
            if word.startswith("("):
                for step in self._figures[word.strip("()")]:
                    beat, length = self._figure_step(part, step, beat, length, number, state)
                continue
            if STEP.fullmatch(word):
                beat, length = self._figure_step(part, word, beat, length, number, state)
                continue
            match = TOKEN.fullmatch(word)
            if not match:
                raise BadScore(f"{part.name}, bar {number}: '{word}' is no note")
            pitch, value, dots, triplet, marks = match.groups()
            length = self._length(value, dots, triplet, length)
            if pitch != "r":
                keys = [pitch_of(key) for key in pitch.strip("[]").split("+")]
                self._add(part, keys, beat, length, marks, number, state)
            beat += length
        state["length"] = length
        return beat - start

    def _length(self, value, dots, triplet, previous):
        if not value:
            return previous
        length = 4 / int(value)
        length *= {0: 1, 1: 1.5, 2: 1.75}[len(dots)]
        return length * 2 / 3 if triplet else length

    def _add(self, part, keys, beat, length, marks, number, state):
        last = part.notes[-1] if part.notes else None
        if (last and "~" in last.marks and last.keys[:last.written] == keys
                and abs(last.start + last.length - beat) < 1e-6):
            last.length += length
            last.marks = last.marks.replace("~", "") + marks
            return
        written = len(keys)
        below = int(part.number("below"))
        if below and written == 1:
            keys = keys + tones_below(self.chord_at(beat), keys[0], below)
        velocity = self._level(state, beat) + (16 if "!" in marks else 0)
        part.notes.append(Note(beat, length, keys, velocity, marks, number, written))

    def _figure_step(self, part, step, beat, length, number, state):
        if step.startswith("r"):
            length = self._length(*TOKEN.fullmatch(step).groups()[1:4], length)
            return beat + length, length
        match = STEP.fullmatch(step)
        if not match:
            raise BadScore(f"'{step}' is no step of a figure")
        degree, lower, higher, value, dots, triplet, marks = match.groups()
        length = self._length(value, dots, triplet, length)
        low = part.span()[0]
        chord = self.chord_at(beat)
        root = place(chord.bass, low)
        if degree == ">":  # lead into the next chord from a semitone below, or above when there is no room
            following = place(self.chord_at(beat + length + 1e-3).bass, low)
            key = following - 1 if following > low else following + 1
            marks += "*"
        elif degree == "8":
            key = root + 12
        else:
            key = place(chord.degree(int(degree)), root)
        key += 12 * (len(higher) - len(lower))
        self._add(part, [key], beat, length, marks, number, state)
        return beat + length, length
