"""The layout of our themes: rectangles, fonts and colours, for the cabinet and for the tests."""

from dataclasses import dataclass
from pathlib import Path
from typing import NamedTuple

import theme_ini as ini

BOLD_FONT = Path("/usr/share/fonts/truetype/dejavu/DejaVuSans-Bold.ttf")
TEST_FONT = Path(__file__).resolve().parents[2] / "tests/fonts/vantorix_test.ttf"


class Rect(NamedTuple):
    """A rectangle in theme pixels."""

    x: int
    y: int
    w: int
    h: int

    def moved(self, dx, dy):
        return Rect(self.x + dx, self.y + dy, self.w, self.h)

    def inset(self, n):
        return Rect(self.x + n, self.y + n, self.w - 2 * n, self.h - 2 * n)


NOTHING = Rect(0, 0, 0, 0)


class Style(NamedTuple):
    """A text style: font name, size in points at 96 dpi, colour."""

    font: str
    size: int
    colour: tuple


class Slot(NamedTuple):
    """The elements of one slot, relative to the track zone. The two marks are our own addition: no key names them."""

    whole: Rect
    label: Rect
    number: Rect
    cover: Rect
    title: Rect
    video: Rect
    queue: Rect

    def moved(self, dx, dy):
        return Slot(*(rect.moved(dx, dy) for rect in self))


EMPTY_SLOT = Slot(*[NOTHING] * 7)


class Key(NamedTuple):
    """A key of the on-screen keyboard: its place, its code, and its caption (a word or an icon)."""

    place: Rect
    code: int
    face: str


@dataclass(frozen=True)
class Palette:
    """The colours, named by their use."""

    ground: tuple = (13, 16, 22)
    panel: tuple = (24, 30, 40)
    field: tuple = (35, 43, 57)
    raised: tuple = (55, 68, 90)
    frame: tuple = (52, 63, 82)
    text: tuple = (244, 242, 234)
    dim: tuple = (172, 186, 204)
    faint: tuple = (92, 104, 124)
    accent: tuple = (255, 184, 46)
    accent_deep: tuple = (222, 146, 12)
    ink: tuple = (24, 18, 6)
    ink_dim: tuple = (78, 50, 0)
    playing: tuple = (52, 208, 116)
    waiting: tuple = (92, 172, 255)
    video: tuple = (206, 160, 255)


@dataclass(frozen=True)
class Layout:
    """One complete theme. Rectangles of the blocks are relative to their block, those of slots to the zone."""

    zone: tuple
    pages: tuple
    navigation: dict
    legend: Rect
    rows: int
    slots: dict
    block: tuple
    command: tuple
    corners: dict
    line1: Rect
    line2: Rect
    coin: Rect
    coin_panel: Rect
    remain: Rect
    remain_panel: Rect
    transport: dict
    queue: Rect
    queue_row: tuple
    queue_buttons: dict
    command_row: tuple
    option_label: Rect
    option_choice: Rect
    command_button: Rect
    keyboard: tuple
    keyboard_title: Rect
    keyboard_text: Rect
    keyboard_lines: tuple
    styles: dict
    colours: Palette
    # Edges are smoothed by painting this many times larger; 1 gives hard edges, for pictures compared by pixel.
    smooth: int
    radius: int
    border: int
    # Writes the letters of the on-screen keyboard.
    caption_font: Path
    # Moves the texts of a row of the queue down, in pixels; its lower part is the gap to the next row.
    queue_shift: int = 0
    # The size of the Playlist block if it differs from that of the Main block.
    playlist: tuple = ()

    @property
    def playlist_block(self):
        return self.playlist or self.block


def in_a_row(names, first, step):
    """Equal rectangles side by side, by name."""
    return {name: first.moved(i * step, 0) for i, name in enumerate(names)}


def slot_grid(slot, rows, left, top, pitch, page_width):
    """Slots of both columns by (column, row); rows beyond the live ones are empty, because the file lists all ten."""
    return {
        (column, row): slot.moved(left + (column - 1) * page_width, top + (row - 1) * pitch)
        if row <= rows
        else EMPTY_SLOT
        for column in (1, 2)
        for row in range(1, ini.SLOT_ROWS + 1)
    }


