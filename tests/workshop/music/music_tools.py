"""What the tests of the music tools share: the tools themselves on the path, and scores from text."""

import importlib.util
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[3]
SCORES = ROOT / "workshop" / "music"
SKIPPED = 77

sys.dont_write_bytecode = True
sys.path.insert(0, str(SCORES))


def need_numpy():
    """Ends a test of sound where there is no numpy; CTest reports it as skipped."""
    if importlib.util.find_spec("numpy") is None:
        print("python3-numpy is not here: nothing was tested")
        sys.exit(SKIPPED)


class Text:
    """Stands in for the file of a score."""

    name = "test.score"

    def __init__(self, text):
        self.text = text

    def read_text(self, encoding):
        return self.text


def score_of(text):
    from score import Score
    return Score(Text(text))


def score_with(lines, bars=1, head="", part="kind=notes range=c2-c7 stem=all", chords="C"):
    """A score of one section at 60 crotchets a minute, where a beat lasts a second, with the part `tune`."""
    chart = f"chords | {' | '.join([chords] * bars)} |\n" if chords else ""
    return score_of(f"tempo 60\n{head}\npart tune {part}\nsection only {bars}\n{chart}{lines}\n")


def notes_of(lines, **options):
    return score_with(lines, **options).parts["tune"].notes
