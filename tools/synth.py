"""A small additive synthesiser on numpy, and encoders that write the same bytes on every run."""

import subprocess
import wave
from io import BytesIO
from pathlib import Path

import numpy

RATE = 44100
LAME_GAIN = 0.95  # lame turns everything down by this
STEPS = {"C": 0, "D": 2, "E": 4, "F": 5, "G": 7, "A": 9, "B": 11}


def note(name):
    """Frequency in Hz of a note such as "A4", "F#5" or "Bb3", in equal temperament on A4 = 440."""
    sharp = name.count("#") - name[1:].count("b")
    return 440.0 * 2 ** ((STEPS[name[0]] + sharp + 12 * (int(name[-1]) - 4) - 9) / 12)


def envelope(length, attack, release):
    """Fades in and out smoothly over these seconds, 1 in between."""
    shape = numpy.ones(length)
    for seconds, forward in ((attack, True), (release, False)):
        n = min(round(seconds * RATE), length // 2)
        ramp = 0.5 - 0.5 * numpy.cos(numpy.pi * numpy.arange(n) / max(n, 1))
        if forward:
            shape[:n] *= ramp
        elif n:
            shape[-n:] *= ramp[::-1]
    return shape


def tone(frequency, seconds, partials, attack, release):
    """A steady note: partials[i] is the strength of the harmonic i + 1."""
    time = numpy.arange(round(seconds * RATE)) / RATE
    sound = numpy.zeros(len(time))
    for i, strength in enumerate(partials, 1):
        if frequency * i < RATE / 2:
            sound += strength * numpy.sin(2 * numpy.pi * frequency * i * time)
    return sound * envelope(len(time), attack, release)


def silence(seconds):
    return numpy.zeros(round(seconds * RATE))


def level(sound, decibels, peak=0.8):
    """Scales to an RMS level over the audible part; a peak above `peak` is reduced to it."""
    loud = abs(sound) > abs(sound).max() * 0.05
    sound = sound * (10 ** (decibels / 20) / numpy.sqrt(numpy.mean(sound[loud] ** 2)))
    return sound * min(1.0, peak / abs(sound).max())


def k_weight(frequency):
    """The weights of these frequencies in Hz by ITU-R BS.1770: its two filters, which are defined for 48 kHz."""
    z = numpy.exp(-2j * numpy.pi * frequency / 48000)
    shelf = (1.53512485958697 - 2.69169618940638 * z + 1.19839281085285 * z**2) / (
        1 - 1.69065929318241 * z + 0.73248077421585 * z**2
    )
    high = (1 - 2 * z + z**2) / (1 - 1.99004745483398 * z + 0.99007225036621 * z**2)
    return abs(shelf * high)


def momentary(sound):
    """Loudness of a mono sound in LUFS: its loudest 400 ms; a shorter sound is padded with silence."""
    window = round(0.4 * RATE)
    padded = numpy.concatenate([sound, numpy.zeros(window)])
    spectrum = numpy.fft.rfft(padded) * k_weight(numpy.fft.rfftfreq(len(padded), 1 / RATE))
    energy = numpy.concatenate([[0], numpy.cumsum(numpy.fft.irfft(spectrum, len(padded)) ** 2)])
    return -0.691 + 10 * numpy.log10((energy[window:] - energy[:-window]).max() / window)


def wav_bytes(sound, rate=RATE):
    """A 16-bit WAV file of samples between -1 and 1: mono, or stereo from two rows."""
    buffer = BytesIO()
    with wave.open(buffer, "wb") as file:
        file.setnchannels(sound.ndim)
        file.setsampwidth(2)
        file.setframerate(rate)
        file.writeframes(numpy.rint(sound.T * 32767).clip(-32768, 32767).astype("<i2").tobytes())
    return buffer.getvalue()


def resample(sound, rate):
    """Resamples in the frequency domain."""
    length = round(sound.shape[-1] * rate / RATE)
    spectrum = numpy.fft.rfft(sound)[..., : length // 2 + 1]
    return numpy.fft.irfft(spectrum, length) * (length / sound.shape[-1])


def encode_mp3(sound, path, kilobits):
    """MP3 at a constant bit rate, without tags."""
    path = Path(path)
    path.parent.mkdir(parents=True, exist_ok=True)
    command = ["lame", "--quiet", "-m", "mj"[sound.ndim - 1], "--cbr", "-b", str(kilobits), "-q", "2", "-", str(path)]
    subprocess.run(command, input=wav_bytes(sound), check=True)


def encode_ffmpeg(sound, path, arguments, rate=RATE):
    """Any other format, by ffmpeg's arguments for its encoder."""
    path = Path(path)
    path.parent.mkdir(parents=True, exist_ok=True)
    quiet = ["ffmpeg", "-v", "error", "-y", "-f", "wav", "-i", "pipe:0"]
    exact = ["-map_metadata", "-1", "-fflags", "+bitexact", "-flags:a", "+bitexact"]
    subprocess.run([*quiet, *arguments, *exact, str(path)], input=wav_bytes(sound, rate), check=True)
