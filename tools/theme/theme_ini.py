"""The format of a theme.ini: its sections and keys in their order, and how the file is read and written."""

BOX = ("X", "Y", "W", "H")
STYLE = ("Font", "FontSize", "FontColor")
STYLE_HILIGHT = ("FontHilight", "FontSizeHilight", "FontColorHilight")
CORNERS = ("BlockMainX", "BlockMainY", "BlockPlaylistX", "BlockPlaylistY", "BlockCommandX", "BlockCommandY")


def _with(prefix, endings):
    return tuple(prefix + ending for ending in endings)


SECTIONS = {
    "zonelist": _with("ZoneList", ("X", "Y", "Width", "Height"))
    + _with("ZoneListPageGauche", ("X", "Y", "Width", "Height"))
    + _with("ZoneListPageDroite", ("X", "Y", "Width", "Height"))
    + _with("ZoneListNavigationBack", ("x", "Y", "Width", "Height"))
    + _with("ZoneListNavigationPreviewPage", ("x", "Y", "Width", "Height"))
    + _with("ZoneListNavigationNextPage", ("x", "Y", "Width", "Height"))
    + ("ZoneListNbTracksParColonne",)
    + _with("ZoneListPisteNumSaisie", STYLE + STYLE_HILIGHT)
    + _with("ZoneListPisteNumPiste", STYLE + STYLE_HILIGHT)
    + _with("ZoneListPisteTitreTitre", STYLE)
    + _with("ZoneListPisteTitreInterprete", STYLE)
    + _with("ZoneListPisteTitreTitre", STYLE_HILIGHT)
    + _with("ZoneListPisteTitreInterprete", STYLE_HILIGHT),
    # The spelling is that of the file format: a section called "horizontal" would not be found.
    "horitontal": CORNERS,
    "vertical": CORNERS,
    "BlockPlaylist": _with("BlockPlaylistPlaylist", BOX + STYLE + ("FontDecal",))
    + _with("BlockPlaylistPlaylist", STYLE_HILIGHT + ("FontDecalHilight",))
    + _with("BlockPlaylistBtnDown", BOX)
    + _with("BlockPlaylistBtnUp", BOX)
    + _with("BlockPlaylistBtnRemove", BOX)
    + _with("BlockPlaylistBtnLoad", BOX)
    + _with("BlockPlaylistBtnSave", BOX),
    "BlockMain": _with("BlockMainInsertCoin", BOX + STYLE)
    + _with("BlockMainRemain", BOX + STYLE)
    + _with("BlockMainInfosZoneLigne1", BOX + STYLE)
    + _with("BlockMainInfosZoneLigne2", BOX + STYLE)
    + _with("BlockMainBtnPreview", BOX)
    + _with("BlockMainBtnStop", BOX)
    + _with("BlockMainBtnPlay", BOX)
    + _with("BlockMainBtnPause", BOX)
    + _with("BlockMainBtnNext", BOX),
    "zonecommand": _with("BlockCommandListBoxTexte", BOX + STYLE + STYLE_HILIGHT)
    + _with("BlockCommandListBoxChoiceTexte", BOX + STYLE + STYLE_HILIGHT)
    + _with("BlockCommandBtnTexte", BOX + STYLE + STYLE_HILIGHT),
}

SLOT_KEYS = (
    _with("ZoneListPisteNumSaisie", BOX + ("Libele", "Keys"))
    + _with("ZoneListPisteNumPiste", BOX)
    + _with("ZoneListPisteCover", BOX)
    + _with("ZoneListPisteTitre", BOX)
    + _with("ZoneListPisteHilight", BOX)
)
SLOT_SECTIONS = {1: "zonelistGauche", 2: "zonelistDroite"}
SLOT_ROWS = 10

KEYBOARD_KEYS = (
    _with("Title", BOX + STYLE) + _with("Texte", BOX + STYLE) + _with("BtnTexte", BOX + STYLE + STYLE_HILIGHT)
) + ("KeyNbLines",)
KEY_FIELDS = ("KeyX", "KeyY", "KeyW", "KeyH", "KeyKey")

PICTURES = (
    "fade.png", "wait.png",
    "zonelist.png", "zonelist_hilight.png", "zonelistWithNumTrack.png", "zonelistWithNumTrack_hilight.png",
    "zonelist_nowplaying.png", "zonelist_comingnext.png", "zonelist_video.png", "zonelist_navigation.png",
    "main.png", "main_active_selected.png", "main_active_selected_hilight.png",
    "main_active_unselected.png", "main_active_unselected_hilight.png",
    "playlist.png", "playlist_active_selected.png", "playlist_active_selected_hilight.png",
    "playlist_active_unselected.png", "playlist_active_unselected_hilight.png", "playlist_playlisthilight.png",
    "command.png", "command_hilight.png", "command_listbox.png", "command_listbox_hilight.png",
    "command_btn.png", "command_btn_hilight.png",
)  # fmt: skip
KEYBOARD_PICTURES = ("keyboard.png", "keyboard_hilight.png")
SOUNDS = ("charge.mp3", "insertcoin.mp3", "move.mp3", "NoCredit.mp3", "PageTurn.mp3")

assert sum(map(len, SECTIONS.values())) == 171
assert len(SLOT_KEYS) * 2 * SLOT_ROWS == 440
assert len(PICTURES) == 27


def parse(text):
    """The values of an INI text by (section, key), both in lower case.

    As in the jukebox, names ignore case, the first of two equal sections or keys wins, and lines that begin with ";" or
    "#" are comments.
    """
    values, section, closed, seen = {}, None, False, set()
    for raw in text.lstrip("\ufeff").splitlines():
        line = raw.strip()
        if not line or line[0] in ";#":
            continue
        if line[0] == "[" and "]" in line:
            section = line[1 : line.index("]")].strip().lower()
            closed = section in seen
            seen.add(section)
        elif "=" in line and section is not None and not closed:
            key, value = line.split("=", 1)
            values.setdefault((section, key.strip().lower()), value.strip()[:254])
    return values


class ThemeFile:
    """A parsed theme.ini: text, numbers, rectangles and styles by section and key."""

    def __init__(self, path):
        with open(path, encoding="utf-8", newline=None) as file:
            self.values = parse(file.read())

    def text(self, section, key):
        return self.values.get((section.lower(), key.lower()), "")

    def number(self, section, key):
        return int(self.text(section, key))

    def box(self, section, prefix, endings=BOX):
        return tuple(self.number(section, prefix + ending) for ending in endings)

    def style(self, section, prefix, hilight=False):
        """Font name, size in points, colour as three numbers."""
        font, size, colour = STYLE_HILIGHT if hilight else STYLE
        parts = self.text(section, prefix + colour).split(",")
        return self.text(section, prefix + font), self.number(section, prefix + size), tuple(map(int, parts))

    def slot(self, column, row, field):
        """Rectangle of one element of a slot; field is "NumSaisie", "NumPiste", "Cover", "Titre" or "Hilight"."""
        return self.box(f"{SLOT_SECTIONS[column]}{row}", f"ZoneListPiste{field}")


def write(path, sections):
    """Writes (section, comment lines, list of key and value) records, in their order, as UTF-8 with line feeds."""
    lines = []
    for name, comments, pairs in sections:
        lines += [f"; {comment}" for comment in comments]
        lines.append(f"[{name}]")
        lines += [f"{key}={value}" for key, value in pairs]
        lines.append("")
    with open(path, "w", encoding="utf-8", newline="\n") as file:
        file.write("\n".join(lines))
