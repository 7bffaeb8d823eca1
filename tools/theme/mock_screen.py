#!/usr/bin/python3
"""Composes a screen of a theme with sample content from its theme.ini and pictures.

It follows the jukebox: two cached looks of the track zone, slots copied from the lit one, buttons cut from the four
pictures of their block, rows of the queue and the menu copied from strips. Text is placed by the same rules but drawn
by Pillow, so letters may differ by a pixel.
"""

import argparse
import io
import subprocess
import sys
from dataclasses import dataclass
from functools import lru_cache
from pathlib import Path

from PIL import Image, ImageDraw, ImageFont

from layout import TITLE_FONT
from light import POSTER
from theme_ini import ThemeFile

sys.path.insert(0, str(Path(__file__).resolve().parents[1]))
from make_title_font import title_font  # noqa: E402

# Kind, title, artist, track number, cover (or its file), marks. Long and short ones, to show every layout of a slot.
SAMPLES = (
    ("dir", "BRASS BANDS", "3 ALBUMS", "", True, ""),
    ("dir", "WALTZES", "", "", False, ""),
    ("file", "ODE TO JOY", "THE TIN WHISTLES", "", False, "playing"),
    ("file", "IN THE HALL OF THE MOUNTAIN KING AND OTHER STORIES", "CLOCKWORK ORCHESTRA", "", False, ""),
    ("file", "GREENSLEEVES", "HARBOUR LIGHTS QUARTET", "7", False, "waiting"),
    ("file", "WHEN THE SAINTS GO MARCHING IN TO THE TOWN", "LATE NIGHT BRASS BAND", "108", False, ""),
    ("file", "ÇA IRA, ÀÉÎÕÜ", "ÑANDÚ Y LOS ÁNGELES", "", True, ""),
    ("file", "SWAN LAKE", "", "12", False, "video"),
    ("file", "THE BLUE DANUBE, A VERY LONG WALTZ FOR A COVER", "THE MUSIC BOX COMPANY", "", True, "video playing"),
    ("file", "AULD LANG SYNE.WAV", "", "", False, ""),
) * 2
QUEUE = (("ODE TO JOY", "THE TIN WHISTLES"), ("GREENSLEEVES", "HARBOUR LIGHTS QUARTET"), ("SWAN LAKE", ""),
         ("THE BLUE DANUBE, A VERY LONG WALTZ FOR A COVER", "THE MUSIC BOX COMPANY"), ("FIFTH ENTRY", "X"))  # fmt: skip
MENU = (("ORDER", "PLAYCOUNT"), ("BIG TITLE", "NO"), ("COVER", "YES"), ("TRACKNUM", "YES"), ("TRACKNOTE", "3/5"),
        ("CONFIG", None), ("QUIT", None))  # fmt: skip
TRANSPORT = ("Preview", "Stop", "Play", "Pause", "Next")
QUEUE_BUTTONS = ("Down", "Up", "Remove", "Load", "Save")


def font_names(font):
    """The names for a font: its family, and for weights other than the usual two the family with the weight."""
    family, style = font.getname()
    return family.lower(), f"{family} {style}".lower()


@lru_cache(maxsize=None)
def font_file(folder, family):
    """The file of a font family: preferably a font of the theme, otherwise one of the system."""
    for file in sorted(Path(folder).glob("*.[tT][tT][fF]")):
        if family.lower() in font_names(ImageFont.truetype(str(file), 12)):
            return str(file)
    found = subprocess.run(["fc-match", "-f", "%{file}", f"{family}:style=Book"], capture_output=True, check=True)
    return found.stdout.decode()


@lru_cache(maxsize=None)
def load_font(folder, family, points):
    file = io.BytesIO(title_font(POSTER.read_bytes())) if family == TITLE_FONT else font_file(folder, family)
    return ImageFont.truetype(file, round(points * 96 / 72), layout_engine=ImageFont.Layout.BASIC)


class Theme:
    """A theme folder: its file, and its pictures, which are loaded at the first access."""

    def __init__(self, folder, samples=SAMPLES):
        self.folder = Path(folder)
        self.samples = samples
        self.ini = ThemeFile(self.folder / "theme.ini")
        self.loaded = {}

    def picture(self, name):
        if name not in self.loaded:
            with Image.open(self.folder / name) as file:
                self.loaded[name] = file.convert("RGBA")
        return self.loaded[name]

    def font(self, style):
        return load_font(str(self.folder), style[0], style[1])


@dataclass
class Show:
    """The sample content of the mock screen."""

    zone: str = "list"
    button: str = "Pause"
    touch: bool = False
    slot: tuple = (1, 3)
    available: bool = True
    video: bool = False


def cut(picture, box):
    x, y, w, h = box
    return picture.crop((x, y, x + w, y + h))


