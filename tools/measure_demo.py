#!/usr/bin/python3
"""Measures the demo library and the sounds of the themes as they are heard after decoding.

    measure_demo.py [--library FOLDER] [--themes FOLDER]    prints a table; fails if something is outside its limits
"""

import argparse
import os
import re
import subprocess
import sys
from collections import defaultdict
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

import numpy

from demo_score import Song
from demo_tracks import TRACKS, VIDEOS
from synth import RATE, momentary

ROOT = Path(__file__).resolve().parents[1]
SHORTEST, LONGEST = 45.0, 60.0  # seconds
LOUDNESS, SPREAD = -16.4, 0.3  # LUFS, and how far a track may be from it
LONGEST_SILENCE = 0.15  # seconds below -50 dBFS at the start
LONGEST_TAIL = 1.0
TRUE_PEAK = -1.0  # dBTP
DC = 0.002
CORRELATION = 0.2
SIDE = -35.0  # dB: what differs between left and right, against what they share
DULL, HARSH = -32.0, -13.5  # dB: energy above 6 kHz against all, in the mean of a style
DIFFERENT_TUNES = 40
SIZE = 60_000_000
SOUND_LOUDNESS, SOUND_ATTACK = -18.0, 0.002  # of the themes: LUFS at most; seconds from a tenth to nine tenths at least
QUIET = 10 ** (-50 / 20)


def decoded(path, sides=2):
    """Samples of a file, and its integrated loudness by ffmpeg's EBU R128 filter."""
    command = ["ffmpeg", "-hide_banner", "-nostdin", "-i", str(path), "-vn", "-af", "ebur128=framelog=verbose", "-ac", str(sides),
               "-ar", str(RATE), "-f", "f32le", "-"]  # fmt: skip
    result = subprocess.run(command, capture_output=True, check=True)
    summary = result.stderr.decode(errors="replace").rsplit("Integrated loudness:", 1)[-1]
    loudness = float(re.search(r"I:\s+(-?[\d.]+|-?inf)", summary)[1])
    return numpy.frombuffer(result.stdout, "<f4").reshape(-1, sides).T, loudness


def true_peak(sound):
    """The largest value in dB between the samples too: the loudest places, four times as many samples."""
    highest = -200.0
    for side in sound:
        if len(side) < 128:
            side = numpy.pad(side, (64, 64))
        inner = abs(side[64:-64])
        for at in numpy.argpartition(inner, -min(24, len(inner)))[-24:]:
            part = side[at : at + 128] * numpy.hanning(128) ** 0.25
            spectrum = numpy.fft.rfft(part)
            finer = numpy.fft.irfft(numpy.concatenate([spectrum, numpy.zeros(192)]), 512) * 4
            highest = max(highest, 20 * numpy.log10(abs(finer).max() + 1e-12))
    return highest


