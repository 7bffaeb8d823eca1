#!/usr/bin/python3
"""Checks theme folders: keys, numbers, rectangles, picture sizes, the looks of buttons and slots, texts, sounds.

An error stops the jukebox or is displayed wrongly; it makes the exit code 1. Advice points out what may be unintended;
with --strict it counts as an error.
"""

import argparse
import itertools
import re
import sys
from pathlib import Path

from PIL import Image

import theme_ini as ini
from mock_screen import QUEUE_BUTTONS, TRANSPORT, Theme, cut, font_names, theme_size

ZONE_PICTURES = [name for name in ini.PICTURES if name.startswith("zonelist")]
LOOKS = ("active_selected", "active_selected_hilight", "active_unselected", "active_unselected_hilight")
MENU_ROWS = ("command_listbox.png", "command_listbox_hilight.png", "command_btn.png", "command_btn_hilight.png")
NAVIGATION = ("Back", "PreviewPage", "NextPage")
WIDE = ("X", "Y", "Width", "Height")
LONGEST_MENU = 7  # rows of the folder menu, the one that is shown
CAPITAL = 0.73  # height of a capital relative to the font size


class Report:
    """The findings in one theme."""

    def __init__(self, folder):
        self.folder, self.errors, self.advice = folder, [], []

    def error(self, text):
        self.errors.append(text)

    def hint(self, text):
        self.advice.append(text)

    def show(self, strict):
        """Prints all findings, returns whether the theme passes."""
        for kind, texts in (("error", self.errors), ("advice", self.advice)):
            for text in texts:
                print(f"{self.folder}: {kind}: {text}")
        passed = not self.errors and not (strict and self.advice)
        print(f"{self.folder}: {'good' if passed else 'bad'}, {len(self.errors)} errors, {len(self.advice)} advice")
        return passed


def all_keys(theme):
    """Every (section, key) that the jukebox reads, including the keyboard's grid as the file defines it."""
    for section, keys in ini.SECTIONS.items():
        yield from ((section, key) for key in keys)
    for base in ini.SLOT_SECTIONS.values():
        for row in range(1, ini.SLOT_ROWS + 1):
            yield from ((f"{base}{row}", key) for key in ini.SLOT_KEYS)
    yield from (("keyboard", key) for key in ini.KEYBOARD_KEYS)
    for line in range(1, counted(theme, "KeyNbLines") + 1):
        yield "keyboard", f"KeyNbCols{line}"
        for column in range(1, counted(theme, f"KeyNbCols{line}") + 1):
            yield from (("keyboard", f"{field}{line}-{column}") for field in ini.KEY_FIELDS)


def counted(theme, key):
    text = theme.ini.text("keyboard", key)
    return min(int(text), 100) if text.isdigit() else 0


def check_value(report, section, key, value):
    """Checks one value by its kind, which the key's ending determines."""
    name = f"[{section}] {key}"
    if key.endswith("Libele"):
        return
    if key.endswith("Keys"):
        if value and not re.fullmatch(r"\d+(\|\d+)*", value):
            report.error(f"{name}: not a list of key codes: {value!r}")
    elif key.endswith(("Font", "FontHilight")):
        if not value:
            report.error(f"{name}: no font name")
    elif key.endswith(("FontColor", "FontColorHilight")):
        parts = value.split(",")
        if len(parts) != 3 or not all(part.strip().isdigit() and int(part) <= 255 for part in parts):
            report.error(f"{name}: not a colour: {value!r}")
    elif not re.fullmatch(r"[+-]?\d+", value):
        report.error(f"{name}: {'missing' if not value else f'not a whole number: {value!r}'}")
    elif not -32768 <= int(value) <= 32767:
        report.error(f"{name}: outside 16 bits: {value}")


