"""What the looks of the included themes have in common: elements that differ only in their colours."""

from layout import Rect


class Look:
    """The base of a look. A derived class sets the colours and draws everything else."""

    # The arrows of a row of the menu, and the same in the selected row.
    ARROW = ARROW_LIT = None
    # The outline of a button in the menu, and the radius of its corners.
    BUTTON = None
    BUTTON_RADIUS = 8
    # The digits of an empty counter, and the outer and the inner line of a missing coin.
    DIGITS = COIN = COIN_INSIDE = None

    def row_choice(self, sheet, box, lit):
        x, y, w, h = box
        for left, icon in ((x - 30, "PreviewPage"), (x + w + 2, "NextPage")):
            sheet.icon((left, y - 1, 28, h), icon, self.ARROW_LIT if lit else self.ARROW)

    def row_button(self, sheet, box, lit):
        if not lit:
            outline = (box[0] - 14, box[1] + 3, box[2] + 28, box[3] - 8)
            sheet.ring(outline, self.BUTTON_RADIUS, 1.4, self.BUTTON)

    def ghost(self, sheet, box, kind, font_file, points):
        """What an empty counter shows: unlit segments, or the outline of a coin."""
        if kind == "time":
            sheet.stamp_text(box, "88:88", font_file, points, self.DIGITS)
            return
        side = min(box.w, box.h) - 2
        coin = Rect(box.x + (box.w - side) // 2, box.y + (box.h - side) // 2, side, side)
        sheet.ring(coin, side, 2, self.COIN)
        sheet.ring(coin, side, 1, self.COIN_INSIDE, inset=4)
