"""Holds a score against its own chord chart: strong beats, clashes between parts, ranges."""

from harmony import name_of

SEMITONE_CLASH = (1, 11)  # intervals modulo the octave that rub
CLASH_LENGTH = 0.5  # beats two notes must share before a rub is heard as one
LARGEST_LEAP = 16  # semitones between neighbouring melody notes of a phrase


def problems(score):
    return off_chord(score) + out_of_range(score) + clashes(score) + leaps(score)


def place_of(score, note):
    beat = note.start - score.beat_of_bar(note.bar) + 1
    return f"bar {note.bar}, beat {beat:g}"


def pitched(score):
    return [part for part in score.parts.values() if part.options.get("kind") != "drums"]


def is_strong(score, note):
    beat = note.start - score.beat_of_bar(note.bar)
    return note.bar > 0 and abs(beat % 2) < 1e-6


def off_chord(score):
    """On first and third beats a note belongs to the chord, or the score declares it with an asterisk. Notes off
    the beat that are not declared must belong as well, unless they move on by a step."""
    found = []
    for part in pitched(score):
        for note, following in zip(part.notes, part.notes[1:] + [None]):
            chord = score.chord_at(note.start)
            for key in note.keys[:note.written]:
                if key % 12 in chord.tones or key % 12 == chord.bass or "*" in note.marks:
                    continue
                step = following and abs(following.keys[0] - key) in (1, 2)
                if is_strong(score, note) or not step:
                    found.append(f"{part.name}, {place_of(score, note)}: {name_of(key)} is not in {chord.symbol}")
    return found


def out_of_range(score):
    found = []
    for part in pitched(score):
        low, high = part.span()
        for note in part.notes:
            for key in note.keys[:note.written]:
                if not low <= key <= high:
                    found.append(f"{part.name}, {place_of(score, note)}: {name_of(key)} is out of range")
    return found


def clashes(score):
    """Semitones and major sevenths between two parts that last, unless the chord has both notes or one of them is a
    declared passing note."""
    notes = sorted(((note, part) for part in pitched(score) for note in part.notes), key=lambda pair: pair[0].start)
    found = []
    for index, (note, part) in enumerate(notes):
        for other, second in notes[index + 1:]:
            if other.start >= note.start + note.length:
                break
            shared = min(note.start + note.length, other.start + other.length) - other.start
            if part is second or shared <= CLASH_LENGTH + 1e-6 or "*" in note.marks + other.marks:
                continue
            chord = score.chord_at(other.start)
            for one in note.keys:
                for two in other.keys:
                    rub = (two - one) % 12 in SEMITONE_CLASH
                    if rub and not (one % 12 in chord.tones and two % 12 in chord.tones):
                        found.append(f"{part.name} {name_of(one)} against {second.name} {name_of(two)}, "
                                     f"{place_of(score, other)} ({chord.symbol})")
    return found


def leaps(score):
    found = []
    for part in score.parts.values():
        if part.options.get("check") != "melody":
            continue
        for note, following in zip(part.notes, part.notes[1:]):
            connected = abs(note.start + note.length - following.start) < 1e-6
            leap = abs(following.keys[0] - note.keys[0])
            if connected and leap > LARGEST_LEAP:
                found.append(f"{part.name}, {place_of(score, following)}: leaps {leap} semitones")
    return found
