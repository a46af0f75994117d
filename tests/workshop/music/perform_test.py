"""From a score to what players do, and to a MIDI file."""

import random
import tempfile
import unittest
from pathlib import Path

from music_tools import score_with
import perform  # after music_tools, which knows where the tools are
from perform import Played, Track

STEADY = "range=c2-c7 sway=0 touch=0"


def tracks_of(bar, part=STEADY, head="", **options):
    score = score_with(f"tune | {bar} |", part=part, head=head, **options)
    return perform.perform_part(score, score.parts["tune"])


def played(bar, part=STEADY, **options):
    return tracks_of(bar, part, **options)[0].played


def track(**changes):
    return Track(**({"program": 0, "bank": 0, "drums": False, "tune": 0, "played": [], "bends": [], "controls": []}
                    | changes))


class Playing(unittest.TestCase):
    def test_a_note_sounds_for_most_of_its_length(self):
        (note,) = played("c4:1", part=STEADY + " sustain=0.9")
        self.assertEqual((note.start, note.key), (0, 60))
        self.assertAlmostEqual(note.end, 3.6)

    def test_a_short_note_sounds_for_half_of_it(self):
        self.assertAlmostEqual(played("c4:1'")[0].end, 2)

    def test_a_part_that_rings_sounds_on(self):
        self.assertAlmostEqual(played("c4:1", part=STEADY + " ring=yes tail=0.5")[0].end, 4.5)

    def test_lay_puts_it_behind_the_beat(self):
        self.assertAlmostEqual(played("c4:1", part=STEADY + " lay=20")[0].start, 0.02)

    def test_swing_comes_from_the_score_unless_the_part_has_its_own(self):
        bar = "c4:8 c4 c4:2."
        self.assertAlmostEqual(played(bar, head="swing 0.6")[1].start, 0.6)
        self.assertAlmostEqual(played(bar, head="swing 0.6", part=STEADY + " swing=0.5")[1].start, 0.5)

    def test_touch_is_within_what_midi_knows(self):
        self.assertEqual([perform.soften(value) for value in (-5, 60.4, 60.6, 300)], [8, 60, 61, 127])

    def test_harmony_that_was_added_is_softer_than_what_is_written(self):
        written, added = played("c5:1", part=STEADY + " below=1")
        self.assertEqual(written.velocity - added.velocity, 8)

    def test_nothing_sounds_before_the_beginning(self):
        self.assertEqual(played("c4:1", part=STEADY + " lay=-50")[0].start, 0)


class Unevenness(unittest.TestCase):
    PART = "range=c2-c7 sway=10 touch=6"
    BAR = "c4 d4* e4 f4*"

    def test_the_same_score_is_always_played_the_same(self):
        self.assertEqual(played(self.BAR, self.PART), played(self.BAR, self.PART))

    def test_another_seed_plays_it_differently(self):
        self.assertNotEqual(played(self.BAR, self.PART), played(self.BAR, self.PART, head="seed 2"))

    def test_it_stays_near_what_is_written(self):
        for beat, note in enumerate(played(self.BAR, self.PART)):
            self.assertAlmostEqual(note.start, beat, delta=0.06)


class Voices(unittest.TestCase):
    def test_each_tuning_is_a_track_a_little_after_the_one_before(self):
        first, second = tracks_of("c4:1", part=STEADY + " tune=-8,8")
        self.assertEqual((first.tune, second.tune), (-8, 8))
        self.assertAlmostEqual(second.played[0].start - first.played[0].start, 0.011)

    def test_a_second_program_is_softer(self):
        first, second = tracks_of("c4:1", part=STEADY + " program=12 double=78")
        self.assertEqual((first.program, second.program), (12, 78))
        self.assertEqual(first.played[0].velocity - second.played[0].velocity, 10)

    def test_drums_are_marked(self):
        (drums,) = tracks_of("hit", head="groove hit\n  kick x\n", part="kind=drums")
        self.assertTrue(drums.drums)
        self.assertFalse(tracks_of("c4:1")[0].drums)


class Ornaments(unittest.TestCase):
    def test_a_slide_rises_to_the_note(self):
        bends = tracks_of("c4:1^")[0].bends
        self.assertEqual((bends[0], bends[-1][1]), ((0, -150), 0))
        self.assertEqual([cents for _, cents in bends], sorted(cents for _, cents in bends))

    def test_a_fall_sinks_and_the_pitch_is_back_afterwards(self):
        bends = tracks_of("c4:1v")[0].bends
        self.assertEqual([cents for _, cents in bends[-2:]], [-200, 0])
        self.assertGreater(bends[-1][0], bends[-2][0])

    def test_tremolo_is_picked_in_semiquavers(self):
        strokes = played("c4:1/")
        self.assertEqual(len(strokes), 16)
        for index, stroke in enumerate(strokes):
            self.assertAlmostEqual(stroke.start, index / 4, delta=0.02)

    def test_a_part_with_tremolo_picks_from_a_dotted_quaver_up(self):
        part = STEADY + " tremolo=yes"
        self.assertEqual(len(played("c4:8 c4 c4:8. c4:16 c4:2", part)), 1 + 1 + 3 + 1 + 8)

    def test_an_underscore_is_not_picked(self):
        self.assertEqual(len(played("c4:1_", STEADY + " tremolo=yes")), 1)

    def test_a_roll_alternates_between_the_notes(self):
        keys = [stroke.key for stroke in played("[c4+e4]:4= r:2.", STEADY + " roll=0.25")]
        self.assertEqual(keys, [60, 64, 60, 64])

    def test_vibrato_comes_in_late_and_only_on_long_notes(self):
        controls = tracks_of("c4:16 c4 c4 c4 c4:2.", part=STEADY + " vibrato=40")[0].controls
        deepened = [at for at, _, value in controls if value]
        self.assertGreaterEqual(min(deepened), 1.2)
        self.assertEqual(max(value for _, _, value in controls), 40)

    def test_wow_stays_within_its_depth_until_it_runs_down(self):
        part = STEADY + " wow=10 rundown=200 rundownfrom=3"
        bends = tracks_of("c4:1", part=part)[0].bends
        self.assertTrue(all(abs(cents) <= 10 for at, cents in bends if at <= 3))
        self.assertLess(bends[-1][1], -150)


