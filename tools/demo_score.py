"""Reads the melodies of the demo library, and varies them: the theme, an ornamented theme, a second voice, a solo."""

from typing import NamedTuple

import numpy

STEPS = {"C": 0, "D": 2, "E": 4, "F": 5, "G": 7, "A": 9, "B": 11}
KINDS = {
    "": (0, 4, 7), "m": (0, 3, 7), "7": (0, 4, 7, 10), "m7": (0, 3, 7, 10), "maj7": (0, 4, 7, 11), "6": (0, 4, 7, 9),
    "m6": (0, 3, 7, 9), "9": (0, 4, 10, 14), "dim": (0, 3, 6, 9), "m7b5": (0, 3, 6, 10), "sus": (0, 5, 7), "5": (0, 7),
}  # fmt: skip
MAJOR, MINOR = (0, 2, 4, 5, 7, 9, 11), (0, 2, 3, 5, 7, 8, 10)
BLUES = (0, 3, 5, 6, 7, 10)


class Note(NamedTuple):
    """Where it starts and how long it lasts, in beats, its MIDI pitch and its strength."""

    beat: float
    length: float
    pitch: int
    strength: float = 0.8


class Chord(NamedTuple):
    """Where it starts and how long it lasts, in beats, the pitch class of its root (None for none) and its steps."""

    beat: float
    length: float
    root: int | None
    steps: tuple
    kind: str


def tokens(text):
    """Name and length in beats of each token."""
    for token in text.replace("|", " ").split():
        name, _, length = token.partition("*")
        yield name, float(length or 1)


def pitch_class(name):
    return (STEPS[name[0]] + name.count("#") - name[1:].count("b")) % 12


def read_tune(text):
    """The notes of a tune; an octave applies until the next one."""
    octave, beat, notes = 4, 0.0, []
    for name, length in tokens(text):
        if name != "-":
            if name[-1].isdigit():
                octave, name = int(name[-1]), name[:-1]
            step = STEPS[name[0]] + name.count("#") - name[1:].count("b")
            notes.append(Note(beat, length, 12 * (octave + 1) + step))
        beat += length
    return notes, beat


def read_chords(text):
    beat, chords = 0.0, []
    for name, length in tokens(text):
        root = name[:2] if name[1:2] in ("#", "b") else name[:1]
        kind = name[len(root) :]
        chords.append(Chord(beat, length, None if name == "N" else pitch_class(root), KINDS[kind], kind))
        beat += length
    return chords, beat


