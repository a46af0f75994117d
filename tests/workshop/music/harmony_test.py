"""Pitches, chord symbols and voicings."""

import sys
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[3] / "workshop" / "music"))

from harmony import QUALITIES, BadScore, chord_of, name_of, pitch_of, place, tones_below, voicing  # noqa: E402

C, D, E, F, G, A, B = 0, 2, 4, 5, 7, 9, 11  # pitch classes


class Pitch(unittest.TestCase):
    def test_middle_c_is_key_60_and_the_tuning_a_is_key_69(self):
        self.assertEqual(pitch_of("c4"), 60)
        self.assertEqual(pitch_of("a4"), 69)

    def test_an_octave_is_twelve_keys_down_to_the_lowest_one(self):
        self.assertEqual(pitch_of("c5") - pitch_of("c4"), 12)
        self.assertEqual(pitch_of("c-1"), 0)

    def test_a_sharp_raises_and_a_flat_lowers_by_one_key(self):
        self.assertEqual(pitch_of("f#5"), pitch_of("f5") + 1)
        self.assertEqual(pitch_of("bb3"), pitch_of("b3") - 1)

    def test_case_does_not_matter(self):
        self.assertEqual(pitch_of("Bb3"), pitch_of("bb3"))

    def test_what_is_no_pitch_is_refused_by_name(self):
        for text in ("h4", "c", "4", "c##4", "c44", ""):
            with self.subTest(text=text), self.assertRaisesRegex(BadScore, f"'{text}' is no pitch"):
                pitch_of(text)

    def test_a_name_leads_back_to_its_key(self):
        for key in range(128):
            self.assertEqual(pitch_of(name_of(key)), key)


class Symbol(unittest.TestCase):
    def test_a_bare_letter_is_a_major_triad(self):
        self.assertEqual(chord_of("C").tones, (C, E, G))
        self.assertEqual(chord_of("G").tones, (G, B, D))

    def test_the_usual_kinds_have_their_notes(self):
        self.assertEqual(chord_of("Am").tones, (A, C, E))
        self.assertEqual(chord_of("G7").tones, (G, B, D, F))
        self.assertEqual(chord_of("Fmaj7").tones, (F, A, C, E))
        self.assertEqual(chord_of("Bm7b5").tones, (B, D, F, A))
        self.assertEqual(chord_of("D7sus4").tones, (D, G, A, C))
        self.assertEqual(chord_of("A5").tones, (A, E))

    def test_accidentals_belong_to_the_root(self):
        self.assertEqual(chord_of("Bb").tones, (10, D, F))
        self.assertEqual(chord_of("F#m").tones, (6, A, 1))

    def test_the_bass_is_the_root_unless_a_slash_names_another(self):
        self.assertEqual((chord_of("G").root, chord_of("G").bass), (G, G))
        self.assertEqual((chord_of("G/B").root, chord_of("G/B").bass), (G, B))
        self.assertEqual(chord_of("F/Eb").bass, 3)

    def test_no_kind_of_chord_names_a_note_twice(self):
        for quality, steps in QUALITIES.items():
            self.assertEqual(steps[0], 0, quality)
            self.assertEqual(len(set(steps)), len(steps), quality)

    def test_what_is_no_known_chord_is_refused_by_name(self):
        for symbol in ("H", "c", "C7b11", "C/H", "C/"):
            with self.subTest(symbol=symbol), self.assertRaisesRegex(BadScore, f"'{symbol}' is no known chord"):
                chord_of(symbol)


class Degree(unittest.TestCase):
    def test_the_first_is_the_bass(self):
        self.assertEqual(chord_of("G/B").degree(1), B)

    def test_third_fifth_and_seventh_are_the_notes_of_the_chord(self):
        self.assertEqual([chord_of("G7").degree(number) for number in (3, 5, 7)], [B, D, F])

    def test_a_triad_gives_its_fifth_for_the_seventh(self):
        self.assertEqual(chord_of("C").degree(7), G)


class Place(unittest.TestCase):
    def test_the_lowest_key_that_is_not_below(self):
        self.assertEqual(place(C, 60), 60)
        self.assertEqual(place(C, 61), 72)
        self.assertEqual(place(B, 60), 71)


class TonesBelow(unittest.TestCase):
    def test_they_are_the_next_chord_notes_downwards(self):
        self.assertEqual(tones_below(chord_of("C"), pitch_of("c5"), 2), [pitch_of("g4"), pitch_of("e4")])

    def test_none_is_nearer_to_the_melody_than_a_minor_third(self):
        # Under f the e of the chord would rub.
        self.assertEqual(tones_below(chord_of("C"), pitch_of("f4"), 1), [pitch_of("c4")])

    def test_two_of_them_are_a_whole_tone_apart_at_least(self):
        found = tones_below(chord_of("C7b9"), pitch_of("g5"), 4)
        self.assertTrue(all(high - low >= 2 for high, low in zip(found, found[1:])), found)


class Voicing(unittest.TestCase):
    LOW, HIGH = pitch_of("e3"), pitch_of("e5")

    def classes(self, symbol, previous=None):
        return {key % 12 for key in voicing(chord_of(symbol), self.LOW, self.HIGH, previous)}

    def test_four_rising_keys_within_the_range_and_a_hands_span(self):
        for root in ("C", "Eb", "F#", "A"):
            for quality in set(QUALITIES) - {"5"}:
                keys = voicing(chord_of(root + quality), self.LOW, self.HIGH, None)
                self.assertEqual(len(keys), 4)
                self.assertEqual(keys, sorted(set(keys)))
                self.assertTrue(self.LOW <= keys[0] and keys[-1] <= self.HIGH and keys[-1] - keys[0] <= 14)

    def test_a_chord_of_four_has_all_its_notes(self):
        self.assertEqual(self.classes("G7"), {G, B, D, F})

    def test_a_chord_of_five_leaves_the_root_to_the_bass(self):
        self.assertEqual(self.classes("C9"), {E, G, 10, D})

    def test_a_triad_doubles_a_note(self):
        self.assertEqual(self.classes("C"), {C, E, G})

    def test_the_same_chord_again_does_not_move(self):
        first = voicing(chord_of("Dm7"), self.LOW, self.HIGH, None)
        self.assertEqual(voicing(chord_of("Dm7"), self.LOW, self.HIGH, first), first)

    def test_the_next_chord_keeps_common_notes(self):
        first = voicing(chord_of("Dm7"), self.LOW, self.HIGH, None)
        following = voicing(chord_of("G7"), self.LOW, self.HIGH, first)
        # d and f are in both; c goes to b and a to g.
        self.assertEqual(sum(abs(a - b) for a, b in zip(first, following)), 3)

    def test_it_stays_where_the_hand_is(self):
        low = voicing(chord_of("Dm7"), self.LOW, self.HIGH, None)
        high = [key + 12 for key in low]
        self.assertEqual(voicing(chord_of("Dm7"), self.LOW, self.HIGH + 12, high), high)

    def test_a_bare_fifth_has_too_few_notes_for_a_hand(self):
        with self.assertRaisesRegex(BadScore, "A5 does not fit"):
            voicing(chord_of("A5"), self.LOW, self.HIGH, None)

    def test_a_range_that_is_too_narrow_is_refused_with_its_ends(self):
        with self.assertRaisesRegex(BadScore, "G7 does not fit between C4 and E4"):
            voicing(chord_of("G7"), 60, 64, None)


if __name__ == "__main__":
    unittest.main()
