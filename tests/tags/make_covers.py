#!/usr/bin/python3
"""Draws the covers for the golden frames and puts some of them into tags, all in the folder "covers" next to this
script.

Run it from any folder, without arguments; it needs Pillow. JPEG files are the same on every run with the same version
of Pillow.
"""

import io
import math
import os

from PIL import Image, ImageDraw

import make_tags

FOLDER = os.path.join(os.path.dirname(os.path.abspath(__file__)), "covers")
SIDE = 960


def sky(top, bottom):
    """A gradient from one colour to another."""
    picture = Image.new("RGB", (SIDE, SIDE))
    draw = ImageDraw.Draw(picture)
    for y in range(SIDE):
        draw.line((0, y, SIDE, y), tuple(a + (b - a) * y // SIDE for a, b in zip(top, bottom)))
    return picture, draw


def sunset():
    picture, draw = sky((60, 20, 90), (250, 140, 40))
    draw.ellipse((320, 420, 640, 740), (255, 230, 120))
    draw.rectangle((0, 700, SIDE, SIDE), (30, 20, 50))
    return picture


def harbour():
    picture, draw = sky((120, 190, 230), (220, 240, 250))
    draw.rectangle((0, 620, SIDE, SIDE), (20, 80, 130))
    draw.polygon(((480, 160), (480, 600), (780, 600)), (250, 250, 250))
    draw.polygon(((200, 640), (800, 640), (700, 760), (300, 760)), (180, 40, 40))
    return picture


def target():
    picture, draw = sky((20, 60, 40), (60, 140, 90))
    for ring, colour in enumerate(((240, 240, 220), (200, 30, 30)) * 3):
        edge = 100 + 65 * ring
        draw.ellipse((edge, edge, SIDE - edge, SIDE - edge), colour)
    return picture


def star():
    """A star on a transparent ground."""
    picture = Image.new("RGBA", (120, 120), (0, 0, 0, 0))
    corners = []
    for i in range(10):
        radius, angle = (58, 24)[i % 2], math.pi * i / 5
        corners.append((60 + radius * math.sin(angle), 60 - radius * math.cos(angle)))
    ImageDraw.Draw(picture).polygon(corners, (250, 210, 40, 255))
    return picture


def file_of(picture, kind):
    out = io.BytesIO()
    picture.save(out, kind, quality=75)
    return out.getvalue()


def tagged(*pictures):
    frames = b"".join(make_tags.picture(3, data, category=kind, mime=mime) for mime, kind, data in pictures)
    return make_tags.id3(3, make_tags.text_frame(3) + frames + make_tags.PADDING)


def main():
    os.makedirs(FOLDER, exist_ok=True)
    jpegs = {name: file_of(draw(), "JPEG") for name, draw in
             (("sunset", sunset), ("harbour", harbour), ("target", target))}
    files = {name + ".jpg": data for name, data in jpegs.items()}
    files["star.png"] = file_of(star(), "PNG")
    files["front.mp3"] = tagged((b"image/jpeg", 4, jpegs["sunset"]), (b"image/jpeg", 3, jpegs["harbour"]))
    files["back-alone.mp3"] = tagged((b"image/jpeg", 4, jpegs["sunset"]))
    files["png.mp3"] = tagged((b"image/png", 3, files["star.png"]), (b"image/jpeg", 3, jpegs["sunset"]))
    files["picture.wma"] = make_tags.asf([make_tags.PROPERTIES, make_tags.extension(make_tags.library(
        make_tags.record("WM/Picture", 1, make_tags.value(jpegs["target"])))), make_tags.END])
    for name, data in files.items():
        with open(os.path.join(FOLDER, name), "wb") as out:
            out.write(data)


if __name__ == "__main__":
    main()