def spectrum_of(sound):
    """Frequencies in Hz and the mean energy at each."""
    middle = sound.mean(axis=0)
    blocks = middle[: len(middle) // 4096 * 4096].reshape(-1, 4096)[::2]
    return numpy.fft.rfftfreq(4096, 1 / RATE), numpy.mean(abs(numpy.fft.rfft(blocks * numpy.hanning(4096))) ** 2, axis=0)


def measured(path):
    """Every figure of one track."""
    sound, loudness = decoded(path)
    heard = numpy.nonzero(abs(sound).max(axis=0) > QUIET)[0]
    frequency, energy = spectrum_of(sound)
    shared, apart = sound.mean(axis=0), (sound[0] - sound[1]) / 2
    # A mono file has the same samples on both sides.
    correlation = numpy.corrcoef(sound)[0, 1]
    return {
        "seconds": sound.shape[1] / RATE,
        "loudness": loudness,
        "peak": true_peak(sound),
        "start": heard[0] / RATE,
        "tail": (sound.shape[1] - heard[-1]) / RATE,
        "end": float(20 * numpy.log10(abs(sound[:, -64:]).max() + 1e-9)),
        "dc": float(abs(sound.mean(axis=1)).max()),
        "correlation": float(correlation),
        "side": float(10 * numpy.log10((numpy.mean(apart**2) + 1e-15) / (numpy.mean(shared**2) + 1e-15))),
        "centroid": float((frequency * energy).sum() / energy.sum()),
        "top": float(10 * numpy.log10(energy[frequency > 6000].sum() / energy.sum())),
    }


def faults(figures):
    """What is wrong with a track."""
    if not SHORTEST <= figures["seconds"] <= LONGEST:
        yield f"lasts {figures['seconds']:.1f} s"
    if abs(figures["loudness"] - LOUDNESS) > SPREAD:
        yield f"has {figures['loudness']:.1f} LUFS"
    if figures["peak"] > TRUE_PEAK:
        yield f"has a true peak of {figures['peak']:.2f} dBTP"
    if figures["start"] > LONGEST_SILENCE:
        yield f"is silent for {figures['start']:.2f} s at its start"
    if figures["tail"] > LONGEST_TAIL:
        yield f"is silent for {figures['tail']:.2f} s at its end"
    if figures["end"] > -45:
        yield f"is cut off at {figures['end']:.0f} dBFS"
    if figures["dc"] > DC:
        yield f"has an offset of {figures['dc']:.4f}"
    if figures["correlation"] < CORRELATION:
        yield f"has a correlation of {figures['correlation']:.2f} between left and right"
    if figures["side"] < SIDE:
        yield "is mono"


def style_faults(name, figures):
    if not DULL <= figures["top"] <= HARSH:
        yield f"the style {name} has {figures['top']:.1f} dB above 6 kHz"


def contour(melody):
    """Intervals and lengths at the start of a tune, whatever its key and tempo."""
    notes = Song(melody).notes[:10]
    return tuple((b.pitch - a.pitch, round(a.length / notes[0].length, 3)) for a, b in zip(notes, notes[1:]))


def listed(library):
    """File, style and melody of every track and film, as the scripts know them."""
    for folder, tracks in TRACKS.items():
        for file, _, style, melody in tracks:
            yield library / folder / file.lstrip("+"), style, melody
    for file, _, style, melody, _ in VIDEOS:
        yield library / file, style, melody


def check_library(library):
    """Prints the figures of each style; returns what is wrong."""
    styles, tunes = defaultdict(list), set()
    tracks = list(listed(library))
    wrong = [f"{path.relative_to(library)} is missing" for path, *_ in tracks if not path.is_file()]
    tracks = [track for track in tracks if track[0].is_file()]
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        results = list(pool.map(measured, [path for path, *_ in tracks]))
    for (path, style, melody), figures in zip(tracks, results):
        wrong += [f"{path.relative_to(library)} {fault}" for fault in faults(figures)]
        styles[style].append(figures)
        tunes.add(contour(melody))
    print(f"{'style':12} tracks  seconds      LUFS          peak  start  tail  corr  side  centroid  >6 kHz")
    for style, rows in sorted(styles.items()):
        column = {key: [row[key] for row in rows] for key in rows[0]}
        mean = {key: sum(values) / len(values) for key, values in column.items()}
        print(f"{style:12} {len(rows):6}  {min(column['seconds']):.1f}-{max(column['seconds']):.1f}"
              f"  {min(column['loudness']):.1f}..{max(column['loudness']):.1f}  {max(column['peak']):5.2f}  {max(column['start']):5.3f}"
              f"  {max(column['tail']):4.2f}  {min(column['correlation']):4.2f}  {mean['side']:5.1f}  {mean['centroid']:6.0f}  {mean['top']:6.1f}")  # fmt: skip
        wrong += style_faults(style, mean)
    size = sum(file.stat().st_size for file in library.rglob("*") if file.is_file())
    print(f"{sum(map(len, styles.values()))} tracks, {len(tunes)} different tunes, {size / 1e6:.1f} MB")
    if len(tunes) < DIFFERENT_TUNES:
        wrong.append(f"only {len(tunes)} different tunes")
    if size > SIZE:
        wrong.append(f"{size} bytes")
    return wrong


def attack_of(sound):
    """Seconds in which the envelope first rises from a tenth to nine tenths of its highest value in 30 ms."""
    envelope = numpy.maximum.accumulate(abs(sound).max(axis=0))
    first = numpy.nonzero(envelope > envelope.max() * 0.02)[0][0]
    envelope = envelope[first : first + round(0.03 * RATE)] / envelope[min(first + round(0.03 * RATE), len(envelope) - 1)]
    return (numpy.searchsorted(envelope, 0.9) - numpy.searchsorted(envelope, 0.1)) / RATE


def check_sounds(themes):
    """Prints the figures of the sounds; returns what is wrong. No two themes have the same sound."""
    wrong, seen = [], {}
    for path in sorted(themes.glob("*/*.mp3")):
        sound, _ = decoded(path, 1)
        loudness, attack, name = momentary(sound[0].astype(float)), attack_of(sound), path.relative_to(themes)
        print(
            f"{str(name):28} {sound.shape[1] / RATE:5.2f} s  {loudness:6.1f} LUFS  {true_peak(sound):6.2f} dBTP  attack {attack * 1000:5.1f} ms"
        )
        if loudness > SOUND_LOUDNESS:
            wrong.append(f"{name} has {loudness:.1f} LUFS")
        if attack < SOUND_ATTACK:
            wrong.append(f"{name} starts within {attack * 1000:.1f} ms")
        same = seen.setdefault(path.read_bytes(), name)
        if same != name:
            wrong.append(f"{name} is a copy of {same}")
    return wrong


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--library", type=Path, default=ROOT / "demo")
    parser.add_argument("--themes", type=Path, default=ROOT / "home/themes")
    args = parser.parse_args()
    wrong = check_library(args.library.resolve()) + check_sounds(args.themes.resolve())
    for line in wrong:
        print(line, file=sys.stderr)
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
