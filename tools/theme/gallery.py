"""Composes the pictures of a cabinet theme: which picture holds what, and which look paints it.

A look defines the appearance of elements (a card, a button, a rim); this file defines their position and their picture.
Everything that a block shows in several pictures is painted by the same calls at the same position, so that a rectangle
cut from one of them fits into the others.
"""

from pathlib import Path

from layout import Rect
from light import Sheet

TRANSPORT_WORDS = {"Preview": "PREVIOUS", "Stop": "STOP", "Play": "PLAY", "Pause": "PAUSE", "Next": "NEXT"}
QUEUE_WORDS = {"Down": "DOWN", "Up": "UP", "Remove": "REMOVE", "Load": "LOAD", "Save": "SAVE"}
NAVIGATION_WORDS = {"Back": "BACK", "PreviewPage": "PAGE", "NextPage": "PAGE"}
# Ending of the file name: whether the buttons are available, whether they have the focus.
BUTTON_LOOKS = {
    "active_selected": (True, False),
    "active_selected_hilight": (True, True),
    "active_unselected": (False, False),
    "active_unselected_hilight": (False, True),
}
MARKS = {"nowplaying": ("bars", "playing"), "comingnext": ("clock", "waiting"), "video": ("film", "video")}
VEIL = (480, 270)
# The counters' ghost digits are part of the picture; the theme gets the same font.
TEXT_FONT_FILE = Path("/usr/share/fonts/truetype/roboto/unhinted/RobotoCondensed-Medium.ttf")


def live_slots(layout):
    return [slot for slot in layout.slots.values() if slot.whole.w]


def zone_list(layout, look, lit):
    """The track zone: the machine's front with a card for each slot; lit, every card is."""
    sheet = Sheet(layout.zone)
    look.front(sheet, layout)
    for slot in live_slots(layout):
        with sheet.within(slot.whole):
            look.card(sheet, slot, lit)
    if lit:
        return only_slots(sheet, layout)
    look.foot(sheet, layout)
    return sheet


def only_slots(sheet, layout):
    """The lit slots on black: nothing else of this picture is shown."""
    rest = Sheet(layout.zone, (0, 0, 0))
    for slot in live_slots(layout):
        x, y, w, h = slot.whole
        rest.blend(x, y, sheet.colour[y : y + h, x : x + w], sheet.alpha[y : y + h, x : x + w])
    return rest


def zone_numbers(layout, look, lit):
    """The background of the track number and nothing else: the rest is transparent, so that a video mark stays
    visible."""
    sheet = Sheet(layout.zone)
    for slot in live_slots(layout):
        look.number(sheet, slot, lit)
    return sheet


def zone_mark(layout, look, name):
    """A mark for every slot: a badge, and for a queued track a frame around the card."""
    icon, colour = MARKS[name]
    sheet = Sheet(layout.zone)
    for slot in live_slots(layout):
        place = slot.video if name == "video" else slot.queue
        if name != "video":
            with sheet.within(slot.whole):
                look.mark_frame(sheet, slot, name)
        look.badge(sheet, place, icon, getattr(layout.colours, colour))
    return sheet


def zone_navigation(layout, look):
    """The three touch buttons."""
    sheet = Sheet(layout.zone)
    for name, box in layout.navigation.items():
        with sheet.within(box):
            look.ground_under(sheet, box)
            look.button(sheet, box.inset(4), name, NAVIGATION_WORDS[name], True, False)
    return sheet


def main_block(layout, look, focused):
    """The Main block without its buttons; the fields under its texts are the same with and without the focus."""
    sheet = Sheet(layout.block)
    look.main_ground(sheet, layout, focused)
    look.message_field(sheet, layout.line1, layout.line2)
    counters = (
        (layout.coin_panel, layout.coin, "CREDITS", "coin", "BlockMainInsertCoin"),
        (layout.remain_panel, layout.remain, "TIME LEFT", "time", "BlockMainRemain"),
    )
    for panel, box, word, kind, prefix in counters:
        look.window(sheet, panel, (panel.x, panel.y + 2, panel.w, box.y - panel.y), word)
        look.ghost(sheet, box, kind, TEXT_FONT_FILE, layout.styles[prefix].size)
    return sheet


def playlist_block(layout, look, focused, front):
    """The Playlist block without its buttons. With `front` it also contains the lower front of a portrait machine.

    The front is to the right of the block and below it, where in landscape the other blocks cover it or the screen
    ends. The Main block stays uncovered: the front is transparent there.
    """
    x, y, w, h = 0, 0, *layout.playlist_block
    sheet = Sheet(front.size if front else (w, h))
    if front:
        look.lower_front(sheet, layout, front)
    look.block(sheet, (x, y, w, h), focused)
    look.list_field(sheet, layout.queue, layout.queue_row[1])
    return sheet


