#!/usr/bin/python3
"""Makes demo/, a music library for trying out the jukebox.

It contains public-domain melodies played by our own synthesiser, with covers and two videos that we draw. The bytes are
the same on every run with the same lame and ffmpeg.
"""

import argparse
import subprocess
import tempfile
from pathlib import Path

import numpy
from PIL import Image

from demo_pictures import cover, jpeg, video_frame
from demo_tags import add_asf, add_id3
from demo_tracks import BOX, CLOCK, FIDDLES, FOLDERS, ORGAN, PARTY, PIANO, SAINTS, SQUARE, TRACKS, VIDEOS, WHISTLES
from synth import RATE, encode_ffmpeg, encode_mp3, envelope, level, note, resample, tone, wav_bytes

TARGET = Path(__file__).resolve().parents[1] / "demo"
LOUDNESS = -19.0  # dB RMS
SHORTEST = 16.0  # seconds; a shorter tune is repeated
CHORDS = {"": (0, 4, 7), "m": (0, 3, 7)}
VIDEO_RATE = 12
VIDEO_SIZE = (320, 240)


def struck(partials, decay):
    """A struck or plucked instrument: each partial decays, the higher ones faster."""

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
    """An instrument that sustains its note, with a little vibrato after the attack."""

    def play(frequency, seconds):
        time = numpy.arange(round(seconds * 0.97 * RATE)) / RATE
        swing = depth * numpy.clip((time - 0.25) / 0.3, 0, 1) * numpy.sin(2 * numpy.pi * 5.2 * time)
        phase = 2 * numpy.pi * frequency * (time + swing / (2 * numpy.pi * 5.2))
        sound = sum(strength * numpy.sin(i * phase) for i, strength in enumerate(partials, 1) if frequency * i < RATE / 2)
        return sound * envelope(len(time), attack, 0.06)

    return play


def square(frequency, seconds):
    """A pulse of an early sound chip, with its quick decay."""
    time = numpy.arange(round(seconds * 0.92 * RATE)) / RATE
    odd = [n for n in range(1, 30, 2) if frequency * n < RATE / 2.5]
    sound = sum(numpy.sin(2 * numpy.pi * frequency * n * time) / n for n in odd)
    return sound * (0.35 + 0.65 * numpy.exp(-time * 5)) * envelope(len(time), 0.002, 0.02)


INSTRUMENTS = {
    "whistle": blown((1.0, 0.35, 0.12, 0.04), 0.04, 0.006),
    "brass": blown((1.0, 0.8, 0.6, 0.42, 0.28, 0.18, 0.1), 0.05, 0.004),
    "organ": blown((1.0, 0.6, 0.1, 0.45, 0.0, 0.12, 0.0, 0.2), 0.02, 0.0),
    "strings": blown((1.0, 0.5, 0.33, 0.25, 0.2, 0.12, 0.08), 0.09, 0.005),
    "fiddle": blown((1.0, 0.62, 0.55, 0.3, 0.32, 0.2, 0.16, 0.1), 0.035, 0.008),
    "box": struck(((1, 1.0), (2, 0.25), (3.9, 0.3), (6.8, 0.08)), 2.6),
    "piano": struck(((1, 1.0), (2, 0.55), (3, 0.35), (4, 0.2), (5, 0.12), (6, 0.08), (7, 0.05)), 1.8),
    "square": square,
}


class Band:
    """A band: the instrument of the tune, its octaves relative to the notes, and how the chords are played below it."""

    def __init__(self, instrument, octaves, manner, accompanist="piano"):
        self.play, self.octaves, self.manner = INSTRUMENTS[instrument], octaves, manner
        self.accompany = INSTRUMENTS[accompanist]


BANDS = {
    WHISTLES: Band("whistle", 1, "broken"),
    SAINTS: Band("brass", 0, "march"),
    CLOCK: Band("strings", 0, "broken"),
    ORGAN: Band("organ", 0, "held"),
    BOX: Band("box", 1, "broken", "box"),
    PIANO: Band("piano", 0, "march"),
    FIDDLES: Band("fiddle", 0, "march"),
    SQUARE: Band("square", 0, "broken", "square"),
}


def read_tokens(text):
    """Name and length in beats of each token."""
    for token in text.replace("|", " ").split():
        name, _, length = token.partition("*")
        yield name, float(length or 1)


def tune_notes(text):
    """Frequency (0 for a rest) and beats of each note of a tune; an octave applies until the next one."""
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
    at = max(round(start * RATE), 0)
    sound = sound[: max(len(track) - at, 0)]
    track[at : at + len(sound)] += sound


def held(track, band, chord, start, beats, beat):
    """The chord for its whole length, with its root an octave lower."""
    for i, frequency in enumerate(chord):
        add(track, start, 0.13 * tone(frequency, beats * beat, (1.0, 0.25, 0.08), 0.08, 0.15))
        if i == 0:
            add(track, start, 0.42 * INSTRUMENTS["piano"](frequency / 2, min(beats, 1.5) * beat))


