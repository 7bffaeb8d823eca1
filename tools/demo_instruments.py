"""The pitched instruments of the demo library: each routine makes one note, mono, from its pitch, length and strength.

Pitches are MIDI numbers, lengths seconds, strengths 0 to 1. A stronger note is also brighter. Plucked and struck notes
ring out by themselves; a sustained note lasts as long as it is asked for. `note_of` keeps what it makes.
"""

from functools import lru_cache

import numpy

from synth import RATE

TABLE = 4096
CEILING = 15000  # Hz; partials above it are left out


def hertz(pitch):
    return 440.0 * 2 ** ((pitch - 69) / 12)


def noise(length, low, high, seed):
    """Noise between two frequencies in Hz, with soft edges, of RMS 1."""
    size = 1 << (length + 2047).bit_length()
    spectrum = numpy.fft.rfft(numpy.random.default_rng(seed).standard_normal(size))
    frequency = numpy.fft.rfftfreq(size, 1 / RATE)
    spectrum *= 1 / (1 + (low / numpy.maximum(frequency, 1)) ** 4) / (1 + (frequency / high) ** 4)
    sound = numpy.fft.irfft(spectrum, size)[:length]
    return sound / numpy.sqrt(numpy.mean(sound**2) + 1e-12)


def decaying(frequency, decay, length, phase=0.0):
    """A sine that decays by e in 1 / decay seconds. Powers of one complex number, in blocks: no sine per sample."""
    step = (-decay + 2j * numpy.pi * frequency) / RATE
    block = 512
    fine = numpy.exp(step * numpy.arange(block) + 1j * phase).astype(numpy.complex64)
    coarse = numpy.exp(step * block * numpy.arange(-(-length // block))).astype(numpy.complex64)
    return numpy.outer(coarse, fine).imag.ravel()[:length]


def rise(sound, seconds):
    """Fades in over so many seconds."""
    count = min(round(seconds * RATE), len(sound))
    sound[:count] *= 0.5 - 0.5 * numpy.cos(numpy.pi * numpy.arange(count) / max(count, 1))
    return sound


def fall(sound, seconds):
    """Fades out over so many seconds."""
    count = min(round(seconds * RATE), len(sound))
    sound[len(sound) - count :] *= 0.5 + 0.5 * numpy.cos(numpy.pi * numpy.arange(count) / max(count, 1))
    return sound


def even(sound):
    return sound / max(abs(sound).max(), 1e-9)


# Struck and plucked -----------------------------------------------------------------------------------------------


def piano(pitch, seconds, strength, detune=0.35, bright=1.0):
    """Stiff strings in pairs, a hammer at an eighth of their length, and the knock of the key."""
    base = hertz(pitch)
    slow = 0.35 * 2 ** ((pitch - 48) / 15)
    length = round(min(seconds, 5.5 / slow + 0.4) * RATE)
    stiff = 0.00028 * 2 ** ((pitch - 60) / 9)
    roll = (0.36 - 0.2 * strength) / bright * max(base / 262, 0.35) ** 0.35
    sound = numpy.zeros(length)
    for n in range(1, 36):
        frequency = n * base * (1 + stiff * n * n) ** 0.5
        if frequency > CEILING:
            break
        amount = numpy.exp(-roll * (n - 1)) * (0.25 + abs(numpy.sin(numpy.pi * n / 7.6))) * (0.7 if n == 1 else 1)
        if amount < 0.002:
            continue
        fast = slow * (1.7 + 0.55 * n**0.9)
        bend = 2 ** (detune / 1200)
        sound += amount * 0.62 * decaying(frequency / bend, fast, length, n)
        sound += amount * 0.38 * decaying(frequency * bend**1.7, fast * 0.42, length, n * 1.3)
    knock = noise(round(0.05 * RATE), 150, 2600, pitch) * numpy.exp(-numpy.arange(round(0.05 * RATE)) / (0.009 * RATE))
    sound = even(sound)
    sound[: len(knock)] += knock[:length] * (0.02 + 0.05 * strength)
    return rise(sound, 0.0012)


def tavern_piano(pitch, seconds, strength):
    """An upright that has not been tuned for years: strings far apart and hard hammers."""
    return piano(pitch, seconds, strength, detune=5.5, bright=1.55)


def plucked(pitch, seconds, strength, place, tilt, slow, damp, finger):
    """A string plucked at `place` of its length; `damp` makes high partials fade faster."""
    base = hertz(pitch)
    length = round(min(seconds, 5.0 / slow + 0.2) * RATE)
    sound = numpy.zeros(length)
    for n in range(1, 60):
        frequency = n * base * (1 + 0.00006 * n * n)
        amount = abs(numpy.sin(numpy.pi * n * place)) / n**tilt * (0.55 + 0.45 * strength) ** (n * 0.12)
        if frequency > CEILING:
            break
        if amount > 0.0015:
            sound += amount * decaying(frequency, slow + damp * (frequency / 1000) ** 1.3, length, 1.9 * n)
    sound = even(sound)
    click = round(0.02 * RATE)
    sound[:click] += (
        noise(click, 1200, 7000, pitch)[: len(sound)] * numpy.exp(-numpy.arange(click) / (0.003 * RATE))[: len(sound)] * finger
    )
    return rise(sound, 0.0015)


def nylon_guitar(pitch, seconds, strength):
    return plucked(pitch, seconds, strength, 0.23, 1.15, 1.5 * 2 ** ((pitch - 60) / 24), 1.9, 0.05)


def steel_guitar(pitch, seconds, strength):
    return plucked(pitch, seconds, strength, 0.14, 0.95, 1.2 * 2 ** ((pitch - 60) / 24), 0.9, 0.07)


def electric_guitar(pitch, seconds, strength):
    return plucked(pitch, seconds, strength, 0.11, 0.8, 1.1 * 2 ** ((pitch - 60) / 26), 0.75, 0.09)


def muted_guitar(pitch, seconds, strength):
    """A chop: the hand is back on the strings at once."""
    return plucked(pitch, seconds, strength, 0.12, 0.85, 7.0, 2.5, 0.16)


def banjo(pitch, seconds, strength):
    return plucked(pitch, seconds, strength, 0.08, 0.7, 5.0 * 2 ** ((pitch - 60) / 30), 1.5, 0.16)


def upright_bass(pitch, seconds, strength):
    sound = plucked(pitch, seconds, strength, 0.3, 1.35, 1.9, 3.2, 0.03)
    thump = round(0.09 * RATE)
    sound[:thump] += 0.25 * decaying(hertz(pitch) * 0.5 + 38, 28.0, thump)[: len(sound)]
    return sound


def electric_bass(pitch, seconds, strength):
    return plucked(pitch, seconds, strength, 0.19, 1.05, 1.1, 2.4, 0.06)


def harp(pitch, seconds, strength):
    return plucked(pitch, seconds, strength, 0.32, 1.25, 1.1 * 2 ** ((pitch - 60) / 22), 0.9, 0.02)


def bars(pitch, length, partials, seed=0):
    """The sum of decaying partials given as (ratio, strength, decay)."""
    base = hertz(pitch)
    used = [p for p in partials if base * p[0] < CEILING]
    return sum(amount * decaying(base * ratio, decay, length, seed + ratio) for ratio, amount, decay in used)


def vibraphone(pitch, seconds, strength):
    """An aluminium bar over a tube; its motor lets the tone swell five times a second."""
    length = round(min(seconds, 3.6) * RATE)
    hard = 0.06 + 0.2 * strength
    sound = bars(pitch, length, ((1, 1.0, 1.1), (1.003, 0.2, 1.3), (4.01, hard, 4.0), (10.1, hard * 0.5, 13.0)))
    return rise(even(sound * (1 - 0.22 * numpy.cos(2 * numpy.pi * 5.1 * numpy.arange(length) / RATE))), 0.002)


def glockenspiel(pitch, seconds, strength):
    length = round(min(seconds, 2.6) * RATE)
    return rise(even(bars(pitch, length, ((1, 1.0, 2.2), (2.71, 0.35, 4.2), (5.15, 0.22, 8.0), (8.43, 0.1, 14.0)))), 0.001)


def music_box(pitch, seconds, strength):
    """A tine of steel: nearly pure, with a high ping, a tick, and its neighbour that answers slightly off pitch."""
    length = round(min(seconds, 3.4) * RATE)
    slow = 1.25 * 2 ** ((pitch - 72) / 20)
    high = 0.12 + 0.16 * strength
    partials = (
        (1, 1.0, slow),
        (1.0016, 0.45, slow * 0.8),
        (2.0, 0.2, slow * 2),
        (3.98, high, slow * 4),
        (6.27, high, slow * 6),
        (9.1, high * 0.6, 16),
    )
    sound = even(bars(pitch, length, partials, pitch))
    tick = round(0.012 * RATE)
    sound[:tick] += 0.07 * noise(tick, 2500, 9000, pitch) * numpy.exp(-numpy.arange(tick) / (0.0025 * RATE))
    return rise(sound, 0.0012)


def timpani(pitch, seconds, strength):
    length = round(1.8 * RATE)
    sound = bars(pitch, length, ((1, 1.0, 2.4), (1.504, 0.6, 3.4), (1.99, 0.4, 4.2), (2.44, 0.25, 6.0), (2.89, 0.15, 8.0)))
    sound[: round(0.04 * RATE)] += (
        0.3 * noise(round(0.04 * RATE), 60, 900, 3) * numpy.exp(-numpy.arange(round(0.04 * RATE)) / 400)
    )
    return rise(even(sound), 0.002)


# Sustained --------------------------------------------------------------------------------------------------------


@lru_cache(maxsize=2000)
def table(base, shape):
    """One period with the harmonics of a shape (a routine of the harmonic's number), for notes around this frequency."""
    spectrum = numpy.zeros(TABLE // 2 + 1, complex)
    phases = numpy.random.default_rng(5).uniform(0, 2 * numpy.pi, TABLE)
    for n in range(1, min(int(CEILING / base), 400) + 1):
        spectrum[n] = shape(n) * numpy.exp(1j * phases[n]) * (1 if CEILING - base * n > 2000 else 0.5)
    period = numpy.fft.irfft(spectrum)
    period /= numpy.sqrt(numpy.mean(period**2)) + 1e-12
    return numpy.append(period, period[0]).astype(numpy.float32)


@lru_cache(maxsize=None)
def power(tilt, odd=1.0, hump=0.0, at=6):
    """Harmonics that fall with a power of their number; the even ones scaled, and a hump around one of them."""
    return lambda n: n**-tilt * (odd if n % 2 == 0 else 1) * (1 + hump * numpy.exp(-(((n - at) / (at * 0.4)) ** 2)))


def read_table(period, phase):
    at = phase * TABLE
    index = at.astype(numpy.int32)
    part = (at - index).astype(numpy.float32)
    return period[index] + (period[index + 1] - period[index]) * part


def glide(pitch, length, seed, vibrato, rate, delay, scoop):
    """The phase in periods of a played tone: it may start below its pitch, wavers a little, and gets a vibrato."""
    time = numpy.arange(length) / RATE
    rng = numpy.random.default_rng(seed)
    swell = numpy.clip((time - delay) / 0.35, 0, 1)
    cents = vibrato * swell * numpy.sin(2 * numpy.pi * rate * time + rng.uniform(0, 1))
    cents += 2.5 * numpy.sin(2 * numpy.pi * 0.9 * time + rng.uniform(0, 6)) - scoop * numpy.exp(-time / 0.045)
    phase = numpy.cumsum(hertz(pitch) * 2 ** (cents / 1200)) / RATE + rng.random()
    return phase - numpy.floor(phase)


def sounded(
    pitch,
    seconds,
    strength,
    soft,
    loud,
    attack,
    opening,
    vibrato=9,
    rate=5.3,
    delay=0.22,
    scoop=0,
    air=(0, 1000, 4000),
    cents=(0,),
):
    """A tone between two spectra, from soft to loud while it starts; `opening` is how far, how fast and how far back.

    `cents` lists the voices of a section, `air` the amount and band of breath, bow or reed noise."""
    length = max(round(seconds * RATE), 64)
    time = numpy.arange(length) / RATE
    far, fast, back = opening
    bright = (far * (0.55 + 0.45 * strength)) * (1 - numpy.exp(-time / fast)) * (back + (1 - back) * numpy.exp(-time / 0.28))
    bright = numpy.clip(bright, 0, 1).astype(numpy.float32)
    base = hertz(round(pitch))
    dull, full = table(base, soft), table(base, loud)
    sound = numpy.zeros(length, numpy.float32)
    for voice, offset in enumerate(cents):
        phase = glide(
            pitch + offset / 100,
            length,
            voice * 131 + pitch,
            vibrato,
            rate * (1 + 0.07 * voice),
            delay * (1 + 0.4 * voice),
            scoop,
        )
        sound += read_table(dull, phase) * (1 - bright) + read_table(full, phase) * bright
    sound = sound / numpy.sqrt(len(cents)) * (0.55 + 0.45 * bright)
    amount, low, high = air
    if amount:
        puff = amount * (0.35 + numpy.exp(-time / 0.05))
        sound = sound + puff * noise(length, low, high, pitch)
    return rise(sound * 0.35, attack)


def trumpet(pitch, seconds, strength):
    return sounded(
        pitch, seconds, strength, power(1.5), power(0.42), 0.022, (1.0, 0.035, 0.72), 13, 5.4, 0.28, 22, (0.035, 1500, 7000)
    )


def trombone(pitch, seconds, strength):
    return sounded(
        pitch, seconds, strength, power(1.6), power(0.55), 0.03, (0.95, 0.05, 0.7), 10, 4.9, 0.3, 35, (0.03, 700, 5000)
    )


def tuba(pitch, seconds, strength):
    return sounded(
        pitch, seconds, strength, power(2.0), power(0.95), 0.028, (0.8, 0.05, 0.6), 3, 4.5, 0.4, 12, (0.035, 300, 2500)
    )


def horns(pitch, seconds, strength):
    """A section of three for chords."""
    return sounded(
        pitch,
        seconds,
        strength,
        power(1.7),
        power(0.62),
        0.024,
        (0.9, 0.04, 0.6),
        6,
        5.1,
        0.3,
        14,
        (0.03, 1000, 6000),
        (-5, 0, 6),
    )


def clarinet(pitch, seconds, strength):
    return sounded(
        pitch,
        seconds,
        strength,
        power(1.4, 0.05),
        power(0.75, 0.35),
        0.025,
        (0.85, 0.06, 0.8),
        8,
        5.0,
        0.3,
        10,
        (0.03, 1500, 6000),
    )


def flute(pitch, seconds, strength):
    return sounded(pitch, seconds, strength, power(2.4), power(1.5), 0.04, (0.9, 0.09, 0.8), 11, 5.0, 0.2, 8, (0.13, 1800, 8000))


def whistle(pitch, seconds, strength):
    """A tin whistle: nearly a sine, with a chiff and much breath."""
    return sounded(
        pitch, seconds, strength, power(2.6), power(1.35, 1.3), 0.012, (0.9, 0.03, 0.8), 10, 5.6, 0.2, 20, (0.16, 2500, 9500)
    )


def violin(pitch, seconds, strength):
    return sounded(
        pitch, seconds, strength, power(1.35), power(0.72), 0.05, (0.9, 0.07, 0.85), 15, 5.7, 0.16, 14, (0.06, 2500, 9000)
    )


def fiddle(pitch, seconds, strength):
    """The same instrument with a short, biting bow."""
    return sounded(
        pitch, seconds, strength, power(1.2), power(0.6), 0.018, (1.0, 0.025, 0.75), 9, 6.0, 0.2, 24, (0.1, 2500, 9500), (0, 3)
    )


def strings(pitch, seconds, strength):
    """A section of five."""
    return sounded(
        pitch,
        seconds,
        strength,
        power(1.35),
        power(0.78),
        0.085,
        (0.85, 0.12, 0.9),
        11,
        5.3,
        0.15,
        6,
        (0.07, 2500, 9000),
        (-9, -4, 0, 5, 10),
    )


def cello(pitch, seconds, strength):
    return sounded(
        pitch, seconds, strength, power(1.4), power(0.85), 0.05, (0.9, 0.08, 0.85), 12, 5.1, 0.2, 10, (0.05, 1500, 7000), (0, 4)
    )


def pizzicato(pitch, seconds, strength):
    return plucked(pitch, min(seconds + 0.4, 0.9), strength, 0.27, 1.1, 6.5, 3.0, 0.05)


def accordion(pitch, seconds, strength):
    """Three reeds of which two are tuned apart, so that they beat."""
    return sounded(
        pitch,
        seconds,
        strength,
        power(0.95, 0.8),
        power(0.55, 0.85),
        0.03,
        (0.9, 0.05, 0.9),
        0,
        5,
        0.3,
        0,
        (0.03, 2000, 9000),
        (-13, 0, 12),
    )


def bandoneon(pitch, seconds, strength):
    return sounded(
        pitch,
        seconds,
        strength,
        power(1.1, 0.75),
        power(0.6, 0.8),
        0.022,
        (1.0, 0.04, 0.75),
        0,
        5,
        0.3,
        0,
        (0.04, 2000, 8000),
        (-3, 1200),
    )


def harmonica(pitch, seconds, strength):
    """A blown reed: it starts below its pitch, and a hand opens and closes in front of it."""
    sound = sounded(
        pitch,
        seconds,
        strength,
        power(1.15, 0.9),
        power(0.5, 0.9, 0.8, 4),
        0.03,
        (1.0, 0.07, 0.8),
        16,
        5.6,
        0.2,
        55,
        (0.07, 1800, 8000),
        (0, 4),
    )
    time = numpy.arange(len(sound)) / RATE
    return sound * (1 - 0.25 * numpy.clip(time / 0.4, 0, 1) * (0.5 + 0.5 * numpy.sin(2 * numpy.pi * 5.6 * time)))


def theatre_organ(pitch, seconds, strength):
    """Flutes, strings and a high mixture under one tremulant."""
    length = max(round(seconds * RATE), 64)
    full = seconds
    sound = sounded(pitch, full, strength, power(2.2), power(1.6), 0.03, (1.0, 0.05, 1.0), 14, 6.2, 0.0, 0, (0.02, 2000, 8000))
    sound = sound + 0.45 * sounded(pitch + 12, full, strength, power(1.2), power(0.8), 0.03, (1.0, 0.05, 1.0), 12, 6.2, 0.0, 0)
    sound = sound + 0.22 * sounded(pitch + 19, full, strength, power(1.8), power(1.3), 0.02, (1.0, 0.03, 1.0), 12, 6.2, 0.0, 0)
    sound = sound + 0.16 * sounded(pitch + 24, full, strength, power(1.0), power(0.8), 0.015, (1.0, 0.03, 1.0), 10, 6.2, 0.0, 0)
    chiff = noise(length, 2500, 9000, pitch) * numpy.exp(-numpy.arange(length) / (0.02 * RATE)) * 0.04
    return sound * (1 - 0.1 * numpy.sin(2 * numpy.pi * 6.2 * numpy.arange(length) / RATE)) + chiff


def pedal_organ(pitch, seconds, strength):
    return sounded(pitch, seconds, strength, power(1.9), power(1.3), 0.03, (0.8, 0.05, 1.0), 4, 6.2, 0.0, 0)


def combo_organ(pitch, seconds, strength):
    """A transistor organ of the sixties."""
    return sounded(pitch, seconds, strength, power(0.9, 0.6), power(0.7, 0.6), 0.006, (0.8, 0.01, 1.0), 7, 6.5, 0.0, 0)


def saw_lead(pitch, seconds, strength):
    return sounded(
        pitch, seconds, strength, power(1.5), power(0.95), 0.008, (1.0, 0.02, 0.6), 10, 5.2, 0.25, 8, (0, 1, 1), (-8, 0, 8)
    )


def warm_pad(pitch, seconds, strength):
    return sounded(
        pitch, seconds, strength, power(1.7), power(1.05), 0.18, (0.8, 0.5, 0.9), 5, 0.8, 0.0, 0, (0, 1, 1), (-11, -4, 4, 11)
    )


def quarter_pulse(n):
    return abs(numpy.sin(numpy.pi * n * 0.25)) / n


def half_pulse(n):
    return abs(numpy.sin(numpy.pi * n / 2)) / n


def pulse_lead(pitch, seconds, strength):
    """A pulse wave of an early sound chip."""
    sound = sounded(pitch, seconds, strength, quarter_pulse, half_pulse, 0.002, (0.6, 0.05, 0.6), 12, 6.0, 0.2, 0)
    return sound * (0.6 + 0.4 * numpy.exp(-numpy.arange(len(sound)) / (0.12 * RATE)))


def arpeggio_synth(pitch, seconds, strength):
    sound = sounded(
        pitch, min(seconds, 1.2), strength, power(2.0), power(0.9), 0.003, (1.0, 0.004, 0.3), 0, 5, 1, 0, (0, 1, 1), (-6, 6)
    )
    return sound * numpy.exp(-numpy.arange(len(sound)) / (0.16 * RATE))


def synth_bass(pitch, seconds, strength):
    sound = sounded(pitch, seconds, strength, power(1.9), power(0.9), 0.004, (1.0, 0.008, 0.25), 0, 5, 1, 0, (0, 1, 1), (0, 5))
    return sound * (0.5 + 0.5 * numpy.exp(-numpy.arange(len(sound)) / (0.18 * RATE)))


RINGING = {piano, tavern_piano, nylon_guitar, steel_guitar, electric_guitar, muted_guitar, banjo, upright_bass,
           electric_bass, harp, vibraphone, glockenspiel, music_box, timpani, pizzicato, arpeggio_synth}  # fmt: skip
LENGTHS = (0.2, 0.4, 0.8, 1.6, 3.2, 6.4)
RINGING_LENGTHS = (0.7, 1.5, 3.0, 8.0)
LAYERS = (0.35, 0.65, 1.0)


@lru_cache(maxsize=400)
def made(make, pitch, seconds, strength):
    return make(pitch, seconds, strength).astype(numpy.float32)


def note_of(make, pitch, seconds, strength, release):
    """A note of an instrument, cut to its length with a release."""
    layer = min(LAYERS, key=lambda each: abs(each - strength))
    whole = seconds + release
    lengths = RINGING_LENGTHS if make in RINGING else LENGTHS
    longest = next((length for length in lengths if length >= whole), whole)
    sound = made(make, pitch, longest, layer)[: round(whole * RATE)].copy()
    return fall(sound, release)
