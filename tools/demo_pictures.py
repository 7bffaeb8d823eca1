"""Draws the covers of the demo library: flat, printed-looking pictures, one design for each album."""

import math
import random
import sys
from functools import lru_cache
from io import BytesIO
from pathlib import Path

import numpy
from PIL import Image, ImageDraw, ImageFilter, ImageFont

sys.path.insert(0, str(Path(__file__).resolve().parent / "theme"))
from light import CONDENSED, SCRIPT  # noqa: E402

FINE = 2  # drawn this many times larger and averaged

# Ground above and below, two shapes, text.
PALETTES = (
    ((22, 38, 70), (58, 92, 140), (244, 196, 84), (222, 92, 60), (255, 246, 224)),
    ((122, 28, 34), (74, 14, 26), (246, 200, 110), (214, 84, 48), (255, 244, 226)),
    ((16, 92, 92), (8, 52, 62), (246, 226, 176), (236, 130, 84), (255, 250, 236)),
    ((248, 234, 206), (236, 206, 162), (188, 48, 44), (34, 78, 92), (52, 30, 24)),
    ((66, 36, 92), (28, 16, 52), (240, 148, 172), (252, 214, 120), (255, 240, 246)),
    ((26, 18, 58), (110, 26, 92), (90, 236, 220), (255, 110, 150), (244, 250, 255)),
    ((236, 240, 216), (196, 222, 206), (36, 110, 84), (224, 150, 52), (20, 48, 40)),
    ((250, 170, 92), (196, 62, 74), (255, 232, 170), (66, 22, 52), (60, 18, 40)),
    ((18, 34, 76), (64, 62, 120), (250, 206, 120), (226, 110, 88), (255, 248, 232)),
    ((112, 176, 196), (206, 230, 214), (214, 70, 58), (62, 128, 70), (24, 48, 44)),
    ((86, 26, 42), (44, 12, 28), (226, 180, 104), (250, 224, 170), (255, 240, 220)),
    ((30, 34, 88), (96, 78, 148), (255, 236, 170), (160, 150, 214), (250, 246, 255)),
    ((34, 140, 168), (240, 220, 176), (255, 246, 226), (10, 66, 104), (255, 252, 240)),
    ((30, 26, 30), (72, 46, 40), (250, 214, 130), (206, 70, 56), (255, 244, 220)),
)


@lru_cache(maxsize=None)
def face(file, pixels):
    return ImageFont.truetype(str(file), pixels, layout_engine=ImageFont.Layout.BASIC)


def fit(draw, text, file, width, largest):
    size = largest
    while size > 8 and draw.textlength(text, face(file, size)) > width:
        size -= 2
    return face(file, size)


def blend(one, two, share):
    return tuple(round(a + (b - a) * share) for a, b in zip(one, two))


def gradient(width, height, top, bottom):
    share = numpy.linspace(0, 1, height)[:, None, None]
    rows = numpy.array(top) + (numpy.array(bottom) - numpy.array(top)) * share
    return Image.fromarray(numpy.rint(numpy.broadcast_to(rows, (height, width, 3))).astype(numpy.uint8), "RGB")


class Sheet:
    """What is being drawn: positions are shares of the side."""

    def __init__(self, size, colours, words):
        self.s = size
        self.top, self.bottom, self.one, self.two, self.ink = colours
        self.image = gradient(size, size, self.top, self.bottom)
        self.draw = ImageDraw.Draw(self.image)
        self.rng = random.Random(words)

    def disc(self, x, y, r, colour, width=0.0):
        box = [c * self.s for c in (x - r, y - r, x + r, y + r)]
        if width:
            self.draw.ellipse(box, outline=colour, width=max(round(width * self.s), 1))
        else:
            self.draw.ellipse(box, fill=colour)

    def shape(self, points, colour):
        self.draw.polygon([(x * self.s, y * self.s) for x, y in points], fill=colour)

    def line(self, points, colour, width):
        self.draw.line(
            [(x * self.s, y * self.s) for x, y in points], fill=colour, width=max(round(width * self.s), 1), joint="curve"
        )

    def glow(self, x, y, r, colour, strength):
        """Light around a point."""
        ys, xs = numpy.mgrid[0 : self.s, 0 : self.s].astype(numpy.float32) / self.s
        light = numpy.exp(-((xs - x) ** 2 + (ys - y) ** 2) / (r * r)) * strength
        base = numpy.asarray(self.image, numpy.float32)
        mixed = base + (numpy.array(colour, numpy.float32) - base) * light[..., None]
        self.image.paste(Image.fromarray(numpy.rint(mixed).clip(0, 255).astype(numpy.uint8), "RGB"))
        self.draw = ImageDraw.Draw(self.image)


