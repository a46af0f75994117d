"""The notation of a score, as docs/music.md describes it."""

import unittest

from music_tools import notes_of, score_of, score_with
from harmony import BadScore, pitch_of  # after music_tools, which knows where they are
from score import DRUMS, LEVELS


def starts(notes):
    return [note.start for note in notes]


def lengths(notes):
    return [note.length for note in notes]


def keys(notes):
    return [note.keys for note in notes]


class Header(unittest.TestCase):
    def test_a_line_is_a_word_and_its_value(self):
        score = score_with("", head="bus gain -3 bass +2\nmetre 3")
        self.assertEqual(score.settings["bus"], "gain -3 bass +2")
        self.assertEqual(score.setting("metre"), 3.0)

    def test_a_score_that_says_nothing_is_even_in_four_without_pickup(self):
        score = score_with("")
        self.assertEqual([score.setting(word) for word in ("swing", "metre", "pickup", "lead")], [0.5, 4, 0, 0])

    def test_a_comment_begins_with_a_hash_and_a_space(self):
        score = score_with("tune | f#4 c4:2. | # a sharp is none", head="# tempo 999")
        self.assertEqual(score.setting("tempo"), 60)
        self.assertEqual(keys(score.parts["tune"].notes), [[66], [60]])

    def test_a_part_has_options_numbers_flags_and_a_range(self):
        part = score_with("", part='range=c4-a5 sway=7 ring=yes stem="two words"').parts["tune"]
        self.assertEqual((part.number("sway"), part.number("lay"), part.number("lay", 3)), (7, 0, 3))
        self.assertTrue(part.flag("ring"))
        self.assertFalse(part.flag("tremolo"))
        self.assertEqual(part.span(), (60, 81))
        self.assertEqual(part.options["stem"], "two words")

    def test_a_stem_has_options(self):
        self.assertEqual(score_with("", head="stem band level=-20 room=0.3").stems["band"],
                         {"level": "-20", "room": "0.3"})

    def test_sections_follow_each_other(self):
        score = score_of("tempo 60\nsection opening part 3\nsection end 2\n")
        self.assertEqual([(section.name, section.first_bar, section.bars) for section in score.sections],
                         [("opening part", 1, 3), ("end", 4, 2)])
        self.assertEqual(score.bar_count, 5)


class Time(unittest.TestCase):
    def test_a_beat_lasts_a_minute_divided_by_the_tempo(self):
        self.assertEqual(score_of("tempo 120\n").seconds_of(3), 1.5)

    def test_the_pickup_comes_before_bar_1(self):
        score = score_of("tempo 60\npickup 1\nmetre 4\n")
        self.assertEqual([score.beat_of_bar(bar) for bar in (1, 2)], [1, 5])

    def test_swing_moves_the_middle_of_each_beat_and_no_beat(self):
        score = score_of("tempo 60\nswing 0.6\n")
        self.assertAlmostEqual(score.seconds_of(2), 2)
        self.assertAlmostEqual(score.seconds_of(2.5), 2.6)
        self.assertAlmostEqual(score.seconds_of(2.25), 2.3)
        self.assertAlmostEqual(score.seconds_of(2.75), 2.8)

    def test_a_part_may_swing_differently(self):
        self.assertAlmostEqual(score_of("tempo 60\nswing 0.6\n").seconds_of(0.5, 0.5), 0.5)


class Chords(unittest.TestCase):
    def test_they_share_their_bar_evenly(self):
        score = score_with("", chords="C G7")
        self.assertEqual([score.chord_at(beat).symbol for beat in (0, 1.9, 2, 3.9)], ["C", "C", "G7", "G7"])

    def test_the_pickup_has_the_first_bars_chord(self):
        score = score_with("", head="pickup 2", chords="C G7")
        self.assertEqual([score.chord_at(beat).symbol for beat in (0, 2, 4)], ["C", "C", "G7"])

    def test_after_the_end_the_last_bar_goes_round(self):
        score = score_with("", bars=2, chords="C G7")
        self.assertEqual([score.chord_at(beat).symbol for beat in (8, 9.9, 10, 100, 102)], ["C", "C", "G7", "C", "G7"])

    def test_a_bar_without_chords_has_none(self):
        self.assertIsNone(score_with("", chords=None).chord_at(0))


