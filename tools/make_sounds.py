#!/usr/bin/python3
"""Makes the five sounds of each of our themes: soft synthesised notes, matched in loudness and encoded with lame.

    make_sounds.py          writes them to the included themes and, a tenth of a second long, to the tests' themes
"""

import argparse
from pathlib import Path

import numpy

from synth import RATE, encode_mp3, envelope, level, momentary, note, silence, tone

ROOT = Path(__file__).resolve().parents[1]
THEMES = ROOT / "home/themes"
TEST_THEMES = (ROOT / "tests/homes/plain/themes/default", ROOT / "tests/homes/plain/themes/small")
LOUDNESS = -20.0  # of the tests' sounds: dB RMS over the audible part
MOMENTARY = -22.0  # LUFS of the loudest 400 ms, the same for all
PEAK = 0.4
SOFT = 0.006  # seconds in which every sound rises: no click


def bell(name, seconds):
    """A soft bell: a few slightly inharmonic partials, of which the high ones fade first."""
    partials = ((1.0, 1.0), (2.0, 0.5), (3.01, 0.22), (4.23, 0.1), (5.4, 0.05))
    length = round(seconds * RATE)
    time = numpy.arange(length) / RATE
    sound = sum(
        amount * numpy.sin(2 * numpy.pi * note(name) * ratio * time) * numpy.exp(-time * (3.0 + 2.2 * ratio))
        for ratio, amount in partials
    )
    return sound * envelope(length, SOFT, 0.03)


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
    return sound * envelope(len(time), SOFT, 0.01)


def band_noise(seed, seconds, middle, width):
    """Noise around a frequency in Hz."""
    length = round(seconds * RATE)
    spectrum = numpy.fft.rfft(numpy.random.default_rng(seed).standard_normal(length))
    frequency = numpy.fft.rfftfreq(length, 1 / RATE)
    sound = numpy.fft.irfft(spectrum * numpy.exp(-(((frequency - middle) / width) ** 2)), length)
    return sound / abs(sound).max()


def wooden(name, seconds):
    """A bar of wood over a tube, struck with a soft mallet."""
    time = numpy.arange(round(seconds * RATE)) / RATE
    sound = sum(
        amount * numpy.sin(2 * numpy.pi * note(name) * ratio * time) * numpy.exp(-time * decay)
        for ratio, amount, decay in ((1.0, 1.0, 7.0), (3.93, 0.16, 22.0), (9.2, 0.03, 50.0))
    )
    return sound * envelope(len(time), SOFT, 0.04)


def drop(start, end, seconds):
    """A drop of water: a sine that glides to another frequency in Hz and fades."""
    time = numpy.arange(round(seconds * RATE)) / RATE
    phase = numpy.cumsum(end + (start - end) * numpy.exp(-time / 0.03)) / RATE
    sound = numpy.sin(2 * numpy.pi * phase) + 0.12 * numpy.sin(4 * numpy.pi * phase)
    return sound * numpy.exp(-time * 4.5 / seconds) * envelope(len(time), SOFT, 0.02)


# "default": a cabinet of wood and brass --------------------------------------------------------------------------


def cabinet_charge():
    """Between two tracks: the arm comes down with a soft thud, and three bells rise over a quiet chord."""
    chord = sum(tone(note(name), 1.3, (1.0, 0.3, 0.1), 0.25, 0.7) for name in ("C3", "G3", "E4")) * 0.25
    thud = modes(92.0, (1, 1.5, 2.3), 22.0, 0.2) * 0.8
    return mixed((0.0, chord), (0.0, thud), (0.12, bell("G4", 0.8)), (0.3, bell("C5", 0.8)), (0.48, bell("E5", 0.95)))


def cabinet_coin():
    """A coin: it slides into the slot, bounces twice inside, and a bell confirms it."""
    disc = (1.0, 1.73, 2.33)
    parts = []
    for start, strength, pitch in ((0.0, 0.6, 1460.0), (0.085, 0.4, 1520.0), (0.142, 0.26, 1430.0)):
        parts.append((start, strength * modes(pitch, disc, 11.0, 0.3)))
    return mixed(*parts, (0.22, 1.5 * bell("B4", 0.5)), (0.3, 1.5 * bell("E5", 0.85)))


def cabinet_move():
    """A wooden tick."""
    return modes(620.0, (1, 2.6), 48.0, 0.11)


def cabinet_refusal():
    """A gentle refusal: two soft low notes, falling."""
    low = [tone(note(name), length, (1.0, 0.35, 0.2, 0.06), 0.012, 0.12) for name, length in (("F3", 0.2), ("D3", 0.34))]
    return mixed((0.0, low[0]), (0.19, low[1]))


def cabinet_page():
    """A sheet of paper: it lifts, sweeps past and falls flat."""
    length = round(0.4 * RATE)
    position = numpy.linspace(0, 1, length)
    low, high = band_noise(7, 0.4, 1100, 800), band_noise(8, 0.4, 3600, 1900)
    flutter = 0.75 + 0.25 * numpy.sin(2 * numpy.pi * (14 * position + 5 * position**2))
    sweep = (low * (1 - position) + high * position) * numpy.sin(numpy.pi * position**0.75) ** 2 * flutter
    slap = band_noise(9, 0.06, 700, 600) * numpy.exp(-numpy.arange(round(0.06 * RATE)) / (0.012 * RATE))
    return mixed((0.0, sweep), (0.33, slap * 0.5))


# "touch": wood, water and air ------------------------------------------------------------------------------------