def march(track, band, chord, start, beats, beat):
    """Bass on the beat, the chord after it; two chords after each bass if the bar has three beats."""
    three = beats % 3 == 0
    for i in range(int(beats)):
        on = i % (3 if three else 2) == 0
        if on:
            low = chord[0] / 2 if i % 4 < 2 or three else chord[2] / 4
            add(track, start + i * beat, 0.45 * INSTRUMENTS["piano"](low, beat))
        else:
            for frequency in chord:
                add(track, start + i * beat, 0.15 * band.accompany(frequency, beat * 0.5))


def broken(track, band, chord, start, beats, beat):
    """The notes of the chord one after the other, two a beat, over a quiet bass."""
    add(track, start, 0.32 * INSTRUMENTS["piano"](chord[0] / 2, min(beats, 2) * beat))
    order = (chord[0], chord[2], chord[0] * 2, chord[1])
    for i in range(int(beats * 2)):
        add(track, start + i * beat / 2, 0.16 * band.accompany(order[i % 4], beat * 0.5))


MANNERS = {"held": held, "march": march, "broken": broken}


def room(track, seed):
    """The same sound in a room: a soft tail of a second."""
    length = round(0.9 * RATE)
    time = numpy.arange(length) / RATE
    tail = numpy.random.default_rng(seed).standard_normal(length) * numpy.exp(-time * 7.5)
    tail[: round(0.012 * RATE)] = 0
    size = len(track) + length
    wet = numpy.fft.irfft(numpy.fft.rfft(track, size) * numpy.fft.rfft(tail, size), size)[: len(track)]
    wet *= numpy.sqrt(numpy.mean(track**2) / max(numpy.mean(wet**2), 1e-12))
    return track + 0.22 * wet