def check_keys(report, theme):
    """Every key exists, once, and has a value of its kind. Returns whether the geometry can be checked."""
    for section, key in all_keys(theme):
        if key.endswith(("Libele", "Keys")) and (section.lower(), key.lower()) not in theme.ini.values:
            report.hint(f"[{section}] {key}: missing")
        check_value(report, section, key, theme.ini.text(section, key))
    for section, key in theme.ini.doubles:
        report.error(f"[{section}] {key or 'the section'} occurs twice; the second one is ignored")
    known = {(section.lower(), key.lower()) for section, key in all_keys(theme)}
    for section, key in sorted(set(theme.ini.values) - known):
        report.hint(f"[{section}] {key}: unknown key")
    return not report.errors


def check_pictures(report, theme):
    """Every picture exists and can be read as PNG. Returns whether the pictures can be compared."""
    before = len(report.errors)
    for name in ini.PICTURES + ini.KEYBOARD_PICTURES:
        try:
            with Image.open(theme.folder / name) as picture:
                if picture.format != "PNG":
                    report.error(f"{name}: is a {picture.format}, not a PNG")
            theme.picture(name)
        except (OSError, SyntaxError) as fault:
            report.error(f"{name}: {fault}")
    if not (theme.folder / "preview.jpg").is_file():
        report.hint("preview.jpg is missing: the configuration shows no preview of this theme")
    return len(report.errors) == before


def same_size(report, theme, names):
    sizes = {name: theme.picture(name).size for name in names}
    if len(set(sizes.values())) > 1:
        report.error(f"sizes differ: {', '.join(f'{name} {w}x{h}' for name, (w, h) in sizes.items())}")


def check_sizes(report, theme):
    """Pictures that are cut by the same rectangles have the same size."""
    same_size(report, theme, ZONE_PICTURES)
    same_size(report, theme, ["main.png"] + [f"main_{look}.png" for look in LOOKS])
    same_size(report, theme, ["playlist.png", f"playlist_{LOOKS[0]}.png"])
    same_size(report, theme, ("command.png", "command_hilight.png"))
    same_size(report, theme, MENU_ROWS)
    same_size(report, theme, ini.KEYBOARD_PICTURES)
    zone = [theme.ini.number("zonelist", f"ZoneList{end}") for end in WIDE]
    width, height = theme.picture("zonelist.png").size
    if (width + zone[0], height + zone[1]) != (zone[2], zone[3]):
        report.error(f"zonelist.png is {width}x{height} at {zone[0]},{zone[1]}: does not fill {zone[2]}x{zone[3]}")
    row = theme.picture("playlist_playlisthilight.png").width
    if row != theme.ini.number("BlockPlaylist", "BlockPlaylistPlaylistW"):
        report.error(f"playlist_playlisthilight.png is {row} wide, not BlockPlaylistPlaylistW")


def inside(report, name, box, frame, frame_name):
    """A rectangle has a size and is inside (width, height) or another rectangle."""
    left, top, right, bottom = (0, 0, *frame) if len(frame) == 2 else edges(frame)
    x0, y0, x1, y1 = edges(box)
    if box[2] <= 0 or box[3] <= 0:
        report.error(f"{name}: has no size: {box}")
    elif x0 < left or y0 < top or x1 > right or y1 > bottom:
        report.error(f"{name}: {box} is not inside {frame_name} {tuple(frame)}")


def edges(box):
    return box[0], box[1], box[0] + box[2], box[1] + box[3]


def overlap(one, other):
    a, b = edges(one), edges(other)
    return a[0] < b[2] and b[0] < a[2] and a[1] < b[3] and b[1] < a[3]


def apart(report, boxes):
    """No two of the named rectangles overlap."""
    for (name, box), (other_name, other) in itertools.combinations(boxes.items(), 2):
        if overlap(box, other):
            report.error(f"{name} {box} and {other_name} {other} overlap")


def live_slots(theme):
    rows = theme.ini.number("zonelist", "ZoneListNbTracksParColonne")
    return [(column, row) for column in (1, 2) for row in range(1, min(rows, ini.SLOT_ROWS) + 1)]


def slot_name(place):
    return f"{ini.SLOT_SECTIONS[place[0]]}{place[1]}"


def navigation_box(theme, name):
    return theme.ini.box("zonelist", f"ZoneListNavigation{name}", ("x", "Y", "Width", "Height"))


