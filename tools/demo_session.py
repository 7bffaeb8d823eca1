"""A band of the demo library plays a song: intro, theme, variations and an ending that rings out, by human hands."""

import zlib

import numpy

import demo_grooves as grooves
from demo_mix import Kit, Part, mixed
from demo_score import KINDS, Chord, Note, Song, octave_shift, ornamented, second_voice, solo

SHORTEST, MIDDLE, LONGEST = 44.0, 46.0, 55.0  # seconds, without the ring
RING = 4.5
# Bars before the theme: degrees of the scale and kinds of chords, one list per bar.
VAMPS = {
    "tonic": ((0, "i"), (0, "i")),
    "one-five": ((0, "i"), (7, "7")),
    "turn": ((0, "i"), (9, "m7"), (2, "m7"), (7, "7")),
    "modal": ((0, "i"), (10, "")),
    "blues": ((0, "7"), (5, "7")),
}
TAG = ((0, 0.9, 12), (1, 0.4, 7), (1.5, 0.4, 7), (2, 0.9, 9), (3, 0.9, 7), (5, 0.9, 11), (6, 2.0, 12))


class Section:
    """Some bars: the beat where they start, their length, the beat of the song there (None for the vamp), and force."""

    def __init__(self, start, beats, first, force):
        self.start, self.beats, self.first, self.force = start, beats, first, force


