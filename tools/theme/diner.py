"""The look of the theme "touch": the bright enamel of a diner. Pale cards, cherry red where one presses, mint enamel,
steel and checkers. Made for fingers: everything that can be pressed is raised, everything else is flat."""

import numpy

from layout import Rect
from light import SCRIPT, Sheet, mix, ramp
from look import Look

MINT_TOP, MINT_LOW = (134, 196, 178), (104, 170, 152)
CREAM, PAPER = (255, 249, 234), (248, 238, 214)
CHERRY, CHERRY_TOP, CHERRY_LOW = (178, 26, 34), (208, 48, 52), (142, 14, 24)
INK, SEPIA = (38, 28, 26), (96, 66, 54)
TEAL = (16, 74, 74)
PANEL = (222, 232, 216)
RADIUS = 18
STEEL = [
    (0.0, (252, 252, 252)), (0.40, (206, 210, 214)), (0.5, (140, 146, 152)), (0.62, (176, 182, 186)),
    (1.0, (236, 238, 240)),
]  # fmt: skip


def checkers(sheet, box, side, first=0):
    """Black and cream squares; `first` is 1 if the corner is black."""
    x, y, w, h = box
    across, down = numpy.arange(w)[None, :] // side, numpy.arange(h)[:, None] // side
    dark = ((across + down + first) % 2)[..., None]
    sheet.blend(x, y, numpy.asarray(CREAM) * (1 - dark) + numpy.asarray(INK) * dark, numpy.ones((h, w)))