def page_box(theme, name):
    return theme.ini.box("zonelist", f"ZoneListPage{name}", WIDE)


def check_zone(report, theme):
    """Pages, navigation and slots are in the zone, slots do not overlap, and their parts are inside them."""
    zone = theme.picture("zonelist.png").size
    if not 1 <= theme.ini.number("zonelist", "ZoneListNbTracksParColonne") <= ini.SLOT_ROWS:
        report.error("ZoneListNbTracksParColonne is not 1 to 10")
    for name in ("Gauche", "Droite"):
        inside(report, f"page {name}", page_box(theme, name), zone, "the zone")
    boxes = {}
    for name in NAVIGATION:
        boxes[f"navigation {name}"] = navigation_box(theme, name)
        inside(report, f"navigation {name}", boxes[f"navigation {name}"], zone, "the zone")
    codes = set()
    for place in live_slots(theme):
        name = slot_name(place)
        whole = theme.ini.slot(*place, "Hilight")
        boxes[name] = whole
        inside(report, name, whole, zone, "the zone")
        for part in ("NumSaisie", "NumPiste", "Cover", "Titre"):
            inside(report, f"{name} {part}", theme.ini.slot(*place, part), whole, "its slot")
        keys = theme.ini.text(name, "ZoneListPisteNumSaisieKeys")
        if keys and (place[0], keys) in codes:
            report.error(f"{name}: the keys {keys} already pick another slot of the column")
        codes.add((place[0], keys))
    apart(report, boxes)


def fold_ends(first, second):
    """Whether the page turn ends: it unfolds the second page at the speed that folded the first."""
    width, speed = first, 1
    while width > 0:
        width, speed = width - speed, speed + 1
    width = 0
    while width < second:
        if speed <= 0:
            return False
        width, speed = width + speed, speed - 1
    return True


def check_fold(report, theme):
    left, right = page_box(theme, "Gauche")[2], page_box(theme, "Droite")[2]
    if not (fold_ends(right, left) and fold_ends(left, left)):
        report.error(f"page widths {left} and {right}: the page turn would never end")


def check_orientation(report, theme, section):
    """The three blocks are inside the theme and do not overlap."""
    size = theme_size(theme, section)
    boxes = {"the track zone": (0, 0, *(theme.ini.number("zonelist", f"ZoneList{end}") for end in WIDE[2:]))}
    for block, extent in (
        ("Main", theme.picture("main.png").size),
        ("Playlist", playlist_extent(theme)),
        ("Command", theme.picture("command.png").size),
    ):
        corner = theme.ini.box(section, f"Block{block}", ("X", "Y"))
        boxes[f"the block {block}"] = (*corner, *extent)
    for name, box in boxes.items():
        inside(report, f"[{section}] {name}", box, size, "the theme")
    apart(report, boxes)


def playlist_extent(theme):
    """The used part of the Playlist block. Its picture may be larger, with a front around the blocks."""
    boxes = [theme.ini.box("BlockPlaylist", "BlockPlaylistPlaylist"), *button_boxes(theme, "BlockPlaylist", QUEUE_BUTTONS).values()]
    return max(edges(box)[2] for box in boxes), max(edges(box)[3] for box in boxes)


def button_boxes(theme, section, names):
    return {name: theme.ini.box(section, f"{section}Btn{name}") for name in names}


def check_blocks(report, theme):
    """The contents of the three blocks."""
    main = theme.picture("main.png").size
    texts = ("InsertCoin", "Remain", "InfosZoneLigne1", "InfosZoneLigne2")
    boxes = {name: theme.ini.box("BlockMain", f"BlockMain{name}") for name in texts}
    boxes |= button_boxes(theme, "BlockMain", TRANSPORT)
    for name, box in boxes.items():
        inside(report, f"BlockMain{name}", box, main, "main.png")
    apart(report, boxes)
    playlist = theme.picture("playlist.png").size
    boxes = {"Playlist": theme.ini.box("BlockPlaylist", "BlockPlaylistPlaylist")}
    row = theme.picture("playlist_playlisthilight.png").size
    inside(report, "the first row of the queue", (*boxes["Playlist"][:2], *row), boxes["Playlist"], "BlockPlaylistPlaylist")
    boxes |= button_boxes(theme, "BlockPlaylist", QUEUE_BUTTONS)
    for name, box in boxes.items():
        inside(report, f"BlockPlaylist{name}", box, playlist, "playlist.png")
    for look, (name, box) in itertools.product(LOOKS, button_boxes(theme, "BlockPlaylist", QUEUE_BUTTONS).items()):
        picture = f"playlist_{look}.png"
        inside(report, f"BlockPlaylistBtn{name}", box, theme.picture(picture).size, picture)
    apart(report, boxes)
    check_menu(report, theme)