class Session:
    """Events of all parts, in beats with swing and a slower end, turned into seconds with a little human error."""

    def __init__(self, melody, style):
        self.song, self.style = Song(melody), style
        self.rng = numpy.random.default_rng(zlib.crc32((melody.tune + style.name).encode()))
        self.voicings, self.memory = {}, {}
        self.parts = {name: Part(voice) for name, voice in style.parts.items()}
        self.kit = Kit(style.drum_level)
        self.plan()
        self.clock()

    def plan(self):
        """Chooses how often the song is played, how long the intro is and a slightly different tempo to fit the length."""
        song, best = self.song, None
        bar = song.meter * 60 / (song.tempo * self.style.tempo)
        # A turn of the song is divided into pieces of some ten seconds, in which somebody else has the tune.
        shares = [n for n in (1, 2, 3, 4) if song.bars % n == 0 and song.bars // n >= 4] or [1]
        share = min(shares, key=lambda n: abs(song.bars * bar / n - 10.5))
        unit = song.bars // share
        for count in range(share, 24):
            for intro in (2, 4, 1):
                for factor in numpy.arange(0.88, 1.121, 0.02):
                    seconds = (intro + count * unit + self.style.tail) * bar / factor
                    if SHORTEST <= seconds <= LONGEST:
                        cost = (
                            abs(factor - 1) * 45
                            + abs(seconds - MIDDLE) * 0.8
                            + (3 if count % share else 0)
                            + (2 if intro == 1 else 0)
                        )
                        best = min(best or (cost, count, intro, factor), (cost, count, intro, factor))
        assert best, (song.tempo, song.bars)
        _, count, intro, factor = best
        self.tempo = song.tempo * self.style.tempo * factor
        # An incomplete last turn is the end of the song.
        order = [piece % share for piece in range(count // share * share)] + list(range(share - count % share, share))
        pieces = [(number * unit, unit) for number in order]
        beat = intro * song.meter
        self.sections = [Section(0, beat, None, 0.82)]
        for index, (first, bars) in enumerate(pieces):
            force = 0.88 + 0.14 * index / max(len(pieces) - 1, 1)
            self.sections.append(Section(beat, bars * song.meter, first * song.meter, force))
            beat += bars * song.meter
        self.final = beat

    def clock(self):
        """The second at which each 24th of a beat is due."""
        count = (self.final + 40) * 24
        beats = numpy.arange(count) / 24
        pace = 1 + (0.004 * numpy.sin(beats / 7.3) + 0.003 * numpy.sin(beats / 2.9) if self.style.loose else 0 * beats)
        slow = self.style.slow_end
        if slow:
            pace = pace * (1 - slow * numpy.clip((beats - self.final + self.song.meter * 2) / (self.song.meter * 2), 0, 1) ** 1.5)
        self.times = numpy.concatenate([[0.0], numpy.cumsum(60 / self.tempo / pace / 24)])

    def seconds(self, beat):
        whole, part = numpy.floor(beat), beat % 1
        swing = self.style.swing
        if swing != 0.5 and self.song.meter != 6:
            part = part * 2 * swing if part < 0.5 else swing + (part - 0.5) * 2 * (1 - swing)
        at = (whole + part) * 24
        return float(numpy.interp(at, numpy.arange(len(self.times)), self.times))

    def section_at(self, beat):
        found = self.sections[0]
        for section in self.sections:
            if section.start <= beat + 1e-6:
                found = section
        return found

    def chord(self, beat):
        song = self.song
        if beat >= self.final - 1e-6:
            return (
                song.chord_at(song.beats - 0.01)
                if song.chords[-1].root is not None
                else Chord(0, 4, song.key, KINDS["m" if song.minor else ""], "")
            )
        section = self.section_at(beat)
        if section.first is not None:
            return song.chord_at(section.first + beat - section.start)
        vamp = VAMPS[self.style.vamp]
        step, kind = vamp[int(beat // song.meter) % len(vamp)]
        kind = ("m" if song.minor else "") if kind == "i" else kind
        return self.memory.setdefault(("vamp", step, kind), Chord(0, 4, (song.key + step) % 12, KINDS[kind], kind))

    def play(self, name, beat, length, pitch, strength, spread=0.0):
        loose = self.style.loose
        start = self.seconds(beat) + loose * self.rng.normal(0, 0.0055) + abs(self.rng.normal(0, spread))
        lasting = self.seconds(beat + length) - self.seconds(beat)
        force = self.section_at(beat).force * strength * (1 + loose * self.rng.normal(0, 0.05))
        self.parts[name].play(start, max(lasting, 0.04), int(pitch), float(numpy.clip(force, 0.15, 1.1)))

    def hit(self, beat, drum, strength):
        start = self.seconds(beat) + self.style.loose * self.rng.normal(0, 0.0035)
        self.kit.hit(start, drum, float(strength * (1 + self.style.loose * self.rng.normal(0, 0.07))))

    # The tune ---------------------------------------------------------------------------------------------------

    def treated(self, treatment, section, centre):
        """The notes of a section in one of the treatments, with beats of the song."""
        song, first, last = self.song, section.first, section.first + section.beats
        if treatment in ("solo", "blue solo"):
            return solo(song, first, last, centre, self.rng, treatment == "blue solo")
        shift = octave_shift(song.notes, centre)
        notes = [note for note in song.notes if first - 1e-6 <= note.beat < last - 1e-6]
        if section is self.sections[1] and treatment != "below":
            notes = song.pickup + notes
        if last == song.beats and song.pickup and section is not self.sections[-1]:
            notes = notes + [note._replace(beat=note.beat + song.beats) for note in song.pickup]
        notes = [note._replace(pitch=note.pitch + shift) for note in notes]
        if treatment == "ornament":
            return ornamented(song, notes, self.rng)
        if treatment in ("below", "above"):
            return second_voice(song, notes, treatment == "below")
        if treatment == "octave":
            return notes + [note._replace(pitch=note.pitch + 12, strength=0.5) for note in notes]
        if treatment == "picked":
            return [Note(note.beat + i / 4, 0.25, note.pitch, 0.85 if i % 2 == 0 else 0.65)
                    for note in notes for i in range(max(int(note.length * 4), 1))]  # fmt: skip
        return notes

    def tunes(self):
        for index, section in enumerate(self.sections[1:]):
            leads = self.style.leads
            for name, treatment in leads[-1] if index == len(self.sections) - 2 else leads[index % max(len(leads) - 1, 1)]:
                part = self.style.parts[name]
                for note in self.treated(treatment, section, part.centre):
                    beat = section.start + note.beat - section.first
                    weight = 1.06 if note.beat % self.song.meter == 0 else 0.97
                    self.play(name, beat, note.length * part.legato, note.pitch, note.strength * weight)

    def backing(self):
        meter = self.song.meter
        for number, section in enumerate(self.sections):
            for start in range(section.start, section.start + section.beats, meter):
                for joins, groove, name, options in self.style.groove:
                    if number >= joins:
                        groove(self, name, start, **options)
                if self.style.drums:
                    last = start + meter >= section.start + section.beats
                    grooves.drum_bar(self, self.style.drums, start, section.force, last)
                    if start == section.start and number and self.style.crash:
                        self.hit(start, self.style.crash, 0.7)

    def ending(self):
        """The last chord of everybody; some bands put a well-known tag before it."""
        song, beat = self.song, self.final
        final = self.chord(beat)
        lead = self.style.leads[-1][0][0]
        centre = self.style.parts[lead].centre
        tonic = centre - 6 + (song.key - centre + 6) % 12
        if self.style.tag and song.meter == 4 and not song.minor:
            for offset, length, step in TAG:
                self.play(lead, beat + offset, length, tonic - 12 + step if step != 12 else tonic, 0.9)
                if offset in (0, 5, 6):
                    self.hit(beat + offset, "snare" if offset else "soft kick", 0.6)
            beat += 6
        else:
            self.play(lead, beat, song.meter * 1.4, tonic, 0.9)
        names = {}
        for _, groove, name, _ in self.style.groove:
            names.setdefault(name, groove)
        for name, groove in names.items():
            voice = self.style.parts[name]
            low = groove in BASSES
            pitches = [grooves.low_root(final, 33)] if low else grooves.chord_of(self, name, beat, voice.centre, 3)
            for i, pitch in enumerate(pitches):
                self.play(name, beat + (0.06 * i if voice.ring > 1 else 0), song.meter * voice.ring, pitch, 0.75)
        if self.style.drums and self.style.final_hits:
            for drum in self.style.final_hits:
                self.hit(beat, drum, 0.9)

    def perform(self):
        """The finished track in stereo."""
        self.tunes()
        self.backing()
        self.ending()
        seconds = self.seconds(self.final + 2 * self.song.meter) + RING
        sound, self.cut = mixed([*self.parts.values(), self.kit], seconds, self.style.room(), self.style.wet)
        return sound


BASSES = {grooves.two_beat, grooves.walking, grooves.eighths, grooves.octaves, grooves.bossa_bass, grooves.skip_bass,
          grooves.tango_bass, grooves.long_bass, grooves.drone}  # fmt: skip
