"""The look of the theme "wall": the wall of a record shop at night. Slats in deep plum, shelves with records, soft light
from above each shelf, and coral neon as the only accent. The selected record comes out of its sleeve, under a brighter
light."""

import numpy

from layout import Rect
from light import SCRIPT, Sheet, mix, ramp
from look import Look

# The wall by its row on a screen of 1080 rows: plum at the top, night at the bottom.
WALL = [(0.0, (62, 35, 66)), (0.55, (46, 26, 53)), (1.0, (34, 19, 42))]
NIGHT = (18, 10, 24)
SHELF_TOP, SHELF = (112, 78, 104), [(0.0, (36, 20, 40)), (0.5, (29, 16, 34)), (1.0, (23, 12, 28))]
PANEL = [(0.0, (40, 23, 46)), (1.0, (29, 16, 36))]
LAMP = (255, 214, 176)
CORAL, CORAL_DEEP = (255, 132, 104), (214, 78, 62)
NEON = [(0.0, (255, 190, 168)), (0.5, CORAL), (1.0, (255, 104, 92))]
IVORY, LILAC = (255, 246, 238), (214, 188, 206)
INK = (44, 8, 14)
VINYL = (16, 12, 18)
SLAT = 46
# Plain sleeves of tracks with a number, by slot.
TINTS = ((92, 46, 62), (44, 74, 84), (118, 82, 48), (74, 54, 104), (52, 82, 62), (112, 60, 50))
# Records in the bins below the wall: muted sleeves.
SLEEVES = ((94, 52, 60), (58, 70, 92), (110, 86, 62), (70, 44, 84), (52, 82, 80), (120, 74, 66), (84, 78, 96), (98, 62, 44))


def lamp(sheet, box, strength, colour=LAMP):
    """A pool of light on the wall: an ellipse that fills the box and fades towards its edge."""
    x, y, w, h = box
    across, down = (numpy.arange(w) + 0.5) / w * 2 - 1, (numpy.arange(h) + 0.5) / h * 2 - 1
    far = numpy.hypot(across[None, :], down[:, None])
    sheet.blend(x, y, colour, strength * (0.5 + 0.5 * numpy.cos(numpy.pi * numpy.clip(far, 0, 1))) ** 1.3)


