"""The look of the theme "default": a walnut cabinet with chrome rims and smoked glass cards, lit from behind where
something is selected. Only the selected element is lit; everything else is dark."""

import numpy

from layout import Rect
from light import CHROME, SCRIPT, Sheet, cloth, mix, ramp, wood

WALNUT_DARK, WALNUT_PALE = (30, 15, 9), (84, 45, 24)
SOOT = (9, 7, 7)
GLASS_TOP, GLASS_LOW = (38, 33, 33), (19, 16, 17)
CREAM, SMOKE = (255, 244, 222), (168, 154, 138)
AMBER, FLAME = (255, 176, 58), (255, 112, 28)
INK = (34, 16, 2)
BACKLIT = [(0.0, (255, 224, 158)), (0.42, (255, 204, 112)), (1.0, (246, 164, 52))]
BODY = [(0.0, (84, 74, 70)), (0.12, (66, 58, 56)), (1.0, (36, 31, 31))]
SUNK = [(0.0, (17, 14, 14)), (1.0, (25, 21, 21))]
RADIUS = 10


class Cabinet:
    """Paints the parts of the theme."""

    def front(self, sheet, layout):
        """Walnut everywhere, and for each page a recessed dark panel with a chrome rim."""
        w, h = sheet.size
        sheet.blend(0, 0, wood(w, h, 3, WALNUT_DARK, WALNUT_PALE), numpy.ones((h, w)))
        for page in layout.pages:
            first = min(slot.whole.y for slot in layout.slots.values() if slot.whole.w)
            last = max(slot.whole.y + slot.whole.h for slot in layout.slots.values())
            field = Rect(page.x + 10, first - 6, page.w - 20, last - first + 12)
            sheet.chrome(field, 14, 3)
            sheet.rounded(field.inset(3), 11, [(0, (6, 5, 5)), (1, (13, 10, 10))])

    def foot(self, sheet, layout):
        """The strip below the pages: the maker's name, the legend of the marks, chrome fins."""
        strip = layout.navigation["Back"]
        self.logo(sheet, strip, 50)
        far = layout.navigation["PreviewPage"]
        right = layout.navigation["NextPage"]
        for i in range(4):
            y = strip.y + 17 + i * 12
            sheet.rounded((far.x + 10, y - 1, right.x + right.w - far.x - 20, 8), 4, (8, 5, 4), 0.7)
            sheet.rounded((far.x + 12, y, right.x + right.w - far.x - 24, 5), 2, list(CHROME))
        box = layout.legend
        sheet.rounded(box.inset(4), 14, (10, 7, 7), 0.9)
        sheet.ring(box.inset(4), 14, 1.5, (120, 104, 92))
        entries = (
            ("bars", "NOW PLAYING", "playing", 0),
            ("clock", "COMING NEXT", "waiting", 212),
            ("film", "VIDEO", "video", 424),
        )
        for icon, word, colour, left in entries:
            place = Rect(box.x + 26 + left, box.y + (box.h - 30) // 2, 30, 30)
            self.badge(sheet, place, icon, getattr(layout.colours, colour))
            sheet.caption((box.x + 66 + left, box.y, 150, box.h), word, 23, (226, 206, 176), "left")

    def logo(self, sheet, box, pixels):
        """The maker's name in chrome letters with a shadow."""
        shade = (box[0] + 3, box[1] + 3, *box[2:])
        sheet.caption(shade, "Vantorix", pixels, (0, 0, 0), font_file=SCRIPT)
        letters = [
            (0, (255, 255, 252)), (0.3, (255, 236, 200)), (0.5, (240, 190, 110)), (0.62, (176, 110, 40)), (1, (255, 226, 170)),
        ]  # fmt: skip
        sheet.caption(box, "Vantorix", pixels, letters, font_file=SCRIPT)

    def card(self, sheet, slot, lit):
        """A title card: smoked glass, or lit from behind with a rim of light."""
        card = slot.whole.inset(5)
        tab = Rect(slot.label.x - 6, card.y + 3, slot.label.w + 12, card.h - 6)
        if lit:
            sheet.rounded(slot.whole, 0, (8, 6, 6))
            sheet.glow(card, RADIUS, 7, FLAME, 0.95)
            sheet.rounded(card, RADIUS, BACKLIT)
            sheet.ring(card, RADIUS, 3, (255, 244, 206))
            sheet.rounded(tab, 7, [(0, (255, 246, 220)), (1, (255, 226, 160))])
            sheet.ring(tab, 7, 1.5, (150, 74, 8))
            return
        sheet.rounded(card, RADIUS, [(0, GLASS_TOP), (0.5, (27, 23, 24)), (0.52, (23, 19, 20)), (1, GLASS_LOW)])
        sheet.ring(card, RADIUS, 1.4, [(0, (116, 106, 100)), (0.25, (62, 55, 53)), (1, (44, 38, 37))])
        sheet.rounded(tab, 7, [(0, (14, 11, 11)), (1, (20, 16, 16))])
        sheet.ring(tab, 7, 1.2, (56, 46, 38))

    def number(self, sheet, slot, lit):
        """A record with the track number on its paper label."""
        disc = Rect(slot.cover.x + 1, slot.cover.y + 1, slot.cover.w - 2, slot.cover.h - 2)
        sheet.rounded(disc, disc.w, (12, 11, 12))
        for inset, level in ((0, 118), (5, 52), (8, 60), (11, 48)):
            sheet.ring(disc, disc.w, 1.1, (level, level - 2, level), inset=inset)
        label = Rect(slot.number.x - 1, slot.number.y - 1, slot.number.w + 2, slot.number.h + 2)
        paper = ((255, 250, 236), (255, 232, 190)) if lit else ((206, 166, 104), (184, 138, 76))
        sheet.rounded(label, label.w, list(enumerate(paper)))
        sheet.ring(label, label.w, 1.2, (110, 54, 10))

    def mark_frame(self, sheet, slot, name):
        """A frame of light around a queued track: a full tube while it is playing, a thin one while it is waiting."""
        card = slot.whole.inset(5)
        if name == "nowplaying":
            sheet.ring(card, RADIUS, 5.5, (4, 26, 12))
            sheet.glow(card, RADIUS, 6, (70, 232, 120), 0.8)
            sheet.ring(card, RADIUS, 4.5, (70, 222, 116))
            sheet.ring(card, RADIUS, 1.8, (214, 255, 224), inset=1.3)
        else:
            sheet.ring(card, RADIUS, 4.5, (4, 18, 34))
            sheet.ring(card, RADIUS, 3, (104, 186, 255))

    def badge(self, sheet, box, icon, colour):
        """A small lit field with an icon."""
        sheet.rounded(box, 6, (6, 6, 6))
        inner = Rect(*box).inset(1)
        sheet.rounded(inner, 5, [(0, mix(colour, (255, 255, 255), 0.35)), (1, colour)])
        sheet.icon(inner.inset(3), icon, (10, 8, 8))

    def ground_under(self, sheet, box):
        """Touch buttons cover the decoration that the strip shows without them."""
        grain = wood(*sheet.size, 3, WALNUT_DARK, WALNUT_PALE)
        x, y, w, h = box
        sheet.blend(x, y, grain[y : y + h, x : x + w], numpy.ones((h, w)))

    def button(self, sheet, box, icon, word, available, focused):
        """A push button: raised with a chrome rim, sunken and dull if not available, lit from behind under the
        cursor."""
        body = Rect(*box).inset(4)
        sheet.rounded(box, 12, (8, 6, 6))
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
            ink = (142, 128, 116)
            if focused:
                sheet.ring(body, 10, 3.5, (255, 150, 40))
                sheet.ring(body, 10, 1.2, (255, 224, 170), inset=1.1)
                ink = (214, 160, 96)
            else:
                sheet.ring(body, 10, 1.2, (58, 50, 47))
        self.face(sheet, body, icon, word, ink)

    @staticmethod
    def face(sheet, box, icon, word, ink):
        """Icon above the word, or next to it if the button is wide."""
        x, y, w, h = box
        if w > 2 * h:
            side = h * 5 // 10
            sheet.icon((x + h // 4, y + (h - side) // 2, side, side), icon, ink)
            sheet.caption((x + h * 7 // 8, y, w - h, h), word, 25, ink, "left")
            return
        line = 18 if h < 80 else 20
        sheet.icon((x, y + h * 8 // 100, w, h - line - h * 20 // 100), icon, ink)
        sheet.caption((x, y + h - line - h // 12, w, line), word, line, ink)

    def block(self, sheet, box, focused):
        """A block: a dark panel in a chrome rim of seven pixels, with a neon tube in it while it has the focus."""
        box = Rect(*box)
        sheet.rounded(box, 0, SOOT)
        sheet.rounded(box.inset(5), 10, [(0, (34, 28, 27)), (1, (17, 14, 14))])
        if focused:
            sheet.glow(box.inset(4), 11, 15, FLAME, 0.75, inside=True)
            sheet.ring(box.inset(1), 13, 6, (255, 142, 34))
            sheet.ring(box.inset(1), 13, 2.4, (255, 238, 196), inset=1.8)
        else:
            sheet.chrome(box.inset(2), 12, 3)

    def display(self, sheet, box):
        """The message window: deep glass with a warm glimmer."""
        sheet.rounded(box, 12, [(0, (10, 6, 4)), (0.6, (27, 15, 6)), (1, (40, 22, 8))])
        sheet.ring(box, 12, 2, [(0, (70, 50, 34)), (1, (168, 118, 62))])

    def window(self, sheet, box, head, word):
        """A counter window with its name."""
        sheet.rounded(box, 10, [(0, (8, 6, 6)), (1, (19, 15, 14))])
        sheet.ring(box, 10, 1.6, [(0, (48, 42, 40)), (1, (104, 92, 82))])
        sheet.caption(head, word, 21, (214, 190, 152))

    def list_field(self, sheet, box, row):
        x, y, w, h = box
        # Every row shows the background of the first one, so it must be flat, with square corners.
        sheet.rounded(Rect(*box).inset(-2), 4, (62, 50, 44))
        sheet.rounded(box, 0, (11, 9, 9))
        for bottom in range(row, h + 1, row):
            sheet.rounded((x + 4, y + bottom - 1, w - 8, 1), 0, (52, 43, 38))

    def cursor(self, sheet, box):
        """The bar is shown with and without the focus, so it is warm but not lit."""
        sheet.rounded(box, 4, [(0, (92, 50, 14)), (1, (62, 32, 9))])
        sheet.ring(box, 4, 2, AMBER)

    def screen(self, sheet, box):
        sheet.rounded(box, 6, (9, 7, 7))

    def row(self, sheet, box, lit):
        x, y, w, h = box
        sheet.rounded(box, 0, (9, 7, 7))
        field = (x + 2, y + 1, w - 4, h - 3)
        if lit:
            sheet.rounded(field, 8, BACKLIT)
            sheet.ring(field, 8, 2, (255, 244, 206))
        else:
            sheet.rounded(field, 8, [(0, (34, 29, 29)), (1, (22, 18, 19))])
            sheet.ring(field, 8, 1, (58, 50, 47))

    def row_choice(self, sheet, box, lit):
        x, y, w, h = box
        field = (x - h, y, w + 2 * h, h - 2)
        fill, ink = (((255, 240, 206), (150, 66, 4)) if lit else ((11, 8, 8), AMBER))
        sheet.rounded(field, 8, fill)
        for left, icon in ((x - h, "PreviewPage"), (x + w, "NextPage")):
            sheet.icon(Rect(left, y - 1, h, h).inset(9), icon, ink)

    def row_button(self, sheet, box, lit):
        x, y, w, h = box
        field = (x - 14, y, w + 28, h - 2)
        if lit:
            sheet.rounded(field, 10, (255, 240, 206))
            sheet.ring(field, 10, 1.5, (150, 66, 4))
        else:
            sheet.rounded(field, 10, BODY)
            sheet.ring(field, 10, 1.6, (150, 142, 136))

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
            sheet.caption(box, face, 40, ink)

    def lower_front(self, sheet, layout, front):
        """The machine's lower front in portrait: walnut, the frame of the menu, lights on both sides, the grille."""
        w, h = sheet.size
        bw, bh = layout.block
        sheet.blend(0, 0, wood(w, h, 11, WALNUT_DARK, WALNUT_PALE), numpy.ones((h, w)))
        frame = Rect(front.command.x - 12, front.command.y - 12, bw + 24, bh + 24)
        sheet.rounded(frame.inset(-3), 18, (6, 4, 4), 0.8)
        sheet.chrome(frame, 16, 4)
        for left in (40, front.command.x + bw + 40):
            for i, colour in enumerate((FLAME, AMBER, (255, 214, 150))):
                tube = Rect(left + 24 + i * 68, front.command.y + 10, 44, bh - 20)
                sheet.rounded(tube.inset(-5), 27, (8, 5, 4), 0.85)
                sheet.glow(tube, 22, 26, colour, 0.35)
                sheet.rounded(tube, 22, mix(colour, (40, 12, 0), 0.45))
                sheet.rounded(tube.inset(9), 13, mix(colour, (120, 40, 0), 0.15), 0.8)
                sheet.rounded(tube.inset(17), 5, mix(colour, (255, 255, 255), 0.5), 0.85)
                for end in (tube.y - 8, tube.y + tube.h - 10):
                    sheet.rounded((tube.x - 4, end, tube.w + 8, 18), 6, list(CHROME))
        grille = Rect(36, front.command.y + bh + 44, w - 72, h - front.command.y - bh - 80)
        sheet.chrome(grille.inset(-6), 26, 5)
        fabric = Sheet((grille.w, grille.h))
        fabric.rounded((0, 0, grille.w, grille.h), 20, (30, 16, 8))
        fabric.colour[:] = cloth(grille.w, grille.h, (26, 13, 7), (72, 42, 20))
        sheet.paste(grille.x, grille.y, fabric)
        for i in range(1, 12):
            sheet.rounded((grille.x + i * grille.w // 12 - 4, grille.y, 8, grille.h), 0, (8, 4, 2), 0.55)
            x = grille.x + i * grille.w // 12 - 3
            across = numpy.broadcast_to(ramp(list(CHROME), 6).transpose(1, 0, 2), (grille.h, 6, 3))
            sheet.blend(x, grille.y, across, numpy.full((grille.h, 6), 0.85))
        plate = Rect(w // 2 - 210, grille.y + grille.h // 2 - 62, 420, 124)
        sheet.rounded(plate.inset(-4), 62, (6, 3, 2), 0.7)
        sheet.rounded(plate, 60, [(0, (58, 20, 10)), (1, (26, 8, 4))])
        sheet.chrome(plate, 60, 4)
        self.logo(sheet, plate, 76)
        sheet.clear(front.main)

    def veil(self, size, waiting):
        """A veil over the whole screen, stretched when it is drawn: black, darker at the edges; the waiting one has
        three lights."""
        w, h = size
        sheet = Sheet(size)
        across, down = numpy.linspace(-1, 1, w)[None, :], numpy.linspace(-1, 1, h)[:, None]
        edge = numpy.clip((across**2 + down**2) / 2, 0, 1)
        base, depth = (0.30, 0.22) if waiting else (0.70, 0.16)
        # Steps of 1/32 are invisible, and the picture compresses better.
        sheet.blend(0, 0, (0, 0, 0), numpy.rint((base + depth * edge) * 32) / 32)
        if waiting:
            # On average of a landscape and a portrait screen the lights are as wide as high. Nothing shines through the
            # dark band below them.
            sheet.rounded((0, h // 2 - 15, w, 30), 0, (0, 0, 0), 0.8)
            for left in (-35, -7, 21):
                dot = Rect(w // 2 + left, h // 2 - 4, 14, 8)
                sheet.glow(dot, 4, 6, FLAME, 0.5)
                sheet.rounded(dot, 4, (255, 214, 140))
        return sheet
