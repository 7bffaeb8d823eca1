"""The drums of the demo library: each routine makes one stroke, mono."""

from functools import lru_cache

import numpy

from demo_instruments import decaying, even, noise, rise
from synth import RATE


def fade(length, seconds):
    return numpy.exp(-numpy.arange(length) / (seconds * RATE))


def sweep(start, end, fast, length):
    """A sine that falls from one frequency to another."""
    time = numpy.arange(length) / RATE
    return numpy.sin(2 * numpy.pi * numpy.cumsum(end + (start - end) * numpy.exp(-time / fast)) / RATE)


def cymbal(length, decay, low, high, ratios, base, seed):
    """Metal: many inharmonic partials and noise that loses its top as it fades."""
    metal = sum(decaying(base * ratio, 1 / decay, length, i) for i, ratio in enumerate(ratios))
    return 0.3 * even(metal) + 0.35 * noise(length, low, high, seed) * fade(length, decay)


METAL = (1.0, 1.34, 1.71, 2.13, 2.67, 3.19, 3.83, 4.41, 5.07, 5.63)


def kick(seed):
    n = round(0.38 * RATE)
    body = sweep(165, 48, 0.028, n) * fade(n, 0.13)
    return even(body + 0.16 * noise(n, 900, 5000, seed) * fade(n, 0.004))


def soft_kick(seed):
    n = round(0.42 * RATE)
    return even(sweep(105, 52, 0.03, n) * fade(n, 0.12) + 0.05 * noise(n, 300, 2200, seed) * fade(n, 0.006))


def bass_drum(seed):
    n = round(0.8 * RATE)
    return even(sweep(95, 51, 0.05, n) * fade(n, 0.2) + 0.12 * noise(n, 80, 1200, seed) * fade(n, 0.02))


def snare(seed):
    n = round(0.32 * RATE)
    head = sweep(260, 185, 0.01, n) * fade(n, 0.06) + 0.5 * decaying(331, 24, n)
    wires = noise(n, 1700, 9500, seed) * fade(n, 0.075) + 0.5 * noise(n, 4000, 12000, seed + 9) * fade(n, 0.03)
    return even(0.75 * head + 0.42 * wires)


def field_snare(seed):
    """A marching drum: high, dry and hard."""
    n = round(0.22 * RATE)
    head = sweep(380, 262, 0.008, n) * fade(n, 0.035)
    return even(0.6 * head + 0.5 * noise(n, 2200, 11000, seed) * fade(n, 0.05))


def brush_tap(seed):
    n = round(0.2 * RATE)
    return even(noise(n, 1300, 8000, seed) * fade(n, 0.045) + 0.35 * sweep(240, 190, 0.01, n) * fade(n, 0.05))


def brush_sweep(seed):
    n = round(0.36 * RATE)
    return even(noise(n, 2200, 9000, seed) * numpy.sin(numpy.pi * numpy.linspace(0, 1, n)) ** 2)


def rim(seed):
    n = round(0.1 * RATE)
    return even(decaying(1680, 75, n) + 0.7 * decaying(447, 45, n) + 0.25 * noise(n, 2000, 9000, seed) * fade(n, 0.004))


def hat(seed):
    n = round(0.12 * RATE)
    return even(cymbal(n, 0.025, 6500, 15000, METAL, 3100, seed))


def open_hat(seed):
    n = round(0.5 * RATE)
    return even(cymbal(n, 0.14, 5500, 15000, METAL, 2900, seed))


def ride(seed):
    n = round(1.1 * RATE)
    ping = decaying(3470, 14, n) + 0.6 * decaying(5210, 20, n) + 0.3 * decaying(1290, 9, n)
    return even(0.35 * ping + cymbal(n, 0.27, 4200, 14000, METAL, 2150, seed))


def crash(seed):
    n = round(2.2 * RATE)
    return rise(even(cymbal(n, 0.55, 2600, 14000, METAL, 1480, seed)), 0.003)