def record(sheet, disc, label, paint):
    """A record with grooves that catch the light, and a paper label of the given width."""
    sheet.rounded(disc, disc.w, VINYL)
    sheet.ring(disc, disc.w, 1.6, [(0, (120, 104, 118)), (0.4, (56, 46, 58)), (1, (34, 26, 36))])
    for inset in range(6, (disc.w - label) // 2 - 4, 6 if disc.w < 300 else 44):
        sheet.ring(disc, disc.w, 1.2, (44, 36, 48), inset=inset)
    paper = disc.inset((disc.w - label) // 2)
    sheet.rounded(paper, label, paint)
    sheet.ring(paper, label, 1.4, (30, 12, 20), 0.7)
    sheet.rounded(disc.inset(disc.w // 2 - 4), 8, NIGHT)


class Wall(Look):
    """Paints the parts of the theme."""

    ARROW, ARROW_LIT = (84, 60, 84), CORAL
    BUTTON = (84, 60, 84)
    DIGITS, COIN, COIN_INSIDE = (33, 20, 39), (58, 38, 62), (44, 28, 48)

    def front(self, sheet, layout):
        """The wall with light above each shelf, and the bins below."""
        w, h = sheet.size
        self.slats(sheet, (0, 0, w, layout.pages[0].h))
        foot = layout.pages[0].y + layout.pages[0].h
        live = [slot for slot in layout.slots.values() if slot.whole.w]
        for top in sorted({slot.whole.y for slot in live}):
            for slot in (slot for slot in live if slot.whole.y == top):
                lamp(sheet, (slot.cover.x - 120, top - 210, slot.cover.w + 260, 470), 0.42)
        self.counter(sheet, Rect(0, foot, w, 1080 - foot))
        self.bins(sheet, Rect(0, 1080, w, h - 1080), 8, 5)

    @staticmethod
    def slats(sheet, box):
        """Horizontal boards with a groove between them, as shops have for hanging shelves."""
        x, y, w, h = box
        rows = ramp(WALL, 1080)[numpy.clip(numpy.arange(y, y + h), 0, 1079)]
        at = numpy.arange(y, y + h) % SLAT
        tone = numpy.select([at < 3, at == 3, at == 4], [0.45, 1.35, 1.16], 1.03 - 0.10 * at / SLAT)
        sheet.blend(x, y, numpy.broadcast_to(rows * tone[:, None, None], (h, w, 3)), numpy.ones((h, w)))

    @staticmethod
    def counter(sheet, box):
        """The board below the wall, with a thin line of neon along its upper edge."""
        x, y, w, h = box
        sheet.rounded(box, 0, [(0, (34, 19, 40)), (0.12, (30, 17, 36)), (1, (22, 12, 28))])
        sheet.rounded((x, y, w, 2), 0, CORAL, 0.75)
        sheet.rounded((x, y + 2, w, 3), 0, CORAL_DEEP, 0.25)

    @staticmethod
    def bins(sheet, box, count, seed):
        """What a screen shows that is higher than 16:9: bins of records side by side. They can end at any row."""
        x, y, w, h = box
        rng = numpy.random.default_rng(seed)
        sheet.rounded(box, 0, [(0, (26, 14, 32)), (0.2, (15, 8, 20)), (1, (15, 8, 20))])
        step = w // count
        for i in range(count):
            left = x + i * step
            order = rng.permutation(len(SLEEVES))
            for deep in range(7):
                colour = mix(SLEEVES[order[deep]], NIGHT, 0.72 - 0.09 * deep)
                lean = int(rng.integers(-4, 5))
                sleeve = (left + 14 + lean, y + 14 + 12 * deep, step - 28, 120)
                sheet.rounded(sleeve, 2, [(0, mix(colour, IVORY, 0.16)), (0.06, colour), (1, mix(colour, NIGHT, 0.5))])
            board = (left + 5, y + 112, step - 10, h - 112)
            sheet.rounded((board[0] - 2, board[1] + 4, board[2] + 4, board[3]), 6, NIGHT, 0.7)
            with sheet.within((*board[:2], board[2], board[3])):
                sheet.rounded((*board[:3], board[3] + 8), 5, [(0, (92, 58, 72)), (0.02, (62, 36, 52)), (1, (30, 17, 32))])
            for groove in (104, 214):
                sheet.rounded((board[0], board[1] + groove, board[2], 4), 0, NIGHT, 0.75)
                sheet.rounded((board[0], board[1] + groove + 4, board[2], 2), 0, (110, 74, 90), 0.5)
            tag = (left + step // 2 - 42, board[1] + 38, 84, 34)
            sheet.rounded(tag, 4, (20, 11, 26))
            sheet.ring(tag, 4, 1.5, (120, 84, 98))

    def foot(self, sheet, layout):
        """The board below the pages: the maker's name in neon, the legend of the marks, five lines as for music."""
        strip, box = layout.navigation["Back"], layout.legend
        self.neon_name(sheet, strip.moved(0, -2), 60)
        far, last = layout.navigation["PreviewPage"], layout.navigation["NextPage"]
        for i in range(5):
            line = (far.x + 16, far.y + 27 + i * 11, last.x + last.w - far.x - 32, 2)
            sheet.rounded(line, 1, mix(CORAL, (30, 17, 36), 0.62))
        entries = (
            ("bars", "NOW PLAYING", "playing", 0),
            ("clock", "COMING NEXT", "waiting", 216),
            ("film", "VIDEO", "video", 432),
        )
        for icon, word, colour, left in entries:
            place = Rect(box.x + left, box.y + (box.h - 32) // 2, 32, 32)
            self.badge(sheet, place, icon, getattr(layout.colours, colour))
            sheet.caption((box.x + 42 + left, box.y, 160, box.h), word, 28, LILAC, "left")

    @staticmethod
    def neon_name(sheet, box, pixels):
        """The maker's name as a tube of coral light."""
        x, y, w, h = box
        if pixels < 100:
            lamp(sheet, (x - 10, y - 20, w + 20, h + 40), 0.30, CORAL)
        for dx, dy in ((-2, 0), (2, 0), (0, -2), (0, 2)):
            sheet.caption((x + dx, y + dy, w, h), "Vantorix", pixels, CORAL_DEEP, font_file=SCRIPT)
        sheet.caption(box, "Vantorix", pixels, (255, 228, 214), font_file=SCRIPT)

    def card(self, sheet, slot, lit):
        """A paper sleeve on a shelf, whose front carries the title. A cover takes the place of the sleeve."""
        whole, cover = slot.whole, slot.cover
        shelf = Rect(whole.x, cover.y + cover.h + 2, whole.w, whole.y + whole.h - cover.y - cover.h - 8)
        if lit:
            lamp(sheet, (whole.x - 60, whole.y - 90, whole.w + 120, shelf.y - whole.y + 200), 0.62)
            disc = Rect(cover.x + cover.w - 104, cover.y + 4, cover.h - 8, cover.h - 8)
            sheet.rounded(disc.moved(5, 5), disc.w, NIGHT, 0.5)
            record(sheet, disc, 76, list(NEON))
        for grow, strength in ((7, 0.10), (5, 0.16), (3, 0.24)):
            sheet.rounded(Rect(cover.x + 4, cover.y + 3, cover.w, cover.h - 3).inset(-grow), grow + 2, NIGHT, strength)
        self.sleeve(sheet, cover, lit)
        rim = cover.inset(-3 if lit else -2)
        if lit:
            sheet.ring(rim, 2, 3.4, (255, 240, 226))
        else:
            sheet.ring(rim, 2, 2, [(0, (150, 116, 140)), (0.3, (98, 70, 96)), (1, (66, 44, 70))])
        self.shelf(sheet, shelf, lit)
        self.tag(sheet, slot.label, lit)

    @staticmethod
    def sleeve(sheet, box, lit):
        """A plain sleeve with a hole, in which the label of the record shows."""
        top, low = ((150, 104, 128), (112, 72, 98)) if lit else ((66, 42, 70), (48, 29, 54))
        sheet.rounded(box, 1, [(0, top), (1, low)])
        hole = box.inset((box.w - 104) // 2)
        sheet.rounded(hole.moved(0, 1), 52, mix(top, IVORY, 0.16))
        sheet.rounded(hole, 52, VINYL if lit else (28, 17, 32))
        paper = box.inset((box.w - 84) // 2)
        sheet.rounded(paper, 42, [(0, (122, 66, 72)), (1, (88, 46, 58))] if lit else [(0, (50, 31, 50)), (1, (40, 24, 42))])
        sheet.rounded(box.inset(box.w // 2 - 5), 5, VINYL if lit else (28, 17, 32))
        sheet.rounded((box.x, box.y, box.w, 2), 0, IVORY, 0.12)
        sheet.rounded((box.x + 14, box.y + 2, 1, box.h - 4), 0, NIGHT, 0.35)

    @staticmethod
    def shelf(sheet, box, lit):
        """A board seen from the front: a bright upper edge, the face of the title, and a shadow on the wall below."""
        x, y, w, h = box
        sheet.rounded((x, y + h, w, 6), 0, [(0, NIGHT), (1, NIGHT)], 0.45)
        if lit:
            sheet.rounded((x, y, w, 4), 0, (255, 236, 222))
            sheet.rounded((x, y + 4, w, h - 4), 0, [(0, (255, 158, 130)), (0.5, CORAL), (1, (246, 116, 90))])
            return
        sheet.rounded((x, y, w, 4), 0, SHELF_TOP)
        sheet.rounded((x, y + 4, w, h - 4), 0, SHELF)
        sheet.rounded((x, y + 18, 1, h - 32), 0, (70, 46, 72))

    @staticmethod
    def tag(sheet, box, lit):
        """The place of the label: a small sign on the wall, or a lit one."""
        if not lit:
            return
        sheet.glow(box, 10, 14, CORAL, 0.5)
        sheet.rounded(box, 10, list(NEON))
        sheet.ring(box, 10, 2, (255, 240, 226))

    def number(self, sheet, slot, lit):
        """A coloured sleeve with a hole; the label of the record in it has the track number."""
        cover = slot.cover
        tint = TINTS[(cover.x // 370 + 2 * (cover.y // 324)) % len(TINTS)]
        tint = mix(tint, IVORY, 0.14) if lit else tint
        sheet.rounded(cover, 1, [(0, mix(tint, IVORY, 0.10)), (0.4, tint), (1, mix(tint, NIGHT, 0.32))])
        band = mix(tint, IVORY, 0.30 if lit else 0.22)
        for y in (cover.y + 26, cover.y + 33, cover.y + cover.h - 28, cover.y + cover.h - 35):
            sheet.rounded((cover.x + 22, y, cover.w - 44, 2), 1, band)
        disc = cover.inset((cover.w - 124) // 2)
        sheet.rounded(disc, 62, VINYL)
        sheet.ring(disc, 62, 1.5, band)
        disc = cover.inset((cover.w - 100) // 2)
        sheet.rounded(disc, 50, (250, 224, 200) if lit else (218, 186, 178))
        sheet.ring(disc, 50, 3, CORAL_DEEP, inset=5)

    def mark_frame(self, sheet, slot, name):
        """A frame of light around a queued record: a tube while it is playing, a thin one while it is waiting."""
        rim = slot.cover.inset(-4)
        if name == "nowplaying":
            sheet.glow(rim, 4, 10, (70, 232, 140), 0.7)
            sheet.ring(rim, 4, 5.5, (60, 214, 126))
            sheet.ring(rim, 4, 1.8, (222, 255, 234), inset=1.8)
        else:
            sheet.ring(rim, 4, 4, (112, 190, 255))

    def badge(self, sheet, box, icon, colour):
        """A small lit field with an icon."""
        sheet.rounded(box, 7, (10, 6, 14))
        inner = Rect(*box).inset(1)
        sheet.rounded(inner, 6, [(0, mix(colour, (255, 255, 255), 0.35)), (1, colour)])
        sheet.icon(inner.inset(3), icon, (14, 8, 16))

    def ground_under(self, sheet, box):
        """Touch buttons cover the decoration that the board shows without them."""
        x, y, w, h = box
        board = Sheet((w, 1080))
        self.counter(board, (0, 974, w, 106))
        sheet.blend(x, y, board.colour[y : y + h], numpy.ones((h, w)))

    def button(self, sheet, box, icon, word, available, focused):
        """A flat key: lilac on plum, coral under the cursor, and only an outline if not available."""
        body = Rect(*box).inset(2)
        sheet.rounded(box, 10, (24, 13, 30))
        if available and focused:
            sheet.glow(body, 10, 4, CORAL, 0.6)
            sheet.rounded(body, 10, [(0, (255, 158, 130)), (1, (246, 116, 90))])
            sheet.ring(body, 10, 2.5, (255, 236, 222))
            ink = INK
        elif available:
            sheet.rounded(body, 10, [(0, (98, 64, 98)), (0.05, (82, 52, 84)), (1, (58, 35, 64))])
            sheet.ring(body, 10, 1.4, [(0, (160, 122, 148)), (0.3, (104, 74, 104)), (1, (80, 54, 84))])
            ink = IVORY
        else:
            sheet.rounded(body, 10, (27, 15, 33))
            sheet.ring(body, 10, 3 if focused else 1.3, CORAL if focused else (62, 42, 66))
            ink = (232, 164, 146) if focused else (150, 124, 150)
        self.face(sheet, body, icon, word, ink)

    @staticmethod
    def face(sheet, box, icon, word, ink):
        """Icon above the word, or beside it if the button is wide: an arrow to the right on the right."""
        x, y, w, h = box
        if w > 2 * h:
            sheet.icon_and_word(box, icon, word, h * 46 // 100, 36, ink, icon == "NextPage")
            return
        line = 20
        sheet.icon((x, y + h // 10, w, h - line - h * 26 // 100), icon, ink)
        sheet.caption((x, y + h - line - h // 9, w, line), word, line, ink)

    def frame(self, sheet, box, focused):
        """A panel on the wall; a tube of neon around it while it has the focus."""
        panel = Rect(*box).inset(6)
        sheet.rounded((panel.x + 2, panel.y + 4, panel.w, panel.h), 16, NIGHT, 0.6)
        sheet.rounded(panel, 14, PANEL)
        if focused:
            sheet.glow(panel, 14, 6, CORAL, 0.7)
            sheet.ring(panel, 14, 5, list(NEON))
            sheet.ring(panel, 14, 1.6, (255, 240, 230), inset=1.7)
        else:
            sheet.ring(panel, 14, 1.8, [(0, (140, 104, 130)), (0.3, (92, 64, 90)), (1, (66, 44, 70))])

    def main_ground(self, sheet, layout, focused):
        self.block(sheet, (0, 0, *layout.block), focused)

    def block(self, sheet, box, focused):
        x, y, w, h = box
        sheet.rounded(box, 0, [(0, (38, 22, 44)), (1, (30, 17, 36))])
        self.frame(sheet, Rect(x, y, w, h), focused)

    def panel(self, sheet, box, focused):
        """The block of the menu, and the keyboard. Their corners are square, so that nothing shows beside them."""
        box = Rect(*box)
        sheet.rounded(box, 0, PANEL)
        if focused:
            sheet.ring(box, 0, 5, list(NEON))
            sheet.ring(box, 0, 1.6, (255, 240, 230), inset=1.7)
        else:
            sheet.ring(box, 0, 2, (104, 74, 104))

    def message_field(self, sheet, first, second):
        """Dark glass behind both lines of the message, with neon below it."""
        top = first.y - 10
        box = Rect(second.x - 6, top, second.w + 12, second.y + second.h - top + 8)
        sheet.rounded(box, 10, [(0, (20, 11, 26)), (1, (13, 7, 17))])
        sheet.rounded((box.x + 20, box.y + box.h - 3, box.w - 40, 3), 1, CORAL)

    def display(self, sheet, box):
        """The text field of the keyboard."""
        sheet.rounded(box, 10, [(0, (14, 8, 18)), (1, (24, 13, 30))])
        sheet.ring(box, 10, 2, (120, 84, 112))

    def window(self, sheet, box, head, word):
        """A counter window with its name."""
        sheet.rounded(box, 10, [(0, (20, 11, 26)), (1, (13, 7, 17))])
        sheet.caption(head, word, 24, LILAC)

    def list_field(self, sheet, box, row):
        """Rows of two lines, the title on plum and the artist on a darker band, and the name of the list above them."""
        x, y, w, h = box
        sheet.caption((x, y - 42, w, 36), "COMING UP", 28, LILAC, "left")
        sheet.rounded((x, y - 4, w, 2), 0, CORAL)
        for top in range(y, y + h, row):
            sheet.rounded((x, top, w, row // 2), 0, (43, 26, 49))
            sheet.rounded((x, top + row // 2, w, row // 2 - 4), 0, (27, 15, 33))
            sheet.rounded((x, top + row - 4, w, 4), 0, (14, 8, 18))

    def cursor(self, sheet, box):
        """The selected row is coral like the title of a selected record."""
        x, y, w, h = box
        sheet.rounded((x, y, w, h - 4), 4, [(0, (255, 158, 130)), (1, (250, 122, 95))])
        sheet.rounded((x, y + h // 2, w, h // 2 - 4), 4, (236, 108, 84), 0.7)

    def screen(self, sheet, box):
        """The field of the menu."""
        sheet.rounded(box, 2, NIGHT)

    def row(self, sheet, box, lit):
        x, y, w, h = box
        sheet.rounded(box, 0, NIGHT)
        if lit:
            sheet.rounded((x + 2, y + 2, w - 4, h - 5), 6, (70, 40, 66))
            sheet.ring((x + 2, y + 2, w - 4, h - 5), 6, 2, CORAL)

    def key(self, sheet, box, face, lit):
        """A key of the keyboard."""
        if lit:
            sheet.rounded(box, 10, [(0, (255, 158, 130)), (1, (246, 116, 90))])
            sheet.ring(box, 10, 2.5, (255, 236, 222))
            ink = INK
        else:
            sheet.rounded(box, 10, [(0, (98, 64, 98)), (0.05, (82, 52, 84)), (1, (58, 35, 64))])
            sheet.ring(box, 10, 1.4, (112, 80, 110))
            ink = IVORY
        if len(face) > 1:
            sheet.icon(Rect(*box).inset(14), face, ink)
        elif face:
            sheet.caption(box, face, 46, ink)

    def lower_front(self, sheet, layout, front):
        """What is below the wall in portrait, and beside the bins in landscape.

        Landscape shows the left column below the queue. Portrait shows all of it: a record with the maker's name in neon
        between the queue and the counters, a speaker below these, and the bins.
        """
        w, h = sheet.size
        queue, main = Rect(0, 0, *layout.playlist), front.main
        sheet.rounded((0, 0, w, queue.h), 0, [(0, (38, 22, 44)), (1, (26, 14, 32))])
        middle = Rect(queue.w, 0, main.x - queue.w, queue.h)
        with sheet.within(middle):
            self.slats(sheet, (middle.x, 0, middle.w, middle.h))
            down = numpy.exp(-numpy.arange(middle.h) / 170.0)[:, None]
            sheet.blend(middle.x, 0, LAMP, numpy.broadcast_to(0.34 * down, (middle.h, middle.w)))
        disc = Rect(middle.x + middle.w // 2 - 300, middle.h // 2 - 300, 600, 600)
        sheet.rounded(disc.moved(8, 14), 300, NIGHT, 0.6)
        record(sheet, disc, 216, [(0, (92, 44, 60)), (1, (60, 28, 48))])
        self.neon_name(sheet, Rect(middle.x, disc.y + 235, middle.w, 130), 150)
        self.speaker(sheet, Rect(main.x, main.h, main.w, queue.h - main.h))
        self.bins(sheet, Rect(0, queue.h, queue.w, h - queue.h), 2, 9)
        self.bins(sheet, Rect(queue.w, queue.h, w - queue.w, h - queue.h), 6, 10)
        sheet.clear(main)

    @staticmethod
    def speaker(sheet, box):
        """A speaker of the shop below the counters."""
        case = box.inset(16)
        sheet.rounded(case.moved(3, 6), 16, NIGHT, 0.6)
        sheet.rounded(case, 14, [(0, (66, 40, 66)), (0.02, (48, 28, 52)), (1, (32, 18, 38))])
        sheet.ring(case, 14, 1.6, (98, 70, 96))
        side = case.h - 40
        cone = Rect(case.x + (case.w - side) // 2, case.y + 20, side, side)
        sheet.rounded(cone, side, [(0, (12, 7, 16)), (1, (40, 24, 46))])
        sheet.ring(cone, side, 4, (128, 94, 118))
        for inset in range(24, side // 2 - 60, 24):
            sheet.ring(cone, side, 4, (52, 34, 56), inset=inset)
        cap = cone.inset(side // 2 - 52)
        sheet.rounded(cap, 52, [(0, (100, 66, 96)), (0.5, (50, 30, 54)), (1, (26, 14, 32))])

    def veil(self, size):
        """A veil over the whole screen, stretched when it is drawn."""
        sheet = Sheet(size)
        sheet.rounded((0, 0, *size), 0, (0, 0, 0))
        sheet.alpha[:] = round(0.74 * 255) / 255
        return sheet
