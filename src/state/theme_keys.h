// The keys of theme.ini as lists, from which the members of the theme record, the reader and the console's
// names are generated.
#pragma once

// The lists are in reading order. ROW(kind, section, name) describes one or more keys:
//   INTEGER          a 16-bit number
//   TEXT             a text
//   CORNER           a point: nameX, nameY
//   RECT             a rectangle: nameX, nameY, nameW, nameH
//   LONG_RECT        a rectangle: nameX, nameY, nameWidth, nameHeight
//   NAVIGATION_RECT  a rectangle with a lower-case x: namex, nameY, nameWidth, nameHeight
//   LEFT_PAGE        the rectangle of the left page, like LONG_RECT; element 0 of ZoneListPage
//   RIGHT_PAGE       the same for the right page; element 1
//   LOOK             a text's look: nameFont, nameFontSize, nameFontColor
//   HILIGHT_LOOK     its selected look: nameFontHilight, nameFontSizeHilight, nameFontColorHilight
// To visit the single keys, define ROW(kind, section, name) as KEYS_OF_##kind(NUMBER, TEXT, section, name).
// This expands to NUMBER or TEXT(section, key, member, part) for each key: the key's name as text, the member
// of the record, and the part of the member, which is empty for a member with one key.

// clang-format off
#define KEYS_OF_INTEGER(NUMBER, TEXT, section, name) NUMBER(section, #name, name, )
#define KEYS_OF_TEXT(NUMBER, TEXT, section, name) TEXT(section, #name, name, )
#define KEYS_OF_CORNER(NUMBER, TEXT, section, name) \
    NUMBER(section, #name "X", name, .X) \
    NUMBER(section, #name "Y", name, .Y)
#define KEYS_OF_RECT(NUMBER, TEXT, section, name) \
    NUMBER(section, #name "X", name, .X) \
    NUMBER(section, #name "Y", name, .Y) \
    NUMBER(section, #name "W", name, .W) \
    NUMBER(section, #name "H", name, .H)
#define KEYS_OF_LONG_RECT(NUMBER, TEXT, section, name) LONG_KEYS(NUMBER, section, #name, "X", name)
#define KEYS_OF_NAVIGATION_RECT(NUMBER, TEXT, section, name) LONG_KEYS(NUMBER, section, #name, "x", name)
#define KEYS_OF_LEFT_PAGE(NUMBER, TEXT, section, name) LONG_KEYS(NUMBER, section, #name, "X", ZoneListPage(0))
#define KEYS_OF_RIGHT_PAGE(NUMBER, TEXT, section, name) LONG_KEYS(NUMBER, section, #name, "X", ZoneListPage(1))
#define LONG_KEYS(NUMBER, section, key, x, member) \
    NUMBER(section, key x, member, .X) \
    NUMBER(section, key "Y", member, .Y) \
    NUMBER(section, key "Width", member, .W) \
    NUMBER(section, key "Height", member, .H)
#define KEYS_OF_LOOK(NUMBER, TEXT, section, name) \
    TEXT(section, #name "Font", name##Font, .Font) \
    NUMBER(section, #name "FontSize", name##Font, .Size) \
    TEXT(section, #name "FontColor", name##Font, .Color)
#define KEYS_OF_HILIGHT_LOOK(NUMBER, TEXT, section, name) \
    TEXT(section, #name "FontHilight", name##FontHilight, .Font) \
    NUMBER(section, #name "FontSizeHilight", name##FontHilight, .Size) \
    TEXT(section, #name "FontColorHilight", name##FontHilight, .Color)

// The members that the rows declare.
#define MEMBER_OF_INTEGER(name) Integer16 name;
#define MEMBER_OF_TEXT(name) QString name;
#define MEMBER_OF_CORNER(name) Corner16 name;
#define MEMBER_OF_RECT(name) Box16 name;
#define MEMBER_OF_LONG_RECT(name) Box16 name;
#define MEMBER_OF_NAVIGATION_RECT(name) Box16 name;
#define MEMBER_OF_LEFT_PAGE(name)
#define MEMBER_OF_RIGHT_PAGE(name)
#define MEMBER_OF_LOOK(name) TextLook name##Font;
#define MEMBER_OF_HILIGHT_LOOK(name) TextLook name##FontHilight;

// The track zone and its two pages.
#define THEME_ZONE_KEYS(ROW) \
    ROW(LONG_RECT,  "zonelist", ZoneList) \
    ROW(LEFT_PAGE,  "zonelist", ZoneListPageGauche) \
    ROW(RIGHT_PAGE, "zonelist", ZoneListPageDroite)

// The corners of the blocks in the horizontal mode.
// Deliberate D-01: the section is spelled "horitontal". One would expect "horizontal"; themes in the field
// use this spelling.
#define THEME_HORIZONTAL_KEYS(ROW) \
    ROW(CORNER, "horitontal", BlockMain) \
    ROW(CORNER, "horitontal", BlockPlaylist) \
    ROW(CORNER, "horitontal", BlockCommand)

// The corners of the blocks in every other mode.
#define THEME_VERTICAL_KEYS(ROW) \
    ROW(CORNER, "vertical", BlockMain) \
    ROW(CORNER, "vertical", BlockPlaylist) \
    ROW(CORNER, "vertical", BlockCommand)

// The navigation buttons of the touch mode. Their keys have a lower-case x.
#define THEME_NAVIGATION_KEYS(ROW) \
    ROW(NAVIGATION_RECT, "zonelist", ZoneListNavigationBack) \
    ROW(NAVIGATION_RECT, "zonelist", ZoneListNavigationPreviewPage) \
    ROW(NAVIGATION_RECT, "zonelist", ZoneListNavigationNextPage)

// The list of queued tracks.
#define THEME_PLAYLIST_KEYS(ROW) \
    ROW(RECT,         "BlockPlaylist", BlockPlaylistPlaylist) \
    ROW(LOOK,         "BlockPlaylist", BlockPlaylistPlaylist) \
    ROW(INTEGER,      "BlockPlaylist", BlockPlaylistPlaylistFontDecal) \
    ROW(HILIGHT_LOOK, "BlockPlaylist", BlockPlaylistPlaylist) \
    ROW(INTEGER,      "BlockPlaylist", BlockPlaylistPlaylistFontDecalHilight)

// The Main block.
#define THEME_MAIN_KEYS(ROW) \
    ROW(RECT, "BlockMain", BlockMainInsertCoin) \
    ROW(LOOK, "BlockMain", BlockMainInsertCoin) \
    ROW(RECT, "BlockMain", BlockMainRemain) \
    ROW(LOOK, "BlockMain", BlockMainRemain) \
    ROW(RECT, "BlockMain", BlockMainInfosZoneLigne1) \
    ROW(LOOK, "BlockMain", BlockMainInfosZoneLigne1) \
    ROW(RECT, "BlockMain", BlockMainInfosZoneLigne2) \
    ROW(LOOK, "BlockMain", BlockMainInfosZoneLigne2) \
    ROW(RECT, "BlockMain", BlockMainBtnPreview) \
    ROW(RECT, "BlockMain", BlockMainBtnStop) \
    ROW(RECT, "BlockMain", BlockMainBtnPlay) \
    ROW(RECT, "BlockMain", BlockMainBtnPause) \
    ROW(RECT, "BlockMain", BlockMainBtnNext)

// The buttons of the queue.
#define THEME_PLAYLIST_BUTTON_KEYS(ROW) \
    ROW(RECT, "BlockPlaylist", BlockPlaylistBtnDown) \
    ROW(RECT, "BlockPlaylist", BlockPlaylistBtnUp) \
    ROW(RECT, "BlockPlaylist", BlockPlaylistBtnRemove) \
    ROW(RECT, "BlockPlaylist", BlockPlaylistBtnLoad) \
    ROW(RECT, "BlockPlaylist", BlockPlaylistBtnSave)

// Rows in a column and the text styles of a slot.
#define THEME_SLOT_STYLE_KEYS(ROW) \
    ROW(INTEGER,      "zonelist", ZoneListNbTracksParColonne) \
    ROW(LOOK,         "zonelist", ZoneListPisteNumSaisie) \
    ROW(HILIGHT_LOOK, "zonelist", ZoneListPisteNumSaisie) \
    ROW(LOOK,         "zonelist", ZoneListPisteNumPiste) \
    ROW(HILIGHT_LOOK, "zonelist", ZoneListPisteNumPiste) \
    ROW(LOOK,         "zonelist", ZoneListPisteTitreTitre) \
    ROW(LOOK,         "zonelist", ZoneListPisteTitreInterprete) \
    ROW(HILIGHT_LOOK, "zonelist", ZoneListPisteTitreTitre) \
    ROW(HILIGHT_LOOK, "zonelist", ZoneListPisteTitreInterprete)

// The texts of the command menu.
#define THEME_COMMAND_KEYS(ROW) \
    ROW(RECT,         "zonecommand", BlockCommandListBoxTexte) \
    ROW(LOOK,         "zonecommand", BlockCommandListBoxTexte) \
    ROW(HILIGHT_LOOK, "zonecommand", BlockCommandListBoxTexte) \
    ROW(RECT,         "zonecommand", BlockCommandListBoxChoiceTexte) \
    ROW(LOOK,         "zonecommand", BlockCommandListBoxChoiceTexte) \
    ROW(HILIGHT_LOOK, "zonecommand", BlockCommandListBoxChoiceTexte) \
    ROW(RECT,         "zonecommand", BlockCommandBtnTexte) \
    ROW(LOOK,         "zonecommand", BlockCommandBtnTexte) \
    ROW(HILIGHT_LOOK, "zonecommand", BlockCommandBtnTexte)

// The fields of a slot. Each of the 20 slots has a section of its own.
#define SLOT_KEYS(ROW) \
    ROW(RECT, ZoneListPisteNumSaisie) \
    ROW(TEXT, ZoneListPisteNumSaisieLibele) \
    ROW(TEXT, ZoneListPisteNumSaisieKeys) \
    ROW(RECT, ZoneListPisteNumPiste) \
    ROW(RECT, ZoneListPisteCover) \
    ROW(RECT, ZoneListPisteTitre) \
    ROW(RECT, ZoneListPisteHilight)

// clang-format on
