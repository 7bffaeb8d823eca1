"""Small drawing helpers on Pillow: smooth flat shapes, icons, captions, and lossless small PNG files."""

import math
from functools import lru_cache

import numpy
from PIL import Image, ImageDraw, ImageFont


class Canvas:
    """A picture that is being drawn. Shapes are painted `smooth` times larger and averaged, so that edges are soft."""

    def __init__(self, size, colour, smooth, font_file):
        self.image = Image.new("RGBA", size, opaque(colour))
        self.smooth = smooth
        self.font_file = font_file

    def shape(self, box, colour, paint):
        """Fills with one colour what `paint(draw, scale)` draws in white; its coordinates are relative to the box's
        corner."""
        x, y, w, h = box
        mask = Image.new("L", (w * self.smooth, h * self.smooth), 0)
        paint(ImageDraw.Draw(mask), self.smooth)
        self.fill_mask((x, y), mask.reduce(self.smooth) if self.smooth > 1 else mask, colour)

    def fill_mask(self, corner, mask, colour):
        red, green, blue, alpha = opaque(colour)
        tile = Image.new("RGBA", mask.size, (red, green, blue, 0))
        tile.putalpha(mask.point([level * alpha // 255 for level in range(256)]))
        self.image.alpha_composite(tile, corner)

    def rounded(self, box, colour, radius=0):
        """A filled rectangle with round corners."""
        _, _, w, h = box

        def paint(draw, s):
            draw.rounded_rectangle((0, 0, w * s - 1, h * s - 1), radius * s, fill=255)

        self.shape(box, colour, paint)

    def outline(self, box, colour, width, radius=0):
        """The frame of a rectangle, drawn inside it."""
        _, _, w, h = box

        def paint(draw, s):
            draw.rounded_rectangle((0, 0, w * s - 1, h * s - 1), radius * s, fill=255)
            inner = max(radius - width, 0)
            draw.rounded_rectangle(
                (width * s, width * s, (w - width) * s - 1, (h - width) * s - 1), inner * s, fill=0
            )

        self.shape(box, colour, paint)

    def icon(self, box, name, colour):
        """An icon of the table below, as large as fits the box, centred in it."""
        x, y, w, h = box
        side = min(w, h)
        square = (x + (w - side) // 2, y + (h - side) // 2, side, side)
        self.shape(square, colour, lambda draw, s: paint_icon(draw, name, side * s))

    def caption(self, box, text, pixels, colour, align="center"):
        """A caption in the picture itself, centred vertically by its capitals."""
        x, y, w, h = box
        font = caption_font(self.font_file, pixels)
        width = round(font.getlength(text))
        left = {"center": x + (w - width) // 2, "left": x, "right": x + w - width}[align]
        mask = Image.new("L", (width + 2, pixels * 2), 0)
        ImageDraw.Draw(mask).text((0, pixels * 1.5), text, fill=255, font=font, anchor="ls")
        capitals = round(pixels * 0.73)
        self.fill_mask((left, round(y + (h + capitals) / 2 - pixels * 1.5)), mask, colour)


def opaque(colour):
    return colour if len(colour) == 4 else (*colour, 255)


@lru_cache(maxsize=None)
def caption_font(file, pixels):
    return ImageFont.truetype(str(file), pixels, layout_engine=ImageFont.Layout.BASIC)


def _triangle(left, right, middle=0.5, half=0.34):
    """A triangle that points from left to right (or the other way if left is the larger)."""
    return [(left, middle - half), (left, middle + half), (right, middle)]


def _bar(left, top, right, bottom):
    return [(left, top), (right, top), (right, bottom), (left, bottom)]


def _down(top, tip, half=0.34, middle=0.5):
    return [(middle - half, top), (middle + half, top), (middle, tip)]


def _disc(radius):
    turn = [2 * math.pi * i / 72 for i in range(72)]
    return [(0.5 + radius * math.cos(angle), 0.5 + radius * math.sin(angle)) for angle in turn]


# Polygons in a unit square; those after "cut" are removed again.
ICONS = {
    "Preview": {"fill": [_bar(0.14, 0.18, 0.24, 0.82), _triangle(0.56, 0.24), _triangle(0.88, 0.56)]},
    "Stop": {"fill": [_bar(0.22, 0.22, 0.78, 0.78)]},
    "Play": {"fill": [_triangle(0.26, 0.84, half=0.36)]},
    "Pause": {"fill": [_bar(0.24, 0.18, 0.42, 0.82), _bar(0.58, 0.18, 0.76, 0.82)]},
    "Next": {"fill": [_bar(0.76, 0.18, 0.86, 0.82), _triangle(0.44, 0.76), _triangle(0.12, 0.44)]},
    "Down": {"fill": [_bar(0.42, 0.12, 0.58, 0.52), _down(0.48, 0.88)]},
    "Up": {"fill": [_bar(0.42, 0.48, 0.58, 0.88), _down(0.52, 0.12)]},
    "Remove": {
        "fill": [
            [(0.18, 0.3), (0.3, 0.18), (0.82, 0.7), (0.7, 0.82)],
            [(0.7, 0.18), (0.82, 0.3), (0.3, 0.82), (0.18, 0.7)],
        ]
    },
    "Load": {
        "fill": [_bar(0.1, 0.3, 0.9, 0.84), _bar(0.1, 0.18, 0.46, 0.34)],
        "cut": [_bar(0.1, 0.36, 0.9, 0.41)],
    },
    "Save": {
        "fill": [_bar(0.42, 0.1, 0.58, 0.38), _down(0.34, 0.66, half=0.26), _bar(0.12, 0.58, 0.88, 0.88)],
        "cut": [_bar(0.24, 0.5, 0.34, 0.74), _bar(0.66, 0.5, 0.76, 0.74), _bar(0.24, 0.7, 0.76, 0.76)],
    },
    "Back": {"fill": [_triangle(0.5, 0.1, half=0.36), _bar(0.48, 0.4, 0.9, 0.6)]},
    "PreviewPage": {"fill": [_triangle(0.72, 0.24, half=0.38)]},
    "NextPage": {"fill": [_triangle(0.28, 0.76, half=0.38)]},
    "playing": {"fill": [_triangle(0.28, 0.84, half=0.36)]},
    "waiting": {
        "fill": [_bar(0.12, 0.2, 0.88, 0.34), _bar(0.12, 0.44, 0.88, 0.58), _bar(0.12, 0.68, 0.56, 0.82)]
    },
    "video": {
        "fill": [_bar(0.06, 0.2, 0.94, 0.8)],
        "cut": [_bar(x, y, x + 0.1, y + 0.1) for x in (0.12, 0.34, 0.56, 0.78) for y in (0.25, 0.65)],
    },
    "delete": {
        "fill": [[(0.04, 0.5), (0.3, 0.2), (0.96, 0.2), (0.96, 0.8), (0.3, 0.8)]],
        "cut": [
            [(0.42, 0.4), (0.48, 0.34), (0.78, 0.6), (0.72, 0.66)],
            [(0.72, 0.34), (0.78, 0.4), (0.48, 0.66), (0.42, 0.6)],
        ],
    },
    "bars": {"fill": [_bar(0.1, 0.5, 0.28, 0.86), _bar(0.41, 0.14, 0.59, 0.86), _bar(0.72, 0.34, 0.9, 0.86)]},
    "clock": {"fill": [_disc(0.42)], "cut": [_bar(0.45, 0.2, 0.54, 0.55), _bar(0.45, 0.46, 0.76, 0.55)]},
    "film": {
        "fill": [_bar(0.04, 0.16, 0.96, 0.84)],
        "cut": [_bar(x, y, x + 0.11, y + 0.1) for x in (0.11, 0.335, 0.555, 0.78) for y in (0.21, 0.69)]
        + [_triangle(0.4, 0.66, half=0.15)],
    },
    "blank": {"fill": [_bar(0.0, 0.6, 1.0, 0.74), _bar(0.0, 0.4, 0.12, 0.62), _bar(0.88, 0.4, 1.0, 0.62)]},
}


def paint_icon(draw, name, side):
    """Paints an icon in white on a square of `side` pixels."""
    for part, level in (("fill", 255), ("cut", 0)):
        for polygon in ICONS[name].get(part, []):
            draw.polygon([(x * side, y * side) for x, y in polygon], fill=level)


def save_png(image, path):
    """Writes a lossless PNG: with a palette if 256 colours are enough, and without alpha if everything is opaque."""
    pixels = numpy.asarray(image.convert("RGBA")).view("<u4")[..., 0]
    colours, index = numpy.unique(pixels, return_inverse=True)
    table = colours.view(numpy.uint8).reshape(-1, 4)
    if len(colours) <= 256:
        order = numpy.argsort(table[:, 3], kind="stable")
        place = numpy.empty_like(order)
        place[order] = numpy.arange(len(order))
        table = table[order]
        image = Image.fromarray(place[index].reshape(pixels.shape).astype(numpy.uint8), "P")
        image.putpalette(table[:, :3].tobytes())
        alpha = table[:, 3][table[:, 3] < 255].tobytes()
        image.save(path, optimize=True, **({"transparency": alpha} if alpha else {}))
    elif (table[:, 3] == 255).all():
        image.convert("RGB").save(path, optimize=True)
    else:
        image.save(path, optimize=True)
