"""What check_music holds a score to before any sound is made."""

import unittest

from music_tools import SCORES, score_of, score_with
import theory  # after music_tools, which knows where the tools are
from score import Score


def two_parts(upper, lower, chords="C"):
    return score_of(f"tempo 60\npart high range=c4-c7\npart low range=c2-c5\nsection only 1\n"
                    f"chords | {chords} |\nhigh | {upper} |\nlow | {lower} |\n")


class OffChord(unittest.TestCase):
    def faults(self, bar, chords="C"):
        return theory.off_chord(score_with(f"tune | {bar} |", chords=chords))

    def test_notes_of_the_chord_are_right_everywhere(self):
        self.assertEqual(self.faults("c4 e4 g4 c5"), [])

    def test_a_first_or_third_beat_off_the_chord_is_named_with_its_place(self):
        self.assertEqual(self.faults("d4 e4 g4 c5"), ["tune, bar 1, beat 1: D4 is not in C"])
        self.assertEqual(self.faults("c4 e4 f4 g4"), ["tune, bar 1, beat 3: F4 is not in C"])

    def test_an_asterisk_declares_it(self):
        self.assertEqual(self.faults("d4* e4 g4 c5"), [])

    def test_a_second_or_fourth_beat_may_pass_by_step(self):
        self.assertEqual(self.faults("c4 d4 e4 g4"), [])

    def test_a_second_or_fourth_beat_may_not_leap_away(self):
        self.assertEqual(self.faults("c4 d4 g4 c5"), ["tune, bar 1, beat 2: D4 is not in C"])

    def test_the_last_note_has_nothing_to_pass_to(self):
        self.assertEqual(self.faults("c4 e4 g4 f4"), ["tune, bar 1, beat 4: F4 is not in C"])

    def test_the_bass_of_a_slash_chord_belongs(self):
        self.assertEqual(self.faults("d4:1", chords="C/D"), [])

    def test_harmony_that_is_added_beneath_is_not_judged(self):
        score = score_with("tune | c5:1 |", part="range=c2-c7 below=2")
        score.parts["tune"].notes[0].keys[1] += 1
        self.assertEqual(theory.off_chord(score), [])

    def test_drums_have_no_pitch(self):
        score = score_with("tune | hit |", head="groove hit\n  kick x\n", part="kind=drums")
        self.assertEqual(theory.problems(score), [])


class Range(unittest.TestCase):
    def test_its_ends_are_within(self):
        self.assertEqual(theory.out_of_range(score_with("tune | c4:2 c5 |", part="range=c4-c5")), [])

    def test_a_key_beyond_is_named(self):
        self.assertEqual(theory.out_of_range(score_with("tune | b3:2 c#5 |", part="range=c4-c5")),
                         ["tune, bar 1, beat 1: B3 is out of range", "tune, bar 1, beat 3: C#5 is out of range"])


class Clash(unittest.TestCase):
    def test_a_semitone_that_lasts_is_named(self):
        self.assertEqual(theory.clashes(two_parts("f4:1", "e4:1")), ["high F4 against low E4, bar 1, beat 1 (C)"])

    def test_a_major_seventh_is_one_and_a_minor_seventh_none(self):
        self.assertEqual(len(theory.clashes(two_parts("b4:1", "c4:1"))), 1)
        self.assertEqual(theory.clashes(two_parts("bb4:1", "c4:1")), [])

    def test_a_chord_that_has_both_notes_allows_it(self):
        self.assertEqual(theory.clashes(two_parts("b4:1", "c4:1", chords="Cmaj7")), [])

    def test_a_quaver_is_over_too_soon(self):
        self.assertEqual(theory.clashes(two_parts("f4:8 g4 g4:2.", "e4:1")), [])

    def test_an_asterisk_on_either_declares_it(self):
        self.assertEqual(theory.clashes(two_parts("f4:1*", "e4:1")), [])
        self.assertEqual(theory.clashes(two_parts("f4:1", "e4:1*")), [])

    def test_a_part_does_not_clash_with_itself(self):
        score = score_with("tune | e4:2 f4 |")
        score.parts["tune"].notes[0].length = 4  # rings on
        self.assertEqual(theory.clashes(score), [])


class Leap(unittest.TestCase):
    MELODY = "range=c2-c7 check=melody"

    def leaps(self, bar, part=MELODY):
        return theory.leaps(score_with(f"tune | {bar} |", part=part))

    def test_a_tenth_is_the_largest_that_can_be_sung(self):
        self.assertEqual(self.leaps("c4:2 e5"), [])
        self.assertEqual(self.leaps("c4:2 f5"), ["tune, bar 1, beat 3: leaps 17 semitones"])

    def test_a_rest_between_breaks_the_phrase(self):
        self.assertEqual(self.leaps("c4 r c6:2"), [])

    def test_only_melodies_are_held_to_it(self):
        self.assertEqual(self.leaps("c4:2 f5", part="range=c2-c7"), [])


class ShippedScores(unittest.TestCase):
    def test_they_have_no_problem(self):
        for name in ("intro", "zombiegame"):
            with self.subTest(name=name):
                self.assertEqual(theory.problems(Score(SCORES / f"{name}.score")), [])


if __name__ == "__main__":
    unittest.main()
