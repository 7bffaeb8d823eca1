"""The mixing desk of the demo library: stereo parts, rooms, and a master of even loudness."""

from functools import lru_cache

import numpy

from demo_drums import stroke
from demo_instruments import note_of
from synth import RATE, k_weight

LOUDNESS = -16.0  # LUFS, integrated
CEILING = 10 ** (-3.2 / 20)  # sample peak; encoders and the true peak add up to two decibels
BRIGHTEST = 10 ** (-15.5 / 10)
AUDIBLE = 10 ** (-50 / 20)


def quick(length):
    """The next length of which the Fourier transform is quick: only the factors 2, 3 and 5."""
    best = 1 << (length - 1).bit_length()
    for five in (1, 5, 25, 125):
        for three in (1, 3, 9, 27):
            size = five * three
            best = min(best, size << max((-(-length // size) - 1).bit_length(), 0))
    return best


@lru_cache(maxsize=2)
def frequencies(size):
    return numpy.maximum(numpy.fft.rfftfreq(size, 1 / RATE), 1.0)


@lru_cache(maxsize=2)
def weights(size):
    """The K weighting of loudness for a transform of this size."""
    return k_weight(frequencies(size))


def curve(size, bands, low=0.0, high=0.0):
    """An equaliser: `bands` are (Hz, octaves wide, decibels); `low` and `high` cut below and above."""
    frequency = frequencies(size)
    octave = numpy.log2(frequency)
    gain = numpy.zeros(len(frequency))
    for middle, wide, decibels in bands:
        gain += decibels * numpy.exp(-(((octave - numpy.log2(middle)) / wide) ** 2))
    result = 10 ** (gain / 20)
    if low:
        result /= 1 + (low / frequency) ** 4
    if high:
        result /= 1 + (frequency / high) ** 4
    return result


def panned(pan):
    """Gains of equal power for the left and the right."""
    angle = (pan + 1) * numpy.pi / 4
    return numpy.cos(angle), numpy.sin(angle)


class Part:
    """The notes of one player, who is a Voice of a style."""

    def __init__(self, voice):
        self.voice, self.events = voice, []
        self.level, self.send, self.bands, self.low, self.high = voice.level, voice.send, voice.bands, voice.low, voice.high

    def play(self, start, seconds, pitch, strength):
        self.events.append((start, seconds, pitch, strength))

    def rendered(self, length):
        """One or two sides, not yet equalised; an instrument whose pitches all come from one place is panned at the end."""
        voice = self.voice
        track = numpy.zeros((2 if voice.wide else 1, length), numpy.float32)
        for start, seconds, pitch, strength in self.events:
            sound = note_of(voice.make, pitch, seconds, strength, voice.release)
            at = max(round(start * RATE), 0)
            sound = sound[: max(length - at, 0)] * strength
            sides = panned(numpy.clip(voice.pan + voice.wide * (pitch - 62) / 24, -0.85, 0.85)) if voice.wide else (1.0,)
            for side, gain in zip(track, sides):
                side[at : at + len(sound)] += gain * sound
        if len(track) == 1:
            track = numpy.outer(panned(voice.pan), track[0]).astype(numpy.float32) if voice.effect else track
        return voice.effect(track) if voice.effect else track

    def sides(self, spectrum):
        """Left and right of a spectrum of `rendered`."""
        if len(spectrum) == 2:
            return spectrum
        left, right = panned(self.voice.pan)
        return left * spectrum[0], right * spectrum[0]


class Kit:
    """The drummer."""

    def __init__(self, level, send=0.12):
        self.level, self.send, self.events = level, send, []
        self.bands, self.low, self.high = (), 32.0, 0.0

    def hit(self, start, name, strength):
        self.events.append((start, name, strength))

    def rendered(self, length):
        track = numpy.zeros((2, length), numpy.float32)
        for number, (start, name, strength) in enumerate(self.events):
            sound, gain, pan = stroke(name, number % 3)
            at = max(round(start * RATE), 0)
            sound = sound[: max(length - at, 0)] * (strength * gain)
            left, right = panned(pan)
            track[0, at : at + len(sound)] += left * sound
            track[1, at : at + len(sound)] += right * sound
        return track

    def sides(self, spectrum):
        return spectrum


def tremolo(rate, depth):
    """Both sides swell together."""

    def effect(track):
        time = numpy.arange(track.shape[1]) / RATE
        return track * (1 - depth * (0.5 + 0.5 * numpy.sin(2 * numpy.pi * rate * time))).astype(numpy.float32)

    return effect


def driven(amount):
    """A warm amplifier."""

    def effect(track):
        return numpy.tanh(track * amount)

    return effect


def echo(seconds, amount):
    """Repeats that change sides."""

    def effect(track):
        step = round(seconds * RATE)
        wet = track.copy()
        level = amount
        for turn in range(1, 4):
            late = track[:, : max(track.shape[1] - step * turn, 0)]
            wet[:, step * turn :] += level * (late if turn % 2 == 0 else late[::-1])
            level *= amount
        return wet

    return effect


def hall(seconds, bright, seed, early=0.012):
    """The answer of a room on both sides: early reflections, then noise of which the top fades first."""
    length = round(min(seconds * 1.15, 2.6) * RATE)
    time = numpy.arange(length) / RATE
    rng = numpy.random.default_rng(seed)
    sides = []
    shared = rng.standard_normal(length)
    for _ in range(2):
        raw = 0.45 * shared + 0.9 * rng.standard_normal(length)
        spectrum = numpy.fft.rfft(raw)
        frequency = numpy.fft.rfftfreq(length, 1 / RATE)
        side = numpy.zeros(length)
        for low, high, factor in ((60, 600, 1.0), (600, 2500, 0.85), (2500, 6000, 0.6), (6000, 12000, 0.4 * bright)):
            band = numpy.fft.irfft(spectrum * ((frequency >= low) & (frequency < high)), length)
            side += band * numpy.exp(-6.9 * time / (seconds * factor)) * (bright if low > 2000 else 1)
        side[: round(early * RATE)] = 0
        for _ in range(7):
            side[round(rng.uniform(early * 0.5, 0.07) * RATE)] += rng.choice((-1, 1)) * rng.uniform(4, 9)
        sides.append(side / numpy.sqrt(numpy.sum(side**2)))
    return numpy.array(sides)


def spring(seed):
    """The springs of a guitar amplifier: every echo is a chirp, because high tones take longer."""
    length = round(1.9 * RATE)
    sides = []
    for side in range(2):
        total = numpy.zeros(length)
        for turn in range(1, 14):
            size = round(0.05 * RATE) + turn * 260
            time = numpy.arange(size) / size
            chirp = numpy.sin(2 * numpy.pi * numpy.cumsum(3600 * (1 - time) ** 0.6 + 180) / RATE + side) * numpy.hanning(size)
            at = round((0.036 + 0.003 * side) * turn * RATE) + seed
            part = chirp[: max(length - at, 0)]
            total[at : at + len(part)] += part * (-0.72) ** turn
        sides.append(total / numpy.sqrt(numpy.sum(total**2)))
    return numpy.array(sides)


def gated(energy):
    """Loudness in LUFS from the mean squares of 400 ms blocks, with both gates of EBU R128."""
    energy = numpy.maximum(energy, 1e-12)
    loud = energy[-0.691 + 10 * numpy.log10(energy) > -70]
    return -0.691 + 10 * numpy.log10(numpy.mean(loud[loud > numpy.mean(loud) * 0.1]))


def block_means(sides):
    """Mean squares in 400 ms blocks that overlap by three quarters, both sides added."""
    total = numpy.concatenate([[0.0], numpy.cumsum(sum(numpy.square(side, dtype=float) for side in sides))])
    window, step = round(0.4 * RATE), round(0.1 * RATE)
    starts = numpy.arange(0, len(total) - 1 - window, step)
    return (total[starts + window] - total[starts]) / window


def loudness_of(spectrum, size, length):
    """Integrated loudness in LUFS of stereo sound, given as its spectrum."""
    return gated(block_means([numpy.fft.irfft(side * weights(size), size)[:length] for side in spectrum]))


def integrated(sound):
    """Integrated loudness in LUFS of stereo sound, as EBU R128 defines it."""
    size = quick(sound.shape[1] + RATE // 2)
    return loudness_of(numpy.fft.rfft(sound, size), size, sound.shape[1])


def largest_near(values, reach):
    """The largest value within `reach` samples on both sides."""
    out, have = values.copy(), 1
    while have < 2 * reach + 1:
        step = min(have, 2 * reach + 1 - have)
        out[: len(out) - step] = numpy.maximum(out[: len(out) - step], out[step:])
        have += step
    return numpy.concatenate([numpy.full(reach, out[0]), out])[: len(values)]


def limited(sound, ceiling=CEILING):
    """Turns peaks down smoothly, looking five milliseconds ahead."""
    reach = round(0.005 * RATE)
    peaks = largest_near(abs(sound).max(axis=0), reach)
    gain = numpy.minimum(1.0, ceiling / numpy.maximum(peaks, 1e-9))
    padded_gain = numpy.concatenate([numpy.full(reach, gain[0]), gain, numpy.full(reach, gain[-1])])
    total = numpy.cumsum(numpy.concatenate([[0.0], padded_gain]))
    smooth = (total[2 * reach :] - total[: -2 * reach])[: len(gain)] / (2 * reach)
    return sound * numpy.minimum(smooth, 1.0)


def trimmed(sound):
    """Without silence before the first sound, and with the end faded out where the tail has become inaudible."""
    heard = numpy.nonzero(abs(sound).max(axis=0) > AUDIBLE * 0.8)[0]
    first, last = max(heard[0] - round(0.01 * RATE), 0), min(heard[-1] + round(0.12 * RATE), sound.shape[1])
    sound = sound[:, first:last].copy()
    ramp = round(0.6 * RATE)
    sound[:, -ramp:] *= 0.5 + 0.5 * numpy.cos(numpy.pi * numpy.arange(ramp) / ramp)
    rise = round(0.002 * RATE)
    sound[:, :rise] *= numpy.arange(rise) / rise
    return sound, first


def tamed(spectrum, size):
    """A spectrum whose share above 6 kHz is at most BRIGHTEST: more of it tires the ear. A shelf turns it down."""
    frequency = frequencies(size)
    energy = numpy.sum(abs(spectrum) ** 2, axis=0)
    for decibels in numpy.arange(0, 12.1, 0.5):
        shelf = 10 ** (-decibels / 20 / (1 + (4800 / frequency) ** 3))
        heard = energy * shelf**2
        if heard[frequency > 6000].sum() <= heard.sum() * BRIGHTEST:
            break
    return spectrum * shelf


def balanced(part, length, size):
    """The spectrum of a part at its level: K-weighted and measured only while it plays."""
    track = part.rendered(length)
    spectrum = numpy.fft.rfft(track, size) * curve(size, part.bands, part.low, part.high)
    energy = block_means(track)
    playing = max(numpy.mean(energy > energy.max() * 0.01), 0.02)
    power = 2 * sum(numpy.sum(abs(side * weights(size)) ** 2) for side in spectrum) / size / (length * playing)
    return spectrum * (10 ** ((part.level - 20) / 20) / numpy.sqrt(power))


def mixed(parts, seconds, room, wet):
    """All parts and the room that they send to, mastered: even loudness, limited peaks, no rumble, no silence around it.

    Returns the sound and the seconds that were cut from its start."""
    length = round(seconds * RATE)
    size = quick(length + RATE)
    dry = numpy.zeros((2, size // 2 + 1), complex)
    send = numpy.zeros((2, size // 2 + 1), complex)
    for part in parts:
        if part.events:
            for number, side in enumerate(part.sides(balanced(part, length, size))):
                dry[number] += side
                send[number] += part.send * side
    dry += wet * send * numpy.fft.rfft(room, size) * curve(size, (), 160.0)
    dry *= curve(size, ((9000, 1.2, 1.5), (300, 0.9, -1.0)), 35.0)
    dry = tamed(dry, size)
    gain = 10 ** ((LOUDNESS - loudness_of(dry, size, length)) / 20)
    sound, first = trimmed(limited(gain * numpy.fft.irfft(dry, size)[:, :length]))
    return limited(sound * 10 ** ((LOUDNESS - integrated(sound)) / 20)), first / RATE
