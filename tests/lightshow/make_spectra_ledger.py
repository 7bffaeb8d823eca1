#!/usr/bin/env python3
"""Computes what one tick of the light show sends for made spectra, and prints it as the ledger spectra.txt.

    make_spectra_ledger.py > spectra.txt

It shares no code with the jukebox. One line for each case: the spectrum, NbLeds, Stereo (both with "_" for a blank and
"-" for an empty text), the run-time error or 0, the number of messages sent, and the first 16 digits of the
SHA-256 of their bytes.

Spectra have 512 magnitudes, each a whole number of 65536ths, so that they are the same in every language:
  zeros, ones, huge; bin N: one magnitude of 1; low, mid, high: only a third of the bins; ramp, fall;
  tail K: in the 28th band of thirty, K 65536ths and then a 33,554,432nd part of it in each bin, which is lost in a sum
  of single precision;
  noise SEED SHIFT: a linear congruential generator, divided by 2 to the power of SHIFT.
"""
import hashlib
import math
import struct

BINS = 512
WHOLE = 65536


def noise(seed, shift):
    state, values = seed, []
    for _ in range(BINS):
        state = (1103515245 * state + 12345) % 2**31
        values.append((state >> 15) >> shift)
    return values


# With these the sum of double precision would be rounded to another brightness.
TAILS = (4862, 6515, 10031, 10201, 17273, 19096, 22002, 29004, 30757, 39282, 40975, 43758)

SPECTRA = {
    "zeros": [0] * BINS,
    "ones": [WHOLE] * BINS,
    "huge": [WHOLE * 1000] * BINS,
    "low": [WHOLE // 3 if i < 170 else 0 for i in range(BINS)],
    "mid": [WHOLE // 3 if 170 <= i < 340 else 0 for i in range(BINS)],
    "high": [WHOLE // 3 if i >= 340 else 0 for i in range(BINS)],
    "ramp": [i * 7 for i in range(BINS)],
    "fall": [(BINS - i) * 40 for i in range(BINS)],
    **{f"bin:{n}": [WHOLE if i == n else 0 for i in range(BINS)] for n in (0, 1, 2, 11, 12, 23, 255, 511)},
    **{f"tail:{k}": [k if i == 407 else k / 2**25 if i > 407 else 0 for i in range(BINS)] for k in TAILS},
    **{f"noise:{seed}:{shift}": noise(seed, shift) for seed, shift in ((1, 0), (2, 3), (3, 6), (4, 8), (5, 10))},
}

COUNTS = ["0", "1", "2", "3", "5", "7", "10", "16", "29", "30", "31", "60", "84", "85", "86", "127", "128", "129", "170",
          "200", "255", "256", "257", "258", "300", "511", "512", "513", "700", "1000", "1022", "1023", "1024", "1025",
          "2046", "2047", "2048", "32766", "32767", "40000", "-1", "-2", "-4", "0.5", "1.5", "2.5", "3.5", "4.5", "-0.5",
          "_30_", "3e1", "+12", "ten", "-", "30x", "1,5", "1e99", "70000", "99999999999", "0x10"]
STEREO = ["false", "true", "True", "TRUE", "_true", "true_", "-", "1", "yes"]


class Fault(Exception):
    """A run-time error number."""


def single(value):
    """The nearest value of single precision."""
    return struct.unpack("<f", struct.pack("<f", value))[0]


def rounded(value, bits):
    if math.isnan(value) or math.isinf(value):
        raise Fault(6)
    whole = round(value)  # Python rounds halves to even.
    if not -(1 << (bits - 1)) <= whole < 1 << (bits - 1):
        raise Fault(6)
    return whole


def number(text):
    text = text.strip(" ")
    body = text[1:] if text[:1] in ("+", "-") else text
    mantissa, _, exponent = body.lower().partition("e")
    digits = mantissa.replace(".", "", 1)
    good = digits.isdigit() and ("e" not in body.lower() or exponent.lstrip("+-").isdigit())
    if not good:
        raise Fault(13)
    value = float(text)
    if math.isinf(value):
        raise Fault(6)
    return value


def band_count(leds, stereo):
    if stereo == "true":
        whole = rounded(number(leds), 32)
        return rounded(int(whole / 2) + 1, 16)
    return rounded(number(leds) + 1.0, 16)


def wheel(hue):
    if hue < 85:
        return hue * 3, 255 - hue * 3, 0
    if hue < 170:
        hue -= 85
        return 255 - hue * 3, 0, hue * 3
    hue -= 170
    return 0, hue * 3, 255 - hue * 3


def message(led, colour, mark):
    return "AT+B-" + "".join("%02X" % (value & 255) for value in (led, *colour, mark)) + "\r\n"


def tick(spectrum, leds, stereo, sent):
    fft = [single(value / WHOLE) for value in SPECTRA[spectrum]] + [0.0] * 513
    bands = band_count(leds, stereo)
    b0 = 0
    for x in range(bands):
        if bands == 1:
            raise Fault(6)
        b1 = min(rounded(2.0 ** (x * 10.0 / (bands - 1)), 32), 1023)
        if b1 <= b0:
            b1 = b0 + 1
        sc = 10 + b1 - b0
        total = 0.0
        while True:
            if 1 + b0 > 1024:
                raise Fault(9)
            total = single(total + fft[1 + b0])
            b0 += 1
            if b0 >= b1:
                break
        log10 = math.log(float(sc)) / math.log(10.0)
        y = rounded((total / log10) ** 0.5 * 1.7 * 256 - 4.0, 32)
        level = max(min(y, 256) - 1, 1)
        if x == bands - 1:
            break
        hue = rounded(x * 256 / bands + 0, 32)
        while hue > 256:
            hue -= 255
        colour = [max(channel - (256 - level), 0) for channel in wheel(hue)]
        mark = 0 if x == bands - 2 else 255
        if stereo == "true":
            sent.append(message(x, colour, 255))
            sent.append(message(x + bands - 1, colour, mark))
        else:
            sent.append(message(x, colour, mark))


def plain(word):
    return "" if word == "-" else word.replace("_", " ")


def cases():
    for spectrum in SPECTRA:
        for leds in ("30", "10", "61", "258", "1023"):
            for stereo in ("false", "true"):
                yield spectrum, leds, stereo
    for leds in COUNTS:
        for stereo in ("false", "true"):
            yield "noise:2:3", leds, stereo
    for stereo in STEREO:
        for leds in ("30", "31", "1"):
            yield "noise:3:6", leds, stereo
    for leds in range(1, 1024):
        yield "noise:1:0" if leds % 2 else "zeros", str(leds), "false" if leds % 3 else "true"


def main():
    print("# Made by make_spectra_ledger.py: spectrum, NbLeds, Stereo, error, messages, start of their SHA-256.")
    for spectrum, leds, stereo in dict.fromkeys(cases()):
        sent, error = [], 0
        try:
            tick(spectrum, plain(leds), plain(stereo), sent)
        except Fault as fault:
            error = fault.args[0]
        digest = hashlib.sha256("".join(sent).encode()).hexdigest()[:16]
        print(spectrum, leds, stereo, error, len(sent), digest)


if __name__ == "__main__":
    main()