def perform(name, melody):
    """The samples of a tune played by a band; a short tune is repeated in a fuller arrangement."""
    band = BANDS[name]
    beat = 60 / melody.tempo
    beats = sum(length for _, length in read_tokens(melody.tune))
    assert beats == sum(length for _, length in read_tokens(melody.chords)), melody
    rounds = int(-(-SHORTEST // (beats * beat)))
    track = numpy.zeros(round((rounds * beats * beat + 1.2) * RATE))
    loose = numpy.random.default_rng(len(melody.tune))
    for turn in range(rounds):
        now = turn * beats * beat
        for frequency, length in tune_notes(melody.tune):
            if frequency:
                late, strength = loose.uniform(0, 0.008), loose.uniform(0.88, 1.0)
                add(track, now + late, strength * band.play(frequency * 2**band.octaves, length * beat))
                if turn % 2:
                    add(track, now + late, 0.3 * strength * band.play(frequency * 2 ** (band.octaves + 1), length * beat))
            now += length * beat
        now = turn * beats * beat
        for chord, length in chord_notes(melody.chords):
            if chord:
                MANNERS[band.manner](track, band, chord, now, length, beat)
            now += length * beat
    track = room(track, len(name))
    return level(track, LOUDNESS) * envelope(len(track), 0.01, 0.9)


def encode(sound, path):
    """Writes the file in the format of its ending, each at the smallest size that still sounds good."""
    path.parent.mkdir(parents=True, exist_ok=True)
    kind = path.suffix.lower()
    if kind == ".mp3":
        encode_mp3(sound, path, 64)
    elif kind == ".wav":
        path.write_bytes(wav_bytes(resample(sound, 16000), 16000))
    elif kind == ".flac":
        encode_ffmpeg(sound, path, ["-ar", "22050", "-c:a", "flac", "-compression_level", "8"])
    else:
        encode_ffmpeg(sound, path, ["-c:a", "wmav2", "-b:a", "64k"])


def plain_title(file):
    """The title in a file's name, for its tag and its cover."""
    parts = [part.strip() for part in file.rsplit(".", 1)[0].replace("_", " ").split("-")]
    return parts[-1]


def tag(path, number, band, folder):
    """A tag in one of the versions; every second track has its own cover."""
    title = plain_title(path.name)
    motifs = ("sunburst", "record", "stripes", "waves", "gears", "stars", "hills", "blocks", "pipes", "keys")
    picture = cover(title, band, motifs[(number * 7 + len(title)) % len(motifs)], folder.palette + number, 240)
    art = jpeg(picture, 78) if number % 2 == 0 else None
    if path.suffix.lower() == ".mp3":
        texts = (("TIT2", title), ("TPE1", band), ("TALB", folder.title), ("TRCK", str(number + 1)))
        add_id3(path, (3, 4, 2)[number % 3], texts, art)
    elif path.suffix.lower() == ".wma" and art:
        add_asf(path, art)


def slot_banner(picture):
    """A big cover is stretched over a whole slot: its picture is behind the label and fades out where the title
    begins."""
    width, height = 1208, 196
    side = round(width * 0.31)
    art = picture.crop((0, picture.height * 3 // 10, picture.width, picture.height)).resize((side, height))
    fade = numpy.clip(numpy.minimum((numpy.arange(side) - side * 0.6) / 30, (side - numpy.arange(side)) / 50), 0, 1)
    banner = Image.new("RGBA", (width, height), (0, 0, 0, 0))
    art.putalpha(Image.fromarray(numpy.rint(numpy.tile(fade * 255, (height, 1))).astype(numpy.uint8), "L"))
    banner.paste(art, (0, 0))
    return banner


def make_folder(target, name, folder):
    """Makes the covers and tracks of one folder; returns the number of tracks."""
    place = target / name
    place.mkdir(parents=True, exist_ok=True)
    if folder.file:
        picture = cover(folder.title, folder.artist, folder.motif, folder.palette)
        if folder.file == "bigcover.png":
            picture = slot_banner(picture)
        picture.save(place / folder.file, optimize=True, **({"quality": 84} if folder.file.endswith("jpg") else {}))
    for number, (file, band, melody) in enumerate(TRACKS.get(name, ())):
        path = place / file.lstrip("+")
        encode(perform(band, melody), path)
        tag(path, number, band, folder)
        if file[0] == "+":
            own = cover(plain_title(path.name), band, ("keys", "sunburst", "waves", "stars", "record")[number % 5], number * 3 + 1)
            own.save(path.with_suffix(".jpg"), quality=84, optimize=True)
        print(f"{path.stat().st_size:7} {path.relative_to(target)}", flush=True)
    return len(TRACKS.get(name, ()))


def loudness_bars(sound, position, bars=8):
    """The level of eight frequency bands of the sound at a moment, 0 to 1."""
    at = round(position * RATE)
    part = sound[at : at + 4096]
    if len(part) < 4096:
        return [0.0] * bars
    spectrum = abs(numpy.fft.rfft(part * numpy.hanning(4096)))
    edges = numpy.geomspace(8, 520, bars + 1).astype(int)
    return [float(numpy.clip(spectrum[a:b].max() / 160, 0, 1) ** 0.6) for a, b in zip(edges, edges[1:])]


def make_video(path, band, melody, palette):
    """A spinning record with bars that follow the music."""
    path.parent.mkdir(parents=True, exist_ok=True)
    sound = perform(band, melody)
    with tempfile.NamedTemporaryFile(suffix=".wav") as music:
        music.write(wav_bytes(resample(sound, 22050), 22050))
        music.flush()
        codecs = ["-c:v", "mpeg4", "-q:v", "7", "-c:a", "libmp3lame", "-b:a", "64k"]
        if path.suffix == ".mpg":
            codecs = ["-r", "25", "-c:v", "mpeg1video", "-b:v", "260k", "-c:a", "mp2", "-b:a", "64k"]
        command = ["ffmpeg", "-v", "error", "-y", "-f", "rawvideo", "-pix_fmt", "rgb24", "-s", "%dx%d" % VIDEO_SIZE,
                   "-r", str(VIDEO_RATE), "-i", "pipe:0", "-i", music.name, *codecs, "-shortest", "-threads", "1",
                   "-fflags", "+bitexact", "-flags:v", "+bitexact", "-flags:a", "+bitexact", str(path)]  # fmt: skip
        with subprocess.Popen(command, stdin=subprocess.PIPE) as encoder:
            for i in range(int(len(sound) / RATE * VIDEO_RATE)):
                position = i / VIDEO_RATE
                frame = video_frame(plain_title(path.name), band, palette, position, loudness_bars(sound, position), VIDEO_SIZE)
                encoder.stdin.write(frame.tobytes())
            encoder.stdin.close()
            if encoder.wait():
                raise SystemExit(f"{path}: ffmpeg failed")
    print(f"{path.stat().st_size:7} {path.name}", flush=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--out", type=Path, default=TARGET)
    parser.add_argument("--only", help="make only this folder, given by its path below the library")
    args = parser.parse_args()
    count = 0
    for name, folder in FOLDERS.items():
        if args.only in (None, name):
            count += make_folder(args.out, name, folder)
    for name, band, melody, palette in VIDEOS:
        if args.only in (None, str(Path(name).parent)):
            make_video(args.out / name, band, melody, palette)
    # make_home.sh turns this list into the saved playlist, which contains full paths.
    (args.out / "playlist.txt").write_text("".join(f"{path}\n" for path in PARTY), encoding="utf-8")
    total = sum(file.stat().st_size for file in args.out.rglob("*") if file.is_file())
    print(f"{count} tracks, {total} bytes in total")


if __name__ == "__main__":
    main()
