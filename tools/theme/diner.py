"""The look of the theme "touch": the bright enamel of a diner. Cream cards, cherry red where one presses, a mint
background, a checkered strip. Made for fingers: everything that can be pressed is raised, everything else is flat."""

import numpy

from layout import Rect
from light import SCRIPT, Sheet, mix

MINT_TOP, MINT_LOW = (134, 196, 178), (104, 170, 152)
CREAM, PAPER = (255, 249, 234), (248, 238, 214)
CHERRY, CHERRY_TOP, CHERRY_LOW = (178, 26, 34), (208, 48, 52), (142, 14, 24)
INK, SEPIA = (38, 28, 26), (96, 70, 58)
TEAL = (16, 74, 74)
RADIUS = 18
STEEL = [(0.0, (250, 250, 250)), (0.45, (196, 200, 204)), (0.5, (138, 144, 150)), (1.0, (232, 234, 236))]


def checkers(sheet, box, side):
    """A strip of black and cream squares."""
    x, y, w, h = box
    across, down = numpy.arange(w)[None, :] // side, numpy.arange(h)[:, None] // side
    dark = ((across + down) % 2)[..., None]
    sheet.blend(x, y, numpy.asarray(CREAM) * (1 - dark) + numpy.asarray(INK) * dark, numpy.ones((h, w)))