def check_menu(report, theme):
    """The rows of the menu are inside the block's border of 7 pixels, their texts inside the rows."""
    block = theme.picture("command.png").size
    row = theme.picture("command_listbox.png").size
    inside(report, "a row of the menu", (7, 7, *row), (7, 7, block[0] - 14, block[1] - 14), "the border of command.png")
    if row[1] * LONGEST_MENU > block[1] - 14:
        report.hint(f"the menu of {LONGEST_MENU} rows scrolls, and a small video is higher than the block")
    boxes = {}
    for name in ("ListBoxTexte", "ListBoxChoiceTexte", "BtnTexte"):
        boxes[name] = theme.ini.box("zonecommand", f"BlockCommand{name}")
        inside(report, f"BlockCommand{name}", boxes[name], row, "the row")
    del boxes["BtnTexte"]
    apart(report, boxes)


def keyboard_keys(theme):
    """Rectangle and code of every key by (line, column)."""
    keys = {}
    for line in range(1, counted(theme, "KeyNbLines") + 1):
        for column in range(1, counted(theme, f"KeyNbCols{line}") + 1):
            values = tuple(theme.ini.number("keyboard", f"{field}{line}-{column}") for field in ini.KEY_FIELDS)
            keys[line, column] = (values[:4], values[4])
    return keys


def check_keyboard(report, theme):
    """Keys do not overlap and are inside the picture, one of them accepts and one deletes, the word is on the accept
    key."""
    size = theme.picture("keyboard.png").size
    keys = keyboard_keys(theme)
    boxes = {f"key {line}-{column}": box for (line, column), (box, _) in keys.items()}
    boxes |= {name: theme.ini.box("keyboard", name) for name in ("Title", "Texte")}
    for name, box in boxes.items():
        inside(report, f"keyboard {name}", box, size, "keyboard.png")
    apart(report, boxes)
    codes = [code for _, code in keys.values()]
    for code, what in ((13, "accepts"), (8, "deletes")):
        if codes.count(code) != 1:
            report.error(f"keyboard: {codes.count(code)} keys with the code {code} ({what})")
    for box, code in keys.values():
        if code == 13:
            inside(report, "keyboard BtnTexte", theme.ini.box("keyboard", "BtnTexte"), box, "its key")


def differs(one, other, box):
    return cut(one, box).tobytes() != cut(other, box).tobytes()


def outside(picture, boxes):
    """A copy with these rectangles blanked, to compare the rest."""
    rest = picture.copy()
    for x, y, w, h in boxes:
        rest.paste((0, 0, 0, 0), (x, y, x + w, y + h))
    return rest


def check_button_looks(report, theme, block, section, names):
    """Each button looks different in each of its four states, and nothing but the buttons changes between them."""
    boxes = button_boxes(theme, section, names)
    looks = [(look, theme.picture(f"{block}_{look}.png")) for look in LOOKS]
    for (one, first), (other, second) in itertools.combinations(looks, 2):
        for name, box in boxes.items():
            if not differs(first, second, box):
                report.error(f"button {name} of {block}: looks {one} and {other} are the same")
        size = (0, 0, *first.size)
        rests = [outside(picture, boxes.values()) for picture in (first, second)]
        # A picture of buttons only is transparent around them, or smaller than its block.
        is_whole = first.size == second.size and all(rest.getchannel("A").getbbox() for rest in rests)
        if is_whole and differs(*rests, size):
            report.hint(f"{block}: {one} and {other} differ outside the buttons, where it is never visible")


