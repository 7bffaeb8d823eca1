#!/usr/bin/python3
"""Makes demo/, a small music library to try the jukebox with: melodies in the public domain on our own synthesiser."""

import argparse
from pathlib import Path

import numpy

import demo_melodies as tunes
from synth import RATE, encode_ffmpeg, encode_mp3, envelope, level, note, resample, tone, wav_bytes

TARGET = Path(__file__).resolve().parents[1] / "demo"
LOUDNESS = -19.0  # dB RMS
CHORDS = {"": (0, 4, 7), "m": (0, 3, 7)}


def struck(partials, decay):
    """An instrument that is struck or plucked: each partial dies away, the higher ones faster."""

    def play(frequency, seconds):
        time = numpy.arange(round((seconds + 0.15) * RATE)) / RATE
        sound = sum(
            strength * numpy.sin(2 * numpy.pi * frequency * ratio * time) * numpy.exp(-decay * ratio**0.7 * time)
            for ratio, strength in partials
            if frequency * ratio < RATE / 2
        )
        return sound * envelope(len(time), 0.004, 0.12)

    return play


def blown(partials, attack, depth):
    """An instrument that holds its note, with a little vibrato once it stands."""

    def play(frequency, seconds):
        time = numpy.arange(round(seconds * 0.97 * RATE)) / RATE
        swing = depth * numpy.clip((time - 0.25) / 0.3, 0, 1) * numpy.sin(2 * numpy.pi * 5.2 * time)
        phase = 2 * numpy.pi * frequency * (time + swing / (2 * numpy.pi * 5.2))
        sound = sum(strength * numpy.sin(i * phase) for i, strength in enumerate(partials, 1) if frequency * i < RATE / 2)
        return sound * envelope(len(time), attack, 0.06)

    return play


INSTRUMENTS = {
    "whistle": blown((1.0, 0.35, 0.12, 0.04), 0.04, 0.006),
    "brass": blown((1.0, 0.8, 0.6, 0.42, 0.28, 0.18, 0.1), 0.05, 0.004),
    "organ": blown((1.0, 0.6, 0.1, 0.45, 0.0, 0.12, 0.0, 0.2), 0.02, 0.0),
    "strings": blown((1.0, 0.5, 0.33, 0.25, 0.2, 0.12, 0.08), 0.09, 0.005),
    "box": struck(((1, 1.0), (2, 0.25), (3.9, 0.3), (6.8, 0.08)), 2.6),
    "piano": struck(((1, 1.0), (2, 0.55), (3, 0.35), (4, 0.2), (5, 0.12), (6, 0.08), (7, 0.05)), 1.8),
}
# Band: its instrument, and by how many octaves it plays away from what is written.
BANDS = {
    "The Tin Whistles": ("whistle", 1),
    "Late Night Brass Band": ("brass", 0),
    "Clockwork Orchestra": ("strings", 0),
    "Harbour Lights Organ": ("organ", 0),
    "The Music Box Company": ("box", 1),
    "Parlour Piano": ("piano", 0),
}

# File, band, melody. The names show the shapes that the jukebox knows: number, artist and title, or fewer of them.
LIBRARY = (
    ("01 - The Tin Whistles - Auld Lang Syne.mp3", "The Tin Whistles", tunes.AULD_LANG_SYNE),
    ("Amazing_Grace.mp3", "Harbour Lights Organ", tunes.AMAZING_GRACE),
    ("Brass Band/01 - Late Night Brass Band - When The Saints Go Marching In.mp3", "Late Night Brass Band", tunes.WHEN_THE_SAINTS),
    ("Brass Band/02 - Late Night Brass Band - Oh Susanna.mp3", "Late Night Brass Band", tunes.OH_SUSANNA),
    ("Brass Band/03 - Late Night Brass Band - Camptown Races.mp3", "Late Night Brass Band", tunes.CAMPTOWN_RACES),
    ("Brass Band/04 - Late Night Brass Band - Yankee Doodle.mp3", "Late Night Brass Band", tunes.YANKEE_DOODLE),
    ("Brass Band/Late Night Brass Band - Ode To Joy.wma", "Late Night Brass Band", tunes.ODE_TO_JOY),
    ("Brass Band/The_Can_Can.wav", "Late Night Brass Band", tunes.CAN_CAN),
    ("Clockwork Orchestra/Clockwork Orchestra - Ballroom/Clockwork Orchestra - The Blue Danube.mp3", "Clockwork Orchestra", tunes.BLUE_DANUBE),
    ("Clockwork Orchestra/Clockwork Orchestra - Ballroom/Clockwork Orchestra - Swan Lake.mp3", "Clockwork Orchestra", tunes.SWAN_LAKE),
    ("Clockwork Orchestra/Clockwork Orchestra - Ballroom/Clockwork Orchestra - In The Hall Of The Mountain King.mp3", "Clockwork Orchestra", tunes.MOUNTAIN_KING),
    ("Clockwork Orchestra/Clockwork Orchestra - Ballroom/07 - Korobeiniki.flac", "Clockwork Orchestra", tunes.KOROBEINIKI),
    ("Clockwork Orchestra/Clockwork Orchestra - Ballroom/08 - A Little Night Music.wma", "Clockwork Orchestra", tunes.NACHTMUSIK),
    ("Clockwork Orchestra/Clockwork Orchestra - Ballroom/09 - Canon.mp3", "Clockwork Orchestra", tunes.CANON),
    ("Music Box/Carols/The Music Box Company - Jingle Bells.mp3", "The Music Box Company", tunes.JINGLE_BELLS),
    ("Music Box/Carols/The Music Box Company - Silent Night.mp3", "The Music Box Company", tunes.SILENT_NIGHT),
    ("Music Box/Carols/The Music Box Company - We Wish You A Merry Christmas.mp3", "The Music Box Company", tunes.MERRY_CHRISTMAS),
    ("Music Box/Carols/O_Tannenbaum.flac", "The Music Box Company", tunes.O_TANNENBAUM),
    ("Music Box/Lullabies/01 - Frère Jacques.mp3", "The Music Box Company", tunes.FRERE_JACQUES),
    ("Music Box/Lullabies/02 - Twinkle Twinkle Little Star.mp3", "The Music Box Company", tunes.TWINKLE),
    ("Music Box/Lullabies/03 - Lullaby.mp3", "The Music Box Company", tunes.LULLABY),
    ("Music Box/Lullabies/04 - Au Clair De La Lune.wma", "The Music Box Company", tunes.AU_CLAIR_DE_LA_LUNE),
    ("Parlour Piano/Parlour Piano - The Entertainer.mp3", "Parlour Piano", tunes.ENTERTAINER),
    ("Parlour Piano/03 - Parlour Piano - Minuet In G.mp3", "Parlour Piano", tunes.MINUET),
    ("Parlour Piano/05 - Für Elise.flac", "Parlour Piano", tunes.FUR_ELISE),
    ("Parlour Piano/Greensleeves_My_Love.mp3", "Parlour Piano", tunes.GREENSLEEVES),
)  # fmt: skip