def arc_points(x, y, r, start, end, steps=60, squash=1.0):
    turns = [start + (end - start) * i / steps for i in range(steps + 1)]
    return [(x + r * math.cos(t), y + r * squash * math.sin(t)) for t in turns]


def ridge(sheet, base, height, seed, colour, steps=80):
    """A line of hills: a few waves added."""
    rng = random.Random(f"{seed}{sheet.rng.random()}")
    waves = [(rng.uniform(2, 9), rng.uniform(0, 6), rng.uniform(0.3, 1.0)) for _ in range(4)]
    total = sum(w[2] for w in waves)
    points = [
        (i / steps, base - height * sum(a * math.sin(f * i / steps + p) for f, p, a in waves) / total) for i in range(steps + 1)
    ]
    sheet.shape([(0, 1)] + points + [(1, 1)], colour)


def sunburst(sheet):
    """The bell of a horn in front of rays."""
    x, y = 0.62, 0.66
    for i in range(18):
        a, b = 2 * math.pi * i / 18, 2 * math.pi * (i + 0.5) / 18
        sheet.shape([(x, y)] + [(x + 2 * math.cos(t), y + 2 * math.sin(t)) for t in (a, b)], blend(sheet.top, sheet.two, 0.55))
    sheet.line(arc_points(0.17, 0.86, 0.12, 0.1, 2 * math.pi - 0.6), sheet.one, 0.042)
    sheet.line([(0.29, 0.8), (0.52, 0.69)], sheet.one, 0.05)
    sheet.line([(0.1, 0.76), (0.42, 0.6)], blend(sheet.one, (255, 255, 255), 0.25), 0.03)
    for i in range(3):
        sheet.line(
            [(0.22 + 0.08 * i, 0.72 - 0.045 * i), (0.25 + 0.08 * i, 0.79 - 0.04 * i)], blend(sheet.one, (120, 70, 20), 0.3), 0.034
        )
    sheet.shape([(0.46, 0.655), (0.46, 0.745)] + arc_points(x, y, 0.3, 2.5, 3.78, 20), blend(sheet.one, (160, 90, 20), 0.35))
    for i in range(26):
        share = i / 25
        sheet.disc(x, y, 0.3 * (1 - share) + 0.055, blend(sheet.one, (70, 20, 14), share**0.55))
    sheet.disc(x, y, 0.352, blend(sheet.one, (255, 255, 255), 0.55), 0.012)


def gear(sheet, x, y, r, teeth, colour, turn):
    points = []
    for i in range(teeth):
        a = turn + 2 * math.pi * i / teeth
        half = math.pi / teeth
        for t, d in ((-0.62, 0.86), (-0.36, 1.0), (0.36, 1.0), (0.62, 0.86)):
            points.append((x + r * d * math.cos(a + t * half), y + r * d * math.sin(a + t * half)))
    sheet.shape([(px + 0.012, py + 0.016) for px, py in points], blend(sheet.bottom, (0, 0, 0), 0.45))
    sheet.shape(points, colour)
    sheet.disc(x, y, r * 0.7, blend(colour, sheet.bottom, 0.22))
    for i in range(6):
        a = turn + i * math.pi / 3
        sheet.disc(x + r * 0.45 * math.cos(a), y + r * 0.45 * math.sin(a), r * 0.15, blend(sheet.bottom, (0, 0, 0), 0.3))
    sheet.disc(x, y, r * 0.16, colour)
    sheet.disc(x, y, r * 0.06, sheet.bottom)


def gears(sheet):
    turn = sheet.rng.uniform(0, 1)
    gear(sheet, 0.2, 0.9, 0.27, 18, blend(sheet.two, sheet.bottom, 0.35), turn)
    gear(sheet, 0.86, 0.52, 0.2, 14, blend(sheet.one, sheet.bottom, 0.4), 0.2 - turn)
    gear(sheet, 0.58, 0.72, 0.24, 16, sheet.one, turn)
    gear(sheet, 0.9, 0.92, 0.16, 12, sheet.two, 0.1 + turn)
    gear(sheet, 0.24, 0.5, 0.13, 10, sheet.two, 0.3 - turn)