class Diner(Look):
    """Paints the parts of the theme."""

    ARROW, ARROW_LIT = (166, 180, 166), (255, 236, 190)
    BUTTON, BUTTON_RADIUS = (166, 180, 166), 10
    DIGITS, COIN, COIN_INSIDE = (232, 235, 221), (216, 222, 204), (226, 230, 214)

    def front(self, sheet, layout):
        """Mint enamel, a steel rod between the pages, and the plinth."""
        w, h = sheet.size
        foot = layout.navigation["Back"].y + layout.navigation["Back"].h + 4
        self.enamel(sheet, (0, 0, w, foot))
        left = layout.pages[0].x + layout.pages[0].w
        rod = Rect(left + (layout.pages[1].x - left) // 2 - 5, 20, 10, layout.pages[0].h - 28)
        sheet.rounded((rod.x + 1, rod.y + 3, rod.w, rod.h), 5, mix(MINT_LOW, TEAL, 0.6), 0.7)
        self.upright(sheet, rod)
        self.plinth(sheet, Rect(0, foot, w, h - foot))

    @staticmethod
    def enamel(sheet, box):
        sheet.rounded(box, 0, [(0, MINT_TOP), (1, MINT_LOW)])

    @staticmethod
    def upright(sheet, box):
        """An upright steel rod, lit from the left."""
        across = numpy.broadcast_to(ramp(STEEL, box.w).transpose(1, 0, 2), (box.h, box.w, 3))
        part = Sheet((box.w, box.h))
        part.rounded((0, 0, box.w, box.h), box.w // 2, (255, 255, 255))
        part.colour[:] = across
        sheet.paste(box.x, box.y, part)

    def plinth(self, sheet, box, first=0):
        """What a screen shows that is higher than 16:9: steel rails, checkers, fluted enamel. It can end at any row."""
        x, y, w, h = box
        waves = 0.5 + 0.5 * numpy.sin(2 * numpy.pi * (numpy.arange(w) % 40) / 40)
        dark = numpy.asarray(mix(MINT_LOW, TEAL, 0.42))
        shade = dark + (numpy.asarray(MINT_TOP) - dark) * waves[:, None]
        sheet.blend(x, y, numpy.broadcast_to(shade[None], (h, w, 3)), numpy.ones((h, w)))
        checkers(sheet, (x, y + 28, w, 80), 40, first)
        sheet.rounded((x, y + 108, w, 4), 0, mix(MINT_LOW, TEAL, 0.7), 0.6)
        for top in (y, y + 238):
            sheet.rounded((x, top + 26, w, 4), 0, mix(MINT_LOW, TEAL, 0.8), 0.7)
            sheet.rounded((x, top, w, 28), 0, STEEL)

    def foot(self, sheet, layout):
        """The strip below the pages: checkers, and the legend of the marks between them."""
        box = layout.legend
        sheet.rounded((box.x + 4, box.y + 7, box.w - 8, box.h - 8), 22, mix(MINT_LOW, TEAL, 0.5))
        sheet.rounded(box.inset(4), 22, (240, 243, 228))
        sheet.ring(box.inset(4), 22, 2.5, TEAL)
        entries = (("bars", "PLAYING", "playing", 0), ("clock", "NEXT", "waiting", 158), ("film", "VIDEO", "video", 278))
        for icon, word, colour, left in entries:
            place = Rect(box.x + 28 + left, box.y + (box.h - 32) // 2, 32, 32)
            self.badge(sheet, place, icon, getattr(layout.colours, colour))
            sheet.caption((box.x + 70 + left, box.y, 120, box.h), word, 28, INK, "left")
        back, last = layout.navigation["Back"], layout.navigation["NextPage"]
        # The touch buttons cover them, with a margin for the rounding on a smaller screen.
        for left, width in ((back.x + 13, 234), (last.x + last.w - 526, 520)):
            checkers(sheet, (left, back.y + 30, width, 52), 26)
            sheet.rounded((left, back.y + 26, width, 4), 0, STEEL)
            sheet.rounded((left, back.y + 82, width, 4), 0, STEEL)

    def card(self, sheet, slot, lit):
        card = slot.whole.inset(4)
        if lit:
            sheet.rounded((card.x, card.y + 3, card.w, card.h), RADIUS, (70, 6, 12))
            face = (card.x, card.y, card.w, card.h - 1)
            sheet.rounded(face, RADIUS, [(0, CHERRY_TOP), (0.15, CHERRY), (1, (158, 20, 28))])
            sheet.ring(face, RADIUS, 4, (255, 236, 190))
            return
        sheet.rounded((card.x, card.y + 3, card.w, card.h), RADIUS, mix(MINT_LOW, TEAL, 0.45))
        face = (card.x, card.y, card.w, card.h - 1)
        sheet.rounded(face, RADIUS, [(0, (249, 249, 238)), (0.2, (242, 244, 230)), (1, (228, 235, 217))])

    def number(self, sheet, slot, lit):
        """A record seen from above, its label in cherry red."""
        disc = slot.cover.inset(1)
        sheet.rounded(disc, disc.w, (30, 28, 30))
        for inset in (4, 7, 10):
            sheet.ring(disc, disc.w, 1.2, (72, 70, 72), inset=inset)
        side = slot.number.h
        label = Rect(slot.number.x + (slot.number.w - side) // 2, slot.number.y, side, side)
        sheet.rounded(label, side, (110, 8, 18) if lit else (255, 232, 176))
        sheet.ring(label, side, 2, (255, 232, 176) if lit else CHERRY)

    def mark_frame(self, sheet, slot, name):
        card = slot.whole.inset(4)
        box = (card.x, card.y, card.w, card.h - 1)
        if name == "nowplaying":
            sheet.ring(box, RADIUS, 7.4, (255, 255, 255))
            sheet.ring(box, RADIUS, 6, (0, 128, 76))
        else:
            sheet.ring(box, RADIUS, 5.5, (255, 255, 255))
            sheet.ring(box, RADIUS, 4, (30, 104, 200))

    def badge(self, sheet, box, icon, colour):
        sheet.rounded(box, 8, (255, 255, 255))
        inner = Rect(*box).inset(1)
        sheet.rounded(inner, 7, colour)
        sheet.icon(inner.inset(3), icon, (255, 255, 255))

    def ground_under(self, sheet, box):
        """Touch buttons cover the checkers that the strip shows without them."""
        whole = Sheet((sheet.size[0], box.y + box.h + 4))
        self.enamel(whole, (0, 0, *whole.size))
        x, y, w, h = box
        sheet.blend(x, y, whole.colour[y : y + h, x : x + w], numpy.ones((h, w)))

    def button(self, sheet, box, icon, word, available, focused):
        """Enamel with a lip below; flat and pale if not available; yellow in a dark ring under the cursor."""
        body = Rect(box[0] + 3, box[1] + 3, box[2] - 6, box[3] - 9)
        sheet.rounded(box, 20, PANEL)
        if available:
            top, low, lip, ink = (
                ((255, 226, 120), (255, 196, 44), (150, 92, 0), (52, 24, 0)) if focused
                else (CHERRY_TOP, (166, 22, 30), (86, 4, 12), (255, 255, 255))
            )  # fmt: skip
            sheet.rounded((body.x, body.y + 5, body.w, body.h), RADIUS, lip)
            sheet.rounded(body, RADIUS, [(0, top), (0.3, mix(top, low, 0.6)), (1, low)])
            if focused:
                sheet.ring(body, RADIUS, 4, (120, 52, 0))
        else:
            sheet.rounded(body, RADIUS, (211, 221, 206))
            sheet.ring(body, RADIUS, 4 if focused else 1.4, (190, 110, 0) if focused else (176, 190, 176))
            ink = (116, 60, 0) if focused else (86, 96, 88)
        self.face(sheet, body, icon, word, ink, ink if available else mix(ink, (211, 221, 206), 0.45))

    @staticmethod
    def face(sheet, box, icon, word, ink, icon_ink):
        """Icon above the word, or beside it if the button is wide: an arrow to the right on the right."""
        x, y, w, h = box
        if w > 2 * h:
            sheet.icon_and_word(box, icon, word, h * 48 // 100, 40, ink, icon == "NextPage")
            return
        line = 20
        sheet.icon((x, y + h // 10, w, h - line - h * 26 // 100), icon, icon_ink)
        sheet.caption((x, y + h - line - h // 10, w, line), word, line, ink)

    def frame(self, sheet, box, focused):
        """A pale panel in a steel rim; a thick cherry rim while it has the focus."""
        sheet.rounded(box.inset(3), 16, PANEL)
        if focused:
            sheet.ring(box.inset(1), 16, 6, CHERRY)
        else:
            sheet.ring(box.inset(2), 16, 5, TEAL)
            sheet.ring(box.inset(2), 16, 3, (226, 232, 230), inset=1)

    def main_ground(self, sheet, layout, focused):
        self.block(sheet, (0, 0, *layout.block), focused)

    def block(self, sheet, box, focused):
        box = Rect(*box)
        sheet.rounded(box, 0, MINT_LOW)
        self.frame(sheet, box, focused)

    def panel(self, sheet, box, focused):
        """The block of the menu, and the keyboard. Their corners are square, so that nothing shows beside them."""
        box = Rect(*box)
        sheet.rounded(box, 0, TEAL)
        sheet.rounded(box.inset(5 if focused else 2), 0, CHERRY if focused else (226, 232, 230))
        sheet.rounded(box.inset(6 if focused else 4), 3, PANEL)
        if focused:
            sheet.ring(box, 0, 6, CHERRY)

    def message_field(self, sheet, first, second):
        """Dark glass behind both lines of the message."""
        top = first.y - 8
        self.display(sheet, (second.x - 14, top, second.w + 28, second.y + second.h - top + 6))

    def display(self, sheet, box):
        sheet.rounded(box, 14, [(0, (24, 62, 60)), (1, (14, 48, 48))])
        sheet.ring(box, 14, 2.5, TEAL)

    def window(self, sheet, box, head, word):
        sheet.rounded(box, 14, (246, 247, 236))
        sheet.ring(box, 14, 2, mix(TEAL, PANEL, 0.45))
        sheet.caption(head, word, 23, SEPIA)

    def list_field(self, sheet, box, row):
        """Rows of two lines: the title on white, the artist on mint below it."""
        x, y, w, h = box
        sheet.rounded(Rect(*box).inset(-2), 5, mix(TEAL, PANEL, 0.35))
        for top in range(y, y + h, row):
            sheet.rounded((x, top, w, row // 2), 0, (246, 247, 236))
            sheet.rounded((x, top + row // 2, w, row // 2 - 4), 0, (217, 230, 216))
            sheet.rounded((x, top + row - 4, w, 4), 0, (176, 200, 186))

    def cursor(self, sheet, box):
        """The selected row is cherry red like a selected card."""
        x, y, w, h = box
        sheet.rounded((x, y, w, h - 4), 6, [(0, CHERRY_TOP), (0.4, CHERRY)])
        sheet.rounded((x + 2, y + h // 2, w - 4, h // 2 - 6), 0, (128, 12, 22))
        sheet.ring((x, y, w, h - 4), 6, 2, (104, 6, 14))

    def screen(self, sheet, box):
        sheet.rounded(box, 2, PANEL)

    def row(self, sheet, box, lit):
        x, y, w, h = box
        sheet.rounded(box, 0, PANEL)
        if lit:
            sheet.rounded((x + 2, y + 4, w - 4, h - 6), 10, CHERRY)
        else:
            sheet.rounded((x + 12, y + h - 1, w - 24, 1), 0, (196, 208, 192))

    def key(self, sheet, box, face, lit):
        x, y, w, h = box
        sheet.rounded((x, y + 4, w, h - 4), 14, (86, 4, 12) if lit else mix(MINT_LOW, TEAL, 0.6))
        sheet.rounded((x, y, w, h - 5), 14, list(enumerate((CHERRY_TOP, (166, 22, 30)) if lit else ((255, 255, 255), PAPER))))
        ink = (255, 255, 255) if lit else INK
        if len(face) > 1:
            sheet.icon(Rect(x, y - 2, w, h).inset(15), face, ink)
        elif face:
            sheet.caption((x, y - 2, w, h), face, 46, ink)

    def lower_front(self, sheet, layout, front):
        """The base of the machine: enamel columns beside the menu's block, and the plinth.

        Landscape shows the left column. Portrait shows the base as far as the screen goes: columns on both sides and the
        maker's name between them.
        """
        w, h = sheet.size
        bw, bh = layout.block
        right = front.main.x
        sheet.rounded((0, 0, w, 2 * bh), 0, MINT_LOW)
        for left in (0, right):
            self.base(sheet, Rect(left, bh, bw, bh), front.command.x)
        plate = Rect(w // 2 - 180, bh + bh // 2 - 60, 360, 120)
        sheet.rounded((plate.x, plate.y + 6, plate.w, plate.h), 60, (70, 6, 12))
        sheet.rounded(plate, 60, [(0, CHERRY_TOP), (1, (158, 20, 28))])
        sheet.ring(plate, 60, 4, CREAM, inset=6)
        sheet.caption(plate, "Vantorix", 70, (255, 244, 214), font_file=SCRIPT)
        # The squares go on from those of the zone, which is an odd number of them wide.
        self.plinth(sheet, Rect(0, 2 * bh, w, h - 2 * bh), 1)
        sheet.clear(front.main)

    def base(self, sheet, box, side):
        """A part of the base as wide as a block: a record, which the menu's block covers, between columns."""
        field = Rect(box.x + side, box.y, box.w - 2 * side, box.h)
        disc = field.inset(26)
        sheet.rounded(disc.moved(3, 7), disc.w, mix(MINT_LOW, TEAL, 0.6), 0.7)
        sheet.rounded(disc, disc.w, (30, 28, 30))
        for inset in range(8, disc.w // 2 - 60, 6):
            sheet.ring(disc, disc.w, 1.4, (58, 56, 58), inset=inset)
        label = disc.inset(disc.w // 2 - 58)
        sheet.rounded(label, label.w, [(0, CHERRY_TOP), (1, CHERRY_LOW)])
        sheet.ring(label, label.w, 3, CREAM, inset=5)
        sheet.rounded(label.inset(label.w // 2 - 9), 9, CREAM)
        for left in (box.x, box.x + box.w - side):
            self.column(sheet, Rect(left + 8, box.y + 24, side - 16, box.h - 48))

    @staticmethod
    def column(sheet, box):
        """A round column of cherry red enamel with steel rings."""
        part = Sheet((box.w, box.h))
        part.rounded((0, 0, box.w, box.h), 14, CHERRY)
        across = (numpy.arange(box.w) + 0.5) / box.w
        shade = (0.45 + 0.75 * numpy.sin(numpy.pi * across))[None, :, None]
        part.colour[:] = (numpy.asarray(CHERRY_TOP) * shade).clip(0, 255)
        sheet.rounded((box.x + 2, box.y + 4, box.w, box.h), 14, mix(MINT_LOW, TEAL, 0.6), 0.7)
        sheet.paste(box.x, box.y, part)
        sheet.rounded((box.x + 6, box.y + 6, 3, box.h - 12), 1, (255, 226, 214), 0.55)
        step = (box.h - 4) // 4
        for i in range(5):
            y, height = box.y - 8 + i * step, (20 if i in (0, 4) else 12)
            sheet.rounded((box.x - 6, y + 3, box.w + 12, height), 6, mix(CHERRY_LOW, INK, 0.5), 0.6)
            sheet.rounded((box.x - 6, y, box.w + 12, height), 6, STEEL)

    def veil(self, size):
        """A veil over the whole screen, stretched when it is drawn."""
        sheet = Sheet(size)
        sheet.rounded((0, 0, *size), 0, (0, 0, 0))
        sheet.alpha[:] = round(0.7 * 255) / 255
        return sheet