def read_tokens(text):
    """Name and length in beats of each token."""
    for token in text.replace("|", " ").split():
        name, _, length = token.partition("*")
        yield name, float(length or 1)


def tune_notes(text):
    """Frequency, or 0 for a rest, and beats of each note of a tune; the octave stays until another is written."""
    octave = 4
    for name, beats in read_tokens(text):
        if name == "-":
            yield 0.0, beats
            continue
        if name[-1].isdigit():
            octave = int(name[-1])
            name = name[:-1]
        yield note(f"{name}{octave}"), beats


def chord_notes(text):
    """Frequencies, from the third octave up, and beats of each chord."""
    for name, beats in read_tokens(text):
        kind = "m" if name.endswith("m") else ""
        root = note(name.removesuffix("m") + "3") if name != "N" else 0.0
        yield [root * 2 ** (step / 12) for step in CHORDS[kind]] if root else [], beats


def add(track, start, sound):
    at = round(start * RATE)
    track[at : at + len(sound)] += sound[: len(track) - at]


def perform(band, melody):
    """The samples of a tune played by a band, with a soft chord and a bass below it."""
    instrument, octaves = BANDS[band]
    play = INSTRUMENTS[instrument]
    beat = 60 / melody.tempo
    beats = sum(length for _, length in read_tokens(melody.tune))
    assert beats == sum(length for _, length in read_tokens(melody.chords)), melody
    track = numpy.zeros(round((beats * beat + 0.8) * RATE))
    now = 0.0
    for frequency, length in tune_notes(melody.tune):
        if frequency:
            add(track, now, play(frequency * 2**octaves, length * beat))
        now += length * beat
    now = 0.0
    soft = (1.0, 0.25, 0.08)
    for chord, length in chord_notes(melody.chords):
        for i, frequency in enumerate(chord):
            add(track, now, 0.12 * tone(frequency, length * beat, soft, 0.08, 0.15))
            if i == 0:
                add(track, now, 0.4 * INSTRUMENTS["piano"](frequency / 2, min(length, 1.5) * beat))
        now += length * beat
    return level(track, LOUDNESS) * envelope(len(track), 0.01, 0.5)


def encode(sound, path):
    """Writes the file in the format of its ending, each as small as still sounds well."""
    kind = path.suffix
    if kind == ".mp3":
        encode_mp3(sound, path, 64)
    elif kind == ".wav":
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(wav_bytes(resample(sound, 11025), 11025))
    elif kind == ".flac":
        encode_ffmpeg(sound, path, ["-ar", "22050", "-c:a", "flac", "-compression_level", "8"])
    else:
        encode_ffmpeg(sound, path, ["-c:a", "wmav2", "-b:a", "64k"])


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--out", type=Path, default=TARGET)
    target = parser.parse_args().out
    total = 0
    for name, band, melody in LIBRARY:
        sound = perform(band, melody)
        encode(sound, target / name)
        size = (target / name).stat().st_size
        total += size
        print(f"{len(sound) / RATE:5.1f} s {size:7} {name}")
    print(f"{len(LIBRARY)} tracks, {total} bytes")


if __name__ == "__main__":
    main()