def ballroom(sheet):
    """A chandelier over a dance floor of circles."""
    for i in range(9):
        r = 0.12 + i * 0.1
        sheet.line(
            arc_points(0.5, 1.02, r, math.pi, 2 * math.pi, 60, 0.42), blend(sheet.bottom, sheet.one, 0.25 + 0.06 * (i % 2)), 0.016
        )
    for i in range(7):
        angle = math.pi * (i + 0.5) / 7
        sheet.line(
            [(0.5, 1.02), (0.5 + 1.1 * math.cos(angle), 1.02 - 0.46 * math.sin(angle))],
            blend(sheet.bottom, sheet.one, 0.16),
            0.006,
        )
    sheet.glow(0.5, 0.52, 0.34, sheet.two, 0.55)
    sheet.line([(0.5, 0.3), (0.5, 0.44)], sheet.two, 0.008)
    for level, (y, wide, count) in enumerate(((0.46, 0.14, 5), (0.53, 0.24, 9), (0.6, 0.33, 13))):
        sheet.line(arc_points(0.5, y, wide, 0, math.pi, 40, 0.22), sheet.two, 0.008)
        for i in range(count):
            t = math.pi * (i + 0.5) / count
            x, low = 0.5 + wide * math.cos(t), y + wide * 0.22 * math.sin(t)
            sheet.shape(
                [(x - 0.009, low), (x + 0.009, low), (x, low + 0.06 - 0.01 * level)], blend(sheet.two, (255, 255, 255), 0.5)
            )
            sheet.disc(x, low - 0.012, 0.011, (255, 252, 232))


def harbour(sheet):
    """A pier at night: organ pipes stand where houses would, and a lighthouse throws its beam."""
    sheet.glow(0.2, 0.44, 0.4, sheet.one, 0.3)
    for spread, share in ((0.15, 0.16), (0.09, 0.26), (0.04, 0.4)):
        sheet.shape([(0.2, 0.42), (1.1, 0.36 - spread), (1.1, 0.4 + spread)], blend(sheet.top, sheet.one, share))
    for i in range(26):
        sheet.disc(sheet.rng.random(), sheet.rng.uniform(0.3, 0.55), sheet.rng.uniform(0.0015, 0.004), (255, 250, 230))
    for i in range(11):
        high = 0.46 + 0.022 * abs(i - 5) + 0.02 * (i % 2)
        x = 0.36 + i * 0.056
        colour = blend(sheet.one, sheet.two, 0.12 * (i % 3))
        sheet.draw.rounded_rectangle([c * sheet.s for c in (x, high, x + 0.046, 0.84)], radius=0.02 * sheet.s, fill=colour)
        sheet.draw.rectangle(
            [c * sheet.s for c in (x + 0.028, high + 0.03, x + 0.036, 0.82)], fill=blend(colour, (255, 255, 255), 0.4)
        )
        sheet.shape([(x + 0.006, 0.74), (x + 0.04, 0.74), (x + 0.023, 0.77)], blend(colour, (30, 20, 40), 0.75))
    sheet.shape([(0.155, 0.8), (0.175, 0.46), (0.225, 0.46), (0.245, 0.8)], (246, 240, 226))
    for i in range(3):
        y = 0.5 + i * 0.1
        sheet.shape(
            [(0.172 - i * 0.006, y), (0.228 + i * 0.006, y), (0.231 + i * 0.006, y + 0.05), (0.169 - i * 0.006, y + 0.05)],
            sheet.two,
        )
    sheet.draw.rectangle([c * sheet.s for c in (0.178, 0.405, 0.222, 0.46)], fill=(255, 240, 190))
    sheet.shape([(0.165, 0.408), (0.235, 0.408), (0.2, 0.36)], sheet.two)
    sheet.draw.rectangle([c * sheet.s for c in (0, 0.8, 1, 0.83)], fill=blend(sheet.bottom, (0, 0, 0), 0.6))
    sheet.draw.rectangle([c * sheet.s for c in (0, 0.83, 1, 1)], fill=blend(sheet.top, (0, 0, 0), 0.35))
    for i in range(46):
        y = sheet.rng.uniform(0.84, 0.99)
        x, wide = sheet.rng.random(), sheet.rng.uniform(0.02, 0.08)
        colour = sheet.one if 0.34 < x < 0.98 and i % 2 else blend(sheet.top, sheet.bottom, 0.7)
        sheet.line([(x, y), (x + wide, y)], colour, 0.004)