def clash(seed):
    """Two hand cymbals."""
    n = round(1.3 * RATE)
    return rise(even(cymbal(n, 0.3, 2300, 13000, METAL, 1150, seed)), 0.006)


def tom(frequency):
    def stroke(seed):
        n = round(0.5 * RATE)
        return even(sweep(frequency * 1.5, frequency, 0.03, n) * fade(n, 0.13) + 0.08 * noise(n, 300, 4000, seed) * fade(n, 0.01))

    return stroke


def conga(seed):
    n = round(0.3 * RATE)
    return even(sweep(225, 198, 0.02, n) * fade(n, 0.09) + 0.12 * noise(n, 500, 4500, seed) * fade(n, 0.006))


def shaker(seed):
    n = round(0.11 * RATE)
    return even(noise(n, 4500, 12000, seed) * numpy.sin(numpy.pi * numpy.linspace(0, 1, n) ** 0.7) ** 2)


def tambourine(seed):
    n = round(0.28 * RATE)
    jingles = sum(decaying(f, 22, n, f) for f in (5230, 6470, 7910, 9350))
    return even(0.25 * even(jingles) + 0.3 * noise(n, 5000, 13000, seed) * fade(n, 0.06))


def clap(seed):
    n = round(0.3 * RATE)
    sound = numpy.zeros(n)
    for start in (0, 0.011, 0.019, 0.03):
        at = round(start * RATE)
        sound[at:] += noise(n - at, 900, 6000, seed + at) * fade(n - at, 0.008 if start < 0.03 else 0.06)
    return even(sound)


def woodblock(seed):
    n = round(0.14 * RATE)
    return even(decaying(1130, 48, n) + 0.5 * decaying(1790, 62, n) + 0.1 * noise(n, 1500, 6000, seed) * fade(n, 0.004))


def bodhran(seed):
    n = round(0.35 * RATE)
    return even(sweep(128, 84, 0.03, n) * fade(n, 0.1) + 0.14 * noise(n, 400, 3500, seed) * fade(n, 0.008))


def triangle(seed):
    n = round(1.4 * RATE)
    return rise(even(sum(decaying(f, 3.5, n, f) / i for i, f in enumerate((4180, 6330, 8870, 11200), 1))), 0.001)


def chip_noise(seed):
    n = round(0.13 * RATE)
    held = numpy.repeat(numpy.random.default_rng(seed).choice((-1.0, 1.0), n // 3 + 1), 3)[:n]
    return even(held * fade(n, 0.035))


DRUMS = {
    "kick": (kick, 0.95, 0.0), "soft kick": (soft_kick, 0.75, 0.0), "bass drum": (bass_drum, 0.9, -0.05),
    "snare": (snare, 0.55, 0.06), "field snare": (field_snare, 0.4, 0.1), "brush": (brush_tap, 0.32, 0.1),
    "sweep": (brush_sweep, 0.11, 0.15), "rim": (rim, 0.34, 0.18), "hat": (hat, 0.2, -0.3),
    "open hat": (open_hat, 0.17, -0.3), "ride": (ride, 0.17, 0.34), "crash": (crash, 0.26, 0.28),
    "clash": (clash, 0.3, -0.2), "high tom": (tom(190), 0.5, -0.2), "tom": (tom(140), 0.55, 0.1),
    "low tom": (tom(95), 0.6, 0.35), "conga": (conga, 0.34, -0.32), "shaker": (shaker, 0.14, 0.36),
    "tambourine": (tambourine, 0.16, 0.3), "clap": (clap, 0.34, 0.0), "woodblock": (woodblock, 0.24, -0.28),
    "bodhran": (bodhran, 0.6, -0.1), "triangle": (triangle, 0.1, 0.4), "chip": (chip_noise, 0.22, 0.0),
}  # fmt: skip


@lru_cache(maxsize=None)
def stroke(name, take):
    """One of three takes of a stroke, its gain and its place between left (-1) and right (1)."""
    make, gain, pan = DRUMS[name]
    return make(len(name) * 17 + take).astype(numpy.float32), gain, pan