class Diner:
    """Paints the parts of the theme."""

    def front(self, sheet, layout):
        w, h = sheet.size
        sheet.rounded((0, 0, w, h), 0, [(0, MINT_TOP), (1, MINT_LOW)])
        sheet.rounded((w // 2 - 2, 16, 4, h - 150), 2, mix(MINT_LOW, TEAL, 0.4))

    def foot(self, sheet, layout):
        """The strip below the pages: checkers, and the legend of the marks between them."""
        box = layout.legend
        sheet.rounded(box.inset(4), 20, CREAM)
        sheet.ring(box.inset(4), 20, 2.5, TEAL)
        entries = (("bars", "PLAYING", "playing", 0), ("clock", "NEXT", "waiting", 146), ("film", "VIDEO", "video", 260))
        for icon, word, colour, left in entries:
            place = Rect(box.x + 22 + left, box.y + (box.h - 32) // 2, 32, 32)
            self.badge(sheet, place, icon, getattr(layout.colours, colour))
            sheet.caption((box.x + 62 + left, box.y, 120, box.h), word, 22, INK, "left")
        back, last = layout.navigation["Back"], layout.navigation["NextPage"]
        for left, width in ((back.x, 260), (last.x + last.w - 520, 520)):
            checkers(sheet, (left, back.y + 30, width, 52), 26)

    def card(self, sheet, slot, lit):
        card = slot.whole.inset(6)
        tab = Rect(slot.label.x - 6, slot.label.y - 2, slot.label.w + 12, slot.label.h + 4)
        if lit:
            sheet.rounded((card.x, card.y + 3, card.w, card.h), RADIUS, (70, 6, 12))
            face = (card.x, card.y, card.w, card.h - 1)
            sheet.rounded(face, RADIUS, [(0, CHERRY_TOP), (0.15, CHERRY), (1, (158, 20, 28))])
            sheet.ring(face, RADIUS, 4, (255, 236, 190))
            sheet.rounded(tab, 14, (98, 6, 14))
            return
        sheet.rounded((card.x, card.y + 3, card.w, card.h), RADIUS, mix(MINT_LOW, TEAL, 0.55))
        sheet.rounded((card.x, card.y, card.w, card.h - 1), RADIUS, [(0, (255, 253, 244)), (0.2, CREAM), (1, PAPER)])
        sheet.rounded(tab, 14, (255, 255, 255))
        sheet.ring(tab, 14, 2.5, CHERRY)

    def number(self, sheet, slot, lit):
        """A record seen from above, its label in cherry red."""
        disc = Rect(slot.cover.x + 2, slot.cover.y + 2, slot.cover.w - 4, slot.cover.h - 4)
        sheet.rounded(disc, disc.w, (30, 28, 30))
        for inset in (4, 8, 12):
            sheet.ring(disc, disc.w, 1.2, (70, 68, 70), inset=inset)
        side = slot.number.h
        label = Rect(slot.number.x + (slot.number.w - side) // 2, slot.number.y, side, side)
        sheet.rounded(label, side, (110, 8, 18) if lit else (255, 232, 176))
        sheet.ring(label, side, 2, (255, 232, 176) if lit else CHERRY)

    def mark_frame(self, sheet, slot, name):
        card = slot.whole.inset(6)
        box = (card.x, card.y, card.w, card.h - 1)
        if name == "nowplaying":
            sheet.ring(box, RADIUS, 9, (255, 255, 255))
            sheet.ring(box, RADIUS, 7, (0, 128, 76))
        else:
            sheet.ring(box, RADIUS, 5.5, (255, 255, 255))
            sheet.ring(box, RADIUS, 4, (30, 104, 200))

    def badge(self, sheet, box, icon, colour):
        sheet.rounded(box, 9, (255, 255, 255))
        inner = Rect(*box).inset(2)
        sheet.rounded(inner, 7, colour)
        sheet.icon(inner.inset(4), icon, (255, 255, 255))

    def ground_under(self, sheet, box):
        """Touch buttons cover the checkers that the strip shows without them."""
        whole = Sheet((sheet.size[0], sheet.size[1]))
        whole.rounded((0, 0, *sheet.size), 0, [(0, MINT_TOP), (1, MINT_LOW)])
        x, y, w, h = box
        sheet.blend(x, y, whole.colour[y : y + h, x : x + w], numpy.ones((h, w)))

    def button(self, sheet, box, icon, word, available, focused):
        """Enamel with a lip below; flat and pale if not available; yellow in a dark ring under the cursor."""
        body = Rect(box[0] + 3, box[1] + 3, box[2] - 6, box[3] - 9)
        sheet.rounded(box, 20, mix(MINT_LOW, CREAM, 0.72))
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
            sheet.rounded(body, RADIUS, (216, 222, 208))
            sheet.ring(body, RADIUS, 4 if focused else 1.6, (190, 110, 0) if focused else (160, 174, 162))
            ink = (116, 60, 0) if focused else (86, 92, 86)
        self.face(sheet, body, icon, word, ink, ink if available else mix(ink, (216, 222, 208), 0.45))

    @staticmethod
    def face(sheet, box, icon, word, ink, icon_ink):
        x, y, w, h = box
        if w > 2 * h:
            side = h * 52 // 100
            sheet.icon((x + h // 4, y + (h - side) // 2, side, side), icon, icon_ink)
            sheet.caption((x + h * 84 // 100, y, w - h, h), word, 30, ink, "left")
            return
        sheet.icon((x, y + h // 10, w, h - 22 - h * 26 // 100), icon, icon_ink)
        sheet.caption((x, y + h - 22 - h // 10, w, 22), word, 22, ink)

    def block(self, sheet, box, focused):
        """A cream panel in a steel rim; a thick cherry rim while it has the focus."""
        box = Rect(*box)
        sheet.rounded(box, 0, MINT_LOW)
        sheet.rounded(box.inset(3), 16, mix(MINT_LOW, CREAM, 0.72))
        if focused:
            sheet.ring(box.inset(1), 16, 6, CHERRY)
        else:
            sheet.ring(box.inset(2), 16, 5, TEAL)
            sheet.ring(box.inset(2), 16, 3, (226, 232, 230), inset=1)

    def display(self, sheet, box):
        sheet.rounded(box, 14, [(0, (24, 62, 60)), (1, (14, 48, 48))])
        sheet.ring(box, 14, 2.5, TEAL)

    def window(self, sheet, box, head, word):
        sheet.rounded(box, 14, (255, 253, 246))
        sheet.ring(box, 14, 2, TEAL)
        sheet.caption(head, word, 21, SEPIA)

    def list_field(self, sheet, box, row):
        x, y, w, h = box
        sheet.rounded(Rect(*box).inset(-2), 5, TEAL)
        # Every row shows the background of the first one, so it must be flat, with square corners.
        sheet.rounded(box, 0, (255, 252, 242))
        for bottom in range(row, h + 1, row):
            sheet.rounded((x + 4, y + bottom - 1, w - 8, 1), 0, (200, 196, 176))

    def cursor(self, sheet, box):
        """The bar is shown with and without the focus, so it is not cherry red, the colour of the focus."""
        sheet.rounded(box, 6, [(0, (255, 232, 150)), (1, (255, 214, 104))])
        sheet.ring(box, 6, 2, (176, 104, 0))

    def screen(self, sheet, box):
        sheet.rounded(box, 8, (228, 226, 206))

    def row(self, sheet, box, lit):
        x, y, w, h = box
        sheet.rounded(box, 0, (228, 226, 206))
        sheet.rounded((x + 2, y + 1, w - 4, h - 3), 10, (166, 22, 30) if lit else (255, 252, 242))
        if not lit:
            sheet.ring((x + 2, y + 1, w - 4, h - 3), 10, 1.4, (176, 172, 150))

    def row_choice(self, sheet, box, lit):
        x, y, w, h = box
        sheet.rounded((x - h, y, w + 2 * h, h - 2), 10, (104, 6, 14) if lit else (238, 232, 212))
        for left, icon in ((x - h, "PreviewPage"), (x + w, "NextPage")):
            sheet.icon(Rect(left, y - 1, h, h).inset(8), icon, (255, 236, 190) if lit else CHERRY)

    def row_button(self, sheet, box, lit):
        x, y, w, h = box[0] - 14, box[1], box[2] + 28, box[3]
        sheet.rounded((x, y, w, h - 2), 12, (104, 6, 14) if lit else (238, 232, 212))
        sheet.ring((x, y, w, h - 2), 12, 2, (255, 236, 190) if lit else CHERRY)

    def key(self, sheet, box, face, lit):
        x, y, w, h = box
        sheet.rounded((x, y + 4, w, h - 4), 14, (86, 4, 12) if lit else mix(MINT_LOW, TEAL, 0.6))
        sheet.rounded((x, y, w, h - 5), 14, list(enumerate((CHERRY_TOP, (166, 22, 30)) if lit else ((255, 255, 255), PAPER))))
        ink = (255, 255, 255) if lit else INK
        if len(face) > 1:
            sheet.icon(Rect(x, y - 2, w, h).inset(15), face, ink)
        elif face:
            sheet.caption((x, y - 2, w, h), face, 40, ink)

    def lower_front(self, sheet, layout, front):
        """The lower front in portrait: enamel, checkers, the frame of the menu and the maker's name on a red plate."""
        w, h = sheet.size
        bw, bh = layout.block
        sheet.rounded((0, 0, w, h), 0, [(0, MINT_LOW), (1, mix(MINT_LOW, TEAL, 0.35))])
        frame = Rect(front.command.x - 12, front.command.y - 12, bw + 24, bh + 24)
        sheet.rounded(frame, 24, MINT_LOW)
        sheet.ring(frame, 24, 5, TEAL)
        sheet.ring(frame, 24, 3, (226, 232, 230), inset=1)
        for left in (24, front.command.x + bw + 36):
            for i in range(5):
                bar = Rect(left, front.command.y + 14 + i * 70, front.command.x - 60, 44)
                sheet.rounded((bar.x, bar.y + 4, bar.w, bar.h), 22, mix(MINT_LOW, TEAL, 0.6))
                sheet.rounded(bar, 22, STEEL)
        top = front.command.y + bh + 40
        checkers(sheet, (0, top, w, 96), 32)
        checkers(sheet, (0, h - 96, w, 96), 32)
        plate = Rect(w // 2 - 250, (top + 96 + h - 96) // 2 - 64, 500, 128)
        sheet.rounded((plate.x, plate.y + 6, plate.w, plate.h), 64, (70, 6, 12))
        sheet.rounded(plate, 64, [(0, CHERRY_TOP), (1, (158, 20, 28))])
        sheet.ring(plate, 64, 4, CREAM, inset=6)
        sheet.caption(plate, "Vantorix", 84, (255, 244, 214), font_file=SCRIPT)
        sheet.clear(front.main)

    def veil(self, size, waiting):
        """A veil over the whole screen, stretched when it is drawn; the waiting one has three dots."""
        w, h = size
        sheet = Sheet(size)
        sheet.rounded((0, 0, w, h), 0, (0, 0, 0), 0.28 if waiting else 0.7)
        sheet.alpha[:] = numpy.rint((0.28 if waiting else 0.7) * 255) / 255
        if waiting:
            sheet.rounded((0, h // 2 - 15, w, 30), 0, (0, 0, 0), 0.8)
            for left in (-35, -7, 21):
                sheet.rounded((w // 2 + left, h // 2 - 4, 14, 8), 4, (255, 244, 214))
        return sheet