def comb(sheet):
    """The cylinder of a music box with its pins, and the comb below it."""
    for i in range(40):
        share = abs(i - 14) / 26
        sheet.draw.rectangle(
            [c * sheet.s for c in (0.08, 0.38 + i * 0.007, 0.92, 0.389 + i * 0.007)],
            fill=blend(sheet.two, sheet.top, min(share**1.3, 1) * 0.85),
        )
    for i in range(90):
        x, y = 0.11 + 0.0395 * (i % 21), sheet.rng.uniform(0.4, 0.64)
        sheet.disc(x, y, 0.0065, blend(sheet.bottom, (0, 0, 0), 0.2))
        sheet.disc(x - 0.002, y - 0.003, 0.0045, (255, 246, 214))
    for x in (0.05, 0.92):
        sheet.draw.rounded_rectangle([c * sheet.s for c in (x, 0.35, x + 0.035, 0.69)], radius=0.012 * sheet.s, fill=sheet.one)
    for i in range(21):
        x = 0.098 + 0.0395 * i
        sheet.draw.rectangle(
            [c * sheet.s for c in (x, 0.655, x + 0.028, 0.8 + 0.006 * i)],
            fill=blend(sheet.one, (255, 255, 255), 0.2 + 0.25 * (i % 2)),
        )
    sheet.shape([(0.08, 0.8), (0.93, 0.92), (0.93, 0.96), (0.08, 0.96)], sheet.one)
    for x in (0.16, 0.5, 0.84):
        sheet.disc(x, 0.925, 0.018, blend(sheet.bottom, (0, 0, 0), 0.3))
        sheet.line([(x - 0.012, 0.925), (x + 0.012, 0.925)], sheet.two, 0.004)


def snow(sheet):
    """Firs in the snow under a full moon."""
    mx = sheet.rng.uniform(0.62, 0.82)
    sheet.glow(mx, 0.46, 0.3, (255, 250, 226), 0.5)
    sheet.disc(mx, 0.46, 0.085, (255, 250, 230))
    ridge(sheet, 0.76, 0.05, "far", blend(sheet.bottom, (255, 255, 255), 0.25))
    for layer in range(3):
        colour = blend(sheet.bottom, blend(sheet.top, (0, 20, 20), 0.5), 0.35 + 0.3 * layer)
        for _ in range(7 - layer):
            x, high, foot = sheet.rng.random(), sheet.rng.uniform(0.16, 0.26) * (0.7 + 0.3 * layer), 0.8 + 0.06 * layer
            for i in range(4):
                w, y = high * (0.16 + 0.085 * i), foot - high + high * 0.22 * i
                sheet.shape([(x, y), (x - w, y + high * 0.34), (x + w, y + high * 0.34)], colour)
                sheet.shape(
                    [(x, y), (x - w * 0.42, y + high * 0.13), (x, y + high * 0.1), (x + w * 0.42, y + high * 0.13)],
                    (244, 248, 252),
                )
        ridge(sheet, foot + 0.03, 0.02, layer, blend((244, 248, 252), sheet.bottom, 0.16 * (2 - layer)))
    for _ in range(110):
        sheet.disc(sheet.rng.random(), sheet.rng.uniform(0.3, 1), sheet.rng.uniform(0.002, 0.006), (255, 255, 255))


def moon(sheet):
    """A crescent that hangs among clouds and stars."""
    x = sheet.rng.uniform(0.45, 0.6)
    sheet.glow(x, 0.58, 0.36, sheet.one, 0.35)
    for _ in range(46):
        px, py, r = sheet.rng.random(), sheet.rng.uniform(0.3, 0.95), sheet.rng.uniform(0.004, 0.014)
        sheet.shape([(px + r * (1 if k % 2 else 0.32) * math.cos(k * math.pi / 4), py + r * (1 if k % 2 else 0.32) * math.sin(k * math.pi / 4)) for k in range(8)],
                    blend(sheet.one, (255, 255, 255), 0.4))  # fmt: skip
    outer = arc_points(x, 0.58, 0.2, 0.5, 5.2, 60)
    inner = arc_points(x + 0.085, 0.545, 0.165, 5.0, 0.75, 60)
    sheet.shape(outer + inner, sheet.one)
    for y, shade in ((0.83, 0.15), (0.89, 0.35), (0.95, 0.6)):
        colour = blend(sheet.two, (255, 255, 255), shade)
        for _ in range(9):
            sheet.disc(sheet.rng.uniform(-0.05, 1.05), y + 0.05, sheet.rng.uniform(0.06, 0.12), colour)
        sheet.draw.rectangle([c * sheet.s for c in (0, y + 0.04, 1, 1)], fill=colour)