class Notes(unittest.TestCase):
    def test_they_follow_each_other(self):
        notes = notes_of("tune | c4 d4 e4 f4 |")
        self.assertEqual(keys(notes), [[60], [62], [64], [65]])
        self.assertEqual(starts(notes), [0, 1, 2, 3])

    def test_a_length_is_kept_until_the_next_one(self):
        self.assertEqual(lengths(notes_of("tune | c4:8 d4 e4:4 f4 g4 |")), [0.5, 0.5, 1, 1, 1])

    def test_dots_lengthen_and_a_t_makes_triplets(self):
        self.assertEqual(lengths(notes_of("tune | c4:4. d4:8 e4:4.. f4:16 |")), [1.5, 0.5, 1.75, 0.25])
        self.assertAlmostEqual(sum(lengths(notes_of("tune | c4:2t d4 e4 |"))), 4)

    def test_a_rest_takes_time_and_sounds_not(self):
        self.assertEqual(starts(notes_of("tune | r:2 c4 |")), [2])

    def test_keys_joined_by_plus_sound_together(self):
        self.assertEqual(keys(notes_of("tune | [a4+e5]:1 |")), [[69, 76]])

    def test_a_tie_joins_two_of_the_same_pitch(self):
        notes = notes_of("tune | c4:1~ | c4:2 d4 |", bars=2)
        self.assertEqual(list(zip(starts(notes), lengths(notes))), [(0, 6), (6, 2)])

    def test_a_tie_into_another_pitch_joins_nothing(self):
        self.assertEqual(lengths(notes_of("tune | c4:2~ d4 |")), [2, 2])

    def test_marks_stay_with_their_note(self):
        self.assertEqual([note.marks for note in notes_of("tune | c4:1^v* |")], ["^v*"])

    def test_an_accent_is_louder(self):
        plain, accented = notes_of("tune | c4:2 c4! |")
        self.assertEqual(accented.velocity - plain.velocity, 16)

    def test_a_percent_sign_is_the_same_bar_again(self):
        self.assertEqual(keys(notes_of("tune | c4:2 d4 | % |", bars=2)), [[60], [62], [60], [62]])

    def test_a_dash_is_a_bar_of_rest(self):
        self.assertEqual(starts(notes_of("tune | - | c4:1 |", bars=2)), [4])

    def test_a_pickup_sounds_before_bar_1(self):
        notes = notes_of("tune | c4:1 |", head="pickup 1", part='range=c2-c7 pickup="g3:8 b3"')
        self.assertEqual([(note.start, note.bar) for note in notes], [(0, 0), (0.5, 0), (1, 1)])

    def test_below_adds_chord_notes_that_are_not_written(self):
        (note,) = notes_of("tune | c5:1 |", part="range=c2-c7 below=2")
        self.assertEqual(note.keys, [pitch_of("c5"), pitch_of("g4"), pitch_of("e4")])
        self.assertEqual(note.written, 1)

    def test_each_part_goes_on_where_its_line_ended(self):
        self.assertEqual(starts(notes_of("tune | c4:1 |\ntune | d4:1 |", bars=2)), [0, 4])


class Loudness(unittest.TestCase):
    def test_it_is_mezzoforte_until_told(self):
        self.assertEqual(notes_of("tune | c4:1 |")[0].velocity, LEVELS["mf"])

    def test_a_mark_holds_until_the_next_one(self):
        notes = notes_of("tune | @p c4:2 @f d4 | e4:1 |", bars=2)
        self.assertEqual([note.velocity for note in notes], [LEVELS["p"], LEVELS["f"], LEVELS["f"]])

    def test_the_levels_rise_from_pp_to_ff(self):
        levels = [LEVELS[name] for name in ("pp", "p", "mp", "mf", "f", "ff")]
        self.assertEqual(levels, sorted(set(levels)))

    def test_a_swell_is_even_over_its_bars_and_then_stays(self):
        notes = notes_of("tune | @p<f:2 c4:1 | c4 | c4 |", bars=3)
        low, high = LEVELS["p"], LEVELS["f"]
        self.assertEqual([note.velocity for note in notes], [low, (low + high) / 2, high])

    def test_a_new_section_begins_as_if_nothing_had_been_said(self):
        score = score_of("tempo 60\npart tune range=c2-c7\nsection a 1\ntune | @p c4:1 |\nsection b 1\ntune | c4:1 |\n")
        self.assertEqual([note.velocity for note in score.parts["tune"].notes], [LEVELS["p"], LEVELS["mf"]])


