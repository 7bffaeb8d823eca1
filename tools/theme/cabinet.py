"""The look of the theme "default": a walnut jukebox with an arch of light, bubble tubes, brass and chrome. Light comes
from above and from the tubes. Title cards are dark glass; the selected one is lit from behind."""

import numpy

from layout import Rect
from light import BRASS, CHROME, SCRIPT, Sheet, bubbles, cloth, mix, ramp, wood
from look import Look

WALNUT_DARK, WALNUT_PALE = (58, 29, 15), (142, 85, 45)
SOOT = (14, 9, 7)
CREAM = (255, 246, 226)
AMBER, FLAME = (255, 176, 58), (255, 112, 28)
INK = (38, 16, 2)
GLASS = [(0.0, (92, 46, 27)), (0.10, (70, 32, 20)), (0.5, (55, 24, 15)), (0.54, (47, 20, 13)), (1.0, (38, 16, 10))]
BACKLIT = [(0.0, (255, 226, 160)), (0.42, (255, 206, 114)), (1.0, (248, 168, 58))]
BODY = [(0.0, (112, 84, 66)), (0.12, (88, 64, 50)), (1.0, (46, 32, 25))]
SUNK = [(0.0, (18, 12, 10)), (1.0, (30, 22, 18))]
RADIUS = 10
# A rim that runs down the whole machine.
SIDE_CHROME = [
    (0, (236, 232, 224)), (0.06, (186, 184, 180)), (0.16, (122, 120, 120)), (0.3, (168, 164, 158)), (1, (150, 144, 136)),
]  # fmt: skip
# The tube of light from the crown of the arch down the sides of the blocks: colours by theme row of the machine.
LIGHT = (
    (0, (255, 232, 150)), (120, (255, 186, 78)), (360, (244, 96, 34)), (540, (226, 58, 40)), (720, (255, 150, 48)),
)  # fmt: skip
# Distance of the rings of the frame from the edge of a block.
EDGE, TUBE, INNER = 4, 8, 28