def keys(sheet):
    """Piano keys in a fan."""
    x, y = sheet.rng.uniform(0.2, 0.8), 1.2
    ivory, ebony = (252, 248, 238), (30, 24, 26)
    sheet.shape(arc_points(x, y, 0.83, math.pi, 2 * math.pi, 90), sheet.two)
    sheet.shape(arc_points(x, y, 0.8, math.pi, 2 * math.pi, 90), sheet.one)
    count = 17
    for i in range(count):
        a, b = math.pi + math.pi * (i + 0.04) / count, math.pi + math.pi * (i + 0.96) / count
        sheet.shape(arc_points(x, y, 0.77, a, b, 6) + arc_points(x, y, 0.26, b, a, 6), ivory)
    for i in range(1, count):
        if i % 7 not in (0, 3):
            a, b = math.pi + math.pi * (i - 0.27) / count, math.pi + math.pi * (i + 0.27) / count
            sheet.shape(arc_points(x, y, 0.775, a, b, 6) + arc_points(x, y, 0.5, b, a, 6), ebony)
            a, b = math.pi + math.pi * (i - 0.14) / count, math.pi + math.pi * (i + 0.14) / count
            sheet.shape(arc_points(x, y, 0.76, a, b, 4) + arc_points(x, y, 0.54, b, a, 4), (74, 66, 68))
    sheet.shape(arc_points(x, y, 0.26, math.pi, 2 * math.pi, 60), sheet.two)


def record(sheet):
    """A record with its light, half out of the picture, under a lit arch."""
    x, y = 0.5 + sheet.rng.uniform(-0.12, 0.12), 0.72
    for i, colour in enumerate((sheet.one, sheet.two, blend(sheet.one, sheet.two, 0.5))):
        sheet.disc(x, y, 0.47 - i * 0.022, colour, 0.012)
    sheet.disc(x, y, 0.395, (14, 12, 16))
    for i in range(34):
        sheet.disc(x, y, 0.385 - i * 0.0072, (34 + 10 * (i % 3), 32 + 10 * (i % 3), 38 + 10 * (i % 3)), 0.002)
    for turn, wide, light in ((-0.9, 0.16, 46), (2.24, 0.16, 46), (-1.15, 0.06, 78), (1.99, 0.06, 78)):
        shine = Image.new("L", sheet.image.size, 0)
        points = [(x, y)] + arc_points(x, y, 0.385, turn - wide, turn + wide, 12)
        ImageDraw.Draw(shine).polygon([(a * sheet.s, b * sheet.s) for a, b in points], fill=light)
        sheet.image.paste((255, 255, 255), (0, 0), shine.filter(ImageFilter.GaussianBlur(sheet.s * 0.012)))
    sheet.disc(x, y, 0.135, sheet.two)
    sheet.disc(x, y, 0.118, sheet.one)
    sheet.disc(x, y, 0.07, sheet.one if sheet.rng.random() < 0.5 else sheet.two)
    sheet.disc(x, y, 0.07, blend(sheet.two, (0, 0, 0), 0.2), 0.004)
    sheet.disc(x, y, 0.012, (14, 12, 16))


def grid(sheet):
    """A striped sun that sets over a grid of light."""
    sheet.glow(0.5, 0.6, 0.4, sheet.two, 0.6)
    x = 0.5
    for i in range(64):
        y = 0.382 + i * 0.0055
        if y > 0.728:
            break
        half = math.sqrt(max(0.22**2 - (y - 0.6) ** 2, 0))
        if half and not (i > 22 and (i - 22) % 6 < 1 + (i - 22) / 9):
            sheet.draw.rectangle(
                [c * sheet.s for c in (x - half, y, x + half, y + 0.0058)],
                fill=blend((255, 226, 120), sheet.two, (y - 0.4) / 0.34),
            )
    sheet.draw.rectangle([c * sheet.s for c in (0, 0.73, 1, 1)], fill=blend(sheet.top, (0, 0, 0), 0.45))
    for i in range(23):
        sheet.line([(0.5 + (i - 11) * 0.035, 0.73), (0.5 + (i - 11) * 0.24, 1.02)], sheet.one, 0.004)
    for i in range(9):
        sheet.line([(0, 0.73 + 0.27 * (i / 9) ** 1.9), (1, 0.73 + 0.27 * (i / 9) ** 1.9)], sheet.one, 0.0035)
    for i in range(13):
        high = sheet.rng.uniform(0.03, 0.17) * (0.35 + abs(i - 6) / 8)
        left = i / 13
        sheet.draw.rectangle([c * sheet.s for c in (left, 0.73 - high, left + 0.07, 0.73)], fill=blend(sheet.top, (0, 0, 0), 0.4))
        for _ in range(7):
            wx, wy = left + sheet.rng.uniform(0.008, 0.055), 0.73 - sheet.rng.uniform(0.01, max(high - 0.01, 0.012))
            sheet.draw.rectangle(
                [c * sheet.s for c in (wx, wy, wx + 0.007, wy + 0.007)],
                fill=sheet.one if sheet.rng.random() < 0.5 else (255, 226, 120),
            )