def keyboard_lines(left, top, width, height, gap):
    """Ten keys per line for digits and letters, and a last line of three wide keys: blank, delete, accept."""
    step = width + gap
    faces = ("0123456789", "ABCDEFGHIJ", "KLMNOPQRST", "UVWXYZ-'.&")
    lines = [
        tuple(
            Key(Rect(left + i * step, top + line * (height + gap), width, height), ord(face), face)
            for i, face in enumerate(row)
        )
        for line, row in enumerate(faces)
    ]
    y = top + len(faces) * (height + gap)
    wide = (("blank", 32, 0, 5), ("delete", 8, 5, 2), ("", 13, 7, 3))
    lines.append(
        tuple(Key(Rect(left + at * step, y, n * step - gap, height), code, face) for face, code, at, n in wide)
    )
    return tuple(lines)


TRANSPORT = ("Preview", "Stop", "Play", "Pause", "Next")
QUEUE_BUTTONS = ("Down", "Up", "Remove", "Load", "Save")


def default_styles(font, colours, sizes):
    """Every text style by its key prefix; "+" at the end marks the look of the selected element."""
    c = colours
    rows = (
        ("ZoneListPisteNumSaisie", "label", c.accent, c.ink),
        ("ZoneListPisteNumPiste", "number", c.dim, c.ink),
        ("ZoneListPisteTitreTitre", "title", c.text, c.ink),
        ("ZoneListPisteTitreInterprete", "artist", c.dim, c.ink_dim),
        ("BlockPlaylistPlaylist", "queue", c.text, c.ink),
        ("BlockMainInsertCoin", "counter", c.accent, None),
        ("BlockMainRemain", "counter", c.text, None),
        ("BlockMainInfosZoneLigne1", "line1", c.dim, None),
        ("BlockMainInfosZoneLigne2", "line2", c.text, None),
        ("BlockCommandListBoxTexte", "command", c.text, c.ink),
        ("BlockCommandListBoxChoiceTexte", "command", c.accent, c.ink),
        ("BlockCommandBtnTexte", "command", c.text, c.ink),
        ("Title", "line1", c.dim, None),
        ("Texte", "line2", c.text, None),
        ("BtnTexte", "line2", c.accent, c.ink),
    )
    styles = {}
    for prefix, size, plain, selected in rows:
        styles[prefix] = Style(font, sizes[size], plain)
        if selected:
            styles[prefix + "+"] = Style(font, sizes[size], selected)
    return styles