class LowerFront:
    """The place of a portrait machine's lower front, relative to the Playlist block."""

    def __init__(self, layout, height):
        corners = layout.corners["vertical"]
        left, top = corners["Playlist"]
        self.size = (layout.zone[0] - left, height)
        place = {name: Rect(x - left, y - top, *layout.block) for name, (x, y) in corners.items()}
        self.main = place["Main"]
        left, top = layout.corners["horitontal"]["Playlist"]
        x, y = layout.corners["horitontal"]["Command"]
        self.command = Rect(x - left, y - top, *layout.command)


def with_buttons(sheet, look, buttons, words, available, focused):
    """A block with its five buttons in one of their four looks."""
    for name, box in buttons.items():
        with sheet.within(box):
            look.button(sheet, box, name, words[name], available, focused)
    return sheet


def button_pictures(name, paint, look, buttons, words):
    """A block's background and its four pictures with buttons, by file name."""
    pictures = {f"{name}.png": paint(False)}
    for ending, (available, focused) in BUTTON_LOOKS.items():
        pictures[f"{name}_{ending}.png"] = with_buttons(paint(True), look, buttons, words, available, focused)
    return pictures


def command_block(layout, look, focused):
    """The Command block: a frame of seven pixels around the field for the menu, a big cover or a small video."""
    sheet = Sheet(layout.command)
    look.panel(sheet, (0, 0, *layout.command), focused)
    x, y, w, h = 7, 7, layout.command[0] - 14, layout.command[1] - 14
    look.screen(sheet, (x, y, w, h))
    return sheet


def command_row(layout, look, lit, kind):
    """A row of the menu: a list box with its two arrows, or a button."""
    sheet = Sheet(layout.command_row)
    look.row(sheet, (0, 0, *layout.command_row), lit)
    if kind == "btn":
        look.row_button(sheet, layout.command_button, lit)
    else:
        look.row_choice(sheet, layout.option_choice, lit)
    return sheet


def queue_cursor(layout, look):
    sheet = Sheet(layout.queue_row)
    look.cursor(sheet, (0, 0, *layout.queue_row))
    return sheet


def keyboard(layout, look, lit):
    """The on-screen keyboard; in the lit picture all keys have the look of the selected one."""
    sheet = Sheet(layout.keyboard)
    look.panel(sheet, (0, 0, *layout.keyboard), True)
    x, y, w, h = layout.keyboard_text
    look.display(sheet, (x - 14, y, w + 28, h))
    for line in layout.keyboard_lines:
        for key in line:
            look.key(sheet, key.place, key.face, lit)
    return sheet


def paint_all(layout, look, front_height):
    """Every picture of the theme by file name."""
    front = LowerFront(layout, front_height)
    # The veil of a page turn is clear: the turn redraws only the zone, and the veil would stay over the blocks.
    pictures = {"fade.png": look.veil(VEIL), "wait.png": Sheet((16, 16))}
    for ending, lit in (("", False), ("_hilight", True)):
        pictures[f"zonelist{ending}.png"] = zone_list(layout, look, lit)
        pictures[f"zonelistWithNumTrack{ending}.png"] = zone_numbers(layout, look, lit)
        pictures[f"command{ending}.png"] = command_block(layout, look, lit)
        pictures[f"command_listbox{ending}.png"] = command_row(layout, look, lit, "listbox")
        pictures[f"command_btn{ending}.png"] = command_row(layout, look, lit, "btn")
        pictures[f"keyboard{ending}.png"] = keyboard(layout, look, lit)
    for name in MARKS:
        pictures[f"zonelist_{name}.png"] = zone_mark(layout, look, name)
    pictures["zonelist_navigation.png"] = zone_navigation(layout, look)
    pictures |= button_pictures("main", lambda on: main_block(layout, look, on), look, layout.transport, TRANSPORT_WORDS)
    pictures |= button_pictures(
        "playlist", lambda on: playlist_block(layout, look, on, front), look, layout.queue_buttons, QUEUE_WORDS
    )
    pictures["playlist_playlisthilight.png"] = queue_cursor(layout, look)
    images = {name: sheet.image() for name, sheet in pictures.items()}
    # Only the buttons of these pictures are used: the lower front would only take memory, and time at the start.
    for ending in ("active_selected_hilight", "active_unselected", "active_unselected_hilight"):
        name = f"playlist_{ending}.png"
        images[name] = images[name].crop((0, 0, *layout.playlist_block))
    return images