def sundown(sheet):
    """A low sun over the sea, a palm, and a glass at the rail."""
    sheet.glow(0.4, 0.66, 0.4, sheet.one, 0.7)
    sheet.disc(0.4, 0.66, 0.17, sheet.one)
    sheet.draw.rectangle([c * sheet.s for c in (0, 0.7, 1, 1)], fill=blend(sheet.bottom, sheet.two, 0.4))
    for i in range(24):
        y = 0.71 + 0.012 * i
        half = 0.17 * (1 - i / 30) * sheet.rng.uniform(0.4, 1.1)
        sheet.line([(0.4 - half, y), (0.4 + half, y)], blend(sheet.one, sheet.bottom, i / 34), 0.0055)
    trunk = [(0.9 - 0.1 * t - 0.06 * math.sin(3 * t), 1.0 - 0.56 * t) for t in (i / 20 for i in range(21))]
    sheet.line(trunk, sheet.two, 0.024)
    tx, ty = trunk[-1]
    for angle, long in (
        (-2.9, 0.26),
        (-2.4, 0.24),
        (-1.9, 0.2),
        (-1.2, 0.19),
        (-0.6, 0.2),
        (-0.1, 0.2),
        (0.5, 0.15),
        (2.7, 0.22),
    ):
        leaf = [
            (tx + long * t * math.cos(angle), ty + long * t * math.sin(angle) + 0.26 * t * t * long / 0.2)
            for t in (i / 12 for i in range(13))
        ]
        sheet.shape(leaf + [(px, py + 0.05 * math.sin(math.pi * i / 12)) for i, (px, py) in enumerate(leaf)][::-1], sheet.two)
    sheet.draw.rectangle([c * sheet.s for c in (0, 0.94, 1, 1)], fill=sheet.two)
    sheet.shape([(0.1, 0.66), (0.3, 0.66), (0.2, 0.8)], blend(sheet.one, (255, 255, 255), 0.35))
    sheet.shape([(0.125, 0.69), (0.275, 0.69), (0.2, 0.795)], (226, 84, 70))
    sheet.line([(0.2, 0.79), (0.2, 0.925)], blend(sheet.one, (255, 255, 255), 0.35), 0.008)
    sheet.line([(0.145, 0.932), (0.255, 0.932)], blend(sheet.one, (255, 255, 255), 0.35), 0.012)
    sheet.disc(0.285, 0.655, 0.03, (250, 190, 70))
    sheet.line([(0.2, 0.74), (0.25, 0.6)], sheet.two, 0.005)


def hills(sheet):
    """Hills one after the other, and birds."""
    x = sheet.rng.uniform(0.25, 0.75)
    sheet.glow(x, 0.5, 0.3, sheet.two, 0.5)
    sheet.disc(x, 0.5, 0.095, sheet.two)
    for i in range(6):
        ridge(
            sheet,
            0.6 + 0.075 * i,
            0.07 - 0.006 * i,
            i,
            blend(blend(sheet.one, sheet.bottom, 0.72), blend(sheet.one, (0, 20, 20), 0.25), i / 5),
        )
    for _ in range(5):
        bx, by, w = sheet.rng.uniform(0.1, 0.9), sheet.rng.uniform(0.34, 0.48), sheet.rng.uniform(0.012, 0.024)
        sheet.line(
            [
                (bx - w, by - w * 0.5),
                (bx - w * 0.4, by - w * 0.6),
                (bx, by),
                (bx + w * 0.4, by - w * 0.6),
                (bx + w, by - w * 0.5),
            ],
            sheet.ink,
            0.004,
        )


