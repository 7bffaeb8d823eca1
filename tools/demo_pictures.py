"""Draws the covers of the demo library and the frames of its videos: flat shapes and lettering, all different."""

import math
import random
import sys
from functools import lru_cache
from io import BytesIO
from pathlib import Path

from PIL import Image, ImageDraw, ImageFont

sys.path.insert(0, str(Path(__file__).resolve().parent / "theme"))
from light import CONDENSED, SCRIPT  # noqa: E402

FINE = 3  # drawn this many times larger and averaged

# Background, two shapes, text.
PALETTES = (
    ((28, 44, 74), (236, 178, 62), (214, 84, 56), (255, 246, 224)),
    ((92, 22, 30), (240, 196, 120), (196, 72, 44), (255, 244, 226)),
    ((14, 78, 78), (246, 226, 176), (232, 120, 78), (255, 250, 236)),
    ((246, 230, 198), (184, 46, 44), (40, 92, 100), (44, 28, 24)),
    ((52, 30, 72), (232, 130, 160), (250, 208, 108), (255, 240, 246)),
    ((20, 20, 26), (120, 232, 160), (70, 120, 250), (240, 255, 246)),
    ((224, 238, 226), (36, 110, 84), (222, 152, 48), (20, 44, 36)),
    ((120, 62, 24), (250, 214, 140), (56, 26, 12), (255, 246, 228)),
    ((206, 226, 240), (34, 62, 120), (216, 76, 72), (18, 30, 60)),
    ((40, 60, 36), (226, 216, 128), (160, 186, 96), (250, 250, 226)),
)


@lru_cache(maxsize=None)
def face(file, pixels):
    return ImageFont.truetype(str(file), pixels, layout_engine=ImageFont.Layout.BASIC)


def circle(draw, x, y, r, colour, width=0):
    box = (x - r, y - r, x + r, y + r)
    if width:
        draw.ellipse(box, outline=colour, width=width)
    else:
        draw.ellipse(box, fill=colour)


def sunburst(draw, s, rng, one, two, ground):
    x, y, n = s * rng.uniform(0.3, 0.7), s * rng.uniform(0.5, 0.75), rng.randrange(9, 17)
    for i in range(n):
        a, b = 2 * math.pi * i / n, 2 * math.pi * (i + 0.5) / n
        draw.polygon([(x, y)] + [(x + 2 * s * math.cos(t), y + 2 * s * math.sin(t)) for t in (a, b)], fill=two)
    circle(draw, x, y, s * 0.2, one)


