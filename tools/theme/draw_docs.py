#!/usr/bin/python3
"""Draws the pictures of docs/theme-authors.md from the default theme in the repository, so that they always match it.

Each picture shows a screen with numbered rectangles, and next to it their keys in theme.ini.
"""

import argparse
from pathlib import Path

from PIL import Image, ImageDraw, ImageFont

from light import CONDENSED
from mock_screen import QUEUE_BUTTONS, TRANSPORT, Show, Theme, compose, compose_keyboard, cut, theme_size

ROOT = Path(__file__).resolve().parents[2]
COLOURS = ((255, 92, 92), (90, 200, 255), (120, 230, 120), (255, 210, 80), (230, 130, 255), (255, 150, 60), (130, 255, 230))
GROUND, INK = (250, 248, 244), (30, 28, 26)
LINE = 26
WIDE = ("X", "Y", "Width", "Height")


def face(pixels):
    return ImageFont.truetype(str(CONDENSED), pixels, layout_engine=ImageFont.Layout.BASIC)


def save_small(page, path):
    page.quantize(256, method=Image.Quantize.FASTOCTREE, kmeans=2, dither=Image.Dither.NONE).save(path, optimize=True)


def annotate(picture, boxes, path, scale=1.0, panel=430):
    """The scaled picture with numbered rectangles, and a list of their names next to it."""
    size = (round(picture.width * scale), round(picture.height * scale))
    height = max(size[1], len(boxes) * LINE + 20)
    page = Image.new("RGB", (size[0] + panel, height), GROUND)
    page.paste(picture.convert("RGB").resize(size, Image.Resampling.LANCZOS), (0, 0))
    draw = ImageDraw.Draw(page)
    font, small = face(19), face(17)
    for number, (name, (x, y, w, h)) in enumerate(boxes, 1):
        colour = COLOURS[number % len(COLOURS)]
        left, top, right, bottom = (round(value * scale) for value in (x, y, x + w, y + h))
        draw.rectangle((left, top, right - 1, bottom - 1), outline=colour, width=3)
        plate = (right - 28, top + 3, right - 4, top + 25)
        draw.rectangle(plate, fill=colour)
        draw.text(((plate[0] + plate[2]) / 2, (plate[1] + plate[3]) / 2), str(number), (0, 0, 0), small, anchor="mm")
        row = 10 + (number - 1) * LINE
        draw.rectangle((size[0] + 12, row, size[0] + 38, row + 22), fill=colour)
        draw.text((size[0] + 25, row + 11), str(number), (0, 0, 0), small, anchor="mm")
        draw.text((size[0] + 48, row + 11), name, INK, font, anchor="lm")
    save_small(page, path)


def arrangement(theme, orientation, section):
    """The four areas of a screen."""
    zone = theme.ini.box("zonelist", "ZoneList", WIDE)
    boxes = [("ZoneList: X, Y, Width, Height", zone)]
    for name in ("Main", "Playlist", "Command"):
        corner = theme.ini.box(section, f"Block{name}", ("X", "Y"))
        boxes.append((f"Block{name}X, Block{name}Y", (*corner, *block_size(theme, name))))
    return compose(theme, orientation), boxes


def zone_boxes(theme):
    boxes = [(f"ZoneListPage{name}", theme.ini.box("zonelist", f"ZoneListPage{name}", WIDE)) for name in ("Gauche", "Droite")]
    for name in ("Back", "PreviewPage", "NextPage"):
        boxes.append((f"ZoneListNavigation{name}", theme.ini.box("zonelist", f"ZoneListNavigation{name}", ("x", *WIDE[1:]))))
    for place, section in (((1, 2), "zonelistGauche2"), ((1, 3), "zonelistGauche3"), ((2, 2), "zonelistDroite2")):
        boxes.append((f"[{section}] ZoneListPisteHilight", theme.ini.slot(*place, "Hilight")))
    return boxes


def slot_boxes(theme, place, corner):
    """The elements of one slot, relative to it."""
    names = ("Hilight", "NumSaisie", "NumPiste", "Cover", "Titre")
    moved = []
    for name in names:
        x, y, w, h = theme.ini.slot(*place, name)
        moved.append((f"ZoneListPiste{name}", (x - corner[0], y - corner[1], w, h)))
    return moved


def block_size(theme, name):
    """The picture of the Playlist block may be larger than the block, which is as large as the Main block."""
    return theme.picture("command.png" if name == "Command" else "main.png").size


def block(theme, screen, section, name):
    """A block cut from the screen."""
    corner = theme.ini.box(section, f"Block{name}", ("X", "Y"))
    return cut(screen, (*corner, *block_size(theme, name)))


def main_boxes(theme):
    names = ("InfosZoneLigne1", "InfosZoneLigne2", "InsertCoin", "Remain", *(f"Btn{name}" for name in TRANSPORT))
    return [(f"BlockMain{name}", theme.ini.box("BlockMain", f"BlockMain{name}")) for name in names]


