#!/usr/bin/python3
"""Makes the five sounds of our themes: short synthesised notes, levelled and encoded as MP3 with lame.

    make_sounds.py          writes them to home/themes/default and, a tenth of a second long, to the tests' themes
"""

import argparse
from pathlib import Path

import numpy

from synth import RATE, encode_mp3, envelope, level, note, silence, tone

ROOT = Path(__file__).resolve().parents[1]
THEMES = (ROOT / "home/themes/default",)
TEST_THEMES = (ROOT / "tests/homes/plain/themes/default", ROOT / "tests/homes/plain/themes/small")
LOUDNESS = -20.0  # dB RMS over the sounding part, the same for all five


def bell(name, seconds):
    """A soft bell: a few partials that are not quite harmonic, the high ones fading first."""
    partials = ((1.0, 1.0), (2.0, 0.5), (3.01, 0.22), (4.23, 0.1), (5.4, 0.05))
    length = round(seconds * RATE)
    time = numpy.arange(length) / RATE
    sound = sum(
        amount * numpy.sin(2 * numpy.pi * note(name) * ratio * time) * numpy.exp(-time * (3.0 + 2.2 * ratio))
        for ratio, amount in partials
    )
    return sound * envelope(length, 0.003, 0.03)


def mixed(*parts):
    """Sounds that begin at given seconds, added up."""
    length = max(round(start * RATE) + len(sound) for start, sound in parts)
    total = numpy.zeros(length)
    for start, sound in parts:
        at = round(start * RATE)
        total[at : at + len(sound)] += sound
    return total


def charge():
    """Between two tracks: three soft rising notes over a quiet chord."""
    chord = sum(tone(note(name), 1.5, (1.0, 0.3, 0.1), 0.25, 0.7) for name in ("C3", "G3", "E4")) * 0.25
    return mixed((0.0, chord), (0.1, bell("G4", 0.9)), (0.32, bell("C5", 0.9)), (0.54, bell("E5", 1.0)))


def insert_coin():
    """A coin: two bright notes, the second higher and longer."""
    return mixed((0.0, bell("B5", 0.35)), (0.09, bell("E6", 0.7)))


def move():
    """A tick."""
    return tone(note("A4"), 0.07, (1.0, 0.4), 0.002, 0.05)


def no_credit():
    """A refusal: two low notes, falling."""
    reed = (1.0, 0.5, 0.33, 0.2, 0.12)
    low = [tone(note(name), 0.2, reed, 0.01, 0.06) for name in ("E3", "C3")]
    return mixed((0.0, low[0]), (0.22, low[1]))


def page_turn():
    """A sheet of paper: filtered noise that swells, rises in pitch and dies away."""
    length = round(0.36 * RATE)
    noise = numpy.random.default_rng(7).standard_normal(length)
    position = numpy.linspace(0, 1, length)
    spectrum = numpy.fft.rfft(noise)
    frequency = numpy.fft.rfftfreq(length, 1 / RATE)
    low = numpy.fft.irfft(spectrum * numpy.exp(-(((frequency - 900) / 700) ** 2)), length)
    high = numpy.fft.irfft(spectrum * numpy.exp(-(((frequency - 3200) / 1600) ** 2)), length)
    swell = numpy.sin(numpy.pi * position**0.7) ** 2
    return (low * (1 - position) + high * position) * swell


SOUNDS = {
    "charge.mp3": charge,
    "insertcoin.mp3": insert_coin,
    "move.mp3": move,
    "NoCredit.mp3": no_credit,
    "PageTurn.mp3": page_turn,
}
# The tests tell their sounds apart by pitch.
TEST_NOTES = dict(zip(SOUNDS, ("C5", "D5", "E5", "F5", "G5")))


def main():
    argparse.ArgumentParser(description=__doc__.splitlines()[0]).parse_args()
    for name, make in SOUNDS.items():
        sound = numpy.concatenate([level(make(), LOUDNESS), silence(0.03)])
        for folder in THEMES:
            encode_mp3(sound, folder / name, 64)
        short = level(tone(note(TEST_NOTES[name]), 0.1, (1.0,), 0.01, 0.02), LOUDNESS)
        for folder in TEST_THEMES:
            encode_mp3(short, folder / name, 32)
        print(f"{name}: {len(sound) / RATE:.2f} s, peak {20 * numpy.log10(abs(sound).max()):.1f} dB")


if __name__ == "__main__":
    main()