def block_layout(width):
    """Shared by both cabinet themes: the track zone of this width with the blocks next to it, or below it in portrait.

    The zone goes on below its pages, so that it fills screens down to 5:4. In portrait the blocks begin where it ends:
    a page turn redraws the whole zone and would otherwise cover them. The menu's block is square, for the big cover.
    """
    block = 1920 - width
    return {
        "zone": (width, 1540),
        "block": (block, 360),
        "command": (360, 360),
        "corners": {
            "horitontal": {"Main": (width, 0), "Playlist": (width, 360), "Command": (width + (block - 360) // 2, 720)},
            "vertical": {"Main": (width - block, 1540), "Playlist": (0, 1540), "Command": (width // 2 - 180, 1540)},
        },
        # A small video of 4:3 or 16:9 begins and ends between the words of two rows of this height.
        "command_row": (346, 47),
        "option_label": Rect(14, 6, 142, 40),
        "option_choice": Rect(200, 6, 106, 40),
        "command_button": Rect(98, 6, 150, 40),
        "keyboard": (1000, 600),
        "keyboard_title": Rect(44, 20, 912, 40),
        "keyboard_text": Rect(60, 72, 880, 64),
        "smooth": 4,
        "border": 7,
        "caption_font": BOLD_FONT,
    }


# The font that make_title_font.py makes, with larger numbers than its letters suggest, and the font of everything else.
TITLE_FONT, TEXT_FONT = "Vantorix Titles", "Roboto Condensed Medium"


def default_layout():
    """The theme of the cabinet: ten rows per column, driven by keys; 1920x1080, or 1400 wide on a portrait screen."""
    font = TEXT_FONT
    colours = Palette(
        text=(255, 246, 226), dim=(226, 198, 150), accent=(255, 196, 92), ink=(38, 16, 2), ink_dim=(84, 40, 2),
        playing=(96, 232, 132), waiting=(120, 196, 255), video=(255, 138, 160),
    )  # fmt: skip
    slot = Slot(
        whole=Rect(0, 0, 676, 98),
        label=Rect(8, 26, 48, 46),
        number=Rect(75, 24, 50, 50),
        cover=Rect(60, 9, 80, 80),
        title=Rect(146, 13, 518, 78),
        video=Rect(22, 66, 20, 20),
        queue=Rect(22, 13, 20, 20),
    )
    sizes = {"label": 24, "number": 17, "title": 29, "artist": 19, "queue": 16,
             "counter": 36, "line1": 18, "line2": 46, "command": 15}  # fmt: skip
    return Layout(
        **block_layout(1400),
        # The rod between the pages does not move when a page turns.
        pages=(Rect(12, 0, 676, 996), Rect(712, 0, 676, 996)),
        navigation={
            "Back": Rect(16, 998, 264, 76),
            "PreviewPage": Rect(992, 998, 196, 76),
            "NextPage": Rect(1188, 998, 196, 76),
        },
        legend=Rect(352, 1000, 584, 70),
        rows=10,
        slots=slot_grid(slot, 10, 12, 10, 98, 700),
        line1=Rect(90, 38, 340, 30),
        line2=Rect(43, 74, 434, 56),
        coin_panel=Rect(36, 144, 130, 92),
        coin=Rect(42, 172, 118, 60),
        remain_panel=Rect(176, 144, 308, 92),
        remain=Rect(182, 172, 296, 60),
        transport=in_a_row(TRANSPORT, Rect(33, 246, 86, 100), 92),
        queue=Rect(36, 14, 448, 240),
        queue_row=(448, 60),
        queue_buttons=in_a_row(QUEUE_BUTTONS, Rect(33, 262, 86, 86), 92),
        keyboard_lines=keyboard_lines(44, 164, 84, 74, 8),
        styles=default_styles(font, colours, sizes) | {
            "ZoneListPisteTitreTitre": Style(TITLE_FONT, sizes["title"], colours.text),
            "ZoneListPisteTitreTitre+": Style(TITLE_FONT, sizes["title"], colours.ink),
            "BlockMainInfosZoneLigne2": Style(TITLE_FONT, sizes["line2"], colours.text),
            "Texte": Style(font, 26, colours.text),
            "BtnTexte": Style(font, 26, colours.accent),
            "BtnTexte+": Style(font, 26, colours.ink),
            "ZoneListPisteNumPiste": Style(font, sizes["number"], colours.ink),
        } | quiet_menu(font, sizes["command"], (150, 128, 106), (255, 214, 140)),
        colours=colours,
        radius=10,
        queue_shift=-1,
    )


def quiet_menu(font, size, plain, lit):
    """The operator's menu is quieter than what patrons read, except for the row that is selected."""
    styles = {}
    for prefix in ("BlockCommandListBoxTexte", "BlockCommandListBoxChoiceTexte", "BlockCommandBtnTexte"):
        styles |= {prefix: Style(font, size, plain), prefix + "+": Style(font, size, lit)}
    return styles


def touch_layout():
    """The theme for fingers: six tall rows per column and no button smaller than 82 pixels."""
    font = TEXT_FONT
    colours = Palette(
        text=(38, 28, 26), dim=(96, 66, 54), accent=(158, 20, 28), ink=(255, 255, 255), ink_dim=(255, 232, 214),
        playing=(0, 112, 66), waiting=(16, 84, 168), video=(122, 36, 138),
    )  # fmt: skip
    slot = Slot(
        whole=Rect(0, 0, 712, 156),
        label=Rect(14, 10, 46, 34),
        number=Rect(32, 63, 66, 68),
        cover=Rect(18, 50, 94, 94),
        title=Rect(120, 21, 580, 124),
        video=Rect(90, 10, 22, 22),
        queue=Rect(62, 10, 22, 22),
    )
    sizes = {"label": 23, "number": 25, "title": 33, "artist": 21, "queue": 16,
             "counter": 38, "line1": 19, "line2": 44, "command": 15}  # fmt: skip
    return Layout(
        **block_layout(1480),
        # The strip below the pages does not move when a page turns.
        pages=(Rect(14, 0, 712, 958), Rect(754, 0, 712, 958)),
        navigation={
            "Back": Rect(16, 964, 260, 112),
            "PreviewPage": Rect(932, 964, 268, 112),
            "NextPage": Rect(1200, 964, 264, 112),
        },
        legend=Rect(384, 972, 440, 94),
        rows=6,
        slots=slot_grid(slot, 6, 14, 10, 158, 740),
        line1=Rect(60, 24, 320, 30),
        line2=Rect(28, 58, 384, 56),
        coin_panel=Rect(14, 130, 120, 92),
        coin=Rect(20, 158, 108, 60),
        remain_panel=Rect(144, 130, 282, 92),
        remain=Rect(150, 158, 270, 60),
        transport=in_a_row(TRANSPORT, Rect(12, 232, 82, 116), 83),
        queue=Rect(14, 14, 412, 224),
        queue_row=(412, 56),
        queue_buttons=in_a_row(QUEUE_BUTTONS, Rect(12, 250, 82, 98), 83),
        keyboard_lines=keyboard_lines(39, 156, 85, 78, 8),
        styles=default_styles(font, colours, sizes) | {
            "ZoneListPisteTitreTitre": Style(TITLE_FONT, sizes["title"], colours.text),
            "ZoneListPisteTitreTitre+": Style(TITLE_FONT, sizes["title"], colours.ink),
            # The message lines are on dark glass; the lit label of a slot and its record differ from its card.
            "BlockMainInfosZoneLigne1": Style(font, sizes["line1"], (255, 226, 160)),
            "BlockMainInfosZoneLigne2": Style(TITLE_FONT, sizes["line2"], (255, 255, 255)),
            "Title": Style(font, sizes["line1"], colours.dim),
            "Texte": Style(font, 23, (255, 255, 255)),
            "ZoneListPisteNumPiste": Style(font, sizes["number"], colours.text),
            "BtnTexte": Style(font, 23, colours.text),
            "BtnTexte+": Style(font, 23, colours.ink),
            "BlockPlaylistPlaylist+": Style(font, sizes["queue"], colours.ink),
        } | quiet_menu(font, sizes["command"], (82, 96, 88), (255, 255, 255)),
        colours=colours,
        radius=16,
        queue_shift=-2,
    )


def wall_layout():
    """The album wall: three shelves of two covers per page, and a queue of ten rows. The menu is beyond the screen."""
    width, block, rows = 1520, (400, 360), 720
    colours = Palette(
        text=(255, 246, 238), dim=(222, 196, 212), accent=(255, 132, 104), ink=(44, 8, 14), ink_dim=(76, 14, 20),
        playing=(92, 232, 148), waiting=(124, 198, 255), video=(236, 164, 255),
    )  # fmt: skip
    slot = Slot(
        whole=Rect(0, 0, 373, 320),
        label=Rect(250, 18, 102, 58),
        number=Rect(75, 84, 76, 76),
        cover=Rect(5, 14, 216, 216),
        title=Rect(5, 236, 368, 76),
        video=Rect(306, 92, 36, 36),
        queue=Rect(260, 92, 36, 36),
    )
    sizes = {"label": 44, "number": 30, "title": 21, "artist": 18, "queue": 15,
             "counter": 36, "line1": 18, "line2": 39, "command": 15}  # fmt: skip
    styles = default_styles(TEXT_FONT, colours, sizes) | quiet_menu(TEXT_FONT, 15, (150, 122, 150), (255, 214, 196))
    narrow = ("ZoneListPisteTitreTitre", "ZoneListPisteTitreInterprete", "ZoneListPisteNumSaisie", "BlockMainInfosZoneLigne2")
    for prefix in narrow:
        styles |= {key: style._replace(font=TITLE_FONT) for key, style in styles.items() if key.rstrip("+") == prefix}
    styles["ZoneListPisteNumSaisie"] = styles["ZoneListPisteNumSaisie"]._replace(colour=colours.text)
    styles["ZoneListPisteNumPiste"] = styles["ZoneListPisteNumPiste"]._replace(colour=colours.ink)
    for key in ("Texte", "BtnTexte", "BtnTexte+"):
        styles[key] = styles[key]._replace(size=26)
    styles["BtnTexte"] = styles["BtnTexte"]._replace(colour=(255, 162, 138))
    return Layout(
        **block_layout(width) | {
            "block": block,
            "corners": {
                # The height of the theme is BlockCommandY plus the height of the Main block.
                "horitontal": {"Main": (width, 0), "Playlist": (width, 360), "Command": (4000, 720)},
                "vertical": {"Main": (width - 400, 1540), "Playlist": (0, 1540), "Command": (4000, 1900)},
            },
        },
        playlist=(block[0], rows),
        pages=(Rect(10, 0, 746, 976), Rect(764, 0, 746, 976)),
        navigation={
            "Back": Rect(14, 980, 276, 96),
            "PreviewPage": Rect(1032, 980, 236, 96),
            "NextPage": Rect(1268, 980, 236, 96),
        },
        legend=Rect(392, 980, 580, 96),
        rows=6,
        slots={
            # Three covers downwards, then the next three: as the keys move the cursor.
            (column, row): slot.moved(10 + 754 * (column - 1) + 373 * ((row - 1) // 3), 4 + 324 * ((row - 1) % 3))
            if row <= 6 else EMPTY_SLOT
            for column in (1, 2) for row in range(1, ini.SLOT_ROWS + 1)
        },
        line1=Rect(22, 26, 356, 30),
        line2=Rect(22, 58, 356, 52),
        coin_panel=Rect(16, 132, 112, 92),
        coin=Rect(20, 160, 104, 60),
        remain_panel=Rect(136, 132, 248, 92),
        remain=Rect(140, 160, 240, 60),
        transport=in_a_row(TRANSPORT, Rect(13, 236, 74, 108), 75),
        queue=Rect(18, 64, 364, 540),
        queue_row=(364, 54),
        queue_buttons=in_a_row(QUEUE_BUTTONS, Rect(13, 612, 74, 94), 75),
        keyboard_lines=keyboard_lines(44, 164, 84, 74, 8),
        styles=styles,
        colours=colours,
        radius=10,
        queue_shift=-1,
    )


def test_layout(rows):
    """A theme of 640x360 in hard-edged flat colours for the tests, with our own small font; 5 or 10 rows per column."""
    colours = Palette()
    tall = rows == 5
    pitch = 66 if tall else 33
    slot = Slot(
        whole=Rect(0, 0, 216, pitch - 1),
        label=Rect(2, 2, 22, 14),
        number=Rect(27, 10 if tall else 6, 24, 20),
        cover=Rect(26, 4 if tall else 3, 26, 26),
        title=Rect(55, 2, 158, pitch - 5),
        video=Rect(2, 19, 10, 10),
        queue=Rect(13, 19, 10, 10),
    )
    sizes = dict.fromkeys(
        ("label", "number", "title", "artist", "queue", "counter", "line1", "line2", "command"), 9
    )
    return Layout(
        zone=(448, 360),
        pages=(Rect(0, 0, 224, 336), Rect(224, 0, 224, 336)),
        navigation={
            "Back": Rect(4, 337, 60, 21),
            "PreviewPage": Rect(320, 337, 60, 21),
            "NextPage": Rect(384, 337, 60, 21),
        },
        legend=NOTHING,
        rows=rows,
        slots=slot_grid(slot, rows, 4, 3, pitch, 224),
        block=(192, 120),
        command=(192, 120),
        corners={
            "horitontal": {"Main": (448, 0), "Playlist": (448, 120), "Command": (448, 240)},
            "vertical": {"Main": (256, 360), "Playlist": (0, 360), "Command": (128, 480)},
        },
        line1=Rect(8, 5, 176, 14),
        line2=Rect(8, 20, 176, 14),
        coin_panel=Rect(8, 38, 60, 28),
        coin=Rect(12, 42, 52, 20),
        remain_panel=Rect(72, 38, 112, 28),
        remain=Rect(76, 42, 104, 20),
        transport=in_a_row(TRANSPORT, Rect(8, 74, 32, 36), 36),
        queue=Rect(6, 6, 180, 78),
        queue_row=(180, 26),
        queue_buttons=in_a_row(QUEUE_BUTTONS, Rect(8, 88, 32, 26), 36),
        command_row=(178, 15),
        option_label=Rect(3, 1, 90, 13),
        option_choice=Rect(106, 1, 60, 13),
        command_button=Rect(39, 1, 100, 13),
        keyboard=(360, 220),
        keyboard_title=Rect(12, 6, 336, 16),
        keyboard_text=Rect(16, 26, 328, 20),
        keyboard_lines=keyboard_lines(12, 54, 30, 28, 4),
        styles=default_styles("Vantorix Test", colours, sizes),
        colours=colours,
        smooth=1,
        radius=0,
        border=2,
        caption_font=TEST_FONT,
    )


def style_pairs(layout, prefix, hilight=False):
    """Key and value of a style's font, size and colour."""
    style = layout.styles[prefix + ("+" if hilight else "")]
    keys = ini.STYLE_HILIGHT if hilight else ini.STYLE
    values = (style.font, style.size, ",".join(map(str, style.colour)))
    return [(prefix + key, value) for key, value in zip(keys, values)]


def box_pairs(prefix, rect, endings=ini.BOX):
    """Key and value of a rectangle's four numbers."""
    return [(prefix + ending, value) for ending, value in zip(endings, rect)]


def zone_pairs(layout):
    wide = ("X", "Y", "Width", "Height")
    pairs = box_pairs("ZoneList", (0, 0, *layout.zone), wide)
    pairs += box_pairs("ZoneListPageGauche", layout.pages[0], wide)
    pairs += box_pairs("ZoneListPageDroite", layout.pages[1], wide)
    for name, rect in layout.navigation.items():
        pairs += box_pairs(f"ZoneListNavigation{name}", rect, ("x", "Y", "Width", "Height"))
    pairs.append(("ZoneListNbTracksParColonne", layout.rows))
    for prefix in ("ZoneListPisteNumSaisie", "ZoneListPisteNumPiste"):
        pairs += style_pairs(layout, prefix) + style_pairs(layout, prefix, True)
    titles = ("ZoneListPisteTitreTitre", "ZoneListPisteTitreInterprete")
    for hilight in (False, True):
        for prefix in titles:
            pairs += style_pairs(layout, prefix, hilight)
    return pairs


def corner_pairs(corners):
    pairs = []
    for block, (x, y) in corners.items():
        pairs += [(f"Block{block}X", x), (f"Block{block}Y", y)]
    return pairs


def playlist_pairs(layout):
    prefix = "BlockPlaylistPlaylist"
    pairs = box_pairs(prefix, layout.queue)
    pairs += style_pairs(layout, prefix) + [(f"{prefix}FontDecal", layout.queue_shift)]
    pairs += style_pairs(layout, prefix, True) + [(f"{prefix}FontDecalHilight", layout.queue_shift)]
    for name, rect in layout.queue_buttons.items():
        pairs += box_pairs(f"BlockPlaylistBtn{name}", rect)
    return pairs


def main_pairs(layout):
    pairs = []
    texts = (("InsertCoin", layout.coin), ("Remain", layout.remain),
             ("InfosZoneLigne1", layout.line1), ("InfosZoneLigne2", layout.line2))  # fmt: skip
    for name, rect in texts:
        pairs += box_pairs(f"BlockMain{name}", rect) + style_pairs(layout, f"BlockMain{name}")
    for name, rect in layout.transport.items():
        pairs += box_pairs(f"BlockMainBtn{name}", rect)
    return pairs


def command_pairs(layout):
    pairs = []
    boxes = (("ListBoxTexte", layout.option_label), ("ListBoxChoiceTexte", layout.option_choice),
             ("BtnTexte", layout.command_button))  # fmt: skip
    for name, rect in boxes:
        prefix = f"BlockCommand{name}"
        pairs += box_pairs(prefix, rect) + style_pairs(layout, prefix) + style_pairs(layout, prefix, True)
    return pairs


def slot_pairs(slot, row):
    """A slot's 22 values. Its label is the page's letter and a digit; 33 means the key of that letter."""
    digit = row % 10
    pairs = box_pairs("ZoneListPisteNumSaisie", slot.label)
    pairs += [("ZoneListPisteNumSaisieLibele", f"[AP]{digit}"), ("ZoneListPisteNumSaisieKeys", f"33|{48 + digit}")]
    for name, rect in (("NumPiste", slot.number), ("Cover", slot.cover), ("Titre", slot.title), ("Hilight", slot.whole)):
        pairs += box_pairs(f"ZoneListPiste{name}", rect)
    return pairs


def keyboard_pairs(layout):
    accept = next(key for line in layout.keyboard_lines for key in line if key.code == 13)
    pairs = box_pairs("Title", layout.keyboard_title) + style_pairs(layout, "Title")
    pairs += box_pairs("Texte", layout.keyboard_text) + style_pairs(layout, "Texte")
    pairs += box_pairs("BtnTexte", accept.place.inset(layout.border))
    pairs += style_pairs(layout, "BtnTexte") + style_pairs(layout, "BtnTexte", True)
    pairs.append(("KeyNbLines", len(layout.keyboard_lines)))
    for number, line in enumerate(layout.keyboard_lines, 1):
        pairs.append((f"KeyNbCols{number}", len(line)))
        for column, key in enumerate(line, 1):
            values = (*key.place, key.code)
            pairs += [(f"{field}{number}-{column}", value) for field, value in zip(ini.KEY_FIELDS, values)]
    return pairs


def theme_sections(layout):
    """The whole theme.ini as (section, comments, pairs), for theme_ini.write."""
    sections = [
        ("zonelist", ["The track zone: its place, its two pages, its touch buttons, rows per column, text styles.",
                      "All numbers are theme pixels; font sizes are points; colours are red,green,blue."], zone_pairs(layout)),
        ("horitontal", ["Corners of the three blocks on a landscape screen. The section must be spelled like this.",
                        "Theme width = BlockMainX + width of main.png, height = BlockCommandY + height of main.png."],
         corner_pairs(layout.corners["horitontal"])),
        ("vertical", ["The same on a portrait screen."], corner_pairs(layout.corners["vertical"])),
        ("BlockPlaylist", ["The queue and its buttons, relative to the block."], playlist_pairs(layout)),
        ("BlockMain", ["Credits, remaining time, the two message lines and the transport buttons."], main_pairs(layout)),
        ("zonecommand", ["Texts of a menu row, relative to the row."], command_pairs(layout)),
    ]  # fmt: skip
    for column, base in ini.SLOT_SECTIONS.items():
        for row in range(1, ini.SLOT_ROWS + 1):
            sections.append((f"{base}{row}", [], slot_pairs(layout.slots[column, row], row)))
    sections.append(("keyboard", ["The on-screen keyboard: texts, then place and code of each key by line and column.",
                                  "Code 8 deletes, 13 accepts, any other code is the character."], keyboard_pairs(layout)))  # fmt: skip
    return sections