def playlist_boxes(theme):
    boxes = [("BlockPlaylistPlaylist", theme.ini.box("BlockPlaylist", "BlockPlaylistPlaylist"))]
    row = theme.picture("playlist_playlisthilight.png").size
    boxes.append(("a row: size of playlist_playlisthilight.png", (*boxes[0][1][:2], *row)))
    boxes += [(f"BlockPlaylistBtn{name}", theme.ini.box("BlockPlaylist", f"BlockPlaylistBtn{name}")) for name in QUEUE_BUTTONS]
    return boxes


def command_boxes(theme):
    """The texts of a row of options (the second of the menu) and of a button (the sixth), in the block."""
    height = theme.picture("command_listbox.png").height
    boxes = [("a row: size of command_listbox.png", (7, 7, *theme.picture("command_listbox.png").size))]
    for name, row in (("ListBoxTexte", 1), ("ListBoxChoiceTexte", 1), ("BtnTexte", 5)):
        x, y, w, h = theme.ini.box("zonecommand", f"BlockCommand{name}")
        boxes.append((f"BlockCommand{name}", (x + 7, y + 7 + row * height, w, h)))
    return boxes


def keyboard_boxes(theme):
    boxes = [(name, theme.ini.box("keyboard", name)) for name in ("Title", "Texte", "BtnTexte")]
    for key in ("1-1", "2-5", "5-2"):
        box = tuple(theme.ini.number("keyboard", f"Key{f}{key}") for f in "XYWH")
        boxes.append((f"KeyX{key}, KeyY{key}, KeyW{key}, KeyH{key}", box))
    return boxes


def looks(theme, path):
    """The four looks of a block's buttons, under the names of their pictures."""
    boxes = [theme.ini.box("BlockMain", f"BlockMainBtn{name}") for name in TRANSPORT]
    left, top = min(box[0] for box in boxes), min(box[1] for box in boxes)
    strip = (left - 8, top - 8, max(box[0] + box[2] for box in boxes) - left + 16, max(box[3] for box in boxes) + 16)
    names = ["main_active_" + look for look in ("selected", "selected_hilight", "unselected", "unselected_hilight")]
    notes = ("available", "available, under the cursor", "not available", "not available, under the cursor")
    page = Image.new("RGB", (strip[2] + 420, 4 * (strip[3] + 12)), GROUND)
    draw = ImageDraw.Draw(page)
    for i, (name, note) in enumerate(zip(names, notes)):
        y = i * (strip[3] + 12) + 6
        page.paste(cut(theme.picture(name + ".png"), strip).convert("RGB"), (0, y))
        draw.text((strip[2] + 20, y + strip[3] // 2 - 14), name + ".png", INK, face(22), anchor="lm")
        draw.text((strip[2] + 20, y + strip[3] // 2 + 16), note, (110, 100, 90), face(19), anchor="lm")
    save_small(page, path)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--theme", type=Path, default=ROOT / "home/themes/default")
    parser.add_argument("--out", type=Path, default=ROOT / "docs/pictures")
    args = parser.parse_args()
    args.out.mkdir(parents=True, exist_ok=True)
    theme, out = Theme(args.theme), args.out
    annotate(*arrangement(theme, "horizontal", "horitontal"), out / "theme-horizontal.png", 0.5, 330)
    tall, boxes = arrangement(theme, "vertical", "vertical")
    annotate(tall, boxes, out / "theme-vertical.png", 0.4, 330)
    touched = compose(theme, "horizontal", Show(touch=True))
    zone = theme.ini.box("zonelist", "ZoneList", WIDE)
    annotate(cut(touched, (*zone[:3], touched.height)), zone_boxes(theme), out / "theme-zone.png", 0.65, 400)
    whole = theme.ini.slot(1, 5, "Hilight")
    annotate(cut(touched, whole), slot_boxes(theme, (1, 5), whole), out / "theme-slot.png", 1.4, 260)
    focused = compose(theme, "horizontal", Show(zone="main", available=False))
    annotate(block(theme, focused, "horitontal", "Main"), main_boxes(theme), out / "theme-main.png", 1.0, 300)
    focused = compose(theme, "horizontal", Show(zone="playlist", button="Remove"))
    annotate(block(theme, focused, "horitontal", "Playlist"), playlist_boxes(theme), out / "theme-playlist.png", 1.0, 400)
    focused = compose(theme, "horizontal", Show(zone="command"))
    annotate(block(theme, focused, "horitontal", "Command"), command_boxes(theme), out / "theme-command.png", 1.0, 350)
    annotate(compose_keyboard(theme), keyboard_boxes(theme), out / "theme-keyboard.png", 0.8, 350)
    looks(theme, out / "theme-buttons.png")
    print(f"{args.out}: theme size {theme_size(theme, 'horitontal')} and {theme_size(theme, 'vertical')}")


if __name__ == "__main__":
    main()