def moved(box, corner):
    return (box[0] + corner[0], box[1] + corner[1], box[2], box[3])


def shorten(font, text, width):
    """The unchanged text if it fits, otherwise the longest beginning that fits with three dots."""
    short = text
    size = font.getlength(text)
    while size > width:
        short = short[:-1]
        size = font.getlength(short + "...")
    return short if short == text else short + "..."


def draw_text(image, theme, text, box, style, align="center", size_factor=1):
    """One line of text in a box, centred vertically, shortened to its width and not clipped."""
    x, y, w, h = box
    family, size, colour = style
    font = theme.font((family, size * size_factor))
    text = shorten(font, text, w)
    ascent, descent = font.getmetrics()
    left = x if align == "left" else x + w / 2 - font.getlength(text) / 2
    ImageDraw.Draw(image).text((round(left), round(y + h / 2 - (ascent + descent) / 2)), text, colour, font)


def three_lines(font, title, width):
    """A title too wide for its box, broken at the last blank that fits."""
    head = title
    while font.getlength(head) > width:
        head = head[:-1]
    head = head[: head.rindex(" ")].strip()
    return head, title[len(head) :].strip()


def title_lines(theme, slot_box, title, artist, placed, hilight):
    """Title and artist in one, two or three lines: the text, style and box of each."""
    titre, cover = slot_box("Titre"), slot_box("Cover")
    x, width = (titre[0], titre[2]) if placed else (cover[0], titre[0] - cover[0] + titre[2])
    plain = theme.ini.style("zonelist", "ZoneListPisteTitreTitre")
    style = theme.ini.style("zonelist", "ZoneListPisteTitreTitre", hilight)
    second = theme.ini.style("zonelist", "ZoneListPisteTitreInterprete", hilight)
    font = theme.font(plain)
    if not artist:
        lines, top, step = [(title, style)], titre[1], 0
    elif font.getlength(title) <= titre[2]:
        step = style[1] + 5
        lines, top = [(title, style), (artist, second)], titre[1] - step / 2
    else:
        step = style[1] + 2
        head, tail = three_lines(font, title, titre[2])
        lines, top = [(head, style), (tail, style), (artist, second)], titre[1] - step
    return [(text, line_style, (x, top + i * step, width, titre[3])) for i, (text, line_style) in enumerate(lines)]


def draw_titles(image, theme, slot_box, sample, placed, hilight):
    _, title, artist, _, _, _ = sample
    for text, style, box in title_lines(theme, slot_box, title, artist, placed, hilight):
        draw_text(image, theme, text, box, style)


def sample_cover(size, file):
    """A cover picture, stretched as by the jukebox, or a substitute if there is no file."""
    if isinstance(file, Path):
        with Image.open(file) as cover:
            return cover.convert("RGBA").resize(size, Image.Resampling.BILINEAR)
    image = Image.new("RGBA", size, (146, 60, 60, 255))
    draw = ImageDraw.Draw(image)
    draw.ellipse((4, 4, size[0] - 5, size[1] - 5), fill=(226, 196, 150, 255))
    draw.line((0, 0, size[0], size[1]), fill=(40, 40, 60, 255), width=2)
    return image


def draw_zone(theme, hilight):
    """The track zone in one of its two looks, all slots filled with samples."""
    ini = theme.ini
    ending = "_hilight.png" if hilight else ".png"
    image = Image.new("RGBA", (ini.number("zonelist", "ZoneListWidth"), ini.number("zonelist", "ZoneListHeight")))
    corner = (ini.number("zonelist", "ZoneListX"), ini.number("zonelist", "ZoneListY"))
    image.alpha_composite(theme.picture("zonelist" + ending), corner)
    rows = ini.number("zonelist", "ZoneListNbTracksParColonne")
    for column in (1, 2):
        for row in range(1, rows + 1):
            sample = theme.samples[((column - 1) * rows + row - 1) % len(theme.samples)]

            def slot_box(field, column=column, row=row):
                return moved(ini.slot(column, row, field), corner)

            draw_slot(image, theme, slot_box, (column, row), sample, hilight, ending)
    return image


def draw_slot(image, theme, slot_box, place, sample, hilight, ending):
    _, _, _, number, cover, marks = sample
    whole = slot_box("Hilight")
    if cover:
        box = slot_box("Cover")
        image.alpha_composite(sample_cover(box[2:], cover), box[:2])
    if "video" in marks:
        image.alpha_composite(cut(theme.picture("zonelist_video.png"), whole), whole[:2])
    if number and not cover:
        image.alpha_composite(cut(theme.picture("zonelistWithNumTrack" + ending), whole), whole[:2])
        draw_text(image, theme, number, slot_box("NumPiste"), theme.ini.style("zonelist", "ZoneListPisteNumPiste", hilight))
    column, row = place
    section = ("", "zonelistGauche", "zonelistDroite")[column] + str(row)
    label = theme.ini.text(section, "ZoneListPisteNumSaisieLibele").replace("[AP]", " AB"[column])
    style = theme.ini.style("zonelist", "ZoneListPisteNumSaisie", hilight)
    draw_text(image, theme, label, slot_box("NumSaisie"), style)
    draw_titles(image, theme, slot_box, sample, bool(cover or number), hilight)