class Drums(unittest.TestCase):
    HEAD = "groove surf\n  kick x...x...\n  hat  o.o.\ngroove hit\n  crash X\n"

    def hits(self, line):
        return sorted((note.start, note.keys[0]) for note in notes_of(line, head=self.HEAD, part="kind=drums"))

    def test_a_pattern_shares_the_bar_evenly(self):
        self.assertEqual(self.hits("tune | surf |"), [(0, DRUMS["kick"]), (0, DRUMS["hat"]),
                                                      (2, DRUMS["kick"]), (2, DRUMS["hat"])])

    def test_two_grooves_sound_at_once(self):
        self.assertIn((0, DRUMS["crash"]), self.hits("tune | surf+hit |"))

    def test_strokes_differ_in_strength(self):
        notes = notes_of("tune | all |", head="groove all\n  snare Xxog\n", part="kind=drums")
        strength = [note.velocity for note in notes]
        self.assertEqual(strength, sorted(set(strength), reverse=True))

    def test_they_follow_the_loudness(self):
        soft, loud = (notes_of(f"tune | @{level} hit |", head=self.HEAD, part="kind=drums")[0].velocity
                      for level in ("p", "f"))
        self.assertLess(soft, loud)

    def test_an_unknown_drum_is_refused(self):
        with self.assertRaisesRegex(BadScore, r"test.score:3: 'gong'"):
            score_of("tempo 60\ngroove odd\n  gong x\n")


class Strokes(unittest.TestCase):
    def strums(self, pattern):
        return notes_of(f"tune | {pattern} |", part="kind=strum range=e3-e5")

    def test_a_chord_of_four_keys_at_each_stroke(self):
        notes = self.strums("D.U.")
        self.assertEqual([(note.start, note.stroke, len(note.keys)) for note in notes], [(0, "D", 4), (2, "U", 4)])

    def test_dashes_let_it_ring_on(self):
        self.assertEqual(lengths(self.strums("D--U")), [3, 1])

    def test_small_letters_are_short(self):
        (note,) = self.strums("d...")
        self.assertLess(note.length, 0.5)
        self.assertIn("'", note.marks)

    def test_a_down_stroke_is_stronger_than_an_up_stroke(self):
        down, up = self.strums("D.U.")
        self.assertGreater(down.velocity, up.velocity)

    def test_a_named_pattern_is_that_pattern(self):
        notes = notes_of("tune | beat |", head="strokes beat D...", part="kind=strum range=e3-e5")
        self.assertEqual(starts(notes), [0])


class Degrees(unittest.TestCase):
    def test_they_are_counted_from_the_parts_lowest_note_up(self):
        self.assertEqual(keys(notes_of("tune | 1 3 5 8 |", part="range=c2-c4")), [[36], [40], [43], [48]])

    def test_commas_lower_and_quotes_raise_by_an_octave(self):
        self.assertEqual(keys(notes_of("tune | 1 1' 5, 5 |", part="range=c2-c4")), [[36], [48], [31], [43]])

    def test_the_sign_leads_into_the_next_chord_by_a_semitone(self):
        score = score_of("tempo 60\npart tune range=c2-c4\nsection a 2\nchords | C | F |\ntune | 1:2. >:4 | 1:1 |\n")
        notes = score.parts["tune"].notes
        self.assertEqual(notes[1].keys[0], notes[2].keys[0] - 1)
        self.assertIn("*", notes[1].marks)

    def test_without_room_below_it_leads_from_above(self):
        score = score_of("tempo 60\npart tune range=c2-c4\nsection a 2\nchords | G | C |\ntune | 1:2. >:4 | 1:1 |\n")
        self.assertEqual(keys(score.parts["tune"].notes)[1:], [[37], [36]])

    def test_a_figure_is_a_named_row_of_them(self):
        self.assertEqual(keys(notes_of("tune | (walk) |", head="figure walk 1:4 3 5 r:4", part="range=c2-c4")),
                         [[36], [40], [43]])


class Faults(unittest.TestCase):
    def assert_refused(self, reason, lines, **options):
        with self.assertRaisesRegex(BadScore, reason):
            score_with(lines, **options)

    def test_the_file_and_the_line_are_named(self):
        with self.assertRaisesRegex(BadScore, r"^test\.score:4: "):
            score_of("tempo 60\npart tune range=c2-c7\nsection a 1\ntune | x |\n")

    def test_a_bar_of_the_wrong_length_is_refused(self):
        self.assert_refused("tune, bar 2: 3.0 beats instead of 4", "tune | c4:1 | c4:2. |", bars=2)

    def test_more_bars_than_the_section_has_are_refused(self):
        self.assert_refused("more bars than section only", "tune | c4:1 | c4:1 |")

    def test_what_is_no_note_is_refused(self):
        self.assert_refused("tune, bar 1: 'c4x' is no note", "tune | c4x |")

    def test_what_is_no_dynamic_mark_is_refused(self):
        self.assert_refused("'@loud2' is no dynamic mark", "tune | @loud2 c4:1 |")

    def test_a_line_of_an_unknown_part_is_refused(self):
        self.assert_refused("'flute'", "flute | c4:1 |")


if __name__ == "__main__":
    unittest.main()
