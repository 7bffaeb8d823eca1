#!/usr/bin/python3
"""Makes the five sounds of our themes: short synthesised notes, matched in loudness and encoded as MP3 with lame.

    make_sounds.py          writes them to the included themes and, a tenth of a second long, to the tests' themes
"""

import argparse
from pathlib import Path

import numpy

from synth import RATE, encode_mp3, envelope, level, momentary, note, silence, tone

ROOT = Path(__file__).resolve().parents[1]
THEMES = (ROOT / "home/themes/default", ROOT / "home/themes/touch")
TEST_THEMES = (ROOT / "tests/homes/plain/themes/default", ROOT / "tests/homes/plain/themes/small")
LOUDNESS = -20.0  # of the tests' sounds: dB RMS over the audible part
MOMENTARY = -21.0  # LUFS of the loudest 400 ms, the same for all
PEAK = 0.6


def bell(name, seconds):
    """A soft bell: a few slightly inharmonic partials, of which the high ones fade first."""
    partials = ((1.0, 1.0), (2.0, 0.5), (3.01, 0.22), (4.23, 0.1), (5.4, 0.05))
    length = round(seconds * RATE)
    time = numpy.arange(length) / RATE
    sound = sum(
        amount * numpy.sin(2 * numpy.pi * note(name) * ratio * time) * numpy.exp(-time * (3.0 + 2.2 * ratio))
        for ratio, amount in partials
    )
    return sound * envelope(length, 0.003, 0.03)


def mixed(*parts):
    """The sum of sounds that begin at the given seconds."""
    length = max(round(start * RATE) + len(sound) for start, sound in parts)
    total = numpy.zeros(length)
    for start, sound in parts:
        at = round(start * RATE)
        total[at : at + len(sound)] += sound
    return total


def modes(frequency, ratios, decay, seconds):
    """A struck piece of metal: its modes are inharmonic, and the high ones fade first."""
    time = numpy.arange(round(seconds * RATE)) / RATE
    sound = sum(
        numpy.sin(2 * numpy.pi * frequency * ratio * time + i) * numpy.exp(-time * decay * ratio**0.8) / (i + 1) ** 0.5
        for i, ratio in enumerate(ratios)
        if frequency * ratio < RATE * 0.45
    )
    return sound * envelope(len(time), 0.0006, 0.01)


def band_noise(seed, seconds, middle, width):
    """Noise around a frequency in Hz."""
    length = round(seconds * RATE)
    spectrum = numpy.fft.rfft(numpy.random.default_rng(seed).standard_normal(length))
    frequency = numpy.fft.rfftfreq(length, 1 / RATE)
    sound = numpy.fft.irfft(spectrum * numpy.exp(-(((frequency - middle) / width) ** 2)), length)
    return sound / abs(sound).max()


def charge():
    """Between two tracks: the arm comes down with a soft thud, and three bells rise over a quiet chord."""
    chord = sum(tone(note(name), 1.3, (1.0, 0.3, 0.1), 0.25, 0.7) for name in ("C3", "G3", "E4")) * 0.25
    thud = modes(92.0, (1, 1.5, 2.3), 22.0, 0.2) * 0.8
    return mixed((0.0, chord), (0.0, thud), (0.12, bell("G4", 0.8)), (0.3, bell("C5", 0.8)), (0.48, bell("E5", 0.95)))


def insert_coin():
    """A coin: it strikes the slot, bounces twice inside, and a bell confirms it."""
    disc = (1.0, 1.73, 2.33, 3.91, 4.11)
    parts = []
    for start, strength, pitch in ((0.0, 1.0, 2860.0), (0.085, 0.62, 2940.0), (0.142, 0.4, 2790.0), (0.178, 0.24, 2900.0)):
        click = band_noise(round(pitch), 0.02, 5200, 2600) * numpy.exp(-numpy.arange(round(0.02 * RATE)) / (0.003 * RATE))
        parts += [(start, strength * modes(pitch, disc, 9.0, 0.3)), (start, strength * 0.9 * click)]
    return mixed(*parts, (0.24, 1.5 * bell("B5", 0.5)), (0.32, 1.5 * bell("E6", 0.75)))


def move():
    """A wooden tick."""
    return modes(820.0, (1, 2.6), 55.0, 0.09)


def no_credit():
    """A gentle refusal: two soft low notes, falling."""
    low = [tone(note(name), length, (1.0, 0.35, 0.2, 0.06), 0.012, 0.12) for name, length in (("F3", 0.2), ("D3", 0.34))]
    return mixed((0.0, low[0]), (0.19, low[1]))


def page_turn():
    """A sheet of paper: it lifts, sweeps past and falls flat."""
    length = round(0.4 * RATE)
    position = numpy.linspace(0, 1, length)
    low, high = band_noise(7, 0.4, 1100, 800), band_noise(8, 0.4, 3600, 1900)
    flutter = 0.75 + 0.25 * numpy.sin(2 * numpy.pi * (14 * position + 5 * position**2))
    sweep = (low * (1 - position) + high * position) * numpy.sin(numpy.pi * position**0.75) ** 2 * flutter
    slap = band_noise(9, 0.06, 700, 600) * numpy.exp(-numpy.arange(round(0.06 * RATE)) / (0.012 * RATE))
    return mixed((0.0, sweep), (0.33, slap * 0.5))


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
        sound = numpy.concatenate([make(), silence(0.03)])
        # A tick is too short to be as loud as the others: it is limited by its peak.
        sound *= min(10 ** ((MOMENTARY - momentary(sound)) / 20), PEAK / abs(sound).max())
        for folder in THEMES:
            encode_mp3(sound, folder / name, 96)
        short = level(tone(note(TEST_NOTES[name]), 0.1, (1.0,), 0.01, 0.02), LOUDNESS)
        for folder in TEST_THEMES:
            encode_mp3(short, folder / name, 32)
        print(f"{name}: {len(sound) / RATE:.2f} s, {momentary(sound):.1f} LUFS, peak {20 * numpy.log10(abs(sound).max()):.1f} dB")


if __name__ == "__main__":
    main()