class Strum(unittest.TestCase):
    PART = "kind=strum range=e3-e5 sway=0 touch=0"

    def test_down_strokes_go_one_way_over_all_strings_and_up_strokes_back_over_three(self):
        down = [note.key for note in sorted(played("D...", self.PART), key=lambda note: note.start)]
        up = [note.key for note in sorted(played("U...", self.PART), key=lambda note: note.start)]
        self.assertEqual(down, sorted(down))
        self.assertEqual(up, down[:0:-1])

    def test_strings_sound_one_after_the_other_and_end_together(self):
        notes = played("D...", self.PART)
        self.assertEqual(len({note.start for note in notes}), 4)
        self.assertEqual(len({note.end for note in notes}), 1)


class MidiFile(unittest.TestCase):
    def test_numbers_of_variable_length_are_as_the_standard_lists_them(self):
        for value, written in ((0x00, "00"), (0x40, "40"), (0x7F, "7f"), (0x80, "8100"), (0x2000, "c000"),
                               (0x3FFF, "ff7f"), (0x4000, "818000"), (0x1FFFFF, "ffff7f"), (0x0FFFFFFF, "ffffff7f")):
            self.assertEqual(perform.variable(value).hex(), written)

    def events(self, chunk):
        """(tick, message) of a track, running through its variable lengths."""
        self.assertEqual(chunk[:4], b"MTrk")
        self.assertEqual(int.from_bytes(chunk[4:8], "big"), len(chunk) - 8)
        found, now, at = [], 0, 8
        while at < len(chunk):
            wait = 0
            while True:
                wait = wait << 7 | chunk[at] & 127
                at += 1
                if chunk[at - 1] < 128:
                    break
            now += wait
            size = 3 if chunk[at] == 0xFF or chunk[at] & 0xF0 != 0xC0 else 2
            found.append((now, chunk[at:at + size].hex()))
            at += size
        return found

    def test_a_track_sets_its_program_plays_and_ends(self):
        chunk = perform.track_chunk(track(program=12, bank=1, played=[Played(0.5, 1.0, 60, 90)]), 3)
        self.assertEqual(self.events(chunk), [(0, "b30001"), (0, "c30c"), (0, "b30a40"), (960, "933c5a"),
                                              (1920, "833c40"), (1920, "ff2f00")])

    def test_a_key_is_let_go_before_another_is_struck_at_the_same_moment(self):
        notes = [Played(0, 1, 60, 90), Played(1, 2, 62, 90)]
        messages = [message for at, message in self.events(perform.track_chunk(track(played=notes), 0)) if at == 1920]
        self.assertEqual(messages, ["803c40", "903e5a"])

    def test_no_tuning_or_bend_is_beyond_what_14_bits_hold(self):
        chunk = perform.track_chunk(track(tune=500, bends=[(0, -900), (1, 900), (2, 0)]), 0)
        messages = [message for _, message in self.events(chunk)]
        self.assertEqual([message for message in messages if message.startswith("e0")], ["e00000", "e07f7f", "e00040"])
        self.assertIn("b0067f", messages)

    def test_drums_have_the_tenth_channel_and_nobody_else(self):
        with tempfile.TemporaryDirectory() as folder:
            path = Path(folder) / "test.mid"
            perform.write_midi(path, [track() for _ in range(12)] + [track(drums=True)])
            data = path.read_bytes()
        self.assertEqual(data[:14].hex(), "4d546864" "00000006" "0001" "000d" "03c0")
        programs = [chunk[chunk.index(bytes([0x0A, 0x40])) - 1] & 0x0F for chunk in data.split(b"MTrk")[1:]]
        self.assertEqual(programs, [*range(9), 10, 11, 12, 9])

    def test_a_key_that_sounds_is_let_go_before_it_is_struck_again(self):
        found = sorted(perform.without_overlaps([Played(0, 2, 60, 90), Played(1, 3, 60, 80), Played(0, 2, 64, 70)]))
        self.assertEqual(found, [(0, 1919, 60, 90), (0, 3840, 64, 70), (1920, 5760, 60, 80)])

    def test_of_two_strokes_on_one_key_at_almost_the_same_moment_one_is_left(self):
        found = perform.without_overlaps([Played(0, 1, 60, 90), Played(0.005, 1, 60, 80)])
        self.assertEqual([velocity for *_, velocity in found], [80])

    def test_every_note_lasts_long_enough_to_be_heard(self):
        ((start, end, *_),) = perform.without_overlaps([Played(1, 1, 60, 90)])
        self.assertGreaterEqual(end - start, 20)

    def test_nothing_overlaps_in_a_crowd(self):
        chance = random.Random(5)
        crowd = [Played(start, start + chance.random(), chance.randrange(60, 64), 80)
                 for start in (chance.random() * 5 for _ in range(200))]
        last = {}
        for start, end, key, _ in sorted(perform.without_overlaps(crowd)):
            self.assertGreater(start, last.get(key, -1))
            self.assertGreater(end, start)
            last[key] = end


if __name__ == "__main__":
    unittest.main()