def paste_zone(screen, theme, show):
    """The track zone on the screen, with selection, marks and touch buttons."""
    screen.paste(draw_zone(theme, False), (0, 0))
    ini = theme.ini
    if show.touch:
        wide = ("x", "Y", "Width", "Height")
        for name in ("PreviewPage", "NextPage", "Back"):
            box = ini.box("zonelist", f"ZoneListNavigation{name}", wide)
            screen.alpha_composite(cut(theme.picture("zonelist_navigation.png"), box), box[:2])
    elif show.zone == "list":
        box = ini.slot(*show.slot, "Hilight")
        screen.paste(cut(draw_zone(theme, True), box), box[:2])
    rows = ini.number("zonelist", "ZoneListNbTracksParColonne")
    for i in range(2 * rows):
        marks = SAMPLES[i % len(SAMPLES)][5]
        for word, name in (("waiting", "comingnext"), ("playing", "nowplaying")):
            if word in marks:
                box = ini.slot(1 + i // rows, 1 + i % rows, "Hilight")
                screen.alpha_composite(cut(theme.picture(f"zonelist_{name}.png"), box), box[:2])


def paste_buttons(screen, theme, section, block, names, corner, show):
    """The five buttons of a block; without `available` every second one looks unavailable."""
    for i, name in enumerate(names):
        alive = "selected" if show.available or i % 2 else "unselected"
        lit = "_hilight" if show.button == name and show.zone == block else ""
        box = theme.ini.box(section, f"{section}Btn{name}")
        place = moved(box, corner)
        screen.alpha_composite(cut(theme.picture(f"{block}_active_{alive}{lit}.png"), box), place[:2])


def paste_main(screen, theme, corner, show):
    background = "main_active_selected.png" if show.zone == "main" else "main.png"
    screen.alpha_composite(theme.picture(background), corner)
    paste_buttons(screen, theme, "BlockMain", "main", TRANSPORT, corner, show)
    texts = (("InsertCoin", "12"), ("Remain", "03:45"), ("InfosZoneLigne1", "NOW PLAYING"),
             ("InfosZoneLigne2", "IN THE HALL OF THE MOUNTAIN KING"))  # fmt: skip
    for name, text in texts:
        box = theme.ini.box("BlockMain", f"BlockMain{name}")
        place = moved(box, corner)
        screen.alpha_composite(cut(theme.picture("main.png"), box), place[:2])
        draw_text(screen, theme, text, place, theme.ini.style("BlockMain", f"BlockMain{name}"))


def queue_row(theme, entry, hilight):
    """One row of the queue's strips."""
    ini = theme.ini
    cursor = theme.picture("playlist_playlisthilight.png")
    width, height = cursor.size
    x, y, _, _ = ini.box("BlockPlaylist", "BlockPlaylistPlaylist")
    row = cut(theme.picture("playlist.png"), (x, y, width, height))
    if hilight:
        row.alpha_composite(cursor)
    style = ini.style("BlockPlaylist", "BlockPlaylistPlaylist", hilight)
    shift = ini.number("BlockPlaylist", "BlockPlaylistPlaylistFontDecal" + ("Hilight" if hilight else ""))
    for text, top in zip(entry, (shift + 1, height // 2 + shift - 1)):
        draw_text(row, theme, text, (5, top, width - 5, height // 2), style, "left")
    return row


def paste_playlist(screen, theme, corner, show):
    background = "playlist_active_selected.png" if show.zone == "playlist" else "playlist.png"
    screen.alpha_composite(theme.picture(background), corner)
    paste_buttons(screen, theme, "BlockPlaylist", "playlist", QUEUE_BUTTONS, corner, show)
    box = moved(theme.ini.box("BlockPlaylist", "BlockPlaylistPlaylist"), corner)
    height = theme.picture("playlist_playlisthilight.png").height
    for i, entry in enumerate(QUEUE):
        room = min(height, box[3] - i * height)
        if room > 0:
            screen.paste(cut(queue_row(theme, entry, i == 0), (0, 0, box[2], room)), (box[0], box[1] + i * height))


def menu_row(theme, label, choice, hilight):
    """One row of the menu's strips."""
    ini = theme.ini
    ending = "_hilight.png" if hilight else ".png"
    kind = "command_listbox" if choice else "command_btn"
    row = theme.picture(kind + ending).copy()
    texts = (("ListBoxTexte", label), ("ListBoxChoiceTexte", choice)) if choice else (("BtnTexte", label),)
    for name, text in texts:
        prefix = f"BlockCommand{name}"
        align = "left" if name == "ListBoxTexte" else "center"
        draw_text(row, theme, text, ini.box("zonecommand", prefix), ini.style("zonecommand", prefix, hilight), align)
    return row


def paste_command(screen, theme, corner, show):
    focused = show.zone == "command"
    screen.alpha_composite(theme.picture("command_hilight.png" if focused else "command.png"), corner)
    height = theme.picture("command_listbox.png").height
    room = theme.picture("command.png").height - 14
    for i, (label, choice) in enumerate(MENU):
        row = menu_row(theme, label, choice, focused and i == 2)
        screen.paste(cut(row, (0, 0, row.width, min(height, room - i * height))), (corner[0] + 7, corner[1] + 7 + i * height))
    if show.video:
        width = theme.picture("command_listbox.png").width
        ImageDraw.Draw(screen).rectangle(
            (corner[0] + 7, corner[1] + 7, corner[0] + width - 8, corner[1] + height * len(MENU) - 8), fill=(90, 20, 90)
        )


def theme_size(theme, section):
    """Width and height of the whole theme in one orientation, as the jukebox computes them."""
    main = theme.picture("main.png")
    return (theme.ini.number(section, "BlockMainX") + main.width, theme.ini.number(section, "BlockCommandY") + main.height)


def compose(theme, orientation, show=None):
    """The whole screen in theme pixels."""
    show = show or Show()
    section = "horitontal" if orientation == "horizontal" else "vertical"
    screen = Image.new("RGBA", theme_size(theme, section), (0, 0, 0, 255))
    paste_zone(screen, theme, show)
    pasters = {"Main": paste_main, "Playlist": paste_playlist, "Command": paste_command}
    for block, paste in pasters.items():
        corner = theme.ini.box(section, f"Block{block}", ("X", "Y"))
        paste(screen, theme, corner, show)
    return screen


def compose_keyboard(theme, selected=(2, 3), text="PARTY MIX"):
    """The on-screen keyboard with one key selected."""
    ini = theme.ini
    image = theme.picture("keyboard.png").copy()
    box = tuple(ini.number("keyboard", f"Key{f}{selected[0]}-{selected[1]}") for f in "XYWH")
    image.paste(cut(theme.picture("keyboard_hilight.png"), box), box[:2])
    for prefix, words in (("Title", "SAVE PLAYLIST AS..."), ("Texte", text + "_")):
        draw_text(image, theme, words, ini.box("keyboard", prefix), ini.style("keyboard", prefix), "left")
    accept = ini.number("keyboard", f"KeyKey{selected[0]}-{selected[1]}") == 13
    draw_text(image, theme, "SAVE", ini.box("keyboard", "BtnTexte"), ini.style("keyboard", "BtnTexte", accept))
    return image


def fit(image, width, height):
    """The picture on a screen of this size: scaled by one factor, from the top left corner."""
    scale = min(width / image.width, height / image.height)
    screen = Image.new("RGB", (width, height))
    size = (round(image.width * scale), round(image.height * scale))
    screen.paste(image.convert("RGB").resize(size, Image.Resampling.BILINEAR), ((width - size[0]) // 2, 0))
    return screen


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("theme", type=Path, help="theme folder")
    parser.add_argument("out", type=Path, help="PNG to write")
    parser.add_argument("--orientation", choices=("horizontal", "vertical", "keyboard"), default="horizontal")
    parser.add_argument("--screen", metavar="WxH", help="fit to a screen of this size")
    parser.add_argument("--zone", choices=("list", "main", "playlist", "command"), default="list")
    parser.add_argument("--button", default="Pause", help="focused button of the zone")
    parser.add_argument("--touch", action="store_true", help="touch mode")
    parser.add_argument("--unavailable", action="store_true", help="every second button is not available")
    parser.add_argument("--video", action="store_true", help="show the place of a small video")
    parser.add_argument("--key", default="2-3", help="selected key of the keyboard, line-column")
    args = parser.parse_args()
    theme = Theme(args.theme)
    if args.orientation == "keyboard":
        image = compose_keyboard(theme, tuple(map(int, args.key.split("-"))))
    else:
        show = Show(args.zone, args.button, args.touch, available=not args.unavailable, video=args.video)
        image = compose(theme, args.orientation, show)
    if args.screen:
        image = fit(image, *map(int, args.screen.split("x")))
    image.convert("RGB").save(args.out)


if __name__ == "__main__":
    main()