def touch_charge():
    """Four wooden bars that climb over a soft chord."""
    chord = sum(tone(note(name), 1.25, (1.0, 0.2), 0.3, 0.7) for name in ("D3", "A3", "F#4")) * 0.22
    steps = ((0.05, "D4"), (0.19, "F#4"), (0.33, "A4"), (0.47, "D5"))
    return mixed((0.0, chord), *[(start, wooden(name, 0.75)) for start, name in steps])


def touch_coin():
    """Three drops that rise, and a bar that answers."""
    return mixed(
        (0.0, 0.7 * drop(420, 620, 0.16)),
        (0.1, 0.8 * drop(560, 830, 0.16)),
        (0.2, 0.9 * drop(740, 1100, 0.2)),
        (0.34, wooden("A5", 0.6)),
    )


def touch_move():
    """A small drop."""
    return drop(620, 400, 0.09)


def touch_refusal():
    """Two muted bars, a half tone apart."""
    muted = [wooden(name, 0.32) * numpy.exp(-numpy.arange(round(0.32 * RATE)) / (0.09 * RATE)) for name in ("Eb3", "D3")]
    return mixed((0.0, muted[0]), (0.17, muted[1]))


def touch_page():
    """A breath of air that passes."""
    length = round(0.36 * RATE)
    position = numpy.linspace(0, 1, length)
    low, high = band_noise(17, 0.36, 500, 350), band_noise(18, 0.36, 1900, 900)
    return (low * position + high * (1 - position)) * numpy.sin(numpy.pi * position**0.6) ** 2


# "wall": an electric piano, and the handling of records ------------------------------------------------------------


def reed(name, seconds):
    """A note of an electric piano: a warm sine with an overtone that fades at once, and a slow tremolo."""
    time = numpy.arange(round(seconds * RATE)) / RATE
    phase = 2 * numpy.pi * note(name) * time
    warm = numpy.sin(phase + 0.7 * numpy.exp(-time * 6) * numpy.sin(phase))
    bar = warm + 0.12 * numpy.sin(7 * phase) * numpy.exp(-time * 26)
    tremolo = 1 - 0.14 * (0.5 + 0.5 * numpy.sin(2 * numpy.pi * 4.6 * time))
    return bar * tremolo * numpy.exp(-time * 2.6) * envelope(len(time), SOFT, 0.08)


def wall_charge():
    """The needle comes down with a soft thud and a little dust, and a chord opens."""
    thud = modes(70.0, (1, 1.6), 26.0, 0.18) * 0.7
    dust = band_noise(23, 0.5, 1500, 900) * 0.05 * envelope(round(0.5 * RATE), 0.05, 0.3)
    notes = ((0.22, "D3"), (0.26, "A3"), (0.32, "C#4"), (0.4, "F#4"), (0.5, "E4"))
    return mixed((0.0, thud), (0.05, dust), *[(start, 0.5 * reed(name, 1.1)) for start, name in notes])


def wall_coin():
    """Two notes that rise, the second with its fifth."""
    return mixed((0.0, 0.8 * reed("E4", 0.4)), (0.13, reed("A4", 0.8)), (0.13, 0.5 * reed("E5", 0.8)))


def wall_move():
    """A fingertip on cardboard."""
    return modes(310.0, (1, 2.2), 60.0, 0.1)


def wall_refusal():
    """Two low notes, falling a minor third."""
    return mixed((0.0, reed("F3", 0.26)), (0.2, reed("D3", 0.42)))


def wall_page():
    """Records that are flipped in a bin: three soft flaps of cardboard, each a little lower."""
    parts = []
    for i, (start, middle) in enumerate(((0.0, 950), (0.1, 820), (0.21, 640))):
        flap = band_noise(31 + i, 0.2, middle, 420)
        time = numpy.arange(len(flap)) / RATE
        parts.append((start, (0.6 + 0.2 * i) * flap * numpy.exp(-time / 0.06) * envelope(len(flap), 0.01, 0.04)))
    return mixed(*parts)


NAMES = ("charge.mp3", "insertcoin.mp3", "move.mp3", "NoCredit.mp3", "PageTurn.mp3")
SETS = {
    "default": (cabinet_charge, cabinet_coin, cabinet_move, cabinet_refusal, cabinet_page),
    "touch": (touch_charge, touch_coin, touch_move, touch_refusal, touch_page),
    "wall": (wall_charge, wall_coin, wall_move, wall_refusal, wall_page),
}
# The tests tell their sounds apart by pitch.
TEST_NOTES = dict(zip(NAMES, ("C5", "D5", "E5", "F5", "G5")))


def main():
    argparse.ArgumentParser(description=__doc__.splitlines()[0]).parse_args()
    for theme, sounds in SETS.items():
        for name, make in zip(NAMES, sounds):
            sound = numpy.concatenate([make(), silence(0.03)])
            # A tick is too short to be as loud as the others: it is limited by its peak.
            sound *= min(10 ** ((MOMENTARY - momentary(sound)) / 20), PEAK / abs(sound).max())
            encode_mp3(sound, THEMES / theme / name, 96)
            peak = 20 * numpy.log10(abs(sound).max())
            print(f"{theme}/{name}: {len(sound) / RATE:.2f} s, {momentary(sound):.1f} LUFS, peak {peak:.1f} dB")
    for name, pitch in TEST_NOTES.items():
        short = level(tone(note(pitch), 0.1, (1.0,), 0.01, 0.02), LOUDNESS)
        for folder in TEST_THEMES:
            encode_mp3(short, folder / name, 32)


if __name__ == "__main__":
    main()
