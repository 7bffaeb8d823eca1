"""Paints with light on numpy: rounded shapes with exact soft edges, gradients, glows, chrome, wood and captions."""

from contextlib import contextmanager
from functools import lru_cache
from pathlib import Path

import numpy
from PIL import Image, ImageDraw, ImageFont

from drawing import paint_icon

CONDENSED = Path("/usr/share/fonts/truetype/roboto/unhinted/RobotoCondensed-Bold.ttf")
POSTER = Path("/usr/share/fonts/opentype/bebas-neue/BebasNeue-Bold.otf")
SCRIPT = Path("/usr/share/fonts/opentype/lobster/lobster.otf")
LEAST_CONTRAST = 4.5
ICON_FINENESS = 8


def luminance(colour):
    """Relative luminance of sRGB colours of 0 to 255, as WCAG 2 defines it."""
    part = numpy.asarray(colour, dtype=float) / 255
    part = numpy.where(part <= 0.03928, part / 12.92, ((part + 0.055) / 1.055) ** 2.4)
    return part @ numpy.array([0.2126, 0.7152, 0.0722])


def contrast(one, other):
    """Contrast of two colours, 1 to 21, as WCAG 2 defines it."""
    a, b = luminance(one), luminance(other)
    return (numpy.maximum(a, b) + 0.05) / (numpy.minimum(a, b) + 0.05)


def mix(one, other, share):
    """The colour at `share` of the way from one to the other."""
    return tuple(a + (b - a) * share for a, b in zip(one, other))


def distance(width, height, box, radius):
    """The distance of each pixel of a canvas from a rounded rectangle; negative inside."""
    x, y, w, h = box
    radius = min(radius, w / 2, h / 2)
    across = abs(numpy.arange(width) + 0.5 - x - w / 2) - w / 2 + radius
    down = abs(numpy.arange(height) + 0.5 - y - h / 2) - h / 2 + radius
    across, down = across[None, :], down[:, None]
    outer = numpy.hypot(numpy.maximum(across, 0), numpy.maximum(down, 0))
    return outer + numpy.minimum(numpy.maximum(across, down), 0) - radius


def ramp(stops, height):
    """A vertical gradient of (position 0 to 1, colour) stops, as one row per pixel line."""
    at = (numpy.arange(height) + 0.5) / max(height, 1)
    places = [place for place, _ in stops]
    rows = [numpy.interp(at, places, [colour[i] for _, colour in stops]) for i in range(3)]
    return numpy.stack(rows, axis=-1)[:, None, :]


CHROME = (
    (0.0, (252, 250, 246)), (0.30, (176, 178, 182)), (0.48, (96, 98, 104)), (0.52, (58, 58, 64)),
    (0.62, (120, 118, 116)), (0.85, (214, 210, 202)), (1.0, (148, 144, 138)),
)  # fmt: skip
BRASS = (
    (0.0, (255, 238, 190)), (0.22, (232, 186, 108)), (0.48, (166, 112, 48)), (0.54, (118, 72, 26)),
    (0.75, (190, 136, 66)), (1.0, (132, 84, 36)),
)  # fmt: skip