class Cabinet(Look):
    """Paints the parts of the theme."""

    ARROW, ARROW_LIT = (84, 66, 52), AMBER
    BUTTON = (70, 54, 43)
    DIGITS, COIN, COIN_INSIDE = (38, 27, 21), (60, 42, 30), (46, 32, 24)

    def front(self, sheet, layout):
        """Walnut, a brass line and a darker field around each page, a rod of light between them, and the plinth."""
        w, h = sheet.size
        live = [slot.whole for slot in layout.slots.values() if slot.whole.w]
        first, last = min(box.y for box in live), max(box.y + box.h for box in live)
        foot = layout.navigation["Back"].y + layout.navigation["Back"].h + 6
        self.walnut(sheet, (0, 0, w, foot))
        for page in layout.pages:
            field = Rect(page.x - 4, first - 5, page.w + 8, last - first + 10)
            sheet.rounded(field, 13, (20, 8, 3), 0.55)
            sheet.ring(field, 13, 2.4, list(BRASS))
        left = layout.pages[0].x + layout.pages[0].w
        rod = Rect(left + (layout.pages[1].x - left) // 2 - 5, first + 14, 10, last - first - 28)
        self.rod(sheet, rod)
        self.plinth(sheet, Rect(0, foot, w, h - foot), 70)

    @staticmethod
    def walnut(sheet, box, seed=3):
        x, y, w, h = box
        sheet.blend(x, y, wood(w, h, seed, WALNUT_DARK, WALNUT_PALE), numpy.ones((h, w)))

    def rod(self, sheet, rod):
        """A thin tube of light in brass caps."""
        sheet.rounded(rod.inset(-3), 8, (20, 8, 3), 0.8)
        sheet.glow(rod, 5, 16, FLAME, 0.4)
        sheet.rounded(rod, 5, [(0, (255, 196, 96)), (0.5, (236, 104, 40)), (1, (255, 196, 96))])
        sheet.rounded(rod.inset(3), 2, (255, 236, 190), 0.85)
        for y in (rod.y - 10, rod.y + rod.h - 6):
            sheet.rounded((rod.x - 5, y, rod.w + 10, 16), 4, list(BRASS))

    def plinth(self, sheet, box, pitch):
        """What a screen shows that is higher than 16:9: a rail of light over a grille of cloth and chrome bars. It can
        end at any row."""
        x, y, w, h = box
        sheet.rounded(box, 0, (20, 9, 4))
        grille = y + 34
        fabric = numpy.resize(cloth(pitch, 6, (34, 17, 8), (92, 54, 26)), (6, pitch, 3))
        down = numpy.arange(h - 34)
        below = numpy.where(down < 206, down, down - 206)
        shine = (0.62 + 0.9 * numpy.exp(-below / 60.0))[:, None, None]
        tiles = numpy.tile(fabric, (-(-(h - 34) // 6), -(-w // pitch), 1))[: h - 34, :w]
        sheet.blend(x, grille, (tiles * shine).clip(0, 255), numpy.ones((h - 34, w)))
        bar = ramp(list(CHROME), 8).transpose(1, 0, 2) * (0.75 + 0.25 * numpy.exp(-below / 60.0))[:, None, None]
        for left in range(x + pitch // 2 - 4, x + w, pitch):
            sheet.rounded((left - 3, grille, 14, h - 34), 0, (12, 5, 2), 0.5)
            with sheet.within((x, y, w, h)):
                sheet.blend(left, grille, bar, numpy.ones((h - 34, 8)))
        for top in (y, y + 240):
            self.rail(sheet, Rect(x, top, w, 34))

    @staticmethod
    def rail(sheet, box):
        """A brass rail with a tube of light in it."""
        x, y, w, h = box
        sheet.rounded((x, y + h - 2, w, 5), 0, (14, 6, 2), 0.8)
        sheet.rounded((x, y, w, h), 0, list(BRASS))
        sheet.rounded((x, y + h // 2 - 6, w, 12), 0, (60, 20, 6))
        sheet.rounded((x, y + h // 2 - 4, w, 8), 0, [(0, (255, 150, 60)), (0.5, (255, 228, 160)), (1, (255, 150, 60))])

    def foot(self, sheet, layout):
        """The strip below the pages: the maker's name, the legend of the marks, brass fins."""
        strip = layout.navigation["Back"]
        box = layout.legend
        self.logo(sheet, strip.moved(0, -2), 58)
        far, right = layout.navigation["PreviewPage"], layout.navigation["NextPage"]
        first, last = far.x + 4, right.x + right.w - 4
        for i in range(4):
            y = far.y + 16 + i * 13
            sheet.rounded((first - 1, y + 2, last - first + 2, 7), 3, (20, 8, 3), 0.7)
            sheet.rounded((first, y, last - first, 6), 3, list(BRASS))
        sheet.rounded(box.inset(3), 16, SOOT, 0.92)
        sheet.ring(box.inset(3), 16, 2.2, list(BRASS))
        entries = (
            ("bars", "NOW PLAYING", "playing", 0),
            ("clock", "COMING NEXT", "waiting", 212),
            ("film", "VIDEO", "video", 424),
        )
        for icon, word, colour, left in entries:
            place = Rect(box.x + 26 + left, box.y + (box.h - 28) // 2, 28, 28)
            self.badge(sheet, place, icon, getattr(layout.colours, colour))
            sheet.caption((box.x + 64 + left, box.y, 150, box.h), word, 27, (226, 206, 176), "left")

    def logo(self, sheet, box, pixels):
        """The maker's name in brass letters with a shadow."""
        shade = (box[0] + 3, box[1] + 3, *box[2:])
        sheet.caption(shade, "Vantorix", pixels, (16, 6, 2), font_file=SCRIPT)
        letters = [
            (0, (255, 255, 252)), (0.3, (255, 236, 200)), (0.5, (244, 196, 118)), (0.62, (190, 120, 46)),
            (1, (255, 228, 174)),
        ]  # fmt: skip
        sheet.caption(box, "Vantorix", pixels, letters, font_file=SCRIPT)

    def card(self, sheet, slot, lit):
        """A title card: glass in a thin brass frame, or lit from behind with a rim of light."""
        card = slot.whole.inset(2)
        line = Rect(slot.label.x + slot.label.w + 1, card.y + 12, 2, card.h - 24)
        if lit:
            sheet.glow(card, RADIUS, 6, FLAME, 0.95)
            sheet.rounded(card, RADIUS, BACKLIT)
            sheet.ring(card, RADIUS, 3, (255, 248, 216))
            sheet.rounded(line, 1, (150, 74, 8), 0.5)
            return
        sheet.rounded((card.x, card.y + 2, card.w, card.h), RADIUS, (8, 3, 1), 0.6)
        sheet.rounded(card, RADIUS, GLASS)
        sheet.ring(card, RADIUS, 1.5, [(0, (206, 150, 84)), (0.2, (124, 78, 42)), (1, (92, 56, 30))])

    def number(self, sheet, slot, lit):
        """A record with the track number on its paper label."""
        disc = slot.cover.inset(2)
        sheet.rounded((disc.x + 1, disc.y + 3, disc.w, disc.h), disc.w, (6, 2, 1), 0.55)
        sheet.rounded(disc, disc.w, (13, 12, 13))
        for inset, level in ((0, 96), (5, 52), (8, 60), (11, 48)):
            sheet.ring(disc, disc.w, 1.1, (level, level - 2, level), inset=inset)
        label = Rect(slot.number.x - 1, slot.number.y - 1, slot.number.w + 2, slot.number.h + 2)
        paper = ((255, 250, 236), (255, 232, 190)) if lit else ((232, 190, 120), (208, 158, 86))
        sheet.rounded(label, label.w, list(enumerate(paper)))
        sheet.ring(label, label.w, 1.2, (110, 54, 10))

    def mark_frame(self, sheet, slot, name):
        """A frame of light around a queued track: a full tube while it is playing, a thin one while it is waiting."""
        card = slot.whole.inset(2)
        if name == "nowplaying":
            sheet.glow(card, RADIUS, 5, (70, 232, 120), 0.8)
            sheet.ring(card, RADIUS, 3, (70, 222, 116))
            sheet.ring(card, RADIUS, 1.2, (214, 255, 224), inset=0.9)
        else:
            sheet.ring(card, RADIUS, 2.6, (104, 186, 255))

    def badge(self, sheet, box, icon, colour):
        """A small lit field with an icon."""
        sheet.rounded(box, 6, (6, 6, 6))
        inner = Rect(*box).inset(1)
        sheet.rounded(inner, 5, [(0, mix(colour, (255, 255, 255), 0.35)), (1, colour)])
        sheet.icon(inner.inset(3), icon, (10, 8, 8))

    def ground_under(self, sheet, box):
        """Touch buttons cover the decoration that the strip shows without them."""
        x, y, w, h = box
        grain = wood(sheet.size[0], y + h + 6, 3, WALNUT_DARK, WALNUT_PALE)
        sheet.blend(x, y, grain[y : y + h, x : x + w], numpy.ones((h, w)))

    def button(self, sheet, box, icon, word, available, focused):
        """A push button: raised with a chrome rim, sunken and dull if not available, lit from behind under the
        cursor."""
        body = Rect(*box).inset(4)
        sheet.rounded(box, 12, SOOT)
        if available and focused:
            sheet.glow(body, 10, 5, FLAME, 0.95)
            sheet.rounded(body, 10, BACKLIT)
            sheet.ring(body, 10, 2.5, (255, 246, 214))
            ink = INK
        elif available:
            sheet.rounded(body, 10, BODY)
            sheet.chrome(body, 10, 3)
            ink = CREAM
        else:
            sheet.rounded(body, 10, SUNK)
            ink = (142, 124, 108)
            if focused:
                sheet.ring(body, 10, 3.5, (255, 150, 40))
                sheet.ring(body, 10, 1.2, (255, 224, 170), inset=1.1)
                ink = (218, 166, 102)
            else:
                sheet.ring(body, 10, 1.2, (64, 50, 42))
        self.face(sheet, body, icon, word, ink)

    @staticmethod
    def face(sheet, box, icon, word, ink):
        """Icon above the word, or beside it if the button is wide: an arrow to the right on the right."""
        x, y, w, h = box
        if w > 2 * h:
            sheet.icon_and_word(box, icon, word, h * 5 // 10, 32, ink, icon == "NextPage")
            return
        line = 21
        sheet.icon((x, y + h * 8 // 100, w, h - line - h * 24 // 100), icon, ink)
        sheet.caption((x, y + h - line - h // 10, w, line), word, line, ink)

    def frame(self, sheet, box, radius, focused):
        """The chrome frame with the tube of light in it. The box begins at the top of the machine; where that is above
        the picture, only the straight sides are seen."""
        dim = 0.0 if focused else 0.16
        # The tube is darker at its edges and white in the middle.
        shades = (((60, 8, 0), 0.4, 0), ((60, 8, 0), 0.14, 3), ((60, 8, 0), 0.0, 6), ((255, 255, 255), 0.45, 8))
        sheet.ring(box, radius, INNER + 4 - EDGE, SOOT)
        for tint, share, inset in shades:
            paint = [(row / box.h, mix(mix(colour, (70, 16, 0), dim), tint, share)) for row, colour in LIGHT]
            sheet.ring(box, radius, INNER - TUBE - 2 * inset, paint, inset=TUBE - EDGE + inset)
        if focused:
            sheet.ring(box, radius, 6, (255, 250, 226), inset=TUBE - EDGE + 7)
        inner = Rect(*box).inset(INNER - EDGE)
        for rim, corner in ((box, radius), (inner, max(radius - INNER + EDGE, 2))):
            sheet.ring(rim, corner, 4.6, (8, 5, 4), 0.8)
            sheet.ring(rim, corner, 3.6, SIDE_CHROME, inset=0.4)
            sheet.ring(rim, corner, 1.2, (255, 252, 244), 0.7, inset=1.2)

    @staticmethod
    def collars(sheet, width, rows):
        """Brass collars on the tubes where one block meets the next."""
        for y in rows:
            for left in (1, width - 33):
                sheet.rounded((left, y, 32, 12), 3, list(BRASS))
                sheet.rounded((left, y + 5, 32, 2), 0, (70, 34, 10), 0.6)

    def main_ground(self, sheet, layout, focused):
        """The Main block: the arch of light, below it the glass of the messages."""
        w, h = layout.block
        self.walnut(sheet, (0, 0, w, h), 7)
        box = Rect(EDGE, EDGE, w - 2 * EDGE, 3 * h)
        inside = box.inset(INNER - EDGE + 2)
        sheet.glow(box, 120, 26, FLAME, 0.55 if focused else 0.32)
        sheet.rounded(inside, 98, SOOT)
        glass = Rect(inside.x, inside.y, inside.w, layout.line2.y + layout.line2.h + 6 - inside.y)
        with sheet.within(glass):
            tall = Rect(inside.x, inside.y, inside.w, 2 * glass.h)
            sheet.rounded(tall, 98, [(0, (96, 40, 12)), (0.22, (44, 20, 9)), (0.5, (24, 12, 7)), (1, (24, 12, 7))])
        sheet.rounded((inside.x, glass.y + glass.h, inside.w, 3), 0, list(BRASS))
        self.frame(sheet, box, 120, focused)
        self.collars(sheet, w, (h - 6,))

    def block(self, sheet, box, focused):
        """The sides of the machine with the tubes of light."""
        box = Rect(*box)
        self.walnut(sheet, box, 7)
        sheet.rounded((INNER, 0, box.w - 2 * INNER, box.h), 0, [(0, (34, 22, 16)), (1, (22, 14, 10))])
        with sheet.within(box):
            self.frame(sheet, Rect(EDGE, -box.h, box.w - 2 * EDGE, 3 * box.h), 10, focused)
            self.collars(sheet, box.w, (-6, box.h - 6))

    def panel(self, sheet, box, focused):
        """The block of the menu, and the keyboard: a dark panel in a chrome rim, with a neon tube in it while it has the
        focus. Its corners are square, so that nothing shows beside them."""
        box = Rect(*box)
        sheet.rounded(box, 0, (16, 11, 9))
        if focused:
            sheet.glow(box.inset(4), 2, 15, FLAME, 0.7, inside=True)
            sheet.ring(box.inset(1), 2, 6, (255, 142, 34))
            sheet.ring(box.inset(1), 2, 2.4, (255, 238, 196), inset=1.8)
        else:
            sheet.ring(box, 2, 6, (8, 5, 4))
            sheet.ring(box.inset(2), 2, 3, list(BRASS))

    def message_field(self, sheet, first, second):
        """The lines of the message are on the glass below the arch."""

    def display(self, sheet, box):
        """The text field of the keyboard."""
        sheet.rounded(box, 12, [(0, (10, 6, 4)), (0.6, (27, 15, 6)), (1, (40, 22, 8))])
        sheet.ring(box, 12, 2, [(0, (70, 50, 34)), (1, (168, 118, 62))])

    def window(self, sheet, box, head, word):
        """A counter window with its name."""
        sheet.rounded(box, 10, [(0, (8, 5, 4)), (1, (22, 15, 12))])
        sheet.ring(box, 10, 1.6, [(0, (70, 46, 28)), (1, (150, 106, 62))])
        sheet.caption(head, word, 23, (214, 186, 144))

    def list_field(self, sheet, box, row):
        """Rows of two lines: the title on dark glass, the artist on wood below it."""
        x, y, w, h = box
        sheet.rounded(Rect(*box).inset(-3), 5, (120, 78, 40))
        sheet.rounded(Rect(*box).inset(-2), 4, (14, 9, 7))
        for top in range(y, y + h, row):
            sheet.rounded((x, top, w, row // 2), 0, [(0, (36, 24, 18)), (1, (28, 18, 13))])
            sheet.rounded((x, top + row // 2, w, row // 2 - 4), 0, [(0, (62, 38, 23)), (1, (52, 31, 19))])
            sheet.rounded((x, top + row - 4, w, 4), 0, (10, 6, 5))

    def cursor(self, sheet, box):
        """The selected row is lit from behind like a selected card."""
        x, y, w, h = box
        sheet.rounded((x, y, w, h - 4), 4, BACKLIT)
        sheet.rounded((x, y + h // 2, w, h // 2 - 4), 4, (226, 144, 44), 0.6)
        sheet.ring((x, y, w, h - 4), 4, 2, (255, 246, 210))

    def screen(self, sheet, box):
        """The field of the menu."""
        sheet.rounded(box, 2, (16, 11, 9))

    def row(self, sheet, box, lit):
        x, y, w, h = box
        sheet.rounded(box, 0, (16, 11, 9))
        if lit:
            sheet.rounded((x + 2, y + 4, w - 4, h - 6), 6, [(0, (84, 46, 20)), (1, (58, 30, 12))])
            sheet.ring((x + 2, y + 4, w - 4, h - 6), 6, 2, AMBER)
        else:
            sheet.rounded((x + 12, y + h - 1, w - 24, 1), 0, (46, 34, 27))

    def key(self, sheet, box, face, lit):
        """A key of the keyboard."""
        if lit:
            sheet.rounded(box, 12, BACKLIT)
            sheet.ring(box, 12, 2.5, (255, 246, 214))
            ink = INK
        else:
            sheet.rounded(box, 12, BODY)
            sheet.chrome(box, 12, 2.5)
            ink = CREAM
        if len(face) > 1:
            sheet.icon(Rect(*box).inset(14), face, ink)
        elif face:
            sheet.caption(box, face, 46, ink)

    def lower_front(self, sheet, layout, front):
        """The base of the machine: bubble tubes beside the menu's block, and the plinth.

        Landscape shows the left column. Portrait shows the base as far as the screen goes: bubble tubes on both sides and
        the maker's name between them.
        """
        w, h = sheet.size
        bw, bh = layout.block
        self.walnut(sheet, (0, 0, w, 2 * bh), 11)
        right = front.main.x
        for left in (0, right):
            self.base(sheet, Rect(left, bh, bw, bh), front.command.x)
        middle = Rect(bw, bh, right - bw, bh)
        plate = Rect(middle.x + 20, middle.y + middle.h // 2 - 62, middle.w - 40, 124)
        sheet.rounded(plate.inset(-5), 66, (20, 8, 3), 0.7)
        sheet.rounded(plate, 62, [(0, (104, 26, 16)), (1, (48, 10, 6))])
        sheet.chrome(plate, 62, 5)
        self.logo(sheet, plate, 70)
        # Beside the menu's block, which covers the middle of it in portrait.
        sheet.rounded((bw, 0, right - bw, bh), 0, SOOT)
        self.plinth(sheet, Rect(0, 2 * bh, w, h - 2 * bh), 65)
        sheet.clear(front.main)

    def base(self, sheet, box, side):
        """A part of the base as wide as a block: a speaker, which the menu's block covers, between bubble tubes."""
        grille = Rect(box.x + side, box.y, box.w - 2 * side, box.h)
        fabric = cloth(grille.w, grille.h - 24, (34, 17, 8), (92, 54, 26))
        sheet.rounded(grille, 0, (22, 10, 4))
        sheet.blend(grille.x, grille.y + 12, fabric, numpy.ones((grille.h - 24, grille.w)))
        sheet.ring(grille, 4, 4, list(BRASS))
        self.speaker(sheet, grille.inset(34))
        for i, left in enumerate((box.x, box.x + box.w - side)):
            tube = Rect(left + side // 2 - 21, box.y + 26, 42, box.h - 52)
            self.bubble_tube(sheet, tube, 17 + i)
            for y in (tube.y - 20, tube.y + tube.h - 4):
                sheet.rounded((tube.x - 7, y, tube.w + 14, 24), 6, list(BRASS))
                sheet.rounded((tube.x - 7, y + 10, tube.w + 14, 3), 0, (80, 40, 12), 0.7)

    @staticmethod
    def speaker(sheet, box):
        """A round speaker in a brass ring."""
        sheet.rounded(box.inset(-6), box.w, (12, 5, 2), 0.7)
        sheet.rounded(box, box.w, [(0, (24, 13, 8)), (1, (52, 30, 18))])
        sheet.ring(box, box.w, 8, list(BRASS))
        for inset in range(22, box.w // 2 - 50, 18):
            sheet.ring(box, box.w, 5, [(0, (12, 6, 4)), (1, (88, 54, 32))], inset=inset)
        cap = box.inset(box.w // 2 - 48)
        sheet.rounded(cap, cap.w, [(0, (120, 78, 46)), (0.5, (58, 32, 18)), (1, (30, 15, 8))])
        sheet.ring(cap, cap.w, 3, list(BRASS))

    @staticmethod
    def bubble_tube(sheet, tube, seed):
        """A glass tube with a glowing liquid in which bubbles rise."""
        sheet.rounded(tube.inset(-5), 24, (20, 8, 3), 0.75)
        sheet.glow(tube, 20, 24, FLAME, 0.5)
        sheet.rounded(tube, 20, [(0, (190, 60, 14)), (0.5, (214, 96, 20)), (1, (236, 150, 40))])
        sheet.rounded(tube.inset(6), 15, [(0, (240, 120, 36)), (0.5, (255, 160, 54)), (1, (255, 206, 96))], 0.8)
        with sheet.within(tube.inset(4)):
            for x, y, radius in bubbles(tube.inset(8), seed):
                dot = (x - radius, y - radius, 2 * radius, 2 * radius)
                sheet.rounded(dot, radius, (255, 236, 180), 0.5)
                sheet.ring(dot, radius, 1.4, (255, 250, 226), 0.8)
        sheet.rounded((tube.x + 8, tube.y + 8, 5, tube.h - 16), 3, (255, 255, 246), 0.45)

    def veil(self, size):
        """A veil over the whole screen, stretched when it is drawn: black, darker at the edges."""
        w, h = size
        sheet = Sheet(size)
        across, down = numpy.linspace(-1, 1, w)[None, :], numpy.linspace(-1, 1, h)[:, None]
        edge = numpy.clip((across**2 + down**2) / 2, 0, 1)
        # Steps of 1/32 are invisible, and the picture compresses better.
        sheet.blend(0, 0, (0, 0, 0), numpy.rint((0.70 + 0.16 * edge) * 32) / 32)
        return sheet