def surf(sheet):
    """A breaking wave with a board in it."""
    sheet.disc(0.76, 0.47, 0.11, (255, 206, 92))
    for i in range(5):
        sheet.line(
            [(0.62 + 0.02 * i, 0.5 + 0.028 * i), (0.9 - 0.02 * i, 0.5 + 0.028 * i)],
            sheet.top if i < 1 else blend(sheet.top, sheet.bottom, 0.3),
            0.007,
        )
    sheet.draw.rectangle([c * sheet.s for c in (0, 0.72, 1, 1)], fill=blend(sheet.two, sheet.top, 0.55))
    for i in range(7):
        grow = 1 - i * 0.105
        colour = (blend(sheet.two, sheet.top, 0.14 * i), blend(sheet.one, sheet.top, 0.5))[i % 2]
        curl = arc_points(0.36, 0.69, 0.27 * grow, math.pi * 0.98, math.pi * 2.28, 50)
        sheet.shape(
            [(-0.02, 1.02), (-0.02, 0.86 - 0.2 * grow)]
            + curl
            + arc_points(0.4, 0.7, 0.2 * grow, math.pi * 2.22, math.pi * 1.02, 40)
            + [(0.22 - 0.02 * i, 1.02)],
            colour,
        )
    for i in range(34):
        t = math.pi * (1.12 + 1.15 * i / 33)
        sheet.disc(0.36 + 0.275 * math.cos(t), 0.69 + 0.275 * math.sin(t), sheet.rng.uniform(0.012, 0.03), sheet.one)
    sheet.shape(arc_points(0.72, 0.86, 0.15, 0, 2 * math.pi, 40, 0.2), (226, 84, 70))
    sheet.line([(0.59, 0.86), (0.85, 0.86)], sheet.one, 0.008)
    sheet.draw.rectangle([c * sheet.s for c in (0, 0.95, 1, 1)], fill=sheet.two)