def check_text_grounds(report, theme):
    """Texts are cleared with the picture of the block without focus, so it must look the same there with focus."""
    for name in ("InsertCoin", "Remain", "InfosZoneLigne1", "InfosZoneLigne2"):
        box = theme.ini.box("BlockMain", f"BlockMain{name}")
        if differs(theme.picture("main.png"), theme.picture("main_active_selected.png"), box):
            report.hint(f"the background of BlockMain{name} differs with the focus: a patch is visible behind the text")
    box = theme.ini.box("BlockPlaylist", "BlockPlaylistPlaylist")
    if differs(theme.picture("playlist.png"), theme.picture("playlist_active_selected.png"), box):
        report.hint("the background of the queue differs with the focus")


def check_marks(report, theme):
    """Marks are visible in each slot, touch buttons in their rectangles, and neither anywhere else."""
    slots = {slot_name(place): theme.ini.slot(*place, "Hilight") for place in live_slots(theme)}
    buttons = {name: navigation_box(theme, name) for name in NAVIGATION}
    rows = [("zonelist_nowplaying.png", slots), ("zonelist_comingnext.png", slots), ("zonelist_video.png", slots)]
    rows += [("zonelistWithNumTrack.png", slots), ("zonelistWithNumTrack_hilight.png", slots)]
    rows += [("zonelist_navigation.png", buttons)]
    for picture, boxes in rows:
        alpha = theme.picture(picture).getchannel("A")
        for name, box in boxes.items():
            if not cut(alpha, box).getbbox():
                report.error(f"{picture}: nothing visible in {name}")
        rest = alpha.copy()
        for x, y, w, h in boxes.values():
            rest.paste(0, (x, y, x + w, y + h))
        if rest.getbbox() and alpha.getextrema()[0] < 255:
            report.hint(f"{picture}: pixels outside the rectangles are never visible: {rest.getbbox()}")
    for name, box in slots.items():
        for one, other in (("zonelist.png", "zonelist_hilight.png"), ("zonelistWithNumTrack.png", "zonelistWithNumTrack_hilight.png")):
            if not differs(theme.picture(one), theme.picture(other), box):
                report.error(f"{name}: {one} and {other} are the same; the selection is not visible")


def check_keyboard_looks(report, theme):
    plain, lit = (theme.picture(name) for name in ini.KEYBOARD_PICTURES)
    boxes = [box for box, _ in keyboard_keys(theme).values()]
    for box in boxes:
        if not differs(plain, lit, box):
            report.error(f"keyboard: the key at {box[0]},{box[1]} looks the same when it is selected")
    if differs(outside(plain, boxes), outside(lit, boxes), (0, 0, *plain.size)):
        report.hint("keyboard.png and keyboard_hilight.png differ outside the keys, where it is never visible")


