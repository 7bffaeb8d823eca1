"""Paints all pictures of the tests' plain themes from a layout: flat colours, hard edges, no words."""

from drawing import Canvas
from layout import Rect

CLEAR = (0, 0, 0, 0)


def new_canvas(layout, size, colour):
    """A picture of one colour, with the layout's smoothing."""
    return Canvas(size, colour, layout.smooth, layout.caption_font)


def focus_frame(canvas, layout, colour):
    """The frame at the edge of a block."""
    canvas.outline((0, 0, *layout.block), colour, layout.border, layout.radius)


def key_face(canvas, layout, box, fill, edge, icon, ink):
    """A button: a field with an icon."""
    x, y, w, h = box
    canvas.rounded(box, fill, layout.radius)
    if edge:
        canvas.outline(box, edge, max(layout.border // 2, 1), layout.radius)
    canvas.icon(Rect(*box).inset(max(min(w, h) // 6, 1)), icon, ink)


def zone_list(layout, hilight):
    """The track zone: two pages of slots; highlighted, every slot is lit."""
    c = layout.colours
    canvas = new_canvas(layout, layout.zone, c.ground)
    for page in layout.pages:
        canvas.rounded(page.inset(layout.border // 2), c.panel, layout.radius)
    for slot in layout.slots.values():
        if slot.whole.w:
            canvas.rounded(slot.whole, c.accent if hilight else c.field, layout.radius)
            left = slot.label.x - slot.whole.x
            label = Rect(slot.label.x, slot.whole.y + left, slot.label.w, slot.whole.h - 2 * left)
            canvas.rounded(label, c.accent_deep if hilight else c.panel, layout.radius // 2)
    return canvas.image


def badge(canvas, box, icon, colour, ink):
    """A small coloured box with an icon."""
    w, h = box[2:]
    canvas.rounded(box, colour, min(w, h) // 5 if canvas.smooth > 1 else 0)
    canvas.icon(Rect(*box).inset(max(min(w, h) // 8, 1)), icon, ink)


def zone_numbers(layout, hilight):
    """The box of the track number and nothing else: the rest is transparent, so that a video mark below it stays
    visible."""
    c = layout.colours
    canvas = new_canvas(layout, layout.zone, CLEAR)
    for slot in layout.slots.values():
        if slot.whole.w:
            canvas.rounded(slot.number, c.accent_deep if hilight else c.panel, layout.radius // 2)
    return canvas.image


def zone_mark(layout, icon, colour, place, framed):
    """A mark for every slot: a badge, for a queued track also a frame around the slot."""
    c = layout.colours
    canvas = new_canvas(layout, layout.zone, CLEAR)
    thick = max(layout.border * 2 // 3, 1)
    for slot in layout.slots.values():
        if not slot.whole.w:
            continue
        if framed:
            canvas.outline(slot.whole, colour, thick, layout.radius)
        badge(canvas, place(slot), icon, colour, c.ink)
    return canvas.image


def zone_navigation(layout):
    """The three touch buttons."""
    c = layout.colours
    canvas = new_canvas(layout, layout.zone, CLEAR)
    for name, rect in layout.navigation.items():
        key_face(canvas, layout, rect, c.raised, c.accent, name, c.text)
    return canvas.image


def main_block(layout, focused):
    """The Main block without its buttons. The boxes under the texts are the same with and without the focus."""
    c = layout.colours
    canvas = new_canvas(layout, layout.block, c.panel)
    for panel in (layout.coin_panel, layout.remain_panel):
        canvas.rounded(panel, c.field, layout.radius)
    focus_frame(canvas, layout, c.accent if focused else c.frame)
    return canvas


def playlist_block(layout, focused):
    """The Playlist block without its buttons."""
    c = layout.colours
    canvas = new_canvas(layout, layout.block, c.panel)
    canvas.rounded(layout.queue, c.ground)
    x, y, w, h = layout.queue
    row = layout.queue_row[1]
    for bottom in range(row, h + 1, row):
        canvas.rounded((x, y + bottom - 1, w, 1), c.field)
    focus_frame(canvas, layout, c.accent if focused else c.frame)
    return canvas


def with_buttons(canvas, layout, buttons, available, hilight):
    """A block with its five buttons in one of their four looks."""
    c = layout.colours
    if available:
        fill, edge, ink = (c.accent, None, c.ink) if hilight else (c.raised, None, c.text)
    else:
        fill, edge, ink = (c.panel, c.accent, c.dim) if hilight else (c.panel, c.frame, c.faint)
    for name, rect in buttons.items():
        key_face(canvas, layout, rect, fill, edge, name, ink)
    return canvas.image


BUTTON_LOOKS = {
    "active_selected": (True, False),
    "active_selected_hilight": (True, True),
    "active_unselected": (False, False),
    "active_unselected_hilight": (False, True),
}


def block_pictures(name, layout, paint, buttons):
    """A block's background and its four pictures with buttons, by file name."""
    pictures = {f"{name}.png": paint(layout, False).image}
    for look, (available, hilight) in BUTTON_LOOKS.items():
        pictures[f"{name}_{look}.png"] = with_buttons(paint(layout, True), layout, buttons, available, hilight)
    return pictures


def queue_cursor(layout):
    """The bar behind the selected row of the queue."""
    c = layout.colours
    canvas = new_canvas(layout, layout.queue_row, c.accent)
    canvas.rounded((0, layout.queue_row[1] - 2, layout.queue_row[0], 2), c.accent_deep)
    return canvas.image


def command_block(layout, focused):
    """The Command block: an empty field for the menu, a big cover or a small video."""
    c = layout.colours
    canvas = new_canvas(layout, layout.block, c.ground)
    focus_frame(canvas, layout, c.accent if focused else c.frame)
    return canvas.image


def command_row(layout, hilight, button):
    """A row of the menu: a list box with its two arrows, or a button."""
    c = layout.colours
    width, height = layout.command_row
    fill, field, ink = (c.accent, c.accent_deep, c.ink) if hilight else (c.panel, c.field, c.dim)
    canvas = new_canvas(layout, layout.command_row, c.ground)
    gap = max(layout.border // 3, 1)
    canvas.rounded((0, 0, width, height - gap), fill)
    if button:
        x, y, w, h = layout.command_button
        canvas.rounded((x, y, w, h - gap), c.accent_deep if hilight else c.raised, layout.radius)
        return canvas.image
    x, y, w, h = layout.option_choice
    side = h - gap
    canvas.rounded((x - side, y, w + 2 * side, side), field, layout.radius // 2)
    arrow = max(side // 4, 2)
    canvas.icon(Rect(x - side, y, side, side).inset(arrow), "PreviewPage", ink)
    canvas.icon(Rect(x + w, y, side, side).inset(arrow), "NextPage", ink)
    return canvas.image


def veil(layout, alpha, dots):
    """A veil over the whole screen, stretched when it is drawn. Black, so that the empty parts of the screen stay black."""
    canvas = new_canvas(layout, (480, 270), (0, 0, 0, alpha))
    for i in range(3 if dots else 0):
        box = (204 + i * 30, 129, 12, 12)
        canvas.shape(box, layout.colours.text, lambda draw, s: draw.ellipse((0, 0, 12 * s - 1, 12 * s - 1), fill=255))
    return canvas.image


def keyboard(layout, lit):
    """The on-screen keyboard; in the lit picture all keys have the look of the selected one."""
    c = layout.colours
    canvas = new_canvas(layout, layout.keyboard, c.panel)
    canvas.outline((0, 0, *layout.keyboard), c.accent, max(layout.border * 2 // 3, 1))
    margin = layout.keyboard_text.x - layout.keyboard_lines[0][0].place.x
    x, y, w, h = layout.keyboard_text
    canvas.rounded((x - margin, y, w + 2 * margin, h), c.ground, layout.radius)
    ink = c.ink if lit else c.text
    for line in layout.keyboard_lines:
        for key in line:
            canvas.rounded(key.place, c.accent if lit else c.raised, layout.radius)
            if len(key.face) > 1:
                canvas.icon(key.place.inset(layout.border), key.face, ink)
            elif key.face:
                canvas.caption(key.place, key.face, key.place.h * 4 // 10, ink)
    return canvas.image


def paint_all(layout):
    """Every picture of the theme by file name."""
    c = layout.colours
    pictures = {"fade.png": veil(layout, 176, False), "wait.png": veil(layout, 72, True)}
    for ending, hilight in (("", False), ("_hilight", True)):
        pictures[f"zonelist{ending}.png"] = zone_list(layout, hilight)
        pictures[f"zonelistWithNumTrack{ending}.png"] = zone_numbers(layout, hilight)
        pictures[f"command{ending}.png"] = command_block(layout, hilight)
        pictures[f"command_listbox{ending}.png"] = command_row(layout, hilight, False)
        pictures[f"command_btn{ending}.png"] = command_row(layout, hilight, True)
        pictures[f"keyboard{ending}.png"] = keyboard(layout, hilight)
    pictures["zonelist_nowplaying.png"] = zone_mark(layout, "playing", c.playing, lambda slot: slot.queue, True)
    pictures["zonelist_comingnext.png"] = zone_mark(layout, "waiting", c.waiting, lambda slot: slot.queue, True)
    pictures["zonelist_video.png"] = zone_mark(layout, "video", c.video, lambda slot: slot.video, False)
    pictures["zonelist_navigation.png"] = zone_navigation(layout)
    pictures.update(block_pictures("main", layout, main_block, layout.transport))
    pictures.update(block_pictures("playlist", layout, playlist_block, layout.queue_buttons))
    pictures["playlist_playlisthilight.png"] = queue_cursor(layout)
    return pictures