def bunting(sheet):
    """Bunting over a village green."""
    for i in range(5):
        ridge(sheet, 0.7 + 0.07 * i, 0.045, i, blend(blend(sheet.two, sheet.bottom, 0.6), sheet.two, i / 4))
    sheet.draw.rectangle([c * sheet.s for c in (0.62, 0.58, 0.7, 0.8)], fill=(246, 238, 220))
    sheet.shape([(0.605, 0.59), (0.715, 0.59), (0.66, 0.42)], sheet.one)
    sheet.draw.rectangle([c * sheet.s for c in (0.7, 0.68, 0.86, 0.8)], fill=(246, 238, 220))
    sheet.shape([(0.69, 0.69), (0.87, 0.69), (0.83, 0.61), (0.72, 0.61)], sheet.one)
    for x in (0.735, 0.785, 0.83):
        sheet.draw.rectangle([c * sheet.s for c in (x - 0.011, 0.72, x + 0.011, 0.77)], fill=sheet.ink)
    sheet.disc(0.66, 0.625, 0.016, sheet.ink)
    for x, y, r in ((0.2, 0.66, 0.085), (0.12, 0.7, 0.07), (0.28, 0.71, 0.07), (0.94, 0.72, 0.06)):
        sheet.draw.rectangle([c * sheet.s for c in (x - 0.008, y, x + 0.008, y + 0.14)], fill=(92, 62, 40))
        sheet.disc(x, y, r, blend(sheet.two, (0, 30, 10), 0.3))
    ridge(sheet, 0.86, 0.03, "front", blend(sheet.two, (20, 60, 10), 0.25))
    colours = (sheet.one, (250, 214, 96), (255, 250, 236), (46, 96, 140))
    for row, (high, sag) in enumerate(((0.34, 0.09), (0.4, 0.16))):
        line = [(i / 30, high + sag * 4 * (i / 30) * (1 - i / 30) - 0.03 * row) for i in range(31)]
        for i in range(0, 30, 2):
            (ax, ay), (bx, by) = line[i], line[i + 1]
            sheet.shape([(ax, ay), (bx + 0.014, by), ((ax + bx) / 2 + 0.006, (ay + by) / 2 + 0.075)], colours[(i // 2 + row) % 4])
        sheet.line(line, sheet.ink, 0.004)


def film(sheet):
    """A projector's beam and a strip of film."""
    for wide, share in ((0.3, 0.12), (0.22, 0.2), (0.13, 0.3)):
        sheet.shape([(0.14, 0.5), (1.05, 0.5 - wide), (1.05, 0.5 + wide)], blend(sheet.top, sheet.one, share))
    for x, y, r in ((0.15, 0.42, 0.085), (0.3, 0.4, 0.06)):
        sheet.disc(x, y, r, sheet.two)
        for i in range(5):
            a = i * 2 * math.pi / 5 + 0.3
            sheet.disc(x + r * 0.58 * math.cos(a), y + r * 0.58 * math.sin(a), r * 0.23, sheet.top)
    sheet.draw.rounded_rectangle(
        [c * sheet.s for c in (0.07, 0.46, 0.33, 0.6)], radius=0.02 * sheet.s, fill=blend(sheet.two, (0, 0, 0), 0.3)
    )
    sheet.draw.rectangle([c * sheet.s for c in (0.33, 0.49, 0.4, 0.55)], fill=sheet.one)
    sheet.line([(0.2, 0.6), (0.12, 0.74)], sheet.two, 0.012)
    sheet.line([(0.2, 0.6), (0.28, 0.74)], sheet.two, 0.012)
    for i in range(5):
        x = -0.06 + i * 0.225
        y = 0.74 + 0.022 * math.sin(i * 1.4)
        sheet.draw.rectangle([c * sheet.s for c in (x, y, x + 0.225, y + 0.22)], fill=(14, 12, 14))
        sheet.draw.rectangle(
            [c * sheet.s for c in (x + 0.014, y + 0.04, x + 0.211, y + 0.18)], fill=(sheet.one, sheet.two, (60, 130, 140))[i % 3]
        )
        sheet.disc(x + 0.07 + 0.022 * i, y + 0.11, 0.035, (255, 248, 226))
        for k in range(7):
            for edge in (0.012, 0.192):
                sheet.draw.rounded_rectangle(
                    [c * sheet.s for c in (x + 0.012 + k * 0.0316, y + edge, x + 0.028 + k * 0.0316, y + edge + 0.016)],
                    radius=0.003 * sheet.s,
                    fill=(255, 248, 226),
                )


DESIGNS = {
    f.__name__: f
    for f in (sunburst, gears, ballroom, harbour, comb, snow, moon, keys, record, grid, sundown, hills, surf, bunting, film)
}


def printed(image, words):
    """The grain of paper and slightly darker edges."""
    w, h = image.size
    rng = numpy.random.default_rng(random.Random(words).randrange(1 << 30))
    ys, xs = numpy.mgrid[0:h, 0:w]
    edge = 1 - 0.2 * (((xs / w - 0.5) ** 2 + (ys / h - 0.5) ** 2) * 2) ** 1.5
    grain = rng.normal(0, 2.2, (h, w, 1))
    values = numpy.asarray(image, numpy.float32) * edge[..., None] + grain
    return Image.fromarray(numpy.rint(values).clip(0, 255).astype(numpy.uint8), "RGB")


def cover(title, artist, design, palette, size=600):
    """A square cover. It depends only on its words, so that it is the same on every run."""
    colours = PALETTES[palette % len(PALETTES)]
    sheet = Sheet(size * FINE, colours, f"{title}|{artist}|{design}")
    DESIGNS[design](sheet)
    s = sheet.s
    shade = gradient(s, round(s * 0.34), (255, 255, 255), (0, 0, 0)).convert("L").point(lambda v: min(255, v * 3))
    sheet.image.paste(sheet.top, (0, 0), shade)
    draw = ImageDraw.Draw(sheet.image)
    draw.text((s * 0.065, s * 0.108), title, sheet.ink, fit(draw, title, SCRIPT, s * 0.87, s // 7), anchor="lm")
    below = " ".join(artist.upper())
    draw.text((s * 0.068, s * 0.232), below, sheet.ink, fit(draw, below, CONDENSED, s * 0.8, s // 27), anchor="lm")
    draw.rectangle((s * 0.068, s * 0.264, s * 0.2, s * 0.27), fill=sheet.two if colours[3] != colours[4] else sheet.one)
    return printed(sheet.image.reduce(FINE), title)


def banner(title, artist, design, palette):
    """A picture that is stretched over a whole slot: a view at its left, beside the label, that fades towards the title."""
    width, height = 1208, 196
    wide, start = 256, 148
    sheet = Sheet(wide * 4, PALETTES[palette % len(PALETTES)], f"{title}|{artist}|{design}")
    DESIGNS[design](sheet)
    top = round(sheet.s * 0.335)
    part = sheet.image.crop((0, top, sheet.s, top + sheet.s * height // wide)).resize((wide, height), Image.Resampling.LANCZOS)
    steps = numpy.clip(numpy.minimum((wide - numpy.arange(wide)) / 90, (numpy.arange(wide) + 4) / 10), 0, 1)
    fade = Image.fromarray(numpy.rint(numpy.tile(steps**1.3 * 255, (height, 1))).astype(numpy.uint8), "L")
    whole = Image.new("RGBA", (width, height), (0, 0, 0, 0))
    part.putalpha(fade)
    whole.paste(part, (start, 0))
    return whole


def jpeg(image, quality=82):
    buffer = BytesIO()
    image.save(buffer, "JPEG", quality=quality, optimize=True)
    return buffer.getvalue()