def record(draw, s, rng, one, two, ground):
    x, y = s * rng.uniform(0.45, 0.8), s * rng.uniform(0.5, 0.66)
    circle(draw, x, y, s * 0.42, (18, 18, 20))
    for i in range(7):
        circle(draw, x, y, s * (0.2 + 0.03 * i), (52, 52, 56), max(s // 220, 1))
    circle(draw, x, y, s * 0.15, one)
    circle(draw, x, y, s * 0.02, ground)


def stripes(draw, s, rng, one, two, ground):
    lean, wide = rng.uniform(-0.8, 0.8), rng.uniform(0.05, 0.11)
    for i in range(-14, 30, 2):
        x = i * wide * s
        draw.polygon([(x, 0), (x + wide * s, 0), (x + wide * s + lean * s, s), (x + lean * s, s)], fill=two)
    draw.rectangle((s * 0.12, s * 0.46, s * 0.88, s * 0.5), fill=one)


def waves(draw, s, rng, one, two, ground):
    phase, size = rng.uniform(0, 6), rng.uniform(0.03, 0.06)
    for row in range(7):
        y = s * (0.42 + row * 0.09)
        top = [(x, y + size * s * math.sin(x / s * 11 + phase + row)) for x in range(0, s + 9, 8)]
        draw.polygon(top + [(s, s), (0, s)], fill=(one, two, ground)[row % 3])
    circle(draw, s * rng.uniform(0.2, 0.8), s * 0.3, s * 0.1, one)


def keys(draw, s, rng, one, two, ground):
    n = rng.randrange(8, 12)
    for i in range(n):
        draw.rectangle((i * s / n, s * 0.5, (i + 0.93) * s / n, s), fill=(250, 246, 238))
    for i in range(1, n):
        if i % 7 not in (0, 3):
            draw.rectangle(((i - 0.3) * s / n, s * 0.5, (i + 0.3) * s / n, s * 0.8), fill=(20, 18, 18))
    draw.rectangle((0, s * 0.47, s, s * 0.5), fill=one)


def gears(draw, s, rng, one, two, ground):
    for colour, r in ((two, 0.26), (one, 0.18), (two, 0.12)):
        x, y, teeth = s * rng.uniform(0.15, 0.85), s * rng.uniform(0.45, 0.9), rng.randrange(10, 16)
        for i in range(teeth):
            a = 2 * math.pi * i / teeth
            tip = [(a - 0.13, r * 0.9), (a - 0.08, r * 1.18), (a + 0.08, r * 1.18), (a + 0.13, r * 0.9)]
            draw.polygon([(x + s * d * math.cos(t), y + s * d * math.sin(t)) for t, d in tip], fill=colour)
        circle(draw, x, y, s * r, colour)
        circle(draw, x, y, s * r * 0.4, ground)


def stars(draw, s, rng, one, two, ground):
    for i in range(34):
        x, y, r = s * rng.random(), s * rng.uniform(0.32, 1), s * rng.uniform(0.008, 0.035)
        spokes = [(r * (1 if k % 2 else 0.4), k * math.pi / 4) for k in range(8)]
        points = [(x + length * math.cos(turn), y + length * math.sin(turn)) for length, turn in spokes]
        draw.polygon(points, fill=(one, two)[i % 2])
    circle(draw, s * 0.68, s * 0.6, s * 0.15, one)
    circle(draw, s * 0.74, s * 0.56, s * 0.13, ground)


def hills(draw, s, rng, one, two, ground):
    circle(draw, s * rng.uniform(0.25, 0.75), s * 0.55, s * 0.16, one)
    for y, colour in ((0.6, two), (0.74, tuple(c * 3 // 4 for c in two)), (0.86, tuple(c // 2 for c in two))):
        points, x = [], 0.0
        while x < 1.2:
            points.append((x * s, (y + rng.uniform(-0.09, 0.05)) * s))
            x += rng.uniform(0.12, 0.24)
        draw.polygon([(0, s)] + points + [(s * 1.3, s)], fill=colour)


def blocks(draw, s, rng, one, two, ground):
    n = 9
    for row in range(3, n):
        for column in range(n):
            if rng.random() < 0.45:
                colour = (one, two)[rng.random() < 0.5]
                draw.rectangle((column * s / n, row * s / n, (column + 1) * s / n, (row + 1) * s / n), fill=colour)


def pipes(draw, s, rng, one, two, ground):
    n = rng.randrange(7, 11)
    for i in range(n):
        high = 0.28 + 0.3 * abs(i - (n - 1) / 2) / n + rng.uniform(0, 0.04)
        x0, x1 = (i + 0.14) * s / n, (i + 0.86) * s / n
        draw.rounded_rectangle((x0, s * high, x1, s * 1.1), radius=s / n * 0.36, fill=(one, two)[i % 2])
        draw.ellipse((x0 + s * 0.015, s * 0.8, x1 - s * 0.015, s * 0.85), fill=ground)


MOTIFS = {f.__name__: f for f in (sunburst, record, stripes, waves, keys, gears, stars, hills, blocks, pipes)}


def fit(draw, text, file, width, largest):
    size = largest
    while size > 8 and draw.textlength(text, face(file, size)) > width:
        size -= 2
    return face(file, size)


def cover(title, artist, motif, palette, size=360):
    """A square cover. Its design depends only on its words, so that it is the same on every run."""
    s = size * FINE
    ground, one, two, ink = PALETTES[palette % len(PALETTES)]
    rng = random.Random(f"{title}|{artist}|{motif}")
    image = Image.new("RGB", (s, s), ground)
    draw = ImageDraw.Draw(image)
    MOTIFS[motif](draw, s, rng, one, two, ground)
    draw.rectangle((0, 0, s, s * 0.3), fill=ground)
    draw.rectangle((s * 0.06, s * 0.285, s * 0.94, s * 0.295), fill=one)
    draw.text((s * 0.06, s * 0.105), title, ink, fit(draw, title, SCRIPT, s * 0.88, s // 7), anchor="lm")
    draw.text((s * 0.06, s * 0.242), artist.upper(), ink, fit(draw, artist.upper(), CONDENSED, s * 0.88, s // 17), anchor="lm")
    return image.reduce(FINE)


def jpeg(image, quality=82):
    buffer = BytesIO()
    image.save(buffer, "JPEG", quality=quality, optimize=True)
    return buffer.getvalue()


def video_frame(title, artist, palette, position, level, size=(320, 240)):
    """A frame of a video: a spinning record, bars that follow the sound (0 to 1), title and artist."""
    w, h = size[0] * 2, size[1] * 2
    ground, one, two, ink = PALETTES[palette % len(PALETTES)]
    image = Image.new("RGB", (w, h), ground)
    draw = ImageDraw.Draw(image)
    for i, part in enumerate(level):
        high = 12 + part * h * 0.42
        x = w * 0.54 + i * w * 0.054
        draw.rectangle((x, h * 0.86 - high, x + w * 0.04, h * 0.86), fill=one if i % 2 else two)
    x, y, r = w * 0.27, h * 0.58, h * 0.3
    circle(draw, x, y, r, (16, 16, 18))
    for i in range(6):
        circle(draw, x, y, r * (0.5 + 0.08 * i), (48, 48, 52), 2)
    for turn in (0, math.pi):
        a = position * 3.5 + turn
        draw.polygon([(x, y)] + [(x + r * math.cos(a + d), y + r * math.sin(a + d)) for d in (-0.16, 0.16)], fill=(44, 44, 50))
    circle(draw, x, y, r * 0.38, one)
    circle(draw, x + r * 0.22 * math.cos(position * 3.5), y + r * 0.22 * math.sin(position * 3.5), r * 0.07, two)
    circle(draw, x, y, r * 0.05, ground)
    draw.text((w * 0.06, h * 0.11), title, ink, fit(draw, title, SCRIPT, w * 0.88, h // 7), anchor="lm")
    draw.text((w * 0.06, h * 0.21), artist.upper(), ink, face(CONDENSED, h // 18), anchor="lm")
    return image.reduce(2)