class Song:
    """A melody that has been read: notes, chords, length in beats, beats in a bar, and its scale."""

    def __init__(self, melody):
        self.tempo, self.meter = melody.tempo, melody.meter
        self.notes, self.beats = read_tune(melody.tune)
        self.chords, beats = read_chords(melody.chords)
        assert abs(beats - self.beats) < 1e-6 and self.beats % self.meter == 0, (melody, self.beats, beats)
        self.pickup = self.take_pickup()
        named = [chord for chord in self.chords if chord.root is not None]
        self.key = named[-1].root
        self.minor = named[-1].kind.startswith("m") and named[-1].kind != "maj7"
        self.bars = int(self.beats // self.meter)

    def take_pickup(self):
        """Moves a pick-up into the last bar, from which it leads back to the start; returns it with beats below zero."""
        if self.chords[0].root is not None:
            return []
        meter = self.meter
        pickup = [note._replace(beat=note.beat - meter) for note in self.notes if note.beat < meter]
        rest = [note._replace(beat=note.beat - meter) for note in self.notes if note.beat >= meter]
        self.chords = [chord._replace(beat=chord.beat - meter) for chord in self.chords[1:]]
        self.beats -= meter
        room = self.beats + pickup[0].beat - rest[-1].beat
        assert room > 0, pickup
        rest[-1] = rest[-1]._replace(length=min(rest[-1].length, room))
        self.notes = rest
        return pickup

    def chord_at(self, beat):
        """The chord at a beat of the song, which goes round; before the first chord of a pick-up, that one."""
        beat %= self.beats
        found = next(chord for chord in reversed(self.chords) if chord.beat <= beat + 1e-6)
        if found.root is None:
            found = next(chord for chord in self.chords if chord.root is not None)
        return found

    def scale(self):
        return {(self.key + step) % 12 for step in (MINOR if self.minor else MAJOR)}


def octave_shift(notes, centre):
    """The octaves, in semitones, that move the middle of the notes near the centre of an instrument."""
    return 12 * round((centre - sum(note.pitch for note in notes) / len(notes)) / 12)


def near(pitch, allowed, direction=0):
    """The pitch nearest to one whose class is allowed; with a direction only on that side."""
    for distance in range(12):
        for side in (direction,) if direction else (-1, 1):
            if (pitch + side * distance) % 12 in allowed:
                return pitch + side * distance
    return pitch


def chord_classes(chord):
    return {(chord.root + step) % 12 for step in chord.steps}


def second_voice(song, notes, below=True):
    """A third or so below (or above) each note, taken from the chord on the beat and from the scale elsewhere."""
    voice = []
    for note in notes:
        chord = song.chord_at(note.beat)
        allowed = chord_classes(chord) if note.length >= 1 or note.beat % 1 == 0 else song.scale()
        pitch = near(note.pitch - 3, allowed, -1) if below else near(note.pitch + 3, allowed, 1)
        voice.append(note._replace(pitch=pitch, strength=note.strength * 0.8))
    return voice


def ornamented(song, notes, rng):
    """The tune with its long notes filled: runs to the next note, broken chords, turns, and grace notes."""
    out, scale = [], song.scale()
    for note, after in zip(notes, notes[1:] + notes[:1]):
        classes = chord_classes(song.chord_at(note.beat))
        if note.length >= 2 and rng.random() < 0.85:
            keep = note.length - 1.0
            out.append(note._replace(length=keep))
            way = 1 if after.pitch >= note.pitch else -1
            if rng.random() < 0.5:
                first = near(note.pitch + way, classes | {note.pitch % 12}, way)
                second = near(after.pitch - way * 2, scale, way)
            else:
                first, second = near(note.pitch + 4, classes, 1), near(note.pitch + 1, scale, 1)
            out += [Note(note.beat + keep, 0.5, first, 0.66), Note(note.beat + keep + 0.5, 0.5, second, 0.7)]
        elif note.length == 1 and rng.random() < 0.35:
            other = near(note.pitch + 2, scale, 1) if rng.random() < 0.5 else near(note.pitch - 3, classes, -1)
            out += [note._replace(length=0.5), Note(note.beat + 0.5, 0.5, other, 0.64)]
        elif note.length >= 1 and rng.random() < 0.3:
            out += [Note(note.beat - 0.09, 0.09, near(note.pitch - 1, scale, -1), 0.5), note]
        else:
            out.append(note)
    return out


FIGURES = {
    4: (((0, 1), (1, 0.5), (1.5, 0.5), (2, 1), (3, 1)), ((0.5, 0.5), (1, 0.5), (1.5, 1), (2.5, 0.5), (3, 0.5), (3.5, 0.5)),
        ((0, 0.5), (0.5, 0.5), (1, 0.5), (1.5, 0.5), (2, 0.5), (2.5, 0.5), (3, 1)), ((0, 1.5), (1.5, 0.5), (2, 1.5)),
        ((1, 0.5), (1.5, 0.5), (2, 0.5), (2.5, 1.0)), ((0, 0.5), (0.5, 1), (1.5, 0.5), (2, 0.5), (2.5, 1), (3.5, 0.5))),
    3: (((0, 1), (1, 0.5), (1.5, 0.5), (2, 1)), ((0, 0.5), (0.5, 0.5), (1, 0.5), (1.5, 0.5), (2, 0.5), (2.5, 0.5)), ((0, 1.5), (1.5, 0.5), (2, 1))),
    6: (((0, 2), (2, 1), (3, 1), (4, 1), (5, 1)), ((0, 1), (1, 1), (2, 1), (3, 2), (5, 1)), ((0, 3), (3, 1), (4, 1), (5, 1))),
}  # fmt: skip


def solo(song, first, last, centre, rng, blue=False):
    """An improvised line from bar to bar: figures of rhythm that come back, chord notes on the beat, steps between."""
    scale = {(song.key + step) % 12 for step in BLUES} if blue else song.scale()
    figures = FIGURES[song.meter]
    order = [int(each) for each in rng.integers(0, len(figures), 4)]
    pitch, way, out = near(centre, chord_classes(song.chord_at(first))), 1, []
    for bar, start in enumerate(numpy.arange(first, last - 1e-6, song.meter)):
        figure = figures[order[(0, 1, 0, 2, 0, 1, 3, 2)[bar % 8] % 4]]
        for offset, length in figure:
            classes = chord_classes(song.chord_at(start + offset))
            if pitch > centre + 9 or (rng.random() < 0.25 and pitch > centre - 5):
                way = -1
            elif pitch < centre - 7 or rng.random() < 0.25:
                way = 1
            if offset % 1 == 0:
                pitch = near(pitch + way * int(rng.integers(1, 4)), classes, way)
            else:
                pitch = near(pitch + way, scale, way)
            out.append(Note(start + offset, length * 0.92, pitch, 0.85 if offset % 2 == 0 else 0.68))
    return out


class Voicing:
    """Chords that move as little as possible from one to the next."""

    def __init__(self, centre, count=3, rich=False):
        self.centre, self.count, self.rich, self.last = centre, count, rich, None

    def of(self, song, chord):
        steps = list(chord.steps)
        if self.rich and len(steps) == 3:
            dominant = (chord.root - song.key) % 12 == 7
            steps = {"": [4, 10, 14] if dominant else [4, 9, 14], "m": [3, 10, 14]}.get(chord.kind, steps)
        elif self.rich and chord.kind in ("7", "m7", "maj7"):
            steps = steps[1:] + [14]
        classes = sorted({(chord.root + step) % 12 for step in steps})
        best = None
        for low in range(self.centre - 9, self.centre + 4):
            pitches = [p for p in range(low, low + 24) if p % 12 in classes][: max(self.count, len(classes))]
            middle = sum(pitches) / len(pitches)
            cost = abs(middle - self.centre) * 0.6
            if self.last:
                cost += sum(min(abs(p - q) for q in self.last) for p in pitches)
            if best is None or cost < best[0]:
                best = (cost, pitches)
        self.last = best[1]
        return best[1]