class Sheet:
    """A picture that is being drawn: colours of 0 to 255 and alpha of 0 to 1, in floating point."""

    def __init__(self, size, colour=None):
        width, height = size
        self.size = (width, height)
        self.colour = numpy.zeros((height, width, 3))
        self.alpha = numpy.zeros((height, width))
        self.limits = (0, 0, width, height)
        if colour is not None:
            self.colour[:] = colour
            self.alpha[:] = 1

    @contextmanager
    def within(self, box):
        """Clips everything painted in the `with` block to a rectangle, for parts that are cut out of the picture later."""
        x, y, w, h = box
        before, self.limits = self.limits, (x, y, x + w, y + h)
        yield
        self.limits = before

    def blend(self, x, y, colour, cover):
        """Draws a colour, or an array of colours, over the picture with this coverage, clipped to the limits."""
        height, width = cover.shape
        left, top = max(x, self.limits[0]), max(y, self.limits[1])
        right, bottom = min(x + width, self.limits[2]), min(y + height, self.limits[3])
        if left >= right or top >= bottom:
            return
        part = numpy.broadcast_to(numpy.asarray(colour, dtype=float), (height, width, 3))
        part = part[top - y : bottom - y, left - x : right - x]
        cover = cover[top - y : bottom - y, left - x : right - x]
        colours, alpha = self.colour[top:bottom, left:right], self.alpha[top:bottom, left:right]
        total = cover + alpha * (1 - cover)
        share = numpy.where(total > 0, cover / numpy.maximum(total, 1e-9), 0)[..., None]
        colours += (part - colours) * share
        alpha[:] = total

    def paint(self, box, radius, paint, cover, margin):
        """Fills the shape given by `cover(distance)` with a colour or a list of stops over the box."""
        x, y, w, h = box
        far = distance(w + 2 * margin, h + 2 * margin, (margin, margin, w, h), radius)
        if isinstance(paint, tuple):
            colour = paint
        else:
            rows = ramp(paint, h)
            colour = numpy.concatenate([rows[:1].repeat(margin, 0), rows, rows[-1:].repeat(margin, 0)])
        self.blend(x - margin, y - margin, colour, cover(far))

    def rounded(self, box, radius, paint, strength=1.0):
        """A filled rounded rectangle."""
        self.paint(box, radius, paint, lambda far: numpy.clip(0.5 - far, 0, 1) * strength, 1)

    def ring(self, box, radius, width, paint, strength=1.0, inset=0.0):
        """A band along the inside of the edge."""
        middle = -inset - width / 2
        self.paint(box, radius, paint, lambda far: numpy.clip(width / 2 + 0.5 - abs(far - middle), 0, 1) * strength, 1)

    def glow(self, box, radius, reach, colour, strength, inside=False):
        """Light that fades away from the edge: outwards, or also inwards."""

        def cover(far):
            away = abs(far) if inside else numpy.where(far < -1, 1e9, numpy.maximum(far, 0))
            return strength * numpy.exp(-((away / (reach * 0.5)) ** 2))

        self.paint(box, radius, colour, cover, reach + 2)

    def chrome(self, box, radius, width):
        """A polished rim."""
        self.ring(box, radius, width + 1.2, (6, 5, 5), 0.8)
        self.ring(box, radius, width, list(CHROME), inset=0.4)
        mirrored = [(1 - place, colour) for place, colour in reversed(CHROME)]
        self.ring(box, radius, width * 0.4, mirrored, inset=width * 0.6)

    def stamp(self, x, y, mask, paint):
        """Fills a mask of 0 to 255 with a colour or stops over its height."""
        cover = numpy.asarray(mask, dtype=float) / 255
        self.blend(x, y, paint if isinstance(paint, tuple) else ramp(paint, cover.shape[0]), cover)

    def icon(self, box, name, paint):
        """An icon of drawing.py, as large as fits the box, centred in it."""
        x, y, w, h = box
        side = min(w, h)
        self.stamp(x + (w - side) // 2, y + (h - side) // 2, icon_mask(name, side), paint)

    def caption(self, box, text, pixels, colour, align="center", font_file=POSTER):
        """A caption in the picture itself, centred vertically by its capitals. Fails if it would be illegible."""
        x, y, w, h = box
        mask, capitals = text_mask(text, pixels, font_file)
        left = {"center": x + (w - mask.width) // 2, "left": x, "right": x + w - mask.width}[align]
        top = round(y + (h - capitals) / 2 - pixels * 0.5)
        if isinstance(colour, tuple) and font_file != SCRIPT:
            middle = y + h // 2
            ground = self.colour[middle - capitals // 2 : middle + capitals // 2, left : left + mask.width]
            worst = contrast(colour, ground).min()
            assert worst >= LEAST_CONTRAST, f"caption {text}: contrast {worst:.2f}"
        self.stamp(left, top, mask, colour)

    def icon_and_word(self, box, icon, word, side, pixels, colour, icon_last=False):
        """An icon and a word next to each other, centred together in the box."""
        x, y, w, h = box
        mask, _ = text_mask(word, pixels, POSTER)
        gap = side // 3
        left = x + (w - side - gap - mask.width) // 2
        places = (left + mask.width + gap, left) if icon_last else (left, left + side + gap)
        self.icon((places[0], y + (h - side) // 2, side, side), icon, colour)
        self.caption((places[1], y, mask.width, h), word, pixels, colour, "left")

    def stamp_text(self, box, text, font_file, points, colour):
        """A text where the jukebox draws it: centred by the line of its font."""
        x, y, w, h = box
        font = ImageFont.truetype(str(font_file), round(points * 96 / 72), layout_engine=ImageFont.Layout.BASIC)
        ascent, descent = font.getmetrics()
        mask = Image.new("L", (w, h), 0)
        place = ((w - font.getlength(text)) / 2, h / 2 - (ascent + descent) / 2)
        ImageDraw.Draw(mask).text((round(place[0]), round(place[1])), text, fill=255, font=font)
        self.stamp(x, y, mask, colour)

    def paste(self, x, y, other):
        """Draws another sheet over this one."""
        self.blend(x, y, other.colour, other.alpha)

    def clear(self, box):
        """Makes a rectangle transparent."""
        x, y, w, h = box
        self.alpha[y : y + h, x : x + w] = 0
        self.colour[y : y + h, x : x + w] = 0

    def image(self):
        """The picture in 8 bits per channel; transparent pixels are black."""
        alpha = numpy.rint(self.alpha * 255)
        colour = numpy.where(alpha[..., None] > 0, numpy.rint(self.colour), 0)
        return Image.fromarray(numpy.dstack([colour, alpha]).clip(0, 255).astype(numpy.uint8), "RGBA")


@lru_cache(maxsize=None)
def icon_mask(name, side):
    mask = Image.new("L", (side * ICON_FINENESS,) * 2, 0)
    paint_icon(ImageDraw.Draw(mask), name, side * ICON_FINENESS)
    return mask.reduce(ICON_FINENESS)


@lru_cache(maxsize=None)
def text_mask(text, pixels, font_file):
    """White letters on black, with the top of the capitals half the font size below the edge, and the capitals' height."""
    font = ImageFont.truetype(str(font_file), pixels, layout_engine=ImageFont.Layout.BASIC)
    box = font.getbbox("H", anchor="ls")
    capitals = -box[1]
    mask = Image.new("L", (round(font.getlength(text)) + 4, pixels * 2), 0)
    ImageDraw.Draw(mask).text((1, pixels * 0.5 + capitals), text, fill=255, font=font, anchor="ls")
    return mask, capitals


def smooth_noise(rng, width, height, cells_x, cells_y):
    """Noise of 0 to 1 that changes slowly: random points with cosine interpolation."""
    points = rng.random((cells_y + 1, cells_x + 1))
    at_x, at_y = numpy.linspace(0, cells_x, width, endpoint=False), numpy.linspace(0, cells_y, height, endpoint=False)
    left, top = at_x.astype(int), at_y.astype(int)
    ease_x = (0.5 - 0.5 * numpy.cos(numpy.pi * (at_x - left)))[None, :]
    ease_y = (0.5 - 0.5 * numpy.cos(numpy.pi * (at_y - top)))[:, None]
    upper = points[top][:, left] * (1 - ease_x) + points[top][:, left + 1] * ease_x
    lower = points[top + 1][:, left] * (1 - ease_x) + points[top + 1][:, left + 1] * ease_x
    return upper * (1 - ease_y) + lower * ease_y


def wood(width, height, seed, dark, pale, upright=False):
    """Planed wood of these colours with its grain along x, or along y."""
    if upright:
        return wood(height, width, seed, dark, pale).transpose(1, 0, 2)
    rng = numpy.random.default_rng(seed)
    bend = smooth_noise(rng, width, height, max(width // 260, 1), max(height // 60, 1))
    rows = numpy.arange(height)[:, None] / 9.0
    rings = 0.5 + 0.5 * numpy.sin(2 * numpy.pi * (rows * 0.35 + bend * 3.2))
    fibre = smooth_noise(rng, width, height, max(width // 40, 1), max(height // 2, 1))
    tone = smooth_noise(rng, width, height, max(width // 400, 1), max(height // 120, 1))
    share = (0.5 * rings + 0.22 * fibre + 0.28 * tone)[..., None]
    # The few steps are not visible, and the picture compresses far better.
    share = numpy.rint(share * 22) / 22
    return numpy.asarray(dark, dtype=float) + (numpy.asarray(pale, dtype=float) - dark) * share


def cloth(width, height, dark, pale):
    """Woven grille cloth."""
    across = numpy.arange(width)[None, :]
    down = numpy.arange(height)[:, None]
    weave = ((across // 3 + down // 3) % 2) * 0.6 + ((across % 6 == 0) | (down % 6 == 0)) * 0.4
    return numpy.asarray(dark, dtype=float) + (numpy.asarray(pale, dtype=float) - dark) * weave[..., None]


def bubbles(box, seed):
    """Bubbles that rise in a tube, as (x, y, radius): larger and further apart towards the top."""
    rng = numpy.random.default_rng(seed)
    found, y = [], box.y + box.h
    while y > box.y + 10:
        high = (box.y + box.h - y) / box.h
        radius = int(3 + 5 * high + rng.integers(0, 3))
        x = int(box.x + radius + rng.random() * max(box.w - 2 * radius, 1))
        found.append((x, int(y - radius), radius))
        y -= radius * 1.3 + rng.random() * 9
    return found