def text_boxes(theme):
    """Name, rectangle, section, style prefix and whether it is the selected look, for every text of the theme."""
    both = (False, True)
    for name in ("InsertCoin", "Remain", "InfosZoneLigne1", "InfosZoneLigne2"):
        yield f"BlockMain{name}", theme.ini.box("BlockMain", f"BlockMain{name}"), "BlockMain", f"BlockMain{name}", False
    row = theme.picture("playlist_playlisthilight.png").size
    for lit in both:
        yield "a row of the queue", (5, 0, row[0] - 5, row[1] // 2), "BlockPlaylist", "BlockPlaylistPlaylist", lit
        for name in ("ListBoxTexte", "ListBoxChoiceTexte", "BtnTexte"):
            prefix = f"BlockCommand{name}"
            yield prefix, theme.ini.box("zonecommand", prefix), "zonecommand", prefix, lit
        for place in live_slots(theme):
            for part, prefix in (("NumSaisie",) * 2, ("NumPiste",) * 2, ("Titre", "TitreTitre"), ("Titre", "TitreInterprete")):
                box = theme.ini.slot(*place, part)
                yield f"{slot_name(place)} {prefix}", box, "zonelist", f"ZoneListPiste{prefix}", lit
        yield "keyboard BtnTexte", theme.ini.box("keyboard", "BtnTexte"), "keyboard", "BtnTexte", lit
    for name in ("Title", "Texte"):
        yield f"keyboard {name}", theme.ini.box("keyboard", name), "keyboard", name, False


def check_texts(report, theme):
    """Every box has room for the three dots to which a text may be shortened, and for the capitals of one line."""
    families = set()
    for name, box, section, prefix, lit in text_boxes(theme):
        style = theme.ini.style(section, prefix, lit)
        if style[1] <= 0:
            report.error(f"{name}: font size {style[1]}")
            continue
        font = theme.font(style)
        families.add((style[0], font_names(font)))
        dots = font.getlength("...")
        if box[2] < dots:
            report.error(f"{name}: {box[2]} wide, three dots need {dots:.0f}: a text that does not fit stops the jukebox")
        if box[3] < style[1] * 96 / 72 * CAPITAL:
            report.hint(f"{name}: {box[3]} high is less than the height of capitals at {style[1]} points")
    for asked, found in sorted(families):
        if asked.lower() not in found:
            report.hint(f"font {asked!r} is neither in the theme nor on this system, {found[1]!r} is used instead")


def check_title_lines(report, theme):
    """Title and artist in three lines fit into their slot."""
    for place in live_slots(theme):
        whole, box = theme.ini.slot(*place, "Hilight"), theme.ini.slot(*place, "Titre")
        for lit in (False, True):
            size = theme.ini.style("zonelist", "ZoneListPisteTitreTitre", lit)[1]
            artist = theme.ini.style("zonelist", "ZoneListPisteTitreInterprete", lit)[1]
            middle, step = box[1] + box[3] / 2, size + 2
            top = middle - step - size * 96 / 72 * CAPITAL / 2
            bottom = middle + step + artist * 96 / 72 * CAPITAL / 2
            if top < whole[1] or bottom > whole[1] + whole[3]:
                report.hint(f"{slot_name(place)}: three lines of text do not fit into the slot")


def check_sounds(report, theme):
    """All five sounds exist and begin like an MP3 file; a missing one stops the jukebox."""
    for name in ini.SOUNDS:
        try:
            head = (theme.folder / name).read_bytes()[:3]
        except OSError as fault:
            report.error(f"{name}: {fault.strerror}")
            continue
        if head != b"ID3" and not (len(head) > 1 and head[0] == 0xFF and head[1] & 0xE0 == 0xE0):
            report.error(f"{name}: is not an MP3 file")


def check_geometry(report, theme):
    """Everything that requires readable numbers and pictures."""
    check_sizes(report, theme)
    check_zone(report, theme)
    check_fold(report, theme)
    for section in ("horitontal", "vertical"):
        check_orientation(report, theme, section)
    check_blocks(report, theme)
    check_keyboard(report, theme)
    if report.errors:
        return
    check_button_looks(report, theme, "main", "BlockMain", TRANSPORT)
    check_button_looks(report, theme, "playlist", "BlockPlaylist", QUEUE_BUTTONS)
    check_text_grounds(report, theme)
    check_marks(report, theme)
    check_keyboard_looks(report, theme)
    check_texts(report, theme)
    check_title_lines(report, theme)


def check_theme(folder):
    """Checks one folder and returns its report."""
    report = Report(folder)
    try:
        theme = Theme(folder)
    except (OSError, UnicodeDecodeError) as fault:
        report.error(f"theme.ini: {fault}")
        return report
    readable = check_keys(report, theme)
    complete = check_pictures(report, theme)
    check_sounds(report, theme)
    if readable and complete:
        check_geometry(report, theme)
    return report


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("theme", type=Path, nargs="+", help="theme folder")
    parser.add_argument("--strict", action="store_true", help="treat advice as errors")
    args = parser.parse_args()
    results = [check_theme(folder).show(args.strict) for folder in args.theme]
    sys.exit(0 if all(results) else 1)


if __name__ == "__main__":
    main()
